// The deep copy of a family with its devices.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "FamilyList.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/device_fields.h"
#include "tests/support/failing_target.h"
#include "tests/support/family_fields.h"
#include "tests/support/field_rules.h"
#include "tests/support/random_tree.h"
#include "tests/support/sample_tree.h"
#include "tests/support/tree_equality.h"

namespace {

using support::DeviceFields;
using support::DifferenceOf;
using support::ExpectCopied;
using support::FamilyFields;
using support::FamilyOwner;
using support::MakeFamily;
using support::NamesIn;

FamilyOwner CopyOf(FamilyList& source) { return FamilyOwner(new FamilyList(&source)); }

/// A family whose every field is set, with `devices` devices whose every field is set.
FamilyOwner FilledFamily(int devices, int sample = 1) {
  FamilyOwner family = MakeFamily();
  SetSamples(FamilyFields(), *family, sample);
  for (int i = 1; i < devices; ++i) support::SetPlainSamples(*family->NewDevice(), sample + i);
  return family;
}

/// Every field of every device is copied as the device table states, and each copy belongs to the copied family.
void ExpectDevicesCopied(const FamilyList& source, const FamilyList& copy) {
  int i = 0;
  for (; DeviceInfo* const device = copy.GetDevice(i); ++i) {
    SCOPED_TRACE("device " + std::to_string(i));
    ASSERT_NE(source.GetDevice(i), nullptr);
    ExpectCopied(DeviceFields(), *source.GetDevice(i), *device, "FamilyObject");
    EXPECT_EQ(device->GetFamilyObject(), &copy);
  }
  EXPECT_EQ(source.GetDevice(i), nullptr) << "not copied: device " << i;
}

TEST(FamilyCopy, TakesEveryField) {
  for (const int sample : {1, 2}) {  // the flags on and off
    const FamilyOwner source = FilledFamily(3, sample);
    const FamilyOwner copy = CopyOf(*source);
    ExpectCopied(FamilyFields(), *source, *copy, "Devices");
    ExpectDevicesCopied(*source, *copy);
  }
}

TEST(FamilyCopy, LeavesUnsetWhatIsUnset) {
  for (const auto& field : FamilyFields()) {
    const FamilyOwner source = MakeFamily();
    SetSample(field, *source, 1);
    const FamilyOwner copy = CopyOf(*source);
    SCOPED_TRACE("the one field that is set: " + field.name);
    ExpectCopied(FamilyFields(), *source, *copy, "Devices");
    ExpectDevicesCopied(*source, *copy);
  }
}

TEST(FamilyCopy, OfAFreshFamilyAndOfNullHasDefaultsOnly) {
  const FamilyOwner fresh = MakeFamily();
  support::ExpectDefaults(FamilyFields(), [&] { return CopyOf(*fresh); });
  support::ExpectDefaults(FamilyFields(), [] { return FamilyOwner(new FamilyList(nullptr)); });
}

TEST(FamilyCopy, KeepsEmptyTextsApartFromUnsetOnes) {
  const FamilyOwner source = MakeFamily();
  source->SetName("");
  source->SetBitstreamModelTemplate("");
  const FamilyOwner copy = CopyOf(*source);
  EXPECT_STREQ(copy->GetName(), "");
  EXPECT_EQ(copy->GetAliasName(), nullptr);
  EXPECT_STREQ(copy->GetICFFile(), "");
  EXPECT_EQ(copy->GetBitstreamModelTemplate(), nullptr);
}

TEST(FamilyCopy, KeepsTheOrderOfDevicesAndOperations) {
  const FamilyOwner source = MakeFamily();
  for (const char* const name : {"C", "A", "B"}) support::AddDevice(*source).Name(name);
  source->SetOperationList(R"("Verify" " " "Erase" "Verify")");
  const FamilyOwner copy = CopyOf(*source);
  EXPECT_EQ(NamesIn(*copy), "C A B");
  EXPECT_EQ(copy->GetDeviceCount(), 3);
  EXPECT_EQ(copy->GetOperationCount(), 4);
  EXPECT_EQ(DifferenceOf(*copy, *source), "");
}

TEST(FamilyCopy, BindsDevicesToItselfWhateverTheirSourceIsBoundTo) {
  FamilyList other;
  const FamilyOwner source = MakeFamily();
  DeviceInfo* const device = source->NewDevice();
  device->SetFamilyObject(other);
  const FamilyOwner copy = CopyOf(*source);
  EXPECT_EQ(copy->GetDevice(0)->GetFamilyObject(), copy.get());
  EXPECT_EQ(device->GetFamilyObject(), &other);
}

TEST(FamilyCopy, SharesNothingWithItsSource) {
  const FamilyOwner untouched = FilledFamily(2);
  for (const bool changeCopy : {true, false}) {
    const FamilyOwner source = FilledFamily(2);
    const FamilyOwner copy = CopyOf(*source);
    const FamilyOwner expectedCopy = CopyOf(*untouched);
    FamilyList& changed = changeCopy ? *copy : *source;
    SetSamples(FamilyFields(), changed, 4);
    for (int i = 0; DeviceInfo* const device = changed.GetDevice(i); ++i) {
      support::SetPlainSamples(*device, 4);
      device->GetDevicePackage()->GetPackage(0)->SetPON("changed");
      device->GetMultibootCfgAddr().push_back(7);
    }
    changed.GetListProgrammingModeControl()[0] = "changed";
    changed.GetListBScanControl()[0].Controls.clear();
    const std::unique_ptr<DeviceInfo> unlinked(changed.DeleteDevice(1));
    FamilyList& other = changeCopy ? *source : *copy;
    EXPECT_EQ(DifferenceOf(other, changeCopy ? *untouched : *expectedCopy), "") << "changed the copy: " << changeCopy;
  }
}

TEST(FamilyCopy, OutlivesItsSourceAndIsOutlivedByIt) {
  const FamilyOwner untouched = FilledFamily(2);
  const FamilyOwner expectedCopy = CopyOf(*untouched);
  FamilyOwner source = FilledFamily(2);
  FamilyOwner copy = CopyOf(*source);
  FamilyOwner second = CopyOf(*source);
  second.reset();
  EXPECT_EQ(DifferenceOf(*source, *untouched), "");
  source.reset();
  EXPECT_EQ(DifferenceOf(*copy, *expectedCopy), "");
}

TEST(FamilyCopy, TakesAsManyDevicesAndOperationsAsTheirSixteenBitCounts) {
  const FamilyOwner source = MakeFamily();
  support::AddDevices(*source, support::kUncountedDevices);
  for (int i = 0; i < 65'536; ++i) source->AddOperationList("x");
  EXPECT_EQ(CopyOf(*source)->GetDevice(0), nullptr);
  EXPECT_EQ(CopyOf(*source)->GetOperation(0), nullptr);
  source->InsertNewDevice(1)->SetName("first");
  source->AddOperationList("last");
  const FamilyOwner copy = CopyOf(*source);
  EXPECT_EQ(NamesIn(*copy), "first");
  EXPECT_STREQ(copy->GetOperation(0), "x");
  EXPECT_EQ(copy->GetOperation(1), nullptr);
}

TEST(FamilyCopy, RunningOutOfMemoryReleasesEverythingAndLeavesTheSource) {
  const std::string tooLongToBeHeldInPlace(100, 'x');
  const FamilyOwner source = FilledFamily(2);
  const FamilyOwner untouched = FilledFamily(2);
  for (FamilyList* const family : {source.get(), untouched.get()}) {
    family->GetListProgrammingModeControl().push_back(tooLongToBeHeldInPlace);
    family->GetListBScanControl()[0].Controls.push_back(tooLongToBeHeldInPlace);
    family->SetBitstreamModelTemplate(tooLongToBeHeldInPlace.c_str());
  }
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { CopyOf(*source); },
                                                          [&] {
                                                            const long left = support::LiveAllocations();
                                                            EXPECT_EQ(left, live);
                                                          });
  const long left = support::LiveAllocations();
  EXPECT_EQ(left, live);
  EXPECT_EQ(failures, support::AllocationsOf([&] { CopyOf(*source); }));
  EXPECT_EQ(DifferenceOf(*source, *untouched), "");
}

TEST(FamilyCopy, OfEveryRandomFamilyIsEqualToIt) {
  int families = 0;
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    const DeviceListOwner tree = support::RandomTree(seed);
    support::SettleForCopying(*tree);
    for (int i = 0; FamilyList* const source = tree->GetFamily(i); ++i, ++families) {
      const FamilyOwner copy = CopyOf(*source);
      EXPECT_EQ(DifferenceOf(*copy, *source), "") << "seed: " << seed << ", family: " << i;
    }
  }
  EXPECT_GT(families, 300);
}

}  // namespace
