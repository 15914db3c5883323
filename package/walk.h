#pragma once

#include "PackageList.h"

namespace plddb::internal {

/// The first package of `list`, in order, that satisfies `rule(const Package&)`; null if none does.
/// On purpose: the 16-bit count limits the walk.
template <typename Rule>
Package* FindPackage(const PackageList& list, Rule rule) {
  const int count = list.GetPackageCount();
  for (int i = 0; i < count; ++i) {
    Package* const package = list.GetPackage(i);
    if (rule(*package)) return package;
  }
  return nullptr;
}

template <typename Rule>
bool AnyPackage(const PackageList& list, Rule rule) {
  return FindPackage(list, rule) != nullptr;
}

}  // namespace plddb::internal
