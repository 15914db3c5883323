// The output of J-Link Commander, and other programs of its maker, when they scan a chain. Its order is not documented.

#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// TotalIRLen = 5, IRPrint = 0x01
Taken TakeTotal(const ScanLine& line, ScanReports& reports) {
  reports.StartReport();
  reports.Current().irLength = LeadingNumber(line.after);
  return kTaken;
}

/// JTAG chain detection found 2 devices:
/// Found 2 JTAG devices, Total IRLen = 10:
Taken TakeCount(const ScanLine& line, ScanReports& reports) {
  const unsigned long count = LeadingNumber(line.after);
  if (count == 0) return kNotMine;
  reports.StartReport();
  reports.Current().deviceCount = count;
  if (const std::string_view total = After(line.after, "Total IRLen = "); !total.empty()) {
    reports.Current().irLength = LeadingNumber(total);
  }
  return kTaken;
}

/// J-Link found 1 JTAG device, Total IRLen = 4
Taken TakeJtagCount(const ScanLine& line, ScanReports& reports) {
  return line.after.find(" JTAG device") == line.after.npos ? kNotMine : TakeCount(line, reports);
}

/// The name that the tool prints for a device: the last of the entries after its id, which commas separate.
std::string NameIn(std::string_view entries) {
  const std::size_t comma = entries.rfind(", ");
  const std::string name = comma == entries.npos ? "" : Trimmed(entries.substr(comma + 2));
  return name.substr(0, 2) == "IR" || name == "Unknown device" ? "" : name;
}

Taken TakeId(std::optional<unsigned long> number, std::string_view text, ScanReports& reports) {
  if (!number) return kNotMine;
  const auto id = LeadingId(text);
  if (!id) return Wrong(FirstWord(text), kExpectedFullId);
  const unsigned long irLength = LeadingNumber(After(text, "IRLen: "));
  reports.AddNumbered(*number, {NameIn(text), id, irLength, irLength != 0});
  return kTaken;
}

///  #0 Id: 0x4BA00477, IRLen: 04, IRPrint: 0x1, CoreSight JTAG-DP (ARM)
Taken TakeDevice(const ScanLine& line, ScanReports& reports) {
  const std::string number = LastWord(line.before);
  if (number.substr(0, 1) != "#") return kNotMine;
  return TakeId(WholeNumber(std::string_view(number).substr(1)), line.after, reports);
}

///  Id of device #0: 0x4F1F0F0F
Taken TakeNumberedId(const ScanLine& line, ScanReports& reports) {
  return TakeId(WholeNumber(line.after.substr(0, line.after.find(':'))), After(line.after, ":"), reports);
}

/// JTAG ID: 0x4BA00477 (Cortex-M4)
/// The server for debuggers prints it after the number of devices, and only that of its own device.
Taken TakeOwnId(const ScanLine& line, ScanReports& reports) {
  if (reports.Current().deviceCount == 0 || !reports.Current().taps.empty()) return kNotMine;
  const auto id = LeadingId(line.after);
  if (!id) return Wrong(FirstWord(line.after), kExpectedFullId);
  reports.Add({"", id, reports.Current().deviceCount == 1 ? reports.Current().irLength : 0});
  return kTaken;
}

constexpr LineKind kKinds[] = {
    {"TotalIRLen = ", TakeTotal},
    {"JTAG chain detection found ", TakeCount},
    {"Found ", TakeJtagCount},
    {" found ", TakeJtagCount},
    {" Id:", TakeDevice},
    {"JTAG ID: ", TakeOwnId},
    {"Id of device #", TakeNumberedId},
};

}  // namespace

const ScanFormat kJLink = {"J-Link Commander", "J-Link", End::kAsPrinted, true, true, false, false, kKinds, std::size(kKinds)};

}  // namespace plddb::chain
