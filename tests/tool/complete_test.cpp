// What may stand at the cursor: as the tool says it, and as the shells have it from there.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "run_tool.h"

namespace {

namespace fs = std::filesystem;

const std::string kKeys = PLDDB_TEST_DIR "/tool/data/keys.xml";
const std::string kLists = PLDDB_TEST_DIR "/tool/data/lists.xml";
const std::string kOdd = PLDDB_TEST_DIR "/tool/data/odd_names.xml";
const std::string kScripts = PLDDB_TEST_DIR "/../tool/completions";

/// The first words of the lines of `text` up to their tabs, joined by '|': candidates may hold blanks.
std::string Candidates(const std::string& text) {
  std::string candidates;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = text.find('\n', start);
    const std::string line = text.substr(start, end - start);
    candidates += (candidates.empty() ? "" : "|") + line.substr(0, line.find('\t'));
    start = end + 1;
  }
  return candidates;
}

using Line = std::vector<std::string>;  // the words behind the program up to the cursor

std::string Shown(const Line& line) {
  std::string shown;
  for (const std::string& word : line) shown += " [" + word + "]";
  return shown;
}

ToolRun Complete(Line line) {
  line.insert(line.begin(), "complete");
  return RunTool(line);
}

TEST(Complete, KnowsWhatMayStandAtTheCursor) {
  const struct {
    Line line;
    const char* candidates;
  } rows[] = {
      {{"id"}, "identify"},
      {{"x"}, ""},
      {{"--v"}, "--version"},
      {{}, "check|export|find|fits|help|identify|import|list|merge|show"},
      {{"help", "me"}, "merge"},
      {{"help", "list", ""}, ""},
      {{"list", "--"}, "--all|--db|--devices|--family|--files|--format|--help|--ir|--json|--maker|--package"},
      {{"list", "--fam"}, "--family"},
      {{"identify", "--comm", ""}, "DUAL|ISP|JTAG"},
      {{"identify", "--comm", "i"}, "ISP"},
      {{"identify", "--comm=d"}, "--comm=DUAL"},
      {{"list", "--db", kKeys, "--family", ""}, "First|Second|Zweite"},
      {{"list", "--db", kKeys, "--family", "s"}, "Second"},
      {{"list", "--db", kKeys, "--db", kLists, "--family", ""}, "Custom|First|Hidden & old|Own|Second|Zweite"},
      {{"list", "--db=" + kKeys, "--family=f"}, "--family=First"},
      {{"list", "--db", "=", kKeys, "--family", "=", "f"}, "First"},  // from a shell that cuts words at '='
      {{"list", "--db", "=", kKeys, "--family", "="}, "First|Second|Zweite"},
      {{"list", "--db", kKeys, ""}, "First|Second|Zweite"},
      {{"list", "=", ""}, ""},
      {{"list", "--family", "First", "--d"}, "--db|--devices"},
      {{"check", "--allow", "name-e"}, "name-empty"},
      {{"list", "--db", kKeys, "--package", "b"}, "BG256"},
      {{"list", "--format", ""}, "json|text|tsv"},
      {{"list", "-x", "--j"}, "--json"},  // no option, and no argument either
      {{"show", "--db", kKeys, "--json", "pld"}, "PLD1234A|PLD5678"},
      {{"show", "--db", kKeys, "PLD5678", ""}, ""},  // takes one
      {{"show", "--db", kKeys, "--", "o"}, "OLD1|OLDQ|OTHER2"},
      {{"show", "--db", kKeys, "--", "--"}, ""},
      {{"show", "--db", kKeys, "--", "--json", ""}, ""},  // behind "--" that is an argument
      {{"show", "--db", kOdd, "a"}, "A B|a;b"},           // without the one that has control characters
      {{"find", "--db", kKeys, "o"}, "OLD1|OLDQ|OTHER2"},
      {{"find", "--db", kKeys, "--name", "o"}, "OTHER2"},
      {{"find", "--db", kKeys, "--alias", ""}, "OLD1|OLDQ"},
      {{"find", "--db", kKeys, "--code-name", "c"}, "CODE1|CODE2|CODE3|CODE4"},
      {{"find", "--db", kKeys, "--pon", ""}, "PLD1234A-5TQ100C"},
      {{"find", "--db", kKeys, "--package", ""}, "BG256|TQ100"},
      {{"find", "--db", kKeys, "--jdf", ""}, "PLD12345.jdf"},
      {{"find", "--db", kKeys, "--fuses", "5828", "--full-name", "code1"}, "CODE1"},
      {{"find", "--db", kKeys, "--fuses", ""}, ""},  // any number
  };
  for (const auto& row : rows) {
    const ToolRun run = Complete(row.line);
    EXPECT_EQ(Candidates(run.out), row.candidates) << "row:" << Shown(row.line);
    EXPECT_EQ(run.exitCode, 0) << "row:" << Shown(row.line);
    EXPECT_EQ(run.err, "") << "row:" << Shown(row.line);
  }
}

TEST(Complete, LeavesFilesToTheShell) {
  for (const Line& line : {Line{"list", "--db", ""}, Line{"find", "--db", kKeys, "--db", "x"}, Line{"export", ""},
                           Line{"merge", "a.xml", "b.xml", ""}, Line{"merge", "--output", ""}, Line{"list", "--db="}}) {
    const ToolRun run = Complete(line);
    EXPECT_EQ(run.exitCode, 1) << "row:" << Shown(line);
    EXPECT_EQ(run.out, "") << "row:" << Shown(line);
  }
}

TEST(Complete, TakesTheTildeForTheHomeFolder) {
  const struct {
    std::vector<std::string> environment;
    const char* families;
  } rows[] = {
      {{"HOME=" PLDDB_TEST_DIR "/tool/data"}, "First"},
      {{"HOME=" PLDDB_TEST_DIR}, ""},  // has no such file
      {{"-u", "HOME"}, ""},
  };
  for (const auto& row : rows) {
    std::vector<std::string> command = row.environment;
    command.insert(command.end(), {PLDDB_TOOL, "complete", "list", "--db", "~/keys.xml", "--family", "f"});
    EXPECT_EQ(Candidates(RunProgram("/usr/bin/env", command).out), row.families) << "row: " << row.environment.back();
  }
}

TEST(Complete, HasNothingToSayWhereTheLineIsWrong) {
  for (const Line& line : {Line{"nonsense", ""}, Line{"list", "--db", "missing.xml", "--family", ""}}) {
    const ToolRun run = Complete(line);
    EXPECT_EQ(run.exitCode, 2) << "row:" << Shown(line);
    EXPECT_EQ(run.out, "") << "row:" << Shown(line);
  }
}

TEST(Complete, DescribesSubcommandsAndOptions) {
  EXPECT_EQ(Complete({"mer"}).out, "merge\tWrite several description files as one.\n");
  EXPECT_EQ(Complete({"merge", "--o"}).out,
            "--output\tWhere to write; replaced only as a whole. Without it, or with -, standard output\n");
}

TEST(Complete, IsNoSubcommandForPeople) { EXPECT_EQ(RunTool({"--help"}).out.find("complete"), std::string::npos); }

// --- The shells -------------------------------------------------------------------------------------------------------------

/// What the script does with its arguments: the folder of the completions, the command, and the words behind it.
constexpr const char* kBash = R"bash(source "$1/plddb.bash"
shift
COMP_LINE=$*
COMP_POINT=${#COMP_LINE}
compopt() { :; }
_plddb "$1" "$(sed "s/.*[=:]//; s/^['\"]//" <<<"${!#}")"
printf '%s\n' "${COMPREPLY[@]}" | sort)bash";

/// With stand-ins for the builtins that work in completion alone.
constexpr const char* kZsh = R"(fpath=($1 $fpath)
shift
words=("$@")
CURRENT=$#
compset() { : }
_files() { local file; for file in ${words[CURRENT]#--*=}*(N); do print -r -- $file; done }
compadd() { print -rl -- $candidates }
autoload -Uz _plddb
_plddb)";

constexpr const char* kFish = R"(source $argv[1]/plddb.fish
complete -C "plddb "(string join -- " " $argv[3..] | string collect --allow-empty))";

const struct Shell {
  const char* name;
  std::vector<std::string> command;
} kShells[] = {
    {"bash", {"bash", "--norc", "-c", kBash, "bash"}},
    {"zsh", {"zsh", "-f", "-c", kZsh, "zsh"}},
    {"fish", {"fish", "--no-config", "-c", kFish, "--"}},
};

/// What the shell makes of the words, in the folder with the scripts of all three. Words are as they are typed: paths are
/// relative, and the command is found on the path, whatever the sources' own path has in it.
ToolRun CompleteIn(const Shell& shell, const Line& line) {
  const std::string tools = fs::path(PLDDB_TOOL).parent_path().string();
  std::vector<std::string> arguments = {"-C", kScripts,
                                        "PATH=" + tools + ":" + std::getenv("PATH")};  // NOLINT(concurrency-mt-unsafe)
  arguments.insert(arguments.end(), shell.command.begin(), shell.command.end());
  arguments.insert(arguments.end(), {kScripts, "plddb"});
  arguments.insert(arguments.end(), line.begin(), line.end());
  return RunProgram("/usr/bin/env", arguments);
}

TEST(Shells, CompleteSubcommandsOptionsNamesAndFiles) {
  const struct {
    Line line;
    const char* candidates;
  } rows[] = {
      {{"id"}, "identify"},
      {{"list", "--fa"}, "--family"},
      {{"show", "--db", "../../tests/tool/data/keys.xml", "pld"}, "PLD1234A|PLD5678"},
      {{"list", "--db", "../../tests/tool/data/keys.xml", "--family", "z"}, "Zweite"},
      {{"list", "--db", "plddb."}, "plddb.bash|plddb.fish"},
      {{"export", "_pl"}, "_plddb"},
      {{"list", "--db", "missing.xml", "--family", ""}, ""},
      {{"nonsense", ""}, ""},
  };
  for (const Shell& shell : kShells) {
    for (const auto& row : rows) {
      const ToolRun run = CompleteIn(shell, row.line);
      EXPECT_EQ(Candidates(run.out == "\n" ? "" : run.out), row.candidates) << shell.name << ", row:" << Shown(row.line);
      EXPECT_EQ(run.err, "") << shell.name << ", row:" << Shown(row.line);
    }
  }
}

TEST(Shells, QuoteWhatTheyWouldTakeApart) {
  const std::string lists = "../../tests/tool/data/lists.xml";
  const struct {
    Line line;  // as it is typed
    const char* candidates;
  } rows[] = {
      {{"list", "--db", lists, "--family", "h"}, R"(Hidden\ \&\ old)"},
      {{"list", "--db", lists, "--family", R"(Hidden\ )"}, R"(Hidden\ \&\ old)"},
      {{"list", "--db", lists, "--family", "'h"}, "Hidden & old"},
      {{"list", "--db", lists, "--family", "\"Hidden "}, "Hidden & old"},
      {{"list", "--db='" + lists + "'", "--family=h"}, R"(Hidden\ \&\ old)"},  // bash replaces what follows the '='
      {{"list", "--db", "\"" + lists + "\"", "--family", ""}, R"(Custom|Hidden\ \&\ old|Own)"},
      {{"list", "--db", "plddb\\."}, "plddb.bash|plddb.fish"},
  };
  for (const auto& row : rows) {
    const ToolRun run = CompleteIn(kShells[0], row.line);
    EXPECT_EQ(Candidates(run.out), row.candidates) << "row:" << Shown(row.line);
    EXPECT_EQ(run.err, "") << "row:" << Shown(row.line);
  }
}

TEST(Shells, AreToldForWhichCommandToComplete) {
  EXPECT_EQ(RunProgram("/bin/sh", {"-c", "head -n 1 \"$0\"", kScripts + "/_plddb"}).out, "#compdef plddb\n");
  const std::vector<std::string> bash = {"bash", "--norc", "-c", "source \"$0\"; complete -p plddb", kScripts + "/plddb.bash"};
  EXPECT_EQ(RunProgram("/usr/bin/env", bash).out, "complete -F _plddb plddb\n");
}

}  // namespace
