#include <algorithm>
#include <iterator>
#include <utility>

#include "chain/Chain.h"
#include "chain/faults.h"
#include "chain/ids.h"
#include "chain/refusals.h"
#include "chain/scan_formats.h"
#include "chain/scan_text.h"

namespace plddb::chain {
namespace {

/// The reports of a text in one format.
struct Found {
  const ScanFormat* format;
  std::vector<ScanReport> reports = {};
  std::vector<std::string> notes = {};
  std::optional<Fault> fault = {};  ///< The first.
  bool IsNothing() const { return reports.empty() && !fault; }
  const ScanReport& Last() const { return reports.back(); }
};

std::vector<Found> ReadReports(const ScanText& text) {
  std::vector<ScanReports> reports(std::size(kScanFormats));
  std::vector<Found> found;
  for (const ScanFormat* const format : kScanFormats) found.push_back({format});
  ForEachLine(text.Text(), [&](std::string_view line, int) {
    std::size_t format = 0;
    const Taken taken = TakeScanLine(line, reports, format);
    if (taken.fault == nullptr || found[format].fault) return;
    const char* const at = taken.at.data() == nullptr ? line.data() : taken.at.data();
    const ScanText::Place place = text.PlaceOf(static_cast<std::size_t>(at - text.Text().data()));
    found[format].fault = Fault{place.line, place.column, taken.fault};
  });
  for (std::size_t i = 0; i < found.size(); ++i) {
    found[i].reports = reports[i].Take();
    found[i].notes = reports[i].notes;
  }
  return found;
}

// --- One chain of several reports -------------------------------------------------------------------------------------------

constexpr unsigned int kAllButVersion = 0x0FFFFFFF;

bool HaveEqualIds(const ScannedTap& a, const ScannedTap& b) { return a.id == b.id; }

bool HaveEqualParts(const ScannedTap& a, const ScannedTap& b) {
  return a.id.has_value() == b.id.has_value() && ((a.id.value_or(0) ^ b.id.value_or(0)) & kAllButVersion) == 0;
}

bool ShowTheSame(const ScanReport& a, const ScanReport& b) {
  return std::equal(a.taps.begin(), a.taps.end(), b.taps.begin(), b.taps.end(), HaveEqualIds);
}

/// Whether the TAPs of `part` come one after the other in `whole`.
bool IsPartOf(const ScanReport& part, const ScanReport& whole) {
  const auto isSame = [](const ScannedTap& a, const ScannedTap& b) { return a.id == b.id && a.name == b.name; };
  return part.taps.size() < whole.taps.size() &&
         std::search(whole.taps.begin(), whole.taps.end(), part.taps.begin(), part.taps.end(), isSame) != whole.taps.end();
}

/// A length that is no guess completes one that is missing or guessed, a guess one that is missing.
void Complete(ScannedTap& tap, const ScannedTap& other) {
  if (tap.name.empty()) tap.name = other.name;
  const bool isBetter = tap.irLength == 0 || (tap.irLengthIsGuess && !other.irLengthIsGuess);
  if (other.irLength == 0 || !isBetter) return;
  tap.irLength = other.irLength;
  tap.irLengthIsGuess = other.irLengthIsGuess;
}

/// Adds the facts from another report of the same chain, or of TAPs that have a name and an id in both.
void CompleteAll(std::vector<ScannedTap>& taps, const std::vector<ScannedTap>& others) {
  if (std::equal(taps.begin(), taps.end(), others.begin(), others.end(), HaveEqualIds)) {
    for (std::size_t i = 0; i < taps.size(); ++i) Complete(taps[i], others[i]);
    return;
  }
  for (ScannedTap& tap : taps) {
    const auto isSame = [&](const ScannedTap& other) { return other.name == tap.name && other.id == tap.id; };
    const auto same = std::find_if(others.begin(), others.end(), isSame);
    if (!tap.name.empty() && same != others.end()) Complete(tap, *same);
  }
}

/// The ids that the tool read, in the order of reading, and its list of the same devices, which leaves versions out: the list
/// shows the names and from which end was read.
void CompleteRawIds(Scan& scan, std::vector<ScannedTap> list) {
  const auto areEqual = [&] {
    return std::equal(list.begin(), list.end(), scan.taps.begin(), scan.taps.end(), HaveEqualParts);
  };
  scan.nearest = areEqual() ? End::kTdi : End::kTdo;
  if (scan.nearest == End::kTdo) std::reverse(list.begin(), list.end());
  if (!areEqual()) {
    scan.nearest = End::kAsPrinted;
    return;
  }
  for (std::size_t i = 0; i < list.size(); ++i) Complete(scan.taps[i], list[i]);
}

/// Lengths that add up to the one that the tool measured are no guesses.
void TrustMeasuredSum(Scan& scan) {
  unsigned long sum = 0;
  for (const ScannedTap& tap : scan.taps) {
    if (tap.irLength == 0 || tap.irLength > 0xFFFF) return;
    sum += tap.irLength;
  }
  if (scan.irLength == 0 || sum != scan.irLength) return;
  for (ScannedTap& tap : scan.taps) tap.irLengthIsGuess = false;
}

// --- Notes ------------------------------------------------------------------------------------------------------------------

std::string NoteOnSeveral(const Found& found) {
  const std::string count = std::to_string(found.reports.size());
  if (found.format->isPerCable) return "the text shows the chains of " + count + " cables; that of the last was taken";
  const auto isSame = [&](const ScanReport& report) { return ShowTheSame(report, found.Last()); };
  const bool allAgree = std::all_of(found.reports.begin(), found.reports.end(), isSame);
  return "the text shows the chain " + count + " times in this format; " +
         (allAgree ? "all agree" : "they differ, and the last was taken");
}

std::vector<std::string> NotesOn(const Found& found) {
  std::vector<std::string> notes;
  const ScanReport& last = found.Last();
  if (found.reports.size() > 1) notes.push_back(NoteOnSeveral(found));
  if (last.deviceCount != 0 && last.deviceCount != last.taps.size()) {
    notes.push_back("the tool counts " + std::to_string(last.deviceCount) + " devices, the text shows " +
                    std::to_string(last.taps.size()));
  }
  if (!found.format->isWhole || last.isCut) notes.emplace_back("the text may not show the whole chain");
  notes.insert(notes.end(), found.notes.begin(), found.notes.end());
  return notes;
}

// --- The scan ---------------------------------------------------------------------------------------------------------------

/// Whether both formats print a chain in a comparable way.
bool AreComparable(const ScanFormat& a, const ScanFormat& b) {
  return a.nearest == b.nearest && a.hasVersions == b.hasVersions && a.isWhole && b.isWhole;
}

/// Compares a scan with the reports of the text in another format.
void Compare(Scan& scan, const Found& chosen, const Found& other) {
  if (other.reports.empty()) return;
  if (chosen.format == &kOpenFpgaLoaderRaw && other.format == &kOpenFpgaLoaderDetect) {
    return CompleteRawIds(scan, other.Last().taps);
  }
  CompleteAll(scan.taps, other.Last().taps);
  if (other.format == &kOpenFpgaLoaderError) scan.notes.emplace_back("the tool gave up at a device that it does not know");
  if (AreComparable(*chosen.format, *other.format) && !ShowTheSame(other.Last(), chosen.Last())) {
    scan.notes.push_back(std::string("the text also holds another chain: ") + other.format->name);
  }
}

/// A log without its beginning shows less than the table that follows.
const Found& WithMoreOf(const Found& chosen, const std::vector<Found>& found) {
  for (const Found& other : found) {
    const bool isSameTool = other.format->tool == std::string_view(chosen.format->tool);
    if (other.reports.empty() || !isSameTool || !AreComparable(*chosen.format, *other.format)) continue;
    if (IsPartOf(chosen.Last(), other.Last())) return other;
  }
  return chosen;
}

Scan ScanOf(const Found& first, const std::vector<Found>& found, std::string_view text) {
  const Found& chosen = WithMoreOf(first, found);
  const ScanFormat& format = *chosen.format;
  const ScanReport& last = chosen.Last();
  Scan scan = {format.name, format.tool, last.taps, format.nearest, format.hasVersions, last.irLength, NotesOn(chosen)};
  for (const Found& other : found) {
    if (&other == &first && &first != &chosen) {
      scan.notes.push_back(std::string("a part of the chain is missing in another format: ") + other.format->name);
    } else if (&other != &chosen) {
      Compare(scan, chosen, other);
    }
  }
  if (text.find("IR capture error") != text.npos) {
    for (ScannedTap& tap : scan.taps) tap.irLengthIsGuess = true;
  }
  TrustMeasuredSum(scan);
  const std::vector<std::string> failed = FailedScans(text);
  scan.notes.insert(scan.notes.end(), failed.begin(), failed.end());
  return scan;
}

/// Whether a line of `text` consists of ids only.
bool HoldsBareIds(std::string_view text) {
  bool holds = false;
  ForEachLine(text, [&](std::string_view line, int) { holds = holds || IsIdList(line); });
  return holds;
}

ScanResult Refused(const ScanText& text) {
  const Refusal refusal = WhyNoChain(text.Text());
  const ScanText::Place place = text.PlaceOf(refusal.at);
  ScanResult result;
  AddFault(result, {place.line, place.column, refusal.text});
  return result;
}

}  // namespace

ScanResult ReadScan(std::string_view raw) {
  const ScanText text(raw);
  const std::vector<Found> found = ReadReports(text);
  const auto first = std::find_if(found.begin(), found.end(), [](const Found& one) { return !one.IsNothing(); });
  ScanResult result;
  if (first == found.end()) {
    if (!HoldsBareIds(text.Text())) return Refused(text);
    result = ReadIdLists(text.Text());
    if (result.scan) result.scan->format = "bare ids";
  } else if (first->fault) {
    AddFault(result, *first->fault);
  } else {
    result.scan = ScanOf(*first, found, text.Text());
  }
  return result;
}

std::vector<std::string> ScanFormats() {
  std::vector<std::string> names;
  for (const ScanFormat* const format : kScanFormats) names.emplace_back(format->name);
  return names;
}

}  // namespace plddb::chain
