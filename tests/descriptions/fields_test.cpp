// The tables of attributes: every attribute loads, and lands in its field.

#include "descriptions/fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "parse.h"
#include "tests/support/read_file.h"
#include "words.h"

namespace {

using parse::Parsed;

using plddb::descriptions::AdapterNames;
using plddb::descriptions::Field;
using plddb::descriptions::FieldsOf;
using plddb::descriptions::FieldTable;
using plddb::descriptions::Kind;
using plddb::descriptions::Need;
using plddb::descriptions::Value;

std::string Attribute(std::string_view name, const std::string& text) { return " " + std::string(name) + "='" + text + "'"; }

/// The largest value of the field's kind, or the least: all bits set.
std::string SampleText(const Field& field) {
  switch (field.kind) {
    case Kind::kText:
      return "text of " + std::string(field.name);
    case Kind::kRange:
      return "0 to 31";
    case Kind::kFlag:
      return "true";
    case Kind::kUnsigned8:
      return "0xFF";
    case Kind::kCount:
    case Kind::kUnsigned16:
      return "0xFFFF";
    case Kind::kUnsigned32:
      return "0xFFFFFFFF";
    case Kind::kSigned32:
      return "-1";
  }
  return "";
}

std::string ToText(const Value& value) { return value.text != nullptr ? value.text : "number " + std::to_string(value.number); }

std::string SampleValue(const Field& field) {
  switch (field.kind) {
    case Kind::kText:
    case Kind::kRange:
      return SampleText(field);
    case Kind::kFlag:
      return "number 1";
    case Kind::kUnsigned8:
      return "number 255";
    case Kind::kCount:
    case Kind::kUnsigned16:
      return "number 65535";
    case Kind::kUnsigned32:
      return "number 4294967295";
    case Kind::kSigned32:
      return "number -1";
  }
  return "";
}

/// An element of the format, and how to get at the record that the first of them fills.
struct Place {
  const char* element;
  const FieldTable& fields;
  std::string before;
  std::string after;
  const void* (*record)(DeviceList& database);
};

const DeviceInfo& Device(DeviceList& database) { return *database.GetFamily(0)->GetDevice(0); }

std::vector<Place> Places() {
  const std::string family = "<DeviceDatabase><Family>";
  const std::string familyEnd = "</Family></DeviceDatabase>";
  const std::string device = family + "<Device>";
  const std::string deviceEnd = "</Device>" + familyEnd;
  const std::string block = device + "<EBR Name='E'>";
  const std::string package = device + "<Package>";
  return {
      {"DeviceDatabase", FieldsOf<DeviceList>(), "", "", [](DeviceList& d) -> const void* { return &d; }},
      {"Family", FieldsOf<FamilyList>(), "<DeviceDatabase>", "</DeviceDatabase>",
       [](DeviceList& d) -> const void* { return d.GetFamily(0); }},
      {"Device", FieldsOf<DeviceInfo>(), family, familyEnd, [](DeviceList& d) -> const void* { return &Device(d); }},
      {"Package", FieldsOf<Package>(), device, deviceEnd,
       [](DeviceList& d) -> const void* { return Device(d).GetDevicePackage()->GetPackage(0); }},
      {"Adapter", FieldsOf<AdapterNames>(), package, "</Package>" + deviceEnd,
       [](DeviceList& d) -> const void* {
         static AdapterNames names;
         const Adapter& adapter = *Device(d).GetDevicePackage()->GetPackage(0)->GetAdapter(0);
         names = {adapter.GetVendorName(), adapter.GetAdapterName()};
         return &names;
       }},
      {"ControlRegZero", FieldsOf<CControlRegZero>(), device, deviceEnd,
       [](DeviceList& d) -> const void* { return &Device(d).GetlistControlRegZero().at(0); }},
      {"ControlRegOne", FieldsOf<CControlRegOne>(), device, deviceEnd,
       [](DeviceList& d) -> const void* { return &Device(d).GetlistControlRegOne().at(0); }},
      {"Persistent_fuse", FieldsOf<CPersistent_fuse>(), device, deviceEnd,
       [](DeviceList& d) -> const void* { return &Device(d).GetlistPersistent_fuse().at(0); }},
      {"ControlStatus", FieldsOf<CControlStatus>(), device, deviceEnd,
       [](DeviceList& d) -> const void* { return &Device(d).GetlistControlStatus().at(0); }},
      {"ControlVoltage", FieldsOf<CControlVoltage>(), device, deviceEnd,
       [](DeviceList& d) -> const void* { return &Device(d).GetControlVoltage().at(0); }},
      {"Entry", FieldsOf<CControlEBR>(), block, "</EBR>" + deviceEnd,
       [](DeviceList& d) -> const void* { return &Device(d).GetlistControlEBR().at(0).Entries.at(0); }},
  };
}

/// The element with one attribute, and with what else it needs.
std::string With(const Place& place, const Field& field) {
  std::string text = place.before + "<" + place.element + Attribute(field.name, SampleText(field));
  for (const Field& other : place.fields) {
    if (other.need == Need::kRequired && other.name != field.name) text += Attribute(other.name, "needed");
  }
  return text + "/>" + place.after;
}

/// All fields that can be read one by one, a line each.
std::vector<std::string> Dump(const FieldTable& fields, const void* record) {
  std::vector<std::string> lines;
  for (const Field& field : fields) {
    if (field.get != nullptr) lines.push_back(std::string(field.name) + ": " + ToText(field.get(record)));
  }
  return lines;
}

}  // namespace

TEST(Fields, EveryAttributeLandsInItsField) {
  for (const Place& place : Places()) {
    for (const Field& field : place.fields) {
      if (field.get == nullptr) continue;
      const DeviceListOwner database = Parsed(With(place, field));
      EXPECT_EQ(ToText(field.get(place.record(*database))), SampleValue(field))
          << "row: " << place.element << " " << field.name;
    }
  }
}

TEST(Fields, AnAttributeSetsItsOwnFieldAloneAndABackup) {
  // Comm also goes into AlgOptions, and an unset BitstreamColWidth answers the DataLength: the library's own rules.
  const std::set<std::string> shared = {"Comm", "DataLength"};
  for (const Place& place : Places()) {
    if (std::string(place.element) == "Adapter") continue;  // needs both its attributes
    const DeviceListOwner unset = Parsed(place.before + "<" + place.element + "/>" + place.after);
    const auto before = Dump(place.fields, place.record(*unset));
    for (const Field& field : place.fields) {
      if (field.get == nullptr || shared.count(std::string(field.name)) != 0) continue;
      const DeviceListOwner database = Parsed(With(place, field));
      const auto after = Dump(place.fields, place.record(*database));
      const auto changed =
          std::inner_product(before.begin(), before.end(), after.begin(), 0, std::plus<>(), std::not_equal_to<>());
      const Field* const next = &field + 1;
      const bool hasBackup = next != place.fields.end() && next->need == Need::kBackup;
      EXPECT_EQ(changed, hasBackup ? 2 : 1) << "row: " << place.element << " " << field.name;
    }
  }
}

TEST(Fields, ABackupIsRightBelowItsWorkingValueAndIsOfItsKind) {
  const std::set<std::string> expected = {"jtagDeviceIDBackup", "DeviceIDMaskBackup", "BackupARCHLength",    "BackupARCHRow",
                                          "BackupELength",      "BackupERow",         "BackupAddressLength", "BackupDataLength",
                                          "BackupFuseNumber",   "BackupPON",          "AlgOptions"};
  std::set<std::string> found;
  for (const Place& place : Places()) {
    const Field* above = nullptr;
    for (const Field& field : place.fields) {
      if (field.need == Need::kBackup) {
        ASSERT_NE(above, nullptr) << "row: " << field.name;
        const std::string working(above->name);
        const std::string name(field.name);
        const bool isWrittenByComm =
            working == "Comm" && name == "AlgOptions";  // the one value that is derived without being a backup
        EXPECT_TRUE(name == working + "Backup" || name == "Backup" + working || isWrittenByComm) << "row: " << name;
        EXPECT_EQ(field.kind, above->kind) << "row: " << name;
        found.insert(name);
      }
      above = &field;
    }
  }
  EXPECT_EQ(found, expected);
}

TEST(Fields, EverySetterOfTheLibraryHasAnAttribute) {
  // Set by child elements, or not by a file at all.
  const std::set<std::string> byOtherMeans = {
      "SetlistControlRegZero",
      "SetlistControlRegOne",
      "SetlistPersistent_fuse",
      "SetlistControlStatus",
      "SetlistControlEBR",
      "SetControlVoltage",
      "SetControlVoltageVCCCore",
      "SetControlVoltageVCCJ",
      "SetControlVoltagePinList",
      "SetListControlEBRName",
      "SetListControlEBRBitName",
      "SetListControlEBRColumn",
      "SetListControlEBRAddress",
      "SetFamilyObject",
      "SetListBScanControl",
      "SetBScanDefaultValue",
      "SetAdapter",
  };
  const struct {
    const char* header;
    const FieldTable& fields;
  } rows[] = {
      {"DeviceList.h", FieldsOf<DeviceList>()}, {"FamilyList.h", FieldsOf<FamilyList>()},
      {"DeviceInfo.h", FieldsOf<DeviceInfo>()}, {"Package.h", FieldsOf<Package>()},
      {"Adapter.h", FieldsOf<AdapterNames>()},
  };
  for (const auto& row : rows) {
    const std::string header = support::ReadFile(std::string(PLDDB_DATA_DIR) + "/../include/" + row.header);
    std::set<std::string> setters;
    for (const std::string& name : words::Between(header, " ", "(")) {
      if (name.substr(0, 3) == "Set") setters.insert(name);
    }
    EXPECT_FALSE(setters.empty()) << "row: " << row.header;
    std::size_t count = 0;
    for (const std::string& setter : setters) {
      if (byOtherMeans.count(setter) != 0) continue;
      const std::string stem = setter == "Set1532Compliant" ? "IEEE1532Compliant" : setter.substr(3);
      EXPECT_NE(row.fields.Find(stem), row.fields.size()) << "row: " << row.header << " " << setter;
      ++count;
    }
    EXPECT_EQ(count, row.fields.size()) << "row: " << row.header << " has attributes without a setter";
  }
}

TEST(Fields, ATableFindsItsOwnNamesAndNoOthers) {
  for (const Place& place : Places()) {
    for (std::size_t i = 0; i < place.fields.size(); ++i) {
      const std::string name(place.fields[i].name);
      EXPECT_EQ(place.fields.Find(name), i) << "row: " << name;
      for (const std::string& other : {name + "x", name.substr(1), "x" + name, name.substr(0, name.size() - 1) + "\x01"}) {
        EXPECT_EQ(place.fields.Find(other), place.fields.size()) << "row: " << other;
      }
    }
    EXPECT_EQ(place.fields.Find(""), place.fields.size()) << "row: " << place.element;
  }
}

namespace {

/// A value for the texts that make lists, so that each leaves a trace only when it is applied in its turn.
std::string OrderedSample(const Field& field) {
  if (field.get != nullptr) return SampleText(field);
  if (field.name == "SysIOList" || field.name == "OperationList") return "\"A\", \"B\"";
  return "LABEL;1;2;3;";
}

std::string ListsOf(const DeviceInfo& constDevice) {
  auto& device = const_cast<DeviceInfo&>(constDevice);  // the multiboot getters lend their lists to be changed
  std::string text;
  for (const auto& r : device.GetlistControlRegZero()) text += r.Frequency + ',' + r.MasterClock + ',' + r.ClockDivider + ';';
  for (const auto& r : device.GetlistControlRegOne()) {
    text += r.BitName + ',' + std::to_string(r.Address) + ',' + std::to_string(r.Column) + ';';
  }
  for (const auto& r : device.GetlistPersistent_fuse())
    text += std::to_string(r.Address) + ',' + std::to_string(r.Column) + ';';
  for (const auto& r : device.GetlistControlStatus()) text += r.BitName + ',' + r.Control + ',' + std::to_string(r.Index) + ';';
  for (const auto& range : device.GetlistAddressRange()) text += range + ';';
  for (const int address : device.GetMultibootCfgAddr()) text += std::to_string(address) + ';';
  for (const int address : device.GetMultibootAutoAdd()) text += std::to_string(address) + ';';
  for (int i = 0; i < device.GetSysIOCount(); ++i) text += device.GetSysIO(i) + std::string(";");
  return text;
}

}  // namespace

TEST(Fields, TheOrderOfAttributesInAFileDoesNotMatter) {
  std::vector<std::string> attributes;
  for (const Field& field : FieldsOf<DeviceInfo>()) attributes.push_back(Attribute(field.name, OrderedSample(field)));
  const std::string lists =
      "1,1,1;2,2,2;3,3,3;"  // control register 0
      "1,1,1;2,2,2;3,3,3;"  // control register 1
      "1,1;2,2;3,3;"        // persistent fuses
      "1,1,1;2,2,2;3,3,3;"  // status
      "1;2;3;"              // address ranges
      "0;1;2;3;"            // multiboot addresses: no labels there
      "0;1;2;3;"
      "A;B;";
  std::mt19937 random(1);
  for (int round = 0; round < 100; ++round) {
    if (round == 1) std::reverse(attributes.begin(), attributes.end());
    if (round > 1) std::shuffle(attributes.begin(), attributes.end(), random);
    std::string all;
    for (const std::string& attribute : attributes) all += attribute;
    const DeviceListOwner database = Parsed(parse::WithDevice(all));
    const DeviceInfo& device = parse::FirstDevice(database);
    for (const Field& field : FieldsOf<DeviceInfo>()) {
      if (field.get == nullptr) continue;
      EXPECT_EQ(ToText(field.get(&device)), SampleValue(field)) << "row: " << field.name << " in " << all;
    }
    EXPECT_EQ(ListsOf(device), lists) << "in " << all;
  }
}
