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
      : name_(name), path_(plddb::ToPath(name)), made_(plddb::ToPath(name + ".new-" + ProcessId())) {
    const int descriptor = CreateBeside(made_, path_);
    if (descriptor < 0) Fail();
    file_.reset(OpenStream(descriptor));
    if (file_ == nullptr) {
      CloseDescriptor(descriptor);
      Remove();
      errno = ENOMEM;
      Fail();
    }
    isThere_ = true;
  }

  ~FileBeside() {
    file_.reset();
    if (isThere_) Remove();
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
  void Remove() const {
    std::error_code ignored;
    std::filesystem::remove(made_, ignored);
  }

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
