// Files made to hurt: each ends in faults or a clean load.

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "parse.h"

namespace {

using parse::FaultsOf;
using parse::FirstDevice;
using parse::InFamily;
using parse::Parsed;
using parse::WithDevice;

constexpr std::size_t kTenMegabytes = 10000000;
constexpr std::size_t kMegabyte = 1000000;  // enough to show what takes more than linear time
constexpr std::size_t kMostFaults = 10001;  // including the one that reports that there are more

std::string Repeated(const std::string& part, std::size_t count) {
  std::string text;
  text.reserve(part.size() * count);
  for (std::size_t i = 0; i < count; ++i) text += part;
  return text;
}

std::string Filled(const std::string& part) { return Repeated(part, kMegabyte / part.size()); }

std::string Nested(const std::string& name, std::size_t depth) {
  return Repeated("<" + name + ">", depth) + Repeated("</" + name + ">", depth);
}

const std::string kTooMany = "too many faults: the rest is not listed";

}  // namespace

TEST(HostileFiles, TenMegabytesOfOneByteAreFaulty) {
  for (const char byte : {'<', 'a', '\xFF', '\0'}) {
    const auto faults = FaultsOf(std::string(kTenMegabytes, byte));
    EXPECT_GT(faults.size(), 0U) << "row: " << int{byte};
    EXPECT_LE(faults.size(), kMostFaults) << "row: " << int{byte};
  }
}

TEST(HostileFiles, NothingButMarkupIsFaulty) {
  for (const char* const part : {
           ">",
           "&",
           "\"",
           "/",
           "!",
           "?",
           "=",
           "-",
           "[",
           "]",
           ";",
           " ",
           "\n",
           "\x01",
           "\x7F",
           "\x80",
           "\xC3",
           "\xC3\xA9",
           "<a>",
           "</a>",
           "<a/>",
           "<!--",
           "<!-- -->x",
           "<![CDATA[",
           "<![CDATA[]]>",
           "<!DOCTYPE [",
           "<?",
           "<?a?>&",
           "<a b='c' ",
           "<a b=",
           "<DeviceDatabase>",
           "<DeviceDatabase/>",
           "<DeviceDatabase a=''>",
           "<!",
       }) {
    const auto faults = FaultsOf(Filled(part));
    EXPECT_GT(faults.size(), 0U) << "row: " << part;
    EXPECT_LE(faults.size(), kMostFaults) << "row: " << part;
  }
}

TEST(HostileFiles, NestingIsNotFollowed) {
  for (const char* const name : {"DeviceDatabase", "Family", "Device", "Package", "EBR", "Entry", "x"}) {
    EXPECT_EQ(FaultsOf(Nested(name, 100000)).size(), 1U) << "row: " << name;
  }
  EXPECT_EQ(FaultsOf(WithDevice("", Nested("Package", 100000))).size(), 1U);
  EXPECT_EQ(FaultsOf(Repeated("<Device>", 100000)).size(), 1U);
  EXPECT_EQ(FaultsOf(Repeated("<DeviceDatabase><Family><Device><Package>", 100000)).size(), 1U);
  EXPECT_EQ(Parsed(Repeated("<!--", 1) + Repeated("<a>", 100000) + "--><DeviceDatabase/>")->GetFamilyCount(), 0);
}

TEST(HostileFiles, EntitiesOfADocumentTypeAreNeverExpanded) {
  std::string laughs = "<!DOCTYPE x [\n<!ENTITY l0 \"ha\">\n";
  for (int i = 1; i < 20; ++i) {
    const std::string last = "&l" + std::to_string(i - 1) + ";";
    laughs += "<!ENTITY l" + std::to_string(i) + " \"" + Repeated(last, 10) + "\">\n";
  }
  laughs += "]>\n";
  EXPECT_EQ(FaultsOf(laughs + "<DeviceDatabase Comment='&l19;'/>").size(), 1U);
  EXPECT_EQ(FaultsOf(laughs + "<DeviceDatabase>&l19;</DeviceDatabase>").size(), 1U);
  EXPECT_EQ(Parsed(laughs + "<DeviceDatabase/>")->GetFamilyCount(), 0);

  const std::string external = "<!DOCTYPE x [ <!ENTITY e SYSTEM \"file:///etc/passwd\"> ]>\n";
  EXPECT_EQ(FaultsOf(external + "<DeviceDatabase Comment='&e;'/>"),
            std::vector<std::string>{"2:26: unknown reference \"&e\": expected &amp; for '&' itself"});
  EXPECT_EQ(FaultsOf(external + "<DeviceDatabase>&e;</DeviceDatabase>"),
            std::vector<std::string>{"2:17: unexpected text \"&e;\": values are written as attributes"});
  EXPECT_EQ(Parsed("<!DOCTYPE DeviceDatabase SYSTEM \"/etc/passwd\"><DeviceDatabase/>")->GetFamilyCount(), 0);
}

TEST(HostileFiles, ManyFaultsAreReportedUpToALimit) {
  const struct {
    const char* name;
    std::string text;
  } rows[] = {
      {"elements", InFamily(Filled("<Devise/>"))},
      {"attributes", WithDevice(Filled("IRLenght='1' "))},
      {"duplicates", WithDevice(Filled("Name='' "))},
      {"numbers", InFamily(Filled("<Device IRLength='x'/>"))},
      {"missing", InFamily(Filled("<Operation/>"))},
      {"references", WithDevice("Name='" + Filled("&") + "'")},
      {"more references", WithDevice(Filled("Name='&x' "))},
      {"angles", WithDevice("Name='" + Repeated("<", 20000) + "'")},
      {"texts", InFamily(Filled("<Device/>x"))},
      {"leaf", InFamily("<Operation Name='a'>" + Filled("<a/>") + "</Operation>")},
      {"bytes", WithDevice("Name='" + Filled("\xFF") + "'")},
      {"lines", WithDevice("Name='" + Filled("\n\x01") + "'")},
      {"devices", InFamily(Repeated("<Device/>", 80000))},
  };
  for (const auto& row : rows) {
    const auto faults = FaultsOf(row.text);
    EXPECT_EQ(faults.size(), kMostFaults) << "row: " << row.name;
    EXPECT_NE(faults.back().find(kTooMany), std::string::npos) << "row: " << row.name;
  }
}

TEST(HostileFiles, HugeTextsLoad) {
  const std::string name(kTenMegabytes, 'x');
  const std::string zeros(kTenMegabytes, '0');
  EXPECT_TRUE(FirstDevice(Parsed(WithDevice("Name='" + name + "'"))).GetName() == name);
  EXPECT_TRUE(FirstDevice(Parsed(WithDevice("Name='" + Filled("&#120;") + "'"))).GetName() == name.substr(0, kMegabyte / 6));
  EXPECT_EQ(FirstDevice(Parsed(WithDevice("listAddressRange='" + Filled("range;") + "'"))).GetlistAddressRange().size(),
            kMegabyte / 6 - 1);
  EXPECT_EQ(FirstDevice(Parsed(WithDevice("SysIOList='" + Filled("\"item with a long name\"") + "'"))).GetSysIOCount(),
            kMegabyte / 23);
  EXPECT_EQ(FaultsOf("<" + name + "/>").size(), 1U);
  EXPECT_EQ(FaultsOf(WithDevice(name + "=''")).size(), 1U);
  EXPECT_EQ(FaultsOf(WithDevice("Pin='" + zeros + "x'")).size(), 1U);
  EXPECT_EQ(FirstDevice(Parsed(WithDevice("Pin='" + zeros + "7'"))).GetPin(), 7);
}

TEST(HostileFiles, EbrCountsDoNotMultiplyTheFile) {
  const auto faults = FaultsOf(WithDevice("", Repeated("<EBR Name='' BitName='65535'/>", 100000)));
  EXPECT_EQ(faults.size(), kMostFaults);
  EXPECT_NE(faults.front().find("the EBR blocks up to here have more than 1000000 entries"), std::string::npos);
}

TEST(HostileFiles, EveryPartOfAGoodFileIsFaultyOrLoads) {
  const std::string text = WithDevice("Name='A&amp;B' IRLength=\"0x8\"",
                                      "<!-- c --><Package PON='&#65;'/><?p i?><EBR Name='E' BitName='2' Column='0 to 7'/>");
  EXPECT_EQ(FaultsOf(text).size(), 0U);
  for (std::size_t end = 0; end < text.size(); ++end) {
    EXPECT_EQ(FaultsOf(text.substr(0, end)).size(), 1U) << "row: " << text.substr(0, end);
  }
  for (std::size_t start = 1; start < text.size(); ++start) {
    EXPECT_GT(FaultsOf(text.substr(start)).size(), 0U) << "row: " << text.substr(start);
  }
}

TEST(HostileFiles, ChangedBytesAreFaultyOrLoad) {
  const std::string good =
      "<?xml version='1.0'?>\n<!DOCTYPE d [<!ENTITY e 'f'>]>" +
      WithDevice("Name='A&amp;B' IRLength=\"0x8\" ListControlReg1BitName='N;A;' ListControlReg1Column='C;1;'",
                 "<!-- c --><Package PON='&#65;'><Adapter VendorName='' AdapterName=''/></Package><![CDATA[]]>"
                 "<EBR Name='E' BitName='2' Column='0 to 7'/><EBR Name='F'><Entry/></EBR><SysIO Name='s'/>");
  const std::string bytes("<>&;'\"=/!?-[] \n\ta0x\0\x01\x80\xC3\xFF", 24);
  std::mt19937 random(20240517);
  for (int round = 0; round < 50000; ++round) {
    std::string text = good;
    for (auto changes = random() % 3 + 1; changes > 0; --changes) {
      const std::size_t at = random() % text.size();
      const std::string byte(1, bytes[random() % bytes.size()]);
      switch (random() % 3) {
        case 0:
          text.replace(at, 1, byte);
          break;
        case 1:
          text.insert(at, byte);
          break;
        default:
          text.erase(at, random() % 20);
          break;
      }
    }
    FaultsOf(text);  // checks that there is a database, or faults
  }
}
