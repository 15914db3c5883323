// Uses plddb-descriptions, prints: PLD1234A of PLD1200
#include <Descriptions.h>

#include <cstdio>

int main() {
  const auto loaded = plddb::ParseDescriptions(
      "<DeviceDatabase><Family Name='PLD1200'>"
      "<Device Name='PLD1234A' CodeName='PLD1234A' jtagDeviceID='0x01234057' DeviceIDScanMask='0x0FFFFFFF'/>"
      "</Family></DeviceDatabase>",
      "text");
  for (const plddb::Fault& fault : loaded.faults) std::puts(plddb::ToString(fault).c_str());
  if (loaded.database == nullptr) return 1;

  const DeviceInfo* found = loaded.database->GetDeviceWithCommAndID("JTAG", 0x11234057);
  if (found == nullptr) return 1;
  std::printf("%s of %s\n", found->GetCodeName(), found->GetFamily());
}
