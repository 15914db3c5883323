#include "DeviceList.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/allocation_counter.h"
#include "tests/support/field_rules.h"
#include "tests/support/sample_tree.h"
#include "tests/support/tree_equality.h"

namespace {

using support::FamiliesIn;
using support::SampleTree;
using support::Show;

static_assert(std::is_base_of_v<LObject, DeviceList>);
static_assert(std::is_default_constructible_v<DeviceList> && std::is_constructible_v<DeviceList, DeviceList*>);
static_assert(!std::is_convertible_v<DeviceList*, DeviceList>);
static_assert(!std::is_copy_constructible_v<DeviceList> && !std::is_move_constructible_v<DeviceList>);
static_assert(std::is_assignable_v<DeviceList&, DeviceList&> && !std::is_assignable_v<DeviceList&, const DeviceList&>);
static_assert(!std::is_assignable_v<DeviceList&, DeviceList&&>);
static_assert(std::is_same_v<decltype(std::declval<const DeviceList&>().GetFamilyCount()), unsigned short>);
static_assert(std::is_same_v<decltype(std::declval<const DeviceList&>().GetDeviceCount()), unsigned short>);
static_assert(
    std::is_same_v<decltype(std::declval<const DeviceList&>().GetlistDevicenames()), const std::vector<std::string>&>);

struct FamilyNames {
  const char* name;
  const char* aliasName = nullptr;
};

/// A database of families with these names; null leaves a family without the text.
DeviceListOwner DatabaseOf(const std::vector<FamilyNames>& families) {
  DeviceListOwner database = MakeDeviceList();
  for (const FamilyNames& names : families) {
    FamilyList& family = *database->NewFamily();
    family.SetName(names.name);
    family.SetAliasName(names.aliasName);
  }
  return database;
}

// Version and comment

const std::vector<support::Field<DeviceList>>& RootFields() {
  static const std::vector<support::Field<DeviceList>> fields = {
      support::Row("Version", "SetVersion", &DeviceList::SetVersion, "GetVersion", &DeviceList::GetVersion),
      support::Row("Comment", "SetComment", &DeviceList::SetComment, "GetComment", &DeviceList::GetComment),
  };
  return fields;
}

TEST(DeviceListTexts, FollowTheRulesOfEveryTextField) {
  auto rows = RootFields();
  rows.push_back(support::InternalRow<DeviceList>("Families").SetBy({"AddNewDeviceList"}));
  support::ExpectARowForEachSetter(rows, "DeviceList");
  support::ExpectDefaults(RootFields(), MakeDeviceList);
  support::ExpectRoundTrips(RootFields(), MakeDeviceList);
  support::ExpectIndependence(RootFields(), MakeDeviceList);
  support::ExpectNullTextRule(RootFields(), MakeDeviceList);
  support::ExpectEmptyTextRule(RootFields(), MakeDeviceList);
  support::ExpectPrivateCopies(RootFields(), MakeDeviceList);
  support::ExpectOwnTextsAsArguments(RootFields(), MakeDeviceList);
  support::ExpectFailedSetsChangeNothing(RootFields(), MakeDeviceList);
}

// Families

TEST(DeviceListFamilies, AnEmptyDatabaseHasNone) {
  const DeviceList database;
  EXPECT_EQ(database.GetFamilyCount(), 0);
  EXPECT_EQ(database.GetDeviceCount(), 0);
  EXPECT_EQ(database.GetFamily(0), nullptr);
  EXPECT_EQ(database.GetFamily(""), nullptr);
  EXPECT_EQ(database.GetLastFamily(), nullptr);
  EXPECT_TRUE(database.GetlistDevicenames().empty());
}

TEST(DeviceListFamilies, NewFamilyAppendsAFamilyWithDefaultsOnly) {
  const DeviceListOwner database = MakeDeviceList();
  FamilyList fresh;
  for (const char* const name : {"A", "B", "C"}) {
    FamilyList* const family = database->NewFamily();
    EXPECT_EQ(support::DifferenceOf(*family, fresh), "") << "family: " << name;
    EXPECT_EQ(database->GetLastFamily(), family) << "family: " << name;
    family->SetName(name);
  }
  EXPECT_EQ(FamiliesIn(*database), "A B C");
  EXPECT_EQ(database->GetFamilyCount(), 3);
}

TEST(DeviceListFamilies, AFamilyThatCannotBeStoredLeavesTheDatabaseAsItWas) {
  const DeviceListOwner database = DatabaseOf({{"A"}, {"B"}});
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { database->NewFamily(); },
                                                          [&] {
                                                            const long left = support::LiveAllocations();
                                                            EXPECT_EQ(left, live);
                                                            EXPECT_EQ(FamiliesIn(*database), "A B");
                                                          });
  EXPECT_GT(failures, 0);
  EXPECT_EQ(database->GetFamilyCount(), 3);
}

TEST(DeviceListFamilies, PositionsCountFromZero) {
  const DeviceListOwner database = DatabaseOf({{"A"}, {"B"}});
  const struct {
    int i;
    const char* name;
  } cases[] = {{0, "A"}, {1, "B"}, {2, nullptr}, {-1, nullptr}, {INT_MAX, nullptr}, {INT_MIN, nullptr}};
  for (const auto& row : cases) {
    const FamilyList* const family = database->GetFamily(row.i);
    EXPECT_EQ(Show(family == nullptr ? nullptr : family->GetName()), Show(row.name)) << "position: " << row.i;
  }
}

TEST(DeviceListFamilies, GetFamilyTriesNameAndAliasOfEachFamilyBeforeTheNext) {
  const struct {
    const char* what;
    std::vector<FamilyNames> families;
    const char* name;
    int found;
  } cases[] = {
      {"by name", {{"A"}, {"X"}}, "X", 1},
      {"by alias", {{"A"}, {"B", "X"}}, "X", 1},
      {"an earlier name", {{"X"}, {"B", "X"}}, "X", 0},
      {"an earlier alias", {{"A", "X"}, {"X"}}, "X", 0},
      {"the first of a name", {{"A"}, {"X"}, {"X"}}, "X", 1},
      {"the first of an alias", {{"A"}, {"B", "X"}, {"C", "X"}}, "X", 1},
      {"letter case of the name", {{"x"}, {"X "}, {"X"}}, "X", 2},
      {"letter case of the alias", {{"A", "x"}, {"B", "X"}}, "X", 1},
      {"whole texts", {{"XY", "XZ"}}, "X", -1},
      {"families without texts", {{nullptr}, {nullptr, "X"}, {"X"}}, "X", 1},
      {"null finds no family without texts", {{nullptr}}, nullptr, -1},
      {"the empty name", {{nullptr}, {"A", ""}, {""}}, "", 1},
      {"the empty name is not the missing one", {{nullptr}, {"A"}}, "", -1},
  };
  for (const auto& row : cases) {
    const DeviceListOwner database = DatabaseOf(row.families);
    EXPECT_EQ(database->GetFamily(row.name), database->GetFamily(row.found)) << "row: " << row.what;
  }
}

TEST(DeviceListFamilies, TextsOfAnyLengthAreCompared) {
  const std::string name(5'000, 'x');
  const DeviceListOwner database = DatabaseOf({{(name + "y").c_str()}, {name.c_str()}});
  EXPECT_EQ(database->GetFamily(name.c_str()), database->GetFamily(1));
}

TEST(DeviceListFamilies, DeleteFamilyByNameDestroysTheFirstOfTheName) {
  const struct {
    const char* what;
    std::vector<FamilyNames> families;
    const char* name;
    const char* left;
  } cases[] = {
      {"one", {{"A"}, {"X"}, {"B"}}, "X", "A B"},
      {"the first", {{"X"}, {"A"}, {"X"}}, "X", "A X"},
      {"not by alias", {{"A", "X"}, {"B"}}, "X", "A B"},
      {"past an alias", {{"A", "X"}, {"X"}}, "X", "A"},
      {"letter case", {{"x"}, {"B"}}, "X", "x B"},
      {"unknown", {{"A"}, {"B"}}, "X", "A B"},
      {"families without a name are skipped", {{nullptr}, {"X"}}, "X", "null"},
      {"null", {{nullptr}, {"X"}}, nullptr, "null X"},
      {"empty", {{nullptr}, {""}, {"A"}}, "", "null A"},
  };
  for (const auto& row : cases) {
    const DeviceListOwner database = DatabaseOf(row.families);
    database->DeleteFamily(row.name);
    EXPECT_EQ(FamiliesIn(*database), row.left) << "row: " << row.what;
  }
}

TEST(DeviceListFamilies, DeleteFamilyTakesAFamilysOwnName) {
  const DeviceListOwner database = DatabaseOf({{"A"}, {"B"}});
  database->DeleteFamily(database->GetFamily(1)->GetName());
  EXPECT_EQ(FamiliesIn(*database), "A");
}

TEST(DeviceListFamilies, DeleteFamilyByPositionIgnoresPositionsOutsideTheList) {
  const struct {
    int i;
    const char* left;
  } cases[] = {{0, "B C"}, {1, "A C"}, {2, "A B"}, {3, "A B C"}, {-1, "A B C"}, {INT_MAX, "A B C"}, {INT_MIN, "A B C"}};
  for (const auto& row : cases) {
    const DeviceListOwner database = DatabaseOf({{"A"}, {"B"}, {"C"}});
    database->DeleteFamily(row.i);
    EXPECT_EQ(FamiliesIn(*database), row.left) << "position: " << row.i;
  }
}

TEST(DeviceListFamilies, AreDestroyedWhenDeletedAndWithTheDatabase) {
  const long live = support::LiveAllocations();
  {
    DeviceList database;
    database.NewFamily()->SetName("A");
    database.NewFamily()->SetOperationList("\"Erase\"");
    database.NewFamily()->SetName("C");
    database.DeleteFamily("A");
    database.DeleteFamily(1);
  }
  const long left = support::LiveAllocations() - live;
  EXPECT_EQ(left, 0);
}

TEST(DeviceListFamilies, DevicesSurviveTheirFamilyAndTheDatabase) {
  std::vector<std::unique_ptr<DeviceInfo>> devices;
  {
    DeviceList database;
    for (const char* const name : {"A", "B"}) {
      FamilyList& family = *database.NewFamily();
      family.SetName(name);
      devices.emplace_back(support::AddDevice(family).Name(name));
    }
    database.DeleteFamily("A");
    EXPECT_STREQ(devices[0]->GetName(), "A");
  }
  EXPECT_STREQ(devices[0]->GetName(), "A");
  EXPECT_STREQ(devices[1]->GetName(), "B");
}

// Counts

TEST(DeviceListCounts, TheFamilyCountIsSixteenBitsWideAndTheListIsNot) {
  const DeviceListOwner database = MakeDeviceList();
  for (int i = 0; i < 65'536; ++i) database->NewFamily();
  FamilyList* const last = database->GetLastFamily();
  last->SetName("last");
  last->SetBypassInst("FF");
  support::AddDevices(*last, 1);
  EXPECT_EQ(database->GetFamilyCount(), 0);
  EXPECT_EQ(database->GetFamily(65'535), last);
  EXPECT_EQ(database->GetFamily("last"), last);
  EXPECT_STREQ(database->GetBypassInstwfamilyName("last"), "FF");
  EXPECT_EQ(database->GetDeviceCount(), 1);
  database->NewFamily();
  EXPECT_EQ(database->GetFamilyCount(), 1);
}

TEST(DeviceListCounts, TheDeviceCountSumsTheCountsOfTheFamilies) {
  const SampleTree tree;
  EXPECT_EQ(tree->GetDeviceCount(), 0);
  support::AddDevices(*tree->GetFamily(0), 2);
  tree.AddFamily();
  support::AddDevices(tree.AddFamily(), 3);
  EXPECT_EQ(tree->GetDeviceCount(), 5);
  tree->GetFamily(0)->SetHidden(true);
  EXPECT_EQ(tree->GetDeviceCount(), 5);
}

TEST(DeviceListCounts, TheDeviceCountIsSixteenBitsWide) {
  const SampleTree tree;
  support::AddDevices(*tree->GetFamily(0), support::kUncountedDevices);
  support::AddDevices(tree.AddFamily(), 3);
  EXPECT_EQ(tree->GetDeviceCount(), 3) << "a family of 65,536 devices counts as empty";
  const std::unique_ptr<DeviceInfo> deleted(tree->GetFamily(0)->DeleteDevice(1));
  EXPECT_EQ(tree->GetDeviceCount(), 2) << "65,535 and 3 are 65,538";
}

// Attributes by family name

struct Attribute {
  const char* name;
  std::function<void(FamilyList&)> set;
  std::function<std::string(const DeviceList&, const char*)> ask;
  std::string answer;  // once it is set
  std::string unset;   // while it is not
  std::string none;    // without a family of the name
};

template <typename Set, typename Value, typename Ask>
Attribute MakeAttribute(const char* name, Set set, Value value, Ask ask, const char* unset, const char* none) {
  return {name,
          [=](FamilyList& family) { (family.*set)(value); },
          [=](const DeviceList& database, const char* family) { return Show((database.*ask)(family)); },
          Show(value),
          unset,
          none};
}

const std::vector<Attribute>& Attributes() {
  using F = FamilyList;
  using D = DeviceList;
  // clang-format off
  static const std::vector<Attribute> attributes = {
      MakeAttribute("BypassInst",        &F::SetBypassInst,        "FF",    &D::GetBypassInstwfamilyName,        "null", "null"),
      MakeAttribute("IDCodeInst",        &F::SetIDCodeInst,        "16",    &D::GetIDCodeInstwfamilyName,        "null", "null"),
      MakeAttribute("ISCRelease",        &F::SetISCRelease,        -7,      &D::GetISCReleasewfamilyName,        "0", "0"),
      MakeAttribute("Hidden",            &F::SetHidden,            true,    &D::GetHiddenwfamilyName,            "false", "false"),
      MakeAttribute("FPGALoaderSupport", &F::SetFPGALoaderSupport, true,    &D::GetFPGALoaderSupportwfamilyName, "false", "false"),
      MakeAttribute("FPGADevice",        &F::SetFPGADevice,        true,    &D::GetFPGADevicewfamilyName,        "false", "false"),
      MakeAttribute("ReInitialize",      &F::SetReInitialize,      true,    &D::GetReInitializewfamilyName,      "false", "false"),
      MakeAttribute("DebugMode",         &F::SetDebugMode,         true,    &D::GetDebugModewfamilyName,         "false", "false"),
      MakeAttribute("Extension",         &F::SetExtension,         "*.bit", &D::GetExtensionwfamilyName,         "'*.jed'", "null"),
  };
  // clang-format on
  return attributes;
}

TEST(FamilyAttributes, ComeFromTheFamilyOfExactlyThisName) {
  for (const Attribute& attribute : Attributes()) {
    const DeviceListOwner database = DatabaseOf({{nullptr}, {"a"}, {"A ", "A"}, {"A", "alias"}, {"B"}});
    attribute.set(*database->GetFamily(3));
    EXPECT_EQ(attribute.ask(*database, "A"), attribute.answer) << "attribute: " << attribute.name;
    for (const char* const other : {"alias", "AB", "", "C"}) {
      EXPECT_EQ(attribute.ask(*database, other), attribute.none) << "attribute: " << attribute.name << ", name: " << other;
    }
  }
}

TEST(FamilyAttributes, ComeFromTheFirstOfTwoFamiliesOfTheName) {
  for (const Attribute& attribute : Attributes()) {
    const DeviceListOwner database = DatabaseOf({{"other"}, {"A"}, {"A"}});
    attribute.set(*database->GetFamily(2));
    EXPECT_EQ(attribute.ask(*database, "A"), attribute.unset) << "attribute: " << attribute.name;
    database->DeleteFamily("A");
    EXPECT_EQ(attribute.ask(*database, "A"), attribute.answer) << "attribute: " << attribute.name;
  }
}

TEST(FamilyAttributes, HaveNoAnswerForNullOrInAnEmptyDatabase) {
  const DeviceListOwner empty = MakeDeviceList();
  for (const Attribute& attribute : Attributes()) {
    const DeviceListOwner database = DatabaseOf({{nullptr}, {"A"}});
    for (int i = 0; i < 2; ++i) attribute.set(*database->GetFamily(i));
    EXPECT_EQ(attribute.ask(*database, nullptr), attribute.none) << "attribute: " << attribute.name;
    EXPECT_EQ(attribute.ask(*empty, "A"), attribute.none) << "attribute: " << attribute.name;
    EXPECT_EQ(attribute.ask(*empty, nullptr), attribute.none) << "attribute: " << attribute.name;
  }
}

TEST(FamilyAttributes, HiddenFamiliesAnswerToo) {
  for (const Attribute& attribute : Attributes()) {
    const DeviceListOwner database = DatabaseOf({{"A"}});
    database->GetFamily(0)->SetHidden(true);
    attribute.set(*database->GetFamily(0));
    EXPECT_EQ(attribute.ask(*database, "A"), attribute.answer) << "attribute: " << attribute.name;
  }
}

TEST(FamilyAttributes, TheExtensionDefaultsToJedecFilesButNotForGenericDevices) {
  constexpr const char* kGeneric = "Generic JTAG Device";
  struct Extended {
    const char* name;
    const char* extension;
  };
  const struct {
    const char* what;
    std::vector<Extended> families;
    const char* name;
    const char* extension;
  } cases[] = {
      {"set", {{"Foo", "*.bit"}}, "Foo", "*.bit"},
      {"set to the empty text", {{"Foo", ""}}, "Foo", ""},
      {"not set", {{"Foo", nullptr}}, "Foo", "*.jed"},
      {"not set: a later family is not asked", {{"Foo", nullptr}, {"Foo", "*.bit"}}, "Foo", "*.jed"},
      {"unknown", {{"Foo", "*.bit"}}, "Bar", nullptr},
      {"null", {{nullptr, "*.bit"}}, nullptr, nullptr},
      {"generic, set", {{kGeneric, "*.svf"}, {kGeneric, "*.bit"}}, kGeneric, "*.svf"},
      {"generic, set to the empty text", {{kGeneric, ""}, {kGeneric, "*.bit"}}, kGeneric, ""},
      {"generic, not set", {{kGeneric, nullptr}}, kGeneric, nullptr},
      {"generic, not set twice", {{kGeneric, nullptr}, {"Foo", "*.bit"}, {kGeneric, nullptr}}, kGeneric, nullptr},
      {"generic, set later", {{kGeneric, nullptr}, {"Foo", "*.bit"}, {kGeneric, "*.svf"}}, kGeneric, "*.svf"},
      {"generic, unknown", {{"Foo", "*.bit"}}, kGeneric, nullptr},
      {"nearly generic", {{"generic jtag device", nullptr}}, "generic jtag device", "*.jed"},
      {"nearly generic, too", {{"Generic JTAG Device ", nullptr}}, "Generic JTAG Device ", "*.jed"},
  };
  for (const auto& row : cases) {
    const DeviceListOwner database = MakeDeviceList();
    for (const Extended& extended : row.families) {
      FamilyList& family = *database->NewFamily();
      family.SetName(extended.name);
      family.SetExtension(extended.extension);
    }
    EXPECT_EQ(Show(database->GetExtensionwfamilyName(row.name)), Show(row.extension)) << "row: " << row.what;
  }
}

}  // namespace
