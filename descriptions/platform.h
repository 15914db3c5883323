#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

/// \file
/// What systems do in their own ways. platform_posix.cpp and platform_windows.cpp define it, and what Files.h declares.

namespace plddb::descriptions {

/// What is the same for all paths of one file.
using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;

/// Nothing if there is no such file.
std::optional<FileIdentity> IdentityOf(const std::string& name);

/// The running program; empty if unknown.
std::filesystem::path ProgramFile();

/// The folder of the user's own descriptions; empty if there is none.
std::filesystem::path UserFolder();

/// What separates the files and folders in PLDDB_PATH.
extern const char kPathSeparator;

}  // namespace plddb::descriptions
