// plddb show: all that is set of a device, and where it is said.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "json_schema.h"
#include "run_tool.h"
#include "tests/support/read_file.h"

namespace {

using Json = nlohmann::json;

const std::string kFolder = PLDDB_TEST_DIR "/tool/data";

/// Runs it in the folder of the descriptions, so that their names are the same everywhere.
ToolRun Show(const std::string& arguments) {
  std::vector<std::string> shell = {"-c", "cd \"$0\" && exec \"$@\"", kFolder, PLDDB_TOOL, "show"};
  for (const std::string& word : Words(arguments)) shell.push_back(word);
  return RunProgram("/bin/sh", shell);
}

Json ShowJson(const std::string& arguments) {
  const ToolRun run = Show(arguments + " --json");
  EXPECT_EQ(SchemaFaults("show.json", run.out), "") << "row: " << arguments;
  EXPECT_EQ(run.err, "") << "row: " << arguments;
  return Json::parse(run.out);
}

std::string Content(const std::string& file) { return support::ReadFile(kFolder + "/" + file); }

TEST(Show, SaysEverythingThatIsSetAndWhereItIsSaid) {
  const ToolRun run = Show("LISTS --db lists.xml");
  EXPECT_EQ(run.out, Content("lists.show.txt"));
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(Show, TakesTheFirstDeviceThatMatchesAndNamesTheOthers) {
  const struct {
    const char* arguments;
    const char* device;  // its name, and the keys by which it matches
    std::vector<std::string> others;
  } rows[] = {
      {"--db keys.xml pld1234a", "PLD1234A by name", {"PLD1234A by name"}},
      {"--db keys.xml CODE2", "OTHER2 by code-name", {}},
      {"--db keys.xml OLD1", "PLD1234A by alias", {}},
      {"--db keys.xml PLD123xx.jdf", "PLD1234A by jdf", {}},
      {"--db keys.xml PLD1234A_5TQ100C", "PLD1234A by entity", {"PLD1234A by entity"}},
      {"--db keys.xml SAME", "SAME by name", {"PLD5678 by code-name"}},
      {"--db keys.xml PLD56", "PLD5678 by name", {}},
      {"--db keys.xml PLD5678-5BG256", "PLD5678 by name", {}},
      {"--db lists.xml 12345678", "IEEE by id", {"LISTS by id for ISP"}},
      {"--db lists.xml 0xF2345678", "IEEE by id", {}},  // what the mask leaves out does not count
      {"--db lists.xml --db keys.xml LISTS1", "LISTS by code-name", {}},
      {"--db other_keys.xml --db keys.xml --db keys.xml PLD1234A",
       "PLD1234A by name",
       {"PLD1234A by name", "PLD1234A by name", "PLD1234A by name", "PLD1234A by name"}},
  };
  const auto text = [](const Json& name, const Json& keys) {
    std::string listed;
    for (const Json& key : keys) listed += (listed.empty() ? " by " : ", ") + key.get<std::string>();
    return name.get<std::string>() + listed;
  };
  for (const auto& row : rows) {
    const Json shown = ShowJson(row.arguments);
    EXPECT_EQ(text(shown["device"]["fields"]["Name"]["value"], shown["matchedBy"]), row.device) << "row: " << row.arguments;
    std::vector<std::string> others;
    for (const Json& other : shown["others"]) others.push_back(text(other["name"], other["matchedBy"]));
    EXPECT_EQ(others, row.others) << "row: " << row.arguments;
  }
}

TEST(Show, SaysInWhichModesTheDeviceIsABypassDevice) {
  const struct {
    const char* text;
    std::vector<int> modes;
  } rows[] = {
      {"PLAIN", {2, 3, 4, 5, 6}},  // the family is Custom
      {"IEEE", {1, 3, 4, 5, 6}},   // the device's own text for its family counts
      {"lists", {2, 3, 4, 5, 6}},  // finds LISTS of Custom
  };
  for (const auto& row : rows)
    EXPECT_EQ(ShowJson(std::string("--db lists.xml ") + row.text)["bypassModes"], row.modes) << row.text;
  EXPECT_NE(Show("--db keys.xml CODE2").out.find("\nBypass device in modes: none\n"), std::string::npos);
}

TEST(Show, SaysInJsonWhereEachValueStartsInItsLine) {
  const Json shown = ShowJson("--db lists.xml LISTS");
  EXPECT_EQ(shown["file"], "lists.xml");
  EXPECT_EQ(shown["device"]["line"], 14);
  EXPECT_EQ(shown["device"]["column"], 5);
  EXPECT_EQ(shown["device"]["fields"]["FuseNumber"], Json({{"value", "100"}, {"line", 16}, {"column", 25}}));
  EXPECT_EQ(shown["family"]["fields"]["ISCRelease"], Json({{"value", "2"}, {"line", 6}, {"column", 23}}));
}

TEST(Show, SaysWhichTextOfAListMadeARecord) {
  const Json lists = ShowJson("--db lists.xml LISTS")["device"]["lists"];
  const Json& wake = lists["ControlRegOne"][1];
  EXPECT_EQ(wake["line"], 17);
  EXPECT_EQ(wake["fields"]["BitName"], Json({{"value", "Wake"}, {"line", 17}, {"column", 37}}));
  EXPECT_EQ(wake["fields"]["Address"], Json({{"value", "101"}, {"line", 18}, {"column", 37}}));
  EXPECT_EQ(wake["fields"]["Value"], Json({{"value", "0"}, {"line", nullptr}, {"column", nullptr}}));
  const Json& adapter = lists["Package"][1]["lists"]["Adapter"][1];
  EXPECT_EQ(adapter["line"], 37);
  EXPECT_EQ(adapter["fields"]["AdapterName"]["line"], 38);
  EXPECT_EQ(lists["EBR"][0]["lists"]["Entry"][1]["fields"]["Address"], Json({{"value", "6"}, {"line", 30}, {"column", 43}}));
}

TEST(Show, SaysWhereEveryValueOfTheShippedDataIsSaid) {
  const std::string file = PLDDB_DATA_DIR "/xilinx.xml";
  const Json shown = Json::parse(RunTool({"show", "--json", "--db", file, "XC9572XL"}).out);
  std::ifstream stream(file);
  const std::vector<std::string> lines = [&] {
    std::vector<std::string> all;
    for (std::string line; std::getline(stream, line);) all.push_back(line);
    return all;
  }();
  const auto check = [&](const Json& element) {
    for (const auto& [name, field] : element["fields"].items()) {
      const std::string& line = lines.at(field["line"].get<std::size_t>() - 1);
      const std::string said = name + "=\"" + field["value"].get<std::string>() + "\"";
      const std::size_t column = field["column"].get<std::size_t>() - 1 - name.size() - 2;
      EXPECT_EQ(line.substr(column, said.size()), said);
    }
  };
  check(shown["device"]);
  check(shown["family"]);
  for (const Json& package : shown["device"]["lists"]["Package"]) check(package);
  EXPECT_GE(shown["device"]["fields"].size(), 10U);
  EXPECT_GE(shown["device"]["lists"]["Package"].size(), 10U);
}

TEST(Show, OffersNearNamesWhenNothingMatches) {
  const ToolRun run = Show("--db keys.xml PLD1243A");
  EXPECT_EQ(run.err, "plddb: nothing found; did you mean PLD1234A?\n");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(ShowJson("--db keys.xml PLD1243A"), Json({{"device", nullptr}, {"suggestions", {"PLD1234A"}}}));
  EXPECT_EQ(Show("--db keys.xml --json PLD1243A").exitCode, 1);
  EXPECT_EQ(Show("--db keys.xml 0x00000000").err, "plddb: nothing found\n");
}

TEST(Show, MakesSeveralAnErrorWhenOneIsWanted) {
  const ToolRun run = Show("--db keys.xml --unique SAME");
  EXPECT_EQ(run.err, "plddb: 2 devices match, and --unique wants one\n");
  EXPECT_EQ(run.out.rfind("Device SAME *, matched by name\nFile keys.xml\n", 0), 0U) << run.out;
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(Show("--db keys.xml --unique CODE1").exitCode, 0);
}

TEST(Show, RefusesWhatMakesNoSense) {
  for (const char* const arguments : {"", "A B", "--db", "--id A", "--db missing.xml A"}) {
    const ToolRun run = Show(arguments);
    EXPECT_EQ(run.exitCode, 2) << "row: " << arguments;
    EXPECT_NE(run.err.find(": error: "), std::string::npos) << "row: " << arguments << ", message: " << run.err;
    EXPECT_EQ(run.out, "") << "row: " << arguments;
  }
  EXPECT_EQ(RunTool({"show", ""}).exitCode, 2);
}

}  // namespace
