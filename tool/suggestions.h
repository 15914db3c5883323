#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "command.h"

namespace tool {

/// Up to five texts of `known` that `wanted` may have meant: those that begin with it, or else the nearest first; never
/// `wanted` itself.
std::vector<std::string> Suggestions(const std::string& wanted, const std::vector<std::string_view>& known);

/// "; did you mean A, B?"; empty when there are none.
std::string DidYouMean(const std::vector<std::string>& suggestions);

/// Tells on standard error that there is no answer, and what the question may have meant. The answer to the shell is kNotFound.
ExitCode ReportNothing(const std::vector<std::string>& suggestions, const std::string& message = "nothing found");

/// Tells on standard error that `count` devices match where one was wanted. The answer to the shell is kNotFound.
ExitCode ReportSeveral(std::size_t count);

}  // namespace tool
