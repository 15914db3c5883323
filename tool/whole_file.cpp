#include "whole_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "Files.h"
#include "command.h"
#include "device_text.h"

namespace tool {
namespace {

/// A new file next to `path`, which is removed again unless it replaces `path`.
class FileBeside {
 public:
  explicit FileBeside(const std::string& name)
      : name_(name),
        path_(plddb::ToPath(name)),
        made_(plddb::ToPath(name + ".new-" + ProcessId())),
        file_(CreateBeside(made_, path_)) {
    if (file_ == nullptr) Fail();
    isThere_ = true;
  }

  ~FileBeside() {
    file_.reset();
    std::error_code ignored;
    if (isThere_) std::filesystem::remove(made_, ignored);
  }

  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  void Write(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size()) Fail();
    if (std::fflush(file_.get()) != 0 || !WriteToDisk(file_.get())) Fail();
  }

  void TakePlace() {
    if (std::fclose(file_.release()) != 0 || !Replace(path_, made_)) Fail();
    isThere_ = false;
  }

 private:
  [[noreturn]] void Fail() const {
    throw Failure("plddb: error: cannot write " + Printable(name_) + ": " + std::strerror(errno));
  }

  const std::string name_;
  const Path path_;
  const Path made_;
  plddb::OpenedFile file_;
  bool isThere_ = false;
};

}  // namespace

void WriteWholeFile(const std::string& path, const std::string& text) {
  FileBeside file(path);
  file.Write(text);
  file.TakePlace();
}

}  // namespace tool
