#include "bench/lookup_floors.h"

#include <cstddef>

namespace bench {
namespace {

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool EqualIgnoringCase(const char* a, const char* b) {
  for (; *a == *b || Upper(*a) == Upper(*b); ++a, ++b) {
    if (*a == '\0') return true;
  }
  return false;
}

/// Fills an object up to the size of one of the library's.
template <typename Record, std::size_t used>
using Rest = std::byte[sizeof(Record) - used];

template <typename Visit>
void VisitDevices(const DeviceList& database, Visit visit) {
  for (int i = 0; const FamilyList* const family = database.GetFamily(i); ++i) {
    for (int k = 0; const DeviceInfo* const device = family->GetDevice(k); ++k) visit(*device);
  }
}

template <typename Devices, typename Rule>
int Find(const Devices& devices, Rule rule) {
  for (std::size_t i = 0; i < devices.size(); ++i) {
    if (rule(*devices[i])) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace

struct LookupFloors::DevicePackage {
  const char* text;
  Rest<Package, sizeof text> rest;
};

struct LookupFloors::Device {
  const char* text = nullptr;
  std::vector<std::unique_ptr<DevicePackage>> packages;
  unsigned int number = 0;
  unsigned int between[3] = {};  // as many numbers as a record has between an identifier and the mask
  unsigned int mask = 0;
  Rest<DeviceInfo, sizeof text + sizeof packages + sizeof number + sizeof between + sizeof mask + 4> rest;
};

LookupFloors::LookupFloors(const DeviceList& database) {
  numbers_ = MakeDevices(database, [](Device& device, const DeviceInfo& source) {
    device.number = source.GetjtagDeviceID();
    device.mask = source.GetDeviceIDScanMask();
  });
  texts_ = MakeDevices(database, [](Device& device, const DeviceInfo& source) { device.text = source.GetName(); });
  pons_ = PackageTexts(database, &Package::GetBackupPON);
  jdfs_ = PackageTexts(database, &Package::GetJDF);
  VisitDevices(database, [&](const DeviceInfo& device) {
    identifiers_.push_back({device.GetjtagDeviceID(), device.GetDeviceIDScanMask()});
  });
}

LookupFloors::~LookupFloors() = default;

int LookupFloors::FindNumber(unsigned int number) const {
  return Find(numbers_, [&](const Device& device) { return device.number == number; });
}

int LookupFloors::FindMasked(unsigned int id) const {
  return Find(numbers_, [&](const Device& device) { return ((device.number ^ id) & device.mask) == 0; });
}

int LookupFloors::FindInArray(unsigned int id) const {
  for (std::size_t i = 0; i < identifiers_.size(); ++i) {
    if (((identifiers_[i].id ^ id) & identifiers_[i].mask) == 0) return static_cast<int>(i);
  }
  return -1;
}

int LookupFloors::FindText(const char* text) const {
  return Find(texts_, [&](const Device& device) { return EqualIgnoringCase(device.text, text); });
}

int LookupFloors::FindPackagePON(const char* pon) const { return FindPackageText(pons_, pon); }

int LookupFloors::FindPackageJDF(const char* jdf) const { return FindPackageText(jdfs_, jdf); }

template <typename Fill>
LookupFloors::Devices LookupFloors::MakeDevices(const DeviceList& database, Fill fill) {
  Devices devices;
  VisitDevices(database, [&](const DeviceInfo& source) {
    devices.push_back(std::make_unique<Device>());
    fill(*devices.back(), source);
  });
  return devices;
}

LookupFloors::Devices LookupFloors::PackageTexts(const DeviceList& database, char* (Package::*text)() const) {
  return MakeDevices(database, [text](Device& device, const DeviceInfo& source) {
    for (int i = 0; const Package* const package = source.GetDevicePackage()->GetPackage(i); ++i) {
      device.packages.push_back(std::make_unique<DevicePackage>());
      device.packages.back()->text = (package->*text)();
    }
  });
}

int LookupFloors::FindPackageText(const Devices& devices, const char* text) {
  return Find(devices, [&](const Device& device) {
    return Find(device.packages, [&](const DevicePackage& package) { return EqualIgnoringCase(package.text, text); }) >= 0;
  });
}

}  // namespace bench
