#pragma once

#include <string_view>

#include "fuzz/script_world.h"

namespace fuzz {

/// Plays one line of a script: "NAME|ARGUMENT|ARGUMENT...", such as "DeviceInfo::SetName|PLD1234A".
void Play(World& world, std::string_view line);

}  // namespace fuzz
