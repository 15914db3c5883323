#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace plddb::bsdl {

/// The IDCODE that a pattern of 32 bits gives.
///
///   31..28 version   27..12 part number   11..1 maker   0: always 1
struct Idcode {
  std::uint32_t value = 0;  // X is 0
  std::uint32_t fixed = 0;  // 0 where the pattern has X
};

constexpr std::uint32_t kVersionBits = 0xF0000000;
constexpr std::uint32_t kPartBits = 0x0FFFF000;
constexpr std::uint32_t kMakerBits = 0x00000FFE;

Idcode ToIdcode(std::string_view pattern);

/// The number that bits of at most 32 are; X is 0.
std::uint32_t ToNumber(std::string_view bits);

/// Why a pattern is refused: it fits devices of any maker, or too many parts. Empty for others.
std::string WhyTooOpen(std::string_view pattern);

}  // namespace plddb::bsdl
