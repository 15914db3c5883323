#pragma once

#include <string>

#include "Adapter.h"
#include "DeviceStrElement.h"
#include "LObjList.h"
#include "LObject.h"
#include "plddb_export.h"

/// One package in which a device is sold: its type, its ordering number (PON), the files and settings that the programming tool
/// uses for it, and the socket adapters that fit it. The package owns its adapters.
///
/// Rules of every accessor:
///  - Text: a setter copies its argument; null keeps the old text. A getter lends the record's own text (null while unset),
///    valid until that field is next set or the record is destroyed.
///  - Adapter positions are 0-based.
///  - Errors: a position outside the list gives null. std::bad_alloc leaves the package as it was.
class PLDDB_EXPORT Package : public LObject {
 public:
  Package();  ///< Every text is null; no adapters. In a tree, PackageList::NewPackage creates packages.
  /// Copies all texts and adapters; a null source gives an empty package.
  /// On purpose: a 16-bit count limits the copy (65,536 adapters count as none).
  explicit Package(Package* src);
  ~Package() override;

  // clang-format off
  void SetType(const char* type);                 char* GetType() const;          ///< Package type, for example "TQ100"; the key of PackageList::GetPackage.
  void SetPON(const char* pon);                   char* GetPON() const;           ///< Part ordering number.
  void SetJDF(const char* jdf);                   char* GetJDF() const;           ///< JEDEC device file name.
  void SetINI(const char* ini);                   char* GetINI() const;
  void SetOrvoSetting(const char* setting);       char* GetOrvoSetting() const;   ///< Setting of the Orvo stand-alone programmer.
  void SetBackupPON(const char* pon);             char* GetBackupPON() const;     ///< The PON as loaded; restores and lookups read this one.
  void SetAliasPON(const char* pon);              char* GetAliasPON() const;      ///< Replacement PON of a CDR variant.
  // clang-format on

  int GetAdapterCount() const;  ///< The number of adapters.

  /// Appends a new adapter with copies of these texts and lends it. Returns null and appends nothing if either text is null.
  Adapter* AddAdapter(const char* vendor, const char* adapter);

  /// Appends a copy of `adapter`, which the caller keeps, and lends the copy; null for null.
  Adapter* AddAdapter(Adapter* adapter);

  void RemoveAdapter(int i);         ///< Destroys the adapter at `i`; does nothing outside the list.
  Adapter* GetAdapter(int i) const;  ///< Lends the adapter at `i`; null outside the list.

  /// Sets both texts of the adapter at `i` (null keeps the old text) and lends it; null outside the list. The texts may be the
  /// adapter's own: both are used as they were at the call.
  Adapter* SetAdapter(int i, const char* vendor, const char* adapter);

  void ClearAdapterList();              ///< Destroys all adapters, from the last to the first.
  char* GetAdapterName(int i) const;    ///< Lends the text; null outside the list.
  char* GetAdapterVendor(int i) const;  ///< Lends the text; null outside the list.

  /// The backup ordering number with each of - / ( ) replaced by _; the empty text without a backup number.
  /// On purpose: spaces stay. The lookups by entity name build their own form, which removes spaces and keeps parentheses.
  std::string GetEntityName() const;

 private:
  DeviceStrElement Type;
  DeviceStrElement PON;
  DeviceStrElement JDF;
  DeviceStrElement INI;
  DeviceStrElement OrvoSetting;
  LObjList AdapterList;  // of Adapter, owned
  DeviceStrElement BackupPON;
  DeviceStrElement AliasPON;
};
