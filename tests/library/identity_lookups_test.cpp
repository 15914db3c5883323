// Lookups by names, access modes, packages, identifiers, file names and ordering numbers. What all lookups share, the walk, is
// tested in database_walk_test.cpp.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "DeviceList.h"
#include "tests/reference/lookup_rules.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/carried_text.h"
#include "tests/support/sample_tree.h"
#include "tests/support/show.h"

namespace {

using support::SampleDevice;
using support::SampleTree;
using support::Show;
using Texts = std::vector<std::string>;

// By name

TEST(GetDeviceWithName, FindsTheFirstOfTheNameIgnoringCase) {
  const std::string longName(3'000, 'n');
  const std::string longNameUpper(3'000, 'N');
  const SampleTree tree;
  tree.AddDevice().Name(nullptr).CodeName("A").AliasName("A");
  tree.AddDevice().Name("Dev-1");
  tree.AddFamily();
  tree.AddDevice().Name("DEV-1");
  tree.AddDevice().Name("");
  tree.AddDevice().Name(longName.c_str());
  tree.AddDevice().Name("\xE9");
  const struct {
    const char* name;
    const char* place;
  } cases[] = {
      {"Dev-1", "0.1"},   {"dEV-1", "0.1"}, {"DEV-1", "0.1"},  {"Dev", "none"},
      {"Dev-1 ", "none"}, {"", "1.1"},      {"A", "none"},     {longNameUpper.c_str(), "1.2"},
      {"\xE9", "1.3"},    {"\xC9", "none"}, {nullptr, "none"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithName(row.name)), row.place) << "name: " << Show(row.name);
  }
}

TEST(GetDeviceWithName, TakesADevicesOwnName) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().Name("A");
  EXPECT_EQ(tree->GetDeviceWithName(device->GetName()), device);
}

// By code name

struct CodeNamed {
  const char* codeName;
  const char* aliasName = nullptr;
  const char* vendor = nullptr;
};

TEST(GetDeviceWithCodeName, TriesCodeNamesEverywhereBeforeAliases) {
  const std::string longText(3'000, 'c');
  const std::string longTextUpper(3'000, 'C');
  const struct {
    const char* what;
    std::vector<std::vector<CodeNamed>> families;
    const char* codeName;
    const char* place;
  } cases[] = {
      {"ignoring case", {{{"B"}, {"Code-1"}}}, "cODE-1", "0.1"},
      {"the first", {{{"B"}}, {{"a"}, {"A"}}}, "A", "1.0"},
      {"the whole text", {{{"AB"}, {"A"}}}, "A", "0.1"},
      {"texts of any length", {{{"B"}, {longText.c_str()}}}, longTextUpper.c_str(), "0.1"},
      {"no code name", {{{nullptr}, {""}}}, "", "0.1"},
      {"no code name, no alias", {{{nullptr}}}, "", "none"},
      {"null", {{{nullptr}, {""}}}, nullptr, "none"},
      {"unknown", {{{"A"}, {"B"}}}, "C", "none"},

      {"by alias, ignoring case", {{{"B"}, {"C", "Alias"}}}, "aLIAS", "0.1"},
      {"the first alias", {{{"B"}}, {{"C", "A"}, {"D", "A"}}}, "A", "1.0"},
      {"by alias without code name", {{{nullptr, "A"}}}, "A", "0.0"},
      {"aliases of any length", {{{"B"}, {"C", longText.c_str()}}}, longTextUpper.c_str(), "0.1"},
      {"a code name in the last family beats an alias in the first", {{{"B", "A"}}, {{"C"}}, {{"A"}}}, "A", "2.0"},
      {"a later device beats an earlier alias", {{{"B", "A"}, {"A"}}}, "A", "0.1"},
      {"the empty alias", {{{"B"}, {"C", ""}}}, "", "0.1"},

      {"aliases of Quorel are not looked at", {{{"B", "A", "Quorel"}}}, "A", "none"},
      {"... whatever comes later is", {{{"B", "A", "Quorel"}, {"C", "A", "Other"}}}, "A", "0.1"},
      {"Quorel in lower case is another vendor", {{{"B", "A", "quorel"}}}, "A", "0.0"},
      {"Quorel in upper case is another vendor", {{{"B", "A", "QUOREL"}}}, "A", "0.0"},
      {"a longer vendor is another vendor", {{{"B", "A", "Quorel "}}}, "A", "0.0"},
      {"a shorter vendor is another vendor", {{{"B", "A", "Quore"}}}, "A", "0.0"},
      {"the empty vendor is another vendor", {{{"B", "A", ""}}}, "A", "0.0"},
      {"no vendor is another vendor", {{{"B", "A", nullptr}}}, "A", "0.0"},
      {"Quorel's code names are looked at", {{{"A", "B", "Quorel"}}}, "A", "0.0"},
  };
  for (const auto& row : cases) {
    const SampleTree tree;
    for (const auto& family : row.families) {
      for (const CodeNamed& device : family) {
        tree.AddDevice().CodeName(device.codeName).AliasName(device.aliasName).Vendor(device.vendor);
      }
      tree.AddFamily();
    }
    EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithCodeName(row.codeName)), row.place) << "row: " << row.what;
  }
}

TEST(GetDeviceWithCodeName, ComparesNeitherNamesNorOrderingNumbers) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().Name("A").PackagePON("A").BackupPON("A").AliasPON("A");
  device->SetPON("A");
  EXPECT_EQ(tree->GetDeviceWithCodeName("A"), nullptr);
}

// By access mode or package, and a carried-over text

using TwoTexts = DeviceInfo* (DeviceList::*)(const char*, const char*) const;

support::CarriedTextLookup Lookup(const char* name, SampleDevice (SampleDevice::*text)(const char*) const,
                                  SampleDevice (SampleDevice::*key)(const char*) const, TwoTexts find) {
  const auto ask = [find](const SampleTree& tree, const char* keyAsked, const char* textAsked) {
    return ((*tree).*find)(keyAsked, textAsked);
  };
  return {name, text, key, ask, true};
}

const std::vector<support::CarriedTextLookup>& CarriedTextLookups() {
  using S = SampleDevice;
  using D = DeviceList;
  static const std::vector<support::CarriedTextLookup> lookups = {
      Lookup("GetDeviceWithComm", &S::Name, &S::Comm, &D::GetDeviceWithComm),
      Lookup("GetDeviceWithCommAndCodeName", &S::CodeName, &S::Comm, &D::GetDeviceWithCommAndCodeName),
      Lookup("GetDeviceWithPackage", &S::Name, &S::PackageType, &D::GetDeviceWithPackage),
      Lookup("GetDeviceWithPackageAndCodeName", &S::CodeName, &S::PackageType, &D::GetDeviceWithPackageAndCodeName),
  };
  return lookups;
}

TEST(CarriedTextLookups, CompareTheTextOfTheLastDeviceThatHadOne) {
  for (const auto& lookup : CarriedTextLookups()) support::ExpectCarriedTextCases(lookup);
}

TEST(CarriedTextLookups, AgreeWithTheLiteralRuleForAllShortSequencesOfDevices) {
  for (const auto& lookup : CarriedTextLookups()) support::ExpectCarriedTextRule(lookup);
}

TEST(CarriedTextLookups, MatchNothingForNull) {
  for (const auto& lookup : CarriedTextLookups()) {
    const SampleTree tree;
    for (const char* const text : {static_cast<const char*>(nullptr), "", "A"}) {
      for (const char* const key : {static_cast<const char*>(nullptr), "", "X"}) {
        const SampleDevice device = tree.AddDevice();
        (device.*lookup.text)(text);
        (device.*lookup.key)(key);
      }
    }
    EXPECT_EQ(lookup.find(tree, nullptr, "A"), nullptr) << lookup.name;
    EXPECT_EQ(lookup.find(tree, "X", nullptr), nullptr) << lookup.name;
    EXPECT_EQ(lookup.find(tree, nullptr, nullptr), nullptr) << lookup.name;
  }
}

TEST(CarriedTextLookups, CompareEachItsOwnText) {
  const SampleTree tree;
  tree.AddDevice().Name("N").CodeName("C").Comm("JTAG").PackageType("TQ100");
  tree.AddDevice().Name("C").CodeName("N").Comm("JTAG").PackageType("TQ100");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithComm("JTAG", "n")), "0.0");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithCommAndCodeName("JTAG", "n")), "0.1");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithPackage("TQ100", "n")), "0.0");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithPackageAndCodeName("TQ100", "n")), "0.1");
}

TEST(PackageLookups, TakeAnyPackageOfTheDevice) {
  const SampleTree tree;
  tree.AddDevice().Name("A").CodeName("A");
  tree.AddDevice().Name("A").CodeName("A").PackageType("PC84").PackageType(nullptr).PackageType("tq100");
  tree.AddDevice().Name("A").CodeName("A").PackageType(nullptr).PackageType("PC84").PackageType("TQ100");
  tree.AddDevice().Name("A").CodeName("A").PackageType("TQ100");
  const struct {
    const char* type;
    const char* place;
  } cases[] = {{"PC84", "0.1"}, {"tq100", "0.1"}, {"TQ100", "0.2"}, {"TQ", "none"}, {"", "none"}, {"PC84 ", "none"}};
  for (const auto& row : cases) {
    EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithPackage(row.type, "a")), row.place) << "type: " << row.type;
    EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithPackageAndCodeName(row.type, "a")), row.place) << "type: " << row.type;
  }
}

// By identifier

struct Identified {
  unsigned int mask;
  unsigned int isp;
  unsigned int jtag;
};

SampleDevice AddIdentified(const SampleTree& tree, const Identified& device) {
  return tree.AddDevice().Mask(device.mask).Isp(device.isp).Jtag(device.jtag);
}

TEST(IdentifierLookups, CompareUnderTheScanMask) {
  const struct {
    const char* what;
    Identified device;
    const char* comm;
    unsigned int id;
    bool masked;
    bool whole;
  } cases[] = {
      {"version nibble masked out", {0x0FFFFFFF, 0, 0x1123A093}, "JTAG", 0x0123A093, true, false},
      {"... and equal", {0x0FFFFFFF, 0, 0x1123A093}, "JTAG", 0x1123A093, true, true},
      {"another part", {0x0FFFFFFF, 0, 0x1123A093}, "JTAG", 0x0123B093, false, false},
      {"mask 0", {0, 0, 0x1123A093}, "JTAG", 0x1123A093, false, true},
      {"full mask", {0xFFFFFFFF, 0, 0x1123A093}, "JTAG", 0x0123A093, false, false},
      {"the ISP identifier is not JTAG's", {0xFFFFFFFF, 0x1123A093, 0x7}, "JTAG", 0x1123A093, false, false},
      {"JTAG identifier 0", {0x0000FFFF, 0, 0}, "JTAG", 0x12340000, false, false},
      {"a mask that leaves no bit of either", {0x0000000F, 0, 0x10}, "JTAG", 0x20, true, false},
      {"the highest bit counts", {0x80000000, 0, 0x80000001}, "JTAG", 0x80000002, true, false},
      {"the highest bit differs", {0x80000000, 0, 0x80000001}, "JTAG", 0x00000001, false, false},

      {"ISP under the mask", {0x0000FF00, 0x12344500, 0}, "ISP", 0x000045FF, true, false},
      {"ISP equal", {0xFFFFFFFF, 0x45, 0}, "ISP", 0x45, true, true},
      {"ISP compares more than the low byte", {0xFFFFFFFF, 0x12345645, 0}, "ISP", 0x45, false, false},
      {"ISP mask 0", {0, 0x45, 0}, "ISP", 0x45, false, true},
      {"ISP identifier 0", {0x0000FF00, 0, 0}, "ISP", 0x45, false, false},
      {"the JTAG identifier is not ISP's", {0xFFFFFFFF, 0x7, 0x45}, "ISP", 0x45, false, false},

      {"DUAL by the low byte of ISP", {0xFFFFFFFF, 0x12345645, 0}, "DUAL", 0x45, true, false},
      {"... whatever the mask", {0xFFFFFF00, 0x12345645, 0x77770000}, "DUAL", 0x99999945, true, false},
      {"... but not mask 0", {0, 0x12345645, 0}, "DUAL", 0x45, false, false},
      {"DUAL by ISP identifier 0", {0xFFFFFFFF, 0, 0x7}, "DUAL", 0x12345600, true, false},
      {"another low byte", {0xFFFFFFFF, 0x12345645, 0}, "DUAL", 0x12345646, false, false},
      {"another low byte outside the mask", {0xFFFFFF00, 0x12345646, 0x77770000}, "DUAL", 0x99999945, false, false},
      {"DUAL by JTAG under the mask", {0x0FFFFFFF, 0x7, 0x1123A093}, "DUAL", 0x0123A093, true, false},
      {"DUAL by JTAG identifier 0", {0x0000FFFF, 0x7, 0}, "DUAL", 0x12340000, true, false},
      {"DUAL mask 0", {0, 0x7, 0x1123A093}, "DUAL", 0x1123A093, false, true},
      {"DUAL whole by ISP", {0xFFFFFFFF, 0x12345645, 0x7}, "DUAL", 0x12345645, true, true},
      {"DUAL whole by JTAG", {0xFFFFFFFF, 0x7, 0x1123A093}, "DUAL", 0x1123A093, true, true},

      {"id 0 for JTAG identifier 0", {0xFFFFFFFF, 0, 0}, "JTAG", 0, false, false},
      {"id 0 for ISP identifier 0", {0xFFFFFFFF, 0, 0}, "ISP", 0, false, false},
      {"id 0 for both", {0xFFFFFFFF, 0, 0}, "DUAL", 0, false, false},
      {"id 0 under the mask", {0x0000FFFF, 0x10000, 0x10000}, "JTAG", 0, false, false},
  };
  for (const auto& row : cases) {
    const SampleTree tree;
    DeviceInfo* const device = AddIdentified(tree, row.device).CodeName("C");
    DeviceInfo* const masked = row.masked ? device : nullptr;
    Texts codeNames;
    EXPECT_EQ(tree->GetDeviceWithCommAndID(row.comm, row.id), masked) << "row: " << row.what;
    EXPECT_EQ(tree->GetDeviceWithCommAndIDAndCodeName(row.comm, row.id, "C"), masked) << "row: " << row.what;
    EXPECT_EQ(tree->GetDeviceListWithCommAndID(row.comm, row.id), row.masked ? 1 : 0) << "row: " << row.what;
    EXPECT_EQ(tree->GetDeviceListWithCommAndID(row.comm, row.id, codeNames), row.masked ? 1 : 0) << "row: " << row.what;
    EXPECT_EQ(tree->GetDeviceWithCommAndIDNoMask(row.comm, row.id), row.whole ? device : nullptr) << "row: " << row.what;
  }
}

TEST(IdentifierLookups, KnowThreeAccessModesByteForByte) {
  const SampleTree tree;
  for (const char* const own : {"JTAG", "ISP", "DUAL"}) {
    AddIdentified(tree, {0xFFFFFFFF, 0x45, 0x45}).CodeName("C").Comm(own);
  }
  const char* const unknown[] = {nullptr, "",          " ",     "Jtag",   "jtag",  "JTA",     "JTAG1",   "JTAG ",
                                 " JTAG", "IEEE 1532", "isp",   "Isp",    "IS",    "ISP ",    "ISPX",    "dual",
                                 "Dual",  "DUA",       "DUAL1", "JTAG\n", "DUAL ", "JTAGISP", "ISP/JTAG"};
  Texts codeNames;
  for (const char* const comm : unknown) {
    EXPECT_EQ(tree->GetDeviceWithCommAndID(comm, 0x45), nullptr) << "comm: " << Show(comm);
    EXPECT_EQ(tree->GetDeviceWithCommAndIDAndCodeName(comm, 0x45, "C"), nullptr) << "comm: " << Show(comm);
    EXPECT_EQ(tree->GetDeviceWithCommAndIDNoMask(comm, 0x45), nullptr) << "comm: " << Show(comm);
    EXPECT_EQ(tree->GetDeviceListWithCommAndID(comm, 0x45), 0) << "comm: " << Show(comm);
    EXPECT_EQ(tree->GetDeviceListWithCommAndID(comm, 0x45, codeNames), 0) << "comm: " << Show(comm);
  }
}

TEST(IdentifierLookups, DoNotAskForTheDevicesOwnAccessMode) {
  for (const char* const own : {static_cast<const char*>(nullptr), "", "JTAG", "ISP", "DUAL", "other"}) {
    const SampleTree tree;
    DeviceInfo* const device = AddIdentified(tree, {0xFFFFFFFF, 0x45, 0x45}).Comm(own);
    for (const char* const comm : {"JTAG", "ISP", "DUAL"}) {
      EXPECT_EQ(tree->GetDeviceWithCommAndID(comm, 0x45), device) << "own: " << Show(own) << ", asked: " << comm;
      EXPECT_EQ(tree->GetDeviceWithCommAndIDNoMask(comm, 0x45), device) << "own: " << Show(own) << ", asked: " << comm;
    }
  }
}

TEST(IdentifierLookups, ReadNoBackupsAndNoToolMask) {
  const SampleTree tree;
  DeviceInfo* const device = AddIdentified(tree, {0, 0, 0x45});
  device->SetjtagDeviceIDBackup(0x46);
  device->SetDeviceIDMask(0xFFFFFFFF);
  device->SetDeviceIDMaskBackup(0xFFFFFFFF);
  EXPECT_EQ(tree->GetDeviceWithCommAndID("JTAG", 0x45), nullptr);
  EXPECT_EQ(tree->GetDeviceWithCommAndIDNoMask("JTAG", 0x46), nullptr);
  device->SetDeviceIDScanMask(0xFFFFFFFF);
  EXPECT_EQ(tree->GetDeviceWithCommAndID("JTAG", 0x45), device);
  EXPECT_EQ(tree->GetDeviceWithCommAndID("JTAG", 0x46), nullptr);
}

/// Identifiers that agree in some bits, in all that count, or not at all: chance alone would never let two agree.
class RandomIdentifiers {
 public:
  unsigned int Any() { return static_cast<unsigned int>(engine_()); }
  unsigned int Below(unsigned int limit) { return Any() % limit; }

  /// 0, all ones, one byte, few bits, any.
  unsigned int Mask() {
    const unsigned int kinds[] = {0, 0xFFFFFFFF, 0xFF, 1u << Below(32), Any() & Any() & Any(), Any()};
    return kinds[Below(6)];
  }

  /// 0, the same in the bits of the mask, in the low byte, in all bits but one, any.
  unsigned int Like(unsigned int id, unsigned int mask) {
    const unsigned int kinds[] = {0,    id ^ (Any() & ~mask), (id & 0xFF) | (Any() & 0xFFFFFF00), id ^ (1u << Below(32)), id,
                                  Any()};
    return kinds[Below(6)];
  }

 private:
  std::mt19937_64 engine_{20'240'611};
};

TEST(IdentifierLookups, AgreeWithTheBitwiseRuleForRandomIdentifiers) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().CodeName("C");
  RandomIdentifiers random;
  int accepted = 0;
  for (int i = 0; i < 300'000; ++i) {
    const unsigned int id = random.Below(50) == 0 ? 0 : random.Any();
    const unsigned int mask = random.Mask();
    const unsigned int isp = random.Like(id, mask);
    const unsigned int jtag = random.Like(id, mask);
    SampleDevice(device).Mask(mask).Isp(isp).Jtag(jtag);
    for (const char* const comm : {"ISP", "JTAG", "DUAL", "JTAG1"}) {
      const bool masked = reference::AcceptsIdentifier(comm, mask, isp, jtag, id);
      const bool whole = reference::AcceptsWholeIdentifier(comm, isp, jtag, id);
      ASSERT_EQ(tree->GetDeviceWithCommAndID(comm, id) == device, masked)
          << comm << " id " << id << " mask " << mask << " isp " << isp << " jtag " << jtag;
      ASSERT_EQ(tree->GetDeviceWithCommAndIDNoMask(comm, id) == device, whole)
          << comm << " id " << id << " isp " << isp << " jtag " << jtag;
      if (masked) ++accepted;
    }
  }
  EXPECT_GT(accepted, 100'000);
  EXPECT_LT(accepted, 800'000);
}

TEST(GetDeviceWithCommAndID, FindsTheFirstThatAccepts) {
  const SampleTree tree;
  AddIdentified(tree, {0, 0x45, 0x45});
  AddIdentified(tree, {0xFF, 0, 0x1145});
  tree.AddFamily();
  AddIdentified(tree, {0xFFFFFFFF, 0x45, 0x45});
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithCommAndID("JTAG", 0x45)), "0.1") << "no preference for the more exact mask";
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithCommAndID("ISP", 0x45)), "1.0");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithCommAndIDNoMask("JTAG", 0x45)), "0.0");
}

TEST(GetDeviceWithCommAndIDNoMask, PrefersNoIdentifierOfADualDevice) {
  const SampleTree tree;
  AddIdentified(tree, {0, 0x7, 0x45});
  AddIdentified(tree, {0, 0x45, 0x7});
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithCommAndIDNoMask("DUAL", 0x45)), "0.0");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithCommAndIDNoMask("ISP", 0x45)), "0.1");
}

TEST(GetDeviceWithCommAndIDAndCodeName, TakesTheCodeNameExactly) {
  const SampleTree tree;
  AddIdentified(tree, {0xFF, 0x45, 0x45}).CodeName("a").Name("A");
  AddIdentified(tree, {0xFF, 0x45, 0x45}).CodeName(nullptr).AliasName("A");
  AddIdentified(tree, {0xFF, 0x45, 0x46}).CodeName("A");
  AddIdentified(tree, {0xFF, 0x45, 0x145}).CodeName("A");
  AddIdentified(tree, {0xFF, 0x45, 0x45}).CodeName("A");
  AddIdentified(tree, {0xFF, 0x45, 0x45}).CodeName("");
  const struct {
    const char* codeName;
    const char* place;
  } cases[] = {{"A", "0.3"}, {"a", "0.0"}, {"", "0.5"}, {"A ", "none"}, {"B", "none"}, {nullptr, "none"}};
  for (const auto& row : cases) {
    EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithCommAndIDAndCodeName("JTAG", 0x45, row.codeName)), row.place)
        << "code name: " << Show(row.codeName);
  }
}

// Lists by identifier

/// Three devices that answer to 0x45, and others between them.
SampleTree ListedTree() {
  SampleTree tree;
  AddIdentified(tree, {0xFF, 0, 0x45}).CodeName("C1");
  AddIdentified(tree, {0, 0, 0x45}).CodeName("unmasked");
  AddIdentified(tree, {0xFF, 0, 0x145}).CodeName("");
  tree.AddFamily().SetHidden(true);
  AddIdentified(tree, {0xFF, 0, 0x46}).CodeName("other");
  AddIdentified(tree, {0xFF, 0, 0x45}).CodeName("C1");
  return tree;
}

TEST(GetDeviceListWithCommAndID, CollectsAllCodeNamesInOrderWithDuplicates) {
  const SampleTree tree = ListedTree();
  EXPECT_EQ(tree->GetDeviceListWithCommAndID("JTAG", 0x45), 3);
  EXPECT_EQ(tree->GetlistDevicenames(), Texts({"C1", "", "C1"}));
}

TEST(GetDeviceListWithCommAndID, ACodeNameThatIsMissingIsCollectedAsTheEmptyText) {
  const SampleTree tree;
  AddIdentified(tree, {0xFF, 0, 0x45});
  AddIdentified(tree, {0xFF, 0, 0x45}).CodeName("C");
  AddIdentified(tree, {0xFF, 0, 0x45});
  Texts codeNames;
  EXPECT_EQ(tree->GetDeviceListWithCommAndID("JTAG", 0x45, codeNames), 3);
  EXPECT_EQ(tree->GetlistDevicenames(), Texts({"", "C", ""}));
  EXPECT_EQ(codeNames, Texts({"C"}));
}

TEST(GetDeviceListWithCommAndID, CountsEmptyCodeNamesButDoesNotHandThemOut) {
  const SampleTree tree = ListedTree();
  Texts codeNames = {"old", "older"};
  EXPECT_EQ(tree->GetDeviceListWithCommAndID("JTAG", 0x45, codeNames), 3);
  EXPECT_EQ(codeNames, Texts({"C1", "C1"}));
  EXPECT_EQ(tree->GetlistDevicenames(), Texts({"C1", "", "C1"}));
}

TEST(GetDeviceListWithCommAndID, EachCallReplacesTheListUnlessTheIdIsZero) {
  const SampleTree tree = ListedTree();
  Texts codeNames = {"old"};
  const struct {
    const char* what;
    const char* comm;
    unsigned int id;
    int count;
    Texts listed;
    Texts handedOut;
  } steps[] = {
      {"id 0 before any", "JTAG", 0, 0, {}, {"old"}},
      {"three", "JTAG", 0x45, 3, {"C1", "", "C1"}, {"C1", "C1"}},
      {"id 0", "JTAG", 0, 0, {"C1", "", "C1"}, {"C1", "C1"}},
      {"id 0, unknown mode", "jtag", 0, 0, {"C1", "", "C1"}, {"C1", "C1"}},
      {"one", "JTAG", 0x46, 1, {"other"}, {"other"}},
      {"none", "JTAG", 0x47, 0, {}, {}},
      {"three again", "JTAG", 0x1145, 3, {"C1", "", "C1"}, {"C1", "C1"}},
      {"unknown mode", "jtag", 0x45, 0, {}, {}},
      {"one again", "JTAG", 0x46, 1, {"other"}, {"other"}},
      {"null mode", nullptr, 0x45, 0, {}, {}},
  };
  for (const auto& step : steps) {
    EXPECT_EQ(tree->GetDeviceListWithCommAndID(step.comm, step.id, codeNames), step.count) << "step: " << step.what;
    EXPECT_EQ(tree->GetlistDevicenames(), step.listed) << "step: " << step.what;
    EXPECT_EQ(codeNames, step.handedOut) << "step: " << step.what;
    EXPECT_EQ(tree->GetDeviceListWithCommAndID(step.comm, step.id), step.count) << "two arguments, step: " << step.what;
    EXPECT_EQ(tree->GetlistDevicenames(), step.listed) << "two arguments, step: " << step.what;
  }
}

TEST(GetDeviceListWithCommAndID, TheAccessModeMayLieInTheListsThatItFills) {
  const SampleTree tree;
  AddIdentified(tree, {0xFF, 0, 0x45}).CodeName("JTAG");
  Texts codeNames;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(tree->GetDeviceListWithCommAndID(i == 0 ? "JTAG" : codeNames[0].c_str(), 0x45, codeNames), 1);
    EXPECT_EQ(codeNames, Texts({"JTAG"}));
    EXPECT_EQ(tree->GetDeviceListWithCommAndID(tree->GetlistDevicenames()[0].c_str(), 0x45), 1);
    EXPECT_EQ(tree->GetlistDevicenames(), Texts({"JTAG"}));
  }
}

TEST(GetDeviceListWithCommAndID, TheListIsTheSameObjectThroughoutAndUntouchedByOtherLookups) {
  const SampleTree tree = ListedTree();
  const Texts& listed = tree->GetlistDevicenames();
  tree->GetDeviceListWithCommAndID("JTAG", 0x46);
  EXPECT_EQ(listed, Texts({"other"}));
  EXPECT_NE(tree->GetDeviceWithCommAndID("JTAG", 0x45), nullptr);
  Texts candidates;
  tree->GetDeviceCodeNameWithFuseMap(0, candidates);
  EXPECT_EQ(listed, Texts({"other"}));
  EXPECT_EQ(&tree->GetlistDevicenames(), &listed);
}

TEST(GetDeviceListWithCommAndID, RunningOutOfMemoryLosesNothing) {
  const SampleTree tree;
  const std::string longCodeName(100, 'c');
  for (int i = 0; i < 5; ++i) AddIdentified(tree, {0xFF, 0, 0x45}).CodeName(longCodeName.c_str());
  const long failures = support::ForEachFailingAllocation([&] {
    Texts codeNames;
    tree->GetDeviceListWithCommAndID("JTAG", 0x45, codeNames);
  });
  EXPECT_GT(failures, 5);
  EXPECT_EQ(tree->GetDeviceListWithCommAndID("JTAG", 0x45), 5);
  EXPECT_EQ(tree->GetlistDevicenames(), Texts(5, longCodeName));
}

// By file name

TEST(GetDeviceWithJDFFileName, ComparesSixCharactersAndTheLength) {
  const struct {
    const char* stored;
    const char* asked;
    bool found;
  } cases[] = {
      {"ABCDEF01.jdf", "ABCDEF01.jdf", true},
      {"ABCDEF01.jdf", "ABCDEFxy.jdf", true},
      {"ABCDEF01.jdf", "ABCDEF......", true},
      {"ABCDEF01.jdf", "ABCDEf01.jdf", false},  // the sixth character counts, and its case
      {"ABCDEF01.jdf", "aBCDEF01.jdf", false},
      {"ABCDEF01.jdf", "ABCDEF1.jdf", false},
      {"ABCDEF01.jdf", "ABCDEF", false},
      {"ABCDEF", "ABCDEF01.jdf", false},
      {"ABCDEFG", "ABCDEFg", true},
      {"ABCDEF", "ABCDEF", true},
      {"ABCDE", "ABCDE", true},
      {"ABCDE", "ABCDF", false},
      {"A", "A", true},
      {"A", "a", false},
      {"", "", true},
      {"", "A", false},
      {"A", "", false},
      {nullptr, "", false},
      {nullptr, "ABCDEF", false},
      {nullptr, nullptr, false},
      {"", nullptr, false},
      {"ABCDEF", nullptr, false},
  };
  for (const auto& row : cases) {
    const SampleTree tree;
    DeviceInfo* const device = tree.AddDevice().JDF(row.stored);
    EXPECT_EQ(tree->GetDeviceWithJDFFileName(row.asked), row.found ? device : nullptr)
        << "stored: " << Show(row.stored) << ", asked: " << Show(row.asked);
  }
}

TEST(GetDeviceWithJDFFileName, TakesTheFirstDeviceWithSuchAPackage) {
  const SampleTree tree;
  tree.AddDevice();
  tree.AddDevice().JDF(nullptr).JDF("other.jdf").JDF("ABCDEFxx");
  tree.AddFamily();
  tree.AddDevice().JDF("ABCDEF00");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithJDFFileName("ABCDEF00")), "0.1") << "on purpose not the exact name further on";
}

// By ordering number

TEST(GetDeviceWithPON, ComparesBackupAndAliasNumbers) {
  const std::string longNumber(3'000, 'p');
  const std::string longNumberUpper(3'000, 'P');
  const struct {
    const char* stored;
    const char* asked;
    bool whole;     // found as it is
    bool stripped;  // found without its suffix
  } cases[] = {
      {"abc123", "ABC123", true, true},
      {"abc123-tr", "ABC123", false, true},
      {"abc123-tr", "abc123-TR", true, false},  // the argument is never shortened
      {"abc123", "abc123-tr", false, false},
      {"abc-123-tr", "abc", false, false},  // cut at the last one
      {"abc-123-tr", "abc-123", false, true},
      {"abc-123-tr", "abc-123-tr", true, false},
      {"abc-", "abc", false, true},
      {"abc-", "abc-", true, false},
      {"-abc", "-ABC", true, true},  // one in front is no suffix
      {"-abc", "", false, false},
      {"-", "-", true, true},
      {"-", "", false, false},
      {"--", "-", false, true},
      {"--", "--", true, false},
      {"a-", "a", false, true},
      {" -tr", " ", false, true},
      {"abc 123", "abc123", false, false},  // spaces count
      {"abc/123", "abc_123", false, false},
      {"", "", true, true},
      {"", "A", false, false},
      {"A", "", false, false},
      {longNumber.c_str(), longNumberUpper.c_str(), true, true},
      {"\xE9", "\xC9", false, false},
      {nullptr, "", false, false},
      {nullptr, nullptr, false, false},
      {"", nullptr, false, false},
      {"abc", nullptr, false, false},
  };
  for (const auto& add : {&SampleDevice::BackupPON, &SampleDevice::AliasPON}) {
    for (const auto& row : cases) {
      const SampleTree tree;
      const SampleDevice described = tree.AddDevice();
      (described.*add)(row.stored);
      DeviceInfo* const device = described;
      EXPECT_EQ(tree->GetDeviceWithPON(row.asked, false), row.whole ? device : nullptr)
          << "stored: " << Show(row.stored) << ", asked: " << Show(row.asked);
      EXPECT_EQ(tree->GetDeviceWithPON(row.asked, true), row.stripped ? device : nullptr)
          << "stripped, stored: " << Show(row.stored) << ", asked: " << Show(row.asked);
    }
  }
}

TEST(GetDeviceWithPON, DoesNotCompareThePrimaryNumbers) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().PackagePON("ABC123").CodeName("ABC123").Name("ABC123");
  device->SetPON("ABC123");
  EXPECT_EQ(tree->GetDeviceWithPON("ABC123", false), nullptr);
  EXPECT_EQ(tree->GetDeviceWithPON("ABC123", true), nullptr);
}

TEST(GetDeviceWithPON, TakesTheFirstDeviceWithSuchAPackage) {
  const SampleTree tree;
  tree.AddDevice();
  tree.AddDevice().BackupPON("X").BackupPON(nullptr).AliasPON("A");
  tree.AddFamily();
  tree.AddDevice().BackupPON("A").BackupPON("B");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithPON("A", false)), "0.1") << "an alias number in front of a backup number";
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithPON("b", false)), "1.0");
}

TEST(GetDeviceWithPON, TakesTheAliasNumberOfAPackageWhoseBackupNumberDiffers) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice();
  Package* const package = device->GetDevicePackage()->NewPackage();
  package->SetBackupPON("A-1");
  package->SetAliasPON("B-2");
  for (const char* const pon : {"A-1", "B-2"}) EXPECT_EQ(tree->GetDeviceWithPON(pon, false), device) << "pon: " << pon;
  for (const char* const pon : {"A", "B"}) EXPECT_EQ(tree->GetDeviceWithPON(pon, true), device) << "pon: " << pon;
  for (const char* const pon : {"A", "B"}) EXPECT_EQ(tree->GetDeviceWithPON(pon, false), nullptr) << "pon: " << pon;
}

}  // namespace
