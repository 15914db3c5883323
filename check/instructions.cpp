#include <array>
#include <charconv>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "check/device_rules.h"
#include "check/rules.h"
#include "descriptions/TextForms.h"

namespace plddb::check {
namespace {

constexpr unsigned int kCodeBits = 32;  // of an instruction code in a device

std::string Bits(unsigned int count) { return std::to_string(count) + (count == 1 ? " bit" : " bits"); }

/// An instruction of a device, and the text by which its family may give the code to all its devices.
struct Instruction {
  const char* attribute;
  unsigned int (DeviceInfo::*code)() const;
  const char* familyAttribute;  // null: families have none
  char* (FamilyList::*familyText)() const;
};

enum : std::size_t { kIdcode, kUsercode, kBypass, kInstructionCount };

constexpr Instruction kInstructions[kInstructionCount] = {
    {"IDInstruction", &DeviceInfo::GetIDInstruction, "IDCodeInst", &FamilyList::GetIDCodeInst},
    {"USERCODEIntruction", &DeviceInfo::GetUSERCODEInstruction, nullptr, nullptr},
    {"InstructionBypass", &DeviceInfo::GetInstructionBypass, "BypassInst", &FamilyList::GetBypassInst},
};

// --- Codes and the register -------------------------------------------------------------------------------------------------

bool Fits(unsigned int code, unsigned int irLength) {
  const bool isKnown = irLength != 0;
  return !isKnown || irLength >= kCodeBits || code >> irLength == 0;
}

unsigned int AllOnes(unsigned int bits) { return bits == 0 ? 0 : ~0U >> (kCodeBits - bits); }

/// If `code` is all ones of another length, that length may be the right IRLength.
std::string OtherLength(unsigned int code, unsigned int irLength) {
  for (unsigned int bits = 2; bits <= kCodeBits; ++bits) {
    if (code != AllOnes(bits)) continue;
    return ". It is all ones of " + Bits(bits) + ": more likely IRLength is wrong, which is " + std::to_string(irLength);
  }
  return "";
}

std::string TooWide(const std::string& written, unsigned int code, unsigned int irLength) {
  if (Fits(code, irLength)) return "";
  return written + " does not fit into an instruction register of " + Bits(irLength);
}

std::string NotAllOnes(const std::string& written, unsigned int code, unsigned int irLength) {
  if (irLength == 0 || !Fits(code, irLength)) return "";
  const std::string message = "BYPASS is " + written + ", but it is all ones of the instruction register";
  if (irLength > kCodeBits) return message + ", whose " + Bits(irLength) + " do not fit here: leave it out";
  const unsigned int ones = AllOnes(irLength);
  return code == ones ? "" : message + ": " + Hex(ones, 2) + OtherLength(code, irLength);
}

std::string AsWritten(const DescribedDevice& device, const Instruction& instruction) {
  const Attribute* const written = Written(device, instruction.attribute);
  return written == nullptr ? "" : std::string(written->value);
}

template <std::size_t i>
std::string Wide(const DescribedDevice& device) {
  const unsigned int code = (device.device->*kInstructions[i].code)();
  const unsigned int irLength = device.device->GetIRLength();
  const std::string fault = TooWide(AsWritten(device, kInstructions[i]), code, irLength);
  return fault.empty() || i != kBypass ? fault : fault + OtherLength(code, irLength);
}

std::string BypassOnes(const DescribedDevice& device) {
  return NotAllOnes(AsWritten(device, kInstructions[kBypass]), device.device->GetInstructionBypass(),
                    device.device->GetIRLength());
}

std::string BypassLength(const DescribedDevice& device) {
  if (device.device->GetBypassLength() == 1) return "";
  return "BypassLength is " + QuotedValue(device, "BypassLength") + ", but the bypass register has one bit";
}

std::string IrLength(const DescribedDevice& device) {
  const unsigned int irLength = device.device->GetIRLength();
  if (irLength == 1) return "IRLength is 1, but an instruction register has 2 bits or more";
  for (const Instruction& instruction : kInstructions) {
    if (irLength == 0 && (device.device->*instruction.code)() != 0) {
      return std::string("the device has an ") + instruction.attribute +
             ", but no IRLength, without which it cannot be shifted";
    }
  }
  return "";
}

// clang-format off
constexpr DeviceRule kInstructionRules[] = {
    {CodeId::kIrLength,        About::kAlsoLeftOut, "IRLength",           IrLength},
    {CodeId::kInstructionWide, About::kWritten,     "IDInstruction",      Wide<kIdcode>},
    {CodeId::kInstructionWide, About::kWritten,     "USERCODEIntruction", Wide<kUsercode>},
    {CodeId::kInstructionWide, About::kWritten,     "InstructionBypass",  Wide<kBypass>},
    {CodeId::kBypassOnes,      About::kWritten,     "InstructionBypass",  BypassOnes},
    {CodeId::kBypassLength,    About::kWritten,     "BypassLength",       BypassLength},
};
// clang-format on

// --- The instructions of families -------------------------------------------------------------------------------------------

/// The code that a family's text gives as 0x and digits. Other texts have a meaning to the programming tool alone.
std::optional<unsigned int> HexCode(const char* text) {
  const std::string_view digits = text == nullptr ? "" : text;
  unsigned int code = 0;
  if (digits.substr(0, 2) != "0x") return std::nullopt;
  const char* const end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data() + 2, end, code, 16);
  return read.ec == std::errc() && read.ptr == end ? std::optional(code) : std::nullopt;
}

std::optional<unsigned int> FamilyCode(const FamilyList& family, const Instruction& instruction) {
  return instruction.familyText == nullptr ? std::nullopt : HexCode((family.*instruction.familyText)());
}

/// Devices without their own code use that of the family. Returns whether it suits them.
bool CheckFamilyCode(const DescribedFamily& family, const Instruction& instruction, unsigned int code, Findings& findings) {
  const std::string written = (family.family->*instruction.familyText)();
  for (int i = 0; const DeviceInfo* const device = family.family->GetDevice(i); ++i) {
    if ((device->*instruction.code)() != 0) continue;
    const bool isBypass = &instruction == &kInstructions[kBypass];
    const std::string wide = TooWide(written, code, device->GetIRLength());
    const std::string notOnes = isBypass ? NotAllOnes(written, code, device->GetIRLength()) : "";
    if (wide.empty() && notOnes.empty()) continue;
    findings.Add(family, instruction.familyAttribute, wide.empty() ? CodeId::kBypassOnes : CodeId::kInstructionWide,
                 (wide.empty() ? notOnes : wide) + " (as in " + PrintedName(*device) + ")");
    return false;
  }
  return true;
}

/// The devices that have their own code, equal to that of the family or not.
struct OwnCodes {
  std::vector<const DescribedDevice*> alike;
  std::vector<const DescribedDevice*> unlike;
};

OwnCodes CompareCodes(const DescribedDevice* first, const DescribedDevice* last, const Instruction& instruction,
                      unsigned int familyCode) {
  OwnCodes codes;
  for (const DescribedDevice* device = first; device != last; ++device) {
    const unsigned int code = (device->device->*instruction.code)();
    if (code != 0) (code == familyCode ? codes.alike : codes.unlike).push_back(device);
  }
  return codes;
}

/// A family whose code no device shares is wrong itself. Otherwise a device is that has another code for a register of the same
/// length; with another register it needs one.
void CheckUnlike(const DescribedFamily& family, const Instruction& instruction, const OwnCodes& codes, Findings& findings) {
  const std::string attribute = instruction.familyAttribute;
  const std::string written = (family.family->*instruction.familyText)();
  if (codes.unlike.empty()) return;
  if (codes.alike.empty()) {
    const DescribedDevice& device = *codes.unlike.front();
    return findings.Add(family, attribute, CodeId::kInstructionUnlike,
                        attribute + " is " + Quoted(written) + ", but " + instruction.attribute + " of " +
                            PrintedName(*device.device) + " is " + AsWritten(device, instruction),
                        device);
  }
  std::set<unsigned int> lengths;
  for (const DescribedDevice* const device : codes.alike) lengths.insert(device->device->GetIRLength());
  for (const DescribedDevice* const device : codes.unlike) {
    if (lengths.count(device->device->GetIRLength()) == 0) continue;
    findings.Add(*device, instruction.attribute, CodeId::kInstructionUnlike,
                 std::string(instruction.attribute) + " is " + AsWritten(*device, instruction) + ", but " + attribute +
                     " of the family and its other devices is " + Quoted(written),
                 family);
  }
}

/// `devices` are those of all families, in order.
void CheckFamilies(const Records& records, Findings& findings) {
  const DescribedDevice* first = records.Devices().data();
  for (const DescribedFamily& family : records.Families()) {
    const DescribedDevice* const last = first + family.deviceCount;
    for (const Instruction& instruction : kInstructions) {
      const auto code = FamilyCode(*family.family, instruction);
      if (!code) continue;
      if (!CheckFamilyCode(family, instruction, *code, findings)) continue;
      CheckUnlike(family, instruction, CompareCodes(first, last, instruction, *code), findings);
    }
    first = last;
  }
}

// --- Instructions that share a code -----------------------------------------------------------------------------------------

/// The code that counts for a device: its own, or else that of its family; 0 when none is known.
unsigned int EffectiveCode(const DeviceInfo& device, const Instruction& instruction) {
  const unsigned int own = (device.*instruction.code)();
  const FamilyList* const family = device.GetFamilyObject();
  return own != 0 || family == nullptr ? own : FamilyCode(*family, instruction).value_or(0);
}

/// The standard fixes BYPASS, so the other instruction of a pair is the wrong one.
void CheckShared(const DescribedDevice& device, Findings& findings) {
  constexpr std::array<std::size_t, 2> pairs[] = {{kUsercode, kIdcode}, {kIdcode, kBypass}, {kUsercode, kBypass}};
  for (const auto& [wrong, other] : pairs) {
    const unsigned int code = EffectiveCode(*device.device, kInstructions[wrong]);
    if (code == 0 || code != EffectiveCode(*device.device, kInstructions[other])) continue;
    const char* const attribute = kInstructions[wrong].attribute;
    const bool isOwn = Written(device, attribute) != nullptr;
    findings.Add(device, isOwn ? attribute : kInstructions[other].attribute, CodeId::kInstructionShared,
                 std::string(attribute) + " and " + kInstructions[other].attribute + " are both " + Hex(code, 2));
  }
}

}  // namespace

void CheckInstructions(const Records& records, Findings& findings) {
  for (const DescribedDevice& device : records.Devices()) {
    Apply(kInstructionRules, device, findings);
    CheckShared(device, findings);
  }
  CheckFamilies(records, findings);
}

}  // namespace plddb::check
