#pragma once

#include <string>
#include <vector>

#include "identify/output.h"

namespace tool {

/// The names of --expect, "NAME,NAME,...". Throws WrongUsage for an empty one.
std::vector<std::string> ExpectedNames(const std::string& text);

/// Prints position by position whether the chain is the expected one; whether it is.
bool CompareWithExpected(const IdentifiedChain& identified, const std::vector<std::string>& names, Output& output);

}  // namespace tool
