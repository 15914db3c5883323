#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>
#include <string_view>

#include "check/rules.h"
#include "descriptions/TextForms.h"
#include "foundation/text_match.h"

namespace plddb::check {
namespace {

// --- Identifiers ------------------------------------------------------------------------------------------------------------

std::string Id(unsigned int id) { return Hex(id, 8); }

std::string IdcodeBit0(const DeviceInfo& device) {
  const unsigned int id = device.GetjtagDeviceID();
  if (id == 0 || (id & 1) != 0) return "";
  return "bit 0 of the IDCODE " + Id(id) + " is 0: a device that answers 0 there has no IDCODE";
}

std::string MaskZero(const DeviceInfo& device) {
  if (device.GetDeviceIDScanMask() != 0 || (device.GetjtagDeviceID() == 0 && device.GetispDeviceID() == 0)) return "";
  return "the device has an identifier, but its DeviceIDScanMask is 0, so that no scan finds it";
}

std::string OutsideMask(unsigned int id, unsigned int mask) {
  if (mask == 0 || (id & ~mask) == 0) return "";
  return "the bits " + Id(id & ~mask) + " of " + Id(id) + " do not count under the scan mask " + Id(mask);
}

std::string IdcodeOutsideMask(const DeviceInfo& device) {
  return OutsideMask(device.GetjtagDeviceID(), device.GetDeviceIDScanMask());
}

std::string IspIdOutsideMask(const DeviceInfo& device) {
  return OutsideMask(device.GetispDeviceID(), device.GetDeviceIDScanMask());
}

// --- Instructions -----------------------------------------------------------------------------------------------------------

constexpr unsigned int kCodeBits = 32;  // of an instruction code in a device

bool Fits(unsigned int code, unsigned int irLength) {
  const bool isKnown = irLength != 0;
  return !isKnown || irLength >= kCodeBits || code >> irLength == 0;
}

std::string TooWide(unsigned int code, unsigned int irLength) {
  if (Fits(code, irLength)) return "";
  return Hex(code, 2) + " does not fit into an instruction register of " + std::to_string(irLength) + " bits";
}

std::string NotAllOnes(unsigned int code, unsigned int irLength) {
  if (irLength == 0 || !Fits(code, irLength)) return "";
  const std::string message = "BYPASS is " + Hex(code, 2) + ", but it is all ones of the instruction register";
  if (irLength > kCodeBits) return message + ", whose " + std::to_string(irLength) + " bits do not fit here: leave it out";
  const unsigned int ones = ~0U >> (kCodeBits - irLength);
  return code == ones ? "" : message + ": " + Hex(ones, 2);
}

std::string IdInstructionWide(const DeviceInfo& device) { return TooWide(device.GetIDInstruction(), device.GetIRLength()); }

std::string UsercodeWide(const DeviceInfo& device) { return TooWide(device.GetUSERCODEInstruction(), device.GetIRLength()); }

std::string BypassWide(const DeviceInfo& device) { return TooWide(device.GetInstructionBypass(), device.GetIRLength()); }

std::string BypassOnes(const DeviceInfo& device) { return NotAllOnes(device.GetInstructionBypass(), device.GetIRLength()); }

// --- Texts ------------------------------------------------------------------------------------------------------------------

std::string AccessMode(const DeviceInfo& device) {
  constexpr std::string_view words[] = {"JTAG", "ISP", "DUAL"};
  const char* const comm = device.GetComm();
  if (comm == nullptr || std::find(std::begin(words), std::end(words), comm) != std::end(words)) return "";
  return "the access mode is " + Quoted(comm) + ": expected JTAG, ISP or DUAL";
}

std::string AccessModeMissing(const DeviceInfo& device) {
  return device.GetComm() == nullptr ? "the device has no access mode (Comm): lookups by access mode never find it" : "";
}

std::string Missing(const char* text, const char* attribute) {
  if (text != nullptr) return "";
  return std::string("the device has no ") + attribute +
         ": lookups with an access mode or a package compare that of a device before it";
}

std::string NameMissing(const DeviceInfo& device) { return Missing(device.GetName(), "Name"); }

std::string CodeNameMissing(const DeviceInfo& device) { return Missing(device.GetCodeName(), "CodeName"); }

std::string TooLong(const char* text) {
  if (text == nullptr || internal::IsComparable(text)) return "";
  return "a text of " + std::to_string(std::strlen(text)) + " characters: lookups that compare at most " +
         std::to_string(internal::kLongestComparedText) + " miss it";
}

template <char* (DeviceInfo::*Text)() const>
std::string LongText(const DeviceInfo& device) {
  return TooLong((device.*Text)());
}

// --- The rules --------------------------------------------------------------------------------------------------------------

/// What a rule is about: a value that is written, or also one that is left out.
enum class About { kWritten, kAlsoLeftOut };

struct DeviceRule {
  CodeId code;
  About about;
  const char* attribute;
  std::string (*fault)(const DeviceInfo& device);  // empty when there is none
};

// clang-format off
constexpr DeviceRule kDeviceRules[] = {
    {CodeId::kIdcodeBit0,        About::kWritten,     "jtagDeviceID",       IdcodeBit0},
    {CodeId::kIdOutsideMask,     About::kWritten,     "jtagDeviceID",       IdcodeOutsideMask},
    {CodeId::kIdOutsideMask,     About::kWritten,     "ispDeviceID",        IspIdOutsideMask},
    {CodeId::kMaskZero,          About::kAlsoLeftOut, "DeviceIDScanMask",   MaskZero},
    {CodeId::kInstructionWide,   About::kWritten,     "IDInstruction",      IdInstructionWide},
    {CodeId::kInstructionWide,   About::kWritten,     "USERCODEIntruction", UsercodeWide},
    {CodeId::kInstructionWide,   About::kWritten,     "InstructionBypass",  BypassWide},
    {CodeId::kBypassOnes,        About::kWritten,     "InstructionBypass",  BypassOnes},
    {CodeId::kAccessMode,        About::kWritten,     "Comm",               AccessMode},
    {CodeId::kAccessModeMissing, About::kAlsoLeftOut, "Comm",               AccessModeMissing},
    {CodeId::kNameMissing,       About::kAlsoLeftOut, "Name",               NameMissing},
    {CodeId::kNameMissing,       About::kAlsoLeftOut, "CodeName",           CodeNameMissing},
    {CodeId::kTextLong,          About::kWritten,     "Name",               LongText<&DeviceInfo::GetName>},
    {CodeId::kTextLong,          About::kWritten,     "CodeName",           LongText<&DeviceInfo::GetCodeName>},
    {CodeId::kTextLong,          About::kWritten,     "AliasName",          LongText<&DeviceInfo::GetAliasName>},
    {CodeId::kTextLong,          About::kWritten,     "Vendor",             LongText<&DeviceInfo::GetVendor>},
};

/// Instructions that a family gives for its devices which have none of their own.
struct FamilyRule {
  CodeId code;
  const char* attribute;
  char* (FamilyList::*text)() const;
  unsigned int (DeviceInfo::*own)() const;
  std::string (*fault)(unsigned int code, unsigned int irLength);
};

constexpr FamilyRule kFamilyRules[] = {
    {CodeId::kInstructionWide, "BypassInst", &FamilyList::GetBypassInst, &DeviceInfo::GetInstructionBypass, TooWide},
    {CodeId::kBypassOnes,      "BypassInst", &FamilyList::GetBypassInst, &DeviceInfo::GetInstructionBypass, NotAllOnes},
    {CodeId::kInstructionWide, "IDCodeInst", &FamilyList::GetIDCodeInst, &DeviceInfo::GetIDInstruction,     TooWide},
};
// clang-format on

void CheckDevice(const DescribedDevice& device, Findings& findings) {
  for (const DeviceRule& rule : kDeviceRules) {
    std::string fault = rule.fault(*device.device);
    if (fault.empty()) continue;
    const bool isWritten = FindAttribute(*device.element, rule.attribute) != nullptr;
    if (isWritten || rule.about == About::kAlsoLeftOut) findings.Add(device, rule.attribute, rule.code, std::move(fault));
  }
  ForEachPackage(device, [&](const DescribedPackage& package) {
    std::string fault = TooLong(package.package->GetBackupPON());
    if (fault.empty()) return;
    const bool isWritten = FindAttribute(*package.element, "BackupPON") != nullptr;
    findings.Add(package, isWritten ? "BackupPON" : "PON", CodeId::kTextLong, std::move(fault));
  });
}

/// The code that a family's text gives as 0x and digits. Other texts have a meaning to the programming tool alone.
std::optional<unsigned int> HexCode(const char* text) {
  const std::string_view digits = text == nullptr ? "" : text;
  unsigned int code = 0;
  if (digits.substr(0, 2) != "0x") return std::nullopt;
  const char* const end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data() + 2, end, code, 16);
  return read.ec == std::errc() && read.ptr == end ? std::optional(code) : std::nullopt;
}

void CheckFamily(const DescribedFamily& family, const FamilyRule& rule, Findings& findings) {
  const auto code = HexCode((family.family->*rule.text)());
  if (!code) return;
  for (int i = 0; const DeviceInfo* const device = family.family->GetDevice(i); ++i) {
    if ((device->*rule.own)() != 0) continue;
    const std::string fault = rule.fault(*code, device->GetIRLength());
    if (fault.empty()) continue;
    return findings.Add(family, rule.attribute, rule.code, fault + " (as in " + NameOf(*device) + ")");
  }
}

}  // namespace

void CheckValues(const Records& records, Findings& findings) {
  for (const DescribedDevice& device : records.Devices()) CheckDevice(device, findings);
  for (const DescribedFamily& family : records.Families()) {
    for (const FamilyRule& rule : kFamilyRules) CheckFamily(family, rule, findings);
  }
}

}  // namespace plddb::check
