#pragma once

#include <memory>
#include <vector>

#include "FamilyList.h"
#include "tests/support/record_fields.h"

namespace support {

using FamilyField = Field<FamilyList>;

/// All fields of a family in declaration order. The samples of the lists of objects (devices, operations) append.
const std::vector<FamilyField>& FamilyFields();

struct FamilyDeleter {
  void operator()(FamilyList* family) const noexcept;
};

/// Owns a family and its devices.
using FamilyOwner = std::unique_ptr<FamilyList, FamilyDeleter>;

/// An empty family, owned with the devices that it will have.
FamilyOwner MakeFamily();

}  // namespace support
