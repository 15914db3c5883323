// plddb export and plddb merge: what they write, where, and what they warn of.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "Descriptions.h"
#include "program.h"
#include "run_tool.h"
#include "tests/support/read_file.h"
#include "tests/support/temporary_folder.h"
#include "tool/command.h"

namespace {

namespace fs = std::filesystem;
using support::ReadFile;

const std::string kKeys = PLDDB_TEST_DIR "/tool/data/keys.xml";
const std::string kOtherKeys = PLDDB_TEST_DIR "/tool/data/other_keys.xml";

/// A folder that goes with the test.
class Folder : public support::TemporaryFolder {
 public:
  std::string operator/(const std::string& name) const { return (Path() / name).string(); }

  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(Path())) names.push_back(entry.path().filename().string());
    return names;
  }
};

TEST(Export, WritesOneFileInItsCanonicalFormAndTheSameAgain) {
  const Folder folder;
  const ToolRun once = RunTool({"export", kOtherKeys});
  EXPECT_EQ(once.out,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<DeviceDatabase>\n"
            "  <Family Name=\"Other\">\n"
            "    <Device Name=\"PLD1234A\" CodeName=\"OTHER1\"/>\n"
            "  </Family>\n"
            "</DeviceDatabase>\n");
  EXPECT_EQ(once.err, "");
  EXPECT_EQ(once.exitCode, 0);
  const std::string output = folder / "out.xml";
  EXPECT_EQ(RunTool({"export", PLDDB_DATA_DIR "/xilinx.xml", "--output", output}).exitCode, 0);
  EXPECT_EQ(RunTool({"export", output}).out, ReadFile(output));
}

TEST(Merge, WritesTheFamiliesOfAllFilesInTheirOrderAndReportsWhatIsShadowed) {
  const ToolRun run = RunTool({"merge", kKeys, kOtherKeys, kOtherKeys});
  EXPECT_EQ(run.exitCode, 0);
  const plddb::LoadResult merged = plddb::ParseDescriptions(run.out, "merged.xml");
  ASSERT_NE(merged.database, nullptr);
  std::string families;
  for (int i = 0; const FamilyList* const family = merged.database->GetFamily(i); ++i)
    families += std::string(family->GetName()) + " ";
  EXPECT_EQ(families, "First Second Other Other ");
  const std::string other = kOtherKeys + ":";
  for (const std::string& start : {kKeys + ":12:19: warning[name-shadowed]: ", other + "3:17: warning[family-shadowed]: ",
                                   other + "4:19: warning[name-shadowed]: ", other + "4:39: warning[code-name-shadowed]: "}) {
    EXPECT_NE(("\n" + run.err).find("\n" + start), std::string::npos) << "row: " << start << "\n" << run.err;
  }
}

/// The families of a written file, without the comments between them.
std::string Families(const std::string& text) {
  const std::size_t first = text.find("  <Family");
  std::string families = text.substr(first, text.rfind("</DeviceDatabase>") - first);
  for (std::size_t start = 0; (start = families.find("\n  <!--")) != families.npos;) {
    families.erase(start, families.find("-->", start) + 3 - start);
  }
  return families;
}

TEST(Merge, WritesEachFileAsItIsExported) {
  const std::string data = PLDDB_TEST_DIR "/tool/data/";
  const std::vector<std::string> files = {kKeys, data + "backups.xml", PLDDB_TEST_DIR "/descriptions/every_list.xml",
                                          data + "lists.xml", data + "backups.xml"};
  std::string exported;
  std::vector<std::string> command = {"merge"};
  for (const std::string& file : files) {
    exported += Families(RunTool({"export", file}).out);
    command.push_back(file);
  }
  const std::string merged = RunTool(command).out;
  EXPECT_EQ(Families(merged), exported);
  for (const char* const backup :
       {"jtagDeviceIDBackup", "DeviceIDMaskBackup", "BackupARCHLength", "BackupARCHRow", "BackupELength", "BackupERow",
        "BackupAddressLength", "BackupDataLength", "BackupFuseNumber", "BackupPON"}) {
    EXPECT_NE(exported.find(" " + std::string(backup) + "=\""), std::string::npos) << "row: " << backup;
  }
}

TEST(Merge, TakesVersionAndCommentOfTheFirstFile) {
  const Folder folder;
  const auto write = [&](const char* name, const char* root) { std::ofstream(folder / name) << root; };
  write("a.xml", "<DeviceDatabase Version=\"1\"/>");
  write("b.xml", "<DeviceDatabase Version=\"2\" Comment=\"c\"/>");
  const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  EXPECT_EQ(RunTool({"merge", folder / "a.xml", folder / "b.xml"}).out, head + "<DeviceDatabase Version=\"1\"/>\n");
  EXPECT_EQ(RunTool({"merge", folder / "b.xml", folder / "a.xml"}).out,
            head + "<DeviceDatabase Version=\"2\" Comment=\"c\"/>\n");
}

TEST(Merge, ReportsWhichIdcodeFindsAnotherDevice) {
  const std::string file = PLDDB_DATA_DIR "/xilinx.xml";
  const ToolRun run = RunTool({"merge", file, file});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.err.rfind(file + ":", 0), 0U) << run.err.substr(0, 200);
  EXPECT_NE(run.err.find(": warning[id-shadowed]: the IDCODE finds "), std::string::npos) << run.err.substr(0, 200);
}

TEST(Merge, LeavesTheOldFileWholeWhenSomethingFails) {
  const Folder folder;
  const std::string output = folder / "out.xml";
  std::ofstream(output) << "old";
  const ToolRun faulty = RunTool({"merge", kKeys, PLDDB_TEST_DIR "/tool/data/broken.xml", "--output", output});
  EXPECT_EQ(faulty.exitCode, 2);
  EXPECT_EQ(ReadFile(output), "old");
  EXPECT_EQ(folder.Files(), std::vector<std::string>{"out.xml"});
  const ToolRun unwritable = RunTool({"merge", kKeys, "--output", folder / "missing/out.xml"});
  EXPECT_EQ(unwritable.exitCode, 2);
  EXPECT_NE(unwritable.err.find("plddb: error: cannot write "), std::string::npos) << unwritable.err;
}

/// While it lives, no file of this process may become longer: writing fails as on a full disk.
class FullDisk {
 public:
  FullDisk() : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_);
    const struct rlimit none = {0, old_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, handler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  struct rlimit old_ = {};
  void (*const handler_)(int);
};

TEST(Merge, LeavesTheOldFileWholeWhenTheNewOneDoesNotFit) {
  const Folder folder;
  const std::string output = folder / "out.xml";
  std::ofstream(output) << "old";
  Program program;
  program.Parse("merge " + kKeys + " --output " + output);
  std::string message;
  try {
    const FullDisk full;
    program.Run();
  } catch (const tool::Failure& failure) {
    message = failure.what();
  }
  EXPECT_EQ(message.rfind("plddb: error: cannot write " + output, 0), 0U) << message;
  EXPECT_EQ(ReadFile(output), "old");
  EXPECT_EQ(folder.Files(), std::vector<std::string>{"out.xml"});
}

TEST(Merge, ReplacesTheOldFileAndKeepsItsPermissions) {
  const Folder folder;
  const std::string output = folder / "out.xml";
  std::ofstream(output) << "old";
  fs::permissions(output, fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(RunTool({"merge", kKeys, kOtherKeys, "--output", output}).exitCode, 0);
  EXPECT_NE(plddb::LoadDescriptions(output).database, nullptr);
  EXPECT_EQ(fs::status(output).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(folder.Files(), std::vector<std::string>{"out.xml"});
}

TEST(Merge, WritesThroughALinkAndRefusesWhatIsNoRegularFile) {
  const Folder folder;
  std::ofstream(folder / "file.xml") << "old";
  fs::create_symlink("file.xml", folder / "link.xml");
  EXPECT_EQ(RunTool({"merge", kKeys, "--output", folder / "link.xml"}).exitCode, 0);
  EXPECT_TRUE(fs::is_symlink(folder / "link.xml"));
  EXPECT_NE(plddb::LoadDescriptions(folder / "file.xml").database, nullptr);
  EXPECT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
  fs::create_directory(folder / "folder");
  for (const char* const name : {"fifo", "folder"}) {
    const ToolRun run = RunTool({"merge", kKeys, "--output", folder / name});
    EXPECT_EQ(run.exitCode, 2) << "row: " << name;
    EXPECT_NE(run.err.find("it is not a regular file"), std::string::npos) << "row: " << name << ", message: " << run.err;
  }
  EXPECT_TRUE(fs::is_fifo(folder / "fifo"));
}

TEST(Merge, CreatesTheFileThatALinkLeadsTo) {
  const Folder folder;
  fs::create_directory(folder / "sub");
  fs::create_symlink("sub/second.xml", folder / "first.xml");
  fs::create_symlink("new.xml", folder / "sub/second.xml");
  EXPECT_EQ(RunTool({"merge", kKeys, "--output", folder / "first.xml"}).exitCode, 0);
  EXPECT_TRUE(fs::is_symlink(folder / "first.xml"));
  EXPECT_TRUE(fs::is_symlink(folder / "sub/second.xml"));
  EXPECT_NE(plddb::LoadDescriptions(folder / "sub/new.xml").database, nullptr);

  const struct {
    const char* link;
    const char* message;
  } rows[] = {
      {"circle.xml", ": its links lead in a circle\n"},
      {"missing/folder.xml", ": No such file or directory\n"},
  };
  for (const auto& row : rows) {
    const std::string output = folder / "link.xml";
    fs::remove(output);
    fs::remove(folder / "circle.xml");
    fs::create_symlink(row.link, output);
    fs::create_symlink("link.xml", folder / "circle.xml");
    const ToolRun run = RunTool({"merge", kKeys, "--output", output});
    EXPECT_EQ(run.exitCode, 2) << "row: " << row.link;
    EXPECT_NE(run.err.find(row.message), std::string::npos) << "row: " << row.link << ", message: " << run.err;
    EXPECT_TRUE(fs::is_symlink(output)) << "row: " << row.link;
  }
}

TEST(Merge, WritesNothingThatWouldNotLoad) {
  const Folder folder;
  const auto write = [&](const std::string& name, int families, const std::string& content) {
    std::ofstream file(folder / name);
    file << "<DeviceDatabase>";
    for (int i = 0; i < families; ++i) file << "<Family>" << content << "</Family>";
    file << "</DeviceDatabase>";
  };
  write("many.xml", 65535, "");
  write("one.xml", 1, "");
  std::ofstream(folder / "out.xml") << "old";
  for (const char* const output : {"", "out.xml"}) {
    std::vector<std::string> command = {"merge", folder / "many.xml", folder / "one.xml"};
    if (*output != '\0') command.insert(command.end(), {"--output", folder / output});
    const ToolRun run = RunTool(command);
    EXPECT_EQ(run.exitCode, 2) << "row: " << output;
    EXPECT_EQ(run.out, "") << "row: " << output;
    EXPECT_EQ(run.err,
              "plddb: error: nothing is written, since the file would not load: too many Family elements: expected 65535 at "
              "most\n")
        << "row: " << output;
  }
  EXPECT_EQ(ReadFile(folder / "out.xml"), "old");
  EXPECT_EQ(RunTool({"merge", folder / "many.xml", "--output", folder / "out.xml"}).exitCode, 0);
}

/// "LINE:COLUMN: severity[code]" of each message about `file`, with blanks between.
std::string PlacesAndCodes(const std::string& messages, const std::string& file) {
  std::string places;
  std::istringstream lines(messages);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(file + ":", 0) != 0) continue;
    places += (places.empty() ? "" : " ") + line.substr(file.size() + 1, line.find(']') - file.size());
  }
  return places;
}

TEST(Export, ReportsWhatLookupsWillNotFind) {
  const Folder folder;
  const std::string file = folder / "a.xml";
  const struct {
    const char* families;
    const char* reported;
  } rows[] = {
      {R"(<Family Name="A" AliasName="B"/><Family Name="B"/>)", "1:63: warning[family-shadowed]"},
      {R"(<Family Name="A"/><Family Name="A"/>)", "1:49: warning[family-shadowed]"},
      {R"(<Family/><Family AliasName="B"/>)", ""},  // without a name to be found by
      {R"(<Family Name="A"><Device Name="D"/><Device Name="d"/></Family>)", "1:66: warning[name-shadowed]"},
      {R"(<Family Name="A"><!-- plddb: allow name-shadowed --><Device Name="D"/><Device Name="D"/></Family>)",
       "1:101: warning[name-shadowed]"},  // allows it for the other device
      {R"(<Family Name="A"><Device Name="D"/><!-- plddb: allow name-shadowed --><Device Name="D"/></Family>)", ""},
      {R"(<Family Name="A"><Device Name="D" BypassLength="2"/></Family>)", ""},  // for plddb check alone
  };
  for (const auto& row : rows) {
    std::ofstream(file) << "<DeviceDatabase>" << row.families << "</DeviceDatabase>";
    const ToolRun run = RunTool({"export", file});
    EXPECT_EQ(run.exitCode, 0) << "row: " << row.families;
    EXPECT_EQ(PlacesAndCodes(run.err, file), row.reported) << "row: " << row.families << "\n" << run.err;
    EXPECT_NE(run.out, "") << "row: " << row.families;
  }
}

TEST(Export, ReportsNothingOfTheShippedFiles) {
  for (const auto& entry : fs::directory_iterator(PLDDB_DATA_DIR)) {
    if (entry.path().extension() != ".xml") continue;
    EXPECT_EQ(RunTool({"export", entry.path().string()}).err, "") << "row: " << entry.path();
  }
}

/// How many lines of one text the other does not have at that place, when both have as many.
long DifferentLines(const std::string& one, const std::string& other) {
  std::istringstream lines(one);
  std::istringstream otherLines(other);
  long count = 0;
  for (std::string line, otherLine; std::getline(lines, line) && std::getline(otherLines, otherLine);)
    count += line != otherLine;
  return count;
}

TEST(Export, ChangesOneLineForOneValue) {
  const Folder folder;
  std::string text = ReadFile(PLDDB_DATA_DIR "/xilinx.xml");
  const std::string id = "jtagDeviceID=\"0x09604093\"";
  const std::size_t place = text.find(id);
  ASSERT_NE(place, text.npos);
  std::ofstream(folder / "old.xml") << text;
  std::ofstream(folder / "new.xml") << text.replace(place + id.size() - 2, 1, "5");
  const std::string before = RunTool({"export", folder / "old.xml"}).out;
  const std::string after = RunTool({"export", folder / "new.xml"}).out;
  EXPECT_EQ(before.size(), after.size());
  EXPECT_EQ(DifferentLines(before, after), 1);
}

struct LossRow {
  const char* content;   // of a family
  const char* reported;  // LINE:COLUMN, severity and code
  bool isRefused = true;
};

// clang-format off
const LossRow kLossRows[] = {
    {R"(<Device ListControlReg1BitName="L;a;b"/>)",                                         "2:33: error[list-unclosed]"},
    {R"(<Device ListControlReg1BitName="L;a;;b;"/>)",                                       "2:33: error[list-after-empty]"},
    {R"(<Device SysIOList='"a" b "c"'/>)",                                                  "2:20: error[list-outside]"},
    {R"(<Device SysIOList='"a" "b'/>)",                                                     "2:20: error[list-unclosed]"},
    {R"(<Device SysIOList='"a" "" "b"'/>)",                                                 "2:20: error[list-after-empty]"},
    {R"(<Device ListControlReg1BitName="L;a;" ListControlReg1Address="L;0x10;"/>)",         "2:63: error[list-number]"},
    {R"(<Device ListControlReg1BitName="L;a;" ListControlReg1Address="L;4294967296;"/>)",   "2:63: error[list-number]"},
    {R"(<Device ListControlReg1BitName="L;a;" ListControlReg1Address="L;1;2;"/>)",          "2:63: error[list-surplus]"},
    {R"(<Device ListControlReg1BitName="L;a;" ListControlReg1Address="1;2;"/>)",            "2:63: warning[list-label]", false},
    {R"(<Device MultibootCfgAddr="12 x"/>)",                                                "2:27: error[list-number]"},
    {R"(<Device MultibootAutoAdd="1111111111 1111111111 1111111111 1111111111 1111111111 1111111111"/>)",
                                                                                            "2:27: error[list-long]"},
    {R"(<Device><EBR Name="E" BitName="8" Column="31 to 0" Address="5 to 6"/></Device>)",   "2:43: error[ebr-reversed]"},
    {R"(<!-- plddb: allow list-unclosed --><Device SysIOList='"a'/>)",                      "2:55: error[list-unclosed]"},
    {R"(<Device ListControlReg1BitName="L;a;b;" ListControlReg1Address="L;1;"/>)",          "", false},
    {R"(<Device SysIOList='"a", "b"'/>)",                                                   "", false},
    {R"(<Device ListControlReg1BitName="a"/>)",                                             "2:33: error[list-unclosed]"},
};
// clang-format on

TEST(ExportAndMerge, WriteNothingWhenValuesWouldBeLostUnlessForced) {
  const Folder folder;
  const std::string file = folder / "a.xml";
  const std::string output = folder / "out.xml";
  for (const LossRow& row : kLossRows) {
    std::ofstream(file) << "<DeviceDatabase><Family>\n" << row.content << "</Family></DeviceDatabase>";
    for (const char* const command : {"export", "merge"}) {
      std::ofstream(output) << "old";
      const ToolRun refused = RunTool({command, file, "--output", output});
      EXPECT_EQ(PlacesAndCodes(refused.err, file), row.reported) << "row: " << command << ' ' << row.content << "\n"
                                                                 << refused.err;
      EXPECT_EQ(refused.exitCode, row.isRefused ? 1 : 0) << "row: " << command << ' ' << row.content;
      EXPECT_EQ(ReadFile(output) == "old", row.isRefused) << "row: " << command << ' ' << row.content;
      EXPECT_EQ(refused.err.find("plddb: error: nothing is written, ") != std::string::npos, row.isRefused) << refused.err;
      EXPECT_EQ(RunTool({command, file}).out.empty(), row.isRefused) << "row: " << command << ' ' << row.content;
      const ToolRun forced = RunTool({command, "--force", file, "--output", output});
      EXPECT_EQ(PlacesAndCodes(forced.err, file), row.reported) << "row: " << command << ' ' << row.content;
      EXPECT_EQ(forced.exitCode, 0) << "row: " << command << ' ' << row.content;
      const ToolRun again = RunTool({"export", output});
      EXPECT_EQ(again.err, "") << "row: " << command << ' ' << row.content;
      EXPECT_EQ(again.out, ReadFile(output)) << "row: " << command << ' ' << row.content;
    }
  }
}

TEST(Merge, ReportsLostValuesOfEachFile) {
  const Folder folder;
  std::string files[] = {folder / "a.xml", folder / "b.xml"};
  for (const std::string& file : files) {
    std::ofstream(file) << "<DeviceDatabase><Family><Device SysIOList='\"a'/></Family></DeviceDatabase>";
  }
  const ToolRun run = RunTool({"merge", kKeys, files[0], files[1]});
  for (const std::string& file : files) EXPECT_EQ(PlacesAndCodes(run.err, file), "1:44: error[list-unclosed]") << run.err;
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.out, "");
}

TEST(Export, WritesAnAdapterWithoutNamesSoThatItLoads) {
  const DeviceListOwner database = MakeDeviceList();
  Adapter nameless;
  database->NewFamily()->NewDevice()->GetDevicePackage()->NewPackage()->AddAdapter(&nameless);
  EXPECT_NE(plddb::ParseDescriptions(plddb::WriteDescriptions(*database), "written.xml").database, nullptr);
}

TEST(Merge, MayWriteOverOneOfItsFiles) {
  const Folder folder;
  const std::string file = folder / "both.xml";
  fs::copy_file(kKeys, file);
  EXPECT_EQ(RunTool({"merge", file, kOtherKeys, "--output", file}).exitCode, 0);
  EXPECT_EQ(plddb::LoadDescriptions(file).database->GetFamilyCount(), 3);
}

TEST(ExportAndMerge, RefuseWrongUsage) {
  for (const char* const arguments : {"export", "merge", "export a.xml b.xml", "merge --output x", "export --unknown a.xml"}) {
    const ToolRun run = RunTool(Words(arguments));
    EXPECT_EQ(run.exitCode, 2) << "row: " << arguments;
    EXPECT_EQ(run.out, "") << "row: " << arguments;
    EXPECT_NE(run.err, "") << "row: " << arguments;
  }
}

}  // namespace
