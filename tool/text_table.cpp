#include "text_table.h"

#include <algorithm>

namespace tool {
namespace {

/// The characters of `cell` that are seen: a colour, from its escape character to its 'm', is not.
std::size_t Width(const std::string& cell) {
  std::size_t width = 0;
  bool is_colour = false;
  for (const char c : cell) {
    const bool starts_character = (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    is_colour = is_colour || c == '\033';
    if (starts_character && !is_colour) ++width;
    if (c == 'm') is_colour = false;
  }
  return width;
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
