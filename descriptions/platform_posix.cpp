#include <sys/stat.h>

#include <cstdlib>
#include <system_error>

#include "Files.h"
#include "descriptions/platform.h"

namespace plddb {

namespace fs = std::filesystem;

fs::path ToPath(const std::string& name) { return name; }

std::string ToName(const fs::path& path) { return path.string(); }

OpenedFile OpenFile(const std::string& name) { return OpenedFile(std::fopen(name.c_str(), "rb")); }

std::optional<std::int64_t> TimeOfFile(const std::string& name) {
  struct stat status = {};
  if (stat(name.c_str(), &status) != 0) return std::nullopt;
  return status.st_mtime;
}

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

namespace descriptions {

const char kPathSeparator = ':';

std::optional<FileIdentity> IdentityOf(const std::string& name) {
  struct stat status = {};
  if (stat(name.c_str(), &status) != 0) return std::nullopt;
  return FileIdentity(status.st_dev, status.st_ino);
}

fs::path ProgramFile() {
  std::error_code unknown;
  return fs::read_symlink("/proc/self/exe", unknown);
}

/// A relative XDG_CONFIG_HOME is ignored, as its standard requires.
fs::path UserFolder() {
  fs::path folder = Environment("XDG_CONFIG_HOME");
  if (!folder.is_absolute()) {
    const fs::path home = Environment("HOME");
    if (home.empty()) return {};
    folder = home / ".config";
  }
  return folder / "plddb";
}

}  // namespace descriptions
}  // namespace plddb
