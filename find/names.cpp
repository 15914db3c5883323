// Patterns, beginnings and parts of names.

#include <algorithm>

#include "find/search.h"
#include "foundation/text_match.h"

namespace plddb::find {
namespace {

using internal::IsSameLetter;

/// Whether `text` matches `pattern`: '*' is any characters, '?' is one. If the rest does not match, the last '*'
/// takes one character more; it never has to give one back.
bool Describes(std::string_view pattern, std::string_view text) {
  std::size_t p = 0;
  std::size_t t = 0;
  std::size_t star = pattern.npos;
  std::size_t taken = 0;  // where in `text` the characters of the last star end
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      taken = t;
    } else if (p < pattern.size() && (pattern[p] == '?' || IsSameLetter(pattern[p], text[t]))) {
      ++p;
      ++t;
    } else if (star != pattern.npos) {
      p = star + 1;
      t = ++taken;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == pattern.npos;
}

bool Contains(std::string_view text, std::string_view part) {
  return std::search(text.begin(), text.end(), part.begin(), part.end(), IsSameLetter) != text.end();
}

}  // namespace

Matches FindPattern(const Databases& databases, const std::string& text, const std::string& family) {
  if (text.find_first_of("*?") == text.npos || text.size() > kLongestPart) return {};
  return FindNames(databases, family, Kind::kPattern, [&](const char* name) { return Describes(text, name); });
}

Matches FindBeginning(const Databases& databases, const std::string& text, const std::string& family) {
  return FindNames(databases, family, Kind::kBegins,
                   [&](const char* name) { return internal::AfterPrefix(name, text.c_str()) != nullptr; });
}

Matches FindPart(const Databases& databases, const std::string& text, const std::string& family) {
  if (text.size() > kLongestPart) return {};
  return FindNames(databases, family, Kind::kContains, [&](const char* name) { return Contains(name, text); });
}

}  // namespace plddb::find
