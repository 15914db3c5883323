// What bad files report: each fault once, at its place, and all of them.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "parse.h"
#include "tests/support/temporary_folder.h"

namespace {

using parse::FaultsOf;
using parse::InFamily;
using parse::Parsed;
using parse::WithDevice;

using Texts = std::vector<std::string>;

struct Row {
  std::string text;
  Texts faults;
};

void Check(const std::vector<Row>& rows) {
  for (const Row& row : rows) EXPECT_EQ(FaultsOf(row.text), row.faults) << "row: " << row.text;
}

/// "LINE:COLUMN: " of the first `what` in `text`.
std::string At(const std::string& text, const std::string& what, std::size_t from = 0) {
  const std::size_t offset = text.find(what, from);
  std::size_t line = 1;
  std::size_t start = 0;
  for (std::size_t end = text.find('\n'); end < offset; end = text.find('\n', start)) {
    start = end + 1;
    ++line;
  }
  return std::to_string(line) + ":" + std::to_string(offset - start + 1) + ": ";
}

const std::string kReferenceHint = ": expected &amp; for '&' itself";

}  // namespace

TEST(Faults, SayFileLineColumnAndText) {
  EXPECT_EQ(plddb::ToString({"my devices.xml", 12, 7, "what"}), "my devices.xml:12:7: error: what");
}

TEST(Faults, UnknownAttributesStandWithTheNearestName) {
  Check({
      {"<DeviceDatabase version='1'/>", {"1:17: DeviceDatabase has no attribute \"version\": did you mean Version?"}},
      {"<DeviceDatabase>\n <Family>\n  <Device\n   IRLenght='8'/></Family></DeviceDatabase>",
       {"4:4: Device has no attribute \"IRLenght\": did you mean IRLength?"}},
      {"<DeviceDatabase><Family Nmae=''/></DeviceDatabase>", {"1:25: Family has no attribute \"Nmae\": did you mean Name?"}},
      {"<DeviceDatabase><Family colour=''/></DeviceDatabase>", {"1:25: Family has no attribute \"colour\""}},
      {InFamily("<Device USERCODEInstruction='1'/>"),
       {"2:9: Device has no attribute \"USERCODEInstruction\": did you mean USERCODEIntruction?"}},
      {InFamily("<Device><Package><Adapter Vendor='' VendorName='' AdapterName=''/></Package></Device>"),
       {"2:27: Adapter has no attribute \"Vendor\""}},
      {InFamily("<Device><EBR Name='' Colum='0 to 7'/></Device>"),
       {"2:22: EBR has no attribute \"Colum\": did you mean Column?"}},
  });
}

TEST(Faults, UnknownElementsStandWithWhatWasExpected) {
  const std::string inDevice =
      ": expected Package, SysIO, ControlRegZero, ControlRegOne, Persistent_fuse, ControlStatus, ControlVoltage, EBR, "
      "MultibootCfgAddr or MultibootAutoAdd";
  Check({
      {"<Devices/>", {"1:1: unknown element \"Devices\": expected DeviceDatabase"}},
      {"\n <!-- --> <html><body/></html>", {"2:11: unknown element \"html\": expected DeviceDatabase"}},
      {"<DeviceDatabase><Device/></DeviceDatabase>", {"1:17: unknown element \"Device\" in DeviceDatabase: expected Family"}},
      {InFamily("<Devise/>"),
       {"2:1: unknown element \"Devise\" in Family: expected Device, Operation, ProgrammingMode or BScanControl; did you mean "
        "Device?"}},
      {InFamily("<Package/>"),
       {"2:1: unknown element \"Package\" in Family: expected Device, Operation, ProgrammingMode or BScanControl"}},
      {WithDevice("", "<Ebr><Entry/></Ebr>"), {"4:1: unknown element \"Ebr\" in Device" + inDevice + "; did you mean EBR?"}},
      {WithDevice("", "<Package><Package/></Package>"), {"4:10: unknown element \"Package\" in Package: expected Adapter"}},
      {WithDevice("", "<SysIO Name='a'><SysIO/></SysIO>"), {"4:17: unknown element \"SysIO\" in SysIO: expected none here"}},
      {"<DeviceDatabase/>\n<DeviceDatabase/>", {"2:1: too many DeviceDatabase elements: expected 1 at most"}},
      {"<DeviceDatabase><ns:Family/></DeviceDatabase>",
       {"1:17: unknown element \"ns:Family\" in DeviceDatabase: expected Family"}},
  });
}

TEST(Faults, NumbersHaveToBeWellFormedAndToFit) {
  const struct {
    const char* attribute;
    const char* expectation;
    Texts values;
  } rows[] = {
      {"IRLength",
       "a number from 0 to 65535, decimal or 0x-hexadecimal",
       {"",    " ",   " 5", "5 ", "+5",   "-1",  "-0",  "65536", "0x10000", "0x", "0X5",      "5x",  "x5",
        "1e3", "1.0", "5,", "--", "0x-5", "0xG", "1 2", "ten",   "0b1",     "5h", "\xC2\xB2", "#FF", "18446744073709551616"}},
      {"TurboAlgIndex", "a number from 0 to 255, decimal or 0x-hexadecimal", {"256", "0x100", "-1", "3a"}},
      {"jtagDeviceID",
       "a number from 0 to 4294967295, decimal or 0x-hexadecimal",
       {"4294967296", "0x100000000", "-1", "09604093h", "0x0960 4093"}},
      {"BitstreamColWidth",
       "a number from -2147483648 to 2147483647, decimal or 0x-hexadecimal",
       {"2147483648", "-2147483649", "0xFFFFFFFF", "0x80000000", "-0x80000001", "-", "- 5", "--5", "-99999999999999999999"}},
      {"DisableDeviceSTAPLSupport", "true or false", {"", "True", "TRUE", "1", "0", "yes", " true", "true ", "truefalse"}},
  };
  for (const auto& row : rows) {
    for (const std::string& value : row.values) {
      const std::string text = WithDevice(std::string(row.attribute) + "=\"" + value + "\"");
      const std::string place = At(text, value + "\"", text.find("=\"", text.find(row.attribute)) + 2);
      EXPECT_EQ(FaultsOf(text), Texts{place + row.attribute + " is \"" + value + "\": expected " + row.expectation})
          << "row: " << row.attribute << " " << value;
    }
  }
}

TEST(Faults, FieldsOfFamiliesAndChildElementsAreCheckedAlike) {
  const std::string number = " to 2147483647, decimal or 0x-hexadecimal";
  Check({
      {"<DeviceDatabase><Family Hidden='x'/></DeviceDatabase>", {"1:33: Hidden is \"x\": expected true or false"}},
      {"<DeviceDatabase><Family CFGPinCount='x'/></DeviceDatabase>",
       {"1:38: CFGPinCount is \"x\": expected a number from -2147483648" + number}},
      {WithDevice("", "<ControlRegOne Value=''/>"), {"4:23: Value is \"\": expected a number from -2147483648" + number}},
      {WithDevice("", "<EBR Name=''><Entry Value='1'/></EBR>"), {"4:28: Value is \"1\": expected true or false"}},
      {InFamily("<BScanControl DefaultValue='x'/>"),
       {"2:29: DefaultValue is \"x\": expected a number from -2147483648" + number}},
  });
}

TEST(Faults, RangesAreTwoNumbers) {
  const Texts good = {"0 to 31", "6 to 5", "0to31", " -1  to  -2 ", "00 to 08"};
  for (const std::string& range : good) {
    EXPECT_EQ(FaultsOf(WithDevice("", "<EBR Name='A' BitName='1' Column='" + range + "'/>")), Texts{}) << "row: " << range;
  }
  const Texts bad = {"",         "0-31",    "0",           "0 to",   "to 31",           "to",          "0 31",
                     "0 to 31;", "0 TO 31", "0x0 to 0x1F", "a to b", "0 to 2147483648", "0 to 1 to 2", "+0 to 5",
                     "0..31"};
  for (const std::string& range : bad) {
    const std::string text = WithDevice("", "<EBR Name='A' BitName='1' Address='" + range + "'/>");
    EXPECT_EQ(FaultsOf(text), Texts{"4:36: Address is \"" + range + "\": expected a range such as \"0 to 31\""})
        << "row: " << range;
  }
}

TEST(Faults, AnEbrBlockIsNumberedOrListed) {
  const std::string count = ": expected a number from 1 to 65535, decimal or 0x-hexadecimal";
  Check({
      {WithDevice("", "<EBR/>"), {"4:1: EBR needs the attribute Name"}},
      {WithDevice("", "<EBR Name='' BitName='0'/>"), {"4:23: BitName is \"0\"" + count}},
      {WithDevice("", "<EBR Name='' BitName='65536'/>"), {"4:23: BitName is \"65536\"" + count}},
      {WithDevice("", "<EBR Name='' Column='0 to 7'/>"),
       {"4:1: EBR with Column or Address needs BitName, the number of its entries"}},
      {WithDevice("", "<EBR Name='' Address='0 to 7'><Entry/></EBR>"),
       {"4:1: EBR with Column or Address needs BitName, the number of its entries"}},
      {WithDevice("", "<EBR Name='' BitName='1'><Entry/></EBR>"),
       {"4:1: EBR has both BitName and Entry elements: expected one of them"}},
  });
}

TEST(Faults, AFilesEbrBlocksCountAtMostAMillionEntries) {
  std::string blocks;
  for (int i = 0; i < 16; ++i) blocks += "<EBR Name='' BitName='62500'/>";
  EXPECT_EQ(FaultsOf(WithDevice("", blocks)), Texts{});
  const std::string more = "<EBR Name='more' BitName='1'/>";
  const std::string text = WithDevice("", blocks + more);
  EXPECT_EQ(FaultsOf(text), Texts{At(text, more) + "the EBR blocks up to here have more than 1000000 entries"});
}

TEST(Faults, AttributesComeOnce) {
  Check({
      {"<DeviceDatabase Version='1' Version='1'/>", {"1:29: attribute Version is given twice"}},
      {WithDevice("Name='a' CodeName='b' Name='' Name='c'"),
       {"3:23: attribute Name is given twice", "3:31: attribute Name is given twice"}},
      {WithDevice("IRLength='x' IRLength='y'"),
       {"3:11: IRLength is \"x\": expected a number from 0 to 65535, decimal or 0x-hexadecimal",
        "3:14: attribute IRLength is given twice"}},
  });
}

TEST(Faults, SomeElementsMeanNothingWithoutAnAttribute) {
  const std::string notEmpty = "Name is \"\": expected a text that is not empty";
  Check({
      {InFamily("<Operation/>"), {"2:1: Operation needs the attribute Name"}},
      {InFamily("<Operation Name=''/>"), {"2:18: " + notEmpty}},
      {InFamily("<ProgrammingMode/>"), {"2:1: ProgrammingMode needs the attribute Name"}},
      {InFamily("<BScanControl><Control/></BScanControl>"), {"2:15: Control needs the attribute Name"}},
      {WithDevice("", "<SysIO/>"), {"4:1: SysIO needs the attribute Name"}},
      {WithDevice("", "<SysIO Name=''/>"), {"4:14: " + notEmpty}},
      {WithDevice("", "<MultibootCfgAddr/>"), {"4:1: MultibootCfgAddr needs the attribute Value"}},
      {WithDevice("", "<MultibootAutoAdd/>"), {"4:1: MultibootAutoAdd needs the attribute Value"}},
      {WithDevice("", "<Package><Adapter VendorName=''/></Package>"), {"4:10: Adapter needs the attribute AdapterName"}},
      {WithDevice("", "<Package><Adapter/></Package>"),
       {"4:10: Adapter needs the attribute VendorName", "4:10: Adapter needs the attribute AdapterName"}},
      {InFamily("<Operation Nam='Erase'/>"),
       {"2:1: Operation needs the attribute Name", "2:12: Operation has no attribute \"Nam\": did you mean Name?"}},
  });
}

TEST(Faults, TextBelongsIntoAttributes) {
  const std::string hint = ": values are written as attributes";
  Check({
      {WithDevice("", "PLD1234A"), {"4:1: unexpected text \"PLD1234A\"" + hint}},
      {"<DeviceDatabase>\n\n  two words\n<Family/>\n; </DeviceDatabase>",
       {"3:3: unexpected text \"two words\"" + hint, "5:1: unexpected text \"; \"" + hint}},
      {WithDevice("", "<![CDATA[PLD]]>"), {"4:1: unexpected text \"<![CDATA[PLD]]>\"" + hint}},
      {WithDevice("", "<SysIO Name='a'>&amp;</SysIO>"), {"4:17: unexpected text \"&amp;\"" + hint}},
      {"before <DeviceDatabase/>", {"1:1: unexpected text \"before \"" + hint}},
      {"<DeviceDatabase/> behind", {"1:19: unexpected text \"behind\"" + hint}},
      {"PLD1234A", {"1:1: unexpected text \"PLD1234A\"" + hint}},
  });
}

TEST(Faults, AllOfAFileAreReportedInItsOrder) {
  Check({{R"(<DeviceDatabase Versoin="1">
  <Family Hidden="maybe">
    text
    <Device IRLength="65536"
            jtagDeviceID="xyz" Vendor="V" Vendor="V">
      <SysIO/>
      <Package Tpye="TQ100"/>
    </Device>
    <Unknown><Device IRLength="x"/></Unknown>
    <Device Pin="-1"/>
  </Family>
</DeviceDatabase>
)",
          {
              "1:17: DeviceDatabase has no attribute \"Versoin\": did you mean Version?",
              "2:19: Hidden is \"maybe\": expected true or false",
              "3:5: unexpected text \"text\": values are written as attributes",
              "4:23: IRLength is \"65536\": expected a number from 0 to 65535, decimal or 0x-hexadecimal",
              "5:27: jtagDeviceID is \"xyz\": expected a number from 0 to 4294967295, decimal or 0x-hexadecimal",
              "5:43: attribute Vendor is given twice",
              "6:7: SysIO needs the attribute Name",
              "7:16: Package has no attribute \"Tpye\": did you mean Type?",
              "9:5: unknown element \"Unknown\" in Family: expected Device, Operation, ProgrammingMode or BScanControl",
              "10:18: Pin is \"-1\": expected a number from 0 to 65535, decimal or 0x-hexadecimal",
          }}});
}

TEST(Faults, ReferencesAreThoseOfXmlItself) {
  Check({
      {WithDevice("Name='AT&T'"), {"3:9: unknown reference \"&T\"" + kReferenceHint}},
      {WithDevice("Name='a & b'"), {"3:9: unknown reference \"&\"" + kReferenceHint}},
      {WithDevice("Name='&nbsp;&lt;&euro;'"),
       {"3:7: unknown reference \"&nbsp\"" + kReferenceHint, "3:17: unknown reference \"&euro\"" + kReferenceHint}},
      {WithDevice("Name='&#0;'"), {"3:7: unknown reference \"&#0\"" + kReferenceHint}},
      {WithDevice("Name='&#x1F;'"), {"3:7: unknown reference \"&#x1F\"" + kReferenceHint}},
      {WithDevice("Name='&#xD800;'"), {"3:7: unknown reference \"&#xD800\"" + kReferenceHint}},
      {WithDevice("Name='&#xFFFE;'"), {"3:7: unknown reference \"&#xFFFE\"" + kReferenceHint}},
      {WithDevice("Name='&#x110000;'"), {"3:7: unknown reference \"&#x110000\"" + kReferenceHint}},
      {WithDevice("Name='&#99999999999999999999;'"), {"3:7: unknown reference \"&#999999999999999999\"" + kReferenceHint}},
      {WithDevice("Name='&#;'"), {"3:7: unknown reference \"&#\"" + kReferenceHint}},
      {WithDevice("Name='&#65'"), {"3:7: unknown reference \"&#65\"" + kReferenceHint}},
      {WithDevice("Name='&#X41;'"), {"3:7: unknown reference \"&#X41\"" + kReferenceHint}},
      {WithDevice("Name='a<b'"), {"3:8: '<' within a value: expected &lt;"}},
      // in the first value, in the last, in one of several, and after a '>' or the other quote
      {WithDevice("Name='a>&b' Vendor=''"), {"3:9: unknown reference \"&b\"" + kReferenceHint}},
      {WithDevice("Name='a' Vendor='b&c'"), {"3:19: unknown reference \"&c\"" + kReferenceHint}},
      {WithDevice("Name='<' CodeName=\"a'&b\" Vendor='c>'"),
       {"3:7: '<' within a value: expected &lt;", "3:22: unknown reference \"&b\"" + kReferenceHint}},
  });
}

TEST(Faults, BrokenXmlIsOneFault) {
  const std::string tag = "malformed start tag: expected NAME=\"VALUE\", /> or >, and names that start with a letter";
  const std::string attribute = "malformed attribute: expected NAME=\"VALUE\", and a blank before the next one";
  Check({
      {"<DeviceDatabase>\n <Family>\n </Familie>\n</DeviceDatabase>",
       {"3:2: found \"</Familie>\", expected \"</Family>\": that element starts in line 2"}},
      {"<DeviceDatabase>\n <Family>\n  <Device>\n </Family>\n</DeviceDatabase>\n",
       {"4:2: found \"</Family>\", expected \"</Device>\": that element starts in line 3"}},
      {"<DeviceDatabase>\n<!-- <Family> -->\n<?a <b>?><Family Name='a>' AliasName=\"/>\"/>\n",
       {"4:1: found the end of the file, expected \"</DeviceDatabase>\": that element starts in line 1"}},
      {"<DeviceDatabase>", {"1:17: found the end of the file, expected \"</DeviceDatabase>\": that element starts in line 1"}},
      {"<DeviceDatabase/></DeviceDatabase>", {"1:18: found \"</DeviceDatabase>\", but no element is open"}},
      {"<DeviceDatabase><Family Name=PLD/></DeviceDatabase>", {"1:30: " + attribute}},
      {"<DeviceDatabase><Family Name/></DeviceDatabase>", {"1:29: " + attribute}},
      {"<DeviceDatabase><Family Name='a'AliasName='b'/></DeviceDatabase>", {"1:33: " + attribute}},
      {"<DeviceDatabase><Family Name='a></Family>\n</DeviceDatabase>", {"1:31: " + attribute}},
      {"<DeviceDatabase>\n <Family 1532Compliant='true'/></DeviceDatabase>", {"2:10: " + tag}},
      {"<DeviceDatabase><Family Name='a'", {"1:33: " + tag}},
      {"<DeviceDatabase>\n<!-- forgotten\n</DeviceDatabase>", {"2:1: this comment is not closed: expected -->"}},
      {"<DeviceDatabase><![CDATA[ x</DeviceDatabase>", {"1:17: this CDATA section is not closed: expected ]]>"}},
      {"<?xml version='1.0'\n<DeviceDatabase/>", {"1:1: this declaration is not closed: expected ?>"}},
      {"<!DOCTYPE DeviceDatabase [\n<DeviceDatabase/>", {"1:1: this document type is malformed or not closed"}},
      {"<DeviceDatabase><Family></Family x></DeviceDatabase>", {"1:34: malformed end tag: expected </NAME>"}},
      {"<DeviceDatabase>\n<", {"2:1: no tag starts here: expected a name after '<'"}},
      {"<DeviceDatabase><!ELEMENT a></DeviceDatabase>", {"1:17: no tag starts here: expected a name after '<'"}},
      {"<DeviceDatabase>\n  < Family/></DeviceDatabase>", {"2:3: no tag starts here: expected a name after '<'"}},
  });
}

TEST(Faults, TheTextIsUtf8WithoutControlCharacters) {
  const std::string notUtf8 = " is not UTF-8: save the file as UTF-8";
  const std::string control = ": XML does not allow it";
  Check({
      {WithDevice("Name='caf\xE9'"), {"3:10: byte 0xE9" + notUtf8}},
      {WithDevice("Name='\xC3\xA9\xC3'"), {"3:9: byte 0xC3" + notUtf8}},
      {WithDevice("Name='\xC0\x80'"), {"3:7: byte 0xC0" + notUtf8, "3:8: byte 0x80" + notUtf8}},  // overlong
      {WithDevice("Name='\xE0\x80\x80'"), {"3:7: byte 0xE0" + notUtf8, "3:8: byte 0x80" + notUtf8, "3:9: byte 0x80" + notUtf8}},
      {WithDevice("Name='\xED\xA0\x80'"), {"3:7: byte 0xED" + notUtf8, "3:8: byte 0xA0" + notUtf8, "3:9: byte 0x80" + notUtf8}},
      {WithDevice("Name='\xEF\xBF\xBE'"),
       {"3:7: byte 0xEF" + notUtf8, "3:8: byte 0xBF" + notUtf8, "3:9: byte 0xBE" + notUtf8}},  // U+FFFE
      {WithDevice("Name='\xF0\x8F\xBF\xBD'"),                                                  // overlong
       {"3:7: byte 0xF0" + notUtf8, "3:8: byte 0x8F" + notUtf8, "3:9: byte 0xBF" + notUtf8, "3:10: byte 0xBD" + notUtf8}},
      {WithDevice("Name='\xF4\x90\x80\x80'"),  // beyond U+10FFFF
       {"3:7: byte 0xF4" + notUtf8, "3:8: byte 0x90" + notUtf8, "3:9: byte 0x80" + notUtf8, "3:10: byte 0x80" + notUtf8}},
      {WithDevice("Name='\xF5'"), {"3:7: byte 0xF5" + notUtf8}},
      {"<DeviceDatabase/>\xE2\x82",
       {"1:18: byte 0xE2" + notUtf8, "1:18: unexpected text \"\\xE2\\x82\": values are written as attributes",
        "1:19: byte 0x82" + notUtf8}},
      {WithDevice("Name='\x01\x1B[31m'"), {"3:7: control character 0x01" + control, "3:8: control character 0x1B" + control}},
      {"<!-- \x0B -->\n<DeviceDatabase Version='\x7F' Nam='1'/>",
       {"1:6: control character 0x0B" + control, "2:29: DeviceDatabase has no attribute \"Nam\""}},
      {std::string("<DeviceDatabase\0/>", 18), {"1:16: NUL byte: this is not a text file in UTF-8"}},
      {std::string("<DeviceDatabase X=''/>\n\0\0", 25), {"2:1: NUL byte: this is not a text file in UTF-8"}},
      {std::string("\xFF\xFE<\0D\0", 6),
       {"1:1: byte 0xFF" + notUtf8, "1:2: byte 0xFE" + notUtf8, "1:4: NUL byte: this is not a text file in UTF-8"}},
  });
}

TEST(Faults, EveryByteOfALongTextIsChecked) {
  const std::string start = "<DeviceDatabase Comment='";
  for (std::size_t at = 0; at < 200; ++at) {
    std::string comment(200, 'a');
    comment[at] = '\x1F';
    const std::string place = "1:" + std::to_string(start.size() + at + 1);
    EXPECT_EQ(FaultsOf(start + comment + "'/>"), Texts{place + ": control character 0x1F: XML does not allow it"})
        << "row: " << at;
    EXPECT_EQ(FaultsOf(start + comment.replace(at, 1, "\xE2\x82\xAC") + "'/>"), Texts{}) << "row: " << at;
  }
}

TEST(Faults, PositionsCountLinesByTheirLineFeedAndColumnsInBytes) {
  Check({
      {"<DeviceDatabase\r\n X=''/>", {"2:2: DeviceDatabase has no attribute \"X\""}},
      {"<DeviceDatabase\n\n\n\tX=''/>", {"4:2: DeviceDatabase has no attribute \"X\""}},
      {"<DeviceDatabase Comment='\xC3\xA9\n' X=''/>", {"2:3: DeviceDatabase has no attribute \"X\""}},
      {"<DeviceDatabase Comment='\xC3\xA9&amp;' X=''/>", {"1:35: DeviceDatabase has no attribute \"X\""}},
      {"\xEF\xBB\xBF<DeviceDatabase X=''/>", {"1:17: DeviceDatabase has no attribute \"X\""}},
      {"\n<X/>", {"2:1: unknown element \"X\": expected DeviceDatabase"}},
  });
}

TEST(Faults, MessagesAreOneLineOfPrintableText) {
  Check({
      {WithDevice("Pin='&#10;&#9;&#xE9;\x7F'"),
       {"3:6: Pin is \"\\x0A\\x09\xC3\xA9\\x7F\": expected a number from 0 to 65535, decimal or 0x-hexadecimal"}},
      {WithDevice("Pin='" + std::string(100, '1') + "'"),
       {"3:6: Pin is \"" + std::string(60, '1') + "...\": expected a number from 0 to 65535, decimal or 0x-hexadecimal"}},
      {"<DeviceDatabase>first\nsecond</DeviceDatabase>", {"1:17: unexpected text \"first\": values are written as attributes"}},
  });
}

TEST(Faults, AFileWithoutDescriptionsIsFaulty) {
  const std::string nothing = "1:1: there is nothing in the file: expected a DeviceDatabase element";
  Check({
      {"", {nothing}},
      {"\xEF\xBB\xBF", {nothing}},
      {" \n", {nothing}},
      {"<?xml version='1.0'?>\n<!-- later -->\n", {nothing}},
  });
}

TEST(Faults, WhatTheLibraryCountsIn16BitsIsLimited) {
  const auto repeated = [](const std::string& element, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += element;
    return text;
  };
  const struct {
    const char* element;
    std::string before;
    std::string after;
  } rows[] = {
      {"<Family/>", "<DeviceDatabase>", "</DeviceDatabase>"},
      {"<Device/>", "<DeviceDatabase><Family>", "</Family></DeviceDatabase>"},
      {"<Operation Name='A'/>", "<DeviceDatabase><Family>", "</Family></DeviceDatabase>"},
      {"<Package/>", "<DeviceDatabase><Family><Device>", "</Device></Family></DeviceDatabase>"},
      {"<SysIO Name='A'/>", "<DeviceDatabase><Family><Device>", "</Device></Family></DeviceDatabase>"},
  };
  for (const auto& row : rows) {
    const std::string most = row.before + repeated(row.element, 65535);
    EXPECT_EQ(FaultsOf(most + row.after), Texts{}) << "row: " << row.element;
    const std::string name = std::string(row.element).substr(1, std::string(row.element).find_first_of(" /") - 1);
    EXPECT_EQ(FaultsOf(most + row.element + row.after),
              Texts{"1:" + std::to_string(most.size() + 1) + ": too many " + name + " elements: expected 65535 at most"})
        << "row: " << row.element;
  }
}

TEST(Faults, AFileHasAMillionElementsAtMost) {
  const auto repeated = [](const std::string& part, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += part;
    return text;
  };
  const std::string comment = "<DeviceDatabase><!--" + repeated("<a>", 999998);  // and the elements in it count as well
  EXPECT_EQ(FaultsOf(comment + "</a><?a?>--></DeviceDatabase>"), Texts{});
  EXPECT_EQ(FaultsOf(comment + "<a>--></DeviceDatabase>"),
            Texts{"1:" + std::to_string(comment.size() + 1) + ": the file has more than 1000000 elements: split it"});
  const std::string most = repeated("<a>", 1000000);
  EXPECT_EQ(FaultsOf(most + "<a"), Texts{"1:3000001: the file has more than 1000000 elements: split it"});
}

TEST(Faults, AFileHasAQuarterOfAMillionDevicesAtMost) {
  std::string text = "<DeviceDatabase>";
  for (int family = 0; family < 4; ++family) {
    text += "<Family>";
    for (int device = 0; device < 62500; ++device) text += "<Device/>";
    text += "</Family>";
  }
  EXPECT_EQ(FaultsOf(text + "<Family/></DeviceDatabase>"), Texts{});
  text += "<Family>";
  EXPECT_EQ(FaultsOf(text + "<Device/><Device/></Family></DeviceDatabase>"),
            Texts{"1:" + std::to_string(text.size() + 1) + ": the file has more than 250000 devices: split it"});
}

TEST(Faults, ATextOf64MiBIsTheLargest) {
  const std::string text = "<DeviceDatabase/>" + std::string((std::size_t{1} << 26) - 17, ' ');
  EXPECT_EQ(FaultsOf(text), Texts{});
  EXPECT_EQ(FaultsOf(text + " "), Texts{"1:1: cannot read the file: larger than 64 MiB"});
}

TEST(Loading, ReadsAPipeToItsEnd) {
  const support::TemporaryFolder folder;
  const std::string pipe = folder.Path() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::thread writer([&] { std::ofstream(pipe) << parse::WithDevice("Name='" + std::string(100000, 'x') + "'"); });
  const plddb::LoadResult result = plddb::LoadDescriptions(pipe);
  writer.join();
  ASSERT_NE(result.database, nullptr);
  EXPECT_EQ(std::string(parse::FirstDevice(result.database).GetName()).size(), 100000U);
}

TEST(DataFolder, IsBesideTheProgramWhereItHasDescriptions) {
  // The build tree has the shape of an installation.
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(plddb::DataFolder(), program.parent_path().parent_path() / "share/plddb");
}

TEST(Faults, AFileThatCannotBeReadIsFaulty) {
  const struct {
    const char* path;
    const char* text;
  } rows[] = {
      {"/no/such/folder/a.xml", "cannot read the file: No such file or directory"},
      {PLDDB_TEST_DIR, "cannot read the file: Is a directory"},
      {"", "cannot read the file: No such file or directory"},
      {"/dev/null", "there is nothing in the file: expected a DeviceDatabase element"},
      {"/dev/zero", "cannot read the file: larger than 64 MiB"},
  };
  for (const auto& row : rows) {
    const plddb::LoadResult result = plddb::LoadDescriptions(row.path);
    EXPECT_EQ(result.database, nullptr) << "row: " << row.path;
    ASSERT_EQ(result.faults.size(), 1U) << "row: " << row.path;
    EXPECT_EQ(plddb::ToString(result.faults[0]), std::string(row.path) + ":1:1: error: " + row.text);
  }
}
