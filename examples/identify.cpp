#include <plddb/DeviceListOwner.h>

#include <cstdio>

int main() {
  const plddb::DeviceListOwner database = plddb::MakeDeviceList();
  DeviceInfo* device = database->NewFamily()->NewDevice();
  device->SetName("XC9572XL");
  device->SetjtagDeviceID(0x09604093);
  device->SetDeviceIDScanMask(0x0FFFFFFF);  // bits 31 to 28, the revision of the die, are not compared
  device->SetIRLength(8);

  const DeviceInfo* found = database->GetDeviceWithCommAndID("JTAG", 0x59604093);
  if (found == nullptr) return 1;
  std::printf("%s: %d instruction register bits\n", found->GetName(), found->GetIRLength());
}
