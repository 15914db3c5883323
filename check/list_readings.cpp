#include "check/list_readings.h"

#include <algorithm>

#include "foundation/text_lists.h"

namespace plddb::check {
namespace {

constexpr std::size_t kUsualItems = 16;  // as many as most lists have

constexpr bool IsSeparator(char c) { return c == ',' || c == ';' || internal::IsWhiteSpace(c); }

std::size_t OffsetAfter(std::string_view item, const std::string& text) {
  return static_cast<std::size_t>(item.data() + item.size() - text.data());
}

/// The rest of `text`, from the first character that is neither `closing` nor a separator.
std::string_view FirstLost(std::string_view text, char closing) {
  const auto isLost = [closing](char c) { return c != closing && !IsSeparator(c); };
  const auto lost = std::find_if(text.begin(), text.end(), isLost);
  return internal::Trim(text.substr(static_cast<std::size_t>(lost - text.begin())));
}

/// The first word outside the quotes.
std::string_view FirstWord(std::string_view outside) {
  const std::string_view lost = FirstLost(outside, ',');
  return internal::Trim(lost.substr(0, lost.find_first_of(",;")));
}

}  // namespace

ListReading ReadSemicolonList(const std::string& text) {
  ListReading reading;
  reading.items.reserve(kUsualItems);
  const auto labelEnd = text.find(';');
  if (labelEnd != text.npos) reading.label = internal::Trim(std::string_view(text).substr(0, labelEnd));
  std::size_t next = labelEnd + 1;  // without any ';' npos + 1 is 0
  internal::ForEachSemicolonItem(text, [&](std::string_view item) {
    reading.items.push_back(item);
    next = text.find(';', OffsetAfter(item, text)) + 1;
  });
  const std::string_view rest = std::string_view(text).substr(next);
  if (rest.substr(0, 1) == ";") {
    reading.afterEmpty = FirstLost(rest, ';');
  } else {
    reading.unclosed = internal::Trim(rest);
  }
  return reading;
}

ListReading ReadQuotedList(const std::string& text) {
  ListReading reading;
  reading.items.reserve(kUsualItems);
  std::string_view rest = text;
  const auto skipTo = [&](std::size_t quote) {
    if (reading.outside.empty()) reading.outside = FirstWord(rest.substr(0, quote));
  };
  internal::ForEachQuotedItem(text, [&](std::string_view item) {
    skipTo(rest.find('"'));
    reading.items.push_back(item);
    rest = std::string_view(text).substr(text.find('"', OffsetAfter(item, text)) + 1);
  });
  const auto open = rest.find('"');
  skipTo(open);
  if (open == rest.npos) return reading;
  rest.remove_prefix(open + 1);
  if (rest.substr(0, 1) == "\"") {
    reading.afterEmpty = FirstLost(rest, '"');
  } else {
    reading.unclosed = internal::Trim(rest);
  }
  return reading;
}

ListReading ReadTokens(const std::string& text) {
  ListReading reading;
  internal::ForEachToken(text, [&](std::string_view token) { reading.items.push_back(token); });
  return reading;
}

}  // namespace plddb::check
