// One header brings in everything: each class and each free function of the interface is used here. Keep it the only one.
#include "DeviceList.h"

// After it, so that it cannot lend the interface a header.
#include <gtest/gtest.h>

#include <type_traits>

namespace {

template <typename Record>
constexpr bool kIsPlainValue =
    std::is_default_constructible_v<Record>&& std::is_copy_constructible_v<Record>&& std::is_copy_assignable_v<Record>&&
        std::is_nothrow_move_constructible_v<Record>&& std::is_nothrow_move_assignable_v<Record>;

template <typename Object>
constexpr bool kIsObject = std::is_base_of_v<LObject, Object>&& std::has_virtual_destructor_v<Object> &&
                           !std::is_copy_constructible_v<Object> && !std::is_move_constructible_v<Object> &&
                           !std::is_assignable_v<Object&, const Object&> && !std::is_move_assignable_v<Object>;

template <typename Object>
constexpr bool kIsCopiedFromAPointer = std::is_constructible_v<Object, Object*> && !std::is_convertible_v<Object*, Object>;

static_assert(kIsObject<DeviceStrElement> && kIsObject<LString> && kIsObject<Adapter> && kIsObject<Package> &&
              kIsObject<PackageList> && kIsObject<DeviceInfo> && kIsObject<FamilyList> && kIsObject<DeviceList>);
static_assert(kIsCopiedFromAPointer<Adapter> && kIsCopiedFromAPointer<Package> && kIsCopiedFromAPointer<PackageList> &&
              kIsCopiedFromAPointer<DeviceInfo> && kIsCopiedFromAPointer<FamilyList> && kIsCopiedFromAPointer<DeviceList>);
static_assert(std::is_constructible_v<DeviceInfo, FamilyList&> && !std::is_convertible_v<FamilyList&, DeviceInfo>);
static_assert(std::is_same_v<decltype(std::declval<DeviceList&>() = std::declval<DeviceList&>()), DeviceList&>);
static_assert(!std::is_copy_assignable_v<FamilyList> && !std::is_assignable_v<FamilyList&, FamilyList&>);
static_assert(!std::is_copy_assignable_v<DeviceInfo> && !std::is_assignable_v<DeviceInfo&, DeviceInfo&>);
static_assert(!std::is_copy_constructible_v<LObjList> && !std::is_copy_assignable_v<LObjList>);

static_assert(kIsPlainValue<CControlRegZero> && kIsPlainValue<CControlRegOne> && kIsPlainValue<CPersistent_fuse> &&
              kIsPlainValue<CControlStatus> && kIsPlainValue<CControlEBR> && kIsPlainValue<CControlEBRList> &&
              kIsPlainValue<CControlVoltage> && kIsPlainValue<CMultiboot_fuses> && kIsPlainValue<CBScanControl>);
static_assert(std::has_virtual_destructor_v<CControlRegZero> && std::has_virtual_destructor_v<CControlRegOne> &&
              std::has_virtual_destructor_v<CPersistent_fuse> && std::has_virtual_destructor_v<CControlStatus> &&
              std::has_virtual_destructor_v<CControlEBR> && std::has_virtual_destructor_v<CControlEBRList> &&
              std::has_virtual_destructor_v<CControlVoltage> && std::has_virtual_destructor_v<CBScanControl>);
static_assert(!std::is_polymorphic_v<CMultiboot_fuses>);
static_assert(!std::is_base_of_v<LObject, CControlRegZero> && !std::is_base_of_v<LObject, CBScanControl>);

TEST(WholeInterface, TheDatabaseHeaderBringsInEveryRecord) {
  FamilyList family;
  DeviceInfo device(family);
  DeviceInfo copy(&device);
  PackageList packages;
  Package* const package = packages.NewPackage();
  Adapter* const adapter = package->AddAdapter("V", "A");
  EXPECT_STREQ(adapter->GetVendorName(), "V");
  EXPECT_EQ(copy.GetFamilyObject(), &family);
  EXPECT_FALSE(IsHidenFamily(&family));
  EXPECT_FALSE(IsBypassDevice(&device, 7));
  const DeviceList database;
  EXPECT_EQ(database.GetFamilyCount(), 0);
}

TEST(WholeInterface, TheDatabaseHeaderBringsInTheFoundation) {
  DeviceStrElement text;
  text.SetString("abc");
  LObjList list;
  list.AddTail(&text);
  EXPECT_EQ(list.GetTail(), &text);
  EXPECT_EQ(LString().Find("a;b", ';'), 1);
  char copy[4];
  util_strncpy(copy, "aBc", 0, 0);
  strupr(copy);
  EXPECT_STREQ(copy, "ABC");
  strlwr(copy);
  EXPECT_STREQ(copy, "abc");
  std::string string = "x";
  strupr(string);
  EXPECT_EQ(string, "X");
  EXPECT_EQ(FindSubString("abc", "c", 0, true), 2);
}

TEST(WholeInterface, FreshControlRecordsAreEmptyAndZero) {
  const CControlRegZero zero;
  EXPECT_EQ(zero.Frequency + zero.MasterClock + zero.ClockDivider, "");
  const CControlRegOne one;
  EXPECT_EQ(one.BitName, "");
  EXPECT_EQ(one.Value, 0);
  EXPECT_EQ(one.Address, 0);
  EXPECT_EQ(one.Column, 0);
  const CPersistent_fuse fuse;
  EXPECT_EQ(fuse.Value, 0);
  EXPECT_EQ(fuse.Address, 0);
  EXPECT_EQ(fuse.Column, 0);
  const CControlStatus status;
  EXPECT_EQ(status.BitName + status.Control + status.Text, "");
  EXPECT_EQ(status.Index, 0);
  const CControlEBR entry;
  EXPECT_EQ(entry.BitName, "");
  EXPECT_FALSE(entry.Value);
  EXPECT_EQ(entry.Address, 0);
  EXPECT_EQ(entry.Column, 0);
  const CControlEBRList block;
  EXPECT_EQ(block.Name, "");
  EXPECT_TRUE(block.Entries.empty());
  const CControlVoltage voltage;
  EXPECT_EQ(voltage.VCCCore + voltage.VCCJ + voltage.PinList, "");
  const CMultiboot_fuses multiboot;
  EXPECT_TRUE(multiboot.CfgAddr.empty());
  EXPECT_EQ(multiboot.ChipSelColumn, 0);
  EXPECT_EQ(multiboot.SourceSelColumn, 0);
  EXPECT_TRUE(multiboot.AutoAdd.empty());
  const CBScanControl scan;
  EXPECT_EQ(scan.DefaultValue, 0);
  EXPECT_TRUE(scan.Controls.empty());
}

TEST(WholeInterface, ACopiedBlockSharesNothing) {
  CControlEBRList block;
  block.Name = "EBR";
  block.Entries.resize(1);
  block.Entries[0].Value = true;
  CControlEBRList copy = block;
  block.Entries[0].Value = false;
  block.Entries[0].BitName = "changed";
  EXPECT_EQ(copy.Name, "EBR");
  EXPECT_TRUE(copy.Entries[0].Value);
  EXPECT_EQ(copy.Entries[0].BitName, "");
}

}  // namespace
