// The output of xsdb for "jtag targets", the hardware server's list: a tree of cables, devices and their parts.
// It lists the device nearest TDI first.

#include <algorithm>
#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_text.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

std::size_t Indentation(std::string_view line) { return line.size() - WithoutMargin(line).size(); }

///      2  xczu7 (idcode 14730093 irlen 12 fpga)
/// An entry with an IR of 1 bit is a switch inside a device, not a TAP of the chain. The lengths are those of a table.
Taken TakeTarget(const ScanLine& line, ScanReports& reports) {
  const auto id = LeadingBareId(line.after);
  if (!id) return Wrong(FirstWord(line.after), kExpectedBareId);
  const unsigned long irLength = LeadingNumber(After(line.after, "irlen"));
  if (irLength == 1) return kTaken;
  reports.indentation = Indentation(line.before);
  reports.Add({LastWord(line.before), id, irLength, irLength != 0});
  return kTaken;
}

///   1  Digilent Zed 210248A39829
/// The next cable ends the chain; a line that is indented further is about a part of a device.
Taken PassOverParts(const ScanLine& line, ScanReports& reports) {
  return reports.Current().taps.empty() || Indentation(line.after) <= reports.indentation ? kNotMine : kInside;
}

constexpr LineKind kKinds[] = {{"(idcode ", TakeTarget}, {"(unknown idcode ", TakeTarget}, {"", PassOverParts}};

}  // namespace

const ScanFormat kXsdb = {"xsdb targets", "xsdb", End::kTdi, true, true, true, true, kKinds, std::size(kKinds)};

}  // namespace plddb::chain
