#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "CControlEBR.h"
#include "CControlEBRList.h"
#include "CControlRegOne.h"
#include "CControlRegZero.h"
#include "CControlStatus.h"
#include "CControlVoltage.h"
#include "CMultiboot_fuses.h"
#include "CPersistent_fuse.h"
#include "DeviceStrElement.h"
#include "LObjList.h"
#include "LObject.h"
#include "PackageList.h"
#include "plddb_export.h"

class FamilyList;

/// One device of the database: its names, identifiers, register lengths, instructions, times, packages and parsed lists.
///
/// Rules of every accessor:
///  - Text:    a setter copies its argument; null keeps the old text, "" stores an empty one. The argument may be the record's
///             own text. A getter lends the record's own copy (null while unset): never free it; it is valid until that field
///             is next set or the record is destroyed.
///  - Numbers: stored as given, no range check. Default 0; the flag defaults to false.
///  - Lists:   a getter lends the record's own list, not a copy; it is valid as long as the record.
///  - Errors:  none are reported. std::bad_alloc leaves a field as it was; a text being parsed into a list keeps the entries
///             stored so far.
///  - Units:   stated per group. "Tool units": this library only stores the number; the programming tool gives it a meaning.
///  - Threads: no locks. Concurrent readers are safe while nobody writes.
/// Odd spellings (SetUSERCODEIntruction, ispDeviceID) belong to the interface: do not correct them.
///
/// A family creates its devices and lends them. Destroying a family leaves its devices alive: the owner of the tree releases
/// them (see DeviceListOwner.h).
class PLDDB_EXPORT DeviceInfo : public LObject {
 public:
  /// Every field has its default. Borrows `family`, which must outlive the record's use of it. In a tree,
  /// FamilyList::NewDevice, InsertNewDevice and AddNewDevice create devices.
  explicit DeviceInfo(FamilyList& family);

  /// A copy that shares only the family link with `src`; a null source gives an empty record without a family.
  ///  - On purpose: BackupARCHLength, BackupARCHRow, BackupELength and BackupERow take the source's *working* values, since
  ///    the geometry in use becomes the copy's own; the other backups are copied unchanged.
  ///  - On purpose: BitstreamColWidth takes the value that GetBitstreamColWidth returns, so an unset width becomes explicit.
  ///  - The scratch list of EBR entries is not copied.
  ///  - On purpose: 16-bit counts limit the copies of packages and system I/O entries (65,536 count as none).
  /// std::bad_alloc releases everything built so far.
  explicit DeviceInfo(DeviceInfo* src);

  /// Releases everything the record owns. It does not unlink the record from its family: FamilyList::DeleteDevice does that.
  ~DeviceInfo() override;

  // clang-format off

  /// \name Names and texts
  ///@{
  void SetName(const char* name);                      char* GetName() const;
  void SetCodeName(const char* codeName);              char* GetCodeName() const;
  void SetAliasName(const char* aliasName);            char* GetAliasName() const;       ///< Null if the device has no alias.
  void SetFamily(const char* family);                  char* GetFamily() const;          ///< The family's name as text; the link is GetFamilyObject.
  void SetVendor(const char* vendor);                  char* GetVendor() const;
  void SetAccess(const char* access);                  char* GetAccess() const;
  void SetArchitecture(const char* architecture);      char* GetArchitecture() const;
  void SetPON(const char* pon);                        char* GetPON() const;             ///< Part ordering number.
  ///@}

  /// \name Access mode and algorithms
  ///@{

  /// The access mode: "JTAG", "ISP" or "DUAL".
  /// On purpose: sets AlgOptions to the same text; if AlgOptions differs, set it afterwards. Either both fields get the text as
  /// it was at the call, or neither changes.
  void SetComm(const char* comm);                      char* GetComm() const;
  void SetAlgOptions(const char* options);             char* GetAlgOptions() const;
  void SetAlgTemplate(const char* algTemplate);        char* GetAlgTemplate() const;
  void SetISPAlgTemplate(const char* algTemplate);     char* GetISPAlgTemplate() const;
  void SetSoftIPFile(const char* file);                char* GetSoftIPFile() const;
  void SetEBRFile(const char* file);                   char* GetEBRFile() const;
  ///@}

  /// \name Pins and fuse map (tool units)
  ///@{
  void SetPin(unsigned short pins);                    unsigned short GetPin() const;    ///< Number of pins.
  void SetBitMapTransformation(unsigned short kind);   unsigned short GetBitMapTransformation() const;
  ///@}

  /// \name Identification (raw 32-bit patterns; a mask bit of 1 means "compare this bit")
  ///@{
  void SetispDeviceID(unsigned int id);                unsigned int GetispDeviceID() const;
  void SetjtagDeviceID(unsigned int id);               unsigned int GetjtagDeviceID() const;        ///< JTAG IDCODE.
  void SetjtagDeviceIDBackup(unsigned int id);         unsigned int GetjtagDeviceIDBackup() const;
  void SetDeviceIDMask(unsigned int mask);             unsigned int GetDeviceIDMask() const;        ///< For the tool; no lookup reads it.
  void SetDeviceIDMaskBackup(unsigned int mask);       unsigned int GetDeviceIDMaskBackup() const;
  void SetDeviceIDScanMask(unsigned int mask);         unsigned int GetDeviceIDScanMask() const;    ///< Lookups use this one.
  void SetIDLength(unsigned short bits);               unsigned short GetIDLength() const;          ///< Bits.
  ///@}

  /// \name Geometry of the fuse array and register lengths (lengths in bits, rows counted)
  ///@{
  void SetARCHLength(unsigned int bits);               unsigned int GetARCHLength() const;
  void SetSEDLength(unsigned short bits);              unsigned short GetSEDLength() const;
  void SetELength(unsigned int bits);                  unsigned int GetELength() const;
  void SetERow(unsigned short rows);                   unsigned short GetERow() const;
  void SetIRLength(unsigned short bits);               unsigned short GetIRLength() const;          ///< Instruction register.
  void SetAddressLength(unsigned int bits);            unsigned int GetAddressLength() const;
  void SetDataLength(unsigned int bits);               unsigned int GetDataLength() const;
  void SetPhysicalUESLength(unsigned int bits);        unsigned int GetPhysicalUESLength() const;   ///< User electronic signature.
  void SetispLogicalUESLength(unsigned int bits);      unsigned int GetispLogicalUESLength() const;
  void SetjtagLogicalUESLength(unsigned int bits);     unsigned int GetjtagLogicalUESLength() const;
  void SetDisableDeviceSTAPLSupport(bool disable);     bool GetDisableDeviceSTAPLSupport() const;
  void SetFuseNumber(unsigned int fuses);              unsigned int GetFuseNumber() const;          ///< Number of fuses.
  ///@}

  /// \name Times (tool units)
  ///@{
  void SetProgramTime(unsigned short time);            unsigned short GetProgramTime() const;
  void SetEraseTime(unsigned int time);                unsigned int GetEraseTime() const;
  void SetVerifyTime(unsigned short time);             unsigned short GetVerifyTime() const;
  ///@}

  /// \name User signature masks, boundary scan, packages
  ///@{
  void SetispUESMask(const char* mask);                char* GetispUESMask() const;
  void SetjtagUESMask(const char* mask);               char* GetjtagUESMask() const;
  void SetBSCANLength(unsigned int bits);              unsigned int GetBSCANLength() const;         ///< Boundary-scan register, bits.
  /// Lends the record's own package list, never null. Fill it through its own members. It is valid as long as the record.
  PackageList* GetDevicePackage() const;
  ///@}

  /// \name Instructions (codes: raw bit patterns; lengths in bits)
  ///@{
  void SetInstructionBypassPattern(const char* bits);  char* GetInstructionBypassPattern() const;
  void SetIDInstruction(unsigned int code);            unsigned int GetIDInstruction() const;
  void SetARCHRow(unsigned short rows);                unsigned short GetARCHRow() const;           ///< Rows; belongs to the geometry.
  void SetUSERCODEIntruction(unsigned int code);       unsigned int GetUSERCODEInstruction() const; ///< The setter's spelling belongs to the interface.
  void SetInstructionBypass(unsigned int code);        unsigned int GetInstructionBypass() const;
  void SetBypassLength(unsigned short bits);           unsigned short GetBypassLength() const;
  void SetBypassValue(unsigned int value);             unsigned int GetBypassValue() const;
  ///@}

  /// \name Files and the turbo algorithm
  ///@{
  void SetBSDLFile(const char* file);                  char* GetBSDLFile() const;
  void SetBSDLFileTime(const char* time);              char* GetBSDLFileTime() const;
  void SetTurboAlgTemplate(const char* algTemplate);   char* GetTurboAlgTemplate() const;
  void SetTurboAlgIndex(unsigned char index);          unsigned char GetTurboAlgIndex() const;
  ///@}

  /// \name System I/O entries: texts in order, 0-based positions
  ///@{

  /// Replaces the entries by the quoted items of `text`: `"LVCMOS33", "LVTTL"`. Text outside the quotes is ignored, items are
  /// trimmed; the first empty pair of quotes or an unclosed quote ends the list. A null text is ignored.
  /// On purpose: an empty text does not clear the list; a text without quotes does.
  void SetSysIOList(const char* text);
  void AddSysIOList(const char* entry);  ///< Appends one entry exactly as given; a null or empty entry adds nothing.
  char* GetSysIO(int i) const;           ///< Lends the entry's text, valid until the list changes; null outside the list.
  /// On purpose: 16 bits wide, so 65,536 entries count as none.
  unsigned short GetSysIOCount() const;
  ///@}

  /// \name Backups of working values that the tool may change (in the units of the working value)
  ///@{
  void SetBackupAddressLength(unsigned int bits);      unsigned int GetBackupAddressLength() const;
  void SetBackupFuseNumber(unsigned int fuses);        unsigned int GetBackupFuseNumber() const;
  void SetBackupDataLength(unsigned int bits);         unsigned int GetBackupDataLength() const;
  ///@}

  /// \name Bitstream frame layout (bytes; frames counted)
  ///@{
  void SetDataFrames(unsigned int frames);             unsigned int GetDataFrames() const;
  void SetFrameBytes(unsigned int bytes);              unsigned int GetFrameBytes() const;
  void SetHeaderBytes(unsigned int bytes);             unsigned int GetHeaderBytes() const;
  void SetDataFrameHeader(unsigned int header);        unsigned int GetDataFrameHeader() const;     ///< Tool units.
  void SetStopBytes(unsigned int bytes);               unsigned int GetStopBytes() const;
  void SetUESBytes(unsigned int bytes);                unsigned int GetUESBytes() const;
  void SetTrailerBytes(unsigned int bytes);            unsigned int GetTrailerBytes() const;
  void SetEndBytes(unsigned int bytes);                unsigned int GetEndBytes() const;
  /// On purpose: while the width is 0, the getter returns the DataLength instead.
  void SetBitstreamColWidth(int bits);                 int GetBitstreamColWidth() const;            ///< Bits, like DataLength.
  void SetSyncExtDoneAddress(int address);             int GetSyncExtDoneAddress() const;           ///< Tool units.
  void SetSyncExtDoneColumn(int column);               int GetSyncExtDoneColumn() const;            ///< Tool units.
  void SetNumberOfExternalASC(int count);              int GetNumberOfExternalASC() const;
  ///@}

  /// \name Multiboot fuses (addresses and columns of the configuration fuse map)
  /// The overloads for a text append its numbers, which are separated by any of ; blank tab newline: "16; 32 48". Numbers are
  /// read as in the control lists below; a null text is ignored. The overloads for a list replace the list, even by an empty
  /// one. The list getters lend the list itself; you may change it in place.
  ///@{

  /// On purpose: a text of 1,024 characters or more is ignored as a whole.
  void SetMultibootCfgAddr(const char* numbers);
  void SetMultibootCfgAddr(std::vector<int> addresses);
  void SetMultibootCfgAddr(std::initializer_list<int> addresses) { SetMultibootCfgAddr(std::vector<int>(addresses)); }
  std::vector<int>& GetMultibootCfgAddr();
  /// On purpose: a text of 64 characters or more is ignored as a whole.
  void SetMultibootAutoAdd(const char* numbers);
  void SetMultibootAutoAdd(std::vector<int> addresses);
  void SetMultibootAutoAdd(std::initializer_list<int> addresses) { SetMultibootAutoAdd(std::vector<int>(addresses)); }
  std::vector<int>& GetMultibootAutoAdd();
  void SetMultibootChipSelColumn(int column);          int GetMultibootChipSelColumn() const;
  void SetMultibootSourceSelColumn(int column);        int GetMultibootSourceSelColumn() const;
  ///@}

  /// \name The owning family
  ///@{
  void SetFamilyObject(FamilyList& family);            FamilyList* GetFamilyObject() const;  ///< Borrows `family`; lends it back.
  ///@}

  /// \name Backups of the geometry (in the units of the working value)
  ///@{
  void SetBackupARCHLength(unsigned int bits);         unsigned int GetBackupARCHLength() const;
  void SetBackupARCHRow(unsigned short rows);          unsigned short GetBackupARCHRow() const;
  void SetBackupELength(unsigned int bits);            unsigned int GetBackupELength() const;
  void SetBackupERow(unsigned short rows);             unsigned short GetBackupERow() const;
  ///@}

  /// \name Control lists, built column by column from semicolon item lists
  /// A text such as "REG;100;200;" is a label and then items, each closed by a semicolon and trimmed; the first empty segment
  /// ends the text. The creating setter of a list appends one record per item; each filling setter then writes item k into
  /// record k (records beyond the last item keep their value, items beyond the last record are ignored). Numbers are read in
  /// base 10 as the low 32 bits of a 64-bit number (-1 beyond 64 bits, or 0 for a negative one); an item without leading digits
  /// is 0. A null text changes nothing.
  /// The whole-list setters replace the list; an empty argument keeps the old one.
  ///@{
  void SetListControlReg0Frequency(const char* text);    ///< Creates. On purpose: a second call lengthens the list.
  void SetListControlReg0MasterClock(const char* text);
  void SetListControlReg0ClockDivider(const char* text);
  void SetlistControlRegZero(std::vector<CControlRegZero> list);
  const std::vector<CControlRegZero>& GetlistControlRegZero() const;

  void SetListControlReg1BitName(const char* text);      ///< Creates. On purpose: a second call lengthens the list.
  void SetListControlReg1Address(const char* text);
  void SetListControlReg1Column(const char* text);
  void SetlistControlRegOne(std::vector<CControlRegOne> list);
  const std::vector<CControlRegOne>& GetlistControlRegOne() const;

  void SetListPersistent_fuseAddress(const char* text);  ///< Creates. On purpose: empties the list first, even for a text without items.
  void SetListPersistent_fuseColumn(const char* text);
  void SetlistPersistent_fuse(std::vector<CPersistent_fuse> list);
  const std::vector<CPersistent_fuse>& GetlistPersistent_fuse() const;

  void SetListControlStatusBitName(const char* text);    ///< Creates. On purpose: a second call lengthens the list.
  void SetListControlStatusControl(const char* text);
  void SetListControlStatusIndex(const char* text);
  void SetlistControlStatus(std::vector<CControlStatus> list);
  const std::vector<CControlStatus>& GetlistControlStatus() const;
  ///@}

  /// \name Embedded memory blocks (EBR)
  /// Each block is built on a scratch list: BitName, then Column, then Address (which reads the columns), then Name, which
  /// stores a copy of the scratch list as a finished block. A null text changes nothing; the last three do nothing while the
  /// scratch list is empty. A range is "first to last", cut at the first "to"; without one, `first` is 0 and `last` is read
  /// after the first character.
  ///@{

  /// Replaces the scratch list by `count` (a decimal text) entries named 1, 2, ...; a count that is not positive empties it.
  /// std::bad_alloc leaves the scratch list as it was. On purpose: more than 16,777,216 entries throw std::bad_alloc at once,
  /// however much memory there is. Otherwise a text of ten characters could ask for 120 GB.
  void SetListControlEBRBitName(const char* count);
  /// Numbers the columns in rows of last - first + 1 columns, 8 per entry: "0 to 31" gives 0, 8, 16, 24, 0, 8, ... Entries that
  /// do not fill a row keep their column; a width below 8 changes nothing.
  void SetListControlEBRColumn(const char* range);
  /// Gives the first row the address `first`. Whenever the column is again that of the first entry, the address changes by
  /// one, up or down in the direction of the range.
  void SetListControlEBRAddress(const char* range);
  void SetListControlEBRName(const char* name);  ///< Stores the block under the whole text; names may repeat.
  void SetlistControlEBR(std::vector<CControlEBRList> list);  ///< An empty argument keeps the old list.
  const std::vector<CControlEBRList>& GetlistControlEBR() const;
  ///@}

  /// \name Voltages and address ranges
  ///@{
  void SetControlVoltageVCCCore(const char* text);  ///< Appends a record with the whole text; null is ignored.
  /// On purpose: writes into the first record, however many there are. Null, or an empty list: nothing happens.
  void SetControlVoltageVCCJ(const char* text);
  /// On purpose: writes into the first record, however many there are. Null, or an empty list: nothing happens.
  void SetControlVoltagePinList(const char* text);
  void SetControlVoltage(std::vector<CControlVoltage> list);  ///< An empty argument keeps the old list.
  const std::vector<CControlVoltage>& GetControlVoltage() const;

  /// Replaces the ranges by the items of a semicolon item list; they are kept as text. A null text is ignored.
  void SetlistAddressRange(const char* text);
  const std::vector<std::string>& GetlistAddressRange() const;
  ///@}

  // clang-format on

  /// Restores the eight working values from their backups, PON from CodeName, and each package's PON from its BackupPON
  /// (if these texts are set). Backups that were never set are 0, and are restored anyway.
  /// On purpose: jtagDeviceID is not restored.
  void RestoreDeviceBackupValue();

  /// Switches the device to the CDR variant `pon` if its family is CDRFixed and `pon` contains "H-" or ends in "H":
  /// DeviceIDMask becomes all ones, each package with an AliasPON takes it as its PON, and the device's PON becomes `pon`.
  /// Otherwise, and without a family, nothing happens. `pon` may be a text of this device.
  void ChangeDeviceCDRValue(const char* pon);

 private:
  DeviceInfo();  // without a family; the copying constructor starts from it

  // The order of these members is the order of destruction, from the last to the first.
  std::vector<CControlRegZero> listControlRegZero;
  std::vector<CControlRegOne> listControlRegOne;
  std::vector<CPersistent_fuse> listPersistent_fuse;
  std::vector<CControlEBR> listControlEBREntry;  // scratch list of the EBR text setters
  std::vector<CControlEBRList> listControlEBR;
  std::vector<CControlStatus> listControlStatus;
  std::vector<CControlVoltage> ControlVoltage;
  std::vector<std::string> listAddressRange;
  DeviceStrElement Name;
  DeviceStrElement CodeName;
  DeviceStrElement AliasName;
  DeviceStrElement Family;
  DeviceStrElement Vendor;
  DeviceStrElement Access;
  DeviceStrElement Architecture;
  DeviceStrElement PON;
  DeviceStrElement Comm;
  DeviceStrElement AlgOptions;
  DeviceStrElement AlgTemplate;
  DeviceStrElement ISPAlgTemplate;
  DeviceStrElement Reserved;  // no accessor, never copied
  DeviceStrElement SoftIPFile;
  DeviceStrElement EBRFile;
  unsigned short Pin = 0;
  unsigned short BitMapTransformation = 0;
  unsigned int ispDeviceID = 0;
  unsigned int jtagDeviceID = 0;
  unsigned int jtagDeviceIDBackup = 0;
  unsigned int DeviceIDMask = 0;
  unsigned int DeviceIDMaskBackup = 0;
  unsigned int DeviceIDScanMask = 0;
  unsigned short IDLength = 0;
  unsigned int ARCHLength = 0;
  unsigned short SEDLength = 0;
  unsigned int ELength = 0;
  unsigned short ERow = 0;
  unsigned short IRLength = 0;
  unsigned int AddressLength = 0;
  unsigned int DataLength = 0;
  unsigned int PhysicalUESLength = 0;
  unsigned int ispLogicalUESLength = 0;
  unsigned int jtagLogicalUESLength = 0;
  bool DisableDeviceSTAPLSupport = false;
  unsigned int FuseNumber = 0;
  unsigned short ProgramTime = 0;
  unsigned int EraseTime = 0;
  unsigned short VerifyTime = 0;
  DeviceStrElement ispUESMask;
  DeviceStrElement jtagUESMask;
  unsigned int BSCANLength = 0;
  PackageList DevicePackage;
  DeviceStrElement InstructionBypassPattern;
  unsigned int IDInstruction = 0;
  unsigned short ARCHRow = 0;
  unsigned int USERCODEInstruction = 0;
  unsigned int InstructionBypass = 0;
  unsigned short BypassLength = 0;
  unsigned int BypassValue = 0;
  DeviceStrElement BSDLFile;
  DeviceStrElement BSDLFileTime;
  DeviceStrElement TurboAlgTemplate;
  unsigned char TurboAlgIndex = 0;
  LObjList SysIO;  // of DeviceStrElement, owned
  unsigned int BackupAddressLength = 0;
  unsigned int BackupFuseNumber = 0;
  unsigned int BackupDataLength = 0;
  unsigned int DataFrames = 0;
  unsigned int FrameBytes = 0;
  unsigned int HeaderBytes = 0;
  unsigned int DataFrameHeader = 0;
  unsigned int StopBytes = 0;
  unsigned int UESBytes = 0;
  unsigned int TrailerBytes = 0;
  unsigned int EndBytes = 0;
  int BitstreamColWidth = 0;
  int SyncExtDoneAddress = 0;
  int SyncExtDoneColumn = 0;
  int NumberOfExternalASC = 0;
  CMultiboot_fuses Multiboot_fuses;
  FamilyList* FamilyObject = nullptr;  // borrowed
  unsigned int BackupARCHLength = 0;
  unsigned short BackupARCHRow = 0;
  unsigned int BackupELength = 0;
  unsigned short BackupERow = 0;
};
