// Every operation that promises not to allocate, counted.

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/allocation_counter.h"
#include "tests/support/exported_operations.h"
#include "tests/support/field_operations.h"
#include "tests/support/whole_tree.h"

namespace {

using support::kAnyText;
using T = support::WholeTree;

struct Row {
  std::string operation;
  std::function<long(T&)> allocations;
};

/// The allocations of a call.
template <typename Operation>
long Counted(Operation operation) {
  const long before = support::AllocationCount();
  operation();
  return support::AllocationCount() - before;
}

/// The allocations of an object's end.
template <class Object>
long CountedEnd(Object* object) {
  return Counted([&] { delete object; });
}

/// The allocations of unlinking a device, which is destroyed afterwards.
template <typename Unlink>
long CountedUnlink(Unlink unlink) {
  DeviceInfo* device = nullptr;
  const long allocations = Counted([&] { device = unlink(); });
  delete device;
  return device == nullptr ? -1 : allocations;
}

/// The allocations of a helper that writes into a buffer.
template <typename Write>
long CountedWrite(Write write) {
  char buffer[sizeof kAnyText + 2];
  std::strcpy(buffer, " ");
  std::strcat(buffer, kAnyText);
  return Counted([&] { write(buffer); });
}

template <auto member>
long Call(T& tree) {
  long allocations = 0;
  support::CallMember<member>(tree, [&](auto call) { allocations = Counted(call); });
  return allocations;
}

/// One of the overloads of a member.
template <class Class, class Signature>
constexpr auto Pick(Signature Class::*member) {
  return member;
}

// The getters of fields, and the setters of numbers, come from the field tables.
const std::vector<Row> kOtherRows = {
    {"Adapter::Adapter()", [](T&) { return Counted([] { Adapter made; }); }},
    {"Adapter::GetAdapterName() const", Call<&Adapter::GetAdapterName>},
    {"Adapter::GetVendorName() const", Call<&Adapter::GetVendorName>},
    {"Adapter::~Adapter()", [](T&) { return CountedEnd(new Adapter); }},
    {"DeviceInfo::DeviceInfo(FamilyList&)", [](T& t) { return Counted([&] { DeviceInfo made(t.family); }); }},
    {"DeviceInfo::GetControlVoltage() const", Call<&DeviceInfo::GetControlVoltage>},
    {"DeviceInfo::GetDevicePackage() const", Call<&DeviceInfo::GetDevicePackage>},
    {"DeviceInfo::GetFamilyObject() const", Call<&DeviceInfo::GetFamilyObject>},
    {"DeviceInfo::GetMultibootAutoAdd()", Call<&DeviceInfo::GetMultibootAutoAdd>},
    {"DeviceInfo::GetMultibootCfgAddr()", Call<&DeviceInfo::GetMultibootCfgAddr>},
    {"DeviceInfo::GetMultibootChipSelColumn() const", Call<&DeviceInfo::GetMultibootChipSelColumn>},
    {"DeviceInfo::GetMultibootSourceSelColumn() const", Call<&DeviceInfo::GetMultibootSourceSelColumn>},
    {"DeviceInfo::GetSysIO(int) const", Call<&DeviceInfo::GetSysIO>},
    {"DeviceInfo::GetSysIOCount() const", Call<&DeviceInfo::GetSysIOCount>},
    {"DeviceInfo::GetlistAddressRange() const", Call<&DeviceInfo::GetlistAddressRange>},
    {"DeviceInfo::GetlistControlEBR() const", Call<&DeviceInfo::GetlistControlEBR>},
    {"DeviceInfo::GetlistControlRegOne() const", Call<&DeviceInfo::GetlistControlRegOne>},
    {"DeviceInfo::GetlistControlRegZero() const", Call<&DeviceInfo::GetlistControlRegZero>},
    {"DeviceInfo::GetlistControlStatus() const", Call<&DeviceInfo::GetlistControlStatus>},
    {"DeviceInfo::GetlistPersistent_fuse() const", Call<&DeviceInfo::GetlistPersistent_fuse>},
    {"DeviceInfo::SetControlVoltage(std::vector<CControlVoltage>)", Call<&DeviceInfo::SetControlVoltage>},
    {"DeviceInfo::SetFamilyObject(FamilyList&)", [](T& t) { return Counted([&] { t.device.SetFamilyObject(t.family); }); }},
    {"DeviceInfo::SetListControlEBRAddress(char const*)", Call<&DeviceInfo::SetListControlEBRAddress>},
    {"DeviceInfo::SetListControlEBRColumn(char const*)", Call<&DeviceInfo::SetListControlEBRColumn>},
    {"DeviceInfo::SetMultibootAutoAdd(std::vector<int>)", Call<Pick<DeviceInfo, void(std::vector<int>)>(&DeviceInfo::SetMultibootAutoAdd)>},
    {"DeviceInfo::SetMultibootCfgAddr(std::vector<int>)", Call<Pick<DeviceInfo, void(std::vector<int>)>(&DeviceInfo::SetMultibootCfgAddr)>},
    {"DeviceInfo::SetMultibootChipSelColumn(int)", Call<&DeviceInfo::SetMultibootChipSelColumn>},
    {"DeviceInfo::SetMultibootSourceSelColumn(int)", Call<&DeviceInfo::SetMultibootSourceSelColumn>},
    {"DeviceInfo::SetlistControlEBR(std::vector<CControlEBRList>)", Call<&DeviceInfo::SetlistControlEBR>},
    {"DeviceInfo::SetlistControlRegOne(std::vector<CControlRegOne>)", Call<&DeviceInfo::SetlistControlRegOne>},
    {"DeviceInfo::SetlistControlRegZero(std::vector<CControlRegZero>)", Call<&DeviceInfo::SetlistControlRegZero>},
    {"DeviceInfo::SetlistControlStatus(std::vector<CControlStatus>)", Call<&DeviceInfo::SetlistControlStatus>},
    {"DeviceInfo::SetlistPersistent_fuse(std::vector<CPersistent_fuse>)", Call<&DeviceInfo::SetlistPersistent_fuse>},
    {"DeviceInfo::~DeviceInfo()", [](T& t) { return CountedEnd(new DeviceInfo(&t.device)); }},
    {"DeviceList::DeleteFamily(char const*)", [](T& t) { ReleaseDevices(t.family); return Counted([&] { t.database->DeleteFamily(t.family.GetName()); }); }},
    {"DeviceList::DeleteFamily(int)", [](T& t) { ReleaseDevices(t.family); return Counted([&] { t.database->DeleteFamily(0); }); }},
    {"DeviceList::DeviceList()", [](T&) { return Counted([] { DeviceList made; }); }},
    {"DeviceList::GetBypassInstwfamilyName(char const*) const", Call<&DeviceList::GetBypassInstwfamilyName>},
    {"DeviceList::GetComment() const", Call<&DeviceList::GetComment>},
    {"DeviceList::GetDebugModewfamilyName(char const*) const", Call<&DeviceList::GetDebugModewfamilyName>},
    {"DeviceList::GetDeviceCommISPWithFuseMap(unsigned long) const", Call<&DeviceList::GetDeviceCommISPWithFuseMap>},
    {"DeviceList::GetDeviceCount() const", Call<&DeviceList::GetDeviceCount>},
    {"DeviceList::GetDeviceWithCodeName(char const*) const", Call<&DeviceList::GetDeviceWithCodeName>},
    {"DeviceList::GetDeviceWithComm(char const*, char const*) const", Call<&DeviceList::GetDeviceWithComm>},
    {"DeviceList::GetDeviceWithCommAndCodeName(char const*, char const*) const", Call<&DeviceList::GetDeviceWithCommAndCodeName>},
    {"DeviceList::GetDeviceWithCommAndID(char const*, unsigned int) const", Call<&DeviceList::GetDeviceWithCommAndID>},
    {"DeviceList::GetDeviceWithCommAndIDAndCodeName(char const*, unsigned int, char const*) const", Call<&DeviceList::GetDeviceWithCommAndIDAndCodeName>},
    {"DeviceList::GetDeviceWithCommAndIDNoMask(char const*, unsigned int) const", Call<&DeviceList::GetDeviceWithCommAndIDNoMask>},
    {"DeviceList::GetDeviceWithEntityName(char const*) const", Call<&DeviceList::GetDeviceWithEntityName>},
    {"DeviceList::GetDeviceWithEntityNameDisregardUES(char const*) const", Call<&DeviceList::GetDeviceWithEntityNameDisregardUES>},
    {"DeviceList::GetDeviceWithJDFFileName(char const*) const", Call<&DeviceList::GetDeviceWithJDFFileName>},
    {"DeviceList::GetDeviceWithName(char const*) const", Call<&DeviceList::GetDeviceWithName>},
    {"DeviceList::GetDeviceWithPON(char const*, bool) const", Call<&DeviceList::GetDeviceWithPON>},
    {"DeviceList::GetDeviceWithPackage(char const*, char const*) const", Call<&DeviceList::GetDeviceWithPackage>},
    {"DeviceList::GetDeviceWithPackageAndCodeName(char const*, char const*) const", Call<&DeviceList::GetDeviceWithPackageAndCodeName>},
    {"DeviceList::GetExtensionwfamilyName(char const*) const", Call<&DeviceList::GetExtensionwfamilyName>},
    {"DeviceList::GetFPGADevicewfamilyName(char const*) const", Call<&DeviceList::GetFPGADevicewfamilyName>},
    {"DeviceList::GetFPGALoaderSupportwfamilyName(char const*) const", Call<&DeviceList::GetFPGALoaderSupportwfamilyName>},
    {"DeviceList::GetFamily(char const*) const", Call<Pick<DeviceList, FamilyList*(const char*) const>(&DeviceList::GetFamily)>},
    {"DeviceList::GetFamily(int) const", Call<Pick<DeviceList, FamilyList*(int) const>(&DeviceList::GetFamily)>},
    {"DeviceList::GetFamilyCount() const", Call<&DeviceList::GetFamilyCount>},
    {"DeviceList::GetHiddenwfamilyName(char const*) const", Call<&DeviceList::GetHiddenwfamilyName>},
    {"DeviceList::GetIDCodeInstwfamilyName(char const*) const", Call<&DeviceList::GetIDCodeInstwfamilyName>},
    {"DeviceList::GetISCReleasewfamilyName(char const*) const", Call<&DeviceList::GetISCReleasewfamilyName>},
    {"DeviceList::GetLastFamily() const", Call<&DeviceList::GetLastFamily>},
    {"DeviceList::GetReInitializewfamilyName(char const*) const", Call<&DeviceList::GetReInitializewfamilyName>},
    {"DeviceList::GetVersion() const", Call<&DeviceList::GetVersion>},
    {"DeviceList::GetlistDevicenames() const", Call<&DeviceList::GetlistDevicenames>},
    {"DeviceList::~DeviceList()", [](T& t) { ReleaseDevices(*t.other); return CountedEnd(t.other.release()); }},
    {"DeviceStrElement::DeviceStrElement()", [](T&) { return Counted([] { DeviceStrElement made; }); }},
    {"DeviceStrElement::GetString() const", Call<&DeviceStrElement::GetString>},
    {"DeviceStrElement::Swap(DeviceStrElement&)", [](T& t) { return Counted([&] { t.element.Swap(t.element); }); }},
    {"DeviceStrElement::~DeviceStrElement()", [](T&) { return CountedEnd(new DeviceStrElement); }},
    {"FamilyList::DeleteDevice(char const*)", [](T& t) { return CountedUnlink([&] { return t.family.DeleteDevice(t.device.GetCodeName()); }); }},
    {"FamilyList::DeleteDevice(int)", [](T& t) { return CountedUnlink([&] { return t.family.DeleteDevice(1); }); }},
    {"FamilyList::DeleteOperationList(char const*)", Call<&FamilyList::DeleteOperationList>},
    {"FamilyList::FamilyList()", [](T&) { return Counted([] { FamilyList made; }); }},
    {"FamilyList::GetDevice(char const*) const", Call<Pick<FamilyList, DeviceInfo*(const char*) const>(&FamilyList::GetDevice)>},
    {"FamilyList::GetDevice(char const*, char const*) const", Call<Pick<FamilyList, DeviceInfo*(const char*, const char*) const>(&FamilyList::GetDevice)>},
    {"FamilyList::GetDevice(char const*, unsigned int) const", Call<Pick<FamilyList, DeviceInfo*(const char*, unsigned int) const>(&FamilyList::GetDevice)>},
    {"FamilyList::GetDevice(int) const", Call<Pick<FamilyList, DeviceInfo*(int) const>(&FamilyList::GetDevice)>},
    {"FamilyList::GetDevice(unsigned short) const", Call<Pick<FamilyList, DeviceInfo*(unsigned short) const>(&FamilyList::GetDevice)>},
    {"FamilyList::GetDeviceCount() const", Call<&FamilyList::GetDeviceCount>},
    {"FamilyList::GetDevicePos(char const*) const", Call<&FamilyList::GetDevicePos>},
    {"FamilyList::GetDeviceWithCodeName(char const*) const", Call<Pick<FamilyList, DeviceInfo*(const char*) const>(&FamilyList::GetDeviceWithCodeName)>},
    {"FamilyList::GetDeviceWithCodeName(char const*, char const*) const", Call<Pick<FamilyList, DeviceInfo*(const char*, const char*) const>(&FamilyList::GetDeviceWithCodeName)>},
    {"FamilyList::GetDeviceWithCodeNameandVendor(char const*, char const*) const", Call<&FamilyList::GetDeviceWithCodeNameandVendor>},
    {"FamilyList::GetDeviceWithComm(char const*, char const*) const", Call<&FamilyList::GetDeviceWithComm>},
    {"FamilyList::GetDeviceWithPackage(char const*, char const*) const", Call<&FamilyList::GetDeviceWithPackage>},
    {"FamilyList::GetLastDevice() const", Call<&FamilyList::GetLastDevice>},
    {"FamilyList::GetListBScanControl()", Call<&FamilyList::GetListBScanControl>},
    {"FamilyList::GetListProgrammingModeControl()", Call<&FamilyList::GetListProgrammingModeControl>},
    {"FamilyList::GetOperation(int) const", Call<&FamilyList::GetOperation>},
    {"FamilyList::GetOperationCount() const", Call<&FamilyList::GetOperationCount>},
    {"FamilyList::SetBScanDefaultValue(int)", Call<&FamilyList::SetBScanDefaultValue>},
    {"FamilyList::SetListBScanControl(std::vector<CBScanControl>)", Call<Pick<FamilyList, void(std::vector<CBScanControl>)>(&FamilyList::SetListBScanControl)>},
    {"FamilyList::SetListProgrammingModeControl(std::vector<std::string>)", Call<Pick<FamilyList, void(std::vector<std::string>)>(&FamilyList::SetListProgrammingModeControl)>},
    {"FamilyList::~FamilyList()", [](T& t) { auto* made = new FamilyList(&t.family); ReleaseDevices(*made); return CountedEnd(made); }},
    {"FindSubString(char const*, char const*, int, bool)", [](T&) { return Counted([] { FindSubString(kAnyText, "SECOND", 1, false); }); }},
    {"IsBypassDevice(DeviceInfo const*, int)", [](T& t) { return Counted([&] { IsBypassDevice(&t.device, 6); }); }},
    {"IsHidenFamily(FamilyList const*)", [](T& t) { return Counted([&] { IsHidenFamily(&t.family); }); }},
    {"LObjList::Delete(int)", Call<&LObjList::Delete>},
    {"LObjList::GetAt(int) const", Call<&LObjList::GetAt>},
    {"LObjList::GetCount() const", Call<&LObjList::GetCount>},
    {"LObjList::GetTail() const", Call<&LObjList::GetTail>},
    {"LObjList::IsEmpty() const", Call<&LObjList::IsEmpty>},
    {"LObjList::LObjList()", [](T&) { return Counted([] { LObjList made; }); }},
    {"LObjList::RemoveTail()", Call<&LObjList::RemoveTail>},
    {"LObjList::~LObjList()", [](T&) { return CountedEnd(new LObjList); }},
    {"LObject::~LObject()", [](T&) { return CountedEnd(static_cast<LObject*>(new Package)); }},
    {"LString::Find(char const*, char const*) const", Call<Pick<LString, int(const char*, const char*) const>(&LString::Find)>},
    {"LString::Find(char const*, char) const", Call<Pick<LString, int(const char*, char) const>(&LString::Find)>},
    {"LString::LString()", [](T&) { return Counted([] { LString made; }); }},
    {"LString::Left(char*, char const*, int) const", [](T& t) { return CountedWrite([&](char* s) { t.helper.Left(s, kAnyText, 9); }); }},
    {"LString::Right(char*, char const*, int) const", [](T& t) { return CountedWrite([&](char* s) { t.helper.Right(s, kAnyText, 9); }); }},
    {"LString::TrimLeft(char*) const", [](T& t) { return CountedWrite([&](char* s) { t.helper.TrimLeft(s); }); }},
    {"LString::TrimRight(char*) const", [](T& t) { return CountedWrite([&](char* s) { t.helper.TrimRight(s); }); }},
    {"LString::~LString()", [](T&) { return CountedEnd(new LString); }},
    {"Package::ClearAdapterList()", Call<&Package::ClearAdapterList>},
    {"Package::GetAdapter(int) const", Call<&Package::GetAdapter>},
    {"Package::GetAdapterCount() const", Call<&Package::GetAdapterCount>},
    {"Package::GetAdapterName(int) const", Call<&Package::GetAdapterName>},
    {"Package::GetAdapterVendor(int) const", Call<&Package::GetAdapterVendor>},
    {"Package::GetAliasPON() const", Call<&Package::GetAliasPON>},
    {"Package::GetBackupPON() const", Call<&Package::GetBackupPON>},
    {"Package::GetINI() const", Call<&Package::GetINI>},
    {"Package::GetJDF() const", Call<&Package::GetJDF>},
    {"Package::GetOrvoSetting() const", Call<&Package::GetOrvoSetting>},
    {"Package::GetPON() const", Call<&Package::GetPON>},
    {"Package::GetType() const", Call<&Package::GetType>},
    {"Package::Package()", [](T&) { return Counted([] { Package made; }); }},
    {"Package::RemoveAdapter(int)", Call<&Package::RemoveAdapter>},
    {"Package::~Package()", [](T& t) { return CountedEnd(new Package(&t.package)); }},
    {"PackageList::GetLastPackage() const", Call<&PackageList::GetLastPackage>},
    {"PackageList::GetOrvoSettingWithJDFFile(char const*) const", Call<&PackageList::GetOrvoSettingWithJDFFile>},
    {"PackageList::GetPackage(char const*) const", Call<Pick<PackageList, Package*(const char*) const>(&PackageList::GetPackage)>},
    {"PackageList::GetPackage(unsigned short) const", Call<Pick<PackageList, Package*(unsigned short) const>(&PackageList::GetPackage)>},
    {"PackageList::GetPackageCount() const", Call<&PackageList::GetPackageCount>},
    {"PackageList::GetPackagePONWithJDFFile(char const*) const", Call<&PackageList::GetPackagePONWithJDFFile>},
    {"PackageList::GetPackageTypeWithJDFFile(char const*) const", Call<&PackageList::GetPackageTypeWithJDFFile>},
    {"PackageList::PackageList()", [](T&) { return Counted([] { PackageList made; }); }},
    {"PackageList::~PackageList()", [](T& t) { return CountedEnd(new PackageList(&t.packages)); }},
    {"strlwr(char*)", [](T&) { return CountedWrite([](char* s) { strlwr(s); }); }},
    {"strupr(char*)", [](T&) { return CountedWrite([](char* s) { strupr(s); }); }},
    {"strupr(std::string&)", [](T& t) { t.texts.assign(1, kAnyText); return Counted([&] { strupr(t.texts.front()); }); }},
    {"util_strncpy(char*, char const*, int, int)", [](T&) { return CountedWrite([](char* s) { util_strncpy(s, kAnyText, 9, 0); }); }},
};

std::vector<Row> AllRows() {
  std::vector<Row> rows = kOtherRows;
  for (support::FieldOperation& operation : support::FieldOperations()) {
    if (operation.allocates) continue;
    rows.push_back({operation.name, [call = operation.call](T& t) { return Counted([&] { call(t); }); }});
  }
  return rows;
}

TEST(SteadyMemory, NoOperationOfTheTableAllocates) {
  for (const Row& row : AllRows()) {
    T tree;
    const long allocations = row.allocations(tree);
    EXPECT_EQ(allocations, 0) << "row: " << row.operation;
  }
}

TEST(SteadyMemory, EachExportedOperationThatNeverAllocatesHasARow) {
  std::multiset<std::string> operations;
  for (const Row& row : AllRows()) operations.insert(row.operation);
  const auto exported = support::ExportedOperations("steady");
  EXPECT_EQ(operations, std::multiset<std::string>(exported.begin(), exported.end()));
}

}  // namespace
