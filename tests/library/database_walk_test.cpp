// What all lookups of a database share: the order of their walk, its bounds, and its cost.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "DeviceList.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/sample_tree.h"

namespace {

using support::SampleDevice;
using support::SampleTree;
using Texts = std::vector<std::string>;

/// A device that every lookup of the table below finds.
SampleDevice Findable(const SampleDevice& device) {
  return device.Name("N")
      .CodeName("C")
      .AliasName("A")
      .Comm("JTAG")
      .Jtag(0x45)
      .Isp(0x45)
      .Mask(0xFFFFFFFF)
      .Fuses(100)
      .UES(8)
      .PackageType("TQ100")
      .PackagePON("P-1")
      .BackupPON("B-1")
      .AliasPON("L-1")
      .JDF("FILE01.jdf");
}

struct Lookup {
  const char* name;
  std::function<const DeviceInfo*(const DeviceList&)> find;
};

const std::vector<Lookup>& Lookups() {
  using D = const DeviceList&;
  // clang-format off
  static const std::vector<Lookup> lookups = {
      {"name",                  [](D d) { return d.GetDeviceWithName("N"); }},
      {"code name",             [](D d) { return d.GetDeviceWithCodeName("C"); }},
      {"alias name",            [](D d) { return d.GetDeviceWithCodeName("A"); }},
      {"mode and name",         [](D d) { return d.GetDeviceWithComm("JTAG", "N"); }},
      {"mode and code name",    [](D d) { return d.GetDeviceWithCommAndCodeName("JTAG", "C"); }},
      {"package and name",      [](D d) { return d.GetDeviceWithPackage("TQ100", "N"); }},
      {"package and code name", [](D d) { return d.GetDeviceWithPackageAndCodeName("TQ100", "C"); }},
      {"JTAG identifier",       [](D d) { return d.GetDeviceWithCommAndID("JTAG", 0x45); }},
      {"ISP identifier",        [](D d) { return d.GetDeviceWithCommAndID("ISP", 0x45); }},
      {"either identifier",     [](D d) { return d.GetDeviceWithCommAndID("DUAL", 0x45); }},
      {"id and code name",      [](D d) { return d.GetDeviceWithCommAndIDAndCodeName("JTAG", 0x45, "C"); }},
      {"whole identifier",      [](D d) { return d.GetDeviceWithCommAndIDNoMask("JTAG", 0x45); }},
      {"JDF",                   [](D d) { return d.GetDeviceWithJDFFileName("FILE01.jdf"); }},
      {"backup PON",            [](D d) { return d.GetDeviceWithPON("B-1", false); }},
      {"alias PON, stripped",   [](D d) { return d.GetDeviceWithPON("L", true); }},
      {"entity name",           [](D d) { return d.GetDeviceWithEntityName("b_1"); }},
      {"entity name, any UES",  [](D d) { return d.GetDeviceWithEntityNameDisregardUES("b_1"); }},
      {"fuses and code name",   [](D d) { return d.GetDeviceWithFuseMapAndFullName(100, "C-7"); }},
      {"fuses and PON",         [](D d) { return d.GetDeviceWithFuseMapAndFullName(100, "P"); }},
      {"fuses and exact name",  [](D d) { return d.GetDeviceWithFuseMapAndFullNameEx(100, "C"); }},
      {"fuses, second pass",    [](D d) { return d.GetDeviceWithFuseMapAndFullNameEx(100, "P"); }},
  };
  // clang-format on
  return lookups;
}

void ExpectAllFind(const SampleTree& tree, const std::string& place) {
  for (const Lookup& lookup : Lookups()) EXPECT_EQ(tree.PlaceOf(lookup.find(*tree)), place) << "lookup: " << lookup.name;
}

TEST(DatabaseWalk, FindsNothingInAnEmptyDatabase) {
  const DeviceListOwner empty = MakeDeviceList();
  for (const Lookup& lookup : Lookups()) EXPECT_EQ(lookup.find(*empty), nullptr) << "lookup: " << lookup.name;
}

TEST(DatabaseWalk, PassesOverEmptyFamiliesAndDevicesWithoutTexts) {
  const SampleTree tree;
  tree.AddFamily();
  tree.AddDevice();
  tree.AddDevice().PackageType(nullptr).PackageType(nullptr);
  ExpectAllFind(tree, "none");
  tree.AddFamily();
  tree.AddDevice();
  Findable(tree.AddDevice());
  ExpectAllFind(tree, "2.1");
}

TEST(DatabaseWalk, FindsTheFirstInTheOrderOfFamiliesAndDevices) {
  const SampleTree tree;
  tree.AddFamily();
  for (int i = 0; i < 2; ++i) Findable(tree.AddDevice());
  tree.AddFamily();
  Findable(tree.AddDevice());
  ExpectAllFind(tree, "1.0");

  DeviceInfo* const inserted = tree->GetFamily(1)->InsertNewDevice(1);
  ExpectAllFind(tree, "1.1");
  Findable(SampleDevice(inserted));
  ExpectAllFind(tree, "1.0");

  ReleaseDevices(*tree->GetFamily(1));
  ExpectAllFind(tree, "2.0");
  Findable(support::AddDevice(*tree->GetFamily(0)));
  ExpectAllFind(tree, "0.0");
}

TEST(DatabaseWalk, VisitsHiddenFamiliesLikeAnyOther) {
  const SampleTree tree;
  Findable(tree.AddDevice());
  tree->GetFamily(0)->SetHidden(true);
  Findable(support::AddDevice(tree.AddFamily()));
  ExpectAllFind(tree, "0.0");
}

TEST(DatabaseWalk, TheSixteenBitCountOfAFamilyBoundsItsDevices) {
  const SampleTree tree;
  FamilyList& family = *tree->GetFamily(0);
  support::AddDevices(family, support::kUncountedDevices);
  Findable(SampleDevice(family.GetDevice(0)));
  Findable(SampleDevice(family.GetDevice(1)));
  ExpectAllFind(tree, "none");  // 65,536 count as none

  Findable(support::AddDevice(tree.AddFamily()));
  ExpectAllFind(tree, "1.0");  // the family after it is visited

  family.NewDevice();
  ExpectAllFind(tree, "0.0");  // 65,537 count as one
  const std::unique_ptr<DeviceInfo> first(family.DeleteDevice(1));
  family.InsertNewDevice(1);
  ExpectAllFind(tree, "1.0");  // ... which is the new one
}

TEST(DatabaseWalk, TheListsOwnCountBoundsTheFamilies) {
  const SampleTree tree;
  for (int i = 1; i < 65'536; ++i) tree->NewFamily();
  Findable(tree.AddDevice());
  EXPECT_EQ(tree->GetFamilyCount(), 0);
  ExpectAllFind(tree, "65535.0");
}

TEST(DatabaseWalk, TheSixteenBitCountOfAPackageListBoundsItsPackages) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().UES(8).Name("N").PackageType("TQ100").JDF("FILE01.jdf").BackupPON("B");
  while (device->GetDevicePackage()->GetPackageCount() != 0) device->GetDevicePackage()->NewPackage();
  EXPECT_EQ(tree->GetDeviceWithPackage("TQ100", "N"), nullptr);
  EXPECT_EQ(tree->GetDeviceWithJDFFileName("FILE01.jdf"), nullptr);
  EXPECT_EQ(tree->GetDeviceWithPON("B", false), nullptr);
  EXPECT_EQ(tree->GetDeviceWithEntityName("B"), nullptr);
  device->GetDevicePackage()->NewPackage();
  EXPECT_EQ(tree->GetDeviceWithPackage("TQ100", "N"), device);
  EXPECT_EQ(tree->GetDeviceWithJDFFileName("FILE01.jdf"), nullptr) << "only the first package counts";
}

/// How many devices the lookups that collect find: by identifier, by fuse count with code names, by fuse count with names.
std::vector<int> Collected(const SampleTree& tree) {
  Texts texts;
  Texts candidates;
  const int byIdentifier = tree->GetDeviceListWithCommAndID("JTAG", 0x45);
  const int byFuses = tree->GetDeviceCodeNameWithFuseMap(100, texts);
  return {byIdentifier, byFuses, tree->GetDeviceWithFuseMap(100, candidates)};
}

TEST(DatabaseWalk, CollectsFromTheSameDevices) {
  const SampleTree tree;
  EXPECT_EQ(Collected(tree), std::vector<int>({0, 0, 0}));
  Findable(tree.AddDevice());
  tree.AddFamily().SetHidden(true);
  tree.AddDevice();
  Findable(tree.AddDevice());
  EXPECT_EQ(Collected(tree), std::vector<int>({2, 2, 2}));
  FamilyList& uncounted = tree.AddFamily();
  support::AddDevices(uncounted, support::kUncountedDevices);
  Findable(SampleDevice(uncounted.GetDevice(0)));
  EXPECT_EQ(Collected(tree), std::vector<int>({2, 2, 2}));
  Findable(support::AddDevice(tree.AddFamily()));
  EXPECT_EQ(Collected(tree), std::vector<int>({3, 3, 3}));
}

// Null arguments

TEST(DatabaseLookups, NullFindsNothingWhateverDevicesLack) {
  const SampleTree tree;
  tree.AddDevice();
  tree.AddDevice().Mask(0xFFFFFFFF).Jtag(0x45).UES(8).Fuses(100).PackageType(nullptr);
  Findable(tree.AddDevice());
  tree.AddDevice().Name("").CodeName("").AliasName("").Comm("").PackageType("").BackupPON("").AliasPON("").JDF("").UES(8);
  using D = const DeviceList&;
  const Lookup cases[] = {
      {"name", [](D d) { return d.GetDeviceWithName(nullptr); }},
      {"code name", [](D d) { return d.GetDeviceWithCodeName(nullptr); }},
      {"mode of name", [](D d) { return d.GetDeviceWithComm(nullptr, "N"); }},
      {"name of mode", [](D d) { return d.GetDeviceWithComm("JTAG", nullptr); }},
      {"mode of code name", [](D d) { return d.GetDeviceWithCommAndCodeName(nullptr, "C"); }},
      {"code name of mode", [](D d) { return d.GetDeviceWithCommAndCodeName("JTAG", nullptr); }},
      {"package of name", [](D d) { return d.GetDeviceWithPackage(nullptr, "N"); }},
      {"name of package", [](D d) { return d.GetDeviceWithPackage("TQ100", nullptr); }},
      {"package of code name", [](D d) { return d.GetDeviceWithPackageAndCodeName(nullptr, "C"); }},
      {"code name of package", [](D d) { return d.GetDeviceWithPackageAndCodeName("TQ100", nullptr); }},
      {"mode of identifier", [](D d) { return d.GetDeviceWithCommAndID(nullptr, 0x45); }},
      {"mode of whole identifier", [](D d) { return d.GetDeviceWithCommAndIDNoMask(nullptr, 0x45); }},
      {"mode of three", [](D d) { return d.GetDeviceWithCommAndIDAndCodeName(nullptr, 0x45, "C"); }},
      {"code name of three", [](D d) { return d.GetDeviceWithCommAndIDAndCodeName("JTAG", 0x45, nullptr); }},
      {"JDF", [](D d) { return d.GetDeviceWithJDFFileName(nullptr); }},
      {"PON", [](D d) { return d.GetDeviceWithPON(nullptr, false); }},
      {"PON, stripped", [](D d) { return d.GetDeviceWithPON(nullptr, true); }},
      {"entity name", [](D d) { return d.GetDeviceWithEntityName(nullptr); }},
      {"entity name, any UES", [](D d) { return d.GetDeviceWithEntityNameDisregardUES(nullptr); }},
      {"full name", [](D d) { return d.GetDeviceWithFuseMapAndFullName(100, nullptr); }},
      {"full name, two passes", [](D d) { return d.GetDeviceWithFuseMapAndFullNameEx(100, nullptr); }},
  };
  for (const Lookup& row : cases) EXPECT_EQ(row.find(*tree), nullptr) << "row: " << row.name;
}

// Cost

/// A database of `count` devices that no lookup of the table finds, although most of their texts nearly agree.
SampleTree NearlyFindable(int count) {
  const std::string tail(200, 'x');
  const auto with = [&](const char* start) { return start + tail; };
  SampleTree tree;
  for (int i = 0; i < count; ++i) {
    tree.AddDevice()
        .Name(with("N").c_str())
        .CodeName(with("C").c_str())
        .AliasName(with("A").c_str())
        .Comm("JTAG")
        .Jtag(0x46)
        .Isp(0x46)
        .Mask(0xFFFFFFFF)
        .Fuses(100)
        .UES(8)
        .PackageType("TQ100")
        .PackagePON(with("P").c_str())
        .BackupPON(with("B_1").c_str())
        .AliasPON(with("L").c_str())
        .JDF("FILE011.jdf");
  }
  return tree;
}

long AllocationsOf(const Lookup& lookup, const SampleTree& tree) {
  const long before = support::AllocationCount();
  const DeviceInfo* const found = lookup.find(*tree);
  const long made = support::AllocationCount() - before;
  EXPECT_EQ(found, nullptr) << "lookup: " << lookup.name;
  return made;
}

TEST(DatabaseWalk, AllocatesNothing) {
  const SampleTree tree = NearlyFindable(100);
  for (const Lookup& lookup : Lookups()) EXPECT_EQ(AllocationsOf(lookup, tree), 0) << "lookup: " << lookup.name;
}

TEST(DatabaseWalk, AllocatesNothingPerDeviceForLongArguments) {
  const std::string text(1'000, 'y');
  const auto with = [&](const char* start) { return start + text; };
  const std::string name = with("N"), codeName = with("C"), pon = with("L-"), entity = with("b_1"),
                    fullName = with("C ") + "-7";
  using D = const DeviceList&;
  const Lookup cases[] = {
      {"name", [&](D d) { return d.GetDeviceWithName(name.c_str()); }},
      {"code name", [&](D d) { return d.GetDeviceWithCodeName(codeName.c_str()); }},
      {"mode and name", [&](D d) { return d.GetDeviceWithComm("JTAG", name.c_str()); }},
      {"package and name", [&](D d) { return d.GetDeviceWithPackage("TQ100", name.c_str()); }},
      {"PON", [&](D d) { return d.GetDeviceWithPON(pon.c_str(), true); }},
      {"entity name", [&](D d) { return d.GetDeviceWithEntityName(entity.c_str()); }},
      {"full name", [&](D d) { return d.GetDeviceWithFuseMapAndFullName(100, fullName.c_str()); }},
  };
  const SampleTree one = NearlyFindable(1);
  const SampleTree many = NearlyFindable(200);
  for (const Lookup& row : cases) EXPECT_EQ(AllocationsOf(row, many), AllocationsOf(row, one)) << "row: " << row.name;
}

TEST(DatabaseWalk, CollectingAllocatesOnlyForWhatIsCollected) {
  const SampleTree tree = NearlyFindable(100);
  Texts texts;
  const long before = support::AllocationCount();
  tree->GetDeviceListWithCommAndID("JTAG", 0x45);
  tree->GetDeviceListWithCommAndID("JTAG", 0x45, texts);
  tree->GetDeviceCodeNameWithFuseMap(101, texts);
  tree->GetDeviceWithFuseMap(101, texts);
  tree->GetDeviceCommISPWithFuseMap(100);
  const long made = support::AllocationCount() - before;
  EXPECT_EQ(made, 0);
  EXPECT_TRUE(texts.empty());
}

}  // namespace
