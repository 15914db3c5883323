// The walk over the elements of a description file. The tables in fields.cpp list the attributes of an element; the tables of
// children here list the elements in it.

#include "load.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "descriptions/element_reader.h"
#include "descriptions/list_columns.h"
#include "descriptions/xml_text.h"

namespace plddb::descriptions {
namespace {

/// The most entries in all EBR blocks of a file: a few bytes of the file could ask for a lot of memory.
constexpr unsigned int kMostEbrEntries = 1000000;

/// The most devices and elements of a file: a few bytes of the file ask for a hundred times as much memory.
constexpr std::size_t kMostDevices = 250000;
constexpr std::size_t kMostElements = 1000000;

/// The most elements of a kind that the library counts in 16 bits.
constexpr std::size_t kMostCounted = UINT16_MAX;

/// A device, and the records that its child elements give one by one. They are collected for the whole-list setters: only these
/// can set every field of a record.
struct DeviceElement {
  explicit DeviceElement(DeviceInfo& owner) : device(owner) {}

  DeviceInfo& device;
  std::vector<CControlRegZero> controlRegZero;
  std::vector<CControlRegOne> controlRegOne;
  std::vector<CPersistent_fuse> persistentFuses;
  std::vector<CControlStatus> controlStatus;
  std::vector<CControlVoltage> voltages;
  std::vector<std::pair<std::size_t, std::vector<CControlEBR>>> ebrEntries;  // position of a block, its entries
};

class Loader {
 public:
  Loader(std::string_view text, Faults& faults) : reader_(text, faults), faults_(faults) {}

  void Load(DeviceList& database, bool withComments);
  Outline TakeOutline() { return reader_.TakeOutline(); }

 private:
  /// An element that a `Parent` may contain.
  template <class Parent>
  struct Child {
    std::string_view name;
    void (Loader::*read)(Parent& parent, pugi::xml_node node);
    std::size_t most = SIZE_MAX;
  };

  void ReadDatabase(DeviceList& database, pugi::xml_node node);
  void ReadFamily(DeviceList& database, pugi::xml_node node);
  void ReadOperation(FamilyList& family, pugi::xml_node node);
  void ReadProgrammingMode(FamilyList& family, pugi::xml_node node);
  void ReadBScanControl(FamilyList& family, pugi::xml_node node);
  void ReadControl(CBScanControl& record, pugi::xml_node node);
  void ReadDevice(FamilyList& family, pugi::xml_node node);
  void ReadPackage(DeviceElement& parent, pugi::xml_node node);
  void ReadAdapter(Package& package, pugi::xml_node node);
  void ReadSysIO(DeviceElement& parent, pugi::xml_node node);
  void ReadMultibootCfgAddr(DeviceElement& parent, pugi::xml_node node);
  void ReadMultibootAutoAdd(DeviceElement& parent, pugi::xml_node node);
  void ReadEbr(DeviceElement& parent, pugi::xml_node node);
  void ReadEbrEntry(std::vector<CControlEBR>& entries, pugi::xml_node node);
  template <auto list>
  void ReadRecord(DeviceElement& parent, pugi::xml_node node);

  bool IsOneDeviceTooMany(pugi::xml_node node);
  bool IsSound(const EbrBlock& block, bool isNumbered, bool isListed, pugi::xml_node node);

  template <class Parent, std::size_t count>
  void ReadChildren(Parent& parent, pugi::xml_node node, const Child<Parent> (&children)[count]);
  template <class Record>
  void ReadLeaf(Record& record, pugi::xml_node node);

  ElementReader reader_;
  Faults& faults_;
  unsigned int ebrEntries_ = 0;
  std::size_t devices_ = 0;
};

/// `node`, or the next node that is not a comment.
pugi::xml_node NoComment(pugi::xml_node node) {
  while (node.type() == pugi::node_comment) node = node.next_sibling();
  return node;
}

pugi::xml_node FirstChild(pugi::xml_node node) { return NoComment(node.first_child()); }
pugi::xml_node NextSibling(pugi::xml_node node) { return NoComment(node.next_sibling()); }

/// Appends `records` to those that the texts of the device's attributes created.
template <class Record>
void AppendRecords(DeviceInfo& device, const std::vector<Record>& made, std::vector<Record>& records,
                   void (DeviceInfo::*set)(std::vector<Record>)) {
  if (records.empty()) return;
  records.insert(records.begin(), made.begin(), made.end());
  (device.*set)(std::move(records));
}

void SetEbrEntries(DeviceElement& element) {
  if (element.ebrEntries.empty()) return;
  auto blocks = element.device.GetlistControlEBR();
  for (auto& [position, entries] : element.ebrEntries) blocks[position].Entries = std::move(entries);
  element.device.SetlistControlEBR(std::move(blocks));
}

void SetRecords(DeviceElement& element) {
  DeviceInfo& device = element.device;
  AppendRecords(device, device.GetlistControlRegZero(), element.controlRegZero, &DeviceInfo::SetlistControlRegZero);
  AppendRecords(device, device.GetlistControlRegOne(), element.controlRegOne, &DeviceInfo::SetlistControlRegOne);
  AppendRecords(device, device.GetlistPersistent_fuse(), element.persistentFuses, &DeviceInfo::SetlistPersistent_fuse);
  AppendRecords(device, device.GetlistControlStatus(), element.controlStatus, &DeviceInfo::SetlistControlStatus);
  AppendRecords(device, device.GetControlVoltage(), element.voltages, &DeviceInfo::SetControlVoltage);
  SetEbrEntries(element);
}

void Loader::Load(DeviceList& database, bool withComments) {
  static constexpr Child<DeviceList> kRoot[] = {{"DeviceDatabase", &Loader::ReadDatabase, 1}};
  if (!reader_.Parse(withComments)) return;
  const pugi::xml_node document = reader_.Document();
  ReadChildren(database, document, kRoot);
  if (!FirstChild(document)) faults_.Add(0, "there is nothing in the file: expected a DeviceDatabase element");
}

void Loader::ReadDatabase(DeviceList& database, pugi::xml_node node) {
  static constexpr Child<DeviceList> kChildren[] = {{"Family", &Loader::ReadFamily, kMostCounted}};
  reader_.ReadFields(database, node);
  ReadChildren(database, node, kChildren);
}

void Loader::ReadFamily(DeviceList& database, pugi::xml_node node) {
  static constexpr Child<FamilyList> kChildren[] = {
      {"Device", &Loader::ReadDevice, kMostCounted},
      {"Operation", &Loader::ReadOperation, kMostCounted},
      {"ProgrammingMode", &Loader::ReadProgrammingMode},
      {"BScanControl", &Loader::ReadBScanControl},
  };
  FamilyList& family = *database.NewFamily();
  reader_.ReadFields(family, node);
  ReadChildren(family, node, kChildren);
}

void Loader::ReadOperation(FamilyList& family, pugi::xml_node node) {
  Entry operation;
  ReadLeaf(operation, node);
  family.AddOperationList(operation.Name);
}

void Loader::ReadProgrammingMode(FamilyList& family, pugi::xml_node node) {
  Item mode;
  ReadLeaf(mode, node);
  family.GetListProgrammingModeControl().emplace_back(mode.Name);
}

void Loader::ReadBScanControl(FamilyList& family, pugi::xml_node node) {
  static constexpr Child<CBScanControl> kChildren[] = {{"Control", &Loader::ReadControl}};
  BScanRecord record;
  reader_.ReadFields(record, node);
  family.SetListBScanControl(record.Controls);
  CBScanControl& made = family.GetListBScanControl().back();
  made.DefaultValue = record.DefaultValue;
  ReadChildren(made, node, kChildren);
}

void Loader::ReadControl(CBScanControl& record, pugi::xml_node node) {
  Item control;
  ReadLeaf(control, node);
  record.Controls.emplace_back(control.Name);
}

void Loader::ReadDevice(FamilyList& family, pugi::xml_node node) {
  static constexpr Child<DeviceElement> kChildren[] = {
      {"Package", &Loader::ReadPackage, kMostCounted},
      {"SysIO", &Loader::ReadSysIO, kMostCounted},
      {"ControlRegZero", &Loader::ReadRecord<&DeviceElement::controlRegZero>},
      {"ControlRegOne", &Loader::ReadRecord<&DeviceElement::controlRegOne>},
      {"Persistent_fuse", &Loader::ReadRecord<&DeviceElement::persistentFuses>},
      {"ControlStatus", &Loader::ReadRecord<&DeviceElement::controlStatus>},
      {"ControlVoltage", &Loader::ReadRecord<&DeviceElement::voltages>},
      {"EBR", &Loader::ReadEbr},
      {"MultibootCfgAddr", &Loader::ReadMultibootCfgAddr},
      {"MultibootAutoAdd", &Loader::ReadMultibootAutoAdd},
  };
  if (IsOneDeviceTooMany(node)) return;
  DeviceInfo& device = *family.NewDevice();
  reader_.ReadFields(device, node);
  if (device.GetFamily() == nullptr) device.SetFamily(family.GetName());
  DeviceElement element(device);
  ReadChildren(element, node, kChildren);
  SetRecords(element);
}

/// Reports the first such device.
bool Loader::IsOneDeviceTooMany(pugi::xml_node node) {
  if (++devices_ <= kMostDevices) return false;
  if (devices_ == kMostDevices + 1) {
    reader_.AddFault(node, "the file has more than " + std::to_string(kMostDevices) + " devices: split it");
  }
  return true;
}

template <auto list>
void Loader::ReadRecord(DeviceElement& parent, pugi::xml_node node) {
  ReadLeaf((parent.*list).emplace_back(), node);
}

void Loader::ReadPackage(DeviceElement& parent, pugi::xml_node node) {
  static constexpr Child<Package> kChildren[] = {{"Adapter", &Loader::ReadAdapter}};
  Package& package = *parent.device.GetDevicePackage()->NewPackage();
  reader_.ReadFields(package, node);
  ReadChildren(package, node, kChildren);
}

void Loader::ReadAdapter(Package& package, pugi::xml_node node) {
  AdapterNames names;
  ReadLeaf(names, node);
  package.AddAdapter(names.VendorName, names.AdapterName);
}

void Loader::ReadSysIO(DeviceElement& parent, pugi::xml_node node) {
  Entry entry;
  ReadLeaf(entry, node);
  parent.device.AddSysIOList(entry.Name);
}

void Loader::ReadMultibootCfgAddr(DeviceElement& parent, pugi::xml_node node) {
  MultibootNumber address;
  ReadLeaf(address, node);
  parent.device.GetMultibootCfgAddr().push_back(address.Value);
}

void Loader::ReadMultibootAutoAdd(DeviceElement& parent, pugi::xml_node node) {
  MultibootNumber address;
  ReadLeaf(address, node);
  parent.device.GetMultibootAutoAdd().push_back(address.Value);
}

/// The attributes of a block number its entries, or the entries are listed one by one; these are added after all blocks exist.
void Loader::ReadEbr(DeviceElement& parent, pugi::xml_node node) {
  static constexpr Child<std::vector<CControlEBR>> kChildren[] = {{"Entry", &Loader::ReadEbrEntry}};
  EbrBlock block;
  std::vector<CControlEBR> entries;
  reader_.ReadFields(block, node);
  ReadChildren(entries, node, kChildren);
  const bool isNumbered = node.attribute(CreatorOf("Entry").data());
  ebrEntries_ += block.BitName;
  if (!IsSound(block, isNumbered, !entries.empty(), node)) return;
  DeviceInfo& device = parent.device;
  device.SetListControlEBRBitName(std::to_string(isNumbered ? block.BitName : 1).c_str());
  device.SetListControlEBRColumn(block.Column);
  device.SetListControlEBRAddress(block.Address);
  device.SetListControlEBRName(block.Name);
  if (!isNumbered) parent.ebrEntries.emplace_back(device.GetlistControlEBR().size() - 1, std::move(entries));
}

void Loader::ReadEbrEntry(std::vector<CControlEBR>& entries, pugi::xml_node node) { ReadLeaf(entries.emplace_back(), node); }

/// Whether the block can be created; otherwise reports a fault.
bool Loader::IsSound(const EbrBlock& block, bool isNumbered, bool isListed, pugi::xml_node node) {
  const bool needsNumber = block.Column != nullptr || block.Address != nullptr;
  if (isNumbered && isListed) {
    reader_.AddFault(node, "EBR has both BitName and Entry elements: expected one of them");
  } else if (needsNumber && !isNumbered) {
    reader_.AddFault(node, "EBR with Column or Address needs BitName, the number of its entries");
  } else if (ebrEntries_ > kMostEbrEntries) {
    reader_.AddFault(node, "the EBR blocks up to here have more than " + std::to_string(kMostEbrEntries) + " entries");
  } else {
    return true;
  }
  return false;
}

template <class Parent, std::size_t count>
void Loader::ReadChildren(Parent& parent, pugi::xml_node node, const Child<Parent> (&children)[count]) {
  std::array<std::size_t, count> seen{};
  for (pugi::xml_node child = FirstChild(node); child && !faults_.Full(); child = NextSibling(child)) {
    const auto hasItsName = [name = std::string_view(child.name())](const Child<Parent>& row) { return row.name == name; };
    const auto row = std::find_if(std::begin(children), std::end(children), hasItsName);
    if (row == std::end(children)) {
      std::vector<std::string_view> known;
      for (const auto& other : children) known.push_back(other.name);
      reader_.Unexpected(child, known);
    } else if (++seen[static_cast<std::size_t>(row - children)] > row->most) {
      reader_.AddFault(child,
                       "too many " + std::string(row->name) + " elements: expected " + std::to_string(row->most) + " at most");
    } else {
      (this->*row->read)(parent, child);
    }
  }
}

/// Reads an element without child elements.
template <class Record>
void Loader::ReadLeaf(Record& record, pugi::xml_node node) {
  reader_.ReadFields(record, node);
  for (pugi::xml_node child = FirstChild(node); child && !faults_.Full(); child = NextSibling(child)) {
    reader_.Unexpected(child, {});
  }
}

/// Whether the text has few enough elements and comments to be parsed; otherwise reports a fault. Elements in comments count.
bool CheckElementCount(std::string_view text, Faults& faults) {
  std::size_t count = 0;
  for (auto at = text.find('<'); at != text.npos; at = text.find('<', at + 1)) {
    const bool isCounted = at + 1 < text.size() && std::string_view("/?").find(text[at + 1]) == std::string_view::npos;
    if (!isCounted || ++count <= kMostElements) continue;
    faults.Add(at, "the file has more than " + std::to_string(kMostElements) + " elements: split it");
    return false;
  }
  return true;
}

}  // namespace

void Load(std::string_view text, DeviceList& database, Faults& faults, Outline* outline) {
  if (!CheckCharacters(text, faults) || !CheckElementCount(text, faults)) return;
  Loader loader(text, faults);
  loader.Load(database, outline != nullptr);
  if (outline != nullptr && faults.Empty()) *outline = loader.TakeOutline();
}

}  // namespace plddb::descriptions
