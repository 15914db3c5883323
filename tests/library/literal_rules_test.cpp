// The literal transcription of the rules of embedded memory blocks against its examples, and the device against the
// transcription. (text_lists_test.cpp does both for the text formats.)

#include "tests/reference/literal_rules.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "DeviceList.h"
#include "tests/support/random_texts.h"

namespace {

using Numbers = std::vector<int>;

Numbers Columns(const std::vector<reference::EBREntry>& entries) {
  Numbers columns;
  for (const auto& entry : entries) columns.push_back(entry.Column);
  return columns;
}

Numbers Addresses(const std::vector<reference::EBREntry>& entries) {
  Numbers addresses;
  for (const auto& entry : entries) addresses.push_back(entry.Address);
  return addresses;
}

TEST(LiteralEBRRules, NumberColumnsRowByRow) {
  const struct {
    const char* count;
    const char* range;
    Numbers columns;
  } cases[] = {
      {"8", "0 to 31", {0, 8, 16, 24, 0, 8, 16, 24}},
      {"6", "0 to 15", {0, 8, 0, 8, 0, 8}},
      {"4", "0 to 12", {0, 0, 0, 0}},  // two rows of one entry; the others keep theirs
      {"3", "8 to 15", {8, 8, 8}},
      {"3", "10 to 25", {10, 18, 0}},                                     // one row of two; the third fills none
      {"2", "0 to 6", {0, 0}},                                            // narrower than an entry
      {"2", "0 to 31", {0, 0}},                                           // wider than all entries: no row at all
      {"3", "31 to 0", {0, 0, 0}},                                        // a negative width
      {"3", "8 to 7", {0, 0, 0}},                                         // no width
      {"2", "2147483640 to -2147483641", {2147483640, -2147483647 - 1}},  // the width wraps to 16, the counter too
  };
  for (const auto& row : cases) {
    auto entries = reference::FreshEntries(row.count);
    reference::NumberColumns(entries, row.range);
    EXPECT_EQ(Columns(entries), row.columns) << "row: " << row.count << ", " << row.range;
  }
}

TEST(LiteralEBRRules, NumberAddressesByTheColumns) {
  const struct {
    const char* count;
    const char* columns;
    const char* range;
    Numbers addresses;
  } cases[] = {
      {"8", "0 to 31", "5 to 6", {5, 5, 5, 5, 6, 6, 6, 6}},
      {"8", "0 to 31", "6 to 5", {6, 6, 6, 6, 5, 5, 5, 5}},
      {"1", "0 to 7", "9 to 3", {9}},
      {"3", "0 to 7", "1 to 1", {1, 2, 3}},  // the last one does not bound the count
      {"3", "8 to 7", "4 to 5", {4, 5, 6}},  // columns that were never numbered are all alike
      {"3", "0 to 7", "2147483647 to 2147483647", {2147483647, -2147483647 - 1, -2147483647}},
  };
  for (const auto& row : cases) {
    auto entries = reference::FreshEntries(row.count);
    reference::NumberColumns(entries, row.columns);
    reference::NumberAddresses(entries, row.range);
    EXPECT_EQ(Addresses(entries), row.addresses) << "row: " << row.count << ", " << row.columns << ", " << row.range;
  }
}

TEST(LiteralEBRRules, FreshEntriesAreNamedByTheirPosition) {
  const auto entries = reference::FreshEntries("3");
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].BitName, "1");
  EXPECT_EQ(entries[2].BitName, "3");
  for (const char* const count : {"0", "-1", "abc", ""})
    EXPECT_TRUE(reference::FreshEntries(count).empty()) << "count: " << count;
}

bool Same(const std::vector<CControlEBR>& entries, const std::vector<reference::EBREntry>& literal) {
  bool same = entries.size() == literal.size();
  for (std::size_t i = 0; same && i < entries.size(); ++i) {
    same = entries[i].BitName == literal[i].BitName && entries[i].Value == literal[i].Value &&
           entries[i].Address == literal[i].Address && entries[i].Column == literal[i].Column;
  }
  return same;
}

/// A range as device files have it, or any text.
std::string RandomRange(support::RandomTexts& texts) {
  switch (texts.Below(4)) {
    case 0:
      return texts.Next();
    case 1:
      return std::to_string(texts.Below(64)) + "to " + std::to_string(texts.Below(64));
    default: {
      const std::size_t first = texts.Below(64);
      return std::to_string(first) + " to " + std::to_string(first + 8 * texts.Below(8) + 7);
    }
  }
}

TEST(LiteralEBRRules, TheDeviceBuildsTheSameBlocksFromRandomTexts) {
  support::RandomTexts texts(5);
  int failures = 0;
  for (int i = 0; i < 50'000 && failures < 10; ++i) {
    const std::string count = std::to_string(texts.Below(40));
    const std::string columns = RandomRange(texts);
    const std::string addresses = RandomRange(texts);
    FamilyList family;
    DeviceInfo device(family);
    device.SetListControlEBRBitName(count.c_str());
    device.SetListControlEBRColumn(columns.c_str());
    device.SetListControlEBRAddress(addresses.c_str());
    device.SetListControlEBRName("EBR");
    auto literal = reference::FreshEntries(count);
    reference::NumberColumns(literal, columns);
    reference::NumberAddresses(literal, addresses);
    const auto& blocks = device.GetlistControlEBR();
    const bool same = blocks.empty() ? literal.empty() : Same(blocks.front().Entries, literal);
    EXPECT_TRUE(same) << "row: " << count << ", '" << columns << "', '" << addresses << '\'';
    failures += same ? 0 : 1;
  }
}

}  // namespace
