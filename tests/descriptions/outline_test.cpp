// The elements of a file, in addition to its database: as written, each with its place.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

#include "parse.h"
#include "tests/support/random_tree.h"

namespace {

void Print(const plddb::Element& element, std::ostream& out) {
  out << '<' << element.name << ' ' << element.line << ':' << element.column;
  for (const auto& [name, value, line, column] : element.attributes) {
    out << ' ' << name << '=' << value << ' ' << line << ':' << column;
  }
  for (const plddb::Element& child : element.children) Print(child, out);
  out << '>';
}

/// "<Name LINE:COLUMN Attribute=value LINE:COLUMN <Child ...>>".
std::string ToText(const plddb::Element& element) {
  std::ostringstream text;
  Print(element, text);
  return text.str();
}

std::string OutlineOf(std::string_view text) {
  plddb::Outline outline;
  plddb::ParseDescriptions(text, "a.xml", &outline);
  return ToText(outline.root);
}

TEST(Outline, HoldsElementsAndAttributesAsTheyWereWrittenAndWhereTheyStand) {
  const struct {
    const char* what;
    const char* text;
    const char* expected;
  } rows[] = {
      {"the root alone", "<DeviceDatabase/>", "<DeviceDatabase 1:1>"},
      {"after a declaration and a comment", "<?xml version=\"1.0\"?>\n<!-- <Family> -->\n  <DeviceDatabase />",
       "<DeviceDatabase 3:3>"},
      {"a byte order mark does not count", "\xEF\xBB\xBF<DeviceDatabase/>", "<DeviceDatabase 1:1>"},
      {"attributes in file order", "<DeviceDatabase Version='1'\n  Comment = \"two\"/>",
       "<DeviceDatabase 1:1 Version=1 1:26 Comment=two 2:14>"},
      {"an empty value", "<DeviceDatabase Comment=\"\"/>", "<DeviceDatabase 1:1 Comment= 1:26>"},
      {"references are resolved, places are those of the file",
       "<DeviceDatabase Version=\"&lt;&amp;&#65;\" Comment=\"x\"><Family/></DeviceDatabase>",
       "<DeviceDatabase 1:1 Version=<&A 1:26 Comment=x 1:51<Family 1:54>>"},
      {"columns are counted in bytes", "<DeviceDatabase Version=\"\xC3\xA9\" Comment=\"x\"/>",
       "<DeviceDatabase 1:1 Version=\xC3\xA9 1:26 Comment=x 1:39>"},
      {"carriage returns", "<DeviceDatabase>\r\n<Family/>\r\n</DeviceDatabase>", "<DeviceDatabase 1:1<Family 2:1>>"},
      {"numbers keep their form", "<DeviceDatabase><Family><Device jtagDeviceID=\"0x93\"/></Family></DeviceDatabase>",
       "<DeviceDatabase 1:1<Family 1:17<Device 1:25 jtagDeviceID=0x93 1:47>>>"},
      {"children in file order, comments between them",
       "<DeviceDatabase><Family Name='A'><Device>\n<SysIO Name='x'/><!-- "
       "--><Package/></Device>\n</Family><Family/></DeviceDatabase>",
       "<DeviceDatabase 1:1<Family 1:17 Name=A 1:31<Device 1:34<SysIO 2:1 Name=x 2:14><Package 2:26>>><Family 3:10>>"},
      {"attributes of a schema", "<DeviceDatabase xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"/>",
       "<DeviceDatabase 1:1 xmlns:xsi=http://www.w3.org/2001/XMLSchema-instance 1:28>"},
  };
  for (const auto& row : rows) EXPECT_EQ(OutlineOf(row.text), row.expected) << "row: " << row.what;
}

TEST(Outline, StaysAsItWasWhenThereAreFaults) {
  for (const char* const text : {"", "<DeviceDatabase", "<DeviceDatabase><Famly/></DeviceDatabase>", "\x01"}) {
    plddb::Outline outline;
    outline.root.name = "untouched";
    plddb::ParseDescriptions(text, "a.xml", &outline);
    EXPECT_EQ(ToText(outline.root), "<untouched 0:0>") << "text: " << text;
  }
  plddb::Outline outline;
  plddb::LoadDescriptions("/there/is/no/such/file.xml", &outline);
  EXPECT_EQ(ToText(outline.root), "< 0:0>");
}

TEST(Outline, ComesFromFilesAsWell) {
  const std::string path = PLDDB_DATA_DIR "/xilinx.xml";
  plddb::Outline outline;
  const plddb::LoadResult loaded = plddb::LoadDescriptions(path, &outline);
  ASSERT_NE(loaded.database, nullptr);
  ASSERT_EQ(outline.root.children.size(), static_cast<std::size_t>(loaded.database->GetFamilyCount()));
  for (int f = 0; const FamilyList* const family = loaded.database->GetFamily(f); ++f) {
    const plddb::Element& element = outline.root.children[static_cast<std::size_t>(f)];
    EXPECT_EQ(element.attributes.front().value, family->GetName());
    EXPECT_EQ(element.children.size(), static_cast<std::size_t>(family->GetDeviceCount())) << family->GetName();
  }
}

/// `element` without its places; of a family, without its devices as well.
plddb::Element Bare(plddb::Element element) {
  auto& children = element.children;
  const auto isDevice = [](const plddb::Element& child) { return child.name == "Device"; };
  children.erase(std::remove_if(children.begin(), children.end(), isDevice), children.end());
  element.line = element.column = 0;
  for (plddb::Attribute& attribute : element.attributes) attribute.line = attribute.column = 0;
  for (plddb::Element& child : children) child = Bare(child);
  return element;
}

void ExpectDescribedAsWritten(DeviceList& database, const std::string& what) {
  plddb::Outline outline;
  const plddb::LoadResult again = plddb::ParseDescriptions(plddb::WriteDescriptions(database), what, &outline);
  ASSERT_NE(again.database, nullptr) << what;
  for (int f = 0; FamilyList* const family = database.GetFamily(f); ++f) {
    const plddb::Element& written = outline.root.children[static_cast<std::size_t>(f)];
    EXPECT_EQ(ToText(plddb::Describe(*family).root), ToText(Bare(written))) << what << ", family " << f;
    const std::size_t first = written.children.size() - static_cast<std::size_t>(family->GetDeviceCount());
    for (int d = 0; DeviceInfo* const device = family->GetDevice(d); ++d) {
      EXPECT_EQ(ToText(plddb::Describe(*device).root), ToText(Bare(written.children[first + static_cast<std::size_t>(d)])))
          << what << ", family " << f << ", device " << d;
    }
  }
}

TEST(Describe, GivesWhatIsWrittenOfARecord) {
  for (const char* const path : {PLDDB_DATA_DIR "/xilinx.xml", PLDDB_TEST_DIR "/descriptions/every_list.xml"}) {
    const plddb::LoadResult loaded = plddb::LoadDescriptions(path);
    ASSERT_NE(loaded.database, nullptr) << path;
    ExpectDescribedAsWritten(*loaded.database, path);
  }
  for (std::uint64_t seed = 1; seed <= 30; ++seed) {
    ExpectDescribedAsWritten(*support::RandomPrintableTree(seed), "seed " + std::to_string(seed));
  }
}

TEST(Describe, TakesADeviceThatIsInNoFamily) {
  FamilyList family;
  family.SetName("F");
  DeviceInfo device(family);
  device.SetName("A");
  EXPECT_EQ(ToText(plddb::Describe(device).root), "<Device 0:0 Name=A 0:0>");
}

}  // namespace
