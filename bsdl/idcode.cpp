#include "idcode.h"

#include "foundation/bits.h"

namespace plddb::bsdl {
namespace {

constexpr int kMostOpenPartBits = 4;

}  // namespace

Idcode ToIdcode(std::string_view pattern) {
  Idcode id;
  for (const char bit : pattern) {
    id.value = id.value << 1 | (bit == '1' ? 1U : 0U);
    id.fixed = id.fixed << 1 | (bit == 'X' ? 0U : 1U);
  }
  return id;
}

std::uint32_t ToNumber(std::string_view bits) { return ToIdcode(bits).value; }

std::string WhyTooOpen(std::string_view pattern) {
  const std::uint32_t open = ~ToIdcode(pattern).fixed;
  const int parts = internal::BitCount(open & kPartBits);
  if ((open & kMakerBits) != 0) return "the IDCODE leaves the maker open, bits 11 to 1: other devices answer to it, too";
  if (parts <= kMostOpenPartBits) return "";
  return "the IDCODE leaves " + std::to_string(parts) + " bits of the part number open, bits 27 to 12: expected at most " +
         std::to_string(kMostOpenPartBits);
}

}  // namespace plddb::bsdl
