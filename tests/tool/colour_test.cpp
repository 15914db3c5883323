// Colours: at a terminal that shows them, and nowhere else.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "run_tool.h"
#include "terminal.h"

namespace {

constexpr const char* kRedError = "plddb: \033[31merror\033[0m: no subcommand is named identfy; did you mean identify?\n";
constexpr const char* kPlainError = "plddb: error: no subcommand is named identfy; did you mean identify?\n";

TEST(Colour, IsForTerminalsThatShowIt) {
  const struct {
    std::vector<std::string> variables;
    const char* error;
  } rows[] = {
      {{"TERM=xterm"}, kRedError},
      {{"TERM=xterm-256color"}, kRedError},
      {{"TERM=dumb"}, kPlainError},
      {{"TERM="}, kPlainError},
      {{"-u", "TERM"}, kPlainError},
      {{"TERM=xterm", "NO_COLOR=1"}, kPlainError},
      {{"TERM=xterm", "NO_COLOR=0"}, kPlainError},  // whatever its value
      {{"TERM=xterm", "NO_COLOR="}, kRedError},     // empty is as if not set
  };
  for (const auto& row : rows) {
    const std::string sent = ToolAtTerminal(row.variables, {"identfy"}, AtTerminal::kMessages);
    EXPECT_EQ(sent.substr(0, sent.find('\n') + 1), row.error) << "row: " << row.variables.back();
  }
}

TEST(Colour, IsNotForFilesAndPipes) {
  const ToolRun run = RunProgram("/usr/bin/env", {"TERM=xterm", PLDDB_TOOL, "identfy"});
  EXPECT_EQ(run.err.substr(0, run.err.find('\n') + 1), kPlainError);
}

TEST(Colour, OfOneStreamDoesNotFollowFromTheOther) {
  EXPECT_EQ(ToolAtTerminal({"TERM=xterm"}, {"identfy"}, AtTerminal::kOutput), "");
}

TEST(Colour, IsOnlyInTheWordForTheSeverity) {
  const std::string file = PLDDB_TEST_DIR "/tool/data/broken.xml";
  const std::string plain = RunTool({"list", "--db", file}).err;
  std::string coloured = ToolAtTerminal({"TERM=xterm"}, {"list", "--db", file}, AtTerminal::kMessages);
  EXPECT_EQ(coloured.compare(0, file.size(), file), 0) << coloured;
  std::size_t words = 0;
  for (std::size_t at; (at = coloured.find("\033[31merror\033[0m:")) != coloured.npos; ++words)
    coloured.replace(at, 15, "error:");
  EXPECT_EQ(coloured, plain);
  EXPECT_GE(words, 1U);
}

TEST(Colour, IsNotInWordsThatOnlyBeginSo) {
  const std::string keys = PLDDB_TEST_DIR "/tool/data/keys.xml";
  const struct {
    std::vector<std::string> line;
    const char* sent;
  } rows[] = {
      {{"list", "--db", "a: errors.xml"},
       "a: errors.xml:1:1: \033[31merror\033[0m: cannot read the file: No such file or directory\n"},
      {{"find", "--db", keys, "QQQQQQQQQQQQ"}, "plddb: nothing found\n"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(ToolAtTerminal({"TERM=xterm"}, row.line, AtTerminal::kMessages), row.sent) << "row: " << row.line.back();
}

TEST(Colour, LeavesTheColumnsOfTablesWhereTheyAre) {
  const std::string file = PLDDB_TEST_DIR "/tool/data/exactness.xml";
  const std::vector<std::string> line = {"identify", "--db", file, "0x01234043", "0x12345677"};  // two devices, and none
  std::string sent = ToolAtTerminal({"TERM=xterm"}, line, AtTerminal::kOutput);
  std::size_t sequences = 0;
  for (std::size_t at; (at = sent.find("\033[")) != sent.npos; ++sequences) sent.erase(at, sent.find('m', at) + 1 - at);
  EXPECT_EQ(sent, RunTool(line).out);
  EXPECT_EQ(sequences, 4U);
}

TEST(Colour, IsInTheSeverityOfFindings) {
  const std::string corpus = PLDDB_TEST_DIR "/check/corpus";
  const struct {
    const char* file;
    const char* severity;
  } rows[] = {
      {"mask_zero.xml", ": \033[31merror\033[0m[mask-zero]: "},
      {"name_shadowed.xml", ": \033[33mwarning\033[0m[name-shadowed]: "},
  };
  for (const auto& row : rows) {
    const std::vector<std::string> check = {"check", corpus + "/" + row.file};
    const std::string sent = ToolAtTerminal({"TERM=xterm"}, check, AtTerminal::kOutput);
    EXPECT_NE(sent.find(row.severity), sent.npos) << sent;
    EXPECT_EQ(RunTool(check).out.find('\033'), std::string::npos) << "row: " << row.file;
  }
}

TEST(Colour, MarksThatThereIsMoreThanOneAnswer) {
  const std::string file = PLDDB_TEST_DIR "/tool/data/keys.xml";
  const std::vector<std::string> show = {"show", "--db", file, "SAME"};
  const std::string sent = ToolAtTerminal({"TERM=xterm"}, show, AtTerminal::kOutput);
  EXPECT_NE(sent.find("\n\033[1m* More than one device matches, and the first was taken.\033[0m The others:\n"), sent.npos)
      << sent;
  EXPECT_EQ(RunTool(show).out.find('\033'), std::string::npos);
}

TEST(Colour, IsNeverInJson) {
  const std::string keys = PLDDB_TEST_DIR "/tool/data/keys.xml";
  for (const std::vector<std::string>& line :
       {std::vector<std::string>{"show", "--db", keys, "--json", "SAME"}, {"check", "--json", keys}}) {
    EXPECT_EQ(ToolAtTerminal({"TERM=xterm"}, line, AtTerminal::kOutput), RunTool(line).out) << "row: " << line.front();
  }
}

}  // namespace
