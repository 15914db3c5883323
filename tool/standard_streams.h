#pragma once

#include <cstdio>
#include <string>

namespace tool {

/// All that `stream` holds from here on, 64 MiB at most. Throws Failure with `complaint` and the reason when it holds more, or
/// cannot be read to its end.
std::string ReadAll(std::FILE* stream, const std::string& complaint);

/// All of standard input, likewise.
std::string ReadInput();

/// Writes a command's whole answer to standard output. Throws Failure when it does not go there, such as on a full disk.
void WriteOutput(const std::string& text);

/// To standard error, one or more lines, without what a terminal cannot show without harm. The words "error" and "warning" that
/// head a message are in colour where a terminal shows it.
void WriteMessage(const std::string& text);

/// To standard error, as it is: for a line that is written over.
void WriteProgress(const std::string& text);

}  // namespace tool
