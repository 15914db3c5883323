#include "device_text.h"

#include <algorithm>
#include <vector>

namespace tool {
namespace {

constexpr const char* kNotKnown = "-";

/// The code with all digits of the instruction register. A code of 0 is not known: it is EXTEST by the older standard.
std::string Instruction(unsigned int code, unsigned short irLength, const char* familyText) {
  if (code == 0) return TextOrDash(familyText);
  return Hex(code, std::max(2, (irLength + 3) / 4));
}

}  // namespace

std::string IdText(unsigned int id) { return Hex(id, 8); }

const char* FamilyNameOrNull(const DeviceInfo& device) {
  const FamilyList* const family = device.GetFamilyObject();
  return family == nullptr ? nullptr : family->GetName();
}

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

bool EqualIgnoringCase(std::string_view a, std::string_view b) { return a.size() == b.size() && ContainsIgnoringCase(a, b); }

bool ContainsIgnoringCase(std::string_view text, std::string_view part) {
  std::string upperText(text);
  std::string upperPart(part);
  strupr(upperText);
  strupr(upperPart);
  return upperText.find(upperPart) != upperText.npos;
}

}  // namespace tool
