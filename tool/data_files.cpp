#include "data_files.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

#include "Descriptions.h"
#include "command.h"
#include "device_text.h"

namespace tool {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<std::string>;

bool IsFolder(const fs::path& path) {
  std::error_code ignored;
  return fs::is_directory(path, ignored);
}

/// Pipes, devices and folders are skipped: reading them might never end. A broken link is not skipped, so that the loader
/// reports it.
bool MayBeFile(const fs::directory_entry& entry) {
  std::error_code unknown;
  const fs::file_type type = entry.status(unknown).type();
  return type == fs::file_type::regular || type == fs::file_type::not_found || type == fs::file_type::none;
}

/// Editors and file systems leave hidden files next to the original: .#x.xml, ._x.xml.
bool IsDescription(const fs::directory_entry& entry) {
  const fs::path name = entry.path().filename();
  return name.extension() == ".xml" && name.native().front() != '.' && MayBeFile(entry);
}

Paths DescriptionsIn(const fs::path& folder) {
  Paths files;
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    if (IsDescription(*entry)) files.push_back(entry->path().string());
  }
  if (error) throw Failure(Printable(folder.string()) + ":1:1: error: cannot read the folder: " + error.message());
  std::sort(files.begin(), files.end());
  return files;
}

/// The loader reports a path that does not exist. "-" is standard input, also beside a folder of that name.
Paths DescriptionsOf(const std::string& path) {
  return path != kStandardStream && IsFolder(path) ? DescriptionsIn(path) : Paths{path};
}

Paths ShippedFiles() {
  const std::string folder = plddb::DataFolder();
  return IsFolder(folder) ? DescriptionsIn(folder) : Paths();
}

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

/// Empty parts are ignored.
Paths EnvironmentFiles() {
  const std::string path = Environment("PLDDB_PATH");
  Paths files;
  for (std::size_t start = 0; start < path.size();) {
    const std::size_t end = std::min(path.find(':', start), path.size());
    if (end > start) {
      for (std::string& file : DescriptionsOf(path.substr(start, end - start))) files.push_back(std::move(file));
    }
    start = end + 1;
  }
  return files;
}

/// A relative XDG_CONFIG_HOME is ignored, as its standard requires.
Paths UserFiles() {
  fs::path folder = Environment("XDG_CONFIG_HOME");
  if (!folder.is_absolute()) {
    const fs::path home = Environment("HOME");
    if (home.empty()) return {};
    folder = home / ".config";
  }
  folder /= "plddb";
  return IsFolder(folder) ? DescriptionsIn(folder) : Paths();
}

/// The files of all origins. Those of the command line are kept as given; of the others, repeated files are left out.
class Collected {
 public:
  void Add(Paths paths, Origin origin) {
    for (std::string& path : paths) {
      if (IsNew(path) || origin == Origin::kCommandLine) files_.push_back({std::move(path), origin});
    }
  }

  std::vector<DataFile> Take() { return std::move(files_); }
  bool empty() const { return files_.empty(); }

 private:
  /// Whether no other path leads to the same file. One that does not exist is reported when it is loaded.
  bool IsNew(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) != 0 || seen_.emplace(status.st_dev, status.st_ino).second;
  }

  std::vector<DataFile> files_;
  std::set<std::pair<dev_t, ino_t>> seen_;
};

}  // namespace

const char* NameOf(Origin origin) {
  constexpr const char* names[] = {"command line", "PLDDB_PATH", "user", "shipped"};
  return names[static_cast<int>(origin)];
}

std::vector<std::string> DescriptionFiles(const std::vector<std::string>& paths) {
  Paths all;
  for (const std::string& path : paths) {
    Paths files = DescriptionsOf(path);
    if (files.empty()) throw Failure(Printable(path) + ":1:1: error: no *.xml file in this folder");
    all.insert(all.end(), files.begin(), files.end());
  }
  return all;
}

std::vector<DataFile> DataFiles(const std::vector<std::string>& named) {
  Paths first;
  Paths instead;
  for (const std::string& path : named) {
    if (path.empty() || path == "+") throw WrongUsage("--db: the name of a file or folder is missing");
    path.front() == '+' ? first.push_back(path.substr(1)) : instead.push_back(path);
  }
  Collected files;
  files.Add(DescriptionFiles(first), Origin::kCommandLine);
  files.Add(DescriptionFiles(instead), Origin::kCommandLine);
  if (instead.empty()) {
    files.Add(EnvironmentFiles(), Origin::kEnvironment);
    files.Add(UserFiles(), Origin::kUser);
    files.Add(ShippedFiles(), Origin::kShipped);
  }
  if (files.empty()) {
    throw Failure("plddb: error: no device descriptions in " + Printable(plddb::DataFolder()) + "; name a file with --db");
  }
  return files.Take();
}

}  // namespace tool
