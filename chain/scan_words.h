#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// Words and numbers in lines of scanning tools.

namespace plddb::chain {

inline constexpr std::string_view kBlanks = " \t";

std::vector<std::string_view> Words(std::string_view text);
std::string_view FirstWord(std::string_view text);  ///< Empty, at the end of `text`, when there is none.
std::string LastWord(std::string_view text);
std::string Trimmed(std::string_view text);

/// The rest of `text` after `words`; empty if it does not contain them.
std::string_view After(std::string_view text, std::string_view words);

/// The number that starts `text`, after blanks; 0 if there is none or it is too large.
unsigned long LeadingNumber(std::string_view text);

/// The number that is all of `text`.
std::optional<unsigned long> WholeNumber(std::string_view text);

/// The number after the last '[' of `text`.
unsigned long BracketedNumber(std::string_view text);

/// Whether `text` is `least` to `most` hex digits.
bool AreHexDigits(std::string_view text, std::size_t least, std::size_t most);

/// The number of hex digits, at most 8 of them.
unsigned int HexNumber(std::string_view digits);

/// The id at the start of `text`, after blanks: 0x and 8 hex digits, or at least `least` of them. None otherwise: with fewer
/// digits the text was cut off, and more are no id.
std::optional<unsigned int> LeadingId(std::string_view text, std::size_t least = 8);
inline constexpr const char* kExpectedFullId = "expected an id: 0x and 8 hex digits";

/// The 8 hex digits at the start of `text`, after blanks, with or without 0x.
std::optional<unsigned int> LeadingBareId(std::string_view text);
inline constexpr const char* kExpectedBareId = "expected an id: 8 hex digits";

inline std::optional<unsigned int> IdUnlessZero(unsigned int id) { return id == 0 ? std::nullopt : std::optional(id); }

/// Whether `text` may precede what a tool printed: blanks, marks of quotes, or a time that was put before each line.
bool IsMargin(std::string_view text);

}  // namespace plddb::chain
