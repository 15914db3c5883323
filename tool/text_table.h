#pragma once

#include <string>
#include <vector>

namespace tool {

using Row = std::vector<std::string>;

/// The widest line of a table and of a help text, where its words allow it.
inline constexpr std::size_t kLineWidth = 80;

/// `rows` in aligned columns, without their last line ends: each line after `indent`, two blanks between columns, none at the
/// end of a line. Columns are as wide as their widest cell in columns of a terminal; colours (Painted) have no width. Where
/// lines would be longer than kLineWidth, the widest columns are wrapped between their words: a row has several lines then.
std::vector<std::string> AlignedLines(const std::vector<Row>& rows, const std::string& indent = "");

/// The same in one text.
std::string AlignedTable(const std::vector<Row>& rows, const std::string& indent = "");

/// `rows` as lines of cells with tabs between them; a cell "-" is left empty.
std::string TabbedTable(const std::vector<Row>& rows);

/// The words of `text` in lines of `width` columns at most; a longer word has its own line.
std::vector<std::string> Wrapped(const std::string& text, std::size_t width);

}  // namespace tool
