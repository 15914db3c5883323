// What each tool prints, in the words of its versions, as it is pasted: quoted, indented, wrapped, in UTF-16.

#include "chain/scan_formats.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "Chain.h"
#include "tests/support/read_file.h"

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
       "openFPGALoader", End::kTdi, "13636093", "6?"},
      {"openFPGALoader, verbose, no devices", "Raw IDCODE:\n- 0 -> 0x4ba00477\n- 1 -> 0x1362d093\n", "openFPGALoader",
       End::kAsPrinted, "4BA00477 1362D093", "0 0"},
      {"openFPGALoader, verbose, other devices", "Raw IDCODE:\n- 0 -> 0x4ba00477\n- 1 -> 0x1362d093\nindex 0:\n\tidcode 0x1\n",
       "openFPGALoader", End::kAsPrinted, "4BA00477 1362D093", "0 0"},
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

const std::string kTwo = Found("a.tap", "0362d093") + Found("b.cpu", "4ba00477");
const std::string kTwoRows =
    " 0 a.tap                  Y     0x0362d093 0x0362d093     6 0x01  0x03\n"
    " 1 b.cpu                  Y     0x4ba00477 0x4ba00477     4 0x01  0x0f\n";

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size()) text.replace(at, from.size(), to);
  return text;
}

/// `text` with `before` each line, and `after` it.
std::string Lines(const std::string& text, const std::string& before, const std::string& after = "") {
  std::string lines = before + Replaced(text, "\n", after + "\n" + before);
  return lines.substr(0, lines.size() - before.size());
}

TEST(ScanFormats, AreReadAsPeoplePasteThem) {
  const std::string bits = "00000011011000101101000010010011";
  const std::string uniform = "0362D093 4BA00477";
  const struct {
    const char* what;
    std::string text;
    std::string ids;
  } cases[] = {
      {"no-break blanks", Replaced(kTwo, " ", "\xC2\xA0"), uniform},
      {"no-break blanks of code page 1252", Replaced(kTwo, " ", "\xA0"), uniform},
      {"no-break blanks in a table", Replaced(kTableHead + kTwoRows, " ", "\xC2\xA0"), uniform},
      {"tabs in a table", Replaced(kTableHead + kTwoRows, " ", "\t"), uniform},
      {"HTML quote", Lines(kTwo, "&gt; "), uniform},
      {"HTML blanks", Replaced(kTwo, " ", "&nbsp;"), uniform},
      {"HTML marks", Lines(kTwo, "<span class=\"x\">", "</span><br/>"), uniform},
      {"HTML quotation marks",
       "Warn : AUTO auto0.tap - use &quot;jtag newtap auto0 tap -irlen 6 -expected-id 0x0362d093&quot;\n", "0362D093"},
      {"quotation marks of a word processor",
       "Warn : AUTO auto0.tap - use \xE2\x80\x9Cjtag newtap auto0 tap -irlen 6 -expected-id 0x0362d093\xE2\x80\x9D\n",
       "0362D093"},
      {"bold ids", Replaced(Replaced(kTwo, "found: ", "found: **"), " (mfg", "** (mfg"), uniform},
      {"ids in backticks", Replaced(Replaced(kTwo, "found: ", "found: `"), " (mfg", "` (mfg"), uniform},
      {"Markdown list", Lines(kTwo, "- `", "`"), uniform},
      {"Markdown fence", "```\n" + kTwo + "```\n", uniform},
      {"syslog", Lines(kTwo, "Nov 22 03:00:01 host openocd[1234]: "), uniform},
      {"journal", Lines(kTwo, "2024-11-22T03:00:01+0100 host openocd[1234]: "), uniform},
      {"grep", Lines(kTwo, "build.log:12:"), uniform},
      {"JSON log", Lines(kTwo, "{\"log\":\"", "\\n\",\"stream\":\"stderr\"}"), uniform},
      {"colours of 256", Lines(kTwo, "\x1B[38;5;10m", "\x1B[0m\x1B[K"), uniform},
      {"title of a terminal", "\x1B]0;title\x07" + kTwo, uniform},
      {"carriage returns only", Replaced(kTwo, "\n", "\r"), uniform},
      {"two carriage returns", Replaced(kTwo, "\n", "\r\r\n"), uniform},
      {"a line that was rewritten", "10 %\r20 %\r" + kTwo, uniform},
      {"UTF-8 with a mark", "\xEF\xBB\xBF" + kTwo, uniform},
      {"a first line that is cut", "nd: 0x11111111 (mfg: 0x049)\n" + kTwo, uniform},
      {"a last line that is cut", kTwo + "Info : JTAG tap: c.x tap/dev", uniform},
      {"a capital X", Replaced(kTwo, "0x", "0X"), uniform},
      {"telnet, log and table", "> init\n" + kTwo + "> scan_chain\n" + kTableHead + kTwoRows + "> ", uniform},
      {"a table in a Markdown table",
       "| # | TapName | Enabled | IdCode | Expected | IrLen | IrCap | IrMask |\n|---|---|---|---|---|---|---|---|\n"
       "| 0 | a.tap | Y | 0x0362d093 | 0x0362d093 | 6 | 0x01 | 0x03 |\n"
       "| 1 | b.cpu | Y | 0x4ba00477 | 0x4ba00477 | 4 | 0x01 | 0x0f |\n",
       uniform},
      {"a table, disabled TAPs around",
       kTableHead + " 0 x.d n 0x00000000 0x00000000 4 0x01 0x03\n" + Replaced(Replaced(kTwoRows, " 1 ", " 3 "), " 0 ", " 2 "),
       uniform},
      {"a table, other lines between", kTableHead + Replaced(kTwoRows, " 1 b", "Info : accepting\n 1 b"), uniform},
      {"two tables, TAP 0 disabled",
       kTableHead + " 0 x.d n 0x00000000 0x00000000 4 0x01 0x03\n 1 a.t Y 0x59604093 0x59604093 8 0x01 0x03\nx\n" +
           " 0 x.d n 0x00000000 0x00000000 4 0x01 0x03\n 1 a.t Y 0x59604093 0x59604093 8 0x01 0x03\n",
       "59604093"},
      {"OpenOCD of 2009",
       "Info:   JTAG tap: a.tap tap/device found: 0x0362d093 (Manufacturer: 0x049)\nInfo:   JTAG Tap/device matched\n"
       "Info:   JTAG tap: b.cpu tap/device found: 0x4ba00477 (Manufacturer: 0x23b)\nInfo:   JTAG Tap/device matched\n",
       uniform},
      {"suggestions between",
       Found("auto0.tap", "0362d093") +
           "Warn : AUTO auto0.tap - use \"jtag newtap auto0 tap -irlen 6 -expected-id 0x0362d093\"\n" +
           Found("auto1.tap", "4ba00477"),
       uniform},
      {"suggestions without ids", kTwo + "Warn : AUTO a.tap - use \"... -irlen 5\"\n", uniform},
      {"a TAP without IDCODE first", "Warn : TAP x.y does not have IDCODE\n" + kTwo, "none " + uniform},
      {"no-break blanks, without IDCODE", "TAP\xC2\xA0x.y does\xC2\xA0not\xC2\xA0have IDCODE\n" + kTwo, "none " + uniform},
      {"UrJTAG, unknown part",
       "Chain length: 1\nDevice Id: " + bits + " (0x0362D093)\n  Unknown part! (0011011000101101) (/x/PARTS)\n", "0362D093"},
      {"UrJTAG, hex digits only", "Chain length: 1\nDevice Id: 0x0362D093\n", "0362D093"},
      {"UrJTAG, blanks between", "Device Id: 0000 0011 0110 0010 1101 0000 1001 0011 (0x0362D093)\n", "0362D093"},
      {"UrJTAG, wrapped bits", "Chain length: 1\nDevice Id: 0000001101100010110100\n0010010011 (0x0362D093)\n", "0362D093"},
      {"UrJTAG, no-break blanks",
       "Chain\xC2\xA0length:\xC2\xA0"
       "1\nDevice\xC2\xA0Id:\xC2\xA0" +
           bits + "\n",
       "0362D093"},
      {"xc3sprog, an unknown device",
       "JTAG loc.:   0  IDCODE: 0x0362d093  Desc: XC7A35T Rev: A  IR length:  6\n"
       "JTAG loc.:   1  IDCODE: 0x4ba00477  not found in 'built-in device list'.\n",
       uniform},
      {"xc3sprog, tabs", "JTAG loc.: 0\tIDCODE: 0x0362d093\tDesc: XC7A35T\tRev: A\tIR length: 6\n", "0362D093"},
      {"jtagconfig, a cable without chain",
       "1) A [1-1]\n  0362D093   XC7\n  4BA00477   SOCVHPS\n\n2) B [2-1]\n  Unable to read device chain - JTAG chain broken\n",
       uniform},
      {"jtagconfig -n",
       "1) A [1-1]\n  0362D093   XC7\n    Design hash    5A55D6F8CF96D4B0F5DC\n    + Node 19104600  Nios II #0\n"
       "    + Node 0C006E00  JTAG UART #0\n  4BA00477   SOCVHPS\n",
       uniform},
      {"jtagconfig, HTML", "1) A [1-1]<br>\n&nbsp;&nbsp;0362D093&nbsp;&nbsp; XC7<br>\n", "0362D093"},
      {"jtagconfig, ids with 0x", "1) A [1-1]\n  0x0362D093   XC7\n  0x4BA00477   SOCVHPS\n", uniform},
      {"xsdb, an unknown device", "  1  Cable\n     2  whole scan chain (unknown idcode 4ba00477)\n", "4BA00477"},
      {"xsdb, two cables",
       "  1  Cable A\n     2  xc7 (idcode 59604093 irlen 8 fpga)\n  3  Cable B\n     4* xc7 (idcode 0362d093 irlen 6 fpga)\n"
       "        6  bscan-switch (idcode 04900101 irlen 1 fpga)\n     5  arm_dap (idcode 4ba00477 irlen 4)\n",
       uniform},
      {"J-Link, tight", "#0 Id:0x0362D093, IRLen:06\n#1 Id:0x4BA00477, IRLen:04\n", uniform},
      {"J-Link, \"Device\" before", "Device #0 Id: 0x0362D093, IRLen: 6\nDevice #1 Id: 0x4BA00477, IRLen: 4\n", uniform},
      {"J-Link's server for debuggers", "J-Link found 1 JTAG device, Total IRLen = 4\nJTAG ID: 0x4BA00477 (Cortex-M4)\n",
       "4BA00477"},
      {"probe-rs, a list in JSON",
       "{\"fields\":{\"message\":\"JTAG DR scan complete, found 1 TAPs. [Some(IdCode(0x120034E5 (Tensilica)))]\"}}\n",
       "120034E5"},
      {"Glasgow, in colours and without its count",
       "\x1B[1;37mI: g.applet.interface.jtag_probe: TAP #0: IR[6] IDCODE=0x0362d093\x1B[0m\nI: TAP #1: IR[?] "
       "IDCODE=0x4ba00477\n",
       uniform},
      {"djtgcfg, ids with 0x", "Found Device ID: 0x0362d093\nFound Device ID: 0x4ba00477\n", uniform},
      {"iMPACT, word processor",
       "\xE2\x80\x98"
       "1\xE2\x80\x99: IDCODE is \xE2\x80\x98"
       "0362d093\xE2\x80\x99 (in hex).\n",
       "0362D093"},
      {"openFPGALoader, no-break blanks",
       "index 0:\n\xC2\xA0\xC2\xA0idcode\xC2\xA0"
       "0x362d093\n",
       "0362D093"},
      {"openFPGALoader, line ends were lost", "index 0: idcode 0x362d093 irlength 6\nindex 1: idcode 0x4ba00477 irlength 4\n",
       uniform},
      {"openFPGALoader, a short unknown id",
       "JTAG init failed with: Unknown device with IDCODE: 0x362d093 (manufacturer: 0x049 (Xilinx), part: 0x2d\n", "0362D093"},
      {"ids, one per line", "0362D093\n0x4ba00477\n", uniform},
      {"ids, with commas", "0x0362d093, 0x4ba00477\n", uniform},
      {"ids, with semicolons", "0x0362d093;0x4ba00477;\n", uniform},
      {"ids, with blanks", "0362d093 4ba00477\n", uniform},
      {"ids, of C", "const uint32_t ids[] = { 0x0362d093, 0x4ba00477 };\n", uniform},
      {"ids, of C with suffixes and comments", "  0x0362d093UL, // logic\n  0x4ba00477UL, // processor\n", uniform},
      {"ids, of Python", "[0x0362d093, 0x4ba0_0477]\n", uniform},
      {"ids, of JSON", "[\"0x0362d093\", \"4BA00477\"]\n", uniform},
      {"ids, of Verilog", "32'h0362d093\n32'h4ba0_0477\n", uniform},
      {"ids, of an assembler", "0362d093h\n4BA00477H\n", uniform},
      {"ids, 32 bits", bits + "\n0b" + bits + "\n32'b" + bits + "\n", "0362D093 0362D093 0362D093"},
      {"ids, numbered from 0", "0: 0x0362d093\n1: 0x4ba00477\n", uniform},
      {"ids, numbered from 1", "1. 0x0362d093\n2. 0x4ba00477\n", uniform},
      {"ids, named", "IDCODE: 0x0362d093\nIDCODE = 0x4ba00477\n", uniform},
      {"ids, quoted", "> 0x0362d093\n> 0x4ba00477\n", uniform},
      {"ids, in a fence and a list", "```\n- 0x0362d093\n* 0x4ba00477\n```\n", uniform},
  };
  for (const auto& c : cases) EXPECT_EQ(Shown(ReadScan(c.text)), c.ids) << "row: " << c.what << "\n" << c.text;
}

TEST(ScanFormats, RefuseWhatWouldShiftPositions) {
  const struct {
    const char* what;
    std::string text;
    int line;
    int column;
    const char* part;
  } cases[] = {
      {"two TAPs in a line", "x\n" + Replaced(kTwo, "\n", "<br>"), 2, 125, "a second TAP in one line"},
      {"line ends as a program writes them", Replaced(kTwo, "\n", "\\n"), 1, 123, "a second TAP in one line"},
      {"an id that is cut", kTwo + "Info : JTAG tap: c.x tap/device found: 0x12", 3, 40, "8 hex digits"},
      {"an id without 0x", "JTAG tap: a.tap tap/device found: 0362d093 (mfg\n", 1, 35, "8 hex digits"},
      {"UrJTAG, bits are missing", "Device Id: 000000110110001011\n", 1, 12, "32 bits"},
      {"UrJTAG, bits and digits differ", "Device Id: 00000011011000101101000010010011 (0x0362D097)\n", 1, 46, "the same id"},
      {"jtagconfig, a digit is missing", "1) A [1-1]\n  0362D09   XC7\n  4BA00477   SOCVHPS\n", 2, 3, "8 hex digits"},
      {"xc3sprog, an id without 0x", "JTAG loc.: 0 IDCODE: 0362d093 Desc: x\n", 1, 22, "8 hex digits"},
      {"ids, and another word", "0x0362d093\nnone\n0x4ba00477\n", 2, 1, "'none' is not an id"},
      {"ids, another order", "0x0362d093\n5: 0x4ba00477\n", 2, 1, "is not an id"},
      {"a sentence", "I read 0x0362d093 and then 0x4ba00477.\n", 1, 1, "no chain in this text"},
      {"names without ids", "xsdb% targets\n  1  APU\n     2  ARM Cortex-A9 MPCore #0 (Running)\n", 1, 1, "no chain"},
  };
  for (const auto& c : cases) {
    const ScanResult result = ReadScan(c.text);
    ASSERT_FALSE(result.faults.empty()) << "row: " << c.what << ": " << Shown(result);
    EXPECT_EQ(result.faults[0].line, c.line) << "row: " << c.what;
    EXPECT_EQ(result.faults[0].column, c.column) << "row: " << c.what;
    EXPECT_NE(result.faults[0].text.find(c.part), std::string::npos) << "row: " << c.what << ": " << result.faults[0].text;
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

// --- What a new format must not forget --------------------------------------------------------------------------------------

std::set<std::string> Tools() {
  std::set<std::string> tools;
  for (const plddb::chain::ScanFormat* const format : plddb::chain::kScanFormats) tools.insert(format->tool);
  return tools;
}

/// Without the hyphens' backslashes of a manual page, and with blanks for line ends.
std::string Plain(const std::string& text) {
  std::string plain;
  for (const char c : text) {
    if (c != '\\') plain += c == '\n' ? ' ' : c;
  }
  return plain;
}

TEST(ScanFormats, AreNamedWhereverToolsAreListed) {
  const std::string root = PLDDB_SOURCE_DIR;
  const std::string refusal = "the refusal of a text without a chain";
  for (const char* const file :
       {"tool/identify/identify.cpp", "tool/man/plddb.1", "docs/getting-started.md", "web/index.html", ""}) {
    const std::string text = *file == '\0' ? Shown(ReadScan("nothing")) : Plain(support::ReadFile(root + "/" + file));
    for (const std::string& tool : Tools()) {
      EXPECT_NE(text.find(tool), text.npos) << "row: " << tool << " in " << (*file == '\0' ? refusal : file);
    }
  }
}

TEST(ScanFormats, HaveASeedOfTheFuzzerEach) {
  std::set<std::string> read;
  for (const auto& seed : std::filesystem::directory_iterator(PLDDB_SOURCE_DIR "/fuzz/corpus/scan")) {
    const ScanResult result = ReadScan(support::ReadFile(seed.path().string()));
    if (result.scan) read.insert(result.scan->tool);
  }
  for (const std::string& tool : Tools()) EXPECT_EQ(read.count(tool), 1U) << "row: " << tool;
}

}  // namespace
