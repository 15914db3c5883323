#pragma once

#include "check_findings.h"
#include "check_records.h"

namespace tool {

/// Finds items that the formats of the list texts lose.
void CheckLists(const Records& records, Findings& findings);

}  // namespace tool
