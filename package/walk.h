#pragma once

#include <algorithm>
#include <vector>

#include "PackageList.h"

namespace plddb::internal {

/// The packages of a list as they lie in memory.
struct PackageWalk {
  static const std::vector<LObject*>& Packages(const PackageList& list) { return list.Packages.elements_; }
};

/// The first package of `list`, in order, that satisfies `rule(const Package&)`; null when none does.
/// On purpose: the 16-bit count bounds the walk.
template <typename Rule>
Package* FindPackage(const PackageList& list, Rule rule) {
  const std::vector<LObject*>& packages = PackageWalk::Packages(list);
  const auto end = packages.begin() + list.GetPackageCount();
  const auto found =
      std::find_if(packages.begin(), end, [&](const LObject* package) { return rule(*static_cast<const Package*>(package)); });
  return found == end ? nullptr : static_cast<Package*>(*found);
}

template <typename Rule>
bool AnyPackage(const PackageList& list, Rule rule) {
  return FindPackage(list, rule) != nullptr;
}

}  // namespace plddb::internal
