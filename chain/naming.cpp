#include <algorithm>

#include "chain/Chain.h"
#include "foundation/text_match.h"

namespace plddb::chain {
namespace {

bool IsNamed(const DeviceInfo& device, const char* name) {
  const auto isName = [&](const char* own) { return internal::EqualIgnoringCase(own, name); };
  if (isName(device.GetName()) || isName(device.GetCodeName()) || isName(device.GetAliasName())) return true;
  if (isName(device.GetPON())) return true;
  const FamilyList* const family = device.GetFamilyObject();
  if (family != nullptr && (isName(family->GetName()) || isName(family->GetAliasName()))) return true;
  for (int i = 0; const Package* const package = device.GetDevicePackage()->GetPackage(i); ++i) {
    if (isName(package->GetPON()) || isName(package->GetBackupPON()) || isName(package->GetAliasPON())) return true;
  }
  return false;
}

}  // namespace

bool IsNamed(const ChainPosition& position, const std::string& name) {
  const auto isNamed = [&](const Candidate& candidate) { return IsNamed(*candidate.device, name.c_str()); };
  return std::any_of(position.Candidates().begin(), position.Candidates().end(), isNamed);
}

}  // namespace plddb::chain
