#include "TextForms.h"

#include <algorithm>
#include <cstdint>

#include "descriptions/xml_text.h"

namespace plddb {
namespace {

constexpr std::size_t kLongestQuote = 60;
constexpr char kDigits[] = "0123456789ABCDEF";

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

/// Characters that are not seen where they are, or that move others.
constexpr Range kUnseen[] = {
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

/// The code of the one character of `character`, which is well-formed UTF-8.
std::uint32_t CodeOf(std::string_view character) {
  const auto first = static_cast<unsigned char>(character.front());
  std::uint32_t code = character.size() == 1 ? first : first & (0x7FU >> character.size());
  for (const char c : character.substr(1)) code = code << 6 | (static_cast<unsigned char>(c) & 0x3FU);
  return code;
}

bool IsSeen(std::uint32_t code) {
  return std::none_of(std::begin(kUnseen), std::end(kUnseen),
                      [code](const Range& range) { return range.first <= code && code <= range.last; });
}

std::string Digits(std::uint32_t value, int digits) {
  std::string text;
  for (; value != 0 || digits > 0; value >>= 4, --digits) text.insert(text.begin(), kDigits[value & 0xF]);
  return text;
}

/// Appends the character that `text` begins with, or an escape in its place; returns how many bytes it took.
std::size_t AppendPrintable(std::string_view text, std::string& printable) {
  const auto character = text.substr(0, descriptions::CharacterLength(text));
  const std::uint32_t code = character.empty() ? 0 : CodeOf(character);
  if (character.empty() || (code < 0x80 && !IsSeen(code))) {
    printable += "\\x" + Digits(static_cast<unsigned char>(text.front()), 2);
    return 1;
  }
  if (IsSeen(code)) {
    printable += character;
  } else {
    printable += "\\u" + Digits(code, 4);
  }
  return character.size();
}

}  // namespace

std::string Printable(std::string_view text) {
  std::string printable;
  printable.reserve(text.size());
  while (!text.empty()) text.remove_prefix(AppendPrintable(text, printable));
  return printable;
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  while (!text.empty() && quoted.size() <= kLongestQuote) text.remove_prefix(AppendPrintable(text, quoted));
  return quoted + (text.empty() ? "\"" : "...\"");
}

std::string Hex(unsigned int value, int digits) { return "0x" + Digits(value, digits); }

}  // namespace plddb
