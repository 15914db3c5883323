// What good files load.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "parse.h"
#include "tests/support/read_file.h"

namespace {

using parse::FirstDevice;
using parse::FirstFamily;
using parse::InFamily;
using parse::Parsed;
using parse::WithDevice;

const std::string kEveryList = std::string(PLDDB_TEST_DIR) + "/descriptions/every_list.xml";

std::vector<std::string> Operations(const FamilyList& family) {
  std::vector<std::string> names;
  for (int i = 0; i < family.GetOperationCount(); ++i) names.emplace_back(family.GetOperation(i));
  return names;
}

std::vector<std::string> SysIOs(const DeviceInfo& device) {
  std::vector<std::string> names;
  for (int i = 0; i < device.GetSysIOCount(); ++i) names.emplace_back(device.GetSysIO(i));
  return names;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(Loading, BuildsTheTreeInFileOrder) {
  const DeviceListOwner database = Parsed(R"(
    <DeviceDatabase Version="1.0" Comment="two families">
      <Family Name="PLD1200">
        <Device Name="PLD1234A"><Package Type="TQ100"><Adapter VendorName="V" AdapterName="A"/></Package><Package Type="BG256"/></Device>
        <Device Name="PLD1234B"/>
      </Family>
      <Family Name="PLD5600"><Device Name="PLD5678"/></Family>
    </DeviceDatabase>)");
  EXPECT_STREQ(database->GetVersion(), "1.0");
  EXPECT_STREQ(database->GetComment(), "two families");
  ASSERT_EQ(database->GetFamilyCount(), 2);
  EXPECT_STREQ(database->GetFamily(1)->GetName(), "PLD5600");
  ASSERT_EQ(database->GetFamily(0)->GetDeviceCount(), 2);
  EXPECT_STREQ(database->GetFamily(0)->GetDevice(1)->GetName(), "PLD1234B");
  const DeviceInfo& device = FirstDevice(database);
  EXPECT_EQ(device.GetFamilyObject(), database->GetFamily(0));
  ASSERT_EQ(device.GetDevicePackage()->GetPackageCount(), 2);
  EXPECT_STREQ(device.GetDevicePackage()->GetPackage(1)->GetType(), "BG256");
  EXPECT_STREQ(device.GetDevicePackage()->GetPackage(0)->GetAdapterName(0), "A");
  EXPECT_STREQ(device.GetDevicePackage()->GetPackage(0)->GetAdapterVendor(0), "V");
}

TEST(Loading, RequiresNoAttributeThatTheLibraryDoesNotRequire) {
  const DeviceListOwner database = Parsed("<DeviceDatabase><Family><Device><Package/></Device></Family></DeviceDatabase>");
  EXPECT_EQ(database->GetVersion(), nullptr);
  EXPECT_EQ(FirstFamily(database).GetName(), nullptr);
  EXPECT_EQ(FirstDevice(database).GetFamily(), nullptr);
  ASSERT_EQ(FirstDevice(database).GetDevicePackage()->GetPackageCount(), 1);
  EXPECT_EQ(FirstDevice(database).GetDevicePackage()->GetPackage(0)->GetBackupPON(), nullptr);
}

TEST(Loading, TakesAnEmptyDatabase) {
  EXPECT_EQ(Parsed("<DeviceDatabase/>")->GetFamilyCount(), 0);
  EXPECT_EQ(Parsed("<DeviceDatabase> <!-- nothing yet --> </DeviceDatabase>")->GetFamilyCount(), 0);
}

TEST(Loading, AnEmptyTextIsSetNotLeftOut) {
  const DeviceListOwner database = Parsed(WithDevice("CodeName=\"\""));
  EXPECT_STREQ(FirstDevice(database).GetCodeName(), "");
  EXPECT_EQ(FirstDevice(database).GetAliasName(), nullptr);
}

TEST(Loading, ReadsNumbersDecimalAndHexadecimal) {
  const struct {
    const char* text;
    unsigned int value;
  } rows[] = {
      {"0", 0},
      {"7", 7},
      {"007", 7},
      {"0x0", 0},
      {"0x1f", 31},
      {"0x1F", 31},
      {"0x0000001F", 31},
      {"010", 10},
      {"4294967295", 4294967295},
      {"0xFFFFFFFF", 4294967295},
  };
  for (const auto& row : rows) {
    const DeviceListOwner database = Parsed(WithDevice("FuseNumber=\"" + std::string(row.text) + "\""));
    EXPECT_EQ(FirstDevice(database).GetFuseNumber(), row.value) << "row: " << row.text;
  }
}

TEST(Loading, ReadsSignedNumbers) {
  const struct {
    const char* text;
    int value;
  } rows[] = {
      {"0", 0},
      {"-0", 0},
      {"-1", -1},
      {"-0x10", -16},
      {"2147483647", 2147483647},
      {"0x7FFFFFFF", 2147483647},
      {"-2147483648", -2147483647 - 1},
      {"-0x80000000", -2147483647 - 1},
  };
  for (const auto& row : rows) {
    const DeviceListOwner database = Parsed(WithDevice("SyncExtDoneColumn=\"" + std::string(row.text) + "\""));
    EXPECT_EQ(FirstDevice(database).GetSyncExtDoneColumn(), row.value) << "row: " << row.text;
  }
}

TEST(Loading, ReadsFlags) {
  EXPECT_TRUE(FirstDevice(Parsed(WithDevice("DisableDeviceSTAPLSupport=\"true\""))).GetDisableDeviceSTAPLSupport());
  EXPECT_FALSE(FirstDevice(Parsed(WithDevice("DisableDeviceSTAPLSupport=\"false\""))).GetDisableDeviceSTAPLSupport());
}

TEST(Loading, TextsAreReadAsXmlDefinesThem) {
  const struct {
    const char* attribute;
    const char* text;
  } rows[] = {
      {R"(Name="A&amp;B &lt;&gt; &quot;&apos;")", "A&B <> \"'"},
      {R"(Name="&#80;&#x4C;D")", "PLD"},
      {R"(Name='"quoted"')", "\"quoted\""},
      {R"(Name="it's")", "it's"},
      {R"(Name="a > b")", "a > b"},
      {"Name=\"\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80\"", "\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80"},
      {"Name=\"&#xE9;&#x20AC;&#x1F600;\"", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {"Name=\"one\ntwo\tthree\"", "one two three"},  // white space as written is a blank
      {"Name=\"one\r\ntwo\"", "one two"},
      {"Name=\"one&#10;two&#9;three\"", "one\ntwo\tthree"},
      {R"(Name="  kept  ")", "  kept  "},
      {R"(Name="&amp;lt;")", "&lt;"},  // decoded once
      {"Name = 'blanks around'", "blanks around"},
  };
  for (const auto& row : rows) {
    EXPECT_STREQ(FirstDevice(Parsed(WithDevice(row.attribute))).GetName(), row.text) << "row: " << row.attribute;
  }
}

TEST(Loading, PassesOverWhatIsNoDescription) {
  const std::string device = R"(<DeviceDatabase><Family><Device Name="PLD1234A"/></Family></DeviceDatabase>)";
  const std::string rows[] = {
      "\xEF\xBB\xBF" + device,
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n" + device + "\r\n",
      "<!DOCTYPE DeviceDatabase>\n" + device,
      "<!DOCTYPE DeviceDatabase [ <!ELEMENT Family ANY> ]>" + device,
      "<!-- before -->" + device + "<!-- behind --><?and this?>\n\n",
      "<DeviceDatabase><!-- < & > --><?target text?><Family>\n\t<Device "
      "Name=\"PLD1234A\"></Device>\n</Family></DeviceDatabase>",
      R"(<DeviceDatabase xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:noNamespaceSchemaLocation="plddb.xsd">)"
      R"(<Family><Device Name="PLD1234A"/></Family></DeviceDatabase>)",
  };
  for (const std::string& row : rows) EXPECT_STREQ(FirstDevice(Parsed(row)).GetName(), "PLD1234A") << "row: " << row;
}

TEST(Loading, ABackupTakesItsWorkingValueWhereItIsNotGiven) {
  const std::string values =
      R"(jtagDeviceID="1" DeviceIDMask="2" ARCHLength="3" ARCHRow="4" ELength="5" ERow="6" AddressLength="7"
                                DataLength="8" FuseNumber="9")";
  const DeviceListOwner database = Parsed(WithDevice(values));
  const DeviceInfo& device = FirstDevice(database);
  EXPECT_EQ(device.GetjtagDeviceIDBackup(), 1U);
  EXPECT_EQ(device.GetDeviceIDMaskBackup(), 2U);
  EXPECT_EQ(device.GetBackupARCHLength(), 3U);
  EXPECT_EQ(device.GetBackupARCHRow(), 4U);
  EXPECT_EQ(device.GetBackupELength(), 5U);
  EXPECT_EQ(device.GetBackupERow(), 6U);
  EXPECT_EQ(device.GetBackupAddressLength(), 7U);
  EXPECT_EQ(device.GetBackupDataLength(), 8U);
  EXPECT_EQ(device.GetBackupFuseNumber(), 9U);
}

TEST(Loading, ABackupThatIsGivenStaysAlsoWhenItIsZero) {
  const std::string values = R"(jtagDeviceID="1" jtagDeviceIDBackup="0" DeviceIDMaskBackup="12" DeviceIDMask="2" ARCHLength="3"
      BackupARCHLength="13" BackupARCHRow="14" BackupELength="15" BackupERow="16" BackupAddressLength="17" BackupDataLength="18"
      FuseNumber="9" BackupFuseNumber="0")";
  const DeviceListOwner database = Parsed(WithDevice(values));
  const DeviceInfo& device = FirstDevice(database);
  EXPECT_EQ(device.GetjtagDeviceIDBackup(), 0U);
  EXPECT_EQ(device.GetDeviceIDMaskBackup(), 12U);
  EXPECT_EQ(device.GetBackupARCHLength(), 13U);
  EXPECT_EQ(device.GetBackupARCHRow(), 14U);
  EXPECT_EQ(device.GetBackupELength(), 15U);
  EXPECT_EQ(device.GetBackupERow(), 16U);
  EXPECT_EQ(device.GetBackupAddressLength(), 17U);
  EXPECT_EQ(device.GetBackupDataLength(), 18U);
  EXPECT_EQ(device.GetBackupFuseNumber(), 0U);
}

TEST(Loading, ARestoreNeverWritesZerosOverLoadedValues) {
  const DeviceListOwner database = Parsed(WithDevice(
      R"(DeviceIDMask="2" ARCHLength="3" ARCHRow="4" ELength="5" ERow="6" AddressLength="7" DataLength="8" FuseNumber="9")"));
  DeviceInfo& device = FirstDevice(database);
  device.RestoreDeviceBackupValue();
  EXPECT_EQ(device.GetDeviceIDMask(), 2U);
  EXPECT_EQ(device.GetARCHLength(), 3U);
  EXPECT_EQ(device.GetARCHRow(), 4U);
  EXPECT_EQ(device.GetELength(), 5U);
  EXPECT_EQ(device.GetERow(), 6U);
  EXPECT_EQ(device.GetAddressLength(), 7U);
  EXPECT_EQ(device.GetDataLength(), 8U);
  EXPECT_EQ(device.GetFuseNumber(), 9U);
}

TEST(Loading, APackagesBackupPonTakesItsPonWhereItIsNotGiven) {
  const DeviceListOwner database =
      Parsed(WithDevice("", R"(<Package PON="A"/><Package PON="B" BackupPON="C"/><Package BackupPON="D"/>)"));
  const PackageList& packages = *FirstDevice(database).GetDevicePackage();
  ASSERT_EQ(packages.GetPackageCount(), 3);
  EXPECT_STREQ(packages.GetPackage(0)->GetBackupPON(), "A");
  EXPECT_STREQ(packages.GetPackage(1)->GetBackupPON(), "C");
  EXPECT_EQ(packages.GetPackage(2)->GetPON(), nullptr);
  EXPECT_EQ(database->GetDeviceWithPON("A", false), &FirstDevice(database));
  EXPECT_EQ(database->GetDeviceWithPON("B", false), nullptr);
}

TEST(Loading, ADevicesFamilyTextIsTheNameOfItsFamilyWhereItIsNotGiven) {
  EXPECT_STREQ(FirstDevice(Parsed(WithDevice(""))).GetFamily(), "PLD1200");
  EXPECT_STREQ(FirstDevice(Parsed(WithDevice("Family=\"other\""))).GetFamily(), "other");
  EXPECT_STREQ(FirstDevice(Parsed(WithDevice("Family=\"\""))).GetFamily(), "");
}

TEST(Loading, CommGivesTheAlgorithmOptionsWhereTheyAreNotGiven) {
  EXPECT_STREQ(FirstDevice(Parsed(WithDevice("Comm=\"JTAG\""))).GetAlgOptions(), "JTAG");
  const DeviceListOwner database = Parsed(WithDevice("AlgOptions=\"FAST\" Comm=\"JTAG\""));
  EXPECT_STREQ(FirstDevice(database).GetAlgOptions(), "FAST");
  EXPECT_STREQ(FirstDevice(database).GetComm(), "JTAG");
}

TEST(Loading, EntriesAndOperationsComeFromATextAndThenFromElements) {
  const DeviceListOwner database = Parsed(InFamily(R"(
      <Operation Name=" Erase "/>
      <Device SysIOList='"A", " ", "B"'><SysIO Name=" C "/><SysIO Name='"D"'/></Device>
      <Operation Name="Program"/>)"));
  EXPECT_EQ(Operations(FirstFamily(database)), (Texts{" Erase ", "Program"}));
  EXPECT_EQ(SysIOs(FirstDevice(database)), (Texts{"A", "", "B", " C ", "\"D\""}));
}

TEST(Loading, ControlsOfABoundaryScanRecordMayBeTextsOrElements) {
  const DeviceListOwner database = Parsed(InFamily(R"(
      <BScanControl Controls="B;IN;OUT;"/>
      <BScanControl DefaultValue="-5"/>
      <BScanControl Controls="B;IN;" DefaultValue="0"><Control Name="a;b"/><Control Name=""/></BScanControl>)"));
  const auto& records = FirstFamily(database).GetListBScanControl();
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0].DefaultValue, 1);
  EXPECT_EQ(records[0].Controls, (Texts{"IN", "OUT"}));
  EXPECT_EQ(records[1].DefaultValue, -5);
  EXPECT_EQ(records[1].Controls, Texts{});
  EXPECT_EQ(records[2].DefaultValue, 0);
  EXPECT_EQ(records[2].Controls, (Texts{"IN", "a;b", ""}));
}

TEST(Loading, VoltagesOfLaterRecordsReachTheseRecords) {
  const DeviceListOwner database = Parsed(WithDevice("", R"(
      <ControlVoltage VCCCore="1.2" VCCJ="3.3" PinList="1;2"/>
      <ControlVoltage VCCCore="2.5" VCCJ="1.8" PinList="3"/>
      <ControlVoltage/>)"));
  const auto& voltages = FirstDevice(database).GetControlVoltage();
  ASSERT_EQ(voltages.size(), 3U);
  EXPECT_EQ(voltages[0].VCCJ, "3.3");
  EXPECT_EQ(voltages[1].VCCCore, "2.5");
  EXPECT_EQ(voltages[1].VCCJ, "1.8");
  EXPECT_EQ(voltages[1].PinList, "3");
  EXPECT_EQ(voltages[2].VCCCore, "");
}

TEST(Loading, AnEbrBlockIsNumberedByItsAttributesInTheLibrarysOrder) {
  const DeviceListOwner database =
      Parsed(WithDevice("", R"(<EBR Address="5 to 6" Column="0 to 31" BitName="8" Name="A"/><EBR Name="A" BitName="0x2"/>)"));
  const auto& blocks = FirstDevice(database).GetlistControlEBR();
  ASSERT_EQ(blocks.size(), 2U);
  EXPECT_EQ(blocks[0].Name, "A");
  ASSERT_EQ(blocks[0].Entries.size(), 8U);
  const int columns[] = {0, 8, 16, 24, 0, 8, 16, 24};
  const int addresses[] = {5, 5, 5, 5, 6, 6, 6, 6};
  for (std::size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(blocks[0].Entries[i].BitName, std::to_string(i + 1)) << "row: " << i;
    EXPECT_EQ(blocks[0].Entries[i].Column, columns[i]) << "row: " << i;
    EXPECT_EQ(blocks[0].Entries[i].Address, addresses[i]) << "row: " << i;
    EXPECT_FALSE(blocks[0].Entries[i].Value) << "row: " << i;
  }
  EXPECT_EQ(blocks[1].Entries.size(), 2U);
}

TEST(Loading, AnEbrBlockMayListItsEntriesOrHaveNone) {
  const DeviceListOwner database = Parsed(WithDevice("", R"(
      <EBR Name="listed"><Entry BitName="x" Value="true" Address="-3" Column="40"/><Entry/></EBR>
      <EBR Name="counted" BitName="3"/>
      <EBR Name="empty"/>
      <EBR Name=""><Entry Column="1"/></EBR>)"));
  const auto& blocks = FirstDevice(database).GetlistControlEBR();
  ASSERT_EQ(blocks.size(), 4U);
  ASSERT_EQ(blocks[0].Entries.size(), 2U);
  EXPECT_EQ(blocks[0].Entries[0].BitName, "x");
  EXPECT_TRUE(blocks[0].Entries[0].Value);
  EXPECT_EQ(blocks[0].Entries[0].Address, -3);
  EXPECT_EQ(blocks[0].Entries[0].Column, 40);
  EXPECT_EQ(blocks[0].Entries[1].BitName, "");
  EXPECT_EQ(blocks[1].Entries.size(), 3U);
  EXPECT_EQ(blocks[2].Name, "empty");
  EXPECT_EQ(blocks[2].Entries.size(), 0U);
  ASSERT_EQ(blocks[3].Entries.size(), 1U);
  EXPECT_EQ(blocks[3].Name, "");
}

TEST(Loading, RecordElementsFollowTheRecordsOfTheTexts) {
  const DeviceListOwner database = Parsed(WithDevice(R"(ListControlReg1BitName="N;A;B;" ListPersistent_fuseAddress="A;1;"
      ListControlReg0Frequency="F;2;" ListControlStatusBitName="N;DONE;" MultibootCfgAddr="1 2" MultibootAutoAdd="3")",
                                                     R"(
      <ControlRegOne BitName="C" Value="4"/><Persistent_fuse Address="2" Value="5"/><ControlRegZero Frequency="9"/>
      <ControlStatus BitName="BUSY" Text="t"/><MultibootCfgAddr Value="-1"/><MultibootAutoAdd Value="0x10"/>
      <ControlRegOne BitName="D"/>)"));
  DeviceInfo& device = FirstDevice(database);
  ASSERT_EQ(device.GetlistControlRegOne().size(), 4U);
  EXPECT_EQ(device.GetlistControlRegOne()[1].BitName, "B");
  EXPECT_EQ(device.GetlistControlRegOne()[2].Value, 4);
  EXPECT_EQ(device.GetlistControlRegOne()[3].BitName, "D");
  ASSERT_EQ(device.GetlistPersistent_fuse().size(), 2U);
  EXPECT_EQ(device.GetlistPersistent_fuse()[1].Value, 5);
  ASSERT_EQ(device.GetlistControlRegZero().size(), 2U);
  EXPECT_EQ(device.GetlistControlRegZero()[1].Frequency, "9");
  ASSERT_EQ(device.GetlistControlStatus().size(), 2U);
  EXPECT_EQ(device.GetlistControlStatus()[1].Text, "t");
  EXPECT_EQ(device.GetMultibootCfgAddr(), (std::vector<int>{1, 2, -1}));
  EXPECT_EQ(device.GetMultibootAutoAdd(), (std::vector<int>{3, 16}));
}

TEST(Loading, TheExampleFillsEveryList) {
  const plddb::LoadResult result = plddb::LoadDescriptions(kEveryList);
  ASSERT_EQ(result.faults.size(), 0U) << plddb::ToString(result.faults.front());
  FamilyList& family = FirstFamily(result.database);
  EXPECT_EQ(Operations(family), (Texts{"Erase", "Program", "Verify", "Erase,Program,Verify", "Read and Save"}));
  EXPECT_EQ(family.GetListProgrammingModeControl(), (Texts{"JTAG", "SPI", "I2C"}));
  ASSERT_EQ(family.GetListBScanControl().size(), 2U);
  EXPECT_EQ(family.GetListBScanControl()[1].Controls, (Texts{"KEEPER", "PULLUP;PULLDOWN"}));
  ASSERT_EQ(family.GetDeviceCount(), 2);
  for (int i = 0; i < 2; ++i) {
    DeviceInfo& device = *family.GetDevice(i);
    EXPECT_EQ(SysIOs(device), (Texts{"LVCMOS33", "LVTTL"})) << "row: " << i;
    EXPECT_EQ(device.GetlistControlRegZero().at(1).MasterClock, "0000001") << "row: " << i;
    EXPECT_EQ(device.GetlistControlRegZero().at(1).ClockDivider, "64") << "row: " << i;
    EXPECT_EQ(device.GetlistControlRegOne().at(1).BitName, "BACKGROUND") << "row: " << i;
    EXPECT_EQ(device.GetlistControlRegOne().at(1).Column, 8) << "row: " << i;
    EXPECT_EQ(device.GetlistPersistent_fuse().at(1).Address, 201) << "row: " << i;
    EXPECT_EQ(device.GetlistControlStatus().at(1).BitName, "BUSY") << "row: " << i;
    EXPECT_EQ(device.GetlistControlStatus().at(1).Index, 12) << "row: " << i;
    EXPECT_EQ(device.GetControlVoltage().at(0).PinList, "3;17;42") << "row: " << i;
    ASSERT_EQ(device.GetlistControlEBR().size(), 2U) << "row: " << i;
    EXPECT_EQ(device.GetlistControlEBR()[0].Entries.at(1).Column, 8) << "row: " << i;
    EXPECT_EQ(device.GetlistControlEBR()[1].Entries.at(3).Address, 8) << "row: " << i;
    EXPECT_EQ(device.GetMultibootCfgAddr(), (std::vector<int>{65536, 131072})) << "row: " << i;
    EXPECT_EQ(device.GetMultibootAutoAdd().at(0), 16) << "row: " << i;
  }
  EXPECT_EQ(family.GetDevice(0)->GetlistAddressRange(), (Texts{"0-369", "370-739"}));
  EXPECT_EQ(family.GetDevice(0)->GetDevicePackage()->GetPackage(0)->GetAdapterCount(), 2);
  EXPECT_EQ(family.GetDevice(1)->GetlistControlStatus()[0].Text, "configuration done");
}

TEST(Loading, AFileAndItsTextGiveTheSame) {
  const plddb::LoadResult fromFile = plddb::LoadDescriptions(kEveryList);
  const DeviceListOwner fromText = Parsed(support::ReadFile(kEveryList));
  ASSERT_NE(fromFile.database, nullptr);
  EXPECT_STREQ(fromFile.database->GetComment(), "Examples & tests");
  EXPECT_STREQ(fromText->GetComment(), "Examples & tests");
  EXPECT_EQ(fromFile.database->GetDeviceCount(), fromText->GetDeviceCount());
}

TEST(Loading, TheTextMayBeAnyPartOfALargerOne) {
  const std::string device = R"(<DeviceDatabase Version="1"/>)";
  const std::string larger = "x" + device + "y";
  EXPECT_STREQ(Parsed(std::string_view(larger).substr(1, device.size()))->GetVersion(), "1");
}
