#pragma once

#include <algorithm>
#include <climits>
#include <vector>

#include "FamilyList.h"

namespace plddb::internal {

/// The devices of a family as they lie in memory: what an accessor checks at each position costs more than most rules do.
struct FamilyWalk {
  static const std::vector<LObject*>& Devices(const FamilyList& family) { return family.Devices.elements_; }
};

/// The position of the first of the family's first `count` devices that satisfies `rule(const DeviceInfo&)`; -1 when none does.
/// The rule sees every device up to that one, in load order.
template <typename Rule>
int FindPosition(const FamilyList& family, int count, Rule& rule) {
  const std::vector<LObject*>& devices = FamilyWalk::Devices(family);
  const auto end = devices.begin() + std::min(count, static_cast<int>(devices.size()));
  const auto found =
      std::find_if(devices.begin(), end, [&](const LObject* device) { return rule(*static_cast<const DeviceInfo*>(device)); });
  return found == end ? -1 : static_cast<int>(found - devices.begin());
}

/// The first device of the whole family that satisfies the rule; null when none does.
/// On purpose: the list's own count bounds it, where walks over a database go by the family's 16-bit count.
template <typename Rule>
DeviceInfo* FindInFamily(const FamilyList& family, Rule rule) {
  return family.GetDevice(FindPosition(family, INT_MAX, rule));
}

}  // namespace plddb::internal
