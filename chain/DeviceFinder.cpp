#include <algorithm>
#include <bitset>

#include "chain/Chain.h"
#include "database/walk.h"
#include "device/identifiers.h"
#include "foundation/printed_forms.h"

namespace plddb::chain {
namespace {

using internal::AccessMode;
using internal::Identifiers;

constexpr unsigned int kAllBits = 0xFFFFFFFF;
constexpr unsigned int kLowByte = 0xFF;
constexpr unsigned int kVersionBits = 0xF0000000;
constexpr unsigned int kManufacturerBits = 0x00000FFE;
constexpr std::size_t kMostNear = 5;

int BitCount(unsigned int bits) { return static_cast<int>(std::bitset<32>(bits).count()); }

AccessMode ModeOf(const std::string& comm) {
  return internal::WithAccessMode(comm.c_str(), [](auto mode) { return mode.value; });
}

bool IsOnlyLowByte(const Identifiers& own, AccessMode mode, unsigned int id) {
  return mode == AccessMode::kDual && ((own.jtag ^ id) & own.mask) != 0;
}

/// The bits of `id` that count for a device and differ from its identifier; 0 for a device that no identifier finds.
unsigned int DifferentBits(const Identifiers& own, unsigned int id) { return own.jtag == 0 ? 0 : (own.jtag ^ id) & own.mask; }

bool IsOtherVersion(unsigned int bits) { return bits != 0 && (bits & ~kVersionBits) == 0; }
bool IsOneBitApart(unsigned int bits) { return BitCount(bits) == 1 && !IsOtherVersion(bits); }

std::string OneBit(unsigned int bits) { return "bit " + std::to_string(BitCount(bits - 1)) + " differs: a wiring fault?"; }
std::string OtherVersion(unsigned int) { return "other version"; }

constexpr struct {
  bool (*holds)(unsigned int bits);
  std::string (*text)(unsigned int bits);
} kDifferences[] = {{IsOtherVersion, OtherVersion}, {IsOneBitApart, OneBit}};

}  // namespace

/// The identifiers of all devices side by side, in search order: an id is compared with all of them.
struct DeviceFinder::Table {
  struct Place {
    const DeviceInfo* device;
    std::size_t database;
  };
  AccessMode mode;
  std::vector<Identifiers> identifiers;
  std::vector<Place> places;  // of the identifiers
};

DeviceFinder::DeviceFinder(const std::vector<const DeviceList*>& databases, const std::string& comm) {
  auto table = std::make_unique<Table>();
  table->mode = ModeOf(comm);
  for (std::size_t i = 0; i < databases.size(); ++i) {
    internal::ForEachDevice(*databases[i], [&](const DeviceInfo& device) {
      table->identifiers.push_back(internal::IdentifiersOf(device));
      table->places.push_back({&device, i});
    });
  }
  table_ = std::move(table);
}

DeviceFinder::~DeviceFinder() = default;

ChainPosition DeviceFinder::Identify(std::optional<unsigned int> id) {
  ChainPosition position;
  position.id = id;
  if (!id || *id == 0) return position;
  const auto [known, isNew] = answers_.try_emplace(*id);
  if (isNew) {
    std::vector<Candidate> candidates;
    for (std::size_t i = 0; i < table_->identifiers.size(); ++i) {
      const Identifiers& own = table_->identifiers[i];
      if (!internal::AnswersTo(own, table_->mode, *id)) continue;
      const bool onlyLowByte = IsOnlyLowByte(own, table_->mode, *id);
      candidates.push_back({table_->places[i].device, table_->places[i].database, onlyLowByte ? kLowByte : own.mask,
                            onlyLowByte, static_cast<int>(candidates.size()) + 1});
    }
    if (!candidates.empty()) known->second = std::make_shared<const std::vector<Candidate>>(std::move(candidates));
  }
  position.candidates_ = known->second;
  return position;
}

std::vector<NearDevice> DeviceFinder::NearestDevices(unsigned int id) const {
  std::vector<NearDevice> near;
  for (const auto& difference : kDifferences) {
    for (std::size_t i = 0; i < table_->identifiers.size() && near.size() < kMostNear; ++i) {
      const unsigned int bits = DifferentBits(table_->identifiers[i], id);
      if (difference.holds(bits)) near.push_back({table_->places[i].device, table_->places[i].database, difference.text(bits)});
    }
  }
  return near;
}

const char* DeviceFinder::VendorOf(unsigned int manufacturer) const {
  for (std::size_t i = 0; i < table_->identifiers.size(); ++i) {
    const unsigned int jtag = table_->identifiers[i].jtag;
    if ((jtag & 1) == 0 || (jtag & kManufacturerBits) != manufacturer << 1) continue;
    const char* const vendor = table_->places[i].device->GetVendor();
    if (vendor != nullptr && *vendor != '\0') return vendor;
  }
  return nullptr;
}

const std::vector<Candidate>& ChainPosition::Candidates() const {
  static const std::vector<Candidate> none;
  return candidates_ == nullptr ? none : *candidates_;
}

const DeviceInfo* ChainPosition::Match() const { return candidates_ == nullptr ? nullptr : candidates_->front().device; }

bool ChainPosition::IsAmbiguous() const {
  const std::vector<Candidate>& all = Candidates();
  return std::any_of(all.begin(), all.end(), [&](const Candidate& other) {
    const Candidate& match = all.front();
    const bool isLessExact = other.bits != match.bits && (other.bits & match.bits) == other.bits;
    return other.device != match.device && !(isLessExact && other.device->GetIRLength() == match.device->GetIRLength());
  });
}

unsigned long ChainPosition::IrLength() const {
  if (givenIrLength != 0) return givenIrLength;
  return Match() == nullptr ? 0 : Match()->GetIRLength();
}

Chain Identify(const std::vector<const DeviceList*>& databases, const std::string& comm, const Scan& scan) {
  DeviceFinder finder(databases, comm);
  Chain chain;
  for (const ScannedTap& tap : scan.taps) chain.push_back(finder.Identify(tap.id));
  return chain;
}

std::vector<Candidate> MostExactFirst(const ChainPosition& position) {
  std::vector<Candidate> candidates = position.Candidates();
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Candidate& a, const Candidate& b) { return BitCount(a.bits) > BitCount(b.bits); });
  return candidates;
}

std::string Reason(const Candidate& candidate) {
  if (candidate.onlyLowByte) return "low byte only (DUAL)";
  return candidate.bits == kAllBits ? "all 32 bits" : "masked " + internal::Hex(candidate.bits, 8);
}

}  // namespace plddb::chain
