#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace words {

/// The words of letters, digits and underscores in `text` that are right between `before` and `after`.
inline std::set<std::string> Between(std::string_view text, std::string_view before, std::string_view after) {
  static constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
  std::set<std::string> words;
  for (auto at = text.find(before); at != text.npos; at = text.find(before, at + 1)) {
    std::string_view rest = text.substr(at + before.size());
    const auto word = rest.substr(0, rest.find_first_not_of(kLetters));
    rest.remove_prefix(word.size());
    if (!word.empty() && rest.substr(0, after.size()) == after) words.emplace(word);
  }
  return words;
}

}  // namespace words
