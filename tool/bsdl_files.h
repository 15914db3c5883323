#pragma once

#include <string>
#include <vector>

namespace tool {

/// The BSDL files that `paths` name, in this order; a folder stands for the files in it, and in the folders in it, that have an
/// extension of BSDL files in any letter case: in the order of their paths. Throws Failure for a folder without any.
std::vector<std::string> BsdlFiles(const std::vector<std::string>& paths);

}  // namespace tool
