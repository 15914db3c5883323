#include "identify/expect.h"

#include <algorithm>

#include "command.h"
#include "device_text.h"

namespace tool {

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
  std::size_t position = 0;
  for (const plddb::chain::Expectation& one : plddb::chain::Compare(identified.chain, names)) {
    output << "position " + std::to_string(position++) + ": " + one.text + "\n";
    agrees = agrees && one.agrees;
  }
  return agrees;
}

}  // namespace tool
