#pragma once

#include <algorithm>
#include <string_view>

namespace plddb::chain {

/// The part of a line that should be an id: without white space around it, without the comment that '#' starts.
std::string_view IdPart(std::string_view line);

struct ScanResult;

/// Reads the ids of `text` as ReadIds does, and also several in a line, as programs and people write lists: separated, quoted,
/// in brackets, numbered, with underscores or with the marks of C, Verilog and assemblers, in 32 bits.
ScanResult ReadIdLists(std::string_view text);

/// Whether `line` holds ids, and nothing else than ReadIdLists passes over.
bool IsIdList(std::string_view line);

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
