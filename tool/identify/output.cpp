#include "identify/output.h"

#include "command.h"
#include "device_text.h"

namespace tool {

void Output::operator<<(std::string_view text) {
  constexpr std::size_t block = 1 << 20;
  block_ += text;
  if (block_.size() >= block) Flush();
}

void Output::Flush() {
  write_(block_);
  block_.clear();
}

const char* OrderText(End nearest) {
  switch (nearest) {
    case End::kTdo:
      return "nearest TDO first";
    case End::kTdi:
      return "nearest TDI first";
    case End::kAsPrinted:
      break;
  }
  return "order as printed";
}

std::string ScanText(const Scan& scan) {
  const std::string taps = scan.taps.size() == 1 ? "1 TAP" : std::to_string(scan.taps.size()) + " TAPs";
  return scan.format + ", " + taps + ", " + OrderText(scan.nearest);
}

std::vector<std::string> Notes(const IdentifiedChain& identified) {
  return plddb::chain::Notes(identified.scan, identified.chain);
}

std::string KindText(const IdentifiedChain& identified, const ChainPosition& position) {
  return plddb::chain::KindText(identified.comm, position);
}

void SvgOutput(const IdentifiedChain& identified, Output& output) {
  using plddb::chain::kMostDrawn;
  if (identified.chain.size() > kMostDrawn) {
    throw Failure("plddb: error: --format svg: the chain has " + std::to_string(identified.chain.size()) +
                  " TAPs; expected at most " + std::to_string(kMostDrawn));
  }
  output << plddb::chain::Svg(identified.chain, identified.comm, identified.scan.nearest);
}

std::string PositionList(const std::vector<std::size_t>& positions) {
  constexpr std::size_t most = 20;
  if (positions.empty()) return "";
  std::string list = positions.size() == 1 ? "position " : "positions ";
  for (std::size_t i = 0; i < positions.size() && i < most; ++i) list += (i == 0 ? "" : ", ") + std::to_string(positions[i]);
  return positions.size() <= most ? list : list + " and " + std::to_string(positions.size() - most) + " more";
}

}  // namespace tool
