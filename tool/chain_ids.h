#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// Reads an id: 8 hex digits, or 0x and 1 to 8 hex digits. Letter case does not count.
/// On purpose: fewer than 8 digits need the 0x, so that a decimal number is not taken for an id.
std::optional<unsigned int> ParseId(std::string_view text);

/// The part of a line that should be an id: without white space around it, without the comment that '#' starts.
std::string_view IdPart(std::string_view line);

/// "NAME:LINE:COLUMN: error: ".
std::string FaultPlace(const std::string& name, std::size_t line, std::size_t column);

/// Reads each argument as an id. Throws Failure that names all wrong ones.
std::vector<unsigned int> IdsFromArguments(const std::vector<std::string>& arguments);

/// Reads the ids of `text`, one per line. '#' starts a comment; white space around an id and lines without one are skipped.
/// Throws Failure with a message "NAME:LINE:COLUMN: error: ..." (counted from 1, columns in bytes) for each line that holds
/// anything else, and for a text without any id.
std::vector<unsigned int> IdsFromText(std::string_view text, const std::string& name);

}  // namespace tool
