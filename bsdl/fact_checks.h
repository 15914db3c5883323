#pragma once

#include "bsdl/Bsdl.h"
#include "bsdl/fault_list.h"

namespace plddb::bsdl {

/// Adds faults where facts of a file contradict each other. `lastCell` is the highest cell of the boundary register.
void CheckFacts(const Facts& facts, const Count& lastCell, FaultList& faults);

}  // namespace plddb::bsdl
