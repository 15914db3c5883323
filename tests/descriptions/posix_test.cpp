#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "Descriptions.h"
#include "tests/descriptions/parse.h"
#include "tests/support/small_stack.h"
#include "tests/support/temporary_folder.h"

/// \file
/// What needs a named pipe, a thread with a stack of a given size, or a system that shows the program's own path.

namespace {

TEST(Loading, ReadsAPipeToItsEnd) {
  const support::TemporaryFolder folder;
  const std::string pipe = (folder.Path() / "pipe").string();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::thread writer([&] { std::ofstream(pipe) << parse::WithDevice("Name='" + std::string(100000, 'x') + "'"); });
  const plddb::LoadResult result = plddb::LoadDescriptions(pipe);
  writer.join();
  ASSERT_NE(result.database, nullptr);
  EXPECT_EQ(std::string(parse::FirstDevice(result.database).GetName()).size(), 100000U);
}

TEST(DataFolder, IsBesideTheProgramWhereItHasDescriptions) {
  // The build tree has the shape of an installation.
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(plddb::DataFolder(), program.parent_path().parent_path() / "share/plddb");
}

TEST(Loading, NeedsLittleStack) {
  for (const std::string file : {PLDDB_TEST_DIR "/descriptions/every_list.xml", PLDDB_DATA_DIR "/xilinx.xml"}) {
    support::RunWithSmallStack([&] {
      const plddb::LoadResult result = plddb::LoadDescriptions(file);
      EXPECT_NE(result.database, nullptr) << file;
    });
  }
}

TEST(Loading, NeedsLittleStackForDeepElements) {
  std::string deep;
  for (int i = 0; i < 100000; ++i) deep += "<Family>";
  support::RunWithSmallStack([&] { EXPECT_EQ(plddb::ParseDescriptions("<DeviceDatabase>" + deep, "").database, nullptr); });
}

}  // namespace
