#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// \file
/// UTF-8, one character at a time.

namespace plddb::internal {

/// A character and its length in bytes; the length is 0 if no character begins here.
struct Utf8Character {
  std::size_t length = 0;
  std::uint32_t code = 0;
};

/// The length of the sequence that the byte `first` starts; 0 if it starts none.
inline std::size_t Utf8SequenceLength(unsigned char first) {
  if (first < 0x80) return 1;
  if (first < 0xC2) return 0;
  return first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

/// The first character of `text`. Overlong forms, surrogates and codes above 0x10FFFF are not characters.
inline Utf8Character FirstUtf8Character(std::string_view text) {
  if (text.empty()) return {};
  const auto byteAt = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const std::size_t length = Utf8SequenceLength(byteAt(0));
  if (length == 0 || length > text.size()) return {};
  std::uint32_t code = length == 1 ? byteAt(0) : byteAt(0) & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(i) & 0xC0U) != 0x80) return {};
    code = code << 6 | (byteAt(i) & 0x3FU);
  }
  const bool isOverlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  return isOverlong || isSurrogate || code > 0x10FFFF ? Utf8Character{} : Utf8Character{length, code};
}

}  // namespace plddb::internal
