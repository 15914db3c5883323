#include "fields.h"

#include <string>
#include <type_traits>

namespace plddb::descriptions {
namespace {

template <class RecordType, class FieldType>
struct Access {
  using Record = RecordType;
  using Type = FieldType;
};

template <class Record, class Type>
Access<Record, Type> AccessOf(void (Record::*setter)(Type));

template <class Record, class Type>
Access<Record, Type> AccessOf(Type Record::*member);

template <class Type>
constexpr Kind KindOf() {
  if (std::is_same_v<Type, bool>) return Kind::kFlag;
  if (std::is_same_v<Type, unsigned char>) return Kind::kUnsigned8;
  if (std::is_same_v<Type, unsigned short>) return Kind::kUnsigned16;
  if (std::is_same_v<Type, unsigned int>) return Kind::kUnsigned32;
  if (std::is_same_v<Type, int>) return Kind::kSigned32;
  return Kind::kText;
}

template <class Type>
Type As(const Value& value) {
  if constexpr (KindOf<Type>() == Kind::kText) {
    return value.text;
  } else {
    return static_cast<Type>(value.number);
  }
}

Value ToValue(const char* text) { return {text, 0}; }
Value ToValue(const std::string& text) { return {text.c_str(), 0}; }
Value ToValue(long long number) { return {nullptr, number}; }

template <auto target>  // a setter or a data member
void SetField(void* record, const Value& value) {
  using Target = decltype(AccessOf(target));
  auto& owner = *static_cast<typename Target::Record*>(record);
  if constexpr (std::is_member_function_pointer_v<decltype(target)>) {
    (owner.*target)(As<typename Target::Type>(value));
  } else {
    owner.*target = As<typename Target::Type>(value);
  }
}

template <class Record, auto source>  // a getter or a data member
Value GetField(const void* record) {
  const auto& owner = *static_cast<const Record*>(record);
  if constexpr (std::is_member_function_pointer_v<decltype(source)>) {
    return ToValue((owner.*source)());
  } else {
    return ToValue(owner.*source);
  }
}

template <auto target, auto source>
constexpr Field MakeField(std::string_view name, Need need = Need::kOptional) {
  using Target = decltype(AccessOf(target));
  return {name, KindOf<typename Target::Type>(), need, &SetField<target>, &GetField<typename Target::Record, source>};
}

/// The type of `setter` selects one of several setters of the same name.
template <typename Record, void (Record::*setter)(const char*)>
constexpr Field MakeColumn(std::string_view name) {
  return {name, Kind::kText, Need::kOptional, &SetField<setter>, nullptr};
}

constexpr Field InHex(int digits, Field field) {
  field.hexDigits = digits;
  return field;
}

constexpr Field Starts(Group group, Field field) {
  field.group = group;
  return field;
}

constexpr Field With(Kind kind, Field field) {
  field.kind = kind;
  return field;
}

// The rows are macros, so that an attribute has the name of its setter and no name is written twice.
#define FIELD(record, stem) MakeField<&record::Set##stem, &record::Get##stem>(#stem)
#define BACKUP(record, stem) MakeField<&record::Set##stem, &record::Get##stem>(#stem, Need::kBackup)
#define FLAG(record, stem) MakeField<&record::Set##stem, &record::Is##stem>(#stem)
#define COLUMN(record, stem) MakeColumn<record, &record::Set##stem>(#stem)
#define MEMBER(record, name) MakeField<&record::name, &record::name>(#name)
#define NEEDED(record, name, need) MakeField<&record::name, &record::name>(#name, need)

// clang-format off

constexpr Field kDatabaseRows[] = {
    FIELD(DeviceList, Version),
    FIELD(DeviceList, Comment),
};

constexpr Field kFamilyRows[] = {
    FIELD(FamilyList, Name),
    FIELD(FamilyList, AliasName),
    FIELD(FamilyList, BypassInst),
    FIELD(FamilyList, IDCodeInst),
    FIELD(FamilyList, ISCRelease),
    FIELD(FamilyList, Extension),
    FIELD(FamilyList, XFPFile),
    FIELD(FamilyList, ICFFile),
    FLAG(FamilyList, ReInitialize),
    // XML has no names that start with a digit.
    MakeField<&FamilyList::Set1532Compliant, &FamilyList::Is1532Compliant>("IEEE1532Compliant"),
    FLAG(FamilyList, CDRFixed),
    FLAG(FamilyList, Hidden),
    FLAG(FamilyList, DebugMode),
    FLAG(FamilyList, FPGALoaderSupport),
    FLAG(FamilyList, STAPLSupport),
    FLAG(FamilyList, FPGADevice),
    FIELD(FamilyList, CFGPinCount),
    FIELD(FamilyList, BitstreamModelTemplate),
    COLUMN(FamilyList, OperationList),
    COLUMN(FamilyList, ListProgrammingModeControl),
};

constexpr Field kDeviceRows[] = {
    Starts(Group::kNames, FIELD(DeviceInfo, Name)),
    FIELD(DeviceInfo, CodeName),
    FIELD(DeviceInfo, AliasName),
    FIELD(DeviceInfo, Family),
    FIELD(DeviceInfo, Vendor),
    FIELD(DeviceInfo, Access),
    FIELD(DeviceInfo, Architecture),
    FIELD(DeviceInfo, PON),
    FIELD(DeviceInfo, Comm),  // before AlgOptions, which it writes as well
    BACKUP(DeviceInfo, AlgOptions),
    FIELD(DeviceInfo, AlgTemplate),
    FIELD(DeviceInfo, ISPAlgTemplate),
    FIELD(DeviceInfo, SoftIPFile),
    FIELD(DeviceInfo, EBRFile),
    FIELD(DeviceInfo, Pin),
    FIELD(DeviceInfo, BitMapTransformation),
    Starts(Group::kIdentification, InHex(8, FIELD(DeviceInfo, ispDeviceID))),
    InHex(8, FIELD(DeviceInfo, jtagDeviceID)),
    InHex(8, BACKUP(DeviceInfo, jtagDeviceIDBackup)),
    InHex(8, FIELD(DeviceInfo, DeviceIDMask)),
    InHex(8, BACKUP(DeviceInfo, DeviceIDMaskBackup)),
    InHex(8, FIELD(DeviceInfo, DeviceIDScanMask)),
    FIELD(DeviceInfo, IDLength),
    Starts(Group::kFuses, FIELD(DeviceInfo, ARCHLength)),
    BACKUP(DeviceInfo, BackupARCHLength),
    FIELD(DeviceInfo, ARCHRow),
    BACKUP(DeviceInfo, BackupARCHRow),
    FIELD(DeviceInfo, SEDLength),
    FIELD(DeviceInfo, ELength),
    BACKUP(DeviceInfo, BackupELength),
    FIELD(DeviceInfo, ERow),
    BACKUP(DeviceInfo, BackupERow),
    Starts(Group::kRegisters, FIELD(DeviceInfo, IRLength)),
    Starts(Group::kFuses, FIELD(DeviceInfo, AddressLength)),
    BACKUP(DeviceInfo, BackupAddressLength),
    FIELD(DeviceInfo, DataLength),
    BACKUP(DeviceInfo, BackupDataLength),
    FIELD(DeviceInfo, PhysicalUESLength),
    FIELD(DeviceInfo, ispLogicalUESLength),
    FIELD(DeviceInfo, jtagLogicalUESLength),
    FIELD(DeviceInfo, DisableDeviceSTAPLSupport),
    FIELD(DeviceInfo, FuseNumber),
    BACKUP(DeviceInfo, BackupFuseNumber),
    FIELD(DeviceInfo, ProgramTime),
    FIELD(DeviceInfo, EraseTime),
    FIELD(DeviceInfo, VerifyTime),
    FIELD(DeviceInfo, ispUESMask),
    FIELD(DeviceInfo, jtagUESMask),
    Starts(Group::kRegisters, FIELD(DeviceInfo, BSCANLength)),
    FIELD(DeviceInfo, InstructionBypassPattern),
    InHex(2, FIELD(DeviceInfo, IDInstruction)),
    InHex(2, MakeField<&DeviceInfo::SetUSERCODEIntruction, &DeviceInfo::GetUSERCODEInstruction>("USERCODEIntruction")),
    InHex(2, FIELD(DeviceInfo, InstructionBypass)),
    FIELD(DeviceInfo, BypassLength),
    InHex(2, FIELD(DeviceInfo, BypassValue)),
    Starts(Group::kNames, FIELD(DeviceInfo, BSDLFile)),
    FIELD(DeviceInfo, BSDLFileTime),
    FIELD(DeviceInfo, TurboAlgTemplate),
    FIELD(DeviceInfo, TurboAlgIndex),
    Starts(Group::kBitstream, FIELD(DeviceInfo, DataFrames)),
    FIELD(DeviceInfo, FrameBytes),
    FIELD(DeviceInfo, HeaderBytes),
    FIELD(DeviceInfo, DataFrameHeader),
    FIELD(DeviceInfo, StopBytes),
    FIELD(DeviceInfo, UESBytes),
    FIELD(DeviceInfo, TrailerBytes),
    FIELD(DeviceInfo, EndBytes),
    FIELD(DeviceInfo, BitstreamColWidth),
    FIELD(DeviceInfo, SyncExtDoneAddress),
    FIELD(DeviceInfo, SyncExtDoneColumn),
    FIELD(DeviceInfo, NumberOfExternalASC),
    FIELD(DeviceInfo, MultibootChipSelColumn),
    FIELD(DeviceInfo, MultibootSourceSelColumn),
    Starts(Group::kLists, COLUMN(DeviceInfo, MultibootCfgAddr)),
    COLUMN(DeviceInfo, MultibootAutoAdd),
    COLUMN(DeviceInfo, SysIOList),
    // In each of the following lists, the first column creates the records and the others fill them.
    COLUMN(DeviceInfo, ListControlReg0Frequency),
    COLUMN(DeviceInfo, ListControlReg0MasterClock),
    COLUMN(DeviceInfo, ListControlReg0ClockDivider),
    COLUMN(DeviceInfo, ListControlReg1BitName),
    COLUMN(DeviceInfo, ListControlReg1Address),
    COLUMN(DeviceInfo, ListControlReg1Column),
    COLUMN(DeviceInfo, ListPersistent_fuseAddress),
    COLUMN(DeviceInfo, ListPersistent_fuseColumn),
    COLUMN(DeviceInfo, ListControlStatusBitName),
    COLUMN(DeviceInfo, ListControlStatusControl),
    COLUMN(DeviceInfo, ListControlStatusIndex),
    COLUMN(DeviceInfo, listAddressRange),
};

constexpr Field kPackageRows[] = {
    FIELD(Package, Type),
    FIELD(Package, PON),
    BACKUP(Package, BackupPON),
    FIELD(Package, AliasPON),
    FIELD(Package, JDF),
    FIELD(Package, INI),
    FIELD(Package, OrvoSetting),
};

constexpr Field kAdapterRows[] = {
    NEEDED(AdapterNames, VendorName, Need::kRequired),
    NEEDED(AdapterNames, AdapterName, Need::kRequired),
};

constexpr Field kControlRegZeroRows[] = {
    MEMBER(CControlRegZero, Frequency),
    MEMBER(CControlRegZero, MasterClock),
    MEMBER(CControlRegZero, ClockDivider),
};

constexpr Field kControlRegOneRows[] = {
    MEMBER(CControlRegOne, BitName),
    MEMBER(CControlRegOne, Value),
    MEMBER(CControlRegOne, Address),
    MEMBER(CControlRegOne, Column),
};

constexpr Field kPersistentFuseRows[] = {
    MEMBER(CPersistent_fuse, Value),
    MEMBER(CPersistent_fuse, Address),
    MEMBER(CPersistent_fuse, Column),
};

constexpr Field kControlStatusRows[] = {
    MEMBER(CControlStatus, BitName),
    MEMBER(CControlStatus, Control),
    MEMBER(CControlStatus, Text),
    MEMBER(CControlStatus, Index),
};

constexpr Field kControlVoltageRows[] = {
    MEMBER(CControlVoltage, VCCCore),
    MEMBER(CControlVoltage, VCCJ),
    MEMBER(CControlVoltage, PinList),
};

constexpr Field kControlEbrRows[] = {
    MEMBER(CControlEBR, BitName),
    MEMBER(CControlEBR, Value),
    MEMBER(CControlEBR, Address),
    MEMBER(CControlEBR, Column),
};

constexpr Field kEbrBlockRows[] = {
    NEEDED(EbrBlock, Name, Need::kRequired),
    With(Kind::kCount, MEMBER(EbrBlock, BitName)),
    With(Kind::kRange, MEMBER(EbrBlock, Column)),
    With(Kind::kRange, MEMBER(EbrBlock, Address)),
};

constexpr Field kBScanRecordRows[] = {
    MEMBER(BScanRecord, DefaultValue),
    MEMBER(BScanRecord, Controls),
};

constexpr Field kMultibootNumberRows[] = {
    NEEDED(MultibootNumber, Value, Need::kRequired),
};

constexpr Field kItemRows[] = {
    NEEDED(Item, Name, Need::kRequired),
};

constexpr Field kEntryRows[] = {
    NEEDED(Entry, Name, Need::kNotEmpty),
};

#undef FIELD
#undef BACKUP
#undef FLAG
#undef COLUMN
#undef MEMBER
#undef NEEDED

constexpr FieldTable kDatabaseFields(kDatabaseRows);
constexpr FieldTable kFamilyFields(kFamilyRows);
constexpr FieldTable kDeviceFields(kDeviceRows);
constexpr FieldTable kPackageFields(kPackageRows);
constexpr FieldTable kAdapterFields(kAdapterRows);
constexpr FieldTable kControlRegZeroFields(kControlRegZeroRows);
constexpr FieldTable kControlRegOneFields(kControlRegOneRows);
constexpr FieldTable kPersistentFuseFields(kPersistentFuseRows);
constexpr FieldTable kControlStatusFields(kControlStatusRows);
constexpr FieldTable kControlVoltageFields(kControlVoltageRows);
constexpr FieldTable kControlEbrFields(kControlEbrRows);
constexpr FieldTable kEbrBlockFields(kEbrBlockRows);
constexpr FieldTable kBScanRecordFields(kBScanRecordRows);
constexpr FieldTable kMultibootNumberFields(kMultibootNumberRows);
constexpr FieldTable kItemFields(kItemRows);
constexpr FieldTable kEntryFields(kEntryRows);

}  // namespace

template <> const FieldTable& FieldsOf<DeviceList>() { return kDatabaseFields; }
template <> const FieldTable& FieldsOf<FamilyList>() { return kFamilyFields; }
template <> const FieldTable& FieldsOf<DeviceInfo>() { return kDeviceFields; }
template <> const FieldTable& FieldsOf<Package>() { return kPackageFields; }
template <> const FieldTable& FieldsOf<AdapterNames>() { return kAdapterFields; }
template <> const FieldTable& FieldsOf<CControlRegZero>() { return kControlRegZeroFields; }
template <> const FieldTable& FieldsOf<CControlRegOne>() { return kControlRegOneFields; }
template <> const FieldTable& FieldsOf<CPersistent_fuse>() { return kPersistentFuseFields; }
template <> const FieldTable& FieldsOf<CControlStatus>() { return kControlStatusFields; }
template <> const FieldTable& FieldsOf<CControlVoltage>() { return kControlVoltageFields; }
template <> const FieldTable& FieldsOf<CControlEBR>() { return kControlEbrFields; }
template <> const FieldTable& FieldsOf<EbrBlock>() { return kEbrBlockFields; }
template <> const FieldTable& FieldsOf<BScanRecord>() { return kBScanRecordFields; }
template <> const FieldTable& FieldsOf<MultibootNumber>() { return kMultibootNumberFields; }
template <> const FieldTable& FieldsOf<Item>() { return kItemFields; }
template <> const FieldTable& FieldsOf<Entry>() { return kEntryFields; }

// clang-format on

}  // namespace plddb::descriptions
