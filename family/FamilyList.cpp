#include "FamilyList.h"

#include <memory>

#include "family/walk.h"
#include "foundation/owned_list.h"
#include "foundation/text_match.h"

using namespace plddb::internal;

FamilyList::FamilyList() = default;

FamilyList::~FamilyList() {
  // On purpose: the devices stay alive. The list never owned them.
  DestroyElements(OperationList);
}

// clang-format off
void FamilyList::SetName(const char* name)            { Name.SetString(name); }
char* FamilyList::GetName() const                     { return Name.GetString(); }
void FamilyList::SetAliasName(const char* aliasName)  { AliasName.SetString(aliasName); }
char* FamilyList::GetAliasName() const                { return AliasName.GetString(); }
void FamilyList::SetBypassInst(const char* code)      { BypassInst.SetString(code); }
char* FamilyList::GetBypassInst() const               { return BypassInst.GetString(); }
void FamilyList::SetIDCodeInst(const char* code)      { IDCodeInst.SetString(code); }
char* FamilyList::GetIDCodeInst() const               { return IDCodeInst.GetString(); }
void FamilyList::SetISCRelease(int release)           { ISCRelease = release; }
int FamilyList::GetISCRelease() const                 { return ISCRelease; }
void FamilyList::SetExtension(const char* pattern)    { Extension.SetString(pattern); }
char* FamilyList::GetExtension() const                { return Extension.GetString(); }
void FamilyList::SetXFPFile(const char* file)         { XFPFile.SetString(file); }
char* FamilyList::GetXFPFile() const                  { return XFPFile.GetString(); }
// On purpose: only this field is never null for its readers; setting null stores the empty text.
void FamilyList::SetICFFile(const char* file)         { ICFFile.SetString(file == nullptr ? "" : file); }
char* FamilyList::GetICFFile() const {
  char* const file = ICFFile.GetString();
  return file == nullptr ? const_cast<char*>("") : file;
}

void FamilyList::SetReInitialize(bool on)             { ReInitialize = on; }
bool FamilyList::IsReInitialize() const               { return ReInitialize; }
void FamilyList::Set1532Compliant(bool on)            { IEEE1532Compliant = on; }
bool FamilyList::Is1532Compliant() const              { return IEEE1532Compliant; }
void FamilyList::SetCDRFixed(bool on)                 { CDRFixed = on; }
bool FamilyList::IsCDRFixed() const                   { return CDRFixed; }
void FamilyList::SetHidden(bool on)                   { Hidden = on; }
bool FamilyList::IsHidden() const                     { return Hidden; }
void FamilyList::SetDebugMode(bool on)                { DebugMode = on; }
bool FamilyList::IsDebugMode() const                  { return DebugMode; }
void FamilyList::SetFPGALoaderSupport(bool on)        { FPGALoaderSupport = on; }
bool FamilyList::IsFPGALoaderSupport() const          { return FPGALoaderSupport; }
void FamilyList::SetSTAPLSupport(bool on)             { STAPLSupport = on; }
bool FamilyList::IsSTAPLSupport() const               { return STAPLSupport; }
void FamilyList::SetFPGADevice(bool on)               { FPGADevice = on; }
bool FamilyList::IsFPGADevice() const                 { return FPGADevice; }
void FamilyList::SetCFGPinCount(int pins)             { CFGPinCount = pins; }
int FamilyList::GetCFGPinCount() const                { return CFGPinCount; }
// clang-format on

void FamilyList::SetBitstreamModelTemplate(const char* text) {
  BitstreamModelTemplate = std::string(text == nullptr ? "" : text);
}

char* FamilyList::GetBitstreamModelTemplate() const {
  return BitstreamModelTemplate.empty() ? nullptr : const_cast<char*>(BitstreamModelTemplate.c_str());
}

DeviceInfo* FamilyList::NewDevice() { return InsertAt(Devices.GetCount()); }

DeviceInfo* FamilyList::InsertNewDevice(int pos) { return pos < 1 ? nullptr : InsertAt(pos - 1); }

DeviceInfo* FamilyList::AddNewDevice(int pos) { return InsertAt(pos); }

DeviceInfo* FamilyList::InsertAt(int index) {
  if (index < 0 || index > Devices.GetCount()) return nullptr;
  auto device = std::make_unique<DeviceInfo>(*this);
  Devices.Insert(index, device.get());
  return device.release();
}

DeviceInfo* FamilyList::GetDevice(unsigned short i) const {
  return i < GetDeviceCount() ? GetDevice(static_cast<int>(i)) : nullptr;
}

DeviceInfo* FamilyList::GetDevice(int i) const { return static_cast<DeviceInfo*>(Devices.GetAt(i)); }

DeviceInfo* FamilyList::GetDevice(const char* name) const { return GetDevice(GetDevicePos(name)); }

int FamilyList::GetDevicePos(const char* name) const {
  if (!IsComparable(name)) return -1;
  auto rule = [&](const DeviceInfo& device) { return EqualIgnoringCase(device.GetName(), name); };
  return FindPosition(*this, INT_MAX, rule);
}

DeviceInfo* FamilyList::GetLastDevice() const { return static_cast<DeviceInfo*>(Devices.GetTail()); }

unsigned short FamilyList::GetDeviceCount() const { return static_cast<unsigned short>(Devices.GetCount()); }

DeviceInfo* FamilyList::DeleteDevice(int pos) { return pos < 1 ? nullptr : static_cast<DeviceInfo*>(Devices.Delete(pos - 1)); }

DeviceInfo* FamilyList::DeleteDevice(const char* codeName) {
  if (codeName == nullptr) return nullptr;
  const auto bounded = [](const char* text) { return IsComparable(text) ? text : ""; };
  // On purpose: compares the code name, not the name; a text too long to compare counts as the empty one.
  auto rule = [&](const DeviceInfo& device) {
    return device.GetCodeName() != nullptr && EqualIgnoringCase(bounded(device.GetCodeName()), bounded(codeName));
  };
  return DeleteDevice(FindPosition(*this, INT_MAX, rule) + 1);
}

bool IsHidenFamily(const FamilyList* family) { return family != nullptr && family->IsHidden(); }
