#pragma once

#include "LObjList.h"
#include "LObject.h"
#include "Package.h"
#include "integer_arguments.h"
#include "plddb_export.h"

/// The packages of one device, in load order. The list owns its packages.
///
/// Rules of every member: positions are 0-based. Searches compare exactly, visit the packages in order, and lend the first
/// match or a text of it. A null argument matches nothing; a package without the compared text is skipped. On purpose: the
/// count is 16 bits wide and limits the searches and copies, so 65,536 packages count as none.
class PLDDB_EXPORT PackageList : public LObject {
 public:
  PackageList();                           ///< An empty list. In a tree, each DeviceInfo has its own.
  explicit PackageList(PackageList* src);  ///< Copies every package, in order; a null source gives an empty list.
  ~PackageList() override;

  Package* NewPackage();                        ///< Appends an empty package and lends it.
  Package* GetPackage(unsigned short i) const;  ///< Lends the package at `i`; null unless `i` is below GetPackageCount().

  /// The same for other integer types (a plain literal included); null outside 0..65535.
  template <class Index, plddb::internal::IfInteger<Index> = 0>
  Package* GetPackage(Index i) const {
    return static_cast<unsigned long long>(i) > 65535 ? nullptr : GetPackage(static_cast<unsigned short>(i));
  }
  /// Rejects NULL, which is not a position, and thereby every value of its type (mostly long): cast those to int.
  template <class Index, plddb::internal::IfMaybeNull<Index> = 0>
  Package* GetPackage(Index i) const = delete;

  Package* GetPackage(const char* type) const;  ///< Lends the first package of exactly this type; null without one.
  unsigned short GetPackageCount() const;       ///< The number of packages, modulo 65,536.
  Package* GetLastPackage() const;              ///< Lends the last package; null for an empty list.

  char* GetPackageTypeWithJDFFile(const char* jdf) const;  ///< Type of the first package with this JDF; null without one.
  char* GetPackagePONWithJDFFile(const char* jdf) const;   ///< PON of the first package with this JDF; null without one.
  char* GetOrvoSettingWithJDFFile(const char* jdf) const;  ///< OrvoSetting of the first package with it; null without one.

  /// Appends a copy of each package of `src`, in order. `src` may be this list: it is doubled. Returns true; a null source
  /// appends nothing. std::bad_alloc keeps the copies appended so far.
  bool CopyPackageList(PackageList* src);

 private:
  LObjList Packages;  // of Package, owned
};
