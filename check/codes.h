#pragma once

#include "check/Check.h"

namespace plddb::check {

/// The codes, in the order of their table.
enum class CodeId {
  kUnreadable,
  kLoad,
  kIdcodeBit0,
  kIdOutsideMask,
  kMaskZero,
  kIdShadowed,
  kIdShared,
  kNameMissing,
  kNameShadowed,
  kCodeNameShadowed,
  kAliasShadowed,
  kAliasUnused,
  kFamilyShadowed,
  kOrderingNumberShared,
  kFuseCountShared,
  kAccessMode,
  kAccessModeMissing,
  kInstructionWide,
  kBypassOnes,
  kTextLong,
  kListUnclosed,
  kListAfterEmpty,
  kListOutside,
  kListLabel,
  kListNumber,
  kListSurplus,
  kListLong,
};

const Code& CodeOf(CodeId id);

}  // namespace plddb::check
