#pragma once

#include <string>
#include <vector>

#include "Check.h"

/// \file
/// The forms in which plddb check writes findings.

namespace tool {

using Findings = std::vector<plddb::check::Finding>;

std::string FindingLines(const Findings& findings);  ///< "FILE:LINE:COLUMN: error[code]: text".
std::string FindingJson(const Findings& findings);
std::string FindingSarif(const Findings& findings);  ///< SARIF 2.1.0, which code-hosting sites show in reviews.
std::string CodeTable();

std::vector<plddb::check::Code> AllCodes();  ///< Those of the library check, then those of --bsdl.

}  // namespace tool
