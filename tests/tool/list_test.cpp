// plddb list: what there is, and where.

#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "json_schema.h"
#include "run_tool.h"

namespace {

using Json = nlohmann::json;

const std::string kFolder = PLDDB_TEST_DIR "/tool/data/";
const std::string kLists = kFolder + "lists.xml";
const std::string kKeys = kFolder + "keys.xml";

ToolRun List(const std::vector<std::string>& databases, const std::vector<std::string>& arguments = {}) {
  std::vector<std::string> all = {"list"};
  for (const std::string& database : databases) all.insert(all.end(), {"--db", database});
  all.insert(all.end(), arguments.begin(), arguments.end());
  return RunTool(all);
}

TEST(List, SaysWhichFamiliesThereAreAndHowManyDevicesTheyHave) {
  const ToolRun run = List({kLists}, {"--all"});
  EXPECT_EQ(run.out,
            "family        devices  notes\n"
            "Hidden & old  0        hidden\n"
            "Custom        2        also named Own\n"
            "Own           2\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(List, SaysWhichDevicesAFamilyHas) {
  const ToolRun run = List({kKeys}, {"--family", "First"});
  EXPECT_EQ(run.out,
            "device    id  scan mask  IR length  packages\n"
            "PLD1234A  -   -          -          TQ100\n"
            "OTHER2    -   -          -          -\n"
            "SAME      -   -          -          -\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(List, HasTheDevicesOfAllFamiliesOfThatNameOrAliasName) {
  EXPECT_EQ(List({kLists}, {"--family", "Own"}).out,
            "device  family  id                scan mask   IR length  packages\n"
            "PLAIN   Custom  -                 -           -          -\n"
            "LISTS   Custom  0x12345678 (ISP)  0xFFFFFFFF  -          TQ100 BG256\n"
            "IEEE    Own     0x12345678        0x0FFFFFFF  10         -\n"
            "lists   Own     -                 -           -          -\n");
}

TEST(List, SaysAllThatIsToBeNotedOfAFamily) {
  EXPECT_EQ(List({kFolder + "long_texts.xml"}, {"--all"}).out,
            "family                       devices  notes\n"
            "family of the first devices  2        also named alias of the first family,\n"
            "                                      hidden\n"
            "alias of the first family    1\n"
            "alias of the first family    0\n");
}

TEST(List, NamesTheFilesWhereThereAreSeveral) {
  EXPECT_EQ(List({kLists, kKeys}, {"--all", "--format", "tsv"}).out,
            "family\tdevices\tnotes\tfile\n"
            "Hidden & old\t0\thidden\t" +
                kLists + "\nCustom\t2\talso named Own\t" + kLists + "\nOwn\t2\t\t" + kLists + "\nFirst\t3\t\t" + kKeys +
                "\nSecond\t2\talso named Zweite\t" + kKeys + "\n");
  EXPECT_NE(List({kLists, kKeys}, {"--family", "Second"}).out.find("\n\nFile: " + kKeys + "\n"), std::string::npos);
  const std::string all = List({kLists, kKeys}, {"--devices", "--all"}).out;
  EXPECT_NE(all.find("  lists.xml\n"), std::string::npos) << all;
  EXPECT_NE(all.find("  keys.xml\n"), std::string::npos) << all;
  EXPECT_NE(all.find("\n\nFolder: " + kFolder + "\n"), std::string::npos) << all;
}

TEST(List, OffersNearNamesOfFamilies) {
  const ToolRun run = List({kKeys}, {"--family", "frist"});
  EXPECT_EQ(run.err, "plddb: no family is named frist; did you mean First?\n");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(List({kKeys}, {"--family", "Qqqqqqqq"}).err, "plddb: no family is named Qqqqqqqq\n");
}

TEST(List, WritesJsonThatKeepsToItsSchema) {
  for (const std::string& database : {kLists, kKeys, std::string(PLDDB_DATA_DIR)}) {
    EXPECT_EQ(SchemaFaults("list_families.json", List({database}, {"--json"}).out), "") << "row: " << database;
    const std::string family = Json::parse(List({database}, {"--json", "--all"}).out)["families"].back()["name"];
    const std::string devices = List({database}, {"--json", "--family", family}).out;
    EXPECT_EQ(SchemaFaults("list_devices.json", devices), "") << "row: " << database;
    EXPECT_GE(Json::parse(devices)["devices"].size(), 1U) << "row: " << database;
  }
}

TEST(List, SaysInJsonWhatTheTablesSay) {
  EXPECT_EQ(Json::parse(List({kLists}, {"--json", "--all"}).out)["families"],
            Json({{{"name", "Hidden & old"}, {"aliasName", nullptr}, {"devices", 0}, {"hidden", true}, {"file", kLists}},
                  {{"name", "Custom"}, {"aliasName", "Own"}, {"devices", 2}, {"hidden", false}, {"file", kLists}},
                  {{"name", "Own"}, {"aliasName", nullptr}, {"devices", 2}, {"hidden", false}, {"file", kLists}}}));
  EXPECT_EQ(Json::parse(List({kLists}, {"--json", "--family", "Custom"}).out)["devices"][1],
            Json({{"family", "Custom"},
                  {"name", "LISTS"},
                  {"codeName", "LISTS1"},
                  {"maker", nullptr},
                  {"jtagId", nullptr},
                  {"ispId", "0x12345678"},
                  {"scanMask", "0xFFFFFFFF"},
                  {"irLength", nullptr},
                  {"packages", {"TQ100", "BG256"}},
                  {"file", kLists}}));
}

TEST(List, OffersNearNamesInJsonAsWell) {
  const ToolRun run = List({kKeys}, {"--json", "--family", "frist"});
  EXPECT_EQ(SchemaFaults("list_devices.json", run.out), "");
  EXPECT_EQ(Json::parse(run.out), Json({{"devices", Json::array()}, {"suggestions", {"First"}}}));
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 1);
}

TEST(List, RefusesWhatMakesNoSense) {
  for (const char* const arguments :
       {"--family", "--family=", "First Second", "First --family First", "--names", "--ir", "--ir 0", "--ir x", "--files First",
        "--files --all", "--format xml", "--format tsv --json"}) {
    const ToolRun run = List({kKeys}, Words(arguments));
    EXPECT_EQ(run.exitCode, 2) << "row: " << arguments;
    EXPECT_EQ(run.err.rfind("plddb: error: ", 0), 0U) << "row: " << arguments << ", message: " << run.err;
  }
  EXPECT_EQ(List({kKeys}, {"--family", ""}).exitCode, 2);
}

TEST(List, LeavesOutHiddenFamiliesUnlessTheyAreWanted) {
  EXPECT_EQ(List({kLists}).out,
            "family  devices  notes\n"
            "Custom  2        also named Own\n"
            "Own     2\n"
            "\n1 hidden family with 0 devices is left out; --all lists all\n");
  const std::string neighbours = PLDDB_DATA_DIR "/neighbours.xml";
  EXPECT_EQ(List({neighbours}, {"--devices"}).exitCode, 1);
  EXPECT_EQ(List({neighbours}, {"--devices", "--all"}).exitCode, 0);
  EXPECT_EQ(List({neighbours}, {"arm debug ports"}).exitCode, 0);  // named
}

TEST(List, FindsDevicesByFamilyMakerPackageAndLength) {
  const struct {
    std::vector<std::string> arguments;
    std::vector<std::string> devices;
  } rows[] = {
      {{"xc9500xv"}, {"XC9536XV", "XC9572XV", "XC95144XV", "XC95288XV"}},
      {{"--family", "9500XV"}, {"XC9536XV", "XC9572XV", "XC95144XV", "XC95288XV"}},
      {{"xc9500XV", "--package", "vq44"}, {"XC9536XV", "XC9572XV"}},
      {{"--maker", "cologne"}, {"CCGM1A1"}},
      {{"--package", "CP132", "--ir", "8", "--maker", "xilinx"}, {"XC2C128", "XC2C256"}},
      {{"--ir", "38"}, {"XC7VH870T"}},
  };
  for (const auto& row : rows) {
    std::vector<std::string> arguments = row.arguments;
    arguments.emplace_back("--json");
    std::vector<std::string> names;
    const Json listed = Json::parse(List({PLDDB_DATA_DIR}, arguments).out);
    for (const Json& device : listed["devices"]) names.push_back(device["name"]);
    EXPECT_EQ(names, row.devices) << "row: " << row.arguments.front() << " " << row.arguments.back();
  }
}

TEST(List, SaysThatNothingPassesTheFilters) {
  EXPECT_EQ(List({PLDDB_DATA_DIR}, {"--maker", "Xilnx"}).err, "plddb: no such device; did you mean Xilinx?\n");
  EXPECT_EQ(List({PLDDB_DATA_DIR}, {"--ir", "999"}).err, "plddb: no such device\n");
  EXPECT_EQ(List({PLDDB_DATA_DIR}, {"--ir", "999"}).exitCode, 1);
}

TEST(List, WritesTabsForScripts) {
  EXPECT_EQ(List({kKeys}, {"--format", "tsv", "First"}).out,
            "device\tfamily\tid\tscan mask\tIR length\tpackages\tfile\n"
            "PLD1234A\tFirst\t\t\t\tTQ100\t" +
                kKeys + "\nOTHER2\tFirst\t\t\t\t\t" + kKeys + "\nSAME\tFirst\t\t\t\t\t" + kKeys + "\n");
}

TEST(List, HasOneLineForEachDeviceOfAll) {
  const ToolRun run = List({PLDDB_DATA_DIR}, {"--devices", "--format", "tsv"});
  EXPECT_EQ(static_cast<std::size_t>(std::count(run.out.begin(), run.out.end(), '\n')),
            Json::parse(List({PLDDB_DATA_DIR}, {"--devices", "--json"}).out)["devices"].size() + 1);
}

}  // namespace
