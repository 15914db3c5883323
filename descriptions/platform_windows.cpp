#include <sys/stat.h>
#include <windows.h>

#include <cerrno>
#include <cwchar>
#include <system_error>

#include "Files.h"
#include "descriptions/platform.h"

namespace plddb {
namespace {

namespace fs = std::filesystem;

std::wstring ToWide(const std::string& text) {
  const int size = static_cast<int>(text.size());
  const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), units);
  return wide;
}

}  // namespace

std::string ToUtf8(const wchar_t* text) {
  const int size = static_cast<int>(std::wcslen(text));
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, text, size, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, size, utf8.data(), bytes, nullptr, nullptr);
  return utf8;
}

fs::path ToPath(const std::string& name) { return ToWide(name); }

std::string ToName(const fs::path& path) { return ToUtf8(path.generic_wstring().c_str()); }

/// For a folder, Windows reports that permission is missing.
OpenedFile OpenFile(const std::string& name) {
  OpenedFile file(_wfopen(ToWide(name).c_str(), L"rb"));
  const int reason = errno;
  std::error_code unknown;
  if (file == nullptr) errno = fs::is_directory(ToPath(name), unknown) ? EISDIR : reason;
  return file;
}

std::optional<std::int64_t> TimeOfFile(const std::string& name) {
  struct _stat64 status = {};
  if (_wstat64(ToWide(name).c_str(), &status) != 0) return std::nullopt;
  return status.st_mtime;
}

std::string Environment(const char* name) {
  const wchar_t* const value = _wgetenv(ToWide(name).c_str());
  return value == nullptr ? "" : ToUtf8(value);
}

namespace descriptions {

const char kPathSeparator = ';';

std::optional<FileIdentity> IdentityOf(const std::string& name) {
  constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = CreateFileW(ToWide(name).c_str(), 0, shared, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return std::nullopt;
  BY_HANDLE_FILE_INFORMATION status = {};
  const bool isKnown = GetFileInformationByHandle(file, &status) != 0;
  CloseHandle(file);
  if (!isKnown) return std::nullopt;
  return FileIdentity(status.dwVolumeSerialNumber, std::uint64_t{status.nFileIndexHigh} << 32 | status.nFileIndexLow);
}

fs::path ProgramFile() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (length < name.size()) return name.substr(0, length);
    name.resize(2 * name.size());
  }
}

fs::path UserFolder() {
  const fs::path folder = ToPath(Environment("APPDATA"));
  return folder.empty() ? folder : folder / "plddb";
}

}  // namespace descriptions
}  // namespace plddb
