#include <filesystem>
#include <string>
#include <system_error>

#include "Descriptions.h"

namespace plddb {
namespace {

namespace fs = std::filesystem;

bool HasDescriptions(const fs::path& folder) {
  std::error_code failed;
  for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed)) {
    if (entry->path().extension() == ".xml") return true;
  }
  return false;
}

}  // namespace

std::string DataFolder() {
  std::error_code unknown;
  const fs::path program = fs::read_symlink("/proc/self/exe", unknown);
  const fs::path beside = program.parent_path().parent_path() / "share" / "plddb";
  return !unknown && HasDescriptions(beside) ? beside.string() : PLDDB_INSTALLED_DATA;
}

}  // namespace plddb
