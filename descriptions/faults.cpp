#include "faults.h"

#include <algorithm>
#include <utility>

#include "descriptions/text_position.h"

namespace plddb::descriptions {
namespace {

/// A file that does not contain descriptions may have millions.
constexpr std::size_t kMostFaults = 10000;

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
  if (full_) found_.push_back({found_.back().offset, "too many faults: the rest is not listed"});
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

}  // namespace plddb::descriptions
