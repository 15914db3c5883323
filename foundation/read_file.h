#pragma once

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

/// \file
/// Reading a whole file, for the libraries whose job is files.

namespace plddb::internal {

/// Larger files are none of ours; without a limit a device such as /dev/zero would fill the memory.
constexpr std::size_t kLargestFile = std::size_t{1} << 26;

/// How large the file says it is; 0 where it does not, as a pipe.
inline std::size_t SizeOfFile(const std::string& path) {
  std::error_code unknown;
  const auto size = std::filesystem::file_size(path, unknown);
  return unknown ? 0 : static_cast<std::size_t>(std::min<std::uintmax_t>(size, kLargestFile));
}

struct CloseFile {
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

/// Appends the file's bytes to `text`; returns why that failed, or nothing.
inline std::string ReadFile(const std::string& path, std::string& text) {
  const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
  char part[65536];
  text.reserve(SizeOfFile(path) + sizeof part);
  while (file != nullptr && text.size() <= kLargestFile) {
    const std::size_t count = std::fread(part, 1, sizeof part, file.get());
    text.append(part, count);
    if (count == sizeof part) continue;
    if (std::ferror(file.get()) != 0) break;
    return "";
  }
  if (text.size() > kLargestFile) return "larger than 64 MiB";
  return std::generic_category().message(errno);
}

}  // namespace plddb::internal
