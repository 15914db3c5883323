#include <gtest/gtest.h>

#include "Chain.h"
#include "tests/support/random_tree.h"
#include "tests/support/sample_tree.h"

namespace {

using plddb::chain::Candidate;
using plddb::chain::ChainPosition;
using plddb::chain::DeviceFinder;

DeviceListOwner Database(unsigned int jtag, unsigned int isp, unsigned int mask, const char* name = "A") {
  DeviceListOwner database(new DeviceList);
  support::SampleDevice(database->NewFamily()->NewDevice()).Name(name).Jtag(jtag).Isp(isp).Mask(mask);
  return database;
}

/// All identifiers of a database, and their neighbours.
std::vector<unsigned int> IdsAround(const DeviceList& database) {
  std::vector<unsigned int> ids = {0, 1, 0xFFFFFFFF};
  for (int f = 0; const FamilyList* family = database.GetFamily(f); ++f) {
    for (int d = 0; const DeviceInfo* device = family->GetDevice(d); ++d) {
      for (const unsigned int id : {device->GetjtagDeviceID(), device->GetispDeviceID()}) {
        for (const unsigned int bits : {0U, 1U, 0x80U, 0x100U, 0x10000000U, 0xF0000000U}) ids.push_back(id ^ bits);
      }
    }
  }
  return ids;
}

TEST(DeviceFinder, FindsWhatTheLibraryFindsFirst) {
  for (std::uint64_t seed = 1; seed <= 30; ++seed) {
    const DeviceListOwner database = support::RandomPrintableTree(seed);
    for (const char* comm : {"JTAG", "ISP", "DUAL", "SPI", "jtag", ""}) {
      DeviceFinder finder({database.get()}, comm);
      for (const unsigned int id : IdsAround(*database)) {
        EXPECT_EQ(finder.Identify(id).Match(), database->GetDeviceWithCommAndID(comm, id))
            << "row: seed " << seed << " " << comm << " " << id;
      }
    }
  }
}

TEST(DeviceFinder, AnswersManyIdsOverManyDevices) {
  constexpr unsigned int devices = 50000;
  const DeviceListOwner database(new DeviceList);
  FamilyList* const family = database->NewFamily();
  std::vector<const DeviceInfo*> byPart;
  for (unsigned int part = 0; part < devices; ++part) {
    DeviceInfo* const device = family->NewDevice();
    support::SampleDevice(device).Name("A").Jtag(part << 12 | 0x057).Isp(0).Mask(0x0FFFFFFF);
    byPart.push_back(device);
  }
  DeviceFinder finder({database.get()}, "JTAG");
  for (unsigned int i = 0; i < 10000; ++i) {
    const unsigned int part = i * 6 + i % 6;  // the last ones are unknown
    const unsigned int id = (i % 16) << 28 | part << 12 | 0x057;
    EXPECT_EQ(finder.Identify(id).Match(), part < devices ? byPart[part] : nullptr) << "row: " << id;
  }
}

TEST(DeviceFinder, NumbersTheDatabasesOfItsCandidates) {
  const DeviceListOwner first = Database(0x59604093, 0, 0x0FFFFFFF);
  const DeviceListOwner empty(new DeviceList);
  const DeviceListOwner second = Database(0x59604093, 0, 0xFFFFFFFF);
  DeviceFinder finder({first.get(), empty.get(), second.get()}, "JTAG");
  const ChainPosition position = finder.Identify(0x59604093);
  ASSERT_EQ(position.Candidates().size(), 2u);
  EXPECT_EQ(position.Candidates()[0].database, 0u);
  EXPECT_EQ(position.Candidates()[1].database, 2u);
  const std::vector<Candidate> ranked = MostExactFirst(position);
  EXPECT_EQ(ranked[0].database, 2u);
  EXPECT_EQ(Reason(ranked[0]), "all 32 bits");
  EXPECT_EQ(Reason(ranked[1]), "masked 0x0FFFFFFF");
  EXPECT_EQ(ranked[1].searchOrder, 1);
}

TEST(DeviceFinder, MarksWhatTheLowByteAloneFinds) {
  const DeviceListOwner database = Database(0x12345677, 0x41, 0xFFFFFFFF);
  DeviceFinder finder({database.get()}, "DUAL");
  EXPECT_TRUE(finder.Identify(0xABCDEF41).Candidates().at(0).onlyLowByte);
  EXPECT_EQ(Reason(finder.Identify(0xABCDEF41).Candidates().at(0)), "low byte only (DUAL)");
  EXPECT_FALSE(finder.Identify(0x12345677).Candidates().at(0).onlyLowByte);
}

TEST(ChainPosition, IsAmbiguousUnlessAllOthersAreLessExactAndAsLong) {
  const struct {
    unsigned int mask;
    unsigned short irLength;
    unsigned int otherMask;
    unsigned short otherIrLength;
    bool isAmbiguous;
  } rows[] = {
      {0xFFFFFFFF, 4, 0x0FFFFFFF, 4, false},  // the other one remains if no part of that version is known
      {0xFFFFFFFF, 4, 0x0FFFFFFF, 5, true},  {0xFFFFFFFF, 4, 0x0FFFFFFF, 0, true}, {0x0FFFFFFF, 4, 0xFFFFFFFF, 4, true},
      {0xFFFFFFFF, 4, 0xFFFFFFFF, 4, true},  {0x0FFFFFFF, 4, 0xF0FFFFFF, 4, true},  // neither counts all bits that the other
                                                                                    // one does
  };
  for (const auto& row : rows) {
    const DeviceListOwner first = Database(0x59604093, 0, row.mask);
    const DeviceListOwner second = Database(0x59604093, 0, row.otherMask);
    first->GetFamily(0)->GetDevice(0)->SetIRLength(row.irLength);
    second->GetFamily(0)->GetDevice(0)->SetIRLength(row.otherIrLength);
    DeviceFinder both({first.get(), second.get()}, "JTAG");
    EXPECT_EQ(both.Identify(0x59604093).IsAmbiguous(), row.isAmbiguous)
        << "row: " << std::hex << row.mask << ' ' << row.irLength << ' ' << row.otherMask << ' ' << row.otherIrLength;
    DeviceFinder one({first.get()}, "JTAG");
    EXPECT_FALSE(one.Identify(0x59604093).IsAmbiguous());
    EXPECT_FALSE(one.Identify(0x59604095).IsAmbiguous());
    EXPECT_FALSE(one.Identify(std::nullopt).IsAmbiguous());
  }
}

TEST(DeviceFinder, RecognisesMisreadIdsOfKnownDevices) {
  const DeviceListOwner database = Database(0x09604093, 0, 0x0FFFFFFF);
  const DeviceFinder finder({database.get()}, "JTAG");
  const struct {
    unsigned int id;
    const char* how;  // null: not misread
    unsigned int repaired;
  } cases[] = {
      {0xB2C08126, "read one bit late", 0x59604093},
      {0xB2C08127, "read one bit late", 0x59604093},
      {0x2CB02049, "read one bit early", 0x59604093},
      {0xACB02049, "read one bit early", 0x59604093},
      {0xC902069A, "bit-reversed", 0x59604093},
      {0x93406059, "byte-swapped", 0x59604093},
      {0x40935960, "with its halves swapped", 0x59604093},
      {0xA69FBF6C, "inverted", 0x59604093},
      {0xC8020698, nullptr, 0},
      {0x12345677, nullptr, 0},
      {0, nullptr, 0},
      {0xFFFFFFFF, nullptr, 0},
  };
  for (const auto& c : cases) {
    const auto misread = finder.MisreadOf(c.id);
    EXPECT_EQ(misread.has_value(), c.how != nullptr) << "row: " << std::hex << c.id;
    if (!misread || c.how == nullptr) continue;
    EXPECT_STREQ(misread->how, c.how) << "row: " << std::hex << c.id;
    EXPECT_EQ(misread->id, c.repaired) << "row: " << std::hex << c.id;
    EXPECT_STREQ(misread->device->GetName(), "A") << "row: " << std::hex << c.id;
  }
  EXPECT_FALSE(DeviceFinder({database.get()}, "ISP").MisreadOf(0xB2C08126));
}

TEST(DeviceFinder, CallsOneBitAWiringFaultOnlyWhereNothingElseExplainsIt) {
  const DeviceListOwner database = Database(0x04B37093, 0, 0x0FFFFFFF);
  const DeviceFinder finder({database.get()}, "JTAG");
  const struct {
    unsigned int id;
    const char* difference;
  } cases[] = {
      {0x14B77093, "bit 18 differs: another part of the same maker?"},
      {0x14B37083, "bit 4 differs: a wiring fault?"},
      {0x04B36093, "bit 12 differs: another part of the same maker?"},
  };
  for (const auto& c : cases) {
    const auto near = finder.NearestDevices(c.id);
    ASSERT_EQ(near.size(), 1u) << "row: " << std::hex << c.id;
    EXPECT_EQ(near[0].difference, c.difference) << "row: " << std::hex << c.id;
  }
}

TEST(ChainPosition, HasTheIrLengthOfTheUserOrElseOfItsMatch) {
  const DeviceListOwner database = Database(0x59604093, 0, 0xFFFFFFFF);
  database->GetFamily(0)->GetDevice(0)->SetIRLength(8);
  DeviceFinder finder({database.get()}, "JTAG");
  ChainPosition known = finder.Identify(0x59604093);
  ChainPosition unknown = finder.Identify(0x4BA00477);
  EXPECT_EQ(known.IrLength(), 8u);
  EXPECT_EQ(unknown.IrLength(), 0u);
  EXPECT_EQ(finder.Identify(std::nullopt).IrLength(), 0u);
  EXPECT_EQ(finder.Identify({"a", 0x4BA00477, 4, false}).IrLength(), 4u);
  EXPECT_EQ(finder.Identify({"a", 0x4BA00477, 4, true}).IrLength(), 0u);
  EXPECT_EQ(finder.Identify({"a", 0x4BA00477, 4, true}, true).IrLength(), 4u);
  EXPECT_EQ(finder.Identify({"a", 0x59604093, 4, false}, true).IrLength(), 8u);
  EXPECT_EQ(finder.Identify({"a", 0x4BA00477, 99999, false}, true).IrLength(), 0u);
  known.givenIrLength = 9;
  unknown.givenIrLength = 4;
  EXPECT_EQ(known.IrLength(), 9u);
  EXPECT_EQ(unknown.IrLength(), 4u);
}

}  // namespace
