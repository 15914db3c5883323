#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "DeviceListOwner.h"

namespace fuzz {

/// What a call script acts on: two databases, one of them current, and in it the current family, device and package, each
/// chosen by position; and the devices that are in no family, which the script owns.
class World {
 public:
  World();
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  /// The object on which a member of a class is called; null without one.
  template <class Class>
  Class* Current();

  DeviceList& OtherDatabase() { return *databases_[1 - database_]; }
  void SelectDatabase(std::size_t i) { database_ = i % 2; }
  void SelectFamily(std::size_t i) { family_ = i; }
  void SelectDevice(std::size_t i) { device_ = i, takesUnlinked_ = false; }
  void SelectUnlinked(std::size_t i) { device_ = i, takesUnlinked_ = true; }
  void SelectPackage(std::size_t i) { package_ = i; }

  void Adopt(DeviceInfo* device);    ///< Takes an unlinked device over; nothing for null.
  void Destroy(DeviceInfo* device);  ///< Destroys an unlinked device; nothing for a device of a family.

  bool IsUnlinked(const DeviceInfo* device) const;

  /// Links an unlinked device to a family that outlives it.
  void BringHome(DeviceInfo& device) { device.SetFamilyObject(home_); }

  /// Runs `call`, which may destroy families of the current database, and takes their devices over.
  template <typename Call>
  void DestroyFamilies(Call call) {
    const std::vector<Family> before = FamiliesOfCurrent();
    call();
    AdoptDevicesOf(before);
  }

  void ReplaceOtherDatabase(DeviceListOwner database);  ///< The old one goes, devices included.
  void TearDown();                                      ///< Both databases and all unlinked devices.

  /// One of the texts that the current records lend; null when they lend none.
  const char* LentText(std::size_t i);

  /// Checks all that the world holds; gives a measure of its size.
  std::size_t CheckAll();

 private:
  struct Family {
    FamilyList* family;
    std::vector<DeviceInfo*> devices;
  };
  std::vector<Family> FamiliesOfCurrent();
  void AdoptDevicesOf(const std::vector<Family>& before);
  void BringHomeFrom(DeviceList& database);

  FamilyList home_;
  DeviceListOwner databases_[2];
  std::vector<std::unique_ptr<DeviceInfo>> unlinked_;
  std::size_t database_ = 0;
  std::size_t family_ = 0;
  std::size_t device_ = 0;
  std::size_t package_ = 0;
  bool takesUnlinked_ = false;
};

// clang-format off
template <> DeviceList* World::Current<DeviceList>();
template <> FamilyList* World::Current<FamilyList>();
template <> DeviceInfo* World::Current<DeviceInfo>();
template <> PackageList* World::Current<PackageList>();
template <> Package* World::Current<Package>();
template <> Adapter* World::Current<Adapter>();
// clang-format on

/// The arguments of one call, in order, as in a line of a script: separated by '|'. A missing one is null or 0.
///
///   abc     the text abc, or the number 0
///   0x1F    that number, or that text
///   \n \t   a line end, a tab
///   *1023   1,023 times x
///   @5 @5m  the fifth text that the current records lend, or its second half
class Arguments {
 public:
  Arguments(World& world, std::string_view line) : world_(world), rest_(line) {}

  const char* Text();
  unsigned long long Number();
  std::size_t Size() { return static_cast<std::size_t>(Number()); }

 private:
  bool Next(std::string_view& argument);

  World& world_;
  std::string_view rest_;
  std::list<std::string> texts_;  // what Text() lends; a list, as these stay in place
};

}  // namespace fuzz
