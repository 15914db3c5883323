#include "ir_lengths.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "device_text.h"

namespace tool {
namespace {

/// All of `text` as a decimal number from `least` to `most`.
std::optional<std::size_t> Number(std::string_view text, std::size_t least, std::size_t most) {
  std::size_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < least || value > most) return std::nullopt;
  return value;
}

}  // namespace

std::string TakeIrLengths(plddb::chain::Chain& chain, const std::vector<std::string>& texts) {
  const std::string last = std::to_string(chain.size() - 1);
  for (const std::string& text : texts) {
    const std::size_t equals = std::min(text.find('='), text.size());
    const auto position = Number(std::string_view(text).substr(0, equals), 0, chain.size() - 1);
    const auto length = Number(std::string_view(text).substr(std::min(equals + 1, text.size())),
                               plddb::chain::kShortestIrLength, plddb::chain::kLongestIrLength);
    if (!position || !length) {
      return "--ir " + Printable(text) + ": expected POSITION=LENGTH, from 0 to " + last + " and from 2 to 65535";
    }
    if (chain[*position].givenIrLength != 0) return "--ir: position " + std::to_string(*position) + " twice";
    chain[*position].givenIrLength = static_cast<unsigned short>(*length);
  }
  return "";
}

}  // namespace tool
