#pragma once

#include <string_view>

#include "descriptions/faults.h"

namespace plddb::descriptions {

/// Fills `database`, which is empty, from the descriptions in `text`. After a fault what it holds is of no use. `outline`,
/// which may be null, becomes that of the text; it stays as it was after a fault.
void Load(std::string_view text, DeviceList& database, Faults& faults, Outline* outline);

}  // namespace plddb::descriptions
