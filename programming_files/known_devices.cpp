#include "known_devices.h"

#include <algorithm>

#include "FamilyList.h"
#include "foundation/bits.h"
#include "text.h"

namespace plddb::programming_files {
namespace {

using internal::BitCount;

/// "XCKU11P_CIV" and "EP4CGX30_2" are second IDCODEs of a part; other names that have a '_' keep it.
std::string PartName(std::string_view name) {
  const auto underscore = name.rfind('_');
  const std::string_view suffix = underscore == name.npos ? "" : name.substr(underscore + 1);
  return UpperCase(suffix == "CIV" || suffix == "2" ? name.substr(0, underscore) : name);
}

/// Packages whose device has the second IDCODE, although the part's name is the same.
constexpr struct {
  std::string_view start;
  std::string_view device;
} kSecondDies[] = {
    {"EP3C25EF484", "EP3C25_2"},       {"EP4CGX30CF23", "EP4CGX30_2"},   {"5M1270ZF324", "5M1270Z_2"},
    {"5M240ZT144", "5M240Z_2"},        {"EP1M120A", "EP1M120_2"},        {"EP4SGX290NF45", "EP4SGX290_2"},
    {"EP4SGX290VNF45", "EP4SGX290_2"}, {"EP4SGX360NF45", "EP4SGX360_2"}, {"EP4SGX360VNF45", "EP4SGX360_2"},
    {"5SGSMD4E2F29", "5SGSD4_2"},      {"5SGSMD4E3F29", "5SGSD4_2"},     {"5SGXEA3K1", "5SGXA3_2"},
    {"5SGXEA4H2H29", "5SGXA4_2"},      {"5SGXMA4H2H29", "5SGXA4_2"},
};

/// Keeps, of devices with two IDCODEs, those of the die that the package `text` has.
void KeepDieOf(std::string_view text, Devices& devices) {
  const std::string upper = UpperCase(text);
  std::string_view second;
  for (const auto& row : kSecondDies) {
    if (StartsWith(upper, row.start)) second = row.device;
  }
  const auto isOther = [&](const DeviceInfo* device) {
    const std::string_view name = device->GetName();
    const bool isSecond = name.size() > 2 && name.substr(name.size() - 2) == "_2";
    return second.empty() ? isSecond : name != second;
  };
  if (std::all_of(devices.begin(), devices.end(), isOther)) return;
  devices.erase(std::remove_if(devices.begin(), devices.end(), isOther), devices.end());
}

/// Whether a text whose first part is `name` may go on with `rest`: a number is not cut; and no package starts with E or A, so
/// that the Spartan XC2S50E is not XC2S50.
bool MayFollow(std::string_view name, std::string_view rest) {
  if (rest.empty() || !IsDigit(name.back())) return true;
  const bool isSpartan = StartsWith(name, "XC2S") || StartsWith(name, "XC3S");
  return !IsDigit(rest.front()) && !(isSpartan && (rest[0] == 'E' || rest[0] == 'A'));
}

/// Other spellings of an ordering number, under which the descriptions may have its device.
std::vector<std::string> Spellings(const std::string& text) {
  std::vector<std::string> spellings = {text};
  if (StartsWith(text, "XA") || StartsWith(text, "XQ")) spellings.push_back("XC" + text.substr(2));
  if (text.size() > 5 && text[0] == '5' && (text[1] == 'A' || text[1] == 'C' || text[1] == 'S')) {
    const std::size_t variant = text[1] != 'A' && text[2] == 'E' ? 3 : 4;
    if (std::string_view("BEFM").find(text[variant]) != std::string_view::npos) {
      spellings.push_back(text.substr(0, variant) + text.substr(variant + 1));
    }
  }
  return spellings;
}

}  // namespace

KnownDevices::KnownDevices(const std::vector<const DeviceList*>& databases) : databases_(databases) {
  for (const DeviceList* const database : databases) {
    for (int f = 0; const FamilyList* const family = database->GetFamily(f); ++f) {
      for (int d = 0; const DeviceInfo* const device = family->GetDevice(d); ++d) Add(*device, !family->IsHidden());
    }
  }
  devices_ = inOrder_;
  std::stable_sort(devices_.begin(), devices_.end(), [](const Known& a, const Known& b) { return a.name < b.name; });
}

void KnownDevices::Add(const DeviceInfo& device, bool isLogic) {
  if (device.GetName() == nullptr || *device.GetName() == '\0') return;
  inOrder_.push_back({&device, PartName(device.GetName()), isLogic});
  longestName_ = std::max(longestName_, inOrder_.back().name.size());
  const std::uint32_t maker = device.GetjtagDeviceID() >> 1 & kMaker;
  if (isLogic && maker != 0) makers_.set(maker);
  if (device.GetIDInstruction() != 0) idInstructions_.insert({device.GetIRLength(), device.GetIDInstruction()});
}

Devices KnownDevices::WithId(std::uint32_t value, std::uint32_t mask, unsigned int irLength) const {
  struct Match {
    const Known* known;
    int bits;
  };
  std::vector<Match> matches;
  bool isLogic = false;
  for (const Known& known : inOrder_) {
    const std::uint32_t bits = known.device->GetDeviceIDScanMask() & mask;
    const unsigned int length = known.device->GetIRLength();
    if (known.device->GetjtagDeviceID() == 0 || bits == 0 || ((known.device->GetjtagDeviceID() ^ value) & bits) != 0) continue;
    if (irLength != 0 && length != 0 && length != irLength) continue;
    matches.push_back({&known, BitCount(bits)});
    isLogic = isLogic || known.isLogic;
  }
  std::stable_sort(matches.begin(), matches.end(), [](const Match& a, const Match& b) { return a.bits > b.bits; });
  Devices devices;
  for (const Match& match : matches) {
    if (match.bits == matches.front().bits && match.known->isLogic == isLogic) devices.push_back(match.known->device);
  }
  return devices;
}

Devices KnownDevices::WithName(std::string_view name) const {
  const std::string wanted = UpperCase(name);
  Devices devices;
  const auto isBefore = [](const Known& known, const std::string& text) { return known.name < text; };
  auto known = std::lower_bound(devices_.begin(), devices_.end(), wanted, isBefore);
  for (; known != devices_.end() && known->name == wanted; ++known) devices.push_back(known->device);
  return devices;
}

KnownDevices::Named KnownDevices::Longest(std::string_view text) const {
  for (std::size_t size = std::min(text.size(), longestName_); size > 1; --size) {
    const std::string_view name = text.substr(0, size);
    if (!MayFollow(name, text.substr(size))) continue;
    if (Devices devices = WithName(name); !devices.empty()) return {devices, text.substr(size)};
  }
  return {};
}

KnownDevices::Named KnownDevices::WithNameIn(std::string_view text) const {
  for (const std::string& spelling : Spellings(UpperCase(text))) {
    Named named = Longest(spelling);
    if (named.devices.empty()) continue;
    KeepDieOf(text, named.devices);
    return {named.devices, text.substr(text.size() - named.rest.size())};
  }
  return {};
}

Devices KnownDevices::WithStem(std::string_view stem) const {
  const std::string wanted = UpperCase(stem);
  Devices devices;
  for (const Known& known : inOrder_) {
    if (StartsWith(known.name, wanted) && known.name.size() > wanted.size() && IsLetter(known.name[wanted.size()])) {
      devices.push_back(known.device);
    }
  }
  return devices;
}

Devices KnownDevices::WithFuseCount(std::uint32_t count) const {
  if (count == 0) return {};
  std::vector<std::string> names;
  for (const DeviceList* const database : databases_) {
    std::vector<std::string> more;
    database->GetDeviceCodeNameWithFuseMap(count, more);
    for (const std::string& name : more) names.push_back(name.substr(0, name.find('<')));
  }
  Devices devices;
  for (const Known& known : inOrder_) {
    const char* const codeName = known.device->GetCodeName();
    if (codeName == nullptr || known.device->GetFuseNumber() == 0) continue;
    if (std::find(names.begin(), names.end(), codeName) != names.end()) devices.push_back(known.device);
  }
  return devices;
}

bool KnownDevices::Answers(const DeviceInfo& device, std::uint32_t id, unsigned int irLength) const {
  const Devices devices = WithId(id, 0xFFFFFFFF, irLength);
  return std::find(devices.begin(), devices.end(), &device) != devices.end();
}

}  // namespace plddb::programming_files
