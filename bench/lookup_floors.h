#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "DeviceList.h"

namespace bench {

/// The least that a lookup has to do: objects on the heap, each as large as a device of the library and made one after the
/// other, of which every one has to be looked at. Their texts are those of the tree, where the tree has them. Positions are
/// those of the devices; -1 when nothing is found.
class LookupFloors {
 public:
  explicit LookupFloors(const DeviceList& database);
  ~LookupFloors();
  LookupFloors(const LookupFloors&) = delete;
  LookupFloors& operator=(const LookupFloors&) = delete;

  /// One load per device, which depends on the load of the device's address.
  int FindNumber(unsigned int number) const;

  /// The same under a mask, which is in the object, too.
  int FindMasked(unsigned int id) const;

  /// The identifiers and masks, contiguous.
  int FindInArray(unsigned int id) const;

  /// From each device to its text, which is compared ignoring case.
  int FindText(const char* text) const;

  /// From each device to its packages and from each of these to its text, which is compared ignoring case: a backup ordering
  /// number or a file name.
  int FindPackagePON(const char* pon) const;
  int FindPackageJDF(const char* jdf) const;

 private:
  struct Device;
  struct DevicePackage;
  struct Identifier {
    unsigned int id;
    unsigned int mask;
  };
  using Devices = std::vector<std::unique_ptr<Device>>;

  template <typename Fill>
  static Devices MakeDevices(const DeviceList& database, Fill fill);
  static Devices PackageTexts(const DeviceList& database, char* (Package::*text)() const);
  static int FindPackageText(const Devices& devices, const char* text);

  Devices numbers_;
  std::vector<Identifier> identifiers_;
  Devices texts_;
  Devices pons_;
  Devices jdfs_;
};

}  // namespace bench
