#include "Adapter.h"

Adapter::Adapter() = default;

Adapter::Adapter(Adapter* src) {
  if (src == nullptr) return;
  SetVendorName(src->GetVendorName());
  SetAdapterName(src->GetAdapterName());
}

Adapter::~Adapter() = default;

// clang-format off
void Adapter::SetVendorName(const char* vendor)    { VendorName.SetString(vendor); }
char* Adapter::GetVendorName() const               { return VendorName.GetString(); }
void Adapter::SetAdapterName(const char* adapter)  { AdapterName.SetString(adapter); }
char* Adapter::GetAdapterName() const              { return AdapterName.GetString(); }
// clang-format on
