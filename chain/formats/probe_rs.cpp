// The log of probe-rs when it scans a chain, as text and as JSON. Its order is not documented.

#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// JTAG DR scan chain detected as 64 bits long
Taken TakeHead(const ScanLine&, ScanReports& reports) {
  reports.StartReport();
  return kTaken;
}

/// JTAG IR scan chain detected as 9 bits long
Taken TakeIrLength(const ScanLine& line, ScanReports& reports) {
  reports.Current().irLength = LeadingNumber(line.after);
  return kTaken;
}

/// Found IDCODE: 0x4BA00477 (ARM Ltd)
Taken TakeId(const ScanLine& line, ScanReports& reports) {
  const auto id = LeadingId(line.after);
  if (!id) return Wrong(FirstWord(line.after), kExpectedFullId);
  reports.Add({"", id});
  return kTaken;
}

/// Found bypass TAP
Taken TakeBypass(const ScanLine&, ScanReports& reports) {
  reports.Add({});
  return kTaken;
}

/// JTAG DR scan complete, found 2 TAPs. [Some(IdCode(0x4BA00477 (ARM Ltd))), None]
/// If the ids had their own lines before, they are not added twice.
Taken TakeList(const ScanLine& line, ScanReports& reports) {
  const unsigned long count = LeadingNumber(line.after);
  if (reports.Current().taps.size() == count) return kTaken;
  reports.StartReport();
  std::string_view list = After(line.after, "[");
  list = list.substr(0, list.find(']'));
  while (!list.empty()) {
    const std::size_t some = list.find("IdCode(");
    const std::size_t none = list.find("None");
    if (some == list.npos && none == list.npos) break;
    list.remove_prefix(some < none ? some + 7 : none + 4);
    const auto id = some < none ? LeadingId(list) : std::nullopt;
    if (some < none && !id) return Wrong(FirstWord(list), kExpectedFullId);
    reports.Add({"", id});
  }
  reports.Current().deviceCount = count;
  return kTaken;
}

constexpr LineKind kKinds[] = {
    {"JTAG DR scan chain detected as ", TakeHead},
    {"JTAG IR scan chain detected as ", TakeIrLength},
    {"JTAG DR scan complete, found ", TakeList},
    {"Found IDCODE: ", TakeId},
    {"Found bypass", TakeBypass},
};

}  // namespace

const ScanFormat kProbeRs = {"probe-rs log", "probe-rs", End::kAsPrinted, true, true, false, false, kKinds, std::size(kKinds)};

}  // namespace plddb::chain
