#pragma once

#include "bsdl/Bsdl.h"
#include "bsdl/fault_list.h"

namespace plddb::bsdl {

/// Reads the cells that BOUNDARY_REGISTER lists; faults are warnings. `last` becomes the highest number of a cell, unless it is
/// higher already.
void ReadBoundaryCells(const Pieces& pieces, FaultList& faults, Count& last);

}  // namespace plddb::bsdl
