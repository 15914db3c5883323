#include "Descriptions.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

#include "Files.h"
#include "descriptions/TextForms.h"
#include "descriptions/faults.h"
#include "descriptions/load.h"

namespace plddb {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Larger files are not descriptions; without a limit, a device such as /dev/zero would fill memory.
constexpr std::size_t kLargestFile = std::size_t{1} << 26;
constexpr const char* kTooLarge = "larger than 64 MiB";

/// The size of the file; 0 if it is unknown, as for a pipe.
std::size_t SizeOf(const std::string& path) {
  std::error_code unknown;
  const auto size = std::filesystem::file_size(ToPath(path), unknown);
  return unknown ? 0 : static_cast<std::size_t>(std::min<std::uintmax_t>(size, kLargestFile));
}

/// Appends the file's bytes to `text`; returns the reason of a failure, or nothing.
std::string ReadFile(const std::string& path, std::string& text) {
  const OpenedFile file = OpenFile(path);
  char part[4096];  // small, for threads with little stack
  text.reserve(SizeOf(path) + sizeof part);
  while (file != nullptr && text.size() <= kLargestFile) {
    const std::size_t count = std::fread(part, 1, sizeof part, file.get());
    text.append(part, count);
    if (count == sizeof part) continue;
    if (std::ferror(file.get()) != 0) break;
    return "";
  }
  if (text.size() > kLargestFile) return kTooLarge;
  return std::generic_category().message(errno);
}

LoadResult Unreadable(const std::string& file, const std::string& why) {
  return {nullptr, {{file, 1, 1, "cannot read the file: " + why}}};
}

}  // namespace

std::string ToString(const Fault& fault) {
  return Printable(fault.file) + ':' + std::to_string(fault.line) + ':' + std::to_string(fault.column) +
         ": error: " + fault.text;
}

FileText ReadDescriptionFile(const std::string& path) {
  FileText read;
  read.failure = ReadFile(path, read.text);
  return read;
}

LoadResult LoadDescriptions(const std::string& path, Outline* outline) {
  const FileText read = ReadDescriptionFile(path);
  if (read.failure.empty()) return ParseDescriptions(read.text, path, outline);
  return Unreadable(path, read.failure);
}

LoadResult ParseDescriptions(std::string_view text, const std::string& file, Outline* outline) {
  if (text.size() > kLargestFile) return Unreadable(file, kTooLarge);
  if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) text.remove_prefix(kByteOrderMark.size());
  DeviceListOwner database = MakeDeviceList();
  descriptions::Faults faults;
  descriptions::Load(text, *database, faults, outline);
  if (faults.Empty()) return {std::move(database), {}};
  return {nullptr, faults.Located(text, file)};
}

}  // namespace plddb
