#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

/// \file
/// Files, by names in UTF-8 on every system.

namespace plddb {

/// \name Between names and paths. Windows: '/' is written between folders, and U+FFFD for what is not Unicode. Elsewhere the
/// bytes are the same.
///@{
std::filesystem::path ToPath(const std::string& name);
std::string ToName(const std::filesystem::path& path);
///@}

#ifdef _WIN32
std::string ToUtf8(const wchar_t* text);  ///< With U+FFFD for what is not Unicode.
#endif

struct CloseFile {
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using OpenedFile = std::unique_ptr<std::FILE, CloseFile>;

/// Opens a file to read its bytes; null if that fails, with the reason in `errno`.
OpenedFile OpenFile(const std::string& name);

/// When a file was last written, in seconds since 1970; nothing if there is none.
std::optional<std::int64_t> TimeOfFile(const std::string& name);

/// The value of an environment variable; empty without one.
std::string Environment(const char* name);

}  // namespace plddb
