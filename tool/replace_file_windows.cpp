#include <windows.h>

#include <cstddef>
#include <filesystem>
#include <system_error>

#include "Files.h"
#include "command.h"
#include "device_text.h"
#include "replace_file.h"

namespace tool {
namespace {

/// A new file next to `path`, which is removed again unless it replaces `path`.
class FileBeside {
 public:
  explicit FileBeside(const std::string& path)
      : path_(plddb::ToPath(path)), name_(plddb::ToPath(path + ".new-" + std::to_string(GetCurrentProcessId()))) {
    file_ = CreateFileW(name_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file_ == INVALID_HANDLE_VALUE) Fail(name_);
  }

  ~FileBeside() {
    if (file_ == INVALID_HANDLE_VALUE) return;
    CloseHandle(file_);
    DeleteFileW(name_.c_str());
  }

  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  void Write(const std::string& text) {
    constexpr std::size_t most = 1 << 20;
    for (std::size_t done = 0; done < text.size();) {
      const auto size = static_cast<DWORD>(text.size() - done < most ? text.size() - done : most);
      DWORD count = 0;
      if (WriteFile(file_, text.data() + done, size, &count, nullptr) == 0) Fail(name_);
      done += count;
    }
    if (FlushFileBuffers(file_) == 0) Fail(name_);
  }

  void TakePlace() {
    CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
    if (ReplaceFileW(path_.c_str(), name_.c_str(), nullptr, 0, nullptr, nullptr) != 0) return;  // with its permissions
    if (MoveFileExW(name_.c_str(), path_.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) return;
    const std::string failure = Complaint(path_);
    DeleteFileW(name_.c_str());
    throw Failure(failure);
  }

 private:
  /// Why the last call failed, with `file`'s name.
  static std::string Complaint(const std::filesystem::path& file) {
    const std::error_code error(static_cast<int>(GetLastError()), std::system_category());
    return "plddb: error: cannot write " + Printable(plddb::ToName(file)) + ": " + error.default_error_condition().message();
  }

  [[noreturn]] static void Fail(const std::filesystem::path& file) { throw Failure(Complaint(file)); }

  const std::filesystem::path path_;
  const std::filesystem::path name_;
  HANDLE file_ = INVALID_HANDLE_VALUE;
};

}  // namespace

void ReplaceFile(const std::string& path, const std::string& text) {
  FileBeside file(path);
  file.Write(text);
  file.TakePlace();
}

}  // namespace tool
