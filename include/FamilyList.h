#pragma once

#include <climits>
#include <string>
#include <vector>

#include "CBScanControl.h"
#include "DeviceInfo.h"
#include "DeviceStrElement.h"
#include "LObjList.h"
#include "LObject.h"
#include "integer_arguments.h"
#include "plddb_export.h"

/// One device family: its names, the instructions and files that its devices share, its flags, and its devices in load order.
///
/// Rules of every member:
///  - Text:    a setter copies its argument; null keeps the old text. A getter lends the record's own text (null while unset),
///             valid until that field is next set or the record is destroyed.
///  - Lookups: visit devices in load order and lend the first match, or return null without one. A null argument matches
///             nothing unless the lookup states otherwise. Letter case is ASCII.
///  - Errors:  none are reported. std::bad_alloc leaves a field or list as it was; a text being parsed into a list keeps the
///             entries stored so far.
///  - Threads: no locks. Every const member may run in parallel with other readers while nobody writes.
///
/// On purpose: the family owns its texts and lists but never destroys a device, and destroying a family leaves its devices
/// alive. The owner of the tree releases them; DeviceListOwner.h does it for a family or a whole tree.
class PLDDB_EXPORT FamilyList : public LObject {
 public:
  FamilyList();  ///< Every field has its default. In a tree, DeviceList::NewFamily creates families.

  /// A copy that shares nothing with `src`; the copies of its devices belong to the new family. A null source gives an empty
  /// family. std::bad_alloc releases everything built so far, devices included.
  /// On purpose: 16-bit counts limit the copy (65,536 devices or operations count as none).
  explicit FamilyList(FamilyList* src);
  ~FamilyList() override;

  // clang-format off

  /// \name Names, instructions and files
  ///@{
  void SetName(const char* name);               char* GetName() const;
  void SetAliasName(const char* aliasName);     char* GetAliasName() const;    ///< Second name for DeviceList::GetFamily.
  void SetBypassInst(const char* code);         char* GetBypassInst() const;   ///< BYPASS instruction, as text.
  void SetIDCodeInst(const char* code);         char* GetIDCodeInst() const;   ///< IDCODE instruction, as text.
  void SetISCRelease(int release);              int GetISCRelease() const;     ///< Tool units.
  void SetExtension(const char* pattern);       char* GetExtension() const;    ///< File-name pattern of the family's data files.
  void SetXFPFile(const char* file);            char* GetXFPFile() const;
  /// On purpose: a null argument stores the empty text, and the getter never returns null. Never write to the lent text.
  void SetICFFile(const char* file);            char* GetICFFile() const;
  ///@}

  /// \name Flags and pins (flags default to false, numbers to 0)
  ///@{
  void SetReInitialize(bool on);                bool IsReInitialize() const;
  void Set1532Compliant(bool on);               bool Is1532Compliant() const;  ///< IEEE 1532.
  void SetCDRFixed(bool on);                    bool IsCDRFixed() const;       ///< Allows DeviceInfo::ChangeDeviceCDRValue.
  void SetHidden(bool on);                      bool IsHidden() const;         ///< For display only: lookups visit hidden families.
  void SetDebugMode(bool on);                   bool IsDebugMode() const;
  void SetFPGALoaderSupport(bool on);           bool IsFPGALoaderSupport() const;
  void SetSTAPLSupport(bool on);                bool IsSTAPLSupport() const;
  void SetFPGADevice(bool on);                  bool IsFPGADevice() const;
  void SetCFGPinCount(int pins);                int GetCFGPinCount() const;    ///< Number of configuration pins.
  /// The getter returns null for the empty text; a null argument stores the empty text.
  void SetBitstreamModelTemplate(const char* text);  char* GetBitstreamModelTemplate() const;
  ///@}

  // clang-format on

  /// \name Devices
  /// On purpose: InsertNewDevice, AddNewDevice and DeleteDevice(int) count positions from 1, GetDevice and GetDevicePos from 0.
  ///@{
  DeviceInfo* NewDevice();  ///< Appends a new device of this family and lends it.

  /// Inserts a new device before the `pos`-th (1-based) and lends it. Returns null and adds none outside the list.
  DeviceInfo* InsertNewDevice(int pos);

  /// Inserts a new device after the `pos`-th (1-based; 0: before all) and lends it. Returns null and adds none outside the
  /// list.
  DeviceInfo* AddNewDevice(int pos);

  DeviceInfo* GetDevice(unsigned short i) const;  ///< Lends the device at `i` (0-based) below GetDeviceCount(), else null.
  DeviceInfo* GetDevice(int i) const;             ///< Lends the device at `i` (0-based) of the whole list, else null.

  /// GetDevice(int) for other integer types; null outside the list.
  template <class Index, plddb::internal::IfInteger<Index> = 0>
  DeviceInfo* GetDevice(Index i) const {
    return static_cast<unsigned long long>(i) > INT_MAX ? nullptr : GetDevice(static_cast<int>(i));
  }
  /// Rejects NULL, which is not a position, and thereby every value of its type (mostly long): cast those to int.
  template <class Index, plddb::internal::IfMaybeNull<Index> = 0>
  DeviceInfo* GetDevice(Index i) const = delete;

  /// The first device whose name equals `name`, ignoring case. Texts of 1,024 characters or more match nothing.
  DeviceInfo* GetDevice(const char* name) const;
  int GetDevicePos(const char* name) const;  ///< The position (0-based) of that device; -1 without one.
  DeviceInfo* GetLastDevice() const;         ///< Lends the last device; null for an empty family.
  /// The number of devices. On purpose: 16 bits wide, and the limit of every walk over a whole database.
  unsigned short GetDeviceCount() const;

  /// Unlinks the `pos`-th device (1-based) and hands it over; null outside the list.
  /// On purpose only for int, unlike GetDevice: NULL, meant as a code name, does not compile.
  DeviceInfo* DeleteDevice(int pos);

  /// Unlinks the first device whose code name equals `codeName`, ignoring case, and hands it over; null without one.
  /// On purpose: it compares the code name, whereas GetDevice(const char*) compares the name. A code name or argument that is
  /// empty or has 1,024 characters or more counts as the empty text; a device without a code name never matches.
  DeviceInfo* DeleteDevice(const char* codeName);
  ///@}

  /// \name Operations: names in order, 0-based positions
  ///@{

  /// Replaces the operations by the quoted items of `text`: `"Erase", "Program"`. Text outside the quotes is ignored, items
  /// are trimmed; the first empty pair of quotes or an unclosed quote ends the list. A null text is ignored.
  /// On purpose: an empty text does not clear the list; a text without quotes does.
  void SetOperationList(const char* text);
  void AddOperationList(const char* name);     ///< Appends one operation exactly as given; a null or empty name adds nothing.
  void DeleteOperationList(const char* name);  ///< Destroys the first operation of exactly this name, unless it is empty.
  /// On purpose: 16 bits wide, like the positions that callers compare it with.
  unsigned short GetOperationCount() const;
  char* GetOperation(int i) const;  ///< Lends the operation's name, valid until the list changes; null outside the list.
  ///@}

  /// \name Programming modes and boundary-scan controls
  /// Texts are semicolon item lists: "MODES;JTAG;SPI;" is a label and the items JTAG and SPI (see DeviceInfo, control lists).
  /// A null text changes nothing. The whole-list setters keep the old list if the argument is empty. The getters lend the list
  /// itself; you may change it in place.
  ///@{
  void SetListProgrammingModeControl(const char* text);  ///< Replaces the list by the items of `text`.
  /// A single text in braces calls the overload for a text; write std::vector<std::string>{...} for a list of one.
  void SetListProgrammingModeControl(std::vector<std::string> list);
  std::vector<std::string>& GetListProgrammingModeControl();
  /// Appends one record with DefaultValue 1 whose Controls are the items of `text`, even if there are none.
  void SetListBScanControl(const char* text);
  void SetListBScanControl(std::vector<CBScanControl> list);
  std::vector<CBScanControl>& GetListBScanControl();
  void SetBScanDefaultValue(int value);  ///< Sets DefaultValue of the first record; does nothing without one.
  ///@}

  /// \name Device lookups
  /// On purpose, lookups that compare a text ignoring case carry it over: for a device without the text, the text of the last
  /// visited device that has one is compared (the empty text before the first). Texts of 1,024 characters or more match
  /// nothing. Alias names are not carried over: a device without one is skipped. `comm` (the access mode) and package types are
  /// compared exactly.
  ///@{

  /// The first device whose code name equals `codeName`; without one, the first whose alias name does, except devices whose
  /// vendor is exactly "Quorel". On purpose: a null `codeName` counts as the empty text.
  DeviceInfo* GetDeviceWithCodeName(const char* codeName) const;

  /// The first device whose code name and vendor equal both texts, ignoring case (each is carried over independently).
  DeviceInfo* GetDeviceWithCodeNameandVendor(const char* codeName, const char* vendor) const;

  /// The first device whose identifier for the mode equals `id` in all 32 bits: "ISP" and "JTAG" compare that identifier,
  /// for "DUAL" either may match. On purpose: the mask is ignored, and 0 is an identifier like any other.
  DeviceInfo* GetDevice(const char* comm, unsigned int id) const;

  /// The same for other integer types (a plain literal included); null for a value that does not fit into 32 bits.
  template <class Id, plddb::internal::IfInteger<Id> = 0>
  DeviceInfo* GetDevice(const char* comm, Id id) const {
    if constexpr (sizeof(Id) > sizeof(unsigned int)) {
      if (static_cast<unsigned long long>(id) > UINT_MAX) return nullptr;
    }
    return GetDevice(comm, static_cast<unsigned int>(id));
  }
  /// Rejects NULL, which may be meant as a code name, and thereby every value of its type (mostly long).
  template <class Id, plddb::internal::IfMaybeNull<Id> = 0>
  DeviceInfo* GetDevice(const char* comm, Id id) const = delete;

  /// The first device of exactly this access mode whose name equals `name`.
  DeviceInfo* GetDeviceWithComm(const char* comm, const char* name) const;

  /// The first device of exactly this access mode whose code name equals `codeName`.
  /// On purpose: a null `codeName` counts as the empty text.
  DeviceInfo* GetDeviceWithCodeName(const char* comm, const char* codeName) const;

  /// The first device whose name equals `name` and that has a package of exactly this type.
  DeviceInfo* GetDeviceWithPackage(const char* packageType, const char* name) const;

  /// The first device whose code name equals `codeName` and that has a package of exactly this type.
  /// On purpose: a null `codeName` counts as the empty text.
  DeviceInfo* GetDevice(const char* packageType, const char* codeName) const;
  ///@}

 private:
  DeviceInfo* InsertAt(int index);
  void CopyDevices(const FamilyList& src);

  DeviceStrElement Name;
  DeviceStrElement AliasName;
  DeviceStrElement BypassInst;
  DeviceStrElement IDCodeInst;
  LObjList Devices;        // of DeviceInfo, not owned
  LObjList OperationList;  // of DeviceStrElement, owned
  int ISCRelease = 0;
  DeviceStrElement Extension;
  DeviceStrElement XFPFile;
  DeviceStrElement ICFFile;
  bool ReInitialize = false;
  bool IEEE1532Compliant = false;
  bool CDRFixed = false;
  bool Hidden = false;
  bool DebugMode = false;
  bool FPGALoaderSupport = false;
  bool STAPLSupport = false;
  bool FPGADevice = false;
  std::vector<std::string> ListProgrammingModeControl;
  std::vector<CBScanControl> ListBScanControl;
  int CFGPinCount = 0;
  std::string BitstreamModelTemplate;
};

/// Whether the family is marked hidden; false for null. The spelling belongs to the interface.
PLDDB_EXPORT bool IsHidenFamily(const FamilyList* family);
