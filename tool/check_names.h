#pragma once

#include "check_findings.h"
#include "check_records.h"

namespace tool {

/// Finds what lookups by a text do not find, because something earlier answers: names, code names and alias names of devices,
/// names of families, ordering numbers, fuse counts. In the order and by the rules of the lookups.
void CheckNames(const Records& records, Findings& findings);

}  // namespace tool
