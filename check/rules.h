#pragma once

#include "check/findings.h"
#include "check/records.h"

namespace plddb::check {

/// What is wrong with a device or a family by itself: identifiers, instructions, access mode, texts.
void CheckValues(const Records& records, Findings& findings);

/// Names, code names and alias names of devices, and names of families: what lookups do not find, because something earlier
/// answers.
void CheckNames(const Records& records, Findings& findings);

/// Packages, and what lookups by their texts do not find.
void CheckPackages(const Records& records, Findings& findings);

/// What lookups by fuse count cannot tell apart.
void CheckFuseCounts(const Records& records, Findings& findings);

/// What lookups by an identifier do not find, because an earlier device answers.
void CheckShadowedIds(const Records& records, Findings& findings);

/// Items that the formats of the list texts lose.
void CheckLists(const Records& records, Findings& findings);

}  // namespace plddb::check
