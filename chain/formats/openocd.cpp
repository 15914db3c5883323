// The output of OpenOCD: its log, the table of its command scan_chain, and its suggestions for TAPs that are not configured.

#include <algorithm>
#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_text.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// Open On-Chip Debugger 0.12.0
///    TapName             Enabled  IdCode     Expected   IrLen IrCap IrMask
/// Without it, two runs would look like one long chain.
Taken TakeHead(const ScanLine&, ScanReports& reports) {
  reports.StartReport();
  return kTaken;
}

Taken PassOver(const ScanLine&, ScanReports&) { return kInside; }

// --- The log ----------------------------------------------------------------------------------------------------------------

/// Info : JTAG tap: xc7.tap tap/device found: 0x0362d093 (mfg: 0x049 (Xilinx), part: 0x362d, ver: 0x0)
Taken TakeFoundTap(const ScanLine& line, ScanReports& reports) {
  const auto id = LeadingId(line.after);
  if (!id) return Wrong(FirstWord(line.after), kExpectedFullId);
  reports.Add({LastWord(line.before), id});
  return kTaken;
}

/// Info : JTAG device found: 0x3f0f0f0f (Manufacturer: 0x787, Part: 0xf0f0, Version: 0x3)
/// The first versions, which gave no names.
Taken TakeFoundDevice(const ScanLine& line, ScanReports& reports) {
  const auto id = LeadingId(line.after);
  if (!id) return Wrong(FirstWord(line.after), kExpectedFullId);
  reports.Add({"", id});
  return kTaken;
}

/// TAP auto1.tap does not have IDCODE                                up to 0.10
/// Info : TAP auto1.tap does not have valid IDCODE (idcode=0xb2c08126)
/// The number is not an id, but the TAP's BYPASS bit and the bits after it.
Taken TakeTapWithoutIdcode(const ScanLine& line, ScanReports& reports) {
  reports.Add({LastWord(line.before)});
  return kTaken;
}

/// Info : JTAG tap: am335x.tap enabled
/// A router, for example an ICEPick, adds it to the chain; its id is not read.
Taken TakeEnabledTap(const ScanLine& line, ScanReports& reports) {
  const auto words = Words(line.after);
  const bool isEnabled = words.size() == 2 && words[1].substr(0, 7) == "enabled";
  if (!isEnabled) return kNotMine;
  const std::string note = "the tool enabled " + std::string(words[0]) + " afterwards, without reading its id";
  const bool isNew = std::find(reports.notes.begin(), reports.notes.end(), note) == reports.notes.end();
  if (isNew && reports.notes.size() < 100) reports.notes.push_back(note);
  return kTaken;
}

/// Lines that may come between those of two TAPs: they repeat the id, show the configured one, or are the rest of a wrapped
/// line.
constexpr LineKind kLogKinds[] = {
    {"Open On-Chip Debugger ", TakeHead},
    {"tap/device found: ", TakeFoundTap},
    {"JTAG device found: ", TakeFoundDevice},
    {" does not have valid IDCODE", TakeTapWithoutIdcode},
    {" does not have IDCODE", TakeTapWithoutIdcode},
    {"UNEXPECTED: ", PassOver},
    {" expected 1 of ", PassOver},
    {"JTAG tap: ", TakeEnabledTap},
    {"JTAG Tap/device matched", PassOver},
    {"AUTO ", PassOver},
    {"JTAG tap: ", PassOver},
    {"Debug:", PassOver},
    {"ERROR: ", PassOver},
    {"mfg: 0x", PassOver},
    {"part: 0x", PassOver},
    {"ver: 0x", PassOver},
};

// --- The table --------------------------------------------------------------------------------------------------------------

/// Whether the configuration `expected` allows `id`: 0x00000000 checks nothing, * means any version.
bool IsExpected(std::string_view expected, unsigned int id) {
  if (expected == "0x00000000") return true;
  const bool isAnyVersion = expected.substr(0, 3) == "0x*";
  const std::string_view digits = expected.substr(isAnyVersion ? 3 : 2);
  const unsigned int mask = isAnyVersion ? 0x0FFFFFFF : 0xFFFFFFFF;
  return AreHexDigits(digits, 1, 8) && ((HexNumber(digits) ^ id) & mask) == 0;
}

bool IsPrefixed(std::string_view text) { return text.substr(0, 2) == "0x"; }

/// "6", and "0x06" in the first versions.
unsigned long IrLength(std::string_view text) { return IsPrefixed(text) ? HexNumber(text.substr(2)) : LeadingNumber(text); }

/// OpenOCD's name for a TAP that is not configured; its IR length is a guess.
bool IsAutomatic(std::string_view name) { return name.substr(0, 4) == "auto" && name.find('.') != name.npos; }

///  0 xc7.tap                Y     0x0362d093 0x0362d093     6 0x01  0x03
///  1 | omap3530.dap       |    Y    | 0x0b6d602f | 0x00000000 | 0x04 | 0x01 | 0x0f |      the first versions
/// Disabled TAPs have n, and are not in the chain. A table starts with number 0, whatever lines come between its rows.
Taken TakeTableRow(const ScanLine& line, ScanReports& reports) {
  const auto withoutBars = [](std::string_view text) {
    std::string plain(text);
    std::replace(plain.begin(), plain.end(), '|', ' ');
    return plain;
  };
  const std::string textBefore = withoutBars(line.before);
  const std::string textAfter = withoutBars(line.after);
  const auto before = Words(textBefore);
  const auto after = Words(textAfter);
  if (before.size() < 2 || after.size() < 5 || !IsPrefixed(after[1]) || !IsPrefixed(after[3])) return kNotMine;
  const auto number = WholeNumber(before[before.size() - 2]);
  if (!number || !AreHexDigits(after[3].substr(2), 1, 16)) return kNotMine;
  const auto id = LeadingId(after[0]);
  if (!id) return Wrong(FirstWord(line.after), kExpectedFullId);
  const bool isGuess = IsAutomatic(before.back()) || !IsExpected(after[1], *id);
  if (*number == 0) reports.StartReport();
  reports.Add({std::string(before.back()), IdUnlessZero(*id), IrLength(after[2]), isGuess});
  return kTaken;
}

///                                            0x03727093
/// A second id that the configuration allows.
Taken TakeExpectedId(const ScanLine& line, ScanReports& reports) {
  const std::string_view content = WithoutMargin(line.after);
  const std::string_view word = FirstWord(content);
  const bool isAlone = IsPrefixed(word) && Words(content).size() == 1;
  if (!isAlone || reports.Current().taps.empty()) return kNotMine;
  ScannedTap& tap = reports.Current().taps.back();
  if (tap.id && !IsAutomatic(tap.name) && IsExpected(word, *tap.id)) tap.irLengthIsGuess = false;
  return kTaken;
}

///  2 old.dap                n     0x00000000 0x00000000     4 0x01  0x03
Taken PassOverDisabled(const ScanLine& line, ScanReports& reports) {
  if (!IsPrefixed(FirstWord(line.after)) && FirstWord(line.after) != "|") return kNotMine;
  const auto before = Words(line.before);
  if (before.size() >= 2 && before[before.size() - 2] == "0") reports.StartReport();
  return kInside;
}

constexpr LineKind kTableKinds[] = {
    {"TapName ", TakeHead}, {" Y ", TakeTableRow}, {" n ", PassOverDisabled}, {"----", PassOver}, {"", TakeExpectedId},
};

// --- Suggestions ------------------------------------------------------------------------------------------------------------

std::string_view WordAfter(std::string_view text, std::string_view option) {
  const std::string_view word = FirstWord(After(text, option));
  return word.substr(0, word.find('"'));
}

/// Warn : AUTO auto0.tap - use "jtag newtap auto0 tap -irlen 6 -expected-id 0x0362d093"
/// Warn : AUTO auto0.tap - use "... -irlen 6"                                            some versions
/// A TAP without IDCODE has 0x00000000 here.
Taken TakeSuggestion(const ScanLine& line, ScanReports& reports) {
  const auto before = Words(line.before);
  const std::string_view word = WordAfter(line.after, "-expected-id");
  if (word.empty()) return Wrong(line.after, "expected -expected-id and an id");
  const auto id = LeadingId(word);
  if (!id) return Wrong(word, kExpectedFullId);
  const std::string name = before.size() < 2 ? "" : std::string(before.back());
  reports.Add({name, IdUnlessZero(*id), LeadingNumber(WordAfter(line.after, "-irlen")), true});
  return kTaken;
}

constexpr LineKind kSuggestionKinds[] = {{" - use \"jtag newtap ", TakeSuggestion}};

}  // namespace

const ScanFormat kOpenOcdLog = {"OpenOCD log", "OpenOCD", End::kTdo, true, true, true, false, kLogKinds, std::size(kLogKinds)};
const ScanFormat kOpenOcdTable = {"OpenOCD scan_chain table", "OpenOCD", End::kTdo, true, true, false, false, kTableKinds,
                                  std::size(kTableKinds)};
const ScanFormat kOpenOcdSuggestions = {
    "OpenOCD suggestions", "OpenOCD", End::kTdo, true, false, true, false, kSuggestionKinds, std::size(kSuggestionKinds)};

}  // namespace plddb::chain
