// Uses plddb-programming_files, prints: SVF: one device fits
#include <ProgrammingFile.h>
#include <plddb/DeviceListOwner.h>

#include <cstdio>

int main() {
  const plddb::DeviceListOwner database = plddb::MakeDeviceList();
  DeviceInfo* device = database->NewFamily()->NewDevice();
  device->SetName("PLD1234A");
  device->SetCodeName("PLD1234A");
  device->SetjtagDeviceID(0x01234057);
  device->SetDeviceIDScanMask(0x0FFFFFFF);
  device->SetIRLength(4);
  device->SetIDInstruction(1);

  const plddb::programming_files::Reader reader({database.get()});
  const auto file = reader.Read("SIR 4 TDI (1);\nSDR 32 TDI (00000000) TDO (01234057) MASK (0FFFFFFF);\n");
  const auto verdict = reader.Judge(file);
  if (verdict.devices.size() != 1 || verdict.devices[0] != device) return 1;
  std::printf("%s: one device fits\n", plddb::programming_files::Description(file.format));
}
