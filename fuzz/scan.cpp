// Texts of scanning tools: each is read whole or refused, with the place of each fault inside the text.

#include "Chain.h"
#include "fuzz/input.h"

using fuzz::Check;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);  // zeros and all: UTF-16 has some
  const plddb::chain::ScanResult result = plddb::chain::ReadScan(text);
  Check(result.scan.has_value() == result.faults.empty(), "a text is read or refused");
  for (const plddb::chain::Fault& fault : result.faults) {
    Check(fault.line >= 1 && fault.column >= 1 && !fault.text.empty(), "a fault has a place and a text");
    Check(static_cast<std::size_t>(fault.line) <= size + 1, "a fault is in the text");
  }
  if (!result.scan) return 0;
  Check(!result.scan->taps.empty(), "a chain has a TAP");
  const DeviceList none;
  const plddb::chain::Chain chain = plddb::chain::Identify({&none}, "JTAG", *result.scan, true);
  Check(chain.size() == result.scan->taps.size(), "each TAP has a position");
  return 0;
}
