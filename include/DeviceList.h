#pragma once

#include <climits>
#include <string>
#include <vector>

#include "DeviceInfo.h"
#include "DeviceStrElement.h"
#include "FamilyList.h"
#include "LObjList.h"
#include "LObject.h"
#include "LString.h"         // IWYU pragma: export
#include "StringServices.h"  // IWYU pragma: export
#include "integer_arguments.h"
#include "plddb_export.h"

/// START HERE: the database root. It holds device families; a family holds devices, a device its packages, a package the
/// socket adapters that fit it. This header brings in the whole interface.
///
/// Rules of every member, said once:
///  - Text:    a setter copies its argument, null keeps the old text; a getter lends the record's own text (null while unset),
///             valid until the next set of that field or the end of the record.
///  - Lookups: families are visited in list order, hidden ones included, and in each its devices in load order; the first
///             match is lent, null when there is none. There is no index and no other preference. A null argument matches
///             nothing; a text that a rule compares and that a record does not have does not match, unless the rule says
///             otherwise. Letter case is ASCII. On purpose: the walk visits GetDeviceCount() devices of a family, a 16-bit
///             number.
///  - Errors:  none are reported but by null, 0 or false. std::bad_alloc leaves the tree intact.
///  - Threads: no locks. Every const member may run beside other readers while nobody writes; GetDeviceListWithCommAndID
///             writes the root's name list and is a writer.
///
/// The root owns its families and destroys them when it is destroyed. It never destroys a device: see DeviceListOwner.h.
class PLDDB_EXPORT DeviceList : public LObject {
 public:
  DeviceList();  ///< An empty database.

  /// A copy that shares nothing with `src`: Comment, Version and the families with their devices; the name list starts empty.
  /// On purpose: a 16-bit count bounds the copy, as it does assigning and merging (65,536 families count as none).
  /// A null source gives an empty database. std::bad_alloc releases everything built so far, devices included.
  explicit DeviceList(DeviceList* src);
  ~DeviceList() override;

  /// Destroys the families held so far, takes Comment and Version (a null text of `src` keeps the old one) and appends copies
  /// of the families of `src`; the name list stays. std::bad_alloc keeps the families appended so far.
  /// On purpose: the old families' devices stay alive (AssignDeviceList of DeviceListOwner.h releases them), and assigning a
  /// database to itself leaves it without families.
  DeviceList& operator=(DeviceList& src);
  DeviceList& operator=(const DeviceList&) = delete;

  /// Appends copies of all families of `src` after those held; names are not compared, Version and Comment stay. Returns
  /// this database. With null, or this database itself, nothing is merged. std::bad_alloc keeps the families appended so far.
  DeviceList* AddNewDeviceList(DeviceList* src);

  // clang-format off
  void SetVersion(const char* version);  char* GetVersion() const;
  void SetComment(const char* comment);  char* GetComment() const;
  // clang-format on

  /// \name Families (positions are 0-based; names are compared exactly)
  ///@{
  FamilyList* NewFamily();             ///< Appends an empty family and lends it.
  FamilyList* GetFamily(int i) const;  ///< Lends the family at `i`; null outside the list.
  /// The first family whose Name, or else AliasName, equals `name`; both are tried on a family before the next one.
  FamilyList* GetFamily(const char* name) const;
  FamilyList* GetLastFamily() const;      ///< Lends the last family; null when there is none.
  unsigned short GetFamilyCount() const;  ///< The number of families, modulo 65,536.
  unsigned short GetDeviceCount() const;  ///< The devices of all families (each family's 16-bit count), modulo 65,536.
  /// Destroys the first family of this Name, not its devices: release these first (ReleaseDevices of DeviceListOwner.h).
  void DeleteFamily(const char* name);
  void DeleteFamily(int i);  ///< The same for the family at `i`; nothing outside the list.

  /// GetFamily(int) for other integer types; null for what is no position.
  /// On purpose not for deleting: NULL, meant as a name, would delete family 0. It does not compile.
  template <class Index, plddb::internal::IfInteger<Index> = 0>
  FamilyList* GetFamily(Index i) const {
    return static_cast<unsigned long long>(i) > INT_MAX ? nullptr : GetFamily(static_cast<int>(i));
  }
  /// Refuses NULL, which is no position, and with it all values of its type (long, mostly): cast these to int.
  template <class Index, plddb::internal::IfMaybeNull<Index> = 0>
  FamilyList* GetFamily(Index i) const = delete;
  ///@}

  /// The code names that the last GetDeviceListWithCommAndID found. The list is valid as long as the database, its texts until
  /// the next such call.
  const std::vector<std::string>& GetlistDevicenames() const;

  /// \name Attributes of the first family of exactly this Name (aliases are not consulted); null, 0 or false without one
  ///@{
  char* GetBypassInstwfamilyName(const char* name) const;
  char* GetIDCodeInstwfamilyName(const char* name) const;
  int GetISCReleasewfamilyName(const char* name) const;
  bool GetHiddenwfamilyName(const char* name) const;
  bool GetFPGALoaderSupportwfamilyName(const char* name) const;
  bool GetFPGADevicewfamilyName(const char* name) const;
  bool GetReInitializewfamilyName(const char* name) const;
  bool GetDebugModewfamilyName(const char* name) const;
  /// The family's Extension, "*.jed" when it has none; never write to that text. On purpose: without one, "Generic JTAG Device"
  /// asks later families of that name and ends in null.
  char* GetExtensionwfamilyName(const char* name) const;
  ///@}

  /// \name Lookups by name (ignoring case; texts of any length)
  ///@{
  DeviceInfo* GetDeviceWithName(const char* name) const;

  /// By code name anywhere; only then by alias name. On purpose: a device whose vendor is exactly "Quorel" is never found by
  /// its alias.
  DeviceInfo* GetDeviceWithCodeName(const char* codeName) const;

  /// By a package's backup ordering number, or else its alias ordering number. `stripSuffix` leaves out what follows the last
  /// '-' of the stored number (the '-' included; not one at its start); `pon` itself is never shortened.
  /// On purpose: the primary number, which the tool may switch, is not compared.
  DeviceInfo* GetDeviceWithPON(const char* pon, bool stripSuffix) const;
  ///@}

  /// \name Lookups by access mode or package and a name
  /// The name is compared ignoring case and carried over, on purpose: a device without the text is compared under the text of
  /// the last device visited that had one (the empty text before the first). Texts of 1,024 characters or more match nothing.
  /// Access modes and package types are compared exactly.
  ///@{
  DeviceInfo* GetDeviceWithComm(const char* comm, const char* name) const;
  DeviceInfo* GetDeviceWithCommAndCodeName(const char* comm, const char* codeName) const;
  DeviceInfo* GetDeviceWithPackage(const char* packageType, const char* name) const;
  DeviceInfo* GetDeviceWithPackageAndCodeName(const char* packageType, const char* codeName) const;
  ///@}

  /// \name Lookups by identifier
  /// `comm` is exactly "ISP", "JTAG" or "DUAL" and only chooses the identifier to compare; anything else finds nothing. An
  /// `id` of 0 finds nothing. Under the scan mask of the device (0 excludes it):
  ///  - "ISP", "JTAG": that identifier is not 0 and agrees with `id` in every bit of the mask.
  ///  - "DUAL": on purpose looser: the low 8 bits of the ISP identifier agree, or the JTAG identifier agrees under the mask;
  ///    identifiers of 0 take part.
  ///@{
  DeviceInfo* GetDeviceWithCommAndID(const char* comm, unsigned int id) const;

  /// The same, and the code name is exactly `codeName` (letter case counts).
  DeviceInfo* GetDeviceWithCommAndIDAndCodeName(const char* comm, unsigned int id, const char* codeName) const;

  /// Without mask: all 32 bits agree; "DUAL" takes either identifier.
  DeviceInfo* GetDeviceWithCommAndIDNoMask(const char* comm, unsigned int id) const;

  /// Collects the code names of all devices that match under the mask in the name list, "" for a device without code name, and
  /// returns their number. An `id` of 0 returns 0 and leaves the list.
  int GetDeviceListWithCommAndID(const char* comm, unsigned int id);

  /// The same, and `codeNames` becomes a copy of the list without its empty texts: the result may exceed its size. An `id` of
  /// 0 leaves both lists.
  int GetDeviceListWithCommAndID(const char* comm, unsigned int id, std::vector<std::string>& codeNames);
  ///@}

  /// By the JEDEC device file of a package. On purpose: only the first six characters (exact case) and the length count.
  DeviceInfo* GetDeviceWithJDFFileName(const char* jdfFile) const;

  /// \name Lookups by entity name
  /// The entity name of a package is its backup ordering number without its spaces and with - and / written as _ (empty without
  /// a backup number), compared ignoring case. On purpose not Package::GetEntityName, which keeps spaces and maps parentheses.
  /// Texts of 1,024 characters or more match nothing.
  ///@{
  DeviceInfo* GetDeviceWithEntityName(const char* entityName) const;  ///< Devices whose PhysicalUESLength is 0 are passed over.
  DeviceInfo* GetDeviceWithEntityNameDisregardUES(const char* entityName) const;
  ///@}

  /// \name Lookups by fuse count
  /// Two counts also stand for devices stored with another one, whatever their access mode: 5892 for 5828, and 4988064 for
  /// 4982712. Each lookup states which of the two it honours; they differ on purpose.
  ///@{

  /// 1 when a device has exactly this count and the access mode "ISP", else 0. Honours no alias.
  int GetDeviceCommISPWithFuseMap(unsigned long fuseCount) const;

  /// The first "DUAL" or "JTAG" device of this count whose code name, or one of whose packages' PON, equals `fullName` after
  /// normalisation: spaces removed, cut before the last '-' (not one at the start; a closing "/1" is kept), case ignored.
  /// Honours 5892 only.
  DeviceInfo* GetDeviceWithFuseMapAndFullName(unsigned long fuseCount, const char* fullName) const;

  /// The first "JTAG" device of exactly this count whose code name equals `fullName` ignoring case (no normalisation, no alias
  /// count); failing that, what GetDeviceWithFuseMapAndFullName finds.
  DeviceInfo* GetDeviceWithFuseMapAndFullNameEx(unsigned long fuseCount, const char* fullName) const;

  /// Replaces `candidates` by the code names of all devices of this count and returns their number. A "DUAL" device gives two
  /// entries, with "<ISP>" and "<JTAG>" after the text; one found through an alias count gives its text alone. Honours both.
  int GetDeviceCodeNameWithFuseMap(unsigned long fuseCount, std::vector<std::string>& candidates) const;

  /// The same with names, of devices whose PhysicalUESLength is not 0. On purpose: appends to `candidates`, and returns the
  /// number of entries that it then holds. Honours both.
  int GetDeviceWithFuseMap(unsigned long fuseCount, std::vector<std::string>& candidates) const;
  ///@}

 private:
  void AppendFamilies(const DeviceList& src);

  DeviceStrElement Version;
  LObjList Families;  // of FamilyList, owned
  DeviceStrElement Comment;
  std::vector<std::string> listDevicenames;
};

/// Whether `device` only passes data through (is a bypass device) in the numbered `mode` of chain processing, judged by its
/// family text, code name and name alone, each compared exactly and whole with the words of that mode; a text that is null
/// equals none of them. On purpose the words of the modes are irregular: see database/bypass_device.cpp. Modes other than 0 to
/// 6, and a null device, give false; mode 0 always does. What a mode means is the calling tool's.
PLDDB_EXPORT bool IsBypassDevice(const DeviceInfo* device, int mode);
