#include <gtest/gtest.h>

#include "known_data.h"
#include "samples.h"

namespace {

using namespace known_data;
using namespace samples;

TEST(XilinxBit, TellsPartAndIdOfEachFamily) {
  const struct {
    const char* part;
    std::string stream;
    Names ids;
    Names packages;
    Names devices;
  } cases[] = {
      {"2v1000fg456", Spartan3Stream(0x01028093), {"01028093/0FFFFFFF"}, {"fg456"}, {"XC2V1000"}},
      {"3s200ft256", Spartan3Stream(0x01414093), {"01414093/0FFFFFFF"}, {"ft256"}, {"XC3S200"}},
      {"3s500efg320", Spartan3Stream(0x01C22093), {"01C22093/0FFFFFFF"}, {"fg320"}, {"XC3S500E"}},
      {"3s100evq100", Spartan3Stream(0x01C10093), {"01C10093/0FFFFFFF"}, {"vq100"}, {"XC3S100E"}},
      {"3s50antqg144", Spartan3AStream(0x02610093), {"02610093/0FFFFFFF"}, {"tqg144"}, {"XC3S50AN"}},
      {"3s50atq144", Spartan3AStream(0x02210093), {"02210093/0FFFFFFF"}, {"tq144"}, {"XC3S50A"}},
      {"3s1400anfgg484", Spartan3AStream(0x02630093), {"02630093/0FFFFFFF"}, {"fgg484"}, {"XC3S1400AN"}},
      {"3sd1800acs484", Spartan3AStream(0x03840093), {"03840093/0FFFFFFF"}, {"cs484"}, {"XC3SD1800A"}},
      {"6slx9tqg144", Spartan6Stream(0x04001093), {"04001093/0FFFFFFF"}, {"tqg144"}, {"XC6SLX9"}},
      {"6slx25tcsg324", Spartan6Stream(0x04024093), {"04024093/0FFFFFFF"}, {"csg324"}, {"XC6SLX25T"}},
      {"6slx25ftg256", Spartan6Stream(0x04004093), {"04004093/0FFFFFFF"}, {"ftg256"}, {"XC6SLX25"}},
      {"4vfx12ff668", WideStream(0x01E58093), {"01E58093/0FFFFFFF"}, {"ff668"}, {"XC4VFX12"}},
      {"5vlx110tff1136", Virtex5Stream(0x02AD6093), {"02AD6093/0FFFFFFF"}, {"ff1136"}, {"XC5VLX110T"}},
      {"5vlx110ff676", Virtex5Stream(0x028D6093), {"028D6093/0FFFFFFF"}, {"ff676"}, {"XC5VLX110"}},
      {"6vlx240tff1156", WideStream(0x04250093), {"04250093/0FFFFFFF"}, {"ff1156"}, {"XC6VLX240T"}},
      {"7a35tcpg236", WideStream(0x0362D093), {"0362D093/0FFFFFFF"}, {"cpg236"}, {"XC7A35T"}},
      {"7a50tcsg324", WideStream(0x0362C093), {"0362C093/0FFFFFFF"}, {"csg324"}, {"XC7A50T"}},
      {"7z007sclg225", WideStream(0x03723093), {"03723093/0FFFFFFF"}, {"clg225"}, {"XC7Z007S"}},
      {"7vx485tffg1761", WideStream(0x03687093), {"03687093/0FFFFFFF"}, {"ffg1761"}, {"XC7VX485T"}},
      {"7v2000tflg1925", WideStream(0x036BF093), {"036BF093/0FFFFFFF"}, {"flg1925"}, {"XC7V2000T"}},
      {"xcku040-ffva1156-2-e", WideStream(0x03822093), {"03822093/0FFFFFFF"}, {"ffva1156"}, {"XCKU040"}},
      {"xczu9eg-ffvb1156-2-e", WideStream(0x04738093), {"04738093/0FFFFFFF"}, {"ffvb1156"}, {"XCZU9"}},
      {"xcku9p-ffve900-2-e", WideStream(0x0484A093), {"0484A093/0FFFFFFF"}, {"ffve900"}, {"XCKU9P"}},
      {"xcku11p-ffva1156-2-e", WideStream(0x04A51093), {"04A51093/0FFFFFFF"}, {"ffva1156"}, {"XCKU11P_CIV"}},
      {"xa7a35tcpg236", WideStream(0x0362D093), {"0362D093/0FFFFFFF"}, {"cpg236"}, {"XC7A35T"}},
      {"XC7A35TCPG236", WideStream(0x0362D093), {"0362D093/0FFFFFFF"}, {"CPG236"}, {"XC7A35T"}},
      {"2s200epq208", VirtexStream(), {}, {"pq208"}, {"XC2S200E"}},
      {"2s200pq208", VirtexStream(), {}, {"pq208"}, {"XC2S200"}},
      {"2s50etq144", VirtexStream(), {}, {}, {}},                                  // XC2S50E is not described; never XC2S50
      {"2vp40ff1152", Spartan3Stream(0x01292093), {"01292093/0FFFFFFF"}, {}, {}},  // never XC2VP4
      {"xczu1cg-sbva484-1-e", WideStream(0x04718093), {"04718093/0FFFFFFF"}, {}, {}},
      {"xck26-sfvc784-2LV-c", WideStream(0x04724093), {"04724093/0FFFFFFF"}, {}, {}},
  };
  for (const auto& c : cases) {
    const std::string bytes = Bit(c.part, c.stream);
    const File file = Read(bytes);
    EXPECT_EQ(FormatOf(file), "xilinx-bit") << c.part;
    EXPECT_EQ(Statements(file, Kind::kName), Names{c.part}) << c.part;
    EXPECT_EQ(Statements(file, Kind::kId), c.ids) << c.part;
    EXPECT_EQ(Statements(file, Kind::kPackage), c.packages) << c.part;
    EXPECT_EQ(DevicesFor(bytes), c.devices) << c.part;
    EXPECT_TRUE(file.faults.empty()) << c.part;
  }
}

TEST(XilinxBit, PlacesAreOffsetsInTheFile) {
  const std::string bytes = Bit("7a35tcpg236", WideStream(0x0362D093), "a.ncd;HW_TIMEOUT=FALSE;UserID=0xFFFFFFFF");
  const File file = Read(bytes);
  for (const Statement& statement : file.statements) {
    const std::string at = statement.kind == Kind::kId ? BigEndian(0x30018001, 4) : std::string("7a35tcpg236");
    EXPECT_EQ(statement.place.offset, bytes.find(at)) << ToText(statement.kind);
    EXPECT_EQ(statement.place.line, 0U);
  }
}

TEST(XilinxBit, SurvivesAnEmptyPartAndOddStreams) {
  const struct {
    const char* what;
    std::string bytes;
    Names devices;
  } cases[] = {
      {"a pointer for several images", Bit("", Words({kDummy, kSync, 0x31C2}, 4)), {}},
      {"no stream", Bit("7a35tcpg236", ""), {"XC7A35T"}},
      {"two ids of a stacked device: the first counts",
       Bit("xcvu9p-flga2104-2-e", WideStream(0x04B31093) + WideStream(0x04B31093)),
       {"XCVU9P"}},
      {"encrypted: CBC before the data",
       Bit("7k325tffg900", Words({kDummy, kSync, 0x30016004, 1, 2, 3, 4, 0x30018001, 0x03651093, 0x30004000})),
       {"XC7K325T"}},
      {"compressed: MFWR after the id", Bit("7k325tffg900", WideStream(0x03651093) + Words({0x30014002, 0, 0})), {"XC7K325T"}},
      {"an id of the data, not of a packet", Bit("", Words({kDummy, kSync, 0x30004003, 0x30018001, 0x0362D093, 0})), {}},
      {"an undescribed id: the name counts", Bit("7a35tcpg236", WideStream(0x0FFF1093)), {"XC7A35T"}},
      {"a long design", Bit("7a35tcpg236", WideStream(0x0362D093), std::string(60000, 'x')), {"XC7A35T"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FormatOf(Read(c.bytes)), "xilinx-bit") << c.what;
    EXPECT_EQ(DevicesFor(c.bytes), c.devices) << c.what;
  }
}

TEST(XilinxBit, AFileCutAnywhereHasAFaultWithItsPlace) {
  const std::string whole = Bit("7a35tcpg236", WideStream(0x0362D093));
  for (std::size_t size = 2; size < whole.size(); ++size) {
    const File file = Read(std::string_view(whole).substr(0, size));
    EXPECT_EQ(FormatOf(file), "xilinx-bit") << size;
    if (file.faults.size() != 1) {
      ADD_FAILURE() << size << ": " << file.faults.size() << " faults";
      continue;
    }
    EXPECT_LE(file.faults[0].place.offset, size) << size;
  }
}

TEST(XilinxStream, IsFoundInAnyBitAndByteOrder) {
  const struct {
    const char* what;
    std::string stream;
    const char* device;
    bool hasLongWords;
  } streams[] = {
      {"wide", WideStream(0x0362D093), "XC7A35T", true},
      {"Spartan-3", Spartan3Stream(0x01C22093), "XC3S500E", true},
      {"Spartan-6", Spartan6Stream(0x04001093), "XC6SLX9", true},
      {"Spartan-3A", Spartan3AStream(0x02210093), "XC3S50A", false},
  };
  for (const auto& c : streams) {
    for (const std::size_t swapped : {std::size_t{1}, std::size_t{2}, std::size_t{4}}) {
      if (swapped == 4 && !c.hasLongWords) continue;
      const std::string bytes = WithSwappedBytes(c.stream, swapped);
      for (const std::string& ordered : {bytes, WithReversedBits(bytes)}) {
        EXPECT_EQ(DevicesFor(ordered), Names{c.device}) << c.what << ", bytes swapped in " << swapped;
        EXPECT_EQ(FormatOf(Read(ordered)), "xilinx-bin") << c.what;
        const std::string image = std::string(100000, '\x5A') + ordered;
        EXPECT_EQ(DevicesFor(image), Names{c.device}) << c.what << ", far from the start";
        EXPECT_EQ(DevicesFor(IntelHex(std::string(300, '\x11') + ordered)), Names{c.device}) << c.what << ", in an .mcs";
      }
    }
  }
}

TEST(IntelHex, WithoutAStreamTellsNothing) {
  const std::string bytes = IntelHex("Some firmware of a microcontroller, which is no stream.");
  const File file = Read(bytes);
  EXPECT_EQ(FormatOf(file), "mcs");
  EXPECT_TRUE(file.statements.empty());
  EXPECT_TRUE(file.faults.empty());
  EXPECT_EQ(DevicesFor(bytes), Names());
}

TEST(IntelHex, FaultsLeadToTheirLine) {
  const struct {
    std::string bytes;
    std::uint64_t line;
  } cases[] = {
      {":10000000000102030405060708\n:00000001FF\n", 1},  // shorter than its length
      {":00000002FE\n:02000000XX00FE\n:00000001FF\n", 2},
      {":0200000001020000\n", 2},  // no end record
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    EXPECT_EQ(FormatOf(file), "mcs") << c.bytes;
    EXPECT_EQ(file.faults.empty() ? 0 : file.faults[0].place.line, c.line) << c.bytes;
  }
}

}  // namespace
