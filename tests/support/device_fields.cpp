#include "tests/support/device_fields.h"

#include <sstream>

namespace support {
namespace {

using D = DeviceInfo;

std::string Text(const char* stem, int sample) { return stem + std::to_string(sample); }

void SetRegZero(D& device, int sample) {
  CControlRegZero first;
  first.Frequency = Text("frequency", sample);
  first.MasterClock = Text("clock", sample);
  first.ClockDivider = Text("divider", sample);
  device.SetlistControlRegZero({first, CControlRegZero()});
}

void SetRegOne(D& device, int sample) {
  CControlRegOne first;
  first.BitName = Text("bit", sample);
  first.Value = sample;
  first.Address = -10 * sample;
  first.Column = 100 * sample;
  device.SetlistControlRegOne({CControlRegOne(), first});
}

void SetPersistentFuses(D& device, int sample) {
  CPersistent_fuse first;
  first.Value = sample;
  first.Address = -10 * sample;
  first.Column = 100 * sample;
  device.SetlistPersistent_fuse({first, CPersistent_fuse(), first});
}

void SetEBR(D& device, int sample) {
  CControlEBR entry;
  entry.BitName = Text("entry", sample);
  entry.Value = true;
  entry.Address = -10 * sample;
  entry.Column = 100 * sample;
  CControlEBRList block;
  block.Name = Text("block", sample);
  block.Entries = {entry, CControlEBR()};
  device.SetlistControlEBR({block, CControlEBRList(), block});
}

void SetStatus(D& device, int sample) {
  CControlStatus first;
  first.BitName = Text("bit", sample);
  first.Control = Text("control", sample);
  first.Text = Text("text", sample);
  first.Index = -sample;
  device.SetlistControlStatus({first, CControlStatus()});
}

void SetVoltages(D& device, int sample) {
  CControlVoltage first;
  first.VCCCore = Text("core", sample);
  first.VCCJ = Text("vccj", sample);
  first.PinList = Text("pins", sample);
  device.SetControlVoltage({first, CControlVoltage()});
}

void SetAddressRanges(D& device, int sample) {
  device.SetlistAddressRange((";" + Text("A", sample) + "; ;" + Text("B", sample) + ";").c_str());
}

void AddPackage(D& device, int sample) {
  Package* const package = device.GetDevicePackage()->NewPackage();
  package->SetType(Text("type", sample).c_str());
  package->SetPON(Text("pon", sample).c_str());
  package->SetJDF(Text("jdf", sample).c_str());
  package->SetINI(Text("ini", sample).c_str());
  package->SetOrvoSetting(Text("orvo", sample).c_str());
  package->AddAdapter(Text("vendor", sample).c_str(), Text("adapter", sample).c_str());
  package->AddAdapter("", "");
  package->SetBackupPON(Text("backup", sample).c_str());
  package->SetAliasPON(Text("alias", sample).c_str());
  device.GetDevicePackage()->NewPackage();
}

void AddSysIO(D& device, int sample) {
  device.AddSysIOList(Text("io", sample).c_str());
  device.AddSysIOList(Text(" io ", sample).c_str());
}

std::string ShowSysIO(D& device) {
  std::vector<std::string> shown;
  for (int i = 0; const char* const entry = device.GetSysIO(i); ++i) shown.emplace_back(entry);
  return Show(shown);
}

void SetMultiboot(D& device, int sample) {
  device.SetMultibootCfgAddr(std::vector<int>{sample, -sample});
  device.SetMultibootChipSelColumn(10 * sample);
  device.SetMultibootSourceSelColumn(-20 * sample);
  device.SetMultibootAutoAdd(std::vector<int>{0, 100 * sample});
}

std::string ShowMultiboot(D& device) {
  CMultiboot_fuses fuses;
  fuses.CfgAddr = device.GetMultibootCfgAddr();
  fuses.ChipSelColumn = device.GetMultibootChipSelColumn();
  fuses.SourceSelColumn = device.GetMultibootSourceSelColumn();
  fuses.AutoAdd = device.GetMultibootAutoAdd();
  return Show(fuses);
}

std::string ShowLink(const FamilyList* family) {
  std::ostringstream shown;
  shown << static_cast<const void*>(family);
  return shown.str();
}

/// A field that has its own getter, shown as a whole.
template <typename Getter>
auto Shows(Getter getter) {
  return [getter](D& device) { return Show((device.*getter)()); };
}

}  // namespace

const std::vector<DeviceField>& DeviceFields() {
  // clang-format off
  static const std::vector<DeviceField> fields = {
      Row<D>( 1, "listControlRegZero",      SetRegZero,                       Shows(&D::GetlistControlRegZero)),
      Row<D>( 2, "listControlRegOne",       SetRegOne,                        Shows(&D::GetlistControlRegOne)),
      Row<D>( 3, "listPersistent_fuse",     SetPersistentFuses,               Shows(&D::GetlistPersistent_fuse)),
      HiddenRow<D>(4, "listControlEBREntry"),
      Row<D>( 5, "listControlEBR",          SetEBR,                           Shows(&D::GetlistControlEBR)),
      Row<D>( 6, "listControlStatus",       SetStatus,                        Shows(&D::GetlistControlStatus)),
      Row<D>( 7, "ControlVoltage",          SetVoltages,                      Shows(&D::GetControlVoltage)),
      Row<D>( 8, "listAddressRange",        SetAddressRanges,                 Shows(&D::GetlistAddressRange)),
      Row( 9, "Name",                       &D::SetName,                      &D::GetName),
      Row(10, "CodeName",                   &D::SetCodeName,                  &D::GetCodeName),
      Row(11, "AliasName",                  &D::SetAliasName,                 &D::GetAliasName),
      Row(12, "Family",                     &D::SetFamily,                    &D::GetFamily),
      Row(13, "Vendor",                     &D::SetVendor,                    &D::GetVendor),
      Row(14, "Access",                     &D::SetAccess,                    &D::GetAccess),
      Row(15, "Architecture",               &D::SetArchitecture,              &D::GetArchitecture),
      Row(16, "PON",                        &D::SetPON,                       &D::GetPON),
      Row(17, "Comm",                       &D::SetComm,                      &D::GetComm).AlsoChanges("AlgOptions"),
      Row(18, "AlgOptions",                 &D::SetAlgOptions,                &D::GetAlgOptions),
      Row(19, "AlgTemplate",                &D::SetAlgTemplate,               &D::GetAlgTemplate),
      Row(20, "ISPAlgTemplate",             &D::SetISPAlgTemplate,            &D::GetISPAlgTemplate),
      HiddenRow<D>(21, "Reserved"),
      Row(22, "SoftIPFile",                 &D::SetSoftIPFile,                &D::GetSoftIPFile),
      Row(23, "EBRFile",                    &D::SetEBRFile,                   &D::GetEBRFile),
      Row(24, "Pin",                        &D::SetPin,                       &D::GetPin),
      Row(25, "BitMapTransformation",       &D::SetBitMapTransformation,      &D::GetBitMapTransformation),
      Row(26, "ispDeviceID",                &D::SetispDeviceID,               &D::GetispDeviceID),
      Row(27, "jtagDeviceID",               &D::SetjtagDeviceID,              &D::GetjtagDeviceID),
      Row(28, "jtagDeviceIDBackup",         &D::SetjtagDeviceIDBackup,        &D::GetjtagDeviceIDBackup),
      Row(29, "DeviceIDMask",               &D::SetDeviceIDMask,              &D::GetDeviceIDMask),
      Row(30, "DeviceIDMaskBackup",         &D::SetDeviceIDMaskBackup,        &D::GetDeviceIDMaskBackup),
      Row(31, "DeviceIDScanMask",           &D::SetDeviceIDScanMask,          &D::GetDeviceIDScanMask),
      Row(32, "IDLength",                   &D::SetIDLength,                  &D::GetIDLength),
      Row(33, "ARCHLength",                 &D::SetARCHLength,                &D::GetARCHLength),
      Row(34, "SEDLength",                  &D::SetSEDLength,                 &D::GetSEDLength),
      Row(35, "ELength",                    &D::SetELength,                   &D::GetELength),
      Row(36, "ERow",                       &D::SetERow,                      &D::GetERow),
      Row(37, "IRLength",                   &D::SetIRLength,                  &D::GetIRLength),
      Row(38, "AddressLength",              &D::SetAddressLength,             &D::GetAddressLength),
      Row(39, "DataLength",                 &D::SetDataLength,                &D::GetDataLength).AlsoChanges("BitstreamColWidth"),
      Row(40, "PhysicalUESLength",          &D::SetPhysicalUESLength,         &D::GetPhysicalUESLength),
      Row(41, "ispLogicalUESLength",        &D::SetispLogicalUESLength,       &D::GetispLogicalUESLength),
      Row(42, "jtagLogicalUESLength",       &D::SetjtagLogicalUESLength,      &D::GetjtagLogicalUESLength),
      Row(43, "DisableDeviceSTAPLSupport",  &D::SetDisableDeviceSTAPLSupport, &D::GetDisableDeviceSTAPLSupport),
      Row(44, "FuseNumber",                 &D::SetFuseNumber,                &D::GetFuseNumber),
      Row(45, "ProgramTime",                &D::SetProgramTime,               &D::GetProgramTime),
      Row(46, "EraseTime",                  &D::SetEraseTime,                 &D::GetEraseTime),
      Row(47, "VerifyTime",                 &D::SetVerifyTime,                &D::GetVerifyTime),
      Row(48, "ispUESMask",                 &D::SetispUESMask,                &D::GetispUESMask),
      Row(49, "jtagUESMask",                &D::SetjtagUESMask,               &D::GetjtagUESMask),
      Row(50, "BSCANLength",                &D::SetBSCANLength,               &D::GetBSCANLength),
      Row<D>(51, "DevicePackage",           AddPackage,                       [](D& device) { return Show(*device.GetDevicePackage()); }),
      Row(52, "InstructionBypassPattern",   &D::SetInstructionBypassPattern,  &D::GetInstructionBypassPattern),
      Row(53, "IDInstruction",              &D::SetIDInstruction,             &D::GetIDInstruction),
      Row(54, "ARCHRow",                    &D::SetARCHRow,                   &D::GetARCHRow),
      Row(55, "USERCODEInstruction",        &D::SetUSERCODEIntruction,        &D::GetUSERCODEInstruction),
      Row(56, "InstructionBypass",          &D::SetInstructionBypass,         &D::GetInstructionBypass),
      Row(57, "BypassLength",               &D::SetBypassLength,              &D::GetBypassLength),
      Row(58, "BypassValue",                &D::SetBypassValue,               &D::GetBypassValue),
      Row(59, "BSDLFile",                   &D::SetBSDLFile,                  &D::GetBSDLFile),
      Row(60, "BSDLFileTime",               &D::SetBSDLFileTime,              &D::GetBSDLFileTime),
      Row(61, "TurboAlgTemplate",           &D::SetTurboAlgTemplate,          &D::GetTurboAlgTemplate),
      Row(62, "TurboAlgIndex",              &D::SetTurboAlgIndex,             &D::GetTurboAlgIndex),
      Row<D>(63, "SysIO",                   AddSysIO,                         ShowSysIO),
      Row(64, "BackupAddressLength",        &D::SetBackupAddressLength,       &D::GetBackupAddressLength),
      Row(65, "BackupFuseNumber",           &D::SetBackupFuseNumber,          &D::GetBackupFuseNumber),
      Row(66, "BackupDataLength",           &D::SetBackupDataLength,          &D::GetBackupDataLength),
      Row(67, "DataFrames",                 &D::SetDataFrames,                &D::GetDataFrames),
      Row(68, "FrameBytes",                 &D::SetFrameBytes,                &D::GetFrameBytes),
      Row(69, "HeaderBytes",                &D::SetHeaderBytes,               &D::GetHeaderBytes),
      Row(70, "DataFrameHeader",            &D::SetDataFrameHeader,           &D::GetDataFrameHeader),
      Row(71, "StopBytes",                  &D::SetStopBytes,                 &D::GetStopBytes),
      Row(72, "UESBytes",                   &D::SetUESBytes,                  &D::GetUESBytes),
      Row(73, "TrailerBytes",               &D::SetTrailerBytes,              &D::GetTrailerBytes),
      Row(74, "EndBytes",                   &D::SetEndBytes,                  &D::GetEndBytes),
      Row(75, "BitstreamColWidth",          &D::SetBitstreamColWidth,         &D::GetBitstreamColWidth),  // the data length while 0, copied as answered
      Row(76, "SyncExtDoneAddress",         &D::SetSyncExtDoneAddress,        &D::GetSyncExtDoneAddress),
      Row(77, "SyncExtDoneColumn",          &D::SetSyncExtDoneColumn,         &D::GetSyncExtDoneColumn),
      Row(78, "NumberOfExternalASC",        &D::SetNumberOfExternalASC,       &D::GetNumberOfExternalASC),
      Row<D>(79, "Multiboot_fuses",         SetMultiboot,                     ShowMultiboot, "{[], 0, 0, []}"),
      Row<D>(80, "FamilyObject",            [](D& device, int sample) { device.SetFamilyObject(SampleFamily(sample)); },
                                            [](D& device) { return ShowLink(device.GetFamilyObject()); },
                                            ShowLink(&SampleFamily(1)).c_str()),
      Row(81, "BackupARCHLength",           &D::SetBackupARCHLength,          &D::GetBackupARCHLength).CopiedFrom("ARCHLength"),
      Row(82, "BackupARCHRow",              &D::SetBackupARCHRow,             &D::GetBackupARCHRow).CopiedFrom("ARCHRow"),
      Row(83, "BackupELength",              &D::SetBackupELength,             &D::GetBackupELength).CopiedFrom("ELength"),
      Row(84, "BackupERow",                 &D::SetBackupERow,                &D::GetBackupERow).CopiedFrom("ERow"),
  };
  // clang-format on
  return fields;
}

void SetPlainSamples(DeviceInfo& device, int sample) {
  for (const DeviceField& field : DeviceFields()) {
    if (field.name != "FamilyObject") SetSample(field, device, sample);
  }
}

FamilyList& SampleFamily(int sample) {
  static FamilyList families[4];
  return families[sample - 1];
}

}  // namespace support
