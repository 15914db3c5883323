#pragma once

#include <string>
#include <string_view>

/// \file
/// How messages print texts and numbers.

namespace plddb {

/// `text` in a form that is safe to print on a terminal. Escapes such as "\x1B" and "\u202E" replace control characters,
/// invisible characters, characters that change the direction of writing or end a line, and bytes that are not UTF-8.
std::string Printable(std::string_view text);

/// `text`, printable and in double quotes; a long text is shortened.
std::string Quoted(std::string_view text);

/// For example "0x0362D093", with at least `digits` digits.
std::string Hex(unsigned int value, int digits);

}  // namespace plddb
