// Writing what was imported: as a file, and into one that is there.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bsdl/splice.h"
#include "sample.h"

namespace {

namespace bsdl = plddb::bsdl;

std::string WithName(const std::string& name) { return sample::AllReplaced(sample::kText, "PLD1234A", name); }

std::string WithMap(const std::string& map) { return sample::AllReplaced(sample::kText, "TQ100", map); }

bsdl::Import Import(const std::vector<std::string>& texts, const std::string& family = "PLD1200") {
  std::vector<bsdl::File> files;
  for (const std::string& text : texts) files.push_back(bsdl::Parse(text, "a.bsd"));
  return bsdl::Describe(files, {family, "", "", "", 0});
}

/// The file with the devices; the faults where there are some.
std::string Added(const std::string& text, const bsdl::Import& import) {
  const bsdl::Addition addition = bsdl::AddTo(text, "my.xml", import);
  return addition.faults.empty() ? addition.text : sample::Lines(addition.faults);
}

std::string WithoutComments(std::string text) {
  for (std::size_t at; (at = text.find("    <!--")) != text.npos;) text.erase(at, text.find("-->\n", at) + 4 - at);
  return text;
}

TEST(Write, GivesTheCanonicalFormWithComments) {
  const bsdl::Import import = Import({sample::kText, WithName("PLD1238A")});
  const std::string text = bsdl::Write(import);
  EXPECT_EQ(WithoutComments(text), plddb::WriteDescriptions(*import.database));
  const plddb::LoadResult loaded = plddb::ParseDescriptions(text, "w.xml");
  ASSERT_NE(loaded.database, nullptr) << plddb::ToString(loaded.faults.front());
  EXPECT_EQ(plddb::WriteDescriptions(*loaded.database), plddb::WriteDescriptions(*import.database));
  EXPECT_NE(text.find("    <!-- From a.bsd (PLD1238A_TQ100):\n"), std::string::npos) << text;
}

TEST(AddTo, PutsAFamilyBehindTheOthers) {
  const bsdl::Import import = Import({sample::kText});
  const std::string family = [&] {
    const std::string text = bsdl::Write(import);
    const std::size_t start = text.find("  <Family");
    return text.substr(start, text.rfind("</DeviceDatabase") - start);
  }();
  const struct {
    const char* before;
    const char* after;
  } rows[] = {
      {"<DeviceDatabase/>", "<DeviceDatabase>\n@</DeviceDatabase>"},
      {"<DeviceDatabase Comment='a > b/' />\n", "<DeviceDatabase Comment='a > b/' >\n@</DeviceDatabase>\n"},
      {"<DeviceDatabase></DeviceDatabase>", "<DeviceDatabase>\n@</DeviceDatabase>"},
      {"<DeviceDatabase>\n</DeviceDatabase>\n", "<DeviceDatabase>\n@</DeviceDatabase>\n"},
      {"<?xml version=\"1.0\"?>\n<!-- </DeviceDatabase> -->\n<DeviceDatabase>\n  <!-- </DeviceDatabase> -->\n  <Family "
       "Name='X'/>\n</DeviceDatabase>\n",
       "<?xml version=\"1.0\"?>\n<!-- </DeviceDatabase> -->\n<DeviceDatabase>\n  <!-- </DeviceDatabase> -->\n  <Family "
       "Name='X'/>\n@</DeviceDatabase>\n"},
      {"\xEF\xBB\xBF<DeviceDatabase>\r\n\t<Family Name='pld1200'/>\r\n</DeviceDatabase >",
       "\xEF\xBB\xBF<DeviceDatabase>\r\n\t<Family Name='pld1200'/>\n@</DeviceDatabase >"},
  };
  for (const auto& row : rows) {
    std::string after = sample::Replaced(row.after, "@", family);
    if (after.find('\r') != after.npos) after = sample::Replaced(after, "  </Family>\n</Dev", "  </Family>\r\n</Dev");
    EXPECT_EQ(Added(row.before, import), after) << "row: " << row.before;
  }
}

TEST(AddTo, JoinsTheFamilyOfTheSameName) {
  const bsdl::Import import = Import({sample::kText});
  const std::string devices = [&] {
    const std::string text = bsdl::Write(import);
    const std::size_t start = text.find("    <!--");
    return text.substr(start, text.rfind("  </Family") - start);
  }();
  const struct {
    const char* before;
    const char* after;
  } rows[] = {
      {"<DeviceDatabase>\n  <Family Name='PLD1200'/>\n</DeviceDatabase>\n",
       "<DeviceDatabase>\n  <Family Name='PLD1200'>\n@  </Family>\n</DeviceDatabase>\n"},
      {"<DeviceDatabase>\n  <Family Name='PLD1200'>\n  </Family>\n  <Family Name='PLD1200'/>\n</DeviceDatabase>\n",
       "<DeviceDatabase>\n  <Family Name='PLD1200'>\n@  </Family>\n  <Family Name='PLD1200'/>\n</DeviceDatabase>\n"},
      {"<DeviceDatabase>\n  <Family/><Family Name='PLD1200'>\n    <!-- mine </Family> -->\n    <Device Name='B'/>\n  "
       "</Family>\n</DeviceDatabase>\n",
       "<DeviceDatabase>\n  <Family/><Family Name='PLD1200'>\n    <!-- mine </Family> -->\n    <Device Name='B'/>\n@  "
       "</Family>\n</DeviceDatabase>\n"},
      {"<DeviceDatabase><Family Name='PLD1200'><Device/></Family></DeviceDatabase>\n",
       "<DeviceDatabase><Family Name='PLD1200'><Device/>\n@  </Family></DeviceDatabase>\n"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Added(row.before, import), sample::Replaced(row.after, "@", devices)) << "row: " << row.before;
}

TEST(AddTo, GivesPackagesToADeviceThatIsThere) {
  const bsdl::Import import = Import({sample::kText, WithMap("VQ64")});
  const std::string tq = "      <Package Type=\"TQ100\" PON=\"PLD1234A-TQ100\"/>\n";
  const std::string vq = "      <Package Type=\"VQ64\" PON=\"PLD1234A-VQ64\"/>\n";
  const std::string head = "<DeviceDatabase><Family Name='PLD1200'>\n";
  const std::string foot = "</Family></DeviceDatabase>\n";
  const struct {
    std::string before;
    std::string after;
  } rows[] = {
      {"    <Device Name='PLD1234A'/>\n", "    <Device Name='PLD1234A'>\n" + tq + vq + "    </Device>\n"},
      {"    <Device Name='pld1234a'>\n    </Device>\n", "    <Device Name='pld1234a'>\n" + tq + vq + "    </Device>\n"},
      {"    <Device Name='PLD1234A' IRLength='8'>\n" + tq + "    </Device>\n",
       "    <Device Name='PLD1234A' IRLength='8'>\n" + tq + vq + "    </Device>\n"},
      {"    <Device Name='PLD1234A'>\n" + vq + tq + "    </Device>\n",
       "    <Device Name='PLD1234A'>\n" + vq + tq + "    </Device>\n"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Added(head + row.before + foot, import), head + row.after + foot) << "row: " << row.before;
}

TEST(AddTo, GivesTheSameWhenItIsDoneTwice) {
  const bsdl::Import import = Import({sample::kText, WithName("PLD1238A")});
  const std::string once = Added("<DeviceDatabase/>", import);
  EXPECT_EQ(Added(once, import), once);
}

TEST(AddTo, NamesBothPlacesOfAContradiction) {
  const struct {
    const char* attributes;
    const char* faults;
  } rows[] = {
      {"IRLength='9'", "my.xml:2:35: error: IRLength of PLD1234A is 9, but 8 in a.bsd\n"},
      {"jtagDeviceID='0x01234059'", "my.xml:2:39: error: jtagDeviceID of PLD1234A is 0x01234059, but 0x01234057 in a.bsd\n"},
      {"DeviceIDScanMask='0xFFFFFFFF'",
       "my.xml:2:43: error: DeviceIDScanMask of PLD1234A is 0xFFFFFFFF, but 0x0FFFFFFF in a.bsd\n"},
      {"IDInstruction='1' InstructionBypass='254'",
       "my.xml:2:40: error: IDInstruction of PLD1234A is 0x01, but 0xFE in a.bsd\n"
       "my.xml:2:62: error: InstructionBypass of PLD1234A is 0xFE, but 0xFF in a.bsd\n"},
      {"USERCODEIntruction='1'", "my.xml:2:45: error: USERCODEIntruction of PLD1234A is 0x01, but 0xFD in a.bsd\n"},
      {"BSCANLength='5'", "my.xml:2:38: error: BSCANLength of PLD1234A is 5, but 4 in a.bsd\n"},
  };
  for (const auto& row : rows) {
    const std::string text = "<DeviceDatabase><Family Name='PLD1200'>\n<Device Name='PLD1234A' " + std::string(row.attributes) +
                             "/></Family></DeviceDatabase>";
    EXPECT_EQ(Added(text, Import({sample::kText})), row.faults) << "row: " << row.attributes;
  }
}

TEST(AddTo, RefusesAFileThatDoesNotLoad) {
  const bsdl::Import import = Import({sample::kText});
  EXPECT_EQ(Added("<DeviceDatabase><Family Nam='x'/></DeviceDatabase>", import)
                .rfind("my.xml:1:25: error: Family has no attribute \"Nam\"", 0),
            0U);
  EXPECT_EQ(Added("", import).rfind("my.xml:1:1: error: ", 0), 0U);
  std::string full = "<DeviceDatabase><Family Name='PLD1200'>";
  for (int i = 0; i < 65535; ++i) full += "<Device/>";
  EXPECT_NE(Added(full + "</Family></DeviceDatabase>", import).find("my.xml:"), std::string::npos);
  const bsdl::Addition missing = bsdl::AddToFile("/nowhere/my.xml", import);
  EXPECT_EQ(sample::Lines(missing.faults), "/nowhere/my.xml:1:1: error: cannot read the file: No such file or directory\n");
}

}  // namespace
