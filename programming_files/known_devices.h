#pragma once

#include <bitset>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "DeviceInfo.h"
#include "DeviceList.h"

namespace plddb::programming_files {

using Devices = std::vector<const DeviceInfo*>;

/// The devices of some databases, in the order in which lookups visit them.
class KnownDevices {
 public:
  explicit KnownDevices(const std::vector<const DeviceList*>& databases);

  /// Those that an id fits: the bits that count for both are equal. Of several, those whose own mask counts more bits come
  /// first, and TAPs that are not programmable logic are left out if others answer. `irLength` 0: not known.
  Devices WithId(std::uint32_t value, std::uint32_t mask, unsigned int irLength = 0) const;

  /// Those of this name, letter case ignored; a second IDCODE of the same part ("XCKU11P_CIV") has its name, too.
  Devices WithName(std::string_view name) const;

  /// A name, and what follows it in a text: package, pins, grade.
  struct Named {
    Devices devices;
    std::string_view rest = {};
  };

  /// Those whose name the text starts with, by the longest such name:
  ///
  ///   "XC6SLX25Tcsg324"  XC6SLX25T, "csg324"
  ///   "EPM7128SLC84-15"  EPM7128S, "LC84-15"
  ///   "EP2C50F484"       EP2C50; never EP2C5, since a number is not cut
  ///   "XA2C32A"          XC2C32A: other grades have the commercial part's die
  ///   "5CSEBA6U23I7"     5CSEA6, whose name leaves the variant B out
  Named WithNameIn(std::string_view text) const;

  /// Those whose name starts with `stem` and goes on with a letter: "ATF1502" is ATF1502AS, ATF1502ASV.
  Devices WithStem(std::string_view stem) const;

  /// Those that the lookups by fuse count name.
  Devices WithFuseCount(std::uint32_t count) const;

  /// Whether the IDCODE of some programmable logic has this manufacturer field.
  bool HasMaker(std::uint32_t id) const { return makers_[id >> 1 & kMaker]; }

  /// Whether this is the IDCODE instruction of some device.
  bool HasIdInstruction(std::size_t length, std::uint32_t code) const { return idInstructions_.count({length, code}) != 0; }

  /// Whether `device` answers to the whole `id` as well as any other does; `irLength` 0: not known.
  bool Answers(const DeviceInfo& device, std::uint32_t id, unsigned int irLength) const;

 private:
  struct Known {
    const DeviceInfo* device;
    std::string name;  ///< In upper case, without what follows '_'.
    bool isLogic;
  };
  Named Longest(std::string_view text) const;
  void Add(const DeviceInfo& device, bool isLogic);

  static constexpr std::uint32_t kMaker = 0x7FF;

  std::vector<const DeviceList*> databases_;
  std::vector<Known> devices_;  // sorted by name, those of one name in the order of the walk
  std::vector<Known> inOrder_;
  std::size_t longestName_ = 0;
  std::bitset<kMaker + 1> makers_;
  std::set<std::pair<std::size_t, std::uint32_t>> idInstructions_;
};

}  // namespace plddb::programming_files
