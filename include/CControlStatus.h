#pragma once

#include <string>

#include "plddb_export.h"

/// A bit of the status register. A plain value: copies share nothing.
class PLDDB_EXPORT CControlStatus {
 public:
  CControlStatus() = default;
  CControlStatus(const CControlStatus&) = default;
  CControlStatus(CControlStatus&&) = default;
  CControlStatus& operator=(const CControlStatus&) = default;
  CControlStatus& operator=(CControlStatus&&) = default;
  virtual ~CControlStatus() = default;

  std::string BitName;  ///< SetListControlStatusBitName creates the record.
  std::string Control;  ///< SetListControlStatusControl.
  std::string Text;     ///< No text setter; only SetlistControlStatus.
  int Index = 0;        ///< SetListControlStatusIndex.
};
