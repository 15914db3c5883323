#include "check_values.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>
#include <string_view>

#include "device_text.h"

namespace tool {
namespace {

// --- Identifiers ------------------------------------------------------------------------------------------------------------

std::string IdcodeBit0(const DeviceInfo& device) {
  const unsigned int id = device.GetjtagDeviceID();
  if (id == 0 || (id & 1) != 0) return "";
  return "bit 0 of the IDCODE " + IdText(id) + " is 0: a device that answers 0 there has no IDCODE";
}

std::string MaskZero(const DeviceInfo& device) {
  if (device.GetDeviceIDScanMask() != 0 || (device.GetjtagDeviceID() == 0 && device.GetispDeviceID() == 0)) return "";
  return "the device has an identifier, but its DeviceIDScanMask is 0, so that no scan finds it";
}

std::string OutsideMask(unsigned int id, unsigned int mask) {
  if (mask == 0 || (id & ~mask) == 0) return "";
  return "the bits " + IdText(id & ~mask) + " of " + IdText(id) + " do not count under the scan mask " + IdText(mask);
}

std::string IdcodeOutsideMask(const DeviceInfo& device) {
  return OutsideMask(device.GetjtagDeviceID(), device.GetDeviceIDScanMask());
}

std::string IspIdOutsideMask(const DeviceInfo& device) {
  return OutsideMask(device.GetispDeviceID(), device.GetDeviceIDScanMask());
}

// --- Instructions -----------------------------------------------------------------------------------------------------------

constexpr unsigned int kCodeBits = 32;  // of an instruction code in a device

bool Fits(unsigned int code, unsigned int ir_length) {
  const bool is_known = ir_length != 0;
  return !is_known || ir_length >= kCodeBits || code >> ir_length == 0;
}

std::string TooWide(unsigned int code, unsigned int ir_length) {
  if (Fits(code, ir_length)) return "";
  return Hex(code, 2) + " does not fit into an instruction register of " + std::to_string(ir_length) + " bits";
}

std::string NotAllOnes(unsigned int code, unsigned int ir_length) {
  if (ir_length == 0 || !Fits(code, ir_length)) return "";
  const std::string message = "BYPASS is " + Hex(code, 2) + ", but it is all ones of the instruction register";
  if (ir_length > kCodeBits) return message + ", whose " + std::to_string(ir_length) + " bits do not fit here: leave it out";
  const unsigned int ones = ~0U >> (kCodeBits - ir_length);
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
  constexpr std::size_t longest = 1023;  // that every lookup compares
  const std::size_t length = text == nullptr ? 0 : std::strlen(text);
  return length <= longest ? ""
                           : "a text of " + std::to_string(length) + " characters: lookups that compare at most 1023 miss it";
}

template <char* (DeviceInfo::*Text)() const>
std::string LongText(const DeviceInfo& device) {
  return TooLong((device.*Text)());
}

// --- The rules --------------------------------------------------------------------------------------------------------------

/// What a rule is about: a value that is written, or also one that is left out.
enum class About { kWritten, kAlsoLeftOut };

struct DeviceRule {
  Code code;
  About about;
  const char* attribute;
  std::string (*fault)(const DeviceInfo& device);  // empty when there is none
};

// clang-format off
constexpr DeviceRule kDeviceRules[] = {
    {Code::kIdcodeBit0,        About::kWritten,     "jtagDeviceID",       IdcodeBit0},
    {Code::kIdOutsideMask,     About::kWritten,     "jtagDeviceID",       IdcodeOutsideMask},
    {Code::kIdOutsideMask,     About::kWritten,     "ispDeviceID",        IspIdOutsideMask},
    {Code::kMaskZero,          About::kAlsoLeftOut, "DeviceIDScanMask",   MaskZero},
    {Code::kInstructionWide,   About::kWritten,     "IDInstruction",      IdInstructionWide},
    {Code::kInstructionWide,   About::kWritten,     "USERCODEIntruction", UsercodeWide},
    {Code::kInstructionWide,   About::kWritten,     "InstructionBypass",  BypassWide},
    {Code::kBypassOnes,        About::kWritten,     "InstructionBypass",  BypassOnes},
    {Code::kAccessMode,        About::kWritten,     "Comm",               AccessMode},
    {Code::kAccessModeMissing, About::kAlsoLeftOut, "Comm",               AccessModeMissing},
    {Code::kNameMissing,       About::kAlsoLeftOut, "Name",               NameMissing},
    {Code::kNameMissing,       About::kAlsoLeftOut, "CodeName",           CodeNameMissing},
    {Code::kTextLong,          About::kWritten,     "Name",               LongText<&DeviceInfo::GetName>},
    {Code::kTextLong,          About::kWritten,     "CodeName",           LongText<&DeviceInfo::GetCodeName>},
    {Code::kTextLong,          About::kWritten,     "AliasName",          LongText<&DeviceInfo::GetAliasName>},
    {Code::kTextLong,          About::kWritten,     "Vendor",             LongText<&DeviceInfo::GetVendor>},
};

/// Instructions that a family gives for its devices which have none of their own.
struct FamilyRule {
  Code code;
  const char* attribute;
  char* (FamilyList::*text)() const;
  unsigned int (DeviceInfo::*own)() const;
  std::string (*fault)(unsigned int code, unsigned int ir_length);
};

constexpr FamilyRule kFamilyRules[] = {
    {Code::kInstructionWide, "BypassInst", &FamilyList::GetBypassInst, &DeviceInfo::GetInstructionBypass, TooWide},
    {Code::kBypassOnes,      "BypassInst", &FamilyList::GetBypassInst, &DeviceInfo::GetInstructionBypass, NotAllOnes},
    {Code::kInstructionWide, "IDCodeInst", &FamilyList::GetIDCodeInst, &DeviceInfo::GetIDInstruction,     TooWide},
};
// clang-format on

void CheckDevice(const DescribedDevice& described, Findings& findings) {
  for (const DeviceRule& rule : kDeviceRules) {
    std::string fault = rule.fault(*described.device);
    if (fault.empty()) continue;
    const bool is_written = FindAttribute(*described.element, rule.attribute) != nullptr;
    if (is_written || rule.about == About::kAlsoLeftOut) {
      findings.Add(*described.element, rule.attribute, rule.code, std::move(fault));
    }
  }
  ForEachPackage(described, [&](const Package& package, const plddb::Element& element) {
    std::string fault = TooLong(package.GetBackupPON());
    if (fault.empty()) return;
    const bool is_written = FindAttribute(element, "BackupPON") != nullptr;
    findings.Add(element, is_written ? "BackupPON" : "PON", Code::kTextLong, std::move(fault));
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

void CheckFamily(const DescribedFamily& described, const FamilyRule& rule, Findings& findings) {
  const auto code = HexCode((described.family->*rule.text)());
  if (!code) return;
  for (int i = 0; const DeviceInfo* const device = described.family->GetDevice(i); ++i) {
    if ((device->*rule.own)() != 0) continue;
    const std::string fault = rule.fault(*code, device->GetIRLength());
    if (fault.empty()) continue;
    return findings.Add(*described.element, rule.attribute, rule.code, fault + " (as in " + DeviceName(*device) + ")");
  }
}

}  // namespace

void CheckValues(const Records& records, Findings& findings) {
  for (const DescribedDevice& described : records.devices) CheckDevice(described, findings);
  for (const DescribedFamily& described : records.families) {
    for (const FamilyRule& rule : kFamilyRules) CheckFamily(described, rule, findings);
  }
}

}  // namespace tool
