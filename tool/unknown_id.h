#pragma once

#include <optional>
#include <string>
#include <vector>

#include "databases.h"

namespace tool {

/// The fields of an IDCODE.
struct IdcodeFields {
  unsigned int version;       ///< Bits 31 to 28.
  unsigned int part;          ///< Bits 27 to 12.
  unsigned int manufacturer;  ///< Bits 11 to 1.
  unsigned int bank;          ///< Bits 11 to 8: the bank of the manufacturers' codes, counted from 0.
  unsigned int code;          ///< Bits 7 to 1: the code in its bank, without parity.
};

IdcodeFields SplitIdcode(unsigned int id);

/// What an unknown id is.
struct IdKind {
  const char* name;     ///< For scripts.
  bool is_idcode;       ///< It has the fields of an IDCODE.
  const char* meaning;  ///< For people; empty when it says nothing that the fields do not say.
};

/// The kind of what was read in the access mode `comm`; none: no id.
const IdKind& KindOf(const std::string& comm, std::optional<unsigned int> id);

/// A device whose identifier is nearly the unknown one.
struct NearDevice {
  const DeviceInfo* device;
  const Database* database;
  std::string difference;  ///< "other version", "bit 14 differs: a wiring fault?"
};

/// The devices nearest to the IDCODE `id`: those of the same part and another version first, then those that differ in one bit
/// of those that count; in search order, at most 5.
std::vector<NearDevice> NearestDevices(const std::vector<Database>& databases, unsigned int id);

/// The Vendor of the first device that has one and whose identifier has this manufacturer field; null when there is none.
const char* VendorOf(const std::vector<Database>& databases, unsigned int manufacturer);

/// A Device element for the IDCODE `id`, with "?" where the reader has to know; `vendor` may be null, `ir_length` 0. Its second
/// line stands behind `indent`.
std::string DescriptionStub(unsigned int id, const char* vendor, unsigned long ir_length, const std::string& indent);

}  // namespace tool
