#pragma once

#include <string>
#include <vector>

#include "DeviceList.h"

/// \file
/// The lookups written out step by step, as their rules are stated: work buffers that are filled for every device, copies in
/// upper or lower case, strcmp. They are walks over a tree; the rules come from tests/reference. Each has the name and the
/// arguments of the member of DeviceList or FamilyList that it answers like. Kept apart from the library, and slow on purpose:
/// it is what one would write first.

namespace literal {

DeviceInfo* GetDeviceWithName(const DeviceList& database, const char* name);
DeviceInfo* GetDeviceWithCodeName(const DeviceList& database, const char* codeName);
DeviceInfo* GetDeviceWithPON(const DeviceList& database, const char* pon, bool stripSuffix);
DeviceInfo* GetDeviceWithComm(const DeviceList& database, const char* comm, const char* name);
DeviceInfo* GetDeviceWithCommAndCodeName(const DeviceList& database, const char* comm, const char* codeName);
DeviceInfo* GetDeviceWithPackage(const DeviceList& database, const char* packageType, const char* name);
DeviceInfo* GetDeviceWithPackageAndCodeName(const DeviceList& database, const char* packageType, const char* codeName);
DeviceInfo* GetDeviceWithCommAndID(const DeviceList& database, const char* comm, unsigned int id);
DeviceInfo* GetDeviceWithCommAndIDAndCodeName(const DeviceList& database, const char* comm, unsigned int id,
                                              const char* codeName);
DeviceInfo* GetDeviceWithCommAndIDNoMask(const DeviceList& database, const char* comm, unsigned int id);
int GetDeviceListWithCommAndID(const DeviceList& database, const char* comm, unsigned int id,
                               std::vector<std::string>& collected);
int GetDeviceListWithCommAndID(const DeviceList& database, const char* comm, unsigned int id,
                               std::vector<std::string>& collected, std::vector<std::string>& codeNames);
DeviceInfo* GetDeviceWithJDFFileName(const DeviceList& database, const char* jdfFile);

DeviceInfo* GetDeviceWithEntityName(const DeviceList& database, const char* entityName);
DeviceInfo* GetDeviceWithEntityNameDisregardUES(const DeviceList& database, const char* entityName);
int GetDeviceCommISPWithFuseMap(const DeviceList& database, unsigned long fuseCount);
DeviceInfo* GetDeviceWithFuseMapAndFullName(const DeviceList& database, unsigned long fuseCount, const char* fullName);
DeviceInfo* GetDeviceWithFuseMapAndFullNameEx(const DeviceList& database, unsigned long fuseCount, const char* fullName);
int GetDeviceCodeNameWithFuseMap(const DeviceList& database, unsigned long fuseCount, std::vector<std::string>& candidates);
int GetDeviceWithFuseMap(const DeviceList& database, unsigned long fuseCount, std::vector<std::string>& candidates);

DeviceInfo* GetDevice(const FamilyList& family, const char* name);
DeviceInfo* GetDeviceWithCodeName(const FamilyList& family, const char* codeName);
DeviceInfo* GetDeviceWithCodeNameandVendor(const FamilyList& family, const char* codeName, const char* vendor);
DeviceInfo* GetDevice(const FamilyList& family, const char* comm, unsigned int id);
DeviceInfo* GetDeviceWithComm(const FamilyList& family, const char* comm, const char* name);
DeviceInfo* GetDeviceWithCodeName(const FamilyList& family, const char* comm, const char* codeName);
DeviceInfo* GetDeviceWithPackage(const FamilyList& family, const char* packageType, const char* name);
DeviceInfo* GetDevice(const FamilyList& family, const char* packageType, const char* codeName);

}  // namespace literal
