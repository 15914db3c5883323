#include "LString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <type_traits>

#include "tests/support/locales.h"

namespace {

static_assert(std::is_base_of_v<LObject, LString>);
static_assert(!std::is_copy_constructible_v<LString> && !std::is_copy_assignable_v<LString>);
static_assert(!std::is_move_constructible_v<LString> && !std::is_move_assignable_v<LString>);
static_assert(sizeof(LString) >= sizeof(LObject) + sizeof(int));

/// What the caller's buffer held before; no result may leave it unterminated.
constexpr char kUntouched[] = "################";

std::string Left(const char* src, int n) {
  char buffer[sizeof kUntouched];
  std::memcpy(buffer, kUntouched, sizeof buffer);
  LString().Left(buffer, src, n);
  return buffer;
}

std::string LeftInPlace(const char* src, int n) {
  char buffer[sizeof kUntouched];
  std::strcpy(buffer, src);
  LString().Left(buffer, buffer, n);
  return buffer;
}

std::string Right(const char* src, int n) {
  char buffer[sizeof kUntouched];
  std::memcpy(buffer, kUntouched, sizeof buffer);
  LString().Right(buffer, src, n);
  return buffer;
}

std::string RightInPlace(const char* src, int n) {
  char buffer[sizeof kUntouched];
  std::strcpy(buffer, src);
  LString().Right(buffer, buffer, n);
  return buffer;
}

std::string TrimmedLeft(std::string text) {
  LString().TrimLeft(text.data());
  text.resize(std::strlen(text.c_str()));
  return text;
}

std::string TrimmedRight(std::string text) {
  LString().TrimRight(text.data());
  text.resize(std::strlen(text.c_str()));
  return text;
}

TEST(LStringFind, GivesTheFirstPositionOfACharacter) {  // the terminating zero is none
  const struct {
    const char* text;
    char c;
    int position;
  } cases[] = {
      {"a;b", ';', 1}, {"ab", ';', -1},  {";a;", ';', 0},       {"a;b;c", ';', 1},   {"ab;", ';', 2},  {"", ';', -1},
      {"A", 'a', -1},  {"a\"b", '"', 1}, {"x\xE9y", '\xE9', 1}, {"\xFF", '\xFF', 0}, {"ab", '\0', -1}, {"", '\0', -1},
  };
  for (const auto& row : cases)
    EXPECT_EQ(LString().Find(row.text, row.c), row.position) << "row: " << row.text << ", " << row.c;
}

TEST(LStringFind, GivesTheFirstPositionOfAText) {
  const struct {
    const char* text;
    const char* sub;
    int position;
  } cases[] = {
      {"0 to 7", "to", 2},
      {"to to", "to", 0},
      {"0 TO 7", "to", -1},
      {"0 t o 7", "to", -1},
      {"t", "to", -1},
      {"ttto", "to", 2},
      {"to", "to", 0},
      {"", "to", -1},
      {"abc", "", 0},
      {"", "", 0},
      {"x\xC3\xA9", "\xC3\xA9", 1},
  };
  for (const auto& row : cases)
    EXPECT_EQ(LString().Find(row.text, row.sub), row.position) << "row: " << row.text << ", " << row.sub;
}

TEST(LStringFind, NullFindsNothing) {
  const char* const none = nullptr;
  EXPECT_EQ(LString().Find(none, ';'), -1);
  EXPECT_EQ(LString().Find(none, "to"), -1);
  EXPECT_EQ(LString().Find("0 to 7", none), -1);
  EXPECT_EQ(LString().Find(none, none), -1);
}

const struct {
  const char* text;
  int n;
  const char* left;
  const char* right;
} kCuts[] = {
    {"abcdef", 3, "abc", "def"},
    {"abc", -1, "", ""},
    {"abc", 0, "", ""},
    {"abc", 1, "a", "c"},
    {"abc", 2, "ab", "bc"},
    {"abc", 3, "abc", "abc"},
    {"abc", 4, "abc", "abc"},
    {"abc", 5, "abc", "abc"},
    {"abc", INT_MAX, "abc", "abc"},
    {"abc", INT_MIN, "", ""},
    {"", 0, "", ""},
    {"", 5, "", ""},
    {"", -1, "", ""},
    {" a ", 2, " a", "a "},
    {"\xE9\xE8", 1, "\xE9", "\xE8"},
};

TEST(LStringLeft, WritesTheFirstCharacters) {
  for (const auto& row : kCuts) EXPECT_EQ(Left(row.text, row.n), row.left) << "row: " << row.text << ", " << row.n;
}

TEST(LStringLeft, CutsABufferInPlace) {
  for (const auto& row : kCuts) EXPECT_EQ(LeftInPlace(row.text, row.n), row.left) << "row: " << row.text << ", " << row.n;
}

TEST(LStringRight, WritesTheLastCharacters) {
  for (const auto& row : kCuts) EXPECT_EQ(Right(row.text, row.n), row.right) << "row: " << row.text << ", " << row.n;
}

TEST(LStringRight, CutsABufferInPlace) {
  for (const auto& row : kCuts) EXPECT_EQ(RightInPlace(row.text, row.n), row.right) << "row: " << row.text << ", " << row.n;
}

TEST(LStringCuts, ANullSourceCountsAsEmptyAndANullTargetIsLeftAlone) {
  for (const int n : {INT_MIN, -1, 0, 1, INT_MAX}) {
    EXPECT_EQ(Left(nullptr, n), "") << "n: " << n;
    EXPECT_EQ(Right(nullptr, n), "") << "n: " << n;
    LString().Left(nullptr, "abc", n);  // coming back is the whole of it
    LString().Right(nullptr, "abc", n);
  }
}

TEST(LStringCuts, WriteNothingAfterTheTerminatingZero) {
  char left[] = "########";
  LString().Left(left, "abcdef", 2);
  EXPECT_EQ(std::string(left, sizeof left), std::string("ab\0#####\0", sizeof left));
  char right[] = "########";
  LString().Right(right, "abcdef", 2);
  EXPECT_EQ(std::string(right, sizeof right), std::string("ef\0#####\0", sizeof right));
}

const struct {
  const char* text;
  const char* left;
  const char* right;
} kTrims[] = {
    {"abc", "abc", "abc"},
    {"", "", ""},
    {" abc ", "abc ", " abc"},
    {"  a b  ", "a b  ", "  a b"},
    {" ", "", ""},
    {" \t\n\v\f\r ", "", ""},
    {"\t\n\v\f\r a \t\n\v\f\r", "a \t\n\v\f\r", "\t\n\v\f\r a"},
    {"\xA0x\xA0", "\xA0x\xA0", "\xA0x\xA0"},  // a no-break space of Latin-1 is no white space
    {"\x85x\x85", "\x85x\x85", "\x85x\x85"},
    {"\bx\b", "\bx\b", "\bx\b"},
    {"\x1Fx\x1F", "\x1Fx\x1F", "\x1Fx\x1F"},
};

TEST(LStringTrim, RemovesWhiteSpaceAtOneEnd) {
  for (const auto& row : kTrims) {
    EXPECT_EQ(TrimmedLeft(row.text), row.left) << "text: " << row.text;
    EXPECT_EQ(TrimmedRight(row.text), row.right) << "text: " << row.text;
  }
}

TEST(LStringTrim, WhiteSpaceIsTheSameSixCharactersInEveryLocale) {
  support::ForEachLocale([](const std::string& locale) {
    for (int code = 1; code < 256; ++code) {
      const std::string one(1, static_cast<char>(code));
      const bool blank = std::strchr(" \t\n\v\f\r", code) != nullptr;
      EXPECT_EQ(TrimmedLeft(one + "x"), blank ? "x" : one + "x") << "code: " << code << ", locale: " << locale;
      EXPECT_EQ(TrimmedRight("x" + one), blank ? "x" : "x" + one) << "code: " << code << ", locale: " << locale;
    }
  });
}

TEST(LStringTrim, NullIsLeftAlone) {  // coming back is the whole of it
  LString().TrimLeft(nullptr);
  LString().TrimRight(nullptr);
}

}  // namespace
