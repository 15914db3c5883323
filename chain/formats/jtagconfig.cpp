// The output of jtagconfig, also with -d: the chain of each cable. Its order is not documented.

#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_text.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// 1) USB-Blaster [1-1.2]
Taken TakeCable(const ScanLine& line, ScanReports& reports) {
  const std::string_view number = WithoutMargin(line.before);
  const bool isCable = !number.empty() && WholeNumber(number) && !FirstWord(line.after).empty();
  if (!isCable) return kNotMine;
  reports.StartReport();
  reports.isOpen = true;
  return kTaken;
}

/// Names as this tool writes them: several devices that share an id, or the processors of a chip.
bool IsItsName(std::string_view name) {
  return name.find("(.|") != name.npos || name.find("/..") != name.npos || name.substr(0, 4) == "SOCV";
}

///   02E660DD   10AX115H1(.|E2|ES)/10AX115H2/..  (IR=10)
///   02B030DD
Taken TakeDevice(const ScanLine& line, ScanReports& reports) {
  auto words = Words(WithoutMargin(line.after));
  if (words.empty()) return kNotMine;
  if (words[0].substr(0, 2) == "0x") words[0].remove_prefix(2);
  const bool isIndented = WithoutMargin(line.after).size() < line.after.size();
  const bool isAlmostId = isIndented && words.size() > 1 && AreHexDigits(words[0], 6, 10) && words[0].size() != 8;
  if (reports.isOpen && isAlmostId) return Wrong(words[0], kExpectedBareId);  // lost, it would shift the others
  if (!AreHexDigits(words[0], 8, 8)) return kNotMine;
  if (!reports.isOpen && (words.size() < 2 || !IsItsName(words[1]))) return kNotMine;
  const std::string name = words.size() < 2 || words[1].front() == '(' ? "" : std::string(words[1]);
  const unsigned long irLength = LeadingNumber(After(line.after, "(IR="));
  reports.Add({name, HexNumber(words[0]), irLength, irLength != 0});
  return kTaken;
}

///   Captured IR after reset = (0155) [14]
Taken TakeIrLength(const ScanLine& line, ScanReports& reports) {
  reports.Current().irLength = BracketedNumber(line.after);
  return kTaken;
}

constexpr LineKind kKinds[] = {{") ", TakeCable}, {"Captured IR after reset = ", TakeIrLength}, {"", TakeDevice}};

}  // namespace

const ScanFormat kJtagconfig = {"jtagconfig", "jtagconfig", End::kAsPrinted,  true, true, false,
                                true,         kKinds,       std::size(kKinds)};

}  // namespace plddb::chain
