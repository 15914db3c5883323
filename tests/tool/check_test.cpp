// plddb check: how it shows findings, and what it answers to the shell. What it finds is tested in tests/check.

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Descriptions.h"
#include "run_tool.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/words.h"

namespace {

using support::TemporaryFolder;
using Texts = std::vector<std::string>;

const std::string kCorpus = PLDDB_TEST_DIR "/check/corpus";
const std::string kData = PLDDB_DATA_DIR "/xilinx.xml";

TEST(Check, SaysEachFindingInOneLineAndTheNumbersOnStandardError) {
  const struct {
    const char* file;
    const char* line;  // behind the name of the file
    const char* numbers;
  } rows[] = {
      {"clean_empty.xml", "", "plddb: 0 errors and 0 warnings in 1 file\n"},
      {"load_wrong_root.xml", ":2:1: error[load]: unknown element \"Devices\": expected DeviceDatabase\n",
       "plddb: 1 error and 0 warnings in 1 file\n"},
      {"name_shadowed.xml", ":9:19: warning[name-shadowed]: the name \"PLD1234A\" finds PLD1234A (line 4, family PLD1200)\n",
       "plddb: 0 errors and 1 warning in 1 file\n"},
      {"id_shadowed.xml",
       ":8:27: warning[id-shadowed]: the IDCODE finds PLD1234A (line 4, the same family), which comes first and answers to all "
       "ids "
       "of this device\n",
       "plddb: 0 errors and 1 warning in 1 file\n"},
      {"id_shared_crossing_masks.xml",
       ":8:27: warning[id-shared]: the IDCODE 0x11234057 finds PLD1234A (line 4, the same family), which comes first\n",
       "plddb: 0 errors and 1 warning in 1 file\n"},
      {"bypass_short.xml", ":6:45: error[bypass-ones]: BYPASS is 0x1F, but it is all ones of the instruction register: 0xFF\n",
       "plddb: 1 error and 0 warnings in 1 file\n"},
      {"list_surplus.xml",
       ":7:74: error[list-surplus]: \"8\" and what follows is lost: ListControlReg1BitName makes 1 record\n",
       "plddb: 1 error and 0 warnings in 1 file\n"},
  };
  for (const auto& row : rows) {
    const std::string file = kCorpus + "/" + row.file;
    const ToolRun run = RunTool({"check", file});
    EXPECT_EQ(run.out, *row.line == '\0' ? "" : file + row.line) << "row: " << row.file;
    EXPECT_EQ(run.err, row.numbers) << "row: " << row.file;
  }
}

TEST(Check, FindsInTheDataOnlyThePairThatItsReadmeNames) {
  const ToolRun run = RunTool({"check", kData});
  const Texts lines = support::Split(run.out, "\n");
  EXPECT_EQ(run.exit_code, 0);
  ASSERT_EQ(lines.size(), 1U) << run.out;
  EXPECT_NE(lines[0].find(": warning[id-shared]: the IDCODE 0x0484A093 finds XCKU9P (line "), std::string::npos) << lines[0];
  EXPECT_EQ(RunTool({"check", "--strict", kData}).exit_code, 1);
  EXPECT_EQ(RunTool({"check", "--strict", "--allow", "id-shared", kData}).out, "");
  EXPECT_EQ(RunTool({"check", "--strict", "--allow", "id-shared", kData}).exit_code, 0);
}

TEST(Check, AcceptsTheFilesThatAreShown) {
  for (const char* const file : {"/descriptions/every_list.xml", "/../examples/my_devices.xml"}) {
    EXPECT_EQ(RunTool({"check", "--strict", PLDDB_TEST_DIR + std::string(file)}).exit_code, 0) << "row: " << file;
  }
}

TEST(Check, EndsWithTheWorstOfAllFiles) {
  const std::string clean = kCorpus + "/clean_empty.xml";
  const std::string warning = kCorpus + "/name_shadowed.xml";
  const std::string error = kCorpus + "/mask_zero.xml";
  const struct {
    Texts arguments;
    int exitCode;
  } rows[] = {
      {{clean, clean}, 0},
      {{"--strict", clean}, 0},
      {{clean, warning}, 0},
      {{"--strict", warning, clean}, 1},
      {{error, warning}, 2},
      {{"--strict", warning, error, clean}, 2},
      {{"--strict", "--allow", "mask-zero", warning, error}, 1},
      {{"--strict", "--allow", "mask-zero", "--allow", "name-hidden", warning, error}, 0},
  };
  for (const auto& row : rows) {
    Texts arguments = {"check"};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    EXPECT_EQ(RunTool(arguments).exit_code, row.exitCode) << "row: " << testing::PrintToString(row.arguments);
  }
}

TEST(Check, ChecksEachFileByItself) {
  const std::string file = kCorpus + "/clean_one_device.xml";
  const ToolRun run = RunTool({"check", file, file});
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "plddb: 0 errors and 0 warnings in 2 files\n");
}

TEST(Check, FindsThatAFileCannotBeRead) {
  const ToolRun run = RunTool({"check", "missing.xml", kCorpus + "/clean_empty.xml"});
  EXPECT_EQ(run.out, "missing.xml:1:1: error[unreadable]: cannot read the file: No such file or directory\n");
  EXPECT_EQ(run.err, "plddb: 1 error and 0 warnings in 2 files\n");
  EXPECT_EQ(run.exit_code, 2);
}

TEST(Check, SaysTheSameInJson) {
  const std::string file = kCorpus + "/fuse_count_shared.xml";
  const ToolRun run = RunTool({"check", "--json", kCorpus + "/clean_empty.xml", file});
  const auto report = nlohmann::ordered_json::parse(run.out);
  std::string lines;
  for (const auto& finding : report) {
    EXPECT_EQ(finding.size(), 6U);
    lines += finding.at("file").get<std::string>() + ":" + std::to_string(finding.at("line").get<int>()) + ":" +
             std::to_string(finding.at("column").get<int>()) + ": " + finding.at("severity").get<std::string>() + "[" +
             finding.at("code").get<std::string>() + "]: " + finding.at("text").get<std::string>() + "\n";
  }
  EXPECT_EQ(report.size(), 2U);
  EXPECT_EQ(lines, RunTool({"check", file}).out);
  EXPECT_EQ(RunTool({"check", "--json", kCorpus + "/clean_empty.xml"}).out, "[]\n");
}

TEST(Check, ReportsTextsSoThatTheyCannotForgeALine) {
  const TemporaryFolder folder;
  const std::string name = (folder.path() / "forged").string();
  const std::string file = name + "\n.xml";
  std::ofstream(file)
      << "<DeviceDatabase><Family><Device Name='A' CodeName='A' Comm='X&#10;other.xml:1:1: error[load]: no&#127;&#x9B;'/>"
         "</Family></DeviceDatabase>";
  EXPECT_EQ(RunTool({"check", file}).out, name +
                                              "\\x0A.xml:1:61: error[access-mode]: the access mode is \"X\\x0Aother.xml:1:1: "
                                              "error[load]: no\\x7F\\u009B\": expected JTAG, ISP or "
                                              "DUAL\n");
}

TEST(Check, RefusesWrongUsage) {
  for (const char* const arguments : {"check", "check --unknown a.xml", "check --allow nothing a.xml", "check --allow"}) {
    const ToolRun run = RunTool(Words(arguments));
    EXPECT_EQ(run.exit_code, 2) << "row: " << arguments;
    EXPECT_EQ(run.out, "") << "row: " << arguments;
    EXPECT_NE(run.err.find("plddb: error: "), std::string::npos) << "row: " << arguments;
  }
}

}  // namespace
