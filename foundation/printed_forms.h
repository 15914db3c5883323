#pragma once

#include <algorithm>
#include <string>

/// \file
/// How numbers and texts from outside are shown to people.

namespace plddb::internal {

/// Such as "0x0362D093"; `digits` at least.
inline std::string Hex(unsigned int value, int digits) {
  std::string text;
  for (; value != 0 || digits > 0; value >>= 4, --digits) text.insert(text.begin(), "0123456789ABCDEF"[value & 0xF]);
  return "0x" + text;
}

/// `text` with '?' for what could disturb a terminal or forge a line.
inline std::string Printable(std::string text) {
  const auto isControl = [](char c) { return (c >= '\0' && c < ' ') || c == '\x7F'; };
  std::replace_if(text.begin(), text.end(), isControl, '?');
  for (std::size_t i = 0; (i = text.find('\xC2', i)) != text.npos; ++i) {  // U+0080 to U+009F, controls of 8-bit terminals
    const auto next = static_cast<unsigned char>(text.c_str()[i + 1]);     // 0 at the end
    if (next >= 0x80 && next < 0xA0) text.replace(i, 2, "?");
  }
  return text;
}

}  // namespace plddb::internal
