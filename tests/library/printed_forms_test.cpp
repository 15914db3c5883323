// How numbers and texts from outside are printed.

#include "foundation/printed_forms.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace plddb::internal;

TEST(PrintedForms, EscapeWhatCannotBeSeen) {
  const struct {
    std::string text;
    std::string printed;
  } rows[] = {
      {"", ""},
      {"XC9572XL", "XC9572XL"},
      {"a\x1B[0m", "a\\x1B[0m"},
      {"a\nb",
       "a\\x0A"
       "b"},
      {std::string("a\0b", 3),
       "a\\x00"
       "b"},
      {"\x7F", "\\x7F"},
      {"\xC2\x80", "\\u0080"},           // a control of 8-bit terminals
      {"\xC3\xA4", "\xC3\xA4"},          // seen
      {"\xE2\x80\xAE", "\\u202E"},       // overrides the direction
      {"\xF3\xA0\x80\x81", "\\uE0001"},  // a tag
      {"\xFF"
       "a",
       "\\xFF"
       "a"},                                // no UTF-8
      {"\xE2\x80", "\\xE2\\x80"},           // cut
      {"\xC0\x80", "\\xC0\\x80"},           // too long for its code
      {"\xED\xA0\x80", "\\xED\\xA0\\x80"},  // half of a pair
  };
  for (const auto& row : rows) EXPECT_EQ(Printable(row.text), row.printed) << "row: " << row.printed;
}

TEST(PrintedForms, ShortenQuotesBetweenCharacters) {
  EXPECT_EQ(Quoted(""), "\"\"");
  EXPECT_EQ(Quoted(std::string(60, 'x')), '"' + std::string(60, 'x') + '"');
  EXPECT_EQ(Quoted(std::string(61, 'x')), '"' + std::string(60, 'x') + "...\"");
  EXPECT_EQ(Quoted(std::string(59, 'x') + "\xC3\xA4y"), '"' + std::string(59, 'x') + "\xC3\xA4...\"");
}

TEST(PrintedForms, GiveTextsThatAreMissingADash) {
  EXPECT_EQ(TextOrDash(nullptr), "-");
  EXPECT_EQ(TextOrDash(""), "-");
  EXPECT_EQ(TextOrDash("\t"), "\\x09");
}

TEST(PrintedForms, HaveAtLeastTheirDigits) {
  EXPECT_EQ(Hex(0, 2), "0x00");
  EXPECT_EQ(Hex(0xAB, 1), "0xAB");
  EXPECT_EQ(Hex(0x0362D093, 8), "0x0362D093");
  EXPECT_EQ(Hex(0xFFFFFFFF, 2), "0xFFFFFFFF");
}

}  // namespace
