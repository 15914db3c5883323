#include "fuzz/script_operations.h"

#include <functional>
#include <iterator>
#include <new>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <variant>
#include <vector>

#include "foundation/text_lists.h"
#include "fuzz/script_call.h"
#include "fuzz/script_helpers.h"
#include "tests/support/device_fields.h"
#include "tests/support/family_fields.h"

using namespace plddb::internal;

namespace fuzz {
namespace {

struct Operation {
  std::string name;
  std::function<void(World& world, Arguments& arguments)> play;
};

// What takes more than the plain call.

void SelectDatabase(World& world, Arguments& arguments) { world.SelectDatabase(arguments.Size()); }
void SelectFamily(World& world, Arguments& arguments) { world.SelectFamily(arguments.Size()); }
void SelectDevice(World& world, Arguments& arguments) { world.SelectDevice(arguments.Size()); }
void SelectUnlinked(World& world, Arguments& arguments) { world.SelectUnlinked(arguments.Size()); }
void SelectPackage(World& world, Arguments& arguments) { world.SelectPackage(arguments.Size()); }
void TearDown(World& world, Arguments&) { world.TearDown(); }

void SetEBRBitName(World& world, Arguments& arguments) {
  DeviceInfo* const device = world.Current<DeviceInfo>();
  const char* const count = arguments.Text();
  if (device == nullptr) return;
  const int number = count == nullptr ? 0 : ParseNumber(count);
  try {
    device->SetListControlEBRBitName(count == nullptr ? nullptr : BoundedCount(count, number, 100).c_str());
  } catch (const std::bad_alloc&) {
    Check(number > 1 << 24, "only counts beyond all reason are refused");
  }
}

/// Devices of a family stay linked to it, as a tree has them; an unlinked one may be linked anew.
void SetFamilyObject(World& world, Arguments&) {
  DeviceInfo* const device = world.Current<DeviceInfo>();
  if (device != nullptr && world.IsUnlinked(device)) world.BringHome(*device);
}

void DeleteDeviceAt(World& world, Arguments& arguments) {
  FamilyList* const family = world.Current<FamilyList>();
  const int position = static_cast<int>(arguments.Number());
  if (family != nullptr) world.Adopt(family->DeleteDevice(position));
}

void DeleteDeviceNamed(World& world, Arguments& arguments) {
  FamilyList* const family = world.Current<FamilyList>();
  const char* const codeName = arguments.Text();
  if (family != nullptr) world.Adopt(family->DeleteDevice(codeName));
}

void DestroyDevice(World& world, Arguments&) { world.Destroy(world.Current<DeviceInfo>()); }

void DeleteFamilyAt(World& world, Arguments& arguments) {
  const int position = static_cast<int>(arguments.Number());
  world.DestroyFamilies([&] { world.Current<DeviceList>()->DeleteFamily(position); });
}

void DeleteFamilyNamed(World& world, Arguments& arguments) {
  const char* const name = arguments.Text();
  world.DestroyFamilies([&] { world.Current<DeviceList>()->DeleteFamily(name); });
}

void CopyDevice(World& world, Arguments&) {
  DeviceInfo* const device = world.Current<DeviceInfo>();
  auto copy = std::make_unique<DeviceInfo>(device);
  Check(device == nullptr || CheckDevice(*copy) == CheckDevice(*device), "a copied device is as large as its source");
  if (device == nullptr || !world.IsUnlinked(device)) world.BringHome(*copy);
  world.Adopt(copy.release());
}

void CopyFamily(World& world, Arguments&) {
  FamilyList* const family = world.Current<FamilyList>();
  FamilyList copy(family);
  Check(family == nullptr || CheckFamily(copy) == CheckFamily(*family), "a copied family is as large as its source");
  ReleaseDevices(copy);
}

void CopyDatabase(World& world, Arguments&) {
  DeviceList& source = *world.Current<DeviceList>();
  DeviceListOwner copy = CopyDeviceList(source);
  Check(copy->GetDeviceCount() == source.GetDeviceCount(), "a copied database has as many devices as its source");
  world.ReplaceOtherDatabase(std::move(copy));
}

void CopyNothing(World&, Arguments&) {
  DeviceListOwner database(new DeviceList(nullptr));
  FamilyList family(nullptr);
  DeviceInfo device(nullptr);
  Check(CheckDatabase(*database) == 0, "the copy of no database is empty");
  Check(CheckFamily(family) == 1, "the copy of no family is empty");
  Check(CheckDevice(device) == 1 && device.GetFamilyObject() == nullptr, "the copy of no device is empty");
  device.ChangeDeviceCDRValue("H");
}

void Assign(World& world, Arguments&) {
  world.DestroyFamilies([&] { *world.Current<DeviceList>() = world.OtherDatabase(); });
}

void AssignItself(World& world, Arguments&) {
  DeviceList& database = *world.Current<DeviceList>();
  world.DestroyFamilies([&] { database = *&database; });
  Check(database.GetFamilyCount() == 0, "a database assigned to itself has no families");
}

void Merge(World& world, Arguments& arguments) {
  DeviceList& database = *world.Current<DeviceList>();
  DeviceList* const sources[] = {&world.OtherDatabase(), &database, nullptr};
  const int families = database.GetFamilyCount() + world.OtherDatabase().GetFamilyCount();
  DeviceList* const source = sources[arguments.Size() % 3];
  Check(database.AddNewDeviceList(source) == &database, "a merge gives its target");
  Check(source != sources[0] || database.GetFamilyCount() == families, "a merge adds all families");
}

/// Appends the packages of another list, of the list itself, or of none.
void CopyPackageList(World& world, Arguments& arguments) {
  PackageList* const packages = world.Current<PackageList>();
  if (packages == nullptr) return;
  PackageList other(packages);
  Check(CheckPackages(other) == CheckPackages(*packages), "a copied package list is as large as its source");
  PackageList* const sources[] = {&other, packages, nullptr};
  Check(packages->CopyPackageList(sources[arguments.Size() % 3]), "a copy of packages succeeds");
}

void CopyPackage(World& world, Arguments&) {
  Package* const package = world.Current<Package>();
  const Package copy(package);
  Check(package == nullptr || CheckPackage(copy) == CheckPackage(*package), "a copied package is as large as its source");
}

void CopyAdapter(World& world, Arguments&) {
  Adapter* const adapter = world.Current<Adapter>();
  const Adapter copy(adapter);
  Package* const package = world.Current<Package>();
  if (package != nullptr) Check((package->AddAdapter(adapter) == nullptr) == (adapter == nullptr), "an adapter is appended");
}

void AskBypass(World& world, Arguments& arguments) {
  const DeviceInfo* const device = world.Current<DeviceInfo>();
  const int mode = static_cast<int>(arguments.Number());
  const bool answer = IsBypassDevice(device, mode);
  Check(!answer || (device != nullptr && mode >= 1 && mode <= 6), "a bypass device is a device, in a known mode");
}

void AskHidden(World& world, Arguments&) {
  const FamilyList* const family = world.Current<FamilyList>();
  Check(IsHidenFamily(family) == (family != nullptr && family->IsHidden()), "a family is hidden if its flag is set");
}

// The rows are macros, so that a name in a script is the name of the member. The ordinary accessors of devices and families
// come from the field tables.
#define CALL(member) \
  { #member, Call < &member> }
#define OVERLOAD(member, parameters, ...) \
  { #member parameters, Call < static_cast < __VA_ARGS__>(&member)> }

const Operation kOtherOperations[] = {
    {"SelectDatabase", SelectDatabase},
    {"SelectFamily", SelectFamily},
    {"SelectDevice", SelectDevice},
    {"SelectUnlinked", SelectUnlinked},
    {"SelectPackage", SelectPackage},
    {"TearDown", TearDown},
    {"DestroyDevice", DestroyDevice},
    {"CopyDevice", CopyDevice},
    {"CopyFamily", CopyFamily},
    {"CopyDatabase", CopyDatabase},
    {"CopyNothing", CopyNothing},
    {"CopyPackage", CopyPackage},
    {"CopyAdapter", CopyAdapter},
    {"Assign", Assign},
    {"AssignItself", AssignItself},
    {"DeviceList::AddNewDeviceList", Merge},
    {"DeviceList::DeleteFamily(int)", DeleteFamilyAt},
    {"DeviceList::DeleteFamily(const char*)", DeleteFamilyNamed},
    {"FamilyList::DeleteDevice(int)", DeleteDeviceAt},
    {"FamilyList::DeleteDevice(const char*)", DeleteDeviceNamed},
    {"DeviceInfo::SetFamilyObject", SetFamilyObject},
    {"DeviceInfo::SetListControlEBRBitName", SetEBRBitName},
    {"PackageList::CopyPackageList", CopyPackageList},
    {"IsBypassDevice", AskBypass},
    {"IsHidenFamily", AskHidden},
    {"PlayStrings", PlayStrings},
    {"PlayElements", PlayElements},
    {"PlayList", PlayList},

    CALL(DeviceInfo::GetDevicePackage),
    CALL(DeviceInfo::SetSysIOList),
    CALL(DeviceInfo::AddSysIOList),
    CALL(DeviceInfo::GetSysIO),
    CALL(DeviceInfo::GetSysIOCount),
    OVERLOAD(DeviceInfo::SetMultibootCfgAddr, "(const char*)", void (DeviceInfo::*)(const char*)),
    OVERLOAD(DeviceInfo::SetMultibootCfgAddr, "(std::vector<int>)", void (DeviceInfo::*)(std::vector<int>)),
    CALL(DeviceInfo::GetMultibootCfgAddr),
    OVERLOAD(DeviceInfo::SetMultibootAutoAdd, "(const char*)", void (DeviceInfo::*)(const char*)),
    OVERLOAD(DeviceInfo::SetMultibootAutoAdd, "(std::vector<int>)", void (DeviceInfo::*)(std::vector<int>)),
    CALL(DeviceInfo::GetMultibootAutoAdd),
    CALL(DeviceInfo::SetMultibootChipSelColumn),
    CALL(DeviceInfo::GetMultibootChipSelColumn),
    CALL(DeviceInfo::SetMultibootSourceSelColumn),
    CALL(DeviceInfo::GetMultibootSourceSelColumn),
    CALL(DeviceInfo::GetFamilyObject),
    CALL(DeviceInfo::SetListControlReg0Frequency),
    CALL(DeviceInfo::SetListControlReg0MasterClock),
    CALL(DeviceInfo::SetListControlReg0ClockDivider),
    CALL(DeviceInfo::SetlistControlRegZero),
    CALL(DeviceInfo::GetlistControlRegZero),
    CALL(DeviceInfo::SetListControlReg1BitName),
    CALL(DeviceInfo::SetListControlReg1Address),
    CALL(DeviceInfo::SetListControlReg1Column),
    CALL(DeviceInfo::SetlistControlRegOne),
    CALL(DeviceInfo::GetlistControlRegOne),
    CALL(DeviceInfo::SetListPersistent_fuseAddress),
    CALL(DeviceInfo::SetListPersistent_fuseColumn),
    CALL(DeviceInfo::SetlistPersistent_fuse),
    CALL(DeviceInfo::GetlistPersistent_fuse),
    CALL(DeviceInfo::SetListControlStatusBitName),
    CALL(DeviceInfo::SetListControlStatusControl),
    CALL(DeviceInfo::SetListControlStatusIndex),
    CALL(DeviceInfo::SetlistControlStatus),
    CALL(DeviceInfo::GetlistControlStatus),
    CALL(DeviceInfo::SetListControlEBRColumn),
    CALL(DeviceInfo::SetListControlEBRAddress),
    CALL(DeviceInfo::SetListControlEBRName),
    CALL(DeviceInfo::SetlistControlEBR),
    CALL(DeviceInfo::GetlistControlEBR),
    CALL(DeviceInfo::SetControlVoltageVCCCore),
    CALL(DeviceInfo::SetControlVoltageVCCJ),
    CALL(DeviceInfo::SetControlVoltagePinList),
    CALL(DeviceInfo::SetControlVoltage),
    CALL(DeviceInfo::GetControlVoltage),
    CALL(DeviceInfo::SetlistAddressRange),
    CALL(DeviceInfo::GetlistAddressRange),
    CALL(DeviceInfo::RestoreDeviceBackupValue),
    CALL(DeviceInfo::ChangeDeviceCDRValue),

    CALL(FamilyList::NewDevice),
    CALL(FamilyList::InsertNewDevice),
    CALL(FamilyList::AddNewDevice),
    OVERLOAD(FamilyList::GetDevice, "(unsigned short)", DeviceInfo* (FamilyList::*)(unsigned short) const),
    OVERLOAD(FamilyList::GetDevice, "(int)", DeviceInfo* (FamilyList::*)(int) const),
    OVERLOAD(FamilyList::GetDevice, "(const char*)", DeviceInfo* (FamilyList::*)(const char*) const),
    CALL(FamilyList::GetDevicePos),
    CALL(FamilyList::GetLastDevice),
    CALL(FamilyList::GetDeviceCount),
    CALL(FamilyList::SetOperationList),
    CALL(FamilyList::AddOperationList),
    CALL(FamilyList::DeleteOperationList),
    CALL(FamilyList::GetOperationCount),
    CALL(FamilyList::GetOperation),
    OVERLOAD(FamilyList::SetListProgrammingModeControl, "(const char*)", void (FamilyList::*)(const char*)),
    OVERLOAD(FamilyList::SetListProgrammingModeControl, "(std::vector<std::string>)",
             void (FamilyList::*)(std::vector<std::string>)),
    CALL(FamilyList::GetListProgrammingModeControl),
    OVERLOAD(FamilyList::SetListBScanControl, "(const char*)", void (FamilyList::*)(const char*)),
    OVERLOAD(FamilyList::SetListBScanControl, "(std::vector<CBScanControl>)", void (FamilyList::*)(std::vector<CBScanControl>)),
    CALL(FamilyList::GetListBScanControl),
    CALL(FamilyList::SetBScanDefaultValue),
    OVERLOAD(FamilyList::GetDeviceWithCodeName, "(const char*)", DeviceInfo* (FamilyList::*)(const char*) const),
    CALL(FamilyList::GetDeviceWithCodeNameandVendor),
    OVERLOAD(FamilyList::GetDevice, "(const char*, unsigned int)",
             DeviceInfo* (FamilyList::*)(const char*, unsigned int) const),
    CALL(FamilyList::GetDeviceWithComm),
    OVERLOAD(FamilyList::GetDeviceWithCodeName, "(const char*, const char*)",
             DeviceInfo* (FamilyList::*)(const char*, const char*) const),
    CALL(FamilyList::GetDeviceWithPackage),
    OVERLOAD(FamilyList::GetDevice, "(const char*, const char*)", DeviceInfo* (FamilyList::*)(const char*, const char*) const),

    CALL(DeviceList::SetVersion),
    CALL(DeviceList::GetVersion),
    CALL(DeviceList::SetComment),
    CALL(DeviceList::GetComment),
    CALL(DeviceList::NewFamily),
    OVERLOAD(DeviceList::GetFamily, "(int)", FamilyList* (DeviceList::*)(int) const),
    OVERLOAD(DeviceList::GetFamily, "(const char*)", FamilyList* (DeviceList::*)(const char*) const),
    CALL(DeviceList::GetLastFamily),
    CALL(DeviceList::GetFamilyCount),
    CALL(DeviceList::GetDeviceCount),
    CALL(DeviceList::GetlistDevicenames),
    CALL(DeviceList::GetBypassInstwfamilyName),
    CALL(DeviceList::GetIDCodeInstwfamilyName),
    CALL(DeviceList::GetISCReleasewfamilyName),
    CALL(DeviceList::GetHiddenwfamilyName),
    CALL(DeviceList::GetFPGALoaderSupportwfamilyName),
    CALL(DeviceList::GetFPGADevicewfamilyName),
    CALL(DeviceList::GetReInitializewfamilyName),
    CALL(DeviceList::GetDebugModewfamilyName),
    CALL(DeviceList::GetExtensionwfamilyName),
    CALL(DeviceList::GetDeviceWithName),
    CALL(DeviceList::GetDeviceWithCodeName),
    CALL(DeviceList::GetDeviceWithPON),
    CALL(DeviceList::GetDeviceWithComm),
    CALL(DeviceList::GetDeviceWithCommAndCodeName),
    CALL(DeviceList::GetDeviceWithPackage),
    CALL(DeviceList::GetDeviceWithPackageAndCodeName),
    CALL(DeviceList::GetDeviceWithCommAndID),
    CALL(DeviceList::GetDeviceWithCommAndIDAndCodeName),
    CALL(DeviceList::GetDeviceWithCommAndIDNoMask),
    OVERLOAD(DeviceList::GetDeviceListWithCommAndID, "(const char*, unsigned int)",
             int (DeviceList::*)(const char*, unsigned int)),
    OVERLOAD(DeviceList::GetDeviceListWithCommAndID, "(const char*, unsigned int, std::vector<std::string>&)",
             int (DeviceList::*)(const char*, unsigned int, std::vector<std::string>&)),
    CALL(DeviceList::GetDeviceWithJDFFileName),
    CALL(DeviceList::GetDeviceWithEntityName),
    CALL(DeviceList::GetDeviceWithEntityNameDisregardUES),
    CALL(DeviceList::GetDeviceCommISPWithFuseMap),
    CALL(DeviceList::GetDeviceWithFuseMapAndFullName),
    CALL(DeviceList::GetDeviceWithFuseMapAndFullNameEx),
    CALL(DeviceList::GetDeviceCodeNameWithFuseMap),
    CALL(DeviceList::GetDeviceWithFuseMap),

    CALL(PackageList::NewPackage),
    OVERLOAD(PackageList::GetPackage, "(unsigned short)", Package* (PackageList::*)(unsigned short) const),
    OVERLOAD(PackageList::GetPackage, "(const char*)", Package* (PackageList::*)(const char*) const),
    CALL(PackageList::GetPackageCount),
    CALL(PackageList::GetLastPackage),
    CALL(PackageList::GetPackageTypeWithJDFFile),
    CALL(PackageList::GetPackagePONWithJDFFile),
    CALL(PackageList::GetOrvoSettingWithJDFFile),

    CALL(Package::SetType),
    CALL(Package::GetType),
    CALL(Package::SetPON),
    CALL(Package::GetPON),
    CALL(Package::SetJDF),
    CALL(Package::GetJDF),
    CALL(Package::SetINI),
    CALL(Package::GetINI),
    CALL(Package::SetOrvoSetting),
    CALL(Package::GetOrvoSetting),
    CALL(Package::SetBackupPON),
    CALL(Package::GetBackupPON),
    CALL(Package::SetAliasPON),
    CALL(Package::GetAliasPON),
    CALL(Package::GetAdapterCount),
    OVERLOAD(Package::AddAdapter, "(const char*, const char*)", Adapter* (Package::*)(const char*, const char*)),
    CALL(Package::RemoveAdapter),
    CALL(Package::GetAdapter),
    CALL(Package::SetAdapter),
    CALL(Package::ClearAdapterList),
    CALL(Package::GetAdapterName),
    CALL(Package::GetAdapterVendor),
    CALL(Package::GetEntityName),

    CALL(Adapter::SetVendorName),
    CALL(Adapter::GetVendorName),
    CALL(Adapter::SetAdapterName),
    CALL(Adapter::GetAdapterName),
};

#undef CALL
#undef OVERLOAD

/// Calls a setter with what the script gives, a getter with a look at the answer; both by the field table's row.
template <class Record>
void AddAccessors(const std::vector<support::Field<Record>>& fields, const std::string& className,
                  std::vector<Operation>& operations) {
  for (const auto& field : fields) {
    std::visit(
        [&](const auto& access) {
          using Access = std::decay_t<decltype(access)>;
          if constexpr (support::kIsOrdinary<Access>) {
            const auto set = access.set;
            const auto get = access.get;
            operations.push_back({className + "::" + field.setters.front(),
                                  [set](World& world, Arguments& arguments) { CallMember(world, arguments, set); }});
            operations.push_back({className + "::" + field.getter,
                                  [get](World& world, Arguments& arguments) { CallMember(world, arguments, get); }});
          }
        },
        field.access);
  }
}

const std::vector<Operation>& Operations() {
  static const std::vector<Operation> operations = [] {
    std::vector<Operation> all(std::begin(kOtherOperations), std::end(kOtherOperations));
    AddAccessors(support::DeviceFields(), "DeviceInfo", all);
    AddAccessors(support::FamilyFields(), "FamilyList", all);
    return all;
  }();
  return operations;
}

/// The operation of this name; for any other name one of them anyway, so that no line is idle.
const Operation& OperationNamed(std::string_view name) {
  static const auto* const byName = [] {
    auto* const map = new std::unordered_map<std::string_view, const Operation*>;
    for (const Operation& operation : Operations()) map->emplace(operation.name, &operation);
    return map;
  }();
  const auto found = byName->find(name);
  if (found != byName->end()) return *found->second;
  std::size_t sum = 0;
  for (const char c : name) sum = sum * 31 + static_cast<unsigned char>(c);
  return Operations()[sum % Operations().size()];
}

}  // namespace

void Play(World& world, std::string_view line) {
  const std::string_view name = line.substr(0, line.find('|'));
  Arguments arguments(world, line.substr(name.size()));
  OperationNamed(name).play(world, arguments);
}

}  // namespace fuzz
