// A real OpenOCD scans simulated chains: plddb names the devices in its log, and writes the configuration that it wants.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Descriptions.h"
#include "remote_bitbang.h"
#include "tests/support/temporary_folder.h"
#include "tests/tool/run_tool.h"

namespace {

using scanner::RemoteBitbangServer;
using scanner::TapDescription;
using Json = nlohmann::json;

/// A device of a chain: how it is simulated, and the name under which it has to be recognised.
struct Device {
  TapDescription tap;
  std::string name;  ///< Empty: not to be recognised.
};

/// The device `name` of data/. `freeBits` are those of the id that its mask leaves out: the version of the die, or its
/// package.
Device Known(const char* name, unsigned int freeBits = 0) {
  static const plddb::LoadResult loaded = plddb::LoadDescriptions(PLDDB_DATA_DIR "/xilinx.xml");
  const DeviceInfo* const device = loaded.database->GetDeviceWithName(name);
  if (device == nullptr) throw std::runtime_error(std::string("no device ") + name);
  TapDescription tap;
  tap.irLength = device->GetIRLength();
  tap.idcode = device->GetjtagDeviceID() | (freeBits & ~device->GetDeviceIDScanMask());
  if (device->GetIDInstruction() != 0) tap.idcode_instruction = device->GetIDInstruction();
  return {tap, name};
}

/// A processor core, which is in no data of ours.
Device Foreign() {
  TapDescription tap;
  tap.irLength = 4;
  tap.idcode = 0x4BAFF477;
  tap.idcode_instruction = 0xE;
  return {tap, ""};
}

Device WithoutIdcode() {
  TapDescription tap;
  tap.irLength = 5;
  return {tap, ""};
}

/// With status bits in what the IR captures, as real devices have them: ...01 is all that the standard promises.
Device WithStatusBits(Device device) {
  device.tap.ir_capture = (std::uint64_t{1} << device.tap.irLength) - 3;  // 1...101
  return device;
}

constexpr unsigned int kVersion5 = 0x50000000;

struct Chain {
  const char* what;
  std::vector<Device> devices;           ///< Nearest TDO first.
  std::vector<std::string> irLengths{};  ///< What a user has to add for the unknown ones: --ir.
};

const std::vector<Chain>& Chains() {
  static const std::vector<Chain> chains = {
      {"one device", {Known("XC9572XL", kVersion5)}},
      {"three devices", {Known("XC9572XL", kVersion5), Known("XC2C64A", 0x6000), Known("XC7A35T")}},
      {"twelve devices, all IR lengths of data/, two of them equal",
       {Known("XC2S15", 0x10000000), Known("XC7A35T"), Known("XC9572XL", kVersion5), Known("XC4VFX12"), Known("XCKU085"),
        Known("XC4VFX40", 0x20000000), Known("XCF08P", 0xF0000000), Known("XCVU9P"), Known("XC7VH580T", 0x30000000),
        Known("XC7V2000T"), Known("XC7VH870T"), Known("XC9572XL", kVersion5)}},
      {"a foreign id", {Known("XC9572XL", kVersion5), Known("XC2C64A", 0x6000), Foreign(), Known("XC7A35T")}, {"--ir", "2=4"}},
      {"a device without IDCODE", {Known("XC9572XL", kVersion5), WithoutIdcode(), Known("XC7A35T")}, {"--ir", "1=5"}},
      {"devices without IDCODE at both ends",
       {WithoutIdcode(), Known("XC7A35T"), Known("XC9572XL", kVersion5), WithoutIdcode()},
       {"--ir", "0=5", "--ir", "3=5"}},
      {"status bits in the IR", {WithStatusBits(Known("XC7A35T")), WithStatusBits(Known("XC9572XL", kVersion5))}},
  };
  return chains;
}

std::vector<TapDescription> Taps(const Chain& chain) {
  std::vector<TapDescription> taps;
  for (const Device& device : chain.devices) taps.push_back(device.tap);
  return taps;
}

/// Lets OpenOCD look at the chain, with these lines of configuration; returns its whole log. A hanging OpenOCD is ended.
std::string LogOfOpenOcd(const Chain& chain, const std::string& configuration = "") {
  const RemoteBitbangServer server(Taps(chain));
  const support::TemporaryFolder folder;
  const std::string file = folder.Path() / "chain.cfg";
  std::ofstream(file) << "adapter driver remote_bitbang\nremote_bitbang host 127.0.0.1\nremote_bitbang port " << server.Port()
                      << "\nadapter speed 1000\ngdb_port disabled\ntelnet_port disabled\ntcl_port disabled\n"
                      << configuration;
  const ToolRun run = RunProgram("/usr/bin/env", {"timeout", "--kill-after=5", "60", "openocd", "-f", file, "-c", "init", "-c",
                                                  "scan_chain", "-c", "shutdown"});
  EXPECT_EQ(run.exitCode, 0) << "row: " << chain.what << ":\n" << run.err;
  EXPECT_EQ(run.out, "") << "row: " << chain.what;
  return run.err;
}

std::string IdText(unsigned int id) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", id);
  return text;
}

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != text.npos; }

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// The lines of `text` that contain one of `marks`.
std::string LinesWith(const std::string& text, const std::vector<const char*>& marks) {
  std::string lines;
  for (const std::string& line : Lines(text)) {
    const auto isThere = [&](const char* mark) { return Contains(line, mark); };
    if (std::any_of(marks.begin(), marks.end(), isThere)) lines += line + "\n";
  }
  return lines;
}

/// What OpenOCD warns of although all is well with the chain: without a processor there is nothing for a debugger to do, and
/// some FPGAs do have more than 32 bits of IR.
constexpr const char* kHarmless[] = {"gdb services need one or more targets defined", ": huge IR length 38"};

/// The lines of the log in which OpenOCD complains about the chain; its exit code is 0 anyway.
std::string Complaints(const std::string& log) {
  std::string complaints;
  for (const std::string& line : Lines(LinesWith(log, {"Warn :", "Error:"}))) {
    const auto isSaid = [&](const char* text) { return Contains(line, text); };
    if (std::none_of(std::begin(kHarmless), std::end(kHarmless), isSaid)) complaints += line + "\n";
  }
  return complaints;
}

std::string TextOr(const Json& value, const char* textOfNull) { return value.is_null() ? textOfNull : value; }

/// `plddb identify --scan` of the log. That some id is unknown is an answer as well.
std::string IdentifyScan(const std::string& log, const std::vector<std::string>& options) {
  std::vector<std::string> arguments = {"identify", "--scan", "-"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const ToolRun run = RunTool(arguments, log);
  EXPECT_TRUE(run.exitCode == 0 || run.exitCode == 1) << run.err;
  return run.out;
}

/// What `plddb identify --scan` makes of the log: "ID NAME" for each position.
std::vector<std::string> Identified(const std::string& log, const char* format = "OpenOCD log") {
  std::vector<std::string> positions;
  const Json answer = Json::parse(IdentifyScan(log, {"--json"}), nullptr, false);
  for (const Json& position : answer) {
    const Json& match = position["match"];
    positions.push_back(TextOr(position["id"], "none") + " " + (match.is_null() ? "" : TextOr(match["name"], "nameless")));
    EXPECT_EQ(position["scan"]["format"], format);
  }
  return positions;
}

std::vector<std::string> Simulated(const Chain& chain) {
  std::vector<std::string> positions;
  for (const Device& device : chain.devices) {
    positions.push_back((device.tap.idcode ? IdText(*device.tap.idcode) : "none") + " " + device.name);
  }
  return positions;
}

/// The configuration that plddb makes of the log.
std::string Configuration(const std::string& log, std::vector<std::string> irLengths) {
  irLengths.insert(irLengths.begin(), {"--format", "openocd"});
  return IdentifyScan(log, irLengths);
}

/// "IDCODE EXPECTED IRLENGTH" of each row of OpenOCD's table of the chain.
std::vector<std::string> Table(const std::string& log) {
  std::vector<std::string> rows;
  for (const std::string& line : Lines(log)) {
    const std::vector<std::string> words = Words(line);  // position, name, enabled, id, expected id, IR length, pattern, mask
    if (words.size() == 8 && words[2] == "Y") rows.push_back(words[3] + " " + words[4] + " " + words[5]);
  }
  return rows;
}

/// The rows of a chain of which every TAP is the one that the configuration promises. OpenOCD shows 0 where there is no IDCODE.
std::vector<std::string> TableOfAccepted(const Chain& chain) {
  std::vector<std::string> rows;
  for (const Device& device : chain.devices) {
    char row[40];
    const unsigned int id = device.tap.idcode.value_or(0);
    const bool ignoresVersion = !device.name.empty();  // the masks of all these devices leave it out
    if (ignoresVersion) {
      std::snprintf(row, sizeof row, "0x%08x 0x*%07x %d", id, id & 0x0FFFFFFF, device.tap.irLength);
    } else {
      std::snprintf(row, sizeof row, "0x%08x 0x%08x %d", id, id, device.tap.irLength);
    }
    rows.push_back(row);
  }
  return rows;
}

// --- OpenOCD alone: what it leaves to plddb, and what it prints for a wrong configuration ----------------------------------

TEST(OpenOcd, SeesThatADeviceWithoutIdcodeIsThereButNotWhichOne) {
  const std::string log = LogOfOpenOcd({"", {Known("XC9572XL", kVersion5), WithoutIdcode(), Known("XC7A35T")}});
  EXPECT_TRUE(Contains(log, "TAP auto1.tap does not have valid IDCODE")) << log;
  const std::vector<std::string> expected = {"0x59604093 0x00000000 8", "0x00000000 0x00000000 5", "0x0362d093 0x00000000 6"};
  EXPECT_EQ(Table(log), expected);
}

TEST(OpenOcd, TakesAWrongIrLengthUnnoticedWhereTheIrCapturesStatusBits) {
  const std::string log = LogOfOpenOcd({"", {WithStatusBits(Known("XC7A35T"))}});
  EXPECT_EQ(Table(log), std::vector<std::string>{"0x0362d093 0x00000000 2"});  // 6 are right
  EXPECT_FALSE(Contains(log, "IR capture error")) << log;
}

TEST(OpenOcd, ComplainsOfAConfigurationForAnotherChain) {
  const struct {
    const char* configuration;
    const char* complaint;
  } cases[] = {
      {"", "AUTO PROBING"},
      {"jtag newtap a tap -irlen 8 -expected-id 0x59604093\n", "AUTO auto0.tap"},
      {"jtag newtap a tap -irlen 8 -expected-id 0x09604093\njtag newtap b tap -irlen 6 -expected-id 0x0362D093\n",
       "UNEXPECTED"},
      {"jtag newtap a tap -irlen 8 -expected-id 0x0362D093\njtag newtap b tap -irlen 6 -expected-id 0x59604093\n",
       "UNEXPECTED"},
      {"jtag newtap a tap -irlen 7 -expected-id 0x59604093\njtag newtap b tap -irlen 6 -expected-id 0x0362D093\n",
       "IR capture error"},
  };
  for (const auto& c : cases) {
    const std::string log = LogOfOpenOcd({c.complaint, {Known("XC9572XL", kVersion5), Known("XC7A35T")}}, c.configuration);
    EXPECT_TRUE(Contains(Complaints(log), c.complaint)) << "row: " << c.configuration << log;
  }
}

// --- OpenOCD and plddb ------------------------------------------------------------------------------------------------------

TEST(OpenOcdLog, TellsPlddbWhichDevicesAreThereAndInWhichOrder) {
  for (const Chain& chain : Chains()) EXPECT_EQ(Identified(LogOfOpenOcd(chain)), Simulated(chain)) << "row: " << chain.what;
}

TEST(OpenOcdLog, TellsItInEachOfItsParts) {
  const struct {
    const char* format;
    std::vector<const char*> marks;  // of the lines of this part
  } parts[] = {
      {"OpenOCD log", {"tap/device found", "does not have valid IDCODE"}},
      {"OpenOCD suggestions", {"- use \"jtag newtap"}},
      {"OpenOCD scan_chain table", {"TapName", "----", ".tap   "}},
  };
  for (const Chain& chain : Chains()) {
    const std::string log = LogOfOpenOcd(chain);
    for (const auto& part : parts) {
      EXPECT_EQ(Identified(LinesWith(log, part.marks), part.format), Simulated(chain))
          << "row: " << chain.what << ", " << part.format;
    }
  }
}

TEST(OpenOcdConfiguration, IsAcceptedForEveryTap) {
  for (const Chain& chain : Chains()) {
    const std::string configuration = Configuration(LogOfOpenOcd(chain), chain.irLengths);
    const std::string log = LogOfOpenOcd(chain, configuration);
    EXPECT_EQ(Complaints(log), "") << "row: " << chain.what << "\n" << configuration;
    EXPECT_EQ(Table(log), TableOfAccepted(chain)) << "row: " << chain.what << "\n" << configuration;
    EXPECT_EQ(Identified(log), Simulated(chain)) << "row: " << chain.what << "\n" << configuration;  // TAPs have names now
  }
}

/// `text` with the words of the versions up to 0.10 for a TAP without IDCODE.
std::string InOldWords(std::string text) {
  const std::string words = "does not have valid IDCODE";
  for (std::size_t at = 0; (at = text.find(words, at)) != text.npos;) {
    text.replace(at, text.find('\n', at) - at, "does not have IDCODE");
  }
  return text;
}

TEST(OpenOcdLog, IsReadAlikeInOldWords) {
  for (const Chain& chain : Chains()) {
    EXPECT_EQ(Identified(InOldWords(LogOfOpenOcd(chain))), Simulated(chain)) << "row: " << chain.what;
  }
}

TEST(OpenOcdConfiguration, IsAcceptedForAnotherRevisionOfTheDies) {
  const Chain first = {"first revision", {Known("XC9572XL", kVersion5), Known("XC7A35T")}};
  const Chain second = {"second revision", {Known("XC9572XL", 0x60000000), Known("XC7A35T", 0x10000000)}};
  const std::string configuration = Configuration(LogOfOpenOcd(first), {});
  EXPECT_EQ(Complaints(LogOfOpenOcd(first, configuration)), "") << configuration;
  EXPECT_EQ(Complaints(LogOfOpenOcd(second, configuration)), "") << configuration;
}

TEST(OpenOcdConfiguration, NeedsTheIrLengthsOfDevicesThatAreNotIdentified) {
  for (const Chain& chain : Chains()) {
    if (chain.irLengths.empty()) continue;
    const std::string configuration = Configuration(LogOfOpenOcd(chain), {});
    EXPECT_TRUE(Contains(configuration, "\n# jtag newtap ")) << "row: " << chain.what << "\n" << configuration;
    EXPECT_NE(Complaints(LogOfOpenOcd(chain, configuration)), "") << "row: " << chain.what << "\n" << configuration;
  }
}

}  // namespace
