#pragma once

#include <string_view>

#include "bsdl/Bsdl.h"
#include "bsdl/fault_list.h"

namespace plddb::bsdl {

/// Reads the entity that `text` describes: its statements, but not the contents of their strings.
///
///   entity NAME is
///     generic ( NAME : string := "..." );
///     port ( NAME, NAME : in bit; NAME : inout bit_vector(0 to 3) );
///     use STD_1149_1_2001.all;
///     constant NAME : PIN_MAP_STRING := "..." & "...";
///     attribute NAME of NAME : entity is "..." & "...";     or a word, a number, a list in parentheses
///     attribute NAME : BSDL_EXTENSION;
///   end NAME;
///
/// Before and after it there may be packages, which are skipped, and before it lines of an in-circuit tester ("!!!!").
Entity ReadEntity(std::string_view text, FaultList& faults);

}  // namespace plddb::bsdl
