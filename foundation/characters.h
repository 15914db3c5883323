#pragma once

#include <string_view>

/// \file
/// Letters and blanks. ASCII only, whatever the locale: a database must answer the same on every machine.

namespace plddb::internal {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

constexpr bool IsWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

inline std::string_view TrimLeft(std::string_view text) {
  while (!text.empty() && IsWhiteSpace(text.front())) text.remove_prefix(1);
  return text;
}

inline std::string_view TrimRight(std::string_view text) {
  while (!text.empty() && IsWhiteSpace(text.back())) text.remove_suffix(1);
  return text;
}

inline std::string_view Trim(std::string_view text) { return TrimRight(TrimLeft(text)); }

}  // namespace plddb::internal
