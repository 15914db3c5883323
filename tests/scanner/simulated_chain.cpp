#include "simulated_chain.h"

namespace scanner {

SimulatedChain::SimulatedChain(const std::vector<TapDescription>& devices) : taps_(devices.begin(), devices.end()) {}

void SimulatedChain::Write(bool tck, bool tms, bool tdi) {
  if (tck && !tck_) {
    for (std::size_t i = 0; i < taps_.size(); ++i) {
      taps_[i].RisingEdge(tms, i + 1 < taps_.size() ? taps_[i + 1].Tdo() : tdi);  // no TDO changes at this edge
    }
  }
  if (!tck && tck_) {
    for (Tap& tap : taps_) tap.FallingEdge();
  }
  tck_ = tck;
}

bool SimulatedChain::Tdo() const { return taps_.front().Tdo(); }

void SimulatedChain::Reset() {
  for (Tap& tap : taps_) tap.Reset();
}

}  // namespace scanner
