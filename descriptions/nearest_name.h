#pragma once

#include <string_view>
#include <vector>

namespace plddb::descriptions {

/// The one of `names` that `name` was probably meant to be; empty when none is near. Letter case counts little.
std::string_view NearestName(std::string_view name, const std::vector<std::string_view>& names);

}  // namespace plddb::descriptions
