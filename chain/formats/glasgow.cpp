// The log of Glasgow's applet jtag-probe. Its order is not documented.

#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// I: g.applet.interface.jtag_probe: discovered 2 TAPs
Taken TakeCount(const ScanLine& line, ScanReports& reports) {
  if (line.after.find("TAP") == line.after.npos) return kNotMine;
  reports.StartReport();
  reports.Current().deviceCount = LeadingNumber(line.after);
  return kTaken;
}

/// I: g.applet.interface.jtag_probe: TAP #0: IR[8] IDCODE=0x268b601d
/// I: g.applet.interface.jtag_probe: TAP #1: IR[5] BYPASS
/// I: g.applet.interface.jtag_probe: TAP #2: IR[?] IDCODE=0x...
/// The lengths are found by trying.
Taken TakeTap(const ScanLine& line, ScanReports& reports) {
  const auto number = WholeNumber(line.after.substr(0, line.after.find(':')));
  const std::string_view idcode = After(line.after, "IDCODE=");
  const bool isBypass = line.after.find("BYPASS") != line.after.npos;
  if (!number || (idcode.empty() && !isBypass)) return kNotMine;
  const auto id = LeadingId(idcode);
  if (!isBypass && !id) return Wrong(FirstWord(idcode), kExpectedFullId);
  reports.AddNumbered(*number, {"", id, LeadingNumber(After(line.after, "IR["))});
  return kTaken;
}

constexpr LineKind kKinds[] = {{"discovered ", TakeCount}, {"TAP #", TakeTap}};

}  // namespace

const ScanFormat kGlasgow = {"Glasgow jtag-probe", "Glasgow", End::kAsPrinted, true, true, false, false, kKinds,
                             std::size(kKinds)};

}  // namespace plddb::chain
