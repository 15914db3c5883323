#pragma once

#include "check/findings.h"
#include "check/records.h"

namespace plddb::check {

/// \name One subject each
///@{
void CheckIdentifiers(const Records& records, Findings& findings);    ///< Identifiers, their masks and makers.
void CheckShadowedIds(const Records& records, Findings& findings);    ///< Ids to which an earlier device answers.
void CheckInstructions(const Records& records, Findings& findings);   ///< Codes of devices and families, and their register.
void CheckNamesAndTexts(const Records& records, Findings& findings);  ///< Texts by themselves.
void CheckShadowedNames(const Records& records, Findings& findings);  ///< Names that find an earlier device or family.
void CheckPackages(const Records& records, Findings& findings);       ///< Packages, and what lookups by them do not find.
void CheckFuseCounts(const Records& records, Findings& findings);     ///< What lookups by fuse count cannot tell apart.
void CheckBackups(const Records& records, Findings& findings);        ///< Backups of numbers.
void CheckLists(const Records& records, Findings& findings);          ///< What the formats of list texts lose.
void CheckControlBits(const Records& records, Findings& findings);    ///< Bits that lists name twice.
void CheckEbrBlocks(const Records& records, Findings& findings);      ///< The rows and columns of embedded memory blocks.
///@}

}  // namespace plddb::check
