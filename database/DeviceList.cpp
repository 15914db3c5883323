#include "DeviceList.h"

#include "foundation/owned_list.h"
#include "foundation/text_match.h"

using namespace plddb::internal;

namespace {

/// The first family at or after position `i` whose Name is exactly `name`; null without one. Sets `i` to its position.
FamilyList* FindByName(const DeviceList& database, const char* name, int& i) {
  FamilyList* family = database.GetFamily(i);
  while (family != nullptr && !EqualExactly(family->GetName(), name)) family = database.GetFamily(++i);
  return family;
}

/// The result of `attribute` for the first family of exactly this Name; null, 0 or false without one.
template <typename Attribute>
Attribute Ask(const DeviceList& database, const char* name, Attribute (FamilyList::*attribute)() const) {
  int i = 0;
  const FamilyList* const family = FindByName(database, name, i);
  return family == nullptr ? Attribute() : (family->*attribute)();
}

}  // namespace

DeviceList::DeviceList() = default;

DeviceList::~DeviceList() { DestroyElements(Families); }

// clang-format off
void DeviceList::SetVersion(const char* version)  { Version.SetString(version); }
char* DeviceList::GetVersion() const              { return Version.GetString(); }
void DeviceList::SetComment(const char* comment)  { Comment.SetString(comment); }
char* DeviceList::GetComment() const              { return Comment.GetString(); }
// clang-format on

FamilyList* DeviceList::NewFamily() { return AppendNew(Families, std::make_unique<FamilyList>()); }

FamilyList* DeviceList::GetFamily(int i) const { return static_cast<FamilyList*>(Families.GetAt(i)); }

FamilyList* DeviceList::GetFamily(const char* name) const {
  for (int i = 0; FamilyList* const family = GetFamily(i); ++i) {
    if (EqualExactly(family->GetName(), name) || EqualExactly(family->GetAliasName(), name)) return family;
  }
  return nullptr;
}

FamilyList* DeviceList::GetLastFamily() const { return static_cast<FamilyList*>(Families.GetTail()); }

unsigned short DeviceList::GetFamilyCount() const { return static_cast<unsigned short>(Families.GetCount()); }

unsigned short DeviceList::GetDeviceCount() const {
  unsigned int sum = 0;
  for (int i = 0; const FamilyList* const family = GetFamily(i); ++i) sum += family->GetDeviceCount();
  return static_cast<unsigned short>(sum);
}

void DeviceList::DeleteFamily(const char* name) {
  int i = 0;
  if (FindByName(*this, name, i) != nullptr) DeleteFamily(i);
}

void DeviceList::DeleteFamily(int i) { delete Families.Delete(i); }

const std::vector<std::string>& DeviceList::GetlistDevicenames() const { return listDevicenames; }

char* DeviceList::GetBypassInstwfamilyName(const char* name) const { return Ask(*this, name, &FamilyList::GetBypassInst); }

char* DeviceList::GetIDCodeInstwfamilyName(const char* name) const { return Ask(*this, name, &FamilyList::GetIDCodeInst); }

int DeviceList::GetISCReleasewfamilyName(const char* name) const { return Ask(*this, name, &FamilyList::GetISCRelease); }

bool DeviceList::GetHiddenwfamilyName(const char* name) const { return Ask(*this, name, &FamilyList::IsHidden); }

bool DeviceList::GetFPGALoaderSupportwfamilyName(const char* name) const {
  return Ask(*this, name, &FamilyList::IsFPGALoaderSupport);
}

bool DeviceList::GetFPGADevicewfamilyName(const char* name) const { return Ask(*this, name, &FamilyList::IsFPGADevice); }

bool DeviceList::GetReInitializewfamilyName(const char* name) const { return Ask(*this, name, &FamilyList::IsReInitialize); }

bool DeviceList::GetDebugModewfamilyName(const char* name) const { return Ask(*this, name, &FamilyList::IsDebugMode); }

char* DeviceList::GetExtensionwfamilyName(const char* name) const {
  // On purpose: a generic family gets no default; a later family of that name may have a pattern.
  const bool isGeneric = EqualExactly(name, "Generic JTAG Device");
  int i = 0;
  while (const FamilyList* const family = FindByName(*this, name, i)) {
    if (family->GetExtension() != nullptr) return family->GetExtension();
    if (!isGeneric) return const_cast<char*>("*.jed");
    ++i;
  }
  return nullptr;
}
