// The canonical form of a canonical file is the file, byte by byte.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "run_tool.h"
#include "tests/support/read_file.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> DescriptionFiles() {
  std::vector<fs::path> files;
  for (const char* const folder : {"/../data", "/../examples", "/tool/data", "/check/corpus", "/descriptions"}) {
    for (const auto& entry : fs::recursive_directory_iterator(PLDDB_TEST_DIR + std::string(folder))) {
      if (entry.path().extension() == ".xml") files.push_back(entry.path());
    }
  }
  return files;
}

TEST(CanonicalForm, OfItselfIsTheSameBytes) {
  const support::TemporaryFolder folder;
  const std::string once = (folder.Path() / "once.xml").string();
  const std::string twice = (folder.Path() / "twice.xml").string();
  int written = 0;
  for (const fs::path& file : DescriptionFiles()) {
    if (RunTool({"export", "--force", file.string(), "--output", once}).exitCode != 0) continue;  // it does not load
    EXPECT_EQ(RunTool({"export", "--force", once, "--output", twice}).exitCode, 0) << "row: " << file;
    EXPECT_EQ(support::ReadFile(twice), support::ReadFile(once)) << "row: " << file;
    ++written;
  }
  EXPECT_GT(written, 100);
}

}  // namespace
