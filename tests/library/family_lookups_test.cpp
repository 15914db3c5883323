// Lookups inside one family, and how they differ from those of the whole database.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "DeviceList.h"
#include "tests/reference/lookup_rules.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/carried_text.h"
#include "tests/support/family_fields.h"
#include "tests/support/sample_tree.h"
#include "tests/support/show.h"

namespace {

using support::AddDevice;
using support::FamilyOwner;
using support::MakeFamily;
using support::SampleDevice;
using support::SampleTree;
using support::Show;

constexpr const char* kNull = nullptr;

/// The position of the device; -1 for null.
int PositionIn(const FamilyList& family, const DeviceInfo* device) {
  if (device == nullptr) return -1;
  for (int i = 0; family.GetDevice(i) != nullptr; ++i) {
    if (family.GetDevice(i) == device) return i;
  }
  ADD_FAILURE() << "a device of another family";
  return -2;
}

// By code name

struct CodeNamed {
  const char* codeName;
  const char* aliasName = nullptr;
  const char* vendor = nullptr;
};

FamilyOwner FamilyOf(const std::vector<CodeNamed>& devices) {
  FamilyOwner family = MakeFamily();
  for (const CodeNamed& device : devices) {
    AddDevice(*family).CodeName(device.codeName).AliasName(device.aliasName).Vendor(device.vendor);
  }
  return family;
}

TEST(FamilyGetDeviceWithCodeName, TriesCodeNamesBeforeAliases) {
  const std::string longest(1'023, 'x');
  const std::string longestUpper(1'023, 'X');
  const std::string tooLong(1'024, 'x');
  const struct {
    const char* what;
    std::vector<CodeNamed> devices;
    const char* codeName;
    int found;
  } cases[] = {
      {"no device", {}, "A", -1},
      {"ignoring case", {{"B"}, {"Code-1"}}, "cODE-1", 1},
      {"the first", {{"B"}, {"a"}, {"A"}}, "A", 1},
      {"the whole text", {{"AB"}, {"A"}}, "A", 1},
      {"unknown", {{"A"}, {"B"}}, "C", -1},

      {"by alias, ignoring case", {{"B"}, {"C", "Alias"}}, "aLIAS", 1},
      {"the first alias", {{"B"}, {"C", "A"}, {"D", "A"}}, "A", 1},
      {"the last device's code name beats the first's alias", {{"B", "A"}, {"C"}, {"A"}}, "A", 2},
      {"the empty alias", {{"B"}, {"C", ""}}, "", 1},
      {"no alias is not the empty one", {{"B"}}, "", -1},
      {"aliases are not carried over", {{"B", "A", "Quorel"}, {"C"}}, "A", -1},

      {"aliases of Quorel are not looked at", {{"B", "A", "Quorel"}}, "A", -1},
      {"... whatever comes later is", {{"B", "A", "Quorel"}, {"C", "A", "Other"}}, "A", 1},
      {"Quorel in lower case is another vendor", {{"B", "A", "quorel"}}, "A", 0},
      {"a longer vendor is another vendor", {{"B", "A", "Quorel "}}, "A", 0},
      {"no vendor is another vendor", {{"B", "A"}}, "A", 0},
      {"Quorel's code names are looked at", {{"A", "B", "Quorel"}}, "A", 0},

      {"the first code names are empty while missing", {{kNull}, {""}}, "", 0},
      {"a missing code name is no other", {{kNull}}, "A", -1},
      {"a carried code name ends the search before it is carried", {{"A"}, {kNull}}, "A", 0},
      {"an empty code name is carried", {{"A"}, {""}, {kNull}}, "", 1},

      {"null counts as the empty text", {{"A"}, {""}}, kNull, 1},
      {"... and finds a first device without code name", {{kNull}}, kNull, 0},
      {"... and the empty alias", {{"A"}, {"B", ""}}, kNull, 1},
      {"... and else nothing", {{"A", "B"}}, kNull, -1},

      {"the longest code name", {{"A"}, {longest.c_str()}}, longestUpper.c_str(), 1},
      {"the longest alias", {{"A"}, {"B", longest.c_str()}}, longestUpper.c_str(), 1},
      {"a longer code name matches nothing", {{tooLong.c_str()}}, tooLong.c_str(), -1},
      {"a longer alias matches nothing", {{"A", tooLong.c_str()}}, tooLong.c_str(), -1},
      {"a longer text is not cut", {{tooLong.c_str(), tooLong.c_str()}}, longest.c_str(), -1},
      {"a longer argument is not cut", {{longest.c_str(), longest.c_str()}}, tooLong.c_str(), -1},
      {"a longer text is not empty", {{tooLong.c_str(), tooLong.c_str()}}, "", -1},
      {"a longer argument is not empty", {{"", ""}, {kNull}}, tooLong.c_str(), -1},
  };
  for (const auto& row : cases) {
    const FamilyOwner family = FamilyOf(row.devices);
    EXPECT_EQ(PositionIn(*family, family->GetDeviceWithCodeName(row.codeName)), row.found) << "row: " << row.what;
  }
}

// By code name and vendor

TEST(FamilyGetDeviceWithCodeNameandVendor, ComparesBothIgnoringCaseAndCarriesEachOver) {
  const std::string longest(1'023, 'x');
  const std::string longestUpper(1'023, 'X');
  const std::string tooLong(1'024, 'x');
  struct Sold {
    const char* codeName;
    const char* vendor;
  };
  const struct {
    const char* what;
    std::vector<Sold> devices;
    const char* codeName;
    const char* vendor;
    int found;
  } cases[] = {
      {"no device", {}, "A", "V", -1},
      {"both", {{"A", "W"}, {"B", "V"}, {"A", "V"}}, "A", "V", 2},
      {"both ignoring case", {{"Code", "Vendor"}}, "cODE", "vENDOR", 0},
      {"the first", {{"A", "V"}, {"a", "v"}}, "a", "v", 0},
      {"Quorel in lower case", {{"A", "Quorel"}}, "A", "quorel", 0},
      {"whole texts", {{"AB", "V"}, {"A", "VW"}}, "A", "V", -1},
      {"the empty texts", {{"A", ""}, {"", "V"}, {"", ""}}, "", "", 2},

      {"both are empty at first", {{kNull, kNull}}, "", "", 0},
      {"... and no other", {{kNull, kNull}}, "A", "V", -1},
      {"the code name is carried", {{"A", "W"}, {kNull, "V"}}, "A", "V", 1},
      {"the vendor is carried", {{"B", "V"}, {"A", kNull}}, "A", "V", 1},
      {"both are carried", {{"A", "W"}, {"B", "V"}, {"A", kNull}}, "A", "V", 2},
      {"each on its own", {{"A", "W"}, {kNull, "V"}, {"B", kNull}, {kNull, kNull}}, "B", "V", 2},
      {"from different devices", {{"A", "X"}, {kNull, "V"}}, "A", "V", 1},
      {"through devices that match in neither", {{"A", "W"}, {kNull, "X"}, {kNull, "Y"}, {kNull, "V"}}, "A", "V", 3},
      {"the vendor is refreshed where the code name differs", {{"B", "V"}, {"C", "W"}, {"A", kNull}}, "A", "V", -1},
      {"the code name is refreshed where the vendor differs", {{"A", "W"}, {"B", "X"}, {kNull, "V"}}, "A", "V", -1},

      {"null code name", {{"A", "V"}, {kNull, "V"}, {"", "V"}}, kNull, "V", -1},
      {"null vendor", {{"A", "V"}, {"A", kNull}, {"A", ""}}, "A", kNull, -1},
      {"both null", {{kNull, kNull}, {"", ""}}, kNull, kNull, -1},

      {"the longest texts", {{longest.c_str(), longest.c_str()}}, longestUpper.c_str(), longestUpper.c_str(), 0},
      {"a longer code name", {{tooLong.c_str(), "V"}}, tooLong.c_str(), "V", -1},
      {"a longer vendor", {{"A", tooLong.c_str()}}, "A", tooLong.c_str(), -1},
      {"a longer vendor is carried", {{"B", "V"}, {"B", tooLong.c_str()}, {"A", kNull}}, "A", "V", -1},
  };
  for (const auto& row : cases) {
    const FamilyOwner family = MakeFamily();
    for (const Sold& device : row.devices) AddDevice(*family).CodeName(device.codeName).Vendor(device.vendor);
    const DeviceInfo* const found = family->GetDeviceWithCodeNameandVendor(row.codeName, row.vendor);
    EXPECT_EQ(PositionIn(*family, found), row.found) << "row: " << row.what;
  }
}

// By identifier

TEST(FamilyGetDeviceWithIdentifier, ComparesAllBitsAndTakesZero) {
  struct Ids {
    unsigned int isp;
    unsigned int jtag;
  };
  const struct {
    const char* what;
    std::vector<Ids> devices;
    const char* comm;
    unsigned int id;
    int found;
  } cases[] = {
      {"no device", {}, "JTAG", 0x45, -1},
      {"JTAG", {{0x45, 0x46}, {0, 0x45}}, "JTAG", 0x45, 1},
      {"ISP", {{0x46, 0x45}, {0x45, 0}}, "ISP", 0x45, 1},
      {"DUAL by ISP", {{0x46, 0x47}, {0x45, 0x47}}, "DUAL", 0x45, 1},
      {"DUAL by JTAG", {{0x46, 0x47}, {0x47, 0x45}}, "DUAL", 0x45, 1},
      {"DUAL takes an earlier JTAG before a later ISP", {{0x46, 0x45}, {0x45, 0x46}}, "DUAL", 0x45, 0},
      {"the first", {{0, 0x45}, {0, 0x45}}, "JTAG", 0x45, 0},
      {"all bits", {{0x1123A093, 0x1123A093}}, "DUAL", 0x0123A093, -1},
      {"the highest bit", {{0, 0x80000000}}, "JTAG", 0x80000000, 0},
      {"JTAG 0", {{0, 0x45}, {0x45, 0}}, "JTAG", 0, 1},
      {"ISP 0", {{0x45, 0}, {0, 0x45}}, "ISP", 0, 1},
      {"DUAL 0", {{0x45, 0x46}, {0x45, 0}, {0, 0x45}}, "DUAL", 0, 1},
      {"lower case", {{0x45, 0x45}}, "jtag", 0x45, -1},
      {"a trailing blank", {{0x45, 0x45}}, "JTAG ", 0x45, -1},
      {"a longer mode", {{0x45, 0x45}}, "ISP1", 0x45, -1},
      {"a shorter mode", {{0x45, 0x45}}, "DUA", 0x45, -1},
      {"no mode", {{0x45, 0x45}}, "", 0x45, -1},
      {"null", {{0x45, 0x45}}, kNull, 0x45, -1},
      {"null and 0", {{0, 0}}, kNull, 0, -1},
  };
  for (const auto& row : cases) {
    const FamilyOwner family = MakeFamily();
    for (const Ids& ids : row.devices) AddDevice(*family).Isp(ids.isp).Jtag(ids.jtag);
    EXPECT_EQ(PositionIn(*family, family->GetDevice(row.comm, row.id)), row.found) << "row: " << row.what;
    for (int i = 0; DeviceInfo* const device = family->GetDevice(i); ++i) SampleDevice(device).Comm("other").Mask(0xF0);
    EXPECT_EQ(PositionIn(*family, family->GetDevice(row.comm, row.id)), row.found)
        << "neither the device's own mode nor its mask is read, row: " << row.what;
  }
}

TEST(FamilyGetDeviceWithIdentifier, AgreesWithTheBitwiseRuleForRandomIdentifiers) {
  const FamilyOwner family = MakeFamily();
  DeviceInfo* const device = family->NewDevice();
  std::mt19937 random(430);
  const auto like = [&](unsigned int id) {
    const unsigned int bit = 1u << (random() % 32);
    const unsigned int kinds[] = {0, id, id ^ bit, random() & 0xFFFFFFFF};
    return kinds[random() % 4];
  };
  for (int i = 0; i < 100'000; ++i) {
    const auto id = std::max<unsigned int>(1, random() & 0xFFFFFFFF);
    const unsigned int isp = like(id);
    const unsigned int jtag = like(id);
    SampleDevice(device).Isp(isp).Jtag(jtag);
    for (const char* const comm : {"ISP", "JTAG", "DUAL", "Dual"}) {
      ASSERT_EQ(family->GetDevice(comm, id) == device, reference::AcceptsWholeIdentifier(comm, isp, jtag, id))
          << comm << ' ' << id << " isp " << isp << " jtag " << jtag;
    }
  }
}

// By access mode or package, and a carried-over text

using TwoTexts = DeviceInfo* (FamilyList::*)(const char*, const char*) const;

support::CarriedTextLookup Lookup(const char* name, SampleDevice (SampleDevice::*text)(const char*) const,
                                  SampleDevice (SampleDevice::*key)(const char*) const, TwoTexts find) {
  const auto ask = [find](const SampleTree& tree, const char* keyAsked, const char* textAsked) {
    return (tree->GetFamily(0)->*find)(keyAsked, textAsked);
  };
  return {name, text, key, ask, false};
}

const std::vector<support::CarriedTextLookup>& CarriedTextLookups() {
  using S = SampleDevice;
  using F = FamilyList;
  static const std::vector<support::CarriedTextLookup> lookups = {
      Lookup("GetDeviceWithComm", &S::Name, &S::Comm, &F::GetDeviceWithComm),
      Lookup("GetDeviceWithCodeName", &S::CodeName, &S::Comm, &F::GetDeviceWithCodeName),
      Lookup("GetDeviceWithPackage", &S::Name, &S::PackageType, &F::GetDeviceWithPackage),
      Lookup("GetDevice", &S::CodeName, &S::PackageType, &F::GetDevice),
  };
  return lookups;
}

TEST(FamilyCarriedTextLookups, CompareTheTextOfTheLastDeviceThatHadOne) {
  for (const auto& lookup : CarriedTextLookups()) support::ExpectCarriedTextCases(lookup);
}

TEST(FamilyCarriedTextLookups, AgreeWithTheLiteralRuleForAllShortSequencesOfDevices) {
  for (const auto& lookup : CarriedTextLookups()) support::ExpectCarriedTextRule(lookup);
}

TEST(FamilyCarriedTextLookups, CompareEachItsOwnText) {
  const FamilyOwner family = MakeFamily();
  AddDevice(*family).Name("N").CodeName("C").Comm("JTAG").PackageType("TQ100");
  AddDevice(*family).Name("C").CodeName("N").Comm("JTAG").PackageType("TQ100");
  EXPECT_EQ(PositionIn(*family, family->GetDeviceWithComm("JTAG", "n")), 0);
  EXPECT_EQ(PositionIn(*family, family->GetDeviceWithCodeName("JTAG", "n")), 1);
  EXPECT_EQ(PositionIn(*family, family->GetDeviceWithPackage("TQ100", "n")), 0);
  EXPECT_EQ(PositionIn(*family, family->GetDevice("TQ100", "n")), 1);
}

TEST(FamilyCarriedTextLookups, TakeANullCodeNameForTheEmptyTextAndNoOtherNull) {
  const FamilyOwner family = MakeFamily();
  AddDevice(*family).Name("A").CodeName("A").Comm("JTAG").PackageType("TQ100");
  AddDevice(*family).Name("").CodeName("").Comm("JTAG").PackageType("TQ100");
  AddDevice(*family).Name("").CodeName("").Comm("").PackageType(nullptr);
  EXPECT_EQ(PositionIn(*family, family->GetDeviceWithCodeName("JTAG", kNull)), 1);
  EXPECT_EQ(PositionIn(*family, family->GetDevice("TQ100", kNull)), 1);
  EXPECT_EQ(PositionIn(*family, family->GetDeviceWithComm("JTAG", kNull)), -1);
  EXPECT_EQ(PositionIn(*family, family->GetDeviceWithPackage("TQ100", kNull)), -1);
  for (const char* const text : {"A", "", kNull}) {
    EXPECT_EQ(PositionIn(*family, family->GetDeviceWithCodeName(kNull, text)), -1) << "text: " << Show(text);
    EXPECT_EQ(PositionIn(*family, family->GetDevice(kNull, text)), -1) << "text: " << Show(text);
    EXPECT_EQ(PositionIn(*family, family->GetDeviceWithComm(kNull, text)), -1) << "text: " << Show(text);
    EXPECT_EQ(PositionIn(*family, family->GetDeviceWithPackage(kNull, text)), -1) << "text: " << Show(text);
  }
}

TEST(FamilyPackageLookups, PassOverADeviceThatLacksThePackageForALaterOneOfTheName) {
  const FamilyOwner family = MakeFamily();
  AddDevice(*family).Name("A").CodeName("A");
  AddDevice(*family).Name("A").CodeName("A").PackageType("PC84").PackageType(nullptr).PackageType("tq100");
  AddDevice(*family).Name("A").CodeName("A").PackageType("PC84").PackageType("TQ100");
  EXPECT_EQ(PositionIn(*family, family->GetDeviceWithPackage("TQ100", "a")), 2);
  EXPECT_EQ(PositionIn(*family, family->GetDevice("TQ100", "a")), 2);
  EXPECT_EQ(PositionIn(*family, family->GetDeviceWithPackage("PC84", "a")), 1);
  EXPECT_EQ(PositionIn(*family, family->GetDevice("PC84", "a")), 1);
  EXPECT_EQ(PositionIn(*family, family->GetDeviceWithPackage("TQ", "a")), -1);
  EXPECT_EQ(PositionIn(*family, family->GetDevice("TQ", "a")), -1);
}

TEST(FamilyLookups, StayInTheirFamily) {
  const SampleTree tree;
  FamilyList& second = tree.AddFamily();
  tree.AddDevice().Name("A").CodeName("A").Comm("JTAG").Jtag(0x45).PackageType("TQ100").Vendor("V");
  const FamilyList& first = *tree->GetFamily(0);
  for (const FamilyList* const family : {&first, static_cast<const FamilyList*>(&second)}) {
    const DeviceInfo* const expected = family->GetDevice(0);
    EXPECT_EQ(family->GetDeviceWithCodeName("A"), expected);
    EXPECT_EQ(family->GetDeviceWithCodeNameandVendor("A", "V"), expected);
    EXPECT_EQ(family->GetDevice("JTAG", 0x45), expected);
    EXPECT_EQ(family->GetDeviceWithComm("JTAG", "A"), expected);
    EXPECT_EQ(family->GetDeviceWithCodeName("JTAG", "A"), expected);
    EXPECT_EQ(family->GetDeviceWithPackage("TQ100", "A"), expected);
    EXPECT_EQ(family->GetDevice("TQ100", "A"), expected);
  }
}

TEST(FamilyLookups, AllocateNothing) {
  const std::string longText(500, 'x');
  const char* const text = longText.c_str();
  const FamilyOwner family = MakeFamily();
  for (int i = 0; i < 100; ++i) {
    AddDevice(*family).Name("N").CodeName("C").AliasName("A").Comm("JTAG").Vendor("V").PackageType("TQ100");
  }
  const long before = support::AllocationCount();
  const DeviceInfo* const found[] = {family->GetDeviceWithCodeName(text),
                                     family->GetDeviceWithCodeNameandVendor(text, "V"),
                                     family->GetDevice("JTAG", 0x45),
                                     family->GetDeviceWithComm("JTAG", text),
                                     family->GetDeviceWithCodeName("JTAG", text),
                                     family->GetDeviceWithPackage("TQ100", text),
                                     family->GetDevice("TQ100", text)};
  const long made = support::AllocationCount() - before;
  EXPECT_EQ(made, 0);
  for (const DeviceInfo* const device : found) EXPECT_EQ(device, nullptr);
}

// The differences, both levels side by side: a database of one family.

TEST(FamilyAndDatabase, DifferInANullCodeName) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().CodeName("");
  EXPECT_EQ(tree->GetFamily(0)->GetDeviceWithCodeName(kNull), device);
  EXPECT_EQ(tree->GetDeviceWithCodeName(kNull), nullptr);
}

TEST(FamilyAndDatabase, DifferInANullCodeNameWithAnAccessMode) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().CodeName("").Comm("JTAG");
  EXPECT_EQ(tree->GetFamily(0)->GetDeviceWithCodeName("JTAG", kNull), device);
  EXPECT_EQ(tree->GetDeviceWithCommAndCodeName("JTAG", kNull), nullptr);
}

TEST(FamilyAndDatabase, DifferInMaskAndZeroOfIdentifiers) {
  const SampleTree tree;
  const FamilyList& family = *tree->GetFamily(0);
  DeviceInfo* const zero = tree.AddDevice().Mask(0xFFFFFFFF);
  EXPECT_EQ(family.GetDevice("JTAG", 0), zero);
  EXPECT_EQ(tree->GetDeviceWithCommAndIDNoMask("JTAG", 0), nullptr);
  EXPECT_EQ(tree->GetDeviceWithCommAndID("JTAG", 0), nullptr);

  DeviceInfo* const masked = tree.AddDevice().Jtag(0x1123A093).Mask(0x0FFFFFFF);
  EXPECT_EQ(family.GetDevice("JTAG", 0x0123A093), nullptr);
  EXPECT_EQ(tree->GetDeviceWithCommAndIDNoMask("JTAG", 0x0123A093), nullptr);
  EXPECT_EQ(tree->GetDeviceWithCommAndID("JTAG", 0x0123A093), masked);

  DeviceInfo* const unmasked = tree.AddDevice().Jtag(0x45).Mask(0);
  EXPECT_EQ(family.GetDevice("JTAG", 0x45), unmasked);
  EXPECT_EQ(tree->GetDeviceWithCommAndIDNoMask("JTAG", 0x45), unmasked);
  EXPECT_EQ(tree->GetDeviceWithCommAndID("JTAG", 0x45), nullptr);
}

TEST(FamilyAndDatabase, DifferInTheVendorWithACodeName) {
  const SampleTree tree;
  tree.AddDevice().CodeName("A").Vendor("Other");
  DeviceInfo* const device = tree.AddDevice().CodeName("A").Vendor("Quorel");
  EXPECT_EQ(tree->GetFamily(0)->GetDeviceWithCodeNameandVendor("a", "quorel"), device);
  EXPECT_EQ(tree->GetFamily(0)->GetDeviceWithCodeName("a"), tree->GetDeviceWithCodeName("a")) << "nobody else asks for it";
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithCodeName("a")), "0.0");
}

TEST(FamilyAndDatabase, DifferInTheNumberOfDevicesVisited) {
  const SampleTree tree;
  FamilyList& family = *tree->GetFamily(0);
  support::AddDevices(family, support::kUncountedDevices - 1);
  DeviceInfo* const last = tree.AddDevice().Name("N").CodeName("C").AliasName("A").Comm("JTAG").Jtag(0x45).Vendor("V");
  SampleDevice(last).PackageType("TQ100");
  EXPECT_EQ(family.GetDeviceCount(), 0);
  const struct {
    const char* what;
    const DeviceInfo* inFamily;
    const DeviceInfo* inDatabase;
  } cases[] = {
      {"code name", family.GetDeviceWithCodeName("C"), tree->GetDeviceWithCodeName("C")},
      {"alias name", family.GetDeviceWithCodeName("A"), tree->GetDeviceWithCodeName("A")},
      {"identifier", family.GetDevice("JTAG", 0x45), tree->GetDeviceWithCommAndIDNoMask("JTAG", 0x45)},
      {"mode and name", family.GetDeviceWithComm("JTAG", "N"), tree->GetDeviceWithComm("JTAG", "N")},
      {"mode and code name", family.GetDeviceWithCodeName("JTAG", "C"), tree->GetDeviceWithCommAndCodeName("JTAG", "C")},
      {"package and name", family.GetDeviceWithPackage("TQ100", "N"), tree->GetDeviceWithPackage("TQ100", "N")},
      {"package and code name", family.GetDevice("TQ100", "C"), tree->GetDeviceWithPackageAndCodeName("TQ100", "C")},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(row.inFamily, last) << "row: " << row.what;
    EXPECT_EQ(row.inDatabase, nullptr) << "row: " << row.what;
  }
  EXPECT_EQ(family.GetDeviceWithCodeNameandVendor("C", "V"), last);
}

TEST(FamilyAndDatabase, DifferInHowACodeNameIsCompared) {
  const SampleTree carried;
  DeviceInfo* const nameless = carried.AddDevice();
  EXPECT_EQ(carried->GetFamily(0)->GetDeviceWithCodeName(""), nameless) << "carried over, the empty text at first";
  EXPECT_EQ(carried->GetDeviceWithCodeName(""), nullptr) << "as it is";

  const std::string longText(1'024, 'x');
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().CodeName(longText.c_str());
  EXPECT_EQ(tree->GetFamily(0)->GetDeviceWithCodeName(longText.c_str()), nullptr) << "up to 1,023 characters";
  EXPECT_EQ(tree->GetDeviceWithCodeName(longText.c_str()), device) << "any length";
}

}  // namespace
