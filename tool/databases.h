#pragma once

#include <string>
#include <vector>

#include "DeviceListOwner.h"

namespace tool {

/// A description file and what it describes.
struct Database {
  std::string file;
  DeviceListOwner devices;
};

/// Loads the description files `paths`, in this order; a folder stands for its *.xml files in name order. Without paths, the
/// data that was installed with the tool. Throws Failure with all faults of all files.
std::vector<Database> LoadDatabases(const std::vector<std::string>& paths);

/// Calls `visit(device)` for every device that the lookups visit, in their order.
template <typename Visit>
void ForEachDevice(const DeviceList& devices, Visit visit) {
  for (int f = 0; FamilyList* family = devices.GetFamily(f); ++f) {
    for (unsigned short d = 0; DeviceInfo* device = family->GetDevice(d); ++d) visit(*device);
  }
}

}  // namespace tool
