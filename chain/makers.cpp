#include <string>
#include <string_view>

#include "chain/Chain.h"
#include "chain/makers_table.h"

namespace plddb::chain {
namespace {

constexpr unsigned int kContinuation = 0x7F;
constexpr unsigned int kBanksOfIdcode = 16;  // it holds 4 bits of the bank

/// " (or ...)": the maker of a bank that an IDCODE cannot tell from `bank`.
std::string OtherMaker(unsigned int bank, unsigned int code) {
  const std::string_view other = MakerName(bank + kBanksOfIdcode, code);
  if (other.empty()) return "";
  return " (or " + std::string(other) + ": bank " + std::to_string(bank + kBanksOfIdcode) + " reads as " +
         std::to_string(bank) + ")";
}

}  // namespace

std::string_view MakerName(unsigned int bank, unsigned int code) {
  if (bank >= kBanks || code == 0 || code >= kContinuation) return {};
  std::string_view names = kMakersOfBanks[bank];
  for (unsigned int i = 1; i < code; ++i) names.remove_prefix(names.find('\n') + 1);
  return names.substr(0, names.find('\n'));
}

std::string MakerText(unsigned int manufacturer) {
  const unsigned int bank = manufacturer >> 7 & 0xF;
  const unsigned int code = manufacturer & 0x7F;
  if (code == 0) return "reserved: no maker has the code 0x00";
  if (code == kContinuation) return "reserved: the code 0x7F means the next bank";
  const std::string_view name = MakerName(bank, code);
  const std::string other = OtherMaker(bank, code);
  if (!name.empty()) return std::string(name) + other;
  return "not assigned" + other;
}

}  // namespace plddb::chain
