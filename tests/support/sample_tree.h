#pragma once

#include <string>

#include "DeviceListOwner.h"

namespace support {

/// A device that is being described: `AddDevice(family).Name("A").Comm("JTAG").PackageType("TQ100")`. Fields that are not
/// named, and those that are given null, stay as a fresh record has them.
class SampleDevice {
 public:
  explicit SampleDevice(DeviceInfo* device) : device_(device) {}
  operator DeviceInfo*() const { return device_; }

  // clang-format off
  SampleDevice Name(const char* text) const          { return device_->SetName(text), *this; }
  SampleDevice CodeName(const char* text) const      { return device_->SetCodeName(text), *this; }
  SampleDevice AliasName(const char* text) const     { return device_->SetAliasName(text), *this; }
  SampleDevice Vendor(const char* text) const        { return device_->SetVendor(text), *this; }
  SampleDevice Comm(const char* text) const          { return device_->SetComm(text), *this; }
  SampleDevice Jtag(unsigned int id) const           { return device_->SetjtagDeviceID(id), *this; }
  SampleDevice Isp(unsigned int id) const            { return device_->SetispDeviceID(id), *this; }
  SampleDevice Mask(unsigned int mask) const         { return device_->SetDeviceIDScanMask(mask), *this; }
  SampleDevice Fuses(unsigned int count) const       { return device_->SetFuseNumber(count), *this; }
  SampleDevice UES(unsigned int bits) const          { return device_->SetPhysicalUESLength(bits), *this; }

  // Each adds a package that has this text alone; null adds one without any.
  SampleDevice PackageType(const char* text) const   { return AddPackage()->SetType(text), *this; }
  SampleDevice PackagePON(const char* text) const    { return AddPackage()->SetPON(text), *this; }
  SampleDevice BackupPON(const char* text) const     { return AddPackage()->SetBackupPON(text), *this; }
  SampleDevice AliasPON(const char* text) const      { return AddPackage()->SetAliasPON(text), *this; }
  SampleDevice JDF(const char* text) const           { return AddPackage()->SetJDF(text), *this; }
  // clang-format on

 private:
  Package* AddPackage() const { return device_->GetDevicePackage()->NewPackage(); }

  DeviceInfo* device_;
};

SampleDevice AddDevice(FamilyList& family);

/// Appends `count` empty devices.
void AddDevices(FamilyList& family, int count);

/// More devices than fit into a family's 16-bit count: it returns 0.
inline constexpr int kUncountedDevices = 65'536;

/// The names of the family's devices in order, "A B C".
std::string NamesIn(const FamilyList& family);

/// The names of the database's families in order, likewise.
std::string FamiliesIn(const DeviceList& database);

/// A database that is owned with its devices. It starts with one family.
class SampleTree {
 public:
  SampleTree();
  DeviceList* operator->() const { return database_.get(); }
  DeviceList& operator*() const { return *database_; }

  FamilyList& AddFamily(const char* name = nullptr) const;
  SampleDevice AddDevice() const;  ///< Appends a device to the last family.

  /// The position of a device, "<family>.<device>" with 0-based positions; "none" for null.
  std::string PlaceOf(const DeviceInfo* device) const;

 private:
  DeviceListOwner database_ = MakeDeviceList();
};

}  // namespace support
