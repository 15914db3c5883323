// plddb identify --format: what scripts and OpenOCD read.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "run_tool.h"

namespace {

const std::string kData = PLDDB_TEST_DIR "/tool/data/";

std::vector<std::string> Split(const std::string& text, char end) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, end);) parts.push_back(part);
  return parts;
}

ToolRun OpenOcd(const std::string& arguments) { return RunTool(Words("identify --format openocd " + arguments)); }

TEST(OpenOcdFormat, DeclaresTheTapsNearestTdoFirst) {
  const struct {
    std::string arguments;
    const char* out;
  } cases[] = {
      {"0x59604093 0x0362D093",
       "jtag newtap xc9572xl tap -irlen 8 -expected-id 0x59604093 -ignore-version\n"
       "jtag newtap xc7a35t tap -irlen 6 -expected-id 0x0362d093 -ignore-version\n"},
      {"0x59604093 0x4BAFF477",
       "# Incomplete: the IR length is not known at position 1.\n"
       "jtag newtap xc9572xl tap -irlen 8 -expected-id 0x59604093 -ignore-version\n"
       "# jtag newtap unknown1 tap -irlen ? -expected-id 0x4baff477  give --ir 1=LENGTH\n"},
      {"0x59604093 0x4BAFF477 --ir 1=4",
       "jtag newtap xc9572xl tap -irlen 8 -expected-id 0x59604093 -ignore-version\n"
       "jtag newtap unknown1 tap -irlen 4 -expected-id 0x4baff477\n"},
      {"0x59604093 0x59604093 0x59604093",  // each name once
       "jtag newtap xc9572xl tap -irlen 8 -expected-id 0x59604093 -ignore-version\n"
       "jtag newtap xc9572xl_2 tap -irlen 8 -expected-id 0x59604093 -ignore-version\n"
       "jtag newtap xc9572xl_3 tap -irlen 8 -expected-id 0x59604093 -ignore-version\n"},
      {"0x00000000 0xFFFFFFFF 0x59604092 --ir 0=4 --ir 1=4 --ir 2=4",  // none of them is an IDCODE
       "jtag newtap unknown0 tap -irlen 4\n"
       "jtag newtap unknown1 tap -irlen 4\n"
       "jtag newtap unknown2 tap -irlen 4\n"},
      {"--db " + kData + "access_modes.xml --comm DUAL 0xABCDEF41",
       "# position 0: ISPONLY answers by the low byte of its ISP identifier only (DUAL), which is hardly evidence\n"
       "jtag newtap isponly tap -irlen 5 -expected-id 0xabcdef41\n"},
      {"--db " + kData + "access_modes.xml --comm DUAL 0x01234000",  // bit 0 is 0: has a match, but is no IDCODE
       "# position 0: JTAGONLY answers by the low byte of its ISP identifier only (DUAL), which is hardly evidence\n"
       "# position 0: more than one device matches; most exact first: JTAGONLY (-irlen 9, low byte only (DUAL), taken), "
       "nameless (-irlen 8, low byte only (DUAL)), NOCODE (-irlen -, low byte only (DUAL))\n"
       "jtag newtap jtagonly tap -irlen 9\n"},
      {"0x0484A093",
       "# position 0: more than one device matches; most exact first: XCKU9P (-irlen 6, masked 0x0FFFFFFF, taken), "
       "XCR3064XL (-irlen 5, masked 0x0FFF8FFF)\n"
       "jtag newtap xcku9p tap -irlen 6 -expected-id 0x0484a093 -ignore-version\n"},
      {"--scan " + kData + "scans/openocd_log_bypass.txt --ir 1=8",
       "# Scan: OpenOCD log, 3 TAPs, nearest TDO first\n"
       "jtag newtap xc7a35t tap -irlen 6 -expected-id 0x0362d093 -ignore-version\n"
       "jtag newtap unknown1 tap -irlen 8\n"
       "jtag newtap xc9572xl tap -irlen 8 -expected-id 0x59604093 -ignore-version\n"},
      {"--scan " + kData + "scans/openfpgaloader_detect.txt",  // counts from TDI, and leaves out versions
       "# Scan: openFPGALoader --detect, 3 TAPs, nearest TDI first\n"
       "# Incomplete: the IR length is not known at position 1.\n"
       "# position 1: the scan shows IR length 4, perhaps a guess; take it with --ir 1=4 or --trust-ir\n"
       "# The lines are in the order nearest TDO first: the last position is the first line.\n"
       "jtag newtap xc7a35t tap -irlen 6 -expected-id 0x0362d093 -ignore-version\n"
       "# jtag newtap unknown1 tap -irlen ? -expected-id 0x4baff477 -ignore-version  give --ir 1=LENGTH\n"
       "jtag newtap xc9572xl tap -irlen 8 -expected-id 0x09604093 -ignore-version\n"},
  };
  for (const auto& c : cases) {
    const ToolRun run = OpenOcd(c.arguments);
    EXPECT_EQ(run.out, c.out) << "row: " << c.arguments;
    EXPECT_EQ(run.err, "") << "row: " << c.arguments;
  }
}

TEST(OpenOcdFormat, GivesNamesThatAreWordsWhateverADeviceIsCalled) {
  const ToolRun run = OpenOcd("--db " + kData + "odd_names.xml 0x01000043 0x02000043 0x03000043 0x04000043 0x05000043");
  const std::vector<std::string> lines = Split(run.out, '\n');
  std::set<std::string> names;
  for (const std::string& line : lines) {
    if (line[0] == '#') {
      EXPECT_EQ(line.find('\\'), line.npos) << "row: " << line;
      continue;
    }
    const std::vector<std::string> words = Words(line);
    ASSERT_EQ(words.size(), 9u) << "row: " << line;  // with -ignore-version
    EXPECT_EQ(words[2].find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_"), std::string::npos) << "row: " << line;
    EXPECT_TRUE(names.insert(words[2]).second) << "row: " << line;
  }
  EXPECT_EQ(names.size(), 5u) << run.out;
}

TEST(TsvFormat, HasALineForEachPositionAndAlwaysTheSameColumns) {
  const std::string head =
      "position\tid\tstate\tdevice\tcode_name\tfamily\tir_length\tidcode_instruction\tbypass_instruction\tpackages\t"
      "candidates\tversion\tpart\tmanufacturer\tvendor\tnearest\tscan\tscan_name\tscan_ir_"
      "length\torder\ttool\tkind\thint\tmaker\tmisread";
  const struct {
    std::string arguments;
    const char* line;  // the first after the head
  } cases[] = {
      {"0x59604093",
       "0\t0x59604093\tknown\tXC9572XL\tXC9572XL\tXC9500XL\t8\t0xFE\t0xFF\tCS48 PC44 TQ100 VQ44 VQ64\t"
       "XC9572XL: masked 0x0FFFFFFF\t\t\t\tXilinx\t\t\t\t\tnearest TDO first\t\tlogic\t\t\t"},
      {"0x0484A093",
       "0\t0x0484A093\tambiguous\tXCKU9P\tXCKU9P\tKintex UltraScale+\t6\t0x09\t0x3F\t\t"
       "XCKU9P: masked 0x0FFFFFFF; XCR3064XL: masked 0x0FFF8FFF\t\t\t\tXilinx\t\t\t\t\tnearest TDO first\t\tlogic\t\t\t"},
      {"--db " + kData + "exactness.xml --comm DUAL 0x51234043",
       "0\t0x51234043\tambiguous\tWIDE\twide\tLoose\t8\t\t\t\t"
       "EXACT: all 32 bits; PART: masked 0x0FFFFFFF; PART2: masked 0x0FFFFFFF; WIDE: masked 0x0FF00FFF; "
       "LOW: low byte only (DUAL)\t\t\t\t\t\t\t\t\tnearest TDO first\t\tlogic\t\t\t"},
      {"0x4BAFF477 --ir 0=4",
       "0\t0x4BAFF477\tunknown\t\t\t\t4\t\t\t\t\t0x4\t0xBAFF\t0x23B\tARM\t\t\t\t\tnearest TDO first\t\tidcode\t\tARM Ltd\t"},
      {"--db " + kData + "neighbours.xml 0x41237155",
       "0\t0x41237155\tunknown\t\t\t\t\t\t\t\t\t0x4\t0x1237\t0x0AA\t\tTWOBITS: bit 1 differs: a wiring fault?\t\t\t\tnearest "
       "TDO first\t\tidcode\t\tHagiwara Solutions Co Ltd (or Liveseek: bank 17 reads as 1)\t"},
      {"0xFFFFFFFF", "0\t0xFFFFFFFF\tstuck-at-1\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\tnearest TDO first\t\tstuck-at-1\t\t\t"},
      {"--ir 0=8 --scan " + kData + "scans/openocd_only_bypass.txt",
       "0\t\tno-idcode\t\t\t\t8\t\t\t\t\t\t\t\t\t\tOpenOCD log\tauto0.tap\t8\tnearest TDO first\tOpenOCD\tno-idcode\t\t\t"},
  };
  for (const auto& c : cases) {
    const ToolRun run = RunTool(Words("identify --format tsv " + c.arguments));
    const std::vector<std::string> lines = Split(run.out, '\n');
    ASSERT_EQ(lines.size(), 2u) << "row: " << c.arguments << run.err;
    EXPECT_EQ(lines[0], head) << "row: " << c.arguments;
    EXPECT_EQ(lines[1], c.line) << "row: " << c.arguments;
  }
}

TEST(TsvFormat, KeepsItsCellsApartWhateverADeviceIsCalled) {
  const ToolRun run = RunTool(
      Words("identify --format tsv --db " + kData + "odd_names.xml 0x01000043 0x02000043 0x03000043 0x04000043 0x05000043"));
  const std::vector<std::string> lines = Split(run.out, '\n');
  EXPECT_EQ(lines.size(), 6u) << run.out;
  for (const std::string& line : lines) EXPECT_EQ(std::count(line.begin(), line.end(), '\t'), 24) << "row: " << line;
}

TEST(OpenOcdFormat, ComparesTheVersionOnlyWhereTheMaskHasIt) {
  const struct {
    std::string arguments;
    bool ignores;
  } cases[] = {
      {"0x59604093", true},
      {"0x4BA00477", false},  // this revision is a device
      {"0x4BAFF477 --ir 0=4", false},
      {"--db " + kData + "exactness.xml --comm DUAL 0x000000FF --ir 0=4", false},
      {"--db " + kData + "access_modes.xml --comm DUAL 0xABCDEF41", false},  // the low byte has no version
      {"--scan " + kData + "scans/openfpgaloader_detect.txt --ir 1=4", true},
  };
  for (const auto& c : cases) {
    const std::string out = OpenOcd(c.arguments).out;
    EXPECT_EQ(out.find("-ignore-version") != out.npos, c.ignores) << "row: " << c.arguments << "\n" << out;
  }
}

TEST(SvgFormat, DrawsABoxForEachTapAndMarksWhatIsOpen) {
  const struct {
    std::string ids;
    const char* part;
  } cases[] = {
      {"0x59604093", "XC9572XL"},
      {"0x59604093", "0x59604093"},
      {"0x59604093", "IR 8 bits"},
      {"0x59604093", ">TDI<"},
      {"0x59604093", ">TDO<"},
      {"0x4BAFF477", "? unknown"},
      {"0x4BAFF477", "class=\"box unknown\""},
      {"0x4BAFF477", "IR length not known"},
      {"0x0484A093", "* 2 devices match"},
      {"--comm ISP 0x141 --db " + kData + "access_modes.xml", "ISPONLY"},
  };
  for (const auto& c : cases) {
    const std::string out = RunTool(Words("identify --format svg " + c.ids)).out;
    EXPECT_NE(out.find(c.part), out.npos) << "row: " << c.ids << " " << c.part << "\n" << out;
  }
}

TEST(SvgFormat, IsWellFormedWhateverADeviceIsCalledAndHoweverManyThereAre) {
  std::string many;
  for (int i = 0; i < 40; ++i) many += " 0x0" + std::to_string(i % 5 + 1) + "000043";
  for (const int count : {1, 2, 5, 6, 40}) {
    const std::string ids = many.substr(0, static_cast<std::size_t>(count) * 11);
    const ToolRun run = RunTool(Words("identify --format svg --db " + kData + "odd_names.xml" + ids));
    const ToolRun parsed = RunProgram("/usr/bin/env",
                                      {"python3", "-c",
                                       "import sys, xml.dom.minidom as d;"
                                       "n = d.parseString(sys.stdin.buffer.read()); print(len(n.getElementsByTagName('g')))"},
                                      run.out);
    EXPECT_EQ(parsed.out, std::to_string(count) + "\n") << "row: " << count << parsed.err << run.out;
  }
}

TEST(SvgFormat, GoesFromTdiToTdoWhateverTheOrderOfTheIds) {
  for (const char* order : {"tdo", "tdi"}) {
    const std::string out = RunTool(Words(std::string("identify --format svg 0x59604093 0x0362D093 --order ") + order)).out;
    EXPECT_EQ(out.find(">XC9572XL<") < out.find(">XC7A35T<"), order == std::string("tdi")) << "row: " << order << out;
  }
}

TEST(Expect, AnswersPositionByPositionAndByItsExitCode) {
  const struct {
    const char* names;
    const char* ids;
    int exitCode;
    const char* out;
  } cases[] = {
      {"XC9572XL", "0x59604093", 0, "position 0: XC9572XL, as expected\n"},
      {"xc9572xl,xc7a35t", "0x59604093 0x0362D093", 0, "position 0: xc9572xl, as expected\nposition 1: xc7a35t, as expected\n"},
      {"XC9500XL, Artix-7", "0x59604093 0x0362D093", 0,
       "position 0: XC9500XL, as expected\nposition 1: Artix-7, as expected\n"},
      {"XC9572XL-10VQ44C", "0x59604093", 0, "position 0: XC9572XL-10VQ44C, as expected\n"},
      {"XCR3064XL", "0x0484A093", 0, "position 0: XCR3064XL, as expected\n"},  // one of several that match
      {"XC9536XL", "0x59604093", 1, "position 0: expected XC9536XL, found XC9572XL (0x59604093)\n"},
      {"XC9572XL,XC9572XL", "0x59604093", 1,
       "position 0: XC9572XL, as expected\nposition 1: expected XC9572XL, found nothing\n"},
      {"XC9572XL", "0x59604093 0x0362D093", 1,
       "position 0: XC9572XL, as expected\nposition 1: found XC7A35T (0x0362D093), expected nothing\n"},
      {"XC9572XL", "0x4BAFF477", 1, "position 0: expected XC9572XL, found an unknown device (0x4BAFF477)\n"},
      {"XC7A35T,XC9572XL", "0x59604093 0x0362D093", 1,
       "position 0: expected XC7A35T, found XC9572XL (0x59604093)\n"
       "position 1: expected XC9572XL, found XC7A35T (0x0362D093)\n"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> arguments = Words(std::string("identify ") + c.ids);
    arguments.insert(arguments.end(), {"--expect", c.names});
    const ToolRun run = RunTool(arguments);
    EXPECT_EQ(run.out, c.out) << "row: " << c.names;
    EXPECT_EQ(run.err, "") << "row: " << c.names;
    EXPECT_EQ(run.exitCode, c.exitCode) << "row: " << c.names;
  }
}

TEST(Expect, RefusesAnEmptyName) {
  for (const char* names : {",", "XC9572XL,", ",XC9572XL", "XC9572XL,,XC7A35T", " ", "XC9572XL, "}) {
    const ToolRun run = RunTool({"identify", "0x59604093", "--expect", names});
    EXPECT_EQ(run.exitCode, 2) << "row: " << names;
    EXPECT_EQ(run.out, "") << "row: " << names;
  }
}

TEST(JsonFormat, IsTheSameByItsTwoNames) {
  const ToolRun flag = RunTool(Words("identify --json 0x59604093 0x4BAFF477"));
  const ToolRun format = RunTool(Words("identify --format json 0x59604093 0x4BAFF477"));
  EXPECT_EQ(flag.out, format.out);
  EXPECT_EQ(flag.exitCode, format.exitCode);
}

}  // namespace
