#pragma once

#include <array>
#include <deque>
#include <string>
#include <vector>

#include "DeviceListOwner.h"

/// \file
/// Databases of any size that look like real ones, the same in every run. Device i is a function of i alone:
///
///   names              PLD1234A, code name PLD1234A-7TQ100C: four digits and a letter tell any two devices apart
///   JTAG identifiers   16 bits of part number between a revision, which the scan mask leaves out, and the maker's code 0x6AB
///   ISP identifiers    unique; their low byte is never the 0xAB of the JTAG identifiers, so that "DUAL" finds one device
///   access modes       of eight devices six are "JTAG", one "DUAL", one "ISP"
///   fuse counts        one of eight, by density; in the second half one density has its own count
///
/// A device has 25 texts, 5 packages with 2 adapters each, and three parsed lists.

namespace bench {

inline constexpr int kDatabaseSizes[] = {500, 5000, 50000};  // devices
inline constexpr int kDevicesPerFamily = 100;
inline constexpr unsigned int kRareFuseCount = 256096;  ///< That of the density that changes in the second half.

/// A text setter, with the name that it goes by in description files.
template <typename Record>
struct TextField {
  const char* name;
  void (Record::*set)(const char*);
};

struct NumberField {
  const char* name;
  void (*set)(DeviceInfo&, unsigned int);
};

// clang-format off

inline constexpr TextField<DeviceInfo> kDeviceTexts[] = {
    {"Name", &DeviceInfo::SetName},                      {"CodeName", &DeviceInfo::SetCodeName},
    {"AliasName", &DeviceInfo::SetAliasName},            {"Family", &DeviceInfo::SetFamily},
    {"Vendor", &DeviceInfo::SetVendor},                  {"Access", &DeviceInfo::SetAccess},
    {"Architecture", &DeviceInfo::SetArchitecture},      {"PON", &DeviceInfo::SetPON},
    {"Comm", &DeviceInfo::SetComm},                      {"AlgOptions", &DeviceInfo::SetAlgOptions},
    {"AlgTemplate", &DeviceInfo::SetAlgTemplate},        {"ISPAlgTemplate", &DeviceInfo::SetISPAlgTemplate},
    {"SoftIPFile", &DeviceInfo::SetSoftIPFile},          {"EBRFile", &DeviceInfo::SetEBRFile},
    {"ispUESMask", &DeviceInfo::SetispUESMask},          {"jtagUESMask", &DeviceInfo::SetjtagUESMask},
    {"InstructionBypassPattern", &DeviceInfo::SetInstructionBypassPattern},
    {"BSDLFile", &DeviceInfo::SetBSDLFile},              {"BSDLFileTime", &DeviceInfo::SetBSDLFileTime},
    {"TurboAlgTemplate", &DeviceInfo::SetTurboAlgTemplate},
};

/// The three parsed lists, column by column.
inline constexpr TextField<DeviceInfo> kDeviceColumns[] = {
    {"ListControlReg1BitName", &DeviceInfo::SetListControlReg1BitName},
    {"ListControlReg1Address", &DeviceInfo::SetListControlReg1Address},
    {"ListControlReg1Column", &DeviceInfo::SetListControlReg1Column},
    {"ListControlStatusBitName", &DeviceInfo::SetListControlStatusBitName},
    {"ListControlStatusControl", &DeviceInfo::SetListControlStatusControl},
    {"ListControlStatusIndex", &DeviceInfo::SetListControlStatusIndex},
    {"listAddressRange", &DeviceInfo::SetlistAddressRange},
};

inline constexpr TextField<Package> kPackageTexts[] = {
    {"Type", &Package::SetType}, {"PON", &Package::SetPON},                 {"JDF", &Package::SetJDF},
    {"INI", &Package::SetINI},   {"OrvoSetting", &Package::SetOrvoSetting}, {"BackupPON", &Package::SetBackupPON},
    {"AliasPON", &Package::SetAliasPON},
};

#define PLDDB_NUMBER(stem, type) {#stem, [](DeviceInfo& device, unsigned int value) { device.Set##stem(static_cast<type>(value)); }}
inline constexpr NumberField kDeviceNumbers[] = {
    PLDDB_NUMBER(ispDeviceID, unsigned int),        PLDDB_NUMBER(jtagDeviceID, unsigned int),
    PLDDB_NUMBER(jtagDeviceIDBackup, unsigned int), PLDDB_NUMBER(FuseNumber, unsigned int),
    PLDDB_NUMBER(BackupFuseNumber, unsigned int),   PLDDB_NUMBER(DeviceIDMask, unsigned int),
    PLDDB_NUMBER(DeviceIDMaskBackup, unsigned int), PLDDB_NUMBER(DeviceIDScanMask, unsigned int),
    PLDDB_NUMBER(IDLength, unsigned short),         PLDDB_NUMBER(Pin, unsigned short),
    PLDDB_NUMBER(ARCHLength, unsigned int),         PLDDB_NUMBER(ARCHRow, unsigned short),
    PLDDB_NUMBER(SEDLength, unsigned short),        PLDDB_NUMBER(ELength, unsigned int),
    PLDDB_NUMBER(ERow, unsigned short),             PLDDB_NUMBER(IRLength, unsigned short),
    PLDDB_NUMBER(AddressLength, unsigned int),      PLDDB_NUMBER(DataLength, unsigned int),
    PLDDB_NUMBER(PhysicalUESLength, unsigned int),  PLDDB_NUMBER(ispLogicalUESLength, unsigned int),
    PLDDB_NUMBER(ProgramTime, unsigned short),      PLDDB_NUMBER(EraseTime, unsigned int),
    PLDDB_NUMBER(VerifyTime, unsigned short),       PLDDB_NUMBER(BSCANLength, unsigned int),
    PLDDB_NUMBER(IDInstruction, unsigned int),      PLDDB_NUMBER(USERCODEIntruction, unsigned int),
    PLDDB_NUMBER(InstructionBypass, unsigned int),  PLDDB_NUMBER(BypassLength, unsigned short),
    PLDDB_NUMBER(DataFrames, unsigned int),         PLDDB_NUMBER(FrameBytes, unsigned int),
    PLDDB_NUMBER(HeaderBytes, unsigned int),        PLDDB_NUMBER(BitstreamColWidth, int),
};
#undef PLDDB_NUMBER

// clang-format on

struct GeneratedAdapter {
  const char* vendor;
  const char* name;
};

struct GeneratedPackage {
  std::array<const char*, std::size(kPackageTexts)> texts;
  std::array<GeneratedAdapter, 2> adapters;
};

struct GeneratedDevice {
  std::array<const char*, std::size(kDeviceTexts)> texts;
  std::array<const char*, 5> ioEntries;
  std::array<const char*, std::size(kDeviceColumns)> columns;
  std::array<unsigned int, std::size(kDeviceNumbers)> numbers;
  std::array<GeneratedPackage, 5> packages;
};

struct GeneratedFamily {
  const char* name;
  const char* vendor;
  std::vector<GeneratedDevice> devices;
};

/// The data to load; the texts belong to this object.
class GeneratedDatabase {
 public:
  explicit GeneratedDatabase(int devices, int devicesPerFamily = kDevicesPerFamily);
  GeneratedDatabase(const GeneratedDatabase&) = delete;
  GeneratedDatabase& operator=(const GeneratedDatabase&) = delete;

  const std::vector<GeneratedFamily>& Families() const { return families_; }

  DeviceListOwner Load() const;  ///< Through the setters of the library, as a loader does it.

 private:
  GeneratedDevice MakeDevice(unsigned int i, unsigned int total, const GeneratedFamily& family);
  GeneratedPackage MakePackage(const std::string& part, std::size_t position);
  const char* Keep(std::string text) { return texts_.emplace_back(std::move(text)).c_str(); }

  std::deque<std::string> texts_;
  std::vector<GeneratedFamily> families_;
};

}  // namespace bench
