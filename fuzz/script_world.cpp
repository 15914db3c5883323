#include "fuzz/script_world.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "fuzz/input.h"
#include "fuzz/tree_checks.h"

namespace fuzz {
namespace {

constexpr std::size_t kLongestRun = 2000;

std::vector<DeviceInfo*> DevicesOf(FamilyList& family) {
  std::vector<DeviceInfo*> devices;
  for (int i = 0; DeviceInfo* const device = family.GetDevice(i); ++i) devices.push_back(device);
  return devices;
}

void AddTextsOf(DeviceInfo& device, std::vector<const char*>& texts) {
  texts.insert(texts.end(), {device.GetName(), device.GetCodeName(), device.GetAliasName(), device.GetVendor(), device.GetPON(),
                             device.GetComm(), device.GetAlgOptions(), device.GetFamily()});
  for (int i = 0; const char* const entry = device.GetSysIO(i); ++i) texts.push_back(entry);
  for (const std::string& range : device.GetlistAddressRange()) texts.push_back(range.c_str());
  for (const auto& record : device.GetlistControlRegZero()) texts.push_back(record.Frequency.c_str());
  for (const auto& block : device.GetlistControlEBR()) texts.push_back(block.Name.c_str());
  for (const auto& voltage : device.GetControlVoltage()) texts.push_back(voltage.VCCCore.c_str());
}

void AddTextsOf(FamilyList& family, std::vector<const char*>& texts) {
  texts.insert(texts.end(), {family.GetName(), family.GetICFFile(), family.GetBitstreamModelTemplate()});
  for (int i = 0; const char* const operation = family.GetOperation(i); ++i) texts.push_back(operation);
  for (const std::string& mode : family.GetListProgrammingModeControl()) texts.push_back(mode.c_str());
}

void AddTextsOf(const Package& package, std::vector<const char*>& texts) {
  texts.insert(texts.end(), {package.GetType(), package.GetPON(), package.GetBackupPON(), package.GetAliasPON()});
  for (int i = 0; i < package.GetAdapterCount(); ++i) texts.push_back(package.GetAdapterName(i));
}

std::string Unescaped(std::string_view argument) {
  std::string text;
  for (std::size_t i = 0; i < argument.size(); ++i) {
    const char next = i + 1 < argument.size() ? argument[i + 1] : '\0';
    const bool isEscape = argument[i] == '\\' && (next == 'n' || next == 't');
    text += isEscape ? (next == 'n' ? '\n' : '\t') : argument[i];
    if (isEscape) ++i;
  }
  return text;
}

}  // namespace

World::World() {
  for (DeviceListOwner& database : databases_) database = MakeDeviceList();
  home_.SetCDRFixed(true);
}

World::~World() = default;

template <>
DeviceList* World::Current<DeviceList>() {
  return databases_[database_].get();
}

template <>
FamilyList* World::Current<FamilyList>() {
  DeviceList& database = *databases_[database_];
  const std::size_t count = database.GetFamilyCount();
  return count == 0 ? nullptr : database.GetFamily(static_cast<int>(family_ % count));
}

template <>
DeviceInfo* World::Current<DeviceInfo>() {
  if (takesUnlinked_) return unlinked_.empty() ? nullptr : unlinked_[device_ % unlinked_.size()].get();
  FamilyList* const family = Current<FamilyList>();
  if (family == nullptr || family->GetDeviceCount() == 0) return nullptr;
  return family->GetDevice(static_cast<int>(device_ % family->GetDeviceCount()));
}

template <>
PackageList* World::Current<PackageList>() {
  DeviceInfo* const device = Current<DeviceInfo>();
  return device == nullptr ? nullptr : device->GetDevicePackage();
}

template <>
Package* World::Current<Package>() {
  PackageList* const packages = Current<PackageList>();
  if (packages == nullptr || packages->GetPackageCount() == 0) return nullptr;
  return packages->GetPackage(package_ % packages->GetPackageCount());
}

template <>
Adapter* World::Current<Adapter>() {
  const Package* const package = Current<Package>();
  return package == nullptr ? nullptr : package->GetAdapter(package->GetAdapterCount() - 1);
}

void World::Adopt(DeviceInfo* device) {
  if (device != nullptr) unlinked_.emplace_back(device);
}

void World::Destroy(DeviceInfo* device) {
  const auto isIt = [&](const auto& owned) { return owned.get() == device; };
  unlinked_.erase(std::remove_if(unlinked_.begin(), unlinked_.end(), isIt), unlinked_.end());
}

bool World::IsUnlinked(const DeviceInfo* device) const {
  return std::any_of(unlinked_.begin(), unlinked_.end(), [&](const auto& owned) { return owned.get() == device; });
}

std::vector<World::Family> World::FamiliesOfCurrent() {
  std::vector<Family> families;
  for (int i = 0; FamilyList* const family = databases_[database_]->GetFamily(i); ++i) {
    families.push_back({family, DevicesOf(*family)});
  }
  return families;
}

void World::AdoptDevicesOf(const std::vector<Family>& before) {
  const std::vector<Family> after = FamiliesOfCurrent();
  for (const Family& old : before) {
    const auto isOld = [&](const Family& family) { return family.family == old.family && family.devices == old.devices; };
    if (std::any_of(after.begin(), after.end(), isOld)) continue;
    for (DeviceInfo* const device : old.devices) Adopt(device);
    // Other devices may have been unlinked from it before.
    for (const auto& device : unlinked_) {
      if (device->GetFamilyObject() == old.family) BringHome(*device);
    }
  }
}

void World::BringHomeFrom(DeviceList& database) {
  for (int i = 0; const FamilyList* const family = database.GetFamily(i); ++i) {
    for (const auto& device : unlinked_) {
      if (device->GetFamilyObject() == family) BringHome(*device);
    }
  }
}

void World::ReplaceOtherDatabase(DeviceListOwner database) {
  BringHomeFrom(OtherDatabase());
  databases_[1 - database_] = std::move(database);
}

void World::TearDown() {
  unlinked_.clear();
  for (DeviceListOwner& database : databases_) database = MakeDeviceList();
}

const char* World::LentText(std::size_t i) {
  std::vector<const char*> texts;
  if (DeviceInfo* const device = Current<DeviceInfo>()) AddTextsOf(*device, texts);
  if (FamilyList* const family = Current<FamilyList>()) AddTextsOf(*family, texts);
  if (const Package* const package = Current<Package>()) AddTextsOf(*package, texts);
  texts.erase(std::remove(texts.begin(), texts.end(), nullptr), texts.end());
  return texts.empty() ? nullptr : texts[i % texts.size()];
}

std::size_t World::CheckAll() {
  std::size_t size = 0;
  for (const DeviceListOwner& database : databases_) size += CheckDatabase(*database);
  for (const auto& device : unlinked_) size += CheckDevice(*device);
  return size;
}

bool Arguments::Next(std::string_view& argument) {
  if (rest_.empty()) return false;
  rest_.remove_prefix(1);  // the separator in front
  argument = rest_.substr(0, rest_.find('|'));
  rest_.remove_prefix(argument.size());
  return true;
}

const char* Arguments::Text() {
  std::string_view argument;
  if (!Next(argument)) return nullptr;
  const std::string number(argument.substr(argument.empty() ? 0 : 1));
  if (argument.substr(0, 1) == "@") {
    const char* const text = world_.LentText(std::strtoul(number.c_str(), nullptr, 10));
    return text == nullptr || argument.back() != 'm' ? text : text + std::strlen(text) / 2;
  }
  const bool isRun = argument.substr(0, 1) == "*";
  const std::size_t length = isRun ? std::min<std::size_t>(std::strtoul(number.c_str(), nullptr, 10), kLongestRun) : 0;
  return texts_.emplace_back(isRun ? std::string(length, 'x') : Unescaped(argument)).c_str();
}

unsigned long long Arguments::Number() {
  std::string_view argument;
  if (!Next(argument)) return 0;
  return static_cast<unsigned long long>(std::strtoll(std::string(argument).c_str(), nullptr, 0));
}

}  // namespace fuzz
