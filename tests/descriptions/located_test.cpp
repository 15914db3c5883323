// Located: where in a file the values of a record are written.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

#include "parse.h"

namespace {

void Print(const plddb::Element& element, std::ostream& out) {
  out << '<' << element.name << ' ' << element.line << ':' << element.column;
  for (const auto& [name, value, line, column] : element.attributes) {
    out << ' ' << name << '=' << value << ' ' << line << ':' << column;
  }
  for (const plddb::Element& child : element.children) Print(child, out);
  out << '>';
}

std::string ToText(const plddb::Element& element) {
  std::ostringstream text;
  Print(element, text);
  return text.str();
}

/// The first device of the first family of `text`, with its places.
std::string LocatedDevice(const std::string& text) {
  plddb::Outline outline;
  const plddb::LoadResult loaded = plddb::ParseDescriptions(text, "a.xml", &outline);
  if (loaded.database == nullptr) return "faults";
  const plddb::Outline described = plddb::Describe(parse::FirstDevice(loaded.database));
  return ToText(plddb::Located(described.root, outline.root.children.at(0).children.at(0)));
}

/// Likewise, its family.
std::string LocatedFamily(const std::string& text) {
  plddb::Outline outline;
  const plddb::LoadResult loaded = plddb::ParseDescriptions(text, "a.xml", &outline);
  if (loaded.database == nullptr) return "faults";
  return ToText(plddb::Located(plddb::Describe(parse::FirstFamily(loaded.database)).root, outline.root.children.at(0)));
}

TEST(Located, GivesEachValueItsPlaceInTheFile) {
  const struct {
    const char* what;
    const char* attributes;  // start in line 3
    const char* content;     // starts in line 4
    const char* expected;
  } rows[] = {
      {"nothing set", "", "", "<Device 2:1>"},
      {"a field", "Name='A'", "", "<Device 2:1 Name=A 3:7>"},
      {"fields in the order of the table", "IRLength='8' Name='A'", "", "<Device 2:1 Name=A 3:20 IRLength=8 3:11>"},
      {"a default that is written is left out", "FuseNumber='0'", "", "<Device 2:1>"},
      {"an element", "", "<SysIO Name='x'/>", "<Device 2:1<SysIO 4:1 Name=x 4:14>>"},
      {"a text", "SysIOList='\"x\", \"y\"'", "", "<Device 2:1<SysIO 3:12 Name=x 3:12><SysIO 3:12 Name=y 3:12>>"},
      {"texts come first, elements last", "ListControlReg1BitName=';A;'", "<ControlRegOne BitName='B'/>",
       "<Device 2:1<ControlRegOne 3:25 BitName=A 3:25 Value=0 0:0 Address=0 0:0 Column=0 0:0>"
       "<ControlRegOne 4:1 BitName=B 4:25 Value=0 0:0 Address=0 0:0 Column=0 0:0>>"},
      {"one text a column", "ListControlReg1BitName=';A;' ListControlReg1Column=';7;'", "",
       "<Device 2:1<ControlRegOne 3:25 BitName=A 3:25 Value=0 0:0 Address=0 0:0 Column=7 3:53>>"},
      {"entries of a block that are counted", "", "<EBR Name='e' BitName='1' Column='16 to 23'/>",
       "<Device 2:1<EBR 4:1 Name=e 4:12<Entry 4:24 BitName=1 4:24 Value=false 0:0 Address=0 0:0 Column=16 4:35>>>"},
      {"a package and its adapters", "", "<Package PON='P'>\n<Adapter VendorName='V' AdapterName='W'/></Package>",
       "<Device 2:1<Package 4:1 PON=P 4:15<Adapter 5:1 VendorName=V 5:22 AdapterName=W 5:38>>>"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(LocatedDevice(parse::WithDevice(row.attributes, row.content)), row.expected) << "row: " << row.what;
  }
}

TEST(Located, LeavesTheDevicesOfAFamilyOut) {
  EXPECT_EQ(LocatedFamily(parse::InFamily("<Device Name='A'/><Operation Name='o'/>")),
            "<Family 1:17 Name=PLD1200 1:31<Operation 2:19 Name=o 2:36>>");
}

TEST(Located, TakesAnOutlineOfAnotherRecord) {
  const plddb::Element none;
  const plddb::Element described = {"Device", 0, 0, {{"Name", "A", 0, 0}}, {{"SysIO", 0, 0, {{"Name", "x", 0, 0}}, {}}}};
  const plddb::Element other = {
      "Device", 7, 1, {{"Name", "B", 7, 9}}, {{"SysIO", 8, 1, {}, {}}, {"SysIO", 9, 1, {}, {}}, {"Package", 9, 9, {}, {}}}};
  EXPECT_EQ(ToText(plddb::Located(described, none)), "<Device 0:0 Name=A 0:0<SysIO 0:0 Name=x 0:0>>");
  EXPECT_EQ(ToText(plddb::Located(none, other)), "< 7:1>");
  EXPECT_EQ(ToText(plddb::Located(described, other)), "<Device 7:1 Name=A 7:9<SysIO 0:0 Name=x 0:0>>");
}

TEST(FindAttribute, FindsTheNameAsItIsWritten) {
  const plddb::Element element = {"Device", 1, 1, {{"Name", "A", 1, 2}, {"Name", "B", 1, 3}, {"Pin", "", 1, 4}}, {}};
  const struct {
    const char* name;
    int column;  // 0: none
  } rows[] = {{"Name", 2}, {"Pin", 4}, {"name", 0}, {"", 0}, {"Names", 0}, {"Nam", 0}};
  for (const auto& row : rows) {
    const plddb::Attribute* const found = plddb::FindAttribute(element, row.name);
    EXPECT_EQ(found == nullptr ? 0 : found->column, row.column) << "row: " << row.name;
  }
  EXPECT_EQ(plddb::FindAttribute(plddb::Element(), "Name"), nullptr);
}

}  // namespace
