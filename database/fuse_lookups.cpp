// Lookups by what a fuse-map file or a boundary-scan description tells: fuse counts, full names and entity names.

#include <string>

#include "DeviceList.h"
#include "database/full_names.h"
#include "database/lookup_rules.h"
#include "database/walk.h"
#include "device/text_rules.h"

using namespace plddb::internal;

namespace {

/// Appends `text`, a name of `device`, to a list of candidates for a fuse count if the device is one.
void AppendCandidates(const DeviceInfo& device, unsigned long fuseCount, const char* text,
                      std::vector<std::string>& candidates) {
  if (device.GetFuseNumber() != fuseCount) {
    if (HasFuseAlias(device, fuseCount)) candidates.emplace_back(OrEmpty(text));
  } else if (EqualExactly(device.GetComm(), "DUAL")) {
    candidates.push_back(std::string(OrEmpty(text)) + "<ISP>");
    candidates.push_back(std::string(OrEmpty(text)) + "<JTAG>");
  } else {
    candidates.emplace_back(OrEmpty(text));
  }
}

}  // namespace

DeviceInfo* DeviceList::GetDeviceWithEntityName(const char* entityName) const {
  if (entityName == nullptr) return nullptr;
  return FindDevice(
      *this, [&](const DeviceInfo& device) { return device.GetPhysicalUESLength() != 0 && HasEntityName(device, entityName); });
}

DeviceInfo* DeviceList::GetDeviceWithEntityNameDisregardUES(const char* entityName) const {
  if (entityName == nullptr) return nullptr;
  return FindDevice(*this, [&](const DeviceInfo& device) { return HasEntityName(device, entityName); });
}

int DeviceList::GetDeviceCommISPWithFuseMap(unsigned long fuseCount) const {
  const DeviceInfo* const device = FindDevice(*this, [&](const DeviceInfo& candidate) {
    return candidate.GetFuseNumber() == fuseCount && EqualExactly(candidate.GetComm(), "ISP");
  });
  return device != nullptr ? 1 : 0;
}

DeviceInfo* DeviceList::GetDeviceWithFuseMapAndFullName(unsigned long fuseCount, const char* fullName) const {
  if (fullName == nullptr) return nullptr;
  const std::string wanted = NormalForm(fullName);
  return FindDevice(*this,
                    [&](const DeviceInfo& device) { return TakesFuseMap(device, fuseCount) && HasFullName(device, wanted); });
}

DeviceInfo* DeviceList::GetDeviceWithFuseMapAndFullNameEx(unsigned long fuseCount, const char* fullName) const {
  DeviceInfo* const device =
      FindDevice(*this, [&](const DeviceInfo& candidate) { return HasWholeFullName(candidate, fuseCount, fullName); });
  return device != nullptr ? device : GetDeviceWithFuseMapAndFullName(fuseCount, fullName);
}

int DeviceList::GetDeviceCodeNameWithFuseMap(unsigned long fuseCount, std::vector<std::string>& candidates) const {
  candidates.clear();
  ForEachDevice(*this,
                [&](const DeviceInfo& device) { AppendCandidates(device, fuseCount, device.GetCodeName(), candidates); });
  return static_cast<int>(candidates.size());
}

int DeviceList::GetDeviceWithFuseMap(unsigned long fuseCount, std::vector<std::string>& candidates) const {
  // On purpose: appends, unlike GetDeviceCodeNameWithFuseMap.
  ForEachDevice(*this, [&](const DeviceInfo& device) {
    if (device.GetPhysicalUESLength() != 0) AppendCandidates(device, fuseCount, device.GetName(), candidates);
  });
  return static_cast<int>(candidates.size());
}
