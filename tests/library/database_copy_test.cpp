// Copying, assigning and merging whole databases.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "DeviceListOwner.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/device_fields.h"
#include "tests/support/failing_target.h"
#include "tests/support/family_fields.h"
#include "tests/support/field_rules.h"
#include "tests/support/random_tree.h"
#include "tests/support/sample_tree.h"
#include "tests/support/show.h"
#include "tests/support/tree_equality.h"

namespace {

using support::DifferenceOf;
using support::FamiliesIn;
using support::FilledTree;
using support::LiveAllocations;
using support::RandomTree;
using support::SampleTree;
using support::SettleForCopying;
using support::Show;

DeviceListOwner CopyOf(DeviceList& source) { return DeviceListOwner(new DeviceList(&source)); }

/// A filled database that a copy has to be equal to.
DeviceListOwner SettledTree(int families) {
  DeviceListOwner database = FilledTree(families);
  SettleForCopying(*database);
  return database;
}

/// A database whose copying allocates for every kind of record and list, texts that are too long to be held in place among
/// them: three families of several devices. A copy has to be equal to it.
DeviceListOwner CostlyTree() {
  DeviceListOwner database = RandomTree(16);
  SettleForCopying(*database);
  return database;
}

DeviceListOwner DatabaseOf(const std::vector<const char*>& names) {
  DeviceListOwner database = MakeDeviceList();
  for (const char* const name : names) database->NewFamily()->SetName(name);
  return database;
}

/// The first families of `database` are equal to those of `source`, as many as there are after the first `skipped`.
void ExpectStartsLike(const DeviceList& database, int skipped, const DeviceList& source) {
  for (int i = 0; FamilyList* const family = database.GetFamily(skipped + i); ++i) {
    ASSERT_NE(source.GetFamily(i), nullptr);
    EXPECT_EQ(DifferenceOf(*family, *source.GetFamily(i)), "") << "family: " << i;
  }
}

/// Asks for a list, so that the database's name list is not empty.
void FillNameList(DeviceList& database, const char* codeName) {
  support::AddDevice(*database.NewFamily()).CodeName(codeName).Jtag(0x45).Mask(0xFF);
  database.GetDeviceListWithCommAndID("JTAG", 0x45);
}

// The copy

TEST(DatabaseCopy, TakesCommentVersionAndAllFamilies) {
  const DeviceListOwner source = SettledTree(3);
  const DeviceListOwner copy = CopyOf(*source);
  EXPECT_EQ(DifferenceOf(*copy, *source), "");
  EXPECT_STREQ(copy->GetVersion(), "version");
  EXPECT_STREQ(copy->GetComment(), "comment");
  EXPECT_EQ(copy->GetFamilyCount(), 3);
}

TEST(DatabaseCopy, OfAnEmptyDatabaseAndOfNullIsEmpty) {
  const DeviceListOwner empty = MakeDeviceList();
  EXPECT_EQ(DifferenceOf(*CopyOf(*empty), *empty), "");
  const DeviceListOwner ofNull(new DeviceList(nullptr));
  EXPECT_EQ(DifferenceOf(*ofNull, *empty), "");
  EXPECT_EQ(ofNull->GetComment(), nullptr);
  EXPECT_EQ(ofNull->GetVersion(), nullptr);
}

TEST(DatabaseCopy, LeavesUnsetWhatIsUnset) {
  const DeviceListOwner source = MakeDeviceList();
  source->SetVersion("");
  const DeviceListOwner copy = CopyOf(*source);
  EXPECT_STREQ(copy->GetVersion(), "");
  EXPECT_EQ(copy->GetComment(), nullptr);
}

TEST(DatabaseCopy, StartsWithAnEmptyNameList) {
  const DeviceListOwner source = MakeDeviceList();
  FillNameList(*source, "C");
  const DeviceListOwner copy = CopyOf(*source);
  EXPECT_TRUE(copy->GetlistDevicenames().empty());
  EXPECT_EQ(copy->GetDeviceListWithCommAndID("JTAG", 0x45), 1);
  EXPECT_EQ(Show(source->GetlistDevicenames()), "['C']");
}

TEST(DatabaseCopy, OfEveryRandomTreeIsEqualToIt) {
  for (std::uint64_t seed = 1; seed <= 1'000; ++seed) {
    const DeviceListOwner source = RandomTree(seed);
    SettleForCopying(*source);
    const DeviceListOwner copy = CopyOf(*source);
    EXPECT_EQ(DifferenceOf(*copy, *source), "") << "seed: " << seed;
  }
}

TEST(DatabaseCopy, OfUnsettledDevicesDiffersAsTheDeviceTableStates) {
  for (std::uint64_t seed = 1; seed <= 100; ++seed) {
    const DeviceListOwner source = RandomTree(seed);
    const DeviceListOwner copy = CopyOf(*source);
    EXPECT_EQ(DifferenceOf(*source, *RandomTree(seed)), "") << "the source has changed, seed: " << seed;
    for (int i = 0; const FamilyList* const family = source->GetFamily(i); ++i) {
      for (int k = 0; DeviceInfo* const device = family->GetDevice(k); ++k) {
        SCOPED_TRACE("seed: " + std::to_string(seed));
        DeviceInfo* const copied = copy->GetFamily(i)->GetDevice(k);
        ASSERT_NE(copied, nullptr);
        support::ExpectCopied(support::DeviceFields(), *device, *copied, "FamilyObject");
        EXPECT_EQ(copied->GetFamilyObject(), copy->GetFamily(i));
      }
    }
  }
}

TEST(DatabaseCopy, SharesNothingWithItsSource) {
  const DeviceListOwner untouched = SettledTree(2);
  for (const bool changeCopy : {true, false}) {
    const DeviceListOwner source = SettledTree(2);
    const DeviceListOwner copy = CopyOf(*source);
    DeviceList& changed = changeCopy ? *copy : *source;
    DeviceList& other = changeCopy ? *source : *copy;
    changed.SetVersion("changed");
    changed.SetComment("changed");
    SetSamples(support::FamilyFields(), *changed.GetFamily(0), 4);
    support::SetPlainSamples(*changed.GetFamily(0)->GetDevice(0), 4);
    ReleaseDevices(*changed.GetFamily(1));
    changed.DeleteFamily(1);
    EXPECT_EQ(DifferenceOf(other, *untouched), "") << "changed the copy: " << changeCopy;
  }
}

TEST(DatabaseCopy, OutlivesItsSourceAndIsOutlivedByIt) {
  const DeviceListOwner untouched = SettledTree(2);
  DeviceListOwner source = SettledTree(2);
  DeviceListOwner copy = CopyOf(*source);
  DeviceListOwner second = CopyOf(*source);
  second.reset();
  EXPECT_EQ(DifferenceOf(*source, *untouched), "");
  source.reset();
  EXPECT_EQ(DifferenceOf(*copy, *untouched), "");
  EXPECT_EQ(DifferenceOf(*CopyOf(*copy), *untouched), "");
}

TEST(DatabaseCopy, RunningOutOfMemoryReleasesEverythingAndLeavesTheSource) {
  const DeviceListOwner source = CostlyTree();
  const DeviceListOwner untouched = CostlyTree();
  const long live = LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { CopyOf(*source); },
                                                          [&] {
                                                            const long left = LiveAllocations();
                                                            EXPECT_EQ(left, live);
                                                          });
  const long left = LiveAllocations();
  EXPECT_EQ(left, live);
  EXPECT_EQ(failures, support::AllocationsOf([&] { CopyOf(*source); }));
  EXPECT_EQ(DifferenceOf(*source, *untouched), "");
}

/// What copies the families of a database into an empty one.
struct Taking {
  const char* name;
  void (*take)(DeviceList& target, DeviceList& source);
};

constexpr Taking kTakings[] = {
    {"assignment", [](DeviceList& target, DeviceList& source) { target = source; }},
    {"merge", [](DeviceList& target, DeviceList& source) { target.AddNewDeviceList(&source); }},
};

TEST(DatabaseCopy, TakesAsManyFamiliesAsTheirSixteenBitCount) {
  const DeviceListOwner source = MakeDeviceList();
  for (int i = 0; i < 65'536; ++i) source->NewFamily();
  source->GetFamily(0)->SetName("first");
  EXPECT_EQ(FamiliesIn(*CopyOf(*source)), "");
  for (const Taking& taking : kTakings) {
    const DeviceListOwner target = MakeDeviceList();
    taking.take(*target, *source);
    EXPECT_EQ(FamiliesIn(*target), "") << taking.name;
  }
  source->NewFamily();
  EXPECT_EQ(FamiliesIn(*CopyOf(*source)), "first");
  for (const Taking& taking : kTakings) {
    const DeviceListOwner target = MakeDeviceList();
    taking.take(*target, *source);
    EXPECT_EQ(FamiliesIn(*target), "first") << taking.name;
  }
}

// What assignment and merge share

TEST(DatabaseTaking, CopiesDeeply) {
  const DeviceListOwner untouched = SettledTree(2);
  for (const Taking& taking : kTakings) {
    DeviceListOwner source = SettledTree(2);
    const DeviceListOwner target = MakeDeviceList();
    target->SetVersion("version");
    target->SetComment("comment");
    taking.take(*target, *source);
    EXPECT_EQ(DifferenceOf(*target, *untouched), "") << taking.name;
    support::SetPlainSamples(*target->GetFamily(0)->GetDevice(0), 4);
    EXPECT_EQ(DifferenceOf(*source, *untouched), "") << taking.name;
    source.reset();
    EXPECT_EQ(DifferenceOf(*target->GetFamily(1), *untouched->GetFamily(1)), "") << taking.name;
  }
}

TEST(DatabaseTaking, OutlivedByItsSource) {
  const DeviceListOwner untouched = SettledTree(2);
  for (const Taking& taking : kTakings) {
    const DeviceListOwner source = SettledTree(2);
    DeviceListOwner target = MakeDeviceList();
    taking.take(*target, *source);
    target.reset();
    EXPECT_EQ(DifferenceOf(*source, *untouched), "") << taking.name;
  }
}

TEST(DatabaseTaking, LeavesTheNameListAlone) {
  for (const Taking& taking : kTakings) {
    const DeviceListOwner source = MakeDeviceList();
    FillNameList(*source, "theirs");
    const DeviceListOwner target = MakeDeviceList();
    FillNameList(*target, "ours");
    ReleaseDevices(*target);
    taking.take(*target, *source);
    EXPECT_EQ(Show(target->GetlistDevicenames()), "['ours']") << taking.name;
    EXPECT_EQ(Show(source->GetlistDevicenames()), "['theirs']") << taking.name;
  }
}

TEST(DatabaseTaking, RunningOutOfMemoryKeepsTheFamiliesAppendedSoFarAndLeavesTheSource) {
  const DeviceListOwner source = CostlyTree();
  const DeviceListOwner untouched = CostlyTree();
  for (const Taking& taking : kTakings) {
    const long live = LiveAllocations();
    const auto take = [&](DeviceList& target) { taking.take(target, *source); };
    int mostKept = 0;
    const long failures = support::ForEachFailureOn(MakeDeviceList, take, [&](DeviceList& target) {
      ExpectStartsLike(target, 0, *untouched);
      mostKept = std::max<int>(mostKept, target.GetFamilyCount());
    });
    const long left = support::LiveAfterFailures(live);
    EXPECT_EQ(left, live) << taking.name;
    EXPECT_EQ(mostKept, source->GetFamilyCount() - 1) << taking.name;
    const DeviceListOwner target = MakeDeviceList();
    EXPECT_EQ(failures, support::AllocationsOf([&] { take(*target); })) << taking.name;
    EXPECT_EQ(DifferenceOf(*source, *untouched), "") << taking.name;
  }
}

// Assignment

TEST(DatabaseAssignment, ReplacesTheFamilies) {
  const DeviceListOwner source = SettledTree(2);
  const DeviceListOwner target = DatabaseOf({"A", "B", "C"});
  EXPECT_EQ(&(*target = *source), target.get());
  EXPECT_EQ(DifferenceOf(*target, *source), "");
}

TEST(DatabaseAssignment, OfAnEmptyDatabaseLeavesNoFamilies) {
  const DeviceListOwner source = MakeDeviceList();
  const DeviceListOwner target = DatabaseOf({"A", "B"});
  *target = *source;
  EXPECT_EQ(target->GetFamilyCount(), 0);
}

TEST(DatabaseAssignment, ANullTextOfTheSourceKeepsTheOldOne) {
  const struct {
    const char* old;
    const char* source;
    const char* kept;
  } cases[] = {{"old", nullptr, "old"}, {nullptr, nullptr, nullptr}, {"old", "", ""},
               {"old", "new", "new"},   {nullptr, "new", "new"},     {"", nullptr, ""}};
  for (const auto& row : cases) {
    const DeviceListOwner source = MakeDeviceList();
    const DeviceListOwner target = MakeDeviceList();
    source->SetVersion(row.source);
    target->SetVersion(row.old);
    *target = *source;
    EXPECT_EQ(Show(target->GetVersion()), Show(row.kept)) << "old: " << Show(row.old) << ", source: " << Show(row.source);
    EXPECT_EQ(target->GetComment(), nullptr);
    source->SetComment(row.source);
    target->SetComment(row.old);
    *target = *source;
    EXPECT_EQ(Show(target->GetComment()), Show(row.kept)) << "old: " << Show(row.old) << ", source: " << Show(row.source);
  }
}

TEST(DatabaseAssignment, DestroysTheOldFamiliesButNotTheirDevices) {
  const long live = LiveAllocations();
  {
    DeviceList target;
    DeviceList source;
    const std::unique_ptr<DeviceInfo> device(support::AddDevice(*target.NewFamily()).Name("A"));
    target.NewFamily()->SetName("B");
    target = source;
    EXPECT_EQ(target.GetFamily(0), nullptr);
    EXPECT_STREQ(device->GetName(), "A");
  }
  const long left = LiveAllocations();
  EXPECT_EQ(left, live);
}

TEST(DatabaseAssignment, ToItselfLeavesADatabaseWithoutFamilies) {
  DeviceList database;
  database.SetVersion("version");
  const std::unique_ptr<DeviceInfo> device(support::AddDevice(*database.NewFamily()).Name("A"));
  DeviceList& alias = database;
  database = alias;
  EXPECT_EQ(database.GetFamilyCount(), 0);
  EXPECT_EQ(database.GetDeviceCount(), 0);
  EXPECT_STREQ(database.GetVersion(), "version");
  EXPECT_EQ(database.GetComment(), nullptr);
  EXPECT_STREQ(device->GetName(), "A");
}

TEST(DatabaseAssignment, OfEveryRandomTreeMakesTheTargetEqualToIt) {
  const DeviceListOwner target = MakeDeviceList();
  target->SetVersion("");
  target->SetComment("");
  for (std::uint64_t seed = 1; seed <= 200; ++seed) {
    const DeviceListOwner source = RandomTree(seed);
    source->SetVersion("v");  // a missing text would keep the one of the tree before
    source->SetComment("c");
    SettleForCopying(*source);
    ReleaseDevices(*target);
    *target = *source;
    EXPECT_EQ(DifferenceOf(*target, *source), "") << "seed: " << seed;
  }
}

// Merge

TEST(DatabaseMerge, AppendsAfterTheFamiliesHeld) {
  const DeviceListOwner source = DatabaseOf({"B", "C"});
  const DeviceListOwner target = DatabaseOf({"A"});
  EXPECT_EQ(target->AddNewDeviceList(source.get()), target.get());
  EXPECT_EQ(FamiliesIn(*target), "A B C");
  EXPECT_EQ(FamiliesIn(*source), "B C");
  target->AddNewDeviceList(source.get());
  EXPECT_EQ(FamiliesIn(*target), "A B C B C");
}

TEST(DatabaseMerge, LeavesVersionAndComment) {
  const DeviceListOwner source = FilledTree(1);
  const DeviceListOwner target = MakeDeviceList();
  target->AddNewDeviceList(source.get());
  EXPECT_EQ(target->GetVersion(), nullptr);
  EXPECT_EQ(target->GetComment(), nullptr);
  target->SetVersion("ours");
  target->AddNewDeviceList(source.get());
  EXPECT_STREQ(target->GetVersion(), "ours");
}

TEST(DatabaseMerge, OfNullAndOfItselfMergesNothing) {
  const DeviceListOwner database = DatabaseOf({"A", "B"});
  EXPECT_EQ(database->AddNewDeviceList(nullptr), database.get());
  EXPECT_EQ(FamiliesIn(*database), "A B");
  EXPECT_EQ(database->AddNewDeviceList(database.get()), database.get());
  EXPECT_EQ(FamiliesIn(*database), "A B");
}

TEST(DatabaseMerge, ComparesNoNamesSoThatTheFirstKeepsAnswering) {
  const SampleTree source;
  source->GetFamily(0)->SetName("F");
  source->GetFamily(0)->SetAliasName("X");
  source->GetFamily(0)->SetBypassInst("theirs");
  source.AddDevice().Name("A").CodeName("theirs");
  source.AddDevice().Name("B").CodeName("theirs too");

  const SampleTree target;
  FamilyList* const held = target->GetFamily(0);
  held->SetName("F");
  held->SetBypassInst("ours");
  target.AddDevice().Name("A").CodeName("ours");
  target->AddNewDeviceList(&*source);

  EXPECT_EQ(target->GetFamilyCount(), 2);
  EXPECT_EQ(target->GetFamily("F"), held);
  EXPECT_STREQ(target->GetBypassInstwfamilyName("F"), "ours");
  EXPECT_EQ(target->GetFamily("X"), target->GetFamily(1));
  EXPECT_EQ(target.PlaceOf(target->GetDeviceWithName("A")), "0.0");
  EXPECT_EQ(target.PlaceOf(target->GetDeviceWithName("B")), "1.1") << "walks over devices do not stop at the first family";

  ReleaseDevices(*held);
  target->DeleteFamily("F");
  EXPECT_STREQ(target->GetBypassInstwfamilyName("F"), "theirs");
  EXPECT_STREQ(target->GetDeviceWithName("A")->GetCodeName(), "theirs");
}

TEST(DatabaseMerge, OfRandomTreesIsTheirFamiliesInOrder) {
  for (std::uint64_t seed = 1; seed <= 100; ++seed) {
    const DeviceListOwner first = RandomTree(seed);
    const DeviceListOwner second = RandomTree(seed + 1'000);
    SettleForCopying(*first);
    SettleForCopying(*second);
    const DeviceListOwner merged = CopyOf(*first);
    merged->AddNewDeviceList(second.get());
    SCOPED_TRACE("seed: " + std::to_string(seed));
    EXPECT_EQ(merged->GetFamilyCount(), first->GetFamilyCount() + second->GetFamilyCount());
    ExpectStartsLike(*merged, first->GetFamilyCount(), *second);
    for (int i = 0; FamilyList* const family = first->GetFamily(i); ++i) {
      EXPECT_EQ(DifferenceOf(*merged->GetFamily(i), *family), "") << "family: " << i;
    }
  }
}

TEST(DatabaseMerge, RunningOutOfMemoryKeepsWhatTheTargetHeld) {
  const DeviceListOwner source = CostlyTree();
  const DeviceListOwner held = SettledTree(1);
  const long live = LiveAllocations();
  const auto make = [&] { return CopyOf(*held); };
  const auto merge = [&](DeviceList& target) { target.AddNewDeviceList(source.get()); };
  const long failures = support::ForEachFailureOn(make, merge, [&](DeviceList& target) {
    EXPECT_EQ(DifferenceOf(*target.GetFamily(0), *held->GetFamily(0)), "");
    ExpectStartsLike(target, 1, *source);
  });
  const long left = support::LiveAfterFailures(live);
  EXPECT_EQ(left, live);
  const DeviceListOwner target = make();
  EXPECT_EQ(failures, support::AllocationsOf([&] { merge(*target); }));
}

}  // namespace
