#include "fuzz/tree_checks.h"

#include <cstring>

#include "fuzz/input.h"
#include "tests/support/device_fields.h"
#include "tests/support/family_fields.h"

namespace fuzz {
namespace {

/// The length of all texts of a record.
template <class Record>
std::size_t ReadTexts(const std::vector<support::Field<Record>>& fields, const Record& record) {
  std::size_t size = 0;
  support::ForEachFieldOf<support::TextField<Record>>(
      fields, [&](const auto&, const auto& text) { size += Read((record.*text.get)()); });
  return size;
}

// A record's size: one for itself, one for each entry of its lists, and the length of its texts.
std::size_t SizeOf(const CControlRegZero& r) { return 1 + Read(r.Frequency) + Read(r.MasterClock) + Read(r.ClockDivider); }
std::size_t SizeOf(const CControlRegOne& r) { return 1 + Read(r.BitName); }
std::size_t SizeOf(const CPersistent_fuse&) { return 1; }
std::size_t SizeOf(const CControlStatus& r) { return 1 + Read(r.BitName) + Read(r.Control) + Read(r.Text); }
std::size_t SizeOf(const CControlEBR& r) { return 1 + Read(r.BitName); }
std::size_t SizeOf(const CControlVoltage& r) { return 1 + Read(r.VCCCore) + Read(r.VCCJ) + Read(r.PinList); }
std::size_t SizeOf(const std::string& text) { return 1 + Read(text); }
std::size_t SizeOf(int) { return 1; }

std::size_t SizeOf(const CControlEBRList& block);
std::size_t SizeOf(const CBScanControl& record);

template <typename Record>
std::size_t SizeOf(const std::vector<Record>& records) {
  std::size_t size = 0;
  for (const Record& record : records) size += SizeOf(record);
  return size;
}

std::size_t SizeOf(const CControlEBRList& block) { return 1 + Read(block.Name) + SizeOf(block.Entries); }
std::size_t SizeOf(const CBScanControl& record) { return 1 + SizeOf(record.Controls); }

std::size_t CheckLists(DeviceInfo& device) {
  return SizeOf(device.GetlistControlRegZero()) + SizeOf(device.GetlistControlRegOne()) +
         SizeOf(device.GetlistPersistent_fuse()) + SizeOf(device.GetlistControlStatus()) + SizeOf(device.GetlistControlEBR()) +
         SizeOf(device.GetControlVoltage()) + SizeOf(device.GetlistAddressRange()) + SizeOf(device.GetMultibootCfgAddr()) +
         SizeOf(device.GetMultibootAutoAdd());
}

}  // namespace

std::size_t Read(const char* text) { return text == nullptr ? 0 : std::strlen(text); }

std::size_t Read(const std::string& text) {
  Check(text.c_str()[text.size()] == '\0', "a text ends");
  return text.size();
}

std::size_t CheckPackage(const Package& package) {
  std::size_t size = 1 + Read(package.GetType()) + Read(package.GetPON()) + Read(package.GetJDF()) + Read(package.GetINI()) +
                     Read(package.GetOrvoSetting()) + Read(package.GetBackupPON()) + Read(package.GetAliasPON());
  const int count = package.GetAdapterCount();
  for (int i = 0; i < count; ++i) {
    const Adapter* const adapter = package.GetAdapter(i);
    Check(adapter != nullptr, "there is an adapter at each position");
    Check(package.GetAdapterVendor(i) == adapter->GetVendorName(), "an adapter's vendor is that of the adapter");
    Check(package.GetAdapterName(i) == adapter->GetAdapterName(), "an adapter's name is that of the adapter");
    size += 1 + Read(adapter->GetVendorName()) + Read(adapter->GetAdapterName());
  }
  Check(package.GetAdapter(-1) == nullptr && package.GetAdapter(count) == nullptr, "no adapter outside the list");
  Check(package.GetEntityName().size() == Read(package.GetBackupPON()), "an entity name is as long as the backup number");
  return size;
}

std::size_t CheckPackages(const PackageList& packages) {
  const int count = packages.GetPackageCount();
  std::size_t size = 0;
  for (int i = 0; i < count; ++i) {
    Check(packages.GetPackage(i) != nullptr, "there is a package at each position");
    size += CheckPackage(*packages.GetPackage(i));
  }
  Check(packages.GetPackage(count) == nullptr && packages.GetPackage(-1) == nullptr, "no package outside the list");
  Check(packages.GetLastPackage() == (count == 0 ? nullptr : packages.GetPackage(count - 1)), "the last package is the last");
  return size;
}

std::size_t CheckDevice(DeviceInfo& device) {
  Check(device.GetDevicePackage() != nullptr, "a device has a package list");
  std::size_t size = 1 + CheckPackages(*device.GetDevicePackage()) + CheckLists(device);
  size += ReadTexts(support::DeviceFields(), device);
  const int entries = device.GetSysIOCount();
  for (int i = 0; i < entries; ++i) {
    Check(device.GetSysIO(i) != nullptr, "there is an I/O entry at each position");
    size += 1 + Read(device.GetSysIO(i));
  }
  Check(device.GetSysIO(-1) == nullptr && device.GetSysIO(entries) == nullptr, "no I/O entry outside the list");
  return size;
}

std::size_t CheckFamily(FamilyList& family) {
  std::size_t size = 1 + SizeOf(family.GetListProgrammingModeControl()) + SizeOf(family.GetListBScanControl());
  size += ReadTexts(support::FamilyFields(), family);
  Check(family.GetICFFile() != nullptr, "the ICF file is never null");
  const int devices = family.GetDeviceCount();
  for (int i = 0; i < devices; ++i) {
    DeviceInfo* const device = family.GetDevice(i);
    Check(device != nullptr, "there is a device at each position");
    Check(device->GetFamilyObject() == &family, "a device of a family leads back to it");
    size += CheckDevice(*device);
  }
  Check(family.GetDevice(-1) == nullptr && family.GetDevice(devices) == nullptr, "no device outside the list");
  Check(family.GetLastDevice() == family.GetDevice(devices - 1), "the last device is the last");
  const int operations = family.GetOperationCount();
  for (int i = 0; i < operations; ++i) {
    Check(family.GetOperation(i) != nullptr, "there is an operation at each position");
    size += 1 + Read(family.GetOperation(i));
  }
  Check(family.GetOperation(-1) == nullptr && family.GetOperation(operations) == nullptr, "no operation outside the list");
  return size;
}

std::size_t CheckDatabase(DeviceList& database) {
  std::size_t size = Read(database.GetVersion()) + Read(database.GetComment()) + SizeOf(database.GetlistDevicenames());
  const int families = database.GetFamilyCount();
  int devices = 0;
  for (int i = 0; i < families; ++i) {
    FamilyList* const family = database.GetFamily(i);
    Check(family != nullptr, "there is a family at each position");
    size += CheckFamily(*family);
    devices += family->GetDeviceCount();
  }
  Check(database.GetDeviceCount() == devices, "a database has the devices of its families");
  Check(database.GetFamily(-1) == nullptr && database.GetFamily(families) == nullptr, "no family outside the list");
  Check(database.GetLastFamily() == database.GetFamily(families - 1), "the last family is the last");
  return size;
}

}  // namespace fuzz
