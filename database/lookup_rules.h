#pragma once

#include <cstring>
#include <string_view>

#include "DeviceInfo.h"
#include "database/full_names.h"
#include "device/text_rules.h"
#include "foundation/characters.h"
#include "package/walk.h"

/// \file
/// The rules by which the lookups of a whole database accept a device for the numbers and names of its packages, and for its
/// fuse count.

namespace plddb::internal {

inline bool AgreesWithJDF(const char* stored, const char* jdfFile) {
  return stored != nullptr && std::strncmp(stored, jdfFile, kComparedJdfCharacters) == 0 &&
         std::strlen(stored) == std::strlen(jdfFile);
}

/// Whether a stored ordering number is `pon`, letter case ignored. `stripSuffix` leaves out what follows its last '-', the '-'
/// included, unless that is at the start.
inline bool AgreesWithPON(const char* stored, const char* pon, bool stripSuffix) {
  const char* const rest = stored == nullptr ? nullptr : AfterPrefix(stored, pon);
  if (rest == nullptr) return false;
  const char* const dash = stripSuffix ? std::strrchr(stored, '-') : nullptr;
  const bool isCut = dash != nullptr && dash != stored;
  return isCut ? rest == dash : *rest == '\0';
}

inline bool HasJDF(const DeviceInfo& device, const char* jdfFile) {
  return AnyPackage(*device.GetDevicePackage(),
                    [&](const Package& package) { return AgreesWithJDF(package.GetJDF(), jdfFile); });
}

inline bool HasPON(const DeviceInfo& device, const char* pon, bool stripSuffix) {
  return AnyPackage(*device.GetDevicePackage(), [&](const Package& package) {
    // On purpose: not GetPON, which the tool may have switched to a variant.
    return AgreesWithPON(package.GetBackupPON(), pon, stripSuffix) || AgreesWithPON(package.GetAliasPON(), pon, stripSuffix);
  });
}

/// Whether `entityName` is the entity name of a backup ordering number (ToEntityCharacter).
inline bool IsEntityNameOf(const char* number, const char* entityName) {
  for (const char* c = number;; ++c) {
    if (*c == ' ') continue;
    const char mapped = ToEntityCharacter(*c);
    if (mapped != ToLower(*entityName)) return false;
    if (mapped == '\0') return IsComparable(number);
    ++entityName;
  }
}

inline bool HasEntityName(const DeviceInfo& device, const char* entityName) {
  return AnyPackage(*device.GetDevicePackage(),
                    [&](const Package& package) { return IsEntityNameOf(OrEmpty(package.GetBackupPON()), entityName); });
}

/// Whether `text` differs from `wanted`, a normal form, at a character where it cannot be cut: then its own normal form does.
inline bool DiffersEarly(const char* text, std::string_view wanted) {
  for (auto next = wanted.begin(); next != wanted.end(); ++text) {
    if (*text == ' ') continue;
    if (ToUpper(*text) != *next) return *text != '-';
    ++next;
  }
  return false;
}

/// Whether the normal form of `text` is `wanted`, compared in place. A null text has none.
inline bool HasNormalForm(const char* text, std::string_view wanted) {
  if (text == nullptr || DiffersEarly(text, wanted)) return false;
  std::size_t length = 0;
  const auto agrees = [&](char c) { return length < wanted.size() && wanted[length++] == c; };
  return ForEachNormalCharacter(text, agrees) && length == wanted.size();
}

/// Whether a full name may belong to the device: by its own count only as "DUAL" or "JTAG"; on purpose, by an alias count in
/// any access mode.
inline bool TakesFuseMap(const DeviceInfo& device, unsigned long fuseCount) {
  if (device.GetFuseNumber() != fuseCount) return kAlias5892.Accepts(device, fuseCount);
  return EqualExactly(device.GetComm(), "DUAL") || EqualExactly(device.GetComm(), "JTAG");
}

/// Whether the code name or an ordering number of the device has the normal form `wanted`.
inline bool HasFullName(const DeviceInfo& device, std::string_view wanted) {
  return HasNormalForm(device.GetCodeName(), wanted) || AnyPackage(*device.GetDevicePackage(), [&](const Package& package) {
           return HasNormalForm(package.GetPON(), wanted);
         });
}

/// Whether `fullName`, whole, is the code name of a "JTAG" device with this fuse count.
inline bool HasWholeFullName(const DeviceInfo& device, unsigned long fuseCount, const char* fullName) {
  return device.GetFuseNumber() == fuseCount && EqualExactly(device.GetComm(), "JTAG") &&
         EqualIgnoringCase(device.GetCodeName(), fullName);
}

/// Whether lists of candidates for `fuseCount` hold the device, whose own count is another one.
inline bool HasFuseAlias(const DeviceInfo& device, unsigned long fuseCount) {
  return kAlias5892.Accepts(device, fuseCount) || kAlias4988064.Accepts(device, fuseCount);
}

}  // namespace plddb::internal
