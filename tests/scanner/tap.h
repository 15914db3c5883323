#pragma once

#include <cstdint>
#include <optional>

/// \file
/// The test access port of one device, as far as a scanner sees it: instruction register, IDCODE and BYPASS.

namespace scanner {

/// The sixteen states of a TAP controller (IEEE 1149.1).
enum class TapState {
  kTestLogicReset,
  kRunTestIdle,
  kSelectDrScan,
  kCaptureDr,
  kShiftDr,
  kExit1Dr,
  kPauseDr,
  kExit2Dr,
  kUpdateDr,
  kSelectIrScan,
  kCaptureIr,
  kShiftIr,
  kExit1Ir,
  kPauseIr,
  kExit2Ir,
  kUpdateIr,
};

/// The state after a rising edge of TCK with this TMS.
TapState NextState(TapState state, bool tms);

/// What makes a device differ from another to a scanner.
struct TapDescription {
  int irLength = 2;                                 ///< Bits, 2 to 64.
  std::optional<std::uint32_t> idcode;              ///< A device without one shows its BYPASS bit after a reset.
  std::optional<std::uint64_t> idcode_instruction;  ///< Any other code selects BYPASS.
  std::uint64_t ir_capture = 1;                     ///< What Capture-IR loads. The standard wants ...01; the rest is status.
};

/// A TAP as IEEE 1149.1 has it: reads TMS and TDI at the rising edge of TCK and changes TDO at the falling edge.
class Tap {
 public:
  explicit Tap(const TapDescription& description) : description_(description) { Reset(); }

  void Reset();  ///< TRST.
  void RisingEdge(bool tms, bool tdi);
  void FallingEdge();

  TapState State() const { return state_; }
  bool Tdo() const { return tdo_; }  ///< High where the standard wants it undriven: boards pull it up.

 private:
  void Capture(std::uint64_t value, int length);

  TapDescription description_;
  TapState state_ = TapState::kTestLogicReset;
  bool idcodeSelected_ = false;  ///< Else BYPASS.
  std::uint64_t shiftRegister_ = 0;
  int shiftLength_ = 1;
  bool tdo_ = true;
};

}  // namespace scanner
