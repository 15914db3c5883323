#include "StringServices.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

#include "tests/support/locales.h"

namespace {

constexpr char kUntouched[] = "################";

std::string Copied(const char* src, int n, int m = 0) {
  char buffer[sizeof kUntouched];
  std::memcpy(buffer, kUntouched, sizeof buffer);
  util_strncpy(buffer, src, n, m);
  return buffer;
}

TEST(UtilStrncpy, CopiesNCharactersOrTheWholeTextAndEndsIt) {
  const struct {
    const char* src;
    int n;
    const char* copy;
  } cases[] = {
      {"abc", 0, "abc"},        // 0: the whole text
      {"", 0, ""},              // clears a buffer
      {"abc", 1, "a"},          //
      {"abc", 2, "ab"},         //
      {"abc", 3, "abc"},        // its length: the whole text
      {"abc", 4, "abc"},        // shorter than n
      {"abc", INT_MAX, "abc"},  //
      {"", 5, ""},              //
      {"abc", -1, ""},          // a negative count copies nothing
      {"abc", INT_MIN, ""},     //
      {"\xE9\x80\xFF", 2, "\xE9\x80"},
      {nullptr, 0, ""},
      {nullptr, 3, ""},
      {nullptr, -1, ""},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(Copied(row.src, row.n), row.copy) << "row: " << (row.src == nullptr ? "null" : row.src) << ", " << row.n;
  }
}

TEST(UtilStrncpy, ItsLastArgumentHasNoMeaning) {
  for (const int m : {INT_MIN, -1, 0, 1, 2, INT_MAX}) {
    EXPECT_EQ(Copied("abc", 0, m), "abc") << "m: " << m;
    EXPECT_EQ(Copied("abc", 2, m), "ab") << "m: " << m;
  }
}

TEST(UtilStrncpy, WritesNothingAfterTheTerminatingZero) {
  char buffer[] = "########";
  util_strncpy(buffer, "abcdef", 2, 0);
  EXPECT_EQ(std::string(buffer, sizeof buffer), std::string("ab\0#####\0", sizeof buffer));
}

TEST(UtilStrncpy, TakesAWritableSource) {
  char src[] = "abc";
  char* const writable = src;
  char dst[4];
  util_strncpy(dst, writable, 0, 0);
  EXPECT_STREQ(dst, "abc");
}

TEST(UtilStrncpy, SourceAndTargetMayOverlap) {
  const struct {
    int from;
    int to;
    int n;
    const char* buffer;
  } cases[] = {
      {0, 0, 0, "abcdef"}, {0, 0, 3, "abc"}, {2, 0, 0, "cdef"}, {2, 0, 2, "cd"}, {0, 2, 0, "ababcdef"}, {0, 1, 2, "aab"},
  };
  for (const auto& row : cases) {
    char buffer[16] = "abcdef";
    util_strncpy(buffer + row.to, buffer + row.from, row.n, 0);
    EXPECT_STREQ(buffer, row.buffer) << "row: " << row.from << ", " << row.to << ", " << row.n;
  }
}

TEST(UtilStrncpy, ANullTargetIsLeftAlone) {
  char src[] = "abc";
  util_strncpy(nullptr, src, 0, 0);
  EXPECT_STREQ(src, "abc");
}

std::string Upper(std::string text) {
  strupr(text.data());
  return text;
}

std::string UpperString(std::string text) {
  strupr(text);
  return text;
}

std::string Lower(std::string text) {
  strlwr(text.data());
  return text;
}

TEST(LetterCase, ConvertsTheLetters) {
  const struct {
    const char* text;
    const char* upper;
    const char* lower;
  } cases[] = {
      {"", "", ""},
      {"abc", "ABC", "abc"},
      {"ABC", "ABC", "abc"},
      {"Ab12-1200hc_4Tg100i", "AB12-1200HC_4TG100I", "ab12-1200hc_4tg100i"},
      {"az AZ @[`{ 09", "AZ AZ @[`{ 09", "az az @[`{ 09"},
      {"\xE9\xC9 \xC3\xA9 \xC3\x89 i\xC4\xB1", "\xE9\xC9 \xC3\xA9 \xC3\x89 I\xC4\xB1", "\xE9\xC9 \xC3\xA9 \xC3\x89 i\xC4\xB1"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(Upper(row.text), row.upper) << "text: " << row.text;
    EXPECT_EQ(UpperString(row.text), row.upper) << "text: " << row.text;
    EXPECT_EQ(Lower(row.text), row.lower) << "text: " << row.text;
  }
}

TEST(LetterCase, LettersAreTheSame26InEveryLocale) {
  support::ForEachLocale([](const std::string& locale) {
    for (int code = 1; code < 256; ++code) {
      const int upper = code >= 'a' && code <= 'z' ? code - 32 : code;
      const int lower = code >= 'A' && code <= 'Z' ? code + 32 : code;
      const std::string text(1, static_cast<char>(code));
      EXPECT_EQ(Upper(text), std::string(1, static_cast<char>(upper))) << "code: " << code << ", locale: " << locale;
      EXPECT_EQ(UpperString(text), std::string(1, static_cast<char>(upper))) << "code: " << code << ", locale: " << locale;
      EXPECT_EQ(Lower(text), std::string(1, static_cast<char>(lower))) << "code: " << code << ", locale: " << locale;
    }
  });
}

TEST(LetterCase, AStringIsConvertedAfterAZeroToo) { EXPECT_EQ(UpperString(std::string("a\0b", 3)), std::string("A\0B", 3)); }

TEST(LetterCase, NullIsLeftAlone) {  // coming back is the whole of it
  char* const none = nullptr;
  strupr(none);
  strlwr(none);
}

TEST(FindSubString, GivesTheFirstPositionAtOrAfterTheStart) {
  const struct {
    const char* text;
    const char* sub;
    int start;
    bool exact;
    int position;
  } cases[] = {
      {"abcabc", "bc", 0, true, 1},
      {"abcabc", "bc", 1, true, 1},
      {"abcabc", "bc", 2, true, 4},
      {"abcabc", "bc", 4, true, 4},
      {"abcabc", "bc", 5, true, -1},
      {"abcabc", "bc", 6, true, -1},
      {"abcabc", "abcabc", 0, true, 0},
      {"abcabc", "abcabcd", 0, true, -1},
      {"H-1", "H-", 0, true, 0},
      {"AB-12H-1", "H-", 0, true, 5},
      {"AB-12h-1", "H-", 0, true, -1},
      {"AB-12h-1", "H-", 0, false, 5},
      {"abcABC", "ABC", 0, true, 3},
      {"abcABC", "ABC", 0, false, 0},
      {"abcABC", "aBc", 1, false, 3},
      {"abcABC", "aBc", 4, false, -1},
      {"aab", "AB", 0, false, 1},
      {"\xE9", "\xC9", 0, false, -1},  // é and É of Latin-1 are no letters here
      {"[", "{", 0, false, -1},
      {"@", "`", 0, false, -1},
      {"", "a", 0, true, -1},
      {"", "a", 0, false, -1},
      // The empty text is found where the search starts, at the end of the text at the latest.
      {"abc", "", 0, true, 0},
      {"abc", "", 2, false, 2},
      {"abc", "", 3, true, 3},
      {"abc", "", 3, false, 3},
      {"abc", "", 4, true, -1},
      {"abc", "", 4, false, -1},
      {"", "", 0, true, 0},
      {"", "", 0, false, 0},
      // A start outside the text.
      {"abc", "a", -1, true, 0},
      {"abc", "A", -5, false, 0},
      {"abc", "a", INT_MIN, true, 0},
      {"abc", "A", INT_MIN, false, 0},
      {"abc", "c", 4, true, -1},
      {"abc", "a", INT_MAX, true, -1},
      {"abc", "a", INT_MAX, false, -1},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(FindSubString(row.text, row.sub, row.start, row.exact), row.position)
        << "row: " << row.text << ", " << row.sub << ", " << row.start << ", " << row.exact;
  }
}

TEST(FindSubString, NullFindsNothing) {
  for (const bool exact : {true, false}) {
    EXPECT_EQ(FindSubString(nullptr, "a", 0, exact), -1);
    EXPECT_EQ(FindSubString("a", nullptr, 0, exact), -1);
    EXPECT_EQ(FindSubString(nullptr, nullptr, 0, exact), -1);
  }
}

TEST(FindSubString, IgnoresCaseAlikeInEveryLocale) {
  support::ForEachLocale([](const std::string& locale) {
    EXPECT_EQ(FindSubString("XILINX", "ili", 0, false), 1) << "locale: " << locale;
    EXPECT_EQ(FindSubString("\xE4", "\xC4", 0, false), -1) << "locale: " << locale;
  });
}

}  // namespace
