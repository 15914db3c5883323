// Programming files of any format, packed or not: each is recognised, read and judged against a chain, and the verdict is
// sound.

#include "fuzz/programming_file.h"

#include "Chain.h"

using fuzz::Check;
namespace pf = plddb::programming_files;

namespace {

plddb::chain::Chain SomeChain() {
  plddb::chain::Scan scan;
  for (const unsigned int id : {0x59604093U, 0x0150203FU, 0x0362D093U, 0x59604093U}) scan.taps.push_back({"", id});
  return plddb::chain::Identify({&fuzz::SomeDevices()}, "JTAG", scan);
}

void CheckVerdict(const pf::Verdict& verdict, std::size_t positions) {
  Check(!verdict.reasons.empty(), "a verdict has reasons");
  Check(!verdict.isKnown || !verdict.devices.empty(), "a known device is one of the devices");
  const bool fits = verdict.fit == pf::Fit::kFits || verdict.fit == pf::Fit::kFitsSeveral;
  Check(fits == !verdict.positions.empty(), "a file that fits has positions");
  Check(verdict.fit != pf::Fit::kFits || verdict.positions.size() == 1, "one position fits");
  for (const std::size_t position : verdict.positions) Check(position < positions, "positions are in the chain");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const pf::Reader reader({&fuzz::SomeDevices()});
  static const plddb::chain::Chain chain = SomeChain();
  const pf::File file = reader.Read(std::string_view(reinterpret_cast<const char*>(data), size));
  fuzz::CheckFile(file, file.isCompressed ? UINT64_MAX : size);
  CheckVerdict(reader.Judge(file), 0);
  CheckVerdict(reader.Judge(file, chain), chain.size());
  CheckVerdict(reader.Judge(file, chain, plddb::chain::End::kTdi), chain.size());
  return 0;
}
