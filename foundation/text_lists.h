#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "characters.h"

/// \file
/// The text formats of the setters, one cursor each.
///
/// A setter may be given an entry of the list it replaces, and `visit` may free it. A cursor therefore takes a std::string:
/// passing a char* makes the private copy that items are cut from.

namespace plddb::internal {

/// Calls `visit(std::string_view)` for each item of a semicolon item list, in order.
///
///   "REG;100;200 ; 300;"  100, 200, 300    the text before the first ';' is a label
///   ";A;B"                A                an item counts only when a ';' follows it
///   "X;;A;"               nothing          the first empty segment ends the list
///   "L;  ;5;"             "", 5            blanks are trimmed after that test, not before
template <typename Visit>
void ForEachSemicolonItem(const std::string& text, Visit visit) {
  std::string_view rest = text;
  rest.remove_prefix(rest.find(';') + 1);  // no ';' at all: npos + 1 is 0
  for (;;) {
    const auto end = rest.find(';');
    if (end == 0 || end == rest.npos) return;
    visit(Trim(rest.substr(0, end)));
    rest.remove_prefix(end + 1);
  }
}

/// Calls `visit(std::string_view)` for each item of a quoted item list, in order. There is no escape for a quote.
///
///   x "A", " B " y        A, B             text outside the quotes is ignored, items are trimmed
///   "A" "" "C"            A                an empty pair of quotes ends the list
///   "A" "C                A                so does a missing closing quote
///   "A" " " "C"           A, "", C         blanks are trimmed after that test, not before
template <typename Visit>
void ForEachQuotedItem(const std::string& text, Visit visit) {
  std::string_view rest = text;
  for (;;) {
    const auto open = rest.find('"');
    if (open == rest.npos) return;
    rest.remove_prefix(open + 1);
    const auto close = rest.find('"');
    if (close == 0 || close == rest.npos) return;
    visit(Trim(rest.substr(0, close)));
    rest.remove_prefix(close + 1);
  }
}

/// Calls `visit(std::string_view)` for each token of a list of multiboot numbers, "16; 32 48". Only runs of ';', blank, tab and
/// newline separate tokens.
template <typename Visit>
void ForEachToken(const std::string& text, Visit visit) {
  const auto isDelimiter = [](char c) { return c == ';' || c == ' ' || c == '\t' || c == '\n'; };
  const char* const last = text.data() + text.size();
  for (const char* first = text.data();;) {
    first = std::find_if_not(first, last, isDelimiter);
    if (first == last) return;
    const char* const end = std::find_if(first, last, isDelimiter);
    visit(std::string_view(first, static_cast<std::size_t>(end - first)));
    first = end;
  }
}

/// The low 32 bits of the number, base 10, at the start of a text. Leading white space and one sign are allowed; anything after
/// the digits is ignored; no digits give 0. The number is read with 64 bits and limited to their range: a huge number gives -1,
/// a huge negative one 0. It does not use strtol, whose white space depends on the locale.
inline int ParseNumber(std::string_view text) {
  text = TrimLeft(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  const std::uint64_t limit = negative ? std::uint64_t{1} << 63 : INT64_MAX;
  constexpr std::uint64_t kTenth = INT64_MAX / 10;  // of both limits
  std::uint64_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    value = value > kTenth ? limit : std::min(value * 10 + static_cast<unsigned>(c - '0'), limit);
  }
  const auto bits = static_cast<unsigned int>(value);
  return static_cast<int>(negative ? 0U - bits : bits);
}

struct NumberRange {
  int first = 0;
  int last = 0;
};

/// A range of numbers, "0 to 31", cut at the first "to", wherever that is. Without "to", `first` is 0 and `last` is read after
/// the first character.
inline NumberRange ParseRange(std::string_view text) {
  const auto to = text.find("to");
  if (to == text.npos) return {0, ParseNumber(text.substr(text.empty() ? 0 : 1))};
  return {ParseNumber(text.substr(0, to)), ParseNumber(text.substr(to + 2))};
}

}  // namespace plddb::internal
