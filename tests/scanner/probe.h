#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "simulated_chain.h"

namespace scanner {

/// `count` bits of `value` as '0' and '1', the lowest first: the order in which they are shifted.
inline std::string Bits(std::uint64_t value, int count) {
  std::string bits;
  for (int i = 0; i < count; ++i) bits += (value >> i & 1) != 0 ? '1' : '0';
  return bits;
}

/// Clocks a chain in Run-Test/Idle as an adapter does, one register at a time.
class Probe {
 public:
  explicit Probe(SimulatedChain& chain) : chain_(chain) { Walk("111110"); }

  /// One clock for each '0' and '1' of `tms`.
  void Walk(const std::string& tms) {
    for (const char bit : tms) Clock(bit == '1', true);
  }

  /// Both shift `bits` in, give the bits that come out meanwhile, and end in Run-Test/Idle.
  std::string ShiftIr(const std::string& bits) { return Shift("1100", bits); }
  std::string ShiftDr(const std::string& bits) { return Shift("100", bits); }

  /// What comes out of the data registers for `count` ones.
  std::string ReadDr(int count) { return ShiftDr(std::string(static_cast<std::size_t>(count), '1')); }

  /// TDO as it is before the rising edge.
  bool Clock(bool tms, bool tdi) {
    chain_.Write(false, tms, tdi);
    const bool tdo = chain_.Tdo();
    chain_.Write(true, tms, tdi);
    return tdo;
  }

 private:
  std::string Shift(const char* wayThere, const std::string& bits) {
    Walk(wayThere);
    std::string out;
    for (std::size_t i = 0; i < bits.size(); ++i) out += Clock(i + 1 == bits.size(), bits[i] == '1') ? '1' : '0';
    Walk("10");
    return out;
  }

  SimulatedChain& chain_;
};

}  // namespace scanner
