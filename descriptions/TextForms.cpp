#include "TextForms.h"

#include <algorithm>

#include "foundation/printed_forms.h"
#include "foundation/utf8.h"

namespace plddb {

std::string Printable(std::string_view text) { return internal::Printable(text); }

std::string EscapeUnseen(std::string_view text, std::string (*escape)(std::uint32_t code)) {
  std::string escaped;
  escaped.reserve(text.size());
  while (!text.empty()) {
    const internal::Utf8Character character = internal::FirstUtf8Character(text);
    const std::size_t length = std::max<std::size_t>(character.length, 1);
    const std::uint32_t code = character.length == 0 ? static_cast<unsigned char>(text.front()) : character.code;
    if (character.length != 0 && (code == '\n' || internal::IsSeen(code))) {
      escaped += text.substr(0, length);
    } else {
      escaped += escape(code);
    }
    text.remove_prefix(length);
  }
  return escaped;
}

std::string Quoted(std::string_view text) { return internal::Quoted(text); }

std::string Hex(unsigned int value, int digits) { return internal::Hex(value, digits); }

}  // namespace plddb
