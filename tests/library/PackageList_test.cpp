#include "PackageList.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "package/walk.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/wide_integer.h"

using namespace plddb::internal;

namespace {

static_assert(std::is_base_of_v<LObject, PackageList>);
static_assert(!std::is_copy_constructible_v<PackageList> && !std::is_copy_assignable_v<PackageList>);
static_assert(!std::is_move_constructible_v<PackageList> && !std::is_move_assignable_v<PackageList>);
static_assert(std::is_constructible_v<PackageList, PackageList*> && !std::is_convertible_v<PackageList*, PackageList>);
static_assert(std::is_same_v<decltype(std::declval<const PackageList&>().GetPackageCount()), unsigned short>);

/// A package's texts; null stays unset.
struct Row {
  const char* type;
  const char* jdf;
  const char* pon;
  const char* orvo;
};

void Add(PackageList& list, const Row& row) {
  Package* const package = list.NewPackage();
  package->SetType(row.type);
  package->SetJDF(row.jdf);
  package->SetPON(row.pon);
  package->SetOrvoSetting(row.orvo);
}

void AddEmpty(PackageList& list, int count) {
  for (int i = 0; i < count; ++i) list.NewPackage();
}

/// The types in order; "null" for a package without.
std::vector<std::string> Types(const PackageList& list) {
  std::vector<std::string> types;
  for (int i = 0; Package* const package = list.GetPackage(i); ++i) {
    types.push_back(package->GetType() == nullptr ? "null" : package->GetType());
  }
  return types;
}

std::string TextOf(const char* text) { return text == nullptr ? "null" : text; }

TEST(PackageList, StartsEmpty) {
  const PackageList list;
  EXPECT_EQ(list.GetPackageCount(), 0);
  EXPECT_EQ(list.GetLastPackage(), nullptr);
  EXPECT_EQ(list.GetPackage(0), nullptr);
  EXPECT_EQ(list.GetPackage("TQ100"), nullptr);
  EXPECT_EQ(list.GetPackageTypeWithJDFFile("a.jdf"), nullptr);
  EXPECT_EQ(list.GetPackagePONWithJDFFile("a.jdf"), nullptr);
  EXPECT_EQ(list.GetOrvoSettingWithJDFFile("a.jdf"), nullptr);
}

TEST(PackageList, NewPackageAppendsAnEmptyPackageAndLendsIt) {
  PackageList list;
  Package* const first = list.NewPackage();
  Package* const second = list.NewPackage();
  EXPECT_EQ(list.GetPackageCount(), 2);
  EXPECT_EQ(list.GetPackage(0), first);
  EXPECT_EQ(list.GetPackage(1), second);
  EXPECT_EQ(list.GetLastPackage(), second);
  EXPECT_EQ(first->GetType(), nullptr);
  EXPECT_EQ(first->GetAdapterCount(), 0);
}

TEST(PackageList, GetPackageOutsideTheListIsNull) {
  PackageList list;
  AddEmpty(list, 2);
  for (const int i : {-1, 2, 3, 65'535, 65'536, 65'537, INT_MIN, INT_MAX}) EXPECT_EQ(list.GetPackage(i), nullptr) << "i: " << i;
  for (const unsigned short i : {static_cast<unsigned short>(2), static_cast<unsigned short>(65'535)}) {
    EXPECT_EQ(list.GetPackage(i), nullptr) << "i: " << i;
  }
  EXPECT_EQ(list.GetPackage(support::WideInteger{65'536}), nullptr);
  EXPECT_EQ(list.GetPackage(4'294'967'296ULL), nullptr);
  EXPECT_EQ(list.GetPackage(support::kMinusOne), nullptr);
}

TEST(PackageList, GetPackageTakesEveryIntegerType) {
  PackageList list;
  AddEmpty(list, 2);
  Package* const second = list.GetLastPackage();
  const unsigned short narrow = 1;
  const char tiny = 1;
  EXPECT_EQ(list.GetPackage(narrow), second);
  EXPECT_EQ(list.GetPackage(tiny), second);
  EXPECT_EQ(list.GetPackage(1), second);
  EXPECT_EQ(list.GetPackage(1u), second);
  EXPECT_EQ(list.GetPackage(1UL), second);
  EXPECT_EQ(list.GetPackage(std::size_t{1}), second);
}

TEST(PackageList, GetPackageByTypeIsTheFirstOfExactlyThisType) {
  PackageList list;
  for (const char* const type : {static_cast<const char*>(nullptr), "TQ144", "TQ100", "tq100", "TQ100", "TQ1000", ""}) {
    Add(list, {type, nullptr, nullptr, nullptr});
  }
  const struct {
    const char* type;
    int position;
  } cases[] = {
      {"TQ144", 1}, {"TQ100", 2},  {"tq100", 3},   {"TQ1000", 5}, {"", 6},  // the first skipped one has no type at all
      {"TQ10", -1}, {"Tq100", -1}, {"TQ100 ", -1}, {nullptr, -1},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(list.GetPackage(row.type), row.position < 0 ? nullptr : list.GetPackage(row.position))
        << "type: " << TextOf(row.type);
  }
}

TEST(PackageList, TheJDFSearchesReadTheFirstPackageWithThisJDF) {
  PackageList list;
  const Row packages[] = {
      {"TQ208", nullptr, "P-0", "S0"},       // without JDF: skipped
      {"TQ100", "a.jdf", "P-1", "S1"},       //
      {"TQ144", "b.jdf", nullptr, nullptr},  // the texts that are asked for may be missing
      {"TQ100", "a.jdf", "P-3", "S3"},       //
      {nullptr, "c.jdf", "P-4", "S4"},       //
      {"BG256", "b.jdf", "P-5", "S5"},       //
      {"", "", "", ""},                      //
  };
  for (const Row& row : packages) Add(list, row);
  const struct {
    const char* jdf;
    const char* type;
    const char* pon;
    const char* orvo;
  } cases[] = {
      {"a.jdf", "TQ100", "P-1", "S1"},      {"b.jdf", "TQ144", nullptr, nullptr},
      {"c.jdf", nullptr, "P-4", "S4"},      {"", "", "", ""},
      {"A.jdf", nullptr, nullptr, nullptr}, {"a.jdf ", nullptr, nullptr, nullptr},
      {"a", nullptr, nullptr, nullptr},     {"d.jdf", nullptr, nullptr, nullptr},
      {nullptr, nullptr, nullptr, nullptr},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(TextOf(list.GetPackageTypeWithJDFFile(row.jdf)), TextOf(row.type)) << "jdf: " << TextOf(row.jdf);
    EXPECT_EQ(TextOf(list.GetPackagePONWithJDFFile(row.jdf)), TextOf(row.pon)) << "jdf: " << TextOf(row.jdf);
    EXPECT_EQ(TextOf(list.GetOrvoSettingWithJDFFile(row.jdf)), TextOf(row.orvo)) << "jdf: " << TextOf(row.jdf);
  }
}

TEST(PackageList, TheSearchesLendTheRecordsOwnTexts) {
  PackageList list;
  Add(list, {"TQ100", "a.jdf", "P", "S"});
  const Package* const package = list.GetPackage(0);
  EXPECT_EQ(list.GetPackageTypeWithJDFFile("a.jdf"), package->GetType());
  EXPECT_EQ(list.GetPackagePONWithJDFFile("a.jdf"), package->GetPON());
  EXPECT_EQ(list.GetOrvoSettingWithJDFFile("a.jdf"), package->GetOrvoSetting());
}

TEST(PackageList, SearchesAllocateNothing) {
  PackageList list;
  for (int i = 0; i < 100; ++i) Add(list, {"TQ100", "a.jdf", "P", "S"});
  const long before = support::AllocationCount();
  list.GetPackage("TQ144");
  list.GetPackage(99);
  list.GetLastPackage();
  list.GetPackageCount();
  list.GetPackageTypeWithJDFFile("b.jdf");
  list.GetPackagePONWithJDFFile("b.jdf");
  list.GetOrvoSettingWithJDFFile("b.jdf");
  const long allocated = support::AllocationCount() - before;
  EXPECT_EQ(allocated, 0);
}

TEST(PackageList, SixteenBitsOfTheCountBoundEverySearchAndCopy) {
  PackageList list;
  Add(list, {"TQ100", "a.jdf", "P", "S"});
  AddEmpty(list, 65'534);
  const struct {
    int added;
    int count;
    bool found;
    bool last;
  } cases[] = {
      {0, 65'535, true, true},  // the largest count
      {1, 0, false, false},     // 65,536 packages count as none
      {1, 1, true, false},      // and 65,537 as one
  };
  for (const auto& row : cases) {
    AddEmpty(list, row.added);
    EXPECT_EQ(list.GetPackageCount(), row.count);
    EXPECT_EQ(list.GetPackage("TQ100") != nullptr, row.found) << "count: " << row.count;
    EXPECT_EQ(list.GetPackageTypeWithJDFFile("a.jdf") != nullptr, row.found) << "count: " << row.count;
    EXPECT_EQ(list.GetPackagePONWithJDFFile("a.jdf") != nullptr, row.found) << "count: " << row.count;
    EXPECT_EQ(list.GetOrvoSettingWithJDFFile("a.jdf") != nullptr, row.found) << "count: " << row.count;
    EXPECT_EQ(list.GetPackage(0) != nullptr, row.found) << "count: " << row.count;
    EXPECT_EQ(list.GetPackage(65'534) != nullptr, row.last) << "count: " << row.count;
    EXPECT_NE(list.GetLastPackage(), nullptr) << "count: " << row.count;
    const PackageList copy(&list);
    EXPECT_EQ(copy.GetPackageCount(), row.count);
    EXPECT_EQ(copy.GetLastPackage() != nullptr, row.count != 0) << "count: " << row.count;
  }
}

TEST(PackageListCopy, HasACopyOfEachPackageInOrder) {
  auto source = std::make_unique<PackageList>();
  for (const char* const type : {"A", "B", "C"}) Add(*source, {type, "a.jdf", "P", "S"});
  source->GetPackage(1)->AddAdapter("V", "A");
  const PackageList copy(source.get());
  EXPECT_NE(copy.GetPackage(0), source->GetPackage(0));
  source->GetPackage(0)->SetType("changed");
  source.reset();
  EXPECT_EQ(Types(copy), (std::vector<std::string>{"A", "B", "C"}));
  EXPECT_STREQ(copy.GetPackage(1)->GetAdapterVendor(0), "V");
  EXPECT_STREQ(copy.GetPackage(2)->GetOrvoSetting(), "S");
}

TEST(PackageListCopy, ANullSourceGivesAnEmptyList) {
  const PackageList copy(nullptr);
  EXPECT_EQ(copy.GetPackageCount(), 0);
}

TEST(PackageListCopy, CopyPackageListAppendsAfterThePackagesHeld) {
  PackageList source;
  for (const char* const type : {"A", "B"}) Add(source, {type, nullptr, nullptr, nullptr});
  PackageList target;
  for (const char* const type : {"X", "Y"}) Add(target, {type, nullptr, nullptr, nullptr});
  Package* const first = target.GetPackage(0);
  EXPECT_TRUE(target.CopyPackageList(&source));
  EXPECT_EQ(Types(target), (std::vector<std::string>{"X", "Y", "A", "B"}));
  EXPECT_EQ(target.GetPackage(0), first);
  EXPECT_EQ(Types(source), (std::vector<std::string>{"A", "B"}));
  EXPECT_TRUE(target.CopyPackageList(&source));
  EXPECT_EQ(Types(target), (std::vector<std::string>{"X", "Y", "A", "B", "A", "B"}));
}

TEST(PackageListCopy, CopyPackageListOfAnEmptyListOrNullAppendsNothing) {
  PackageList target;
  Add(target, {"X", nullptr, nullptr, nullptr});
  PackageList empty;
  EXPECT_TRUE(target.CopyPackageList(&empty));
  EXPECT_TRUE(target.CopyPackageList(nullptr));
  EXPECT_EQ(Types(target), std::vector<std::string>{"X"});
}

TEST(PackageListCopy, CopyPackageListOfTheListItselfDoublesIt) {
  PackageList list;
  for (const char* const type : {"A", "B"}) Add(list, {type, nullptr, nullptr, nullptr});
  EXPECT_TRUE(list.CopyPackageList(&list));
  EXPECT_EQ(Types(list), (std::vector<std::string>{"A", "B", "A", "B"}));
}

TEST(PackageListCopy, DoublingALongListCopiesEveryPackageAlthoughTheCountWrapsOnTheWay) {
  PackageList list;
  for (int i = 0; i < 40'000; ++i) list.NewPackage()->SetType("A");
  EXPECT_TRUE(list.CopyPackageList(&list));
  EXPECT_EQ(list.GetPackageCount(), 80'000 - 65'536);
  EXPECT_EQ(TextOf(list.GetLastPackage()->GetType()), "A");
}

TEST(PackageListCopy, AFailedAllocationLeaksNothing) {
  PackageList source;
  for (const char* const type : {"A", "B"}) Add(source, {type, "a.jdf", "P", "S"});
  const long live = support::LiveAllocations();
  const auto noLeak = [&] {
    const long now = support::LiveAllocations();
    EXPECT_EQ(now, live);
  };
  EXPECT_GE(support::ForEachFailingAllocation([&] { const PackageList copy(&source); }, noLeak), 10);
  noLeak();
  EXPECT_EQ(Types(source), (std::vector<std::string>{"A", "B"}));
}

TEST(PackageListCopy, AFailedAllocationKeepsThePackagesAppendedSoFar) {
  PackageList source;
  for (const char* const type : {"A", "B"}) Add(source, {type, "a.jdf", "P", "S"});
  std::vector<std::vector<std::string>> outcomes;
  for (long nth = 1;; ++nth) {
    PackageList target;
    Add(target, {"X", nullptr, nullptr, nullptr});
    bool failed = false;
    try {
      const support::FailAllocation failing(nth);
      target.CopyPackageList(&source);
    } catch (const std::bad_alloc&) {
      failed = true;
    }
    if (outcomes.empty() || outcomes.back() != Types(target)) outcomes.push_back(Types(target));
    if (!failed) break;
  }
  EXPECT_EQ(outcomes, (std::vector<std::vector<std::string>>{{"X"}, {"X", "A"}, {"X", "A", "B"}}));
}

TEST(PackageList, AFailedNewPackageLeavesTheListAsItWas) {
  PackageList list;
  const auto unchanged = [&] { EXPECT_EQ(list.GetPackageCount(), 0); };
  EXPECT_EQ(support::ForEachFailingAllocation([&] { list.NewPackage(); }, unchanged), 2);  // the package, its place
  EXPECT_EQ(list.GetPackageCount(), 1);
}

TEST(PackageList, FreesAllWhenDeletedThroughTheBase) {
  const long live = support::LiveAllocations();
  auto list = std::make_unique<PackageList>();
  Add(*list, {"A", "a.jdf", "P", "S"});
  list->NewPackage()->AddAdapter("V", "A");
  std::unique_ptr<LObject> object = std::move(list);
  object.reset();
  EXPECT_EQ(support::LiveAllocations(), live);
}

TEST(PackageWalk, VisitsInOrderAndStopsAtTheFirstMatch) {
  PackageList list;
  for (const char* const type : {"A", "B", "C"}) Add(list, {type, nullptr, nullptr, nullptr});
  std::string visited;
  const auto rule = [&](const Package& package) {
    visited += package.GetType();
    return package.GetType()[0] == 'B';
  };
  EXPECT_EQ(FindPackage(list, rule), list.GetPackage(1));
  EXPECT_EQ(visited, "AB");
  EXPECT_TRUE(AnyPackage(list, rule));
  EXPECT_FALSE(AnyPackage(list, [](const Package&) { return false; }));
}

}  // namespace
