// Descriptions against makers' files.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sample.h"

namespace {

namespace bsdl = plddb::bsdl;
namespace check = plddb::check;

std::string Lines(const std::vector<check::Finding>& findings) {
  std::string lines;
  for (const check::Finding& finding : findings) {
    lines += finding.place.file + ':' + std::to_string(finding.place.line) + ':' + std::to_string(finding.place.column) +
             (finding.severity == check::Severity::kError ? ": error[" : ": warning[") + std::string(finding.code) +
             "]: " + finding.text + '\n';
  }
  return lines;
}

/// The findings of a file with this device in line 2.
std::string Findings(const std::vector<std::string>& texts, const std::string& device,
                     bsdl::Missing missing = bsdl::Missing::kAllowed) {
  std::vector<bsdl::File> files;
  for (const std::string& text : texts)
    files.push_back(bsdl::Parse(text, std::string(1, static_cast<char>('a' + files.size())) + ".bsd"));
  plddb::Outline outline;
  const plddb::LoadResult loaded = plddb::ParseDescriptions(
      "<DeviceDatabase><Family/><Family Name='F'>\n" + device + "</Family></DeviceDatabase>", "my.xml", &outline);
  if (loaded.database == nullptr) return plddb::ToString(loaded.faults.front());
  return Lines(bsdl::Check(files, {{"my.xml", loaded.database.get(), &outline}}, missing));
}

const std::string kAll =
    "<Device Name='X' jtagDeviceID='0x01234057' DeviceIDScanMask='0x0FFFFFFF' IRLength='8' IDInstruction='0xFE' "
    "USERCODEIntruction='0xFD' InstructionBypass='0xFF' InstructionBypassPattern='11111111' BSCANLength='4'/>";

std::string With(const std::string& from, const std::string& to) { return sample::Replaced(kAll, from, to); }

TEST(Check, FindsNothingWhereAllAgrees) {
  const struct {
    const char* what;
    std::string text;
    std::string device;
  } rows[] = {
      {"all", sample::kText, kAll},
      {"another device", sample::kText, With("0x01234057", "0x01235057")},
      {"no id", sample::kText, "<Device Name='PLD1234A' IRLength='9'/>"},
      {"no mask", sample::kText, With("0x0FFFFFFF", "0")},
      {"only the id", sample::kText, "<Device jtagDeviceID='0x01234057' DeviceIDScanMask='0x0FFFFFFF'/>"},
      {"one of several codes", sample::With("IDCODE (11111110)", "IDCODE (00000111, 11111110)"), kAll},
      {"a code with X", sample::With("IDCODE (11111110)", "IDCODE (1X1X1X1X)"), kAll},
      {"no USERCODE", sample::With("USERCODE (11111101)", "USER_CODE (11111101)"), kAll},
      {"the version, which the file fixes", sample::With("\"XXXX\" &\n", "\"0000\" &\n"), With("0x0FFFFFFF", "0xFFFFFFFF")},
      {"another version", sample::With("\"XXXX\" &\n", "\"0001\" &\n"), With("0x0FFFFFFF", "0xFFFFFFFF")},
      {"the second IDCODE", sample::With("    \"1\";", "    \"1,\" & \"XXXX0001001000110100000001010011\";"),
       With("0x01234057", "0x01234053")},
      {"an IDCODE of any device", sample::With("    \"0001001000110100\" &\n", "    \"XXXXXXXXXXXXXXXX\" &\n"),
       With("IRLength='8'", "IRLength='9'")},
  };
  for (const auto& row : rows) EXPECT_EQ(Findings({row.text}, row.device), "") << "row: " << row.what;
}

TEST(Check, NamesBothPlacesOfADisagreement) {
  const struct {
    const char* from;
    const char* to;
    const char* finding;
  } rows[] = {
      {"IRLength='8'", "IRLength='9'", "error[bsdl-ir-length]: IRLength is 9, but 8 in a.bsd:21:62\n"},
      {"IDInstruction='0xFE'", "IDInstruction='0xFF'",
       "error[bsdl-code]: IDInstruction is 0xFF, but 11111110 in a.bsd:26:14\n"},
      {"IDInstruction='0xFE'", "IDInstruction='0x1FE'",
       "error[bsdl-code]: IDInstruction is 0x1FE, but 11111110 in a.bsd:26:14\n"},
      {"IDInstruction='0xFE'", "IDInstruction='0'", "error[bsdl-code]: IDInstruction is 0x00, but 11111110 in a.bsd:26:14\n"},
      {"USERCODEIntruction='0xFD'", "USERCODEIntruction='1'",
       "error[bsdl-code]: USERCODEIntruction is 0x01, but 11111101 in a.bsd:27:16\n"},
      {"InstructionBypass='0xFF'", "InstructionBypass='0x7F'",
       "error[bsdl-code]: InstructionBypass is 0x7F, but 11111111 in a.bsd:23:14\n"},
      {"Pattern='11111111'", "Pattern='1111111'",
       "error[bsdl-code]: InstructionBypassPattern is 1111111, but 11111111 in a.bsd:23:14\n"},
      {"BSCANLength='4'", "BSCANLength='5'", "error[bsdl-boundary]: BSCANLength is 5, but 4 in a.bsd:38:59\n"},
      {"Mask='0x0FFFFFFF'", "Mask='0x1FFFFFFF'",
       "error[bsdl-mask]: DeviceIDScanMask is 0x1FFFFFFF, but XXXX0001001000110100000001010111, which leaves the "
       "bits 0x10000000 open, in a.bsd:30:6\n"},
      {"Mask='0x0FFFFFFF'", "Mask='0x0FFF0FFF'",
       "error[bsdl-mask]: DeviceIDScanMask is 0x0FFF0FFF, but XXXX0001001000110100000001010111, which fixes the "
       "bits 0x0000F000, too, in a.bsd:30:6\n"},
  };
  for (const auto& row : rows) {
    const std::string device = With(row.from, row.to);
    const std::size_t value = device.find(row.to) + std::string(row.to).find('\'') + 2;
    EXPECT_EQ(Findings({sample::kText}, device), "my.xml:2:" + std::to_string(value) + ": " + row.finding) << "row: " << row.to;
  }
}

TEST(Check, FindsADeviceByTheEntityNameOfItsPackage) {
  const std::string device = sample::Replaced(kAll, "/>", "><Package PON='PLD1234A-TQ100'/></Device>");
  EXPECT_EQ(Findings({sample::kText}, device), "");
  EXPECT_EQ(Findings({sample::kText}, sample::Replaced(device, "0x01234057", "0x01234059")),
            "my.xml:2:32: error[bsdl-id]: jtagDeviceID is 0x01234059, but XXXX0001001000110100000001010111 in a.bsd:30:6\n");
}

TEST(Check, TakesABitThatDiffersAmongPackagesForOneThatMayBeLeftOut) {
  const std::string other = sample::With("\"0001001000110100\"", "\"0001001000110101\"");
  const std::string device = With("0x0FFFFFFF", "0x0FFFEFFF");
  EXPECT_EQ(Findings({sample::kText, other}, device), "");
  EXPECT_NE(Findings({sample::kText}, device), "");
  EXPECT_NE(Findings({sample::kText, other}, With("0x0FFFFFFF", "0x0FFFCFFF")), "");
}

TEST(Check, ReportsWhatSeveralFilesStateAlikeOnce) {
  EXPECT_EQ(Findings({sample::kText, sample::kText}, With("IRLength='8'", "IRLength='9'")),
            "my.xml:2:84: error[bsdl-ir-length]: IRLength is 9, but 8 in a.bsd:21:62\n");
}

TEST(Check, ListsMissingValuesWhenAsked) {
  EXPECT_EQ(
      Findings({sample::kText}, "<Device jtagDeviceID='0x01234057' DeviceIDScanMask='0x0FFFFFFF'/>", bsdl::Missing::kListed),
      "my.xml:2:1: warning[bsdl-missing]: IRLength is missing: 8 in a.bsd:21:62\n"
      "my.xml:2:1: warning[bsdl-missing]: BSCANLength is missing: 4 in a.bsd:38:59\n"
      "my.xml:2:1: warning[bsdl-missing]: IDInstruction is missing: 11111110 in a.bsd:26:14\n"
      "my.xml:2:1: warning[bsdl-missing]: USERCODEIntruction is missing: 11111101 in a.bsd:27:16\n"
      "my.xml:2:1: warning[bsdl-missing]: InstructionBypass is missing: 11111111 in a.bsd:23:14\n");
  EXPECT_EQ(
      Findings({sample::kText},
               "<Device IRLength='8' IDInstruction='254' USERCODEIntruction='253' InstructionBypass='255' BSCANLength='4'>"
               "<Package PON='PLD1234A-TQ100'/></Device>",
               bsdl::Missing::kListed),
      "my.xml:2:1: warning[bsdl-missing]: jtagDeviceID is missing: XXXX0001001000110100000001010111 in a.bsd:30:6\n"
      "my.xml:2:1: warning[bsdl-missing]: DeviceIDScanMask is missing: 0x0FFFFFFF in a.bsd:30:6\n");
  EXPECT_EQ(Findings({sample::kText}, kAll, bsdl::Missing::kListed), "");
}

TEST(Check, ReportsFaultyFiles) {
  EXPECT_EQ(Findings({"entiti", sample::kText, sample::With("(00000001)", "(0000001)")}, kAll),
            "a.bsd:1:1: error[bsdl-file]: expected \"entity\", found \"entiti\"\n"
            "c.bsd:25:14: error[bsdl-file]: the code of SAMPLE has 7 bits: expected 8, the INSTRUCTION_LENGTH\n");
}

TEST(Check, AgreesWithWhatWasImported) {
  std::vector<bsdl::File> files;
  files.push_back(bsdl::Parse(sample::kText, "a.bsd"));
  files.push_back(bsdl::Parse(sample::With("\"0001001000110100\"", "\"00010010001101XX\""), "b.bsd"));
  for (const bsdl::File& file : files) {
    const bsdl::Import import = bsdl::Describe({file}, {"F", "", "", "", 0});
    plddb::Outline outline;
    const plddb::LoadResult loaded = plddb::ParseDescriptions(bsdl::Write(import), "my.xml", &outline);
    EXPECT_EQ(Lines(bsdl::Check({file}, {{"my.xml", loaded.database.get(), &outline}}, bsdl::Missing::kListed)), "");
  }
}

TEST(CheckCodes, AreNamedAlike) {
  for (const check::Code& code : bsdl::CheckCodes()) {
    EXPECT_EQ(code.name.substr(0, 5), "bsdl-");
    EXPECT_FALSE(code.meaning.empty()) << "row: " << code.name;
  }
}

TEST(Check, ComparesWhatLoadsAndFindsMistakesInTheRest) {
  const std::vector<bsdl::File> files = {bsdl::Parse(sample::kText, "a.bsd")};
  const std::vector<check::Source> sources = {
      {"bad.xml", "<DeviceDatabase>", ""},
      {"my.xml", "<DeviceDatabase><Family Name='F'>" + With("IRLength='8'", "IRLength='9'") + "</Family></DeviceDatabase>", ""},
      {"missing.xml", "", "No such file or directory"},
  };
  std::vector<std::string> codes;
  for (const check::Finding& finding : bsdl::CheckTexts(files, sources, bsdl::Missing::kAllowed)) {
    codes.push_back(finding.place.file + ' ' + std::string(finding.code));
  }
  EXPECT_EQ(codes, (std::vector<std::string>{"bad.xml load", "missing.xml unreadable", "my.xml bsdl-ir-length"}));
  EXPECT_TRUE(bsdl::CheckTexts({}, {}, bsdl::Missing::kListed).empty());
}

}  // namespace
