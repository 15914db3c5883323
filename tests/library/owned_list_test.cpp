#include "foundation/owned_list.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/allocation_counter.h"
#include "tests/support/mortal.h"

using namespace plddb::internal;

namespace {

using support::Mortal;

TEST(OwnedList, DiesFromTheLastElementToTheFirst) {
  std::vector<int> deaths;
  LObjList list;
  for (const int id : {1, 2, 3}) AppendNew(list, std::make_unique<Mortal>(id, deaths));
  list.Insert(1, nullptr);
  DestroyElements(list);
  EXPECT_EQ(deaths, (std::vector<int>{3, 2, 1}));
  EXPECT_TRUE(list.IsEmpty());
}

TEST(OwnedList, AnElementThatCannotBeAppendedIsDestroyed) {
  std::vector<int> deaths;
  deaths.reserve(10);
  LObjList list;
  auto element = std::make_unique<Mortal>(1, deaths);
  bool thrown = false;
  {
    const support::FailAllocation failing(1);
    try {
      AppendNew(list, std::move(element));
    } catch (const std::bad_alloc&) {
      thrown = true;
    }
  }
  EXPECT_TRUE(thrown);
  EXPECT_EQ(deaths, std::vector<int>{1});
  EXPECT_TRUE(list.IsEmpty());
}

class OwnedTexts : public testing::Test {
 protected:
  ~OwnedTexts() override { DestroyElements(list_); }

  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(list_.GetCount()));
    for (int i = 0; i < list_.GetCount(); ++i) texts.push_back(TextAt(list_, i));
    return texts;
  }

  LObjList list_;
};

using Strings = std::vector<std::string>;

TEST_F(OwnedTexts, TextOutsideTheListIsNull) {
  AppendText(list_, "A");
  EXPECT_STREQ(TextAt(list_, 0), "A");
  for (const int i : {-1, 1, INT_MIN, INT_MAX}) EXPECT_EQ(TextAt(list_, i), nullptr) << "i: " << i;
}

TEST_F(OwnedTexts, AppendTakesATextAsGivenButNoEmptyOne) {
  for (const char* const text : {" A ", "\"B\"", "", static_cast<const char*>(nullptr), " "}) AppendUnlessEmpty(list_, text);
  EXPECT_EQ(Texts(), (Strings{" A ", "\"B\"", " "}));
}

TEST_F(OwnedTexts, QuotedItemsReplaceTheList) {
  const struct {
    const char* text;
    Strings after;
  } cases[] = {
      {R"("A", "B" , "C")", {"A", "B", "C"}},
      {R"("A" "" "C")", {"A"}},
      {R"("A" " " "C")", {"A", "", "C"}},
      {R"(" A ")", {"A"}},
      {"abc", {}},             // a text without quotes empties the list
      {R"(")", {}},            //
      {"", {"old1", "old2"}},  // an empty text does not
      {nullptr, {"old1", "old2"}},
  };
  for (const auto& row : cases) {
    DestroyElements(list_);
    AppendText(list_, "old1");
    AppendText(list_, "old2");
    ReplaceByQuotedItems(list_, row.text);
    EXPECT_EQ(Texts(), row.after) << "row: " << (row.text == nullptr ? "null" : row.text);
  }
}

TEST_F(OwnedTexts, TheListsOwnEntryIsALegalText) {
  AppendText(list_, R"("A" "B")");
  AppendUnlessEmpty(list_, TextAt(list_, 0));
  EXPECT_EQ(Texts(), (Strings{R"("A" "B")", R"("A" "B")"}));
  ReplaceByQuotedItems(list_, TextAt(list_, 0));
  EXPECT_EQ(Texts(), (Strings{"A", "B"}));
}

TEST_F(OwnedTexts, AFailedAllocationKeepsTheItemsAppendedSoFar) {
  std::vector<Strings> outcomes;
  for (long nth = 1;; ++nth) {
    DestroyElements(list_);
    AppendText(list_, "old");
    bool failed = false;
    try {
      const support::FailAllocation failing(nth);
      ReplaceByQuotedItems(list_, R"("a first item of some length" "a second item of some length")");
    } catch (const std::bad_alloc&) {
      failed = true;
    }
    const Strings texts = Texts();
    if (outcomes.empty() || outcomes.back() != texts) outcomes.push_back(texts);
    if (!failed) break;
  }
  const std::string first = "a first item of some length";
  const std::string second = "a second item of some length";
  EXPECT_EQ(outcomes, (std::vector<Strings>{{"old"}, {}, {first}, {first, second}}));
}

}  // namespace
