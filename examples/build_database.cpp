// Builds a database in code and queries it.
#include <plddb/DeviceListOwner.h>

#include <cstdio>

int main() {
  const plddb::DeviceListOwner database = plddb::MakeDeviceList();  // frees the whole tree at the end

  FamilyList* family = database->NewFamily();
  family->SetName("PLD1200");

  DeviceInfo* device = family->NewDevice();
  device->SetName("PLD1234A");
  device->SetCodeName("PLD1234A");
  device->SetComm("JTAG");
  device->SetjtagDeviceID(0x01234057);
  device->SetDeviceIDScanMask(0x0FFFFFFF);  // without a mask, no lookup by identifier finds the device
  device->SetIRLength(8);
  device->SetListControlReg1BitName("BITS;Sleep;Wake;");  // creates a record for each item
  device->SetListControlReg1Address("ADDRESSES;100;101;");

  Package* package = device->GetDevicePackage()->NewPackage();
  package->SetType("TQ100");
  package->SetPON("PLD1234A-5TQ100C");
  package->SetBackupPON("PLD1234A-5TQ100C");  // lookups by ordering number compare this one

  const DeviceInfo* byId = database->GetDeviceWithCommAndID("JTAG", 0x11234057);
  const DeviceInfo* byNumber = database->GetDeviceWithPON("pld1234a-5tq100c", false);
  if (byId == nullptr || byNumber == nullptr) return 1;

  std::printf("%s has %d instruction register bits\n", byId->GetName(), byId->GetIRLength());
  for (const CControlRegOne& bit : byNumber->GetlistControlRegOne()) {
    std::printf("%s is at %d\n", bit.BitName.c_str(), bit.Address);
  }
}
