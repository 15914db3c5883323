// The examples of each command's help work as they are written.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "run_tool.h"
#include "tests/programming_files/samples.h"
#include "tests/support/read_file.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::vector<std::string> Examples(const std::string& subcommand) {
  const std::string help = RunTool({"help", subcommand}).out;
  const std::size_t start = help.find("Examples:\n");
  if (start == help.npos) return {};
  std::vector<std::string> examples;
  for (const std::string& line : Lines(help.substr(start))) {
    if (line.rfind("  ", 0) == 0) examples.push_back(line.substr(2));
  }
  return examples;
}

/// All that --help lists, so that a new one is tested too.
std::vector<std::string> Subcommands() {
  std::vector<std::string> names;
  for (const std::string& line : Lines(RunTool({"complete", ""}).out)) names.push_back(line.substr(0, line.find('\t')));
  return names;
}

/// A folder with the files that examples name, and the command and a scanning tool on the path.
void Fill(const fs::path& folder) {
  const fs::path sample = PLDDB_TEST_DIR "/../examples/my_devices.xml";
  fs::create_directory(folder / "descriptions");
  for (const char* const name : {"my_devices.xml", "first.xml", "second.xml", "descriptions/first.xml"}) {
    fs::copy_file(sample, folder / name);
  }
  fs::create_directory(folder / "bin");
  fs::create_symlink(PLDDB_TOOL, folder / "bin/plddb");
  fs::copy_file(PLDDB_TEST_DIR "/tool/data/pld1234a_tq100.bsd", folder / "pld1234a_tq100.bsd");
  fs::copy_file(PLDDB_TEST_DIR "/../examples/counter.jed", folder / "top.jed");
  std::ofstream(folder / "top.bit", std::ios::binary) << samples::Bit("7a35tcpg236", samples::WideStream(0x0362D093));
  std::ofstream(folder / "log.txt") << "59604093\n4BA00477\n0362D093\n";
  std::ofstream(folder / "bin/openocd") << "#!/bin/sh\ncat log.txt\n";
  fs::permissions(folder / "bin/openocd", fs::perms::owner_all);
}

TEST(HelpExamples, WorkAsTheyAreWritten) {
  for (const std::string& subcommand : Subcommands()) {
    const std::vector<std::string> examples = Examples(subcommand);
    EXPECT_GE(examples.size(), 2U) << "row: " << subcommand;
    for (const std::string& example : examples) {
      const support::TemporaryFolder folder;
      Fill(folder.Path());
      const ToolRun run =
          RunProgram("/bin/sh", {"-c", "cd \"$0\" && export PATH=\"$0/bin:$PATH\" PLDDB_PATH=\"$1\" && " + example,
                                 folder.Path().string(), PLDDB_DATA_DIR});
      EXPECT_EQ(run.exitCode, 0) << "row: " << example << "\n" << run.err;
    }
  }
}

TEST(HelpTexts, FitALineOfATerminal) {
  std::vector<std::string> helps = {RunTool({"--help"}).out};
  for (const std::string& subcommand : Subcommands()) helps.push_back(RunTool({"help", subcommand}).out);
  EXPECT_GT(helps.size(), 8U);
  for (const std::string& help : helps) {
    for (const std::string& line : Lines(help)) EXPECT_LE(line.size(), 80U) << "row: " << line;
  }
}

TEST(HelpTexts, AreAnErrorWhereNobodyCanReadThem) {
  for (const char* const words : {"--help", "find --help", "--version", "help list"}) {
    const ToolRun run = RunProgram("/bin/sh", {"-c", std::string("exec \"$0\" ") + words + " >/dev/full", PLDDB_TOOL});
    EXPECT_EQ(run.exitCode, 2) << "row: " << words;
    EXPECT_NE(run.err.find("cannot write standard output"), std::string::npos) << "row: " << words << ": " << run.err;
  }
}

TEST(UnknownWords, AreAnsweredWithTheNearOnes) {
  const struct {
    const char* arguments;
    const char* message;
  } rows[] = {
      {"id 0x59604093", "no subcommand is named id; did you mean identify?"},
      {"shw A", "no subcommand is named shw; did you mean show?"},
      {"check --list-code", "check has no option --list-code; did you mean --list-codes?"},
      {"find --pno=A", "find has no option --pno; did you mean --pon?"},
      {"list --qqqqqq", "list has no option --qqqqqq"},
      {"--db x list", "options come after the subcommand: plddb list --db x"},
      {"--json find XC9572XL", "options come after the subcommand: plddb find --json XC9572XL"},
  };
  for (const auto& row : rows) {
    const ToolRun run = RunTool(Words(row.arguments));
    EXPECT_EQ(run.err, std::string("plddb: error: ") + row.message + "\nRun with --help for more information.\n");
    EXPECT_EQ(run.exitCode, 2) << "row: " << row.arguments;
  }
}

TEST(NoWords, ShowTheSubcommandsAndAnExample) {
  const ToolRun run = RunTool({});
  EXPECT_NE(run.err.find("  identify "), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("Example: plddb identify 0x59604093\n"), std::string::npos) << run.err;
  EXPECT_EQ(run.exitCode, 2);
}

TEST(Hyphen, IsStandardInputAndOutputEverywhere) {
  const std::string text =
      "<DeviceDatabase><Family Name='F'><Device Name='N' CodeName='N' Comm='JTAG'/></Family></DeviceDatabase>";
  for (const char* const arguments : {"list --db -", "list --db +- F", "find --db - N", "show --db - N", "export -", "merge -",
                                      "export - --output -", "check -"}) {
    const ToolRun run = RunTool(Words(arguments), text);
    EXPECT_EQ(run.exitCode, 0) << "row: " << arguments << "\n" << run.err;
    EXPECT_NE(run.out, "") << "row: " << arguments;
  }
  EXPECT_EQ(RunTool({"find", "--db", "-", "N"}, "<DeviceDatabase>").exitCode, 2);
}

}  // namespace
