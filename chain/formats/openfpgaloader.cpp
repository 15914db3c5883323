// What openFPGALoader --detect prints. It counts from TDI, and prints the id of its own table where it knows the device; before
// a device that it does not know it gives up.

#include <algorithm>
#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// Whether `text` may precede what the tool printed: blanks, or a time that was put before each line.
bool IsMargin(std::string_view text) {
  if (!text.empty() && kBlanks.find(text.back()) == kBlanks.npos) return false;
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const std::size_t colon = std::min(text.find(':'), text.size());
  const bool isTime = colon > 0 && colon + 1 < text.size() && isDigit(text[colon - 1]) && isDigit(text[colon + 1]);
  return isTime || text.find_first_not_of(kBlanks) == text.npos;
}

/// index 0:
Taken TakeIndex(const ScanLine& line, ScanReports& reports) {
  const std::string_view number = FirstWord(line.after);
  const bool isIndex =
      number.size() >= 2 && number.find_first_not_of("0123456789") == number.size() - 1 && number.back() == ':';
  if (!IsMargin(line.before) || !isIndex) return kNotMine;
  reports.Add({"index " + std::string(number.substr(0, number.size() - 1))});
  return kTaken;
}

///     idcode 0x362d093
/// Versions without "index" lines start a device with it.
Taken TakeIdcode(const ScanLine& line, ScanReports& reports) {
  const std::string_view rest = line.after.substr(std::min(line.after.find_first_not_of(" \t:="), line.after.size()));
  const std::string_view word = FirstWord(rest);
  if (!IsMargin(line.before) || word.substr(0, 2) != "0x") return kNotMine;
  if (!IsHex(word, 1, 8)) return Wrong(word, "expected an id: 0x and 1 to 8 hex digits");
  std::vector<ScannedTap>& taps = reports.Current().taps;
  if (taps.empty() || taps.back().name.empty() || taps.back().id) reports.Add({});
  reports.Current().taps.back().id = HexNumber(word);
  return kTaken;
}

///     irlength 6
Taken TakeTapIrLength(const ScanLine& line, ScanReports& reports) {
  std::vector<ScannedTap>& taps = reports.Current().taps;
  if (!IsMargin(line.before) || taps.empty()) return kNotMine;
  taps.back().irLength = LeadingNumber(FirstWord(line.after));
  return kTaken;
}

/// JTAG init failed with: Unknown device with IDCODE: 0x12345677 (manufacturer: 0x33b (), part: 0x11 vers: 0x1
Taken TakeUnknownDevice(const ScanLine& line, ScanReports& reports) {
  const std::string_view word = FirstWord(line.after);
  const auto id = FullId(word);
  if (!id) return Wrong(word, kExpectedFullId);
  reports.StartReport();
  reports.Add({"", id});
  return kTaken;
}

constexpr LineKind kDetectKinds[] = {{"index ", TakeIndex}, {"idcode", TakeIdcode}, {"irlength", TakeTapIrLength}};
constexpr LineKind kErrorKinds[] = {{"Unknown device with IDCODE: ", TakeUnknownDevice}};

}  // namespace

const ScanFormat kOpenFpgaLoaderDetect = {"openFPGALoader --detect", End::kTdi, false, true, kDetectKinds,
                                          std::size(kDetectKinds)};
const ScanFormat kOpenFpgaLoaderError = {"openFPGALoader error", End::kTdo, true, false, kErrorKinds, std::size(kErrorKinds)};

}  // namespace plddb::chain
