#include "chain/scan_words.h"

#include <algorithm>
#include <charconv>

namespace plddb::chain {

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  for (std::size_t start = 0; (start = text.find_first_not_of(kBlanks, start)) != text.npos;) {
    const std::size_t end = std::min(text.find_first_of(kBlanks, start), text.size());
    words.push_back(text.substr(start, end - start));
    start = end;
  }
  return words;
}

std::string_view FirstWord(std::string_view text) {
  const std::size_t start = std::min(text.find_first_not_of(kBlanks), text.size());
  return text.substr(start, text.find_first_of(kBlanks, start) - start);
}

std::string LastWord(std::string_view text) {
  const auto words = Words(text);
  return words.empty() ? "" : std::string(words.back());
}

unsigned long LeadingNumber(std::string_view text) {
  unsigned long number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

bool IsHex(std::string_view text, std::size_t least, std::size_t most) {
  if (text.substr(0, 2) != "0x") return false;
  text.remove_prefix(2);
  return text.size() >= least && text.size() <= most && text.find_first_not_of("0123456789abcdefABCDEF") == text.npos;
}

std::optional<unsigned int> HexNumber(std::string_view text) {
  unsigned int number = 0;
  text.remove_prefix(2);
  const bool fits = std::from_chars(text.data(), text.data() + text.size(), number, 16).ec == std::errc();
  return fits ? std::optional(number) : std::nullopt;
}

std::optional<unsigned int> FullId(std::string_view word) { return IsHex(word, 8, 8) ? HexNumber(word) : std::nullopt; }

}  // namespace plddb::chain
