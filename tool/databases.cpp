#include "databases.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "command.h"
#include "progress.h"
#include "standard_streams.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

/// Pipes, devices and folders are passed over: reading them might never end. A link that leads nowhere is not, so that the
/// loader reports it.
bool MayBeFile(const fs::directory_entry& entry) {
  std::error_code unknown;
  const fs::file_type type = entry.status(unknown).type();
  return type == fs::file_type::regular || type == fs::file_type::not_found || type == fs::file_type::none;
}

/// Empty where there is no such folder.
std::vector<std::string> DescriptionsIn(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code failed;
  for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed)) {
    if (entry->path().extension() == ".xml" && MayBeFile(*entry)) files.push_back(entry->path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<std::string> InstalledDescriptions() {
  const std::string folder = plddb::DataFolder();
  auto files = DescriptionsIn(folder);
  if (files.empty()) throw Failure("plddb: error: no device descriptions in " + folder + "; name a file with --db");
  return files;
}

std::vector<std::string> DescriptionsOf(const std::string& path) {
  std::error_code ignored;
  if (!fs::is_directory(path, ignored)) return {path};  // the loader says what is wrong with a path that is not there
  auto files = DescriptionsIn(path);
  if (files.empty()) throw Failure(path + ":1:1: error: no *.xml file in this folder");
  return files;
}

}  // namespace

std::vector<std::string> DescriptionFiles(const std::vector<std::string>& paths) {
  if (paths.empty()) return InstalledDescriptions();
  std::vector<std::string> files;
  for (const std::string& path : paths) {
    for (std::string& file : DescriptionsOf(path)) files.push_back(std::move(file));
  }
  return files;
}

const std::vector<Database>& LoadDatabases(const std::vector<std::string>& paths, Outlines outlines) {
  static auto& databases = *new std::vector<Database>();
  databases.clear();
  std::string faults;
  const std::vector<std::string> files = DescriptionFiles(paths);
  Progress progress(files.size(), isatty(STDERR_FILENO) == 1 ? WriteMessage : nullptr);
  for (const std::string& file : files) {
    progress.Next(file);
    Database& database = databases.emplace_back();
    plddb::LoadResult loaded = plddb::LoadDescriptions(file, outlines == Outlines::kYes ? &database.outline : nullptr);
    for (const plddb::Fault& fault : loaded.faults) faults += (faults.empty() ? "" : "\n") + plddb::ToString(fault);
    database.file = file;
    database.devices = std::move(loaded.database);
  }
  if (!faults.empty()) throw Failure(faults);
  return databases;
}

}  // namespace tool
