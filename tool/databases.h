#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Descriptions.h"
#include "data_files.h"

namespace tool {

/// A description file and what it describes.
struct Database {
  std::string file;
  DeviceListOwner devices;
  Origin origin = Origin::kShipped;
  plddb::Outline outline;  ///< The file's elements and their places, where they were asked for; else empty.
  std::string text;        ///< The file's, likewise.
};

/// Whether the outlines of the files are wanted as well: they take time and memory.
enum class Outlines { kNo, kYes };

/// Loads the files that a command over `named`, the values of --db, reads (DataFiles), in place of those of an earlier call.
/// Throws Failure with all faults of all files. On purpose: they stay in memory until the process ends, since destroying
/// them takes an eighth of a command's time over the shipped data, and more over more.
const std::vector<Database>& LoadDatabases(const std::vector<std::string>& named, Outlines outlines = Outlines::kNo);

/// The same for the files that `paths` name, and no others.
const std::vector<Database>& LoadFiles(const std::vector<std::string>& paths, Outlines outlines = Outlines::kNo);

/// The makers of all devices, in the order of the devices; lent.
std::vector<std::string_view> Makers(const std::vector<Database>& databases);

}  // namespace tool
