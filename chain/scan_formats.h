#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "chain/Chain.h"

namespace plddb::chain {

/// What a tool printed of one look at the chain.
struct ScanReport {
  std::vector<ScannedTap> taps = {};
  unsigned long irLength = 0;     ///< Of the chain, 0 when the tool does not print it.
  unsigned long deviceCount = 0;  ///< As the tool counts; 0 when it does not.
};

/// The reports of one format in a text, in order. A new one starts where the tool starts anew, or where a TAP's name comes
/// again.
class ScanReports {
 public:
  void StartReport();  ///< Unless the current one is still empty.
  void Add(ScannedTap tap);
  ScanReport& Current() { return reports_.back(); }
  bool IsFull() const;             ///< Current() holds more TAPs than any chain.
  std::vector<ScanReport> Take();  ///< Hands over those that hold a TAP.

 private:
  std::vector<ScanReport> reports_ = {ScanReport{}};
  std::set<std::string> names_;  // of the current report
};

/// A line around the words by which it was recognised.
struct ScanLine {
  std::string_view before;
  std::string_view after;
};

/// What became of a line.
struct Taken {
  bool isMine = true;           ///< False: the line is not of this kind.
  const char* fault = nullptr;  ///< What is wrong; null when nothing is.
  std::string_view at = {};     ///< The part of the line that the fault is about.
};

inline constexpr Taken kTaken = {};
inline constexpr Taken kNotMine = {false};
inline Taken Wrong(std::string_view at, const char* fault) { return {true, fault, at}; }

/// A kind of lines: how it is recognised, and what takes over its contents.
struct LineKind {
  std::string_view marker;
  Taken (*take)(const ScanLine& line, ScanReports& reports);
};

/// What a tool prints of a chain.
struct ScanFormat {
  const char* name;
  End nearest;       ///< The end of the chain that it names first.
  bool hasVersions;  ///< See Scan.
  bool isWhole;      ///< False: it may speak of some TAPs of the chain only.
  const LineKind* kinds;
  std::size_t kindCount;
};

/// \name The formats, one file a tool. Which end comes first is known from running the tools over chains of known order.
///@{
extern const ScanFormat kOpenOcdLog;
extern const ScanFormat kOpenOcdSuggestions;
extern const ScanFormat kOpenOcdTable;
extern const ScanFormat kUrJtag;
extern const ScanFormat kOpenFpgaLoaderDetect;
extern const ScanFormat kOpenFpgaLoaderError;
///@}

/// Preferred ones first.
inline constexpr const ScanFormat* kScanFormats[] = {
    &kOpenOcdLog, &kOpenOcdSuggestions, &kOpenOcdTable, &kUrJtag, &kOpenFpgaLoaderDetect, &kOpenFpgaLoaderError,
};

/// Adds what `line` shows to the reports of its format; a line of none is passed over. `reports` has one entry for each row of
/// kScanFormats.
Taken TakeScanLine(std::string_view line, std::vector<ScanReports>& reports);

}  // namespace plddb::chain
