// Control voltages, address ranges and multiboot numbers.

#include <cstring>

#include "DeviceInfo.h"
#include "device/column_setters.h"

using namespace plddb::internal;

namespace {

void AppendNumbers(std::vector<int>& list, const char* numbers, std::size_t longest) {
  if (numbers == nullptr || std::strlen(numbers) > longest) return;
  ForEachToken(numbers, [&](std::string_view token) { list.push_back(ParseNumber(token)); });
}

/// On purpose: always the first record, however many there are. SetControlVoltage fills the others.
void SetInFirst(std::vector<CControlVoltage>& list, const char* text, std::string CControlVoltage::*field) {
  if (text != nullptr && !list.empty()) list.front().*field = std::string(text);
}

}  // namespace

void DeviceInfo::SetControlVoltageVCCCore(const char* text) {
  if (text == nullptr) return;
  CControlVoltage voltage;
  voltage.VCCCore = text;
  ControlVoltage.push_back(std::move(voltage));
}

void DeviceInfo::SetControlVoltageVCCJ(const char* text) { SetInFirst(ControlVoltage, text, &CControlVoltage::VCCJ); }

void DeviceInfo::SetControlVoltagePinList(const char* text) { SetInFirst(ControlVoltage, text, &CControlVoltage::PinList); }

void DeviceInfo::SetControlVoltage(std::vector<CControlVoltage> list) { ReplaceUnlessEmpty(ControlVoltage, std::move(list)); }

const std::vector<CControlVoltage>& DeviceInfo::GetControlVoltage() const { return ControlVoltage; }

void DeviceInfo::SetlistAddressRange(const char* text) { ReplaceByItems(listAddressRange, text); }

const std::vector<std::string>& DeviceInfo::GetlistAddressRange() const { return listAddressRange; }

// On purpose: the two limits differ.
void DeviceInfo::SetMultibootCfgAddr(const char* numbers) { AppendNumbers(Multiboot_fuses.CfgAddr, numbers, 1023); }

void DeviceInfo::SetMultibootAutoAdd(const char* numbers) { AppendNumbers(Multiboot_fuses.AutoAdd, numbers, 63); }

// On purpose: unlike the other whole-list setters, these assign even an empty list.
void DeviceInfo::SetMultibootCfgAddr(std::vector<int> addresses) { Multiboot_fuses.CfgAddr = std::move(addresses); }

void DeviceInfo::SetMultibootAutoAdd(std::vector<int> addresses) { Multiboot_fuses.AutoAdd = std::move(addresses); }

std::vector<int>& DeviceInfo::GetMultibootCfgAddr() { return Multiboot_fuses.CfgAddr; }

std::vector<int>& DeviceInfo::GetMultibootAutoAdd() { return Multiboot_fuses.AutoAdd; }
