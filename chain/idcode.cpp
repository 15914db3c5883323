#include <algorithm>
#include <iterator>

#include "chain/Chain.h"

namespace plddb::chain {
namespace {

struct KindRule {
  bool (*holds)(const std::string& comm, std::optional<unsigned int> id);
  IdKind kind;
};

/// The first rule that holds gives the kind.
constexpr KindRule kKindRules[] = {
    {[](const std::string&, std::optional<unsigned int> id) { return !id.has_value(); },
     {"no-idcode", false, "a BYPASS bit instead of an IDCODE: the device has none, or its instruction is BYPASS"}},
    {[](const std::string&, std::optional<unsigned int> id) { return *id == 0; },
     {"stuck-at-0", false, "all bits are 0: TDO is stuck at 0, the chain is broken, or it has no power"}},
    {[](const std::string&, std::optional<unsigned int> id) { return *id == 0xFFFFFFFF; },
     {"stuck-at-1", false, "all bits are 1: nothing drives TDO, or it is stuck at 1; the end of a chain reads so as well"}},
    {[](const std::string& comm, std::optional<unsigned int>) { return comm == "ISP"; },
     {"isp-identifier", false, "an ISP identifier has no fields"}},
    {[](const std::string&, std::optional<unsigned int> id) { return (*id & 1) == 0; },
     {"bypass-bit", false, "bit 0 is 0: the BYPASS bit of a TAP without IDCODE and bits of the next TAPs, not an IDCODE"}},
    {[](const std::string&, std::optional<unsigned int>) { return true; }, {"idcode", true, ""}},
};

}  // namespace

IdcodeFields SplitIdcode(unsigned int id) {
  return {id >> 28, id >> 12 & 0xFFFF, id >> 1 & 0x7FF, id >> 8 & 0xF, id >> 1 & 0x7F};
}

const IdKind& KindOf(const std::string& comm, std::optional<unsigned int> id) {
  return std::find_if(std::begin(kKindRules), std::end(kKindRules) - 1,
                      [&](const KindRule& rule) { return rule.holds(comm, id); })
      ->kind;
}

}  // namespace plddb::chain
