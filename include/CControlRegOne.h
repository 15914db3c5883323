#pragma once

#include <string>

#include "plddb_export.h"

/// A bit of control register 1. A plain value: copies share nothing.
class PLDDB_EXPORT CControlRegOne {
 public:
  CControlRegOne() = default;
  CControlRegOne(const CControlRegOne&) = default;
  CControlRegOne(CControlRegOne&&) = default;
  CControlRegOne& operator=(const CControlRegOne&) = default;
  CControlRegOne& operator=(CControlRegOne&&) = default;
  virtual ~CControlRegOne() = default;

  std::string BitName;  ///< SetListControlReg1BitName creates the record.
  int Value = 0;        ///< No text setter; only SetlistControlRegOne.
  int Address = 0;      ///< SetListControlReg1Address.
  int Column = 0;       ///< SetListControlReg1Column.
};
