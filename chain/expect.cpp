#include <algorithm>

#include "chain/Chain.h"
#include "foundation/printed_forms.h"

namespace plddb::chain {
namespace {

std::string FoundText(const ChainPosition& position) {
  const std::string id = position.id ? internal::Hex(*position.id, 8) : "no IDCODE";
  if (position.Match() == nullptr) return "an unknown device (" + id + ")";
  std::string names;
  for (const Candidate& candidate : position.Candidates()) {
    const std::string name = DeviceName(*candidate.device);
    if (names.size() < 200) names += (names.empty() ? "" : " or ") + name;
  }
  return names + " (" + id + ")";
}

Expectation Compare(const Chain& chain, const std::vector<std::string>& names, std::size_t i) {
  const bool isThere = i < chain.size();
  if (i >= names.size()) return {false, "found " + FoundText(chain[i]) + ", expected nothing"};
  const std::string name = internal::Printable(names[i]);
  if (isThere && IsNamed(chain[i], names[i])) return {true, name + ", as expected"};
  return {false, "expected " + name + ", found " + (isThere ? FoundText(chain[i]) : "nothing")};
}

}  // namespace

std::vector<Expectation> Compare(const Chain& chain, const std::vector<std::string>& names) {
  std::vector<Expectation> all;
  const std::size_t count = std::max(names.size(), chain.size());
  for (std::size_t i = 0; i < count; ++i) all.push_back(Compare(chain, names, i));
  return all;
}

}  // namespace plddb::chain
