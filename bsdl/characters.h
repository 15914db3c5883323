#pragma once

#include <string>
#include <string_view>

#include "foundation/characters.h"

/// \file
/// What BSDL makes of characters.

namespace plddb::bsdl {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// Whether `c` may be part of an identifier or number. On purpose more than the standard has: makers write names such as
/// "PQ-100", and package pins such as "A1/B2".
constexpr bool IsWordCharacter(char c) {
  return IsLetter(c) || IsDigit(c) || c == '_' || c == '.' || c == '-' || c == '+' || c == '/' || c == '#' || c == '$';
}

inline std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = internal::ToUpper(c);
  return upper;
}

/// A field's text; empty where it is unset.
inline std::string TextOf(const char* text) { return text == nullptr ? "" : text; }

inline bool AreEqualIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (internal::ToUpper(a[i]) != internal::ToUpper(b[i])) return false;
  }
  return true;
}

}  // namespace plddb::bsdl
