// The output of UrJTAG's command detect.

#include <algorithm>
#include <charconv>
#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// IR length: 14
Taken TakeIrLength(const ScanLine& line, ScanReports& reports) {
  reports.StartReport();
  reports.Current().irLength = LeadingNumber(line.after);
  return kTaken;
}

/// Chain length: 2
Taken TakeChainLength(const ScanLine& line, ScanReports& reports) {
  reports.StartReport();
  reports.Current().deviceCount = LeadingNumber(line.after);
  return kTaken;
}

/// Device Id: 00000110010101001000000010010011 (0x06548093)
/// Device Id: 0000-0110010101001000-00001001001-1                 2005
/// Device Id: not supported (bit 0 was not a 1)
/// Some versions write 16 hex digits, and a BYPASS bit as an id of one bit. Web pages may have blanks between the bits.
Taken TakeDeviceId(const ScanLine& line, ScanReports& reports) {
  if (LastWord(line.before) == "Found") return kNotMine;  // another tool
  const std::string_view word = FirstWord(line.after);
  const auto hex = LeadingId(line.after);
  std::string bits(line.after.substr(0, line.after.find_first_not_of("01- ")));
  bits.erase(std::remove_if(bits.begin(), bits.end(), [](char c) { return c == '-' || c == ' '; }), bits.end());
  if (word == "not" || (bits == "0" && !hex)) {
    reports.Add({});
    return kTaken;
  }
  unsigned int id = hex.value_or(0);
  const bool isId = bits.size() == 32 && std::from_chars(bits.data(), bits.data() + 32, id, 2).ptr == bits.data() + 32;
  if (!isId && !hex) return Wrong(word, "expected the 32 bits of an id");
  const std::string_view repeated = After(line.after, "(");
  if (LeadingId(repeated).value_or(id) != id) return Wrong(repeated, "expected the same id as in bits");
  reports.Add({"", id});
  return kTaken;
}

constexpr LineKind kKinds[] = {
    {"IR length: ", TakeIrLength},
    {"Chain length: ", TakeChainLength},
    {"Device Id:", TakeDeviceId},
    {"Device ID:", TakeDeviceId},
};

}  // namespace

const ScanFormat kUrJtag = {"UrJTAG detect", "UrJTAG", End::kTdo, true, true, false, false, kKinds, std::size(kKinds)};

}  // namespace plddb::chain
