// Writing descriptions: what is loaded again, and what is left out.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Descriptions.h"
#include "tests/support/random_tree.h"
#include "tests/support/tree_equality.h"

namespace {

/// "" when `text` loads as a database that equals `original`, else the first difference or fault.
std::string DifferenceWhenLoaded(const std::string& text, DeviceList& original) {
  const plddb::LoadResult loaded = plddb::ParseDescriptions(text, "written.xml");
  return loaded.database == nullptr ? ToString(loaded.faults.front()) : support::DifferenceOf(original, *loaded.database);
}

TEST(WriteDescriptions, GivesFilesThatLoadAsAnEqualDatabaseAndAreWrittenAlikeAgain) {
  for (const char* const path : {PLDDB_DATA_DIR "/xilinx.xml", PLDDB_TEST_DIR "/descriptions/every_list.xml"}) {
    const plddb::LoadResult loaded = plddb::LoadDescriptions(path);
    ASSERT_NE(loaded.database, nullptr) << path;
    const std::string written = plddb::WriteDescriptions(*loaded.database);
    EXPECT_EQ(DifferenceWhenLoaded(written, *loaded.database), "") << path;
    const plddb::LoadResult again = plddb::ParseDescriptions(written, "written.xml");
    ASSERT_NE(again.database, nullptr) << path;
    EXPECT_EQ(plddb::WriteDescriptions(*again.database), written) << path;
  }
}

/// Sets the values whose absence a file cannot express.
void SettleForWriting(DeviceList& database) {
  for (int f = 0; FamilyList* const family = database.GetFamily(f); ++f) {
    for (int d = 0; DeviceInfo* const device = family->GetDevice(d); ++d) {
      if (device->GetFamily() == nullptr) device->SetFamily("the family");
      for (int p = 0; Package* const package = device->GetDevicePackage()->GetPackage(p); ++p) {
        if (package->GetBackupPON() == nullptr) package->SetBackupPON(package->GetPON());
      }
    }
  }
}

TEST(WriteDescriptions, KeepsEveryFieldOfRandomTrees) {
  for (std::uint64_t seed = 1; seed <= 250; ++seed) {
    const DeviceListOwner tree = support::RandomPrintableTree(seed);
    SettleForWriting(*tree);
    const std::string written = plddb::WriteDescriptions(*tree);
    const plddb::LoadResult loaded = plddb::ParseDescriptions(written, "written.xml");
    ASSERT_NE(loaded.database, nullptr) << "seed " << seed << ": " << ToString(loaded.faults.front());
    ASSERT_EQ(support::DifferenceOf(*tree, *loaded.database), "") << "seed " << seed;
    ASSERT_TRUE(plddb::WriteDescriptions(*loaded.database) == written) << "seed " << seed;
  }
}

TEST(WriteDescriptions, LeavesOutDefaultsAndWhatAReaderDerives) {
  const struct {
    const char* what;
    const char* device;    // as it is given
    const char* expected;  // as it is written
  } rows[] = {
      {"nothing set", R"(<Device/>)", R"(<Device/>)"},
      {"an empty text is set", R"(<Device Name=""/>)", R"(<Device Name=""/>)"},
      {"defaults", R"(<Device IRLength="0" DisableDeviceSTAPLSupport="false"/>)", R"(<Device/>)"},
      {"the order of the table", R"(<Device IRLength="8" Name="A"/>)", R"(<Device Name="A" IRLength="8"/>)"},
      {"identifiers in hexadecimal", R"(<Device jtagDeviceID="147"/>)", R"(<Device jtagDeviceID="0x00000093"/>)"},
      {"instructions in hexadecimal", R"(<Device IDInstruction="9"/>)", R"(<Device IDInstruction="0x09"/>)"},
      {"a backup that is derived", R"(<Device FuseNumber="5" BackupFuseNumber="5"/>)", R"(<Device FuseNumber="5"/>)"},
      {"a backup that differs", R"(<Device FuseNumber="5" BackupFuseNumber="0"/>)",
       R"(<Device FuseNumber="5" BackupFuseNumber="0"/>)"},
      {"a backup alone", R"(<Device BackupFuseNumber="7"/>)", R"(<Device BackupFuseNumber="7"/>)"},
      {"the family's name", R"(<Device Family="F"/>)", R"(<Device/>)"},
      {"another family's name", R"(<Device Family="G"/>)", R"(<Device Family="G"/>)"},
      {"options that equal the mode", R"(<Device Comm="JTAG" AlgOptions="JTAG"/>)", R"(<Device Comm="JTAG"/>)"},
      {"options that differ", R"(<Device AlgOptions="x" Comm="JTAG"/>)", R"(<Device Comm="JTAG" AlgOptions="x"/>)"},
      {"a width that is not set", R"(<Device DataLength="512"/>)", R"(<Device DataLength="512"/>)"},
      {"its own width", R"(<Device DataLength="512" BitstreamColWidth="8"/>)",
       R"(<Device DataLength="512" BitstreamColWidth="8"/>)"},
      {"address ranges", R"(<Device listAddressRange="R; A0-A7 ; ;B;"/>)", R"(<Device listAddressRange=";A0-A7; ;B;"/>)"},
      {"empty entries", R"(<Device SysIOList='"A" " " "B"'/>)",
       "<Device SysIOList=\"&quot;A&quot;, &quot; &quot;\">\n      <SysIO Name=\"B\"/>\n    </Device>"},
  };
  for (const auto& row : rows) {
    const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<DeviceDatabase>\n  <Family Name=\"F\">\n    ";
    const std::string tail = "\n  </Family>\n</DeviceDatabase>\n";
    const plddb::LoadResult loaded = plddb::ParseDescriptions(head + row.device + tail, "given.xml");
    ASSERT_NE(loaded.database, nullptr) << "row: " << row.what << ": " << ToString(loaded.faults.front());
    EXPECT_EQ(plddb::WriteDescriptions(*loaded.database), head + row.expected + tail) << "row: " << row.what;
  }
}

TEST(WriteDescriptions, MarksOffWhatXmlReserves) {
  const struct {
    const char* text;
    const char* written;
  } rows[] = {
      {"", ""},
      {"plain", "plain"},
      {"&", "&amp;"},
      {"<>", "&lt;&gt;"},
      {"\"", "&quot;"},
      {"'", "'"},
      {"\t\n\r", "&#9;&#10;&#13;"},
      {"a&b", "a&amp;b"},
      {"&&a", "&amp;&amp;a"},
      {"a<", "a&lt;"},
      {"&amp;", "&amp;amp;"},
      {"<&>\"'\n\t;", "&lt;&amp;&gt;&quot;'&#10;&#9;;"},
      {"\xC3\xA9\xE2\x82\xAC", "\xC3\xA9\xE2\x82\xAC"},
      {"\x7F", "&#127;"},  // written so that a terminal shows it without harm
      {" two  blanks ", " two  blanks "},
      {"]]>", "]]&gt;"},
      {"--", "--"},
  };
  for (const auto& row : rows) {
    const DeviceListOwner database = MakeDeviceList();
    database->SetComment(row.text);
    const std::string written = plddb::WriteDescriptions(*database);
    EXPECT_NE(written.find(" Comment=\"" + std::string(row.written) + "\""), std::string::npos) << written;
    EXPECT_EQ(DifferenceWhenLoaded(written, *database), "") << written;
  }
}

TEST(WriteDescriptions, WritesSeveralDatabasesOneAfterTheOther) {
  const DeviceListOwner none = MakeDeviceList();
  const DeviceListOwner first = MakeDeviceList();
  const DeviceListOwner second = MakeDeviceList();
  first->SetVersion("1");
  first->NewFamily()->SetName("A");
  second->SetVersion("2");
  second->NewFamily()->SetName("A");
  second->NewFamily()->NewDevice()->SetName("D");
  const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  const std::string families = "  <Family Name=\"A\"/>\n  <Family>\n    <Device Name=\"D\"/>\n  </Family>\n";
  const struct {
    const char* what;
    std::vector<plddb::Source> databases;
    std::string expected;
  } rows[] = {
      {"nothing", {}, "<DeviceDatabase/>\n"},
      {"an empty one", {{none.get()}}, "<DeviceDatabase/>\n"},
      {"empty ones", {{none.get()}, {none.get()}}, "<DeviceDatabase/>\n"},
      {"one", {{second.get()}}, "<DeviceDatabase Version=\"2\">\n" + families + "</DeviceDatabase>\n"},
      {"an empty one first", {{none.get()}, {second.get()}}, "<DeviceDatabase>\n" + families + "</DeviceDatabase>\n"},
      {"two",
       {{first.get()}, {second.get()}},
       "<DeviceDatabase Version=\"1\">\n  <Family Name=\"A\"/>\n" + families + "</DeviceDatabase>\n"},
      {"one twice",
       {{second.get()}, {second.get()}},
       "<DeviceDatabase Version=\"2\">\n" + families + families + "</DeviceDatabase>\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(plddb::WriteDescriptions(row.databases), head + row.expected) << "row: " << row.what;
}

}  // namespace
