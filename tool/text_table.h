#pragma once

#include <string>
#include <vector>

namespace tool {

using Row = std::vector<std::string>;

/// The widest line of a table and of a help text, where its words allow it.
inline constexpr std::size_t kLineWidth = 80;

/// `rows` as aligned columns, one text a row, without a line end: two blanks between columns, none at the end of a line, and
/// `indent` before each line. Columns are as wide as their widest cell in columns of a terminal; colours (Painted) have no
/// width. Where lines would be longer than kLineWidth, the widest columns are wrapped between their words; where their words
/// are too long for that, the last columns get lines of their own, below the others.
std::vector<std::string> WrappedRows(std::vector<Row> rows, const std::string& indent = "");

/// The rows in one text.
std::string WrappedTable(const std::vector<Row>& rows, const std::string& indent = "");

/// `text` in lines of kLineWidth columns at most, each after `indent`, all but the first after two blanks more.
std::string WrappedText(const std::string& text, const std::string& indent = "");

/// `rows` as lines of cells with tabs between them; a cell "-" is left empty.
std::string TabbedTable(const std::vector<Row>& rows);

/// The words of `text` in lines of `width` columns at most; a longer word has its own line.
std::vector<std::string> Wrapped(const std::string& text, std::size_t width);

}  // namespace tool
