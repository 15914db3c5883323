#pragma once

#include <string_view>

#include "descriptions/faults.h"

namespace plddb::descriptions {

/// Fills `database`, which is empty, from the descriptions in `text`. After a fault what it holds is of no use.
void Load(std::string_view text, DeviceList& database, Faults& faults);

}  // namespace plddb::descriptions
