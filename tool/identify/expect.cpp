#include "identify/expect.h"

#include <algorithm>

#include "command.h"
#include "device_text.h"

namespace tool {
namespace {

std::string FoundText(const ChainPosition& position) {
  const std::string id = position.id ? IdText(*position.id) : "no IDCODE";
  if (position.Match() == nullptr) return "an unknown device (" + id + ")";
  std::string names;
  for (const Candidate& candidate : position.Candidates()) {
    const std::string name = DeviceName(*candidate.device);
    if (names.size() < 200) names += (names.empty() ? "" : " or ") + name;
  }
  return names + " (" + id + ")";
}

std::string Compared(const IdentifiedChain& identified, const std::vector<std::string>& names, std::size_t i, bool& agrees) {
  const bool isThere = i < identified.chain.size();
  if (i >= names.size()) {
    agrees = false;
    return "found " + FoundText(identified.chain[i]) + ", expected nothing";
  }
  const std::string name = Printable(names[i]);
  if (isThere && IsNamed(identified.chain[i], names[i])) return name + ", as expected";
  agrees = false;
  return "expected " + name + ", found " + (isThere ? FoundText(identified.chain[i]) : "nothing");
}

}  // namespace

std::vector<std::string> ExpectedNames(const std::string& text) {
  std::vector<std::string> names;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    std::string name = text.substr(start, comma - start);
    name.erase(0, name.find_first_not_of(' '));
    name.erase(name.find_last_not_of(' ') + 1);
    if (name.empty()) throw WrongUsage("--expect " + Printable(text) + ": expected NAME,NAME,... without an empty name");
    names.push_back(std::move(name));
    start = comma + 1;
  }
  return names;
}

bool CompareWithExpected(const IdentifiedChain& identified, const std::vector<std::string>& names, Output& output) {
  bool agrees = true;
  for (std::size_t i = 0; i < std::max(names.size(), identified.chain.size()); ++i) {
    output << "position " + std::to_string(i) + ": " + Compared(identified, names, i, agrees) + "\n";
  }
  return agrees;
}

}  // namespace tool
