#include <algorithm>
#include <iterator>
#include <utility>

#include "chain/Chain.h"
#include "chain/faults.h"
#include "chain/ids.h"
#include "chain/scan_formats.h"

namespace plddb::chain {
namespace {

constexpr const char* kExpected =
    "no chain in this text; expected what OpenOCD (its log or scan_chain), UrJTAG (detect) or openFPGALoader (--detect) "
    "prints, or ids, one per line";

/// How long the terminal's control sequence is with which `text` starts, such as ESC[31m; 0 when there is none.
std::size_t ControlSequenceLength(std::string_view text) {
  if (text.substr(0, 2) != "\x1B[") return 0;
  const auto isInner = [](char c) { return c >= ' ' && c <= '?'; };
  const auto last = std::find_if_not(text.begin() + 2, text.end(), isInner);
  const bool isWhole = last != text.end() && *last >= '@' && *last <= '~';
  return static_cast<std::size_t>(last - text.begin()) + (isWhole ? 1 : 0);
}

/// `text` with blanks for colours and carriage returns, so that places can be counted.
std::string WithoutColours(std::string_view text) {
  std::string plain(text);
  for (std::size_t i = 0; (i = plain.find_first_of("\r\x1B", i)) != plain.npos; ++i) {
    const std::size_t length = plain[i] == '\r' ? 1 : ControlSequenceLength(text.substr(i));
    plain.replace(i, length, length, ' ');
  }
  return plain;
}

using ReportsByFormat = std::vector<std::vector<ScanReport>>;

ReportsByFormat ReadReports(std::string_view text, ScanResult& result) {
  std::vector<ScanReports> reports(std::size(kScanFormats));
  ForEachLine(text, [&](std::string_view line, int number) {
    if (!result.faults.empty()) return;
    const Taken taken = TakeScanLine(line, reports);
    if (taken.fault == nullptr) return;
    const int column = taken.at.data() == nullptr ? 1 : static_cast<int>(taken.at.data() - line.data()) + 1;
    AddFault(result, {number, column, taken.fault});
  });
  ReportsByFormat found;
  for (ScanReports& ofFormat : reports) found.push_back(ofFormat.Take());
  return found;
}

// --- One chain of several reports -------------------------------------------------------------------------------------------

bool ShowTheSame(const ScanReport& a, const ScanReport& b) {
  return std::equal(a.taps.begin(), a.taps.end(), b.taps.begin(), b.taps.end(),
                    [](const ScannedTap& left, const ScannedTap& right) { return left.id == right.id; });
}

/// Takes the IR lengths that other reports give for a TAP of the same name and id.
void FillIrLengths(std::vector<ScannedTap>& taps, const std::vector<ScannedTap>& others) {
  for (ScannedTap& tap : taps) {
    const auto isSame = [&](const ScannedTap& other) { return other.name == tap.name && other.id == tap.id; };
    if (tap.name.empty() || tap.irLength != 0) continue;
    const auto same = std::find_if(others.begin(), others.end(), isSame);
    if (same != others.end()) tap.irLength = same->irLength;
  }
}

std::vector<std::string> NotesOn(const std::vector<ScanReport>& reports, const ScanFormat& format) {
  std::vector<std::string> notes;
  const ScanReport& last = reports.back();
  if (reports.size() > 1) {
    const bool same =
        std::all_of(reports.begin(), reports.end(), [&](const auto& report) { return ShowTheSame(report, last); });
    notes.push_back("the text shows the chain " + std::to_string(reports.size()) + " times in this format; " +
                    (same ? "all agree" : "they differ, and the last was taken"));
  }
  if (last.deviceCount != 0 && last.deviceCount != last.taps.size()) {
    notes.push_back("the tool counts " + std::to_string(last.deviceCount) + " devices, the text shows " +
                    std::to_string(last.taps.size()));
  }
  if (!format.isWhole) notes.emplace_back("the text may not show the whole chain");
  return notes;
}

/// Whether the two print a chain alike, so that it can be compared.
bool AreComparable(const ScanFormat& a, const ScanFormat& b) {
  return a.nearest == b.nearest && a.hasVersions == b.hasVersions && a.isWhole && b.isWhole;
}

Scan ScanOfReports(const ReportsByFormat& found, std::size_t chosen) {
  const ScanFormat& format = *kScanFormats[chosen];
  const ScanReport& last = found[chosen].back();
  Scan scan = {format.name, last.taps, format.nearest, format.hasVersions, last.irLength, NotesOn(found[chosen], format)};
  for (std::size_t i = chosen + 1; i < found.size(); ++i) {
    if (found[i].empty()) continue;
    FillIrLengths(scan.taps, found[i].back().taps);
    if (AreComparable(format, *kScanFormats[i]) && !ShowTheSame(found[i].back(), last)) {
      scan.notes.push_back(std::string("the text also holds another chain: ") + kScanFormats[i]->name);
    }
  }
  return scan;
}

/// Whether a line of `text` is nothing but an id.
bool HoldsBareIds(std::string_view text) {
  bool holds = false;
  ForEachLine(text, [&](std::string_view line, int) { holds = holds || ParseId(IdPart(line)); });
  return holds;
}

/// What tools print when they see no chain, and what that means.
constexpr struct {
  std::string_view marker;
  const char* meaning;
} kDeadChains[] = {
    {"scan chain interrogation failed: all ones", "the tool read ones only: nothing drives TDO, or it is stuck at 1"},
    {"scan chain interrogation failed: all zeroes", "the tool read zeros only: TDO is stuck at 0, or the chain has no power"},
    {"TDO seems to be stuck at 1", "the tool read ones only: nothing drives TDO, or it is stuck at 1"},
    {"TDO seems to be stuck at 0", "the tool read zeros only: TDO is stuck at 0, or the chain has no power"},
};

/// A fault with the place of `at` in the text.
ScanResult FaultAt(std::string_view text, std::size_t at, const char* message) {
  const std::string_view before = text.substr(0, at);
  const auto line = static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1;
  ScanResult result;
  AddFault(result, {line, static_cast<int>(before.size() - (before.rfind('\n') + 1)) + 1, message});
  return result;
}

/// A table may follow all the same, of what the tool was told; and what it read before or after may be good.
void AddDeadChains(std::string_view text, std::vector<std::string>& notes) {
  for (const auto& [marker, meaning] : kDeadChains) {
    if (text.find(marker) != text.npos) notes.push_back(std::string("the text also shows a scan that failed: ") + meaning);
  }
}

ScanResult NoChain(std::string_view text) {
  for (const auto& [marker, meaning] : kDeadChains) {
    if (const std::size_t at = text.find(marker); at != text.npos) return FaultAt(text, at, meaning);
  }
  const std::size_t start = text.find_first_not_of(" \t\n");
  return FaultAt(text, start == text.npos ? 0 : start, kExpected);
}

}  // namespace

ScanResult ReadScan(std::string_view text) {
  const std::string plain = WithoutColours(text);
  ScanResult result;
  const ReportsByFormat found = ReadReports(plain, result);
  if (!result.faults.empty()) return result;
  const auto first = std::find_if(found.begin(), found.end(), [](const auto& reports) { return !reports.empty(); });
  if (first != found.end()) {
    result.scan = ScanOfReports(found, static_cast<std::size_t>(first - found.begin()));
    AddDeadChains(plain, result.scan->notes);
    return result;
  }
  if (!HoldsBareIds(plain)) return NoChain(plain);
  result = ReadIds(plain);
  if (result.scan) result.scan->format = "bare ids";
  return result;
}

std::vector<std::string> ScanFormats() {
  std::vector<std::string> names;
  for (const ScanFormat* const format : kScanFormats) names.emplace_back(format->name);
  return names;
}

}  // namespace plddb::chain
