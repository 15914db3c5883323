// Characters, beginnings and ends, and the number of bits: ASCII only, for every byte, and -1 where streams end.

#include "foundation/characters.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/bits.h"
#include "foundation/text_match.h"

namespace {

using namespace plddb::internal;

bool IsIn(const std::string& characters, int c) {
  return c > 0 && c < 128 && characters.find(static_cast<char>(c)) != std::string::npos;
}

TEST(Characters, AreOfTheirKindsAsBytesAndAsSignedCharacters) {
  for (int c = -128; c < 256; ++c) {
    EXPECT_EQ(IsDigit(c), IsIn("0123456789", c)) << "character: " << c;
    EXPECT_EQ(IsLetter(c), IsIn("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", c)) << "character: " << c;
    EXPECT_EQ(IsWhiteSpace(c), IsIn(" \t\n\v\f\r", c)) << "character: " << c;
    EXPECT_EQ(HexDigit(c) >= 0, IsIn("0123456789ABCDEFabcdef", c)) << "character: " << c;
  }
}

TEST(Characters, AreHexDigitsOfTheirValues) {
  const std::string upper = "0123456789ABCDEF";
  const std::string lower = "0123456789abcdef";
  for (int value = 0; value < 16; ++value) {
    EXPECT_EQ(HexDigit(upper[static_cast<std::size_t>(value)]), value);
    EXPECT_EQ(HexDigit(lower[static_cast<std::size_t>(value)]), value);
  }
}

TEST(Texts, StartAndEndWithTheirPartsOnly) {
  const struct {
    const char* text;
    const char* part;
    bool starts;
    bool ends;
  } rows[] = {
      {"", "", true, true},       {"a", "", true, true},       {"", "a", false, false},       {"abc", "ab", true, false},
      {"abc", "bc", false, true}, {"abc", "abc", true, true},  {"abc", "xabc", false, false}, {"abc", "abcx", false, false},
      {"aba", "a", true, true},   {"Abc", "ab", false, false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(StartsWith(row.text, row.part), row.starts) << "row: " << row.text << ", " << row.part;
    EXPECT_EQ(EndsWith(row.text, row.part), row.ends) << "row: " << row.text << ", " << row.part;
  }
}

TEST(Texts, AreEqualWithoutTheCaseOfAsciiLetters) {
  const struct {
    const char* a;
    const char* b;
    bool areEqual;
  } rows[] = {
      {"", "", true},    {"a", "", false},  {"xc9572XL", "XC9572xl", true},  {"ab", "abc", false}, {"abc", "ab", false},
      {"@", "`", false}, {"[", "{", false}, {"\xC3\xA4", "\xC3\x84", false},
  };
  for (const auto& row : rows) EXPECT_EQ(AreEqualIgnoringCase(row.a, row.b), row.areEqual) << "row: " << row.a << ", " << row.b;
  EXPECT_EQ(UpperCase("xc9572-\xC3\xA4z{"), "XC9572-\xC3\xA4Z{");
}

TEST(BitCount, IsTheNumberOfOnes) {
  EXPECT_EQ(BitCount(0), 0);
  EXPECT_EQ(BitCount(0x80000001), 2);
  EXPECT_EQ(BitCount(0xFFFFFFFF), 32);
}

}  // namespace
