#pragma once

#include <string>

namespace tool {

/// Writes `text` as the file `path`. A file that is there stays as it is until the new one is complete; the new one has its
/// permissions. Throws Failure. replace_file_posix.cpp and replace_file_windows.cpp define it.
void ReplaceFile(const std::string& path, const std::string& text);

}  // namespace tool
