#include "bsdl_files.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "Files.h"
#include "LString.h"
#include "StringServices.h"
#include "command.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

bool HasExtensionOfBsdl(const fs::path& path) {
  constexpr std::string_view kExtensions[] = {".BSD", ".BSDL", ".BSM", ".BS", ".1532"};
  std::string extension = plddb::ToName(path.extension());
  strupr(extension);
  return std::find(std::begin(kExtensions), std::end(kExtensions), extension) != std::end(kExtensions);
}

std::vector<std::string> FilesIn(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code failed;
  const auto options = fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator entry(plddb::ToPath(folder), options, failed), end; !failed && entry != end;
       entry.increment(failed)) {
    std::error_code unknown;
    if (HasExtensionOfBsdl(entry->path()) && entry->is_regular_file(unknown)) files.push_back(plddb::ToName(entry->path()));
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

std::vector<std::string> BsdlFiles(const std::vector<std::string>& paths) {
  std::vector<std::string> files;
  for (const std::string& path : paths) {
    std::error_code ignored;
    if (!fs::is_directory(plddb::ToPath(path), ignored)) {
      files.push_back(path);  // reading it will show what is wrong with it
      continue;
    }
    std::vector<std::string> found = FilesIn(path);
    if (found.empty()) throw Failure(path + ":1:1: error: no BSDL file (*.bsd, *.bsdl, *.bsm, *.bs, *.1532) in this folder");
    for (std::string& file : found) files.push_back(std::move(file));
  }
  return files;
}

}  // namespace tool
