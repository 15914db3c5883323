#pragma once

#include <type_traits>

#include "DeviceInfo.h"
#include "foundation/text_match.h"

/// \file
/// How an identifier read from a chain is compared with those of a device.

namespace plddb::internal {

constexpr unsigned int kVersionBits = 0xF0000000;  ///< Of an IDCODE: makers raise them without changing the name.

/// Which of a device's identifiers an access mode compares.
enum class AccessMode { kUnknown, kIsp, kJtag, kDual };

template <AccessMode mode>
using Mode = std::integral_constant<AccessMode, mode>;

/// Calls `use(mode)` with the access mode as a type, so that a walk compiled for one mode reads each device's numbers only.
template <typename Use>
auto WithAccessMode(const char* comm, Use use) {
  if (EqualExactly(comm, "ISP")) return use(Mode<AccessMode::kIsp>());
  if (EqualExactly(comm, "JTAG")) return use(Mode<AccessMode::kJtag>());
  if (EqualExactly(comm, "DUAL")) return use(Mode<AccessMode::kDual>());
  return use(Mode<AccessMode::kUnknown>());
}

/// Whether all 32 bits are equal. Here 0 is an identifier like any other.
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

/// The numbers that decide whether a device answers.
struct Identifiers {
  unsigned int isp;
  unsigned int jtag;
  unsigned int mask;
};

inline Identifiers IdentifiersOf(const DeviceInfo& device) {
  return {device.GetispDeviceID(), device.GetjtagDeviceID(), device.GetDeviceIDScanMask()};
}

/// Whether a device with these numbers answers to `id` under its scan mask; with a mask of 0 it never does.
/// On purpose: "DUAL" is looser. Its ISP half compares only the low byte and ignores the mask; both halves accept identifiers
/// of 0.
inline bool AnswersTo(const Identifiers& own, AccessMode mode, unsigned int id) {
  switch (mode) {  // the comparison first: it rejects most devices
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
