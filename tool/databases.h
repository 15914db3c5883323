#pragma once

#include <string>
#include <vector>

#include "Descriptions.h"

namespace tool {

/// A description file and what it describes.
struct Database {
  std::string file;
  DeviceListOwner devices;
  plddb::Outline outline;  ///< The file's elements and their places, where they were asked for; else empty.
};

/// Whether the outlines of the files are wanted as well: they take time and memory.
enum class Outlines { kNo, kYes };

/// The description files that `paths` name, in this order; a folder stands for its *.xml files in name order. Without paths,
/// the data that was installed with the tool. Throws Failure for a folder without any.
std::vector<std::string> DescriptionFiles(const std::vector<std::string>& paths);

/// Loads the files that DescriptionFiles names, in place of those of an earlier call. Throws Failure with all faults of all
/// files. On purpose: they stay in memory until the process ends, since taking them apart takes as long as answering.
const std::vector<Database>& LoadDatabases(const std::vector<std::string>& paths, Outlines outlines = Outlines::kNo);

/// Calls `visit(device)` for every device that the lookups visit, in their order.
template <typename Visit>
void ForEachDevice(const DeviceList& devices, Visit visit) {
  for (int f = 0; FamilyList* family = devices.GetFamily(f); ++f) {
    for (unsigned short d = 0; DeviceInfo* device = family->GetDevice(d); ++d) visit(*device);
  }
}

}  // namespace tool
