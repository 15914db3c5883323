#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace plddb {

/// The names that `name` was probably meant to be, most likely first, at most `most` of them; none if none is near.
///
/// A name is near if inserting, deleting, replacing or swapping a few letters makes it equal, ignoring letter case and the
/// separators - _ / . and blank. Among equally near names, those that share more of their start and end with `name` come first,
/// then those that come first in `names`. Lends views of `names`; each text is listed once.
std::vector<std::string_view> NearNames(std::string_view name, const std::vector<std::string_view>& names, std::size_t most);

}  // namespace plddb
