// Writes a database as a description file: the way back of load.cpp, through the same tables.

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <pugixml.hpp>
#include <string>

#include "Descriptions.h"
#include "descriptions/elements.h"
#include "descriptions/fields.h"

namespace plddb {
namespace {

using descriptions::Field;
using descriptions::FieldsOf;
using descriptions::FieldTable;
using descriptions::Kind;
using descriptions::Need;
using descriptions::Value;

struct StringWriter : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
};

bool AreEqual(const Value& a, const Value& b) {
  if (a.text == nullptr || b.text == nullptr) return a.text == b.text && a.number == b.number;
  return std::strcmp(a.text, b.text) == 0;
}

std::string Hex(long long number, int digits) {
  char text[20];
  static_cast<void>(std::snprintf(text, sizeof text, "0x%0*llX", digits, number));  // 20 hold any 64 bits
  return text;
}

void Append(pugi::xml_node node, const Field& field, const Value& value) {
  pugi::xml_attribute attribute = node.append_attribute(std::string(field.name).c_str());
  if (field.kind == Kind::Flag) {
    attribute.set_value(value.number != 0);
  } else if (value.text != nullptr) {
    attribute.set_value(value.text);
  } else if (field.hexDigits != 0) {
    attribute.set_value(Hex(value.number, field.hexDigits).c_str());
  } else {
    attribute.set_value(value.number);
  }
}

/// What a reader of the file takes when the attribute is left out.
Value ValueWhenLeftOut(const FieldTable& fields, std::size_t i, const void* record, const void* untouched) {
  return fields[i].need == Need::Backup ? fields[i - 1].get(record) : fields[i].get(untouched);
}

/// Writes the fields of `record` that `untouched`, a record of defaults, does not have, and those that have to be there.
void AppendFields(pugi::xml_node node, const FieldTable& fields, const void* record, const void* untouched) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const Field& field = fields[i];
    if (field.get == nullptr) continue;  // a column of a list, whose records are written as elements
    Value value = field.get(record);
    const bool isNeeded = field.need == Need::Required || field.need == Need::NotEmpty;
    if (isNeeded && field.kind == Kind::Text && value.text == nullptr) value.text = "";
    if (!isNeeded && AreEqual(value, ValueWhenLeftOut(fields, i, record, untouched))) continue;
    if (value.text != nullptr || field.kind != Kind::Text) Append(node, field, value);
  }
}

template <class Record>
pugi::xml_node AppendElement(pugi::xml_node parent, const char* name, const Record& record,
                             const Record& untouched = Record()) {
  pugi::xml_node node = parent.append_child(name);
  AppendFields(node, FieldsOf<Record>(), &record, &untouched);
  return node;
}

template <class Record>
void AppendElements(pugi::xml_node parent, const char* name, const std::vector<Record>& records) {
  for (const Record& record : records) AppendElement(parent, name, record);
}

void AppendNumbers(pugi::xml_node parent, const char* name, const std::vector<int>& numbers) {
  for (const int number : numbers) AppendElement(parent, name, descriptions::MultibootNumber{number});
}

void AppendPackage(pugi::xml_node parent, const Package& package) {
  const Package untouched;
  pugi::xml_node node = AppendElement(parent, "Package", package, untouched);
  for (int i = 0; const Adapter* const adapter = package.GetAdapter(i); ++i) {
    AppendElement(node, "Adapter", descriptions::AdapterNames{adapter->GetVendorName(), adapter->GetAdapterName()});
  }
}

/// An entry that is empty can only come from a text of quoted items, and so do all in front of the last such one: they are
/// written as that text again, the others as elements.
template <class Record>
void AppendEntries(pugi::xml_node node, const Record& record, char* (Record::*entryAt)(int) const, const char* attribute,
                   const char* element) {
  int count = 0;
  int quoted = 0;
  while (const char* const entry = (record.*entryAt)(count)) {
    ++count;
    if (*entry == '\0') quoted = count;
  }
  std::string text;
  for (int i = 0; i < quoted; ++i) {
    const std::string entry = (record.*entryAt)(i);
    text += (i == 0 ? "\"" : ", \"") + (entry.empty() ? " " : entry) + '"';
  }
  if (quoted > 0) node.append_attribute(attribute) = text.c_str();
  for (int i = quoted; i < count; ++i) AppendElement(node, element, descriptions::Entry{(record.*entryAt)(i)});
}

/// ";A0-A7;B0-B7;": the one list that a file gives as a text alone.
std::string SemicolonList(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) text += ";" + (item.empty() ? " " : item);
  return text + ";";
}

void AppendLists(pugi::xml_node node, DeviceInfo& device) {
  AppendElements(node, "ControlRegZero", device.GetlistControlRegZero());
  AppendElements(node, "ControlRegOne", device.GetlistControlRegOne());
  AppendElements(node, "Persistent_fuse", device.GetlistPersistent_fuse());
  AppendElements(node, "ControlStatus", device.GetlistControlStatus());
  AppendElements(node, "ControlVoltage", device.GetControlVoltage());
  for (const CControlEBRList& block : device.GetlistControlEBR()) {
    const descriptions::Item name = {block.Name.c_str()};
    AppendElements(AppendElement(node, "EBR", name), "Entry", block.Entries);
  }
  AppendNumbers(node, "MultibootCfgAddr", device.GetMultibootCfgAddr());
  AppendNumbers(node, "MultibootAutoAdd", device.GetMultibootAutoAdd());
}

pugi::xml_node AppendDevice(pugi::xml_node parent, FamilyList& family, DeviceInfo& device) {
  DeviceInfo untouched(family);
  untouched.SetFamily(family.GetName());
  pugi::xml_node node = AppendElement(parent, "Device", device, untouched);
  // While the width is not set it answers the data length: written, it would be set.
  if (device.GetBitstreamColWidth() == static_cast<int>(device.GetDataLength())) node.remove_attribute("BitstreamColWidth");
  if (!device.GetlistAddressRange().empty()) {
    node.append_attribute("listAddressRange") = SemicolonList(device.GetlistAddressRange()).c_str();
  }
  for (int i = 0; const Package* const package = device.GetDevicePackage()->GetPackage(i); ++i) AppendPackage(node, *package);
  AppendEntries(node, device, &DeviceInfo::GetSysIO, "SysIOList", "SysIO");
  AppendLists(node, device);
  return node;
}

pugi::xml_node AppendFamily(pugi::xml_node parent, FamilyList& family) {
  const FamilyList untouched;
  pugi::xml_node node = AppendElement(parent, "Family", family, untouched);
  AppendEntries(node, family, &FamilyList::GetOperation, "OperationList", "Operation");
  for (const std::string& mode : family.GetListProgrammingModeControl()) {
    AppendElement(node, "ProgrammingMode", descriptions::Item{mode.c_str()});
  }
  for (const CBScanControl& record : family.GetListBScanControl()) {
    pugi::xml_node element = AppendElement(node, "BScanControl", descriptions::BScanRecord{record.DefaultValue, ""});
    for (const std::string& control : record.Controls) AppendElement(element, "Control", descriptions::Item{control.c_str()});
  }
  return node;
}

/// What `append` puts into a new document, which stays behind the outline.
template <typename Append>
Outline Described(Append append) {
  const auto document = std::make_shared<pugi::xml_document>();
  const auto nowhere = [](const char*) { return descriptions::TextPosition{0, 0}; };
  return {descriptions::ToElement(append(*document), nowhere), document};
}

}  // namespace

Outline Describe(DeviceInfo& device) {
  FamilyList none;
  FamilyList* const family = device.GetFamilyObject();
  return Described([&](pugi::xml_node document) { return AppendDevice(document, family == nullptr ? none : *family, device); });
}

Outline Describe(FamilyList& family) {
  return Described([&](pugi::xml_node document) { return AppendFamily(document, family); });
}

std::string WriteDescriptions(const DeviceList& database) {
  pugi::xml_document document;
  const DeviceList untouched;
  pugi::xml_node root = AppendElement(document, "DeviceDatabase", database, untouched);
  for (int f = 0; FamilyList* const family = database.GetFamily(f); ++f) {
    pugi::xml_node node = AppendFamily(root, *family);
    for (int d = 0; DeviceInfo* const device = family->GetDevice(d); ++d) AppendDevice(node, *family, *device);
  }
  StringWriter writer;
  writer.text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  document.save(writer, "  ", pugi::format_indent | pugi::format_no_declaration, pugi::encoding_utf8);
  return std::move(writer.text);
}

}  // namespace plddb
