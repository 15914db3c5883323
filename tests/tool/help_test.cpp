// What the tool prints about itself: help, version, near names of subcommands, and the manual page.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "run_tool.h"
#include "tests/support/read_file.h"

namespace {

const std::string kManualPage = PLDDB_TEST_DIR "/../tool/man/plddb.1";

/// The first word of each line of `text` from the line `title` to the next empty one.
std::vector<std::string> FirstWords(const std::string& text, const std::string& title) {
  std::vector<std::string> words;
  const std::size_t start = text.find("\n" + title + "\n");
  if (start == text.npos) return words;
  const std::string rest = text.substr(start + title.size() + 2);
  const std::string block = rest.substr(0, rest.find("\n\n"));
  for (std::size_t line = 0; line < block.size(); line = std::min(block.find('\n', line), block.size() - 1) + 1) {
    const auto inLine = Words(block.substr(line, block.find('\n', line) - line));
    if (block.compare(line, 3, "   ") != 0 && !inLine.empty()) words.push_back(inLine.front());
  }
  return words;
}

std::vector<std::string> Subcommands() { return FirstWords(RunTool({"--help"}).out, "Subcommands:"); }

/// The long options that --help names: "-h,--help" and "--db".
std::vector<std::string> Options(const std::string& help) {
  std::vector<std::string> options;
  for (const std::string& word : FirstWords(help, "Options:")) options.push_back(word.substr(word.find("--")));
  return options;
}

/// The manual page by its sections, the text of each after its title, as it is read: "\-" is '-'.
std::string SectionOfManual(const std::string& title) {
  std::string page = support::ReadFile(kManualPage);
  for (std::size_t at; (at = page.find("\\-")) != page.npos;) page.erase(at, 1);
  const std::size_t start = page.find("\n.SH " + title + "\n");
  return start == page.npos ? "" : page.substr(start, page.find("\n.SH ", start + 1) - start);
}

/// Whether `text` names the option itself, not a longer one that begins like it.
bool Names(const std::string& text, const std::string& option) {
  for (std::size_t at = 0; (at = text.find(option, at)) != text.npos; at += option.size()) {
    const char next = (text + ' ')[at + option.size()];
    if (next != '-' && std::islower(static_cast<unsigned char>(next)) == 0) return true;
  }
  return false;
}

std::string UpperCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

TEST(Help, OfASubcommandIsThatOfItsHelpOption) {
  EXPECT_GE(Subcommands().size(), 7U);
  for (const std::string& subcommand : Subcommands()) {
    const ToolRun run = RunTool({"help", subcommand});
    EXPECT_EQ(run.out, RunTool({subcommand, "--help"}).out) << "row: " << subcommand;
    EXPECT_NE(run.out.find("Usage: plddb " + subcommand + " "), std::string::npos) << "row: " << subcommand;
    EXPECT_EQ(run.err, "") << "row: " << subcommand;
    EXPECT_EQ(run.exitCode, 0) << "row: " << subcommand;
  }
}

TEST(Help, WithoutASubcommandIsThatOfTheProgram) {
  EXPECT_EQ(RunTool({"help"}).out, RunTool({"--help"}).out);
  EXPECT_EQ(RunTool({"help"}).exitCode, 0);
}

TEST(Help, NamesWhatAMisspeltSubcommandMayHaveMeant) {
  const struct {
    const char* arguments;
    const char* message;
  } rows[] = {
      {"identfy 0x59604093", "no subcommand is named identfy; did you mean identify?"},
      {"Identify", "no subcommand is named Identify; did you mean identify?"},
      {"help exprot", "no subcommand is named exprot; did you mean export?"},
      {"0x59604093", "no subcommand is named 0x59604093"},
  };
  for (const auto& row : rows) {
    const ToolRun run = RunTool(Words(row.arguments));
    EXPECT_EQ(run.err, std::string("plddb: error: ") + row.message + "\nRun with --help for more information.\n");
    EXPECT_EQ(run.out, "") << "row: " << row.arguments;
    EXPECT_EQ(run.exitCode, 2) << "row: " << row.arguments;
  }
}

TEST(Subcommands, AreArgumentsAfterTheFirst) {
  const std::string keys = PLDDB_TEST_DIR "/tool/data/keys.xml";
  for (const char* const argument : {"list", "help", "show", "complete"}) {
    EXPECT_EQ(RunTool({"show", "--db", keys, argument}).err, "plddb: nothing found\n") << "row: " << argument;
  }
}

TEST(Version, IsOneLineWithTheProgramsName) {
  const ToolRun run = RunTool({"--version"});
  EXPECT_EQ(run.out.substr(0, 6), "plddb ");
  EXPECT_EQ(run.out.find_first_not_of("0123456789.", 6), run.out.size() - 1) << run.out;
  EXPECT_EQ(run.out.back(), '\n');
  EXPECT_EQ(run.exitCode, 0);
}

TEST(ManualPage, HasASectionForEachSubcommandWithAllItsOptions) {
  EXPECT_GE(Subcommands().size(), 7U);
  for (const std::string& subcommand : Subcommands()) {
    const std::string section = SectionOfManual(UpperCase(subcommand));
    EXPECT_NE(section, "") << "row: " << subcommand;
    const std::vector<std::string> options = Options(RunTool({subcommand, "--help"}).out);
    EXPECT_GE(options.size(), 1U) << "row: " << subcommand;
    for (const std::string& option : options) {
      EXPECT_TRUE(Names(section, option) || option == "--help") << "row: " << subcommand << " " << option;
    }
  }
  for (const std::string& option : Options(RunTool({"--help"}).out)) {
    EXPECT_NE(SectionOfManual("OPTIONS").find(option), std::string::npos) << "row: " << option;
  }
}

TEST(Formats, OfIdentifyAreNamedWhereverTheyAreListed) {
  const std::string manual = SectionOfManual("IDENTIFY");
  const std::string inManual = manual.substr(manual.find("--format"));
  const std::string help = RunTool({"help", "identify"}).out;
  const std::string inHelp = help.substr(help.find("\n--format"));
  const std::string transcript = support::ReadFile(PLDDB_TEST_DIR "/portability/transcript");
  std::istringstream formats(RunTool({"complete", "identify", "--format", ""}).out);
  int count = 0;
  for (std::string format; std::getline(formats, format); ++count) {
    EXPECT_TRUE(Names(inManual, format)) << "row: " << format << " in the manual";
    EXPECT_TRUE(Names(inHelp, format) || format == "text") << "row: " << format << " in the help's text";
    EXPECT_TRUE(Names(transcript, format)) << "row: " << format << " in the transcript";
  }
  EXPECT_GE(count, 5);
}

TEST(Transcript, RunsEachSubcommand) {
  const std::string transcript = support::ReadFile(PLDDB_TEST_DIR "/portability/transcript");
  for (const std::string& name : Subcommands()) EXPECT_TRUE(Names(transcript, ' ' + name)) << "row: " << name;
}

TEST(ManualPage, IsSetWithoutWarnings) {
  const ToolRun run = RunProgram("/usr/bin/env", {"groff", "-man", "-Tutf8", "-ww", "-z", kManualPage});
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
}

}  // namespace
