#include "device_lookup.h"

namespace tool {
namespace {

bool EqualTexts(const char* a, const char* b) {
  std::string left = a == nullptr ? "" : a;
  std::string right = b == nullptr ? "" : b;
  strupr(left);
  strupr(right);
  return a != nullptr && left == right;
}

/// The lookup by code name also knows alias names, behind all code names: `device` is what it found for `text`.
const DeviceInfo* OnlyByCodeName(const DeviceInfo* device, const char* text) {
  return device != nullptr && EqualTexts(device->GetCodeName(), text) ? device : nullptr;
}

const DeviceInfo* OnlyByAlias(const DeviceInfo* device, const char* text) {
  return device != nullptr && !EqualTexts(device->GetCodeName(), text) ? device : nullptr;
}

/// Leaves `database` with the family `name` (or alias name) alone; false, and no family, when it has none.
bool KeepOnlyFamily(DeviceList& database, const std::string& name) {
  const FamilyList* const kept = database.GetFamily(name.c_str());
  for (int i = 0; FamilyList* const family = database.GetFamily(i);) {
    if (family == kept) {
      ++i;
    } else {
      ReleaseDevices(*family);
      database.DeleteFamily(i);
    }
  }
  return kept != nullptr;
}

}  // namespace

// clang-format off
extern constexpr std::array<Key, 6> kKeys = {{
    {"name", "The device's name",
     [](const DeviceList& database, const char* text) -> const DeviceInfo* { return database.GetDeviceWithName(text); },
     [](const FamilyList& family, const char* text) -> const DeviceInfo* { return family.GetDevice(text); },
     nullptr, [](const DeviceInfo& device) -> const char* { return device.GetName(); }},
    {"code-name", "Its code name",
     [](const DeviceList& database, const char* text) { return OnlyByCodeName(database.GetDeviceWithCodeName(text), text); },
     [](const FamilyList& family, const char* text) { return OnlyByCodeName(family.GetDeviceWithCodeName(text), text); },
     nullptr, [](const DeviceInfo& device) -> const char* { return device.GetCodeName(); }},
    {"alias", "Its alias name, unless a device has it as its code name",
     [](const DeviceList& database, const char* text) { return OnlyByAlias(database.GetDeviceWithCodeName(text), text); },
     [](const FamilyList& family, const char* text) { return OnlyByAlias(family.GetDeviceWithCodeName(text), text); },
     nullptr, [](const DeviceInfo& device) -> const char* { return device.GetAliasName(); }},
    {"pon", "The ordering name of one of its packages; failing that, one without what follows its last '-'",
     [](const DeviceList& database, const char* text) -> const DeviceInfo* { return database.GetDeviceWithPON(text, false); },
     nullptr,
     [](const DeviceList& database, const char* text) -> const DeviceInfo* { return database.GetDeviceWithPON(text, true); }},
    {"jdf", "The JEDEC device file of one of its packages",
     [](const DeviceList& database, const char* text) -> const DeviceInfo* { return database.GetDeviceWithJDFFileName(text); },
     nullptr},
    {"entity", "The entity name of one of its packages, whether or not the device has a user signature",
     [](const DeviceList& database, const char* text) -> const DeviceInfo* {
       return database.GetDeviceWithEntityNameDisregardUES(text);
     },
     nullptr},
}};
// clang-format on

const DeviceInfo* FirstOf(const std::vector<Database>& databases, const Lookup& lookup) {
  for (const Database& database : databases) {
    if (const DeviceInfo* const device = lookup(*database.devices)) return device;
  }
  return nullptr;
}

const DeviceInfo* FindByKey(const std::vector<Database>& databases, const Key& key, const char* text, bool in_family) {
  const DeviceInfo* const device = FirstOf(databases, [&](DeviceList& database) -> const DeviceInfo* {
    if (!in_family || key.inFamily == nullptr) return key.inDatabase(database, text);
    const FamilyList* const family = database.GetFamily(0);
    return family == nullptr ? nullptr : key.inFamily(*family, text);
  });
  if (device != nullptr || key.otherwise == nullptr) return device;
  return FirstOf(databases, [&](DeviceList& database) { return key.otherwise(database, text); });
}

WorkingCopies::WorkingCopies(const std::vector<Database>& databases) {
  for (const Database& database : databases) {
    Database& copy = copies_.emplace_back();
    copy.file = database.file;
    copy.devices = plddb::MakeDeviceList();
    copy.devices->AddNewDeviceList(database.devices.get());  // not the copy of a database: one that fails leaves devices behind
    std::vector<const DeviceInfo*> copied;
    ForEachDevice(*copy.devices, [&](const DeviceInfo& device) { copied.push_back(&device); });
    auto next = copied.begin();
    ForEachDevice(*database.devices, [&](DeviceInfo& device) { originals_.emplace(*next++, &device); });
  }
}

void WorkingCopies::TakeOut(const DeviceInfo& copy) {
  FamilyList& family = *copy.GetFamilyObject();
  int position = 1;
  while (family.GetDevice(position - 1) != &copy) ++position;
  takenOut_.emplace_back();  // its place first
  takenOut_.back().reset(family.DeleteDevice(position));
}

bool WorkingCopies::KeepFamily(const std::string& name) {
  bool isKnown = false;
  for (const Database& database : copies_) isKnown = KeepOnlyFamily(*database.devices, name) || isKnown;
  return isKnown;
}

std::vector<std::string_view> NamesByKey(const std::vector<Database>& databases, const Key& key) {
  std::vector<std::string_view> names;
  if (key.nameOf == nullptr) return names;
  for (const Database& database : databases) {
    ForEachDevice(*database.devices, [&](const DeviceInfo& device) {
      if (const char* const name = key.nameOf(device)) names.emplace_back(name);
    });
  }
  return names;
}

std::vector<std::string_view> AllNames(const std::vector<Database>& databases) {
  std::vector<std::string_view> all;
  for (const Key& key : kKeys) {
    const auto names = NamesByKey(databases, key);
    all.insert(all.end(), names.begin(), names.end());
  }
  return all;
}

std::vector<std::string_view> FamilyNames(const std::vector<Database>& databases) {
  std::vector<std::string_view> names;
  for (const Database& database : databases) {
    for (int i = 0; const FamilyList* const family = database.devices->GetFamily(i); ++i) {
      for (const char* const name : {family->GetName(), family->GetAliasName()}) {
        if (name != nullptr) names.emplace_back(name);
      }
    }
  }
  return names;
}

}  // namespace tool
