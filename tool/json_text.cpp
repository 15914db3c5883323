#include "json_text.h"

#include <cstdint>

#include "TextForms.h"

namespace tool {
namespace {

std::string Escape(std::uint32_t unit) { return "\\u" + plddb::Hex(unit, 4).substr(2); }

/// As JSON writes a character: in units of UTF-16.
std::string EscapedCharacter(std::uint32_t code) {
  if (code < 0x10000) return Escape(code);
  return Escape(0xD800 + ((code - 0x10000) >> 10)) + Escape(0xDC00 + ((code - 0x10000) & 0x3FF));
}

}  // namespace

/// Outside of strings there is nothing but ASCII that is seen, and line ends.
std::string ToText(const Json& json) {
  return plddb::EscapeUnseen(json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n", EscapedCharacter);
}

}  // namespace tool
