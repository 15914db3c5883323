#include "DeviceInfo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "FamilyList.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/device_fields.h"

namespace {

using support::Device;
using support::Show;

static_assert(std::is_base_of_v<LObject, DeviceInfo>);
static_assert(std::is_constructible_v<DeviceInfo, FamilyList&> && !std::is_convertible_v<FamilyList&, DeviceInfo>);
static_assert(std::is_constructible_v<DeviceInfo, DeviceInfo*> && !std::is_convertible_v<DeviceInfo*, DeviceInfo>);
static_assert(!std::is_default_constructible_v<DeviceInfo>);
static_assert(!std::is_copy_constructible_v<DeviceInfo> && !std::is_copy_assignable_v<DeviceInfo>);
static_assert(!std::is_move_constructible_v<DeviceInfo> && !std::is_move_assignable_v<DeviceInfo>);

template <typename List>
constexpr bool LendsForReading(const List& (DeviceInfo::*)() const) {
  return true;
}
static_assert(LendsForReading<std::vector<CControlRegZero>>(&DeviceInfo::GetlistControlRegZero));
static_assert(LendsForReading<std::vector<CControlRegOne>>(&DeviceInfo::GetlistControlRegOne));
static_assert(LendsForReading<std::vector<CPersistent_fuse>>(&DeviceInfo::GetlistPersistent_fuse));
static_assert(LendsForReading<std::vector<CControlEBRList>>(&DeviceInfo::GetlistControlEBR));
static_assert(LendsForReading<std::vector<CControlStatus>>(&DeviceInfo::GetlistControlStatus));
static_assert(LendsForReading<std::vector<CControlVoltage>>(&DeviceInfo::GetControlVoltage));
static_assert(LendsForReading<std::vector<std::string>>(&DeviceInfo::GetlistAddressRange));
static_assert(std::is_same_v<decltype(std::declval<const DeviceInfo&>().GetSysIOCount()), unsigned short>);

using Texts = std::vector<std::string>;

Texts Entries(const DeviceInfo& device) {
  Texts entries;
  for (int i = 0; const char* const entry = device.GetSysIO(i); ++i) entries.emplace_back(entry);
  return entries;
}

void AddEntries(DeviceInfo& device, const Texts& entries) {
  for (const std::string& entry : entries) device.AddSysIOList(entry.c_str());
}

bool IsStartOf(const Texts& start, const Texts& whole) {
  return start.size() <= whole.size() && std::equal(start.begin(), start.end(), whole.begin());
}

// Comm and AlgOptions

TEST(SetComm, WritesAlgOptionsToo) {
  Device device;
  device.record.SetComm("JTAG");
  EXPECT_STREQ(device.record.GetComm(), "JTAG");
  EXPECT_STREQ(device.record.GetAlgOptions(), "JTAG");
  EXPECT_NE(device.record.GetComm(), device.record.GetAlgOptions()) << "each field holds its own copy";
}

TEST(SetComm, AlgOptionsSetAfterwardsAreKept) {
  Device device;
  device.record.SetComm("JTAG");
  device.record.SetAlgOptions("fast");
  EXPECT_STREQ(device.record.GetComm(), "JTAG");
  EXPECT_STREQ(device.record.GetAlgOptions(), "fast");
}

TEST(SetComm, NullKeepsBothAndTheEmptyTextEmptiesBoth) {
  Device device;
  device.record.SetComm(nullptr);
  EXPECT_EQ(device.record.GetComm(), nullptr);
  EXPECT_EQ(device.record.GetAlgOptions(), nullptr);
  device.record.SetComm("ISP");
  device.record.SetAlgOptions("fast");
  device.record.SetComm(nullptr);
  EXPECT_STREQ(device.record.GetComm(), "ISP");
  EXPECT_STREQ(device.record.GetAlgOptions(), "fast");
  device.record.SetComm("");
  EXPECT_STREQ(device.record.GetComm(), "");
  EXPECT_STREQ(device.record.GetAlgOptions(), "");
}

TEST(SetComm, BothFieldsGetTheTextAsItWasAtTheCall) {
  const struct {
    const char* name;
    char* (DeviceInfo::*argument)() const;
    int offset;
    const char* both;
  } cases[] = {
      {"GetComm", &DeviceInfo::GetComm, 0, "DUAL"},
      {"GetAlgOptions", &DeviceInfo::GetAlgOptions, 0, "fast"},
      {"GetComm, from its middle", &DeviceInfo::GetComm, 2, "AL"},
      {"GetAlgOptions, from its middle", &DeviceInfo::GetAlgOptions, 1, "ast"},
      {"GetName", &DeviceInfo::GetName, 0, "device"},
  };
  for (const auto& row : cases) {
    Device device;
    device.record.SetName("device");
    device.record.SetComm("DUAL");
    device.record.SetAlgOptions("fast");
    device.record.SetComm((device.record.*row.argument)() + row.offset);
    EXPECT_STREQ(device.record.GetComm(), row.both) << "argument: " << row.name;
    EXPECT_STREQ(device.record.GetAlgOptions(), row.both) << "argument: " << row.name;
  }
}

TEST(SetComm, BothFieldsChangeOrNeither) {
  Device device;
  device.record.SetComm("DUAL");
  device.record.SetAlgOptions("fast");
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { device.record.SetComm("JTAG"); },
                                                          [&] {
                                                            const long left = support::LiveAllocations();
                                                            EXPECT_EQ(left, live);
                                                            EXPECT_STREQ(device.record.GetComm(), "DUAL");
                                                            EXPECT_STREQ(device.record.GetAlgOptions(), "fast");
                                                          });
  EXPECT_GE(failures, 2) << "each field holds its own copy";
  EXPECT_STREQ(device.record.GetComm(), "JTAG");
  EXPECT_STREQ(device.record.GetAlgOptions(), "JTAG");
}

// Texts

TEST(DeviceTexts, NullAfterTheEmptyTextKeepsTheEmptyText) {
  Device device;
  device.record.SetName("");
  ASSERT_NE(device.record.GetName(), nullptr);
  EXPECT_STREQ(device.record.GetName(), "");
  device.record.SetName(nullptr);
  ASSERT_NE(device.record.GetName(), nullptr);
  EXPECT_STREQ(device.record.GetName(), "");
}

TEST(DeviceTexts, TheFamilyTextAndTheFamilyLinkAreTwoThings) {
  Device device;
  device.family.SetName("linked");
  EXPECT_EQ(device.record.GetFamily(), nullptr);
  device.record.SetFamily("written");
  EXPECT_STREQ(device.record.GetFamily(), "written");
  EXPECT_EQ(device.record.GetFamilyObject(), &device.family);
  EXPECT_STREQ(device.family.GetName(), "linked");
}

TEST(DeviceTexts, TheAliasIsNullUntilItIsSet) {
  Device device;
  device.record.SetName("name");
  device.record.SetCodeName("code");
  EXPECT_EQ(device.record.GetAliasName(), nullptr);
  device.record.SetAliasName("alias");
  EXPECT_STREQ(device.record.GetAliasName(), "alias");
}

// BitstreamColWidth

TEST(GetBitstreamColWidth, AnswersTheDataLengthWhileTheWidthIsZero) {
  const struct {
    int width;
    unsigned int dataLength;
    int answer;
  } cases[] = {
      {0, 0, 0},                 //
      {0, 512, 512},             //
      {64, 512, 64},             //
      {64, 0, 64},               //
      {-1, 512, -1},             // a negative width is a width
      {INT_MIN, 512, INT_MIN},   //
      {INT_MAX, 512, INT_MAX},   //
      {0, 0x7FFFFFFF, INT_MAX},  //
      {0, 0x80000000, INT_MIN},  // the data length unchanged, all 32 bits
      {0, 0xFFFFFFFF, -1},       //
  };
  for (const auto& row : cases) {
    Device device;
    device.record.SetBitstreamColWidth(row.width);
    device.record.SetDataLength(row.dataLength);
    EXPECT_EQ(device.record.GetBitstreamColWidth(), row.answer) << "width: " << row.width << ", data: " << row.dataLength;
    EXPECT_EQ(device.record.GetDataLength(), row.dataLength) << "width: " << row.width << ", data: " << row.dataLength;
  }
}

TEST(GetBitstreamColWidth, FollowsTheDataLengthAgainOnceTheWidthIsZero) {
  Device device;
  device.record.SetDataLength(512);
  device.record.SetBitstreamColWidth(64);
  device.record.SetBitstreamColWidth(0);
  EXPECT_EQ(device.record.GetBitstreamColWidth(), 512);
  device.record.SetDataLength(513);
  EXPECT_EQ(device.record.GetBitstreamColWidth(), 513);
}

// The package list and the link to the family

TEST(GetDevicePackage, LendsTheRecordsOwnList) {
  Device device;
  Device other;
  PackageList* const packages = device.record.GetDevicePackage();
  ASSERT_NE(packages, nullptr);
  EXPECT_EQ(packages->GetPackageCount(), 0);
  packages->NewPackage();
  EXPECT_EQ(device.record.GetDevicePackage(), packages);
  EXPECT_EQ(device.record.GetDevicePackage()->GetPackageCount(), 1);
  EXPECT_NE(other.record.GetDevicePackage(), packages);
  EXPECT_EQ(other.record.GetDevicePackage()->GetPackageCount(), 0);
}

TEST(SetFamilyObject, RepointsTheLinkAndNothingElse) {
  Device device;
  FamilyList other;
  device.record.SetFamilyObject(other);
  EXPECT_EQ(device.record.GetFamilyObject(), &other);
  EXPECT_EQ(other.GetDeviceCount(), 0);
  device.record.SetFamilyObject(*device.record.GetFamilyObject());
  EXPECT_EQ(device.record.GetFamilyObject(), &other);
}

TEST(DeviceLists, AGetterLendsTheRecordsOwnListNotACopy) {
  Device device;
  const auto& regZero = device.record.GetlistControlRegZero();
  const auto& regOne = device.record.GetlistControlRegOne();
  const auto& fuses = device.record.GetlistPersistent_fuse();
  const auto& blocks = device.record.GetlistControlEBR();
  const auto& status = device.record.GetlistControlStatus();
  const auto& voltages = device.record.GetControlVoltage();
  const auto& ranges = device.record.GetlistAddressRange();
  device.record.SetListControlReg0Frequency(";a;");
  device.record.SetListControlReg1BitName(";a;b;");
  device.record.SetListPersistent_fuseAddress(";1;2;3;");
  device.record.SetListControlEBRBitName("1");
  device.record.SetListControlEBRName("block");
  device.record.SetListControlStatusBitName(";a;b;");
  device.record.SetControlVoltageVCCCore("1.2");
  device.record.SetlistAddressRange(";a;b;c;");
  EXPECT_EQ(regZero.size(), 1u);
  EXPECT_EQ(regOne.size(), 2u);
  EXPECT_EQ(fuses.size(), 3u);
  EXPECT_EQ(blocks.size(), 1u);
  EXPECT_EQ(status.size(), 2u);
  EXPECT_EQ(voltages.size(), 1u);
  EXPECT_EQ(ranges.size(), 3u);
}

TEST(DeviceLists, TheMultibootListsMayBeChangedInPlace) {
  Device device;
  device.record.GetMultibootCfgAddr().push_back(7);
  device.record.GetMultibootAutoAdd().push_back(8);
  EXPECT_EQ(device.record.GetMultibootCfgAddr(), std::vector<int>{7});
  EXPECT_EQ(device.record.GetMultibootAutoAdd(), std::vector<int>{8});
}

// System I/O entries

TEST(SetSysIOList, ReplacesTheEntriesByTheQuotedItems) {
  const struct {
    const char* text;
    Texts entries;
  } cases[] = {
      {R"("A","B", "C")", {"A", "B", "C"}},
      {R"(x "A" y "B" z)", {"A", "B"}},               // text outside the quotes is skipped
      {R"("A""B")", {"A", "B"}},                      //
      {R"("A", "", "C")", {"A"}},                     // an empty pair of quotes ends the list
      {R"("", "A")", {}},                             //
      {R"("A", " ", "C")", {"A", "", "C"}},           // blanks are trimmed after that test, not before
      {R"(" A B ","  C")", {"A B", "C"}},             // trimmed at both ends
      {"\" \t\n\v\f\rA\t \r\n\v\f\"", {"A"}},         //
      {"\"\xA0x\xA0\"", {"\xA0x\xA0"}},               // no other byte is white space
      {R"("A" "B)", {"A"}},                           // an item that is not closed is dropped
      {R"("A)", {}},                                  //
      {R"(A" B "C)", {"B"}},                          //
      {R"(A" B "C"D")", {"B", "D"}},                  //
      {R"(")", {}},                                   //
      {R"("")", {}},                                  //
      {"no quotes", {}},                              //
      {" ", {}},                                      //
      {R"("A"   )", {"A"}},                           //
      {R"("a;b,c" "it's \")", {"a;b,c", "it's \\"}},  // no escapes: the backslash is a character
      {R"("A" "A" "A")", {"A", "A", "A"}},            // duplicates stay
  };
  for (const auto& row : cases) {
    Device device;
    AddEntries(device.record, {"old", "older"});
    device.record.SetSysIOList(row.text);
    EXPECT_EQ(Entries(device.record), row.entries) << "text: " << row.text;
    EXPECT_EQ(device.record.GetSysIOCount(), row.entries.size()) << "text: " << row.text;
  }
}

TEST(SetSysIOList, TheEmptyTextAndNullKeepTheEntries) {
  Device device;
  AddEntries(device.record, {"old", "older"});
  device.record.SetSysIOList("");
  EXPECT_EQ(Entries(device.record), (Texts{"old", "older"}));
  device.record.SetSysIOList(nullptr);
  EXPECT_EQ(Entries(device.record), (Texts{"old", "older"}));
}

TEST(SetSysIOList, AnEntryOfTheListIsALegalArgument) {
  const struct {
    const char* entry;
    int offset;
    Texts entries;
  } cases[] = {
      {R"("X", "Y")", 0, {"X", "Y"}},
      {R"("X", "Y")", 4, {"Y"}},
      {"no quotes", 0, {}},
  };
  for (const auto& row : cases) {
    for (const int position : {0, 1}) {
      Device device;
      AddEntries(device.record, position == 0 ? Texts{row.entry, "other"} : Texts{"other", row.entry});
      device.record.SetSysIOList(device.record.GetSysIO(position) + row.offset);
      EXPECT_EQ(Entries(device.record), row.entries) << "entry: " << row.entry << ", position: " << position;
    }
  }
}

TEST(SetSysIOList, ReadsALongText) {
  Device device;
  Texts entries;
  std::string text;
  for (int i = 0; i < 2'000; ++i) {
    entries.push_back("entry number " + std::to_string(i));
    text += '"' + entries.back() + "\", ";
  }
  device.record.SetSysIOList(text.c_str());
  EXPECT_EQ(Entries(device.record), entries);
}

TEST(SetSysIOList, AFailedAllocationKeepsTheEntriesStoredSoFar) {
  const Texts old = {"old"};
  const Texts items = {"first", "second", "a third entry that is longer than any short text"};
  Device device;
  device.record.SetSysIOList(R"("old")");
  const long live = support::LiveAllocations();
  bool isFirst = true;
  const auto replace = [&] {
    device.record.SetSysIOList(R"("first", "second", "a third entry that is longer than any short text")");
  };
  const long failures = support::ForEachFailingAllocation(replace, [&] {
    if (isFirst) {
      EXPECT_EQ(Entries(device.record), old) << "the private copy comes before anything else";
    } else {
      EXPECT_TRUE(IsStartOf(Entries(device.record), items)) << "entries: " << Show(Entries(device.record));
    }
    isFirst = false;
    device.record.SetSysIOList(R"("old")");
    const long left = support::LiveAfterFailures(live);
    EXPECT_EQ(left, live);
  });
  EXPECT_GT(failures, 3);
  EXPECT_EQ(Entries(device.record), items);
}

TEST(AddSysIOList, AppendsTheEntryExactlyAsGiven) {
  const struct {
    const char* entry;
    Texts entries;
  } cases[] = {
      {"LVTTL", {"old", "LVTTL"}},
      {"  LVTTL ", {"old", "  LVTTL "}},        // no trimming
      {R"("A", "B")", {"old", R"("A", "B")"}},  // no quote handling
      {" ", {"old", " "}},                      //
      {"old", {"old", "old"}},                  // no check for duplicates
      {"", {"old"}},                            // an empty entry adds nothing
      {nullptr, {"old"}},                       //
  };
  for (const auto& row : cases) {
    Device device;
    AddEntries(device.record, {"old"});
    device.record.AddSysIOList(row.entry);
    EXPECT_EQ(Entries(device.record), row.entries) << "entry: " << Show(row.entry);
  }
}

TEST(AddSysIOList, AnEntryOfTheListIsALegalArgument) {
  Device device;
  AddEntries(device.record, {"LVTTL"});
  device.record.AddSysIOList(device.record.GetSysIO(0));
  device.record.AddSysIOList(device.record.GetSysIO(1) + 2);
  EXPECT_EQ(Entries(device.record), (Texts{"LVTTL", "LVTTL", "TTL"}));
  EXPECT_NE(device.record.GetSysIO(0), device.record.GetSysIO(1));
}

TEST(AddSysIOList, AnEntryThatCannotBeStoredChangesNothing) {
  Device device;
  AddEntries(device.record, {"A", "B", "C", "D"});  // the next entry has to make room
  const auto before = Entries(device.record);
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { device.record.AddSysIOList("E"); },
                                                          [&] {
                                                            const long left = support::LiveAllocations();
                                                            EXPECT_EQ(left, live);
                                                            EXPECT_EQ(Entries(device.record), before);
                                                          });
  EXPECT_GE(failures, 2);
  EXPECT_EQ(Entries(device.record), (Texts{"A", "B", "C", "D", "E"}));
}

TEST(GetSysIO, IsNullOutsideTheList) {
  Device device;
  EXPECT_EQ(device.record.GetSysIO(0), nullptr);
  AddEntries(device.record, {"A", "B"});
  for (const int i : {-1, 2, 3, 65'536, INT_MIN, INT_MAX}) EXPECT_EQ(device.record.GetSysIO(i), nullptr) << "i: " << i;
}

TEST(GetSysIO, LendsTheEntrysOwnText) {
  Device device;
  const std::string given = "LVTTL";
  device.record.AddSysIOList(given.c_str());
  EXPECT_NE(device.record.GetSysIO(0), given.c_str());
  EXPECT_EQ(device.record.GetSysIO(0), device.record.GetSysIO(0));
  device.record.GetSysIO(0)[0] = 'l';
  EXPECT_STREQ(device.record.GetSysIO(0), "lVTTL");
}

TEST(GetSysIOCount, IsSixteenBitsWide) {
  Device device;
  for (int i = 0; i < 65'535; ++i) device.record.AddSysIOList("x");
  EXPECT_EQ(device.record.GetSysIOCount(), 65'535);
  device.record.AddSysIOList("y");
  EXPECT_EQ(device.record.GetSysIOCount(), 0);
  device.record.AddSysIOList("z");
  EXPECT_EQ(device.record.GetSysIOCount(), 1);
  EXPECT_STREQ(device.record.GetSysIO(65'536), "z");  // the entries are all there
}

// Teardown

TEST(DeviceInfo, DestroyingItThroughTheBaseReleasesAllThatItOwns) {
  support::DeviceFields();  // made before counting
  support::SampleFamily(1);
  const long live = support::LiveAllocations();
  {
    LObject* const device = new DeviceInfo(support::SampleFamily(1));
    support::SetPlainSamples(static_cast<DeviceInfo&>(*device), 1);
    static_cast<DeviceInfo*>(device)->SetListControlEBRBitName("100");
    delete device;
  }
  const long left = support::LiveAllocations() - live;
  EXPECT_EQ(left, 0);
}

TEST(DeviceInfo, DestroyingItDoesNotUnlinkItFromItsFamily) {
  FamilyList family;
  family.NewDevice();
  delete family.GetDevice(0);
  EXPECT_EQ(family.GetDeviceCount(), 1);
}

// Memory

template <typename Record, typename = void>
constexpr bool kHasOwnNew = false;
template <typename Record>
constexpr bool kHasOwnNew<Record, std::void_t<decltype(Record::operator new(sizeof(Record)))>> = true;

static_assert(!kHasOwnNew<DeviceInfo>, "a device is allocated as any object is, so that memory checkers see it");

TEST(DeviceMemory, EveryFormOfNewMakesADevice) {
  const long live = support::LiveAllocations();
  {
    FamilyList family;
    delete new DeviceInfo(family);
    delete new (std::nothrow) DeviceInfo(family);
    ::delete ::new DeviceInfo(family);
    const auto owned = std::make_unique<DeviceInfo>(family);
    const auto shared = std::make_shared<DeviceInfo>(owned.get());
    EXPECT_EQ(shared->GetFamilyObject(), &family);
  }
  const long left = support::LiveAllocations() - live;
  EXPECT_EQ(left, 0);
}

TEST(DeviceMemory, EachDeviceOfAFamilyGivesItsMemoryBackAtOnce) {
  FamilyList family;
  for (int i = 0; i < 9; ++i) family.NewDevice();
  for (int i = 9; i > 0; --i) {
    const long live = support::LiveAllocations();
    delete family.DeleteDevice((i + 1) / 2);
    const long freed = live - support::LiveAllocations();
    EXPECT_EQ(freed, 1) << "devices left: " << i - 1;
  }
}

TEST(DeviceMemory, ACopyThatFailsGivesItsMemoryBack) {
  Device source;
  source.record.SetName("PLD1234A");
  const long live = support::LiveAllocations();
  const long thrown = support::ForEachFailingAllocation([&] { delete new DeviceInfo(&source.record); });
  const long left = support::LiveAllocations() - live;
  EXPECT_EQ(thrown, 2);  // the record and its text
  EXPECT_EQ(left, 0);
}

}  // namespace
