// docs/descriptions.md is true.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "descriptions/fields.h"
#include "parse.h"
#include "tests/support/read_file.h"
#include "words.h"

namespace {

using support::ReadFile;
using words::Between;

const std::string kDocs = std::string(PLDDB_DATA_DIR) + "/../docs/descriptions.md";
const std::string kExample = std::string(PLDDB_TEST_DIR) + "/descriptions/every_list.xml";

/// The examples of whole files in `text`.
std::vector<std::string> Examples(const std::string& text) {
  const std::string open = "```xml\n";
  std::vector<std::string> examples;
  for (auto at = text.find(open); at != text.npos; at = text.find(open, at + 1)) {
    const auto start = at + open.size();
    examples.push_back(text.substr(start, text.find("```", start) - start));
  }
  return examples;
}

template <class... Records>
std::set<std::string> AttributeNames() {
  std::set<std::string> names;
  for (const auto* table : {&plddb::descriptions::FieldsOf<Records>()...}) {
    for (const auto& field : *table) names.emplace(field.name);
  }
  return names;
}

std::set<std::string> AllAttributeNames() {
  using namespace plddb::descriptions;
  return AttributeNames<DeviceList, FamilyList, DeviceInfo, Package, AdapterNames, CControlRegZero, CControlRegOne,
                        CPersistent_fuse, CControlStatus, CControlVoltage, CControlEBR, EbrBlock, BScanRecord, MultibootNumber,
                        Item, Entry>();
}

}  // namespace

TEST(Documentation, NamesEveryAttribute) {
  const std::set<std::string> named = Between(ReadFile(kDocs), "`", "`");
  for (const std::string& name : AllAttributeNames()) EXPECT_EQ(named.count(name), 1U) << "row: " << name;
}

TEST(Documentation, NamesEveryElementOfTheExample) {
  const std::set<std::string> named = Between(ReadFile(kDocs), "`", "`");
  const std::set<std::string> elements = Between(ReadFile(kExample), "<", "");
  EXPECT_EQ(elements.size(), 19U);
  for (const std::string& name : elements) EXPECT_EQ(named.count(name), 1U) << "row: " << name;
}

TEST(Documentation, ItsExamplesLoad) {
  const std::vector<std::string> examples = Examples(ReadFile(kDocs));
  EXPECT_GT(examples.size(), 0U);
  for (const std::string& example : examples) EXPECT_GT(parse::Parsed(example)->GetDeviceCount(), 0) << "row: " << example;
}

TEST(Documentation, ItsErrorMessagesAreReal) {
  const std::string text =
      "<DeviceDatabase>\n\n\n\n  <Family>\n    <Device IRLenght=\"8\"/>\n    <Device "
      "FuseNumber=\"26O480\"/></Family></DeviceDatabase>";
  const plddb::LoadResult result = plddb::ParseDescriptions(text, "my_devices.xml");
  EXPECT_EQ(result.faults.size(), 2U);
  for (const plddb::Fault& fault : result.faults) {
    EXPECT_NE(ReadFile(kDocs).find("\n    " + plddb::ToString(fault) + "\n"), std::string::npos)
        << "row: " << plddb::ToString(fault);
  }
}

TEST(Documentation, TheExampleFileUsesEveryAttribute) {
  std::set<std::string> used = Between(ReadFile(kExample), " ", "=\"");
  used.merge(Between(ReadFile(kExample), " ", "='"));
  for (const std::string& name : AllAttributeNames()) EXPECT_EQ(used.count(name), 1U) << "row: " << name;
}
