#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace tool {

/// Writes `text` as the file `path`. A file that is there stays as it is until the new one is complete; the new one has its
/// permissions. Throws Failure.
void WriteWholeFile(const std::string& path, const std::string& text);

/// \name What systems do in their own ways
/// whole_file_posix.cpp and whole_file_windows.cpp define it. After a failure, `errno` has the reason.
///@{
using Path = std::filesystem::path;
bool IsDevice(const Path& path);  ///< Whether the name alone makes it one, as CON on Windows.
std::string ProcessId();
int CreateBeside(const Path& made, const Path& path);  ///< A descriptor of a new file `made` that will replace `path`, or -1.
std::FILE* OpenStream(int descriptor);                 ///< For writing; null without memory.
void CloseDescriptor(int descriptor);                  ///< One without a stream.
bool WriteToDisk(std::FILE* file);                     ///< What the system may still keep in memory.
bool Replace(const Path& path, const Path& made);      ///< By the file `made`, which is closed.
///@}

}  // namespace tool
