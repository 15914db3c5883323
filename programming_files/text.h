#pragma once

#include <cctype>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// Small helps for texts in ASCII; the locale does not count.

namespace plddb::programming_files {

constexpr bool IsBlank(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsDigit(int c) { return c >= '0' && c <= '9'; }
constexpr char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr bool IsLetter(int c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
constexpr bool IsWord(int c) { return IsLetter(c) || IsDigit(c) || c == '_'; }

/// The value of a hex digit, or -1.
constexpr int HexDigit(int c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

inline std::string Upper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = Upper(c);
  return upper;
}

inline bool StartsWith(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }

inline std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
  while (!text.empty() && IsBlank(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
  return text;
}

/// The text up to the first blank.
inline std::string_view FirstWord(std::string_view text) {
  std::size_t size = 0;
  while (size < text.size() && !IsBlank(static_cast<unsigned char>(text[size]))) ++size;
  return text.substr(0, size);
}

inline std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  for (text = Trim(text); !text.empty(); text = Trim(text)) {
    words.push_back(FirstWord(text));
    text.remove_prefix(words.back().size());
  }
  return words;
}

/// All of `text` as a number of `base` (10 or 16) up to 32 bits.
inline std::optional<std::uint32_t> Number(std::string_view text, unsigned int base = 10) {
  std::uint64_t value = 0;
  for (const char c : text) {
    const int digit = HexDigit(static_cast<unsigned char>(c));
    if (digit < 0 || static_cast<unsigned int>(digit) >= base) return std::nullopt;
    value = value * base + static_cast<unsigned int>(digit);
    if (value > 0xFFFFFFFF) return std::nullopt;
  }
  if (text.empty()) return std::nullopt;
  return static_cast<std::uint32_t>(value);
}

}  // namespace plddb::programming_files
