#pragma once

#include <string>
#include <vector>

#include "DeviceInfo.h"
#include "FamilyList.h"
#include "tests/support/record_fields.h"

namespace support {

using DeviceField = Field<DeviceInfo>;

/// All fields of a device in declaration order. The samples of the lists of objects (packages, I/O entries) append.
const std::vector<DeviceField>& DeviceFields();

/// A record and its own family to link it to.
struct Device {
  FamilyList family;
  DeviceInfo record{family};
};

/// Stores the sample of this number in every field but the link to the family.
void SetPlainSamples(DeviceInfo& device, int sample);

/// A family that lives as long as the program, one for each sample number 1 to 4.
FamilyList& SampleFamily(int sample);

}  // namespace support
