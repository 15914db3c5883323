#pragma once

#include <string>
#include <vector>

#include "command.h"
#include "command_line.h"

namespace tool {

/// The first word of a command line with which a shell asks what may stand at the cursor; not a subcommand for people.
constexpr const char* kComplete = "complete";

/// Writes what may stand for the last of `words`, those behind the program's name up to the cursor: a candidate per line, some
/// with a tab and a description behind them. The answer is kNotFound where file names belong, which the shell knows.
ExitCode Complete(const Program& program, const std::vector<std::string>& words);

}  // namespace tool
