// The form of written files: comments at their elements, start tags in lines of 100 columns, the same bytes when written again.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Descriptions.h"
#include "tests/support/read_file.h"

namespace {

namespace fs = std::filesystem;

/// `text` as it is written; its first fault where it does not load.
std::string Canonical(const std::string& text) {
  plddb::Outline outline;
  const plddb::LoadResult loaded = plddb::ParseDescriptions(text, "a.xml", &outline);
  if (loaded.database == nullptr) return plddb::ToString(loaded.faults.front());
  return plddb::WriteDescriptions(std::vector<plddb::Source>{{loaded.database.get(), &outline}});
}

const std::string kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

TEST(CanonicalForm, KeepsCommentsAtTheirElements) {
  const struct {
    const char* what;
    std::string given;
    std::string expected;
  } rows[] = {
      {"before the root", "<!--a--><DeviceDatabase/>", "<!--a-->\n<DeviceDatabase/>\n"},
      {"beside the declaration", "<?xml version='1.0'?><!--a-->\n<DeviceDatabase/>", "<!--a-->\n<DeviceDatabase/>\n"},
      {"beside the root", "<DeviceDatabase/> <!--a-->\n", "<DeviceDatabase/> <!--a-->\n"},
      {"after the root", "<DeviceDatabase/>\n<!--a-->\n<!--b-->", "<DeviceDatabase/>\n<!--a-->\n<!--b-->\n"},
      {"in the root alone", "<DeviceDatabase><!--a--></DeviceDatabase>", "<DeviceDatabase>\n  <!--a-->\n</DeviceDatabase>\n"},
      {"beside the start tag", "<DeviceDatabase> <!--a-->\n<Family/></DeviceDatabase>",
       "<DeviceDatabase> <!--a-->\n  <Family/>\n</DeviceDatabase>\n"},
      {"before an element, in its line", "<DeviceDatabase><!--a--><Family/></DeviceDatabase>",
       "<DeviceDatabase>\n  <!--a-->\n  <Family/>\n</DeviceDatabase>\n"},
      {"between elements", "<DeviceDatabase>\n<Family/>\n<!--a-->\n<Family/></DeviceDatabase>",
       "<DeviceDatabase>\n  <Family/>\n  <!--a-->\n  <Family/>\n</DeviceDatabase>\n"},
      {"beside an element", "<DeviceDatabase>\n<Family/>\t<!--a-->\r\n<Family/></DeviceDatabase>",
       "<DeviceDatabase>\n  <Family/> <!--a-->\n  <Family/>\n</DeviceDatabase>\n"},
      {"at the end", "<DeviceDatabase><Family/>\n<!--a-->\n</DeviceDatabase>",
       "<DeviceDatabase>\n  <Family/>\n  <!--a-->\n</DeviceDatabase>\n"},
      {"of several lines, and of reserved letters", "<!-- a\n   <b> & - -->\n<DeviceDatabase/>",
       "<!-- a\n   <b> & - -->\n<DeviceDatabase/>\n"},
      {"empty", "<!---->\n<DeviceDatabase/>", "<!---->\n<DeviceDatabase/>\n"},
      {"at a device and in it",
       "<DeviceDatabase><Family>\n<!--a-->\n<Device>\n<!--b-->\n<Package/> <!--c-->\n<!--d-->\n</Device> <!--e-->\n"
       "</Family></DeviceDatabase>",
       "<DeviceDatabase>\n  <Family>\n    <!--a-->\n    <Device>\n      <!--b-->\n      <Package/> <!--c-->\n      <!--d-->\n"
       "    </Device> <!--e-->\n  </Family>\n</DeviceDatabase>\n"},
      {"at records whose order changes",
       "<DeviceDatabase><Family><Device>\n<!--s-->\n<SysIO Name='s'/>\n<!--p-->\n<Package/></Device></Family></DeviceDatabase>",
       "<DeviceDatabase>\n  <Family>\n    <Device>\n      <!--p-->\n      <Package/>\n      <!--s-->\n      <SysIO "
       "Name=\"s\"/>\n"
       "    </Device>\n  </Family>\n</DeviceDatabase>\n"},
      {"at an element after the records of a text",
       "<DeviceDatabase><Family><Device SysIOList='\"a\"'>\n<!--b-->\n<SysIO Name='b'/></Device></Family></DeviceDatabase>",
       "<DeviceDatabase>\n  <Family>\n    <Device>\n      <SysIO Name=\"a\"/>\n      <!--b-->\n      <SysIO Name=\"b\"/>\n"
       "    </Device>\n  </Family>\n</DeviceDatabase>\n"},
      {"the schema", "<DeviceDatabase xmlns:xsi='x' xsi:noNamespaceSchemaLocation='y' Version='1'/>",
       "<DeviceDatabase Version=\"1\" xmlns:xsi=\"x\" xsi:noNamespaceSchemaLocation=\"y\"/>\n"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Canonical(row.given), kHead + row.expected) << "row: " << row.what;
    EXPECT_EQ(Canonical(kHead + row.expected), kHead + row.expected) << "row: " << row.what;
  }
}

TEST(CanonicalForm, HasNoEmptyFileForCommentsAlone) {
  EXPECT_EQ(Canonical("<!--a-->"), "a.xml:1:1: error: there is nothing in the file: expected a DeviceDatabase element");
}

TEST(CanonicalForm, WrapsStartTagsByGroups) {
  const std::string name(68, 'x');
  const struct {
    const char* what;
    std::string attributes;  // as given and, except for line ends, as written
  } rows[] = {
      {"100 columns fit", "Name=\"" + name + "xxxxxxxxxx\""},
      {"a value that is too long for a line", "Name=\"" + name + name + "\"\n            CodeName=\"c\""},
      {"groups", "Name=\"" + name + "\" Comm=\"JTAG\"\n            jtagDeviceID=\"0x00000001\"\n            FuseNumber=\"1\""},
      {"groups that are not all there", "Name=\"" + name + "\" Comm=\"JTAG\"\n            IRLength=\"8\""},
  };
  for (const auto& row : rows) {
    const std::string text =
        kHead + "<DeviceDatabase>\n  <Family>\n    <Device " + row.attributes + "/>\n  </Family>\n</DeviceDatabase>\n";
    const std::string written = Canonical(text);
    EXPECT_EQ(written, text) << "row: " << row.what;
    EXPECT_EQ(Canonical(written), written) << "row: " << row.what;
  }
}

TEST(CanonicalForm, IsWrittenAlikeAgainFromEveryDescriptionHere) {
  int files = 0;
  for (const char* const folder : {PLDDB_DATA_DIR, PLDDB_TEST_DIR}) {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (entry.path().extension() != ".xml") continue;
      const std::string once = Canonical(support::ReadFile(entry.path().string()));
      if (once.rfind("a.xml:", 0) == 0) continue;  // meant to be faulty
      EXPECT_EQ(Canonical(once), once) << "file: " << entry.path();
      for (std::size_t start = 0, end = 0; (end = once.find('\n', start)) != once.npos; start = end + 1) {
        const std::string line = once.substr(start, end - start);
        const bool isOneValue = line.find("=\"") == line.rfind("=\"") || line.find("<!--") != line.npos;
        EXPECT_TRUE(line.size() <= 100 || isOneValue) << "file: " << entry.path() << ", line: " << line;
      }
      ++files;
    }
  }
  EXPECT_GE(files, 10);
}

}  // namespace
