#pragma once

#include <memory>

#include "DeviceInfo.h"
#include "DeviceList.h"
#include "FamilyList.h"

/// \file
/// Owning a whole tree. A bare DeviceList never frees its devices; these classes and functions do, devices before families.

namespace plddb {

/// Destroys all devices of `family` and leaves it empty. Never fails.
inline void ReleaseDevices(FamilyList& family) noexcept {
  int count = 0;
  while (family.GetDevice(count) != nullptr) ++count;
  for (; count > 0; --count) delete family.DeleteDevice(count);
}

/// Destroys all devices of all families of `database`; the families stay. Never fails.
inline void ReleaseDevices(DeviceList& database) noexcept {
  for (int i = 0; FamilyList* family = database.GetFamily(i); ++i) ReleaseDevices(*family);
}

/// The deleter of DeviceListOwner.
struct DeviceListDeleter {
  /// Destroys `database` with all its families and devices; does nothing for null. Never fails.
  void operator()(DeviceList* database) const noexcept {
    if (database == nullptr) return;
    ReleaseDevices(*database);
    delete database;
  }
};

/// Owns a database with all its families and devices.
using DeviceListOwner = std::unique_ptr<DeviceList, DeviceListDeleter>;

/// Makes an empty database; the result owns all of it.
inline DeviceListOwner MakeDeviceList() { return DeviceListOwner(new DeviceList); }

/// Makes a deep copy of `source`; the result owns all of it.
inline DeviceListOwner CopyDeviceList(DeviceList& source) { return DeviceListOwner(new DeviceList(&source)); }

/// `target = source`, but also releases the old devices of `target`: do not use them afterwards. Assigning a database to itself
/// changes nothing. After std::bad_alloc the old content is gone, and the families appended so far are kept.
inline void AssignDeviceList(DeviceList& target, DeviceList& source) {
  if (&target == &source) return;
  ReleaseDevices(target);
  target = source;
}

}  // namespace plddb

// The names of version 1. Version 2 removes them.
using plddb::AssignDeviceList;
using plddb::CopyDeviceList;
using plddb::DeviceListDeleter;
using plddb::DeviceListOwner;
using plddb::MakeDeviceList;
using plddb::ReleaseDevices;
