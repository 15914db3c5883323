// Embedded memory blocks (EBR).

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include "DeviceInfo.h"
#include "tests/reference/literal_rules.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/device_fields.h"
#include "tests/support/random_texts.h"
#include "tests/support/show.h"

namespace {

using support::Device;
using support::Show;

static_assert(std::is_copy_constructible_v<CControlEBR> && std::has_virtual_destructor_v<CControlEBR>);
static_assert(std::is_copy_constructible_v<CControlEBRList> && std::has_virtual_destructor_v<CControlEBRList>);
static_assert(!std::is_base_of_v<LObject, CControlEBR> && !std::is_base_of_v<LObject, CControlEBRList>);

using Entries = std::vector<CControlEBR>;

/// The entries of the scratch list, which no getter shows: a block is filed to see them.
Entries Scratch(DeviceInfo& device) {
  const auto blocks = device.GetlistControlEBR().size();
  device.SetListControlEBRName("to look at");
  return device.GetlistControlEBR().size() == blocks ? Entries() : device.GetlistControlEBR().back().Entries;
}

std::vector<int> Columns(DeviceInfo& device) {
  std::vector<int> columns;
  for (const CControlEBR& entry : Scratch(device)) columns.push_back(entry.Column);
  return columns;
}

std::vector<int> Addresses(DeviceInfo& device) {
  std::vector<int> addresses;
  for (const CControlEBR& entry : Scratch(device)) addresses.push_back(entry.Address);
  return addresses;
}

// The count

TEST(SetListControlEBRBitName, MakesFreshEntriesNumberedFromOne) {
  Device device;
  device.record.SetListControlEBRBitName("3");
  EXPECT_EQ(Show(Scratch(device.record)), "[{'1', false, 0, 0}, {'2', false, 0, 0}, {'3', false, 0, 0}]");
}

TEST(SetListControlEBRBitName, ReadsTheCountInBaseTen) {
  const struct {
    const char* text;
    std::size_t entries;
  } cases[] = {
      {"3", 3},
      {" \t3", 3},
      {"+3", 3},
      {"3x", 3},
      {"3;4;", 3},
      {"0x10", 0},
      {"010", 10},
      {"2.9", 2},
      {"0", 0},
      {"-1", 0},
      {"abc", 0},
      {"", 0},
      {" ", 0},
      {";3;", 0},
      {"100", 100},
      {"4294967297", 1},             // the low 32 bits
      {"2147483648", 0},             // negative as a signed number
      {"4294967296", 0},             //
      {"-4294967293", 3},            //
      {"99999999999999999999", 0},   // reads as 2^63 - 1, whose low 32 bits are -1
      {"-99999999999999999999", 0},  //
  };
  for (const auto& row : cases) {
    Device device;
    device.record.SetListControlEBRBitName("2");
    device.record.SetListControlEBRBitName(row.text);
    const Entries entries = Scratch(device.record);
    EXPECT_EQ(entries.size(), row.entries) << "text: " << row.text;
    EXPECT_EQ(entries.empty() ? "0" : entries.back().BitName, std::to_string(row.entries)) << "text: " << row.text;
  }
}

TEST(SetListControlEBRBitName, ReplacesTheEntriesByFreshOnes) {
  Device device;
  device.record.SetListControlEBRBitName("4");
  device.record.SetListControlEBRColumn("8 to 39");
  device.record.SetListControlEBRAddress("5 to 6");
  device.record.SetListControlEBRBitName("2");
  EXPECT_EQ(Show(Scratch(device.record)), "[{'1', false, 0, 0}, {'2', false, 0, 0}]");
}

TEST(SetListControlEBRBitName, NullChangesNothing) {
  Device device;
  device.record.SetListControlEBRBitName("2");
  device.record.SetListControlEBRBitName(nullptr);
  EXPECT_EQ(Scratch(device.record).size(), 2u);
}

TEST(SetListControlEBRBitName, ACountThatIsNotPositiveLeavesNothingForTheOtherSetters) {
  for (const char* const count : {"0", "abc", "-5", ""}) {
    Device device;
    device.record.SetListControlEBRBitName("2");
    device.record.SetListControlEBRBitName(count);
    device.record.SetListControlEBRColumn("0 to 15");
    device.record.SetListControlEBRAddress("5 to 6");
    device.record.SetListControlEBRName("block");
    EXPECT_EQ(Show(device.record.GetlistControlEBR()), "[]") << "count: " << count;
  }
}

TEST(SetListControlEBRBitName, AnAbsurdCountEndsInBadAllocAtOnce) {
  for (const char* const count : {"2147483647", "1000000000", "99999999999"}) {
    Device device;
    device.record.SetListControlEBRBitName("2");
    device.record.SetListControlEBRColumn("16 to 31");
    const Entries before = Scratch(device.record);
    const long allocations = support::AllocationCount();
    EXPECT_THROW(device.record.SetListControlEBRBitName(count), std::bad_alloc) << "count: " << count;
    const long made = support::AllocationCount() - allocations;
    EXPECT_LT(made, 1'000) << "not after filling memory; count: " << count;
    EXPECT_EQ(Show(Scratch(device.record)), Show(before)) << "count: " << count;
  }
}

// Up to the limit the system decides whether there is memory; beyond it, the system is not asked. The allocation fails here, so
// that no row needs any.
TEST(SetListControlEBRBitName, OnlyCountsAboveTheBoundAreRefusedUnasked) {
  const struct {
    const char* count;
    bool asks;
  } cases[] = {
      {"1", true},           {"16777215", true},  {"16777216", true},  {" +16777216 entries", true},
      {"4311744512", true},                                                                    // 16,777,216 in its low 32 bits
      {"16777217", false},   {"16777218", false}, {"33554432", false}, {"4311744513", false},  // 16,777,217 in its low 32 bits
      {"2147483647", false},
  };
  for (const auto& row : cases) {
    Device device;
    bool refused = false;
    bool asked = false;
    {
      const support::FailAllocation failing(1);
      try {
        device.record.SetListControlEBRBitName(row.count);
      } catch (const std::bad_alloc&) {
        refused = true;
      }
      asked = failing.Happened();
    }
    EXPECT_TRUE(refused) << "count: " << row.count;
    EXPECT_EQ(asked, row.asks) << "count: " << row.count;
  }
}

TEST(SetListControlEBRBitName, LargeCountsBelowTheBoundAreBuiltInFull) {
  for (const int count : {65'535, 65'536, 65'537, 1'000'000}) {
    Device device;
    device.record.SetListControlEBRBitName(std::to_string(count).c_str());
    device.record.SetListControlEBRColumn("0 to 15");
    device.record.SetListControlEBRAddress("5 to 6");
    device.record.SetListControlEBRName("block");
    const auto& entries = device.record.GetlistControlEBR().at(0).Entries;
    ASSERT_EQ(entries.size(), static_cast<std::size_t>(count));
    const CControlEBR& last = entries[static_cast<std::size_t>(count / 2 * 2 - 1)];  // of the last whole row
    EXPECT_EQ(entries.back().BitName, std::to_string(count));
    EXPECT_EQ(last.Column, 8) << "count: " << count;
    EXPECT_EQ(last.Address, 5 + count / 2 - 1) << "count: " << count;
  }
}

TEST(SetListControlEBRBitName, AFailedAllocationKeepsTheOldEntries) {
  Device device;
  device.record.SetListControlEBRBitName("2");
  device.record.SetListControlEBRColumn("16 to 31");
  const std::string before = Show(Scratch(device.record));
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { device.record.SetListControlEBRBitName("1000"); },
                                                          [&] {
                                                            const long left = support::LiveAllocations();
                                                            EXPECT_EQ(left, live);
                                                          });
  EXPECT_GT(failures, 0);
  EXPECT_EQ(Scratch(device.record).size(), 1'000u);
  // Each failure again, looking at the entries, which files a block.
  device.record.SetListControlEBRBitName("2");
  device.record.SetListControlEBRColumn("16 to 31");
  for (long nth = 1; nth <= failures; ++nth) {
    {
      const support::FailAllocation failing(nth);
      EXPECT_THROW(device.record.SetListControlEBRBitName("1000"), std::bad_alloc) << "allocation: " << nth;
    }
    EXPECT_EQ(Show(Scratch(device.record)), before) << "allocation: " << nth;
  }
}

// Columns

TEST(SetListControlEBRColumn, NumbersTheEntriesRowByRow) {
  const struct {
    const char* count;
    const char* range;
    std::vector<int> columns;
  } cases[] = {
      // Whole rows.
      {"8", "0 to 31", {0, 8, 16, 24, 0, 8, 16, 24}},
      {"6", "0 to 15", {0, 8, 0, 8, 0, 8}},
      {"3", "0 to 7", {0, 0, 0}},
      {"2", "100 to 115", {100, 108}},
      {"2", "-16 to -1", {-16, -8}},
      {"1", "5 to 12", {5}},
      // Rows that are not whole keep their column, here 1000; perRow is cut, the number of rows is not.
      {"4", "0 to 12", {0, 0, 1000, 1000}},
      {"3", "0 to 15", {0, 8, 1000}},
      {"7", "0 to 31", {0, 8, 16, 24, 1000, 1000, 1000}},
      {"2", "0 to 23", {1000, 1000}},
      {"3", "0 to 22", {0, 8, 1000}},
      {"6", "0 to 19", {0, 8, 0, 8, 1000, 1000}},
      {"1", "0 to 8", {1000}},
      {"2", "0 to 8", {0, 1000}},
      // Widths 0 to 7 change nothing.
      {"2", "0 to -1", {1000, 1000}},
      {"2", "8 to 7", {1000, 1000}},
      {"2", "0 to 0", {1000, 1000}},
      {"2", "0 to 1", {1000, 1000}},
      {"2", "0 to 2", {1000, 1000}},
      {"2", "0 to 3", {1000, 1000}},
      {"2", "0 to 4", {1000, 1000}},
      {"2", "0 to 5", {1000, 1000}},
      {"2", "0 to 6", {1000, 1000}},
      {"2", "50 to 57", {50, 50}},
      // Neither do negative widths.
      {"8", "31 to 0", {1000, 1000, 1000, 1000, 1000, 1000, 1000, 1000}},
      {"2", "1 to -1", {1000, 1000}},
      {"2", "2147483647 to -1", {1000, 1000}},
      // Numbers wrap around at 32 bits.
      {"2", "2147483647 to 2147483654", {INT_MAX, INT_MAX}},
      {"2", "2147483644 to 2147483659", {2147483644, -2147483644}},
      {"2", "-2147483648 to 2147483647", {1000, 1000}},
      {"2", "4294967296 to 4294967311", {0, 8}},
      {"2", "-2147483648 to 0", {1000, 1000}},
      // The text of a range.
      {"2", "0to15", {0, 8}},
      {"2", "  0  to  15  ", {0, 8}},
      {"2", "\t0\n\vto\f15\r", {0, 8}},
      {"2", "+0 to +15", {0, 8}},
      {"2", "8x to 23x", {8, 16}},
      {"2", "from 0 to 15", {0, 8}},
      {"2", "to 15", {0, 8}},
      {"2", "to15", {0, 8}},
      {"2", "-16 to", {1000, 1000}},
      {"2", "8 to 23 to 99", {8, 16}},
      {"2", "total 15", {1000, 1000}},
      {"2", "8 TO 23", {1000, 1000}},
      {"2", "", {1000, 1000}},
      {"2", "to", {1000, 1000}},
      {"2", "t", {1000, 1000}},
      {"2", "7", {1000, 1000}},
      {"2", "x15", {0, 8}},
      {"2", " 15", {0, 8}},
      {"2", "115", {0, 8}},
      {"2", "0 - 15", {1000, 1000}},
  };
  for (const auto& row : cases) {
    Device device;
    device.record.SetListControlEBRBitName(row.count);
    device.record.SetListControlEBRColumn("1000 to 1007");
    device.record.SetListControlEBRColumn(row.range);
    EXPECT_EQ(Columns(device.record), row.columns) << "count: " << row.count << ", range: " << Show(row.range);
  }
}

TEST(SetListControlEBRColumn, WritesTheColumnOnly) {
  Device device;
  device.record.SetListControlEBRBitName("2");
  device.record.SetListControlEBRAddress("5 to 6");
  device.record.SetListControlEBRColumn("16 to 31");
  EXPECT_EQ(Show(Scratch(device.record)), "[{'1', false, 5, 16}, {'2', false, 6, 24}]");
}

TEST(SetListControlEBRColumn, NullOrAnEmptyScratchListChangesNothing) {
  Device device;
  device.record.SetListControlEBRColumn("0 to 15");
  EXPECT_EQ(Scratch(device.record).size(), 0u);
  device.record.SetListControlEBRBitName("2");
  device.record.SetListControlEBRColumn("16 to 31");
  device.record.SetListControlEBRColumn(nullptr);
  EXPECT_EQ(Columns(device.record), (std::vector<int>{16, 24}));
}

// Addresses

TEST(SetListControlEBRAddress, StepsWhereTheColumnsStartAgain) {
  const struct {
    const char* count;
    const char* columns;
    const char* range;
    std::vector<int> addresses;
  } cases[] = {
      {"8", "0 to 31", "5 to 6", {5, 5, 5, 5, 6, 6, 6, 6}},
      {"8", "0 to 31", "6 to 5", {6, 6, 6, 6, 5, 5, 5, 5}},
      {"6", "0 to 15", "1 to 3", {1, 1, 2, 2, 3, 3}},
      {"6", "0 to 15", "1 to 2", {1, 1, 2, 2, 3, 3}},                         // the end of the range is no limit
      {"6", "0 to 15", "1 to 100", {1, 1, 2, 2, 3, 3}},                       //
      {"6", "0 to 15", "5 to 5", {5, 5, 6, 6, 7, 7}},                         // up when both ends are equal
      {"6", "0 to 15", "1 to -9", {1, 1, 0, 0, -1, -1}},                      // down, and below 0
      {"4", "0 to 15", "6 to 5", {6, 6, 5, 5}},                               // a width of 0 is a direction like any other
      {"4", "0 to 15", "0 to -1", {0, 0, -1, -1}},                            //
      {"1", "0 to 7", "5 to 9", {5}},                                         //
      {"1", "8 to 15", "9 to 5", {9}},                                        //
      {"3", "0 to 7", "5 to 9", {5, 6, 7}},                                   // rows of one entry each
      {"3", "0 to 23", "5 to 9", {5, 5, 5}},                                  // a single row
      {"4", "24 to 39", "5 to 9", {5, 5, 6, 6}},                              // the first column need not be 0
      {"4", "-16 to -1", "5 to 9", {5, 5, 6, 6}},                             //
      {"3", "16 to 31", "5 to 9", {5, 5, 5}},                                 // 16, 24, 0: not where the columns fall
      {"3", "0 to 15", "5 to 9", {5, 5, 6}},                                  // 0, 8, 0: the last entry was in no row
      {"2", "0 to 7", "2147483647 to 2147483647", {INT_MAX, INT_MIN}},        // wraps around
      {"2", "0 to 7", "-2147483648 to -2147483648", {INT_MIN, INT_MIN + 1}},  //
      {"2", "0 to 7", "2147483648 to 2147483649", {INT_MIN, INT_MIN + 1}},    //
      {"2", "0 to 7", "9", {0, 1}},       // no "to": from 0, the end is read after the first character
      {"2", "0 to 7", "7-9", {0, -1}},    //
      {"2", "0 to 7", "", {0, 1}},        //
      {"2", "0 to 7", "to 3", {0, 1}},    //
      {"2", "0 to 7", "3 to", {3, 2}},    //
      {"2", "0 to 7", "3 to x", {3, 2}},  //
      {"2", "0 to 7", "3to4", {3, 4}},    //
  };
  for (const auto& row : cases) {
    Device device;
    device.record.SetListControlEBRBitName(row.count);
    device.record.SetListControlEBRColumn(row.columns);
    const auto columns = Columns(device.record);
    device.record.SetListControlEBRAddress(row.range);
    EXPECT_EQ(Addresses(device.record), row.addresses) << "columns: " << Show(columns) << ", range: " << row.range;
    EXPECT_EQ(Columns(device.record), columns) << "range: " << row.range;
  }
}

TEST(SetListControlEBRAddress, ReadsTheColumnsThatAreThere) {
  Device device;
  device.record.SetListControlEBRBitName("3");
  device.record.SetListControlEBRAddress("5 to 9");  // before the columns: they are all 0
  EXPECT_EQ(Addresses(device.record), (std::vector<int>{5, 6, 7}));
  device.record.SetListControlEBRColumn("0 to 23");
  device.record.SetListControlEBRAddress("5 to 9");
  EXPECT_EQ(Show(Scratch(device.record)), "[{'1', false, 5, 0}, {'2', false, 5, 8}, {'3', false, 5, 16}]");
}

TEST(SetListControlEBRAddress, NullOrAnEmptyScratchListChangesNothing) {
  Device device;
  device.record.SetListControlEBRAddress("5 to 6");
  EXPECT_EQ(Scratch(device.record).size(), 0u);
  device.record.SetListControlEBRBitName("2");
  device.record.SetListControlEBRAddress("5 to 6");
  device.record.SetListControlEBRAddress(nullptr);
  EXPECT_EQ(Addresses(device.record), (std::vector<int>{5, 6}));
}

// Against the literal rules

std::string ShowEntries(const std::vector<reference::EBREntry>& entries) {
  Entries same;
  for (const auto& entry : entries) {
    CControlEBR copy;
    copy.BitName = entry.BitName;
    copy.Value = entry.Value;
    copy.Address = entry.Address;
    copy.Column = entry.Column;
    same.push_back(copy);
  }
  return Show(same);
}

/// A range, most often one that a curator would write, else any text.
std::string RandomRange(support::RandomTexts& random) {
  if (random.Below(4) == 0) return random.Next();
  const auto number = [&] { return std::to_string(static_cast<int>(random.Below(90)) - 20); };
  const std::string first = number();
  return first + " to " + number();
}

TEST(EBRSetters, AgreeWithTheLiteralRulesOnRandomTexts) {
  support::RandomTexts random(2'407);
  Device device;
  for (int round = 0; round < 20'000; ++round) {
    const std::string count = std::to_string(random.Below(14));
    const std::string texts[] = {RandomRange(random), RandomRange(random), RandomRange(random)};
    auto expected = reference::FreshEntries(count);
    reference::NumberColumns(expected, texts[0]);
    reference::NumberColumns(expected, texts[1]);
    reference::NumberAddresses(expected, texts[2]);
    DeviceInfo record(device.family);
    record.SetListControlEBRBitName(count.c_str());
    record.SetListControlEBRColumn(texts[0].c_str());
    record.SetListControlEBRColumn(texts[1].c_str());
    record.SetListControlEBRAddress(texts[2].c_str());
    EXPECT_EQ(Show(Scratch(record)), ShowEntries(expected))
        << "count: " << count << ", columns: " << texts[0] << ", then: " << texts[1] << ", addresses: " << texts[2];
  }
}

TEST(EBRSetters, AgreeWithTheLiteralRulesOnEveryWidth) {
  Device device;
  for (int entries = 0; entries <= 12; ++entries) {
    for (int width = -10; width <= 110; ++width) {
      const std::string range = "3 to " + std::to_string(3 + width - 1);
      auto expected = reference::FreshEntries(std::to_string(entries));
      reference::NumberColumns(expected, range);
      reference::NumberAddresses(expected, range);
      DeviceInfo record(device.family);
      record.SetListControlEBRBitName(std::to_string(entries).c_str());
      record.SetListControlEBRColumn(range.c_str());
      record.SetListControlEBRAddress(range.c_str());
      EXPECT_EQ(Show(Scratch(record)), ShowEntries(expected)) << "entries: " << entries << ", range: " << range;
    }
  }
}

// Blocks

TEST(SetListControlEBRName, FilesACopyOfTheScratchList) {
  Device device;
  device.record.SetListControlEBRBitName("2");
  device.record.SetListControlEBRColumn("0 to 15");
  device.record.SetListControlEBRAddress("5 to 6");
  device.record.SetListControlEBRName("EBR_0");
  device.record.SetListControlEBRBitName("1");
  device.record.SetListControlEBRName("EBR_1");
  EXPECT_EQ(Show(device.record.GetlistControlEBR()),
            "[{'EBR_0', [{'1', false, 5, 0}, {'2', false, 5, 8}]}, {'EBR_1', [{'1', false, 0, 0}]}]");
}

TEST(SetListControlEBRName, KeepsTheScratchListForAFurtherBlock) {
  Device device;
  device.record.SetListControlEBRBitName("1");
  device.record.SetListControlEBRName("same");
  device.record.SetListControlEBRName("same");  // names may repeat
  EXPECT_EQ(Show(device.record.GetlistControlEBR()), "[{'same', [{'1', false, 0, 0}]}, {'same', [{'1', false, 0, 0}]}]");
}

TEST(SetListControlEBRName, ChangesToTheScratchListDoNotReachAFiledBlock) {
  Device device;
  device.record.SetListControlEBRBitName("1");
  device.record.SetListControlEBRName("before");
  device.record.SetListControlEBRColumn("16 to 23");
  device.record.SetListControlEBRName("after");
  EXPECT_EQ(Show(device.record.GetlistControlEBR()), "[{'before', [{'1', false, 0, 0}]}, {'after', [{'1', false, 0, 16}]}]");
}

TEST(SetListControlEBRName, TakesTheNameAsItStands) {
  for (const char* const name : {"", " EBR ", "a;b;c", "0 to 7", "\xE9"}) {
    Device device;
    device.record.SetListControlEBRBitName("1");
    device.record.SetListControlEBRName(name);
    ASSERT_EQ(device.record.GetlistControlEBR().size(), 1u) << "name: " << name;
    EXPECT_EQ(device.record.GetlistControlEBR()[0].Name, name);
  }
}

TEST(SetListControlEBRName, NullOrAnEmptyScratchListFilesNothing) {
  Device device;
  device.record.SetListControlEBRName("block");
  device.record.SetListControlEBRBitName("1");
  device.record.SetListControlEBRName(nullptr);
  EXPECT_EQ(Show(device.record.GetlistControlEBR()), "[]");
}

TEST(SetListControlEBRName, ABlockThatCannotBeFiledChangesNothing) {
  Device device;
  device.record.SetListControlEBRBitName("3");
  device.record.SetListControlEBRName("old");
  const std::string before = Show(device.record.GetlistControlEBR());
  const long live = support::LiveAllocations();
  const long failures =
      support::ForEachFailingAllocation([&] { device.record.SetListControlEBRName("a name that needs memory of its own"); },
                                        [&] {
                                          const long left = support::LiveAllocations();
                                          EXPECT_EQ(left, live);
                                          EXPECT_EQ(Show(device.record.GetlistControlEBR()), before);
                                        });
  EXPECT_GE(failures, 3);
  EXPECT_EQ(device.record.GetlistControlEBR().size(), 2u);
}

TEST(EBRSetters, TakeTextsOfTheBlocksAsArguments) {
  Device device;
  CControlEBR entry;
  entry.BitName = "0 to 15";
  CControlEBRList block;
  block.Name = "2";
  block.Entries = {entry};
  device.record.SetlistControlEBR({block});
  const auto& blocks = device.record.GetlistControlEBR();
  device.record.SetListControlEBRBitName(blocks[0].Name.c_str());
  device.record.SetListControlEBRColumn(blocks[0].Entries[0].BitName.c_str());
  device.record.SetListControlEBRName(blocks[0].Entries[0].BitName.c_str());  // the list of blocks moves
  EXPECT_EQ(Show(blocks), "[{'2', [{'0 to 15', false, 0, 0}]}, {'0 to 15', [{'1', false, 0, 0}, {'2', false, 0, 8}]}]");
}

// The whole list

std::vector<CControlEBRList> TwoBlocks() {
  CControlEBR entry;
  entry.BitName = "bit";
  entry.Value = true;
  entry.Address = -1;
  entry.Column = 9;
  CControlEBRList full;
  full.Name = "full";
  full.Entries = {entry, CControlEBR()};
  CControlEBRList bare;
  bare.Name = "bare";
  return {full, bare};
}

constexpr const char* kTwoBlocks = "[{'full', [{'bit', true, -1, 9}, {'', false, 0, 0}]}, {'bare', []}]";

TEST(EBRRecords, AreZerosAndEmptyWhenDefaultConstructed) {
  EXPECT_EQ(Show(CControlEBR()), "{'', false, 0, 0}");
  EXPECT_EQ(Show(CControlEBRList()), "{'', []}");
}

TEST(SetlistControlEBR, ReplacesTheBlocksWithEveryField) {
  Device device;
  device.record.SetListControlEBRBitName("1");
  for (const char* const name : {"a", "b", "c"}) device.record.SetListControlEBRName(name);
  device.record.SetlistControlEBR(TwoBlocks());
  EXPECT_EQ(Show(device.record.GetlistControlEBR()), kTwoBlocks);
}

TEST(SetlistControlEBR, AnEmptyListKeepsTheOldOne) {
  Device device;
  device.record.SetlistControlEBR(TwoBlocks());
  device.record.SetlistControlEBR({});
  EXPECT_EQ(Show(device.record.GetlistControlEBR()), kTwoBlocks);
}

TEST(SetlistControlEBR, TheListsOwnContentChangesNothing) {
  Device device;
  device.record.SetlistControlEBR(TwoBlocks());
  device.record.SetlistControlEBR(device.record.GetlistControlEBR());
  EXPECT_EQ(Show(device.record.GetlistControlEBR()), kTwoBlocks);
}

TEST(SetlistControlEBR, LeavesTheScratchListAlone) {
  Device device;
  device.record.SetListControlEBRBitName("2");
  device.record.SetlistControlEBR(TwoBlocks());
  EXPECT_EQ(Show(Scratch(device.record)), "[{'1', false, 0, 0}, {'2', false, 0, 0}]");
}

TEST(SetlistControlEBR, TheCallersListStaysTheCallers) {
  Device device;
  auto blocks = TwoBlocks();
  device.record.SetlistControlEBR(blocks);
  EXPECT_EQ(Show(blocks), kTwoBlocks);
  blocks[0].Entries[0].BitName = "changed";
  EXPECT_EQ(Show(device.record.GetlistControlEBR()), kTwoBlocks);
}

}  // namespace
