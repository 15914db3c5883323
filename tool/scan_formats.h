#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "scan_text.h"

namespace tool {

/// What a tool printed of one look at the chain.
struct ScanReport {
  std::vector<ScannedTap> taps = {};
  unsigned long ir_length = 0;     ///< Of the chain, 0 when the tool does not say.
  unsigned long device_count = 0;  ///< As the tool says; 0 when it does not.
};

/// The reports of one format in a text, in order. A new one starts where the tool starts anew, or where a TAP's name comes
/// again.
class ScanReports {
 public:
  void StartReport();  ///< Unless the current one is still empty.
  void Add(ScannedTap tap);
  ScanReport& Current() { return reports_.back(); }
  std::vector<ScanReport> Take();  ///< Hands over those that hold a TAP.

 private:
  std::vector<ScanReport> reports_ = {ScanReport{}};
  std::set<std::string> names_;  // of the current report
};

/// What is wrong at `at`, a part of a line.
struct ScanFault {
  std::string_view at;
  std::string text;
};

/// What a tool prints of a chain.
struct ScanFormat {
  const char* name;
  End nearest;        ///< The end of the chain that it names first.
  bool has_versions;  ///< See Scan.
  bool is_whole;      ///< False: it may speak of some TAPs of the chain only.
};

/// The formats, preferred ones first. Which end comes first is known from running the tools over chains of known order.
/// openFPGALoader counts from TDI, and prints the id of its own table where it knows the device; before a device that it does
/// not know it gives up.
inline constexpr ScanFormat kScanFormats[] = {
    {"OpenOCD log", End::kTdo, true, true},
    {"OpenOCD suggestions", End::kTdo, true, false},
    {"OpenOCD scan_chain table", End::kTdo, true, true},
    {"UrJTAG detect", End::kTdo, true, true},
    {"openFPGALoader --detect", End::kTdi, false, true},
    {"openFPGALoader error", End::kTdo, true, false},
};

/// Adds what `line` says to the reports of its format; a line of none is passed over. `reports` has one entry for each row of
/// kScanFormats. Throws ScanFault for a line of a format whose id cannot be read.
void TakeScanLine(std::string_view line, std::vector<ScanReports>& reports);

}  // namespace tool
