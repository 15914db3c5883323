#pragma once

#include <vector>

#include "tap.h"

namespace scanner {

/// Devices on common TCK, TMS and TRST, the TDO of each wired to the TDI of the next.
class SimulatedChain {
 public:
  /// `devices` in the order in which they come out of TDO: the first is nearest to it.
  explicit SimulatedChain(const std::vector<TapDescription>& devices);

  void Write(bool tck, bool tms, bool tdi);  ///< Sets the pins of the adapter.
  bool Tdo() const;
  void Reset();  ///< TRST.

 private:
  std::vector<Tap> taps_;
  bool tck_ = false;
};

}  // namespace scanner
