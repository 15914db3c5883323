#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "DeviceList.h"

/// \file
/// Values of the tree as text, for comparing and for messages. Two values are equal exactly when their texts are: texts stand
/// in single quotes with ' and \ escaped, null is the word null; a record is {its fields in order}, a list [its elements].

namespace support {

std::string Show(const char* text);
std::string Show(const std::string& text);
std::string Show(long long number);
inline std::string Show(int number) { return Show(static_cast<long long>(number)); }
inline std::string Show(unsigned int number) { return Show(static_cast<long long>(number)); }
inline std::string Show(bool flag) { return flag ? "true" : "false"; }

std::string Show(const CControlRegZero& record);
std::string Show(const CControlRegOne& record);
std::string Show(const CPersistent_fuse& record);
std::string Show(const CControlStatus& record);
std::string Show(const CControlEBR& record);
std::string Show(const CControlEBRList& record);
std::string Show(const CControlVoltage& record);
std::string Show(const CMultiboot_fuses& record);
std::string Show(const CBScanControl& record);

std::string Show(const Adapter& adapter);
std::string Show(const Package& package);  ///< All texts in declaration order; the adapters in their place.
std::string Show(const PackageList& packages);

template <typename Element>
std::string Show(const std::vector<Element>& list) {
  std::string shown = "[";
  for (const Element& element : list) shown += (shown.size() > 1 ? ", " : "") + Show(element);
  return shown + "]";
}

}  // namespace support
