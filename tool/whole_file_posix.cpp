#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "whole_file.h"

namespace tool {

std::string ProcessId() { return std::to_string(getpid()); }

/// Devices are files of their own kind here.
bool IsDevice(const Path& /*path*/) { return false; }

int CreateBeside(const Path& made, const Path& path) {
  struct stat old = {};
  const bool replaces = stat(path.c_str(), &old) == 0;
  const int descriptor = open(made.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, replaces ? old.st_mode & 0777 : 0666);
  if (descriptor >= 0 && replaces) static_cast<void>(fchmod(descriptor, old.st_mode & 07777));  // if there are such modes
  return descriptor;
}

std::FILE* OpenStream(int descriptor) { return fdopen(descriptor, "wb"); }

void CloseDescriptor(int descriptor) { close(descriptor); }

bool WriteToDisk(std::FILE* file) { return fsync(fileno(file)) == 0; }

bool Replace(const Path& path, const Path& made) { return rename(made.c_str(), path.c_str()) == 0; }

}  // namespace tool
