#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plddb::chain {

/// The mistake in a text without any chain, and its byte.
struct Refusal {
  std::size_t at;
  std::string text;
};

Refusal WhyNoChain(std::string_view text);

/// Notes on scans that failed, for a text that contains a chain anyway.
std::vector<std::string> FailedScans(std::string_view text);

}  // namespace plddb::chain
