#pragma once

#include "LObjList.h"
#include "LObject.h"
#include "Package.h"
#include "integer_arguments.h"
#include "plddb_export.h"

/// The packages of one device, in load order. The list owns its packages.
///
/// Rules said once: positions are 0-based; searches compare exactly, visit the packages in order and lend the first that
/// matches or a text of it; a null argument matches nothing; a package without the compared text is passed over.
/// On purpose: the count is 16 bits wide and bounds the searches and copies, so that 65,536 packages count as none.
class PLDDB_EXPORT PackageList : public LObject {
 public:
  PackageList();                           ///< An empty list. Made by each DeviceInfo in a tree.
  explicit PackageList(PackageList* src);  ///< Copies every package, in order; a null source gives an empty list.
  ~PackageList() override;

  Package* NewPackage();                        ///< Appends an empty package and lends it.
  Package* GetPackage(unsigned short i) const;  ///< Lends the package at `i`; null when `i` is not below GetPackageCount().

  /// The same for other integer types (a plain literal included); null outside 0..65535.
  template <class Index, plddb::internal::IfInteger<Index> = 0>
  Package* GetPackage(Index i) const {
    return static_cast<unsigned long long>(i) > 65535 ? nullptr : GetPackage(static_cast<unsigned short>(i));
  }
  /// Refuses NULL, which is no position, and with it all values of its type (long, mostly): cast these to int.
  template <class Index, plddb::internal::IfMaybeNull<Index> = 0>
  Package* GetPackage(Index i) const = delete;

  Package* GetPackage(const char* type) const;  ///< Lends the first package of exactly this type; null when there is none.
  unsigned short GetPackageCount() const;       ///< The number of packages, modulo 65,536.
  Package* GetLastPackage() const;              ///< Lends the last package; null for an empty list.

  char* GetPackageTypeWithJDFFile(const char* jdf) const;  ///< Type of the first package with this JDF; null when none.
  char* GetPackagePONWithJDFFile(const char* jdf) const;   ///< PON of the first package with this JDF; null when none.
  char* GetOrvoSettingWithJDFFile(const char* jdf) const;  ///< OrvoSetting of the first package with this JDF; null when none.

  /// Appends a copy of each package of `src`, in order, after the packages already held; `src` may be this list, which is
  /// doubled. Returns true; a null source appends nothing. std::bad_alloc keeps the copies appended so far.
  bool CopyPackageList(PackageList* src);

 private:
  LObjList Packages;  // of Package, owned
};
