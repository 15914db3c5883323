#include <windows.h>
// The others need it.
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cerrno>
#include <system_error>

#include "whole_file.h"

namespace tool {

std::string ProcessId() { return std::to_string(GetCurrentProcessId()); }

bool IsDevice(const Path& path) {
  std::error_code unknown;
  return std::filesystem::absolute(path, unknown).native().rfind(L"\\\\.\\", 0) == 0;
}

int CreateBeside(const Path& made, const Path& /*path*/) {
  return _wopen(made.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
}

std::FILE* OpenStream(int descriptor) { return _fdopen(descriptor, "wb"); }

void CloseDescriptor(int descriptor) { _close(descriptor); }

bool WriteToDisk(std::FILE* file) { return _commit(_fileno(file)) == 0; }

/// ReplaceFileW keeps the permissions of a file, and needs one.
bool Replace(const Path& path, const Path& made) {
  if (ReplaceFileW(path.c_str(), made.c_str(), nullptr, 0, nullptr, nullptr) != 0) return true;
  if (MoveFileExW(made.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) return true;
  const std::error_code error(static_cast<int>(GetLastError()), std::system_category());
  const std::error_condition condition = error.default_error_condition();
  errno = condition.category() == std::generic_category() ? condition.value() : EIO;
  return false;
}

}  // namespace tool
