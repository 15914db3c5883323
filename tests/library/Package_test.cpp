#include "Package.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/allocation_counter.h"
#include "tests/support/exported_operations.h"

namespace {

static_assert(std::is_base_of_v<LObject, Package>);
static_assert(!std::is_copy_constructible_v<Package> && !std::is_copy_assignable_v<Package>);
static_assert(!std::is_move_constructible_v<Package> && !std::is_move_assignable_v<Package>);
static_assert(std::is_constructible_v<Package, Package*> && !std::is_convertible_v<Package*, Package>);
static_assert(std::is_same_v<decltype(std::declval<const Package&>().GetAdapterCount()), int>);
static_assert(std::is_same_v<decltype(std::declval<const Package&>().GetEntityName()), std::string>);

struct Field {
  const char* name;
  void (Package::*set)(const char*);
  char* (Package::*get)() const;
};

constexpr Field kFields[] = {
    {"Type", &Package::SetType, &Package::GetType},
    {"PON", &Package::SetPON, &Package::GetPON},
    {"JDF", &Package::SetJDF, &Package::GetJDF},
    {"INI", &Package::SetINI, &Package::GetINI},
    {"OrvoSetting", &Package::SetOrvoSetting, &Package::GetOrvoSetting},
    {"BackupPON", &Package::SetBackupPON, &Package::GetBackupPON},
    {"AliasPON", &Package::SetAliasPON, &Package::GetAliasPON},
};

constexpr int kOutsideTwo[] = {-1, 2, 3, 1000, INT_MIN, INT_MAX};

using Texts = std::vector<std::string>;

/// The adapters as "vendor/name".
Texts Adapters(const Package& package) {
  Texts texts;
  for (int i = 0; i < package.GetAdapterCount(); ++i) {
    texts.push_back(std::string(package.GetAdapterVendor(i)) + "/" + package.GetAdapterName(i));
  }
  return texts;
}

void FillTexts(Package& package) {
  for (const Field& field : kFields) (package.*field.set)(field.name);
}

void AddTwoAdapters(Package& package) {
  package.AddAdapter("V0", "A0");
  package.AddAdapter("V1", "A1");
}

TEST(Package, EachSetterHasARowInTheTable) {
  std::set<std::string> named = {"AddAdapter", "SetAdapter"};
  for (const Field& field : kFields) named.insert(std::string("Set") + field.name);
  EXPECT_EQ(named, support::ExportedSetters("Package"));
}

TEST(Package, StartsEmpty) {
  const Package package;
  for (const Field& field : kFields) EXPECT_EQ((package.*field.get)(), nullptr) << field.name;
  EXPECT_EQ(package.GetAdapterCount(), 0);
}

TEST(Package, EveryTextIsKeptAsAPrivateCopy) {
  for (const Field& field : kFields) {
    Package package;
    char text[] = "one";
    (package.*field.set)(text);
    text[0] = 'X';
    EXPECT_STREQ((package.*field.get)(), "one") << field.name;
    (package.*field.set)("");
    EXPECT_STREQ((package.*field.get)(), "") << field.name;
  }
}

TEST(Package, NullKeepsTheOldText) {
  for (const Field& field : kFields) {
    Package package;
    (package.*field.set)(nullptr);
    EXPECT_EQ((package.*field.get)(), nullptr) << field.name;
    (package.*field.set)("one");
    (package.*field.set)(nullptr);
    EXPECT_STREQ((package.*field.get)(), "one") << field.name;
  }
}

TEST(Package, SettingOneTextLeavesAllOthers) {
  for (const Field& field : kFields) {
    Package package;
    (package.*field.set)("set");
    for (const Field& other : kFields) {
      const char* const text = (package.*other.get)();
      EXPECT_EQ(text != nullptr, &other == &field) << "set: " << field.name << ", read: " << other.name;
    }
  }
}

TEST(Package, ItsOwnTextIsALegalArgument) {
  Package package;
  FillTexts(package);
  for (const Field& field : kFields) (package.*field.set)((package.*field.get)());
  package.SetPON(package.GetBackupPON() + 6);
  EXPECT_STREQ(package.GetType(), "Type");
  EXPECT_STREQ(package.GetPON(), "PON");
  EXPECT_STREQ(package.GetAliasPON(), "AliasPON");
}

TEST(Package, AFailedAllocationKeepsTheOldText) {
  for (const Field& field : kFields) {
    Package package;
    FillTexts(package);
    const long failures = support::ForEachFailingAllocation([&] { (package.*field.set)("new"); },
                                                            [&] { EXPECT_STREQ((package.*field.get)(), field.name); });
    EXPECT_EQ(failures, 1) << field.name;
  }
}

TEST(PackageAdapters, AddAdapterAppendsCopiesOfTheTextsAndLendsTheAdapter) {
  Package package;
  char vendor[] = "V0";
  char name[] = "A0";
  Adapter* const first = package.AddAdapter(vendor, name);
  vendor[0] = name[0] = 'X';
  Adapter* const second = package.AddAdapter("", "");
  EXPECT_EQ(Adapters(package), (Texts{"V0/A0", "/"}));
  EXPECT_EQ(package.GetAdapter(0), first);
  EXPECT_EQ(package.GetAdapter(1), second);
}

TEST(PackageAdapters, AddAdapterWithEitherTextNullAddsNothing) {
  Package package;
  const char* const none = nullptr;
  EXPECT_EQ(package.AddAdapter(none, "A"), nullptr);
  EXPECT_EQ(package.AddAdapter("V", none), nullptr);
  EXPECT_EQ(package.AddAdapter(none, none), nullptr);
  EXPECT_EQ(package.GetAdapterCount(), 0);
}

TEST(PackageAdapters, AddAdapterTakesTextsOfThePackage) {
  Package package;
  package.AddAdapter("V0", "A0");
  package.AddAdapter(package.GetAdapterName(0), package.GetAdapterVendor(0));
  EXPECT_EQ(Adapters(package), (Texts{"V0/A0", "A0/V0"}));
}

TEST(PackageAdapters, AddAdapterAppendsACopyAndTheCallerKeepsTheOriginal) {
  Package package;
  Adapter original;
  original.SetVendorName("V");
  original.SetAdapterName("A");
  Adapter* const copy = package.AddAdapter(&original);
  EXPECT_NE(copy, &original);
  EXPECT_EQ(package.GetAdapter(0), copy);
  original.SetVendorName("changed");
  EXPECT_EQ(Adapters(package), Texts{"V/A"});
}

TEST(PackageAdapters, AddAdapterCopiesNullTextsAsNull) {
  Package package;
  Adapter original;
  package.AddAdapter(&original);
  EXPECT_EQ(package.GetAdapterCount(), 1);
  EXPECT_EQ(package.GetAdapterVendor(0), nullptr);
  EXPECT_EQ(package.GetAdapterName(0), nullptr);
}

TEST(PackageAdapters, AddAdapterOfNullAddsNothing) {
  Package package;
  Adapter* const none = nullptr;
  EXPECT_EQ(package.AddAdapter(none), nullptr);
  EXPECT_EQ(package.GetAdapterCount(), 0);
}

TEST(PackageAdapters, AddAdapterCopiesAnAdapterOfItsOwn) {
  Package package;
  AddTwoAdapters(package);
  package.AddAdapter(package.GetAdapter(0));
  EXPECT_EQ(Adapters(package), (Texts{"V0/A0", "V1/A1", "V0/A0"}));
  EXPECT_NE(package.GetAdapter(2), package.GetAdapter(0));
}

TEST(PackageAdapters, RemoveAdapterDestroysTheOneAtThePosition) {
  const struct {
    int i;
    Texts after;
  } cases[] = {{0, {"V1/A1", "V2/A2"}}, {1, {"V0/A0", "V2/A2"}}, {2, {"V0/A0", "V1/A1"}}};
  for (const auto& row : cases) {
    Package package;
    AddTwoAdapters(package);
    package.AddAdapter("V2", "A2");
    const long live = support::LiveAllocations();
    package.RemoveAdapter(row.i);
    const long freed = live - support::LiveAllocations();
    EXPECT_EQ(Adapters(package), row.after) << "i: " << row.i;
    EXPECT_EQ(freed, 3) << "i: " << row.i;  // the adapter and its two texts
  }
}

TEST(PackageAdapters, RemoveAdapterOutsideTheListChangesNothing) {
  Package package;
  AddTwoAdapters(package);
  for (const int i : kOutsideTwo) {
    package.RemoveAdapter(i);
    EXPECT_EQ(Adapters(package), (Texts{"V0/A0", "V1/A1"})) << "i: " << i;
  }
}

TEST(PackageAdapters, EveryQueryOutsideTheListIsNull) {
  Package package;
  AddTwoAdapters(package);
  for (const int i : kOutsideTwo) {
    EXPECT_EQ(package.GetAdapter(i), nullptr) << "i: " << i;
    EXPECT_EQ(package.GetAdapterName(i), nullptr) << "i: " << i;
    EXPECT_EQ(package.GetAdapterVendor(i), nullptr) << "i: " << i;
    EXPECT_EQ(package.SetAdapter(i, "V", "A"), nullptr) << "i: " << i;
  }
  EXPECT_EQ(Adapters(package), (Texts{"V0/A0", "V1/A1"}));
}

TEST(PackageAdapters, SetAdapterSetsBothTextsAndNullKeepsOne) {
  const struct {
    const char* vendor;
    const char* name;
    const char* after;
  } cases[] = {
      {"V", "A", "V/A"}, {nullptr, "A", "V1/A"}, {"V", nullptr, "V/A1"}, {nullptr, nullptr, "V1/A1"}, {"", "", "/"},
  };
  for (const auto& row : cases) {
    Package package;
    AddTwoAdapters(package);
    EXPECT_EQ(package.SetAdapter(1, row.vendor, row.name), package.GetAdapter(1)) << "row: " << row.after;
    EXPECT_EQ(Adapters(package), (Texts{"V0/A0", row.after}));
  }
}

TEST(PackageAdapters, SetAdapterTakesItsOwnTextsAsTheyWereAtTheCall) {
  Package package;
  AddTwoAdapters(package);
  package.SetAdapter(0, package.GetAdapterName(0), package.GetAdapterVendor(0));
  EXPECT_EQ(Adapters(package), (Texts{"A0/V0", "V1/A1"}));
  package.SetAdapter(0, package.GetAdapterVendor(0), package.GetAdapterVendor(0));
  EXPECT_EQ(Adapters(package), (Texts{"A0/A0", "V1/A1"}));
  package.SetAdapter(1, nullptr, package.GetAdapterVendor(1));
  EXPECT_EQ(Adapters(package), (Texts{"A0/A0", "V1/V1"}));
}

TEST(PackageAdapters, ClearAdapterListDestroysAll) {
  Package package;
  package.ClearAdapterList();
  AddTwoAdapters(package);
  const long live = support::LiveAllocations();
  package.ClearAdapterList();
  const long freed = live - support::LiveAllocations();
  EXPECT_EQ(package.GetAdapterCount(), 0);
  EXPECT_EQ(freed, 6);
  package.AddAdapter("V", "A");
  EXPECT_EQ(Adapters(package), Texts{"V/A"});
}

TEST(PackageAdapters, AFailedAllocationLeavesTheListAsItWas) {
  Adapter original;
  original.SetVendorName("V");
  original.SetAdapterName("A");
  const struct {
    const char* name;
    void (*operation)(Package&, Adapter&);
  } cases[] = {
      {"AddAdapter(texts)", [](Package& package, Adapter&) { package.AddAdapter("V", "A"); }},
      {"AddAdapter(adapter)", [](Package& package, Adapter& adapter) { package.AddAdapter(&adapter); }},
      {"SetAdapter", [](Package& package, Adapter&) { package.SetAdapter(1, "V", "A"); }},
  };
  for (const auto& row : cases) {
    Package package;
    AddTwoAdapters(package);
    long live = support::LiveAllocations();
    const auto unchanged = [&] {
      const long now = support::LiveAllocations();
      EXPECT_EQ(now, live) << "row: " << row.name;
      EXPECT_EQ(Adapters(package), (Texts{"V0/A0", "V1/A1"})) << "row: " << row.name;
    };
    EXPECT_GE(support::ForEachFailingAllocation([&] { row.operation(package, original); }, unchanged), 2)
        << "row: " << row.name;
  }
}

TEST(PackageEntityName, IsTheBackupNumberWithFourCharactersMapped) {
  const struct {
    const char* backup;
    const char* name;
  } cases[] = {
      {"AB-12 (C)/D", "AB_12 _C__D"},
      {"", ""},
      {" ", " "},  // on purpose: spaces stay
      {"-/()", "____"},
      {"a-b", "a_b"},  // the case stays
      {"A_B.C+D[E]\\F", "A_B.C+D[E]\\F"},
      {"--", "__"},
      {"\xE9-\xFF", "\xE9_\xFF"},
  };
  for (const auto& row : cases) {
    Package package;
    package.SetPON("X-Y");
    package.SetAliasPON("Z-Z");
    package.SetBackupPON(row.backup);
    EXPECT_EQ(package.GetEntityName(), row.name) << "backup: " << row.backup;
    EXPECT_STREQ(package.GetBackupPON(), row.backup);
  }
}

TEST(PackageEntityName, IsEmptyWithoutABackupNumber) {
  Package package;
  package.SetPON("X-Y");
  EXPECT_EQ(package.GetEntityName(), "");
}

TEST(PackageCopy, HasAllTextsAndAdaptersOfItsOwn) {
  auto source = std::make_unique<Package>();
  FillTexts(*source);
  AddTwoAdapters(*source);
  const Package copy(source.get());
  for (const Field& field : kFields) EXPECT_NE((copy.*field.get)(), (source.get()->*field.get)()) << field.name;
  EXPECT_NE(copy.GetAdapter(0), source->GetAdapter(0));
  source->SetType("changed");
  source->SetAdapter(0, "changed", "changed");
  source.reset();
  for (const Field& field : kFields) EXPECT_STREQ((copy.*field.get)(), field.name) << field.name;
  EXPECT_EQ(Adapters(copy), (Texts{"V0/A0", "V1/A1"}));
}

TEST(PackageCopy, NullTextsStayNull) {
  for (const Field& field : kFields) {
    Package source;
    FillTexts(source);
    Package unset;
    (unset.*field.set)(field.name);
    const Package copy(&unset);
    for (const Field& other : kFields) {
      const char* const text = (copy.*other.get)();
      EXPECT_EQ(text != nullptr, &other == &field) << "set: " << field.name << ", read: " << other.name;
    }
    EXPECT_STREQ((copy.*field.get)(), field.name) << field.name;
  }
}

TEST(PackageCopy, ANullSourceGivesAnEmptyPackage) {
  const Package copy(nullptr);
  for (const Field& field : kFields) EXPECT_EQ((copy.*field.get)(), nullptr) << field.name;
  EXPECT_EQ(copy.GetAdapterCount(), 0);
}

TEST(PackageCopy, SixteenBitsOfTheCountBoundTheCopy) {
  Package source;
  const struct {
    int count;
    int copied;
  } cases[] = {{65'535, 65'535}, {65'536, 0}, {65'537, 1}};
  for (const auto& row : cases) {
    while (source.GetAdapterCount() < row.count) source.AddAdapter("V", "A");
    const Package copy(&source);
    EXPECT_EQ(source.GetAdapterCount(), row.count);  // the package's own count has no such bound
    EXPECT_EQ(copy.GetAdapterCount(), row.copied) << "count: " << row.count;
  }
}

TEST(PackageCopy, AFailedAllocationLeaksNothing) {
  Package source;
  FillTexts(source);
  AddTwoAdapters(source);
  const long live = support::LiveAllocations();
  const auto noLeak = [&] {
    const long now = support::LiveAllocations();
    EXPECT_EQ(now, live);
  };
  EXPECT_GE(support::ForEachFailingAllocation([&] { const Package copy(&source); }, noLeak), 13);  // 7 texts, 2 adapters of 3
  noLeak();
  EXPECT_EQ(Adapters(source), (Texts{"V0/A0", "V1/A1"}));
}

TEST(Package, FreesAllWhenDeletedThroughTheBase) {
  const long live = support::LiveAllocations();
  auto package = std::make_unique<Package>();
  FillTexts(*package);
  AddTwoAdapters(*package);
  std::unique_ptr<LObject> object = std::move(package);
  object.reset();
  EXPECT_EQ(support::LiveAllocations(), live);
}

TEST(Package, QueriesAllocateNothing) {
  Package package;
  FillTexts(package);
  AddTwoAdapters(package);
  const long before = support::AllocationCount();
  for (const Field& field : kFields) (package.*field.get)();
  package.GetAdapterCount();
  package.GetAdapter(1);
  package.GetAdapterName(1);
  package.GetAdapterVendor(2);
  const long allocated = support::AllocationCount() - before;
  EXPECT_EQ(allocated, 0);
}

}  // namespace
