// The interface as a caller writes it: with the public headers and the shared library alone, and plain literals where people
// write one.

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <type_traits>

#include "../support/wide_integer.h"
#include "DeviceListOwner.h"

namespace {

class Literals : public testing::Test {
 protected:
  Literals() {
    family->SetName("F");
    device->SetName("N");
    device->SetCodeName("C");
    device->SetComm("JTAG");
    package->SetType("TQ100");
  }

  const DeviceListOwner database = MakeDeviceList();
  FamilyList* const family = database->NewFamily();
  DeviceInfo* const device = family->NewDevice();  // its JTAG identifier is 0, which a family's lookup takes like any other
  PackageList* const packages = device->GetDevicePackage();
  Package* const package = packages->NewPackage();
};

TEST_F(Literals, NamePositionsOfPackages) {
  const unsigned short narrow = 0;
  const short signedNarrow = 0;
  const unsigned long wide = 0;
  const support::WideInteger widest = 0;
  EXPECT_EQ(packages->GetPackage(0), package);
  EXPECT_EQ(packages->GetPackage(0u), package);
  EXPECT_EQ(packages->GetPackage(std::size_t{0}), package);
  EXPECT_EQ(packages->GetPackage(narrow), package);
  EXPECT_EQ(packages->GetPackage(signedNarrow), package);
  EXPECT_EQ(packages->GetPackage(wide), package);
  EXPECT_EQ(packages->GetPackage(widest), package);
  EXPECT_EQ(packages->GetPackage("TQ100"), package);
  EXPECT_EQ(packages->GetPackage(nullptr), nullptr);
  EXPECT_EQ(packages->GetPackage(-1), nullptr);
  EXPECT_EQ(packages->GetPackage(65'536), nullptr);
}

TEST_F(Literals, NamePositionsOfDevices) {
  const unsigned short narrow = 0;
  EXPECT_EQ(family->GetDevice(0), device);
  EXPECT_EQ(family->GetDevice(0u), device);
  EXPECT_EQ(family->GetDevice(0ULL), device);
  EXPECT_EQ(family->GetDevice(std::size_t{0}), device);
  EXPECT_EQ(family->GetDevice(narrow), device);
  EXPECT_EQ(family->GetDevice("N"), device);
  EXPECT_EQ(family->GetDevice(nullptr), nullptr);
  EXPECT_EQ(family->GetDevice(-1), nullptr);
  EXPECT_EQ(family->GetDevice(support::kMinusOne), nullptr);
  EXPECT_EQ(family->GetDevice(65'536), nullptr);
  EXPECT_EQ(family->GetDevice(4'294'967'296ULL), nullptr);
}

TEST_F(Literals, NameIdentifiers) {
  const unsigned int id = 0;
  const unsigned long wide = 0;
  EXPECT_EQ(family->GetDevice("JTAG", 0), device);
  EXPECT_EQ(family->GetDevice("JTAG", 0u), device);
  EXPECT_EQ(family->GetDevice("JTAG", support::WideInteger{0}), device);
  EXPECT_EQ(family->GetDevice("JTAG", std::size_t{0}), device);
  EXPECT_EQ(family->GetDevice("JTAG", id), device);
  EXPECT_EQ(family->GetDevice("JTAG", wide), device);
  device->SetjtagDeviceID(0xF2345678);
  EXPECT_EQ(family->GetDevice("JTAG", 0xF2345678), device);
  EXPECT_EQ(family->GetDevice("JTAG", 0xF2345678UL), device);
  EXPECT_EQ(family->GetDevice("JTAG", 0x1F2345678ULL), nullptr);  // does not fit 32 bits
  EXPECT_EQ(family->GetDevice("JTAG", 0), nullptr);
}

TEST_F(Literals, NamePackageTypesAndCodeNames) {
  EXPECT_EQ(family->GetDevice("TQ100", "C"), device);
  EXPECT_EQ(family->GetDevice("TQ100", "D"), nullptr);
}

TEST_F(Literals, NameFamilies) {
  EXPECT_EQ(database->GetFamily(0), family);
  EXPECT_EQ(database->GetFamily(0u), family);
  EXPECT_EQ(database->GetFamily(std::size_t{0}), family);
  EXPECT_EQ(database->GetFamily(support::kMinusOne), nullptr);
  EXPECT_EQ(database->GetFamily("F"), family);
  EXPECT_EQ(database->GetFamily(nullptr), nullptr);
  EXPECT_EQ(database->GetFamily(-1), nullptr);
  EXPECT_EQ(database->GetFamily(1), nullptr);
}

TEST_F(Literals, NameDevicesAndFamiliesToDelete) {
  const std::unique_ptr<DeviceInfo> added(family->AddNewDevice(1));
  EXPECT_EQ(family->DeleteDevice(2), added.get());
  const std::unique_ptr<DeviceInfo> inserted(family->InsertNewDevice(1));
  EXPECT_EQ(family->DeleteDevice(1), inserted.get());
  EXPECT_EQ(family->DeleteDevice(0), nullptr);
  EXPECT_EQ(family->DeleteDevice(nullptr), nullptr);
  EXPECT_EQ(family->DeleteDevice(-1L), nullptr);
  EXPECT_EQ(family->DeleteDevice("none"), nullptr);
  database->DeleteFamily("none");
  database->DeleteFamily(1);
  database->DeleteFamily(1u);
  database->DeleteFamily(nullptr);
  database->DeleteFamily(-1L);
  EXPECT_EQ(database->GetFamilyCount(), 1);
}

TEST_F(Literals, NameEveryKindOfValueOfADevice) {
  device->SetPin(100);
  device->SetIRLength(8);
  device->SetTurboAlgIndex(1);
  device->SetjtagDeviceID(0x09604093);
  device->SetFuseNumber(5892);
  device->SetBitstreamColWidth(-1);
  device->SetDisableDeviceSTAPLSupport(true);
  device->SetMultibootCfgAddr("16; 32");
  device->SetMultibootCfgAddr({48});
  EXPECT_EQ(device->GetPin(), 100);
  EXPECT_EQ(device->GetIRLength(), 8);
  EXPECT_EQ(device->GetTurboAlgIndex(), 1);
  EXPECT_EQ(device->GetjtagDeviceID(), 0x09604093u);
  EXPECT_EQ(device->GetFuseNumber(), 5892u);
  EXPECT_EQ(device->GetBitstreamColWidth(), -1);
  EXPECT_TRUE(device->GetDisableDeviceSTAPLSupport());
  EXPECT_EQ(device->GetMultibootCfgAddr(), std::vector<int>{48});
}

TEST_F(Literals, InBracesAreListsOfAddressesAndNotTexts) {
  device->SetMultibootCfgAddr({0});
  device->SetMultibootAutoAdd({0});
  EXPECT_EQ(device->GetMultibootCfgAddr(), std::vector<int>{0});
  EXPECT_EQ(device->GetMultibootAutoAdd(), std::vector<int>{0});
  device->SetMultibootCfgAddr({});
  device->SetMultibootAutoAdd({});
  EXPECT_EQ(device->GetMultibootCfgAddr(), std::vector<int>{});
  EXPECT_EQ(device->GetMultibootAutoAdd(), std::vector<int>{});
  device->SetMultibootCfgAddr(nullptr);  // the text form, and ignored
  EXPECT_EQ(device->GetMultibootCfgAddr(), std::vector<int>{});
}

TEST_F(Literals, NameModesAndFuseCounts) {
  device->SetjtagDeviceID(0x09604093);
  device->SetDeviceIDScanMask(0xFFFFFFFF);
  device->SetFuseNumber(100);
  std::vector<std::string> candidates;
  EXPECT_FALSE(IsBypassDevice(device, 0));
  EXPECT_EQ(database->GetDeviceWithCommAndID("JTAG", 0x09604093), device);
  EXPECT_EQ(database->GetDeviceListWithCommAndID("JTAG", 0x09604093), 1);
  EXPECT_EQ(database->GetDeviceListWithCommAndID("JTAG", 0x09604093, candidates), 1);
  EXPECT_EQ(database->GetDeviceCommISPWithFuseMap(100), 0);
  EXPECT_EQ(database->GetDeviceWithFuseMapAndFullName(100, "C"), device);
}

// NULL is an integer for overload resolution, and is meant as a text. `COMPILES(DeviceList, GetFamily(NULL))`: whether the call
// compiles for a record of that class.
template <typename Record, typename Call>
constexpr bool Accepts(Call) {
  return std::is_invocable_v<Call, Record&>;
}
#define COMPILES(Record, call) Accepts<Record>([](auto& record) -> decltype(record.call) { return record.call; })

// NULL has the type of a position on 32-bit systems: nothing can tell them apart.
constexpr bool kNullIsInt = std::is_same_v<decltype(NULL), int>;
constexpr decltype(NULL) kZero = 0;

static_assert(kNullIsInt || !COMPILES(DeviceList, DeleteFamily(NULL)));
static_assert(kNullIsInt || !COMPILES(DeviceList, DeleteFamily(kZero)));
static_assert(!COMPILES(DeviceList, DeleteFamily(0u)));
static_assert(kNullIsInt || !COMPILES(FamilyList, DeleteDevice(NULL)));
static_assert(kNullIsInt || !COMPILES(FamilyList, DeleteDevice(kZero)));
static_assert(!COMPILES(FamilyList, DeleteDevice(0u)));
static_assert(kNullIsInt || !COMPILES(DeviceList, GetFamily(NULL)));
static_assert(kNullIsInt || !COMPILES(DeviceList, GetFamily(kZero)));
static_assert(kNullIsInt || !COMPILES(FamilyList, GetDevice(NULL)));
static_assert(kNullIsInt || !COMPILES(FamilyList, GetDevice(kZero)));
static_assert(kNullIsInt || !COMPILES(FamilyList, GetDevice("JTAG", NULL)));
static_assert(kNullIsInt || !COMPILES(FamilyList, GetDevice("JTAG", kZero)));
static_assert(kNullIsInt || !COMPILES(FamilyList, GetDevice(NULL, NULL)));
static_assert(kNullIsInt || !COMPILES(PackageList, GetPackage(NULL)));
static_assert(kNullIsInt || !COMPILES(PackageList, GetPackage(kZero)));
static_assert(kNullIsInt || !COMPILES(LString, Find("text", NULL)));

static_assert(COMPILES(DeviceList, DeleteFamily(0)) && COMPILES(DeviceList, DeleteFamily(nullptr)) &&
              COMPILES(DeviceList, DeleteFamily(static_cast<unsigned short>(0))) && COMPILES(DeviceList, DeleteFamily("F")));
static_assert(COMPILES(FamilyList, DeleteDevice(0)) && COMPILES(FamilyList, DeleteDevice(nullptr)) &&
              COMPILES(FamilyList, DeleteDevice(static_cast<unsigned short>(0))) && COMPILES(FamilyList, DeleteDevice("C")));
static_assert(COMPILES(DeviceList, GetFamily(0)) && COMPILES(DeviceList, GetFamily(nullptr)) &&
              COMPILES(DeviceList, GetFamily(std::size_t{0})) && COMPILES(DeviceList, GetFamily("F")));
static_assert(COMPILES(FamilyList, GetDevice(0)) && COMPILES(FamilyList, GetDevice(nullptr)) &&
              COMPILES(FamilyList, GetDevice(std::size_t{0})) && COMPILES(FamilyList, GetDevice("N")));
static_assert(COMPILES(FamilyList, GetDevice("JTAG", 0)) && COMPILES(FamilyList, GetDevice("TQ100", nullptr)) &&
              COMPILES(FamilyList, GetDevice(NULL, 0)) && COMPILES(FamilyList, GetDevice(nullptr, "C")));
static_assert(COMPILES(PackageList, GetPackage(0)) && COMPILES(PackageList, GetPackage(nullptr)) &&
              COMPILES(PackageList, GetPackage(std::size_t{0})) && COMPILES(PackageList, GetPackage("TQ100")));

// Where no overload takes a number, NULL is the null pointer that it is meant to be.
TEST_F(Literals, NullIsATextWhereNoNumberIsTaken) {
  device->SetName(NULL);
  device->SetMultibootCfgAddr(NULL);
  device->SetMultibootAutoAdd(NULL);
  family->SetListProgrammingModeControl(NULL);
  family->SetListBScanControl(NULL);
  EXPECT_STREQ(device->GetName(), "N");
  EXPECT_TRUE(device->GetMultibootCfgAddr().empty() && device->GetMultibootAutoAdd().empty());
  EXPECT_TRUE(family->GetListProgrammingModeControl().empty() && family->GetListBScanControl().empty());
  EXPECT_EQ(package->AddAdapter(NULL), nullptr);
  EXPECT_EQ(package->AddAdapter(NULL, NULL), nullptr);
  EXPECT_EQ(family->GetDevicePos(NULL), -1);
  EXPECT_EQ(database->GetDeviceWithName(NULL), nullptr);
  EXPECT_EQ(database->AddNewDeviceList(NULL), database.get());
}

}  // namespace
