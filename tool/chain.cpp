#include "chain.h"

#include <algorithm>
#include <bitset>
#include <charconv>

#include "command.h"
#include "device_text.h"

namespace tool {
namespace {

constexpr unsigned int kAllBits = 0xFFFFFFFF;
constexpr unsigned int kLowByte = 0xFF;

/// The bits of `id` by which `device` answers to it in the access mode `comm`, 0 when it does not: the lookups' identifier
/// test, asked of one device.
unsigned int AgreeingBits(const DeviceInfo& device, const std::string& comm, unsigned int id) {
  const unsigned int mask = device.GetDeviceIDScanMask();
  const unsigned int isp = device.GetispDeviceID();
  const unsigned int jtag = device.GetjtagDeviceID();
  const auto agree = [id](unsigned int own, unsigned int bits) { return ((own ^ id) & bits) == 0 ? bits : 0; };
  if (id == 0 || mask == 0) return 0;
  if (comm == "JTAG") return jtag == 0 ? 0 : agree(jtag, mask);
  if (comm == "ISP") return isp == 0 ? 0 : agree(isp, mask);
  if (comm == "DUAL") return agree(jtag, mask) != 0 ? mask : agree(isp, kLowByte);
  return 0;
}

bool IsOnlyLowByte(const DeviceInfo& device, const std::string& comm, unsigned int id) {
  return comm == "DUAL" && ((device.GetjtagDeviceID() ^ id) & device.GetDeviceIDScanMask()) != 0;
}

/// All of `text` as a decimal number from `least` to `most`.
std::optional<unsigned long> Number(std::string_view text, unsigned long least, unsigned long most) {
  unsigned long value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < least || value > most) return std::nullopt;
  return value;
}

}  // namespace

int BitCount(unsigned int bits) { return static_cast<int>(std::bitset<32>(bits).count()); }

unsigned long ChainPosition::IrLength() const {
  if (given_ir_length != 0) return given_ir_length;
  return match == nullptr ? 0 : match->GetIRLength();
}

ChainPosition Identify(const std::vector<Database>& databases, const std::string& comm, std::optional<unsigned int> id) {
  ChainPosition position;
  position.id = id;
  if (!id) return position;
  for (const Database& database : databases) {
    const DeviceInfo* const first = database.devices->GetDeviceWithCommAndID(comm.c_str(), *id);
    if (first == nullptr) continue;
    if (position.match == nullptr) position.match = first;
    ForEachDevice(*database.devices, [&](const DeviceInfo& device) {
      const int order = static_cast<int>(position.candidates.size()) + 1;
      if (const unsigned int bits = AgreeingBits(device, comm, *id)) {
        position.candidates.push_back({&device, &database, bits, IsOnlyLowByte(device, comm, *id), order});
      }
    });
  }
  return position;
}

std::vector<Candidate> MostExactFirst(const ChainPosition& position) {
  std::vector<Candidate> candidates = position.candidates;
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Candidate& a, const Candidate& b) { return BitCount(a.bits) > BitCount(b.bits); });
  return candidates;
}

std::string Reason(const Candidate& candidate) {
  if (candidate.only_low_byte) return "low byte only (DUAL)";
  return candidate.bits == kAllBits ? "all 32 bits" : "masked " + IdText(candidate.bits);
}

void GiveIrLengths(Chain& chain, const std::vector<std::string>& texts) {
  constexpr unsigned long shortest = 2;  // by the standard: every capture ends in 01
  constexpr unsigned long longest = 0xFFFF;
  const std::string last = std::to_string(chain.size() - 1);
  for (const std::string& text : texts) {
    const std::size_t equals = std::min(text.find('='), text.size());
    const auto position = Number(std::string_view(text).substr(0, equals), 0, chain.size() - 1);
    const auto length = Number(std::string_view(text).substr(std::min(equals + 1, text.size())), shortest, longest);
    if (!position || !length) {
      throw WrongUsage("--ir " + Printable(text) + ": expected POSITION=LENGTH, from 0 to " + last + " and from 2 to 65535");
    }
    if (chain[*position].given_ir_length != 0) throw WrongUsage("--ir: position " + std::to_string(*position) + " twice");
    chain[*position].given_ir_length = *length;
  }
}

}  // namespace tool
