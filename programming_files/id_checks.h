#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "readers.h"

/// \file
/// Finds the scans in a file that compare an IDCODE.

namespace plddb::programming_files {

/// Bits of a scan, the first one that is shifted out first.
class Bits {
 public:
  static constexpr std::size_t kMost = 1024;  ///< Longer scans hold no ids; of these the first bits are kept.

  Bits() = default;

  /// From hex digits, the most significant first.
  static Bits FromHex(std::string_view digits);

  /// From bytes, the most significant first.
  static Bits FromBytes(std::string_view bytes);

  static Bits Ones(std::size_t count);

  /// `count` (up to 32) bits from `first` on; bits beyond the last are 0.
  std::uint32_t Get(std::size_t first, std::size_t count) const;

  /// Whether all bits from `first` to before `last` are 1.
  bool AreOnes(std::size_t first, std::size_t last) const;

 private:
  void AddNibble(int nibble);
  std::vector<bool> bits_;
};

/// What an instruction register was loaded with.
struct Instruction {
  std::size_t length = 0;
  Bits bits = {};
};

/// A scan of a data register whose captured bits are compared.
struct ComparedScan {
  std::optional<Instruction> instruction = {};  ///< None was loaded before.
  std::size_t length = 0;
  Bits expected = {};
  Bits mask = {};
  std::optional<Padding> padding = {};
  Place place = {};
};

/// Adds the ids that `scan` compares. A scan of 32 bits is an id
///  - after the IDCODE instruction of a device that the compared bits fit,
///  - after that of another device, or a reset, when bit 0 is 1 and the maker is that of a known device,
///  - after any other instruction, when it is a known device's and no id was compared before;
/// a longer one when a device's id is in it, beside the BYPASS bits of other devices.
void AddIdChecks(const ComparedScan& scan, const KnownDevices& known, File& file);

}  // namespace plddb::programming_files
