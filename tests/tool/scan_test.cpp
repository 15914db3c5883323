// plddb identify --scan: which texts of scanning tools are recognised, and what is read from them.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "run_tool.h"

namespace {

using Json = nlohmann::json;
using Texts = std::vector<std::string>;

const std::string kScans = PLDDB_TEST_DIR "/tool/data/scans/";

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != text.npos; }

ToolRun Scan(const std::string& input, Texts more = {}) {
  Texts arguments = {"identify", "--scan", "-"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return RunTool(arguments, input);
}

/// The column `key` of every position, "" for null. Of a key of "scan" with a '.' before it.
Texts Column(const std::string& json, const std::string& key) {
  Texts column;
  for (const Json& position : Json::parse(json, nullptr, false)) {
    const Json& value = key[0] == '.' ? position["scan"][key.substr(1)] : position[key];
    column.push_back(value.is_null() ? "" : value.is_string() ? value.get<std::string>() : value.dump());
  }
  return column;
}

Texts Ids(const std::string& input) { return Column(Scan(input, {"--json"}).out, "id"); }

std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

TEST(Scan, RecognisesWhatEachToolPrintsAndInWhichDirection) {
  const struct {
    const char* file;
    const char* firstLine;
    Texts ids;  // empty: no IDCODE there
  } cases[] = {
      {"openocd_log.txt", "Scan: OpenOCD log, 3 TAPs, nearest TDO first", {"0x4BAFF477", "0x06E5E093", "0x59604093"}},
      {"openocd_log_bypass.txt", "Scan: OpenOCD log, 3 TAPs, nearest TDO first", {"0x0362D093", "", "0x59604093"}},
      {"openocd_unexpected.txt", "Scan: OpenOCD log, 2 TAPs, nearest TDO first", {"0x0362D093", "0x59604093"}},
      {"openocd_debug.txt", "Scan: OpenOCD log, 2 TAPs, nearest TDO first", {"0x0362D093", "0x59604093"}},
      {"openocd_warnings.txt", "Scan: OpenOCD suggestions, 3 TAPs, nearest TDO first", {"0x0362D093", "", "0x59604093"}},
      {"openocd_scan_chain.txt",
       "Scan: OpenOCD scan_chain table, 3 TAPs, nearest TDO first",
       {"0x0362D093", "", "0x59604093"}},  // without the TAP that is disabled
      {"openocd_log_and_table.txt", "Scan: OpenOCD log, 3 TAPs, nearest TDO first", {"0x0362D093", "", "0x59604093"}},
      {"urjtag_detect.txt", "Scan: UrJTAG detect, 3 TAPs, nearest TDO first", {"0x0362D093", "0x06E5E093", "0x59604093"}},
      {"urjtag_bypass.txt", "Scan: UrJTAG detect, 3 TAPs, nearest TDO first", {"0x4BAFF477", "", "0x59604093"}},
      {"openfpgaloader_detect.txt",
       "Scan: openFPGALoader --detect, 3 TAPs, nearest TDI first",
       {"0x09604093", "0x4BAFF477", "0x0362D093"}},
      {"openfpgaloader_no_index.txt", "Scan: openFPGALoader --detect, 1 TAP, nearest TDI first", {"0x0362D093"}},
      {"openfpgaloader_unknown.txt", "Scan: openFPGALoader error, 1 TAP, nearest TDO first", {"0x12345677"}},
      {"bare_ids.txt", "Scan: bare ids, 3 TAPs, nearest TDO first", {"0x0362D093", "0x4BAFF477", "0x59604093"}},
  };
  for (const auto& c : cases) {
    const ToolRun text = RunTool({"identify", "--scan", kScans + c.file});
    EXPECT_EQ(FirstLine(text.out), c.firstLine) << "row: " << c.file << ": " << text.err;
    EXPECT_EQ(Column(RunTool({"identify", "--json", "--scan", kScans + c.file}).out, "id"), c.ids) << "row: " << c.file;
  }
}

TEST(Scan, TakesOverNamesAndIrLengths) {
  const struct {
    const char* file;
    Texts names;
    Texts irLengths;
  } cases[] = {
      {"openocd_log.txt", {"auto0.tap", "auto1.tap", "auto2.tap"}, {"4", "8", "8"}},  // lengths from the suggestions
      {"openocd_unexpected.txt", {"xc7.tap", "cpld.tap"}, {"", ""}},
      {"openocd_scan_chain.txt", {"xc7.tap", "old.tap", "a_tap_with_a_name_beyond_its_column.tap"}, {"6", "5", "8"}},
      {"urjtag_detect.txt", {"", "", ""}, {"", "", ""}},
      {"openfpgaloader_detect.txt", {"index 0", "index 1", "index 2"}, {"8", "4", "6"}},
      {"openfpgaloader_no_index.txt", {""}, {""}},
  };
  for (const auto& c : cases) {
    const std::string json = RunTool({"identify", "--json", "--scan", kScans + c.file}).out;
    EXPECT_EQ(Column(json, ".name"), c.names) << "row: " << c.file;
    EXPECT_EQ(Column(json, ".irLength"), c.irLengths) << "row: " << c.file;
  }
}

TEST(Scan, IgnoresTheTextAroundTheToolsWords) {
  const std::string found = "tap/device found: 0x59604093 (mfg: 0x049 (Xilinx), part: 0x9604, ver: 0x5)";
  const std::string bits = "01011001011000000100000010010011";
  const std::string cases[] = {
      "Info : JTAG tap: a.tap " + found,
      "Info : JTAG tap: a.tap " + found + "\r\n",
      "\x1B[32mInfo :\x1B[0m JTAG tap: a.tap tap/device found: \x1B[1;31m0x59604093\x1B[0m (mfg: 0x049)\n",
      "[2024-05-01T12:00:00.123Z] Info : JTAG tap: a.tap " + found + "\n",
      "starting...\n\n\nInfo : JTAG tap: a.tap " + found + "\nlast words\n",
      "Info : JTAG tap: a.tap " + found + "\nError: JTAG tap: a.tap  expected 1 of 1: 0x09604093 (mfg: 0x049)\n",
      " 0 a.tap Y 0x59604093 0x00000000 8 0x01 0x03\r\n",
      "\t0\ta.tap\t Y \t0x59604093\t0x*9604093\t8\t0x01\t0x03\n",
      "Device Id: " + bits + " (0x59604093)\n",
      "jtag> Device Id: " + bits + "\n",
      "Device Id: " + bits + " (0x0000000059604093)\r\n",
      "index 0:\r\n\tidcode 0x59604093\r\n",
      "index 0:\n\tidcode   0x59604093\n\ttype     CPLD\n",
      "idcode: 0x59604093\n",
      "12:00:01 index 0:\n12:00:01 \tidcode 0x59604093\n",
      "0x59604093\r\n",
      "\x1B[32m59604093\x1B[0m",
  };
  for (const std::string& text : cases) EXPECT_EQ(Ids(text), Texts{"0x59604093"}) << "row: " << text;
}

TEST(Scan, TakesTheIdcodesOfADetectionOnlyAfterBlanksOrATime) {
  const struct {
    const char* before;
    bool isTaken;
  } rows[] = {
      {"", true},      {"  ", true},    {"12:00:01 ", true}, {"[12:00] ", true}, {"12:00:01", false}, {"a:b ", false},
      {"1:b ", false}, {"a:1 ", false}, {"1:", false},       {":1 ", false},     {"the ", false},
  };
  for (const auto& row : rows) {
    const ToolRun run = Scan(row.before + std::string("idcode 0x59604093\n"));
    EXPECT_EQ(run.exitCode, row.isTaken ? 0 : 2) << "row: " << row.before;
    EXPECT_EQ(Contains(run.err, "no chain in this text"), !row.isTaken) << "row: " << row.before << ", message: " << run.err;
  }
}

TEST(Scan, TakesTheLastOfSeveralReportsAndReportsIt) {
  const std::string a = "JTAG tap: a.tap tap/device found: 0x59604093 (\nJTAG tap: b.tap tap/device found: 0x0362d093 (\n";
  const std::string b = "JTAG tap: a.tap tap/device found: 0x06e5e093 (\n";
  const std::string table = " 0 a.tap Y 0x59604093 0x00000000 8 0x01 0x03\n 1 b.tap Y 0x0362d093 0x00000000 6 0x01 0x03\n";
  const std::string detect = "IR length: 8\nChain length: 1\nDevice Id: 01011001011000000100000010010011 (0x59604093)\n";
  const struct {
    std::string text;
    Texts ids;
    const char* note;
  } cases[] = {
      {a + "x\n" + a, {"0x59604093", "0x0362D093"}, "  the text shows the chain 2 times in this format; all agree\n"},
      {a + "x\n" + b,
       {"0x06E5E093"},
       "  the text shows the chain 2 times in this format; they differ, and the last was taken\n"},
      {b + "x\n" + a + "x\n" + a,
       {"0x59604093", "0x0362D093"},
       "  the text shows the chain 3 times in this format; they differ, and the last"},
      {table + b, {"0x06E5E093"}, "  the text also holds another chain: OpenOCD scan_chain table\n"},
      {a + table, {"0x59604093", "0x0362D093"}, nullptr},
      {table + table, {"0x59604093", "0x0362D093"}, "2 times in this format; all agree\n"},
      {detect + detect, {"0x59604093"}, "2 times in this format; all agree\n"},
      {"Open On-Chip Debugger 0.12.0\n" + a + "Open On-Chip Debugger 0.12.0\nJTAG tap: c.tap tap/device found: 0x59604093 (\n",
       {"0x59604093"},
       "2 times in this format; they differ, and the last was taken\n"},  // no name comes again
      {"index 0:\n\tidcode 0x1\nindex 1:\n\tidcode 0x3\nindex 0:\n\tidcode 0x59604093\n", {"0x59604093"}, "they differ"},
  };
  for (const auto& c : cases) {
    const ToolRun run = Scan(c.text);
    EXPECT_EQ(Ids(c.text), c.ids) << "row: " << c.text;
    if (c.note == nullptr) {
      EXPECT_FALSE(Contains(run.out, "the text")) << "row: " << c.text << run.out;
    } else {
      EXPECT_TRUE(Contains(Unwrapped(run.out), c.note)) << "row: " << c.text << run.out;
    }
  }
}

TEST(Scan, TellsWhatItsIrLengthsSay) {
  const std::string known = "Device Id: 01011001011000000100000010010011 (0x59604093)\n";
  const std::string foreign = "Device Id: 01001011101011110000010001110111 (0x4BAF0477)\n";
  const struct {
    std::string text;
    const char* note;
  } cases[] = {
      {"IR length: 12\nChain length: 2\n" + known + foreign,
       "  the scan shows that the chain has IR length 12, which leaves 4: --ir 1=4\n"},
      {"IR length: 12\nChain length: 1\n" + known,
       "  the scan shows that the chain has IR length 12, but the known lengths sum up to 8\n"},
      {"IR length: 8\nChain length: 2\n" + known + foreign,
       "  the scan shows that the chain has IR length 8, but the known lengths sum up to 8\n"},
      {"IR length: 8\nChain length: 2\n" + known, "  the tool counts 2 devices, the text shows 1\n"},
      {" 0 auto0.tap Y 0x4baff477 0x00000000 4 0x01 0x03\n",
       "  position 0: the scan shows IR length 4, perhaps a guess; take it with --ir 0=4 or --trust-ir\n"},
      {" 0 a.tap Y 0x59604093 0x00000000 5 0x01 0x03\n", "  position 0: the scan shows IR length 5, but XC9572XL has 8\n"},
      {" 0 a.tap Y 0x0484a093 0x00000000 5 0x01 0x03\n",
       "  position 0: the scan shows IR length 5, but XCKU9P has 6; XCR3064XL has 5\n"},
  };
  for (const auto& c : cases) {
    const ToolRun text = Scan(c.text);
    EXPECT_TRUE(Contains(Unwrapped(text.out), std::string("\nNotes:\n") + c.note)) << "row: " << c.text << text.out;
    EXPECT_EQ(text.err, "") << "row: " << c.text;
    for (const char* format : {"json", "tsv"}) {  // a script reads the output, a person the notes
      EXPECT_EQ(Scan(c.text, {"--format", format}).err, "plddb: warning: " + std::string(c.note + 2)) << "row: " << c.text;
    }
  }
}

TEST(Scan, KeepsATapWithoutAnIdcodeApartFromOneWithALength) {
  const std::string text = "I: discovered 2 TAPs\nI: TAP #0: IR[6] IDCODE=0x0362d093\nI: TAP #1: IR[?] BYPASS\n";
  EXPECT_EQ(Column(Scan(text, {"--json"}).out, "id"), (Texts{"0x0362D093", ""}));
  const std::string tsv = Scan(text, {"--format", "tsv"}).out;
  EXPECT_TRUE(Contains(tsv, "\n1\t\tno-idcode\t")) << tsv;
}

TEST(Scan, TellsOfAFailureThoughATableFollows) {
  const std::string table = " 0 a.tap Y 0x00000000 0x59604093 8 0x01 0x03\n";
  const struct {
    const char* error;
    const char* note;
  } cases[] = {
      {"Error: JTAG scan chain interrogation failed: all ones\n", "failed: the tool read ones only: nothing drives TDO"},
      {"Error: JTAG scan chain interrogation failed: all zeroes\n", "failed: the tool read zeros only: TDO is stuck at 0"},
  };
  for (const auto& c : cases) {
    const ToolRun run = Scan(c.error + table);
    EXPECT_TRUE(Contains(Unwrapped(run.out), c.note)) << "row: " << c.error << run.out;
    EXPECT_EQ(run.exitCode, 1) << "row: " << c.error;
  }
}

TEST(Scan, ReportsNothingForLengthsThatAgree) {
  const ToolRun run = RunTool({"identify", "--scan", kScans + "urjtag_detect.txt"});
  EXPECT_FALSE(Contains(run.out, "Notes:")) << run.out;
  EXPECT_TRUE(Contains(run.out, "IR length of the chain: 22 bits\n")) << run.out;
}

TEST(Scan, WithoutAReadableIdIsRefusedWithItsPlace) {
  const std::string nothing =
      "no chain in this text; expected what OpenOCD (its log or scan_chain), UrJTAG (detect), openFPGALoader (--detect), "
      "xc3sprog, jtagconfig, xsdb (jtag targets), J-Link Commander, probe-rs, Glasgow (jtag-probe), djtgcfg (init) or iMPACT "
      "(batch log) prints, or ids, one per line";
  const std::string eight = "expected an id: 0x and 8 hex digits";
  const struct {
    std::string text;
    std::string error;
  } cases[] = {
      {"", "1:1: error: " + nothing},
      {" \n\n", "1:1: error: " + nothing},
      {"\n\n  some words\n", "3:3: error: " + nothing},
      {"IR length: 8\nChain length: 0\n", "1:1: error: " + nothing},
      {"index 0 is no id\n", "1:1: error: " + nothing},
      {"the idcode 0x59604093\n", "1:1: error: " + nothing},
      {"x\nJTAG tap: a.tap tap/device found: 0x5960", "2:35: error: " + eight},  // cut off
      {"JTAG tap: a.tap tap/device found: ", "1:35: error: " + eight},
      {"JTAG tap: a.tap tap/device found: 0x5960409g\n", "1:35: error: " + eight},
      {"\x1B[32mJTAG tap: a.tap tap/device found: 59604093\n", "1:40: error: " + eight},
      {"AUTO a.tap - use \"jtag newtap a tap -irlen 4\"\n", "1:31: error: expected -expected-id and an id"},
      {"AUTO a.tap - use \"jtag newtap a tap -expected-id 0x12\"\n", "1:50: error: " + eight},
      {" 0 a.tap Y 0x5960 0x00000000 8 0x01 0x03\n", "1:12: error: " + eight},
      {"Device Id: 0101100101100000010000001001001\n", "1:12: error: expected the 32 bits of an id"},
      {"Device Id: 0101100101100000010000001001001x (0x5)\n", "1:12: error: expected the 32 bits of an id"},
      {"Device Id: \n", "1:12: error: expected the 32 bits of an id"},
      {"index 0:\n\tidcode 0x123456789\n", "2:9: error: expected an id: 0x and 1 to 8 hex digits"},
      {"index 0:\n\tidcode 0x\n", "2:9: error: expected an id: 0x and 1 to 8 hex digits"},
      {"0x59604093\nXC9572XL\n", "2:1: error: 'XC9572XL' is not an id: expected 8 hex digits, or 0x and 1 to 8 hex digits"},
      {"x\nError: JTAG scan chain interrogation failed: all ones\n",
       "2:13: error: the tool read ones only: nothing drives TDO, or it is stuck at 1"},
      {"Error: JTAG scan chain interrogation failed: all zeroes\n",
       "1:13: error: the tool read zeros only: TDO is stuck at 0, or the chain has no power"},
  };
  for (const auto& c : cases) {
    const ToolRun run = Scan(c.text);
    EXPECT_EQ(run.err, "stdin:" + c.error + "\n") << "row: " << c.text;
    EXPECT_EQ(run.out, "") << "row: " << c.text;
    EXPECT_EQ(run.exitCode, 2) << "row: " << c.text;
  }
}

TEST(Scan, OfAFileThatCannotBeReadIsRefused) {
  for (const std::string path : {"nowhere.txt", "/"}) {
    const ToolRun run = RunTool({"identify", "--scan", path});
    EXPECT_EQ(run.err.rfind(path + ":1:1: error: cannot read the file: ", 0), 0u) << "row: " << path << ": " << run.err;
    EXPECT_EQ(run.exitCode, 2) << "row: " << path;
  }
}

// --- Hostile texts ----------------------------------------------------------------------------------------------------------

std::string Repeated(const std::string& text, std::size_t size) {
  std::string all;
  while (all.size() < size) all += text;
  return all;
}

TEST(HostileScan, IsRefusedInAFewWords) {
  constexpr std::size_t large = 10'000'000;
  constexpr std::size_t manyLines = 1'000'000;
  std::string binary;
  for (int i = 0; i < 4096; ++i) binary += static_cast<char>(i * 7);
  std::string manyTaps;
  for (int i = 0; i < 20'000; ++i) manyTaps += "tap" + std::to_string(i) + " tap/device found: 0x59604093\n";
  const struct {
    const char* what;
    std::string text;
  } cases[] = {
      {"binary", binary},
      {"zeros", std::string(manyLines, '\0')},
      {"no line end", std::string(large, 'x')},
      {"one line of markers", Repeated("tap/device found: idcode index Device Id: ", large)},
      {"nothing but line ends", std::string(manyLines, '\n')},
      {"escapes", std::string(manyLines, '\x1B')},
      {"an escape without end", "\x1B[" + std::string(manyLines, '1')},
      {"blanks", std::string(manyLines, ' ')},
      {"an id and much else", "0x59604093\n" + Repeated("nonsense\n", manyLines)},
      {"more TAPs than a chain can have", manyTaps},
  };
  for (const auto& c : cases) {
    const ToolRun run = Scan(c.text);
    EXPECT_EQ(run.exitCode, 2) << "row: " << c.what;
    EXPECT_EQ(run.out, "") << "row: " << c.what;
    EXPECT_EQ(run.err.rfind("stdin:", 0), 0u) << "row: " << c.what;
    EXPECT_LT(run.err.size(), 20'000u) << "row: " << c.what;
    EXPECT_FALSE(Contains(run.err, "\x1B")) << "row: " << c.what;
  }
}

TEST(HostileScan, DoesNotReachTheTerminal) {
  const std::string text = "\x1B]0;a title\x07 JTAG tap: \x1B]0;b\x07.tap tap/device found: 0x59604093 (\n";
  for (const char* format : {"text", "tsv", "json", "openocd"}) {
    const ToolRun run = Scan(text, {"--format", format});
    EXPECT_EQ(run.exitCode, 0) << "row: " << format;
    for (const char c : {'\x1B', '\x07'}) EXPECT_FALSE(Contains(run.out + run.err, std::string(1, c))) << "row: " << format;
  }
}

TEST(HostileScan, BesideAChainChangesNothing) {
  const std::string chain = "JTAG tap: a.tap tap/device found: 0x59604093 (\n";
  const std::string noise = Repeated("Debug: 43 6 core.c:1509 jtag_init_inner(): idcode and index\n", 5'000'000);
  EXPECT_EQ(Ids(noise + chain + noise), Texts{"0x59604093"});
}

/// Pieces of all formats, whole and broken, in any order.
std::string RandomText(std::mt19937& random) {
  static const Texts pieces = {"tap/device found: ",
                               " does not have valid IDCODE",
                               " - use \"jtag newtap ",
                               "TapName ",
                               " Y ",
                               "IR length: ",
                               "Chain length: ",
                               "Device Id: ",
                               "index ",
                               "idcode",
                               "irlength",
                               "0x59604093",
                               "Unknown device with IDCODE: ",
                               "0x0362d093",
                               "0x",
                               "0",
                               "7:",
                               "\n",
                               "\n",
                               "\n",
                               "\r\n",
                               " ",
                               "\t",
                               "-irlen ",
                               "-expected-id ",
                               "\"",
                               "a.tap ",
                               "01011001011000000100000010010011",
                               "not supported",
                               "99999999999999999999",
                               "-1",
                               "\x1B[31m",
                               "\x1B[",
                               "#",
                               std::string(1, '\0'),
                               "\xFF",
                               "JTAG tap: "};
  std::string text;
  for (auto left = random() % 60; left > 0; --left) text += pieces[random() % pieces.size()];
  return text;
}

TEST(HostileScan, OfRandomPiecesIsReadOrRefused) {
  std::mt19937 random(20240501);  // always the same texts
  int read = 0;
  for (int i = 0; i < 300; ++i) {
    const std::string text = RandomText(random);
    const ToolRun run = Scan(text, {"--db", PLDDB_TEST_DIR "/tool/data/first.xml", "--json"});
    if (run.exitCode == 2) {
      EXPECT_EQ(run.out, "") << "row: " << text;
      EXPECT_EQ(run.err.rfind("stdin:", 0), 0u) << "row: " << text << run.err;
    } else {
      EXPECT_EQ(run.exitCode, 1) << "row: " << text;  // a chain, of ids that are not in this database
      EXPECT_TRUE(Json::accept(run.out)) << "row: " << text;
      ++read;
    }
  }
  EXPECT_GT(read, 10);
  EXPECT_LT(read, 290);
}

}  // namespace
