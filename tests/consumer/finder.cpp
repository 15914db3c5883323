// Uses plddb-find, prints: XC9572XL
#include <DeviceListOwner.h>
#include <Find.h>

#include <cstdio>

int main() {
  const auto database = plddb::MakeDeviceList();
  DeviceInfo* device = database->NewFamily()->NewDevice();
  device->SetName("XC9572XL");
  device->SetCodeName("XC9572XL");
  for (const auto& match : plddb::find::Find({database.get()}, "XC9572XL-10VQG44C")) std::puts(match.device->GetName());
}
