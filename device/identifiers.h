#pragma once

#include <type_traits>

#include "DeviceInfo.h"
#include "foundation/text_match.h"

/// \file
/// How a device answers to an identifier that was read from a chain.

namespace plddb::internal {

/// Which of a device's identifiers an access mode compares.
enum class AccessMode { kUnknown, kIsp, kJtag, kDual };

template <AccessMode mode>
using Mode = std::integral_constant<AccessMode, mode>;

/// Calls `use(mode)` with the access mode as a type: a walk that is made for its mode looks at each device's numbers alone.
template <typename Use>
auto WithAccessMode(const char* comm, Use use) {
  if (EqualExactly(comm, "ISP")) return use(Mode<AccessMode::kIsp>());
  if (EqualExactly(comm, "JTAG")) return use(Mode<AccessMode::kJtag>());
  if (EqualExactly(comm, "DUAL")) return use(Mode<AccessMode::kDual>());
  return use(Mode<AccessMode::kUnknown>());
}

/// Whether all 32 bits agree. An identifier of 0 is one like any other here.
inline bool HasIdentifier(const DeviceInfo& device, AccessMode mode, unsigned int id) {
  switch (mode) {
    case AccessMode::kIsp:
      return device.GetispDeviceID() == id;
    case AccessMode::kJtag:
      return device.GetjtagDeviceID() == id;
    case AccessMode::kDual:
      return device.GetispDeviceID() == id || device.GetjtagDeviceID() == id;
    case AccessMode::kUnknown:
      break;
  }
  return false;
}

/// Whether the device answers to `id` under its scan mask; a mask of 0 keeps it out.
/// On purpose: "DUAL" is looser. Its ISP half compares the low byte alone and ignores the mask; both halves take identifiers
/// of 0.
inline bool AnswersTo(const DeviceInfo& device, AccessMode mode, unsigned int id) {
  const unsigned int mask = device.GetDeviceIDScanMask();
  const unsigned int isp = device.GetispDeviceID();
  const unsigned int jtag = device.GetjtagDeviceID();
  switch (mode) {  // the comparison first: it turns most devices away
    case AccessMode::kIsp:
      return ((isp ^ id) & mask) == 0 && mask != 0 && isp != 0;
    case AccessMode::kJtag:
      return ((jtag ^ id) & mask) == 0 && mask != 0 && jtag != 0;
    case AccessMode::kDual:
      return (((isp ^ id) & 0xFF) == 0 || ((jtag ^ id) & mask) == 0) && mask != 0;
    case AccessMode::kUnknown:
      break;
  }
  return false;
}

}  // namespace plddb::internal
