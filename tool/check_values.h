#pragma once

#include "check_findings.h"
#include "check_records.h"

namespace tool {

/// Finds what is wrong with a device or a family by itself: identifiers, instructions, access mode, texts.
void CheckValues(const Records& records, Findings& findings);

}  // namespace tool
