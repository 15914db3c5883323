#include "text_table.h"

#include <algorithm>

namespace tool {
namespace {

std::size_t Width(const std::string& cell) {
  const auto starts_character = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return static_cast<std::size_t>(std::count_if(cell.begin(), cell.end(), starts_character));
}

std::vector<std::size_t> ColumnWidths(const std::vector<Row>& rows) {
  std::vector<std::size_t> widths;
  for (const Row& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], Width(row[i]));
  }
  return widths;
}

}  // namespace

std::string AlignedTable(const std::vector<Row>& rows, const std::string& indent) {
  const std::vector<std::size_t> widths = ColumnWidths(rows);
  std::string table;
  for (const Row& row : rows) {
    std::string line = indent;
    for (std::size_t i = 0; i < row.size(); ++i) line += row[i] + std::string(widths[i] - Width(row[i]) + 2, ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    table += line + '\n';
  }
  return table;
}

}  // namespace tool
