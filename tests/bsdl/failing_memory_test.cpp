// Running out of memory: std::bad_alloc comes out, and nothing is left behind.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sample.h"
#include "tests/support/allocation_counter.h"

namespace {

namespace bsdl = plddb::bsdl;

template <typename Operation>
void ExpectNoLeak(const std::string& row, Operation operation) {
  const long live = support::LiveAllocations();
  const long failures =
      support::ForEachFailingAllocation(operation, [&] { EXPECT_EQ(support::LiveAllocations(), live) << "row: " << row; });
  EXPECT_EQ(support::LiveAllocations(), live) << "row: " << row;
  EXPECT_GT(failures, 0) << "row: " << row;
}

TEST(FailingMemory, OfReadingLeavesNothingBehind) {
  const std::string name = "a-file-with-a-long-name.bsd";
  const struct {
    const char* what;
    std::string text;
  } rows[] = {
      {"good", sample::kText},
      {"faulty", sample::With("\"SAMPLE (00000001),\" &", "\"SAMPLE (0000\" & \"2001), X (0, &")},
      {"no BSDL", "Dear reader"},
  };
  for (const auto& row : rows) {
    ExpectNoLeak(row.what, [&] { bsdl::Parse(row.text, name); });
  }
}

TEST(FailingMemory, OfDescribingAndWritingLeavesNothingBehind) {
  std::vector<bsdl::File> files;
  files.push_back(bsdl::Parse(sample::kText, "a-file-with-a-long-name.bsd"));
  files.push_back(bsdl::Parse(sample::AllReplaced(sample::kText, "TQ100", "VQ64"), "b.bsd"));
  const bsdl::ImportOptions options = {"A-FAMILY-WITH-A-LONG-NAME", "", "A MAKER WITH A LONG NAME", "", 1e-6};
  ExpectNoLeak("describe", [&] { bsdl::Describe(files, options); });
  std::vector<bsdl::File> contradictory = files;
  contradictory.push_back(bsdl::Parse(sample::With("(11111110)", "(11111100)"), "c.bsd"));
  ExpectNoLeak("contradiction", [&] { bsdl::Describe(contradictory, options); });
  const bsdl::Import import = bsdl::Describe(files, options);
  ExpectNoLeak("write", [&] { bsdl::Write(import); });
  const std::string target =
      "<DeviceDatabase><Family Name='A-FAMILY-WITH-A-LONG-NAME'><Device Name='PLD1234A'/></Family></DeviceDatabase>";
  const std::string file = "my.xml";
  ExpectNoLeak("add", [&] { bsdl::AddTo(target, file, import); });
}

}  // namespace
