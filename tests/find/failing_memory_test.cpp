// Running out of memory: std::bad_alloc comes out, and nothing is left behind.

#include <gtest/gtest.h>

#include <string>

#include "sample.h"
#include "tests/support/allocation_counter.h"

namespace {

using namespace plddb::find;

TEST(FailingMemory, OfASearchLeavesNothingBehind) {
  const DeviceListOwner database = Described(
      "<Family Name='a family with a long name'><Device Name='a device with a long name' CodeName='CODE' Vendor='Maker' "
      "Comm='JTAG' FuseNumber='46656'><Package Type='VQ44' PON='a device with a long name-VQ44'/></Device></Family>");
  const Databases databases = {database.get()};
  const std::string texts[] = {
      "a device with a long name",
      "a family with a long name",
      "0x12345678",
      "46656",
      "* long ?ame",
      "a device with",
      "with a long na",
      "Maker a device with a long name - 10 VQG44 C UNKNOWN TEXT",
      "a device-with-a-long-name-10VQG44C",
      "nothing of this name is here",
  };
  for (const std::string& text : texts) {
    const long live = support::LiveAllocations();
    const long failures = support::ForEachFailingAllocation(
        [&] {
          Find(databases, text);
          FindByKey(databases, Key::kPon, text);
          FindFullName(databases, 46656, text);
          NearNames(databases, text);
          WhyNoFullName(databases, 46657, text);
          WhyNoPackage(databases, "vq44", text);
        },
        [&] { EXPECT_EQ(support::LiveAllocations(), live) << "row: " << text; });
    EXPECT_EQ(support::LiveAllocations(), live) << "row: " << text;
    EXPECT_GT(failures, 0) << "row: " << text;
  }
}

}  // namespace
