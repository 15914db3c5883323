#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "command.h"
#include "device_text.h"
#include "whole_file.h"

namespace tool {
namespace {

/// A new file next to `path`, which is removed again unless it replaces `path`.
class FileBeside {
 public:
  explicit FileBeside(const std::string& path) : path_(path), name_(path + ".new-" + std::to_string(getpid())) {
    struct stat old = {};
    const bool replaces = stat(path.c_str(), &old) == 0;
    descriptor_ = open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, replaces ? old.st_mode & 0777 : 0666);
    if (descriptor_ < 0) Fail();
    if (replaces) static_cast<void>(fchmod(descriptor_, old.st_mode & 07777));  // if the file system has such modes
  }

  ~FileBeside() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!name_.empty()) unlink(name_.c_str());
  }

  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  void Write(const std::string& text) {
    for (std::size_t done = 0; done < text.size();) {
      const ssize_t count = write(descriptor_, text.data() + done, text.size() - done);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) Fail();
      done += static_cast<std::size_t>(count);
    }
  }

  void TakePlace() {
    if (fsync(descriptor_) != 0 || close(std::exchange(descriptor_, -1)) != 0) Fail();
    if (rename(name_.c_str(), path_.c_str()) != 0) Fail();
    name_.clear();
  }

 private:
  [[noreturn]] void Fail() const {
    throw Failure("plddb: error: cannot write " + Printable(path_) + ": " + std::strerror(errno));
  }

  const std::string path_;
  std::string name_;
  int descriptor_ = -1;
};

}  // namespace

void WriteWholeFile(const std::string& path, const std::string& text) {
  FileBeside file(path);
  file.Write(text);
  file.TakePlace();
}

}  // namespace tool
