#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "DeviceListOwner.h"
#include "fuzz/input.h"
#include "programming_files/readers.h"

/// \file
/// What the targets of the readers of programming files share: some devices, and what holds of any file.

namespace fuzz {

namespace pf = plddb::programming_files;

/// A few devices of several makers.
inline const DeviceList& SomeDevices() {
  static const DeviceListOwner database = [] {
    const struct {
      const char* name;
      unsigned int id, mask, irLength, instruction, fuses;
    } rows[] = {{"XC9572XL", 0x09604093, 0x0FFFFFFF, 8, 0xFE, 46656},
                {"XC9572XV", 0x09704093, 0x0FFFFFFF, 8, 0xFE, 46656},
                {"XC7A35T", 0x0362D093, 0x0FFFFFFF, 6, 0x09, 0},
                {"XC3S200", 0x01414093, 0x0FFFFFFF, 6, 0x09, 0},
                {"XCR3064XL", 0x04848093, 0x0FFF8FFF, 5, 0x01, 24481},
                {"ATF1502AS", 0x0150203F, 0x0FFFFFFF, 10, 0x059, 16808},
                {"ATF1502ASV", 0x0151203F, 0x0FFFFFFF, 10, 0x059, 16808},
                {"EPM240", 0x020A10DD, 0x0FFFFFFF, 10, 0x006, 0},
                {"MPF300", 0x0F8131CF, 0x0FFFFFFF, 8, 0x0F, 0},
                {"GW1NR-9C", 0x0100481B, 0x0FFFFFFF, 8, 0x11, 0},
                {"T8", 0x00000001, 0xFFFFFFFF, 4, 0x3, 0}};
    DeviceListOwner devices = MakeDeviceList();
    FamilyList* const family = devices->NewFamily();
    family->SetName("MAX II");
    for (const auto& row : rows) {
      DeviceInfo* const device = family->NewDevice();
      device->SetName(row.name);
      device->SetCodeName(row.name);
      device->SetComm("JTAG");
      device->SetjtagDeviceID(row.id);
      device->SetDeviceIDScanMask(row.mask);
      device->SetIRLength(static_cast<unsigned short>(row.irLength));
      device->SetIDInstruction(row.instruction);
      device->SetFuseNumber(row.fuses);
    }
    return devices;
  }();
  return *database;
}

/// Of a file of `size` bytes that does not unpack to more.
inline void CheckFile(const pf::File& file, std::uint64_t size) {
  Check(file.faults.size() <= pf::kMostFaults, "faults are bounded");
  Check(file.statements.size() <= pf::kMostStatements, "statements are bounded");
  for (const pf::Fault& fault : file.faults) {
    Check(fault.place.offset <= size, "a fault has a place in the file");
    Check(!fault.text.empty() && fault.text.size() < 300, "a fault is a short text");
  }
  for (const pf::Statement& statement : file.statements) {
    Check(statement.place.offset <= size, "a statement has a place in the file");
    Check(statement.text.size() <= pf::kLongestText + 16, "texts are bounded");
  }
}

/// Lets a reader have `data`, whatever that looks like.
inline int FuzzReader(void (*read)(pf::Input&, const pf::KnownDevices&, pf::File&), const std::uint8_t* data,
                      std::size_t size) {
  static const pf::KnownDevices known({&SomeDevices()});
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  const auto input = std::make_unique<pf::Input>([&rest](char* buffer, std::size_t wanted) {
    const std::size_t count = rest.copy(buffer, wanted);
    rest.remove_prefix(count);
    return count;
  });
  pf::File file;
  read(*input, known, file);
  CheckFile(file, size);
  return 0;
}

}  // namespace fuzz
