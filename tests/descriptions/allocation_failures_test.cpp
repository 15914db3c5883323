// Running out of memory while loading, describing and writing: std::bad_alloc is thrown, and nothing leaks.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "parse.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/counted_parser.h"
#include "tests/support/read_file.h"

namespace {

const std::string kExample = std::string(PLDDB_TEST_DIR) + "/descriptions/every_list.xml";

void ExpectNoLeak(const std::string& text, const char* row) {
  const support::CountedParser counted;
  const std::string file = "a.xml";
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation(
      [&] { plddb::ParseDescriptions(text, file); }, [&] { EXPECT_EQ(support::LiveAllocations(), live) << "row: " << row; });
  EXPECT_EQ(support::LiveAllocations(), live) << "row: " << row;
  EXPECT_GT(failures, 0) << "row: " << row;
}

}  // namespace

TEST(AllocationFailures, OfALoadLeakNothing) { ExpectNoLeak(support::ReadFile(kExample), "good file"); }

TEST(AllocationFailures, OfAFaultyLoadLeakNothing) {
  ExpectNoLeak(
      parse::WithDevice("IRLenght='1' Pin='x' Name='&x' Name=''", "text<Pakage/><SysIO/><EBR Name='' Column='0 to 1'/>"),
      "faulty file");
  ExpectNoLeak("<DeviceDatabase>\n<Family>\n</Familie>", "broken file");
}

TEST(AllocationFailures, OfReadingAFileLeakNothing) {
  const support::CountedParser counted;
  const std::string path = kExample;
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { plddb::LoadDescriptions(path); },
                                                          [&] { EXPECT_EQ(support::LiveAllocations(), live); });
  EXPECT_EQ(support::LiveAllocations(), live);
  EXPECT_GT(failures, 0);
}

TEST(AllocationFailures, OfWritingGiveNoText) {
  const support::CountedParser counted;
  plddb::Outline outline;
  const plddb::LoadResult loaded = plddb::LoadDescriptions(kExample, &outline);
  const plddb::Source source = {loaded.database.get(), &outline};
  const std::vector<plddb::Source> twice = {source, source};
  const std::string whole = plddb::WriteDescriptions(twice);
  std::string written;
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { written = plddb::WriteDescriptions(twice); },
                                                          [&] {
                                                            EXPECT_EQ(written, "");
                                                            EXPECT_EQ(support::LiveAllocations(), live);
                                                          });
  EXPECT_TRUE(written == whole);
  EXPECT_GT(failures, 100);
}

TEST(AllocationFailures, OfDescribingLeakNothing) {
  const support::CountedParser counted;
  const plddb::LoadResult loaded = plddb::LoadDescriptions(kExample);
  FamilyList& family = parse::FirstFamily(loaded.database);
  DeviceInfo& device = parse::FirstDevice(loaded.database);
  const long live = support::LiveAllocations();
  const auto nothingIsLeft = [&] { EXPECT_EQ(support::LiveAllocations(), live); };
  EXPECT_GT(support::ForEachFailingAllocation([&] { plddb::Describe(family); }, nothingIsLeft), 10);
  EXPECT_GT(support::ForEachFailingAllocation([&] { plddb::Describe(device); }, nothingIsLeft), 100);
}
