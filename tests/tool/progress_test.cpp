#include "tool/progress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "terminal.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// What a person saw of files that were begun at these times after the start, and at the end.
std::string Shown(const std::vector<int>& begunMs, const std::string& file = "folder/a.xml") {
  std::string shown;
  steady_clock::time_point now;
  {
    tool::Progress progress(
        begunMs.size(), [&](const std::string& text) { shown += text; }, [&] { return now; });
    for (const int ms : begunMs) {
      now = steady_clock::time_point() + milliseconds(ms);
      progress.Next(file);
    }
  }
  return shown;
}

TEST(Progress, IsShownOnceASecondHasPassedAndErasedAtTheEnd) {
  const std::string second = "loading a.xml (2 of 3)...";
  const std::string third = "loading a.xml (3 of 3)...";
  const std::string erased = "\r" + std::string(second.size(), ' ') + "\r";
  const struct {
    std::vector<int> begunMs;
    std::string shown;
  } rows[] = {
      {{}, ""},
      {{0, 500, 1000}, ""},
      {{0, 500, 1001}, third + erased},
      {{0, 1001, 1002}, second + erased + third + erased},
  };
  for (const auto& row : rows) EXPECT_EQ(Shown(row.begunMs), row.shown) << "row: " << row.shown;
}

TEST(Progress, StaysOneLineWhateverTheFileIsCalled) {
  const std::string shown = Shown({2000}, std::string(500, 'x') + "\n");
  EXPECT_EQ(shown.substr(0, shown.find('\r')), "loading " + std::string(37, 'x') + "... (1 of 1)...");
}

TEST(Progress, NeedsATerminal) {
  tool::Progress nobody(1, nullptr, [] { return steady_clock::time_point(); });
  EXPECT_NO_THROW(nobody.Next("a.xml"));
}

TEST(Progress, IsNotShownWhereLoadingIsQuick) {
  const std::vector<std::string> list = {"list", "--db", PLDDB_TEST_DIR "/tool/data/keys.xml"};
  EXPECT_EQ(ToolAtTerminal({"TERM=xterm"}, list, AtTerminal::kMessages), "");
}

}  // namespace
