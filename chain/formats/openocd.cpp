// What OpenOCD prints: its log, what it suggests for TAPs that nobody configured, and the table of its command scan_chain.

#include <algorithm>
#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// Open On-Chip Debugger 0.12.0
///    TapName             Enabled  IdCode     Expected   IrLen IrCap IrMask
/// Without it, two runs whose TAPs have other names would look like one long chain.
Taken TakeHead(const ScanLine&, ScanReports& reports) {
  reports.StartReport();
  return kTaken;
}

/// Info : JTAG tap: xc7.tap tap/device found: 0x0362d093 (mfg: 0x049 (Xilinx), part: 0x362d, ver: 0x0)
/// The lines "UNEXPECTED" and "expected 1 of 2" repeat the id, or show the configured one.
Taken TakeFoundTap(const ScanLine& line, ScanReports& reports) {
  const std::string_view word = FirstWord(line.after);
  const auto id = FullId(word);
  if (!id) return Wrong(word, kExpectedFullId);
  reports.Add({LastWord(line.before), id});
  return kTaken;
}

/// Info : TAP auto1.tap does not have valid IDCODE (idcode=0xb2c08126)
/// The number is the TAP's BYPASS bit and what follows it, no id.
Taken TakeTapWithoutIdcode(const ScanLine& line, ScanReports& reports) {
  reports.Add({LastWord(line.before)});
  return kTaken;
}

std::string_view WordAfter(const std::vector<std::string_view>& words, std::string_view option) {
  const auto found = std::find(words.begin(), words.end(), option);
  if (found == words.end() || found + 1 == words.end()) return {};
  return (found + 1)->substr(0, (found + 1)->find('"'));
}

/// Warn : AUTO auto0.tap - use "jtag newtap auto0 tap -irlen 6 -expected-id 0x0362d093"
/// A TAP without IDCODE has 0x00000000 here.
Taken TakeSuggestion(const ScanLine& line, ScanReports& reports) {
  const auto words = Words(line.after);
  const auto before = Words(line.before);
  const std::string_view word = WordAfter(words, "-expected-id");
  if (word.empty()) return Wrong(line.after, "expected -expected-id and an id");
  const auto id = FullId(word);
  if (!id) return Wrong(word, kExpectedFullId);
  const std::string name = before.size() < 2 ? "" : std::string(before.back());
  reports.Add({name, IdUnlessZero(*id), LeadingNumber(WordAfter(words, "-irlen"))});
  return kTaken;
}

///  0 xc7.tap                Y     0x0362d093 0x0362d093     6 0x01  0x03
/// Disabled TAPs have n, and are not in the chain. A second expected id has its own line.
Taken TakeTableRow(const ScanLine& line, ScanReports& reports) {
  const auto before = Words(line.before);
  const auto after = Words(line.after);
  const bool isRow = before.size() >= 2 && after.size() >= 5 && after[1].substr(0, 2) == "0x" && IsHex(after[3], 1, 16);
  if (!isRow) return kNotMine;
  const auto id = FullId(after[0]);
  if (!id) return Wrong(after[0], kExpectedFullId);
  reports.Add({std::string(before.back()), IdUnlessZero(*id), LeadingNumber(after[2])});
  return kTaken;
}

constexpr LineKind kLogKinds[] = {
    {"Open On-Chip Debugger ", TakeHead},
    {" tap/device found: ", TakeFoundTap},
    {" does not have valid IDCODE", TakeTapWithoutIdcode},
};
constexpr LineKind kSuggestionKinds[] = {{" - use \"jtag newtap ", TakeSuggestion}};
constexpr LineKind kTableKinds[] = {{"TapName ", TakeHead}, {" Y ", TakeTableRow}};

}  // namespace

const ScanFormat kOpenOcdLog = {"OpenOCD log", End::kTdo, true, true, kLogKinds, std::size(kLogKinds)};
const ScanFormat kOpenOcdSuggestions = {"OpenOCD suggestions",      End::kTdo, true, false, kSuggestionKinds,
                                        std::size(kSuggestionKinds)};
const ScanFormat kOpenOcdTable = {"OpenOCD scan_chain table", End::kTdo, true, true, kTableKinds, std::size(kTableKinds)};

}  // namespace plddb::chain
