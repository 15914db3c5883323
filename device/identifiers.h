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

/// The numbers by which a device answers.
struct Identifiers {
  unsigned int isp;
  unsigned int jtag;
  unsigned int mask;
};

inline Identifiers IdentifiersOf(const DeviceInfo& device) {
  return {device.GetispDeviceID(), device.GetjtagDeviceID(), device.GetDeviceIDScanMask()};
}

/// Whether a device with these numbers answers to `id` under its scan mask; a mask of 0 keeps it out.
/// On purpose: "DUAL" is looser. Its ISP half compares the low byte alone and ignores the mask; both halves take identifiers
/// of 0.
inline bool AnswersTo(const Identifiers& own, AccessMode mode, unsigned int id) {
  switch (mode) {  // the comparison first: it turns most devices away
    case AccessMode::kIsp:
      return ((own.isp ^ id) & own.mask) == 0 && own.mask != 0 && own.isp != 0;
    case AccessMode::kJtag:
      return ((own.jtag ^ id) & own.mask) == 0 && own.mask != 0 && own.jtag != 0;
    case AccessMode::kDual:
      return (((own.isp ^ id) & 0xFF) == 0 || ((own.jtag ^ id) & own.mask) == 0) && own.mask != 0;
    case AccessMode::kUnknown:
      break;
  }
  return false;
}

inline bool AnswersTo(const DeviceInfo& device, AccessMode mode, unsigned int id) {
  return AnswersTo(IdentifiersOf(device), mode, id);
}

}  // namespace plddb::internal
