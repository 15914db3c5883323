#include "descriptions/text_position.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using plddb::descriptions::TextPosition;
using plddb::descriptions::TextPositions;

TEST(TextPositions, CountFromOneAndALineFeedEndsItsLine) {
  const struct {
    const char* text;
    std::size_t offset;
    int line;
    int column;
  } rows[] = {
      {"", 0, 1, 1},     {"ab", 0, 1, 1},   {"ab", 2, 1, 3},     {"a\nb", 1, 1, 2}, {"a\nb", 2, 2, 1},
      {"a\nb", 3, 2, 2}, {"\n\n", 1, 2, 1}, {"a\r\nb", 3, 2, 1}, {"a\rb", 2, 1, 3}, {"a\n", 2, 2, 1},
  };
  for (const auto& row : rows) {
    const TextPosition position = TextPositions(row.text).At(row.offset);
    EXPECT_EQ(position.line, row.line) << "row: " << row.text << " at " << row.offset;
    EXPECT_EQ(position.column, row.column) << "row: " << row.text << " at " << row.offset;
  }
}

TEST(TextPositions, AnyGrowingOffsetsGiveWhatEachGivesAlone) {
  std::mt19937 random(7);
  for (int round = 0; round < 1000; ++round) {
    std::string text;
    for (auto length = random() % 30; length > 0; --length) text += random() % 3 == 0 ? '\n' : 'x';
    TextPositions positions(text);
    for (std::size_t offset = 0; offset <= text.size(); offset += random() % 4) {
      const TextPosition here = positions.At(offset);
      const TextPosition alone = TextPositions(text).At(offset);
      EXPECT_EQ(here.line, alone.line) << "row: " << text << " at " << offset;
      EXPECT_EQ(here.column, alone.column) << "row: " << text << " at " << offset;
      if (offset == text.size()) break;
    }
  }
}
