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

std::vector<std::string> DescriptionsIn(const fs::path& folder) {
  std::vector<std::string> files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == ".xml") files.push_back(entry.path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

/// Where the tool's own data may lie: beside the running program, so that an installation may be moved as a whole; else where
/// it was to be installed.
std::vector<fs::path> DataFolders() {
  std::vector<fs::path> folders = {PLDDB_INSTALLED_DATA};
  std::error_code unknown;
  const fs::path program = fs::read_symlink("/proc/self/exe", unknown);
  if (!unknown) folders.insert(folders.begin(), program.parent_path().parent_path() / "share" / "plddb");
  return folders;
}

std::vector<std::string> InstalledDescriptions() {
  std::string searched;
  for (const fs::path& folder : DataFolders()) {
    std::error_code ignored;
    if (fs::is_directory(folder, ignored)) {
      if (auto files = DescriptionsIn(folder); !files.empty()) return files;
    }
    searched += (searched.empty() ? "" : ", ") + folder.string();
  }
  throw Failure("plddb: error: no device descriptions in " + searched + "; name a file with --db");
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
