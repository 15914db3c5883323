#include "TextForms.h"

#include "foundation/printed_forms.h"

namespace plddb {

std::string Printable(std::string_view text) { return internal::Printable(text); }

std::string TextOrDash(const char* text) { return internal::TextOrDash(text); }

std::string EscapeUnseen(std::string_view text, std::string (*escape)(std::uint32_t code)) {
  std::string escaped;
  escaped.reserve(text.size());
  const auto unlessLineEnd = [escape](std::uint32_t code, bool) { return code == '\n' ? "\n" : escape(code); };
  while (!text.empty()) text.remove_prefix(internal::AppendCharacter(text, escaped, unlessLineEnd));
  return escaped;
}

std::string Quoted(std::string_view text) { return internal::Quoted(text); }

std::string Hex(unsigned int value, int digits) { return internal::Hex(value, digits); }

}  // namespace plddb
