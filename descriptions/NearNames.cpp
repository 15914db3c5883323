#include "NearNames.h"

#include <algorithm>
#include <array>
#include <string>
#include <tuple>

#include "foundation/characters.h"

namespace plddb {
namespace {

/// Longer texts are not names; the limit bounds the time and memory of a comparison.
constexpr std::size_t kLongestName = 64;

/// The part of a name that is compared.
std::string Letters(std::string_view name) {
  constexpr std::string_view kSeparators = "-_/. ";
  std::string letters;
  for (const char c : name) {
    if (kSeparators.find(c) == kSeparators.npos) letters.push_back(internal::ToUpper(c));
  }
  return letters;
}

/// The number of letters to insert, delete, replace or swap with their neighbour to turn `a` into `b`.
std::size_t Distance(std::string_view a, std::string_view b) {
  // Row i holds the distances of the first i letters of `a` from all beginnings of `b`; three rows are enough.
  using Row = std::array<std::size_t, kLongestName + 1>;
  Row earlier{}, last{}, row{};
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    earlier = last;
    last = row;
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
      const bool isExchange = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (isExchange) row[j] = std::min(row[j], earlier[j - 2] + 1);
    }
  }
  return row[b.size()];
}

/// The number of letters that both have in common at their start and end.
std::size_t SharedEnds(const std::string& a, const std::string& b) {
  const auto begin = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
  const auto end = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first - a.rbegin();
  return static_cast<std::size_t>(begin + end);
}

struct NearName {
  std::size_t distance;
  std::size_t lengthDifference;
  std::size_t sharedEnds;
  std::string_view name;
};

bool IsNearer(const NearName& a, const NearName& b) {
  return std::tuple(a.distance, a.lengthDifference, b.sharedEnds) < std::tuple(b.distance, b.lengthDifference, a.sharedEnds);
}

}  // namespace

std::vector<std::string_view> NearNames(std::string_view name, const std::vector<std::string_view>& names, std::size_t most) {
  if (name.size() > kLongestName) return {};
  const std::string wanted = Letters(name);
  const std::size_t limit = (wanted.size() + 3) / 4;
  std::vector<NearName> candidates;
  for (const std::string_view known : names) {
    if (known.size() > kLongestName) continue;
    const std::string letters = Letters(known);
    const std::size_t difference = std::max(letters.size(), wanted.size()) - std::min(letters.size(), wanted.size());
    if (difference > limit) continue;
    const std::size_t distance = Distance(wanted, letters);
    if (distance <= limit) candidates.push_back({distance, difference, SharedEnds(wanted, letters), known});
  }
  std::stable_sort(candidates.begin(), candidates.end(), IsNearer);
  std::vector<std::string_view> near;
  for (const NearName& candidate : candidates) {
    if (near.size() == most) break;
    if (std::find(near.begin(), near.end(), candidate.name) == near.end()) near.push_back(candidate.name);
  }
  return near;
}

}  // namespace plddb
