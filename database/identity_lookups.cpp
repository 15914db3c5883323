// Lookups by what identifies a part: names, access mode, packages, identifiers, file names and ordering numbers.

#include <cstring>

#include "DeviceList.h"
#include "database/full_names.h"
#include "database/walk.h"
#include "device/identifiers.h"
#include "device/text_rules.h"
#include "package/walk.h"

using namespace plddb::internal;

namespace {

bool AgreesWithJDF(const char* stored, const char* jdfFile) {
  return stored != nullptr && std::strncmp(stored, jdfFile, kComparedJdfCharacters) == 0 &&
         std::strlen(stored) == std::strlen(jdfFile);
}

/// Whether a stored ordering number is `pon`, letter case ignored. `stripSuffix` leaves out what follows its last '-', the '-'
/// included, unless that stands at the start.
bool AgreesWithPON(const char* stored, const char* pon, bool stripSuffix) {
  const char* const rest = stored == nullptr ? nullptr : AfterPrefix(stored, pon);
  if (rest == nullptr) return false;
  const char* const dash = stripSuffix ? std::strrchr(stored, '-') : nullptr;
  const bool isCut = dash != nullptr && dash != stored;
  return isCut ? rest == dash : *rest == '\0';
}

}  // namespace

DeviceInfo* DeviceList::GetDeviceWithName(const char* name) const {
  return FindDevice(*this, TextIs<&DeviceInfo::GetName>(name));
}

DeviceInfo* DeviceList::GetDeviceWithCodeName(const char* codeName) const {
  DeviceInfo* const device = FindDevice(*this, TextIs<&DeviceInfo::GetCodeName>(codeName));
  return device != nullptr ? device : FindDevice(*this, AliasIs(codeName));
}

DeviceInfo* DeviceList::GetDeviceWithPON(const char* pon, bool stripSuffix) const {
  if (pon == nullptr) return nullptr;
  return FindDevice(*this, [&](const DeviceInfo& device) {
    return AnyPackage(*device.GetDevicePackage(), [&](const Package& package) {
      // On purpose: not GetPON, which the tool may have switched to a variant.
      return AgreesWithPON(package.GetBackupPON(), pon, stripSuffix) || AgreesWithPON(package.GetAliasPON(), pon, stripSuffix);
    });
  });
}

DeviceInfo* DeviceList::GetDeviceWithComm(const char* comm, const char* name) const {
  return FindDevice(*this, CarriedTextAndComm<&DeviceInfo::GetName>(name, comm));
}

DeviceInfo* DeviceList::GetDeviceWithCommAndCodeName(const char* comm, const char* codeName) const {
  return FindDevice(*this, CarriedTextAndComm<&DeviceInfo::GetCodeName>(codeName, comm));
}

DeviceInfo* DeviceList::GetDeviceWithPackage(const char* packageType, const char* name) const {
  return FindDevice(*this, CarriedTextAndPackage<&DeviceInfo::GetName>(name, packageType));
}

DeviceInfo* DeviceList::GetDeviceWithPackageAndCodeName(const char* packageType, const char* codeName) const {
  return FindDevice(*this, CarriedTextAndPackage<&DeviceInfo::GetCodeName>(codeName, packageType));
}

DeviceInfo* DeviceList::GetDeviceWithCommAndID(const char* comm, unsigned int id) const {
  if (id == 0) return nullptr;
  return WithAccessMode(comm, [&](auto mode) {
    return FindDevice(*this, [&](const DeviceInfo& device) { return AnswersTo(device, mode, id); });
  });
}

DeviceInfo* DeviceList::GetDeviceWithCommAndIDAndCodeName(const char* comm, unsigned int id, const char* codeName) const {
  if (id == 0) return nullptr;
  return WithAccessMode(comm, [&](auto mode) {
    return FindDevice(*this, [&](const DeviceInfo& device) {
      return AnswersTo(device, mode, id) && EqualExactly(device.GetCodeName(), codeName);  // On purpose: letter case counts.
    });
  });
}

DeviceInfo* DeviceList::GetDeviceWithCommAndIDNoMask(const char* comm, unsigned int id) const {
  if (id == 0) return nullptr;
  return WithAccessMode(comm, [&](auto mode) {
    return FindDevice(*this, [&](const DeviceInfo& device) { return HasIdentifier(device, mode, id); });
  });
}

int DeviceList::GetDeviceListWithCommAndID(const char* comm, unsigned int id) {
  if (id == 0) return 0;
  WithAccessMode(comm, [&](auto mode) {
    listDevicenames.clear();  // only now: `comm` may lie in it
    ForEachDevice(*this, [&](const DeviceInfo& device) {
      if (AnswersTo(device, mode, id)) listDevicenames.emplace_back(OrEmpty(device.GetCodeName()));
    });
  });
  return static_cast<int>(listDevicenames.size());
}

int DeviceList::GetDeviceListWithCommAndID(const char* comm, unsigned int id, std::vector<std::string>& codeNames) {
  if (id == 0) return 0;
  const int count = GetDeviceListWithCommAndID(comm, id);
  codeNames.clear();
  for (const std::string& codeName : listDevicenames) {
    if (!codeName.empty()) codeNames.push_back(codeName);
  }
  return count;
}

DeviceInfo* DeviceList::GetDeviceWithJDFFileName(const char* jdfFile) const {
  if (jdfFile == nullptr) return nullptr;
  return FindDevice(*this, [&](const DeviceInfo& device) {
    return AnyPackage(*device.GetDevicePackage(),
                      [&](const Package& package) { return AgreesWithJDF(package.GetJDF(), jdfFile); });
  });
}
