#include "chain/ids.h"

#include <charconv>

#include "chain/Chain.h"
#include "chain/faults.h"
#include "foundation/characters.h"

namespace plddb::chain {
namespace {

/// `text` in quotes, shortened if it is long; characters that could disturb a terminal are replaced by '?'.
std::string QuotedId(std::string_view text) {
  constexpr std::size_t longest = 40;
  std::string quoted = "'";
  for (const char c : text.substr(0, longest)) quoted += c >= ' ' && c <= '~' ? c : '?';
  return quoted + (text.size() > longest ? "...'" : "'");
}

}  // namespace

std::string_view IdPart(std::string_view line) { return internal::Trim(line.substr(0, line.find('#'))); }

std::optional<unsigned int> ParseId(std::string_view text) {
  const bool prefixed = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
  if (prefixed) text.remove_prefix(2);
  if (text.empty() || text.size() > 8 || (!prefixed && text.size() < 8)) return std::nullopt;
  unsigned int id = 0;
  const char* const end = text.data() + text.size();
  if (std::from_chars(text.data(), end, id, 16).ptr != end) return std::nullopt;
  return id;
}

std::string NotAnId(std::string_view text) {
  return QuotedId(text) + " is not an id: expected 8 hex digits, or 0x and 1 to 8 hex digits";
}

ScanResult ReadIds(std::string_view text) {
  ScanResult result;
  Scan scan;
  ForEachLine(text, [&](std::string_view line, int number) {
    const std::string_view part = IdPart(line);
    if (part.empty()) return;
    if (const auto id = ParseId(part)) {
      scan.taps.push_back({"", id});
    } else {
      AddFault(result, {number, static_cast<int>(part.data() - line.data()) + 1, NotAnId(part)});
    }
  });
  if (result.faults.empty() && scan.taps.empty()) AddFault(result, {1, 1, "no id; expected one per line"});
  if (result.faults.empty()) result.scan = std::move(scan);
  return result;
}

}  // namespace plddb::chain
