#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chain/Chain.h"

namespace plddb::chain {

/// What a tool printed about one scan of the chain.
struct ScanReport {
  std::vector<ScannedTap> taps = {};
  unsigned long irLength = 0;     ///< Of the chain, 0 when the tool does not print it.
  unsigned long deviceCount = 0;  ///< As the tool counts; 0 when it does not.
  bool isCut = false;             ///< The tool numbers its TAPs, and some are missing.
};

/// The reports of one format in a text, in order.
class ScanReports {
 public:
  void StartReport();  ///< Unless the current one is still empty.
  void EndBlock();     ///< The next TAP starts a report.
  void Add(ScannedTap tap);

  /// Adds the TAP that the tool gives this number. 0 starts a report; a gap shows that TAPs are missing.
  void AddNumbered(unsigned long number, ScannedTap tap);

  ScanReport& Current() { return reports_.back(); }
  bool IsFull() const;             ///< Current() holds more TAPs than any chain.
  std::vector<ScanReport> Take();  ///< Hands over those that hold a TAP.

  bool isOpen = false;          ///< For formats that need it: a line before stated that TAPs follow.
  std::size_t indentation = 0;  ///< For formats that need it: of the last TAP.
  std::vector<std::string> notes = {};

 private:
  std::vector<ScanReport> reports_ = {ScanReport{}};
  bool isBlockOver_ = false;
};

/// A line, cut at the words by which it was recognised.
struct ScanLine {
  std::string_view before;
  std::string_view after;
};

/// The result of reading a line.
struct Taken {
  bool isMine = true;           ///< False: the line is not of this kind.
  const char* fault = nullptr;  ///< What is wrong; null when nothing is.
  std::string_view at = {};     ///< The part of the line that the fault is about.
  bool isInside = false;        ///< It may be in the middle of a report, whatever else it is.
};

inline constexpr Taken kTaken = {};
inline constexpr Taken kNotMine = {false};
inline constexpr Taken kInside = {false, nullptr, {}, true};
inline Taken Wrong(std::string_view at, const char* fault) { return {true, fault, at}; }

/// A kind of line: how it is recognised, and the function that reads it.
struct LineKind {
  std::string_view marker;  ///< The empty one is in every line.
  Taken (*take)(const ScanLine& line, ScanReports& reports);
};

/// A form in which a tool prints a chain.
struct ScanFormat {
  const char* name;
  const char* tool;
  End nearest;       ///< The end of the chain that it names first.
  bool hasVersions;  ///< See Scan.
  bool isWhole;      ///< False: it may list only some TAPs of the chain.
  bool isOneBlock;   ///< A report ends at a line of another kind.
  bool isPerCable;   ///< Each report is that of another cable.
  const LineKind* kinds;
  std::size_t kindCount;
};

/// \name The formats, one file per tool. Which end comes first was found by running the tools on chains of known order.
///@{
extern const ScanFormat kOpenOcdLog;
extern const ScanFormat kOpenOcdTable;
extern const ScanFormat kOpenOcdSuggestions;
extern const ScanFormat kUrJtag;
extern const ScanFormat kOpenFpgaLoaderRaw;
extern const ScanFormat kOpenFpgaLoaderDetect;
extern const ScanFormat kOpenFpgaLoaderError;
extern const ScanFormat kXc3sprog;
extern const ScanFormat kJtagconfig;
extern const ScanFormat kXsdb;
extern const ScanFormat kJLink;
extern const ScanFormat kProbeRs;
extern const ScanFormat kGlasgow;
extern const ScanFormat kDjtgcfg;
extern const ScanFormat kImpact;
///@}

/// Preferred ones first.
inline constexpr const ScanFormat* kScanFormats[] = {
    &kOpenOcdLog,
    &kOpenOcdTable,
    &kOpenOcdSuggestions,
    &kOpenFpgaLoaderRaw,
    &kOpenFpgaLoaderDetect,
    &kOpenFpgaLoaderError,
    &kXc3sprog,
    &kXsdb,
    &kJLink,
    &kProbeRs,
    &kGlasgow,
    &kDjtgcfg,
    &kImpact,
    &kUrJtag,
    &kJtagconfig,
};

/// Adds the contents of `line` to the reports of its format; a line of no format is skipped. `reports` has one entry for each
/// row of kScanFormats. `format` of the result is the format that a fault is about.
Taken TakeScanLine(std::string_view line, std::vector<ScanReports>& reports, std::size_t& format);

}  // namespace plddb::chain
