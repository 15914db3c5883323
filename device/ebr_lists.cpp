// Embedded memory blocks (EBR): built block by block on a scratch list of entries, one entry per control byte.

#include <cstdint>
#include <new>

#include "DeviceInfo.h"
#include "device/column_setters.h"

using namespace plddb::internal;

namespace {

constexpr int kColumnsPerEntry = 8;

/// On purpose: a larger count is a mistake in the text, since its entries would span more than 134 million columns. It throws
/// std::bad_alloc at once. Otherwise a text of ten characters could ask for 120 GB, and an overcommitting system would fill
/// memory for minutes and then end the program.
constexpr int kMostEntries = 1 << 24;

/// a + b with 32 bits, wrapping around.
int Add(int a, int b) { return static_cast<int>(static_cast<unsigned int>(a) + static_cast<unsigned int>(b)); }

int Subtract(int a, int b) { return static_cast<int>(static_cast<unsigned int>(a) - static_cast<unsigned int>(b)); }

std::vector<CControlEBR> NumberedEntries(int count) {
  std::vector<CControlEBR> entries;
  if (count <= 0) return entries;
  if (count > kMostEntries) throw std::bad_alloc();
  entries.resize(static_cast<std::size_t>(count));
  int number = 0;
  for (CControlEBR& entry : entries) entry.BitName = std::to_string(++number);
  return entries;
}

/// The number of rows of `width` columns that the entries fill. A negative width becomes a huge divisor and gives no rows.
int RowCount(std::size_t entries, int width) {
  const auto divisor = static_cast<std::uint64_t>(static_cast<std::int64_t>(width));
  return static_cast<int>(std::uint64_t{entries} * kColumnsPerEntry / divisor);
}

}  // namespace

void DeviceInfo::SetListControlEBRBitName(const char* count) {
  if (count != nullptr) listControlEBREntry = NumberedEntries(ParseNumber(count));
}

void DeviceInfo::SetListControlEBRColumn(const char* range) {
  if (range == nullptr || listControlEBREntry.empty()) return;
  const NumberRange columns = ParseRange(range);
  const int width = Add(Subtract(columns.last, columns.first), 1);
  if (width == 0) return;  // a range that ends right before its start
  const int rows = RowCount(listControlEBREntry.size(), width);
  const int perRow = width / kColumnsPerEntry;
  auto entry = listControlEBREntry.begin();
  for (int row = 0; perRow > 0 && row < rows; ++row) {
    int column = columns.first;
    for (int k = 0; k < perRow; ++k, ++entry, column = Add(column, kColumnsPerEntry)) entry->Column = column;
  }
}

void DeviceInfo::SetListControlEBRAddress(const char* range) {
  if (range == nullptr || listControlEBREntry.empty()) return;
  const NumberRange rows = ParseRange(range);
  const int step = rows.first <= rows.last ? 1 : -1;
  const int firstColumn = listControlEBREntry.front().Column;
  int address = rows.first;
  bool isFirst = true;
  for (CControlEBR& entry : listControlEBREntry) {
    if (entry.Column == firstColumn && !isFirst) address = Add(address, step);
    entry.Address = address;
    isFirst = false;
  }
}

void DeviceInfo::SetListControlEBRName(const char* name) {
  if (name == nullptr || listControlEBREntry.empty()) return;
  CControlEBRList block;
  block.Name = name;
  block.Entries = listControlEBREntry;
  listControlEBR.push_back(std::move(block));
}

void DeviceInfo::SetlistControlEBR(std::vector<CControlEBRList> list) { ReplaceUnlessEmpty(listControlEBR, std::move(list)); }

const std::vector<CControlEBRList>& DeviceInfo::GetlistControlEBR() const { return listControlEBR; }
