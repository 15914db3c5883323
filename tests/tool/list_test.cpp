// plddb list: what there is, and where.

#include <gtest/gtest.h>

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
  const ToolRun run = List({kLists});
  EXPECT_EQ(run.out,
            "family        devices  notes\n"
            "Hidden & old  0        hidden\n"
            "Custom        2        also named Own\n"
            "Own           2\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exit_code, 0);
}

TEST(List, SaysWhichDevicesAFamilyHas) {
  const ToolRun run = List({kKeys}, {"--family", "First"});
  EXPECT_EQ(run.out,
            "device    id  scan mask  IR length  packages\n"
            "PLD1234A  -   -          -          TQ100\n"
            "OTHER2    -   -          -          -\n"
            "SAME      -   -          -          -\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exit_code, 0);
}

TEST(List, HasTheDevicesOfAllFamiliesOfThatNameOrAliasName) {
  EXPECT_EQ(List({kLists}, {"--family", "Own"}).out,
            "device  id                scan mask   IR length  packages\n"
            "PLAIN   -                 -           -          -\n"
            "LISTS   0x12345678 (ISP)  0xFFFFFFFF  -          TQ100 BG256\n"
            "IEEE    0x12345678        0x0FFFFFFF  10         -\n"
            "lists   -                 -           -          -\n");
}

TEST(List, SaysAllThatIsToBeNotedOfAFamily) {
  EXPECT_EQ(List({kFolder + "long_texts.xml"}).out,
            "family                       devices  notes\n"
            "family of the first devices  2        also named alias of the first family, hidden\n"
            "alias of the first family    1\n"
            "alias of the first family    0\n");
}

TEST(List, NamesTheFilesWhereThereAreSeveral) {
  EXPECT_EQ(List({kLists, kKeys}).out,
            "family        devices  notes              file\n"
            "Hidden & old  0        hidden             " +
                kLists + "\n" + "Custom        2        also named Own     " + kLists + "\n" +
                "Own           2                           " + kLists + "\n" + "First         3                           " +
                kKeys + "\n" + "Second        2        also named Zweite  " + kKeys + "\n");
  EXPECT_NE(List({kLists, kKeys}, {"--family", "Second"}).out.find("  BG256     " + kKeys + "\n"), std::string::npos);
}

TEST(List, OffersNearNamesOfFamilies) {
  const ToolRun run = List({kKeys}, {"--family", "first"});
  EXPECT_EQ(run.err, "plddb: no family is named first; did you mean First?\n");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(List({kKeys}, {"--family", "Qqqqqqqq"}).err, "plddb: no family is named Qqqqqqqq\n");
}

TEST(List, WritesJsonThatKeepsToItsSchema) {
  for (const std::string& database : {kLists, kKeys, std::string(PLDDB_DATA_DIR)}) {
    EXPECT_EQ(SchemaFaults("list_families.json", List({database}, {"--json"}).out), "") << "row: " << database;
    const std::string family = Json::parse(List({database}, {"--json"}).out)["families"].back()["name"];
    const std::string devices = List({database}, {"--json", "--family", family}).out;
    EXPECT_EQ(SchemaFaults("list_devices.json", devices), "") << "row: " << database;
    EXPECT_GE(Json::parse(devices)["devices"].size(), 1U) << "row: " << database;
  }
}

TEST(List, SaysInJsonWhatTheTablesSay) {
  EXPECT_EQ(Json::parse(List({kLists}, {"--json"}).out)["families"],
            Json({{{"name", "Hidden & old"}, {"aliasName", nullptr}, {"devices", 0}, {"hidden", true}, {"file", kLists}},
                  {{"name", "Custom"}, {"aliasName", "Own"}, {"devices", 2}, {"hidden", false}, {"file", kLists}},
                  {{"name", "Own"}, {"aliasName", nullptr}, {"devices", 2}, {"hidden", false}, {"file", kLists}}}));
  EXPECT_EQ(Json::parse(List({kLists}, {"--json", "--family", "Custom"}).out)["devices"][1],
            Json({{"family", "Custom"},
                  {"name", "LISTS"},
                  {"codeName", "LISTS1"},
                  {"jtagId", nullptr},
                  {"ispId", "0x12345678"},
                  {"scanMask", "0xFFFFFFFF"},
                  {"irLength", nullptr},
                  {"packages", {"TQ100", "BG256"}},
                  {"file", kLists}}));
}

TEST(List, OffersNearNamesInJsonAsWell) {
  const ToolRun run = List({kKeys}, {"--json", "--family", "first"});
  EXPECT_EQ(SchemaFaults("list_devices.json", run.out), "");
  EXPECT_EQ(Json::parse(run.out), Json({{"devices", Json::array()}, {"suggestions", {"First"}}}));
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exit_code, 1);
}

TEST(List, RefusesWhatMakesNoSense) {
  for (const char* const arguments : {"--family", "--family=", "First", "--names"}) {
    const ToolRun run = List({kKeys}, Words(arguments));
    EXPECT_EQ(run.exit_code, 2) << "row: " << arguments;
    EXPECT_EQ(run.err.rfind("plddb: error: ", 0), 0U) << "row: " << arguments << ", message: " << run.err;
  }
  EXPECT_EQ(List({kKeys}, {"--family", ""}).exit_code, 2);
}

}  // namespace
