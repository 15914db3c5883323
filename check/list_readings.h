#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace plddb::check {

/// The items that a format reads from a list text, and the parts it ignores. All are parts of `text`.
struct ListReading {
  std::string_view label;  // of a semicolon list
  std::vector<std::string_view> items;
  std::string_view unclosed;    // lost, since nothing closes it
  std::string_view afterEmpty;  // lost after an empty item
  std::string_view outside;     // lost outside the quotes: the first such word

  bool LosesItems() const { return !unclosed.empty() || !afterEmpty.empty(); }
};

/// \name The formats of the setters, as foundation/text_lists.h reads them. Lend `text`.
///@{
ListReading ReadSemicolonList(const std::string& text);
ListReading ReadQuotedList(const std::string& text);
ListReading ReadTokens(const std::string& text);
///@}

}  // namespace plddb::check
