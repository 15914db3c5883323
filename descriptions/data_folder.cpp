#include <filesystem>
#include <string>
#include <system_error>

#include "Descriptions.h"
#include "Files.h"
#include "descriptions/platform.h"

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
  const fs::path program = descriptions::ProgramFile();
  const fs::path beside = program.parent_path().parent_path() / "share" / "plddb";
  return !program.empty() && HasDescriptions(beside) ? ToName(beside) : PLDDB_INSTALLED_DATA;
}

}  // namespace plddb
