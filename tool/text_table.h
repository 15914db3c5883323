#pragma once

#include <string>
#include <vector>

namespace tool {

using Row = std::vector<std::string>;

/// `rows` as lines of aligned columns, without line ends: two blanks between columns, none at the end of a line.
/// Columns are as wide as their widest cell in UTF-8 characters; colours (Painted) have no width.
std::vector<std::string> AlignedLines(const std::vector<Row>& rows);

/// The lines in one text, each after `indent`.
std::string AlignedTable(const std::vector<Row>& rows, const std::string& indent = "");

}  // namespace tool
