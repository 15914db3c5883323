#pragma once

#include <string_view>

#include "descriptions/faults.h"

namespace plddb::descriptions {

/// Fills the empty `database` from the descriptions in `text`. After a fault, do not use it. `outline`, which may be null, is
/// set to the outline of the text; after a fault it does not change.
void Load(std::string_view text, DeviceList& database, Faults& faults, Outline* outline);

}  // namespace plddb::descriptions
