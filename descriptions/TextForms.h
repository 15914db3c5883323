#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// \file
/// The forms in which messages show texts and numbers.

namespace plddb {

/// `text` as a terminal can show it without harm. Escapes take the place of control characters, of characters that nobody sees,
/// that change the direction of writing or end a line, and of bytes that are not UTF-8: "\x1B", "\u202E".
std::string Printable(std::string_view text);

/// `text`, printable; "-" for an empty or missing one.
std::string TextOrDash(const char* text);

/// `text`, whose lines stay, with `escape(code)` for each character that Printable escapes: for formats with their own escapes.
std::string EscapeUnseen(std::string_view text, std::string (*escape)(std::uint32_t code));

/// `text`, printable and in double quotes; a long one is shortened.
std::string Quoted(std::string_view text);

/// Such as "0x0362D093"; `digits` at least.
std::string Hex(unsigned int value, int digits);

}  // namespace plddb
