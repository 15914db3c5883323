#pragma once

#include <cstdio>
#include <string>

namespace tool {

/// All that `stream` holds from here on. Throws Failure with `complaint` and the system's reason when it cannot be read to its
/// end, or has more than 64 MiB.
std::string ReadAll(std::FILE* stream, const std::string& complaint);

/// All of standard input. Throws Failure as ReadAll does.
std::string ReadInput();

/// Writes a command's whole answer to standard output. Throws Failure when it does not go there, such as on a full disk.
void WriteOutput(const std::string& text);

/// To standard error. The words "error" and "warning" that head a message are in colour where a terminal shows it.
void WriteMessage(const std::string& text);

}  // namespace tool
