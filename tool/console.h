#pragma once

#include <string>
#include <vector>

/// \file
/// Arguments, streams and terminals. console_posix.cpp and console_windows.cpp define it.

namespace tool {

/// \name Descriptors of standard streams
///@{
constexpr int kOutput = 1;
constexpr int kMessages = 2;
///@}

/// Makes the standard streams pass on bytes as they are, and returns the arguments in UTF-8, without the program's name.
std::vector<std::string> StartConsole(int argc, char** argv);

/// Whether what goes to `descriptor` is seen by a person.
bool IsTerminal(int descriptor);

/// Whether it also shows colours: not where TERM is "dumb"; nor, other than on Windows, where it is not set.
bool IsColourTerminal(int descriptor);

}  // namespace tool
