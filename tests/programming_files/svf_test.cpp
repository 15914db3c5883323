#include <gtest/gtest.h>

#include "known_data.h"
#include "samples.h"

namespace {

using namespace known_data;
using namespace samples;

const std::string kPositionComment = "//Loading device with 'idcode' instruction.\n//Position 1: ";

TEST(Svf, TellsIdsThatItCompares) {
  const struct {
    const char* what;
    std::string body;
    Names ids;
    Names names;
    Names devices;
  } cases[] = {
      {"CoolRunner-II",
       kPositionComment + "xc2c32a\n" + SvfCheck("8", "01", "f6e1c093", "0fff8fff"),
       {"F6E1C093/0FFF8FFF"},
       {"xc2c32a"},
       {"XC2C32A"}},
      {"the automotive name",
       kPositionComment + "xa2c32a\n" + SvfCheck("8", "01", "f6e1c093", "0fff8fff"),
       {"F6E1C093/0FFF8FFF"},
       {"xa2c32a"},
       {"XC2C32A"}},
      {"XC9500XL", SvfCheck("8", "fe", "f9604093", "0fffffff"), {"F9604093/0FFFFFFF"}, {}, {"XC9572XL"}},
      {"CR LF",
       "SIR 8 TDI (fe);\r\nSDR 32 TDI (0)\r\n TDO (f9604093)\r\n MASK (0fffffff);\r\n",
       {"F9604093/0FFFFFFF"},
       {},
       {"XC9572XL"}},
      {"any case, blanks in digits",
       "sir 8 tdi (fE); sdr 32 Tdi (00 00 00 00) tdo (F96 04093) mask (0fff ffff);",
       {"F9604093/0FFFFFFF"},
       {},
       {"XC9572XL"}},
      {"all on one line", "SIR 8 TDI(fe);SDR 32 TDI(0)TDO(f9604093)MASK(0fffffff);", {"F9604093/0FFFFFFF"}, {}, {"XC9572XL"}},
      {"digits over lines",
       "SIR 8 TDI (fe);\nSDR 32 TDI (00\n00) TDO (f960\n4093) MASK (0ffff\nfff);",
       {"F9604093/0FFFFFFF"},
       {},
       {"XC9572XL"}},
      {"comments in a statement",
       "SIR 8 ! IDCODE\nTDI (fe); SDR 32 // id\nTDI (0) TDO (f9604093) ! chip\nMASK (0fffffff);",
       {"F9604093/0FFFFFFF"},
       {},
       {"XC9572XL"}},
      {"leading zeros left out",
       "SIR 10 TDI (59); SDR 32 TDI (0) TDO (150803F) MASK (FFFFFFFF);",
       {"0150803F/FFFFFFFF"},
       {},
       {"ATF1508AS"}},
      {"full mask",
       "SIR 10 TDI (059); SDR 32 TDI (FFFFFFFF) TDO (0150803F) MASK (FFFFFFFF);",
       {"0150803F/FFFFFFFF"},
       {},
       {"ATF1508AS"}},
      {"no mask is a full mask",
       "SIR 10 TDI (059); SDR 32 TDI (FFFFFFFF) TDO (0151803F);",
       {"0151803F/FFFFFFFF"},
       {},
       {"ATF1508ASV"}},
      {"a mask sticks",
       "SDR 32 TDI (0) MASK (0fffffff); SIR 8 TDI (fe); SDR 32 TDI (0) TDO (f9604093);",
       {"F9604093/0FFFFFFF"},
       {},
       {"XC9572XL"}},
      {"a change of length forgets the mask",
       "SIR 8 TDI (fe); SDR 32 TDI (0) MASK (00000001); SDR 8 TDI (0); SDR 32 TDI (0) TDO (09604093);",
       {"09604093/FFFFFFFF"},
       {},
       {"XC9572XL"}},
      {"compared twice, stated once",
       SvfCheck("8", "fe", "f9604093", "0fffffff") + SvfCheck("8", "fe", "f9604093", "0fffffff"),
       {"F9604093/0FFFFFFF"},
       {},
       {"XC9572XL"}},
      {"a signature is no id", "SIR 10 TDI (291); SDR 32 TDI (0) TDO (720FB1FF) MASK (FFFFFFFF);", {}, {}, {}},
      {"a mask of 0 compares nothing", "SIR 8 TDI (fe); SDR 32 TDI (0) TDO (f9604093) MASK (00000000);", {}, {}, {}},
      {"nothing is compared", "SIR 8 TDI (fe); SDR 32 TDI (f9604093);", {}, {}, {}},
      {"silicon words of MAX 10", "SIR 10 TDI (205); SDR 32 TDI (0) TDO (00000501) MASK (FFFFFFFF);", {}, {}, {}},
      {"data that look like any odd word", "SIR 10 TDI (205); SDR 32 TDI (0) TDO (12345679) MASK (FFFFFFFF);", {}, {}, {}},
      {"IR length tells two ids apart",
       "SIR 6 TDI (09); SDR 32 TDI (0) TDO (0484A093) MASK (0FFFFFFF);",
       {"0484A093/0FFFFFFF"},
       {},
       {"XCKU9P"}},
      {"IR length tells two ids apart",
       "SIR 5 TDI (01); SDR 32 TDI (0) TDO (0484A093) MASK (0FFF8FFF);",
       {"0484A093/0FFF8FFF"},
       {},
       {"XCR3064XL"}},
      {"several devices share an id",
       "SIR 10 TDI (006); SDR 32 TDI (0) TDO (020F10DD) MASK (0FFFFFFF);",
       {"020F10DD/0FFFFFFF"},
       {},
       {"10CL006", "10CL010", "EP3C10", "EP3C5", "EP4CE10", "EP4CE6"}},
      {"the comment tells which is likely",
       "!Device #1: EP4CE6 - top.sof Mon Jan  1 00:00:00 2023\nSIR 10 TDI (006); SDR 32 TDI (0) TDO (020F10DD) MASK "
       "(0FFFFFFF);",
       {"020F10DD/0FFFFFFF"},
       {"EP4CE6"},
       {"EP4CE6", "10CL006", "10CL010", "EP3C10", "EP3C5", "EP4CE10"}},
      {"an undescribed part of a known maker",
       "SIR 6 TDI (09); SDR 32 TDI (0) TDO (0FFF1093) MASK (0FFFFFFF);",
       {"0FFF1093/0FFFFFFF"},
       {},
       {}},
      {"after a reset",
       "SIR 8 TDI (ed); STATE RESET; SDR 32 TDI (0) TDO (f9604093) MASK (0fffffff);",
       {"F9604093/0FFFFFFF"},
       {},
       {"XC9572XL"}},
      {"an undescribed part of a known maker, after a reset",
       "SIR 6 TDI (05); STATE RESET IDLE; SDR 32 TDI (0) TDO (0FFF1093) MASK (0FFFFFFF);",
       {"0FFF1093/0FFFFFFF"},
       {},
       {}},
      {"after a private instruction",
       "SIR 8 TDI (ed); SDR 32 TDI (0) TDO (f9604093) MASK (0fffffff);",
       {"F9604093/0FFFFFFF"},
       {},
       {"XC9572XL"}},
      {"data that look like an id",
       SvfCheck("8", "fe", "f9604093", "0fffffff") + "SIR 8 TDI (ee); SDR 32 TDI (0) TDO (09602093) MASK (ffffffff);",
       {"F9604093/0FFFFFFF"},
       {},
       {"XC9572XL"}},
      {"data of a known maker", "SIR 8 TDI (ee); SDR 32 TDI (0) TDO (0FFF1093) MASK (ffffffff);", {}, {}, {}},
      {"a stacked device, whose instruction is not described",
       "SIR 24 TDI (124924); SDR 32 TDI (0) TDO (04B51093) MASK (0FFFFFFF);",
       {"04B51093/0FFFFFFF"},
       {},
       {"XCVU13P"}},
      {"T8 after its instruction",
       "SIR 4 TDI (3); SDR 32 TDI (0) TDO (00000001) MASK (FFFFFFFF);",
       {"00000001/FFFFFFFF"},
       {},
       {"T4", "T8"}},
      {"1 after another instruction", "SIR 4 TDI (2); SDR 32 TDI (0) TDO (00000001) MASK (FFFFFFFF);", {}, {}, {}},
  };
  for (const auto& c : cases) {
    const std::string bytes = Svf(c.body);
    const File file = Read(bytes);
    EXPECT_EQ(FormatOf(file), "svf") << c.what;
    EXPECT_EQ(Statements(file, Kind::kId), c.ids) << c.what;
    EXPECT_EQ(Statements(file, Kind::kCommentName), c.names) << c.what;
    EXPECT_EQ(DevicesFor(bytes), c.devices) << c.what;
    EXPECT_TRUE(file.faults.empty()) << c.what;
  }
}

const std::string kMaxWords =
    "SIR 10 TDI (203);\nSDR 13 TDI (0089);\nSIR 10 TDI (205);\nSDR 16 TDI (FFFF) TDO (8232);\nSDR 16 TDI (FFFF) TDO "
    "(2AA2);\nSDR 16 TDI (FFFF) TDO (4A82);\n";

TEST(Svf, TellsAFamilyByItsSiliconWordsAndTheDeviceByTheComment) {
  const std::string maxTwo = kMaxWords + "SDR 16 TDI (FFFF) TDO (0C2C);\nSDR 16 TDI (FFFF) TDO (0000);\n";
  const std::string maxFive = kMaxWords + "SDR 16 TDI (FFFF) TDO (8C0C);\nSDR 16 TDI (FFFF) TDO (0020);\n";
  const struct {
    std::string bytes;
    Names signatures;
    Names devices;
  } cases[] = {
      {"!Device #1: EPM240 - path.pof Mon Jan  1 2023\n" + maxTwo, {"8232 2AA2 4A82 0C2C 0000"}, {"EPM240"}},
      {"!Device #1: EPM570T100 - path.pof Mon Jan  1 2023\n" + maxTwo, {"8232 2AA2 4A82 0C2C 0000"}, {"EPM570"}},
      {"!Device #1: 5M570Z - path.pof Mon Jan  1 2023\n" + maxFive, {"8232 2AA2 4A82 8C0C 0020"}, {"5M570Z"}},
      {maxTwo, {"8232 2AA2 4A82 0C2C 0000"}, {}},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    EXPECT_EQ(FormatOf(file), "svf") << c.bytes;
    EXPECT_EQ(Statements(file, Kind::kSignature), c.signatures) << c.bytes;
    EXPECT_EQ(DevicesFor(c.bytes), c.devices) << c.bytes;
  }
  const Verdict verdict = KnownReader().Judge(Read(maxTwo));
  EXPECT_NE(AllReasons(verdict).find("family MAX II, but not which device"), std::string::npos) << AllReasons(verdict);
}

TEST(Svf, FindsAConfigurationStreamInAScan) {
  std::string stream = WideStream(0x0362D093) + std::string(2000, '\0');
  stream = WithReversedBits(stream);
  std::string digits;
  for (auto c = stream.rbegin(); c != stream.rend(); ++c) digits += Hex(static_cast<unsigned char>(*c), 2);
  const std::string bytes = "SIR 6 TDI (05);\nSDR " + std::to_string(8 * stream.size()) + " TDI (" + digits + ");\n";
  EXPECT_NE(bytes.find("66AA9955"), std::string::npos);
  EXPECT_EQ(DevicesFor(bytes), Names{"XC7A35T"});
}

TEST(Svf, ReadsTheIdsOfAWholeChain) {
  const File file = Read("STATE RESET;\nSDR 64 TDI(0) TDO(064100410BA00477);\n");
  EXPECT_EQ(Statements(file, Kind::kId), (Names{"0BA00477/FFFFFFFF", "06410041/FFFFFFFF"}));
}

TEST(Svf, AnEmptySessionIsNamedAsSuch) {
  for (const std::string& bytes : {Svf(""), std::string("// Created using Xilinx iMPACT Software [ISE - 9.2i]\n"),
                                   std::string("TRST OFF;\nSTATE IDLE;\n")}) {
    const File file = Read(bytes);
    EXPECT_EQ(FormatOf(file), "svf") << bytes;
    EXPECT_EQ(file.remark, "an empty session: it shifts no data") << bytes;
    EXPECT_TRUE(file.faults.empty()) << bytes;
    EXPECT_FALSE(IsKnown(bytes)) << bytes;
  }
}

TEST(Svf, FaultsLeadToTheirPlace) {
  const struct {
    const char* bytes;
    std::uint64_t line, column;
    const char* text;
  } cases[] = {
      {"TRST OFF;\nSIR 8 TDI (fe)", 2, 1, "the file ends in this statement, before its ';'"},
      {"TRST OFF;\n  SIR 8 TDI (fe", 2, 13, "expected ')' after hex digits"},
      {"TRST OFF;\nFOO 8;\n", 2, 1, "'FOO' is no SVF command"},
      {"TRST OFF;\nSIR x TDI (0);\n", 2, 1, "expected a number of bits after SIR"},
      {"TRST OFF;\nSIR 8 TDI (xy);\n", 2, 11, "expected hex digits and ')'"},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    if (file.faults.empty()) {
      ADD_FAILURE() << c.bytes;
      continue;
    }
    EXPECT_EQ(file.faults[0].place.line, c.line) << c.bytes;
    EXPECT_EQ(file.faults[0].place.column, c.column) << c.bytes;
    EXPECT_EQ(file.faults[0].text, c.text) << c.bytes;
  }
}

// --- XSVF -------------------------------------------------------------------------------------------------------------------

std::string Xid(std::uint32_t irBits, std::uint32_t instruction, std::uint32_t tdo, std::uint32_t mask) {
  return Xsvf(XsvfIr(irBits, instruction) + XsvfCheck(32, BigEndian(tdo, 4), BigEndian(mask, 4)));
}

TEST(Xsvf, TellsIdsThatItCompares) {
  const struct {
    const char* what;
    std::string bytes;
    Names ids;
    Names devices;
    bool isKnown;
  } cases[] = {
      {"XC9500XL", Xid(8, 0xFE, 0xF9604093, 0x0FFFFFFF), {"F9604093/0FFFFFFF"}, {"XC9572XL"}, true},
      {"exact mask", Xid(8, 0xFE, 0x29504093, 0xFFFFFFFF), {"29504093/FFFFFFFF"}, {"XC9572"}, true},
      {"XPLA3 without the maker", Xid(5, 0x01, 0xF494FFFF, 0x0FFF8001), {"F494FFFF/0FFF8001"}, {"XCR3256XL"}, true},
      {"AS and ASV", Xid(10, 0x059, 0x0150803F, 0xFFFEEFFF), {"0150803F/FFFEEFFF"}, {"ATF1508AS", "ATF1508ASV"}, true},
      {"every ATF15xx",
       Xid(10, 0x059, 0x0150803F, 0xFFF00000),
       {"0150803F/FFF00000"},
       {"ATF1502AS", "ATF1502ASV", "ATF1504AS", "ATF1504ASV", "ATF1508AS", "ATF1508ASV"},
       false},
      {"a chain written out",
       Xsvf(XsvfIr(14, 0x3FC9) +
            XsvfCheck(33, BigEndian(0, 1) + BigEndian(0xF1414093, 4), BigEndian(0, 1) + BigEndian(0x0FFFFFFF, 4))),
       {"F1414093/0FFFFFFF"},
       {"XC3S200"},
       true},
      {"the same, the device nearest TDI",
       Xsvf(XsvfIr(14, 0x09FF) +
            XsvfCheck(33, BigEndian(1, 1) + BigEndian(0xE2828126, 4), BigEndian(0, 1) + BigEndian(0x1FFFFFFE, 4))),
       {"F1414093/0FFFFFFF"},
       {"XC3S200"},
       true},
      {"a signature",
       Xsvf(XsvfIr(10, 0x022) + XsvfCheck(64, std::string("\0\0\x52\x41\x54\x45\x41\x4C", 8), std::string(8, '\xFF'))),
       {},
       {},
       false},
      {"data after another instruction", Xid(8, 0xED, 0x12345679, 0xFFFFFFFF), {}, {}, false},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    EXPECT_EQ(FormatOf(file), "xsvf") << c.what;
    EXPECT_EQ(Statements(file, Kind::kId), c.ids) << c.what;
    EXPECT_EQ(DevicesFor(c.bytes), c.devices) << c.what;
    EXPECT_EQ(IsKnown(c.bytes), c.isKnown) << c.what;
    EXPECT_TRUE(file.faults.empty()) << c.what;
  }
}

TEST(Xsvf, PassesOverEveryInstruction) {
  const std::string all = Words(
      {
          0x16, 'a', 0,                                      // XCOMMENT
          0x17, 0,   0,    0,    0,    0,    0,              // XWAIT
          0x15, 0,   8,    0xFF,                             // XSIR2
          0x08, 0,   0,    0,    16,                         // XSDRSIZE
          0x0A, 0,   0,    0,    3,                          // XSETSDRMASKS: two bits of data
          0x0B, 0,   0,    2,    1,    2,                    // XSDRINC: twice
          0x03, 0,   0,    0x0C, 0,    0,    0x0D, 0, 0,     // XSDR, XSDRB, XSDRC
          0x0E, 0,   0,    0x0F, 0,    0,    0,    0,        // XSDRE, XSDRTDOB
          0x10, 0,   0,    0,    0,    0x11, 0,    0, 0, 0,  // XSDRTDOC, XSDRTDOE
          0x12, 1,   0x13, 0,    0x14, 1,    0x07, 9,        // XSTATE, XENDIR, XENDDR, XREPEAT
          0x04, 0,   0,    1,    0,                          // XRUNTEST
      },
      1);
  const std::string bytes = Xsvf(all + XsvfIr(8, 0xFE) + XsvfCheck(32, BigEndian(0xF9604093, 4), BigEndian(0x0FFFFFFF, 4)));
  EXPECT_EQ(DevicesFor(bytes), Names{"XC9572XL"});
  EXPECT_TRUE(Read(bytes).faults.empty());
}

TEST(Xsvf, GivesTheSignatureAsText) {
  const File file =
      Read(Xsvf(XsvfIr(10, 0x022) + XsvfCheck(64, std::string("\0\0\x52\x41\x54\x45\x41\x4C", 8), std::string(8, '\xFF'))));
  EXPECT_EQ(Statements(file, Kind::kSignature), Names{"ALTERA"});
}

TEST(Xsvf, FaultsLeadToTheirByte) {
  const std::string whole = Xid(8, 0xFE, 0xF9604093, 0x0FFFFFFF);
  const struct {
    std::string bytes;
    std::uint64_t offset;
  } cases[] = {
      {whole.substr(0, 17), 15},
      {whole.substr(0, whole.size() - 1), whole.size() - 1},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    EXPECT_EQ(FormatOf(file), "xsvf") << c.bytes.size();
    EXPECT_EQ(file.faults.empty() ? 0 : file.faults[0].place.offset, c.offset) << c.bytes.size();
  }
}

}  // namespace
