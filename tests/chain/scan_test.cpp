#include <gtest/gtest.h>

#include "Chain.h"

namespace {

using plddb::chain::End;
using plddb::chain::ReadScan;
using plddb::chain::ScanResult;

TEST(ReadScan, GivesTapsWithNamesIdsAndIrLengths) {
  const ScanResult result = ReadScan(
      "Info : JTAG tap: a.tap tap/device found: 0x59604093 (mfg: 0x049 (Xilinx), part: 0x9604, ver: 0x5)\n"
      " 0 a.tap Y 0x59604093 0x00000000 8 0x01 0x03\n");
  ASSERT_TRUE(result.scan);
  EXPECT_EQ(result.scan->format, "OpenOCD log");
  EXPECT_EQ(result.scan->nearest, End::kTdo);
  ASSERT_EQ(result.scan->taps.size(), 1u);
  EXPECT_EQ(result.scan->taps[0].name, "a.tap");
  EXPECT_EQ(result.scan->taps[0].id, 0x59604093u);
  EXPECT_EQ(result.scan->taps[0].irLength, 8u);
  EXPECT_TRUE(result.scan->notes.empty());
}

TEST(ReadScan, GivesThePlaceOfAFaultAndNoScan) {
  const ScanResult result = ReadScan("x\nJTAG tap: a.tap tap/device found: 0x5960");
  EXPECT_FALSE(result.scan);
  ASSERT_EQ(result.faults.size(), 1u);
  EXPECT_EQ(result.faults[0].line, 2);
  EXPECT_EQ(result.faults[0].column, 35);
}

}  // namespace
