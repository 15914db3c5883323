// Uses plddb-chain, prints: 2 positions, PLD1234A at 1
#include <Chain.h>
#include <plddb/DeviceListOwner.h>

#include <cstdio>

int main() {
  const plddb::DeviceListOwner database = plddb::MakeDeviceList();
  DeviceInfo* device = database->NewFamily()->NewDevice();
  device->SetCodeName("PLD1234A");
  device->SetjtagDeviceID(0x01234057);
  device->SetDeviceIDScanMask(0x0FFFFFFF);

  const auto read = plddb::chain::ReadIds("0x76543057\n0x11234057\n");
  if (!read.scan) return 1;
  const auto positions = plddb::chain::Identify({database.get()}, "JTAG", *read.scan);
  std::printf("%zu positions", positions.size());
  for (std::size_t i = 0; i < positions.size(); ++i) {
    if (const DeviceInfo* found = positions[i].Match()) std::printf(", %s at %zu\n", found->GetCodeName(), i);
  }
}
