// plddb fits: files and chains in, an answer and an exit code out. What the answer is, is tested with the library.

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "json_schema.h"
#include "run_tool.h"
#include "tests/programming_files/samples.h"
#include "tests/support/read_file.h"
#include "tests/support/temporary_folder.h"

namespace {

using Json = nlohmann::json;

const std::string kCounter = PLDDB_TEST_DIR "/../examples/counter.jed";

/// A folder with the files that the tests ask about; their names tell another format on purpose.
class Fits : public testing::Test {
 protected:
  std::string Write(const std::string& name, const std::string& bytes) {
    const std::string path = (folder_.Path() / name).string();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }

  const std::string& Bit() {
    static const std::string bytes = samples::Bit("7a35tcpg236", samples::WideStream(0x0362D093));
    return bytes;
  }

 private:
  support::TemporaryFolder folder_;
};

TEST_F(Fits, PrintsDeviceVerdictAndReasons) {
  const ToolRun run = RunTool({"fits", kCounter, "0x59602093", "0x59604093"});
  EXPECT_EQ(run.out, kCounter +
                         ": JEDEC fuse map\n"
                         "  device: XC9572XL (plddb show XC9572XL)\n"
                         "  fits position 1\n"
                         "    name 'XC9572XL-10-VQ44' (line 9): XC9572XL\n"
                         "    46656 fuses (line 4): XC9572XL, XC9572XV\n"
                         "    position 0 (0x59602093, XC9536XL): the wrong device\n"
                         "    position 1 (0x59604093, XC9572XL): fits\n"
                         "    package and speed grade cannot be read through JTAG; the file is for VQ44\n"
                         "    XC9572XL, XC9572XV share this number of fuses\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST_F(Fits, ExitCodeIsTheAnswer) {
  const std::string bit = Write("top.svf", Bit());
  const std::string several = Write("count.jed", samples::Jedec("x*QF186624*"));
  const std::string text = Write("notes.jed", "Remember the milk.\n");
  const std::string scan = Write("scan.log", "0x59604093\n0x59604093\n");
  const struct {
    const char* what;
    std::vector<std::string> arguments;
    int exitCode;
    const char* line;
  } cases[] = {
      {"device known", {kCounter}, 0, "\n  device: XC9572XL ("},
      {"fits", {kCounter, "59604093"}, 0, "\n  fits position 0\n"},
      {"fits several", {kCounter, "--scan", scan}, 0, "\n  fits several positions: 0, 1\n"},
      {"fits none", {kCounter, "0x59602093"}, 1, "\n  fits no position\n"},
      {"several devices", {several}, 1, "\n  device: XC95216, XC95288XL, XC95288XV ("},
      {"cannot be decided", {several, "0x09616093"}, 1, "\n  cannot be decided\n"},
      {"no programming file", {text}, 1, "\n  device: not known\n"},
      {"two files, both known", {kCounter, bit}, 0, "device: XC7A35T ("},
      {"two files, one fits", {kCounter, bit, "0x59604093"}, 1, "fits no position"},
      {"two files for a chain of two", {kCounter, bit, "0x59604093", "0362d093"}, 0, "fits position 1"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> arguments = {"fits"};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    const ToolRun run = RunTool(arguments);
    EXPECT_EQ(run.exitCode, c.exitCode) << c.what << run.err;
    EXPECT_NE(run.out.find(c.line), std::string::npos) << c.what << "\n" << run.out;
    EXPECT_EQ(run.err, "") << c.what;
  }
}

TEST_F(Fits, RefusesWrongUsageAndUnreadableFiles) {
  const std::string bad = Write("bad.log", "this is no scan\n");
  const struct {
    std::vector<std::string> arguments;
    const char* message;
  } cases[] = {
      {{}, "FILE is required"},
      {{"0x59604093"}, "FILE is required"},
      {{"-"}, "FILE is required"},
      {{"/no/such/file"}, "/no/such/file:1:1: error: cannot read the file: No such file or directory"},
      {{PLDDB_TEST_DIR}, ":1:1: error: cannot read the file: Is a directory"},
      {{kCounter, "0x123456789"}, "0x123456789:1:1: error: cannot read the file"},
      {{kCounter, "0x59604093", "--scan", bad}, "IDs exclude --scan"},
      {{kCounter, "--scan", bad}, "bad.log:1:1: error: "},
      {{kCounter, "--ir", "0=8"}, "--ir needs a chain"},
      {{kCounter, "0x59604093", "--ir", "1=8"}, "--ir 1=8: expected POSITION=LENGTH"},
      {{kCounter, "--db", "/no/such/db.xml"}, "/no/such/db.xml"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> arguments = {"fits"};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    const ToolRun run = RunTool(arguments);
    EXPECT_NE(run.err.find(c.message), std::string::npos) << c.message << "\n" << run.err;
    EXPECT_EQ(run.out, "") << c.message;
    EXPECT_EQ(run.exitCode, 2) << c.message;
  }
}

TEST_F(Fits, ReadsIdsAndScansFromStandardInput) {
  EXPECT_EQ(RunTool({"fits", kCounter, "-"}, "# board\n59604093\n").exitCode, 0);
  EXPECT_EQ(RunTool({"fits", kCounter, "--scan", "-"}, "59602093\n").exitCode, 1);
}

TEST_F(Fits, AFileThatLooksLikeAnIdIsGivenByItsPath) {
  const std::string path = Write("59604093", support::ReadFile(kCounter));
  EXPECT_EQ(RunTool({"fits", path, "59604093"}).exitCode, 0);
}

TEST_F(Fits, AnInstructionLengthTellsTwoPartsApart) {
  const std::string path = Write("x.jed", samples::XilinxJedec("XCR3064XL-10-VQ44", "24481"));
  EXPECT_EQ(RunTool({"fits", path, "0x0484A093"}).exitCode, 1);
  EXPECT_EQ(RunTool({"fits", path, "0x0484A093", "--ir", "0=5"}).exitCode, 0);
}

TEST_F(Fits, TheOrderTellsForWhichPositionAPaddingIs) {
  const std::string path =
      Write("x.svf", samples::Svf("HIR 8 TDI (ff); HDR 1 TDI (0);\n" + samples::SvfCheck("8", "fe", "f9604093", "0fffffff")));
  EXPECT_EQ(RunTool({"fits", path, "0x59604093", "0x06E1C093"}).exitCode, 1);
  EXPECT_EQ(RunTool({"fits", path, "--order", "tdi", "0x59604093", "0x06E1C093"}).exitCode, 0);
  EXPECT_EQ(RunTool({"fits", path, "--order", "tdi"}).exitCode, 2);
}

TEST_F(Fits, WarnsOfDamageAndStillAnswers) {
  const std::string bit = Write("cut.bit", Bit().substr(0, Bit().size() - 1));
  const std::string svf = Write("cut.svf", "TRST OFF;\nSIR 8 TDI (fe);\nSDR 32 TDI (0) TDO (f9604093) MASK (0fffffff);\nSTATE");
  const struct {
    std::string path;
    const char* id;
    std::string message;
  } cases[] = {
      {bit, "0x0362D093", bit + ": warning: byte " + std::to_string(Bit().size() - 1) + ": the file ends after "},
      {svf, "0x59604093", svf + ":4:1: warning: the file ends in this statement"},
  };
  for (const auto& c : cases) {
    const ToolRun run = RunTool({"fits", c.path, c.id});
    EXPECT_EQ(run.err.substr(0, c.message.size()), c.message);
    EXPECT_EQ(run.exitCode, 0) << c.path;
    const Json json = Json::parse(RunTool({"fits", "--json", c.path, c.id}).out);
    EXPECT_EQ(json[0]["reasons"].back().get<std::string>().substr(0, 9), "damaged (") << c.path;
  }
}

TEST_F(Fits, JsonKeepsToItsSchema) {
  const std::vector<std::string> files = {kCounter,
                                          Write("a.x", Bit()),
                                          Write("b.x", samples::Svf(samples::SvfCheck("8", "fe", "f9604093", "0fffffff"))),
                                          Write("c.x", ""),
                                          Write("d.x", samples::Pof("EP4CE6E22C8")),
                                          Write("e.x", "\xFF\xFE \x02 bytes that are no UTF-8")};
  std::vector<std::string> arguments = {"fits", "--json"};
  arguments.insert(arguments.end(), files.begin(), files.end());
  EXPECT_EQ(SchemaFaults("fits.json", RunTool(arguments).out), "");
  arguments.emplace_back("0x59604093");
  const ToolRun run = RunTool(arguments);
  EXPECT_EQ(SchemaFaults("fits.json", run.out), "");
  const Json json = Json::parse(run.out);
  ASSERT_EQ(json.size(), files.size());
  EXPECT_EQ(json[0]["file"], kCounter);
  EXPECT_EQ(json[0]["format"], "jedec");
  EXPECT_EQ(json[0]["fuseCount"], 46656);
  EXPECT_EQ(json[0]["devices"], Json::parse(R"(["XC9572XL"])"));
  EXPECT_EQ(json[0]["verdict"], "fits");
  EXPECT_EQ(json[0]["positions"], Json::parse("[0]"));
  EXPECT_EQ(json[2]["statements"][0],
            Json::parse(R"({"kind": "id", "text": "IDCODE check", "value": "0xF9604093", "mask": "0x0FFFFFFF", "line": 10})"));
  EXPECT_EQ(json[1]["statements"][0]["offset"], Bit().find("7a35t")) << json[1]["statements"];
}

}  // namespace
