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

// A row's names are those of the field and of its accessors.
#define PAIR(field, setter, getter) Row(#field, #setter, &D::setter, #getter, &D::getter)
#define FIELD(field) PAIR(field, Set##field, Get##field)

const std::vector<DeviceField>& DeviceFields() {
  // clang-format off
  static const std::vector<DeviceField> fields = Numbered<D>({
      Row<D>("listControlRegZero", SetRegZero, Shows(&D::GetlistControlRegZero)).SetBy({"SetlistControlRegZero", "SetListControlReg0Frequency", "SetListControlReg0MasterClock", "SetListControlReg0ClockDivider"}),
      Row<D>("listControlRegOne", SetRegOne, Shows(&D::GetlistControlRegOne)).SetBy({"SetlistControlRegOne", "SetListControlReg1BitName", "SetListControlReg1Address", "SetListControlReg1Column"}),
      Row<D>("listPersistent_fuse", SetPersistentFuses, Shows(&D::GetlistPersistent_fuse)).SetBy({"SetlistPersistent_fuse", "SetListPersistent_fuseAddress", "SetListPersistent_fuseColumn"}),
      InternalRow<D>("listControlEBREntry").SetBy({"SetListControlEBRBitName", "SetListControlEBRColumn", "SetListControlEBRAddress"}),
      Row<D>("listControlEBR", SetEBR, Shows(&D::GetlistControlEBR)).SetBy({"SetlistControlEBR", "SetListControlEBRName"}),
      Row<D>("listControlStatus", SetStatus, Shows(&D::GetlistControlStatus)).SetBy({"SetlistControlStatus", "SetListControlStatusBitName", "SetListControlStatusControl", "SetListControlStatusIndex"}),
      Row<D>("ControlVoltage", SetVoltages, Shows(&D::GetControlVoltage)).SetBy({"SetControlVoltage", "SetControlVoltageVCCCore", "SetControlVoltageVCCJ", "SetControlVoltagePinList"}),
      Row<D>("listAddressRange", SetAddressRanges, Shows(&D::GetlistAddressRange)).SetBy({"SetlistAddressRange"}),
      FIELD(Name),
      FIELD(CodeName),
      FIELD(AliasName),
      FIELD(Family),
      FIELD(Vendor),
      FIELD(Access),
      FIELD(Architecture),
      FIELD(PON),
      FIELD(Comm).AlsoChanges("AlgOptions"),
      FIELD(AlgOptions),
      FIELD(AlgTemplate),
      FIELD(ISPAlgTemplate),
      InternalRow<D>("Reserved"),
      FIELD(SoftIPFile),
      FIELD(EBRFile),
      FIELD(Pin),
      FIELD(BitMapTransformation),
      FIELD(ispDeviceID),
      FIELD(jtagDeviceID),
      FIELD(jtagDeviceIDBackup),
      FIELD(DeviceIDMask),
      FIELD(DeviceIDMaskBackup),
      FIELD(DeviceIDScanMask),
      FIELD(IDLength),
      FIELD(ARCHLength),
      FIELD(SEDLength),
      FIELD(ELength),
      FIELD(ERow),
      FIELD(IRLength),
      FIELD(AddressLength),
      FIELD(DataLength).AlsoChanges("BitstreamColWidth"),
      FIELD(PhysicalUESLength),
      FIELD(ispLogicalUESLength),
      FIELD(jtagLogicalUESLength),
      FIELD(DisableDeviceSTAPLSupport),
      FIELD(FuseNumber),
      FIELD(ProgramTime),
      FIELD(EraseTime),
      FIELD(VerifyTime),
      FIELD(ispUESMask),
      FIELD(jtagUESMask),
      FIELD(BSCANLength),
      Row<D>("DevicePackage", AddPackage, [](D& device) { return Show(*device.GetDevicePackage()); }),
      FIELD(InstructionBypassPattern),
      FIELD(IDInstruction),
      FIELD(ARCHRow),
      PAIR(USERCODEInstruction, SetUSERCODEIntruction, GetUSERCODEInstruction),
      FIELD(InstructionBypass),
      FIELD(BypassLength),
      FIELD(BypassValue),
      FIELD(BSDLFile),
      FIELD(BSDLFileTime),
      FIELD(TurboAlgTemplate),
      FIELD(TurboAlgIndex),
      Row<D>("SysIO", AddSysIO, ShowSysIO).SetBy({"SetSysIOList", "AddSysIOList"}),
      FIELD(BackupAddressLength),
      FIELD(BackupFuseNumber),
      FIELD(BackupDataLength),
      FIELD(DataFrames),
      FIELD(FrameBytes),
      FIELD(HeaderBytes),
      FIELD(DataFrameHeader),
      FIELD(StopBytes),
      FIELD(UESBytes),
      FIELD(TrailerBytes),
      FIELD(EndBytes),
      FIELD(BitstreamColWidth),  // the data length while 0, copied as answered
      FIELD(SyncExtDoneAddress),
      FIELD(SyncExtDoneColumn),
      FIELD(NumberOfExternalASC),
      Row<D>("Multiboot_fuses", SetMultiboot, ShowMultiboot, "{[], 0, 0, []}").SetBy({"SetMultibootCfgAddr", "SetMultibootAutoAdd", "SetMultibootChipSelColumn", "SetMultibootSourceSelColumn"}),
      Row<D>("FamilyObject", [](D& device, int sample) { device.SetFamilyObject(SampleFamily(sample)); }, [](D& device) { return ShowLink(device.GetFamilyObject()); }, ShowLink(&SampleFamily(1)).c_str()).SetBy({"SetFamilyObject"}),
      FIELD(BackupARCHLength).CopiedFrom("ARCHLength"),
      FIELD(BackupARCHRow).CopiedFrom("ARCHRow"),
      FIELD(BackupELength).CopiedFrom("ELength"),
      FIELD(BackupERow).CopiedFrom("ERow"),
  });
  // clang-format on
  return fields;
}

#undef PAIR
#undef FIELD

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
