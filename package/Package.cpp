#include "Package.h"

#include <algorithm>

#include "foundation/owned_list.h"
#include "foundation/paired_texts.h"

using namespace plddb::internal;

Package::Package() = default;

Package::Package(Package* src) : Package() {
  if (src == nullptr) return;
  SetType(src->GetType());
  SetPON(src->GetPON());
  SetBackupPON(src->GetBackupPON());
  SetAliasPON(src->GetAliasPON());
  SetJDF(src->GetJDF());
  SetINI(src->GetINI());
  SetOrvoSetting(src->GetOrvoSetting());
  const auto count = static_cast<unsigned short>(src->GetAdapterCount());  // On purpose: 16 bits limit every copy.
  for (int i = 0; i < count; ++i) AddAdapter(src->GetAdapter(i));
}

Package::~Package() { DestroyElements(AdapterList); }

// clang-format off
void Package::SetType(const char* type)            { Type.SetString(type); }
char* Package::GetType() const                     { return Type.GetString(); }
void Package::SetPON(const char* pon)              { PON.SetString(pon); }
char* Package::GetPON() const                      { return PON.GetString(); }
void Package::SetJDF(const char* jdf)              { JDF.SetString(jdf); }
char* Package::GetJDF() const                      { return JDF.GetString(); }
void Package::SetINI(const char* ini)              { INI.SetString(ini); }
char* Package::GetINI() const                      { return INI.GetString(); }
void Package::SetOrvoSetting(const char* setting)  { OrvoSetting.SetString(setting); }
char* Package::GetOrvoSetting() const              { return OrvoSetting.GetString(); }
void Package::SetBackupPON(const char* pon)        { BackupPON.SetString(pon); }
char* Package::GetBackupPON() const                { return BackupPON.GetString(); }
void Package::SetAliasPON(const char* pon)         { AliasPON.SetString(pon); }
char* Package::GetAliasPON() const                 { return AliasPON.GetString(); }
// clang-format on

int Package::GetAdapterCount() const { return AdapterList.GetCount(); }

Adapter* Package::AddAdapter(const char* vendor, const char* adapter) {
  if (vendor == nullptr || adapter == nullptr) return nullptr;
  auto added = std::make_unique<Adapter>();
  added->SetVendorName(vendor);
  added->SetAdapterName(adapter);
  return AppendNew(AdapterList, std::move(added));
}

Adapter* Package::AddAdapter(Adapter* adapter) {
  if (adapter == nullptr) return nullptr;
  return AppendNew(AdapterList, std::make_unique<Adapter>(adapter));
}

void Package::RemoveAdapter(int i) { delete AdapterList.Delete(i); }

Adapter* Package::GetAdapter(int i) const { return static_cast<Adapter*>(AdapterList.GetAt(i)); }

Adapter* Package::SetAdapter(int i, const char* vendor, const char* adapter) {
  Adapter* const target = GetAdapter(i);
  if (target != nullptr) SetBoth(target->AdapterName, adapter, target->VendorName, vendor);
  return target;
}

void Package::ClearAdapterList() { DestroyElements(AdapterList); }

char* Package::GetAdapterName(int i) const {
  const Adapter* const adapter = GetAdapter(i);
  return adapter == nullptr ? nullptr : adapter->GetAdapterName();
}

char* Package::GetAdapterVendor(int i) const {
  const Adapter* const adapter = GetAdapter(i);
  return adapter == nullptr ? nullptr : adapter->GetVendorName();
}

std::string Package::GetEntityName() const {
  const char* const number = GetBackupPON();
  std::string name = number == nullptr ? "" : number;
  const auto isMapped = [](char c) { return c == '-' || c == '/' || c == '(' || c == ')'; };
  std::replace_if(name.begin(), name.end(), isMapped, '_');
  return name;
}
