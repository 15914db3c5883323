#pragma once

#include <cstddef>
#include <type_traits>

namespace support {

/// The widest signed integer that is not also the type of NULL, which positions reject: long long, or long on 64-bit Windows.
using WideInteger = std::conditional_t<std::is_same_v<decltype(NULL), long long>, long, long long>;

constexpr WideInteger kMinusOne = -1;

}  // namespace support
