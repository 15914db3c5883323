// plddb check: how it shows findings, and what it answers to the shell. What it finds is tested in tests/check.

#include <gtest/gtest.h>

#include <fstream>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "Descriptions.h"
#include "json_schema.h"
#include "run_tool.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/words.h"

namespace {

using support::TemporaryFolder;
using Texts = std::vector<std::string>;

const std::string kCorpus = PLDDB_TEST_DIR "/check/corpus";

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
      {"bypass_short.xml",
       ":6:45: error[bypass-ones]: BYPASS is 0x1F, but it is all ones of the instruction register: 0xFF. It is all ones of 5 "
       "bits: more likely IRLength is wrong, which is 8\n",
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

TEST(Check, FindsNothingInTheDataThatIsNotAllowedAtItsPlace) {
  const ToolRun run = RunTool({"check", "--strict", PLDDB_DATA_DIR});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.out, "");
}

TEST(Check, AcceptsTheFilesThatAreShown) {
  for (const char* const file : {"/descriptions/every_list.xml", "/../examples/my_devices.xml"}) {
    EXPECT_EQ(RunTool({"check", "--strict", PLDDB_TEST_DIR + std::string(file)}).exitCode, 0) << "row: " << file;
  }
}

TEST(Check, TellsFindingsFromMisuse) {
  const std::string clean = kCorpus + "/clean_empty.xml";
  const std::string warning = kCorpus + "/name_shadowed.xml";
  const std::string error = kCorpus + "/bypass_zero.xml";
  const std::string load = kCorpus + "/load_broken_xml.xml";
  const struct {
    Texts arguments;
    int exitCode;
  } rows[] = {
      {{clean, clean}, 0},
      {{"--strict", clean}, 0},
      {{clean, warning}, 0},
      {{"--strict", warning, clean}, 1},
      {{error}, 1},
      {{"--strict", error}, 1},
      {{load}, 1},
      {{"missing.xml"}, 2},
      {{"missing.xml", clean}, 2},
      {{"--allow", "unreadable", "missing.xml"}, 2},
      {{error, warning}, 1},
      {{"--strict", warning, error, clean}, 1},
      {{"--strict", "--allow", "bypass-ones", warning, error}, 1},
      {{"--strict", "--allow", "name-hidden", warning}, 0},
      {{"--strict", "--allow", "name-shadowed", warning}, 0},
      {{"--strict", "--allow", "bypass-ones", error}, 0},
  };
  for (const auto& row : rows) {
    Texts arguments = {"check"};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    EXPECT_EQ(RunTool(arguments).exitCode, row.exitCode) << "row: " << testing::PrintToString(row.arguments);
  }
}

TEST(Check, ChecksAllFilesAsOneDatabase) {
  const TemporaryFolder folder;
  const std::string first = (folder.Path() / "a.xml").string();
  const std::string second = (folder.Path() / "b.xml").string();
  const std::string text = R"(<DeviceDatabase>
<Family Name="F" AliasName="G">
<Device Name="A" CodeName="A" AliasName="B" Comm="JTAG" jtagDeviceID="0x057" DeviceIDScanMask="0xFFFFFFFF"/></Family>
</DeviceDatabase>)";
  for (const std::string& file : {first, second}) std::ofstream(file) << text;
  const std::string expected = second + ":2:15: warning[family-shadowed]: the family name \"F\" finds the family of " + first +
                               ":2\n" + second + ":2:29: warning[family-shadowed]: the family name \"G\" finds the family of " +
                               first + ":2\n" + second + ":3:15: warning[name-shadowed]: the name \"A\" finds A (" + first +
                               ":3, family F)\n" + second +
                               ":3:28: warning[code-name-shadowed]: the code name \"A\" finds A (" + first + ":3, family F)\n" +
                               second + ":3:42: warning[alias-shadowed]: the alias name \"B\" finds A (" + first +
                               ":3, family F)\n" + second + ":3:71: warning[id-shadowed]: the IDCODE finds A (" + first +
                               ":3, family F), which comes first and answers to all ids of this device\n";
  EXPECT_EQ(RunTool({"check", first, second}).out, expected);
  EXPECT_EQ(RunTool({"check", folder.Path().string()}).out, expected);
  EXPECT_EQ(RunTool({"check", first}).out, "");
  EXPECT_EQ(RunTool({"check", second}).out, "");
}

/// A path as it is written in a URI.
std::string InUri(const std::string& path) {
  const std::string unreserved = "/-._~";
  std::ostringstream uri;
  for (const char c : path) {
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (isPlain || unreserved.find(c) != unreserved.npos) {
      uri << c;
    } else {
      uri << '%' << std::uppercase << std::hex << std::setw(2) << std::setfill('0') << +static_cast<unsigned char>(c);
    }
  }
  return uri.str();
}

TEST(Check, WritesSarif) {
  const std::string file = kCorpus + "/name_shadowed.xml";
  const auto report = nlohmann::json::parse(RunTool({"check", "--format", "sarif", file}).out);
  const auto& run = report.at("runs").at(0);
  const auto& result = run.at("results").at(0);
  const auto& rules = run.at("tool").at("driver").at("rules");
  EXPECT_EQ(report.at("version"), "2.1.0");
  EXPECT_NE(report.at("$schema").get<std::string>().find("sarif-2.1.0"), std::string::npos);
  EXPECT_EQ(run.at("tool").at("driver").at("name"), "plddb");
  EXPECT_EQ(run.at("results").size(), 1U);
  EXPECT_EQ(result.at("ruleId"), "name-shadowed");
  EXPECT_EQ(rules.at(result.at("ruleIndex").get<std::size_t>()).at("id"), "name-shadowed");
  EXPECT_EQ(result.at("level"), "warning");
  EXPECT_EQ(result.at("message").at("text"), "the name \"PLD1234A\" finds PLD1234A (line 4, family PLD1200)");
  const auto& place = result.at("locations").at(0).at("physicalLocation");
  EXPECT_EQ(place.at("artifactLocation").at("uri"), "file://" + InUri(file));
  EXPECT_EQ(place.at("region").at("startLine"), 9);
  EXPECT_EQ(place.at("region").at("startColumn"), 19);
  EXPECT_EQ(result.at("relatedLocations").at(0).at("physicalLocation").at("region").at("startLine"), 4);
  for (const auto& rule : rules) {
    EXPECT_EQ(rule.size(), 3U);
    EXPECT_FALSE(rule.at("shortDescription").at("text").get<std::string>().empty());
    EXPECT_TRUE(rule.at("defaultConfiguration").at("level") == "error" ||
                rule.at("defaultConfiguration").at("level") == "warning");
  }
}

TEST(Check, WritesSarifThatItsSchemaAllows) {
  const TemporaryFolder folder;
  const std::string strange = (folder.Path() / "a b%\xC3\xA4:.xml").string();
  std::ofstream(strange) << "<DeviceDatabase";
  for (const std::string& file : {kCorpus, kCorpus + "/clean_empty.xml", strange, std::string("missing.xml")}) {
    EXPECT_EQ(SchemaFaults("sarif-2.1.0.json", RunTool({"check", "--format", "sarif", file}).out), "") << "row: " << file;
  }
}

TEST(Check, WritesPathsInSarifAsUris) {
  const TemporaryFolder folder;
  const std::string file = (folder.Path() / "a b%\xC3\xA4:\n.xml").string();
  std::ofstream(file) << "<DeviceDatabase";
  const auto report = nlohmann::json::parse(RunTool({"check", "--format", "sarif", file}).out);
  const std::string uri =
      report.at("runs").at(0).at("results").at(0).at("locations").at(0).at("physicalLocation").at("artifactLocation").at("uri");
  EXPECT_EQ(uri, "file://" + folder.Path().string() + "/a%20b%25%C3%A4%3A%0A.xml");
  const auto empty = nlohmann::json::parse(RunTool({"check", "--format", "sarif", kCorpus + "/clean_empty.xml"}).out);
  EXPECT_EQ(empty.at("runs").at(0).at("results"), nlohmann::json::array());
}

TEST(Check, FindsThatAFileCannotBeRead) {
  const ToolRun run = RunTool({"check", "missing.xml", kCorpus + "/clean_empty.xml"});
  EXPECT_EQ(run.out, "missing.xml:1:1: error[unreadable]: cannot read the file: No such file or directory\n");
  EXPECT_EQ(run.err, "plddb: 1 error and 0 warnings in 2 files\n");
  EXPECT_EQ(run.exitCode, 2);
}

TEST(Check, SaysTheSameInJson) {
  const std::string file = kCorpus + "/fuse_count_shared.xml";
  const ToolRun run = RunTool({"check", "--json", kCorpus + "/clean_empty.xml", file});
  const auto report = nlohmann::ordered_json::parse(run.out);
  std::string lines;
  for (const auto& finding : report) {
    EXPECT_EQ(finding.size(), 7U);
    EXPECT_EQ(finding.at("related").size(), 1U);
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
  const std::string name = (folder.Path() / "forged").string();
  const std::string file = name + "\n.xml";
  std::ofstream(file) << "<DeviceDatabase><Family Name='F'><Device Name='A' CodeName='A' Comm='X&#10;other.xml:1:1: "
                         "error[load]: no&#127;&#x9B;'/>"
                         "</Family></DeviceDatabase>";
  EXPECT_EQ(RunTool({"check", file}).out, name +
                                              "\\x0A.xml:1:70: error[access-mode]: the access mode is \"X\\x0Aother.xml:1:1: "
                                              "error[load]: no\\x7F\\u009B\": expected JTAG, ISP or "
                                              "DUAL\n");
}

TEST(Check, RefusesWrongUsage) {
  for (const char* const arguments : {"check", "check --unknown a.xml", "check --allow nothing a.xml", "check --allow",
                                      "check --format xml a.xml", "check --json --format text a.xml"}) {
    const ToolRun run = RunTool(Words(arguments));
    EXPECT_EQ(run.exitCode, 2) << "row: " << arguments;
    EXPECT_EQ(run.out, "") << "row: " << arguments;
    EXPECT_NE(run.err.find("plddb: error: "), std::string::npos) << "row: " << arguments;
  }
}

}  // namespace
