#include "tap.h"

#include <cstddef>

namespace scanner {
namespace {

using S = TapState;

struct Successors {
  TapState tms0;
  TapState tms1;
};

// In the order of TapState.
constexpr Successors kSuccessors[] = {
    {S::kRunTestIdle, S::kTestLogicReset},  // Test-Logic-Reset
    {S::kRunTestIdle, S::kSelectDrScan},    // Run-Test/Idle
    {S::kCaptureDr, S::kSelectIrScan},      // Select-DR-Scan
    {S::kShiftDr, S::kExit1Dr},             // Capture-DR
    {S::kShiftDr, S::kExit1Dr},             // Shift-DR
    {S::kPauseDr, S::kUpdateDr},            // Exit1-DR
    {S::kPauseDr, S::kExit2Dr},             // Pause-DR
    {S::kShiftDr, S::kUpdateDr},            // Exit2-DR
    {S::kRunTestIdle, S::kSelectDrScan},    // Update-DR
    {S::kCaptureIr, S::kTestLogicReset},    // Select-IR-Scan
    {S::kShiftIr, S::kExit1Ir},             // Capture-IR
    {S::kShiftIr, S::kExit1Ir},             // Shift-IR
    {S::kPauseIr, S::kUpdateIr},            // Exit1-IR
    {S::kPauseIr, S::kExit2Ir},             // Pause-IR
    {S::kShiftIr, S::kUpdateIr},            // Exit2-IR
    {S::kRunTestIdle, S::kSelectDrScan},    // Update-IR
};

bool IsShifting(TapState state) { return state == TapState::kShiftDr || state == TapState::kShiftIr; }

}  // namespace

TapState NextState(TapState state, bool tms) {
  const Successors& successors = kSuccessors[static_cast<std::size_t>(state)];
  return tms ? successors.tms1 : successors.tms0;
}

void Tap::Reset() {
  state_ = TapState::kTestLogicReset;
  idcodeSelected_ = description_.idcode.has_value();
  tdo_ = true;
}

void Tap::Capture(std::uint64_t value, int length) {
  shiftRegister_ = value;
  shiftLength_ = length;
}

void Tap::RisingEdge(bool tms, bool tdi) {
  if (state_ == TapState::kCaptureIr) {
    Capture(description_.ir_capture, description_.irLength);
  } else if (state_ == TapState::kCaptureDr && idcodeSelected_) {
    Capture(*description_.idcode, 32);
  } else if (state_ == TapState::kCaptureDr) {
    Capture(0, 1);  // BYPASS
  } else if (IsShifting(state_)) {
    shiftRegister_ = shiftRegister_ >> 1 | std::uint64_t{tdi} << (shiftLength_ - 1);
  }
  state_ = NextState(state_, tms);
}

void Tap::FallingEdge() {
  if (state_ == TapState::kTestLogicReset) Reset();
  if (state_ == TapState::kUpdateIr) {
    idcodeSelected_ = description_.idcode && shiftRegister_ == description_.idcode_instruction;
  }
  tdo_ = IsShifting(state_) ? (shiftRegister_ & 1) != 0 : true;
}

}  // namespace scanner
