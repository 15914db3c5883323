// Every operation that allocates, with every one of its allocations failing in turn.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <new>
#include <set>
#include <string>
#include <vector>

#include "tests/support/allocation_counter.h"
#include "tests/support/exported_operations.h"
#include "tests/support/field_operations.h"
#include "tests/support/whole_tree.h"

namespace {

using support::kAnyText;
using support::TreeState;
using T = support::WholeTree;

/// What a failure leaves of the tree. Nothing is ever lost, and the other database is never touched.
enum Guarantee {
  kUnchanged,      // the tree as it was
  kStoredSoFar,    // each list is as it was, or goes as far as it had got; each other field has its old value or its new one
  kFamiliesSoFar,  // the database has the families that had been appended, and all that they hold
};

struct Row {
  std::string operation;
  std::function<void(T&)> call;
  Guarantee guarantee;
};

template <auto member>
void Call(T& tree) {
  support::CallMember<member>(tree, [](auto call) { call(); });
}

/// The devices go first, since an assignment leaves them alive.
void AssignToEmptied(T& t) {
  ReleaseDevices(*t.database);
  *t.database = *t.other;
}

// The setters of text fields come from the field tables.
const std::vector<Row> kOtherRows = {
    {"Adapter::Adapter(Adapter*)", [](T& t) { const Adapter copy(&t.adapter); }, kUnchanged},
    {"Adapter::SetAdapterName(char const*)", Call<&Adapter::SetAdapterName>, kUnchanged},
    {"Adapter::SetVendorName(char const*)", Call<&Adapter::SetVendorName>, kUnchanged},
    {"DeviceInfo::AddSysIOList(char const*)", Call<&DeviceInfo::AddSysIOList>, kUnchanged},
    {"DeviceInfo::ChangeDeviceCDRValue(char const*)", [](T& t) { t.device.ChangeDeviceCDRValue("PLD1234A-5TQ100H"); },
     kStoredSoFar},
    {"DeviceInfo::DeviceInfo(DeviceInfo*)", [](T& t) { const DeviceInfo copy(&t.device); }, kUnchanged},
    {"DeviceInfo::RestoreDeviceBackupValue()", Call<&DeviceInfo::RestoreDeviceBackupValue>, kStoredSoFar},
    {"DeviceInfo::SetControlVoltagePinList(char const*)", Call<&DeviceInfo::SetControlVoltagePinList>, kUnchanged},
    {"DeviceInfo::SetControlVoltageVCCCore(char const*)", Call<&DeviceInfo::SetControlVoltageVCCCore>, kUnchanged},
    {"DeviceInfo::SetControlVoltageVCCJ(char const*)", Call<&DeviceInfo::SetControlVoltageVCCJ>, kUnchanged},
    {"DeviceInfo::SetListControlEBRBitName(char const*)", [](T& t) { t.device.SetListControlEBRBitName("3"); }, kUnchanged},
    {"DeviceInfo::SetListControlEBRName(char const*)", Call<&DeviceInfo::SetListControlEBRName>, kUnchanged},
    {"DeviceInfo::SetListControlReg0ClockDivider(char const*)", Call<&DeviceInfo::SetListControlReg0ClockDivider>,
     kStoredSoFar},
    {"DeviceInfo::SetListControlReg0Frequency(char const*)", Call<&DeviceInfo::SetListControlReg0Frequency>, kStoredSoFar},
    {"DeviceInfo::SetListControlReg0MasterClock(char const*)", Call<&DeviceInfo::SetListControlReg0MasterClock>, kStoredSoFar},
    {"DeviceInfo::SetListControlReg1Address(char const*)", Call<&DeviceInfo::SetListControlReg1Address>, kStoredSoFar},
    {"DeviceInfo::SetListControlReg1BitName(char const*)", Call<&DeviceInfo::SetListControlReg1BitName>, kStoredSoFar},
    {"DeviceInfo::SetListControlReg1Column(char const*)", Call<&DeviceInfo::SetListControlReg1Column>, kStoredSoFar},
    {"DeviceInfo::SetListControlStatusBitName(char const*)", Call<&DeviceInfo::SetListControlStatusBitName>, kStoredSoFar},
    {"DeviceInfo::SetListControlStatusControl(char const*)", Call<&DeviceInfo::SetListControlStatusControl>, kStoredSoFar},
    {"DeviceInfo::SetListControlStatusIndex(char const*)", Call<&DeviceInfo::SetListControlStatusIndex>, kStoredSoFar},
    {"DeviceInfo::SetListPersistent_fuseAddress(char const*)", Call<&DeviceInfo::SetListPersistent_fuseAddress>, kStoredSoFar},
    {"DeviceInfo::SetListPersistent_fuseColumn(char const*)", Call<&DeviceInfo::SetListPersistent_fuseColumn>, kStoredSoFar},
    {"DeviceInfo::SetMultibootAutoAdd(char const*)", [](T& t) { t.device.SetMultibootAutoAdd(support::kShortNumbers); },
     kStoredSoFar},
    {"DeviceInfo::SetMultibootCfgAddr(char const*)", [](T& t) { t.device.SetMultibootCfgAddr(kAnyText); }, kStoredSoFar},
    {"DeviceInfo::SetSysIOList(char const*)", Call<&DeviceInfo::SetSysIOList>, kStoredSoFar},
    {"DeviceInfo::SetlistAddressRange(char const*)", Call<&DeviceInfo::SetlistAddressRange>, kStoredSoFar},
    {"DeviceList::AddNewDeviceList(DeviceList*)", [](T& t) { t.database->AddNewDeviceList(t.other.get()); }, kFamiliesSoFar},
    {"DeviceList::DeviceList(DeviceList*)", [](T& t) { const DeviceListOwner copy(new DeviceList(t.database.get())); },
     kUnchanged},
    {"DeviceList::GetDeviceCodeNameWithFuseMap(unsigned long, std::vector<std::string>&) const",
     [](T& t) { t.database->GetDeviceCodeNameWithFuseMap(t.device.GetFuseNumber(), t.texts); }, kUnchanged},
    {"DeviceList::GetDeviceListWithCommAndID(char const*, unsigned int)",
     [](T& t) { t.database->GetDeviceListWithCommAndID("JTAG", t.device.GetjtagDeviceID()); }, kUnchanged},
    {"DeviceList::GetDeviceListWithCommAndID(char const*, unsigned int, std::vector<std::string>&)",
     [](T& t) { t.database->GetDeviceListWithCommAndID("JTAG", t.device.GetjtagDeviceID(), t.texts); }, kUnchanged},
    {"DeviceList::GetDeviceWithFuseMap(unsigned long, std::vector<std::string>&) const",
     [](T& t) { t.database->GetDeviceWithFuseMap(t.device.GetFuseNumber(), t.texts); }, kUnchanged},
    {"DeviceList::GetDeviceWithFuseMapAndFullName(unsigned long, char const*) const",
     Call<&DeviceList::GetDeviceWithFuseMapAndFullName>, kUnchanged},
    {"DeviceList::GetDeviceWithFuseMapAndFullNameEx(unsigned long, char const*) const",
     Call<&DeviceList::GetDeviceWithFuseMapAndFullNameEx>, kUnchanged},
    {"DeviceList::NewFamily()", Call<&DeviceList::NewFamily>, kUnchanged},
    {"DeviceList::SetComment(char const*)", Call<&DeviceList::SetComment>, kUnchanged},
    {"DeviceList::SetVersion(char const*)", Call<&DeviceList::SetVersion>, kUnchanged},
    {"DeviceList::operator=(DeviceList&)", AssignToEmptied, kFamiliesSoFar},
    {"DeviceStrElement::SetString(char const*)", Call<&DeviceStrElement::SetString>, kUnchanged},
    {"FamilyList::AddNewDevice(int)", Call<&FamilyList::AddNewDevice>, kUnchanged},
    {"FamilyList::AddOperationList(char const*)", Call<&FamilyList::AddOperationList>, kUnchanged},
    {"FamilyList::FamilyList(FamilyList*)", [](T& t) { support::FamilyOwner(new FamilyList(&t.family)); }, kUnchanged},
    {"FamilyList::InsertNewDevice(int)", Call<&FamilyList::InsertNewDevice>, kUnchanged},
    {"FamilyList::NewDevice()", Call<&FamilyList::NewDevice>, kUnchanged},
    {"FamilyList::SetListBScanControl(char const*)", [](T& t) { t.family.SetListBScanControl(kAnyText); }, kUnchanged},
    {"FamilyList::SetListProgrammingModeControl(char const*)", [](T& t) { t.family.SetListProgrammingModeControl(kAnyText); },
     kStoredSoFar},
    {"FamilyList::SetOperationList(char const*)", Call<&FamilyList::SetOperationList>, kStoredSoFar},
    {"LObjList::AddTail(LObject*)", [](T& t) { t.list.AddTail(nullptr); }, kUnchanged},
    {"LObjList::Insert(int, LObject*)", [](T& t) { t.list.Insert(0, nullptr); }, kUnchanged},
    {"Package::AddAdapter(Adapter*)", [](T& t) { t.package.AddAdapter(&t.adapter); }, kUnchanged},
    {"Package::AddAdapter(char const*, char const*)", [](T& t) { t.package.AddAdapter(kAnyText, kAnyText); }, kUnchanged},
    {"Package::GetEntityName() const", Call<&Package::GetEntityName>, kUnchanged},
    {"Package::Package(Package*)", [](T& t) { const Package copy(&t.package); }, kUnchanged},
    {"Package::SetAdapter(int, char const*, char const*)", Call<&Package::SetAdapter>, kUnchanged},
    {"Package::SetAliasPON(char const*)", Call<&Package::SetAliasPON>, kUnchanged},
    {"Package::SetBackupPON(char const*)", Call<&Package::SetBackupPON>, kUnchanged},
    {"Package::SetINI(char const*)", Call<&Package::SetINI>, kUnchanged},
    {"Package::SetJDF(char const*)", Call<&Package::SetJDF>, kUnchanged},
    {"Package::SetOrvoSetting(char const*)", Call<&Package::SetOrvoSetting>, kUnchanged},
    {"Package::SetPON(char const*)", Call<&Package::SetPON>, kUnchanged},
    {"Package::SetType(char const*)", Call<&Package::SetType>, kUnchanged},
    {"PackageList::CopyPackageList(PackageList*)", [](T& t) { t.packages.CopyPackageList(&t.packages); }, kStoredSoFar},
    {"PackageList::NewPackage()", Call<&PackageList::NewPackage>, kUnchanged},
    {"PackageList::PackageList(PackageList*)", [](T& t) { const PackageList copy(&t.packages); }, kUnchanged},
};

/// The same for the functions that are in a header.
const std::vector<Row> kHeaderRows = {
    {"MakeDeviceList()", [](T&) { MakeDeviceList(); }, kUnchanged},
    {"CopyDeviceList(DeviceList&)", [](T& t) { CopyDeviceList(*t.database); }, kUnchanged},
    {"AssignDeviceList(DeviceList&, DeviceList&)", [](T& t) { AssignDeviceList(*t.database, *t.other); }, kFamiliesSoFar},
};

/// Whether a list that is to become `after` has got some way: its first elements are new, and after them come the old ones,
/// or nothing.
bool IsOnTheWay(const std::vector<std::string>& before, const std::vector<std::string>& now,
                const std::vector<std::string>& after) {
  if (now == before) return true;
  if (before == after || now.size() > std::max(before.size(), after.size())) return false;
  std::size_t k = 0;
  while (k < now.size() && k < after.size() && now[k] == after[k]) ++k;
  if (k == now.size()) return true;
  return now.size() == before.size() &&
         std::equal(now.begin() + static_cast<std::ptrdiff_t>(k), now.end(), before.begin() + static_cast<std::ptrdiff_t>(k));
}

bool StartsWith(const std::string& text, const std::string& start) { return text.compare(0, start.size(), start) == 0; }

/// Whether a guarantee speaks of a place: a database's families as a whole, or each of their fields.
bool SpeaksOf(Guarantee guarantee, const std::string& place) {
  if (guarantee == kFamiliesSoFar) return !StartsWith(place, "family ");
  return guarantee == kUnchanged || place != "families";
}

/// The first place that breaks the guarantee; "" when none does.
std::string BrokenPlace(Guarantee guarantee, const TreeState& before, const TreeState& now, const TreeState& after) {
  for (const auto& [place, elements] : now) {
    if (!SpeaksOf(guarantee, place)) continue;
    const auto old = before.find(place);
    if (old == before.end()) return place + ", which is new";
    const bool mayChange = guarantee != kUnchanged && !StartsWith(place, "other ");
    if (mayChange ? !IsOnTheWay(old->second, elements, after.at(place)) : elements != old->second) return place;
  }
  return guarantee == kUnchanged && now.size() != before.size() ? "a place that is gone" : "";
}

struct States {
  TreeState before;
  TreeState after;
};

States StatesAround(const Row& row) {
  T untouched;
  T done;
  row.call(done);
  return {StateOf(untouched), StateOf(done)};
}

/// Runs the operation on a fresh tree with its `nth` allocation failing; returns whether it asked for one so late.
bool FailsAt(const Row& row, long nth, const States& states) {
  const long live = support::LiveAllocations();
  bool thrown = false;
  bool happened = false;
  std::string broken;
  {
    T tree;
    {
      const support::FailAllocation failing(nth);
      try {
        row.call(tree);
      } catch (const std::bad_alloc&) {
        thrown = true;
      }
      happened = failing.Happened();
    }
    if (happened) broken = BrokenPlace(row.guarantee, states.before, StateOf(tree), states.after);
  }
  EXPECT_EQ(thrown, happened) << "row: " << row.operation << ", allocation: " << nth;
  EXPECT_EQ(broken, "") << "row: " << row.operation << ", allocation: " << nth;
  broken = std::string();  // it may hold memory
  const long left = support::LiveAfterFailures(live);
  EXPECT_EQ(left, live) << "row: " << row.operation << ", allocation: " << nth;
  return happened;
}

void ExpectGuarantee(const Row& row) {
  const States states = StatesAround(row);
  long nth = 1;
  while (FailsAt(row, nth, states)) ++nth;
  EXPECT_GT(nth, 1) << "row: " << row.operation << " does not allocate";
}

std::vector<Row> AllRows() {
  std::vector<Row> rows = kOtherRows;
  for (support::FieldOperation& operation : support::FieldOperations()) {
    if (operation.allocates) rows.push_back({operation.name, operation.call, kUnchanged});
  }
  return rows;
}

TEST(FailingMemory, LosesNothingAndKeepsTheGuaranteeOfEachOperation) {
  for (const Row& row : AllRows()) ExpectGuarantee(row);
}

TEST(FailingMemory, LosesNothingInTheOtherFunctionsOfTheHeaders) {
  for (const Row& row : kHeaderRows) ExpectGuarantee(row);
}

TEST(FailingMemory, EachExportedOperationThatAllocatesHasARow) {
  std::multiset<std::string> operations;
  for (const Row& row : AllRows()) operations.insert(row.operation);
  const auto exported = support::ExportedOperations("allocates");
  EXPECT_EQ(operations, std::multiset<std::string>(exported.begin(), exported.end()));
}

}  // namespace
