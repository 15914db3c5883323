// One TAP: its states, its registers, and the edges at which it reads and drives.

#include "tap.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <utility>
#include <vector>

#include "probe.h"

namespace {

using scanner::Bits;
using scanner::Probe;
using scanner::SimulatedChain;
using scanner::Tap;
using scanner::TapDescription;
using S = scanner::TapState;

constexpr S kAllStates[] = {S::kTestLogicReset, S::kRunTestIdle, S::kSelectDrScan, S::kCaptureDr,    S::kShiftDr,   S::kExit1Dr,
                            S::kPauseDr,        S::kExit2Dr,     S::kUpdateDr,     S::kSelectIrScan, S::kCaptureIr, S::kShiftIr,
                            S::kExit1Ir,        S::kPauseIr,     S::kExit2Ir,      S::kUpdateIr};

/// 8 bits of IR, of which the upper ones capture status bits.
TapDescription WithIdcode() {
  TapDescription description;
  description.irLength = 8;
  description.idcode = 0x59604093;
  description.idcode_instruction = 0xFE;
  description.ir_capture = 0b10100101;
  return description;
}

TapDescription WithoutIdcode() {
  TapDescription description;
  description.irLength = 5;
  return description;
}

TEST(TapState, FollowsTheStandard) {
  const struct {
    S start;
    const char* tms;
    std::vector<S> visited;
  } cases[] = {
      {S::kTestLogicReset, "1", {S::kTestLogicReset}},
      {S::kTestLogicReset, "00", {S::kRunTestIdle, S::kRunTestIdle}},
      {S::kRunTestIdle, "111", {S::kSelectDrScan, S::kSelectIrScan, S::kTestLogicReset}},
      {S::kSelectDrScan, "000", {S::kCaptureDr, S::kShiftDr, S::kShiftDr}},
      {S::kShiftDr, "1000", {S::kExit1Dr, S::kPauseDr, S::kPauseDr, S::kPauseDr}},
      {S::kPauseDr, "10", {S::kExit2Dr, S::kShiftDr}},
      {S::kPauseDr, "110", {S::kExit2Dr, S::kUpdateDr, S::kRunTestIdle}},
      {S::kCaptureDr, "111", {S::kExit1Dr, S::kUpdateDr, S::kSelectDrScan}},
      {S::kSelectIrScan, "000", {S::kCaptureIr, S::kShiftIr, S::kShiftIr}},
      {S::kShiftIr, "1000", {S::kExit1Ir, S::kPauseIr, S::kPauseIr, S::kPauseIr}},
      {S::kPauseIr, "10", {S::kExit2Ir, S::kShiftIr}},
      {S::kPauseIr, "110", {S::kExit2Ir, S::kUpdateIr, S::kRunTestIdle}},
      {S::kCaptureIr, "111", {S::kExit1Ir, S::kUpdateIr, S::kSelectDrScan}},
  };
  std::set<std::pair<S, bool>> tried;
  for (const auto& c : cases) {
    S state = c.start;
    std::vector<S> visited;
    for (const char* tms = c.tms; *tms != '\0'; ++tms) {
      tried.insert({state, *tms == '1'});
      state = scanner::NextState(state, *tms == '1');
      visited.push_back(state);
    }
    EXPECT_EQ(visited, c.visited) << "row: state " << static_cast<int>(c.start) << ", TMS " << c.tms;
  }
  EXPECT_EQ(tried.size(), 2 * std::size(kAllStates));
}

TEST(TapState, IsTestLogicResetAfterFiveOnesFromAnywhere) {
  for (const S start : kAllStates) {
    S state = start;
    for (int i = 0; i < 5; ++i) state = scanner::NextState(state, true);
    EXPECT_EQ(state, S::kTestLogicReset) << "row: state " << static_cast<int>(start);
  }
}

TEST(Tap, ShowsItsIdcodeAfterAResetAndThenWhatCameIn) {
  SimulatedChain chain({WithIdcode()});
  EXPECT_EQ(Probe(chain).ShiftDr(Bits(0xDEADBEEF, 32) + "1010"), Bits(0x59604093, 32) + Bits(0xDEADBEEF, 4));
}

TEST(Tap, WithoutIdcodeShowsItsBypassBitAfterAReset) {
  SimulatedChain chain({WithoutIdcode()});
  EXPECT_EQ(Probe(chain).ShiftDr("1011"), "0101");
}

TEST(Tap, ShowsTheRegisterOfItsInstruction) {
  const struct {
    const char* what;
    TapDescription description;
    std::string instruction;
    std::string read;  // for two ones
  } cases[] = {
      {"all ones", WithIdcode(), Bits(0xFF, 8), "01"},
      {"its IDCODE instruction", WithIdcode(), Bits(0xFE, 8), "11"},
      {"a code that it does not know", WithIdcode(), Bits(0x01, 8), "01"},
      {"the IDCODE instruction of another", WithoutIdcode(), Bits(0x1E, 5), "01"},
  };
  for (const auto& c : cases) {
    SimulatedChain chain({c.description});
    Probe probe(chain);
    probe.ShiftIr(c.instruction);
    EXPECT_EQ(probe.ReadDr(2), c.read) << "row: " << c.what;
    probe.Walk("111110");
    EXPECT_EQ(probe.ReadDr(2), c.description.idcode ? "11" : "01") << "row: " << c.what << ", after a reset";
  }
}

TEST(Tap, CapturesItsPatternInTheInstructionRegister) {
  SimulatedChain chain({WithIdcode()});
  EXPECT_EQ(Probe(chain).ShiftIr(Bits(0xFF, 8) + "110"), Bits(0b10100101, 8) + "111");
  SimulatedChain plain({WithoutIdcode()});
  EXPECT_EQ(Probe(plain).ShiftIr("11111"), "10000");  // ...01, the lowest bit first
}

TEST(Tap, KeepsItsRegisterWhileItPauses) {
  SimulatedChain chain({WithIdcode()});
  Probe probe(chain);
  probe.Walk("100");  // Shift-DR
  std::string read;
  for (int i = 0; i < 32; ++i) {
    read += probe.Clock(true, true) ? '1' : '0';
    probe.Walk("0010");  // Pause-DR, twice, and back by Exit2-DR
  }
  EXPECT_EQ(read, Bits(0x59604093, 32));
}

TEST(Tap, ReadsAtTheRisingEdgeAndDrivesAtTheFallingEdge) {
  Tap tap(WithoutIdcode());
  for (const bool tms : {false, true, false, false}) {  // to Shift-DR
    tap.FallingEdge();
    tap.RisingEdge(tms, true);
  }
  EXPECT_EQ(tap.State(), S::kShiftDr);
  EXPECT_TRUE(tap.Tdo());  // not driven yet
  tap.FallingEdge();
  EXPECT_FALSE(tap.Tdo());  // the bypass bit
  tap.RisingEdge(false, true);
  EXPECT_FALSE(tap.Tdo());
  tap.FallingEdge();
  EXPECT_TRUE(tap.Tdo());  // what came in
}

TEST(Tap, IsResetAtOnceByTrst) {
  Tap tap(WithIdcode());
  tap.RisingEdge(false, true);
  EXPECT_EQ(tap.State(), S::kRunTestIdle);
  tap.Reset();
  EXPECT_EQ(tap.State(), S::kTestLogicReset);
  EXPECT_TRUE(tap.Tdo());
}

}  // namespace
