#include "chain/scan_words.h"

#include <algorithm>
#include <charconv>

#include "chain/scan_text.h"
#include "foundation/characters.h"

namespace plddb::chain {
namespace {

bool IsWordCharacter(char c) {
  const char upper = internal::ToUpper(c);
  return (upper >= 'A' && upper <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// The letters and digits that start `text`, after blanks and the marks of emphasis and code.
std::string_view LeadingRun(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t*`"), text.size()));
  return text.substr(0, static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsWordCharacter) - text.begin()));
}

bool HasPrefix(std::string_view text) { return text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X"; }

}  // namespace

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
  const std::size_t last = text.find_last_not_of(kBlanks);
  if (last == text.npos) return "";
  const std::size_t before = text.find_last_of(kBlanks, last);  // none: npos + 1 is 0
  return std::string(text.substr(before + 1, last - before));
}

std::string Trimmed(std::string_view text) { return std::string(internal::Trim(text)); }

std::string_view After(std::string_view text, std::string_view words) {
  const std::size_t at = text.find(words);
  return at == text.npos ? text.substr(text.size()) : text.substr(at + words.size());
}

unsigned long LeadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  unsigned long number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::optional<unsigned long> WholeNumber(std::string_view text) {
  unsigned long number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

unsigned long BracketedNumber(std::string_view text) {
  const std::size_t bracket = text.rfind('[');
  return bracket == text.npos ? 0 : LeadingNumber(text.substr(bracket + 1));
}

bool AreHexDigits(std::string_view text, std::size_t least, std::size_t most) {
  return text.size() >= least && text.size() <= most && text.find_first_not_of("0123456789abcdefABCDEF") == text.npos;
}

unsigned int HexNumber(std::string_view digits) {
  unsigned int number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  return number;
}

std::optional<unsigned int> LeadingId(std::string_view text, std::size_t least) {
  std::string_view run = LeadingRun(text);
  if (!HasPrefix(run) || !AreHexDigits(run.substr(2), least, 8)) return std::nullopt;
  return HexNumber(run.substr(2));
}

std::optional<unsigned int> LeadingBareId(std::string_view text) {
  std::string_view run = LeadingRun(text);
  if (HasPrefix(run)) run.remove_prefix(2);
  return AreHexDigits(run, 8, 8) ? std::optional(HexNumber(run)) : std::nullopt;
}

bool IsMargin(std::string_view text) {
  if (WithoutMargin(text).empty()) return true;
  if (kBlanks.find(text.back()) == kBlanks.npos) return false;
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const std::size_t colon = std::min(text.find(':'), text.size());
  return colon > 0 && colon + 1 < text.size() && isDigit(text[colon - 1]) && isDigit(text[colon + 1]);
}

}  // namespace plddb::chain
