// The life of a device beyond its creation: the copy, the backups, the switch to a CDR variant.

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "DeviceInfo.h"
#include "FamilyList.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/device_fields.h"
#include "tests/support/field_rules.h"
#include "tests/support/show.h"
#include "tests/support/tree_equality.h"

namespace {

using support::DeviceFields;
using support::ExpectCopied;
using support::FieldNamed;
using support::SampleFamily;
using support::SetPlainSamples;
using support::Show;
using support::ShowAll;

std::unique_ptr<DeviceInfo> FreshDevice() { return std::make_unique<DeviceInfo>(SampleFamily(1)); }

std::unique_ptr<DeviceInfo> FilledDevice(int sample = 1) {
  auto device = FreshDevice();
  SetPlainSamples(*device, sample);
  return device;
}

std::unique_ptr<DeviceInfo> CopyOf(DeviceInfo& source) { return std::make_unique<DeviceInfo>(&source); }

std::string ShowField(const char* name, DeviceInfo& device) { return Show(FieldNamed(DeviceFields(), name), device); }

/// The fields that differ, in the table's order.
std::vector<std::string> ChangedFields(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  std::vector<std::string> changed;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i] != after[i]) changed.push_back(DeviceFields()[i].name);
  }
  return changed;
}

// The copy

TEST(DeviceCopy, TakesEveryFieldAsTheTableStates) {
  for (const int sample : {1, 2}) {  // the flag on and off
    const auto source = FilledDevice(sample);
    const auto copy = CopyOf(*source);
    ExpectCopied(DeviceFields(), *source, *copy);
  }
}

TEST(DeviceCopy, OfAFreshRecordIsAFreshRecord) {
  const auto source = FreshDevice();
  const auto copy = CopyOf(*source);
  EXPECT_EQ(ShowAll(DeviceFields(), *copy), ShowAll(DeviceFields(), *source));
  ExpectCopied(DeviceFields(), *source, *copy);
}

TEST(DeviceCopy, LeavesUnsetWhatIsUnset) {
  for (const auto& field : DeviceFields()) {
    const auto source = FreshDevice();
    SetSample(field, *source, 1);
    const auto copy = CopyOf(*source);
    SCOPED_TRACE("the one field that is set: " + field.name);
    ExpectCopied(DeviceFields(), *source, *copy);
  }
}

TEST(DeviceCopy, KeepsEmptyTextsApartFromUnsetOnes) {
  const auto source = FreshDevice();
  source->SetName("");
  source->SetComm("");
  source->GetDevicePackage()->NewPackage()->SetPON("");
  const auto copy = CopyOf(*source);
  EXPECT_STREQ(copy->GetName(), "");
  EXPECT_STREQ(copy->GetComm(), "");
  EXPECT_EQ(copy->GetCodeName(), nullptr);
  EXPECT_STREQ(copy->GetDevicePackage()->GetPackage(0)->GetPON(), "");
  EXPECT_EQ(copy->GetDevicePackage()->GetPackage(0)->GetBackupPON(), nullptr);
}

TEST(DeviceCopy, KeepsAlgOptionsThatDifferFromComm) {
  const auto source = FreshDevice();
  source->SetComm("JTAG");
  source->SetAlgOptions("fast");
  const auto copy = CopyOf(*source);
  EXPECT_STREQ(copy->GetComm(), "JTAG");
  EXPECT_STREQ(copy->GetAlgOptions(), "fast");
}

TEST(DeviceCopy, KeepsAlgOptionsWithoutComm) {
  const auto source = FreshDevice();
  source->SetAlgOptions("fast");
  const auto copy = CopyOf(*source);
  EXPECT_EQ(copy->GetComm(), nullptr);
  EXPECT_STREQ(copy->GetAlgOptions(), "fast");
}

TEST(DeviceCopy, MakesAnUnsetColumnWidthExplicit) {
  const auto source = FreshDevice();
  source->SetDataLength(512);
  const auto copy = CopyOf(*source);
  EXPECT_EQ(copy->GetBitstreamColWidth(), 512);
  copy->SetDataLength(100);
  EXPECT_EQ(copy->GetBitstreamColWidth(), 512) << "the copy's width no longer follows its data length";
  source->SetDataLength(100);
  EXPECT_EQ(source->GetBitstreamColWidth(), 100) << "the source's width still does";
}

TEST(DeviceCopy, KeepsASetColumnWidth) {
  const auto source = FreshDevice();
  source->SetDataLength(512);
  source->SetBitstreamColWidth(-64);
  EXPECT_EQ(CopyOf(*source)->GetBitstreamColWidth(), -64);
}

TEST(DeviceCopy, TakesTheGeometryInUseAsItsBackupAndKeepsTheOtherBackups) {
  const struct {
    const char* working;
    const char* backup;
    const char* takenFrom;
  } cases[] = {
      {"jtagDeviceID", "jtagDeviceIDBackup", "jtagDeviceIDBackup"},
      {"DeviceIDMask", "DeviceIDMaskBackup", "DeviceIDMaskBackup"},
      {"ARCHLength", "BackupARCHLength", "ARCHLength"},
      {"ARCHRow", "BackupARCHRow", "ARCHRow"},
      {"ELength", "BackupELength", "ELength"},
      {"ERow", "BackupERow", "ERow"},
      {"AddressLength", "BackupAddressLength", "BackupAddressLength"},
      {"DataLength", "BackupDataLength", "BackupDataLength"},
      {"FuseNumber", "BackupFuseNumber", "BackupFuseNumber"},
  };
  const auto source = FilledDevice();
  const auto copy = CopyOf(*source);
  for (const auto& row : cases) {
    EXPECT_NE(ShowField(row.working, *source), ShowField(row.backup, *source)) << "backup: " << row.backup;
    EXPECT_EQ(ShowField(row.working, *copy), ShowField(row.working, *source)) << "backup: " << row.backup;
    EXPECT_EQ(ShowField(row.backup, *copy), ShowField(row.takenFrom, *source)) << "backup: " << row.backup;
  }
}

TEST(DeviceCopy, DoesNotTakeTheScratchListOfEBREntries) {
  const auto source = FilledDevice();
  source->SetListControlEBRBitName("3");
  const auto copy = CopyOf(*source);
  const auto blocks = copy->GetlistControlEBR().size();
  copy->SetListControlEBRName("of the scratch list");
  EXPECT_EQ(copy->GetlistControlEBR().size(), blocks);
  source->SetListControlEBRName("of the scratch list");
  EXPECT_EQ(source->GetlistControlEBR().back().Entries.size(), 3u) << "the source keeps its own";
}

TEST(DeviceCopy, SharesTheLinkButIsInNoFamily) {
  FamilyList family;
  const std::unique_ptr<DeviceInfo> source(family.NewDevice());
  const auto copy = CopyOf(*source);
  EXPECT_EQ(copy->GetFamilyObject(), &family);
  EXPECT_EQ(family.GetDeviceCount(), 1);
  copy->SetFamilyObject(SampleFamily(1));
  EXPECT_EQ(source->GetFamilyObject(), &family);
}

TEST(DeviceCopy, LeavesTheSourceUnchanged) {
  const auto source = FilledDevice();
  const auto before = ShowAll(DeviceFields(), *source);
  CopyOf(*source);
  EXPECT_EQ(ShowAll(DeviceFields(), *source), before);
}

TEST(DeviceCopy, SharesNothingWithTheSource) {
  const auto source = FilledDevice();
  const auto copy = CopyOf(*source);
  const auto before = ShowAll(DeviceFields(), *source);
  for (const auto& field : DeviceFields()) {
    SetSample(field, *copy, 2);
    EXPECT_EQ(ShowAll(DeviceFields(), *source), before) << "set in the copy: " << field.name;
  }
  const auto after = ShowAll(DeviceFields(), *copy);
  for (const auto& field : DeviceFields()) {
    SetSample(field, *source, 3);
    EXPECT_EQ(ShowAll(DeviceFields(), *copy), after) << "set in the source: " << field.name;
  }
}

/// Changes in place what the getters of a record lend.
void ScribbleOver(DeviceInfo& device) {
  device.GetName()[0] = '#';
  device.GetSysIO(0)[0] = '#';
  device.GetDevicePackage()->GetPackage(0)->SetPON("#");
  device.GetDevicePackage()->GetPackage(0)->GetAdapter(0)->SetVendorName("#");
  device.GetDevicePackage()->GetPackage(0)->ClearAdapterList();
  device.GetDevicePackage()->NewPackage();
  device.GetMultibootCfgAddr().assign(3, 99);
  device.GetMultibootAutoAdd().clear();
}

TEST(DeviceCopy, SharesNothingThatTheGettersLend) {
  const auto source = FilledDevice();
  const auto copy = CopyOf(*source);
  const auto before = ShowAll(DeviceFields(), *source);
  ScribbleOver(*copy);
  EXPECT_EQ(ShowAll(DeviceFields(), *source), before);
  const auto after = ShowAll(DeviceFields(), *copy);
  ScribbleOver(*source);
  EXPECT_EQ(ShowAll(DeviceFields(), *copy), after);
}

TEST(DeviceCopy, OutlivesTheSource) {
  auto source = FilledDevice();
  const auto expected = support::Describe(*CopyOf(*source));
  const auto copy = CopyOf(*source);
  source.reset();
  EXPECT_EQ(support::Describe(*copy), expected);
}

TEST(DeviceCopy, MayDieBeforeTheSource) {
  const auto source = FilledDevice();
  const auto before = support::Describe(*source);
  CopyOf(*source).reset();
  EXPECT_EQ(support::Describe(*source), before);
}

TEST(DeviceCopy, OfACopyEqualsTheCopy) {
  const auto source = FilledDevice();
  const auto copy = CopyOf(*source);
  EXPECT_EQ(support::DifferenceOf(*copy, *CopyOf(*copy)), "");
}

TEST(DeviceCopy, OfNullIsAnEmptyRecordWithoutAFamily) {
  DeviceInfo copy(nullptr);
  EXPECT_EQ(copy.GetFamilyObject(), nullptr);
  EXPECT_EQ(support::DifferenceOf(copy, *FreshDevice()), "");
  copy.SetFamilyObject(SampleFamily(2));
  EXPECT_EQ(copy.GetFamilyObject(), &SampleFamily(2));
}

TEST(DeviceCopy, TakesAsManyEntriesAndPackagesAsTheirCountsSay) {
  const struct {
    int held;
    unsigned short copied;
  } cases[] = {{65'535, 65'535}, {65'536, 0}, {65'538, 2}};
  for (const auto& row : cases) {
    const auto source = FreshDevice();
    for (int i = 0; i < row.held; ++i) {
      source->AddSysIOList("x");
      source->GetDevicePackage()->NewPackage();
    }
    const auto copy = CopyOf(*source);
    EXPECT_EQ(copy->GetSysIOCount(), row.copied) << "held: " << row.held;
    EXPECT_EQ(copy->GetSysIO(row.copied), nullptr) << "held: " << row.held;
    EXPECT_EQ(copy->GetDevicePackage()->GetPackageCount(), row.copied) << "held: " << row.held;
    EXPECT_EQ(copy->GetDevicePackage()->GetLastPackage() == nullptr, row.copied == 0) << "held: " << row.held;
  }
}

TEST(DeviceCopy, ThatFailsPartWayReleasesWhatItHadBuilt) {
  const auto source = FilledDevice();
  const auto before = ShowAll(DeviceFields(), *source);
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { CopyOf(*source); },
                                                          [&] {
                                                            const long left = support::LiveAllocations();
                                                            EXPECT_EQ(left, live);
                                                            EXPECT_EQ(ShowAll(DeviceFields(), *source), before);
                                                          });
  EXPECT_GT(failures, 50) << "texts, lists, packages: each has its own memory";
  const long left = support::LiveAllocations();
  EXPECT_EQ(left, live);
}

// Restoring the backups

const struct BackupPair {
  const char* working;
  const char* backup;
} kRestored[] = {
    {"ARCHLength", "BackupARCHLength"},
    {"ARCHRow", "BackupARCHRow"},
    {"ELength", "BackupELength"},
    {"ERow", "BackupERow"},
    {"AddressLength", "BackupAddressLength"},
    {"DataLength", "BackupDataLength"},
    {"FuseNumber", "BackupFuseNumber"},
    {"DeviceIDMask", "DeviceIDMaskBackup"},
};

TEST(RestoreDeviceBackupValue, PutsTheEightWorkingValuesBack) {
  const auto device = FilledDevice();
  for (const auto& pair : kRestored) {
    EXPECT_NE(ShowField(pair.working, *device), ShowField(pair.backup, *device)) << "field: " << pair.working;
  }
  device->RestoreDeviceBackupValue();
  const auto untouched = FilledDevice();
  for (const auto& pair : kRestored) {
    EXPECT_EQ(ShowField(pair.working, *device), ShowField(pair.backup, *untouched)) << "field: " << pair.working;
    EXPECT_EQ(ShowField(pair.backup, *device), ShowField(pair.backup, *untouched)) << "field: " << pair.backup;
  }
}

TEST(RestoreDeviceBackupValue, ChangesTheseFieldsThePONAndThePackagesAndNothingElse) {
  const auto device = FilledDevice();
  const auto before = ShowAll(DeviceFields(), *device);
  device->RestoreDeviceBackupValue();
  const std::vector<std::string> changed = {"PON",           "DeviceIDMask", "ARCHLength", "ELength",       "ERow",
                                            "AddressLength", "DataLength",   "FuseNumber", "DevicePackage", "ARCHRow"};
  EXPECT_EQ(ChangedFields(before, ShowAll(DeviceFields(), *device)), changed);
}

TEST(RestoreDeviceBackupValue, NeverTouchesTheJTAGIdentifier) {
  const auto device = FreshDevice();
  device->SetjtagDeviceID(0x12345678);
  device->SetjtagDeviceIDBackup(0x87654321);
  device->RestoreDeviceBackupValue();
  EXPECT_EQ(device->GetjtagDeviceID(), 0x12345678u);
  EXPECT_EQ(device->GetjtagDeviceIDBackup(), 0x87654321u);
}

TEST(RestoreDeviceBackupValue, WritesZerosWhereNoBackupWasSet) {
  const auto device = FreshDevice();
  for (const auto& pair : kRestored) SetSample(FieldNamed(DeviceFields(), pair.working), *device, 1);
  device->RestoreDeviceBackupValue();
  for (const auto& pair : kRestored) EXPECT_EQ(ShowField(pair.working, *device), "0") << "field: " << pair.working;
}

TEST(RestoreDeviceBackupValue, SetsThePONFromTheCodeName) {
  const struct {
    const char* codeName;
    const char* before;
    const char* after;
  } cases[] = {
      {"code", "switched", "code"},       //
      {"code", nullptr, "code"},          //
      {"", "switched", ""},               // an empty code name is one
      {nullptr, "switched", "switched"},  // without one the PON stays
      {nullptr, nullptr, nullptr},        //
  };
  for (const auto& row : cases) {
    const auto device = FreshDevice();
    device->SetCodeName(row.codeName);
    device->SetPON(row.before);
    device->RestoreDeviceBackupValue();
    EXPECT_EQ(Show(device->GetPON()), Show(row.after)) << "code name: " << Show(row.codeName);
    EXPECT_EQ(Show(device->GetCodeName()), Show(row.codeName));
  }
}

/// A package with these three numbers; null stays unset.
Package* AddPackage(DeviceInfo& device, const char* pon, const char* backup, const char* alias) {
  Package* const package = device.GetDevicePackage()->NewPackage();
  package->SetPON(pon);
  package->SetBackupPON(backup);
  package->SetAliasPON(alias);
  return package;
}

std::vector<std::string> PackagePONs(DeviceInfo& device) {
  std::vector<std::string> pons;
  for (int i = 0; const Package* const package = device.GetDevicePackage()->GetPackage(i); ++i) {
    pons.push_back(Show(package->GetPON()));
  }
  return pons;
}

TEST(RestoreDeviceBackupValue, SetsEachPackagesPONFromItsBackup) {
  const auto device = FreshDevice();
  AddPackage(*device, "switched", "backup", "alias");
  AddPackage(*device, "switched", nullptr, "alias");  // without a backup the PON stays
  AddPackage(*device, nullptr, "backup", nullptr);
  AddPackage(*device, "switched", "", nullptr);
  AddPackage(*device, nullptr, nullptr, nullptr);
  device->RestoreDeviceBackupValue();
  EXPECT_EQ(PackagePONs(*device), (std::vector<std::string>{"'backup'", "'switched'", "'backup'", "''", "null"}));
}

TEST(RestoreDeviceBackupValue, LeavesTheOtherTextsOfAPackageAlone) {
  const auto device = FilledDevice();
  DeviceInfo expected(device.get());
  expected.GetDevicePackage()->GetPackage(0)->SetPON("backup1");
  device->RestoreDeviceBackupValue();
  EXPECT_EQ(ShowField("DevicePackage", *device), ShowField("DevicePackage", expected));
}

TEST(RestoreDeviceBackupValue, NeedsNoFamily) {
  DeviceInfo device(nullptr);
  device.SetCodeName("code");
  device.SetBackupERow(7);
  device.RestoreDeviceBackupValue();
  EXPECT_STREQ(device.GetPON(), "code");
  EXPECT_EQ(device.GetERow(), 7);
}

// The switch to a CDR variant

/// A device with every field filled and two packages more, of a family that allows the switch.
struct CDRDevice {
  CDRDevice() {
    family.SetCDRFixed(true);
    record.SetFamilyObject(family);
    SetPlainSamples(record, 1);
    AddPackage(record, "second", "second backup", "second alias");
    AddPackage(record, "third", "third backup", nullptr);
  }

  FamilyList family;
  DeviceInfo record{family};
};

TEST(ChangeDeviceCDRValue, SwitchesForAMarkedNumberOnly) {
  const struct {
    const char* pon;
    bool isMarked;
  } cases[] = {
      {"AB-12H", true},   // ends in H
      {"H", true},        //
      {"-H", true},       //
      {"HH", true},       //
      {"ABH-12", true},   // "H-" in the middle
      {"H-12", true},     // at the start
      {"ABH-", true},     // at the end
      {"ABH-12h", true},  //
      {"H--", true},      //
      {"ABHH-C", true},   //
      {"AHB-H-C", true},  //
      {"AB-H12", false},  // a lone H counts at the end alone
      {"H12", false},     //
      {"ABHC", false},    //
      {"ABH ", false},    // what follows the H may be a blank: it is not the last character then
      {"ABH -", false},   //
      {"AB-12h", false},  // a lower-case h does not count
      {"ABh-12", false},  //
      {"h", false},       //
      {"AB-12", false},   //
      {"-", false},       //
      {" ", false},       //
      {"", false},        //
      {nullptr, false},   //
  };
  for (const auto& row : cases) {
    CDRDevice device;
    const auto before = ShowAll(DeviceFields(), device.record);
    device.record.ChangeDeviceCDRValue(row.pon);
    const auto changed = ChangedFields(before, ShowAll(DeviceFields(), device.record));
    const auto expected =
        row.isMarked ? std::vector<std::string>{"PON", "DeviceIDMask", "DevicePackage"} : std::vector<std::string>();
    EXPECT_EQ(changed, expected) << "pon: " << Show(row.pon);
    if (row.isMarked) {
      EXPECT_STREQ(device.record.GetPON(), row.pon);
    }
  }
}

TEST(ChangeDeviceCDRValue, ReadsNumbersOfAnyLength) {
  for (const std::size_t length : {1'022u, 1'023u, 1'024u, 100'000u}) {
    CDRDevice device;
    device.record.ChangeDeviceCDRValue((std::string(length, 'x') + "h").c_str());
    EXPECT_STREQ(device.record.GetPON(), "PON no. 1") << "length: " << length;
    const std::string marked = std::string(length, 'x') + "H";
    device.record.ChangeDeviceCDRValue(marked.c_str());
    EXPECT_EQ(device.record.GetPON(), marked) << "length: " << length;
  }
}

TEST(ChangeDeviceCDRValue, SetsTheMaskThePONAndThePONsOfPackagesWithAnAlias) {
  CDRDevice device;
  device.record.ChangeDeviceCDRValue("NEW-H");
  EXPECT_EQ(device.record.GetDeviceIDMask(), 0xFFFFFFFFu);
  EXPECT_STREQ(device.record.GetPON(), "NEW-H");
  EXPECT_EQ(PackagePONs(device.record), (std::vector<std::string>{"'alias1'", "null", "'second alias'", "'third'"}));
}

TEST(ChangeDeviceCDRValue, LeavesTheScanMaskTheIdentifierAndTheBackupsAlone) {
  CDRDevice device;
  device.record.ChangeDeviceCDRValue("NEW-H");
  const auto untouched = FilledDevice();
  for (const char* const field :
       {"DeviceIDScanMask", "jtagDeviceID", "jtagDeviceIDBackup", "DeviceIDMaskBackup", "BackupARCHLength", "CodeName"}) {
    EXPECT_EQ(ShowField(field, device.record), ShowField(field, *untouched)) << "field: " << field;
  }
}

TEST(ChangeDeviceCDRValue, LeavesTheFamilyAndTheOtherTextsOfAPackageAlone) {
  CDRDevice device;
  FamilyList expectedFamily;
  expectedFamily.SetCDRFixed(true);
  DeviceInfo expected(&device.record);
  expected.GetDevicePackage()->GetPackage(0)->SetPON("alias1");
  expected.GetDevicePackage()->GetPackage(2)->SetPON("second alias");
  device.record.ChangeDeviceCDRValue("NEW-H");
  EXPECT_EQ(ShowField("DevicePackage", device.record), ShowField("DevicePackage", expected));
  EXPECT_EQ(support::DifferenceOf(device.family, expectedFamily), "");
}

TEST(ChangeDeviceCDRValue, TakesAnEmptyAlias) {
  CDRDevice device;
  Package* const package = AddPackage(device.record, "fourth", nullptr, "");
  device.record.ChangeDeviceCDRValue("NEW-H");
  EXPECT_STREQ(package->GetPON(), "");
}

TEST(ChangeDeviceCDRValue, ChangesNothingWhereTheFamilyDoesNotAllowIt) {
  CDRDevice device;
  device.family.SetCDRFixed(false);
  const auto before = ShowAll(DeviceFields(), device.record);
  device.record.ChangeDeviceCDRValue("NEW-H");
  EXPECT_EQ(ShowAll(DeviceFields(), device.record), before);
}

TEST(ChangeDeviceCDRValue, AsksTheFamilyThatTheDeviceIsLinkedTo) {
  CDRDevice device;
  FamilyList other;
  device.record.SetFamilyObject(other);
  device.record.ChangeDeviceCDRValue("NEW-H");
  EXPECT_STREQ(device.record.GetPON(), "PON no. 1");
  device.record.SetFamilyObject(device.family);
  device.record.ChangeDeviceCDRValue("NEW-H");
  EXPECT_STREQ(device.record.GetPON(), "NEW-H");
}

TEST(ChangeDeviceCDRValue, ChangesNothingWithoutAFamily) {
  DeviceInfo device(nullptr);
  device.SetPON("old");
  device.SetDeviceIDMask(7);
  AddPackage(device, "old", "backup", "alias");
  const auto before = ShowAll(DeviceFields(), device);
  device.ChangeDeviceCDRValue("NEW-H");
  EXPECT_EQ(ShowAll(DeviceFields(), device), before);
}

TEST(ChangeDeviceCDRValue, ATextOfTheDeviceIsALegalArgument) {
  const struct {
    const char* name;
    char* (*argument)(DeviceInfo&);
  } cases[] = {
      {"PON", [](DeviceInfo& device) { return device.GetPON(); }},
      {"CodeName", [](DeviceInfo& device) { return device.GetCodeName(); }},
      {"a package's PON", [](DeviceInfo& device) { return device.GetDevicePackage()->GetPackage(0)->GetPON(); }},
      {"a package's BackupPON", [](DeviceInfo& device) { return device.GetDevicePackage()->GetPackage(0)->GetBackupPON(); }},
      {"a package's AliasPON", [](DeviceInfo& device) { return device.GetDevicePackage()->GetPackage(0)->GetAliasPON(); }},
  };
  const char* const number = "a number that is longer than any short text-H";
  for (const auto& row : cases) {
    CDRDevice device;
    Package* const package = device.record.GetDevicePackage()->GetPackage(0);
    device.record.SetPON(number);
    device.record.SetCodeName(number);
    package->SetPON(number);
    package->SetBackupPON(number);
    package->SetAliasPON(row.name == std::string("a package's AliasPON") ? number : "alias");
    const std::string alias = package->GetAliasPON();
    device.record.ChangeDeviceCDRValue(row.argument(device.record) + 2);
    EXPECT_STREQ(device.record.GetPON(), number + 2) << "argument: " << row.name;
    EXPECT_EQ(package->GetPON(), alias) << "argument: " << row.name;
  }
}

TEST(ChangeDeviceCDRValue, TheLatestNumberWins) {
  CDRDevice device;
  device.record.ChangeDeviceCDRValue("FIRST-H");
  device.record.SetDeviceIDMask(0x0FFFFFFF);
  device.record.ChangeDeviceCDRValue("SECOND-H");
  EXPECT_STREQ(device.record.GetPON(), "SECOND-H");
  EXPECT_EQ(device.record.GetDeviceIDMask(), 0xFFFFFFFFu);
  device.record.ChangeDeviceCDRValue("no marker");
  EXPECT_STREQ(device.record.GetPON(), "SECOND-H");
}

TEST(ChangeDeviceCDRValue, IsUndoneByARestore) {
  CDRDevice device;
  device.record.ChangeDeviceCDRValue("NEW-H");
  const unsigned int jtag = device.record.GetjtagDeviceID();
  device.record.RestoreDeviceBackupValue();
  EXPECT_EQ(device.record.GetDeviceIDMask(), device.record.GetDeviceIDMaskBackup());
  EXPECT_STREQ(device.record.GetPON(), "CodeName no. 1");
  EXPECT_EQ(PackagePONs(device.record), (std::vector<std::string>{"'backup1'", "null", "'second backup'", "'third backup'"}));
  EXPECT_EQ(device.record.GetjtagDeviceID(), jtag);
}

TEST(ChangeDeviceCDRValue, APackageWithoutABackupKeepsItsAliasThroughARestore) {
  CDRDevice device;
  Package* const package = AddPackage(device.record, "fourth", nullptr, "fourth alias");
  device.record.ChangeDeviceCDRValue("NEW-H");
  device.record.RestoreDeviceBackupValue();
  EXPECT_STREQ(package->GetPON(), "fourth alias");
}

TEST(CDRSwitchAndRestore, AFailedAllocationLosesNothingAndMayBeRepeated) {
  CDRDevice device;
  const long live = support::LiveAllocations();
  const auto checkNothingIsLost = [&] {
    const long left = support::LiveAllocations();
    EXPECT_EQ(left, live);
  };
  long failures = support::ForEachFailingAllocation([&] { device.record.ChangeDeviceCDRValue("NEW-H"); }, checkNothingIsLost);
  EXPECT_GE(failures, 3) << "the PON and the PONs of two packages";
  EXPECT_STREQ(device.record.GetPON(), "NEW-H");
  EXPECT_EQ(PackagePONs(device.record), (std::vector<std::string>{"'alias1'", "null", "'second alias'", "'third'"}));
  failures = support::ForEachFailingAllocation([&] { device.record.RestoreDeviceBackupValue(); }, checkNothingIsLost);
  EXPECT_GE(failures, 4) << "the PON and the PONs of three packages";
  EXPECT_STREQ(device.record.GetPON(), "CodeName no. 1");
  EXPECT_EQ(PackagePONs(device.record), (std::vector<std::string>{"'backup1'", "null", "'second backup'", "'third backup'"}));
}

}  // namespace
