#pragma once

#include <string_view>

/// \file
/// What a letter and a blank are. ASCII only, whatever the locale: databases must answer alike on every machine.

namespace plddb::internal {

constexpr char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

inline constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

inline std::string_view TrimLeft(std::string_view text) {
  const auto first = text.find_first_not_of(kWhiteSpace);
  return first == text.npos ? std::string_view() : text.substr(first);
}

inline std::string_view TrimRight(std::string_view text) {
  return text.substr(0, text.find_last_not_of(kWhiteSpace) + 1);  // npos + 1 is 0
}

inline std::string_view Trim(std::string_view text) { return TrimRight(TrimLeft(text)); }

}  // namespace plddb::internal
