// Devices in a chain: what a scanner reads from all of them together.

#include "simulated_chain.h"

#include <gtest/gtest.h>

#include "probe.h"

namespace {

using scanner::Bits;
using scanner::Probe;
using scanner::SimulatedChain;
using scanner::TapDescription;

TapDescription Device(int irLength, std::optional<std::uint32_t> idcode = std::nullopt) {
  TapDescription description;
  description.irLength = irLength;
  description.idcode = idcode;
  description.idcode_instruction = 2;
  return description;
}

const std::vector<TapDescription> kChain = {Device(8, 0x59604093), Device(5), Device(38, 0x036DB093)};

TEST(SimulatedChain, ShowsTheIdsNearestTdoFirstAndOneBitForADeviceWithoutOne) {
  SimulatedChain chain(kChain);
  EXPECT_EQ(Probe(chain).ReadDr(32 + 1 + 32 + 4), Bits(0x59604093, 32) + "0" + Bits(0x036DB093, 32) + "1111");
}

TEST(SimulatedChain, ShowsOneBitForEachDeviceInBypass) {
  SimulatedChain chain(kChain);
  Probe probe(chain);
  probe.ShiftIr(std::string(8 + 5 + 38, '1'));
  EXPECT_EQ(probe.ShiftDr("101111"), "000101");
}

TEST(SimulatedChain, GivesEachDeviceTheInstructionMeantForIt) {
  SimulatedChain chain(kChain);
  Probe probe(chain);
  EXPECT_EQ(probe.ShiftIr(Bits(0xFF, 8) + Bits(0x1F, 5) + Bits(2, 38)), Bits(1, 8) + Bits(1, 5) + Bits(1, 38));
  EXPECT_EQ(probe.ReadDr(1 + 1 + 32), "00" + Bits(0x036DB093, 32));  // the last has IDCODE, the others BYPASS
}

TEST(SimulatedChain, IsResetByTrst) {
  SimulatedChain chain(kChain);
  Probe probe(chain);
  probe.ShiftIr(std::string(8 + 5 + 38, '1'));
  chain.Reset();
  probe.Walk("0");
  EXPECT_EQ(probe.ReadDr(32), Bits(0x59604093, 32));
}

TEST(SimulatedChain, MovesAtEdgesOfTckOnly) {
  SimulatedChain chain(kChain);
  Probe probe(chain);
  for (int i = 0; i < 3; ++i) chain.Write(true, true, true);
  for (int i = 0; i < 3; ++i) chain.Write(false, true, true);
  EXPECT_EQ(probe.ReadDr(32), Bits(0x59604093, 32));
}

}  // namespace
