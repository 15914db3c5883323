#pragma once

#include <string>
#include <vector>

#include "databases.h"

namespace tool {

/// A device that answers to an id, and where it comes from.
struct Candidate {
  const DeviceInfo* device;
  const Database* database;
};

/// One position of a chain: the id that was read there and who answers to it.
struct ChainPosition {
  unsigned int id;
  const DeviceInfo* match;            ///< What the library finds first; null for an unknown id.
  std::vector<Candidate> candidates;  ///< All that answer, in search order: the first is `match`.
};

/// Identifies `id` in the access mode `comm` by GetDeviceWithCommAndID, in each database in turn.
ChainPosition Identify(const std::vector<Database>& databases, const std::string& comm, unsigned int id);

/// The bits of `id` by which `device` answers to it in the access mode `comm`, 0 when it does not: the lookups' identifier
/// test, asked of one device.
unsigned int AgreeingBits(const DeviceInfo& device, const std::string& comm, unsigned int id);

}  // namespace tool
