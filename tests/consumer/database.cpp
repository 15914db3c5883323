// Uses plddb, prints: PLD1234A 2
#include <DeviceList.h>
#include <plddb/DeviceList.h>
#include <plddb/DeviceListOwner.h>

#include <cstdio>

int main() {
  const plddb::DeviceListOwner database = plddb::MakeDeviceList();
  DeviceInfo* device = database->NewFamily()->NewDevice();
  device->SetCodeName("PLD1234A");
  device->SetjtagDeviceID(0x01234057);
  device->SetDeviceIDScanMask(0x0FFFFFFF);
  device->SetListControlReg1BitName("BITS;Sleep;Wake;");

  const DeviceInfo* found = database->GetDeviceWithCommAndID("JTAG", 0x11234057);
  if (found == nullptr) return 1;
  std::printf("%s %zu\n", found->GetCodeName(), found->GetlistControlRegOne().size());
}
