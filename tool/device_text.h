#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Chain.h"
#include "DeviceList.h"
#include "TextForms.h"

/// \file
/// What tables say about a device. What is not known is "-".

namespace tool {

using plddb::Hex;
using plddb::Printable;
using plddb::TextOrDash;
using plddb::chain::DeviceName;
using plddb::chain::FamilyName;

std::string IdText(unsigned int id);                      ///< `id` with its 8 digits.
const char* FamilyNameOrNull(const DeviceInfo& device);   ///< Of the family in which the device stands, as it is; lent.
std::string IrLengthText(const DeviceInfo& device);       ///< A length of 0 is not known.
std::string IdCodeInstruction(const DeviceInfo& device);  ///< The device's, or else what its family says.
std::string BypassInstruction(const DeviceInfo& device);  ///< The device's, or else what its family says.
std::string PackageTypes(const DeviceInfo& device);       ///< Each type once, in the order of the packages.
std::vector<std::string> PackageTypeList(const DeviceInfo& device);

bool EqualIgnoringCase(std::string_view a, std::string_view b);  ///< ASCII letters.
bool ContainsIgnoringCase(std::string_view text, std::string_view part);

}  // namespace tool
