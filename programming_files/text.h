#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/characters.h"

/// \file
/// Helpers for ASCII texts; the locale does not count.

namespace plddb::programming_files {

using internal::HexDigit;
using internal::IsDigit;
using internal::IsLetter;
using internal::IsWhiteSpace;
using internal::StartsWith;
using internal::Trim;
using internal::UpperCase;

constexpr bool IsWord(int c) { return IsLetter(c) || IsDigit(c) || c == '_'; }

/// The text up to the first blank.
inline std::string_view FirstWord(std::string_view text) {
  std::size_t size = 0;
  while (size < text.size() && !IsWhiteSpace(text[size])) ++size;
  return text.substr(0, size);
}

inline std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  for (text = Trim(text); !text.empty(); text = Trim(text)) {
    words.push_back(FirstWord(text));
    text.remove_prefix(words.back().size());
  }
  return words;
}

/// All of `text` as a number of `base` (10 or 16) up to 32 bits.
inline std::optional<std::uint32_t> Number(std::string_view text, unsigned int base = 10) {
  std::uint64_t value = 0;
  for (const char c : text) {
    const int digit = HexDigit(c);
    if (digit < 0 || static_cast<unsigned int>(digit) >= base) return std::nullopt;
    value = value * base + static_cast<unsigned int>(digit);
    if (value > 0xFFFFFFFF) return std::nullopt;
  }
  if (text.empty()) return std::nullopt;
  return static_cast<std::uint32_t>(value);
}

}  // namespace plddb::programming_files
