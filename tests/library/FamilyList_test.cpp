#include "FamilyList.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/allocation_counter.h"
#include "tests/support/family_fields.h"
#include "tests/support/field_rules.h"
#include "tests/support/locales.h"
#include "tests/support/sample_tree.h"
#include "tests/support/wide_integer.h"

namespace {

using support::AddDevice;
using support::FamilyFields;
using support::FamilyOwner;
using support::MakeFamily;
using support::NamesIn;
using support::Show;

static_assert(std::is_base_of_v<LObject, FamilyList>);
static_assert(std::is_default_constructible_v<FamilyList> && std::is_constructible_v<FamilyList, FamilyList*>);
static_assert(!std::is_convertible_v<FamilyList*, FamilyList>);
static_assert(!std::is_copy_constructible_v<FamilyList> && !std::is_copy_assignable_v<FamilyList>);
static_assert(!std::is_move_constructible_v<FamilyList> && !std::is_move_assignable_v<FamilyList>);
static_assert(std::is_same_v<decltype(std::declval<const FamilyList&>().GetDeviceCount()), unsigned short>);
static_assert(std::is_same_v<decltype(std::declval<const FamilyList&>().GetDevicePos("")), int>);

/// A family of devices with these names; null leaves a device without one.
FamilyOwner FamilyOf(const std::vector<const char*>& names) {
  FamilyOwner family = MakeFamily();
  for (const char* const name : names) AddDevice(*family).Name(name);
  return family;
}

/// The same with code names.
FamilyOwner FamilyOfCodeNames(const std::vector<const char*>& codeNames) {
  FamilyOwner family = MakeFamily();
  for (const char* const codeName : codeNames) AddDevice(*family).CodeName(codeName);
  return family;
}

// Fields

TEST(FamilyFields, HaveARowForEachSetter) { support::ExpectARowForEachSetter(FamilyFields(), "FamilyList"); }

TEST(FamilyAccessors, AFreshFamilyHasDefaultsOnly) { support::ExpectDefaults(FamilyFields(), MakeFamily); }

TEST(FamilyAccessors, AGetterAnswersWhatWasSetLast) { support::ExpectRoundTrips(FamilyFields(), MakeFamily); }

TEST(FamilyAccessors, AFieldHoldsEveryValueOfItsWidth) { support::ExpectFullWidths(FamilyFields(), MakeFamily); }

TEST(FamilyAccessors, SettingAFieldChangesNoOther) { support::ExpectIndependence(FamilyFields(), MakeFamily); }

TEST(FamilyAccessors, ANullTextKeepsTheOldOneExceptForICFFileAndTheTemplate) {
  support::ExpectNullTextRule(FamilyFields(), MakeFamily);
}

TEST(FamilyAccessors, AnEmptyTextIsStoredAsOneButAnswersNullInTheTemplate) {
  support::ExpectEmptyTextRule(FamilyFields(), MakeFamily);
}

TEST(FamilyAccessors, TheFamilyKeepsACopyOfATextOfAnyLength) { support::ExpectPrivateCopies(FamilyFields(), MakeFamily); }

TEST(FamilyAccessors, ATextOfTheFamilyIsALegalArgument) { support::ExpectOwnTextsAsArguments(FamilyFields(), MakeFamily); }

TEST(FamilyAccessors, ATextThatCannotBeStoredChangesNothing) {
  support::ExpectFailedSetsChangeNothing(FamilyFields(), MakeFamily);
}

TEST(FamilyAccessors, ICFFileIsNeverNullAndTheTemplateNeverEmpty) {
  FamilyList family;
  EXPECT_STREQ(family.GetICFFile(), "");
  EXPECT_EQ(family.GetExtension(), nullptr);
  EXPECT_EQ(family.GetBitstreamModelTemplate(), nullptr);
  family.SetICFFile("a.icf");
  family.SetBitstreamModelTemplate("model");
  EXPECT_STREQ(family.GetICFFile(), "a.icf");
  EXPECT_STREQ(family.GetBitstreamModelTemplate(), "model");
  family.SetICFFile(nullptr);
  family.SetBitstreamModelTemplate(nullptr);
  EXPECT_STREQ(family.GetICFFile(), "");
  EXPECT_EQ(family.GetBitstreamModelTemplate(), nullptr);
}

TEST(IsHidenFamily, AnswersTheFlagAndFalseForNull) {
  FamilyList family;
  EXPECT_FALSE(IsHidenFamily(nullptr));
  EXPECT_FALSE(IsHidenFamily(&family));
  family.SetHidden(true);
  EXPECT_TRUE(IsHidenFamily(&family));
  family.SetHidden(false);
  EXPECT_FALSE(IsHidenFamily(&family));
}

// Making devices

TEST(FamilyDevices, AnEmptyFamilyHasNone) {
  const FamilyList family;
  EXPECT_EQ(family.GetDeviceCount(), 0);
  EXPECT_EQ(family.GetLastDevice(), nullptr);
  EXPECT_EQ(family.GetDevice(0), nullptr);
}

TEST(FamilyDevices, EveryDeviceIsBoundToTheFamilyThatMadeIt) {
  const FamilyOwner family = MakeFamily();
  for (DeviceInfo* const device : {family->NewDevice(), family->InsertNewDevice(1), family->AddNewDevice(1)}) {
    ASSERT_NE(device, nullptr);
    EXPECT_EQ(device->GetFamilyObject(), family.get());
    EXPECT_EQ(device->GetName(), nullptr);
  }
  EXPECT_EQ(family->GetDeviceCount(), 3);
}

TEST(FamilyDevices, NewDeviceAppends) {
  const FamilyOwner family = MakeFamily();
  for (const char* const name : {"A", "B", "C"}) {
    DeviceInfo* const device = AddDevice(*family).Name(name);
    EXPECT_EQ(family->GetLastDevice(), device) << "device: " << name;
  }
  EXPECT_EQ(NamesIn(*family), "A B C");
}

struct InsertCase {
  int pos;
  const char* names;
};

void ExpectInserted(DeviceInfo* (FamilyList::*insert)(int), const std::vector<InsertCase>& cases) {
  for (const auto& row : cases) {
    const FamilyOwner family = FamilyOf({"A", "B", "C"});
    DeviceInfo* const device = (family.get()->*insert)(row.pos);
    if (device != nullptr) device->SetName("new");
    EXPECT_EQ(NamesIn(*family), row.names) << "pos: " << row.pos;
    EXPECT_EQ(device != nullptr, family->GetDeviceCount() == 4) << "pos: " << row.pos;
  }
}

TEST(FamilyDevices, InsertNewDeviceMakesItThePosthCountedFromOne) {
  ExpectInserted(&FamilyList::InsertNewDevice, {{1, "new A B C"},
                                                {2, "A new B C"},
                                                {3, "A B new C"},
                                                {4, "A B C new"},
                                                {5, "A B C"},
                                                {0, "A B C"},
                                                {-1, "A B C"},
                                                {INT_MAX, "A B C"},
                                                {INT_MIN, "A B C"}});
}

TEST(FamilyDevices, AddNewDevicePutsItAfterThePosthCountedFromOne) {
  ExpectInserted(&FamilyList::AddNewDevice, {{0, "new A B C"},
                                             {1, "A new B C"},
                                             {2, "A B new C"},
                                             {3, "A B C new"},
                                             {4, "A B C"},
                                             {-1, "A B C"},
                                             {INT_MAX, "A B C"},
                                             {INT_MIN, "A B C"}});
}

TEST(FamilyDevices, AnEmptyFamilyTakesItsFirstDeviceInEachWay) {
  const FamilyOwner inserted = MakeFamily();
  EXPECT_EQ(inserted->InsertNewDevice(2), nullptr);
  EXPECT_NE(inserted->InsertNewDevice(1), nullptr);
  EXPECT_EQ(inserted->GetDeviceCount(), 1);
  const FamilyOwner added = MakeFamily();
  EXPECT_EQ(added->AddNewDevice(1), nullptr);
  EXPECT_NE(added->AddNewDevice(0), nullptr);
  EXPECT_EQ(added->GetDeviceCount(), 1);
}

TEST(FamilyDevices, NoDeviceIsMadeForAPositionOutsideTheList) {
  const FamilyOwner family = FamilyOf({"A"});
  const long allocations = support::AllocationCount();
  const DeviceInfo* const inserted = family->InsertNewDevice(0);
  const DeviceInfo* const added = family->AddNewDevice(2);
  const long made = support::AllocationCount() - allocations;
  EXPECT_EQ(inserted, nullptr);
  EXPECT_EQ(added, nullptr);
  EXPECT_EQ(made, 0);
}

TEST(FamilyDevices, ADeviceThatCannotBeStoredLeavesTheFamilyAsItWas) {
  using Insert = DeviceInfo* (*)(FamilyList&);
  for (const Insert insert : {Insert{[](FamilyList& family) { return family.NewDevice(); }},
                              Insert{[](FamilyList& family) { return family.InsertNewDevice(1); }},
                              Insert{[](FamilyList& family) { return family.AddNewDevice(1); }}}) {
    const FamilyOwner family = FamilyOf({"A", "B"});
    const long live = support::LiveAllocations();
    const long failures = support::ForEachFailingAllocation([&] { insert(*family); },
                                                            [&] {
                                                              const long left = support::LiveAllocations();
                                                              EXPECT_EQ(left, live);
                                                              EXPECT_EQ(NamesIn(*family), "A B");
                                                            });
    EXPECT_GT(failures, 0);
    EXPECT_EQ(family->GetDeviceCount(), 3);
  }
}

// Devices by position

TEST(FamilyDevices, PositionsOfGetDeviceCountFromZero) {
  const FamilyOwner family = FamilyOf({"A", "B", "C"});
  const struct {
    int i;
    const char* name;
  } cases[] = {{0, "A"}, {1, "B"}, {2, "C"}, {3, nullptr}, {-1, nullptr}, {INT_MAX, nullptr}, {INT_MIN, nullptr}};
  for (const auto& row : cases) {
    const DeviceInfo* const device = family->GetDevice(row.i);
    EXPECT_EQ(Show(device == nullptr ? nullptr : device->GetName()), Show(row.name)) << "position: " << row.i;
  }
}

TEST(FamilyDevices, AnyIntegerTypeIsAPosition) {
  const FamilyOwner family = FamilyOf({"A", "B"});
  DeviceInfo* const second = family->GetDevice(1);
  EXPECT_EQ(family->GetDevice(static_cast<unsigned short>(1)), second);
  EXPECT_EQ(family->GetDevice(static_cast<unsigned short>(2)), nullptr);
  EXPECT_EQ(family->GetDevice(static_cast<unsigned short>(65'535)), nullptr);
  EXPECT_EQ(family->GetDevice(std::size_t{1}), second);
  EXPECT_EQ(family->GetDevice(support::kMinusOne), nullptr);
  EXPECT_EQ(family->GetDevice((1ULL << 32) + 1), nullptr);
  EXPECT_EQ(family->GetDevice(~std::size_t{0}), nullptr);
}

TEST(FamilyDevices, PositionsOfDeleteDeviceCountFromOne) {
  const struct {
    int pos;
    const char* deleted;
    const char* left;
  } cases[] = {
      {1, "A", "B C"},
      {2, "B", "A C"},
      {3, "C", "A B"},
      {4, nullptr, "A B C"},
      {0, nullptr, "A B C"},
      {-1, nullptr, "A B C"},
      {INT_MAX, nullptr, "A B C"},
      {INT_MIN, nullptr, "A B C"},
  };
  for (const auto& row : cases) {
    const FamilyOwner family = FamilyOf({"A", "B", "C"});
    const std::unique_ptr<DeviceInfo> device(family->DeleteDevice(row.pos));
    EXPECT_EQ(Show(device == nullptr ? nullptr : device->GetName()), Show(row.deleted)) << "pos: " << row.pos;
    EXPECT_EQ(NamesIn(*family), row.left) << "pos: " << row.pos;
  }
}

TEST(FamilyDevices, ADeletedDeviceIsTheCallersAndStaysUsable) {
  const FamilyOwner family = FamilyOf({"A", "B"});
  const std::unique_ptr<DeviceInfo> device(family->DeleteDevice(1));
  ASSERT_NE(device, nullptr);
  EXPECT_EQ(device->GetFamilyObject(), family.get());
  device->SetName("still here");
  EXPECT_STREQ(device->GetName(), "still here");
  EXPECT_EQ(NamesIn(*family), "B");
}

TEST(FamilyDevices, SurviveTheDestructionOfTheirFamily) {
  auto family = std::make_unique<FamilyList>();
  std::vector<std::unique_ptr<DeviceInfo>> devices;
  for (const char* const name : {"A", "B"}) {
    devices.emplace_back(family->NewDevice());
    devices.back()->SetName(name);
  }
  family.reset();
  EXPECT_STREQ(devices[0]->GetName(), "A");
  EXPECT_STREQ(devices[1]->GetName(), "B");
}

TEST(FamilyDevices, TheCountIsSixteenBitsWideAndTheListIsNot) {
  const FamilyOwner family = MakeFamily();
  support::AddDevices(*family, support::kUncountedDevices);
  DeviceInfo* const last = family->GetLastDevice();
  last->SetName("last");
  last->SetCodeName("code");
  EXPECT_EQ(family->GetDeviceCount(), 0);
  EXPECT_EQ(family->GetDevice(static_cast<unsigned short>(0)), nullptr);
  EXPECT_EQ(family->GetDevice(static_cast<unsigned short>(65'535)), nullptr);
  EXPECT_EQ(family->GetDevice(65'535), last);
  EXPECT_EQ(family->GetDevice("LAST"), last);
  EXPECT_EQ(family->GetDevicePos("LAST"), 65'535);

  DeviceInfo* const beyond = family->AddNewDevice(65'536);
  EXPECT_EQ(family->GetDeviceCount(), 1);
  EXPECT_EQ(family->GetDevice(static_cast<unsigned short>(0)), family->GetDevice(0));
  EXPECT_EQ(family->GetDevice(static_cast<unsigned short>(1)), nullptr);
  EXPECT_EQ(family->GetDevice(65'536), beyond);

  const std::unique_ptr<DeviceInfo> deleted(family->DeleteDevice("CODE"));
  EXPECT_EQ(deleted.get(), last);
  const std::unique_ptr<DeviceInfo> deletedLast(family->DeleteDevice(65'536));
  EXPECT_EQ(deletedLast.get(), beyond);
  EXPECT_EQ(family->GetDeviceCount(), 65'535);
  EXPECT_EQ(family->GetDevice(static_cast<unsigned short>(65'534)), family->GetDevice(65'534));
}

// Devices by text

TEST(FamilyDevices, GetDeviceFindsTheFirstOfTheNameIgnoringCase) {
  const FamilyOwner family = FamilyOf({nullptr, "DEV100A", "", "dev100a", "Dev-2", "\xE9"});
  const struct {
    const char* name;
    int pos;
  } cases[] = {
      {"dev100a", 1}, {"DEV100A", 1}, {"dEv100A", 1}, {"", 2},       {"DEV-2", 4},  {"dev100", -1}, {"dev100ab", -1},
      {" dev-2", -1}, {"dev-2 ", -1}, {"dev_2", -1},  {"other", -1}, {nullptr, -1}, {"\xE9", 5},    {"\xC9", -1},
  };
  support::ForEachLocale([&](const std::string& locale) {
    for (const auto& row : cases) {
      EXPECT_EQ(family->GetDevicePos(row.name), row.pos) << "name: " << Show(row.name) << ", locale: " << locale;
      EXPECT_EQ(family->GetDevice(row.name), family->GetDevice(row.pos))
          << "name: " << Show(row.name) << ", locale: " << locale;
    }
  });
}

TEST(FamilyDevices, TextsOf1024CharactersHaveNoPlaceInGetDevice) {
  for (const std::size_t length : {1'022u, 1'023u, 1'024u, 1'025u, 5'000u}) {
    const std::string stored(length, 'x');
    const std::string asked(length, 'X');
    const FamilyOwner family = FamilyOf({"A", stored.c_str()});
    const bool found = length < 1'024;
    EXPECT_EQ(family->GetDevicePos(asked.c_str()), found ? 1 : -1) << "length: " << length;
    EXPECT_EQ(family->GetDevice(asked.c_str()), found ? family->GetDevice(1) : nullptr) << "length: " << length;
    EXPECT_EQ(family->GetDevice(stored.c_str()), found ? family->GetDevice(1) : nullptr) << "length: " << length;
    EXPECT_EQ(family->GetDevice(""), nullptr) << "length: " << length;
    EXPECT_EQ(family->GetDevice("A"), family->GetDevice(0)) << "length: " << length;
  }
}

TEST(FamilyDevices, GetDeviceTakesTheNameAndDeleteDeviceTheCodeName) {
  const FamilyOwner family = MakeFamily();
  DeviceInfo* const device = AddDevice(*family).Name("DEV100A").CodeName("CODE");
  EXPECT_EQ(family->GetDevice("dev100a"), device);
  EXPECT_EQ(family->GetDevice("code"), nullptr);
  EXPECT_EQ(family->GetDevicePos("code"), -1);
  EXPECT_EQ(family->DeleteDevice("DEV100A"), nullptr);
  const std::unique_ptr<DeviceInfo> deleted(family->DeleteDevice("code"));
  EXPECT_EQ(deleted.get(), device);
  EXPECT_EQ(family->GetDeviceCount(), 0);
}

TEST(FamilyDevices, DeleteDeviceUnlinksTheFirstOfTheCodeNameIgnoringCase) {
  const std::string longest(1'023, 'y');
  const std::string longestUpper(1'023, 'Y');
  const std::string tooLong(1'024, 'y');
  const std::string tooLongToo(3'000, 'z');
  const struct {
    const char* what;
    std::vector<const char*> codeNames;
    const char* argument;
    int deleted;
  } cases[] = {
      {"ignoring case", {"A", "Code-1", "B"}, "cODE-1", 1},
      {"the first", {"A", "B", "b", "B"}, "b", 1},
      {"whole texts only", {"AB", "A"}, "A", 1},
      {"unknown", {"A", "B"}, "C", -1},
      {"null argument", {"A", nullptr, ""}, nullptr, -1},
      {"empty argument, empty code name", {"A", ""}, "", 1},
      {"empty argument, no code name", {"A", nullptr}, "", -1},
      {"no code name is skipped", {nullptr, "A"}, "A", 1},
      {"the longest text", {"A", longest.c_str()}, longestUpper.c_str(), 1},
      {"a longer code name counts as empty", {"A", tooLong.c_str()}, "", 1},
      {"a longer code name is not what it is", {longest.c_str(), tooLong.c_str()}, longest.c_str(), 0},
      {"a longer argument counts as empty", {"A", ""}, tooLong.c_str(), 1},
      {"both count as empty, whatever they are", {"A", tooLongToo.c_str()}, tooLong.c_str(), 1},
      {"a longer argument and no code name", {nullptr, "A"}, tooLong.c_str(), -1},
      {"the first of those that count as empty", {nullptr, tooLong.c_str(), ""}, "", 1},
  };
  for (const auto& row : cases) {
    const FamilyOwner family = FamilyOfCodeNames(row.codeNames);
    DeviceInfo* const expected = family->GetDevice(row.deleted);
    const std::unique_ptr<DeviceInfo> deleted(family->DeleteDevice(row.argument));
    EXPECT_EQ(deleted.get(), expected) << "row: " << row.what;
    EXPECT_EQ(family->GetDeviceCount(), row.codeNames.size() - (row.deleted < 0 ? 0 : 1)) << "row: " << row.what;
  }
}

TEST(FamilyDevices, DeleteDeviceTakesADevicesOwnCodeName) {
  const FamilyOwner family = FamilyOfCodeNames({"A", "B"});
  const std::unique_ptr<DeviceInfo> deleted(family->DeleteDevice(family->GetDevice(1)->GetCodeName()));
  ASSERT_NE(deleted, nullptr);
  EXPECT_STREQ(deleted->GetCodeName(), "B");
}

}  // namespace
