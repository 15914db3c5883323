#pragma once

#include <string>
#include <vector>

#include "Descriptions.h"

/// Which description files a program reads, and where they come from.
namespace plddb {

/// Who names a description file. Files are searched in this order.
enum class Origin { kNamed, kEnvironment, kUser, kShipped };

struct DataFile {
  std::string path;
  Origin origin;
};

/// Files, or faults of folders and no files. A path that does not exist is among the files: loading it reports it.
struct DataFileList {
  std::vector<DataFile> files;
  std::vector<Fault> faults;
};

/// The description files that `paths` name, in this order; a folder means its *.xml files in name order, without hidden
/// files and subfolders. A folder that has none, or cannot be read, is a fault at 1:1. "-" is taken as it is, even where a
/// folder has that name: programs use it for standard input.
DataFileList NamedFiles(const std::vector<std::string>& paths);

/// NamedFiles of `paths`, and then, each file that leads to the same one as a file before it left out:
///
///   $PLDDB_PATH          files and folders, ':' between them; on Windows ';'
///   the user's folder    $XDG_CONFIG_HOME/plddb, or ~/.config/plddb; on Windows %APPDATA%/plddb
///   the shipped files    those of the folder `shipped`
DataFileList DataFiles(const std::vector<std::string>& paths, const std::string& shipped = DataFolder());

}  // namespace plddb
