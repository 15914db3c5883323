#pragma once

namespace plddb::chain {

inline constexpr unsigned int kBanks = 18;

/// The makers of each bank: the name for code 0x01, a line end, that for 0x02, and so on up to 0x7E; an empty line for a code
/// that is not assigned.
extern const char* const kMakersOfBanks[kBanks];

}  // namespace plddb::chain
