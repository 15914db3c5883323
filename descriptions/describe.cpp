#include "describe.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "descriptions/TextForms.h"
#include "descriptions/fields.h"
#include "descriptions/list_columns.h"

namespace plddb {
namespace descriptions {
namespace {

bool AreEqual(const Value& a, const Value& b) {
  if (a.text == nullptr || b.text == nullptr) return a.text == b.text && a.number == b.number;
  return std::strcmp(a.text, b.text) == 0;
}

std::string ToText(const Field& field, const Value& value) {
  if (field.kind == Kind::kFlag) return value.number != 0 ? "true" : "false";
  if (value.text != nullptr) return value.text;
  return field.hexDigits != 0 ? Hex(static_cast<unsigned int>(value.number), field.hexDigits) : std::to_string(value.number);
}

void AddAttribute(Element& element, std::string_view name, std::string value, Texts& texts) {
  element.attributes.push_back({name, texts.emplace_back(std::move(value)), 0, 0});
}

/// The value that loading gives to an attribute that is left out.
Value ValueWhenLeftOut(const FieldTable& fields, std::size_t i, const void* record, const void* untouched) {
  return fields[i].need == Need::kBackup ? fields[i - 1].get(record) : fields[i].get(untouched);
}

/// Adds the fields of `record` that differ from `untouched`, a record of defaults, and the required ones.
void AddFields(Element& element, const FieldTable& fields, const void* record, const void* untouched, Texts& texts) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const Field& field = fields[i];
    if (field.get == nullptr) continue;  // a column of a list, whose records are elements
    Value value = field.get(record);
    const bool isNeeded = field.need == Need::kRequired || field.need == Need::kNotEmpty;
    if (isNeeded && field.kind == Kind::kText && value.text == nullptr) value.text = "";
    if (!isNeeded && AreEqual(value, ValueWhenLeftOut(fields, i, record, untouched))) continue;
    if (value.text == nullptr && field.kind == Kind::kText) continue;
    AddAttribute(element, field.name, ToText(field, value), texts);
  }
}

template <class Record>
Element ToElement(std::string_view name, const Record& record, Texts& texts, const Record& untouched = Record()) {
  Element element = {name, 0, 0, {}, {}};
  AddFields(element, FieldsOf<Record>(), &record, &untouched, texts);
  return element;
}

template <class Record>
void AddChildren(Element& parent, std::string_view name, const std::vector<Record>& records, Texts& texts) {
  for (const Record& record : records) parent.children.push_back(ToElement(name, record, texts));
}

void AddNumbers(Element& parent, std::string_view name, const std::vector<int>& numbers, Texts& texts) {
  for (const int number : numbers) parent.children.push_back(ToElement(name, MultibootNumber{number}, texts));
}

void AddItems(Element& parent, std::string_view name, const std::vector<std::string>& items, Texts& texts) {
  for (const std::string& item : items) parent.children.push_back(ToElement(name, Item{item.c_str()}, texts));
}

Element ToPackage(const Package& package, Texts& texts) {
  const Package untouched;
  Element element = ToElement("Package", package, texts, untouched);
  for (int i = 0; const Adapter* const adapter = package.GetAdapter(i); ++i) {
    element.children.push_back(ToElement("Adapter", AdapterNames{adapter->GetVendorName(), adapter->GetAdapterName()}, texts));
  }
  return element;
}

/// The entries of a list that a quoted text fills. Only such a text can give an empty entry: so all entries up to the last
/// empty one are written as that text again, and the others as elements.
class QuotedEntries {
 public:
  template <class Record>
  QuotedEntries(std::string_view name, const Record& record, char* (Record::*entryAt)(int) const) : name_(name) {
    for (int i = 0; const char* const entry = (record.*entryAt)(i); ++i) {
      entries_.push_back(entry);
      if (*entry == '\0') quoted_ = entries_.size();
    }
  }

  void AddText(Element& element, Texts& texts) const {
    if (quoted_ == 0) return;
    std::string text;
    for (std::size_t i = 0; i < quoted_; ++i) {
      text += i == 0 ? "\"" : ", \"";
      text += entries_[i].empty() ? " " : entries_[i];
      text += '"';
    }
    AddAttribute(element, CreatorOf(name_), std::move(text), texts);
  }

  void AddElements(Element& element, Texts& texts) const {
    for (std::size_t i = quoted_; i < entries_.size(); ++i) {
      element.children.push_back(ToElement(name_, Entry{entries_[i].data()}, texts));
    }
  }

 private:
  std::string_view name_;                  // of the elements
  std::vector<std::string_view> entries_;  // each ends with a NUL
  std::size_t quoted_ = 0;
};

/// ";A0-A7;B0-B7;": the only list that a file always writes as a text.
std::string SemicolonList(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) text += ";" + (item.empty() ? " " : item);
  return text + ";";
}

void AddLists(Element& element, DeviceInfo& device, Texts& texts) {
  AddChildren(element, "ControlRegZero", device.GetlistControlRegZero(), texts);
  AddChildren(element, "ControlRegOne", device.GetlistControlRegOne(), texts);
  AddChildren(element, "Persistent_fuse", device.GetlistPersistent_fuse(), texts);
  AddChildren(element, "ControlStatus", device.GetlistControlStatus(), texts);
  AddChildren(element, "ControlVoltage", device.GetControlVoltage(), texts);
  for (const CControlEBRList& block : device.GetlistControlEBR()) {
    Element& ebr = element.children.emplace_back(ToElement("EBR", Item{block.Name.c_str()}, texts));
    AddChildren(ebr, "Entry", block.Entries, texts);
  }
  AddNumbers(element, "MultibootCfgAddr", device.GetMultibootCfgAddr(), texts);
  AddNumbers(element, "MultibootAutoAdd", device.GetMultibootAutoAdd(), texts);
}

void Remove(Element& element, std::string_view attribute) {
  auto& all = element.attributes;
  all.erase(std::remove_if(all.begin(), all.end(), [&](const Attribute& one) { return one.name == attribute; }), all.end());
}

}  // namespace

Element DescribeDatabase(const DeviceList& database, Texts& texts) {
  const DeviceList untouched;
  return ToElement("DeviceDatabase", database, texts, untouched);
}

Element DescribeFamily(FamilyList& family, Texts& texts) {
  const FamilyList untouched;
  const QuotedEntries operations("Operation", family, &FamilyList::GetOperation);
  Element element = ToElement("Family", family, texts, untouched);
  operations.AddText(element, texts);
  operations.AddElements(element, texts);
  AddItems(element, "ProgrammingMode", family.GetListProgrammingModeControl(), texts);
  for (const CBScanControl& record : family.GetListBScanControl()) {
    Element& child = element.children.emplace_back(ToElement("BScanControl", BScanRecord{record.DefaultValue, ""}, texts));
    AddItems(child, "Control", record.Controls, texts);
  }
  return element;
}

Element DescribeDevice(FamilyList& family, DeviceInfo& device, Texts& texts) {
  DeviceInfo untouched(family);
  untouched.SetFamily(family.GetName());
  Element element = ToElement("Device", device, texts, untouched);
  // While the width is not set, the getter returns the data length: writing that would set it.
  if (device.GetBitstreamColWidth() == static_cast<int>(device.GetDataLength())) Remove(element, "BitstreamColWidth");
  if (!device.GetlistAddressRange().empty()) {
    AddAttribute(element, kAddressRange, SemicolonList(device.GetlistAddressRange()), texts);
  }
  const QuotedEntries entries("SysIO", device, &DeviceInfo::GetSysIO);
  entries.AddText(element, texts);
  for (int i = 0; const Package* const package = device.GetDevicePackage()->GetPackage(i); ++i) {
    element.children.push_back(ToPackage(*package, texts));
  }
  entries.AddElements(element, texts);
  AddLists(element, device, texts);
  return element;
}

}  // namespace descriptions

Outline Describe(DeviceInfo& device) {
  FamilyList none;
  FamilyList* const family = device.GetFamilyObject();
  const auto texts = std::make_shared<descriptions::Texts>();
  return {descriptions::DescribeDevice(family == nullptr ? none : *family, device, *texts), texts};
}

Outline Describe(FamilyList& family) {
  const auto texts = std::make_shared<descriptions::Texts>();
  return {descriptions::DescribeFamily(family, *texts), texts};
}

}  // namespace plddb
