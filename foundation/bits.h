#pragma once

#include <bitset>
#include <cstdint>

namespace plddb::internal {

/// The number of ones.
inline int BitCount(std::uint32_t bits) { return static_cast<int>(std::bitset<32>(bits).count()); }

}  // namespace plddb::internal
