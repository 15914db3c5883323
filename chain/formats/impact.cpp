// The log of iMPACT in its batch mode: the ids of those positions that were asked for.

#include <algorithm>
#include <charconv>
#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

std::optional<unsigned int> IdIn(std::string_view quoted) {
  if (quoted.size() == 8 && AreHexDigits(quoted, 8, 8)) return HexNumber(quoted);
  unsigned int id = 0;
  const char* const end = quoted.data() + quoted.size();
  const bool isBinary = quoted.size() == 32 && std::from_chars(quoted.data(), end, id, 2).ptr == end;
  return isBinary ? std::optional(id) : std::nullopt;
}

/// '1': IDCODE is '11110110111001011111000010010011'
/// '1': IDCODE is 'f6e5f093' (in hex).
/// Each step of a batch may read the id of its position anew.
Taken TakeId(const ScanLine& line, ScanReports& reports) {
  const std::string_view quoted = line.after.substr(0, line.after.find('\''));
  const auto id = IdIn(quoted);
  if (!id) return Wrong(quoted, "expected an id: 32 bits or 8 hex digits");
  std::string position = LastWord(line.before);
  position.erase(std::remove_if(position.begin(), position.end(), [](char c) { return c == '\'' || c == ':'; }),
                 position.end());
  const auto isHere = [&](const ScannedTap& tap) { return tap.name == position; };
  const std::vector<ScannedTap>& taps = reports.Current().taps;
  const auto known = std::find_if(taps.begin(), taps.end(), isHere);
  if (known != taps.end() && known->id == id) return kTaken;
  if (known != taps.end()) reports.StartReport();
  reports.Add({position, id});
  return kTaken;
}

constexpr LineKind kKinds[] = {{"IDCODE is '", TakeId}};

}  // namespace

const ScanFormat kImpact = {"iMPACT batch log", "iMPACT", End::kAsPrinted, true, false, false, false, kKinds,
                            std::size(kKinds)};

}  // namespace plddb::chain
