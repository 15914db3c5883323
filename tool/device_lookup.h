#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "databases.h"

/// \file
/// The keys by which devices are looked up, and how several databases are asked.

namespace tool {

/// A key by which devices are looked up: in a whole database, or in one family where there is a lookup for that; a family
/// without one is asked as a database of its own.
struct Key {
  const char* name;
  const char* help;
  const DeviceInfo* (*inDatabase)(const DeviceList& database, const char* text);
  const DeviceInfo* (*inFamily)(const FamilyList& family, const char* text);               ///< May be null.
  const DeviceInfo* (*otherwise)(const DeviceList& database, const char* text) = nullptr;  ///< When no database answered.
  const char* (*nameOf)(const DeviceInfo& device) = nullptr;  ///< Null for a key that is no name of the device.
};

/// In the order in which a text that may be any of them is tried.
extern const std::array<Key, 6> kKeys;

using Lookup = std::function<const DeviceInfo*(DeviceList& database)>;

/// The first answer of `lookup`, in the order of the databases; null when there is none.
const DeviceInfo* FirstOf(const std::vector<Database>& databases, const Lookup& lookup);

/// The first device that has `text` as its `key`. With `in_family`, of the first family of each database, the only one there.
const DeviceInfo* FindByKey(const std::vector<Database>& databases, const Key& key, const char* text, bool in_family = false);

/// Copies of databases, from which devices and families may be left out: answering never changes the databases themselves.
class WorkingCopies {
 public:
  explicit WorkingCopies(const std::vector<Database>& databases);

  const std::vector<Database>& Databases() const { return copies_; }

  /// The device of which `copy` is one; lent by its database.
  DeviceInfo& Original(const DeviceInfo& copy) const { return *originals_.at(&copy); }

  /// Takes a device out of its family, so that lookups find the next one. It lives on.
  void TakeOut(const DeviceInfo& copy);

  /// Leaves the family `name` (or alias name) alone in each database; false, and no family anywhere, when none has it.
  bool KeepFamily(const std::string& name);

 private:
  std::vector<Database> copies_;
  std::vector<std::unique_ptr<DeviceInfo>> takenOut_;
  std::unordered_map<const DeviceInfo*, DeviceInfo*> originals_;
};

/// The names of all devices by which `key` finds them; none for a key that is no name. Lent by the devices.
std::vector<std::string_view> NamesByKey(const std::vector<Database>& databases, const Key& key);

/// The names by which any key finds a device.
std::vector<std::string_view> AllNames(const std::vector<Database>& databases);

/// The names and alias names of all families. Lent by the families.
std::vector<std::string_view> FamilyNames(const std::vector<Database>& databases);

}  // namespace tool
