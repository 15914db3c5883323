#pragma once

#include "bsdl/Bsdl.h"
#include "bsdl/fault_list.h"

namespace plddb::bsdl {

/// Reads what the strings of `entity` state. A fault in a string that a description needs is an error, in any other a warning.
Facts ReadFacts(const Entity& entity, FaultList& faults);

}  // namespace plddb::bsdl
