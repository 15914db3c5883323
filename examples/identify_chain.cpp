// Identifies the devices of a JTAG chain. Arguments: a description file, then the scanned IDCODEs in hexadecimal.
#include <Descriptions.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const plddb::LoadResult loaded = plddb::LoadDescriptions(argv[1]);
  if (loaded.database == nullptr) return 1;

  for (int i = 2; i < argc; ++i) {
    const auto id = static_cast<unsigned int>(std::strtoul(argv[i], nullptr, 16));
    const DeviceInfo* device = loaded.database->GetDeviceWithCommAndID("JTAG", id);
    if (device == nullptr) {
      std::printf("0x%08X unknown\n", id);
    } else {
      std::printf("0x%08X %s, BYPASS 0x%X in %d bits\n", id, device->GetCodeName(), device->GetInstructionBypass(),
                  device->GetIRLength());
    }
  }
}
