// What people ask, and what the shipped data answers.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "run_tool.h"

namespace {

using Json = nlohmann::json;

/// "exact: XC9572XL XC9572XV"; empty when nothing is found. After 3 devices: how many more.
std::string Answer(const ToolRun& run) {
  const Json json = Json::parse(run.out);
  std::string text;
  std::size_t more = json["more"];
  for (const Json& match : json["matches"]) {
    if (text.empty()) text = match["match"].get<std::string>() + ":";
    const bool isShown = &match - &json["matches"].front() < 3;
    if (isShown) text += " " + match["name"].get<std::string>();
    more += isShown ? 0 : 1;
  }
  return text + (more == 0 ? "" : " +" + std::to_string(more));
}

TEST(Queries, AreAnsweredByTheShippedData) {
  const struct {
    std::vector<std::string> words;
    const char* answer;
    int exitCode;
  } rows[] = {
      // names
      {{"XC9572XL"}, "exact: XC9572XL", 0},
      {{"xc9572xl"}, "exact: XC9572XL", 0},
      {{" XC9572XL "}, "exact: XC9572XL", 0},
      {{"ep4ce6"}, "exact: EP4CE6", 0},
      {{"ATF1504AS"}, "exact: ATF1504AS", 0},
      {{"GW1NR-9C"}, "exact: GW1NR-9C", 0},
      {{"CCGM1A1"}, "exact: CCGM1A1", 0},
      {{"--name", "XC7A35T"}, "exact: XC7A35T", 0},
      {{"--code-name", "xc7a35t"}, "exact: XC7A35T", 0},
      {{"--name", "XC7A"}, "", 1},
      {{"--alias", "XC7A35T"}, "", 1},
      // ids
      {{"0x0362D093"}, "exact: XC7A35T", 0},
      {{"0362D093"}, "exact: XC7A35T", 0},
      {{"0x1362d093"}, "exact: XC7A35T", 0},
      {{"0x59604093"}, "exact: XC9572XL", 0},
      {{"0x00000000"}, "", 1},
      {{"0xFFFFFFFF"}, "", 1},
      // ordering numbers and entity names
      {{"XC9572XL-10VQ44C"}, "exact: XC9572XL", 0},
      {{"xc9572xl-7vq44c"}, "exact: XC9572XL", 0},
      {{"XC3S200-4TQ144C"}, "exact: XC3S200", 0},
      {{"XC2C64A-7VQ44C"}, "exact: XC2C64A", 0},
      {{"XC9536-15CS48C"}, "exact: XC9536", 0},
      {{"XC95108-20PC84C"}, "exact: XC95108", 0},
      {{"--pon", "XC9572XL-10VQ44C"}, "exact: XC9572XL", 0},
      {{"xc9572xl_vq44"}, "exact: XC9572XL", 0},
      {{"--entity", "xc9572xl_vq44"}, "exact: XC9572XL", 0},
      {{"--entity", "EP1C12F256"}, "exact: EP1C12", 0},
      {{"--entity", "MAX_10_10M08SAE144"}, "exact: 10M08S", 0},
      {{"--entity", "xc9572xl_vq45"}, "", 1},
      // fuse counts and full names
      {{"46656"}, "exact: XC9572XL XC9572XV", 0},
      {{"--fuses", "46656"}, "exact: XC9572XL XC9572XV", 0},
      {{"--fuses", "186624"}, "exact: XC95216 XC95288XL XC95288XV", 0},
      {{"--fuses", "46656", "--full-name", "XC9572XL"}, "exact: XC9572XL", 0},
      {{"--fuses", "46656", "--full-name", "XC9572XL-10-VQ44"}, "exact: XC9572XL", 0},
      {{"--fuses", "46656", "--full-name", "XC9572XL-5-TQ100"}, "exact: XC9572XL", 0},
      {{"--fuses", "23328", "--full-name", "XC9536XL-10-PC44"}, "exact: XC9536XL", 0},
      {{"--fuses", "12278", "--full-name", "XC2C32A-4-VQ44"}, "exact: XC2C32A", 0},
      {{"--fuses", "115869", "--full-name", "XCR3256XL-10-TQ144"}, "exact: XCR3256XL", 0},
      {{"--fuses", "34192", "--full-name", "ATF1504AS"}, "exact: ATF1504AS", 0},
      {{"--fuses", "46657", "--full-name", "XC9572XL-10-VQ44"}, "", 1},
      {{"--fuses", "1"}, "", 1},
      // families and packages
      {{"Artix-7"}, "exact: XC7A12T XC7A15T XC7A25T +5", 0},
      {{"artix-7"}, "exact: XC7A12T XC7A15T XC7A25T +5", 0},
      {{"GateMate"}, "exact: CCGM1A1", 0},
      {{"XC9500XV"}, "exact: XC9536XV XC9572XV XC95144XV +1", 0},
      {{"VO20"}, "exact: XCF04S", 0},
      {{"vo20"}, "exact: XCF04S", 0},
      {{"--package", "VQ44", "--name", "xc9572xl"}, "exact: XC9572XL", 0},
      {{"--package", "vq44", "--name", "xc9572xl"}, "", 1},
      {{"--family", "xc9500xl", "VQ44"}, "exact: XC9536XL XC9572XL", 0},
      {{"--family", "XC9500XX", "VQ44"}, "", 1},
      // patterns
      {{"XC95*XV"}, "pattern: XC9536XV XC9572XV XC95144XV +1", 0},
      {{"xc9572?l"}, "pattern: XC9572XL", 0},
      {{"*9572*"}, "pattern: XC9572 XC9572XL XC9572XV", 0},
      {{"XC9572X"}, "begins: XC9572XL XC9572XV", 0},
      {{"XC1?"}, "", 1},
      // beginnings and parts
      {{"XC7A"}, "begins: XC7A12T XC7A15T XC7A25T +5", 0},
      {{"Artix U"}, "begins: XCAU7P XCAU10P XCAU15P +2", 0},
      {{"7A35T"}, "contains: XC7A35T", 0},
      {{"9572"}, "contains: XC9572 XC9572XL XC9572XV", 0},
      // marks on chips
      {{"XC7A35T-1CPG236C"}, "mark: XC7A35T", 0},
      {{"xc7a35tcpg236-1"}, "mark: XC7A35T", 0},
      {{"7A35T-1CPG236C"}, "mark: XC7A35T", 0},
      {{"XC9572XL-10VQG44C"}, "mark: XC9572XL", 0},
      {{"XC9572XL-10VQ44I"}, "mark: XC9572XL", 0},
      {{"95144XL-10TQG100C"}, "mark: XC95144XL", 0},
      {{"XC3S500E-4VQG100C"}, "mark: XC3S500E", 0},
      {{"xczu9eg-ffvb1156-2-e"}, "mark: XCZU9", 0},
      {{"Xilinx XC7A35T-1CPG236C"}, "mark: XC7A35T", 0},
      {{"AMD XC7K325T-2FFG900C"}, "mark: XC7K325T", 0},
      {{"XA7A35T-1CPG236I"}, "mark: XC7A35T", 0},  // unknown: XA
      {{"XC7A35T 1CSG324"}, "mark: XC7A35T", 0},
      {{"XC7A35T1CSG324"}, "mark: XC7A35T", 0},
      {{"XC7A35T\xE2\x80\x93"
        "1CSG324C"},
       "mark: XC7A35T",
       0},  // an en dash
      {{"XC9572XL\xE2\x88\x92"
        "10VQ44C"},
       "exact: XC9572XL",
       0},  // a minus sign
      {{"XC9572XL\xC2\xAE"}, "exact: XC9572XL", 0},
      {{"XC9572XL-10VQG44C-ND"}, "mark: XC9572XL", 0},
      {{"XC9572XL-10VQG44CTR"}, "mark: XC9572XL", 0},
      {{"XC9572 XL-10VQ44C"}, "mark: XC9572XL", 0},
      {{"XC9572XL\n"}, "exact: XC9572XL", 0},
      {{"\tXC9572XL \r\n"}, "exact: XC9572XL", 0},
      {{"59604093"}, "exact: XC9572XL", 0},
      {{"0X0362d093"}, "exact: XC7A35T", 0},
      {{"EP4CE-6"}, "mark: EP4CE6", 0},
      {{"GW1NR9"}, "mark: GW1NR-9", 0},
      {{"GW1NR-LV9QN88PC6/I5"}, "mark: GW1NR-9", 0},
      {{"GW1NR-LV9CQN88PC6/I5"}, "mark: GW1NR-9C", 0},
      {{"GW2A-LV18PG256C8/I7"}, "mark: GW2A-18", 0},
      {{"5CGXFC5C6F27C7N"}, "mark: 5CGXC5", 0},
      {{"5CEFA2F23C8N"}, "mark: 5CEA2", 0},
      {{"5AGXFB3H4F35C5N"}, "mark: 5AGXB3", 0},
      {{"XC7Z010-1CLG225I4117"}, "mark: XC7Z010", 0},
      {{"MAX 10 10M08SAE144C8G"}, "mark: 10M08S", 0},
      {{"Efinix T20F256C4"}, "mark: T20", 0},
      {{"LFE5U-25F-6BG381C"}, "", 1},  // a maker that is not described
      {{"EP4CE6E22C8N"}, "mark: EP4CE6", 0},
      {{"EP4CE115F29C7N"}, "mark: EP4CE115", 0},
      {{"10M08SAE144C8G"}, "mark: 10M08S", 0},
      {{"5CSEMA5F31C6N"}, "mark: 5CSEA5", 0},
      {{"EPM240T100C5N"}, "mark: EPM240", 0},
      {{"ATF1504AS-10JU44"}, "mark: ATF1504AS", 0},
      {{"ATF1504ASV-15AU44"}, "mark: ATF1504ASV", 0},
      {{"T20F256C4"}, "mark: T20", 0},
      {{"T20NONSENSE"}, "", 1},
      {{"XC95720XL"}, "", 1},             // a number is not cut
      {{"XC9572LX"}, "mark: XC9572", 0},  // unknown: LX
      // nothing
      {{"QQQQQQ"}, "", 1},
      {{"XC95000"}, "", 1},
      // one is wanted
      {{"--unique", "XC9572XL"}, "exact: XC9572XL", 0},
      {{"--unique", "46656"}, "exact: XC9572XL XC9572XV", 1},
      {{"--unique", "XC7A35T-1CPG236C"}, "mark: XC7A35T", 0},
  };
  for (const auto& row : rows) {
    std::vector<std::string> words = {"find", "--db", PLDDB_DATA_DIR, "--json"};
    words.insert(words.end(), row.words.begin(), row.words.end());
    const ToolRun run = RunTool(words);
    EXPECT_EQ(Answer(run), row.answer) << "row: " << row.words.front() << " ... " << row.words.back();
    EXPECT_EQ(run.exitCode, row.exitCode) << "row: " << row.words.front() << " ... " << row.words.back();
  }
}

TEST(Queries, ProposeWhatIsNearOrNothing) {
  const struct {
    const char* text;
    const char* message;
  } rows[] = {
      {"XC9752XL", "plddb: nothing found; did you mean XC9572XL, XC9572XV?\n"},
      {"QQQQQQ", "plddb: nothing found\n"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(RunTool({"find", "--db", PLDDB_DATA_DIR, row.text}).err, row.message) << "row: " << row.text;
}

}  // namespace
