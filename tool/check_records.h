#pragma once

#include <string>
#include <vector>

#include "Descriptions.h"

/// \file
/// What plddb check looks at: the records of a description file beside the elements that describe them.

namespace tool {

struct DescribedFamily {
  FamilyList* family;
  const plddb::Element* element;
};

struct DescribedDevice {
  DeviceInfo* device;
  const plddb::Element* element;
};

/// The families and devices of a file, in the order in which the lookups visit them. Borrows database and outline.
struct Records {
  Records(const DeviceList& database, const plddb::Element& outline);

  std::vector<DescribedFamily> families;
  std::vector<DescribedDevice> devices;
};

/// Calls `visit(package, element)` for each package of the device.
template <typename Visit>
void ForEachPackage(const DescribedDevice& described, Visit visit) {
  int position = 0;
  for (const plddb::Element& child : described.element->children) {
    if (child.name == "Package") visit(*described.device->GetDevicePackage()->GetPackage(position++), child);
  }
}

/// Who `other` is, as told to the keeper of `device`: "XC9572XL (line 12, family XC9500XL)".
std::string Called(const DescribedDevice& other, const DescribedDevice& device);

}  // namespace tool
