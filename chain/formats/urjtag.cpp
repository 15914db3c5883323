// What UrJTAG's command detect prints.

#include <charconv>
#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// IR length: 14
Taken TakeIrLength(const ScanLine& line, ScanReports& reports) {
  reports.StartReport();
  reports.Current().irLength = LeadingNumber(FirstWord(line.after));
  return kTaken;
}

/// Chain length: 2
Taken TakeChainLength(const ScanLine& line, ScanReports& reports) {
  reports.StartReport();
  reports.Current().deviceCount = LeadingNumber(FirstWord(line.after));
  return kTaken;
}

/// Device Id: 00000110010101001000000010010011 (0x06548093)
/// Device Id: not supported (bit 0 was not a 1)
/// Some versions write 16 hex digits, and a BYPASS bit as an id of one bit.
Taken TakeDeviceId(const ScanLine& line, ScanReports& reports) {
  const std::string_view bits = FirstWord(line.after);
  if (bits == "not" || bits == "0") {
    reports.Add({});
    return kTaken;
  }
  unsigned int id = 0;
  const bool isId = bits.size() == 32 && std::from_chars(bits.data(), bits.data() + 32, id, 2).ptr == bits.data() + 32;
  if (!isId) return Wrong(bits, "expected the 32 bits of an id");
  reports.Add({"", id});
  return kTaken;
}

constexpr LineKind kKinds[] = {
    {"IR length: ", TakeIrLength},
    {"Chain length: ", TakeChainLength},
    {"Device Id: ", TakeDeviceId},
};

}  // namespace

const ScanFormat kUrJtag = {"UrJTAG detect", End::kTdo, true, true, kKinds, std::size(kKinds)};

}  // namespace plddb::chain
