#include "LObjList.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

#include "tests/support/allocation_counter.h"
#include "tests/support/mortal.h"

namespace {

using support::Mortal;

static_assert(!std::is_copy_constructible_v<LObjList> && !std::is_copy_assignable_v<LObjList>);
static_assert(!std::is_move_constructible_v<LObjList> && !std::is_move_assignable_v<LObjList>);
static_assert(!std::is_copy_constructible_v<LObject> && !std::is_copy_assignable_v<LObject>);
static_assert(!std::is_move_constructible_v<LObject> && !std::is_move_assignable_v<LObject>);
static_assert(std::has_virtual_destructor_v<LObject>);
static_assert(std::is_default_constructible_v<LObject> && std::is_default_constructible_v<LObjList>);

constexpr int kOutsideThree[] = {-1, 3, 4, 1000, INT_MIN, INT_MAX};

std::vector<LObject*> Elements(const LObjList& list) {
  std::vector<LObject*> elements;
  elements.reserve(static_cast<std::size_t>(list.GetCount()));
  for (int i = 0; i < list.GetCount(); ++i) elements.push_back(list.GetAt(i));
  return elements;
}

class LObjListTest : public testing::Test {
 protected:
  void FillWithThree() {
    for (LObject& object : objects_) list_.AddTail(&object);
  }

  LObject objects_[3];
  LObject extra_;
  LObject* const a_ = &objects_[0];
  LObject* const b_ = &objects_[1];
  LObject* const c_ = &objects_[2];
  LObjList list_;
};

TEST_F(LObjListTest, StartsEmpty) {
  EXPECT_EQ(list_.GetCount(), 0);
  EXPECT_TRUE(list_.IsEmpty());
}

TEST_F(LObjListTest, AnEmptyListAnswersNullEverywhere) {
  EXPECT_EQ(list_.GetTail(), nullptr);
  EXPECT_EQ(list_.RemoveTail(), nullptr);
  for (const int index : {-1, 0, 1, INT_MIN, INT_MAX}) {
    EXPECT_EQ(list_.GetAt(index), nullptr) << "index: " << index;
    EXPECT_EQ(list_.Delete(index), nullptr) << "index: " << index;
  }
  EXPECT_TRUE(list_.IsEmpty());
}

TEST_F(LObjListTest, AddTailAppendsInOrder) {
  FillWithThree();
  EXPECT_EQ(Elements(list_), (std::vector<LObject*>{a_, b_, c_}));
  EXPECT_EQ(list_.GetTail(), c_);
  EXPECT_FALSE(list_.IsEmpty());
}

TEST_F(LObjListTest, GetAtOutsideTheListIsNull) {
  FillWithThree();
  for (const int index : kOutsideThree) EXPECT_EQ(list_.GetAt(index), nullptr) << "index: " << index;
}

TEST_F(LObjListTest, InsertGivesTheElementThatIndexAndMovesTheOthersUp) {
  LObject* const x = &extra_;
  const struct {
    int index;
    std::vector<LObject*> after;
  } cases[] = {
      {0, {x, a_, b_, c_}}, {1, {a_, x, b_, c_}}, {2, {a_, b_, x, c_}}, {3, {a_, b_, c_, x}},  // at the count: appends
  };
  for (const auto& row : cases) {
    LObjList list;
    for (LObject& object : objects_) list.AddTail(&object);
    list.Insert(row.index, x);
    EXPECT_EQ(Elements(list), row.after) << "index: " << row.index;
  }
}

TEST_F(LObjListTest, InsertAtZeroFillsAnEmptyList) {
  list_.Insert(0, a_);
  EXPECT_EQ(Elements(list_), std::vector<LObject*>{a_});
}

TEST_F(LObjListTest, InsertOutsideTheListIsIgnored) {
  FillWithThree();
  for (const int index : {-1, 4, 1000, INT_MIN, INT_MAX}) {
    list_.Insert(index, &extra_);
    EXPECT_EQ(Elements(list_), (std::vector<LObject*>{a_, b_, c_})) << "index: " << index;
  }
}

TEST_F(LObjListTest, DeleteUnlinksAndHandsOver) {
  const struct {
    int index;
    LObject* deleted;
    std::vector<LObject*> after;
  } cases[] = {
      {0, a_, {b_, c_}},
      {1, b_, {a_, c_}},
      {2, c_, {a_, b_}},
  };
  for (const auto& row : cases) {
    LObjList list;
    for (LObject& object : objects_) list.AddTail(&object);
    EXPECT_EQ(list.Delete(row.index), row.deleted) << "index: " << row.index;
    EXPECT_EQ(Elements(list), row.after) << "index: " << row.index;
  }
}

TEST_F(LObjListTest, DeleteOutsideTheListIsNullAndChangesNothing) {
  FillWithThree();
  for (const int index : kOutsideThree) {
    EXPECT_EQ(list_.Delete(index), nullptr) << "index: " << index;
    EXPECT_EQ(Elements(list_), (std::vector<LObject*>{a_, b_, c_})) << "index: " << index;
  }
}

TEST_F(LObjListTest, RemoveTailTakesFromTheEndUntilEmpty) {
  FillWithThree();
  EXPECT_EQ(list_.RemoveTail(), c_);
  EXPECT_EQ(list_.GetTail(), b_);
  EXPECT_EQ(list_.RemoveTail(), b_);
  EXPECT_EQ(list_.RemoveTail(), a_);
  EXPECT_TRUE(list_.IsEmpty());
  EXPECT_EQ(list_.RemoveTail(), nullptr);
}

TEST_F(LObjListTest, NullAndRepeatedPointersAreElementsLikeOthers) {
  list_.AddTail(a_);
  list_.AddTail(nullptr);
  list_.AddTail(a_);
  EXPECT_EQ(Elements(list_), (std::vector<LObject*>{a_, nullptr, a_}));
  EXPECT_EQ(list_.Delete(1), nullptr);
  EXPECT_EQ(list_.GetCount(), 2);
}

TEST_F(LObjListTest, AFailedAllocationLeavesTheListAsItWas) {
  const struct {
    const char* name;
    void (*grow)(LObjList&, LObject*);
  } cases[] = {
      {"AddTail", [](LObjList& list, LObject* object) { list.AddTail(object); }},
      {"Insert in front", [](LObjList& list, LObject* object) { list.Insert(0, object); }},
      {"Insert at the end", [](LObjList& list, LObject* object) { list.Insert(list.GetCount(), object); }},
  };
  for (const auto& row : cases) {
    LObjList list;
    int expected = 0;
    int failures = 0;
    int changes = 0;
    for (; expected < 100; ++expected) {  // some of these calls need memory, whatever the list's way of growing
      try {
        const support::FailAllocation failing(1);
        row.grow(list, a_);
      } catch (const std::bad_alloc&) {
        ++failures;
        changes += list.GetCount() != expected ? 1 : 0;
        row.grow(list, a_);
      }
    }
    EXPECT_GT(failures, 0) << "row: " << row.name;
    EXPECT_EQ(changes, 0) << "row: " << row.name;
    EXPECT_EQ(Elements(list), std::vector<LObject*>(100, a_)) << "row: " << row.name;
  }
}

TEST(LObject, DeletingThroughTheBaseRunsTheMostDerivedDestructor) {
  std::vector<int> deaths;
  LObject* const object = new Mortal(7, deaths);
  delete object;
  EXPECT_EQ(deaths, std::vector<int>{7});
}

TEST(LObjListOwnership, NeitherRemovingNorTheListsEndDestroysAnElement) {
  std::vector<int> deaths;
  const auto first = std::make_unique<Mortal>(1, deaths);
  const auto second = std::make_unique<Mortal>(2, deaths);
  {
    LObjList list;
    for (LObject* object : {first.get(), second.get(), first.get(), second.get()}) list.AddTail(object);
    list.Delete(0);
    list.RemoveTail();
  }
  EXPECT_TRUE(deaths.empty());
}

TEST(LObjListOwnership, TheListsEndReleasesItsOwnStorage) {
  LObject object;
  const long live = support::LiveAllocations();
  {
    LObjList list;
    for (int i = 0; i < 100; ++i) list.AddTail(&object);
  }
  EXPECT_EQ(support::LiveAllocations(), live);
}

}  // namespace
