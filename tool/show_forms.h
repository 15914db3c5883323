#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Find.h"
#include "databases.h"

/// \file
/// The forms in which plddb show describes the first of the devices that match.

namespace tool {

/// The modes of chain processing, 0 to 6, in which the device only passes data through.
std::vector<int> BypassModes(const DeviceInfo& device);

/// Describing takes a device that may be changed, and changes nothing.
DeviceInfo& Writable(const DeviceInfo& device);

/// The first of `matches`, which are not empty, with all that is set; and `shown` of the others.
std::string DeviceJson(const std::vector<Database>& databases, const plddb::find::Matches& matches, std::size_t shown);

}  // namespace tool
