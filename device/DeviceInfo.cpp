#include "DeviceInfo.h"

#include "foundation/owned_list.h"
#include "foundation/paired_texts.h"

using namespace plddb::internal;

DeviceInfo::DeviceInfo() = default;

DeviceInfo::DeviceInfo(FamilyList& family) : FamilyObject(&family) {}

DeviceInfo::~DeviceInfo() { DestroyElements(SysIO); }

void DeviceInfo::SetComm(const char* comm) { SetBoth(Comm, comm, AlgOptions, comm); }

int DeviceInfo::GetBitstreamColWidth() const {
  return BitstreamColWidth != 0 ? BitstreamColWidth : static_cast<int>(DataLength);
}

PackageList* DeviceInfo::GetDevicePackage() const {
  return const_cast<PackageList*>(&DevicePackage);  // const applies to the record only, as everywhere in a tree
}

void DeviceInfo::SetSysIOList(const char* text) { ReplaceByQuotedItems(SysIO, text); }

void DeviceInfo::AddSysIOList(const char* entry) { AppendUnlessEmpty(SysIO, entry); }

char* DeviceInfo::GetSysIO(int i) const { return TextAt(SysIO, i); }

unsigned short DeviceInfo::GetSysIOCount() const { return static_cast<unsigned short>(SysIO.GetCount()); }

void DeviceInfo::SetFamilyObject(FamilyList& family) { FamilyObject = &family; }

FamilyList* DeviceInfo::GetFamilyObject() const { return FamilyObject; }
