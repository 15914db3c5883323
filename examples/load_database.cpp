// Loads a description file and prints its devices, or its mistakes.
#include <Descriptions.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const plddb::LoadResult loaded = plddb::LoadDescriptions(argv[1]);
  for (const plddb::Fault& fault : loaded.faults) std::fprintf(stderr, "%s\n", plddb::ToString(fault).c_str());
  if (loaded.database == nullptr) return 1;

  for (int f = 0; const FamilyList* family = loaded.database->GetFamily(f); ++f) {
    for (int d = 0; const DeviceInfo* device = family->GetDevice(d); ++d) {
      std::printf("%s, in %d packages\n", device->GetName(), device->GetDevicePackage()->GetPackageCount());
    }
  }
}
