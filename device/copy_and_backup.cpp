// Copying a record, restoring its backups, and switching it to a CDR variant.

#include <string>
#include <string_view>

#include "DeviceInfo.h"
#include "FamilyList.h"  // the one look upwards: the family knows whether it has CDR variants
#include "foundation/owned_list.h"

using namespace plddb::internal;

namespace {

void CopyTexts(DeviceInfo& to, const DeviceInfo& from) {
  to.SetName(from.GetName());
  to.SetCodeName(from.GetCodeName());
  to.SetAliasName(from.GetAliasName());
  to.SetFamily(from.GetFamily());
  to.SetVendor(from.GetVendor());
  to.SetAccess(from.GetAccess());
  to.SetArchitecture(from.GetArchitecture());
  to.SetPON(from.GetPON());
  to.SetComm(from.GetComm());
  to.SetAlgOptions(from.GetAlgOptions());  // after SetComm, which writes it too
  to.SetAlgTemplate(from.GetAlgTemplate());
  to.SetTurboAlgTemplate(from.GetTurboAlgTemplate());
  to.SetISPAlgTemplate(from.GetISPAlgTemplate());
  to.SetispUESMask(from.GetispUESMask());
  to.SetjtagUESMask(from.GetjtagUESMask());
  to.SetBSDLFile(from.GetBSDLFile());
  to.SetBSDLFileTime(from.GetBSDLFileTime());
  to.SetInstructionBypassPattern(from.GetInstructionBypassPattern());
  to.SetEBRFile(from.GetEBRFile());
  to.SetSoftIPFile(from.GetSoftIPFile());
}

void CopyIdentification(DeviceInfo& to, const DeviceInfo& from) {
  to.SetPin(from.GetPin());
  to.SetTurboAlgIndex(from.GetTurboAlgIndex());
  to.SetBitMapTransformation(from.GetBitMapTransformation());
  to.SetispDeviceID(from.GetispDeviceID());
  to.SetjtagDeviceID(from.GetjtagDeviceID());
  to.SetjtagDeviceIDBackup(from.GetjtagDeviceIDBackup());
  to.SetDeviceIDMask(from.GetDeviceIDMask());
  to.SetDeviceIDMaskBackup(from.GetDeviceIDMaskBackup());
  to.SetDeviceIDScanMask(from.GetDeviceIDScanMask());
  to.SetIDLength(from.GetIDLength());
}

/// On purpose: the geometry in use becomes the copy's own, so its four backups take the working values.
void CopyGeometry(DeviceInfo& to, const DeviceInfo& from) {
  to.SetARCHLength(from.GetARCHLength());
  to.SetBackupARCHLength(from.GetARCHLength());
  to.SetARCHRow(from.GetARCHRow());
  to.SetBackupARCHRow(from.GetARCHRow());
  to.SetELength(from.GetELength());
  to.SetBackupELength(from.GetELength());
  to.SetERow(from.GetERow());
  to.SetBackupERow(from.GetERow());
}

void CopyLengths(DeviceInfo& to, const DeviceInfo& from) {
  to.SetSEDLength(from.GetSEDLength());
  to.SetIRLength(from.GetIRLength());
  to.SetAddressLength(from.GetAddressLength());
  to.SetBackupAddressLength(from.GetBackupAddressLength());
  to.SetDataLength(from.GetDataLength());
  to.SetBackupDataLength(from.GetBackupDataLength());
  to.SetPhysicalUESLength(from.GetPhysicalUESLength());
  to.SetispLogicalUESLength(from.GetispLogicalUESLength());
  to.SetjtagLogicalUESLength(from.GetjtagLogicalUESLength());
  to.SetFuseNumber(from.GetFuseNumber());
  to.SetBackupFuseNumber(from.GetBackupFuseNumber());
  to.SetBSCANLength(from.GetBSCANLength());
}

void CopyTimesAndInstructions(DeviceInfo& to, const DeviceInfo& from) {
  to.SetDisableDeviceSTAPLSupport(from.GetDisableDeviceSTAPLSupport());
  to.SetProgramTime(from.GetProgramTime());
  to.SetEraseTime(from.GetEraseTime());
  to.SetVerifyTime(from.GetVerifyTime());
  to.SetInstructionBypass(from.GetInstructionBypass());
  to.SetUSERCODEIntruction(from.GetUSERCODEInstruction());
  to.SetBypassLength(from.GetBypassLength());
  to.SetBypassValue(from.GetBypassValue());
  to.SetIDInstruction(from.GetIDInstruction());
}

void CopyFrameLayout(DeviceInfo& to, const DeviceInfo& from) {
  to.SetDataFrames(from.GetDataFrames());
  to.SetFrameBytes(from.GetFrameBytes());
  to.SetHeaderBytes(from.GetHeaderBytes());
  to.SetDataFrameHeader(from.GetDataFrameHeader());
  to.SetStopBytes(from.GetStopBytes());
  to.SetUESBytes(from.GetUESBytes());
  to.SetTrailerBytes(from.GetTrailerBytes());
  to.SetEndBytes(from.GetEndBytes());
  to.SetBitstreamColWidth(from.GetBitstreamColWidth());  // On purpose: an unset width becomes the data length, explicitly.
  to.SetSyncExtDoneAddress(from.GetSyncExtDoneAddress());
  to.SetSyncExtDoneColumn(from.GetSyncExtDoneColumn());
  to.SetNumberOfExternalASC(from.GetNumberOfExternalASC());
}

void CopyControlLists(DeviceInfo& to, const DeviceInfo& from) {
  to.SetlistControlRegZero(from.GetlistControlRegZero());
  to.SetlistControlRegOne(from.GetlistControlRegOne());
  to.SetlistControlEBR(from.GetlistControlEBR());
  to.SetlistPersistent_fuse(from.GetlistPersistent_fuse());
  to.SetlistControlStatus(from.GetlistControlStatus());
  to.SetControlVoltage(from.GetControlVoltage());
}

/// Sets the PON of every package from another of its numbers; packages without that number keep their PON.
void SetPackagePONs(const PackageList& packages, char* (Package::*number)() const) {
  const int count = packages.GetPackageCount();
  for (int i = 0; i < count; ++i) {
    Package* const package = packages.GetPackage(i);
    package->SetPON((package->*number)());
  }
}

/// "H-" anywhere, or "H" as the last character; a lower-case h does not count.
bool NamesCDRVariant(std::string_view pon) { return !pon.empty() && (pon.find("H-") != pon.npos || pon.back() == 'H'); }

}  // namespace

DeviceInfo::DeviceInfo(DeviceInfo* src) : DeviceInfo() {
  if (src == nullptr) return;
  FamilyObject = src->FamilyObject;
  CopyTexts(*this, *src);
  CopyIdentification(*this, *src);
  CopyGeometry(*this, *src);
  CopyLengths(*this, *src);
  CopyTimesAndInstructions(*this, *src);
  CopyFrameLayout(*this, *src);
  CopyControlLists(*this, *src);
  listAddressRange = src->listAddressRange;
  Multiboot_fuses = src->Multiboot_fuses;
  DevicePackage.CopyPackageList(src->GetDevicePackage());
  const int entries = src->GetSysIOCount();  // On purpose: 16 bits limit every copy.
  for (int i = 0; i < entries; ++i) AppendText(SysIO, src->GetSysIO(i));
}

void DeviceInfo::RestoreDeviceBackupValue() {
  ARCHLength = BackupARCHLength;
  ARCHRow = BackupARCHRow;
  ELength = BackupELength;
  ERow = BackupERow;
  AddressLength = BackupAddressLength;
  DataLength = BackupDataLength;
  FuseNumber = BackupFuseNumber;
  DeviceIDMask = DeviceIDMaskBackup;
  // On purpose: jtagDeviceID stays, although it has a backup.
  SetPON(GetCodeName());
  SetPackagePONs(DevicePackage, &Package::GetBackupPON);
}

void DeviceInfo::ChangeDeviceCDRValue(const char* pon) {
  if (FamilyObject == nullptr || !FamilyObject->IsCDRFixed() || pon == nullptr || !NamesCDRVariant(pon)) return;
  const std::string number(pon);  // `pon` may be the PON of a package that is switched below
  DeviceIDMask = 0xFFFFFFFF;
  SetPackagePONs(DevicePackage, &Package::GetAliasPON);
  SetPON(number.c_str());
}
