#pragma once

#include <cstddef>
#include <type_traits>

/// \file
/// The integer types that the templates for a position or an identifier accept. Internal to the headers.

namespace plddb::internal {

/// Whether an argument of this type may be NULL, which is meant for the overload with a text but would be taken for the number
/// 0. A template cannot tell NULL from other values of its type (long, with g++ and clang), so it rejects the whole type.
template <class Argument>
inline constexpr bool kMayBeNull = std::is_same_v<Argument, decltype(NULL)> && !std::is_same_v<Argument, int>;

template <class Argument>
using IfInteger = std::enable_if_t<std::is_integral_v<Argument> && !kMayBeNull<Argument>, int>;

template <class Argument>
using IfMaybeNull = std::enable_if_t<std::is_integral_v<Argument> && kMayBeNull<Argument>, int>;

}  // namespace plddb::internal
