#include <gtest/gtest.h>

#include <cstdio>
#include <iterator>
#include <nlohmann/json.hpp>

#include "Descriptions.h"
#include "json_schema.h"
#include "run_tool.h"
#include "tests/support/read_file.h"

namespace {

using Json = nlohmann::json;

const std::string kData = PLDDB_TEST_DIR "/tool/data/";
const std::vector<std::string> kSampleChain = {"0x59604093", "0x06E5E093", "0x4BAFF477", "0x0362D093"};

std::vector<std::string> Identify(std::vector<std::string> arguments, const std::vector<std::string>& more = {}) {
  arguments.insert(arguments.begin(), "identify");
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

Json IdentifyAsJson(const std::vector<std::string>& arguments, const std::string& input = "") {
  const ToolRun run = RunTool(Identify({"--json"}, arguments), input);
  EXPECT_EQ(run.err, "");
  return Json::parse(run.out, nullptr, false);
}

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != text.npos; }

// --- What it prints ---------------------------------------------------------------------------------------------------------

TEST(Identify, ShowsAChainAsATableWithTheUnknownIdAfterIt) {
  const ToolRun run = RunTool(Identify(kSampleChain));
  EXPECT_EQ(run.out,
            "TAP  id          device    family         IR  IDCODE  BYPASS  packages\n"
            "0    0x59604093  XC9572XL  XC9500XL       8   0xFE    0xFF    CS48 PC44 TQ100\n"
            "                                                              VQ44 VQ64\n"
            "1    0x06E5E093  XC2C64A   CoolRunner-II  8   0x01    0xFF    CP56 CV64 DI81\n"
            "                                                              PC44 QFG48 VQ100\n"
            "                                                              VQ44\n"
            "2    0x4BAFF477  unknown   -              -   -       -       -\n"
            "3    0x0362D093  XC7A35T   Artix-7        6   0x09    0x3F    CPG236 CSG324\n"
            "                                                              CSG325 FGG484\n"
            "                                                              FTG256\n"
            "\n"
            "IR length of the chain: not known (22 bits without position 2)\n"
            "  give --ir 2=LENGTH\n"
            "\n"
            "Unknown ids:\n"
            "  position 2: 0x4BAFF477\n"
            "    version 0x4, part 0xBAFF, manufacturer 0x23B (bank 4, code 0x3B): ARM Ltd\n"
            "    to describe it, fill in each ? and put this into a Family:\n"
            "    <Device Name=\"?\" CodeName=\"?\" Vendor=\"ARM\" Comm=\"JTAG\"\n"
            "            jtagDeviceID=\"0x0BAFF477\" DeviceIDScanMask=\"0x0FFFFFFF\"\n"
            "            IDLength=\"32\" IRLength=\"?\" BypassLength=\"1\"/>\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 1);
}

TEST(Identify, PrintsWhatTheReadmeShows) {
  const std::string readme = support::ReadFile(PLDDB_TEST_DIR "/../README.md");
  const std::vector<std::string> ids = {"0x59604093", "0x06E5E093", "0x4BA00477", "0x0362D093"};
  std::string command = "$ plddb identify";
  for (const std::string& id : ids) command += " " + id;
  std::string shown = RunTool(Identify(ids)).out;
  EXPECT_TRUE(Contains(readme, command + "\n" + shown)) << shown;
}

TEST(Identify, MarksAPositionWhereMoreThanOneDeviceMatchesAndListsThemAll) {
  const ToolRun run = RunTool(Identify({"0x59604093", "0x0484A093"}));
  EXPECT_EQ(run.out,
            "TAP  id          device    family            IR  IDCODE  BYPASS  packages\n"
            "0    0x59604093  XC9572XL  XC9500XL          8   0xFE    0xFF    CS48 PC44 TQ100\n"
            "                                                                 VQ44 VQ64\n"
            "1    0x0484A093  XCKU9P *  Kintex            6   0x09    0x3F    -\n"
            "                           UltraScale+\n"
            "\n"
            "IR length of the chain: 14 bits\n"
            "  another device that matches would change it at position 1\n"
            "\n"
            "* More than one device matches; the first was taken. The most exact first:\n"
            "  position 1: 0x0484A093, taken as XCKU9P\n"
            "    device     family              IR length  compared           search order\n"
            "    XCKU9P     Kintex UltraScale+  6          masked 0x0FFFFFFF  1\n"
            "    XCR3064XL  CoolRunner XPLA3    5          masked 0x0FFF8FFF  2\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(Identify, NamesTheFileOfEachCandidateWhenThereAreSeveralDatabases) {
  const ToolRun run = RunTool(Identify({"--db", kData + "second.xml", "--db", kData + "first.xml", "0x1ABCD043"}));
  EXPECT_TRUE(Contains(run.out, "\n0    0x1ABCD043  SECOND *  Two     8 ")) << run.out;
  EXPECT_TRUE(Contains(run.out, "\nIR length of the chain: 8 bits\n")) << run.out;
  EXPECT_TRUE(
      Contains(OneBlankEach(run.out),
               " position 0: 0x1ABCD043, taken as SECOND device family IR length compared search order file FIRST One 8 "
               "masked 0x0FFFFFFF 2 " +
                   kData + "first.xml SECOND Two 8 masked 0x0FFF0FFF 1 " + kData + "second.xml "))
      << run.out;
}

TEST(Identify, ShowsADashForUnknownValues) {
  const struct {
    const char* id;
    const char* line;  // blanks between the columns as one
  } cases[] = {
      {"0x01234043", "0 0x01234043 JTAGONLY Access 9 0x00E 0x1FF QN32 BG64"},  // each type once, in order; codes by IR length
      {"0x01235043", "0 0x01235043 BOTH Access 10 10110 11111 -"},             // codes of the family, where the device has none
      {"0x01237043", "0 0x01237043 nameless Access 8 10110 11111 -"},          // the code name, where there is no name
      {"0x01238043", "0 0x01238043 NOCODE Access - 10110 11111 -"},
  };
  for (const auto& c : cases) {
    const ToolRun run = RunTool(Identify({"--db", kData + "access_modes.xml", c.id}));
    const std::size_t start = run.out.find('\n') + 1;
    std::string line;
    for (const std::string& word : Words(run.out.substr(start, run.out.find('\n', start) - start))) line += " " + word;
    EXPECT_EQ(line, std::string(" ") + c.line) << "row: " << c.id;
  }
}

TEST(Identify, AddsUpTheIrLengthsThatAreKnown) {
  const struct {
    std::vector<std::string> ids;
    const char* line;
  } cases[] = {
      {{"0x01234043"}, "IR length of the chain: 9 bits\n"},
      {{"0x01234043", "0x01235043", "0x01234043"}, "IR length of the chain: 28 bits\n"},
      {{"0x01234043", "0x01238043"},
       "IR length of the chain: not known (9 bits without position 1)\n  give --ir 1=LENGTH\n"},  // no length in the file
      {{"0x4BAFF477", "0x01235043", "0x01238043"},
       "IR length of the chain: not known (10 bits without positions 0, 2)\n"
       "  give --ir 0=LENGTH --ir 2=LENGTH\n"},
      {{"0x4BAFF477"}, "IR length of the chain: not known (0 bits without position 0)\n  give --ir 0=LENGTH\n"},
  };
  for (const auto& c : cases) {
    const ToolRun run = RunTool(Identify({"--db", kData + "access_modes.xml"}, c.ids));
    EXPECT_TRUE(Contains(run.out, c.line)) << "row: " << c.line << "in:\n" << run.out;
  }
}

TEST(Identify, ListsAllMatchesTheMostExactFirstWithReasons) {
  const ToolRun run = RunTool(Identify({"--db", kData + "exactness.xml", "--comm", "DUAL", "0x51234043"}));
  EXPECT_EQ(run.out,
            "TAP  id          device  family  IR  IDCODE  BYPASS  packages\n"
            "0    0x51234043  WIDE *  Loose   8   -       -       -\n"
            "\n"
            "IR length of the chain: 8 bits\n"
            "  another device that matches would change it at position 0\n"
            "\n"
            "* More than one device matches; the first was taken. The most exact first:\n"
            "  position 0: 0x51234043, taken as WIDE\n"
            "    device  family  IR length  compared              search order\n"
            "    EXACT   Loose   8          all 32 bits           3\n"
            "    PART    Loose   5          masked 0x0FFFFFFF     2\n"
            "    PART2   Loose   8          masked 0x0FFFFFFF     4\n"
            "    WIDE    Loose   8          masked 0x0FF00FFF     1\n"
            "    LOW     Loose   8          low byte only (DUAL)  5\n");
}

TEST(Identify, ReportsWhenOnlyALowByteAgrees) {
  const struct {
    const char* arguments;
    const char* note;
  } cases[] = {
      {"--comm DUAL 0xABCDEF41",
       "position 0: ISPONLY answers by the low byte of its ISP identifier only (DUAL), which is hardly evidence\n"},
      {"--comm DUAL 0x01234043 0x01235055",
       "position 1: BOTH answers by the low byte of its ISP identifier only (DUAL), which is hardly evidence\n"},
      {"--comm DUAL 0x71235043", ""},  // by its JTAG identifier
      {"--comm ISP 0x00000141", ""},
  };
  for (const auto& c : cases) {
    const std::string arguments = "--db " + kData + "access_modes.xml " + c.arguments;
    const std::string note = c.note;
    const std::string out = RunTool(Words("identify " + arguments)).out;
    EXPECT_EQ(Contains(Unwrapped(out), "\nNotes:\n  " + note), !note.empty()) << "row: " << c.arguments << out;
    EXPECT_EQ(RunTool(Words("identify --format json " + arguments)).err, note.empty() ? "" : "plddb: warning: " + note)
        << "row: " << c.arguments;
  }
}

TEST(IdentifyJson, RanksAllThatMatch) {
  const Json chain = IdentifyAsJson({"--db", kData + "exactness.xml", "--comm", "DUAL", "0x51234043"});
  const Json& position = chain[0];
  EXPECT_EQ(position["ambiguous"], true);
  EXPECT_EQ(position["match"]["name"], "WIDE");
  const struct {
    const char* name;
    const char* reason;
    const char* bits;
    int searchOrder;
  } rows[] = {
      {"EXACT", "all 32 bits", "0xFFFFFFFF", 3},        {"PART", "masked 0x0FFFFFFF", "0x0FFFFFFF", 2},
      {"PART2", "masked 0x0FFFFFFF", "0x0FFFFFFF", 4},  {"WIDE", "masked 0x0FF00FFF", "0x0FF00FFF", 1},
      {"LOW", "low byte only (DUAL)", "0x000000FF", 5},
  };
  ASSERT_EQ(position["ranked"].size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const Json& one = position["ranked"][i];
    EXPECT_EQ(one["name"], rows[i].name) << "row: " << i;
    EXPECT_EQ(one["reason"], rows[i].reason) << "row: " << i;
    EXPECT_EQ(one["comparedBits"], rows[i].bits) << "row: " << i;
    EXPECT_EQ(one["searchOrder"], rows[i].searchOrder) << "row: " << i;
    EXPECT_EQ(one["file"], kData + "exactness.xml") << "row: " << i;
  }
}

TEST(IdentifyIrLengths, OfTheUserCountInsteadOfTheDescriptions) {
  const struct {
    const char* arguments;
    const char* line;
  } cases[] = {
      {"0x4BAFF477 0x59604093 --ir 0=4", "IR length of the chain: 12 bits\n"},
      {"0x4BAFF477 0x59604093 --ir 0=4 --ir 1=65535", "IR length of the chain: 65539 bits\n"},
      {"0x59604093 --ir 0=9", "  position 0: --ir gives IR length 9, but XC9572XL has 8\n"},
      {"0x0484A093", "IR length of the chain: 6 bits\n  another device that matches would change it at position 0\n"},
      {"0x0484A093 --ir 0=6", "IR length of the chain: 6 bits\n"},
      {"0x0484A093 --ir 0=5", "  position 0: --ir gives IR length 5, but XCKU9P has 6; XCR3064XL has 5\n"},
      {"0x4BAFF477 --ir 0=4", "IRLength=\"4\""},  // in the text to paste
  };
  for (const auto& c : cases) {
    const ToolRun run = RunTool(Words(std::string("identify ") + c.arguments));
    EXPECT_TRUE(Contains(run.out, c.line)) << "row: " << c.arguments << ":\n" << run.out << run.err;
  }
}

TEST(IdentifyIrLengths, AreRefusedWhenTheyAreNoneOrForNoPosition) {
  for (const char* text : {"0", "0=", "=4", "2=4", "-1=4", "0=1", "0=65536", "0=x", "0=4x", "x=4", "0=4=5", " 0=4", "0x0=4",
                           "99999999999999999999=4", "0=99999999999999999999", ""}) {
    const ToolRun run = RunTool({"identify", "0x59604093", "0x4BAFF477", "--ir", text});
    EXPECT_EQ(run.exitCode, 2) << "row: " << text;
    EXPECT_EQ(run.out, "") << "row: " << text;
    EXPECT_TRUE(Contains(run.err, "expected POSITION=LENGTH, from 0 to 1 and from 2 to 65535")) << "row: " << text << run.err;
  }
  const ToolRun twice = RunTool(Words("identify 0x59604093 --ir 0=4 --ir 0=5"));
  EXPECT_EQ(twice.exitCode, 2);
  EXPECT_TRUE(Contains(twice.err, "position 0 twice")) << twice.err;
}

// --- JSON -------------------------------------------------------------------------------------------------------------------

TEST(IdentifyJson, IsAnArrayWithOneObjectPerPosition) {
  const Json expected = Json::parse(R"([
    {"position": 0, "id": "0x59604093", "candidates": ["XC9572XL"],
     "match": {"family": "XC9500XL", "name": "XC9572XL", "codeName": "XC9572XL", "irLength": 8}},
    {"position": 1, "id": "0x06E5E093", "candidates": ["XC2C64A"],
     "match": {"family": "CoolRunner-II", "name": "XC2C64A", "codeName": "XC2C64A", "irLength": 8}},
    {"position": 2, "id": "0x4BAFF477", "candidates": [], "match": null},
    {"position": 3, "id": "0x0362D093", "candidates": ["XC7A35T"],
     "match": {"family": "Artix-7", "name": "XC7A35T", "codeName": "XC7A35T", "irLength": 6}}])");
  Json chain = IdentifyAsJson(kSampleChain);
  ASSERT_EQ(chain.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    Json shown = chain[i];
    for (const char* more : {"idcodeInstruction", "bypassInstruction", "packages", "vendor", "neighbour", "hint"}) {
      if (shown["match"].is_object()) shown["match"].erase(more);
    }
    for (const auto& [key, value] : expected[i].items()) EXPECT_EQ(shown[key], value) << "row: " << i << " " << key;
  }
}

TEST(IdentifyJson, KeepsToItsSchema) {
  const std::string data = "--db " + kData;
  const std::string cases[] = {
      "0x59604093 0x06E5E093 0x4BAFF477 0x0362D093",         "0x0484A093 0x00000000 0xFFFFFFFF 0x59604092 0x3362D093",
      data + "access_modes.xml 0x01237043 0x01238043",       data + "access_modes.xml --comm ISP 0x55 0x56",
      data + "exactness.xml --comm DUAL 0x51234043",         data + "neighbours.xml 0x11234157 --ir 0=5",
      "--scan " + kData + "scans/openocd_log_bypass.txt",    "--scan " + kData + "scans/urjtag_bypass.txt",
      "--scan " + kData + "scans/openfpgaloader_detect.txt",
  };
  for (const std::string& arguments : cases) {
    const ToolRun run = RunTool(Words("identify --format json " + arguments));
    EXPECT_EQ(SchemaFaults("identify.json", run.out), "") << "row: " << arguments;
  }
}

TEST(IdentifyJson, GivesNullForWhatTheFileLeavesOut) {
  const Json chain = IdentifyAsJson({"--db", kData + "access_modes.xml", "0x01237043", "0x01238043"});
  EXPECT_EQ(chain[0]["match"]["name"], nullptr);
  EXPECT_EQ(chain[0]["match"]["codeName"], "nameless");
  EXPECT_EQ(chain[1]["match"]["codeName"], nullptr);
  EXPECT_EQ(chain[1]["match"]["irLength"], nullptr);
  EXPECT_EQ(chain[1]["candidates"], Json::array({""}));
}

TEST(IdentifyJson, ListsAllCandidatesInSearchOrder) {
  const std::string first = kData + "first.xml";
  const std::string second = kData + "second.xml";
  const struct {
    std::vector<std::string> arguments;
    Json candidates;
  } cases[] = {
      {{"0x0484A093"}, {"XCKU9P", "XCR3064XL"}},
      {{"--db", first, "--db", second, "0x0ABCD043"}, {"first", "second"}},
      {{"--db", second, "--db", first, "0x0ABCD043"}, {"second", "first"}},
      {{"--db", first, "--db", second, "0x0ABC0043"}, {"second"}},  // only the mask of the second leaves these bits out
      {{"--db", first, "--db", first, "0x0ABCD043"}, {"first", "first"}},
  };
  for (const auto& c : cases) {
    const Json chain = IdentifyAsJson(c.arguments);
    EXPECT_EQ(chain[0]["candidates"], c.candidates) << "row: " << c.candidates;
    EXPECT_EQ(chain[0]["match"]["codeName"], c.candidates[0]) << "row: " << c.candidates;
  }
}

TEST(IdentifyJson, ComparesTheIdentifierOfTheAccessMode) {
  const struct {
    const char* comm;
    const char* id;
    Json candidates;
  } cases[] = {
      {"JTAG", "0x01234043", {"jtag-only"}},
      {"JTAG", "0xF1234043", {"jtag-only"}},  // bits that the mask leaves out
      {"JTAG", "0x01234042", Json::array()},
      {"JTAG", "0x00000141", Json::array()},  // an ISP identifier
      {"JTAG", "0x01236043", Json::array()},  // a device without mask is never found
      {"JTAG", "0x00000000", Json::array()},
      {"JTAG", "0xFFFFFFFF", Json::array()},
      {"ISP", "0x00000141", {"isp-only"}},
      {"ISP", "0x00000041", Json::array()},
      {"ISP", "0x50000055", {"both"}},
      {"ISP", "0x01234043", Json::array()},
      {"DUAL", "0xABCDEF41", {"isp-only"}},  // the low byte of the ISP identifier is enough
      {"DUAL", "0x01235055", {"both"}},
      {"DUAL", "0x71235043", {"both"}},
      {"DUAL", "0x01234000", {"jtag-only", "nameless", ""}},  // ISP identifiers of 0 take part
      {"DUAL", "0x00000000", Json::array()},
  };
  for (const auto& c : cases) {
    const std::vector<std::string> arguments = {"--json", "--db", kData + "access_modes.xml", "--comm", c.comm, c.id};
    const Json chain = Json::parse(RunTool(Identify(arguments)).out, nullptr, false);
    EXPECT_EQ(chain[0]["candidates"], c.candidates) << "row: " << c.comm << " " << c.id;
    EXPECT_EQ(chain[0]["match"].is_null(), c.candidates.empty()) << "row: " << c.comm << " " << c.id;
  }
}

/// Every identifier of the sample data under some revisions, and neighbours that are mostly unknown.
std::vector<unsigned int> ManyIds(const DeviceList& devices) {
  std::vector<unsigned int> ids;
  for (int f = 0; const FamilyList* family = devices.GetFamily(f); ++f) {
    for (int d = 0; const DeviceInfo* device = family->GetDevice(d); ++d) {
      for (unsigned int revision = 0; revision < 16; revision += 5) ids.push_back(device->GetjtagDeviceID() | revision << 28);
      for (const unsigned int bit : {12U, 16U, 20U}) ids.push_back(device->GetjtagDeviceID() ^ 1U << bit);
    }
  }
  return ids;
}

TEST(IdentifyJson, AnswersWhatTheLibraryAnswers) {
  const plddb::LoadResult loaded = plddb::LoadDescriptions(PLDDB_DATA_DIR "/xilinx.xml");
  ASSERT_TRUE(loaded.database);
  const std::vector<unsigned int> ids = ManyIds(*loaded.database);
  std::string input;
  for (const unsigned int id : ids) {
    char line[16];
    std::snprintf(line, sizeof line, "%08x\n", id);
    input += line;
  }
  for (const char* comm : {"JTAG", "ISP", "DUAL"}) {
    const Json chain = IdentifyAsJson({"--db", PLDDB_DATA_DIR "/xilinx.xml", "--comm", comm, "-"}, input);
    ASSERT_EQ(chain.size(), ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
      const DeviceInfo* const first = loaded.database->GetDeviceWithCommAndID(comm, ids[i]);
      loaded.database->GetDeviceListWithCommAndID(comm, ids[i]);
      const Json name = first == nullptr ? Json(nullptr) : Json(first->GetName());
      const Json found = chain[i]["match"].is_null() ? Json(nullptr) : chain[i]["match"]["name"];
      const bool known = first != nullptr;  // the library's list is that of its last search that was not for the id 0
      EXPECT_EQ(found, name) << "row: " << comm << " " << chain[i]["id"];
      EXPECT_EQ(chain[i]["candidates"], known ? Json(loaded.database->GetlistDevicenames()) : Json::array())
          << "row: " << comm << " " << chain[i]["id"];
    }
  }
}

// --- Ids --------------------------------------------------------------------------------------------------------------------

TEST(IdentifyIds, AreEightHexDigitsOrAnyNumberOfThemAfter0x) {
  const struct {
    const char* text;
    const char* id;
  } cases[] = {
      {"0x59604093", "0x59604093"}, {"0X59604093", "0x59604093"}, {"59604093", "0x59604093"}, {"0x362d093", "0x0362D093"},
      {"0362D093", "0x0362D093"},   {"4baff477", "0x4BAFF477"},   {"0x0", "0x00000000"},      {"0xfFfFfFfF", "0xFFFFFFFF"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(IdentifyAsJson({c.text})[0]["id"], c.id) << "row: " << c.text;
    EXPECT_EQ(IdentifyAsJson({"-"}, c.text)[0]["id"], c.id) << "row: " << c.text;
  }
}

TEST(IdentifyIds, AreRefusedOtherwise) {
  const char* const cases[] = {"362D093",    "93",         "0x",    "0x123456789", "123456789", "0x5960409g",  "XC9572XL",
                               "0x-5960409", "0x+5960409", "0x0x1", "1e8",         "59604093h", "0x5960 4093", ""};
  for (const char* text : cases) {
    const ToolRun run = RunTool(Identify({"0x59604093", text}));
    EXPECT_EQ(run.exitCode, 2) << "row: " << text;
    EXPECT_EQ(run.out, "") << "row: " << text;
    EXPECT_EQ(run.err,
              "plddb: error: '" + std::string(text) + "' is not an id: expected 8 hex digits, or 0x and 1 to 8 hex digits\n");
  }
}

TEST(IdentifyIds, AreReportedAllWhenSeveralAreWrong) {
  const ToolRun run = RunTool(Identify({"one", "0x59604093", "two"}));
  EXPECT_TRUE(Contains(run.err, "'one'")) << run.err;
  EXPECT_TRUE(Contains(run.err, "'two'")) << run.err;
}

TEST(IdentifyStdin, GivesOneIdPerLine) {
  const struct {
    const char* input;
    std::vector<std::string> ids;
  } cases[] = {
      {"0x59604093\n0x0362D093\n", {"0x59604093", "0x0362D093"}},
      {"0x59604093\n0x0362D093", {"0x59604093", "0x0362D093"}},  // a last line without its end
      {"# a chain\n\n  \t\n0x59604093\n", {"0x59604093"}},
      {"  0x59604093\t# next to TDO\r\n0362d093#\r\n", {"0x59604093", "0x0362D093"}},
      {"#0x06E5E093\n0x59604093\n", {"0x59604093"}},
  };
  for (const auto& c : cases) {
    std::vector<std::string> ids;
    for (const Json& position : IdentifyAsJson({"-"}, c.input)) ids.push_back(position["id"]);
    EXPECT_EQ(ids, c.ids) << "row: " << c.input;
  }
}

TEST(IdentifyStdin, PointsAtWhatIsNoId) {
  const std::string expected = " is not an id: expected 8 hex digits, or 0x and 1 to 8 hex digits\n";
  const struct {
    std::string input;
    std::string err;
  } cases[] = {
      {"0x59604093\n\n  XC9572XL\n", "stdin:3:3: error: 'XC9572XL'" + expected},
      {"# chain\n0x59604093 0x0362D093\n", "stdin:2:1: error: '0x59604093 0x0362D093'" + expected},
      {"one\n0x59604093\n\ttwo # 2\r\n", "stdin:1:1: error: 'one'" + expected + "stdin:3:2: error: 'two'" + expected},
      {"\x7F~\n", "stdin:1:1: error: '?~'" + expected},
      {std::string("\x1B[2J\0\xFF", 6),
       "stdin:1:1: error: '?[2J?"
       "?'" +
           expected},  // nothing that a terminal would obey
      {std::string(50, 'x'), "stdin:1:1: error: '" + std::string(40, 'x') + "...'" + expected},
      {"", "stdin:1:1: error: no id; expected one per line\n"},
      {"# nothing\n\n", "stdin:1:1: error: no id; expected one per line\n"},
  };
  for (const auto& c : cases) {
    const ToolRun run = RunTool(Identify({"-"}), c.input);
    EXPECT_EQ(run.err, c.err) << "row: " << c.input;
    EXPECT_EQ(run.out, "") << "row: " << c.input;
    EXPECT_EQ(run.exitCode, 2) << "row: " << c.input;
  }
}

// --- Exit codes and usage ---------------------------------------------------------------------------------------------------

TEST(Identify, ExitsWith0WhenAllIsKnownAnd1WhenSomeIdIsNot) {
  const struct {
    const char* arguments;
    const char* input;
    int exitCode;
  } cases[] = {
      {"identify 0x59604093", "", 0},
      {"identify 0x59604093 0x0362D093", "", 0},
      {"identify 0x0484A093", "", 0},  // more than one device, but a known id
      {"identify 0x59604093 0x4BAFF477", "", 1},
      {"identify 0x4BAFF477", "", 1},
      {"identify 0x00000000", "", 1},
      {"identify --json 0x59604093", "", 0},
      {"identify --json 0x4BAFF477", "", 1},
      {"identify --comm JTAG 0x59604093", "", 0},
      {"identify 0x59604093 --json", "", 0},
      {"identify -", "0x59604093\n", 0},
      {"identify -", "0x4BAFF477\n", 1},
      {"identify --help", "", 0},
      {"--help", "", 0},
      {"--version", "", 0},
  };
  for (const auto& c : cases) {
    const ToolRun run = RunTool(Words(c.arguments), c.input);
    EXPECT_EQ(run.exitCode, c.exitCode) << "row: " << c.arguments;
    EXPECT_EQ(run.err, "") << "row: " << c.arguments;
    EXPECT_NE(run.out, "") << "row: " << c.arguments;
  }
}

TEST(Identify, ExitsWith2AndTheReasonWhenTheUsageIsWrong) {
  const struct {
    const char* arguments;
    const char* message;  // a part of it
  } cases[] = {
      {"", "plddb: error: a subcommand is required"},
      {"recognise 0x59604093", "recognise"},
      {"identify", "ID or --scan is required"},
      {"identify --ir 0=4", "ID or --scan is required"},
      {"identify --scan - 0x59604093", "--scan"},
      {"identify --json --format tsv 0x59604093", "--json"},
      {"identify --format yaml 0x59604093", "yaml"},
      {"identify --format openocd --comm ISP 0x141", "ISP identifiers are not IDCODEs"},
      {"identify --comm SPI 0x59604093", "SPI"},
      {"identify --comm jtag 0x59604093", "jtag"},
      {"identify --comm", "--comm"},
      {"identify 0x59604093 --db", "--db"},
      {"identify --yaml 0x59604093", "--yaml"},
      {"identify -x 0x59604093", "-x"},
      {"identify 0x59604093 -", "'-' is not an id"},
  };
  for (const auto& c : cases) {
    const ToolRun run = RunTool(Words(c.arguments));
    EXPECT_EQ(run.exitCode, 2) << "row: " << c.arguments;
    EXPECT_EQ(run.out, "") << "row: " << c.arguments;
    EXPECT_TRUE(Contains(run.err, c.message)) << "row: " << c.arguments << ": " << run.err;
  }
}

TEST(Identify, HelpTellsTheFormOfAnIdTheExitCodesAndAnExample) {
  const ToolRun run = RunTool(Words("identify --help"));
  for (const char* part : {"8 hex digits", "Exit code: 0", "1 when some id is unknown", "2 for wrong usage", "Examples:"}) {
    EXPECT_TRUE(Contains(run.out, part)) << "row: " << part;
  }
}

TEST(Identify, RefusesADatabaseThatDoesNotLoadWhole) {
  const struct {
    std::vector<std::string> paths;
    std::vector<std::string> messages;  // their beginnings, one per line
  } cases[] = {
      {{"nowhere.xml"}, {"nowhere.xml:1:1: error: "}},
      {{kData + "broken.xml"}, {kData + "broken.xml:3:", kData + "broken.xml:4:"}},
      {{kData + "first.xml", "nowhere.xml", kData + "broken.xml"},  // all faults of all files
       {"nowhere.xml:1:1: error: ", kData + "broken.xml:3:", kData + "broken.xml:4:"}},
  };
  for (const auto& c : cases) {
    std::vector<std::string> arguments;
    for (const std::string& path : c.paths) arguments.insert(arguments.end(), {"--db", path});
    const ToolRun run = RunTool(Identify(arguments, {"0x0ABCD043"}));
    EXPECT_EQ(run.exitCode, 2) << "row: " << c.paths.back();
    EXPECT_EQ(run.out, "") << "row: " << c.paths.back();
    std::size_t start = 0;
    for (const std::string& message : c.messages) {
      EXPECT_EQ(run.err.substr(start, message.size()), message) << "row: " << c.paths.back();
      start = run.err.find('\n', start) + 1;
    }
    EXPECT_EQ(start, run.err.size()) << run.err;
  }
}

TEST(Identify, ExitsWith2WhenItsInputOrItsAnswerBreaksOff) {
  const struct {
    const char* command;
    const char* message;
  } cases[] = {
      {"exec \"$0\" identify 0x59604093 > /dev/full", "plddb: error: cannot write standard output: "},
      {"exec \"$0\" identify --json 0x59604093 > /dev/full", "plddb: error: cannot write standard output: "},
      {"exec \"$0\" list --json > /dev/full", "plddb: error: cannot write standard output: "},  // more than is buffered
      {"exec \"$0\" identify - < /", "plddb: error: cannot read standard input: "},             // a folder
  };
  for (const auto& c : cases) {
    const ToolRun run = RunProgram("/bin/sh", {"-c", c.command, PLDDB_TOOL});
    EXPECT_EQ(run.exitCode, 2) << "row: " << c.command;
    EXPECT_TRUE(Contains(run.err, c.message)) << "row: " << c.command << ": " << run.err;
  }
}

}  // namespace
