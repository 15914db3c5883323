// The deep copy of a family with its devices.

#include "FamilyList.h"
#include "foundation/owned_list.h"

using namespace plddb::internal;

namespace {

void CopyAttributes(FamilyList& to, const FamilyList& from) {
  to.SetXFPFile(from.GetXFPFile());
  to.SetICFFile(from.GetICFFile());
  to.SetName(from.GetName());
  to.SetBypassInst(from.GetBypassInst());
  to.SetIDCodeInst(from.GetIDCodeInst());
  to.SetISCRelease(from.GetISCRelease());
  to.SetExtension(from.GetExtension());
  to.SetReInitialize(from.IsReInitialize());
  to.Set1532Compliant(from.Is1532Compliant());
  to.SetCDRFixed(from.IsCDRFixed());
  to.SetHidden(from.IsHidden());
  to.SetDebugMode(from.IsDebugMode());
  to.SetAliasName(from.GetAliasName());
  to.SetFPGALoaderSupport(from.IsFPGALoaderSupport());
  to.SetSTAPLSupport(from.IsSTAPLSupport());
  to.SetFPGADevice(from.IsFPGADevice());
  to.SetCFGPinCount(from.GetCFGPinCount());
  to.SetBitstreamModelTemplate(from.GetBitstreamModelTemplate());
}

}  // namespace

FamilyList::FamilyList(FamilyList* src) : FamilyList() {
  if (src == nullptr) return;
  CopyAttributes(*this, *src);
  SetListBScanControl(src->ListBScanControl);
  SetListProgrammingModeControl(src->ListProgrammingModeControl);
  const int operations = src->GetOperationCount();  // On purpose: 16 bits limit every copy.
  for (int i = 0; i < operations; ++i) AppendText(OperationList, src->GetOperation(i));
  try {
    CopyDevices(*src);
  } catch (...) {
    DestroyElements(Devices);  // nobody else can reach them
    throw;
  }
}

void FamilyList::CopyDevices(const FamilyList& src) {
  const int devices = src.GetDeviceCount();  // On purpose: 16 bits limit every copy.
  for (int i = 0; i < devices; ++i) {
    AppendNew(Devices, std::make_unique<DeviceInfo>(src.GetDevice(i)))->SetFamilyObject(*this);
  }
}
