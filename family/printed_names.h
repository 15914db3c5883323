#pragma once

#include <string>

#include "FamilyList.h"
#include "foundation/printed_forms.h"

/// \file
/// What messages and tables call devices and families; "-" for one without a name.

namespace plddb::internal {

/// The name, or else the code name.
inline std::string PrintedName(const DeviceInfo& device) {
  const char* const name = device.GetName();
  return TextOrDash(name == nullptr || *name == '\0' ? device.GetCodeName() : name);
}

/// Of no family: "-".
inline std::string PrintedName(const FamilyList* family) { return TextOrDash(family == nullptr ? nullptr : family->GetName()); }

}  // namespace plddb::internal
