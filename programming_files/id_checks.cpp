#include "id_checks.h"

#include <algorithm>
#include <iterator>

#include "foundation/bits.h"
#include "text.h"

namespace plddb::programming_files {

// --- Bits -------------------------------------------------------------------------------------------------------------------

void Bits::AddNibble(int nibble) {
  for (int bit = 0; bit < 4 && bits_.size() < kMost; ++bit) bits_.push_back((nibble >> bit & 1) != 0);
}

Bits Bits::FromHex(std::string_view digits) {
  Bits bits;
  digits.remove_prefix(digits.size() - std::min(digits.size(), kMost / 4));
  for (auto c = digits.rbegin(); c != digits.rend(); ++c) bits.AddNibble(HexDigit(*c));
  return bits;
}

Bits Bits::FromBytes(std::string_view bytes) {
  Bits bits;
  for (auto c = bytes.rbegin(); c != bytes.rend(); ++c) {
    bits.AddNibble(static_cast<unsigned char>(*c) & 0xF);
    bits.AddNibble(static_cast<unsigned char>(*c) >> 4);
  }
  return bits;
}

Bits Bits::Ones(std::size_t count) {
  Bits bits;
  bits.bits_.assign(std::min(count, kMost), true);
  return bits;
}

std::uint32_t Bits::Get(std::size_t first, std::size_t count) const {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < count && first + i < bits_.size(); ++i) {
    if (bits_[first + i]) value |= std::uint32_t{1} << i;
  }
  return value;
}

bool Bits::AreOnes(std::size_t first, std::size_t last) const {
  for (std::size_t i = first; i < last; ++i) {
    if (i >= bits_.size() || !bits_[i]) return false;
  }
  return true;
}

// --- Ids --------------------------------------------------------------------------------------------------------------------

namespace {

constexpr std::size_t kIdBits = 32;
constexpr std::uint32_t kMaker = 0xFFF;  // with bit 0

/// Whether the instruction register holds the IDCODE instruction of `device` at `first`, and nothing else but BYPASS.
bool SelectsId(const Instruction& instruction, const DeviceInfo& device, std::size_t first) {
  const std::size_t length = device.GetIRLength();
  if (device.GetIDInstruction() == 0 || length == 0 || length > kIdBits || first + length > instruction.length) return false;
  return instruction.bits.Get(first, length) == device.GetIDInstruction() && instruction.bits.AreOnes(0, first) &&
         instruction.bits.AreOnes(first + length, instruction.length);
}

/// The place of `device`'s IDCODE instruction in the instruction register.
std::optional<std::size_t> PlaceOfIdInstruction(const Instruction& instruction, const DeviceInfo& device) {
  if (instruction.length > Bits::kMost) return std::nullopt;
  const std::size_t length = device.GetIRLength();
  for (std::size_t first = 0; first + length <= instruction.length; ++first) {
    if (SelectsId(instruction, device, first)) return first;
    if (!instruction.bits.AreOnes(first, first + 1)) break;  // below the instruction there is only BYPASS
  }
  return std::nullopt;
}

Statement IdStatement(std::uint32_t value, std::uint32_t mask, const ComparedScan& scan, Devices devices) {
  Statement id{Kind::kId, "IDCODE check", value, mask};
  id.place = scan.place;
  id.proof = Proof::kPlayer;
  id.padding = scan.padding;
  id.devices = std::move(devices);
  return id;
}

bool HasId(const File& file) {
  return std::any_of(file.statements.begin(), file.statements.end(), [](const Statement& s) { return s.kind == Kind::kId; });
}

/// Those of `devices` whose IDCODE instruction was loaded.
Devices Selected(const Devices& devices, const Instruction& instruction) {
  Devices selected;
  std::copy_if(devices.begin(), devices.end(), std::back_inserter(selected),
               [&](const DeviceInfo* device) { return SelectsId(instruction, *device, 0); });
  return selected;
}

void AddSingleId(const ComparedScan& scan, const KnownDevices& known, File& file) {
  const std::uint32_t value = scan.expected.Get(0, kIdBits);
  const std::uint32_t mask = scan.mask.Get(0, kIdBits);
  const std::size_t length = scan.instruction ? scan.instruction->length : 0;
  const auto irLength = static_cast<unsigned int>(length <= 0xFFFF ? length : 0);
  const bool hasMaker = (mask & kMaker) == kMaker && (value & 1) != 0 && known.HasMaker(value);
  const bool isIdInstruction = !scan.instruction || known.HasIdInstruction(length, scan.instruction->bits.Get(0, kIdBits));
  // Before the search, as files compare data by the million, some of which look like ids: the id is compared before them.
  if (mask == 0 || (!isIdInstruction && (!hasMaker || HasId(file)))) return;
  Devices devices = known.WithId(value, mask, irLength);
  if (devices.empty()) devices = known.WithId(value, mask);
  const Devices selected = scan.instruction ? Selected(devices, *scan.instruction) : devices;
  if (selected.empty() && (!hasMaker || (!isIdInstruction && devices.empty()))) return;
  Statement id = IdStatement(value, mask, scan, selected.empty() ? devices : selected);
  id.irLength = irLength;
  AddStatement(file, std::move(id));
}

/// Whether nothing but the bits from `first` on is compared with anything but the 0 of BYPASS.
bool IsBypassAround(const ComparedScan& scan, std::size_t first) {
  for (std::size_t i = 0; i < scan.length; ++i) {
    const bool isOutside = i < first || i >= first + kIdBits;
    if (isOutside && scan.expected.Get(i, 1) != 0 && scan.mask.Get(i, 1) != 0) return false;
  }
  return true;
}

/// An id among the BYPASS bits of other devices, one each: file formats without padding write chains out like this.
void AddIdAmongBypassBits(const ComparedScan& scan, const KnownDevices& known, File& file) {
  if (!scan.instruction) return;
  for (std::size_t first = 0; first + kIdBits <= scan.length; ++first) {
    const std::uint32_t value = scan.expected.Get(first, kIdBits);
    const std::uint32_t mask = scan.mask.Get(first, kIdBits);
    if (internal::BitCount(mask) < 12 || !IsBypassAround(scan, first)) continue;
    for (const DeviceInfo* const device : known.WithId(value, mask)) {
      const auto at = PlaceOfIdInstruction(*scan.instruction, *device);
      if (!at || (*at == 0) != (first == 0)) continue;
      Statement id = IdStatement(value, mask, scan, known.WithId(value, mask, device->GetIRLength()));
      id.irLength = device->GetIRLength();
      id.padding = {static_cast<std::uint32_t>(*at), static_cast<std::uint32_t>(scan.instruction->length - *at - id.irLength),
                    static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(scan.length - kIdBits - first), true};
      return AddStatement(file, std::move(id));
    }
  }
}

/// The ids of a whole chain after a reset, before any instruction is loaded.
void AddIdsOfChain(const ComparedScan& scan, const KnownDevices& known, File& file) {
  if (scan.instruction || scan.length % kIdBits != 0) return;
  for (std::size_t first = 0; first < scan.length; first += kIdBits) {
    const std::uint32_t value = scan.expected.Get(first, kIdBits);
    if ((value & scan.mask.Get(first, kIdBits) & 1) == 0 || value == 0xFFFFFFFF) return;
  }
  const std::size_t count = scan.length / kIdBits;
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t value = scan.expected.Get(i * kIdBits, kIdBits);
    const std::uint32_t mask = scan.mask.Get(i * kIdBits, kIdBits);
    Statement id = IdStatement(value, mask, scan, known.WithId(value, mask));
    id.padding = {0, 0, static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(count - 1 - i), false};
    AddStatement(file, std::move(id));
  }
}

}  // namespace

void AddIdChecks(const ComparedScan& scan, const KnownDevices& known, File& file) {
  constexpr std::size_t longest = 1024;  // bits, of a chain whose ids are read at once
  constexpr std::size_t mostAround = 64;
  if (scan.length < kIdBits || scan.length > longest) return;
  if (scan.length == kIdBits) return AddSingleId(scan, known, file);
  if (scan.length <= mostAround) AddIdAmongBypassBits(scan, known, file);
  AddIdsOfChain(scan, known, file);
}

}  // namespace plddb::programming_files
