#include "scan_text.h"

#include <algorithm>
#include <utility>

#include "chain_ids.h"
#include "command.h"
#include "scan_formats.h"

namespace tool {
namespace {

constexpr const char* kExpected =
    "no chain in this text; expected what OpenOCD (its log or scan_chain), UrJTAG (detect) or openFPGALoader (--detect) "
    "prints, or ids, one per line";

/// How long the terminal's control sequence is with which `text` starts, such as ESC[31m; 0 when there is none.
std::size_t ControlSequenceLength(std::string_view text) {
  if (text.substr(0, 2) != "\x1B[") return 0;
  const auto is_inner = [](char c) { return c >= ' ' && c <= '?'; };
  const auto last = std::find_if_not(text.begin() + 2, text.end(), is_inner);
  const bool is_whole = last != text.end() && *last >= '@' && *last <= '~';
  return static_cast<std::size_t>(last - text.begin()) + (is_whole ? 1 : 0);
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

/// Calls `visit(line, number)` for each line, numbers from 1.
template <typename Visit>
void ForEachLine(std::string_view text, Visit visit) {
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = text.substr(0, text.find('\n'));
    visit(line, number);
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
}

using ReportsByFormat = std::vector<std::vector<ScanReport>>;

ReportsByFormat ReadReports(std::string_view text, const std::string& name) {
  std::vector<ScanReports> reports(std::size(kScanFormats));
  ForEachLine(text, [&](std::string_view line, std::size_t number) {
    try {
      TakeScanLine(line, reports);
    } catch (const ScanFault& fault) {
      const std::size_t column = fault.at.data() == nullptr ? 1 : static_cast<std::size_t>(fault.at.data() - line.data()) + 1;
      throw Failure(FaultPlace(name, number, column) + fault.text);
    }
  });
  ReportsByFormat found;
  for (ScanReports& of_format : reports) found.push_back(of_format.Take());
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
    const auto is_same = [&](const ScannedTap& other) { return other.name == tap.name && other.id == tap.id; };
    if (tap.name.empty() || tap.ir_length != 0) continue;
    const auto same = std::find_if(others.begin(), others.end(), is_same);
    if (same != others.end()) tap.ir_length = same->ir_length;
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
  if (last.device_count != 0 && last.device_count != last.taps.size()) {
    notes.push_back("the tool counts " + std::to_string(last.device_count) + " devices, the text shows " +
                    std::to_string(last.taps.size()));
  }
  if (!format.is_whole) notes.emplace_back("the text may not show the whole chain");
  return notes;
}

/// Whether the two print a chain alike, so that it can be compared.
bool AreComparable(const ScanFormat& a, const ScanFormat& b) {
  return a.nearest == b.nearest && a.has_versions == b.has_versions && a.is_whole && b.is_whole;
}

Scan ScanOfReports(const ReportsByFormat& found, std::size_t chosen) {
  const ScanFormat& format = kScanFormats[chosen];
  const ScanReport& last = found[chosen].back();
  Scan scan = {format.name, last.taps, format.nearest, format.has_versions, last.ir_length, NotesOn(found[chosen], format)};
  for (std::size_t i = chosen + 1; i < found.size(); ++i) {
    if (found[i].empty()) continue;
    FillIrLengths(scan.taps, found[i].back().taps);
    if (AreComparable(format, kScanFormats[i]) && !ShowTheSame(found[i].back(), last)) {
      scan.notes.push_back(std::string("the text also holds another chain: ") + kScanFormats[i].name);
    }
  }
  return scan;
}

/// Whether a line of `text` is nothing but an id.
bool HoldsBareIds(std::string_view text) {
  bool holds = false;
  ForEachLine(text, [&](std::string_view line, std::size_t) { holds = holds || ParseId(IdPart(line)); });
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

/// "LINE:COLUMN" is that of `at` in the text.
Failure FailureAt(std::string_view text, std::size_t at, const std::string& name, const char* message) {
  const std::string_view before = text.substr(0, at);
  const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
  return Failure(FaultPlace(name, line, before.size() - (before.rfind('\n') + 1) + 1) + message);
}

/// A table may follow all the same, of what the tool was told; and what it read before or after may be good.
void AddDeadChains(std::string_view text, std::vector<std::string>& notes) {
  for (const auto& [marker, meaning] : kDeadChains) {
    if (text.find(marker) != text.npos) notes.push_back(std::string("the text also shows a scan that failed: ") + meaning);
  }
}

Failure NoChain(std::string_view text, const std::string& name) {
  for (const auto& [marker, meaning] : kDeadChains) {
    if (const std::size_t at = text.find(marker); at != text.npos) return FailureAt(text, at, name, meaning);
  }
  const std::size_t start = text.find_first_not_of(" \t\n");
  return FailureAt(text, start == text.npos ? 0 : start, name, kExpected);
}

}  // namespace

Scan ScanOfIds(const std::vector<unsigned int>& ids) {
  Scan scan;
  for (const unsigned int id : ids) scan.taps.push_back({"", id});
  return scan;
}

Scan ReadScan(std::string_view text, const std::string& name) {
  const std::string plain = WithoutColours(text);
  const ReportsByFormat found = ReadReports(plain, name);
  const auto has_reports = [](const auto& reports) { return !reports.empty(); };
  const auto first = std::find_if(found.begin(), found.end(), has_reports);
  if (first != found.end()) {
    Scan scan = ScanOfReports(found, static_cast<std::size_t>(first - found.begin()));
    AddDeadChains(plain, scan.notes);
    return scan;
  }
  if (!HoldsBareIds(plain)) throw NoChain(plain, name);
  Scan scan = ScanOfIds(IdsFromText(plain, name));
  scan.format = "bare ids";
  return scan;
}

}  // namespace tool
