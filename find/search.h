#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "database/walk.h"
#include "find/Find.h"
#include "foundation/text_match.h"
#include "package/walk.h"

/// \file
/// How databases are walked and matches are collected.

namespace plddb::find {

/// Longer texts are compared whole only: the limit bounds the time of a search for parts.
inline constexpr std::size_t kLongestPart = internal::kLongestComparedText;

bool HasFamilyName(const FamilyList& family, const std::string& name);

/// Calls `visit(family, device, database)` for the devices of the families that are called `family`, or of all when it is
/// empty.
template <typename Visit>
void ForEachDevice(const Databases& databases, const std::string& family, Visit visit) {
  for (std::size_t i = 0; i < databases.size(); ++i) {
    if (databases[i] == nullptr) continue;
    for (int f = 0; const FamilyList* const list = databases[i]->GetFamily(f); ++f) {
      if (!family.empty() && !HasFamilyName(*list, family)) continue;
      const auto rule = [&](const DeviceInfo& device) {
        visit(*list, device, i);
        return false;
      };
      internal::FindPosition(*list, list->GetDeviceCount(), rule);
    }
  }
}

/// Matches of one kind, each device once.
class Collector {
 public:
  explicit Collector(Kind kind) : kind_(kind) {}

  void Add(const DeviceInfo& device, std::size_t database, Key key);
  bool IsEmpty() const { return matches_.empty(); }
  Matches Take() { return std::move(matches_); }

 private:
  Kind kind_;
  Matches matches_;
  std::unordered_map<const DeviceInfo*, std::size_t> positions_;  // in matches_
};

/// Calls `visit(const char*)` for each text of the device by which `key` finds it; never with null or the empty text.
template <typename Visit>
void ForEachText(const FamilyList& family, const DeviceInfo& device, Key key, Visit visit) {
  const auto give = [&](const char* text) {
    if (text != nullptr && *text != '\0') visit(text);
  };
  const auto ofPackages = [&](auto text) {
    internal::AnyPackage(*device.GetDevicePackage(), [&](const Package& package) {
      give((package.*text)());
      return false;
    });
  };
  switch (key) {
    case Key::kName:
      return give(device.GetName());
    case Key::kCodeName:
      return give(device.GetCodeName());
    case Key::kAlias:
      return give(device.GetAliasName());
    case Key::kFamily:
      give(family.GetName());
      return give(family.GetAliasName());
    case Key::kPackage:
      return ofPackages(&Package::GetType);
    case Key::kPon:
      ofPackages(&Package::GetBackupPON);
      return ofPackages(&Package::GetAliasPON);
    case Key::kJdf:
      return ofPackages(&Package::GetJDF);
    default:
      return;
  }
}

/// The devices one of whose names `agrees(const char*)`: names, families, package types and ordering numbers.
template <typename Rule>
Matches FindNames(const Databases& databases, const std::string& family, Kind kind, Rule agrees) {
  Collector found(kind);
  for (const Key key : {Key::kName, Key::kCodeName, Key::kAlias, Key::kPon, Key::kFamily, Key::kPackage}) {
    ForEachDevice(databases, family, [&](const FamilyList& list, const DeviceInfo& device, std::size_t database) {
      bool isFound = false;
      ForEachText(list, device, key, [&](const char* text) { isFound = isFound || agrees(text); });
      if (isFound) found.Add(device, database, key);
    });
  }
  return found.Take();
}

/// Patterns, beginnings and parts of names.
Matches FindPattern(const Databases& databases, const std::string& text, const std::string& family);
Matches FindBeginning(const Databases& databases, const std::string& text, const std::string& family);
Matches FindPart(const Databases& databases, const std::string& text, const std::string& family);

/// Marks on chips.
Matches FindMark(const Databases& databases, const std::string& text, const std::string& family);

}  // namespace plddb::find
