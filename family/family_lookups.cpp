// Lookups inside one family. On purpose they differ from those of the whole database (DeviceList):
//
//   question                     here                                   whole database
//   1 null code name             counts as the empty text               finds nothing
//   2 ... with mode or package   counts as the empty text               finds nothing
//   3 identifier                 exact; 0 is an identifier              exact or masked; 0 finds nothing
//   4 code name and vendor       GetDeviceWithCodeNameandVendor         no such lookup
//   5 devices visited            the list's own count (FindInFamily)    the family's 16-bit count (FindDevice)
//   6 GetDeviceWithCodeName      carries over, up to 1,023 characters   compares as it is, any length

#include "FamilyList.h"
#include "device/identifiers.h"
#include "device/text_rules.h"
#include "family/walk.h"

using namespace plddb::internal;

DeviceInfo* FamilyList::GetDeviceWithCodeName(const char* codeName) const {
  const char* const wanted = OrEmpty(codeName);                                                     // difference 1
  DeviceInfo* const device = FindInFamily(*this, CarriedTextIs<&DeviceInfo::GetCodeName>(wanted));  // 5, 6
  if (device != nullptr || !IsComparable(wanted)) return device;
  return FindInFamily(*this, AliasIs(wanted));
}

DeviceInfo* FamilyList::GetDeviceWithCodeNameandVendor(const char* codeName, const char* vendor) const {  // difference 4
  if (!IsComparable(codeName) || !IsComparable(vendor)) return nullptr;
  CarriedText carriedCodeName;
  CarriedText carriedVendor;
  return FindInFamily(*this, [&](const DeviceInfo& device) {
    const char* const ownCodeName = carriedCodeName.Refresh(device.GetCodeName());  // both are carried over from every device
    const char* const ownVendor = carriedVendor.Refresh(device.GetVendor());
    return EqualIgnoringCase(ownCodeName, codeName) && EqualIgnoringCase(ownVendor, vendor);
  });
}

DeviceInfo* FamilyList::GetDevice(const char* comm, unsigned int id) const {
  return WithAccessMode(comm, [&](auto mode) {
    return FindInFamily(*this, [&](const DeviceInfo& device) { return HasIdentifier(device, mode, id); });  // difference 3
  });
}

DeviceInfo* FamilyList::GetDeviceWithComm(const char* comm, const char* name) const {
  return FindInFamily(*this, CarriedTextAndComm<&DeviceInfo::GetName>(name, comm));
}

DeviceInfo* FamilyList::GetDeviceWithCodeName(const char* comm, const char* codeName) const {
  return FindInFamily(*this, CarriedTextAndComm<&DeviceInfo::GetCodeName>(OrEmpty(codeName), comm));  // difference 2
}

DeviceInfo* FamilyList::GetDeviceWithPackage(const char* packageType, const char* name) const {
  return FindInFamily(*this, CarriedTextAndPackage<&DeviceInfo::GetName>(name, packageType));
}

DeviceInfo* FamilyList::GetDevice(const char* packageType, const char* codeName) const {
  return FindInFamily(*this, CarriedTextAndPackage<&DeviceInfo::GetCodeName>(OrEmpty(codeName), packageType));  // 2
}
