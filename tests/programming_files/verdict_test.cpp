#include <gtest/gtest.h>

#include "known_data.h"
#include "samples.h"

namespace {

using namespace known_data;
using namespace samples;

constexpr std::uint32_t kXc9572Xl = 0x59604093;
constexpr std::uint32_t kXc9536Xl = 0x59602093;
constexpr std::uint32_t kXc2c32a = 0x06E1C093;
constexpr std::uint32_t kXc7a35t = 0x0362D093;
constexpr std::uint32_t kArm = 0x4BA00477;
constexpr std::uint32_t kAtf1508As = 0x0150803F;
constexpr std::uint32_t kAtf1508Asv = 0x0151803F;

std::string AtfSvf() { return Svf("SIR 10 TDI (059);\nSDR 32 TDI (FFFFFFFF) TDO (0150803F) MASK (FFFFFFFF);\n"); }
std::string PaddedSvf(const char* padding) { return Svf(padding + SvfCheck("8", "fe", "f9604093", "0fffffff")); }
std::string AtfXsvf(std::uint32_t mask) {
  return Xsvf(XsvfIr(10, 0x059) + XsvfCheck(32, BigEndian(0x0150803F, 4), BigEndian(mask, 4)));
}

TEST(Verdict, OfAFileAndAChain) {
  const std::string jedec = XilinxJedec("XC9572XL-10-VQ44", "46656");
  const std::string bit = Bit("7a35tcpg236", WideStream(0x0362D093));
  const std::string chainXsvf = Xsvf(XsvfIr(14, 0x3FC9) + XsvfCheck(33, BigEndian(0, 1) + BigEndian(0xF1414093, 4),
                                                                    BigEndian(0, 1) + BigEndian(0x0FFFFFFF, 4)));
  const struct {
    const char* what;
    std::string bytes;
    Ids ids;
    const char* fit;
  } cases[] = {
      {"right device", jedec, {kXc9572Xl}, "fits 0"},
      {"the wrong device of the family", jedec, {kXc9536Xl}, "fits-none"},
      {"one of two", jedec, {kXc9536Xl, kXc9572Xl}, "fits 1"},
      {"two equal devices", jedec, {kXc9572Xl, kXc9572Xl}, "fits-several 0 1"},
      {"two equal devices, other versions", jedec, {0x39604093, kArm, kXc9572Xl}, "fits-several 0 2"},
      {"beside a processor", jedec, {kArm, kXc9572Xl}, "fits 1"},
      {"only a processor", jedec, {kArm}, "fits-none"},
      {"beside a position without an id", jedec, {kXc9572Xl, 0}, "fits 0"},
      {"only a position without an id", jedec, {0}, "unknown"},
      {"a wrong device and no id", jedec, {kXc9536Xl, 0}, "unknown"},
      {"5 V part for a 3.3 V file", XilinxJedec("XC9572XL-10-VQ44", "46656"), {0x39504093}, "fits-none"},
      {"2.5 V part of the same size", XilinxJedec("XC9572XL-10-VQ44", "46656"), {0x09704093}, "fits-none"},
      {"A part for a file without A", XilinxJedec("XC2C32-6-VQ44", "12274"), {kXc2c32a}, "fits-none"},
      {"count alone, one device has it", Jedec("x*QF12278*"), {kXc2c32a}, "fits 0"},
      {"count alone, the wrong chip", Jedec("x*QF12278*"), {kXc9572Xl}, "fits-none"},
      {"count alone, three devices have it", Jedec("x*QF186624*"), {0x09616093}, "unknown"},
      {"count alone, none of the three", Jedec("x*QF186624*"), {kXc9572Xl}, "fits-none"},
      {"a name for all supplies, AS", Jedec("JEDEC file for: ATF1508 TQFP100\n*QF74136*"), {kAtf1508As}, "fits 0"},
      {"a name for all supplies, ASV", Jedec("JEDEC file for: ATF1508 TQFP100\n*QF74136*"), {kAtf1508Asv}, "fits 0"},
      {"a name for one supply", Jedec("JEDEC file for: ATF1508AS\n*QF74136*"), {kAtf1508Asv}, "fits-none"},
      {"name and count of different devices", XilinxJedec("XC9572XL-10-VQ44", "23328"), {kXc9572Xl}, "unknown"},
      {"a name nobody describes", XilinxJedec("XYZ-10-VQ44", "46656"), {kXc9572Xl}, "unknown"},
      {"bitstream", bit, {kXc7a35t}, "fits 0"},
      {"bitstream, any version", bit, {0xF362D093}, "fits 0"},
      {"bitstream of the smaller sister", bit, {0x0362C093}, "fits-none"},
      {"bitstream without a name, undescribed id", Bit("", WideStream(0x0FFF1093)), {0x1FFF1093}, "fits 0"},
      {"bitstream whose id and name differ", Bit("7a50tcsg324", WideStream(0x0362D093)), {kXc7a35t}, "unknown"},
      {"the same, and the device would refuse it", Bit("7a50tcsg324", WideStream(0x0362D093)), {0x0362C093}, "fits-none"},
      {"a described name, an undescribed id", Bit("7a35tcpg236", WideStream(0x0FFF1093)), {0x1FFF1093}, "fits 0"},
      {"a described name, an undescribed id, the described chip",
       Bit("7a35tcpg236", WideStream(0x0FFF1093)),
       {kXc7a35t},
       "fits-none"},
      {"bits that vary are left out", Bit("7v2000tflg1925", WideStream(0x036B3093)), {0x036BF093}, "fits 0"},
      {"SVF for AS and AS", AtfSvf(), {kAtf1508As}, "fits 0"},
      {"SVF for AS and ASV", AtfSvf(), {kAtf1508Asv}, "fits-none"},
      {"SVF, later version under a full mask", AtfSvf(), {0x1150803F}, "fits-none"},
      {"XSVF, exact mask, later die",
       Xsvf(XsvfIr(8, 0xFE) + XsvfCheck(32, BigEndian(0x29504093, 4), BigEndian(0xFFFFFFFF, 4))),
       {0x39504093},
       "fits-none"},
      {"XSVF, exact mask, same die",
       Xsvf(XsvfIr(8, 0xFE) + XsvfCheck(32, BigEndian(0x29504093, 4), BigEndian(0xFFFFFFFF, 4))),
       {0x29504093},
       "fits 0"},
      {"XSVF for AS and ASV", AtfXsvf(0xFFFEEFFF), {kAtf1508Asv}, "fits 0"},
      {"XSVF for AS and ASV, other size", AtfXsvf(0xFFFEEFFF), {0x0150403F}, "fits-none"},
      {"XSVF whose mask passes all sizes", AtfXsvf(0xFFF00000), {kAtf1508As}, "unknown"},
      {"XSVF whose mask passes all sizes, another family", AtfXsvf(0xFFF00000), {kXc9572Xl}, "fits-none"},
      {"no padding, chain of one", PaddedSvf(""), {kXc9572Xl}, "fits 0"},
      {"no padding, chain of two", PaddedSvf(""), {kXc9572Xl, kXc2c32a}, "fits-none"},
      {"padding nearer TDO", PaddedSvf("HIR 8 TDI (ff); TIR 0; HDR 1 TDI (0); TDR 0;\n"), {kXc2c32a, kXc9572Xl}, "fits 1"},
      {"padding nearer TDO, chain the other way round",
       PaddedSvf("HIR 8 TDI (ff); TIR 0; HDR 1 TDI (0); TDR 0;\n"),
       {kXc9572Xl, kXc2c32a},
       "fits-none"},
      {"padding nearer TDI", PaddedSvf("TIR 8 TDI (ff);\nTDR 1 TDI (0);\n"), {kXc9572Xl, kXc2c32a}, "fits 0"},
      {"padding picks one of two equal devices",
       PaddedSvf("HIR 8 TDI (ff); HDR 1 TDI (0);\n"),
       {kXc9572Xl, kXc9572Xl},
       "fits 1"},
      {"padding of another instruction length",
       PaddedSvf("HIR 5 TDI (1f); HDR 1 TDI (0);\n"),
       {kXc2c32a, kXc9572Xl},
       "fits-none"},
      {"padding, wrong device", PaddedSvf("HIR 8 TDI (ff); HDR 1 TDI (0);\n"), {kXc2c32a, kXc9536Xl}, "fits-none"},
      {"padding for a chain of one of an unknown TAP", PaddedSvf("HIR 8 TDI (ff); HDR 1 TDI (0);\n"), {0, kXc9572Xl}, "fits 1"},
      {"two targets",
       PaddedSvf("TIR 8 TDI (ff);\nTDR 1 TDI (0);\n") + "TIR 0; TDR 0; HIR 8 TDI (ff); HDR 1 TDI (0);\n" +
           SvfCheck("8", "01", "f6e1c093", "0fff8fff"),
       {kXc9572Xl, kXc2c32a},
       "fits-several 0 1"},
      {"two targets, one is wrong",
       PaddedSvf("TIR 8 TDI (ff);\nTDR 1 TDI (0);\n") + "TIR 0; TDR 0; HIR 8 TDI (ff); HDR 1 TDI (0);\n" +
           SvfCheck("8", "01", "f6e1c093", "0fff8fff"),
       {kXc9572Xl, kXc9536Xl},
       "fits-none"},
      {"a chain written out", chainXsvf, {0x21414093, 0x05045093}, "fits 0"},
      {"a chain written out, the other way round", chainXsvf, {0x05045093, 0x21414093}, "fits-none"},
      {"a chain written out, alone", chainXsvf, {0x21414093}, "fits-none"},
      {"the ids of a chain", "SDR 64 TDI(0) TDO(064100410BA00477);\n", {0x0BA00477, 0x06410041}, "fits-several 0 1"},
      {"the ids of a chain, the other way round",
       "SDR 64 TDI(0) TDO(064100410BA00477);\n",
       {0x06410041, 0x0BA00477},
       "fits-none"},
      {"only a comment", "//Position 1: xc9572xl\nSIR 8 TDI (e8);\n", {kXc9572Xl}, "fits 0"},
      {"only a comment, wrong chip", "//Position 1: xc9572xl\nSIR 8 TDI (e8);\n", {kXc9536Xl}, "fits-none"},
      {"comments for two devices",
       "!Device #1: EPM240 - a.pof\n!Device #2: EPM570 - b.pof\nSIR 10 TDI (2cc); TIR 10 TDI (3ff); TDR 1 TDI (0); SIR 10 TDI "
       "(2cc); TIR 0; TDR 0; HIR 10 TDI (3ff); HDR 1 TDI (0); SIR 10 TDI (2cc);\n",
       {0x020A10DD, 0x020A20DD},
       "fits-several 0 1"},
      {"comments for two devices, one is wrong",
       "!Device #1: EPM240 - a.pof\n!Device #2: EPM570 - b.pof\nSIR 10 TDI (2cc);\n",
       {0x020A10DD, 0x020A30DD},
       "fits-none"},
      {"a comment twice", "//Position 1: xc9572xl\n//Position 1: XC9572XL\nSIR 8 TDI (e8);\n", {kXc9572Xl}, "fits 0"},
      {"no statement at all", Svf("SIR 8 TDI (e8);\n"), {kXc9572Xl}, "unknown"},
      {"an empty session", Svf(""), {kXc9572Xl}, "unknown"},
      {"a name that shares its id", Pof("EP4CE6E22C8", "SOF"), {0x020F10DD}, "fits 0"},
      {"a name, another id", Pof("EP4CE6E22C8", "SOF"), {0x020F20DD}, "fits-none"},
      {"the version tells the families apart", Pof("EPM7128SLC84-15"), {0x171280DD}, "fits-none"},
      {"the version tells the families apart", Pof("EPM7128AETC100-10"), {0x171280DD}, "fits 0"},
      {"the second die of a package", Pof("5M240ZT144C5"), {0x020A60DD}, "fits 0"},
      {"the first die of a package", Pof("5M240ZT100C5"), {0x020A60DD}, "fits-none"},
      {"Gowin, version in the chip", Gowin(GowinHeader("GW1NR-9", "C", ""), 0x1100481B), {0x1100481B}, "fits 0"},
      {"Gowin, version 0", Gowin(GowinHeader("GW1NR-9", "C", ""), 0x0100481B), {0x1100481B}, "fits 0"},
      {"Gowin, 9 and 9C", Gowin(GowinHeader("GW1NR-9", "C", ""), 0x1100481B), {0x1100581B}, "fits-none"},
  };
  for (const auto& c : cases) {
    const Verdict verdict = JudgeOn(c.bytes, c.ids);
    EXPECT_EQ(FitOn(c.bytes, c.ids), c.fit) << c.what << "\n" << AllReasons(verdict);
    EXPECT_FALSE(verdict.reasons.empty()) << c.what;
  }
}

TEST(Verdict, ReasonsTellWrongDevicesFromChecksAndPaddingsThatRefuse) {
  const struct {
    const char* what;
    std::string bytes;
    Ids ids;
    const char* reason;
  } cases[] = {
      {"wrong device",
       XilinxJedec("XC9572XL-10-VQ44", "46656"),
       {kXc9536Xl},
       "position 0 (0x59602093, XC9536XL): the wrong device"},
      {"check",
       AtfSvf(),
       {0x1150803F},
       "position 0 (0x1150803F, ATF1508AS): the right device, but the file's own check refuses this IDCODE"},
      {"padding",
       PaddedSvf(""),
       {kXc9572Xl, kXc2c32a},
       "the right device, but the file's padding is for 0 devices nearer TDO and 0 nearer TDI; here are 0 devices nearer TDO "
       "and 1 nearer TDI"},
      {"instruction bits",
       PaddedSvf("HIR 5 TDI (1f); HDR 1 TDI (0);\n"),
       {kXc2c32a, kXc9572Xl},
       "the right device, but the file's padding has 5 and 0 instruction bits"},
      {"no id", XilinxJedec("XC9572XL-10-VQ44", "46656"), {0}, "position 0 (no id): cannot be decided: no IDCODE was read here"},
      {"contradiction", XilinxJedec("XC9572XL-10-VQ44", "23328"), {kXc9572Xl}, "the file contradicts itself"},
      {"fuse count", Jedec("x*QF186624*"), {0x09616093}, "can be for any of XC95216, XC95288XL, XC95288XV"},
      {"fuse count", Jedec("x*QF186624*"), {0x09616093}, "XC95216, XC95288XL, XC95288XV share this number of fuses"},
      {"shared id",
       Pof("EP4CE6E22C8", "SOF"),
       {0x020F10DD},
       "10CL006, 10CL010, EP3C10, EP3C5, EP4CE10, EP4CE6 share an IDCODE"},
      {"package",
       XilinxJedec("XC9572XL-10-VQ44", "46656"),
       {kXc9572Xl},
       "package and speed grade cannot be read through JTAG; the file is for VQ44"},
      {"proof", Bit("7a35tcpg236", WideStream(0x0362D093)), {kXc7a35t}, "which the device itself compares"},
      {"comment", "//Position 1: xc9572xl\nSIR 8 TDI (e8);\n", {kXc9572Xl}, "which proves nothing"},
  };
  for (const auto& c : cases) {
    const std::string reasons = AllReasons(JudgeOn(c.bytes, c.ids));
    EXPECT_NE(reasons.find(c.reason), std::string::npos) << c.what << "\n" << reasons;
  }
}

TEST(Verdict, TheStrongestStatementComesFirst) {
  const Verdict verdict = KnownReader().Judge(Read(Bit("7a35tcpg236", WideStream(0x0362D093))));
  ASSERT_GE(verdict.reasons.size(), 2U);
  EXPECT_EQ(verdict.reasons[0].substr(0, 12), "IDCODE write");
  EXPECT_EQ(verdict.reasons[1].substr(0, 4), "name");
}

TEST(Verdict, CountsPositionsFromTheEndThatTheScanStartsWith) {
  plddb::chain::Chain chain = ChainOf({kXc9572Xl, kXc2c32a});
  const File file = Read(PaddedSvf("HIR 8 TDI (ff); HDR 1 TDI (0);\n"));
  const Verdict fromTdo = KnownReader().Judge(file, chain, plddb::chain::End::kTdo);
  const Verdict fromTdi = KnownReader().Judge(file, chain, plddb::chain::End::kTdi);
  EXPECT_STREQ(ToText(fromTdo.fit), "fits-none");
  EXPECT_STREQ(ToText(fromTdi.fit), "fits");
  EXPECT_EQ(fromTdi.positions, std::vector<std::size_t>{0});
}

TEST(Verdict, AGivenInstructionLengthTellsTwoPartsApart) {
  plddb::chain::Chain chain = ChainOf({0x0484A093});
  const File cpld = Read(XilinxJedec("XCR3064XL-10-VQ44", "24481"));
  EXPECT_STREQ(ToText(KnownReader().Judge(cpld, chain).fit), "fits-none");
  chain[0].givenIrLength = 5;
  EXPECT_STREQ(ToText(KnownReader().Judge(cpld, chain).fit), "fits");
}

TEST(Verdict, HasAReasonEvenWhereAFileTellsOnlyItsPackage) {
  const Verdict verdict = KnownReader().Judge(Read("//Part Number: GW1NR-LV9QN88PC6/I5\n"));
  EXPECT_EQ(verdict.reasons, Names{"the file states nothing that tells its device"});
}

TEST(Verdict, WithoutDatabasesOnlyIdsDecide) {
  const Reader reader({});
  const File bit = reader.Read(Bit("7a35tcpg236", WideStream(0x0362D093)));
  EXPECT_TRUE(reader.Judge(bit).devices.empty());
  EXPECT_STREQ(ToText(reader.Judge(bit, ChainOf({kXc7a35t})).fit), "fits");
  EXPECT_STREQ(ToText(reader.Judge(bit, ChainOf({kXc9572Xl})).fit), "fits-none");
  const File jedec = reader.Read(XilinxJedec("XC9572XL-10-VQ44", "46656"));
  EXPECT_STREQ(ToText(reader.Judge(jedec, ChainOf({kXc9572Xl})).fit), "unknown");
}

}  // namespace
