// The tables of docs/text-formats.md agree with the library.
#include <DeviceListOwner.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

/// The texts in backquotes of a table's row; a text that is nothing but "``" is empty.
std::vector<Texts> Cells(const std::string& row) {
  std::vector<Texts> cells(1);
  for (std::size_t i = 1; i < row.size(); ++i) {
    if (row[i] == '|') cells.emplace_back();
    if (row[i] != '`') continue;
    const std::size_t end = row.find('`', i + 1);
    cells.back().push_back(row.substr(i + 1, end - i - 1));
    i = end;
  }
  cells.pop_back();  // what follows the last bar
  return cells;
}

/// The rows of the first table below the heading.
std::vector<std::string> Rows(const std::string& heading) {
  std::ifstream page(PLDDB_SOURCE_DIR "/docs/text-formats.md");
  std::vector<std::string> rows;
  std::string line;
  while (std::getline(page, line) && line != heading) {
  }
  while (std::getline(page, line) && (rows.empty() || !line.empty())) {
    if (line.rfind("| `", 0) == 0) rows.push_back(line);
  }
  return rows;
}

class TextFormatsPage : public testing::Test {
 protected:
  DeviceInfo& NewDevice() { return *database_->NewFamily()->NewDevice(); }

 private:
  DeviceListOwner database_ = MakeDeviceList();
};

Texts AsTexts(const std::vector<int>& numbers) {
  Texts texts;
  for (const int number : numbers) texts.push_back(std::to_string(number));
  return texts;
}

Texts SemicolonItems(DeviceInfo& device, const char* text) {
  device.SetlistAddressRange(text);
  return device.GetlistAddressRange();
}

Texts SemicolonNumbers(DeviceInfo& device, const char* text) {
  device.SetListPersistent_fuseAddress(text);
  std::vector<int> numbers;
  for (const CPersistent_fuse& fuse : device.GetlistPersistent_fuse()) numbers.push_back(fuse.Address);
  return AsTexts(numbers);
}

Texts QuotedItems(DeviceInfo& device, const char* text) {
  device.SetSysIOList(text);
  Texts items;
  for (int i = 0; i < device.GetSysIOCount(); ++i) items.emplace_back(device.GetSysIO(i));
  return items;
}

Texts MultibootNumbers(DeviceInfo& device, const char* text) {
  device.SetMultibootCfgAddr(text);
  return AsTexts(device.GetMultibootCfgAddr());
}

TEST_F(TextFormatsPage, EachTextGivesTheItemsInItsRow) {
  const struct {
    const char* heading;
    Texts (*items)(DeviceInfo& device, const char* text);
  } tables[] = {
      {"## Semicolon item list", SemicolonItems},
      {"### Numbers", SemicolonNumbers},
      {"## Quoted list", QuotedItems},
      {"## Multiboot numbers", MultibootNumbers},
  };
  for (const auto& table : tables) {
    const auto rows = Rows(table.heading);
    EXPECT_GE(rows.size(), 3U) << table.heading;
    for (const std::string& row : rows) {
      const auto cells = Cells(row);
      ASSERT_EQ(cells.size(), 2U) << row;
      ASSERT_EQ(cells[0].size(), 1U) << row;
      EXPECT_EQ(table.items(NewDevice(), cells[0][0].c_str()), cells[1]) << row;
    }
  }
}

TEST_F(TextFormatsPage, EachMemoryBlockHasTheEntriesInItsRow) {
  const auto rows = Rows("## Embedded memory blocks");
  EXPECT_GE(rows.size(), 3U);
  for (const std::string& row : rows) {
    const auto cells = Cells(row);
    ASSERT_EQ(cells.size(), 5U) << row;
    DeviceInfo& device = NewDevice();
    device.SetListControlEBRBitName(cells[0].at(0).c_str());
    device.SetListControlEBRColumn(cells[1].at(0).c_str());
    device.SetListControlEBRAddress(cells[2].at(0).c_str());
    device.SetListControlEBRName("block");
    std::vector<int> columns;
    std::vector<int> addresses;
    for (const CControlEBR& entry : device.GetlistControlEBR().at(0).Entries) {
      columns.push_back(entry.Column);
      addresses.push_back(entry.Address);
    }
    EXPECT_EQ(AsTexts(columns), cells[3]) << row;
    EXPECT_EQ(AsTexts(addresses), cells[4]) << row;
  }
}

}  // namespace
