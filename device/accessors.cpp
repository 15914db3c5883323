// The plain accessors of the record, in the header's order. Those that do more are in DeviceInfo.cpp.

#include "DeviceInfo.h"

// clang-format off

// Names and texts
void DeviceInfo::SetName(const char* name)                                     { Name.SetString(name); }
char* DeviceInfo::GetName() const                                              { return Name.GetString(); }
void DeviceInfo::SetCodeName(const char* codeName)                             { CodeName.SetString(codeName); }
char* DeviceInfo::GetCodeName() const                                          { return CodeName.GetString(); }
void DeviceInfo::SetAliasName(const char* aliasName)                           { AliasName.SetString(aliasName); }
char* DeviceInfo::GetAliasName() const                                         { return AliasName.GetString(); }
void DeviceInfo::SetFamily(const char* family)                                 { Family.SetString(family); }
char* DeviceInfo::GetFamily() const                                            { return Family.GetString(); }
void DeviceInfo::SetVendor(const char* vendor)                                 { Vendor.SetString(vendor); }
char* DeviceInfo::GetVendor() const                                            { return Vendor.GetString(); }
void DeviceInfo::SetAccess(const char* access)                                 { Access.SetString(access); }
char* DeviceInfo::GetAccess() const                                            { return Access.GetString(); }
void DeviceInfo::SetArchitecture(const char* architecture)                     { Architecture.SetString(architecture); }
char* DeviceInfo::GetArchitecture() const                                      { return Architecture.GetString(); }
void DeviceInfo::SetPON(const char* pon)                                       { PON.SetString(pon); }
char* DeviceInfo::GetPON() const                                               { return PON.GetString(); }

// Access mode and algorithms
char* DeviceInfo::GetComm() const                                              { return Comm.GetString(); }
void DeviceInfo::SetAlgOptions(const char* options)                            { AlgOptions.SetString(options); }
char* DeviceInfo::GetAlgOptions() const                                        { return AlgOptions.GetString(); }
void DeviceInfo::SetAlgTemplate(const char* algTemplate)                       { AlgTemplate.SetString(algTemplate); }
char* DeviceInfo::GetAlgTemplate() const                                       { return AlgTemplate.GetString(); }
void DeviceInfo::SetISPAlgTemplate(const char* algTemplate)                    { ISPAlgTemplate.SetString(algTemplate); }
char* DeviceInfo::GetISPAlgTemplate() const                                    { return ISPAlgTemplate.GetString(); }
void DeviceInfo::SetSoftIPFile(const char* file)                               { SoftIPFile.SetString(file); }
char* DeviceInfo::GetSoftIPFile() const                                        { return SoftIPFile.GetString(); }
void DeviceInfo::SetEBRFile(const char* file)                                  { EBRFile.SetString(file); }
char* DeviceInfo::GetEBRFile() const                                           { return EBRFile.GetString(); }

// Pins and fuse map
void DeviceInfo::SetPin(unsigned short pins)                                   { Pin = pins; }
unsigned short DeviceInfo::GetPin() const                                      { return Pin; }
void DeviceInfo::SetBitMapTransformation(unsigned short kind)                  { BitMapTransformation = kind; }
unsigned short DeviceInfo::GetBitMapTransformation() const                     { return BitMapTransformation; }

// Identification
void DeviceInfo::SetispDeviceID(unsigned int id)                               { ispDeviceID = id; }
unsigned int DeviceInfo::GetispDeviceID() const                                { return ispDeviceID; }
void DeviceInfo::SetjtagDeviceID(unsigned int id)                              { jtagDeviceID = id; }
unsigned int DeviceInfo::GetjtagDeviceID() const                               { return jtagDeviceID; }
void DeviceInfo::SetjtagDeviceIDBackup(unsigned int id)                        { jtagDeviceIDBackup = id; }
unsigned int DeviceInfo::GetjtagDeviceIDBackup() const                         { return jtagDeviceIDBackup; }
void DeviceInfo::SetDeviceIDMask(unsigned int mask)                            { DeviceIDMask = mask; }
unsigned int DeviceInfo::GetDeviceIDMask() const                               { return DeviceIDMask; }
void DeviceInfo::SetDeviceIDMaskBackup(unsigned int mask)                      { DeviceIDMaskBackup = mask; }
unsigned int DeviceInfo::GetDeviceIDMaskBackup() const                         { return DeviceIDMaskBackup; }
void DeviceInfo::SetDeviceIDScanMask(unsigned int mask)                        { DeviceIDScanMask = mask; }
unsigned int DeviceInfo::GetDeviceIDScanMask() const                           { return DeviceIDScanMask; }
void DeviceInfo::SetIDLength(unsigned short bits)                              { IDLength = bits; }
unsigned short DeviceInfo::GetIDLength() const                                 { return IDLength; }

// Geometry of the fuse array and register lengths
void DeviceInfo::SetARCHLength(unsigned int bits)                              { ARCHLength = bits; }
unsigned int DeviceInfo::GetARCHLength() const                                 { return ARCHLength; }
void DeviceInfo::SetSEDLength(unsigned short bits)                             { SEDLength = bits; }
unsigned short DeviceInfo::GetSEDLength() const                                { return SEDLength; }
void DeviceInfo::SetELength(unsigned int bits)                                 { ELength = bits; }
unsigned int DeviceInfo::GetELength() const                                    { return ELength; }
void DeviceInfo::SetERow(unsigned short rows)                                  { ERow = rows; }
unsigned short DeviceInfo::GetERow() const                                     { return ERow; }
void DeviceInfo::SetIRLength(unsigned short bits)                              { IRLength = bits; }
unsigned short DeviceInfo::GetIRLength() const                                 { return IRLength; }
void DeviceInfo::SetAddressLength(unsigned int bits)                           { AddressLength = bits; }
unsigned int DeviceInfo::GetAddressLength() const                              { return AddressLength; }
void DeviceInfo::SetDataLength(unsigned int bits)                              { DataLength = bits; }
unsigned int DeviceInfo::GetDataLength() const                                 { return DataLength; }
void DeviceInfo::SetPhysicalUESLength(unsigned int bits)                       { PhysicalUESLength = bits; }
unsigned int DeviceInfo::GetPhysicalUESLength() const                          { return PhysicalUESLength; }
void DeviceInfo::SetispLogicalUESLength(unsigned int bits)                     { ispLogicalUESLength = bits; }
unsigned int DeviceInfo::GetispLogicalUESLength() const                        { return ispLogicalUESLength; }
void DeviceInfo::SetjtagLogicalUESLength(unsigned int bits)                    { jtagLogicalUESLength = bits; }
unsigned int DeviceInfo::GetjtagLogicalUESLength() const                       { return jtagLogicalUESLength; }
void DeviceInfo::SetDisableDeviceSTAPLSupport(bool disable)                    { DisableDeviceSTAPLSupport = disable; }
bool DeviceInfo::GetDisableDeviceSTAPLSupport() const                          { return DisableDeviceSTAPLSupport; }
void DeviceInfo::SetFuseNumber(unsigned int fuses)                             { FuseNumber = fuses; }
unsigned int DeviceInfo::GetFuseNumber() const                                 { return FuseNumber; }

// Times
void DeviceInfo::SetProgramTime(unsigned short time)                           { ProgramTime = time; }
unsigned short DeviceInfo::GetProgramTime() const                              { return ProgramTime; }
void DeviceInfo::SetEraseTime(unsigned int time)                               { EraseTime = time; }
unsigned int DeviceInfo::GetEraseTime() const                                  { return EraseTime; }
void DeviceInfo::SetVerifyTime(unsigned short time)                            { VerifyTime = time; }
unsigned short DeviceInfo::GetVerifyTime() const                               { return VerifyTime; }

// User signature masks, boundary scan, packages
void DeviceInfo::SetispUESMask(const char* mask)                               { ispUESMask.SetString(mask); }
char* DeviceInfo::GetispUESMask() const                                        { return ispUESMask.GetString(); }
void DeviceInfo::SetjtagUESMask(const char* mask)                              { jtagUESMask.SetString(mask); }
char* DeviceInfo::GetjtagUESMask() const                                       { return jtagUESMask.GetString(); }
void DeviceInfo::SetBSCANLength(unsigned int bits)                             { BSCANLength = bits; }
unsigned int DeviceInfo::GetBSCANLength() const                                { return BSCANLength; }

// Instructions
void DeviceInfo::SetInstructionBypassPattern(const char* bits)                 { InstructionBypassPattern.SetString(bits); }
char* DeviceInfo::GetInstructionBypassPattern() const                          { return InstructionBypassPattern.GetString(); }
void DeviceInfo::SetIDInstruction(unsigned int code)                           { IDInstruction = code; }
unsigned int DeviceInfo::GetIDInstruction() const                              { return IDInstruction; }
void DeviceInfo::SetARCHRow(unsigned short rows)                               { ARCHRow = rows; }
unsigned short DeviceInfo::GetARCHRow() const                                  { return ARCHRow; }
void DeviceInfo::SetUSERCODEIntruction(unsigned int code)                      { USERCODEInstruction = code; }
unsigned int DeviceInfo::GetUSERCODEInstruction() const                        { return USERCODEInstruction; }
void DeviceInfo::SetInstructionBypass(unsigned int code)                       { InstructionBypass = code; }
unsigned int DeviceInfo::GetInstructionBypass() const                          { return InstructionBypass; }
void DeviceInfo::SetBypassLength(unsigned short bits)                          { BypassLength = bits; }
unsigned short DeviceInfo::GetBypassLength() const                             { return BypassLength; }
void DeviceInfo::SetBypassValue(unsigned int value)                            { BypassValue = value; }
unsigned int DeviceInfo::GetBypassValue() const                                { return BypassValue; }

// Files and the turbo algorithm
void DeviceInfo::SetBSDLFile(const char* file)                                 { BSDLFile.SetString(file); }
char* DeviceInfo::GetBSDLFile() const                                          { return BSDLFile.GetString(); }
void DeviceInfo::SetBSDLFileTime(const char* time)                             { BSDLFileTime.SetString(time); }
char* DeviceInfo::GetBSDLFileTime() const                                      { return BSDLFileTime.GetString(); }
void DeviceInfo::SetTurboAlgTemplate(const char* algTemplate)                  { TurboAlgTemplate.SetString(algTemplate); }
char* DeviceInfo::GetTurboAlgTemplate() const                                  { return TurboAlgTemplate.GetString(); }
void DeviceInfo::SetTurboAlgIndex(unsigned char index)                         { TurboAlgIndex = index; }
unsigned char DeviceInfo::GetTurboAlgIndex() const                             { return TurboAlgIndex; }

// Backups of working values that the tool may change
void DeviceInfo::SetBackupAddressLength(unsigned int bits)                     { BackupAddressLength = bits; }
unsigned int DeviceInfo::GetBackupAddressLength() const                        { return BackupAddressLength; }
void DeviceInfo::SetBackupFuseNumber(unsigned int fuses)                       { BackupFuseNumber = fuses; }
unsigned int DeviceInfo::GetBackupFuseNumber() const                           { return BackupFuseNumber; }
void DeviceInfo::SetBackupDataLength(unsigned int bits)                        { BackupDataLength = bits; }
unsigned int DeviceInfo::GetBackupDataLength() const                           { return BackupDataLength; }

// Bitstream frame layout
void DeviceInfo::SetDataFrames(unsigned int frames)                            { DataFrames = frames; }
unsigned int DeviceInfo::GetDataFrames() const                                 { return DataFrames; }
void DeviceInfo::SetFrameBytes(unsigned int bytes)                             { FrameBytes = bytes; }
unsigned int DeviceInfo::GetFrameBytes() const                                 { return FrameBytes; }
void DeviceInfo::SetHeaderBytes(unsigned int bytes)                            { HeaderBytes = bytes; }
unsigned int DeviceInfo::GetHeaderBytes() const                                { return HeaderBytes; }
void DeviceInfo::SetDataFrameHeader(unsigned int header)                       { DataFrameHeader = header; }
unsigned int DeviceInfo::GetDataFrameHeader() const                            { return DataFrameHeader; }
void DeviceInfo::SetStopBytes(unsigned int bytes)                              { StopBytes = bytes; }
unsigned int DeviceInfo::GetStopBytes() const                                  { return StopBytes; }
void DeviceInfo::SetUESBytes(unsigned int bytes)                               { UESBytes = bytes; }
unsigned int DeviceInfo::GetUESBytes() const                                   { return UESBytes; }
void DeviceInfo::SetTrailerBytes(unsigned int bytes)                           { TrailerBytes = bytes; }
unsigned int DeviceInfo::GetTrailerBytes() const                               { return TrailerBytes; }
void DeviceInfo::SetEndBytes(unsigned int bytes)                               { EndBytes = bytes; }
unsigned int DeviceInfo::GetEndBytes() const                                   { return EndBytes; }
void DeviceInfo::SetBitstreamColWidth(int bits)                                { BitstreamColWidth = bits; }
void DeviceInfo::SetSyncExtDoneAddress(int address)                            { SyncExtDoneAddress = address; }
int DeviceInfo::GetSyncExtDoneAddress() const                                  { return SyncExtDoneAddress; }
void DeviceInfo::SetSyncExtDoneColumn(int column)                              { SyncExtDoneColumn = column; }
int DeviceInfo::GetSyncExtDoneColumn() const                                   { return SyncExtDoneColumn; }
void DeviceInfo::SetNumberOfExternalASC(int count)                             { NumberOfExternalASC = count; }
int DeviceInfo::GetNumberOfExternalASC() const                                 { return NumberOfExternalASC; }

// Multiboot fuses
void DeviceInfo::SetMultibootChipSelColumn(int column)                         { Multiboot_fuses.ChipSelColumn = column; }
int DeviceInfo::GetMultibootChipSelColumn() const                              { return Multiboot_fuses.ChipSelColumn; }
void DeviceInfo::SetMultibootSourceSelColumn(int column)                       { Multiboot_fuses.SourceSelColumn = column; }
int DeviceInfo::GetMultibootSourceSelColumn() const                            { return Multiboot_fuses.SourceSelColumn; }

// Backups of the geometry
void DeviceInfo::SetBackupARCHLength(unsigned int bits)                        { BackupARCHLength = bits; }
unsigned int DeviceInfo::GetBackupARCHLength() const                           { return BackupARCHLength; }
void DeviceInfo::SetBackupARCHRow(unsigned short rows)                         { BackupARCHRow = rows; }
unsigned short DeviceInfo::GetBackupARCHRow() const                            { return BackupARCHRow; }
void DeviceInfo::SetBackupELength(unsigned int bits)                           { BackupELength = bits; }
unsigned int DeviceInfo::GetBackupELength() const                              { return BackupELength; }
void DeviceInfo::SetBackupERow(unsigned short rows)                            { BackupERow = rows; }
unsigned short DeviceInfo::GetBackupERow() const                               { return BackupERow; }

// clang-format on
