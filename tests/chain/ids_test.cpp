#include <gtest/gtest.h>

#include "Chain.h"

namespace {

using plddb::chain::ParseId;
using plddb::chain::ReadIds;
using plddb::chain::ScanResult;

TEST(ParseId, TakesEightHexDigitsOrAPrefixAndOneToEight) {
  const struct {
    const char* text;
    std::optional<unsigned int> id;
  } cases[] = {
      {"59604093", 0x59604093},
      {"0x59604093", 0x59604093},
      {"0X4ba00477", 0x4BA00477},
      {"0x1", 1},
      {"0x0", 0},
      {"ffffFFFF", 0xFFFFFFFF},
      {"", {}},
      {"0x", {}},
      {"5960409", {}},
      {"596040930", {}},
      {"0x123456789", {}},
      {"0x5960409g", {}},
      {"-0x1", {}},
      {"+59604093", {}},
      {" 59604093", {}},
      {"0x 9604093", {}},
      {"0b101010101010101", {}},
      {"5960-4093", {}},
      {"0x-9604093", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(ParseId(c.text), c.id) << "row: " << c.text;
}

TEST(ReadIds, SkipsCommentsAndWhiteSpace) {
  const ScanResult result = ReadIds("\n # a chain\n\t0x59604093 # XC\r\n\n4BA00477");
  ASSERT_TRUE(result.scan);
  ASSERT_EQ(result.scan->taps.size(), 2u);
  EXPECT_EQ(result.scan->taps[0].id, 0x59604093u);
  EXPECT_EQ(result.scan->taps[1].id, 0x4BA00477u);
  EXPECT_EQ(result.scan->format, "");
}

TEST(ReadIds, GivesThePlaceOfEachFaultAndNothingElse) {
  const ScanResult result = ReadIds("0x59604093\n  XC9572XL\n\nx\n");
  EXPECT_FALSE(result.scan);
  ASSERT_EQ(result.faults.size(), 2u);
  EXPECT_EQ(result.faults[0].line, 2);
  EXPECT_EQ(result.faults[0].column, 3);
  EXPECT_EQ(result.faults[0].text, "'XC9572XL' is not an id: expected 8 hex digits, or 0x and 1 to 8 hex digits");
  EXPECT_EQ(result.faults[1].line, 4);
  EXPECT_EQ(result.moreFaults, 0u);
}

TEST(ReadIds, KeepsTheFirstHundredFaultsAndCountsTheOthers) {
  std::string text;
  for (int i = 0; i < 250; ++i) text += "nonsense\n";
  const ScanResult result = ReadIds(text);
  EXPECT_EQ(result.faults.size(), 100u);
  EXPECT_EQ(result.moreFaults, 150u);
}

TEST(ReadIds, WantsOneAtLeast) {
  for (const char* text : {"", "\n\n", "# nothing\n", " "}) {
    const ScanResult result = ReadIds(text);
    EXPECT_FALSE(result.scan) << "row: " << text;
    ASSERT_EQ(result.faults.size(), 1u) << "row: " << text;
    EXPECT_EQ(result.faults[0].text, "no id; expected one per line") << "row: " << text;
  }
}

}  // namespace
