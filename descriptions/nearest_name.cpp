#include "nearest_name.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "foundation/characters.h"

namespace plddb::descriptions {
namespace {

constexpr std::size_t kLongestName = 40;

std::size_t Difference(std::size_t a, std::size_t b) { return a < b ? b - a : a - b; }

/// How many letters have to be put in, left out or replaced to make `b` of `a`, ignoring case. Neither is longer than
/// kLongestName.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::array<std::size_t, kLongestName + 1> row{};  // the distances of a part of `a` from all beginnings of `b`
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = internal::ToLower(a[i - 1]) == internal::ToLower(b[j - 1]);
      const std::size_t replaced = diagonal + (same ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row[b.size()];
}

}  // namespace

std::string_view NearestName(std::string_view name, const std::vector<std::string_view>& names) {
  std::string_view nearest;
  if (name.size() > kLongestName) return nearest;
  std::size_t limit = (name.size() + 2) / 3 + 1;  // a distance below this is near
  for (const std::string_view candidate : names) {
    if (candidate.size() > kLongestName || Difference(name.size(), candidate.size()) >= limit) continue;
    const std::size_t distance = Distance(name, candidate);
    if (distance >= limit) continue;
    limit = distance;
    nearest = candidate;
  }
  return nearest;
}

}  // namespace plddb::descriptions
