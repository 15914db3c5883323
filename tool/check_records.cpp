#include "check_records.h"

#include "device_text.h"

namespace tool {

Records::Records(const DeviceList& database, const plddb::Element& outline) {
  for (const plddb::Element& child : outline.children) {  // a database holds nothing but families
    FamilyList* const family = database.GetFamily(families.size());
    families.push_back({family, &child});
    int position = 0;
    for (const plddb::Element& grandchild : child.children) {
      if (grandchild.name == "Device") devices.push_back({family->GetDevice(position++), &grandchild});
    }
  }
}

std::string Called(const DescribedDevice& other, const DescribedDevice& device) {
  const bool same_family = other.device->GetFamilyObject() == device.device->GetFamilyObject();
  return DeviceName(*other.device) + " (line " + std::to_string(other.element->line) + ", " +
         (same_family ? "the same family" : "family " + FamilyName(*other.device)) + ")";
}

}  // namespace tool
