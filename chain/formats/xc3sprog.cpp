// The output of xc3sprog about the chain. It counts from TDI.

#include <algorithm>
#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// The device's name: what follows "Desc:", up to its revision.
std::string NameIn(std::string_view text) {
  std::string_view name = After(text, "Desc:");
  for (const char* const end : {" Rev:", " IR length:", "\t"}) {
    name = name.substr(0, name.find(end, std::min(name.find_first_not_of(kBlanks), name.size())));
  }
  return Trimmed(name);
}

/// JTAG loc.:   0  IDCODE: 0x01414093  Desc:                        XC3S200 Rev: A  IR length:  6
/// JTAG chainpos: 0 Device IDCODE = 0x01414093  Desc: XC3S200                                        older versions
/// The IR length is that of the tool's own table.
Taken TakeDevice(const ScanLine& line, ScanReports& reports) {
  const auto number = WholeNumber(FirstWord(line.after));
  std::string_view id = After(line.after, "IDCODE");
  id.remove_prefix(std::min(id.find_first_not_of(" \t:="), id.size()));
  if (!number) return kNotMine;
  const auto read = LeadingId(id);
  if (!read) return Wrong(FirstWord(id), kExpectedFullId);
  const unsigned long irLength = LeadingNumber(After(line.after, "IR length:"));
  reports.AddNumbered(*number, {NameIn(line.after), read, irLength, irLength != 0});
  return kTaken;
}

/// Cannot find device having IDCODE=0362d093 Revision A
/// Older versions may show it instead of the device, without the version.
Taken TakeUnknownDevice(const ScanLine&, ScanReports& reports) {
  const char* const note = "the tool does not know a device, which may be missing here";
  if (reports.notes.empty()) reports.notes.emplace_back(note);
  return kTaken;
}

constexpr LineKind kKinds[] = {
    {"JTAG loc.:", TakeDevice}, {"JTAG chainpos:", TakeDevice}, {"Cannot find device having IDCODE", TakeUnknownDevice}};

}  // namespace

const ScanFormat kXc3sprog = {"xc3sprog", "xc3sprog", End::kTdi, true, true, false, false, kKinds, std::size(kKinds)};

}  // namespace plddb::chain
