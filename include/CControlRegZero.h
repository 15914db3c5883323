#pragma once

#include <string>

#include "plddb_export.h"

/// A field of control register 0. A plain value: copies share nothing.
class PLDDB_EXPORT CControlRegZero {
 public:
  CControlRegZero() = default;
  CControlRegZero(const CControlRegZero&) = default;
  CControlRegZero(CControlRegZero&&) = default;
  CControlRegZero& operator=(const CControlRegZero&) = default;
  CControlRegZero& operator=(CControlRegZero&&) = default;
  virtual ~CControlRegZero() = default;

  std::string Frequency;     ///< SetListControlReg0Frequency creates the record.
  std::string MasterClock;   ///< SetListControlReg0MasterClock.
  std::string ClockDivider;  ///< SetListControlReg0ClockDivider.
};
