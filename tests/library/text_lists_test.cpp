#include "foundation/text_lists.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/reference/literal_rules.h"
#include "tests/support/locales.h"
#include "tests/support/random_texts.h"

using namespace plddb::internal;

namespace {

using Items = std::vector<std::string>;

Items SemicolonItems(const std::string& text) {
  Items items;
  ForEachSemicolonItem(text, [&](std::string_view item) { items.emplace_back(item); });
  return items;
}

Items QuotedItems(const std::string& text) {
  Items items;
  ForEachQuotedItem(text, [&](std::string_view item) { items.emplace_back(item); });
  return items;
}

Items Tokens(const std::string& text) {
  Items tokens;
  ForEachToken(text, [&](std::string_view token) { tokens.emplace_back(token); });
  return tokens;
}

std::vector<int> TokenNumbers(const std::string& text) {
  std::vector<int> numbers;
  ForEachToken(text, [&](std::string_view token) { numbers.push_back(ParseNumber(token)); });
  return numbers;
}

/// Calls `check(text)` for every text of up to `longest` characters of `alphabet`, the empty one included, until it gave false
/// ten times.
template <typename Check>
void ForEachText(const std::string& alphabet, std::size_t longest, Check check) {
  std::vector<std::size_t> letters;  // the text as positions in the alphabet, counted up like a number
  std::string text;
  for (int failures = 0; failures < 10 && text.size() <= longest;) {
    if (!check(text)) ++failures;
    std::size_t place = 0;
    while (place < letters.size() && letters[place] + 1 == alphabet.size()) letters[place++] = 0;
    if (place == letters.size()) {
      letters.push_back(0);
    } else {
      ++letters[place];
    }
    text.resize(letters.size());
    for (std::size_t i = 0; i <= place; ++i) text[i] = alphabet[letters[i]];
  }
}

/// Calls `check(text)` for `count` random texts, until it gave false ten times.
template <typename Check>
void ForRandomTexts(unsigned int seed, int count, Check check) {
  support::RandomTexts texts(seed);
  int failures = 0;
  for (int i = 0; i < count && failures < 10; ++i) {
    if (!check(texts.Next())) ++failures;
  }
}

TEST(SemicolonList, DeliversTheItemsThatASemicolonCloses) {
  const struct {
    const char* text;
    Items items;
  } cases[] = {
      {"", {}},
      {"REG", {}},  // no semicolon at all
      {"REG;", {}},
      {";", {}},
      {"X;A", {}},  // not closed
      {";A;B", {"A"}},
      {"REG;100;200 ; 300;", {"100", "200", "300"}},  // trimmed at both ends
      {"REG;100;200;rest", {"100", "200"}},           // what follows the last semicolon is ignored
      {"X;;A;", {}},                                  // an empty segment ends the list
      {"X;A;;B;", {"A"}},
      {";;", {}},
      {"L;  ;5;", {"", "5"}},  // blanks only: an empty item, and the list goes on
      {"L; \t\n\v\f\r;5;", {"", "5"}},
      {"L;a b;\ta\n;", {"a b", "a"}},
      {" ;A;", {"A"}},
      {"P;JTAG;", {"JTAG"}},
      {"I; 7 ;x;-2;", {"7", "x", "-2"}},
      {"R;A0-A7;B0-B7;", {"A0-A7", "B0-B7"}},
      {"L;\xA0;", {"\xA0"}},  // bytes from 0x80 on are no blanks
      {"L;\"a\";", {"\"a\""}},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(SemicolonItems(row.text), row.items) << "text: " << row.text;
    EXPECT_EQ(reference::SemicolonItems(row.text), row.items) << "literally, text: " << row.text;
  }
}

TEST(SemicolonList, AgreesWithTheLiteralRuleOnEveryTextUpToLength8) {
  int texts = 0;
  ForEachText("; \ta1", 8, [&](const std::string& text) {
    ++texts;
    const bool same = SemicolonItems(text) == reference::SemicolonItems(text);
    EXPECT_TRUE(same) << "text: \"" << text << '"';
    return same;
  });
  EXPECT_EQ(texts, 488'281);  // 5^0 + 5^1 + ... + 5^8
}

TEST(QuotedList, DeliversTheItemsBetweenPairsOfQuotes) {
  const struct {
    const char* text;
    Items items;
  } cases[] = {
      {"", {}},
      {"abc", {}},
      {R"(")", {}},
      {R"("")", {}},
      {R"("A)", {}},
      {R"(A")", {}},
      {R"("A")", {"A"}},
      {R"("Erase", "Program" , "Verify")", {"Erase", "Program", "Verify"}},
      {R"("A""B")", {"A", "B"}},
      {R"(x "A" y "B" z)", {"A", "B"}},  // text outside is ignored
      {R"("Erase" "" "Verify")", {"Erase"}},
      {R"("A" " " "C")", {"A", "", "C"}},  // blanks only: an empty item, and the list goes on
      {R"("A" "B)", {"A"}},                // no closing quote
      {R"("A" ")", {"A"}},
      {R"(" A ", "	B C	")", {"A", "B C"}},
      {R"("a;b")", {"a;b"}},
      {R"("a\"b")", {R"(a\)"}},  // no escape: the quote closes, and the next one is not closed
      {"\"\xA0\"", {"\xA0"}},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(QuotedItems(row.text), row.items) << "text: " << row.text;
    EXPECT_EQ(reference::QuotedItems(row.text), row.items) << "literally, text: " << row.text;
  }
}

TEST(QuotedList, AgreesWithTheLiteralRuleOnEveryTextUpToLength8) {
  int texts = 0;
  ForEachText("\" \ta1", 8, [&](const std::string& text) {
    ++texts;
    const bool same = QuotedItems(text) == reference::QuotedItems(text);
    EXPECT_TRUE(same) << "text: '" << text << '\'';
    return same;
  });
  EXPECT_EQ(texts, 488'281);
}

TEST(Cursors, AgreeWithTheLiteralRulesOnRandomTexts) {
  ForRandomTexts(1, 200'000, [](const std::string& text) {
    const bool same =
        SemicolonItems(text) == reference::SemicolonItems(text) && QuotedItems(text) == reference::QuotedItems(text);
    EXPECT_TRUE(same) << "text: '" << text << '\'';
    return same;
  });
}

TEST(Cursors, CutTheirItemsFromAPrivateCopy) {
  Items items;
  std::unique_ptr<std::string> list;
  const auto hold = [&](const char* text) -> const char* {
    list = std::make_unique<std::string>(text);
    return list->c_str();
  };
  const auto freeTheText = [&](std::string_view item) {
    list.reset();
    items.emplace_back(item);
  };
  ForEachSemicolonItem(hold("L;a first item;a second item;"), freeTheText);
  ForEachQuotedItem(hold(R"("a third item" "a fourth item")"), freeTheText);
  ForEachToken(hold("1111111111111111111;2222222222222222222"), freeTheText);
  EXPECT_EQ(items, (Items{"a first item", "a second item", "a third item", "a fourth item", "1111111111111111111",
                          "2222222222222222222"}));
}

const struct {
  const char* text;
  int number;
} kNumbers[] = {
    {"", 0},
    {"0", 0},
    {"7", 7},
    {" 7 ", 7},
    {"\t\n\v\f\r7", 7},
    {"+7", 7},
    {"-2", -2},
    {"--2", 0},
    {"+-2", 0},
    {"-+2", 0},
    {"- 2", 0},
    {"-", 0},
    {"+", 0},
    {" ", 0},
    {"x", 0},
    {"12x3", 12},
    {"0x10", 0},
    {"010", 10},
    {"1.9", 1},
    {"1e3", 1},
    {"1 2", 1},
    {"\xA0"
     "7",
     0},
    {"000000000000000000000000000000000000012", 12},
    {"2147483647", 2147483647},
    {"2147483648", -2147483647 - 1},
    {"4294967295", -1},
    {"4294967296", 0},
    {"4294967297", 1},
    {"-2147483648", -2147483647 - 1},
    {"-2147483649", 2147483647},
    {"-4294967295", 1},
    {"-4294967296", 0},
    {"99999999999", 1215752191},
    {"-99999999999", -1215752191},
    {"9223372036854775807", -1},  // 2^63 - 1, and all that is larger
    {"9223372036854775808", -1},
    {"18446744073709551615", -1},
    {"18446744073709551616", -1},
    {"99999999999999999999999999", -1},
    {"-9223372036854775807", 1},
    {"-9223372036854775808", 0},  // -2^63, and all that is smaller
    {"-9223372036854775809", 0},
    {"-18446744073709551616", 0},
    {"-99999999999999999999999999", 0},
};

TEST(ParseNumber, KeepsTheLow32BitsOf64) {
  for (const auto& row : kNumbers) {
    EXPECT_EQ(ParseNumber(row.text), row.number) << "text: " << row.text;
    EXPECT_EQ(reference::ToNumber(row.text), row.number) << "literally, text: " << row.text;
  }
}

TEST(ParseNumber, ReadsAlikeInEveryLocale) {
  support::ForEachLocale([](const std::string& locale) {
    for (const auto& row : kNumbers)
      EXPECT_EQ(ParseNumber(row.text), row.number) << "text: " << row.text << ", locale: " << locale;
  });
}

TEST(ParseNumber, ReadsNoFartherThanItsView) {
  EXPECT_EQ(ParseNumber(std::string_view("123456").substr(0, 3)), 123);
  EXPECT_EQ(ParseNumber(std::string_view("-1").substr(0, 1)), 0);
  EXPECT_EQ(ParseNumber(std::string_view("  7").substr(0, 2)), 0);
}

TEST(ParseNumber, AgreesWithTheLiteralRuleOnRandomTexts) {
  ForRandomTexts(2, 1'000'000, [](const std::string& text) {
    const bool same = ParseNumber(text) == reference::ToNumber(text);
    EXPECT_TRUE(same) << "text: '" << text << '\'';
    return same;
  });
}

TEST(ParseRange, CutsAtTheFirstTo) {
  const struct {
    const char* text;
    int first;
    int last;
  } cases[] = {
      {"0 to 31", 0, 31},
      {"5 to 6", 5, 6},
      {"6 to 5", 6, 5},
      {"0to7", 0, 7},
      {" 12\tto\n-3 ", 12, -3},
      {"to", 0, 0},
      {"to 5", 0, 5},
      {"5 to", 5, 0},
      {"1 to 2 to 3", 1, 2},  // only the first one counts
      {"1 too 2", 1, 0},      // and wherever it is
      {"stop 4", 0, 0},       // "s" and "p 4"
      {"ttto 4", 0, 4},       //
      {"1 TO 2", 0, 0},       // exact case; without "to" the last is read after the first character
      {"12", 0, 2},           //
      {"x12", 0, 12},         //
      {"7", 0, 0},            //
      {"", 0, 0},             //
      {"1 - 31", 0, 0},       //
      {"1-31", 0, -31},       //
      {"99999999999 to 99999999999999999999", 1215752191, -1},
      {"-2147483648 to 2147483647", -2147483647 - 1, 2147483647},
  };
  for (const auto& row : cases) {
    const NumberRange range = ParseRange(row.text);
    EXPECT_EQ(range.first, row.first) << "text: " << row.text;
    EXPECT_EQ(range.last, row.last) << "text: " << row.text;
    const reference::Range literal = reference::ToRange(row.text);
    EXPECT_EQ(literal.first, row.first) << "literally, text: " << row.text;
    EXPECT_EQ(literal.last, row.last) << "literally, text: " << row.text;
  }
}

TEST(ParseRange, AgreesWithTheLiteralRuleOnRandomTexts) {
  ForRandomTexts(3, 1'000'000, [](const std::string& text) {
    const NumberRange range = ParseRange(text);
    const reference::Range literal = reference::ToRange(text);
    const bool same = range.first == literal.first && range.last == literal.last;
    EXPECT_TRUE(same) << "text: '" << text << '\'';
    return same;
  });
}

TEST(TokenList, CutsAtAnyRunOfTheFourDelimiters) {
  const struct {
    const char* text;
    Items tokens;
  } cases[] = {
      {"", {}},
      {"; \t\n", {}},
      {"1;2 3", {"1", "2", "3"}},
      {"16; 32 48", {"16", "32", "48"}},
      {";;1;;;2;;", {"1", "2"}},
      {" \t\n;1\n2\t3;4 ", {"1", "2", "3", "4"}},
      {"1\r2", {"1\r2"}},  // these four are none
      {"1\v2", {"1\v2"}},
      {"1\f2", {"1\f2"}},
      {"1,2", {"1,2"}},
      {"x", {"x"}},
  };
  for (const auto& row : cases) EXPECT_EQ(Tokens(row.text), row.tokens) << "text: " << row.text;
}

TEST(TokenList, ATokenWithoutDigitsIsZero) {
  const struct {
    const char* text;
    std::vector<int> numbers;
  } cases[] = {
      {"1;2 3", {1, 2, 3}},
      {"x", {0}},
      {"x;4;-", {0, 4, 0}},
      {"0x10", {0}},
      {"\r5 \v6\t\f7", {5, 6, 7}},  // white space that is no delimiter belongs to the number
      {"1,2;3", {1, 3}},
      {"99999999999;9999999999999999999999;-1", {1215752191, -1, -1}},
      {"", {}},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(TokenNumbers(row.text), row.numbers) << "text: " << row.text;
    EXPECT_EQ(reference::MultibootNumbers(row.text, 1024), row.numbers) << "literally, text: " << row.text;
  }
}

TEST(TokenList, AgreesWithTheLiteralRuleOnRandomTexts) {
  ForRandomTexts(4, 1'000'000, [](const std::string& text) {
    const bool same = TokenNumbers(text) == reference::MultibootNumbers(text, 1024);
    EXPECT_TRUE(same) << "text: '" << text << '\'';
    return same;
  });
}

TEST(TokenList, LeavesACallersOwnTokenWalkAlone) {
  char text[] = "a b c";
  Items walked;
  for (char* token = std::strtok(text, " "); token != nullptr; token = std::strtok(nullptr, " ")) {
    walked.emplace_back(token);
    ForEachToken("1;2;3", [](std::string_view) {});
  }
  EXPECT_EQ(walked, (Items{"a", "b", "c"}));
}

}  // namespace
