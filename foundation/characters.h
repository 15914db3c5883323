#pragma once

#include <string>
#include <string_view>

/// \file
/// Letters, digits and blanks. ASCII only, whatever the locale: a database must answer the same on every machine.

namespace plddb::internal {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// \name Kinds of characters: of a `char`, or of a byte as streams give it, where -1 is the end.
///@{
constexpr bool IsWhiteSpace(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsDigit(int c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(int c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// The value of a hexadecimal digit, or -1.
constexpr int HexDigit(int c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}
///@}

inline std::string_view TrimLeft(std::string_view text) {
  while (!text.empty() && IsWhiteSpace(text.front())) text.remove_prefix(1);
  return text;
}

inline std::string_view TrimRight(std::string_view text) {
  while (!text.empty() && IsWhiteSpace(text.back())) text.remove_suffix(1);
  return text;
}

inline std::string_view Trim(std::string_view text) { return TrimRight(TrimLeft(text)); }

inline bool StartsWith(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }

inline bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

inline std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = ToUpper(c);
  return upper;
}

}  // namespace plddb::internal
