#include "device_text.h"

#include <algorithm>
#include <vector>

namespace tool {
namespace {

constexpr const char* kNotKnown = "-";

/// The code with all digits of the instruction register. A code of 0 is not known: it is EXTEST by the older standard.
std::string Instruction(unsigned int code, unsigned short ir_length, const char* family_text) {
  if (code == 0) return TextOrDash(family_text);
  return Hex(code, std::max(2, (ir_length + 3) / 4));
}

}  // namespace

std::string Hex(unsigned int value, int digits) {
  std::string text;
  for (; value != 0 || digits > 0; value >>= 4, --digits) text.insert(text.begin(), "0123456789ABCDEF"[value & 0xF]);
  return "0x" + text;
}

std::string IdText(unsigned int id) { return Hex(id, 8); }

std::string Printable(std::string text) {
  const auto isControl = [](char c) { return (c >= '\0' && c < ' ') || c == '\x7F'; };
  std::replace_if(text.begin(), text.end(), isControl, '?');
  for (std::size_t i = 0; (i = text.find('\xC2', i)) != text.npos; ++i) {  // U+0080 to U+009F, controls of 8-bit terminals
    const auto next = static_cast<unsigned char>(text.c_str()[i + 1]);     // 0 at the end
    if (next >= 0x80 && next < 0xA0) text.replace(i, 2, "?");
  }
  return text;
}

std::string TextOrDash(const char* text) { return text == nullptr || *text == '\0' ? kNotKnown : Printable(text); }

std::string DeviceName(const DeviceInfo& device) {
  const char* const name = device.GetName();
  return TextOrDash(name == nullptr || *name == '\0' ? device.GetCodeName() : name);
}

const char* FamilyNameOrNull(const DeviceInfo& device) {
  const FamilyList* const family = device.GetFamilyObject();
  return family == nullptr ? nullptr : family->GetName();
}

std::string FamilyName(const DeviceInfo& device) { return TextOrDash(FamilyNameOrNull(device)); }

std::string IrLengthText(const DeviceInfo& device) {
  return device.GetIRLength() == 0 ? kNotKnown : std::to_string(device.GetIRLength());
}

std::string IdCodeInstruction(const DeviceInfo& device) {
  const FamilyList* const family = device.GetFamilyObject();
  return Instruction(device.GetIDInstruction(), device.GetIRLength(), family == nullptr ? nullptr : family->GetIDCodeInst());
}

std::string BypassInstruction(const DeviceInfo& device) {
  const FamilyList* const family = device.GetFamilyObject();
  return Instruction(device.GetInstructionBypass(), device.GetIRLength(),
                     family == nullptr ? nullptr : family->GetBypassInst());
}

std::vector<std::string> PackageTypeList(const DeviceInfo& device) {
  std::vector<std::string> types;
  for (int i = 0; const Package* package = device.GetDevicePackage()->GetPackage(i); ++i) {
    const std::string type = package->GetType() == nullptr ? "" : package->GetType();
    if (!type.empty() && std::find(types.begin(), types.end(), type) == types.end()) types.push_back(type);
  }
  return types;
}

std::string PackageTypes(const DeviceInfo& device) {
  std::string text;
  for (const std::string& type : PackageTypeList(device)) text += (text.empty() ? "" : " ") + type;
  return TextOrDash(text.c_str());
}

}  // namespace tool
