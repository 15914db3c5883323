#pragma once

#include "DeviceList.h"
#include "family/walk.h"

namespace plddb::internal {

/// The first device of the database that satisfies `rule(const DeviceInfo&)`: families in list order, devices in load order.
/// Hidden families are visited like any other. On purpose: a family's 16-bit count limits the walk over its devices.
template <typename Rule>
DeviceInfo* FindDevice(const DeviceList& database, Rule rule) {
  for (int i = 0; const FamilyList* const family = database.GetFamily(i); ++i) {
    const int position = FindPosition(*family, family->GetDeviceCount(), rule);
    if (position >= 0) return family->GetDevice(position);
  }
  return nullptr;
}

/// Calls `visit(const DeviceInfo&)` for each device of the same walk.
template <typename Visit>
void ForEachDevice(const DeviceList& database, Visit visit) {
  FindDevice(database, [&](const DeviceInfo& device) {
    visit(device);
    return false;
  });
}

}  // namespace plddb::internal
