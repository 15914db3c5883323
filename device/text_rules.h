#pragma once

#include "DeviceInfo.h"
#include "foundation/text_match.h"
#include "package/walk.h"

/// \file
/// The rules by which lookups compare the texts of a device, shared by the lookups of a family and of a whole database.

namespace plddb::internal {

using DeviceText = char* (DeviceInfo::*)() const;

/// The text to compare in lookups that treat null as the empty text.
inline const char* OrEmpty(const char* text) { return text == nullptr ? "" : text; }

/// Accepts a device whose text equals `wanted`, ignoring case; texts of any length. A device without the text never matches.
template <DeviceText Text>
auto TextIs(const char* wanted) {
  return [wanted](const DeviceInfo& device) { return EqualIgnoringCase((device.*Text)(), wanted); };
}

/// Accepts a device whose carried-over text equals `wanted`, ignoring case; texts of more than 1,023 characters match nothing.
/// Evaluate it before other tests: it has to see every device.
template <DeviceText Text>
auto CarriedTextIs(const char* wanted) {
  if (!IsComparable(wanted)) wanted = nullptr;  // equals nothing
  return [wanted, carried = CarriedText()](const DeviceInfo& device) mutable {
    return EqualIgnoringCase(carried.Refresh((device.*Text)()), wanted);
  };
}

/// Accepts a device whose alias name equals `wanted`, ignoring case.
/// On purpose: a device of the vendor "Quorel" is never found by its alias name.
inline auto AliasIs(const char* wanted) {
  return [wanted](const DeviceInfo& device) {
    return EqualIgnoringCase(device.GetAliasName(), wanted) && !EqualExactly(device.GetVendor(), "Quorel");
  };
}

/// Accepts a device by its carried-over text and exactly this access mode.
template <DeviceText Text>
auto CarriedTextAndComm(const char* text, const char* comm) {
  return [hasText = CarriedTextIs<Text>(text), comm](const DeviceInfo& device) mutable {
    return hasText(device) && EqualExactly(device.GetComm(), comm);
  };
}

/// Accepts a device by its carried-over text and a package of exactly this type.
template <DeviceText Text>
auto CarriedTextAndPackage(const char* text, const char* packageType) {
  return [hasText = CarriedTextIs<Text>(text), packageType](const DeviceInfo& device) mutable {
    return hasText(device) && AnyPackage(*device.GetDevicePackage(),
                                         [&](const Package& package) { return EqualExactly(package.GetType(), packageType); });
  };
}

}  // namespace plddb::internal
