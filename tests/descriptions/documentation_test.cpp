// docs/descriptions.md tells no lies.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "descriptions/fields.h"
#include "parse.h"

namespace {

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

const std::string kDocs = std::string(PLDDB_DATA_DIR) + "/../docs/descriptions.md";
const std::string kExample = std::string(PLDDB_TEST_DIR) + "/descriptions/every_list.xml";

std::set<std::string> Matches(const std::string& text, const char* pattern) {
  const std::regex expression(pattern);
  std::set<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match) found.insert((*match)[1]);
  return found;
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
  return AttributeNames<DeviceList, FamilyList, DeviceInfo, Package, Adapter, CControlRegZero, CControlRegOne, CPersistent_fuse,
                        CControlStatus, CControlVoltage, CControlEBR, EbrBlock, BScanRecord, MultibootNumber, Item, Entry>();
}

}  // namespace

TEST(Documentation, NamesEveryAttribute) {
  const std::set<std::string> named = Matches(ReadFile(kDocs), "`(\\w+)`");
  for (const std::string& name : AllAttributeNames()) EXPECT_EQ(named.count(name), 1U) << "row: " << name;
}

TEST(Documentation, NamesEveryElementOfTheExample) {
  const std::set<std::string> named = Matches(ReadFile(kDocs), "`(\\w+)`");
  const std::set<std::string> elements = Matches(ReadFile(kExample), "<([A-Z]\\w+)");
  EXPECT_EQ(elements.size(), 19U);
  for (const std::string& name : elements) EXPECT_EQ(named.count(name), 1U) << "row: " << name;
}

TEST(Documentation, ItsExamplesLoad) {
  const std::set<std::string> examples = Matches(ReadFile(kDocs), "```xml\n(<\\?xml[^`]*)```");
  EXPECT_GT(examples.size(), 0U);
  for (const std::string& example : examples) EXPECT_GT(parse::Parsed(example)->GetDeviceCount(), 0) << "row: " << example;
}

TEST(Documentation, TheExampleFileUsesEveryAttribute) {
  const std::set<std::string> used = Matches(ReadFile(kExample), "\\s(\\w+)=[\"']");
  for (const std::string& name : AllAttributeNames()) EXPECT_EQ(used.count(name), 1U) << "row: " << name;
}
