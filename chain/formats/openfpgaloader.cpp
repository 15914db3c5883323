// The output of openFPGALoader --detect. It counts from TDI. For a device that it knows it prints the id of its own table, and
// it stops at the first device that it does not know. At verbose level 2 it shows the ids that it really read; their order is
// not documented, and follows from the devices where these are shown as well.

#include <algorithm>
#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

///     idcode 0x362d093
/// Versions without "index" lines start a device with it.
Taken TakeIdcode(const ScanLine& line, ScanReports& reports) {
  const std::string_view rest = line.after.substr(std::min(line.after.find_first_not_of(" \t:="), line.after.size()));
  if (!IsMargin(line.before) || rest.substr(0, 2) != "0x") return kNotMine;
  const auto id = LeadingId(rest, 1);
  if (!id) return Wrong(FirstWord(rest), "expected an id: 0x and 1 to 8 hex digits");
  std::vector<ScannedTap>& taps = reports.Current().taps;
  if (taps.empty() || taps.back().name.empty() || taps.back().id) reports.Add({});
  reports.Current().taps.back().id = id;
  return kTaken;
}

/// index 0:
/// index 0: idcode 0x362d093 irlength 6                  where line ends were lost
Taken TakeIndex(const ScanLine& line, ScanReports& reports) {
  const std::string_view word = FirstWord(line.after);
  const auto number = WholeNumber(word.substr(0, std::max<std::size_t>(word.size(), 1) - 1));
  if (!IsMargin(line.before) || !number || word.back() != ':') return kNotMine;
  reports.AddNumbered(*number, {"index " + std::to_string(*number)});
  const std::string_view rest = After(line.after, "idcode");
  return rest.empty() ? kTaken : TakeIdcode({"", rest}, reports);
}

///     irlength 6
/// It is that of the tool's own table.
Taken TakeTapIrLength(const ScanLine& line, ScanReports& reports) {
  std::vector<ScannedTap>& taps = reports.Current().taps;
  if (!IsMargin(line.before) || taps.empty()) return kNotMine;
  taps.back().irLength = LeadingNumber(line.after);
  taps.back().irLengthIsGuess = true;
  return kTaken;
}

/// JTAG init failed with: Unknown device with IDCODE: 0x12345677 (manufacturer: 0x33b (), part: 0x11 vers: 0x1
Taken TakeUnknownDevice(const ScanLine& line, ScanReports& reports) {
  const auto id = LeadingId(line.after, 1);  // without zeros before it
  if (!id) return Wrong(FirstWord(line.after), kExpectedFullId);
  reports.StartReport();
  reports.Add({"", id});
  return kTaken;
}

/// - 0 -> 0x13636093
Taken TakeRawId(const ScanLine& line, ScanReports& reports) {
  const std::string_view arrow = After(line.after, "->");
  const auto number = WholeNumber(FirstWord(line.after));
  if (!number || arrow.empty() || Words(line.after).size() < 3 || Words(line.after)[1] != "->") return kNotMine;
  const auto id = LeadingId(arrow, 1);
  if (!id) return Wrong(FirstWord(arrow), kExpectedFullId);
  reports.AddNumbered(*number, {"", id});
  return kTaken;
}

/// Raw IDCODE:
/// Raw IDCODE: - 0 -> 0x13636093
Taken TakeRawHead(const ScanLine& line, ScanReports& reports) {
  const std::string_view dash = FirstWord(line.after);
  if (dash != "-") return dash.empty() ? reports.StartReport(), kTaken : kNotMine;
  return TakeRawId({line.before, After(line.after, "-")}, reports);
}

constexpr LineKind kRawKinds[] = {{"Raw IDCODE:", TakeRawHead}, {"- ", TakeRawId}};
constexpr LineKind kDetectKinds[] = {{"index ", TakeIndex}, {"idcode", TakeIdcode}, {"irlength", TakeTapIrLength}};
constexpr LineKind kErrorKinds[] = {{"Unknown device with IDCODE: ", TakeUnknownDevice}};
constexpr const char* kTool = "openFPGALoader";

}  // namespace

const ScanFormat kOpenFpgaLoaderRaw = {"openFPGALoader raw ids", kTool, End::kAsPrinted, true, true, false, false, kRawKinds,
                                       std::size(kRawKinds)};
const ScanFormat kOpenFpgaLoaderDetect = {"openFPGALoader --detect", kTool, End::kTdi, false, true, false, false, kDetectKinds,
                                          std::size(kDetectKinds)};
const ScanFormat kOpenFpgaLoaderError = {"openFPGALoader error", kTool, End::kTdo, true, false, false, false, kErrorKinds,
                                         std::size(kErrorKinds)};

}  // namespace plddb::chain
