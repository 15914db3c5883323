// The descriptions of real devices in data/ do the library's main job.

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "parse.h"

namespace {

const plddb::LoadResult& Loaded() {
  static const plddb::LoadResult result = plddb::LoadDescriptions(std::string(PLDDB_DATA_DIR) + "/xilinx.xml");
  return result;
}

template <typename Visit>
void ForEachDevice(const DeviceList& database, Visit visit) {
  for (int f = 0; FamilyList* family = database.GetFamily(f); ++f) {
    for (int d = 0; DeviceInfo* device = family->GetDevice(d); ++d) visit(*family, *device);
  }
}

template <typename Visit>
void ForEachPackage(const DeviceList& database, Visit visit) {
  ForEachDevice(database, [&](FamilyList&, DeviceInfo& device) {
    for (int p = 0; Package* package = device.GetDevicePackage()->GetPackage(p); ++p) visit(device, *package);
  });
}

int BitCount(unsigned int mask) {
  int count = 0;
  for (; mask != 0; mask &= mask - 1) ++count;
  return count;
}

}  // namespace

TEST(SampleData, LoadsWithoutFault) {
  for (const plddb::Fault& fault : Loaded().faults) ADD_FAILURE() << plddb::ToString(fault);
  ASSERT_NE(Loaded().database, nullptr);
  EXPECT_EQ(Loaded().database->GetFamilyCount(), 33);
  EXPECT_EQ(Loaded().database->GetDeviceCount(), 271);
}

TEST(SampleData, EveryDeviceIsFoundByItsIdcodeInAllVersions) {
  ASSERT_NE(Loaded().database, nullptr);
  const DeviceList& database = *Loaded().database;
  // The part of the second is also matched by the first, whose mask is the more exact one.
  const std::map<std::string, std::set<std::string>> betterMasked = {{"XCR3064XL", {"XCKU9P"}}};
  ForEachDevice(database, [&](FamilyList&, DeviceInfo& device) {
    for (unsigned int version = 0; version < 16; ++version) {
      const unsigned int id = (device.GetjtagDeviceID() & 0x0FFFFFFF) | version << 28;
      const DeviceInfo* const found = database.GetDeviceWithCommAndID("JTAG", id);
      ASSERT_NE(found, nullptr) << "row: " << device.GetName() << ", version " << version;
      if (found == &device) continue;
      const auto known = betterMasked.find(device.GetName());
      const bool isKnown = known != betterMasked.end() && known->second.count(found->GetName()) != 0;
      EXPECT_TRUE(isKnown) << "row: " << device.GetName() << " is found as " << found->GetName() << ", version " << version;
      EXPECT_GT(BitCount(found->GetDeviceIDScanMask()), BitCount(device.GetDeviceIDScanMask())) << "row: " << device.GetName();
    }
  });
}

TEST(SampleData, TheBitsThatAMaskLeavesOutDoNotMatter) {
  ASSERT_NE(Loaded().database, nullptr);
  const DeviceList& database = *Loaded().database;
  std::set<std::string> foundAsAnother;
  ForEachDevice(database, [&](FamilyList&, DeviceInfo& device) {
    const unsigned int free = ~device.GetDeviceIDScanMask();
    unsigned int bits = 0;
    do {  // all subsets of the free bits
      const DeviceInfo* const found = database.GetDeviceWithCommAndID("JTAG", device.GetjtagDeviceID() | bits);
      ASSERT_NE(found, nullptr) << "row: " << device.GetName();
      if (found != &device) foundAsAnother.insert(std::string(device.GetName()) + " as " + found->GetName());
      bits = (bits - free) & free;
    } while (bits != 0);
  });
  EXPECT_EQ(foundAsAnother, std::set<std::string>{"XCR3064XL as XCKU9P"});  // the pair that data/README.md names
}

TEST(SampleData, EveryOrderingNameFindsItsDevice) {
  ASSERT_NE(Loaded().database, nullptr);
  int count = 0;
  ForEachPackage(*Loaded().database, [&](DeviceInfo& device, Package& package) {
    if (package.GetPON() == nullptr) return;
    ++count;
    EXPECT_EQ(Loaded().database->GetDeviceWithPON(package.GetPON(), false), &device) << "row: " << package.GetPON();
  });
  EXPECT_EQ(count, 978);
}

TEST(SampleData, EveryDeviceHasWhatItsReadmePromises) {
  ASSERT_NE(Loaded().database, nullptr);
  ForEachDevice(*Loaded().database, [&](FamilyList& family, DeviceInfo& device) {
    const std::string row = device.GetName();
    EXPECT_STREQ(device.GetCodeName(), device.GetName()) << "row: " << row;
    EXPECT_STREQ(device.GetVendor(), "Xilinx") << "row: " << row;
    EXPECT_STREQ(device.GetComm(), "JTAG") << "row: " << row;
    EXPECT_STREQ(device.GetFamily(), family.GetName()) << "row: " << row;
    EXPECT_GT(device.GetIRLength(), 0) << "row: " << row;
    EXPECT_EQ(device.GetIDLength(), 32) << "row: " << row;
    EXPECT_EQ(device.GetBypassLength(), 1) << "row: " << row;
    EXPECT_EQ(device.GetjtagDeviceID() & 0xFFF, 0x093U) << "row: " << row;
    EXPECT_EQ(device.GetjtagDeviceID() & ~device.GetDeviceIDScanMask(), 0U) << "row: " << row;
    EXPECT_EQ(device.GetjtagDeviceIDBackup(), device.GetjtagDeviceID()) << "row: " << row;
    EXPECT_EQ(device.GetDeviceIDMaskBackup(), device.GetDeviceIDMask()) << "row: " << row;
  });
}

TEST(SampleData, NamesAreUnique) {
  ASSERT_NE(Loaded().database, nullptr);
  std::set<std::string> names;
  ForEachDevice(*Loaded().database, [&](FamilyList&, DeviceInfo& device) {
    EXPECT_TRUE(names.insert(device.GetName()).second) << "row: " << device.GetName();
    EXPECT_EQ(Loaded().database->GetDeviceWithCodeName(device.GetName()), &device) << "row: " << device.GetName();
  });
}
