// plddb import, and plddb check --bsdl: from makers' files to descriptions, and back.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "Descriptions.h"
#include "run_tool.h"
#include "tests/bsdl/sample.h"
#include "tests/support/read_file.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

/// A folder with a BSDL file "a.bsd", and others.
class Folder : public support::TemporaryFolder {
 public:
  Folder() { Write("a.bsd", sample::kText); }

  std::string operator/(const std::string& name) const { return (Path() / name).string(); }

  std::string Write(const std::string& name, const std::string& text) const {
    fs::create_directories((Path() / name).parent_path());
    std::ofstream(*this / name, std::ios::binary) << text;
    return *this / name;
  }

  std::string Read(const std::string& name) const { return support::ReadFile(*this / name); }
};

TEST(Import, LeadsFromAMakersFileToAnIdentifiedChain) {
  const Folder folder;
  const ToolRun import =
      RunTool({"import", folder / "a.bsd", "--family", "PLD1200", "--vendor", "Example", "--output", folder / "my.xml"});
  EXPECT_EQ(import.err, "");
  EXPECT_EQ(import.out, "");
  EXPECT_EQ(import.exitCode, 0);
  EXPECT_EQ(RunTool({"check", "--strict", folder / "my.xml"}).exitCode, 0);
  EXPECT_EQ(RunTool({"check", "--strict", "--missing", "--bsdl", folder / "a.bsd", folder / "my.xml"}).exitCode, 0);
  const ToolRun identify = RunTool({"identify", "--db", folder / "my.xml", "0x51234057"});
  EXPECT_NE(identify.out.find("PLD1234A"), std::string::npos) << identify.out;
  EXPECT_EQ(identify.exitCode, 0);
  const ToolRun find = RunTool({"find", "--entity", "pld1234a_tq100", "--db", folder / "my.xml"});
  EXPECT_NE(find.out.find("PLD1234A"), std::string::npos) << find.out;
  const ToolRun show = RunTool({"show", "PLD1234A", "--db", folder / "my.xml"});
  EXPECT_NE(show.out.find("BSDLFile"), std::string::npos) << show.out;
  EXPECT_NE(show.out.find("a.bsd"), std::string::npos) << show.out;
  EXPECT_NE(show.out.find("BSDLFileTime"), std::string::npos) << show.out;
}

TEST(Import, WritesToStandardOutput) {
  const Folder folder;
  const ToolRun run =
      RunTool({"import", folder / "a.bsd", "--family", "F", "--name", "N1", "--package", "P1", "--vendor", "V1"});
  EXPECT_EQ(run.exitCode, 0);
  for (const char* const part :
       {"Family Name=\"F\"", "Name=\"N1\"", "Type=\"P1\"", "Vendor=\"V1\"", "<!-- From a.bsd (PLD1234A_TQ100):"}) {
    EXPECT_NE(run.out.find(part), std::string::npos) << "row: " << part << "\n" << run.out;
  }
  EXPECT_NE(plddb::ParseDescriptions(run.out, "out.xml").database, nullptr);
}

TEST(Import, WarnsAndWrites) {
  const Folder folder;
  const std::string file = folder.Write("b.bsd", sample::With("\"XXXX\" &\n", "\"0001\" &\n"));
  const ToolRun run = RunTool({"import", file, "--family", "F"});
  EXPECT_EQ(run.err, file + ":30:6: warning: the IDCODE fixes the version, bits 31 to 28: DeviceIDScanMask leaves it out\n");
  EXPECT_NE(run.out, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(Import, RefusesAllFilesForTheFaultsOfOne) {
  const Folder folder;
  const std::string faulty = folder.Write("b.bsd", sample::With("(00000001)", "(00000021)"));
  const std::string open = folder.Write("c.bsd", sample::With("    \"00000101011\" &\n", "    \"0000010101X\" &\n"));
  const ToolRun run =
      RunTool({"import", folder / "a.bsd", faulty, open, folder / "none.bsd", "--family", "F", "--output", folder / "my.xml"});
  EXPECT_EQ(run.err, faulty + ":25:20: error: expected a code of the digits 0, 1 and X, found \"2\"\n" + open +
                         ":30:6: error: the IDCODE leaves the maker open, bits 11 to 1: other devices answer to it, too\n" +
                         (folder / "none.bsd") + ":1:1: error: cannot read the file: No such file or directory\n");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_FALSE(fs::exists(folder / "my.xml"));
}

TEST(Import, NamesFilesThatContradictEachOther) {
  const Folder folder;
  const std::string other = folder.Write("b.bsd", sample::With("IDCODE (11111110)", "IDCODE (11111100)"));
  const ToolRun run = RunTool({"import", folder / "a.bsd", other, "--family", "F"});
  EXPECT_EQ(run.err, other + ":26:14: error: the code of IDCODE of PLD1234A is 11111100, but 11111110 in " +
                         (folder / "a.bsd") + ":26:14\n");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.exitCode, 2);
}

TEST(Import, PutsDevicesIntoAFile) {
  const Folder folder;
  const std::string my =
      folder.Write("my.xml", "<!-- mine -->\n<DeviceDatabase>\n  <Family Name=\"F\"/> <!-- this -->\n</DeviceDatabase>\n");
  const ToolRun run = RunTool({"import", folder / "a.bsd", "--family", "F", "--into", my});
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.exitCode, 0);
  const std::string once = folder.Read("my.xml");
  EXPECT_EQ(once.rfind("<!-- mine -->\n<DeviceDatabase>\n  <Family Name=\"F\">\n    <!-- From a.bsd", 0), 0U) << once;
  EXPECT_NE(once.find("  </Family> <!-- this -->\n</DeviceDatabase>\n"), std::string::npos) << once;
  const ToolRun again = RunTool({"import", folder / "a.bsd", "--family", "F", "--into", my, "--output", folder / "out.xml"});
  EXPECT_EQ(again.exitCode, 0);
  EXPECT_EQ(folder.Read("out.xml"), once);
  const ToolRun other = RunTool({"import", folder / "a.bsd", "--family", "G", "--into", my});
  EXPECT_EQ(other.exitCode, 0);
  EXPECT_NE(other.err.find("warning[name-shadowed]: "), std::string::npos) << other.err;  // one of them is not found any more
}

TEST(Import, LeavesTheFileAsItWasWhenItRefuses) {
  const Folder folder;
  const char* const rows[] = {
      "<DeviceDatabase><Family Nam=\"F\"/></DeviceDatabase>",
      "<DeviceDatabase><Family Name=\"F\"><Device Name=\"PLD1234A\" IRLength=\"9\"/></Family></DeviceDatabase>"};
  for (const char* const text : rows) {
    const std::string my = folder.Write("my.xml", text);
    const ToolRun run = RunTool({"import", folder / "a.bsd", "--family", "F", "--into", my});
    EXPECT_EQ(run.err.rfind(my + ":1:", 0), 0U) << run.err;
    EXPECT_EQ(run.exitCode, 2) << "row: " << text;
    EXPECT_EQ(folder.Read("my.xml"), text);
  }
}

TEST(Import, WritesTimesOnlyWithAUnit) {
  const Folder folder;
  const std::string file = folder.Write(
      "b.bsd",
      sample::With("end PLD", "attribute ISC_FLOW of X : entity is \"REPEAT 10 (ISC_PROGRAM 32:? WAIT 2.0e-3)\"; end PLD"));
  const struct {
    std::vector<std::string> units;
    const char* time;
  } rows[] = {{{}, ""},
              {{"--units"}, " ProgramTime=\"2000\""},
              {{"--units", "ms"}, " ProgramTime=\"2\""},
              {{"--units=us"}, " ProgramTime=\"2000\""},
              {{"--units", "s"}, " ProgramTime=\"1\""}};
  for (const auto& row : rows) {
    std::vector<std::string> words = {"import", file, "--family", "F"};
    words.insert(words.end(), row.units.begin(), row.units.end());
    const ToolRun run = RunTool(words);
    EXPECT_EQ(run.err, "") << "row: " << row.time;
    EXPECT_EQ(run.exitCode, 0) << "row: " << row.time;
    EXPECT_NE(run.out.find(row.time), std::string::npos) << "row: " << row.time << run.out;
    EXPECT_EQ(run.out.find("ProgramTime") == std::string::npos, row.units.empty());
  }
  EXPECT_EQ(RunTool({"import", file, "--family", "F", "--units", "hours"}).exitCode, 2);
}

TEST(Import, RefusesWrongUsage) {
  for (const char* const line : {"import", "import a.bsd", "import --family F", "import a.bsd --family",
                                 "import a.bsd --family F --nam X", "import /nowhere/a.bsd --family F"}) {
    const ToolRun run = RunTool(Words(line));
    EXPECT_EQ(run.exitCode, 2) << "row: " << line;
    EXPECT_EQ(run.out, "") << "row: " << line;
    EXPECT_NE(run.err, "") << "row: " << line;
  }
  const Folder folder;
  EXPECT_EQ(RunTool({"import", folder / "a.bsd", "--family", ""}).exitCode, 2);
}

TEST(CheckBsdl, ComparesWithFilesAndFolders) {
  const Folder folder;
  folder.Write("deep/er/B.BSD", sample::AllReplaced(sample::kText, "PLD1234A", "PLD1238A"));
  folder.Write("deep/text.txt", "no BSDL");
  const std::string my = folder.Write("my.xml",
                                      "<DeviceDatabase><Family Name='F'>\n<Device Name='PLD1234A' jtagDeviceID='0x01234057' "
                                      "DeviceIDScanMask='0x0FFFFFFF' IRLength='9'/>\n</Family></DeviceDatabase>");
  const std::string other = folder.Write("other.xml", "<DeviceDatabase/>");
  const std::string finding = my + ":2:91: error[bsdl-ir-length]: IRLength is 9, but 8 in ";
  const struct {
    std::vector<std::string> words;
    std::string out;
    int code;
  } rows[] = {
      {{"check", "--bsdl", folder / "a.bsd", my}, finding + (folder / "a.bsd") + ":21:62\n", 1},
      {{"check", my, "--bsdl", folder / "a.bsd"}, finding + (folder / "a.bsd") + ":21:62\n", 1},
      {{"check", "--bsdl", folder.Path().string(), my}, finding + (folder / "a.bsd") + ":21:62\n", 1},
      {{"check", "--bsdl", folder / "deep", my}, finding + (folder / "deep/er/B.BSD") + ":21:62\n", 1},
      {{"check", "--bsdl", folder / "a.bsd", folder / "deep", other, my}, finding + (folder / "a.bsd") + ":21:62\n", 1},
      {{"check", "--bsdl", folder / "a.bsd", other}, "", 0},
      {{"check", "--allow", "bsdl-ir-length", "--bsdl", folder / "a.bsd", my}, "", 0},
      {{"check", "--bsdl", folder / "none.bsd", other},
       (folder / "none.bsd") + ":1:1: error[bsdl-file]: cannot read the file: No such file or directory\n",
       2},
  };
  for (const auto& row : rows) {
    const ToolRun run = RunTool(row.words);
    EXPECT_EQ(run.out, row.out) << "row: " << testing::PrintToString(row.words) << run.err;
    EXPECT_EQ(run.exitCode, row.code) << "row: " << testing::PrintToString(row.words);
  }
  const ToolRun missing = RunTool({"check", "--missing", "--json", "--bsdl", folder / "a.bsd", my});
  EXPECT_NE(missing.out.find("bsdl-missing"), std::string::npos) << missing.out;
  EXPECT_NE(RunTool({"check", "--list-codes"}).out.find("bsdl-missing"), std::string::npos);
  fs::create_directory(folder / "empty");
  for (const std::vector<std::string>& words : {std::vector<std::string>{"check", "--bsdl", folder / "a.bsd"},
                                                {"check", "--missing", my},
                                                {"check", "--bsdl", folder / "empty", my}}) {
    EXPECT_EQ(RunTool(words).exitCode, 2) << "row: " << testing::PrintToString(words);
  }
}

}  // namespace
