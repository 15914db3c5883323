// plddb find: which keys there are, what they answer and how the tool ends.

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "json_schema.h"
#include "run_tool.h"
#include "tests/support/temporary_folder.h"

namespace {

using Json = nlohmann::json;

constexpr const char* kMadeUp = PLDDB_TEST_DIR "/tool/data/keys.xml";

ToolRun Find(const std::string& arguments, const std::vector<std::string>& databases = {kMadeUp}) {
  std::vector<std::string> all = {"find"};
  for (const std::string& database : databases) all.insert(all.end(), {"--db", database});
  const auto words = Words(arguments);
  all.insert(all.end(), words.begin(), words.end());
  return RunTool(all);
}

/// The code names of all matches, each behind its key: "name=PLD1".
std::string Matches(const ToolRun& run) {
  const Json json = Json::parse(run.out);
  std::string text;
  for (const Json& match : json["matches"]) {
    text += (text.empty() ? "" : " ") + match["key"].get<std::string>() + "=" + match["codeName"].get<std::string>();
  }
  return text;
}

TEST(Find, AnswersByEveryKey) {
  const struct {
    const char* arguments;
    const char* matches;
  } rows[] = {
      {"--name pld1234a", "name=CODE1 name=CODE4"},
      {"--name PLD1234", ""},
      {"--code-name code2", "code-name=CODE2"},
      {"--code-name OLD1", ""},  // an alias name
      {"--alias old1", "alias=CODE1"},
      {"--alias CODE1", ""},  // a code name
      {"--alias OLDQ", ""},   // of the one vendor whose devices are not found by alias names
      {"--pon pld1234a-5tq100c", "pon=CODE1 pon=CODE4"},
      {"--pon PLD1234A", "pon=CODE1 pon=CODE4"},  // without what follows the last '-'
      {"--jdf PLD123xx.jdf", "jdf=CODE1"},
      {"--jdf PLD123x.jdf", ""},
      {"--entity PLD1234A_5TQ100C", "entity=CODE1 entity=CODE4"},
      {"--fuses 5828 --full-name code2-7", "full name=CODE2"},
      {"--fuses 5892 --full-name CODE2", "full name=CODE2"},  // 5892 also stands for 5828
      {"--fuses 5829 --full-name CODE2", ""},
      {"--package TQ100 --name pld1234a", "name=CODE1 name=CODE4"},
      {"--package tq100 --name pld1234a", ""},
      {"CODE1", "code-name=CODE1"},
      {"OLD1", "alias=CODE1"},
      {"SAME", "name=CODE3 code-name=SAME"},  // two devices, by different keys
      {"--family Second --name PLD1234A", "name=CODE4"},
      {"--family Second --code-name CODE1", ""},
      {"--family First --alias old1", "alias=CODE1"},
      {"--family Zweite --code-name CODE4", "code-name=CODE4"},  // an alias name of the family
      {"--family Second --pon PLD1234A-5TQ100C", "pon=CODE4"},
      {"--family second --name PLD1234A", "name=CODE4"},  // letter case does not count
      {"--family Second --package TQ100 --name PLD1234A", "name=CODE4"},
      {"--family Second --fuses 100 --full-name CODE4", "full name=CODE4"},
  };
  for (const auto& row : rows) {
    const ToolRun run = Find(std::string(row.arguments) + " --json");
    EXPECT_EQ(Matches(run), row.matches) << "row: " << row.arguments;
    EXPECT_EQ(run.exitCode, *row.matches == '\0' ? 1 : 0) << "row: " << row.arguments;
    EXPECT_EQ(run.err, "") << "row: " << row.arguments;
  }
}

TEST(Find, AnswersByTheAliasNameOfADeviceWithoutCodeName) {
  const support::TemporaryFolder folder;
  const std::string file = (folder.Path() / "alias.xml").string();
  std::ofstream(file) << "<DeviceDatabase><Family Name='F'><Device Name='N' AliasName='OLD'/></Family></DeviceDatabase>";
  EXPECT_EQ(SortedWords(Find("--alias old", {file}).out),
            SortedWords("matched by device family code name packages where alias N F - - " + file + ":1"));
  EXPECT_EQ(Find("--code-name OLD", {file}).exitCode, 1);
}

TEST(Find, PrintsATableOfWhatMatched) {
  const ToolRun run = Find("SAME");
  EXPECT_EQ(SortedWords(run.out), SortedWords("matched by device family code name packages where name SAME * First CODE3 - " +
                                              std::string(kMadeUp) + ":9 code-name PLD5678 Second SAME BG256 " + kMadeUp +
                                              ":15 "
                                              "* More than one device matches; lookups take the first. "));
  EXPECT_LT(run.out.find("keys.xml:9"), run.out.find("keys.xml:15")) << run.out;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(Find, ListsAllDevicesOfAFuseCountAndInJsonTheCandidatesWithTheirMarkers) {
  const ToolRun run = Find("--fuses 5828");
  EXPECT_EQ(SortedWords(run.out), SortedWords("matched by device family code name packages where fuses OTHER2 First CODE2 - " +
                                              std::string(kMadeUp) + ":8 fuses SAME First CODE3 - " + kMadeUp + ":9 "));
  EXPECT_LT(run.out.find("keys.xml:8"), run.out.find("keys.xml:9")) << run.out;
  EXPECT_EQ(run.exitCode, 0);
  const Json json = Json::parse(Find("--fuses 5892 --json").out);
  EXPECT_EQ(json["fuses"], 5892);
  EXPECT_EQ(json["codeNames"], Json({"CODE2", "CODE3"}));
  EXPECT_EQ(json["names"], Json({"SAME"}));
  EXPECT_EQ(Json::parse(Find("--fuses 5828 --json").out)["codeNames"], Json({"CODE2", "CODE3<ISP>", "CODE3<JTAG>"}));
  EXPECT_EQ(Json::parse(Find("05828 --json").out)["matches"], Json::parse(Find("--fuses 5828 --json").out)["matches"]);
  EXPECT_EQ(Find("--fuses 1").exitCode, 1);
}

TEST(Find, OffersNearNamesWhenNothingMatches) {
  const ToolRun run = Find("PLD1243A");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "plddb: nothing found; did you mean PLD1234A?\n");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(Json::parse(Find("--name PLD1243A --json").out)["suggestions"], Json({"PLD1234A"}));
  EXPECT_EQ(Find("QQQQQQQQQQQQ").err, "plddb: nothing found\n");
}

TEST(Find, SaysWhenThereIsNoSuchFamily) {
  const ToolRun run = Find("--family secnd --name PLD1234A");
  EXPECT_EQ(run.err, "plddb: no family is named secnd; did you mean Second?\n");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.exitCode, 1);
}

TEST(Find, RefusesEmptyTexts) {
  for (const char* const option : {"--name", "--fuses", "--family", "--alias"}) {
    EXPECT_EQ(RunTool({"find", "--db", kMadeUp, option, ""}).exitCode, 2) << "row: " << option;
  }
}

TEST(Find, SuggestsOnlyWhatTheKeyCouldMean) {
  EXPECT_EQ(Find("--alias PLD1234A").err, "plddb: nothing found\n");
  EXPECT_EQ(Find("--code-name CODE9").err, "plddb: nothing found; did you mean CODE1, CODE2, CODE3, CODE4?\n");
}

TEST(Find, AsksSeveralDatabasesInTheirOrder) {
  const std::string other = PLDDB_TEST_DIR "/tool/data/other_keys.xml";
  EXPECT_EQ(Matches(Find("--name PLD1234A --json", {kMadeUp, other})), "name=CODE1 name=CODE4 name=OTHER1");
  EXPECT_EQ(Matches(Find("--name PLD1234A --json", {other, kMadeUp})), "name=OTHER1 name=CODE1 name=CODE4");
  EXPECT_EQ(Matches(Find("--family Second --name PLD1234A --json", {other, kMadeUp})), "name=CODE4");
  EXPECT_EQ(Matches(Find("--family Second --package TQ100 --name PLD1234A --json", {other, kMadeUp})), "name=CODE4");
}

TEST(Find, RefusesQuestionsThatMakeNoSense) {
  for (const char* arguments : {"", "--name A --alias B", "--name A TEXT", "--full-name A", "--package TQ100", "--fuses many",
                                "--fuses -1", "--fuses=-1", "--fuses 0x10", "--fuses 0", "--fuses 99999999999999999999",
                                "--package TQ100 --code-name A", "--unknown A", "A B"}) {
    const ToolRun run = Find(arguments);
    EXPECT_EQ(run.exitCode, 2) << "row: " << arguments;
    EXPECT_EQ(run.out, "") << "row: " << arguments;
    EXPECT_EQ(run.err.rfind("plddb: error: ", 0), 0U) << "row: " << arguments << ", message: " << run.err;
  }
}

TEST(Find, EndsWithTheFaultsOfABadFile) {
  const ToolRun run = Find("--name A", {PLDDB_TEST_DIR "/tool/data/missing.xml"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_NE(run.err.find("missing.xml:1:1: error: "), std::string::npos) << run.err;
}

TEST(Find, MarksSeveralAnswersAndMakesThemAnErrorWhenOneIsWanted) {
  const ToolRun run = Find("--name PLD1234A --unique");
  EXPECT_EQ(run.err, "plddb: 2 devices match, and --unique wants one\n");
  EXPECT_NE(run.out.find("PLD1234A *"), std::string::npos) << run.out;
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(Find("--unique CODE1").exitCode, 0);
  EXPECT_EQ(Find("--unique QQQQ").exitCode, 1);
  const Json json = Json::parse(Find("--json --name PLD1234A").out);
  EXPECT_EQ(json["ambiguous"], true);
  EXPECT_EQ(json["matches"][1]["file"], kMadeUp);
  EXPECT_EQ(json["matches"][1]["line"], 12);
  EXPECT_EQ(Json::parse(Find("--json First").out)["ambiguous"], false);  // a family has several devices
}

TEST(Find, ListsTwentyUnlessAllAreWanted) {
  const ToolRun some = RunTool({"find", "--db", PLDDB_DATA_DIR, "'XC95*'"});
  const ToolRun run = RunTool({"find", "--db", PLDDB_DATA_DIR, "--json", "XC7*"});
  EXPECT_EQ(some.exitCode, 1);  // quotes are for shells
  EXPECT_EQ(Json::parse(run.out)["matches"].size(), 20U);
  EXPECT_GT(Json::parse(run.out)["more"], 20);
  const Json all = Json::parse(RunTool({"find", "--db", PLDDB_DATA_DIR, "--json", "--all", "XC7*"}).out);
  EXPECT_EQ(all["matches"].size(), 20U + Json::parse(run.out)["more"].get<std::size_t>());
  EXPECT_EQ(all["more"], 0);
  EXPECT_NE(RunTool({"find", "--db", PLDDB_DATA_DIR, "XC7*"}).out.find(" more; --all lists them\n"), std::string::npos);
}

TEST(Find, TellsWhyNothingIsFoundWhereItIsKnown) {
  const support::TemporaryFolder folder;
  const std::string file = (folder.Path() / "isp.xml").string();
  std::ofstream(file)
      << "<DeviceDatabase><Family Name='F'><Device Name='ISP512' CodeName='ISP512' Comm='ISP' FuseNumber='7600'>"
         "<Package Type='TQ100'/></Device></Family></DeviceDatabase>";
  const struct {
    const char* arguments;
    const char* message;
  } rows[] = {
      {"--fuses 7600 --full-name ISP512",
       "plddb: nothing found: ISP512 is a device for ISP; full names are those of devices for JTAG or DUAL\n"},
      {"--fuses 7601 --full-name ISP512", "plddb: nothing found: ISP512 has 7600 fuses\n"},
      {"--name isp512 --package tq100", "plddb: nothing found: the case of letters counts in package types: TQ100\n"},
      {"--name isp512 --package BG100", "plddb: nothing found\n"},
      {"--pon ISP513", "plddb: nothing found\n"},
  };
  for (const auto& row : rows) {
    const ToolRun run = Find(row.arguments, {file});
    EXPECT_EQ(run.err, row.message) << "row: " << row.arguments;
    EXPECT_EQ(run.exitCode, 1) << "row: " << row.arguments;
  }
}

TEST(Find, ShowsWhatAMarkTells) {
  const ToolRun run = RunTool({"find", "--db", PLDDB_DATA_DIR, "XC9572XL-10VQG44C"});
  EXPECT_NE(run.out.find("\nbegins "), std::string::npos) << run.out;  // "with" is in the next line where the path is long
  EXPECT_NE(run.out.find("\nBegins with XC9572XL; after it: package VQ44, lead-free; speed grade -10;\n"
                         "  temperature grade C (commercial)\n"),
            std::string::npos)
      << run.out;
  const Json mark =
      Json::parse(RunTool({"find", "--db", PLDDB_DATA_DIR, "--json", "XC9572XL-10VQG44C"}).out)["matches"][0]["mark"];
  EXPECT_EQ(mark, Json({{"name", "XC9572XL"},
                        {"package", "VQ44"},
                        {"packageDescribed", true},
                        {"leadFree", true},
                        {"speed", "-10"},
                        {"temperature", "commercial"},
                        {"unknown", Json::array()}}));
}

TEST(Find, WritesJsonThatKeepsToItsSchema) {
  for (const char* const arguments :
       {"XC9572XL", "XC9572XL-10VQG44C", "XC7*", "QQQQ", "--fuses 46656", "--family frist --name A"}) {
    EXPECT_EQ(SchemaFaults("find.json", Find(std::string(arguments) + " --json", {PLDDB_DATA_DIR}).out), "")
        << "row: " << arguments;
  }
}

TEST(Find, ReadsADatabaseFromStandardInput) {
  const ToolRun run =
      RunTool({"find", "--db", "-", "N"}, "<DeviceDatabase><Family Name='F'><Device Name='N'/></Family></DeviceDatabase>");
  EXPECT_NE(run.out.find("  -:1\n"), std::string::npos) << run.out;
  EXPECT_EQ(run.exitCode, 0);
}

}  // namespace
