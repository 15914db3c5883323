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

/// START HERE: the database root. It holds device families; a family holds devices, a device holds its packages, and a package
/// holds the socket adapters that fit it. This header includes the whole interface.
///
/// Rules of every member:
///  - Text:    a setter copies its argument; null keeps the old text. A getter lends the record's own text (null while unset),
///             valid until that field is next set or the record is destroyed.
///  - Lookups: visit families in list order, hidden ones included, and the devices of each in load order. They lend the first
///             match, or return null without one. There is no index and no other preference. A null argument matches nothing,
///             nor does a record that lacks the compared text, unless the lookup states otherwise. Letter case is ASCII.
///             On purpose: the walk visits GetDeviceCount() devices of a family, a 16-bit number.
///  - Errors:  reported only by null, 0 or false. std::bad_alloc leaves the tree intact.
///  - Threads: no locks. Every const member may run in parallel with other readers while nobody writes.
///             GetDeviceListWithCommAndID is a writer: it writes the root's name list.
///
/// The root owns its families and destroys them when it is destroyed. It never destroys a device: see DeviceListOwner.h.
class PLDDB_EXPORT DeviceList : public LObject {
 public:
  DeviceList();  ///< An empty database.

  /// Copies Comment, Version, and the families with their devices, and shares nothing with `src`; the name list starts empty.
  /// On purpose: a 16-bit count limits the copy, and likewise assigning and merging (65,536 families count as none).
  /// A null source gives an empty database. std::bad_alloc releases everything built so far, devices included.
  explicit DeviceList(DeviceList* src);
  ~DeviceList() override;

  /// Destroys the current families, copies Comment and Version (a null text of `src` keeps the old one), and appends copies of
  /// the families of `src`; the name list does not change. std::bad_alloc keeps the families appended so far.
  /// On purpose: the old families' devices stay alive (AssignDeviceList of DeviceListOwner.h releases them), and assigning a
  /// database to itself leaves it without families.
  DeviceList& operator=(DeviceList& src);
  DeviceList& operator=(const DeviceList&) = delete;

  /// Appends copies of all families of `src`. Names are not compared; Version and Comment do not change. Returns this database.
  /// Null and this database itself append nothing. std::bad_alloc keeps the families appended so far.
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
  FamilyList* GetLastFamily() const;      ///< Lends the last family; null without one.
  unsigned short GetFamilyCount() const;  ///< The number of families, modulo 65,536.
  unsigned short GetDeviceCount() const;  ///< The devices of all families (each family's 16-bit count), modulo 65,536.
  /// Destroys the first family of this Name, but not its devices: release these first (ReleaseDevices of DeviceListOwner.h).
  void DeleteFamily(const char* name);
  void DeleteFamily(int i);  ///< The same for the family at `i`; does nothing outside the list.

  /// GetFamily(int) for other integer types; null outside the list.
  /// On purpose there is none for deleting: NULL, meant as a name, would delete family 0. So it does not compile.
  template <class Index, plddb::internal::IfInteger<Index> = 0>
  FamilyList* GetFamily(Index i) const {
    return static_cast<unsigned long long>(i) > INT_MAX ? nullptr : GetFamily(static_cast<int>(i));
  }
  /// Rejects NULL, which is not a position, and thereby every value of its type (mostly long): cast those to int.
  template <class Index, plddb::internal::IfMaybeNull<Index> = 0>
  FamilyList* GetFamily(Index i) const = delete;
  ///@}

  /// Lends the code names that the last GetDeviceListWithCommAndID found. The list is valid as long as the database; its texts
  /// are valid until the next such call.
  const std::vector<std::string>& GetlistDevicenames() const;

  /// \name Attributes of the first family of exactly this Name (aliases are ignored); null, 0 or false without one
  ///@{
  char* GetBypassInstwfamilyName(const char* name) const;
  char* GetIDCodeInstwfamilyName(const char* name) const;
  int GetISCReleasewfamilyName(const char* name) const;
  bool GetHiddenwfamilyName(const char* name) const;
  bool GetFPGALoaderSupportwfamilyName(const char* name) const;
  bool GetFPGADevicewfamilyName(const char* name) const;
  bool GetReInitializewfamilyName(const char* name) const;
  bool GetDebugModewfamilyName(const char* name) const;
  /// The family's Extension, or the default "*.jed" if it has none; never write to that text. On purpose: there is no default
  /// for the name "Generic JTAG Device": later families of that name are asked, then the answer is null.
  char* GetExtensionwfamilyName(const char* name) const;
  ///@}

  /// \name Lookups by name (ignoring case; texts of any length)
  ///@{
  DeviceInfo* GetDeviceWithName(const char* name) const;

  /// By code name in all families; only then by alias name. On purpose: a device whose vendor is exactly "Quorel" is never
  /// found by its alias.
  DeviceInfo* GetDeviceWithCodeName(const char* codeName) const;

  /// By a package's backup ordering number, or else its alias ordering number. `stripSuffix` cuts the stored number at its last
  /// '-' (unless that is its first character); `pon` itself is never shortened.
  /// On purpose: the primary number is not compared, since the tool may switch it.
  DeviceInfo* GetDeviceWithPON(const char* pon, bool stripSuffix) const;
  ///@}

  /// \name Lookups by access mode or package and a name
  /// The name is compared ignoring case, and is carried over on purpose: for a device without the text, the text of the last
  /// visited device that has one is compared (the empty text before the first). Texts of 1,024 characters or more match
  /// nothing. Access modes and package types are compared exactly.
  ///@{
  DeviceInfo* GetDeviceWithComm(const char* comm, const char* name) const;
  DeviceInfo* GetDeviceWithCommAndCodeName(const char* comm, const char* codeName) const;
  DeviceInfo* GetDeviceWithPackage(const char* packageType, const char* name) const;
  DeviceInfo* GetDeviceWithPackageAndCodeName(const char* packageType, const char* codeName) const;
  ///@}

  /// \name Lookups by identifier
  /// `comm` is exactly "ISP", "JTAG" or "DUAL", and only selects the identifier to compare; any other text finds nothing. An
  /// `id` of 0 finds nothing. A device with a scan mask of 0 never matches. Otherwise a device matches if
  ///  - "ISP", "JTAG": that identifier is not 0 and equals `id` in every bit of the scan mask.
  ///  - "DUAL": on purpose looser: the low 8 bits of the ISP identifier are equal, or the JTAG identifier is equal under the
  ///    mask; identifiers of 0 are compared, too.
  ///@{
  DeviceInfo* GetDeviceWithCommAndID(const char* comm, unsigned int id) const;

  /// As above, and the code name equals `codeName` exactly (case-sensitive).
  DeviceInfo* GetDeviceWithCommAndIDAndCodeName(const char* comm, unsigned int id, const char* codeName) const;

  /// Ignores the mask: all 32 bits must be equal; for "DUAL", either identifier may match.
  DeviceInfo* GetDeviceWithCommAndIDNoMask(const char* comm, unsigned int id) const;

  /// Replaces the name list by the code names of all devices that match under the mask ("" for a device without one), and
  /// returns their number. An `id` of 0 returns 0 and keeps the list.
  int GetDeviceListWithCommAndID(const char* comm, unsigned int id);

  /// As above, and replaces `codeNames` by the non-empty names; the returned count includes the empty ones. An `id` of 0 keeps
  /// both lists.
  int GetDeviceListWithCommAndID(const char* comm, unsigned int id, std::vector<std::string>& codeNames);
  ///@}

  /// By the JEDEC device file of a package. On purpose: only the first six characters (case-sensitive) and the length are
  /// compared.
  DeviceInfo* GetDeviceWithJDFFileName(const char* jdfFile) const;

  /// \name Lookups by entity name
  /// The entity name of a package is its backup ordering number without spaces, with - and / replaced by _ (empty without a
  /// backup number). It is compared ignoring case. On purpose it is not Package::GetEntityName, which keeps spaces and replaces
  /// parentheses. Texts of 1,024 characters or more match nothing.
  ///@{
  DeviceInfo* GetDeviceWithEntityName(const char* entityName) const;  ///< Skips devices whose PhysicalUESLength is 0.
  DeviceInfo* GetDeviceWithEntityNameDisregardUES(const char* entityName) const;
  ///@}

  /// \name Lookups by fuse count
  /// Two counts are aliases: 5892 also finds devices stored with 5828, and 4988064 those stored with 4982712, whatever their
  /// access mode. Each lookup states which of the two it honours; they differ on purpose.
  ///@{

  /// 1 if a device has exactly this count and the access mode "ISP", else 0. Honours neither alias.
  int GetDeviceCommISPWithFuseMap(unsigned long fuseCount) const;

  /// The first "DUAL" or "JTAG" device of this count whose code name, or the PON of one of its packages, equals `fullName`.
  /// Before comparing, spaces are removed and each text is cut at its last '-' (unless that is the first character; a closing
  /// "/1" is kept); case is ignored. Honours 5892 only.
  DeviceInfo* GetDeviceWithFuseMapAndFullName(unsigned long fuseCount, const char* fullName) const;

  /// The first "JTAG" device of exactly this count whose code name equals `fullName`, ignoring case and nothing else; without
  /// one, the result of GetDeviceWithFuseMapAndFullName. Its first search honours neither alias.
  DeviceInfo* GetDeviceWithFuseMapAndFullNameEx(unsigned long fuseCount, const char* fullName) const;

  /// Replaces `candidates` by the code names of all devices of this count and returns their number. A "DUAL" device adds two
  /// entries, with "<ISP>" and "<JTAG>" appended to the text; a device found by an alias adds one, the bare text. Honours both.
  int GetDeviceCodeNameWithFuseMap(unsigned long fuseCount, std::vector<std::string>& candidates) const;

  /// As above with names instead of code names, for devices whose PhysicalUESLength is not 0. On purpose: appends to
  /// `candidates`, and returns the number of entries that it then holds. Honours both.
  int GetDeviceWithFuseMap(unsigned long fuseCount, std::vector<std::string>& candidates) const;
  ///@}

 private:
  void AppendFamilies(const DeviceList& src);

  DeviceStrElement Version;
  LObjList Families;  // of FamilyList, owned
  DeviceStrElement Comment;
  std::vector<std::string> listDevicenames;
};

/// Whether `device` is a bypass device (only passes data through) in the numbered `mode` of chain processing. Only its family
/// text, code name and name decide: each is compared, exactly and as a whole, with the words of that mode; a null text equals
/// none of them. On purpose the words of the modes are irregular: see database/bypass_device.cpp. Mode 0, modes other than 0 to
/// 6, and a null device give false. The calling tool defines the meaning of the modes.
PLDDB_EXPORT bool IsBypassDevice(const DeviceInfo* device, int mode);
