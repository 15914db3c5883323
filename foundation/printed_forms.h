#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/utf8.h"

/// \file
/// How numbers and texts from outside are printed for people.

namespace plddb::internal {

inline std::string HexDigits(std::uint32_t value, int digits) {
  std::size_t count = 0;
  for (std::uint32_t rest = value; rest != 0; rest >>= 4) ++count;
  std::string text(std::max(count, static_cast<std::size_t>(std::max(digits, 0))), '0');
  for (auto place = text.rbegin(); value != 0; ++place, value >>= 4) *place = "0123456789ABCDEF"[value & 0xF];
  return text;
}

/// For example "0x0362D093", with at least `digits` digits.
inline std::string Hex(unsigned int value, int digits) { return "0x" + HexDigits(value, digits); }

/// Whether the character is visible, and does not move other characters.
inline bool IsSeen(std::uint32_t code) {
  if (code >= 0x20 && code < 0x7F) return true;  // most are ASCII
  constexpr struct {
    std::uint32_t first, last;
  } kUnseen[] = {
      {0x0000, 0x001F},    // controls, line ends among them
      {0x007F, 0x009F},    // delete, and the controls of 8-bit terminals
      {0x00AD, 0x00AD},    // soft hyphen
      {0x061C, 0x061C},    // Arabic letter mark
      {0x180E, 0x180E},    // Mongolian vowel separator
      {0x200B, 0x200F},    // zero width, and direction marks
      {0x2028, 0x202E},    // line and paragraph separator, embeddings and overrides of the direction
      {0x2060, 0x206F},    // word joiner, isolates of the direction, deprecated formats
      {0xFEFF, 0xFEFF},    // byte order mark
      {0xFFF9, 0xFFFB},    // annotations
      {0xE0000, 0xE007F},  // tags
  };
  for (const auto& range : kUnseen) {
    if (range.first <= code && code <= range.last) return false;
  }
  return true;
}

/// Appends the first character of `text` if it can be seen; else `escape(code, isByte)`, where a byte that is not UTF-8 is its
/// own code. Returns the number of bytes read.
template <typename Escape>
std::size_t AppendCharacter(std::string_view text, std::string& seen, Escape escape) {
  const Utf8Character character = FirstUtf8Character(text);
  const bool isByte = character.length == 0;
  const std::size_t length = isByte ? 1 : character.length;
  const std::uint32_t code = isByte ? static_cast<unsigned char>(text.front()) : character.code;
  if (!isByte && IsSeen(code)) {
    seen += text.substr(0, length);
  } else {
    seen += escape(code, isByte);
  }
  return length;
}

inline std::string PrintedEscape(std::uint32_t code, bool isByte) {
  return isByte || code < 0x80 ? "\\x" + HexDigits(code, 2) : "\\u" + HexDigits(code, 4);
}

/// `text` in a form that is safe to print on a terminal. Escapes such as "\x1B" and "\u202E" replace control characters,
/// invisible characters, characters that change the direction of writing or end a line, and bytes that are not UTF-8.
inline std::string Printable(std::string_view text) {
  std::string printable;
  printable.reserve(text.size());
  while (!text.empty()) text.remove_prefix(AppendCharacter(text, printable, PrintedEscape));
  return printable;
}

inline std::string TextOrDash(const char* text) { return text == nullptr || *text == '\0' ? "-" : Printable(text); }

/// `text`, printable and in double quotes; a long text is shortened.
inline std::string Quoted(std::string_view text) {
  constexpr std::size_t kLongestQuote = 60;
  std::string quoted = "\"";
  while (!text.empty() && quoted.size() <= kLongestQuote) text.remove_prefix(AppendCharacter(text, quoted, PrintedEscape));
  return quoted + (text.empty() ? "\"" : "...\"");
}

}  // namespace plddb::internal
