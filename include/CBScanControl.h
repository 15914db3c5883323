#pragma once

#include <string>
#include <vector>

#include "plddb_export.h"

/// A boundary-scan control record of a family. A plain value: copies share nothing.
class PLDDB_EXPORT CBScanControl {
 public:
  CBScanControl() = default;
  CBScanControl(const CBScanControl&) = default;
  CBScanControl(CBScanControl&&) = default;
  CBScanControl& operator=(const CBScanControl&) = default;
  CBScanControl& operator=(CBScanControl&&) = default;
  virtual ~CBScanControl() = default;

  int DefaultValue = 0;               ///< 1 in records that the text setter creates.
  std::vector<std::string> Controls;  ///< The record's entries, in order.
};
