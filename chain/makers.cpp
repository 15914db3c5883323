#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "chain/Chain.h"
#include "chain/makers_table.h"

namespace plddb::chain {
namespace {

constexpr unsigned int kContinuation = 0x7F;
constexpr unsigned int kBanksOfIdcode = 16;  // it holds 4 bits of the bank

/// The names of all banks, one after the other, from code 1 on.
std::vector<std::string_view> AllNames() {
  std::vector<std::string_view> all;
  all.reserve(std::size_t{kBanks} * (kContinuation - 1));
  for (std::string_view names : kMakersOfBanks) {
    for (unsigned int code = 1; code < kContinuation; ++code) {
      all.push_back(names.substr(0, names.find('\n')));
      names.remove_prefix(std::min(names.find('\n'), names.size() - 1) + 1);
    }
  }
  return all;
}

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
  static const std::vector<std::string_view> names = AllNames();
  return names[bank * (kContinuation - 1) + code - 1];
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
