#include "PackageList.h"

#include "foundation/owned_list.h"
#include "foundation/text_match.h"
#include "package/walk.h"

using namespace plddb::internal;

namespace {

Package* FindPackageWithJDF(const PackageList& list, const char* jdf) {
  return FindPackage(list, [&](const Package& package) { return EqualExactly(package.GetJDF(), jdf); });
}

}  // namespace

PackageList::PackageList() = default;

PackageList::PackageList(PackageList* src) : PackageList() { CopyPackageList(src); }

PackageList::~PackageList() { DestroyElements(Packages); }

Package* PackageList::NewPackage() { return AppendNew(Packages, std::make_unique<Package>()); }

Package* PackageList::GetPackage(unsigned short i) const {
  return i < GetPackageCount() ? static_cast<Package*>(Packages.GetAt(i)) : nullptr;
}

Package* PackageList::GetPackage(const char* type) const {
  return FindPackage(*this, [&](const Package& package) { return EqualExactly(package.GetType(), type); });
}

unsigned short PackageList::GetPackageCount() const { return static_cast<unsigned short>(Packages.GetCount()); }

Package* PackageList::GetLastPackage() const { return static_cast<Package*>(Packages.GetTail()); }

char* PackageList::GetPackageTypeWithJDFFile(const char* jdf) const {
  const Package* const package = FindPackageWithJDF(*this, jdf);
  return package == nullptr ? nullptr : package->GetType();
}

char* PackageList::GetPackagePONWithJDFFile(const char* jdf) const {
  const Package* const package = FindPackageWithJDF(*this, jdf);
  return package == nullptr ? nullptr : package->GetPON();
}

char* PackageList::GetOrvoSettingWithJDFFile(const char* jdf) const {
  const Package* const package = FindPackageWithJDF(*this, jdf);
  return package == nullptr ? nullptr : package->GetOrvoSetting();
}

bool PackageList::CopyPackageList(PackageList* src) {
  const int count = src == nullptr ? 0 : src->GetPackageCount();  // read once: `src` may be this list
  for (int i = 0; i < count; ++i) {
    auto* const package = static_cast<Package*>(src->Packages.GetAt(i));  // GetPackage would use the count of the growing list
    AppendNew(Packages, std::make_unique<Package>(package));
  }
  return true;
}
