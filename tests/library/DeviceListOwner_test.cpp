#include "DeviceListOwner.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <utility>

#include "tests/support/allocation_counter.h"
#include "tests/support/failing_target.h"
#include "tests/support/random_tree.h"
#include "tests/support/sample_tree.h"
#include "tests/support/tree_equality.h"

namespace {

using support::DifferenceOf;
using support::FilledTree;
using support::LiveAllocations;

static_assert(noexcept(ReleaseDevices(std::declval<FamilyList&>())));
static_assert(noexcept(ReleaseDevices(std::declval<DeviceList&>())));
static_assert(std::is_nothrow_move_constructible_v<DeviceListOwner> && !std::is_copy_constructible_v<DeviceListOwner>);

DeviceListOwner SettledTree(int families) {
  DeviceListOwner database = FilledTree(families);
  support::SettleForCopying(*database);
  return database;
}

TEST(ReleaseDevices, DestroysTheDevicesOfAFamilyAndKeepsTheFamily) {
  FamilyList family;
  family.SetName("F");
  const long live = LiveAllocations();
  for (const char* const name : {"A", "B", "C"}) support::AddDevice(family).Name(name).PackageType("TQ100").BackupPON("A");
  ReleaseDevices(family);
  EXPECT_EQ(family.GetDevice(0), nullptr);
  EXPECT_EQ(family.GetDeviceCount(), 0);
  EXPECT_STREQ(family.GetName(), "F");
  family.NewDevice();
  ReleaseDevices(family);
  ReleaseDevices(family);
  const long left = LiveAllocations() - live;
  EXPECT_LE(left, 1) << "the list's own memory at most";
}

TEST(ReleaseDevices, GoesByTheListAndNotByItsSixteenBitCount) {
  const long live = LiveAllocations();
  {
    FamilyList family;
    support::AddDevices(family, support::kUncountedDevices + 1);
    ReleaseDevices(family);
    EXPECT_EQ(family.GetLastDevice(), nullptr);
  }
  const long left = LiveAllocations();
  EXPECT_EQ(left, live);
}

TEST(ReleaseDevices, DestroysTheDevicesOfAllFamiliesAndKeepsTheFamilies) {
  const long live = LiveAllocations();
  {
    DeviceList database;
    for (const int devices : {2, 0, 3}) support::AddDevices(*database.NewFamily(), devices);
    ReleaseDevices(database);
    EXPECT_EQ(database.GetDeviceCount(), 0);
    EXPECT_EQ(database.GetFamilyCount(), 3);
  }
  const long left = LiveAllocations();
  EXPECT_EQ(left, live);
}

TEST(ReleaseDevices, AllocatesNothing) {
  const DeviceListOwner database = FilledTree(3);
  const long before = support::AllocationCount();
  ReleaseDevices(*database);
  const long made = support::AllocationCount() - before;
  EXPECT_EQ(made, 0);
}

TEST(DeviceListOwner, ReleasesTheWholeTree) {
  FilledTree(1);  // makes the field tables, which stay
  const long live = LiveAllocations();
  { const DeviceListOwner database = FilledTree(3); }
  {
    DeviceListOwner database = FilledTree(1);
    database = FilledTree(2);
    const DeviceListOwner moved = std::move(database);
  }
  { const DeviceListOwner none; }
  const long left = LiveAllocations();
  EXPECT_EQ(left, live);
}

TEST(DeviceListOwner, LeavesADeviceThatWasTakenOutToItsTaker) {
  std::unique_ptr<DeviceInfo> device;
  {
    const DeviceListOwner database = MakeDeviceList();
    FamilyList& family = *database->NewFamily();
    support::AddDevice(family).Name("A");
    support::AddDevice(family).Name("B");
    device.reset(family.DeleteDevice(1));
  }
  EXPECT_STREQ(device->GetName(), "A");
}

TEST(MakeDeviceList, MakesAnEmptyDatabase) {
  const DeviceListOwner database = MakeDeviceList();
  DeviceList empty;
  ASSERT_NE(database, nullptr);
  EXPECT_EQ(DifferenceOf(*database, empty), "");
}

TEST(CopyDeviceList, OwnsADeepCopy) {
  const DeviceListOwner source = SettledTree(2);
  const DeviceListOwner untouched = SettledTree(2);
  const long live = LiveAllocations();
  {
    const DeviceListOwner copy = CopyDeviceList(*source);
    EXPECT_EQ(DifferenceOf(*copy, *source), "");
    copy->GetFamily(0)->GetDevice(0)->SetName("changed");
  }
  const long left = LiveAllocations();
  EXPECT_EQ(left, live);
  EXPECT_EQ(DifferenceOf(*source, *untouched), "");
}

TEST(CopyDeviceList, RunningOutOfMemoryLosesNothing) {
  const DeviceListOwner source = support::RandomTree(16);
  const long live = LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { CopyDeviceList(*source); },
                                                          [&] {
                                                            const long left = LiveAllocations();
                                                            EXPECT_EQ(left, live);
                                                          });
  EXPECT_EQ(failures, support::AllocationsOf([&] { CopyDeviceList(*source); }));
}

TEST(AssignDeviceList, AssignsAndReleasesTheOldDevices) {
  const DeviceListOwner source = SettledTree(2);
  const long live = LiveAllocations();
  {
    const DeviceListOwner target = FilledTree(3);
    AssignDeviceList(*target, *source);
    EXPECT_EQ(DifferenceOf(*target, *source), "");
    AssignDeviceList(*target, *source);
    EXPECT_EQ(DifferenceOf(*target, *source), "");
  }
  const long left = LiveAllocations();
  EXPECT_EQ(left, live);
}

TEST(AssignDeviceList, KeepsATextThatTheSourceLacks) {
  const DeviceListOwner source = MakeDeviceList();
  const DeviceListOwner target = FilledTree(1);
  source->SetVersion("new");
  AssignDeviceList(*target, *source);
  EXPECT_STREQ(target->GetVersion(), "new");
  EXPECT_STREQ(target->GetComment(), "comment");
  EXPECT_EQ(target->GetFamilyCount(), 0);
}

TEST(AssignDeviceList, ToItselfChangesNothing) {
  const DeviceListOwner database = SettledTree(2);
  const DeviceListOwner untouched = SettledTree(2);
  AssignDeviceList(*database, *database);
  EXPECT_EQ(DifferenceOf(*database, *untouched), "");
}

TEST(AssignDeviceList, RunningOutOfMemoryLosesNothingAndLeavesTheSource) {
  const DeviceListOwner source = support::RandomTree(16);
  const long live = LiveAllocations();
  const auto make = [] { return FilledTree(1); };
  const auto assign = [&](DeviceList& target) { AssignDeviceList(target, *source); };
  const long failures = support::ForEachFailureOn(
      make, assign, [&](DeviceList& target) { EXPECT_LT(target.GetFamilyCount(), source->GetFamilyCount()); });
  const long left = support::LiveAfterFailures(live);
  EXPECT_EQ(left, live);
  const DeviceListOwner target = make();
  EXPECT_EQ(failures, support::AllocationsOf([&] { assign(*target); }));
  EXPECT_EQ(DifferenceOf(*source, *support::RandomTree(16)), "");
}

}  // namespace
