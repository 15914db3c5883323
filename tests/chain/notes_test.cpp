#include <gtest/gtest.h>

#include "Chain.h"
#include "tests/support/sample_tree.h"

namespace {

using plddb::chain::Chain;
using plddb::chain::Expectation;
using plddb::chain::Scan;
using plddb::chain::ScannedTap;

/// A device A with IDCODE 0x00000093 and an IR of 8 bits.
DeviceListOwner Database() {
  DeviceListOwner database(new DeviceList);
  DeviceInfo* const device = database->NewFamily()->NewDevice();
  support::SampleDevice(device).Name("A").Jtag(0x00000093).Mask(0x0FFFFFFF);
  device->SetIRLength(8);
  return database;
}

TEST(Notes, AreThoseOfTheScanAndOfItsLengths) {
  const DeviceListOwner database = Database();
  const ScannedTap known = {"", 0x10000093, 8, false};
  const ScannedTap other = {"", 0x10000093, 6, false};
  const ScannedTap unknown = {"", 0x12345677, 0, false};
  const ScannedTap guessed = {"", 0x12345677, 4, true};
  const struct {
    std::vector<ScannedTap> taps;
    unsigned long measured;
    std::vector<std::string> notes;
  } cases[] = {
      {{}, 0, {}},
      {{known}, 8, {}},
      {{known}, 0, {}},
      {{other}, 0, {"position 0: the scan shows IR length 6, but A has 8"}},
      {{known}, 9, {"the scan shows that the chain has IR length 9, but the known lengths sum up to 8"}},
      {{known, unknown}, 12, {"the scan shows that the chain has IR length 12, which leaves 4: --ir 1=4"}},
      {{known, unknown, unknown}, 12, {}},
      {{known, unknown}, 8, {"the scan shows that the chain has IR length 8, but the known lengths sum up to 8"}},
      {{guessed}, 0, {"position 0: the scan shows IR length 4, perhaps a guess; take it with --ir 0=4 or --trust-ir"}},
  };
  for (const auto& c : cases) {
    Scan scan;
    scan.taps = c.taps;
    scan.irLength = c.measured;
    EXPECT_EQ(Notes(scan, Identify({database.get()}, "JTAG", scan)), c.notes) << "row: " << c.measured;
    scan.notes = {"odd"};
    EXPECT_EQ(Notes(scan, Identify({database.get()}, "JTAG", scan)).front(), "odd") << "row: " << c.measured;
  }
}

TEST(Compare, HasAnEntryForEachPositionOfTheLongerOne) {
  const DeviceListOwner database = Database();
  const struct {
    std::vector<ScannedTap> taps;
    std::vector<std::string> names;
    std::vector<Expectation> all;
  } cases[] = {
      {{}, {}, {}},
      {{{"", 0x93}}, {"a"}, {{true, "a, as expected"}}},
      {{{"", 0x93}}, {"B"}, {{false, "expected B, found A (0x00000093)"}}},
      {{{"", 0x93}}, {"\x1B"}, {{false, "expected \\x1B, found A (0x00000093)"}}},
      {{}, {"A"}, {{false, "expected A, found nothing"}}},
      {{{"", 0x93}}, {}, {{false, "found A (0x00000093), expected nothing"}}},
      {{{"", {}}}, {"A"}, {{false, "expected A, found an unknown device (no IDCODE)"}}},
      {{{"", 0x93}, {"", 0x77}},
       {"A", "A"},
       {{true, "A, as expected"}, {false, "expected A, found an unknown device (0x00000077)"}}},
  };
  for (const auto& c : cases) {
    Scan scan;
    scan.taps = c.taps;
    const std::vector<Expectation> all = Compare(Identify({database.get()}, "JTAG", scan), c.names);
    ASSERT_EQ(all.size(), c.all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
      EXPECT_EQ(all[i].text, c.all[i].text);
      EXPECT_EQ(all[i].agrees, c.all[i].agrees) << "row: " << c.all[i].text;
    }
  }
}

}  // namespace
