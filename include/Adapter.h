#pragma once

#include "DeviceStrElement.h"
#include "LObject.h"
#include "plddb_export.h"

/// A socket adapter that fits a package.
///
/// Rules of every accessor: a setter copies its argument; null keeps the old text. A getter lends the record's own text (null
/// while unset), valid until that field is next set or the record is destroyed. std::bad_alloc leaves the field as it was.
class PLDDB_EXPORT Adapter : public LObject {
 public:
  Adapter();                       ///< Both texts are null. In a tree, Package::AddAdapter creates adapters.
  explicit Adapter(Adapter* src);  ///< Copies both texts; a null source gives an empty adapter.
  ~Adapter() override;

  // clang-format off
  void SetVendorName(const char* vendor);    char* GetVendorName() const;
  void SetAdapterName(const char* adapter);  char* GetAdapterName() const;
  // clang-format on

 private:
  friend class Package;  // sets both names in one step

  DeviceStrElement VendorName;
  DeviceStrElement AdapterName;
};
