#pragma once

#include <string>

#include "plddb_export.h"

/// A control voltage of the device. A plain value: copies share nothing.
class PLDDB_EXPORT CControlVoltage {
 public:
  CControlVoltage() = default;
  CControlVoltage(const CControlVoltage&) = default;
  CControlVoltage(CControlVoltage&&) = default;
  CControlVoltage& operator=(const CControlVoltage&) = default;
  CControlVoltage& operator=(CControlVoltage&&) = default;
  virtual ~CControlVoltage() = default;

  std::string VCCCore;  ///< SetControlVoltageVCCCore creates the record.
  std::string VCCJ;     ///< SetControlVoltageVCCJ, first record only.
  std::string PinList;  ///< SetControlVoltagePinList, first record only.
};
