// What each tool prints, in the words of its versions, as it is pasted: quoted, indented, wrapped, in UTF-16.

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "Chain.h"

namespace {

using plddb::chain::End;
using plddb::chain::ReadScan;
using plddb::chain::Scan;
using plddb::chain::ScannedTap;
using plddb::chain::ScanResult;

std::string Shown(const ScanResult& result) {
  if (!result.scan) return "refused: " + result.faults.at(0).text;
  std::string ids;
  for (const ScannedTap& tap : result.scan->taps) {
    char text[16] = "none";
    if (tap.id) std::snprintf(text, sizeof text, "%08X", *tap.id);
    ids += (ids.empty() ? "" : " ") + std::string(text);
  }
  return ids;
}

std::string IrLengths(const Scan& scan) {
  std::string lengths;
  for (const ScannedTap& tap : scan.taps) {
    lengths += (lengths.empty() ? "" : " ") + std::to_string(tap.irLength) + (tap.irLengthIsGuess ? "?" : "");
  }
  return lengths;
}

std::string Found(const std::string& name, const std::string& id) {
  return "Info : JTAG tap: " + name + " tap/device found: 0x" + id + " (mfg: 0x049 (Xilinx), part: 0x1234, ver: 0x0)\n";
}

const std::string kTableHead =
    "   TapName             Enabled  IdCode     Expected   IrLen IrCap IrMask\n"
    "-- ------------------- -------- ---------- ---------- ----- ----- ------\n";

TEST(ScanFormats, AreReadInTheWordsOfEachVersion) {
  const struct {
    const char* what;
    std::string text;
    const char* tool;
    End nearest;
    const char* ids;
    const char* irLengths;
  } cases[] = {
      {"OpenOCD 0.12", Found("a.tap", "0362d093") + Found("b.tap", "59604093"), "OpenOCD", End::kTdo, "0362D093 59604093",
       "0 0"},
      {"OpenOCD 0.12 without IDCODE", Found("a.tap", "0362d093") + "Info : TAP b.tap does not have valid IDCODE (idcode=0x2)\n",
       "OpenOCD", End::kTdo, "0362D093 none", "0 0"},
      {"OpenOCD 0.10 without IDCODE", "Info : TAP b.sdma does not have IDCODE\n" + Found("a.tap", "0362d093"), "OpenOCD",
       End::kTdo, "none 0362D093", "0 0"},
      {"OpenOCD, no TAP has an IDCODE", "TAP a.x does not have IDCODE\nTAP b.x does not have IDCODE\n", "OpenOCD", End::kTdo,
       "none none", "0 0"},
      {"OpenOCD 0.4", "JTAG tap: a.cpu tap/device found: 0x3ba00477 (mfg: 0x23b, part: 0xba00, ver: 0x3)<br>\n", "OpenOCD",
       End::kTdo, "3BA00477", "0"},
      {"OpenOCD of 2008", "Info:    jtag.c:1389 jtag_examine_chain(): JTAG device found: 0x1b900f0f (Manufacturer: 0x787)\n",
       "OpenOCD", End::kTdo, "1B900F0F", "0"},
      {"OpenOCD, terse", "JTAG tap: a.bs tap/device found: 0x0362d093\nJTAG tap: b.cpu tap/device found: 0x4ba00477\n",
       "OpenOCD", End::kTdo, "0362D093 4BA00477", "0 0"},
      {"OpenOCD, HTML", "JTAG tap: a.bs tap/device found: 0x0362d093<br>\n", "OpenOCD", End::kTdo, "0362D093", "0"},
      {"OpenOCD table", kTableHead + " 0 a.tap   Y     0x0362d093 0x0362d093     6 0x01  0x03\n", "OpenOCD", End::kTdo,
       "0362D093", "6"},
      {"OpenOCD table, second expected id",
       kTableHead + " 0 a.tap   Y     0x1362d093 0x0362d093     6 0x01  0x03\n" + std::string(43, ' ') + "0x1362d093\n" +
           " 1 b.tap   n     0x00000000 0x00000000     4 0x01  0x03\n 2 auto0.tap Y 0x4ba00477 0x4ba00477 4 0x01 0x03\n",
       "OpenOCD", End::kTdo, "1362D093 4BA00477", "6 4?"},
      {"OpenOCD table, another id", kTableHead + " 0 a.tap   Y     0x1362d093 0x0362d093     6 0x01  0x03\n", "OpenOCD",
       End::kTdo, "1362D093", "6?"},
      {"OpenOCD table, any version", kTableHead + " 0 a.tap   Y     0x1362d093 0x*362d093     6 0x01  0x03\n", "OpenOCD",
       End::kTdo, "1362D093", "6"},
      {"OpenOCD table of 0.3",
       "     TapName            | Enabled |   IdCode      Expected    IrLen IrCap  IrMask Instr\n"
       "---|--------------------|---------|------------|------------|------|------|------|---------\n"
       " 0 | omap.dsp           |    n    | 0x00000000 | 0x00000000 | 0x26 | 0x00 | 0x00 | 0x3f\n"
       " 1 | omap.dap           |    Y    | 0x0b6d602f | 0x0b6d602f | 0x04 | 0x01 | 0x0f | 0x0f\n",
       "OpenOCD", End::kTdo, "0B6D602F", "4"},
      {"UrJTAG", "IR length: 6\nChain length: 1\nDevice Id: 00000011011000101101000010010011 (0x0362D093)\n", "UrJTAG",
       End::kTdo, "0362D093", "0"},
      {"UrJTAG, capitals", "Chain length: 1\nDevice ID: 00000011011000101101000010010011\n", "UrJTAG", End::kTdo, "0362D093",
       "0"},
      {"UrJTAG of 2005", "Device Id: 0000-0011011000101101-00001001001-1\n", "UrJTAG", End::kTdo, "0362D093", "0"},
      {"openFPGALoader", "index 0:\n\tidcode 0x362d093\n\tirlength 6\nindex 1:\n\tidcode 0x4ba00477\n\tirlength 4\n",
       "openFPGALoader", End::kTdi, "0362D093 4BA00477", "6? 4?"},
      {"openFPGALoader, verbose",
       "Raw IDCODE:\n- 0 -> 0x4ba00477\n- 1 -> 0x1362d093\nindex 0:\n\tidcode 0x362d093\n\tirlength 6\nindex 1:\n"
       "\tidcode 0xba00477\n\tirlength 4\n",
       "openFPGALoader", End::kTdo, "4BA00477 1362D093", "4? 6?"},
      {"openFPGALoader, verbose, from TDI",
       "Raw IDCODE: - 0 -> 0x1362d093\nRaw IDCODE: - 1 -> 0x4ba00477\nindex 0:\n\tidcode 0x362d093\nindex 1:\n"
       "\tidcode 0xba00477\n",
       "openFPGALoader", End::kTdi, "1362D093 4BA00477", "0 0"},
      {"openFPGALoader, verbose, one", "Raw IDCODE: - 0 -> 0x13636093\nindex 0:\n\tidcode 0x3636093\n\tirlength 6\n",
       "openFPGALoader", End::kTdo, "13636093", "6?"},
      {"xc3sprog",
       "JTAG loc.:   0  IDCODE: 0x11c22093  Desc:                 XC3S500E Rev: B  IR length:  6\n"
       "JTAG loc.:   1  IDCODE: 0xf5046093  Desc:                   XCF04S Rev: P  IR length:  8\n",
       "xc3sprog", End::kTdi, "11C22093 F5046093", "6? 8?"},
      {"older xc3sprog", "JTAG chainpos: 0 Device IDCODE = 0x11c22093\tDesc: XC3S500E\n", "xc3sprog", End::kTdi, "11C22093",
       "0"},
      {"jtagconfig", "1) USB-Blaster [3-2]\n  020F30DD   EP3C25\n  4BA00477   SOCVHPS\n", "jtagconfig", End::kAsPrinted,
       "020F30DD 4BA00477", "0 0"},
      {"jtagconfig -d",
       "1) DE-SoC [1-1]\n  (JTAG Server Version 20.1)\n  4BA00477   SOCVHPS (IR=4)\n  02D020DD   5CSEBA6(.|ES)/.. (IR=10)\n"
       "    Node 0C006E00  JTAG UART #0\n    Design hash    0123456789ABCDEF0123\n\n"
       "  Captured DR after reset = (4BA0047702D020DD) [64]\n  Captured IR after reset = (0555) [14]\n",
       "jtagconfig", End::kAsPrinted, "4BA00477 02D020DD", "4 10"},
      {"jtagconfig, a name is missing", "1) USB-Blaster on localhost [USB-0]\n  04015045\n", "jtagconfig", End::kAsPrinted,
       "04015045", "0"},
      {"xsdb",
       "xsdb% jtag targets\n  1  Digilent Zed 210248A39829\n     2  arm_dap (idcode 4ba00477 irlen 4)\n"
       "     3* xc7z020 (idcode 23727093 irlen 6 fpga)\n        4  bscan-switch (idcode 04900101 irlen 1 fpga)\n",
       "xsdb", End::kTdi, "4BA00477 23727093", "4? 6?"},
      {"xsdb, parts between",
       "  1  Cable\n     2  xc7z020 (idcode 23727093 irlen 6 fpga)\n        3  bscan-switch (idcode 04900101 irlen 1 fpga)\n"
       "           4  debug core\n     5  arm_dap (idcode 4ba00477 irlen 4)\n",
       "xsdb", End::kTdi, "23727093 4BA00477", "6? 4?"},
      {"J-Link Commander",
       "TotalIRLen = 9, IRPrint = 0x0011\nJTAG chain detection found 2 devices:\n"
       " #0 Id: 0x4BA00477, IRLen: 04, CoreSight JTAG-DP\n #1 Id: 0x06413041, IRLen: 05, STM32 Boundary Scan\n",
       "J-Link", End::kAsPrinted, "4BA00477 06413041", "4 5"},
      {"older J-Link Commander",
       "Info: TotalIRLen = 4, IRPrint = 0x01\nFound 1 JTAG device, Total IRLen = 4:\n Id of device #0: 0x3F0F0F0F\n", "J-Link",
       End::kAsPrinted, "3F0F0F0F", "0"},
      {"probe-rs",
       " INFO probe_rs::probe: JTAG DR scan chain detected as 33 bits long\n"
       " INFO probe_rs::probe: JTAG IR scan chain detected as 9 bits long\n"
       " INFO probe_rs::probe: Found IDCODE: 0x120034E5 (Tensilica)\n INFO probe_rs::probe: Found bypass TAP\n",
       "probe-rs", End::kAsPrinted, "120034E5 none", "0 0"},
      {"probe-rs, a list", "JTAG DR scan complete, found 2 TAPs. [Some(IdCode(0x120034E5 (Tensilica))), None]\n", "probe-rs",
       End::kAsPrinted, "120034E5 none", "0 0"},
      {"probe-rs, JSON",
       "{\"fields\":{\"message\":\"Found IDCODE: 0x4BA00477 (ARM Ltd)\"}}\n"
       "{\"fields\":{\"message\":\"Found IDCODE: 0x06413041 (STMicroelectronics)\"}}\n",
       "probe-rs", End::kAsPrinted, "4BA00477 06413041", "0 0"},
      {"Glasgow",
       "I: g.applet.interface.jtag_probe: discovered 2 TAPs\nI: g.applet.interface.jtag_probe: TAP #0: IR[6] "
       "IDCODE=0x0362d093\nI: g.applet.interface.jtag_probe: manufacturer=0x049 (Xilinx) part=0x362d version=0x0\n"
       "I: g.applet.interface.jtag_probe: TAP #1: IR[?] BYPASS\n",
       "Glasgow", End::kAsPrinted, "0362D093 none", "6 0"},
      {"djtgcfg",
       "Initializing scan chain...\nFound Device ID: 13722093\nFound Device ID: 4ba00477\n\nFound 2 device(s):\n"
       "    Device 0: ARM_DAP\n    Device 1: XC7Z010\n",
       "djtgcfg", End::kAsPrinted, "13722093 4BA00477", "0 0"},
      {"iMPACT",
       "'1': IDCODE is '00000001010000010100000010010011'\n'1': IDCODE is '01414093' (in hex).\n"
       "'2': IDCODE is '05045093' (in hex).\n'1': IDCODE is '01414093' (in hex).\n",
       "iMPACT", End::kAsPrinted, "01414093 05045093", "0 0"},
  };
  for (const auto& c : cases) {
    const ScanResult result = ReadScan(c.text);
    EXPECT_EQ(Shown(result), c.ids) << "row: " << c.what;
    if (!result.scan) continue;
    EXPECT_EQ(result.scan->tool, c.tool) << "row: " << c.what;
    EXPECT_EQ(result.scan->nearest, c.nearest) << "row: " << c.what;
    EXPECT_EQ(IrLengths(*result.scan), c.irLengths) << "row: " << c.what;
    std::string quoted;  // the same as people paste it
    std::string dos;
    std::string utf16 = "\xFF\xFE";
    for (const char ch : "\n" + c.text.substr(0, c.text.size() - 1)) {
      quoted += ch == '\n' ? "\n> " : std::string(1, ch);
      dos += ch == '\n' ? "\r\n" : std::string(1, ch);
      utf16 += {ch, '\0'};
    }
    EXPECT_EQ(Shown(ReadScan(quoted)), c.ids) << "row: quoted " << c.what;
    EXPECT_EQ(Shown(ReadScan(dos)), c.ids) << "row: DOS " << c.what;
    EXPECT_EQ(Shown(ReadScan(utf16)), c.ids) << "row: UTF-16 " << c.what;
    EXPECT_EQ(Shown(ReadScan(utf16.substr(2))), c.ids) << "row: UTF-16 without mark " << c.what;
  }
}

TEST(ScanFormats, AreReadWhereverATerminalWrapsThem) {
  const std::string texts[] = {
      Found("a_rather_long.tap", "0362d093") + Found("b.tap", "59604093") +
          "Warn : AUTO b.tap - use \"jtag newtap b tap -irlen 2 -expected-id 0x59604093\"\n",
      "Info : 324 81 core.c:949 jtag_examine_chain_display(): JTAG tap: a.jrc tap/device found: 0x0362d093 (mfg: 0x017)\n"
      "Info : 325 81 core.c:949 jtag_examine_chain_display(): JTAG tap: a.cpu tap/device found: 0x59604093 (mfg: 0x017)\n",
  };
  for (const std::string& text : texts) {
    for (std::size_t width = 58; width <= 84; ++width) {
      std::string wrapped;
      std::size_t column = 0;
      for (const char c : text) {
        if (c != '\n' && column == width) wrapped += '\n', column = 0;
        wrapped += c;
        column = c == '\n' ? 0 : column + 1;
      }
      EXPECT_EQ(Shown(ReadScan(wrapped)), "0362D093 59604093") << "row: width " << width << "\n" << wrapped;
    }
  }
}

TEST(ScanReports, EndWhereABlockOfTapLinesEnds) {
  const std::string a = Found("x.a", "0362d093");
  const std::string b = Found("x.b", "59604093");
  const std::string other = "Info : x.cpu: hardware has 6 breakpoints\n";
  const struct {
    const char* what;
    std::string text;
    const char* ids;
  } cases[] = {
      {"two TAPs of one name", a + Found("x.a", "59604093"), "0362D093 59604093"},
      {"two equal TAPs", a + a, "0362D093 0362D093"},
      {"two reports", a + b + other + a + b, "0362D093 59604093"},
      {"the first is cut at its beginning", b + other + a + b, "0362D093 59604093"},
      {"unexpected ids between",
       a + "Warn : JTAG tap: x.a       UNEXPECTED: 0x0362d093 (mfg: 0x049)\nError: JTAG tap: x.a  expected 1 of 1: 0x1 (mfg\n" +
           b,
       "0362D093 59604093"},
      {"debug lines between", a + "Debug: 12 3 core.c:1 f(): something\n" + b, "0362D093 59604093"},
      {"blank lines between", a + "\n   \n" + b, "0362D093 59604093"},
      {"a wrapped rest between",
       "Info : JTAG tap: x.a tap/device found: 0x0362d093\n     (mfg: 0x049, part: 0x362d, ver: 0x0)\n" + b,
       "0362D093 59604093"},
      {"a log that is cut, and the table",
       b + kTableHead + " 0 x.a Y 0x0362d093 0x0362d093 6 0x01 0x03\n 1 x.b Y 0x59604093 0x59604093 8 0x01 0x03\n",
       "0362D093 59604093"},
  };
  for (const auto& c : cases) EXPECT_EQ(Shown(ReadScan(c.text)), c.ids) << "row: " << c.what;
}

TEST(ScanReports, CompleteEachOther) {
  const std::string log = Found("x.a", "0362d093") + Found("x.b", "4baff477");
  const std::string table =
      kTableHead + " 0 x.a Y 0x0362d093 0x0362d093 6 0x01 0x03\n 1 x.b Y 0x4baff477 0x4baff477 4 0x01 0x03\n";
  EXPECT_EQ(IrLengths(*ReadScan(log + table).scan), "6 4");
  EXPECT_EQ(IrLengths(*ReadScan(log + "Error: IR capture error at bit 6, saw 0x0 not 0x...3\n" + table).scan), "6? 4?");
  EXPECT_TRUE(ReadScan(log + table).scan->notes.empty());
}

TEST(Scan, WithoutIdsIsRefusedWithWhatToPrintInstead) {
  const struct {
    const char* text;
    const char* part;
  } cases[] = {
      {"arm_dap_0 xc7z020_1\n", "IDCODE_HEX"},
      {"% get_hw_devices\nxc7k325t_0\n", "not shown"},
      {"localhost:3121/xilinx_tcf/Digilent/210\nxc7a35t_0\n", "IDCODE_HEX"},
      {"INFO:iMPACT:501 - '1': Added Device xc3s200 successfully.\n", "ReadIdcode"},
      {"'1': : Manufacturer's ID = Xilinx xc3s200, Version : 0\n", "ReadIdcode"},
      {"1) USB-Blaster [1-1]\n  Unable to read device chain - JTAG chain broken\n", "saw no chain"},
      {"Error: JTAG scan chain interrogation failed: all ones\n", "ones only"},
      {"JTAG tap: a.tap tap/device found: 0x136 32093 (mfg\n", "expected an id"},
  };
  for (const auto& c : cases) {
    const std::string shown = Shown(ReadScan(c.text));
    const bool isAny = std::string(c.part) == "not shown";  // any refusal will do
    EXPECT_EQ(shown.rfind("refused: ", 0), 0u) << "row: " << c.text << shown;
    EXPECT_TRUE(isAny || shown.find(c.part) != shown.npos) << "row: " << c.text << shown;
  }
}

TEST(Scan, HasFaultsAtTheirPlaceInWrappedAndOtherTexts) {
  const std::string wrapped = std::string(50, 'x') + " tap/device f\nound: 0x12\n";
  const ScanResult result = ReadScan(wrapped);
  ASSERT_EQ(result.faults.size(), 1u) << Shown(result);
  EXPECT_EQ(result.faults[0].line, 2);
  EXPECT_EQ(result.faults[0].column, 7);
}

TEST(Scan, IsReadOrRefusedHoweverItIsCut) {
  const std::string text = Found("a.tap", "0362d093") + kTableHead + " 0 a.tap Y 0x0362d093 0x0362d093 6 0x01 0x03\n" +
                           "index 0:\n\tidcode 0x1\n1) USB [1]\n  020F30DD X\n #0 Id: 0x4BA00477, IRLen: 04\n\xF0\x9F\xFF\xFE";
  for (std::size_t from = 0; from < text.size(); ++from) {
    for (std::size_t size = 0; from + size <= text.size(); size += 7) {
      const ScanResult result = ReadScan(std::string_view(text).substr(from, size));
      EXPECT_NE(result.scan.has_value(), !result.faults.empty()) << "row: " << from << " " << size;
    }
  }
}

}  // namespace
