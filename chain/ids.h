#pragma once

#include <algorithm>
#include <string_view>

namespace plddb::chain {

/// The part of a line that should be an id: without white space around it, without the comment that '#' starts.
std::string_view IdPart(std::string_view line);

/// Calls `visit(line, number)` for each line, numbers from 1.
template <typename Visit>
void ForEachLine(std::string_view text, Visit visit) {
  for (int number = 1; !text.empty(); ++number) {
    const std::string_view line = text.substr(0, text.find('\n'));
    visit(line, number);
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
}

}  // namespace plddb::chain
