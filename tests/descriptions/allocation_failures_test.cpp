// Running out of memory while loading: std::bad_alloc comes out, and nothing is left behind.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <pugixml.hpp>
#include <string>

#include "parse.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/read_file.h"

namespace {

const std::string kExample = std::string(PLDDB_TEST_DIR) + "/descriptions/every_list.xml";

// What the XML parser takes its memory from: the operator new, so that its allocations fail in their turn.
void* Allocate(std::size_t size) { return ::operator new(size, std::nothrow); }
void Free(void* memory) { ::operator delete(memory); }

/// While it lives, the XML parser's memory is counted, too.
class CountedParser {
 public:
  CountedParser() { pugi::set_memory_management_functions(&Allocate, &Free); }
  ~CountedParser() { pugi::set_memory_management_functions(&std::malloc, &std::free); }
  CountedParser(const CountedParser&) = delete;
  CountedParser& operator=(const CountedParser&) = delete;
};

void ExpectNoLeak(const std::string& text, const char* row) {
  const CountedParser counted;
  const std::string file = "a.xml";
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation(
      [&] { plddb::ParseDescriptions(text, file); }, [&] { EXPECT_EQ(support::LiveAllocations(), live) << "row: " << row; });
  EXPECT_EQ(support::LiveAllocations(), live) << "row: " << row;
  EXPECT_GT(failures, 0) << "row: " << row;
}

}  // namespace

TEST(AllocationFailures, OfALoadLeaveNothingBehind) { ExpectNoLeak(support::ReadFile(kExample), "good file"); }

TEST(AllocationFailures, OfAFaultyLoadLeaveNothingBehind) {
  ExpectNoLeak(
      parse::WithDevice("IRLenght='1' Pin='x' Name='&x' Name=''", "text<Pakage/><SysIO/><EBR Name='' Column='0 to 1'/>"),
      "faulty file");
  ExpectNoLeak("<DeviceDatabase>\n<Family>\n</Familie>", "broken file");
}

TEST(AllocationFailures, OfReadingAFileLeaveNothingBehind) {
  const CountedParser counted;
  const std::string path = kExample;
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { plddb::LoadDescriptions(path); },
                                                          [&] { EXPECT_EQ(support::LiveAllocations(), live); });
  EXPECT_EQ(support::LiveAllocations(), live);
  EXPECT_GT(failures, 0);
}
