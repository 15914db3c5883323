#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plddb::chain {

/// What is wrong with a text without any chain, and at which byte.
struct Refusal {
  std::size_t at;
  std::string text;
};

Refusal WhyNoChain(std::string_view text);

/// Notes on scans that failed, for a text that holds a chain all the same.
std::vector<std::string> FailedScans(std::string_view text);

}  // namespace plddb::chain
