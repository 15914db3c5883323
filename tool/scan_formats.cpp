#include "scan_formats.h"

#include <algorithm>
#include <charconv>

namespace tool {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::size_t kMostTaps = 10000;  // far beyond any chain, so that nonsense ends soon

/// A line around the words by which it was recognised.
struct ScanLine {
  std::string_view before;
  std::string_view after;
};

// --- Words and numbers ------------------------------------------------------------------------------------------------------

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  for (std::size_t start = 0; (start = text.find_first_not_of(kBlanks, start)) != text.npos;) {
    const std::size_t end = std::min(text.find_first_of(kBlanks, start), text.size());
    words.push_back(text.substr(start, end - start));
    start = end;
  }
  return words;
}

std::string_view FirstWord(std::string_view text) {
  const auto words = Words(text);
  return words.empty() ? text.substr(text.size()) : words.front();
}

std::string LastWord(std::string_view text) {
  const auto words = Words(text);
  return words.empty() ? "" : std::string(words.back());
}

/// The number with which `text` starts, 0 when there is none or it is too large.
unsigned long LeadingNumber(std::string_view text) {
  unsigned long number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/// Whether `text` is "0x" and `least` to `most` hex digits.
bool IsHex(std::string_view text, std::size_t least, std::size_t most) {
  if (text.substr(0, 2) != "0x") return false;
  text.remove_prefix(2);
  return text.size() >= least && text.size() <= most && text.find_first_not_of("0123456789abcdefABCDEF") == text.npos;
}

std::optional<unsigned int> HexNumber(std::string_view text) {
  unsigned int number = 0;
  text.remove_prefix(2);
  const bool fits = std::from_chars(text.data(), text.data() + text.size(), number, 16).ec == std::errc();
  return fits ? std::optional(number) : std::nullopt;
}

/// An id of OpenOCD has all its digits: with fewer of them the text was cut off.
unsigned int FullId(std::string_view word) {
  if (!IsHex(word, 8, 8)) throw ScanFault{word, "expected an id: 0x and 8 hex digits"};
  return *HexNumber(word);
}

std::optional<unsigned int> IdUnlessZero(unsigned int id) { return id == 0 ? std::nullopt : std::optional(id); }

// --- OpenOCD ----------------------------------------------------------------------------------------------------------------

/// Info : JTAG tap: xc7.tap tap/device found: 0x0362d093 (mfg: 0x049 (Xilinx), part: 0x362d, ver: 0x0)
/// The lines "UNEXPECTED" and "expected 1 of 2" repeat the id, or show what the configuration says.
void TakeFoundTap(const ScanLine& line, ScanReports& reports) {
  reports.Add({LastWord(line.before), FullId(FirstWord(line.after))});
}

/// Info : TAP auto1.tap does not have valid IDCODE (idcode=0xb2c08126)
/// The number is the TAP's BYPASS bit and what follows it, no id.
void TakeTapWithoutIdcode(const ScanLine& line, ScanReports& reports) { reports.Add({LastWord(line.before)}); }

std::string_view WordBehind(const std::vector<std::string_view>& words, std::string_view option) {
  const auto found = std::find(words.begin(), words.end(), option);
  if (found == words.end() || found + 1 == words.end()) return {};
  return (found + 1)->substr(0, (found + 1)->find('"'));
}

/// Warn : AUTO auto0.tap - use "jtag newtap auto0 tap -irlen 6 -expected-id 0x0362d093"
/// A TAP without IDCODE has 0x00000000 here.
void TakeSuggestion(const ScanLine& line, ScanReports& reports) {
  const auto words = Words(line.after);
  const auto before = Words(line.before);
  const std::string_view id = WordBehind(words, "-expected-id");
  if (id.empty()) throw ScanFault{line.after, "expected -expected-id and an id"};
  const std::string name = before.size() < 2 ? "" : std::string(before.back());
  reports.Add({name, IdUnlessZero(FullId(id)), LeadingNumber(WordBehind(words, "-irlen"))});
}

/// Open On-Chip Debugger 0.12.0
///    TapName             Enabled  IdCode     Expected   IrLen IrCap IrMask
/// Without it, two runs whose TAPs have other names would look like one long chain.
void TakeHead(const ScanLine&, ScanReports& reports) { reports.StartReport(); }

///  0 xc7.tap                Y     0x0362d093 0x0362d093     6 0x01  0x03
/// Disabled TAPs have n, and are not in the chain. A second expected id stands in a line of its own.
void TakeTableRow(const ScanLine& line, ScanReports& reports) {
  const auto before = Words(line.before);
  const auto after = Words(line.after);
  const bool is_row = before.size() >= 2 && after.size() >= 5 && after[1].substr(0, 2) == "0x" && IsHex(after[3], 1, 16);
  if (is_row) reports.Add({std::string(before.back()), IdUnlessZero(FullId(after[0])), LeadingNumber(after[2])});
}

// --- UrJTAG -----------------------------------------------------------------------------------------------------------------

/// IR length: 14
void TakeIrLength(const ScanLine& line, ScanReports& reports) {
  reports.StartReport();
  reports.Current().ir_length = LeadingNumber(FirstWord(line.after));
}

/// Chain length: 2
void TakeChainLength(const ScanLine& line, ScanReports& reports) {
  reports.StartReport();
  reports.Current().device_count = LeadingNumber(FirstWord(line.after));
}

/// Device Id: 00000110010101001000000010010011 (0x06548093)
/// Device Id: not supported (bit 0 was not a 1)
/// Some versions write 16 hex digits, and a BYPASS bit as an id of one bit.
void TakeDeviceId(const ScanLine& line, ScanReports& reports) {
  const auto words = Words(line.after);
  const bool has_no_id = !words.empty() && (words[0] == "not" || words[0] == "0");
  if (has_no_id) return reports.Add({});
  const std::string_view bits = words.empty() ? line.after : words[0];
  unsigned int id = 0;
  const bool is_id = bits.size() == 32 && std::from_chars(bits.data(), bits.data() + 32, id, 2).ptr == bits.data() + 32;
  if (!is_id) throw ScanFault{bits, "expected the 32 bits of an id"};
  reports.Add({"", id});
}

// --- openFPGALoader ---------------------------------------------------------------------------------------------------------

/// Whether `text` may stand before what the tool printed: blanks, or a time that was put before each line.
bool IsMargin(std::string_view text) {
  if (!text.empty() && kBlanks.find(text.back()) == kBlanks.npos) return false;
  const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
  const std::size_t colon = std::min(text.find(':'), text.size());
  const bool is_time = colon > 0 && colon + 1 < text.size() && is_digit(text[colon - 1]) && is_digit(text[colon + 1]);
  return is_time || text.find_first_not_of(kBlanks) == text.npos;
}

/// index 0:
void TakeIndex(const ScanLine& line, ScanReports& reports) {
  const std::string_view number = FirstWord(line.after);
  const bool is_index =
      number.size() >= 2 && number.find_first_not_of("0123456789") == number.size() - 1 && number.back() == ':';
  if (IsMargin(line.before) && is_index) reports.Add({"index " + std::string(number.substr(0, number.size() - 1))});
}

///     idcode 0x362d093
/// Versions without "index" lines start a device with it.
void TakeIdcode(const ScanLine& line, ScanReports& reports) {
  const std::string_view rest = line.after.substr(std::min(line.after.find_first_not_of(" \t:="), line.after.size()));
  const std::string_view word = FirstWord(rest);
  if (!IsMargin(line.before) || word.substr(0, 2) != "0x") return;
  if (!IsHex(word, 1, 8)) throw ScanFault{word, "expected an id: 0x and 1 to 8 hex digits"};
  std::vector<ScannedTap>& taps = reports.Current().taps;
  if (taps.empty() || taps.back().name.empty() || taps.back().id) reports.Add({});
  reports.Current().taps.back().id = HexNumber(word);
}

///     irlength 6
void TakeTapIrLength(const ScanLine& line, ScanReports& reports) {
  std::vector<ScannedTap>& taps = reports.Current().taps;
  if (IsMargin(line.before) && !taps.empty()) taps.back().ir_length = LeadingNumber(FirstWord(line.after));
}

/// JTAG init failed with: Unknown device with IDCODE: 0x12345677 (manufacturer: 0x33b (), part: 0x11 vers: 0x1
void TakeUnknownDevice(const ScanLine& line, ScanReports& reports) {
  reports.StartReport();
  reports.Add({"", FullId(FirstWord(line.after))});
}

// --- The table --------------------------------------------------------------------------------------------------------------

/// A kind of lines: how it is recognised, and what takes over what it says.
constexpr struct {
  std::string_view format;  // a name in kScanFormats
  std::string_view marker;
  void (*take)(const ScanLine& line, ScanReports& reports);
} kLineKinds[] = {
    {"OpenOCD log", "Open On-Chip Debugger ", TakeHead},
    {"OpenOCD log", " tap/device found: ", TakeFoundTap},
    {"OpenOCD log", " does not have valid IDCODE", TakeTapWithoutIdcode},
    {"OpenOCD suggestions", " - use \"jtag newtap ", TakeSuggestion},
    {"OpenOCD scan_chain table", "TapName ", TakeHead},
    {"OpenOCD scan_chain table", " Y ", TakeTableRow},
    {"UrJTAG detect", "IR length: ", TakeIrLength},
    {"UrJTAG detect", "Chain length: ", TakeChainLength},
    {"UrJTAG detect", "Device Id: ", TakeDeviceId},
    {"openFPGALoader --detect", "index ", TakeIndex},
    {"openFPGALoader --detect", "idcode", TakeIdcode},
    {"openFPGALoader --detect", "irlength", TakeTapIrLength},
    {"openFPGALoader error", "Unknown device with IDCODE: ", TakeUnknownDevice},
};

std::size_t FormatNumber(std::string_view name) {
  const auto has_name = [&](const ScanFormat& format) { return format.name == name; };
  return static_cast<std::size_t>(std::find_if(std::begin(kScanFormats), std::end(kScanFormats), has_name) - kScanFormats);
}

}  // namespace

void ScanReports::StartReport() {
  if (!Current().taps.empty()) reports_.emplace_back();
}

void ScanReports::Add(ScannedTap tap) {
  if (!tap.name.empty() && names_.count(tap.name) != 0) StartReport();
  if (Current().taps.empty()) names_.clear();
  if (Current().taps.size() == kMostTaps) throw ScanFault{{}, "more TAPs than a chain can have"};
  names_.insert(tap.name);
  Current().taps.push_back(std::move(tap));
}

std::vector<ScanReport> ScanReports::Take() {
  if (Current().taps.empty()) reports_.pop_back();
  return std::move(reports_);
}

void TakeScanLine(std::string_view line, std::vector<ScanReports>& reports) {
  for (const auto& kind : kLineKinds) {
    const std::size_t at = line.find(kind.marker);
    if (at == line.npos) continue;
    kind.take({line.substr(0, at), line.substr(at + kind.marker.size())}, reports[FormatNumber(kind.format)]);
    return;
  }
}

}  // namespace tool
