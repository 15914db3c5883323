#include "text_table.h"

#include <algorithm>
#include <utility>

namespace tool {
namespace {

/// The characters of `cell` that are seen: a colour, from its escape character to its 'm', is not.
std::size_t Width(const std::string& cell) {
  std::size_t width = 0;
  bool isColour = false;
  for (const char c : cell) {
    const bool startsCharacter = (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    isColour = isColour || c == '\033';
    if (startsCharacter && !isColour) ++width;
    if (c == 'm') isColour = false;
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

std::vector<std::string> AlignedLines(const std::vector<Row>& rows) {
  const std::vector<std::size_t> widths = ColumnWidths(rows);
  std::vector<std::string> lines;
  lines.reserve(rows.size());
  for (const Row& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) line += row[i] + std::string(widths[i] - Width(row[i]) + 2, ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    lines.push_back(std::move(line));
  }
  return lines;
}

std::string AlignedTable(const std::vector<Row>& rows, const std::string& indent) {
  std::string table;
  for (const std::string& line : AlignedLines(rows)) table += indent + line + '\n';
  return table;
}

}  // namespace tool
