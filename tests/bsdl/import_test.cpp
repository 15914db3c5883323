// What files give as descriptions: the record, the packages of several files, refusals, warnings and contradictions.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sample.h"

namespace {

namespace bsdl = plddb::bsdl;

const bsdl::ImportOptions kOptions = {"PLD1200", "", "", "", 0};

bsdl::Import Import(const std::vector<std::string>& texts, const bsdl::ImportOptions& options = kOptions) {
  std::vector<bsdl::File> files;
  for (const std::string& text : texts)
    files.push_back(bsdl::Parse(text, "dir/" + std::string(1, static_cast<char>('a' + files.size())) + ".bsd"));
  return bsdl::Describe(files, options);
}

/// The only device.
const DeviceInfo& Device(const bsdl::Import& import) { return *import.database->GetFamily(0)->GetDevice(0); }

std::string Text(const char* text) { return text == nullptr ? "(unset)" : text; }

/// "TYPE PON, TYPE PON"
std::string Packages(const DeviceInfo& device) {
  std::string text;
  for (int i = 0; const Package* const package = device.GetDevicePackage()->GetPackage(i); ++i) {
    text += (i == 0 ? "" : ", ") + Text(package->GetType()) + ' ' + Text(package->GetPON());
  }
  return text;
}

std::string WithIdcode(const std::string& pattern) {
  return sample::With("    \"XXXX\" &\n    \"0001001000110100\" &\n    \"00000101011\" &\n    \"1\";",
                      "    \"" + pattern + "\";");
}

std::string WithEntity(const std::string& entity, const std::string& map) {
  return sample::AllReplaced(sample::AllReplaced(sample::AllReplaced(sample::kText, "PLD1234A_TQ100", "@"), "TQ100", map), "@",
                             entity);
}

TEST(Record, HoldsWhatAFileStates) {
  const bsdl::Import import = Import({sample::kText});
  ASSERT_NE(import.database, nullptr) << sample::Lines(import.faults);
  EXPECT_EQ(sample::Lines(import.faults), "");
  const DeviceInfo& device = Device(import);
  EXPECT_EQ(Text(device.GetName()), "PLD1234A");
  EXPECT_EQ(Text(device.GetCodeName()), "PLD1234A");
  EXPECT_EQ(Text(device.GetAliasName()), "(unset)");
  EXPECT_EQ(Text(device.GetFamily()), "PLD1200");
  EXPECT_EQ(device.GetFamilyObject(), import.database->GetFamily(0));
  EXPECT_EQ(Text(device.GetComm()), "JTAG");
  EXPECT_EQ(Text(device.GetAlgOptions()), "JTAG");
  EXPECT_EQ(device.GetPin(), 100);
  EXPECT_EQ(device.GetjtagDeviceID(), 0x01234057U);
  EXPECT_EQ(device.GetjtagDeviceIDBackup(), 0x01234057U);
  EXPECT_EQ(device.GetDeviceIDScanMask(), 0x0FFFFFFFU);
  EXPECT_EQ(device.GetDeviceIDMask(), 0x0FFFFFFFU);
  EXPECT_EQ(device.GetDeviceIDMaskBackup(), 0x0FFFFFFFU);
  EXPECT_EQ(device.GetIDLength(), 32);
  EXPECT_EQ(device.GetIRLength(), 8);
  EXPECT_EQ(device.GetBSCANLength(), 4U);
  EXPECT_EQ(device.GetIDInstruction(), 0xFEU);
  EXPECT_EQ(device.GetUSERCODEInstruction(), 0xFDU);
  EXPECT_EQ(device.GetInstructionBypass(), 0xFFU);
  EXPECT_EQ(Text(device.GetInstructionBypassPattern()), "11111111");
  EXPECT_EQ(device.GetBypassLength(), 1);
  EXPECT_EQ(device.GetBypassValue(), 0U);
  EXPECT_EQ(Text(device.GetBSDLFile()), "a.bsd");
  EXPECT_EQ(Text(device.GetBSDLFileTime()), "(unset)");  // a text has no time
  EXPECT_EQ(Packages(device), "TQ100 PLD1234A-TQ100");
  EXPECT_EQ(device.GetDevicePackage()->GetPackage(0)->GetEntityName(), "PLD1234A_TQ100");
  EXPECT_EQ(import.database->GetDeviceWithEntityNameDisregardUES("pld1234a_tq100"), &device);
  EXPECT_EQ(import.database->GetDeviceWithCommAndID("JTAG", 0x71234057), &device);
  EXPECT_EQ(device.GetProgramTime(), 0);
  EXPECT_EQ(device.GetjtagLogicalUESLength(), 0U);
  const FamilyList& family = *import.database->GetFamily(0);
  EXPECT_EQ(Text(family.GetBypassInst()), "0xFF");
  EXPECT_EQ(Text(family.GetIDCodeInst()), "0xFE");
  EXPECT_FALSE(family.Is1532Compliant());
}

TEST(Record, TakesNameAndPackageFromTheEntity) {
  const struct {
    const char* entity;
    const char* map;
    const char* name;
    const char* package;
    int pins;
  } rows[] = {
      {"PLD1234A_TQ100", "TQ100", "PLD1234A", "TQ100 PLD1234A-TQ100", 100},
      {"pld1234a_tq100", "tq100", "PLD1234A", "TQ100 PLD1234A-TQ100", 100},
      {"Pld1234a_Tq100", "TQ100", "PLD1234A", "TQ100 PLD1234A-TQ100", 100},
      {"PLD1234ATQ100", "TQ100", "PLD1234ATQ100", "TQ100 PLD1234ATQ100", 100},
      {"PLD_12_TQ100", "TQ100", "PLD_12", "TQ100 PLD-12-TQ100", 100},
      {"PLD_12_TQ100", "LQFP64_PACKAGE", "PLD_12_TQ100", "LQFP64_PACKAGE PLD-12-TQ100", 64},
      {"F781962A", "DIE", "F781962A", "DIE F781962A", 0},
      {"PLD12_DW", "DW", "PLD12", "DW PLD12-DW", 0},
      {"_TQ100", "TQ100", "_TQ100", "TQ100 -TQ100", 100},
      {"TQ100", "TQ100", "TQ100", "TQ100 TQ100", 100},
      {"PLD12", "TQ_144", "PLD12", "TQ_144 PLD12", 144},
      {"PLD12", "B2B144", "PLD12", "B2B144 PLD12", 144},
      {"PLD12", "B2B144X", "PLD12", "B2B144X PLD12", 0},
      {"PLD12", "Q65535", "PLD12", "Q65535 PLD12", 65535},
      {"PLD12", "Q65536", "PLD12", "Q65536 PLD12", 0},
      {"PLD12", "Q99999999999999999999", "PLD12", "Q99999999999999999999 PLD12", 0},
      {"PLD12_V_TQ100", "V_TQ100", "PLD12", "V_TQ100 PLD12-V-TQ100", 100},
  };
  for (const auto& row : rows) {
    const bsdl::Import import = Import({WithEntity(row.entity, row.map)});
    const std::string which = std::string("row: ") + row.entity + " " + row.map;
    ASSERT_NE(import.database, nullptr) << which << sample::Lines(import.faults);
    EXPECT_EQ(Text(Device(import).GetName()), row.name) << which;
    EXPECT_EQ(Packages(Device(import)), row.package) << which;
    EXPECT_EQ(Device(import).GetPin(), row.pins) << which;
  }
}

TEST(Record, HasAPackageForEachPinMap) {
  const std::string two = "constant VQ64 : PIN_MAP_STRING := \"TCK : 1\"; constant TQ100 : PIN_MAP_STRING :=";
  const std::string maps = sample::kText.substr(
      sample::kText.find("  constant"), sample::kText.find("  attribute TAP_SCAN_IN") - sample::kText.find("  constant"));
  const struct {
    const char* what;
    std::string text;
    const char* name;
    const char* packages;
    int pins;
  } rows[] = {
      {"two maps", sample::With("constant TQ100 : PIN_MAP_STRING :=", two), "PLD1234A",
       "VQ64 PLD1234A-TQ100, TQ100 PLD1234A-TQ100", 0},
      {"no map", sample::With(maps, ""), "PLD1234A", "TQ100 PLD1234A-TQ100", 100},
      {"no default", sample::With(" := \"TQ100\"", ""), "PLD1234A", "TQ100 PLD1234A-TQ100", 100},
      {"no generic", sample::With("  generic (PHYSICAL_PIN_MAP : string := \"TQ100\");\n", ""), "PLD1234A",
       "TQ100 PLD1234A-TQ100", 100},
      {"neither", sample::Replaced(sample::With(maps, ""), " := \"TQ100\"", ""), "PLD1234A_TQ100", "(unset) PLD1234A-TQ100", 0},
      {"another default", sample::With(":= \"TQ100\"", ":= \"A_TQ100\""), "PLD1234A_TQ100", "TQ100 PLD1234A-TQ100", 100},
      {"an empty default", sample::With(":= \"TQ100\"", ":= \"\""), "PLD1234A", "TQ100 PLD1234A-TQ100", 100},
  };
  for (const auto& row : rows) {
    const bsdl::Import import = Import({row.text});
    ASSERT_NE(import.database, nullptr) << "row: " << row.what << sample::Lines(import.faults);
    EXPECT_EQ(Text(Device(import).GetName()), row.name) << "row: " << row.what;
    EXPECT_EQ(Packages(Device(import)), row.packages) << "row: " << row.what;
    EXPECT_EQ(Device(import).GetPin(), row.pins) << "row: " << row.what;
  }
}

TEST(Record, TakesWhatTheOptionsSay) {
  const bsdl::Import import = Import({sample::kText}, {"Other", "Mine-1", "Example Devices", "BG1", 0});
  const DeviceInfo& device = Device(import);
  EXPECT_EQ(Text(device.GetName()), "Mine-1");
  EXPECT_EQ(Text(device.GetCodeName()), "Mine-1");
  EXPECT_EQ(Text(device.GetVendor()), "Example Devices");
  EXPECT_EQ(Text(device.GetFamily()), "Other");
  EXPECT_EQ(Text(import.database->GetFamily(0)->GetName()), "Other");
  EXPECT_EQ(Packages(device), "BG1 PLD1234A-TQ100");
}

TEST(Idcode, GivesIdAndMasks) {
  const struct {
    const char* pattern;
    unsigned int id;
    unsigned int mask;
    unsigned int scanMask;
    const char* warning;
  } rows[] = {
      {"XXXX0001001000110100"
       "00000101011"
       "1",
       0x01234057, 0x0FFFFFFF, 0x0FFFFFFF, ""},
      {"00000001001000110100"
       "00000101011"
       "1",
       0x01234057, 0xFFFFFFFF, 0x0FFFFFFF, "fixes the version"},
      {"10100001001000110100"
       "00000101011"
       "1",
       0x01234057, 0xFFFFFFFF, 0x0FFFFFFF, "fixes the version"},
      {"0XX10001001000110100"
       "00000101011"
       "1",
       0x01234057, 0x9FFFFFFF, 0x0FFFFFFF, "fixes the version"},
      {"xxxx00010010001X01xx"
       "00000101011"
       "1",
       0x01224057, 0x0FFECFFF, 0x0FFECFFF, ""},
      {"XXXXXXXX001000110100"
       "00000101011"
       "1",
       0x00234057, 0x00FFFFFF, 0x00FFFFFF, ""},
      {"XXXX0001001000110100"
       "00000101011"
       "0",
       0x01234056, 0x0FFFFFFF, 0x0FFFFFFF, "bit 0 of the IDCODE is not 1"},
  };
  for (const auto& row : rows) {
    const bsdl::Import import = Import({WithIdcode(row.pattern)});
    ASSERT_NE(import.database, nullptr) << "row: " << row.pattern << sample::Lines(import.faults);
    EXPECT_EQ(Device(import).GetjtagDeviceID(), row.id) << "row: " << row.pattern;
    EXPECT_EQ(Device(import).GetDeviceIDMask(), row.mask) << "row: " << row.pattern;
    EXPECT_EQ(Device(import).GetDeviceIDScanMask(), row.scanMask) << "row: " << row.pattern;
    EXPECT_EQ(sample::Lines(import.faults).find(row.warning) != std::string::npos, true) << "row: " << row.pattern;
    EXPECT_EQ(import.faults.empty(), *row.warning == '\0') << "row: " << row.pattern << sample::Lines(import.faults);
  }
}

TEST(Record, HasTheMakerOfTheIdcodeUnlessToldOtherwise) {
  const struct {
    const char* maker;  // bits 11 to 1
    const char* option;
    const char* vendor;
  } rows[] = {
      {"00000101011", "Example", "Example"}, {"00001001001", "", "Xilinx"},
      {"00001101110", "", "Altera"},         {"00001111111", "", "(unset)"},  // the code 0x7F belongs to nobody
      {"00000000000", "", "(unset)"},
  };
  for (const auto& row : rows) {
    const bsdl::Import import =
        Import({sample::With("\"00000101011\"", "\"" + std::string(row.maker) + "\"")}, {"F", "", row.option, "", 0});
    ASSERT_NE(import.database, nullptr) << sample::Lines(import.faults);
    EXPECT_EQ(Text(Device(import).GetVendor()), row.vendor) << "row: " << row.maker;
  }
}

TEST(Record, MayHaveNoBoundaryRegister) {
  std::string text = sample::With("entity is 4;", "entity is 0;");
  const std::size_t start = text.find("  attribute BOUNDARY_REGISTER");
  text.erase(start, text.find("end PLD") - start);
  const bsdl::Import import = Import({text});
  ASSERT_NE(import.database, nullptr) << sample::Lines(import.faults);
  EXPECT_EQ(sample::Lines(import.faults), "");
  EXPECT_EQ(Device(import).GetBSCANLength(), 0U);
}

TEST(Codes, AreThoseThatADescriptionTakes) {
  const struct {
    const char* from;
    const char* to;
    unsigned int bypass;
    unsigned int idcode;
    unsigned int usercode;
    const char* warning;
  } rows[] = {
      {"BYPASS (11111111)", "BYPASS (11111111)", 0xFF, 0xFE, 0xFD, ""},
      {"BYPASS (11111111)", "BYPASS (01111111, 11111111)", 0xFF, 0xFE, 0xFD, "BYPASS has 2 codes: 11111111 is taken"},
      {"BYPASS (11111111)", "BYPASS (11111111, 10000000, 00000010)", 0xFF, 0xFE, 0xFD, "BYPASS has 3 codes: 11111111 is taken"},
      {"BYPASS (11111111)", "BYPASS (1X1X1X1X)", 0xFF, 0xFE, 0xFD, ""},
      {"BYPASS (11111111)", "BYPASS (01111111)", 0x7F, 0xFE, 0xFD, "no code of BYPASS is all ones: 01111111 is taken"},
      {"IDCODE (11111110)", "IDCODE (1111111X, 11111110)", 0xFF, 0xFE, 0xFD, "IDCODE has 2 codes: 11111110 is taken"},
      {"IDCODE (11111110)", "IDCODE (1X11111X)", 0xFF, 0xBE, 0xFD, ""},
      {"IDCODE (11111110)", "ID_CODE (11111110)", 0xFF, 0, 0xFD,
       "there is an IDCODE_REGISTER, but no IDCODE in INSTRUCTION_OPCODE"},
      {"USERCODE (11111101)", "USER_CODE (11111101)", 0xFF, 0xFE, 0, ""},
      {"USERCODE (11111101)", "usercode (11111101)", 0xFF, 0xFE, 0xFD, ""},
      {"SAMPLE (00000001)", "SAMPLE (00000001, 00000010)", 0xFF, 0xFE, 0xFD, "warning: SAMPLE has 2 codes\n"},
  };
  for (const auto& row : rows) {
    const bsdl::Import import = Import({sample::With(row.from, row.to)});
    ASSERT_NE(import.database, nullptr) << "row: " << row.to << sample::Lines(import.faults);
    EXPECT_EQ(Device(import).GetInstructionBypass(), row.bypass) << "row: " << row.to;
    EXPECT_EQ(Device(import).GetIDInstruction(), row.idcode) << "row: " << row.to;
    EXPECT_EQ(Device(import).GetUSERCODEInstruction(), row.usercode) << "row: " << row.to;
    EXPECT_NE(sample::Lines(import.faults).find(row.warning), std::string::npos) << "row: " << row.to;
    EXPECT_EQ(import.faults.empty(), *row.warning == '\0') << "row: " << row.to << sample::Lines(import.faults);
  }
}

TEST(Codes, OfPrivateInstructionsAreNotWarnedOf) {
  const bsdl::Import import =
      Import({sample::With("\"SAMPLE (00000001),\" &", "\"SAMPLE (00000001), MINE (00000010, 00000011),\" &"), sample::kText});
  EXPECT_NE(sample::Lines(import.faults), "");
  const bsdl::Import quiet = Import(
      {sample::Replaced(sample::With("\"SAMPLE (00000001),\" &", "\"SAMPLE (00000001), MINE (00000010, 00000011),\" &"),
                        "end PLD", "attribute INSTRUCTION_PRIVATE of PLD1234A_TQ100 : entity is \"Other, Mine\"; end PLD")});
  EXPECT_EQ(sample::Lines(quiet.faults), "");
}

/// The sample with codes of `bits` bits.
std::string WithLength(std::size_t bits) {
  std::string text = sample::With("entity is 8;", "entity is " + std::to_string(bits) + ";");
  for (const char* const code : {"11111111", "00000000", "00000001", "11111110", "11111101", "000XXX01"}) {
    std::string longer = code;
    longer.insert(0, bits - 8, *code);
    text = sample::AllReplaced(text, std::string("(") + code + ")", "(" + longer + ")");
    text = sample::AllReplaced(text, std::string("\"") + code + "\"", "\"" + longer + "\"");
  }
  return text;
}

TEST(Codes, OfMoreThan32BitsAreLeftOutButForThePattern) {
  const bsdl::Import fits = Import({WithLength(32)});
  ASSERT_NE(fits.database, nullptr) << sample::Lines(fits.faults);
  EXPECT_EQ(sample::Lines(fits.faults), "");
  EXPECT_EQ(Device(fits).GetInstructionBypass(), 0xFFFFFFFFU);
  EXPECT_EQ(Device(fits).GetIDInstruction(), 0xFFFFFFFEU);
  const bsdl::Import wide = Import({WithLength(38)});
  ASSERT_NE(wide.database, nullptr) << sample::Lines(wide.faults);
  EXPECT_EQ(sample::Lines(wide.faults),
            "dir/a.bsd:21:62: warning: the instruction register has more than 32 bits: codes are left out, but for BYPASS in "
            "InstructionBypassPattern\n");
  EXPECT_EQ(Device(wide).GetIRLength(), 38);
  EXPECT_EQ(Device(wide).GetInstructionBypass(), 0U);
  EXPECT_EQ(Device(wide).GetIDInstruction(), 0U);
  EXPECT_EQ(Device(wide).GetUSERCODEInstruction(), 0U);
  EXPECT_EQ(Text(Device(wide).GetInstructionBypassPattern()), std::string(38, '1'));
  EXPECT_EQ(wide.database->GetFamily(0)->GetBypassInst(), nullptr);
  EXPECT_NE(wide.comments.front().find("IDCODE " + std::string(37, '1') + "0"), std::string::npos) << wide.comments.front();
}

TEST(Refused, AreFilesThatCannotBeIdentified) {
  const struct {
    std::string text;
    const char* fault;
  } rows[] = {
      {sample::WithoutAttribute("INSTRUCTION_LENGTH"), "dir/a.bsd:2:8: error: there is no INSTRUCTION_LENGTH\n"},
      {sample::WithoutAttribute("IDCODE_REGISTER"), "dir/a.bsd:2:8: error: there is no IDCODE_REGISTER\n"},
      {sample::WithoutAttribute("INSTRUCTION_OPCODE"), "dir/a.bsd:2:8: error: there is no BYPASS in INSTRUCTION_OPCODE\n"},
      {sample::With("    \"BYPASS (11111111),\" &\n", ""), "dir/a.bsd:23:5: error: there is no BYPASS in INSTRUCTION_OPCODE\n"},
      {sample::With("BYPASS (11111111)", "BYPAS (11111111)"),
       "dir/a.bsd:23:5: error: there is no BYPASS in INSTRUCTION_OPCODE\n"},
      {WithIdcode("XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX1"),
       "dir/a.bsd:30:6: error: the IDCODE leaves the maker open, bits 11 to 1: other devices answer to it, too\n"},
      {WithIdcode("XXXXXXXXXXXXXXXXXXXX000001010111"),
       "dir/a.bsd:30:6: error: the IDCODE leaves 16 bits of the part number open, bits 27 to 12: expected at most 4\n"},
      {WithIdcode("XXXXXXXXX01000110100000001010111"),
       "dir/a.bsd:30:6: error: the IDCODE leaves 5 bits of the part number open, bits 27 to 12: expected at most 4\n"},
      {WithIdcode("XXXX0001001000110100X00001010111"),
       "dir/a.bsd:30:6: error: the IDCODE leaves the maker open, bits 11 to 1: other devices answer to it, too\n"},
      {WithIdcode("XXXX00010010001101000000010101X1"),
       "dir/a.bsd:30:6: error: the IDCODE leaves the maker open, bits 11 to 1: other devices answer to it, too\n"},
  };
  for (const auto& row : rows) {
    const bsdl::Import import = Import({row.text});
    EXPECT_EQ(import.database, nullptr) << "row: " << row.fault;
    EXPECT_EQ(sample::Lines(import.faults), row.fault);
  }
}

TEST(Refused, IsAFileWithAnyFault) {
  const bsdl::Import import =
      Import({sample::Replaced(WithIdcode("XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX1"), "(00000001)", "(0000001)"), sample::kText});
  EXPECT_EQ(import.database, nullptr);
  EXPECT_EQ(sample::Lines(import.faults),
            "dir/a.bsd:25:14: error: the code of SAMPLE has 7 bits: expected 8, the INSTRUCTION_LENGTH\n"
            "dir/a.bsd:30:6: error: the IDCODE leaves the maker open, bits 11 to 1: other devices answer to it, too\n");
}

TEST(Files, OfOneDeviceGiveItTheirPackages) {
  const std::string other = WithEntity("PLD1234A_VQ64", "VQ64");
  const struct {
    std::vector<std::string> texts;
    const char* packages;
    int pins;
  } rows[] = {
      {{sample::kText, other}, "TQ100 PLD1234A-TQ100, VQ64 PLD1234A-VQ64", 0},
      {{other, sample::kText}, "VQ64 PLD1234A-VQ64, TQ100 PLD1234A-TQ100", 0},
      {{sample::kText, sample::kText}, "TQ100 PLD1234A-TQ100", 100},
      {{sample::kText, WithEntity("pld1234a_tq100", "tq100")}, "TQ100 PLD1234A-TQ100", 100},
      {{sample::kText, sample::WithoutLine("attribute BOUNDARY_LENGTH")}, "TQ100 PLD1234A-TQ100", 100},
      {{sample::kText, sample::With("EXTEST (00000000)", "EXTEST (00000010)")}, "TQ100 PLD1234A-TQ100", 100},
      {{sample::kText, WithEntity("PLD1234A_TQ100X", "TQ100X")}, "TQ100 PLD1234A-TQ100, TQ100X PLD1234A-TQ100X", 100},
  };
  for (const auto& row : rows) {
    const bsdl::Import import = Import(row.texts);
    ASSERT_NE(import.database, nullptr) << "row: " << row.packages << sample::Lines(import.faults);
    EXPECT_EQ(import.database->GetFamily(0)->GetDeviceCount(), 1) << "row: " << row.packages;
    EXPECT_EQ(Packages(Device(import)), row.packages);
    EXPECT_EQ(Device(import).GetPin(), row.pins) << "row: " << row.packages;
    EXPECT_EQ(Text(Device(import).GetBSDLFile()), "a.bsd");
    EXPECT_EQ(import.comments.size(), 1U);
  }
}

TEST(Files, OfOtherDevicesGiveOtherDevices) {
  const bsdl::Import import =
      Import({sample::kText, WithEntity("PLD1238A_TQ100", "TQ100"), WithEntity("PLD1234A_VQ64", "VQ64")});
  ASSERT_NE(import.database, nullptr) << sample::Lines(import.faults);
  const FamilyList& family = *import.database->GetFamily(0);
  ASSERT_EQ(family.GetDeviceCount(), 2);
  EXPECT_EQ(Text(family.GetDevice(0)->GetName()), "PLD1234A");
  EXPECT_EQ(Text(family.GetDevice(1)->GetName()), "PLD1238A");
  EXPECT_EQ(Packages(*family.GetDevice(1)), "TQ100 PLD1238A-TQ100");
  const bsdl::Import named = Import({sample::kText, WithEntity("PLD1238A_TQ100", "TQ100")}, {"PLD1200", "One", "", "", 0});
  ASSERT_NE(named.database, nullptr) << sample::Lines(named.faults);
  EXPECT_EQ(named.database->GetFamily(0)->GetDeviceCount(), 1);
}

TEST(Files, TakeTheVersionTogether) {
  const std::string open = WithIdcode("XXXX0001001000110100000001010111");
  const std::string first = WithIdcode("00010001001000110100000001010111");
  const std::string second = WithIdcode("00100001001000110100000001010111");
  const struct {
    std::vector<std::string> texts;
    unsigned int mask;
  } rows[] = {
      {{open, first}, 0x0FFFFFFF},
      {{first, open}, 0x0FFFFFFF},
      {{first, first}, 0xFFFFFFFF},
      {{first, second}, 0xCFFFFFFF},
  };
  for (const auto& row : rows) {
    const bsdl::Import import = Import(row.texts);
    ASSERT_NE(import.database, nullptr) << sample::Lines(import.faults);
    EXPECT_EQ(Device(import).GetDeviceIDMask(), row.mask);
    EXPECT_EQ(Device(import).GetDeviceIDScanMask(), 0x0FFFFFFFU);
  }
}

TEST(Files, ThatContradictEachOtherAreBothNamed) {
  const struct {
    std::string other;
    const char* fault;
  } rows[] = {
      {sample::With("\"0001001000110100\"", "\"0001001000110101\""),
       "dir/b.bsd:30:6: error: IDCODE of PLD1234A is XXXX0001001000110101000001010111, but XXXX0001001000110100000001010111 in "
       "dir/a.bsd:30:6\n"},
      {sample::With("\"0001001000110100\"", "\"000100100011010X\""),
       "dir/b.bsd:30:6: error: IDCODE of PLD1234A is XXXX000100100011010X000001010111, but XXXX0001001000110100000001010111 in "
       "dir/a.bsd:30:6\n"},
      {sample::AllReplaced(sample::With("entity is 4;", "entity is 5;"), "\"3 (BC_1", "\"4 (BC_1"),
       "dir/b.bsd:38:59: error: BOUNDARY_LENGTH of PLD1234A is 5, but 4 in dir/a.bsd:38:59\n"},
      {sample::With("IDCODE (11111110)", "IDCODE (11111100)"),
       "dir/b.bsd:26:14: error: the code of IDCODE of PLD1234A is 11111100, but 11111110 in dir/a.bsd:26:14\n"},
      {sample::With("USERCODE (11111101)", "USERCODE (11111100)"),
       "dir/b.bsd:27:16: error: the code of USERCODE of PLD1234A is 11111100, but 11111101 in dir/a.bsd:27:16\n"},
      {WithLength(9),
       "dir/b.bsd:21:62: error: INSTRUCTION_LENGTH of PLD1234A is 9, but 8 in dir/a.bsd:21:62\n"
       "dir/b.bsd:23:14: error: the code of BYPASS of PLD1234A is 111111111, but 11111111 in dir/a.bsd:23:14\n"
       "dir/b.bsd:26:14: error: the code of IDCODE of PLD1234A is 111111110, but 11111110 in dir/a.bsd:26:14\n"
       "dir/b.bsd:27:16: error: the code of USERCODE of PLD1234A is 111111101, but 11111101 in dir/a.bsd:27:16\n"},
  };
  for (const auto& row : rows) {
    const bsdl::Import import = Import({sample::kText, row.other});
    EXPECT_EQ(import.database, nullptr) << "row: " << row.fault;
    EXPECT_EQ(sample::Lines(import.faults), row.fault);
  }
}

TEST(Family, HasTheCodesThatAllItsDevicesHave) {
  const std::string other = WithEntity("PLD1238A_TQ100", "TQ100");
  const struct {
    std::vector<std::string> texts;
    const char* bypass;
    const char* idcode;
    bool is1532;
  } rows[] = {
      {{sample::kText, other}, "0xFF", "0xFE", false},
      {{sample::kText, sample::Replaced(other, "IDCODE (11111110)", "IDCODE (11111100)")}, "0xFF", "(unset)", false},
      {{sample::kText, sample::Replaced(other, "IDCODE (11111110)", "ID_CODE (11111110)")}, "0xFF", "(unset)", false},
      {{WithLength(10)}, "0x3FF", "0x3FE", false},
      {{sample::With("2001.all;", "2001.all; use STD_1532_2001.all;")}, "0xFF", "0xFE", true},
      {{sample::With("2001.all;", "2001.all; use std_1532_2002.ALL;")}, "0xFF", "0xFE", true},
      {{sample::kText, sample::With("2001.all;", "2001.all; use STD_1532_2002.all;")}, "0xFF", "0xFE", true},
      {{other, sample::With("2001.all;", "2001.all; use STD_1532_2002.all;")}, "0xFF", "0xFE", false},
  };
  for (const auto& row : rows) {
    const bsdl::Import import = Import(row.texts);
    ASSERT_NE(import.database, nullptr) << sample::Lines(import.faults);
    const FamilyList& family = *import.database->GetFamily(0);
    EXPECT_EQ(Text(family.GetBypassInst()), row.bypass);
    EXPECT_EQ(Text(family.GetIDCodeInst()), row.idcode);
    EXPECT_EQ(family.Is1532Compliant(), row.is1532);
  }
}

TEST(Comments, HoldWhatARecordCannot) {
  const std::string text = sample::Replaced(
      sample::With("\"SAMPLE (00000001),\" &", "\"SAMPLE (00000001), MINE (00000010, 00000011),\" &"), "end PLD",
      "attribute INSTRUCTION_PRIVATE of PLD1234A_TQ100 : entity is \"MINE\"; attribute TAP_SCAN_RESET of TRST : signal is true;"
      "attribute COMPLIANCE_PATTERNS of PLD1234A_TQ100 : entity is \"(A) (1)\";"
      "attribute DESIGN_WARNING of PLD1234A_TQ100 : entity is \"Mind -- the\" & \" gap ---> \xE9\"; end PLD");
  const bsdl::Import import = Import({text});
  ASSERT_NE(import.database, nullptr) << sample::Lines(import.faults);
  EXPECT_EQ(import.comments.front(),
            "From a.bsd (PLD1234A_TQ100):\n"
            "      codes: EXTEST 00000000, SAMPLE 00000001\n"
            "      private codes: MINE 00000010 00000011\n"
            "      INSTRUCTION_CAPTURE: 000XXX01\n"
            "      registers: BOUNDARY EXTEST SAMPLE, DEVICE_ID IDCODE USERCODE\n"
            "      USERCODE_REGISTER: XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX\n"
            "      maximum TCK: 10 MHz\n"
            "      TAP_SCAN_RESET: TRST\n"
            "      COMPLIANCE_PATTERNS: (A) (1)\n"
            "      DESIGN_WARNING: Mind - - the gap - - -> ?");
  EXPECT_NE(plddb::ParseDescriptions(bsdl::Write(import), "w.xml").database, nullptr);
}

TEST(Comments, NameFilesThatStateTheSameTogether) {
  const std::string other = WithEntity("PLD1234A_VQ64", "VQ64");
  EXPECT_EQ(Import({sample::kText, other}).comments.front().rfind("From a.bsd (PLD1234A_TQ100), b.bsd (PLD1234A_VQ64):\n", 0),
            0U);
  const std::string two = Import({sample::kText, sample::Replaced(other, "(10.0e6, BOTH)", "(5.0e6, BOTH)")}).comments.front();
  EXPECT_NE(two.find("maximum TCK: 10 MHz\n     From b.bsd (PLD1234A_VQ64):\n"), std::string::npos) << two;
}

TEST(Programming, IsTakenFromTheFlowsWithAUnit) {
  const std::string text =
      sample::Replaced(sample::Replaced(sample::With("2001.all;", "2001.all; use STD_1532_2002.all;"), "DEVICE_ID (IDCODE",
                                        "ISC_PDATA[32] (ISC_PROGRAM), ISC_ADDRESS[23] (A), DEVICE_ID (IDCODE"),
                       "end PLD",
                       "attribute ISC_FLOW of PLD1234A_TQ100 : entity is\n"
                       "\"flow_erase initialize \" &\n"
                       "\"(ISC_ADDRESS_SHIFT 23:00 WAIT TCK 1, 1.0e-3) (DSM_CLEAR WAIT 350.0e-3),\" &\n"
                       "\"flow_program(array) initialize (ISC_PROGRAM 32:? WAIT 1.0e-6) \" &\n"
                       "\"REPEAT 79872 (ISC_PROGRAM 32:? WAIT TCK 1, 305.0\" & \"e-6),\" &\n"
                       "\"flow_verify initialize (A 1:0) Repeat 79872 (ISC_READ WAIT TCK 1 32:?),\" &\n"
                       "\"flow_done REPEAT 2 (isc_program 8:? wait 2.0e-6) TERMINATE (ISC_PROGRAM 8:? WAIT 1)\"; end PLD");
  const bsdl::File file = bsdl::Parse(text, "a.bsd");
  EXPECT_EQ(sample::Lines(file.faults), "");
  EXPECT_DOUBLE_EQ(file.facts.programming.programTime, 1);
  EXPECT_DOUBLE_EQ(file.facts.programming.eraseTime, 0.35);
  EXPECT_DOUBLE_EQ(file.facts.programming.verifyTime, 0);
  EXPECT_DOUBLE_EQ(file.facts.programming.bits, 79872 * 32 + 16);
  const std::string usual = sample::Replaced(text, "WAIT 1)\"", "WAIT TCK 1)\"");
  const struct {
    double unit;
    int program;
    unsigned int erase;
    const char* warning;
  } rows[] = {
      {1e-6, 305, 350000, ""},
      {1e-3, 1, 350, ""},
      {1, 1, 1, ""},
      {1e-9, 0, 350000000, "ProgramTime would be more than 65535: it is left out"},
  };
  for (const auto& row : rows) {
    const bsdl::Import import = Import({usual}, {"F", "", "", "", row.unit});
    ASSERT_NE(import.database, nullptr) << sample::Lines(import.faults);
    const DeviceInfo& device = Device(import);
    EXPECT_EQ(device.GetProgramTime(), row.program) << "row: " << row.unit;
    EXPECT_EQ(device.GetEraseTime(), row.erase) << "row: " << row.unit;
    EXPECT_EQ(device.GetVerifyTime(), 0) << "row: " << row.unit;
    EXPECT_EQ(device.GetFuseNumber(), 2555904U + 16) << "row: " << row.unit;
    EXPECT_EQ(device.GetBackupFuseNumber(), 2555904U + 16) << "row: " << row.unit;
    EXPECT_EQ(device.GetDataLength(), 32U) << "row: " << row.unit;
    EXPECT_EQ(device.GetBackupDataLength(), 32U) << "row: " << row.unit;
    EXPECT_EQ(device.GetAddressLength(), 23U) << "row: " << row.unit;
    EXPECT_EQ(device.GetBackupAddressLength(), 23U) << "row: " << row.unit;
    EXPECT_NE(sample::Lines(import.faults).find(row.warning), std::string::npos) << sample::Lines(import.faults);
  }
  const bsdl::Import without = Import({usual});
  EXPECT_EQ(Device(without).GetProgramTime(), 0);
  EXPECT_EQ(Device(without).GetFuseNumber(), 0U);
  EXPECT_EQ(Device(without).GetDataLength(), 0U);
  EXPECT_NE(without.comments.front().find("IEEE 1532 flows: program 305 us, erase 350 ms, 2555920 bits"), std::string::npos)
      << without.comments.front();
}

TEST(Import, KnowsTheUnitsOfTimes) {
  EXPECT_EQ(bsdl::SecondsOf("s"), 1);
  EXPECT_EQ(bsdl::SecondsOf("ms"), 1e-3);
  EXPECT_EQ(bsdl::SecondsOf("us"), 1e-6);
  EXPECT_EQ(bsdl::SecondsOf("ns"), 1e-9);
  for (const char* const none : {"", "S", "m", "us ", "min"}) EXPECT_EQ(bsdl::SecondsOf(none), 0) << none;
}

}  // namespace
