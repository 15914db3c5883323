#pragma once

#include <string>
#include <vector>

#include "Chain.h"

namespace tool {

/// Takes each text "POSITION=LENGTH" over into the chain, up to one that makes no sense: the answer tells why. Empty if all do.
std::string TakeIrLengths(plddb::chain::Chain& chain, const std::vector<std::string>& texts);

}  // namespace tool
