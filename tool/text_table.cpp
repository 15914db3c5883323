#include "text_table.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numeric>

namespace tool {
namespace {

struct CodeRange {
  std::uint32_t first, last;
};

/// Marks that are set over the character before them, and joiners.
constexpr CodeRange kNarrowest[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x064B, 0x065F}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E},
    {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
};

/// Characters of East Asian scripts and pictures, which take two columns.
constexpr CodeRange kWide[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF}, {0xA000, 0xA4CF},
    {0xA960, 0xA97F},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6},
    {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

/// Whether one of `ranges`, which are in ascending order, has the character.
template <std::size_t kSize>
bool IsIn(const CodeRange (&ranges)[kSize], std::uint32_t code) {
  const auto* const next = std::upper_bound(std::begin(ranges), std::end(ranges), code,
                                            [](std::uint32_t number, const CodeRange& range) { return number < range.first; });
  return next != std::begin(ranges) && code <= std::prev(next)->last;
}

std::size_t WidthOf(std::uint32_t code) { return IsIn(kNarrowest, code) ? 0 : IsIn(kWide, code) ? 2 : 1; }

/// The columns that `cell` takes, which is valid UTF-8 (Printable): a colour, from its escape character to its 'm', takes none.
std::size_t Width(const std::string& cell) {
  std::size_t width = 0;
  bool isColour = false;
  std::uint32_t code = 0;
  for (std::size_t i = 0; i < cell.size(); ++i) {
    const auto byte = static_cast<unsigned char>(cell[i]);
    const bool startsCharacter = (byte & 0xC0) != 0x80;
    code = startsCharacter ? byte & (byte < 0x80   ? 0x7FU
                                     : byte < 0xE0 ? 0x1FU
                                     : byte < 0xF0 ? 0x0FU
                                                   : 0x07U)
                           : code << 6 | (byte & 0x3FU);
    const bool endsCharacter = i + 1 == cell.size() || (static_cast<unsigned char>(cell[i + 1]) & 0xC0) != 0x80;
    isColour = isColour || byte == '\033';
    if (endsCharacter && !isColour) width += WidthOf(code);
    if (byte == 'm') isColour = false;
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

std::size_t LongestWord(const std::vector<Row>& rows, std::size_t column) {
  std::size_t longest = rows.empty() || column >= rows.front().size() ? 1 : Width(rows.front()[column]);  // a head stays whole
  for (const Row& row : rows) {
    if (column >= row.size()) continue;
    for (const std::string& word : Wrapped(row[column], 1)) longest = std::max(longest, Width(word));
  }
  return longest;
}

std::size_t LineWidth(const std::vector<std::size_t>& widths, std::size_t indent) {
  return std::accumulate(widths.begin(), widths.end(), indent + 2 * (widths.empty() ? 0 : widths.size() - 1));
}

/// Makes columns narrower until a line takes kLineWidth, the widest first, each down to its longest word. False when that is
/// too wide.
bool Narrow(std::vector<std::size_t>& widths, const std::vector<Row>& rows, std::size_t indent) {
  if (LineWidth(widths, indent) <= kLineWidth) return true;
  std::vector<std::size_t> least;
  for (std::size_t i = 0; i < widths.size(); ++i) least.push_back(std::min(LongestWord(rows, i), widths[i]));
  if (LineWidth(least, indent) > kLineWidth) return false;
  for (std::size_t width = LineWidth(widths, indent); width > kLineWidth; --width) {
    std::size_t widest = widths.size();
    for (std::size_t i = 0; i < widths.size(); ++i) {
      if (widths[i] > least[i] && (widest == widths.size() || widths[i] >= widths[widest])) widest = i;
    }
    --widths[widest];  // there is one: the least widths fit
  }
  return true;
}

std::string LinesOf(const Row& row, const std::vector<std::size_t>& widths, const std::string& indent) {
  std::vector<std::vector<std::string>> cells;
  std::size_t lines = 1;
  for (std::size_t i = 0; i < row.size(); ++i) {
    cells.push_back(Width(row[i]) <= widths[i] ? std::vector<std::string>{row[i]} : Wrapped(row[i], widths[i]));
    lines = std::max(lines, cells.back().size());
  }
  std::string text;
  for (std::size_t l = 0; l < lines; ++l) {
    std::string line = indent;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const std::string cell = l < cells[i].size() ? cells[i][l] : "";
      line += cell + std::string(std::max(widths[i], Width(cell)) - Width(cell) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += (l == 0 ? "" : "\n") + line;
  }
  return text;
}

}  // namespace

std::vector<std::string> Wrapped(const std::string& text, std::size_t width) {
  std::vector<std::string> lines;
  std::size_t taken = 0;  // columns of the last line
  for (std::size_t start = text.find_first_not_of(' '); start < text.size(); start = text.find_first_not_of(' ', start)) {
    const std::size_t end = std::min(text.find(' ', start), text.size());
    const std::string word = text.substr(start, end - start);
    const std::size_t columns = Width(word);
    const bool isMark = word.front() == '*';  // stays beside what it marks
    if (lines.empty() || (taken + 1 + columns > width && !isMark)) {
      lines.push_back(word);
      taken = columns;
    } else {
      lines.back() += ' ' + word;
      taken += 1 + columns;
    }
    start = end;
  }
  if (lines.empty()) lines.emplace_back();
  return lines;
}

std::vector<std::string> WrappedRows(std::vector<Row> rows, const std::string& indent) {
  std::vector<std::string> below(rows.size());  // the last cells, where they have lines of their own
  std::vector<std::size_t> widths = ColumnWidths(rows);
  while (!Narrow(widths, rows, indent.size()) && widths.size() > 1) {
    widths.pop_back();
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (rows[i].size() <= widths.size()) continue;
      below[i] = '\n' + WrappedText(rows[i].back(), indent + "    ") + below[i];
      below[i].pop_back();
      rows[i].pop_back();
    }
  }
  std::vector<std::string> texts;
  texts.reserve(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) texts.push_back(LinesOf(rows[i], widths, indent) + below[i]);
  return texts;
}

std::string WrappedTable(const std::vector<Row>& rows, const std::string& indent) {
  std::string table;
  for (const std::string& row : WrappedRows(rows, indent)) table += row + '\n';
  return table;
}

std::string WrappedText(const std::string& text, const std::string& indent) {
  std::string lines;
  for (const std::string& line : Wrapped(text, kLineWidth - indent.size() - 2)) {
    const char* const deeper = lines.empty() ? "" : "  ";
    lines.append(indent).append(deeper).append(line) += '\n';
  }
  return lines;
}

std::string TabbedTable(const std::vector<Row>& rows) {
  std::string table;
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) table += (i == 0 ? "" : "\t") + (row[i] == "-" ? "" : row[i]);
    table += '\n';
  }
  return table;
}

}  // namespace tool
