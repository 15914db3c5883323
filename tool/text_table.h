#pragma once

#include <string>
#include <vector>

namespace tool {

using Row = std::vector<std::string>;

/// The widest line of a table and of a help text, where its words allow it.
inline constexpr std::size_t kLineWidth = 80;

/// `rows` as lines of aligned columns, without line ends: two blanks between columns, none at the end of a line. Columns are as
/// wide as their widest cell in columns of a terminal; colours (Painted) have no width.
std::vector<std::string> AlignedLines(const std::vector<Row>& rows);

/// The lines in one text, each after `indent`.
std::string AlignedTable(const std::vector<Row>& rows, const std::string& indent = "");

/// The same, but where lines would be longer than kLineWidth, the widest columns are wrapped between their words.
std::string WrappedTable(const std::vector<Row>& rows, const std::string& indent = "");

/// `rows` as lines of cells with tabs between them; a cell "-" is left empty.
std::string TabbedTable(const std::vector<Row>& rows);

/// The words of `text` in lines of `width` columns at most; a longer word has its own line.
std::vector<std::string> Wrapped(const std::string& text, std::size_t width);

}  // namespace tool
