#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "run_tool.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using support::TemporaryFolder;

const fs::path kData = PLDDB_TEST_DIR "/tool/data";

/// The word under "device" of the first row.
std::string FirstDevice(const ToolRun& run) {
  const std::vector<std::string> words = Words(run.out.substr(run.out.find('\n') + 1));
  return words.size() < 3 ? "nothing: " + run.err : words[2];
}

TEST(Databases, AreTheInstalledDescriptionsWhenNoneIsNamed) {
  const ToolRun run = RunProgram("/bin/sh", {"-c", "cd / && exec \"$0\" identify 0x59604093", PLDDB_TOOL});
  EXPECT_EQ(FirstDevice(run), "XC9572XL");
}

TEST(Databases, AreFoundNextToTheProgramWhereverItIs) {
  const TemporaryFolder stage;
  fs::create_directories(stage.Path() / "bin");
  fs::create_directories(stage.Path() / "share/plddb");
  fs::copy_file(PLDDB_TOOL, stage.Path() / "bin/plddb");
  fs::copy_file(kData / "first.xml", stage.Path() / "share/plddb/first.xml");
  fs::create_symlink(stage.Path() / "bin/plddb", stage.Path() / "called-through-a-link");
  for (const char* program : {"bin/plddb", "called-through-a-link"}) {
    const ToolRun run = RunProgram(stage.Path() / program, {"identify", "0x0ABCD043"});
    EXPECT_EQ(FirstDevice(run), "FIRST") << "row: " << program;
  }
}

TEST(Databases, HaveToBeNamedWhereNoneIsInstalled) {
  const bool isInstalled = fs::is_directory(PLDDB_INSTALLED_DATA);  // on this machine
  const TemporaryFolder stage;
  fs::create_directories(stage.Path() / "bin");
  fs::copy_file(PLDDB_TOOL, stage.Path() / "bin/plddb");
  const fs::path beside = stage.Path() / "share/plddb";
  const std::string message = "plddb: error: no device descriptions in " PLDDB_INSTALLED_DATA "; name a file with --db\n";
  for (const bool isEmptyFolder : {false, true}) {
    if (isEmptyFolder) fs::create_directories(beside);
    const ToolRun run = RunProgram(stage.Path() / "bin/plddb", {"list"});
    EXPECT_EQ(run.err, isInstalled ? "" : message) << "row: " << isEmptyFolder;
    EXPECT_EQ(run.exitCode, isInstalled ? 0 : 2) << "row: " << isEmptyFolder;
  }
}

TEST(Databases, OfAFolderAreItsXmlFilesInNameOrder) {
  const TemporaryFolder folder;
  fs::copy_file(kData / "first.xml", folder.Path() / "b.xml");
  fs::copy_file(kData / "second.xml", folder.Path() / "a.xml");
  fs::copy_file(kData / "broken.xml", folder.Path() / "a.txt");
  EXPECT_EQ(FirstDevice(RunTool({"identify", "--db", folder.Path(), "0x0ABCD043"})), "SECOND");
  EXPECT_EQ(FirstDevice(RunTool({"identify", "--db", kData / "first.xml", "--db", folder.Path(), "0x0ABCD043"})), "FIRST");
}

TEST(Databases, OfAFolderAreRegularFilesOnly) {
  const TemporaryFolder folder;
  fs::copy_file(kData / "first.xml", folder.Path() / "real.txt");
  fs::create_symlink("real.txt", folder.Path() / "link.xml");
  fs::create_directory(folder.Path() / "folder.xml");
  fs::create_symlink("/dev/zero", folder.Path() / "device.xml");
  ASSERT_EQ(mkfifo((folder.Path() / "pipe.xml").c_str(), 0600), 0);
  const ToolRun run = RunTool({"identify", "--db", folder.Path(), "0x0ABCD043"});
  EXPECT_EQ(FirstDevice(run), "FIRST");
  EXPECT_EQ(run.err, "");
  fs::create_symlink("nowhere", folder.Path() / "dangling.xml");
  EXPECT_EQ(RunTool({"identify", "--db", folder.Path(), "0x0ABCD043"}).err,
            (folder.Path() / "dangling.xml").string() + ":1:1: error: cannot read the file: No such file or directory\n");
}

TEST(Databases, OfAFolderWithPipesAloneAreNone) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder.Path() / "pipe.xml").c_str(), 0600), 0);
  EXPECT_EQ(RunTool({"list", "--db", folder.Path()}).err,
            folder.Path().string() + ":1:1: error: no *.xml file in this folder\n");
}

TEST(Databases, MayNotBeAFolderWithoutDescriptions) {
  const TemporaryFolder folder;
  const ToolRun run = RunTool({"identify", "--db", folder.Path(), "0x0ABCD043"});
  EXPECT_EQ(run.err, folder.Path().string() + ":1:1: error: no *.xml file in this folder\n");
  EXPECT_EQ(run.exitCode, 2);
}

}  // namespace
