// Marks on chips: which name a text begins with, and what the rest tells.

#include <gtest/gtest.h>

#include <string>

#include "sample.h"

namespace {

using namespace plddb::find;

const char* const kFamilies =
    "<Family Name='F'>"
    "<Device Name='XC9572' CodeName='XC9572'><Package Type='VQ44' PON='XC9572-VQ44'/></Device>"
    "<Device Name='XC9572XL' CodeName='XC9572XL' AliasName='OLDNAME'><Package Type='VQ44' PON='XC9572XL-7VQ44C'/>"
    "<Package Type='TQ100'/><Package Type='CPG236'/></Device>"
    "<Device Name='EP4CE6' CodeName='EP4CE6'><Package Type='TQFP144' PON='EP4CE6E22'/></Device>"
    "<Device Name='10M08S' CodeName='10M08S'><Package Type='EQFP144' PON='MAX_10_10M08SAE144'/></Device>"
    "<Device Name='10CL025' CodeName='10CL025'><Package Type='EQFP144' PON='CYCLONE_10_LP_10CL025E144'/></Device>"
    "<Device Name='T8' CodeName='T8'/>"
    "<Device Name='XC7A35T' CodeName='XC7A35T' Vendor='Xilinx'><Package Type='CSG324'/><Package Type='CPG236'/></Device>"
    "<Device Name='GW1NR-9' CodeName='GW1NR-9' Vendor='Gowin'/><Device Name='GW1NR-9C' CodeName='GW1NR-9C' Vendor='Gowin'/>"
    "<Device Name='GW2A-18' CodeName='GW2A-18'/>"
    "<Device Name='5CGXC5' CodeName='5CGXC5' Vendor='Altera/Intel'><Package Type='FBGA484' "
    "PON='CYCLONE_V_5CGXFC5CF23'/></Device>"
    "<Device Name='5CEA2' CodeName='5CEA2'/>"
    "</Family>";

/// "XC9572XL: VQ44 lead-free, -10, C, [T]"; a package that is not described is in parentheses.
std::string Told(const Matches& matches) {
  std::string text;
  for (const Match& match : matches) {
    if (!match.mark) return std::string(NameOf(match.kind));
    const Mark& mark = *match.mark;
    text += mark.name + ":";
    if (!mark.package.empty()) text += " " + (mark.isPackageDescribed ? mark.package : "(" + mark.package + ")");
    if (mark.isLeadFree) text += " lead-free";
    if (!mark.speed.empty()) text += ", " + mark.speed;
    if (mark.temperature != '\0') text += std::string(", ") + mark.temperature;
    for (const std::string& part : mark.unknown) text += " [" + part + "]";
  }
  return text;
}

TEST(Mark, IsANameAndWhatFollowsItAsFarAsItIsUnderstood) {
  const DeviceListOwner database = Described(kFamilies);
  const struct {
    const char* text;
    const char* told;
  } rows[] = {
      {"XC9572XL-10VQ44C", "XC9572XL: VQ44, -10, C"},
      {"xc9572xl-10vq44i", "XC9572XL: VQ44, -10, I"},
      {"XC9572XL-10VQG44C", "XC9572XL: VQ44 lead-free, -10, C"},
      {"XC9572XL-5TQ100E", "XC9572XL: TQ100, -5, E"},
      {"XC9572XL-5TQ100Z", "XC9572XL: TQ100, -5 [Z]"},
      {"XC9572XL-5PC84C", "XC9572XL: (PC84), -5, C"},
      {"XC9572XLVQ44-10", "XC9572XL: VQ44, -10"},
      {"XC9572XLVQ44-10C", "XC9572XL: VQ44, -10, C"},
      {"XC9572XL VQ44 C", "XC9572XL: VQ44, C"},
      {"XC9572XL_VQ44", "XC9572XL: VQ44"},
      {"XC9572XL-1LVQ44C", "XC9572XL: VQ44, -1L, C"},
      {"XC9572XL-L1VQ44C", "XC9572XL: VQ44, -L1, C"},
      {"XC9572XL-3NVQ44C", "XC9572XL: VQ44, -3N, C"},
      {"XC9572XL-1CPG236C", "XC9572XL: CPG236 lead-free, -1, C"},
      {"XC9572XL-", "begins"},  // an ordering number begins so
      {"XC9572XL--", "XC9572XL:"},
      {"XC9572XL-100VQ44", "XC9572XL: VQ44 [100]"},
      {"XC9572-7VQ44C", "XC9572: VQ44, -7, C"},
      {"XC95720XL", ""},
      {"9572XL-10VQG44", "XC9572XL: VQ44 lead-free, -10"},
      {"OLDNAME-10VQ44", "OLDNAME: VQ44, -10"},
      {"EP4CE6E22C8N", "EP4CE6E22: TQFP144 lead-free, 8, C"},
      {"EP4CE6E22I7", "EP4CE6E22: TQFP144, 7, I"},
      {"EP4CE6F17C8", "EP4CE6: (F17), 8, C"},
      {"10M08SAE144C8G", "10M08SAE144: EQFP144 lead-free, 8, C"},
      {"10CL025YE144C8G", "10CL025: EQFP144 lead-free, 8, C [Y]"},
      {"T8F81C2", "T8: (F81), 2, C"},
      {"T8NONSENSE", ""},
      {"EG-FFVB1156-2-E", ""},
      {"Xilinx XC7A35T-1CSG324C", "XC7A35T: CSG324 lead-free, -1, C"},
      {"AMD XC7A35T-1CPG236C", "XC7A35T: CPG236 lead-free, -1, C"},
      {"amd/xilinx xc7a35tcpg236-1", "XC7A35T: CPG236 lead-free, -1"},
      {"XILINX 7A35T-1CPG236", "XC7A35T: CPG236 lead-free, -1"},
      {"AMDXC7A35T", ""},
      {"XA7A35T-1CPG236I", "XC7A35T: CPG236 lead-free, -1, I [XA]"},
      {"XQ7A35T-1CPG236I", "XC7A35T: CPG236 lead-free, -1, I [XQ]"},
      {"XB7A35T-1CPG236I", ""},
      {"XC7A35T 1CSG324", "XC7A35T: CSG324 lead-free, -1"},
      {"XC7A35T1CSG324C", "XC7A35T: CSG324 lead-free, -1, C"},
      {"XC7A35T-1CSG324CTR", "XC7A35T: CSG324 lead-free, -1, C [TR]"},
      {"XC7A35T-1CSG324CES", "XC7A35T: CSG324 lead-free, -1, C [ES]"},
      {"XC7A35T-1CSG324I4117", "XC7A35T: CSG324 lead-free, -1, I [4117]"},
      {"XC7A35T-1CSG324C-ND", "XC7A35T: CSG324 lead-free, -1, C [ND]"},
      {"XC7A35T-1CSG324CXY", "XC7A35T: CSG324 lead-free, -1 [CXY]"},
      {"XC7A35T\xE2\x80\x93"
       "1CSG324C",
       "XC7A35T: CSG324 lead-free, -1, C"},
      {"XC7A35T\xE2\x88\x92"
       "1CSG324C",
       "XC7A35T: CSG324 lead-free, -1, C"},
      {"XC7A35T\xC2\xA0"
       "CSG324",
       "XC7A35T: CSG324 lead-free"},
      {"XC7A35T\xE2\x84\xA2-1CSG324C", "XC7A35T: CSG324 lead-free, -1, C"},
      {"XC7A35T\xE2\x84\xA2", "exact"},
      {"XC7A-35T-1CSG324", "XC7A35T: CSG324 lead-free, -1"},
      {"XC9572 XL 10VQ44", "XC9572XL: VQ44, -10"},
      {"T8-5C", "T8:, -5, C"},
      {"GW1NR-LV9QN88PC6/I5", "GW1NR-9: (QN88), 6, C [LV] [P] [I5]"},
      {"GW1NR-UV9CQN88C6/I5", "GW1NR-9C: (QN88), 6, C [UV] [I5]"},
      {"gw2a-lv18pg256c8/i7", "GW2A-18: (PG256), 8, C [LV] [I7]"},
      {"GW2A-LV55PG484C8", ""},
      {"GW1NR9", "GW1NR-9:"},
      {"Gowin GW1NR-9", "GW1NR-9:"},
      {"5CGXFC5C6F27C7N", "5CGXC5: (F27) lead-free, 7, C [F] [C6]"},
      {"5CGXFC5CF23C7", "5CGXFC5CF23: FBGA484, 7, C"},
      {"5CEBA2F23C8N", "5CEA2: (F23) lead-free, 8, C [B]"},
      {"5CGXFC7C6F27C7N", ""},
      {"XC9572XL-10VQ44C\xFF", "XC9572XL: VQ44, -10 [C\xFF]"},
      {"XC9572XL-10\n44", "XC9572XL:, -10 [44]"},
  };
  for (const auto& row : rows) EXPECT_EQ(Told(Find({database.get()}, row.text)), row.told) << "row: " << row.text;
}

TEST(Mark, OfAnyLengthIsReadOrRefused) {
  const DeviceListOwner database = Described(kFamilies);
  EXPECT_EQ(Told(Find({database.get()}, "XC9572XL" + std::string(1000, '-'))), "XC9572XL:");
  EXPECT_TRUE(Find({database.get()}, "XC9572XL" + std::string(100000, 'A')).empty());
  EXPECT_TRUE(Find({database.get()}, std::string(100000, '*') + "Q").empty());
  EXPECT_TRUE(Find({database.get()}, std::string("XC9572XL\0-10", 12)).empty());
  EXPECT_TRUE(Find({}, "XC9572XL").empty());
  EXPECT_EQ(Find({nullptr, database.get()}, "XC9572XL").front().database, 1U);
}

}  // namespace
