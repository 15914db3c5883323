#include <algorithm>
#include <bitset>
#include <cstdint>
#include <tuple>
#include <utility>

#include "chain/Chain.h"
#include "database/walk.h"
#include "device/identifiers.h"
#include "foundation/bits.h"
#include "foundation/printed_forms.h"

namespace plddb::chain {
namespace {

using internal::AccessMode;
using internal::Identifiers;
using internal::kVersionBits;

constexpr unsigned int kAllBits = 0xFFFFFFFF;
constexpr unsigned int kLowByte = 0xFF;
constexpr unsigned int kManufacturerBits = 0x00000FFF;  // and bit 0
constexpr std::size_t kMostNear = 5;

using internal::BitCount;

AccessMode ModeOf(const std::string& comm) {
  return internal::WithAccessMode(comm.c_str(), [](auto mode) { return mode.value; });
}

bool IsOnlyLowByte(const Identifiers& own, AccessMode mode, unsigned int id) {
  return mode == AccessMode::kDual && ((own.jtag ^ id) & own.mask) != 0;
}

bool IsOneBit(unsigned int bits) { return bits != 0 && (bits & (bits - 1)) == 0; }

/// The likely cause of a difference of one bit. A maker's parts differ in the part number; if that is equal, another maker is
/// unlikely.
std::string OneBit(unsigned int bits, bool isExplained) {
  const std::string text = "bit " + std::to_string(BitCount(bits - 1)) + " differs";
  if (bits > kManufacturerBits) return text + ": another part of the same maker?";
  return isExplained ? text : text + ": a wiring fault?";
}

// --- Misread ids ------------------------------------------------------------------------------------------------------------

unsigned int Reversed(unsigned int id) {
  unsigned int reversed = 0;
  for (int i = 0; i < 32; ++i) reversed |= (id >> i & 1) << (31 - i);
  return reversed;
}

unsigned int WithSwappedHalves(unsigned int id) { return id << 16 | id >> 16; }

unsigned int WithSwappedBytes(unsigned int id) { return WithSwappedHalves((id & 0x00FF00FF) << 8 | (id >> 8 & 0x00FF00FF)); }

/// What a misread id was, for each way to misread one.
constexpr struct {
  const char* how;
  unsigned int (*repair)(unsigned int id);
} kRepairs[] = {
    {"read one bit late", [](unsigned int id) { return id >> 1; }},
    {"read one bit late", [](unsigned int id) { return id >> 1 | 0x80000000; }},
    {"read one bit early", [](unsigned int id) { return id << 1 | 1; }},
    {"bit-reversed", Reversed},
    {"byte-swapped", WithSwappedBytes},
    {"with its halves swapped", WithSwappedHalves},
    {"inverted", [](unsigned int id) { return ~id; }},
};

}  // namespace

/// The identifiers of all devices, in search order, and an index of them: those that share a mask, sorted by the compared bits.
struct DeviceFinder::Table {
  struct Place {
    const DeviceInfo* device;
    std::size_t database;
  };
  struct Entry {
    unsigned int mask;
    unsigned int bits;
    unsigned int number;  // of the device
    friend bool operator<(const Entry& a, const Entry& b) {
      return std::tie(a.mask, a.bits, a.number) < std::tie(b.mask, b.bits, b.number);
    }
  };

  AccessMode mode;
  std::vector<Identifiers> identifiers;
  std::vector<Place> places;                        // of the identifiers
  std::vector<Entry> index;                         // sorted
  std::vector<std::size_t> groups;                  // where a mask begins in the index, and its end
  std::bitset<kManufacturerBits + 1> lowBits;       // those of ids that may be known, which rejects most other ids at once
  std::bitset<kManufacturerBits + 1> nearLowBits;   // those of ids that may be near an IDCODE
  std::vector<std::vector<unsigned int>> lowBytes;  // the devices by the low byte of their ISP identifiers; for DUAL
  std::vector<const char*> vendors;                 // by manufacturer field

  void Add(const DeviceInfo& device, std::size_t database);
  void AddLowBits(unsigned int mask, unsigned int compared, unsigned int jtag);
  void Sort();
  std::vector<unsigned int> Indexed(unsigned int id) const;
  std::uint64_t AnswerKey(unsigned int id) const;
  std::vector<unsigned int> Answering(AccessMode asked, unsigned int id) const;
};

void DeviceFinder::Table::Add(const DeviceInfo& device, std::size_t database) {
  const Identifiers own = internal::IdentifiersOf(device);
  const char* const vendor = device.GetVendor();
  const char*& known = vendors[SplitIdcode(own.jtag).manufacturer];
  if (known == nullptr && (own.jtag & 1) != 0 && vendor != nullptr && *vendor != '\0') known = vendor;
  if (own.mask == 0) return;  // it never answers
  const auto number = static_cast<unsigned int>(places.size());
  identifiers.push_back(own);
  places.push_back({&device, database});
  index.push_back({own.mask, (mode == AccessMode::kIsp ? own.isp : own.jtag) & own.mask, number});
  if (mode == AccessMode::kDual) lowBytes[own.isp & kLowByte].push_back(number);
  AddLowBits(own.mask, index.back().bits & kManufacturerBits, own.jtag & kManufacturerBits);
}

void DeviceFinder::Table::AddLowBits(unsigned int mask, unsigned int compared, unsigned int jtag) {
  lowBits.set(compared);
  nearLowBits.set(jtag);
  for (unsigned int bit = 1; bit < kManufacturerBits; bit <<= 1) nearLowBits.set(jtag ^ bit);
  if ((mask & kManufacturerBits) == kManufacturerBits) return;
  lowBits.set();
  nearLowBits.set();
}

void DeviceFinder::Table::Sort() {
  std::sort(index.begin(), index.end());
  for (std::size_t i = 0; i < index.size(); ++i) {
    if (i == 0 || index[i].mask != index[i - 1].mask) groups.push_back(i);
  }
  groups.push_back(index.size());
}

/// The numbers of the devices whose compared bits are those of `id`, in any order.
std::vector<unsigned int> DeviceFinder::Table::Indexed(unsigned int id) const {
  std::vector<unsigned int> numbers;
  for (std::size_t g = 0; g + 1 < groups.size() && lowBits[id & kManufacturerBits]; ++g) {
    const auto end = index.begin() + static_cast<std::ptrdiff_t>(groups[g + 1]);
    const Entry wanted = {index[groups[g]].mask, id & index[groups[g]].mask, 0};
    auto entry = std::lower_bound(index.begin() + static_cast<std::ptrdiff_t>(groups[g]), end, wanted);
    for (; entry != end && entry->bits == wanted.bits; ++entry) numbers.push_back(entry->number);
  }
  return numbers;
}

/// Equal for ids to which the same devices answer for the same reason: in the access mode DUAL most ids differ from one
/// another in nothing but their low byte.
std::uint64_t DeviceFinder::Table::AnswerKey(unsigned int id) const {
  constexpr std::uint64_t onlyLowByte = std::uint64_t{1} << 32;
  return mode == AccessMode::kDual && Indexed(id).empty() ? onlyLowByte | (id & kLowByte) : id;
}

/// The numbers of the devices that answer to `id`, in search order.
std::vector<unsigned int> DeviceFinder::Table::Answering(AccessMode asked, unsigned int id) const {
  std::vector<unsigned int> numbers = Indexed(id);
  if (numbers.empty() && asked != AccessMode::kDual) return numbers;
  if (asked == AccessMode::kDual) numbers.insert(numbers.end(), lowBytes[id & kLowByte].begin(), lowBytes[id & kLowByte].end());
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  const auto keepsSilent = [&](unsigned int number) { return !internal::AnswersTo(identifiers[number], asked, id); };
  numbers.erase(std::remove_if(numbers.begin(), numbers.end(), keepsSilent), numbers.end());
  return numbers;
}

DeviceFinder::DeviceFinder(const std::vector<const DeviceList*>& databases, const std::string& comm) {
  auto table = std::make_unique<Table>();
  table->mode = ModeOf(comm);
  table->lowBytes.resize(kLowByte + 1);
  table->vendors.resize(1 << 11);
  for (std::size_t i = 0; i < databases.size(); ++i) {
    internal::ForEachDevice(*databases[i], [&](const DeviceInfo& device) { table->Add(device, i); });
  }
  table->Sort();
  table_ = std::move(table);
}

DeviceFinder::~DeviceFinder() = default;

ChainPosition DeviceFinder::Identify(std::optional<unsigned int> id) {
  ChainPosition position;
  position.id = id;
  if (!id || *id == 0) return position;
  const std::uint64_t key = table_->AnswerKey(*id);
  const auto known = answers_.find(key);
  position.candidates_ = known != answers_.end() ? known->second : CandidatesFor(*id);
  if (known == answers_.end() && position.candidates_ != nullptr) answers_.emplace(key, position.candidates_);
  return position;
}

ChainPosition DeviceFinder::Identify(const ScannedTap& tap, bool trustsGuessedIrLength) {
  ChainPosition position = Identify(tap.id);
  if (tap.irLength <= kLongestIrLength && (!tap.irLengthIsGuess || trustsGuessedIrLength))
    position.scannedIrLength = tap.irLength;
  return position;
}

std::shared_ptr<const std::vector<Candidate>> DeviceFinder::CandidatesFor(unsigned int id) const {
  std::vector<Candidate> candidates;
  for (const unsigned int number : table_->Answering(table_->mode, id)) {
    const Identifiers& own = table_->identifiers[number];
    const bool onlyLowByte = IsOnlyLowByte(own, table_->mode, id);
    candidates.push_back({table_->places[number].device, table_->places[number].database, onlyLowByte ? kLowByte : own.mask,
                          onlyLowByte, static_cast<int>(candidates.size()) + 1});
  }
  return candidates.empty() ? nullptr : std::make_shared<const std::vector<Candidate>>(std::move(candidates));
}

std::vector<NearDevice> DeviceFinder::NearestDevices(unsigned int id) const {
  std::vector<NearDevice> near;
  if (!table_->nearLowBits[id & kManufacturerBits]) return near;
  std::vector<std::pair<std::size_t, unsigned int>> oneBitApart;  // the number of the device, and the bit
  for (std::size_t i = 0; i < table_->identifiers.size() && near.size() < kMostNear; ++i) {
    const Identifiers& own = table_->identifiers[i];
    const unsigned int bits = (own.jtag ^ id) & own.mask;
    const unsigned int inPart = bits & ~kVersionBits;
    if ((inPart & (inPart - 1)) != 0 || own.jtag == 0 || bits == 0) continue;  // the first rejects most devices
    if (inPart == 0) {
      near.push_back({table_->places[i].device, table_->places[i].database, "other version"});
    } else if (IsOneBit(bits) && oneBitApart.size() < kMostNear) {
      oneBitApart.emplace_back(i, bits);
    }
  }
  const bool isExplained = !near.empty() || (!oneBitApart.empty() && MisreadOf(id));
  for (const auto& [number, bits] : oneBitApart) {
    if (near.size() == kMostNear) break;
    near.push_back({table_->places[number].device, table_->places[number].database, OneBit(bits, isExplained)});
  }
  return near;
}

std::optional<Misread> DeviceFinder::MisreadOf(unsigned int id) const {
  if (table_->mode != AccessMode::kJtag && table_->mode != AccessMode::kDual) return std::nullopt;
  if (id == 0 || id == kAllBits) return std::nullopt;
  for (const auto& [how, repair] : kRepairs) {
    const unsigned int repaired = repair(id);
    if ((repaired & 1) == 0 || repaired == kAllBits) continue;  // not an IDCODE
    const auto numbers = table_->Answering(AccessMode::kJtag, repaired);
    if (numbers.empty()) continue;
    const Table::Place& place = table_->places[numbers.front()];
    return Misread{repaired, place.device, place.database, how};
  }
  return std::nullopt;
}

const char* DeviceFinder::VendorOf(unsigned int manufacturer) const { return table_->vendors[manufacturer & 0x7FF]; }

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
  const bool isDescribed = Match() != nullptr && Match()->GetIRLength() != 0;
  return isDescribed ? Match()->GetIRLength() : scannedIrLength;
}

Chain Identify(const std::vector<const DeviceList*>& databases, const std::string& comm, const Scan& scan,
               bool trustsGuessedIrLengths) {
  DeviceFinder finder(databases, comm);
  Chain chain;
  chain.reserve(scan.taps.size());
  for (const ScannedTap& tap : scan.taps) chain.push_back(finder.Identify(tap, trustsGuessedIrLengths));
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
