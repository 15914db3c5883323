#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "DataFiles.h"

/// \file
/// Which description files a command reads.

namespace tool {

/// In place of a file: standard input, or where files are written, standard output.
constexpr std::string_view kStandardStream = "-";

using plddb::DataFile;
using plddb::Origin;

/// "command line", "PLDDB_PATH", "user", "shipped".
const char* NameOf(Origin origin);

/// The paths of plddb::NamedFiles. Throws Failure for its faults.
std::vector<std::string> DescriptionFiles(const std::vector<std::string>& paths);

/// The description files that a command over `named`, the values of --db, reads: plddb::DataFiles of each +PATH, or, where
/// there are any without the +, the files of the +PATHs and then those of the PATHs alone. Throws Failure for faults, and when
/// there are no files.
std::vector<DataFile> DataFiles(const std::vector<std::string>& named);

}  // namespace tool
