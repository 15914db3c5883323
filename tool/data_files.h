#pragma once

#include <string>
#include <vector>

/// \file
/// Which description files a command reads, and where they come from.

namespace tool {

/// Who names a description file. Files are searched in this order.
enum class Origin { kCommandLine, kEnvironment, kUser, kShipped };

/// "command line", "PLDDB_PATH", "user", "shipped".
const char* NameOf(Origin origin);

struct DataFile {
  std::string path;
  Origin origin;
};

/// The description files that `paths` name, in this order; a folder stands for its *.xml files in name order, without hidden
/// files and subfolders. Throws Failure for a folder that has none, or cannot be read.
std::vector<std::string> DescriptionFiles(const std::vector<std::string>& paths);

/// The files that a command over `named`, the values of --db, reads. The environment's, the user's and the shipped ones are
/// left out where they came before. Throws Failure when there are no files, or a folder cannot be read.
///
///   +PATH                a file or folder that comes before all others
///   PATH                 one in place of the environment's, the user's and the shipped ones
///   $PLDDB_PATH          files and folders, ':' between them
///   the user's folder    $XDG_CONFIG_HOME/plddb, or ~/.config/plddb
///   the shipped files    beside the running program, or where they were installed
std::vector<DataFile> DataFiles(const std::vector<std::string>& named);

}  // namespace tool
