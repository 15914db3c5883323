// Numbers in texts: counts, ranges and tokens, and the setters of the embedded memory blocks.
// Input: a count, a range of columns and a range of addresses, each on a line; then multiboot numbers.

#include <new>

#include "DeviceListOwner.h"
#include "foundation/text_lists.h"
#include "fuzz/input.h"

using namespace plddb::internal;

using fuzz::Check;

namespace {

/// Builds a block, and checks that its entries are named by their positions.
void BuildBlock(DeviceInfo& device, const std::vector<std::string>& lines) {
  const std::string count = fuzz::BoundedCount(lines[0], ParseNumber(lines[0]));
  const int entries = ParseNumber(count);
  try {
    device.SetListControlEBRBitName(count.c_str());
  } catch (const std::bad_alloc&) {
    Check(entries > 1 << 24, "only counts beyond all reason are refused");
    return;
  }
  device.SetListControlEBRColumn(lines[1].c_str());
  device.SetListControlEBRAddress(lines[2].c_str());
  device.SetListControlEBRName(lines[3].c_str());
  Check(device.GetlistControlEBR().empty() == (entries <= 0), "a block has entries");
  if (entries <= 0) return;
  const CControlEBRList& block = device.GetlistControlEBR().back();
  Check(block.Name == lines[3], "a block has the whole text as its name");
  Check(block.Entries.size() == static_cast<std::size_t>(entries), "a block has as many entries as its count");
  Check(block.Entries.back().BitName == std::to_string(entries), "an entry is named by its position");
  Check(block.Entries.front().Address == ParseRange(lines[2]).first, "the first row has the first address");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> lines = fuzz::LinesOf(fuzz::TextOf(data, size), 4);
  lines.resize(4);
  FamilyList family;
  DeviceInfo device(family);
  BuildBlock(device, lines);

  std::size_t tokens = 0;
  ForEachToken(lines[3], [&](std::string_view token) {
    Check(!token.empty() && token.find_first_of("; \t\n") == token.npos, "a token is not empty and holds no delimiter");
    ++tokens;
  });
  device.SetMultibootCfgAddr(lines[3].c_str());
  device.SetMultibootAutoAdd(lines[3].c_str());
  Check(device.GetMultibootCfgAddr().size() == (lines[3].size() < 1024 ? tokens : 0), "an address a token, up to 1,023 bytes");
  Check(device.GetMultibootAutoAdd().size() == (lines[3].size() < 64 ? tokens : 0), "an address a token, up to 63 bytes");
  return 0;
}
