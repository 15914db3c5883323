#include <algorithm>

#include "chain/Chain.h"
#include "family/printed_names.h"
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

std::string DeviceName(const DeviceInfo& device) { return internal::PrintedName(device); }

std::string FamilyName(const DeviceInfo& device) { return internal::PrintedName(device.GetFamilyObject()); }

bool IsNeighbour(const DeviceInfo& device) {
  const FamilyList* const family = device.GetFamilyObject();
  return family != nullptr && family->IsHidden();
}

std::string HintOn(const DeviceInfo& device) {
  const char* const hint = device.GetAccess();
  return !IsNeighbour(device) || hint == nullptr ? "" : internal::Printable(hint);
}

std::string KindText(const std::string& comm, const ChainPosition& position) {
  const DeviceInfo* const device = position.Match();
  if (device == nullptr) return KindOf(comm, position.id).name;
  return IsNeighbour(*device) ? FamilyName(*device) : "logic";
}

}  // namespace plddb::chain
