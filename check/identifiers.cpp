#include <algorithm>
#include <charconv>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "check/device_rules.h"
#include "check/rules.h"
#include "descriptions/TextForms.h"
#include "descriptions/fields.h"
#include "foundation/text_match.h"

namespace plddb::check {
namespace {

constexpr unsigned int kVersionBits = 0xF0000000;  // of an IDCODE: makers count them up without a word
constexpr unsigned int kMakerBits = 0x00000FFE;
constexpr unsigned int kMakerAndBit0 = kMakerBits | 1;

std::string Id(unsigned int id) { return Hex(id, 8); }

// --- One identifier ---------------------------------------------------------------------------------------------------------

/// Devices such as JTAG-NOP are places in a chain where anything may be, so that they have no identifier.
bool IsPlaceholder(const DeviceInfo& device) {
  for (int mode = 1; mode <= 6; ++mode) {
    if (IsBypassDevice(&device, mode)) return true;
  }
  return internal::EqualExactly(device.GetFamily(), "Generic JTAG Device");
}

/// Whether lookups for the device's access mode compare this kind of identifier.
bool IsCompared(const DeviceInfo& device, const char* mode) {
  return internal::EqualExactly(device.GetComm(), mode) || internal::EqualExactly(device.GetComm(), "DUAL");
}

std::string IdcodeBit0(const DescribedDevice& device) {
  const unsigned int id = device.device->GetjtagDeviceID();
  if (id == 0 || (id & 1) != 0) return "";
  return "bit 0 of the IDCODE " + Id(id) + " is 0: a device that answers 0 there has no IDCODE";
}

std::string MaskZero(const DescribedDevice& described) {
  const DeviceInfo& device = *described.device;
  if (device.GetDeviceIDScanMask() != 0 || (device.GetjtagDeviceID() == 0 && device.GetispDeviceID() == 0)) return "";
  return "the device has an identifier, but its DeviceIDScanMask is 0, so that no scan finds it";
}

std::string IspIdOutsideMask(const DescribedDevice& device) {
  const unsigned int id = device.device->GetispDeviceID();
  const unsigned int mask = device.device->GetDeviceIDScanMask();
  if (mask == 0 || (id & ~mask) == 0) return "";
  return "the bits " + Id(id & ~mask) + " of " + Id(id) + " do not count under the scan mask " + Id(mask);
}

std::string ZeroId(const DescribedDevice& device, unsigned int id, const char* mode) {
  const bool isMeant = IsCompared(*device.device, mode) || device.device->GetComm() == nullptr;
  if (id != 0 || !isMeant || IsPlaceholder(*device.device)) return "";
  return std::string("0 is not an identifier: ") + mode + " lookups skip the device";
}

std::string ZeroIdcode(const DescribedDevice& device) { return ZeroId(device, device.device->GetjtagDeviceID(), "JTAG"); }

std::string ZeroIspId(const DescribedDevice& device) { return ZeroId(device, device.device->GetispDeviceID(), "ISP"); }

std::string MissingId(const DescribedDevice& device, const char* mode, const char* attribute) {
  if (!IsCompared(*device.device, mode) || Written(device, attribute) != nullptr || IsPlaceholder(*device.device)) return "";
  return "the access mode is " + QuotedValue(device, "Comm") + ", but there is no " + attribute + ": " + mode +
         " lookups never find the device";
}

std::string MissingIdcode(const DescribedDevice& device) { return MissingId(device, "JTAG", "jtagDeviceID"); }

std::string MissingIspId(const DescribedDevice& device) { return MissingId(device, "ISP", "ispDeviceID"); }

std::string IdLength(const DescribedDevice& device) {
  if (device.device->GetIDLength() == 32 || device.device->GetjtagDeviceID() == 0) return "";
  return "IDLength is " + std::to_string(device.device->GetIDLength()) + ", but an IDCODE has 32 bits";
}

std::string MakerInvalid(const DescribedDevice& device) {
  constexpr unsigned int codeBits = 0x000000FE;  // without the bank
  const unsigned int id = device.device->GetjtagDeviceID();
  if ((id & codeBits) != codeBits || (device.device->GetDeviceIDScanMask() & codeBits) != codeBits) return "";
  return "the maker field of " + Id(id) + ", bits 7 to 1, is 0x7F, which the standard gives to no maker";
}

// clang-format off
constexpr DeviceRule kIdentifierRules[] = {
    {CodeId::kIdcodeBit0,    About::kWritten,     "jtagDeviceID",     IdcodeBit0},
    {CodeId::kMakerInvalid,  About::kWritten,     "jtagDeviceID",     MakerInvalid},
    {CodeId::kIdZero,        About::kWritten,     "jtagDeviceID",     ZeroIdcode},
    {CodeId::kIdZero,        About::kWritten,     "ispDeviceID",      ZeroIspId},
    {CodeId::kIdMissing,     About::kWritten,     "Comm",             MissingIdcode},
    {CodeId::kIdMissing,     About::kWritten,     "Comm",             MissingIspId},
    {CodeId::kIdLength,      About::kWritten,     "IDLength",         IdLength},
    {CodeId::kIdOutsideMask, About::kWritten,     "ispDeviceID",      IspIdOutsideMask},
    {CodeId::kMaskZero,      About::kAlsoLeftOut, "DeviceIDScanMask", MaskZero},
};
// clang-format on

// --- Decimal numbers --------------------------------------------------------------------------------------------------------

/// What the digits give when they are read as hexadecimal ones; 0 when they are not decimal or too many.
unsigned int AsHexadecimal(std::string_view digits) {
  unsigned int value = 0;
  if (digits.find_first_not_of("0123456789") != digits.npos) return 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return read.ec == std::errc() ? value : 0;
}

std::string DecimalText(const DescribedDevice& device, std::string_view attribute, unsigned int value) {
  return std::string(attribute) + " is written in decimal, as " + QuotedValue(device, attribute) + ", and so is " + Id(value) +
         ": hexadecimal digits need 0x before them";
}

/// Decimal numbers are not written with leading zeros.
void CheckLeadingZeros(const DescribedDevice& device, Findings& findings) {
  for (const descriptions::Field& field : descriptions::FieldsOf<DeviceInfo>()) {
    const Attribute* const written = field.hexDigits == 0 ? nullptr : Written(device, field.name);
    if (written == nullptr || written->value.substr(0, 1) != "0") continue;
    const unsigned int hexadecimal = AsHexadecimal(written->value);
    const auto value = static_cast<unsigned int>(field.get(device.device).number);
    if (hexadecimal == 0 || hexadecimal == value) continue;
    findings.Add(device, field.name, CodeId::kDecimalDigits, DecimalText(device, field.name, value));
  }
}

// --- Masks ------------------------------------------------------------------------------------------------------------------

using MaskCounts = std::map<unsigned int, std::size_t>;

MaskCounts CountMasks(const Records& records) {
  MaskCounts counts;
  for (const DescribedDevice& device : records.Devices()) {
    if (device.device->GetjtagDeviceID() != 0) ++counts[device.device->GetDeviceIDScanMask()];
  }
  return counts;
}

unsigned int MostFrequent(const MaskCounts& counts) {
  const auto most =
      std::max_element(counts.begin(), counts.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  return most == counts.end() ? 0 : most->first;
}

/// The bits of an IDCODE that its mask leaves out. Version bits may be written as a board answers them.
unsigned int OutsideMask(unsigned int id, unsigned int mask) { return id & ~mask & ~kVersionBits; }

/// Which of the two is odd decides where the finding is: a mask that leaves out a maker, or that no other device has although
/// the usual one would do, or else the identifier.
void CheckIdcodeOutsideMask(const DescribedDevice& device, const MaskCounts& counts, unsigned int usual, Findings& findings) {
  const unsigned int id = device.device->GetjtagDeviceID();
  const unsigned int mask = device.device->GetDeviceIDScanMask();
  const unsigned int outside = OutsideMask(id, mask);
  if (mask == 0 || outside == 0 || Written(device, "jtagDeviceID") == nullptr) return;
  const bool isOnlyOne = counts.at(mask) == 1 && mask != usual && OutsideMask(id, usual) == 0;
  if ((mask & kMakerAndBit0) == kMakerAndBit0 && !isOnlyOne) {
    return findings.Add(device, "jtagDeviceID", CodeId::kIdOutsideMask,
                        "the bits " + Id(outside) + " of " + Id(id) + " do not count under the scan mask " + Id(mask));
  }
  findings.Add(device, "DeviceIDScanMask", CodeId::kIdOutsideMask,
               "the scan mask " + Id(mask) + " leaves out the bits " + Id(outside) + " of " + Id(id) +
                   (isOnlyOne ? ": other devices have " + Id(usual) : ": it has to count the maker field and bit 0"));
}

// --- Makers -----------------------------------------------------------------------------------------------------------------

unsigned int MakerOf(unsigned int id) { return (id & kMakerBits) >> 1; }

using DevicesByMaker = std::map<unsigned int, std::vector<const DescribedDevice*>>;

bool HasMaker(const DeviceInfo& device) {
  return device.GetVendor() != nullptr && device.GetjtagDeviceID() != 0 &&
         (device.GetDeviceIDScanMask() & kMakerBits) == kMakerBits;
}

/// Whether a single device differs from `others`. Of two devices, either may be the odd one, unless one family holds both.
bool IsUnlike(const DescribedDevice& device, const std::vector<const DescribedDevice*>& others) {
  if (others.size() > 1) return true;
  const DescribedDevice& other = *others.front();
  return other.device->GetFamilyObject() == device.device->GetFamilyObject() && &other < &device;
}

void AddUnlike(const Records& records, const DescribedDevice& device, const DescribedDevice& other, Findings& findings) {
  const unsigned int id = device.device->GetjtagDeviceID();
  const unsigned int maker = MakerOf(other.device->GetjtagDeviceID());
  const Attribute* const written = Written(device, "jtagDeviceID");
  const unsigned int hexadecimal = written == nullptr ? 0 : AsHexadecimal(written->value);
  if (hexadecimal != 0 && MakerOf(hexadecimal) == maker) {
    return findings.Add(device, "jtagDeviceID", CodeId::kDecimalDigits, DecimalText(device, "jtagDeviceID", id));
  }
  findings.Add(device, "jtagDeviceID", CodeId::kMakerUnlike,
               "the maker field of " + Id(id) + " is " + Hex(MakerOf(id), 3) + ", but that of " +
                   records.NameFor(device, other) + " and all other devices of the vendor is " + Hex(maker, 3),
               other);
}

void CheckMakers(const Records& records, Findings& findings) {
  std::unordered_map<std::string_view, DevicesByMaker> vendors;
  for (const DescribedDevice& device : records.Devices()) {
    if (!HasMaker(*device.device)) continue;
    vendors[device.device->GetVendor()][MakerOf(device.device->GetjtagDeviceID())].push_back(&device);
  }
  for (const auto& [vendor, makers] : vendors) {
    if (makers.size() != 2) continue;
    const auto& first = makers.begin()->second;
    const auto& second = makers.rbegin()->second;
    for (const auto& [few, many] : {std::pair(&first, &second), std::pair(&second, &first)}) {
      if (few->size() == 1 && IsUnlike(*few->front(), *many)) AddUnlike(records, *few->front(), *many->front(), findings);
    }
  }
}

}  // namespace

void CheckIdentifiers(const Records& records, Findings& findings) {
  const MaskCounts masks = CountMasks(records);
  const unsigned int usual = MostFrequent(masks);
  for (const DescribedDevice& device : records.Devices()) {
    Apply(kIdentifierRules, device, findings);
    CheckLeadingZeros(device, findings);
    CheckIdcodeOutsideMask(device, masks, usual, findings);
  }
  CheckMakers(records, findings);
}

}  // namespace plddb::check
