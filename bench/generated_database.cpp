#include "bench/generated_database.h"

#include <cstdio>
#include <iterator>

namespace bench {
namespace {

constexpr unsigned int kScanMask = 0x0FFFFFFF;

struct PackageKind {
  const char* type;
  const char* suffix;  // speed grade, type and temperature range, as ordering numbers end
  GeneratedAdapter adapters[2];
};

constexpr PackageKind kPackageKinds[] = {
    {"TQ100", "7TQ100C", {{"Orvo", "OA-TQ100-1"}, {"Socketeer", "SK100T7"}}},
    {"VQ44", "5VQ44I", {{"Orvo", "OA-VQ44-2"}, {"Socketeer", "SK44V5"}}},
    {"CS48", "10CS48C", {{"Orvo", "OA-CS48-1"}, {"Socketeer", "SK48C10"}}},
    {"PC84", "15PC84I", {{"Orvo", "OA-PC84-4"}, {"Socketeer", "SK84P15"}}},
    {"FT256", "7FT256C", {{"Orvo", "OA-FT256-1"}, {"Socketeer", "SK256F7"}}},
};

constexpr const char* kVendors[] = {"Novalith", "Tessera Logic", "Novalith", "Halden", "Quorel"};
constexpr const char* kAccessModes[] = {"JTAG", "JTAG", "JTAG", "JTAG", "JTAG", "DUAL", "JTAG", "ISP"};
constexpr unsigned int kFuseCounts[] = {7808, 15616, 31232, 62464, 128000, 256000, 512000, 1024000};

/// "1234A"
std::string PartNumber(unsigned int i) {
  char text[16];
  std::snprintf(text, sizeof text, "%04u%c", i % 10000, static_cast<int>('A' + i / 10000));
  return text;
}

unsigned int FuseCount(unsigned int i, unsigned int total) {
  constexpr unsigned int kChanged = 5;
  const unsigned int density = (i / 8 + 3) % std::size(kFuseCounts);
  return density == kChanged && i >= total / 2 ? kRareFuseCount : kFuseCounts[density];
}

void LoadPackage(Package& package, const GeneratedPackage& data) {
  for (std::size_t i = 0; i < data.texts.size(); ++i) (package.*kPackageTexts[i].set)(data.texts[i]);
  for (const GeneratedAdapter& adapter : data.adapters) package.AddAdapter(adapter.vendor, adapter.name);
}

void LoadDevice(DeviceInfo& device, const GeneratedDevice& data) {
  for (std::size_t i = 0; i < data.texts.size(); ++i) (device.*kDeviceTexts[i].set)(data.texts[i]);
  for (std::size_t i = 0; i < data.numbers.size(); ++i) kDeviceNumbers[i].set(device, data.numbers[i]);
  for (const char* const entry : data.ioEntries) device.AddSysIOList(entry);
  for (std::size_t i = 0; i < data.columns.size(); ++i) (device.*kDeviceColumns[i].set)(data.columns[i]);
  for (const GeneratedPackage& package : data.packages) LoadPackage(*device.GetDevicePackage()->NewPackage(), package);
}

}  // namespace

GeneratedDatabase::GeneratedDatabase(int devices, int devicesPerFamily) {
  const auto total = static_cast<unsigned int>(devices);
  const auto perFamily = static_cast<unsigned int>(devicesPerFamily);
  for (unsigned int i = 0; i < total; ++i) {
    if (i % perFamily == 0) {
      families_.push_back({Keep("PLD" + std::to_string(i) + " Series"), kVendors[i / perFamily % std::size(kVendors)], {}});
    }
    GeneratedFamily& family = families_.back();
    family.devices.push_back(MakeDevice(i, total, family));
  }
}

GeneratedDevice GeneratedDatabase::MakeDevice(unsigned int i, unsigned int total, const GeneratedFamily& family) {
  const std::string part = PartNumber(i);
  const std::string name = "PLD" + part;
  const unsigned int jtag = 0x10000000 | (i & 0xFFFF) << 12 | 0x6AB;
  const unsigned int isp = (i + 1) << 8 | (1 + i % 160);
  const unsigned int fuses = FuseCount(i, total);
  GeneratedDevice device;
  device.texts = {Keep(name),
                  Keep(name + "-7TQ100C"),
                  Keep("LC" + part + "-75T100"),
                  family.name,
                  family.vendor,
                  "Program",
                  "MACROCELL256",
                  Keep(name + "-7TQ100C"),
                  kAccessModes[i % std::size(kAccessModes)],
                  "ERASE;PROGRAM;VERIFY;SECURE",
                  "pld_fast_program.alg",
                  "pld_isp_program.alg",
                  Keep("softip_" + part + ".jed"),
                  Keep("ebr_" + part + ".mem"),
                  "FFFFFFFFFFFFFFFF",
                  "FFFFFFFF00000000",
                  "1111111111",
                  Keep("pld" + part + "_tq100.bsm"),
                  "2011-03-14 09:26:53",
                  "pld_turbo_program.alg"};
  device.ioEntries = {"LVCMOS33", "LVTTL", "LVCMOS25", "PCI33", "SSTL18_I"};
  device.columns = {"BITS;DONE;OSC;SECURE;ERASED;SPI;JTAG;",
                    "ROWS;12;12;12;13;13;14;",
                    "COLUMNS;0;8;16;0;8;0;",
                    "BITS;READ_ENABLE;WRITE_ENABLE;BUSY;FAIL;DONE;PWD_PROTECTED;OTP;ISC_ENABLE;STANDARD_PREAMBLE;ERASED;",
                    "CONTROLS;0;0;1;1;0;1;0;1;0;0;",
                    "INDEX;0;1;12;13;8;14;15;9;20;7;",
                    "RANGES;0 to 1023;1024 to 2047;2048 to 2303;"};
  device.numbers = {isp,  jtag, jtag, fuses, fuses, kScanMask, kScanMask, kScanMask,  32, 100, 1024,
                    256,  32,   64,   8,     8,     10,        1024,      i % 16 * 4, 32, 100, 500,
                    1000, 352,  0x16, 0x17,  0x3FF, 1,         2048,      128,        16, 0};
  for (std::size_t k = 0; k < device.packages.size(); ++k) device.packages[k] = MakePackage(part, k);
  return device;
}

GeneratedPackage GeneratedDatabase::MakePackage(const std::string& part, std::size_t position) {
  const PackageKind& kind = kPackageKinds[position];
  const std::string number = "PLD" + part + "-" + kind.suffix;
  GeneratedPackage package;
  package.texts = {kind.type,
                   Keep(number),
                   Keep(part + std::to_string(position) + ".jdf"),  // the six characters that count tell all packages apart
                   "socket.ini",
                   "S17",
                   Keep(number),
                   Keep("PLD" + part + "H-" + kind.suffix)};
  package.adapters = {kind.adapters[0], kind.adapters[1]};
  return package;
}

DeviceListOwner GeneratedDatabase::Load() const {
  DeviceListOwner database = MakeDeviceList();
  database->SetVersion("1.0");
  for (const GeneratedFamily& data : families_) {
    FamilyList& family = *database->NewFamily();
    family.SetName(data.name);
    family.SetIDCodeInst("0x16");
    family.SetBypassInst("0x3FF");
    for (const GeneratedDevice& device : data.devices) LoadDevice(*family.NewDevice(), device);
  }
  return database;
}

}  // namespace bench
