// plddb.xsd in the hands of a validator, xmllint: it accepts and rejects what the loader does.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "Descriptions.h"
#include "run_tool.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using support::TemporaryFolder;
using Texts = std::vector<std::string>;

const std::string kSchema = PLDDB_DATA_DIR "/../descriptions/plddb.xsd";
const std::string kCorpus = PLDDB_TEST_DIR "/check/corpus";

/// Rules that no schema can express: which attributes and elements exclude or need each other.
const std::set<std::string> kBeyondASchema = {"load_ebr_column_without_number.xml", "load_ebr_in_both_forms.xml"};

Texts FilesIn(const fs::path& folder) {
  Texts files;
  for (const auto& entry : fs::directory_iterator(folder)) files.push_back(entry.path().string());
  std::sort(files.begin(), files.end());
  return files;
}

/// Those of `files` that xmllint finds to keep to the schema.
std::set<std::string> Accepted(const Texts& files) {
  Texts arguments = {"xmllint", "--noout", "--schema", kSchema};
  arguments.insert(arguments.end(), files.begin(), files.end());
  const std::string messages = "\n" + RunProgram("/usr/bin/env", arguments).err;
  std::set<std::string> accepted;
  for (const std::string& file : files) {
    if (messages.find("\n" + file + " validates\n") != messages.npos) accepted.insert(file);
  }
  return accepted;
}

bool Loads(const std::string& file) { return plddb::LoadDescriptions(file).database != nullptr; }

TEST(Schema, AcceptsAllFilesThatComeAlong) {
  Texts files = {PLDDB_TEST_DIR "/descriptions/every_list.xml"};
  for (const char* const folder : {PLDDB_DATA_DIR, PLDDB_DATA_DIR "/../examples"}) {
    for (const std::string& file : FilesIn(folder)) {
      if (fs::path(file).extension() == ".xml") files.push_back(file);
    }
  }
  const std::set<std::string> accepted = Accepted(files);
  for (const std::string& file : files) EXPECT_EQ(accepted.count(file), 1U) << "row: " << file;
  EXPECT_GE(files.size(), 3U);
}

TEST(Schema, AcceptsWhatTheToolWrites) {
  const TemporaryFolder folder;
  const std::string written = (folder.Path() / "written.xml").string();
  for (const char* const file : {PLDDB_TEST_DIR "/descriptions/every_list.xml", PLDDB_DATA_DIR "/xilinx.xml"}) {
    EXPECT_EQ(RunTool({"export", file, "--output", written}).exitCode, 0) << "row: " << file;
    EXPECT_EQ(Accepted({written}).size(), 1U) << "row: " << file;
  }
}

TEST(Schema, RejectsTheFilesOfTheCorpusThatDoNotLoadAndNoOther) {
  const Texts files = FilesIn(kCorpus);
  const std::set<std::string> accepted = Accepted(files);
  for (const std::string& file : files) {
    const bool isBeyond = kBeyondASchema.count(fs::path(file).filename().string()) != 0;
    EXPECT_EQ(accepted.count(file) != 0, Loads(file) || isBeyond) << "row: " << file;
  }
  EXPECT_GE(files.size() - accepted.size(), 20U);
}

TEST(Schema, TakesTheValuesThatTheLoaderTakes) {
  const Texts attributes = {"TurboAlgIndex", "IRLength", "jtagDeviceID", "SyncExtDoneColumn", "DisableDeviceSTAPLSupport"};
  const Texts values = {"0",           "255",         "256",         "0x00FF",     "0x100",      "65535",       "65536",
                        "0xFFFF",      "0x10000",     "2147483647",  "2147483648", "0x7FFFFFFF", "0x80000000",  "4294967295",
                        "4294967296",  "0xffffffff",  "0x100000000", "-1",         "-0",         "-2147483648", "-2147483649",
                        "-0x80000000", "-0x80000001", "00010",       "",           " 5",         "5 ",          "+5",
                        "0X5",         "0x",          "5x",          "1e3",        "--1",        "true",        "false",
                        "True",        " true",       "1",           "429496730",  "99999999999"};
  const TemporaryFolder folder;
  for (const std::string& attribute : attributes) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      std::ofstream(folder.Path() / (attribute + std::to_string(i) + ".xml"))
          << "<DeviceDatabase><Family><Device " << attribute << "=\"" << values[i] << "\"/></Family></DeviceDatabase>";
    }
  }
  const Texts blocks = {"BitName='0'",
                        "BitName='1'",
                        "BitName='0x0'",
                        "BitName='0x00A'",
                        "BitName='65536'",
                        "BitName='010'",
                        "BitName='000'",
                        "BitName='8' Column='0 to 31'",
                        "BitName='8' Column=' 0to31 '",
                        "BitName='8' Column='0-31'",
                        "BitName='8' Column='to 31'",
                        "BitName='8' Column='-8 to -1'",
                        "BitName='8' Column='0x0 to 31'",
                        "BitName='8' Column='0 TO 31'",
                        "BitName='8' Column=''"};
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    std::ofstream(folder.Path() / ("block" + std::to_string(i) + ".xml"))
        << "<DeviceDatabase><Family><Device><EBR Name='' " << blocks[i] << "/></Device></Family></DeviceDatabase>";
  }
  const Texts files = FilesIn(folder.Path());
  const std::set<std::string> accepted = Accepted(files);
  EXPECT_EQ(files.size(), attributes.size() * values.size() + blocks.size());
  for (const std::string& file : files) {
    EXPECT_EQ(accepted.count(file) != 0, Loads(file)) << "row: " << std::ifstream(file).rdbuf();
  }
}

}  // namespace
