#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace plddb {

/// The names that `name` was probably meant to be, most likely first, `most` at most; none when none is near.
///
/// Near are names that a few letters put in, left out, replaced or exchanged make equal, letter case and the separators
/// - _ / . and blank ignored. Among equally near ones those come first that share more of their beginning and end with `name`,
/// then those that stand first in `names`. Lends views of `names`; each text is named once.
std::vector<std::string_view> NearNames(std::string_view name, const std::vector<std::string_view>& names, std::size_t most);

}  // namespace plddb
