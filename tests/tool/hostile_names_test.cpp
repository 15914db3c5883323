// No text from outside reaches a terminal unchanged: file names and the contents of files, in every command and every form.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "TextForms.h"
#include "run_tool.h"
#include "tests/support/temporary_folder.h"

namespace {

using support::TemporaryFolder;
using Arguments = std::vector<std::string>;

const std::string kHostileName = "a\033[31m\x9B\xC2\x9B\xE2\x80\xAE\x7F\r\nforged.xml:1:1: error: no.xml";

// The form in XML; "\xE2\x80\xAE" turns the direction of writing.
const std::string kHostileValue = "V&#x9B;31m\xE2\x80\xAE&#x2028;&#127;&#10;forged: 1";

std::string Devices(const std::string& value) {
  const auto attribute = [&](const char* name) { return std::string(name) + "=\"" + value + "\" "; };
  std::string text = "<DeviceDatabase " + attribute("Comment") + "><Family " + attribute("Name") + attribute("AliasName") +
                     attribute("BypassInst") + attribute("IDCodeInst") + ">\n<Operation " + attribute("Name") + "/>";
  for (int i = 0; i < 2; ++i) {
    text += "<Device " + attribute("Name") + attribute("CodeName") + attribute("AliasName") + attribute("Family") +
            attribute("Vendor") + attribute("Comm") + attribute("SysIOList") + attribute("ListControlReg1BitName") +
            "jtagDeviceID=\"0x01234057\" DeviceIDScanMask=\"0x0FFFFFFF\" IRLength=\"8\" FuseNumber=\"100\"><Package " +
            attribute("Type") + attribute("PON") + attribute("JDF") + "/><ControlVoltage " + attribute("VCCCore") +
            "/></Device>\n";
  }
  return text + "</Family></DeviceDatabase>\n";
}

/// Lines of characters that are seen, with tabs where a form has them.
bool IsHarmless(const std::string& text) {
  std::string rest;
  for (const char c : text) rest += c == '\n' || c == '\t' ? ' ' : c;
  return plddb::Printable(rest) == rest;
}

TEST(HostileNames, ReachNoTerminalAsTheyAre) {
  const TemporaryFolder folder;
  const std::string path = folder.Path().string();
  const std::string good = path + "/" + kHostileName;
  const std::string bad = path + "/bad/" + kHostileName;
  const std::string scan = path + "/bad/" + kHostileName + ".txt";
  const std::string value =
      "V\xC2\x9B"
      "31m\xE2\x80\xAE\xE2\x80\xA8\x7F\nforged: 1";
  std::filesystem::create_directory(path + "/bad");
  std::ofstream(good) << Devices(kHostileValue);
  std::ofstream(path + "/other.xml") << Devices(kHostileValue);
  std::ofstream(bad) << "<DeviceDatabase Name=\"\xE2\x80\xAE\"><\xE2\x80\xAE Family=\"1\"/><Family "
                        "Hidden=\"\xC2\x9B\"/>\xE2\x80\xAE</DeviceDatabase>";
  std::ofstream(scan) << "IDCODE \033[31m\x9B 0x01234057 \xE2\x80\xAE\n tap found: \033]0;x\007\n";
  const std::vector<Arguments> rows = {
      {"list", "--db", path},
      {"list", "--db", path, "--json"},
      {"list", "--db", path, "--files"},
      {"list", "--db", path, "--files", "--json"},
      {"list", "--db", path, "--family", value},
      {"list", "--db", path, "--family", value, "--json"},
      {"list", "--db", path, "--family", kHostileName},
      {"list", "--db", path + "/bad"},
      {"list", "--db", bad + "/nothing"},
      {"list", "--db", kHostileName},
      {"list", "--" + kHostileName},
      {"find", "--db", path, value},
      {"find", "--db", path, value, "--json"},
      {"find", "--db", path, value + "x"},
      {"find", "--db", path, value + "x", "--json"},
      {"find", "--db", path, "--fuses", "100"},
      {"find", "--db", path, "--fuses", "100", "--json"},
      {"find", "--db", path, "--fuses", kHostileName},
      {"find", "--db", path, "--family", kHostileName, "x"},
      {"find", "--db", path, "--family", value, value},
      {"find", "--db", bad, value},
      {"show", "--db", path, value},
      {"show", "--db", path, value, "--json"},
      {"show", "--db", path, value + "x"},
      {"show", "--db", path, "0x01234057"},
      {"show", "--db", bad, value},
      {"check", path},
      {"check", path, "--json"},
      {"check", path, "--format", "sarif"},
      {"check", bad},
      {"check", bad, "--json"},
      {"check", bad, "--format", "sarif"},
      {"check", kHostileName},
      {"check", "--allow", kHostileName, path},
      {"check", "--format", kHostileName, path},
      {"identify", "--db", path, "0x01234057"},
      {"identify", "--db", path, "0x01234057", "--json"},
      {"identify", "--db", path, "0x01234057", "--format", "tsv"},
      {"identify", "--db", path, "0x01234057", "--format", "openocd"},
      {"identify", "--db", path, "0x01234057", "--format", "svg"},
      {"identify", "--db", path, kHostileName},
      {"identify", "--db", path, "0x09999057"},
      {"identify", "--db", path, "--scan", scan},
      {"identify", "--db", path, "--scan", scan, "--json"},
      {"identify", "--db", path, "--scan", kHostileName},
      {"identify", "--db", path, "--scan", bad},
      {"identify", "--db", bad, "0x01234057"},
      {"identify", "--db", path, "--ir", kHostileName, "0x01234057"},
      {"export", good},
      {"export", bad},
      {"export", kHostileName},
      {"export", good, "--output", path + "/no/" + kHostileName},
      {"merge", path + "/other.xml", good},
      {"merge", bad},
      {"merge", path, "--output", path + "/no/" + kHostileName},
      {"help", kHostileName},
      {kHostileName},
      {"--" + kHostileName},
  };
  for (const Arguments& row : rows) {
    const ToolRun run = RunTool(row);
    EXPECT_TRUE(IsHarmless(run.out)) << "row: " << testing::PrintToString(row) << "\n" << testing::PrintToString(run.out);
    EXPECT_TRUE(IsHarmless(run.err)) << "row: " << testing::PrintToString(row) << "\n" << testing::PrintToString(run.err);
    for (const std::string& text : {run.out, run.err}) {
      EXPECT_EQ(("\n" + text).find("\nforged"), std::string::npos) << "row: " << testing::PrintToString(row) << "\n" << text;
    }
    EXPECT_LT(run.exitCode, 3) << "row: " << testing::PrintToString(row);
    EXPECT_FALSE(run.out.empty() && run.err.empty()) << "row: " << testing::PrintToString(row);
  }
}

TEST(HostileNames, AreWrittenAsReferencesThatLoadAgain) {
  const TemporaryFolder folder;
  const std::string file = (folder.Path() / "a.xml").string();
  const std::string again = (folder.Path() / "b.xml").string();
  std::ofstream(file) << Devices(kHostileValue);
  const std::string written = RunTool({"export", "--force", file}).out;
  std::ofstream(again) << written;
  EXPECT_NE(written.find("V&#155;31m&#8238;&#8232;&#127;&#10;forged"), std::string::npos) << written;
  EXPECT_EQ(RunTool({"export", "--force", again}).out, written);
}

}  // namespace
