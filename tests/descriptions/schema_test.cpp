// plddb.xsd, the schema of description files, agrees with the loader. That validators understand it is tested with the
// tool.

#include <gtest/gtest.h>

#include <map>
#include <pugixml.hpp>
#include <set>
#include <string>

#include "descriptions/fields.h"
#include "tests/support/read_file.h"
#include "words.h"

namespace {

using namespace plddb::descriptions;

const std::string kSchema = std::string(PLDDB_DATA_DIR) + "/../descriptions/plddb.xsd";
const std::string kExample = std::string(PLDDB_TEST_DIR) + "/descriptions/every_list.xml";

/// The types of the schema, and the fields of the records that they describe.
const std::map<std::string, const FieldTable*>& Tables() {
  static const std::map<std::string, const FieldTable*> tables = {
      {"database", &FieldsOf<DeviceList>()},
      {"family", &FieldsOf<FamilyList>()},
      {"bscanControl", &FieldsOf<BScanRecord>()},
      {"device", &FieldsOf<DeviceInfo>()},
      {"package", &FieldsOf<Package>()},
      {"adapter", &FieldsOf<AdapterNames>()},
      {"controlRegZero", &FieldsOf<CControlRegZero>()},
      {"controlRegOne", &FieldsOf<CControlRegOne>()},
      {"persistentFuse", &FieldsOf<CPersistent_fuse>()},
      {"controlStatus", &FieldsOf<CControlStatus>()},
      {"controlVoltage", &FieldsOf<CControlVoltage>()},
      {"ebr", &FieldsOf<EbrBlock>()},
      {"ebrEntry", &FieldsOf<CControlEBR>()},
      {"multibootNumber", &FieldsOf<MultibootNumber>()},
      {"item", &FieldsOf<Item>()},
      {"notEmptyItem", &FieldsOf<Entry>()},
  };
  return tables;
}

std::string TypeOf(const Field& field) {
  static const std::map<Kind, std::string> types = {
      {Kind::kText, "xs:string"},        {Kind::kRange, "range"},         {Kind::kFlag, "flag"},
      {Kind::kCount, "count"},           {Kind::kUnsigned8, "unsigned8"}, {Kind::kUnsigned16, "unsigned16"},
      {Kind::kUnsigned32, "unsigned32"}, {Kind::kSigned32, "signed32"},
  };
  return field.need == Need::kNotEmpty ? "notEmpty" : types.at(field.kind);
}

/// Attribute names, and their definition in the schema: "TYPE", or "TYPE required".
using Attributes = std::map<std::string, std::string>;

Attributes AttributesOf(const FieldTable& fields) {
  Attributes attributes;
  for (const Field& field : fields) {
    const bool isRequired = field.need == Need::kRequired || field.need == Need::kNotEmpty;
    attributes[std::string(field.name)] = TypeOf(field) + (isRequired ? " required" : "");
  }
  return attributes;
}

Attributes AttributesOf(pugi::xml_node type) {
  Attributes attributes;
  for (const pugi::xml_node node : type.children("xs:attribute")) {
    const bool isNew = attributes.count(node.attribute("name").value()) == 0;
    EXPECT_TRUE(isNew) << "row: " << node.attribute("name").value() << " is there twice";
    const std::string use = node.attribute("use").value();
    attributes[node.attribute("name").value()] = node.attribute("type").value() + (use.empty() ? "" : " " + use);
  }
  return attributes;
}

const pugi::xml_document& Schema() {
  static pugi::xml_document document;
  static const pugi::xml_parse_result result = document.load_file(kSchema.c_str());
  EXPECT_TRUE(result) << result.description();
  return document;
}

}  // namespace

TEST(Schema, HasTheAttributesOfTheLoaderWithTheirKinds) {
  std::set<std::string> described;
  for (const pugi::xml_node type : Schema().child("xs:schema").children("xs:complexType")) {
    const std::string name = type.attribute("name").value();
    described.insert(name);
    const auto table = Tables().find(name);
    if (table == Tables().end()) {
      ADD_FAILURE() << "row: no record for the type " << name;
    } else {
      EXPECT_EQ(AttributesOf(type), AttributesOf(*table->second)) << "row: " << name;
    }
  }
  EXPECT_EQ(described.size(), Tables().size());
}

TEST(Schema, HasTheElementsOfTheExample) {
  const std::set<std::string> elements = words::Between(support::ReadFile(kSchema), "<xs:element name=\"", "\"");
  EXPECT_EQ(elements, words::Between(support::ReadFile(kExample), "<", ""));
}
