// Which description files a command reads, where they come from, and in which order: plddb list --files.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "json_schema.h"
#include "run_tool.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/// An installation with two shipped files, b.xml and a.xml; a user's folder; and files anywhere else. Each describes a device
/// named as the file, all under one IDCODE.
class DataFiles : public testing::Test {
 protected:
  DataFiles() {
    fs::create_directories(Path("bin"));
    fs::create_directories(Path("home/empty"));
    fs::copy_file(PLDDB_TOOL, Path("bin/plddb"));
    for (const char* const file : {"share/plddb/b.xml", "share/plddb/a.xml"}) Describe(file);
  }

  std::string Path(const std::string& name) const { return (folder_.Path() / name).string(); }

  void Write(const std::string& name, const std::string& text) const {
    fs::create_directories(fs::path(Path(name)).parent_path());
    std::ofstream(Path(name)) << text;
  }

  void Describe(const std::string& name) const {
    Write(name, "<DeviceDatabase><Family Name=\"F\"><Device Name=\"" + name + "\" CodeName=\"" + name +
                    "\" Comm=\"JTAG\" jtagDeviceID=\"0x0ABCD043\" DeviceIDScanMask=\"0x0FFFFFFF\"/></Family></DeviceDatabase>");
  }

  /// Runs the installed command. In every word @ is replaced by the folder.
  ToolRun Run(const std::string& environment, const std::string& arguments) const {
    Texts command = {"-i"};
    for (const std::string& word : Words(environment)) command.push_back(word);
    command.push_back(Path("bin/plddb"));
    for (const std::string& word : Words(arguments)) command.push_back(word);
    for (std::string& word : command) {
      for (std::size_t at; (at = word.find('@')) != word.npos;) word.replace(at, 1, folder_.Path().string());
    }
    return RunProgram("/usr/bin/env", command);
  }

  /// The files in their order, each with its origin: "shipped share/plddb/a.xml".
  Texts Files(const std::string& environment, const std::string& arguments = "") const {
    const ToolRun run = Run(environment, "list --files --json " + arguments);
    if (run.exitCode != 0) return {"exit code " + std::to_string(run.exitCode) + ": " + run.err};
    Texts files;
    const auto parsed = nlohmann::json::parse(run.out);
    for (const auto& file : parsed["files"]) {
      std::string path = file["file"];
      if (path.rfind(Path(""), 0) == 0) path.erase(0, Path("").size());
      files.push_back(file["from"].get<std::string>() + ' ' + path);
    }
    return files;
  }

  const support::TemporaryFolder folder_;
};

const Texts kShipped = {"shipped share/plddb/a.xml", "shipped share/plddb/b.xml"};

Texts BeforeShipped(Texts files) {
  files.insert(files.end(), kShipped.begin(), kShipped.end());
  return files;
}

TEST_F(DataFiles, AreTheShippedOnesIfNoneAreNamed) {
  for (const char* const environment : {"", "HOME=@/home", "HOME=", "HOME=@/missing", "XDG_CONFIG_HOME=", "PLDDB_PATH=",
                                        "PLDDB_PATH=:", "XDG_CONFIG_HOME=@/missing", "PLDDB_PATH=@/home/empty"}) {
    EXPECT_EQ(Files(environment), kShipped) << "row: " << environment;
  }
}

TEST_F(DataFiles, ComeInTheOrderCommandLineEnvironmentUserShipped) {
  Describe("home/.config/plddb/user.xml");
  Describe("xdg/plddb/z.xml");
  Describe("xdg/plddb/y.xml");
  Describe("own.xml");
  Describe("path/1.xml");
  Describe("path/2.xml");
  const struct {
    const char* environment;
    const char* arguments;
    Texts files;
  } rows[] = {
      {"HOME=@/home", "", BeforeShipped({"user home/.config/plddb/user.xml"})},
      {"HOME=@/home XDG_CONFIG_HOME=@/xdg", "", BeforeShipped({"user xdg/plddb/y.xml", "user xdg/plddb/z.xml"})},
      {"HOME=@/home XDG_CONFIG_HOME=", "", BeforeShipped({"user home/.config/plddb/user.xml"})},
      {"HOME=@/home XDG_CONFIG_HOME=xdg", "", BeforeShipped({"user home/.config/plddb/user.xml"})},  // not a whole path
      {"PLDDB_PATH=@/own.xml", "", BeforeShipped({"PLDDB_PATH own.xml"})},
      {"PLDDB_PATH=@/path", "", BeforeShipped({"PLDDB_PATH path/1.xml", "PLDDB_PATH path/2.xml"})},
      {"PLDDB_PATH=@/path/", "", BeforeShipped({"PLDDB_PATH path/1.xml", "PLDDB_PATH path/2.xml"})},
      {"PLDDB_PATH=@/path/2.xml:@/own.xml", "", BeforeShipped({"PLDDB_PATH path/2.xml", "PLDDB_PATH own.xml"})},
      {"PLDDB_PATH=::@/own.xml:", "", BeforeShipped({"PLDDB_PATH own.xml"})},
      {"", "--db +@/own.xml", BeforeShipped({"command line own.xml"})},
      {"", "--db=+@/path", BeforeShipped({"command line path/1.xml", "command line path/2.xml"})},
      {"PLDDB_PATH=@/path/1.xml HOME=@/home", "--db +@/own.xml --db +@/path/2.xml",
       BeforeShipped(
           {"command line own.xml", "command line path/2.xml", "PLDDB_PATH path/1.xml", "user home/.config/plddb/user.xml"})},
      {"PLDDB_PATH=@/path HOME=@/home", "--db @/own.xml", {"command line own.xml"}},  // in place of all others
      {"PLDDB_PATH=@/path", "--db @/own.xml --db +@/path/2.xml", {"command line path/2.xml", "command line own.xml"}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Files(row.environment, row.arguments), row.files) << "row: " << row.environment << ' ' << row.arguments;
  }
}

TEST_F(DataFiles, AreReadOnceUnlessTheCommandLineNamesThemTwice) {
  Describe("own.xml");
  Describe("xdg/plddb/y.xml");
  fs::create_symlink(Path("own.xml"), Path("link.xml"));
  const struct {
    const char* environment;
    const char* arguments;
    Texts files;
  } rows[] = {
      {"PLDDB_PATH=@/own.xml:@/own.xml", "", BeforeShipped({"PLDDB_PATH own.xml"})},
      {"PLDDB_PATH=@/own.xml", "--db +@/link.xml", BeforeShipped({"command line link.xml"})},
      {"PLDDB_PATH=@/xdg/plddb XDG_CONFIG_HOME=@/xdg", "", BeforeShipped({"PLDDB_PATH xdg/plddb/y.xml"})},
      {"", "--db +@/share/plddb/b.xml", {"command line share/plddb/b.xml", "shipped share/plddb/a.xml"}},
      {"", "--db @/own.xml --db @/own.xml", {"command line own.xml", "command line own.xml"}},  // as it was asked for
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Files(row.environment, row.arguments), row.files) << "row: " << row.environment << ' ' << row.arguments;
  }
}

TEST_F(DataFiles, AreNeitherHiddenNorFolders) {
  for (const char* const name : {".#x.xml", "._x.xml", ".x.xml", ".xml", "x.xml~", "#x.xml#", "x.XML", "x.txt", "xml"}) {
    Write(std::string("xdg/plddb/") + name, "no XML");
  }
  Write("xdg/plddb/sub.xml/y.xml", "no XML");
  fs::create_symlink("nowhere", Path("xdg/plddb/.#lock.xml"));  // as editors leave them
  EXPECT_EQ(Files("XDG_CONFIG_HOME=@/xdg"), kShipped);
  EXPECT_EQ(Files("PLDDB_PATH=@/xdg/plddb"), kShipped);
  Describe("xdg/plddb/good.xml");
  EXPECT_EQ(Files("", "--db @/xdg/plddb"), Texts{"command line xdg/plddb/good.xml"});
  Write("share/plddb/.hidden.xml", "no XML");
  EXPECT_EQ(Files("", "--db +@/xdg/plddb"), BeforeShipped({"command line xdg/plddb/good.xml"}));
}

TEST_F(DataFiles, OfOnesOwnComeFirstInAnswers) {
  Describe("own.xml");
  const struct {
    const char* environment;
    const char* arguments;
    const char* device;
  } rows[] = {
      {"", "", "share/plddb/a.xml"},
      {"PLDDB_PATH=@/own.xml", "", "own.xml"},
      {"", "--db +@/own.xml", "own.xml"},
      {"", "--db +@/share/plddb/b.xml", "share/plddb/b.xml"},
  };
  for (const auto& row : rows) {
    const std::string command = std::string("identify --format tsv ") + row.arguments + " 0x1ABCD043";
    const ToolRun run = Run(row.environment, command);
    EXPECT_NE(run.out.find(std::string("\t") + row.device + "\t"), std::string::npos)
        << "row: " << row.environment << ' ' << row.arguments << "\n"
        << run.out << run.err;
  }
}

TEST_F(DataFiles, ThatAreBrokenStopTheRun) {
  Write("broken.xml", "<DeviceDatabase><Family/></DeviceDatabase");
  Write("xdg/plddb/x.xml", "");
  Write("home/.config/plddb/x.xml", "<DeviceDatabase Nmae=\"\"/>");
  const struct {
    const char* environment;
    const char* arguments;
    const char* file;
  } rows[] = {
      {"", "--db +@/broken.xml", "broken.xml"},         {"", "--db +@/missing.xml", "missing.xml"},
      {"", "--db +@/home/empty", "home/empty"},         {"", "--db @/home/empty", "home/empty"},
      {"PLDDB_PATH=@/broken.xml", "", "broken.xml"},    {"PLDDB_PATH=@/missing", "", "missing"},
      {"XDG_CONFIG_HOME=@/xdg", "", "xdg/plddb/x.xml"}, {"HOME=@/home", "", "home/.config/plddb/x.xml"},
  };
  for (const auto& row : rows) {
    for (const char* const command : {"list --files", "list", "identify 0x1ABCD043", "find PLD", "show PLD"}) {
      const ToolRun run = Run(row.environment, std::string(command) + ' ' + row.arguments);
      EXPECT_EQ(run.exitCode, 2) << "row: " << row.environment << ' ' << command << ' ' << row.arguments;
      EXPECT_EQ(run.err.rfind(Path(row.file) + ":1:", 0), 0U) << run.err;
      EXPECT_EQ(run.out, "");
    }
  }
}

TEST_F(DataFiles, HaveToBeNamed) {
  const ToolRun run = Run("", "list --files --db=+");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_NE(run.err.find("--db: the name of a file or folder is missing"), std::string::npos) << run.err;
  EXPECT_EQ(Run("", "list --files --db=").exitCode, 2);
}

TEST_F(DataFiles, OfOnesOwnAreEnoughWithoutShippedOnes) {
  fs::remove_all(Path("share"));
  Describe("own.xml");
  if (fs::is_directory(PLDDB_INSTALLED_DATA)) return;  // this machine has an installation
  EXPECT_EQ(Files("PLDDB_PATH=@/own.xml"), Texts{"PLDDB_PATH own.xml"});
  EXPECT_EQ(Run("", "list --files").exitCode, 2);
}

TEST_F(DataFiles, AreListedAsATable) {
  Describe("own.xml");
  const ToolRun run = Run("PLDDB_PATH=@/own.xml", "list --files --db +@/share/plddb/b.xml");
  EXPECT_EQ(SortedWords(run.out),
            SortedWords("order from families devices file 1 command line 1 1 " + Path("share/plddb/b.xml") +
                        " 2 PLDDB_PATH 1 1 " + Path("own.xml") + " 3 shipped 1 1 " + Path("share/plddb/a.xml")));
  EXPECT_LT(run.out.find("b.xml"), run.out.find("own.xml")) << run.out;
  EXPECT_LT(run.out.find("own.xml"), run.out.find("a.xml")) << run.out;
  EXPECT_EQ(SchemaFaults("list_files.json", Run("PLDDB_PATH=@/own.xml", "list --files --json").out), "");
  EXPECT_EQ(Run("", "list --files --family F").exitCode, 2);
}

TEST_F(DataFiles, OnlyTheNamedOnesAreWrittenAndChecked) {
  Describe("own.xml");
  Write("broken.xml", "");
  for (const char* const command : {"export @/own.xml", "merge @/own.xml", "check @/own.xml"}) {
    EXPECT_EQ(Run("PLDDB_PATH=@/broken.xml", command).exitCode, 0) << "row: " << command;
  }
  EXPECT_EQ(Run("", "export +@/own.xml").exitCode, 2);
}

}  // namespace
