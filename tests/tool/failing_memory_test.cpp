// Running out of memory, at each allocation in turn: std::bad_alloc comes out, for main to tell; what was written is nothing or
// all, and nothing leaks.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "program.h"
#include "run_tool.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/counted_parser.h"
#include "tests/support/read_file.h"
#include "tests/support/temporary_folder.h"
#include "tool/command.h"
#include "tool/complete.h"

namespace {

namespace fs = std::filesystem;
using support::ReadFile;

const std::string kData = PLDDB_TEST_DIR "/tool/data/";
const std::string kLong = kData + "long_texts.xml";  // short texts take no memory
const std::string kBsdl = kData + "pld1234a_tq100.bsd";
const std::string kLists = kData + "lists.xml";

/// While it lives, one of the standard streams of this process is a file.
class Redirected {
 public:
  explicit Redirected(std::FILE* stream)
      : stream_(stream), file_(run_tool_detail::TemporaryFile("")), kept_(dup(fileno(stream))) {
    std::fflush(stream_);
    dup2(fileno(file_.get()), fileno(stream_));
  }
  ~Redirected() {
    std::fflush(stream_);
    dup2(kept_, fileno(stream_));
    close(kept_);
  }
  Redirected(const Redirected&) = delete;
  Redirected& operator=(const Redirected&) = delete;

  /// What was written since the last call.
  std::string Take() {
    struct stat status = {};
    std::fflush(stream_);
    fstat(fileno(file_.get()), &status);
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    const bool all = pread(fileno(file_.get()), text.data(), text.size(), 0) == status.st_size;
    const bool emptied = ftruncate(fileno(file_.get()), 0) == 0 && lseek(fileno(file_.get()), 0, SEEK_SET) == 0;
    return all && emptied ? text : "the file cannot be read";
  }

 private:
  std::FILE* const stream_;
  const run_tool_detail::File file_;
  const int kept_;
};

struct Outcome {
  long failures = 0;
  bool wroteAPart = false;
  long leftBehind = 0;
};

/// Runs `operation` with each of its allocations failing in turn.
template <typename Operation>
Outcome FailEachAllocation(Operation operation) {
  Redirected out(stdout);
  Redirected messages(stderr);
  operation();  // objects kept until the process ends exist from now on
  const std::string whole = out.Take();
  Outcome outcome;
  const long live = support::LiveAllocations();
  outcome.failures = support::ForEachFailingAllocation(operation, [&] {
    const std::string written = out.Take();
    outcome.wroteAPart = outcome.wroteAPart || (!written.empty() && written != whole);
  });
  outcome.leftBehind = support::LiveAllocations() - live;
  return outcome;
}

/// Of a whole run, without taking the command line apart.
Outcome FailEachAllocationOf(const std::string& line) {
  Program program;
  program.Parse(line);
  return FailEachAllocation([&] { program.Run(); });
}

void Expect(const Outcome& outcome, const std::string& row) {
  EXPECT_GT(outcome.failures, 0) << "row: " << row;
  EXPECT_FALSE(outcome.wroteAPart) << "row: " << row;
  EXPECT_EQ(outcome.leftBehind, 0) << "row: " << row;
}

// Not where values of the JSON library are involved: it ends the program if it runs out of memory.
std::vector<std::string> Runs() {
  const std::string ids = " --db " + kLong + " 0x0ABCD043 0x1ABCD143 0x0ABCC043 0x8765432 0x00000000 0x12345677";
  const std::string faulty = kData + "check/";
  return {
      "list --db " + kLong + " --db " + kLists,
      "list --db " + kLong + " --family 'alias of the first family'",
      "list --db " + kLong + " --family 'family of the first device'",
      "show --db " + kLong + " DEVICE-WITH-A-LONG-NAME",
      "show --db " + kLong + " 0x12345678",
      "show --db " + kLong + " DEVICE-WITH-A-LONG-NOSE",
      "show --db " + kLists + " LISTS",
      "find --db " + kLong + " DEVICE-WITH-A-LONG-NAME",
      "find --db " + kLong + " --name DEVICE-WITH-A-LONG-NOSE",
      "identify" + ids,
      "identify --format tsv" + ids,
      "identify --format openocd --ir 1=8" + ids,
      "check --list-codes",
      "check " + kLong,
      "check " + faulty + "text_long_name.xml " + faulty + "bypass_short.xml " + faulty + "bypass_family.xml",
      "check " + faulty + "load_unknown_element.xml " + faulty + "list_surplus.xml",
      "import " + kBsdl + " --family A-FAMILY-WITH-A-LONG-NAME",
      "check --missing --bsdl " + kBsdl + " " + kLong,
      "export " + kLong,
      "merge " + kLong + " " + kLong,
      "fits " PLDDB_TEST_DIR "/../examples/counter.jed --db " + kLong + " 0x0ABCD043",
  };
}

TEST(FailingMemory, OfARunWritesNothingOrAllAndLeaksNothing) {
  for (const std::string& line : Runs()) Expect(FailEachAllocationOf(line), line);
}

TEST(FailingMemory, HasARunOfEachSubcommand) {
  std::set<std::string> subcommands;
  std::set<std::string> tested;
  std::istringstream offered(RunTool({"complete", ""}).out);
  for (std::string line; std::getline(offered, line);) subcommands.insert(line.substr(0, line.find('\t')));
  for (const std::string& run : Runs()) tested.insert(run.substr(0, run.find(' ')));
  subcommands.erase("help");  // help is formatted by streams, which leave out what they have no memory for
  EXPECT_EQ(tested, subcommands);
}

TEST(FailingMemory, OfReadingAScanWritesNothingOrAllAndLeaksNothing) {
  for (const char* const file : {"openocd_log_bypass.txt", "openocd_log_and_table.txt", "urjtag_detect.txt"}) {
    for (const char* const format : {"text", "tsv", "openocd"}) {
      const std::string line = "identify --db " + kLong + " --scan " + kData + "scans/" + file + " --format " + format;
      Expect(FailEachAllocationOf(line), line);
    }
  }
}

TEST(FailingMemory, OfARunThatFailsTellsOfTheOneOrTheOther) {
  const std::string rows[] = {
      "list --db " + kData + "broken.xml",
      "identify --db " + kLong + " nothing 12345678901234567890",
      "identify --db " + kLong + " --ir 7=8 0x0ABCD043",
      "help nothing-of-that-name",
  };
  for (const std::string& line : rows) {
    Program program;
    program.Parse(line);
    long told = 0;
    const Outcome outcome = FailEachAllocation([&] {
      try {
        program.Run();
      } catch (const tool::Failure&) {
        ++told;
      }
    });
    Expect(outcome, line);
    EXPECT_GE(told, 2) << "row: " << line;  // before the first allocation failed, and after the last
  }
}

TEST(FailingMemory, OfACompletionOffersNothingOrAll) {
  const std::vector<std::string> rows[] = {
      {"ident"},
      {"--he"},
      {"identify", "--form"},
      {"identify", "--format=op"},
      {"list", "--db", kLong, "--family", "alias of the fi"},
      {"list", "--db=" + kLong, "--family=family of the fi"},
      {"show", "--db", kLong, "--", "device-with"},
      {"find", "--db", kLong, "--package", "quad-flat-"},
      {"help", "ident"},
      {"merge", "--output", "a-file-with-a-long-name"},
  };
  const Program program;
  for (const std::vector<std::string>& words : rows) {
    Expect(FailEachAllocation([&] { tool::Complete(program.Get(), words); }), testing::PrintToString(words));
  }
}

// A run may also succeed without the memory that it was refused, as a sort without its buffer does.
TEST(FailingMemory, LeavesTheFileThatWasToBeReplacedWholeAndNoOtherBesideIt) {
  const support::CountedParser counted;
  for (const std::string& line : {"merge " + kLong + " " + kLists, "export " + kLists, "export " + kLong}) {
    const support::TemporaryFolder folder;
    const std::string output = (folder.Path() / "a-file-with-a-long-name.xml").string();
    Program program;
    program.Parse(line + " --output " + output);
    const Redirected messages(stderr);
    program.Run();
    const std::string written = ReadFile(output);
    bool isChanged = false;
    long files = 0;
    std::ofstream(output) << "old";
    const long failures = support::ForEachFailingAllocation([&] { program.Run(); },
                                                            [&] {
                                                              const std::string text = ReadFile(output);
                                                              isChanged |= text != "old" && text != written;
                                                              files += std::distance(fs::directory_iterator(folder.Path()), {});
                                                            });
    EXPECT_GT(failures, 0) << "row: " << line;
    EXPECT_FALSE(isChanged) << "row: " << line;
    EXPECT_EQ(files, failures) << "row: " << line;  // each time the one that was there
    EXPECT_EQ(ReadFile(output), written) << "row: " << line;
  }
}

}  // namespace
