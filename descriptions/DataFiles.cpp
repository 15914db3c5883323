#include "DataFiles.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

#include "Files.h"
#include "descriptions/platform.h"

namespace plddb {
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
  return name.extension() == ".xml" && ToName(name).front() != '.' && MayBeFile(entry);
}

/// Collects the files of folders, and faults of the folders.
class Folders {
 public:
  explicit Folders(std::vector<Fault>& faults) : faults_(faults) {}

  /// The description files of a folder, in name order.
  Paths In(const fs::path& folder) {
    Paths files;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
      if (IsDescription(*entry)) files.push_back(ToName(entry->path()));
    }
    if (error) faults_.push_back({ToName(folder), 1, 1, "cannot read the folder: " + error.message()});
    std::sort(files.begin(), files.end());
    return files;
  }

  /// Those of a folder that need not exist.
  Paths InAny(const fs::path& folder) { return IsFolder(folder) ? In(folder) : Paths(); }

  /// A path of a file is taken as it is: the loader reports one that does not exist. "-" is never a folder: programs use it for
  /// standard input.
  Paths Of(const std::string& path) { return path != "-" && IsFolder(ToPath(path)) ? In(ToPath(path)) : Paths{path}; }

  /// The same for what somebody named: a folder without descriptions is a fault.
  Paths Named(const Paths& paths) {
    Paths all;
    for (const std::string& path : paths) {
      const std::size_t before = faults_.size();
      Paths files = Of(path);
      if (files.empty() && faults_.size() == before) faults_.push_back({path, 1, 1, "no *.xml file in this folder"});
      all.insert(all.end(), files.begin(), files.end());
    }
    return all;
  }

 private:
  std::vector<Fault>& faults_;
};

/// Empty parts are ignored.
Paths EnvironmentFiles(Folders& folders) {
  const std::string path = Environment("PLDDB_PATH");
  Paths files;
  for (std::size_t start = 0; start < path.size();) {
    const std::size_t end = std::min(path.find(descriptions::kPathSeparator, start), path.size());
    if (end > start) {
      for (std::string& file : folders.Of(path.substr(start, end - start))) files.push_back(std::move(file));
    }
    start = end + 1;
  }
  return files;
}

/// The files of all origins. What was named is taken as it is; of the others those that came before are left out.
class Collected {
 public:
  void Add(Paths paths, Origin origin) {
    for (std::string& path : paths) {
      if (IsNew(path) || origin == Origin::kNamed) files_.push_back({std::move(path), origin});
    }
  }

  std::vector<DataFile> Take() { return std::move(files_); }

 private:
  /// Whether no other path leads to the same file. One that does not exist is reported when it is loaded.
  bool IsNew(const std::string& path) {
    const auto identity = descriptions::IdentityOf(path);
    return !identity || seen_.insert(*identity).second;
  }

  std::vector<DataFile> files_;
  std::set<descriptions::FileIdentity> seen_;
};

/// Faults leave no files.
DataFileList Result(Collected& files, std::vector<Fault> faults) {
  if (!faults.empty()) return {{}, std::move(faults)};
  return {files.Take(), {}};
}

}  // namespace

DataFileList NamedFiles(const std::vector<std::string>& paths) {
  std::vector<Fault> faults;
  Collected files;
  files.Add(Folders(faults).Named(paths), Origin::kNamed);
  return Result(files, std::move(faults));
}

DataFileList DataFiles(const std::vector<std::string>& paths, const std::string& shipped) {
  std::vector<Fault> faults;
  Folders folders(faults);
  Collected files;
  files.Add(folders.Named(paths), Origin::kNamed);
  files.Add(EnvironmentFiles(folders), Origin::kEnvironment);
  files.Add(folders.InAny(descriptions::UserFolder()), Origin::kUser);
  files.Add(folders.InAny(ToPath(shipped)), Origin::kShipped);
  return Result(files, std::move(faults));
}

}  // namespace plddb
