#include "foundation/text_match.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

using namespace plddb::internal;

namespace {

TEST(EqualIgnoringCase, ComparesUpperCasedTexts) {
  const struct {
    const char* a;
    const char* b;
    bool equal;
  } cases[] = {
      {"", "", true},          {"abc", "ABC", true},   {"abc", "abc", true}, {"abc", "ab", false}, {"ab", "abc", false},
      {"", "a", false},        {"a", "", false},       {"a_b", "A_B", true}, {"[", "{", false},    {"@", "`", false},
      {"\xE9", "\xC9", false}, {"\xE9", "\xE9", true}, {nullptr, "", false}, {"", nullptr, false}, {nullptr, nullptr, false},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(EqualIgnoringCase(row.a, row.b), row.equal)
        << "row: " << (row.a == nullptr ? "null" : row.a) << ", " << (row.b == nullptr ? "null" : row.b);
  }
}

TEST(EqualExactly, ComparesByteForByteAndNullEqualsNothing) {
  const struct {
    const char* a;
    const char* b;
    bool equal;
  } cases[] = {
      {"", "", true},         {"abc", "abc", true}, {"abc", "ABC", false}, {"abc", "abcd", false},
      {"abcd", "abc", false}, {nullptr, "", false}, {"", nullptr, false},  {nullptr, nullptr, false},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(EqualExactly(row.a, row.b), row.equal)
        << "row: " << (row.a == nullptr ? "null" : row.a) << ", " << (row.b == nullptr ? "null" : row.b);
  }
}

TEST(IsComparable, TextsOf1024CharactersAndMoreAreNot) {
  const struct {
    std::size_t length;
    bool comparable;
  } cases[] = {{0, true}, {1, true}, {1022, true}, {1023, true}, {1024, false}, {1025, false}, {100'000, false}};
  for (const auto& row : cases) {
    EXPECT_EQ(IsComparable(std::string(row.length, 'x').c_str()), row.comparable) << "length: " << row.length;
  }
  EXPECT_FALSE(IsComparable(nullptr));
}

TEST(CarriedText, StandsForTheLastTextThatThereWas) {
  CarriedText carried;
  EXPECT_STREQ(carried.Refresh(nullptr), "");
  EXPECT_STREQ(carried.Refresh("A"), "A");
  EXPECT_STREQ(carried.Refresh(nullptr), "A");
  EXPECT_STREQ(carried.Refresh(nullptr), "A");
  EXPECT_STREQ(carried.Refresh(""), "");
  EXPECT_STREQ(carried.Refresh(nullptr), "");
  EXPECT_STREQ(carried.Refresh("B"), "B");
}

}  // namespace
