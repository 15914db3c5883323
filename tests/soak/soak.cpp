// Repeats the whole life of a database, and fails if memory leaks.
//
//   plddb_soak CYCLES [rss]
//
// After each cycle as many allocations are live as before it. With "rss" the process may not grow either, beyond what an
// allocator needs to settle: that sees memory which does not come from operator new.

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "Descriptions.h"
#include "tests/support/allocation_counter.h"

namespace {

constexpr long kCyclesToSettle = 50;
constexpr long kTolerance = 1024 * 1024;  // bytes

/// The bytes of the process in memory; the file system gives them in pages.
long ResidentBytes() {
  std::ifstream file("/proc/self/statm");
  long size = 0;
  long resident = 0;
  file >> size >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

DeviceListOwner Load() {
  plddb::LoadResult result = plddb::LoadDescriptions(PLDDB_TEST_DIR "/descriptions/every_list.xml");
  if (result.database == nullptr) {
    std::fprintf(stderr, "%s\n", plddb::ToString(result.faults.at(0)).c_str());
    std::exit(2);
  }
  return std::move(result.database);
}

/// Asks for each device by all that it has; gives the number of answers.
int Query(DeviceList& database) {
  int answers = 0;
  std::vector<std::string> candidates;
  for (int i = 0; const FamilyList* const family = database.GetFamily(i); ++i) {
    for (int k = 0; const DeviceInfo* const device = family->GetDevice(k); ++k) {
      answers += database.GetDeviceWithName(device->GetName()) != nullptr;
      answers += database.GetDeviceWithCodeName(device->GetCodeName()) != nullptr;
      answers += database.GetDeviceWithComm(device->GetComm(), device->GetName()) != nullptr;
      answers += database.GetDeviceWithFuseMapAndFullName(device->GetFuseNumber(), device->GetCodeName()) != nullptr;
      answers += database.GetDeviceListWithCommAndID("JTAG", device->GetjtagDeviceID(), candidates);
      answers += database.GetDeviceCodeNameWithFuseMap(device->GetFuseNumber(), candidates);
      answers += IsBypassDevice(device, 3) ? 1 : 0;
    }
  }
  return answers;
}

/// Changes devices as a tool does, and takes one out.
void Change(DeviceList& database) {
  FamilyList& family = *database.GetFamily(0);
  DeviceInfo& device = *family.GetDevice(0);
  family.SetCDRFixed(true);
  device.ChangeDeviceCDRValue("PLD1234A-5TQ100H");
  device.RestoreDeviceBackupValue();
  device.SetSysIOList(device.GetSysIO(0));
  device.GetDevicePackage()->CopyPackageList(device.GetDevicePackage());
  family.InsertNewDevice(1);
  delete family.DeleteDevice(2);
}

int Cycle() {
  const DeviceListOwner database = Load();
  const DeviceListOwner copy = CopyDeviceList(*database);
  const DeviceListOwner merged = MakeDeviceList();
  merged->AddNewDeviceList(database.get());
  merged->AddNewDeviceList(copy.get());
  Change(*copy);
  AssignDeviceList(*database, *copy);
  ReleaseDevices(*copy->GetFamily(0));
  copy->DeleteFamily(0);
  return Query(*database) + Query(*merged);
}

}  // namespace

int main(int count, char** arguments) {
  const long cycles = count > 1 ? std::atol(arguments[1]) : 0;
  const bool watchesSize = count > 2 && std::strcmp(arguments[2], "rss") == 0;
  const long settled = std::min(cycles, kCyclesToSettle);
  long live = 0;
  long resident = 0;
  for (long cycle = 1; cycle <= cycles; ++cycle) {
    const int answers = Cycle();
    if (answers == 0) {
      std::fprintf(stderr, "cycle %ld: no lookup found anything\n", cycle);
      return 1;
    }
    if (cycle > 1 && support::LiveAllocations() != live) {
      std::fprintf(stderr, "cycle %ld: %ld allocations are live, %ld before it\n", cycle, support::LiveAllocations(), live);
      return 1;
    }
    live = support::LiveAllocations();
    if (cycle == settled) resident = ResidentBytes();
  }
  const long grown = ResidentBytes() - resident;
  std::printf("%ld cycles, %ld allocations live, grown by %ld bytes since cycle %ld\n", cycles, live, grown, settled);
  if (watchesSize && grown > kTolerance) {
    std::fprintf(stderr, "the process has grown by more than %ld bytes\n", kTolerance);
    return 1;
  }
  return cycles > 0 ? 0 : 2;
}
