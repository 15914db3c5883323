#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bsdl/Bsdl.h"
#include "bsdl/idcode.h"

namespace plddb::bsdl {

/// A code that a description holds as a number, and BYPASS also as a text.
struct Code {
  std::string bits;  // empty: not stated
  Place place;
};

struct PartPackage {
  std::string type;
  std::string pon;

  bool operator==(const PartPackage& other) const { return type == other.type && pon == other.pon; }
};

/// The values that one file gives to the description of a device.
struct Part {
  const File* file;
  std::string name;
  std::vector<PartPackage> packages;
  Idcode idcode;
  Place idcodePlace;
  Code bypass;
  Code idcodeInstruction;
  Code usercode;
};

/// The part that `file` describes; nothing when it has errors or is refused, and the reasons for that among `faults`.
std::optional<Part> ToPart(const File& file, const ImportOptions& options, std::vector<Fault>& faults);

/// The code of `instruction` that a description takes: of BYPASS that of all ones, else the first without X, else the first.
Code CodeOf(const Instruction& instruction);

/// The number in the name of a package type, "VQ64" or "LQFP64_PACKAGE"; 0 when there is none or another one before the end.
std::uint16_t PinsOf(const std::string& packageType);

}  // namespace plddb::bsdl
