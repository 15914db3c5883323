#pragma once

#include "check_findings.h"
#include "check_records.h"

namespace tool {

/// Finds devices some or all of whose identifiers an earlier device answers to, each under its scan mask.
void CheckIdentifiers(const Records& records, Findings& findings);

}  // namespace tool
