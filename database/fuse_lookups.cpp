// Lookups by what a fuse-map file or a boundary-scan description tells: fuse counts, full names and entity names.

#include <string>
#include <string_view>

#include "DeviceList.h"
#include "database/full_names.h"
#include "database/walk.h"
#include "device/text_rules.h"
#include "foundation/characters.h"
#include "package/walk.h"

using namespace plddb::internal;

namespace {

/// Whether `entityName` is the entity name of a backup ordering number (ToEntityCharacter).
bool IsEntityNameOf(const char* number, const char* entityName) {
  for (const char* c = number;; ++c) {
    if (*c == ' ') continue;
    const char mapped = ToEntityCharacter(*c);
    if (mapped != ToLower(*entityName)) return false;
    if (mapped == '\0') return IsComparable(number);
    ++entityName;
  }
}

bool HasEntityName(const DeviceInfo& device, const char* entityName) {
  return AnyPackage(*device.GetDevicePackage(),
                    [&](const Package& package) { return IsEntityNameOf(OrEmpty(package.GetBackupPON()), entityName); });
}

/// Whether `text` differs from `wanted`, a normal form, at a character where it cannot be cut: then its own normal form does.
bool DiffersEarly(const char* text, std::string_view wanted) {
  for (auto next = wanted.begin(); next != wanted.end(); ++text) {
    if (*text == ' ') continue;
    if (ToUpper(*text) != *next) return *text != '-';
    ++next;
  }
  return false;
}

/// Whether the normal form of `text` is `wanted`, compared in place. A null text has none.
bool HasNormalForm(const char* text, std::string_view wanted) {
  if (text == nullptr || DiffersEarly(text, wanted)) return false;
  std::size_t length = 0;
  const auto agrees = [&](char c) { return length < wanted.size() && wanted[length++] == c; };
  return ForEachNormalCharacter(text, agrees) && length == wanted.size();
}

/// Whether a full name may belong to the device: by its own count only as "DUAL" or "JTAG"; on purpose, by an alias count in
/// any access mode.
bool TakesFuseMap(const DeviceInfo& device, unsigned long fuseCount) {
  if (device.GetFuseNumber() != fuseCount) return kAlias5892.Accepts(device, fuseCount);
  return EqualExactly(device.GetComm(), "DUAL") || EqualExactly(device.GetComm(), "JTAG");
}

/// Appends what `device` contributes to a list of candidates for a fuse count; `text` stands for it.
void AppendCandidates(const DeviceInfo& device, unsigned long fuseCount, const char* text,
                      std::vector<std::string>& candidates) {
  if (device.GetFuseNumber() != fuseCount) {
    const bool isAlias = kAlias5892.Accepts(device, fuseCount) || kAlias4988064.Accepts(device, fuseCount);
    if (isAlias) candidates.emplace_back(OrEmpty(text));
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
  return FindDevice(*this, [&](const DeviceInfo& device) {
    return TakesFuseMap(device, fuseCount) &&
           (HasNormalForm(device.GetCodeName(), wanted) || AnyPackage(*device.GetDevicePackage(), [&](const Package& package) {
              return HasNormalForm(package.GetPON(), wanted);
            }));
  });
}

DeviceInfo* DeviceList::GetDeviceWithFuseMapAndFullNameEx(unsigned long fuseCount, const char* fullName) const {
  DeviceInfo* const device = FindDevice(*this, [&](const DeviceInfo& candidate) {
    return candidate.GetFuseNumber() == fuseCount && EqualExactly(candidate.GetComm(), "JTAG") &&
           EqualIgnoringCase(candidate.GetCodeName(), fullName);
  });
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
