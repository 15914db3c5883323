#include "find/search.h"

#include "device/text_rules.h"

namespace plddb::find {

bool HasFamilyName(const FamilyList& family, const std::string& name) {
  return internal::EqualIgnoringCase(family.GetName(), name.c_str()) ||
         internal::EqualIgnoringCase(family.GetAliasName(), name.c_str());
}

void Collector::Add(const DeviceInfo& device, std::size_t database, Key key) {
  const auto [known, isNew] = positions_.try_emplace(&device, matches_.size());
  if (isNew) {
    matches_.push_back({&device, database, kind_, {key}});
  } else if (matches_[known->second].keys.back() != key) {
    matches_[known->second].keys.push_back(key);
  }
}

}  // namespace plddb::find
