#include "DeviceStrElement.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

#include "foundation/paired_texts.h"
#include "tests/support/allocation_counter.h"

using namespace plddb::internal;

namespace {

static_assert(std::is_base_of_v<LObject, DeviceStrElement>);
static_assert(!std::is_copy_constructible_v<DeviceStrElement> && !std::is_copy_assignable_v<DeviceStrElement>);
static_assert(!std::is_move_constructible_v<DeviceStrElement> && !std::is_move_assignable_v<DeviceStrElement>);
static_assert(std::is_same_v<decltype(std::declval<const DeviceStrElement&>().GetString()), char*>);

TEST(DeviceStrElement, IsNullUntilFirstSet) {
  const DeviceStrElement element;
  EXPECT_EQ(element.GetString(), nullptr);
}

TEST(DeviceStrElement, HoldsTheWholeTextAsAPrivateCopy) {
  const std::string longText(100'000, 'x');
  const char* const cases[] = {"abc", "", " \t blanks \n", "\x80\xE9\xFF", "a", longText.c_str()};
  for (const char* const text : cases) {
    DeviceStrElement element;
    element.SetString(text);
    EXPECT_STREQ(element.GetString(), text) << "text: " << text;
    EXPECT_NE(element.GetString(), text) << "text: " << text;
  }
}

TEST(DeviceStrElement, TheCopyDoesNotFollowItsSource) {
  char source[] = "abc";
  DeviceStrElement element;
  element.SetString(source);
  source[0] = 'X';
  EXPECT_STREQ(element.GetString(), "abc");
}

TEST(DeviceStrElement, NullKeepsTheOldText) {
  DeviceStrElement element;
  element.SetString(nullptr);
  EXPECT_EQ(element.GetString(), nullptr);
  element.SetString("abc");
  element.SetString(nullptr);
  EXPECT_STREQ(element.GetString(), "abc");
  element.SetString("");
  element.SetString(nullptr);
  EXPECT_STREQ(element.GetString(), "");
}

TEST(DeviceStrElement, ANewTextReplacesTheOldWhole) {
  const struct {
    const char* first;
    const char* second;
  } cases[] = {{"abc", "x"}, {"x", "abc"}, {"abc", ""}, {"", "abc"}, {"abc", "abc"}};
  for (const auto& row : cases) {
    DeviceStrElement element;
    element.SetString(row.first);
    element.SetString(row.second);
    EXPECT_STREQ(element.GetString(), row.second) << "row: " << row.first << ", " << row.second;
  }
}

TEST(DeviceStrElement, ItsOwnTextIsALegalArgument) {
  const struct {
    int offset;
    const char* text;
  } cases[] = {{0, "abcdef"}, {3, "def"}, {6, ""}};
  for (const auto& row : cases) {
    DeviceStrElement element;
    element.SetString("abcdef");
    element.SetString(element.GetString() + row.offset);
    EXPECT_STREQ(element.GetString(), row.text) << "offset: " << row.offset;
  }
}

TEST(DeviceStrElement, AFailedAllocationKeepsTheOldText) {
  DeviceStrElement element;
  element.SetString("old");
  const long failures = support::ForEachFailingAllocation([&] { element.SetString("a text of some length"); },
                                                          [&] { EXPECT_STREQ(element.GetString(), "old"); });
  EXPECT_EQ(failures, 1);
  EXPECT_STREQ(element.GetString(), "a text of some length");
}

TEST(DeviceStrElement, FreesItsTextWhenDeletedThroughTheBase) {
  const long live = support::LiveAllocations();
  auto element = std::make_unique<DeviceStrElement>();
  element->SetString("first");
  element->SetString("second");
  std::unique_ptr<LObject> object = std::move(element);
  object.reset();
  EXPECT_EQ(support::LiveAllocations(), live);
}

TEST(DeviceStrElement, SwapExchangesTheTexts) {
  DeviceStrElement a;
  DeviceStrElement b;
  a.SetString("a");
  a.Swap(b);
  EXPECT_EQ(a.GetString(), nullptr);
  EXPECT_STREQ(b.GetString(), "a");
  b.Swap(b);
  EXPECT_STREQ(b.GetString(), "a");
}

TEST(SetBoth, TakesBothTextsAsTheyWereAtTheCall) {
  DeviceStrElement a;
  DeviceStrElement b;
  a.SetString("a");
  b.SetString("b");
  SetBoth(a, b.GetString(), b, a.GetString());
  EXPECT_STREQ(a.GetString(), "b");
  EXPECT_STREQ(b.GetString(), "a");
  SetBoth(a, a.GetString(), b, a.GetString());
  EXPECT_STREQ(a.GetString(), "b");
  EXPECT_STREQ(b.GetString(), "b");
}

TEST(SetBoth, NullKeepsItsField) {
  DeviceStrElement a;
  DeviceStrElement b;
  a.SetString("a");
  b.SetString("b");
  SetBoth(a, nullptr, b, "new");
  EXPECT_STREQ(a.GetString(), "a");
  EXPECT_STREQ(b.GetString(), "new");
  SetBoth(a, "newer", b, nullptr);
  EXPECT_STREQ(a.GetString(), "newer");
  EXPECT_STREQ(b.GetString(), "new");
}

TEST(SetBoth, AFailedAllocationKeepsBothTexts) {
  DeviceStrElement a;
  DeviceStrElement b;
  a.SetString("a");
  b.SetString("b");
  const auto unchanged = [&] {
    EXPECT_STREQ(a.GetString(), "a");
    EXPECT_STREQ(b.GetString(), "b");
  };
  EXPECT_EQ(support::ForEachFailingAllocation([&] { SetBoth(a, "new a", b, "new b"); }, unchanged), 2);
}

}  // namespace
