#pragma once

#include <climits>

#include "FamilyList.h"

namespace plddb::internal {

/// The position of the first device, among the family's first `count`, that satisfies `rule(const DeviceInfo&)`; -1 if none
/// does. The rule sees every device up to that one, in load order.
template <typename Rule>
int FindPosition(const FamilyList& family, int count, Rule& rule) {
  for (int i = 0; i < count; ++i) {
    const DeviceInfo* const device = family.GetDevice(i);
    if (device == nullptr) return -1;
    if (rule(*device)) return i;
  }
  return -1;
}

/// The first device of the whole family that satisfies the rule; null if none does.
/// On purpose: the list's own count limits it, whereas walks over a database use the family's 16-bit count.
template <typename Rule>
DeviceInfo* FindInFamily(const FamilyList& family, Rule rule) {
  return family.GetDevice(FindPosition(family, INT_MAX, rule));
}

}  // namespace plddb::internal
