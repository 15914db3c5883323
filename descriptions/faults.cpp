#include "faults.h"

#include <algorithm>
#include <utility>

#include "descriptions/text_position.h"
#include "descriptions/xml_text.h"

namespace plddb::descriptions {
namespace {

/// A file that is not made of descriptions may have millions.
constexpr std::size_t kMostFaults = 10000;

constexpr std::size_t kLongestQuote = 60;

bool IsPrintable(std::string_view character) {
  return !character.empty() && static_cast<unsigned char>(character.front()) >= ' ' && character != "\x7F";
}

}  // namespace

void Faults::Add(std::size_t offset, std::string text) {
  if (found_.size() < kMostFaults) {
    found_.push_back({offset, std::move(text)});
  } else {
    full_ = true;
  }
}

std::vector<Fault> Faults::Located(std::string_view text, const std::string& file) {
  std::stable_sort(found_.begin(), found_.end(), [](const Found& a, const Found& b) { return a.offset < b.offset; });
  if (full_) found_.push_back({found_.back().offset, "too many faults: the rest of them is not listed"});
  std::vector<Fault> faults;
  faults.reserve(found_.size());
  TextPositions positions(text);
  for (Found& found : found_) {
    const TextPosition position = positions.At(found.offset);
    faults.push_back({file, position.line, position.column, std::move(found.text)});
  }
  found_.clear();
  return faults;
}

std::string Quoted(std::string_view text) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string quoted = "\"";
  while (!text.empty()) {
    if (quoted.size() > kLongestQuote) {
      quoted += "...";
      break;
    }
    const auto character = text.substr(0, CharacterLength(text));
    if (IsPrintable(character)) {
      quoted += character;
    } else {
      const auto byte = static_cast<unsigned char>(text.front());
      quoted += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    text.remove_prefix(std::max<std::size_t>(character.size(), 1));
  }
  return quoted += '"';
}

}  // namespace plddb::descriptions
