#include "bench/lookup_floors.h"

#include <malloc.h>

#include <cstring>
#include <string>

namespace bench {
namespace {

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool EqualIgnoringCase(const char* a, const char* b) {
  for (; *a == *b || Upper(*a) == Upper(*b); ++a, ++b) {
    if (*a == '\0') return true;
  }
  return false;
}

std::unique_ptr<char[]> CopyOf(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  std::unique_ptr<char[]> copy(new char[size]);
  std::memcpy(copy.get(), text, size);
  return copy;
}

/// Bytes of heap that a block takes, with the word that the heap keeps about it.
std::ptrdiff_t OnHeap(const void* block) {
  return block == nullptr ? 0 : static_cast<std::ptrdiff_t>(malloc_usable_size(const_cast<void*>(block)) + sizeof(std::size_t));
}

/// Takes so much of the heap behind `device` that the next one lies `distance` behind it. Devices of a tree that lie anywhere
/// else (the first one of a family may) leave no gap.
template <typename Device>
void LeaveGap(Device& device, std::ptrdiff_t distance) {
  std::ptrdiff_t rest = distance - OnHeap(&device) - OnHeap(device.text.get()) - OnHeap(device.packages.data());
  for (const auto& package : device.packages) rest -= OnHeap(package.get()) + OnHeap(package->text.get());
  constexpr std::ptrdiff_t kOwnWord = sizeof(std::size_t);
  constexpr std::ptrdiff_t kFarthest = 1 << 16;
  if (rest > kOwnWord && rest < kFarthest) device.gap.reset(new std::byte[static_cast<std::size_t>(rest - kOwnWord)]);
}

/// Fills an object up to the size of one of the library's.
template <typename Record, std::size_t used>
using Rest = std::byte[sizeof(Record) - used];

template <typename Visit>
void ForEachDevice(const DeviceList& database, Visit visit) {
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
  std::unique_ptr<char[]> text;
  Rest<Package, sizeof text> rest;
};

struct LookupFloors::Device {
  std::unique_ptr<char[]> text;
  std::vector<std::unique_ptr<DevicePackage>> packages;
  std::unique_ptr<std::byte[]> gap;  // to the next device
  unsigned int number = 0;
  unsigned int between[3] = {};  // as many numbers as a record has between an identifier and the mask
  unsigned int mask = 0;
  Rest<DeviceInfo, sizeof text + sizeof packages + sizeof gap + sizeof number + sizeof between + sizeof mask + 4> rest;
};

LookupFloors::LookupFloors(const DeviceList& database, Layout layout) {
  numbers_ = MakeDevices(database, layout, [](Device& device, const DeviceInfo& source) {
    device.number = source.GetjtagDeviceID();
    device.mask = source.GetDeviceIDScanMask();
  });
  texts_ =
      MakeDevices(database, layout, [](Device& device, const DeviceInfo& source) { device.text = CopyOf(source.GetName()); });
  pons_ = PackageTexts(database, layout, &Package::GetBackupPON);
  jdfs_ = PackageTexts(database, layout, &Package::GetJDF);
  ForEachDevice(database, [&](const DeviceInfo& device) {
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
  return Find(texts_, [&](const Device& device) { return EqualIgnoringCase(device.text.get(), text); });
}

int LookupFloors::FindPackagePON(const char* pon) const { return FindPackageText(pons_, pon); }

int LookupFloors::FindPackageJDF(const char* jdf) const { return FindPackageText(jdfs_, jdf); }

template <typename Fill>
LookupFloors::Devices LookupFloors::MakeDevices(const DeviceList& database, Layout layout, Fill fill) {
  Devices devices;
  const std::byte* previous = nullptr;
  ForEachDevice(database, [&](const DeviceInfo& source) {
    const auto* const place = reinterpret_cast<const std::byte*>(&source);
    if (layout == Layout::kAsInTree && previous != nullptr) LeaveGap(*devices.back(), place - previous);
    previous = place;
    devices.push_back(std::make_unique<Device>());
    fill(*devices.back(), source);
  });
  return devices;
}

LookupFloors::Devices LookupFloors::PackageTexts(const DeviceList& database, Layout layout, char* (Package::*text)() const) {
  return MakeDevices(database, layout, [text](Device& device, const DeviceInfo& source) {
    for (int i = 0; const Package* const package = source.GetDevicePackage()->GetPackage(i); ++i) {
      device.packages.push_back(std::make_unique<DevicePackage>());
      device.packages.back()->text = CopyOf((package->*text)());
    }
  });
}

int LookupFloors::FindPackageText(const Devices& devices, const char* text) {
  return Find(devices, [&](const Device& device) {
    return Find(device.packages, [&](const DevicePackage& package) { return EqualIgnoringCase(package.text.get(), text); }) >=
           0;
  });
}

}  // namespace bench
