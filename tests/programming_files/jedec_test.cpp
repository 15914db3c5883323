#include <gtest/gtest.h>

#include "known_data.h"
#include "samples.h"

namespace {

using namespace known_data;
using samples::Jedec;
using samples::XilinxJedec;

TEST(Jedec, TellsNameFusesAndPackage) {
  const struct {
    const char* what;
    std::string bytes;
    Names names;
    Names fuses;
    Names packages;
    Names devices;
  } cases[] = {
      {"text before STX", XilinxJedec("XC9572XL-10-VQ44", "46656"), {"XC9572XL-10-VQ44"}, {"QF46656"}, {"VQ44"}, {"XC9572XL"}},
      {"other speed and package",
       XilinxJedec("XC9572XL-5-TQ100", "46656"),
       {"XC9572XL-5-TQ100"},
       {"QF46656"},
       {"TQ100"},
       {"XC9572XL"}},
      {"one hyphen", XilinxJedec("XC9536XL-10VQ44", "23328"), {"XC9536XL-10VQ44"}, {"QF23328"}, {"VQ44"}, {"XC9536XL"}},
      {"no hyphen", XilinxJedec("XC2C64A", "25812"), {"XC2C64A"}, {"QF25812"}, {}, {"XC2C64A"}},
      {"lower case", XilinxJedec("xc2c64a-7-vq100", "25812"), {"xc2c64a-7-vq100"}, {"QF25812"}, {"vq100"}, {"XC2C64A"}},
      {"automotive name", XilinxJedec("XA2C32A-6-VQ44", "12278"), {"XA2C32A-6-VQ44"}, {"QF12278"}, {"VQ44"}, {"XC2C32A"}},
      {"XC95288XL, not XC95216",
       XilinxJedec("XC95288XL-10-TQ144", "186624"),
       {"XC95288XL-10-TQ144"},
       {"QF186624"},
       {"TQ144"},
       {"XC95288XL"}},
      {"A and no A differ by four fuses",
       XilinxJedec("XC2C32-6-VQ44", "12274"),
       {"XC2C32-6-VQ44"},
       {"QF12274"},
       {"VQ44"},
       {"XC2C32"}},
      {"no STX",
       "QF46656*QP44*F0*N DEVICE XC9572XL-10-VQ44*",
       {"XC9572XL-10-VQ44"},
       {"QF46656"},
       {"44 pins", "VQ44"},
       {"XC9572XL"}},
      {"several fields a line",
       Jedec("QF46656* QP44 * F0* N DEVICE XC9572XL-7-PC44 *"),
       {"XC9572XL-7-PC44"},
       {"QF46656"},
       {"44 pins", "PC44"},
       {"XC9572XL"}},
      {"CR LF", Jedec("QF46656*\r\nN DEVICE XC9572XL-10-VQ64*\r\n"), {"XC9572XL-10-VQ64"}, {"QF46656"}, {"VQ64"}, {"XC9572XL"}},
      {"fitter, name",
       Jedec("JEDEC file for: ATF1502AS\nCreated on: Mon Jan  1 2001\n*\nQP44*QF16808*F0*"),
       {"ATF1502AS"},
       {"QF16808"},
       {"44 pins"},
       {"ATF1502AS"}},
      {"fitter, any supply",
       Jedec("JEDEC file for: ATF1502 PLCC44\n*\nQP44*\nQF16808*\n"),
       {"ATF1502"},
       {"QF16808"},
       {"PLCC44", "44 pins"},
       {"ATF1502AS", "ATF1502ASV"}},
      {"fitter, ASV",
       Jedec("JEDEC file for: ATF1508ASV TQFP100\n*QP100*QF74136*"),
       {"ATF1508ASV"},
       {"QF74136"},
       {"TQFP100", "100 pins"},
       {"ATF1508ASV"}},
      {"fitter, low power",
       Jedec("JEDEC file for: ATF1504ASL\n*QP44*QF34192*"),
       {"ATF1504ASL"},
       {"QF34192"},
       {"44 pins"},
       {"ATF1504AS"}},
      {"design text that looks like a C field",
       Jedec("CUPL(WM)        5.0a  Serial# 1\nDevice          g16v8as  Library DLIB-h-40-9\n*QP20 *QF2194 *G0 *F0 *"),
       {},
       {"QF2194"},
       {"20 pins"},
       {"ATF16V8"}},
      {"5892 is 5828 with a signature",
       Jedec("CUPL\nDevice  g22v10  Library DLIB-h-40-1\n*QP24*QF5892*"),
       {},
       {"QF5892"},
       {"24 pins"},
       {"ATF22V10C"}},
      {"notes that speak of a device",
       Jedec("x*QF34192*QP44*NOTE device configuration bits*N DEVICE configuration bits 12*N DEVICE BITS*"),
       {},
       {"QF34192"},
       {"44 pins"},
       {"ATF1504AS", "ATF1504ASV"}},
      {"a note over lines",
       Jedec("x*QF55341*NOTE\n0  0  0*N DEVICE XC2C128-7-TQ144*"),
       {"XC2C128-7-TQ144"},
       {"QF55341"},
       {"TQ144"},
       {"XC2C128"}},
      {"a longer unknown name", XilinxJedec("XC9572XLX-10-VQ44", "46656"), {"XC9572XLX-10-VQ44"}, {"QF46656"}, {"VQ44"}, {}},
      {"a device nobody describes", XilinxJedec("XYZ9999-10-VQ44", "46656"), {"XYZ9999-10-VQ44"}, {"QF46656"}, {"VQ44"}, {}},
      {"no fuse count, no name", Jedec("Some design*L0 0101*"), {}, {}, {}, {}},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    EXPECT_EQ(FormatOf(file), "jedec") << c.what;
    EXPECT_EQ(Statements(file, Kind::kName), c.names) << c.what;
    EXPECT_EQ(Statements(file, Kind::kFuseCount), c.fuses) << c.what;
    EXPECT_EQ(Statements(file, Kind::kPackage), c.packages) << c.what;
    EXPECT_EQ(DevicesFor(c.bytes), c.devices) << c.what;
  }
}

TEST(Jedec, NamesAllDevicesOfAFuseCountAndKnowsOneOnlyWhereThereIsOne) {
  const struct {
    const char* fuses;
    Names devices;
    bool isKnown;
  } cases[] = {
      {"186624", {"XC95216", "XC95288XL", "XC95288XV"}, false},
      {"46656", {"XC9572XL", "XC9572XV"}, false},
      {"23328", {"XC9536XL", "XC9536XV"}, false},
      {"93312", {"XC95144XL", "XC95144XV"}, false},
      {"12274", {"XC2C32"}, true},
      {"12278", {"XC2C32A"}, true},
      {"115869", {"XCR3256XL"}, true},
      {"16808", {"ATF1502AS", "ATF1502ASV"}, false},
      {"1", {}, false},
      {"0", {}, false},
  };
  for (const auto& c : cases) {
    const std::string bytes = Jedec("x*QF" + std::string(c.fuses) + "*F0*");
    EXPECT_EQ(DevicesFor(bytes), c.devices) << c.fuses;
    EXPECT_EQ(IsKnown(bytes), c.isKnown) << c.fuses;
  }
}

TEST(Jedec, GivesTheLineOfAStatement) {
  const File file = Read(Jedec("QF46656*\nQP44*\nN DEVICE XC9572XL-10-VQ44*\n", "Text\nbefore\n"));
  std::vector<std::uint64_t> lines;
  for (const Statement& statement : file.statements) lines.push_back(statement.place.line);
  EXPECT_EQ(lines, (std::vector<std::uint64_t>{3, 4, 5, 5}));
}

TEST(Jedec, FaultsLeadToTheirLine) {
  const struct {
    std::string bytes;
    std::uint64_t line;
    const char* text;
  } cases[] = {
      {"\x02QF46656*\nQP44*\n", 3, "the file ends before its ETX"},
      {"\x02", 1, "the file ends before its ETX"},
      {"\x02QF46656*\nQF4665699999999*\x03", 0, ""},  // the first one counts
      {"\x02x*\nQP99999999999*\x03", 2, "expected a number after QP"},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    if (c.line == 0) continue;
    if (file.faults.size() != 1) {
      ADD_FAILURE() << c.bytes << ": " << file.faults.size() << " faults";
      continue;
    }
    EXPECT_EQ(file.faults[0].place.line, c.line) << c.bytes;
    EXPECT_EQ(file.faults[0].text, c.text) << c.bytes;
  }
}

TEST(Jedec, AWrongSumOfTheFileIsNoFault) {
  std::string bytes = XilinxJedec("XC9572XL-10-VQ44", "46656");
  bytes.replace(bytes.size() - 4, 4, "BEEF");
  EXPECT_TRUE(Read(bytes).faults.empty());
}

}  // namespace
