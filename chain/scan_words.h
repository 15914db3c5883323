#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// Words and numbers in lines of scanning tools.

namespace plddb::chain {

inline constexpr std::string_view kBlanks = " \t";

std::vector<std::string_view> Words(std::string_view text);
std::string_view FirstWord(std::string_view text);  ///< Empty, at the end of `text`, when there is none.
std::string LastWord(std::string_view text);

/// The number with which `text` starts, 0 when there is none or it is too large.
unsigned long LeadingNumber(std::string_view text);

/// Whether `text` is "0x" and `least` to `most` hex digits.
bool IsHex(std::string_view text, std::size_t least, std::size_t most);

/// The number of "0x" and hex digits; none when it needs more than 32 bits.
std::optional<unsigned int> HexNumber(std::string_view text);

/// An id with all its digits, "0x" and 8 of them: with fewer of them the text was cut off.
std::optional<unsigned int> FullId(std::string_view word);
inline constexpr const char* kExpectedFullId = "expected an id: 0x and 8 hex digits";

inline std::optional<unsigned int> IdUnlessZero(unsigned int id) { return id == 0 ? std::nullopt : std::optional(id); }

}  // namespace plddb::chain
