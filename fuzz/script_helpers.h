#pragma once

#include "fuzz/script_world.h"

/// \file
/// Operations on what needs no tree: the string helpers, one text, one list.

namespace fuzz {

void PlayStrings(World& world, Arguments& arguments);
void PlayElements(World& world, Arguments& arguments);
void PlayList(World& world, Arguments& arguments);

}  // namespace fuzz
