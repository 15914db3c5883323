// plddb check: what it finds, where, and that it finds what the lookups do. The faulty files are in data/check; the first line
// of each says what is to be found in it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Descriptions.h"
#include "run_tool.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using support::TemporaryFolder;
using Texts = std::vector<std::string>;

const std::string kCorpus = PLDDB_TEST_DIR "/tool/data/check";
const std::string kData = PLDDB_DATA_DIR "/xilinx.xml";

Texts Split(const std::string& text, const std::string& separator) {
  Texts parts;
  std::size_t start = 0;
  for (auto end = text.find(separator); end != text.npos; end = text.find(separator, start)) {
    parts.push_back(text.substr(start, end - start));
    start = end + separator.size();
  }
  if (start < text.size()) parts.push_back(text.substr(start));
  return parts;
}

Texts CorpusFiles() {
  Texts files;
  for (const auto& entry : fs::directory_iterator(kCorpus)) files.push_back(entry.path().string());
  std::sort(files.begin(), files.end());
  return files;
}

/// "LINE:COLUMN SEVERITY[CODE]" of all that is to be found in a file of the corpus.
Texts Expected(const std::string& file) {
  const std::string before = "<!-- expect ";
  const std::string after = " -->";
  std::string line;
  std::ifstream stream(file);
  std::getline(stream, line);
  if (line.substr(0, before.size()) != before || line.size() < before.size() + after.size()) return {"nothing is expected"};
  line = line.substr(before.size(), line.size() - before.size() - after.size());
  return line == "nothing" ? Texts{} : Split(line, ", ");
}

/// The same of the lines that the tool printed; a line of another form, or of another file, as it is.
Texts Found(const std::string& output, const std::string& file) {
  Texts found;
  for (const std::string& line : Split(output, "\n")) {
    const std::string start = file + ":";
    const auto severity = line.find(": ", start.size());
    const auto text = line.find("]: ");
    const bool has_form = line.substr(0, start.size()) == start && severity < text && text != line.npos;
    const std::string place = line.substr(start.size(), severity - start.size());
    found.push_back(has_form ? place + " " + line.substr(severity + 2, text + 1 - severity - 2) : line);
  }
  return found;
}

bool HasErrors(const Texts& findings) {
  return std::any_of(findings.begin(), findings.end(),
                     [](const std::string& finding) { return finding.find(" error[") != finding.npos; });
}

std::set<std::string> ListedCodes() {
  std::set<std::string> codes;
  for (const std::string& line : Split(RunTool({"check", "--list-codes"}).out, "\n")) codes.insert(Words(line).front());
  return codes;
}

TEST(Check, FindsEachFaultOfTheCorpusAtItsPlaceAndNothingElse) {
  for (const std::string& file : CorpusFiles()) {
    const Texts expected = Expected(file);
    const ToolRun run = RunTool({"check", "--strict", file});
    EXPECT_EQ(Found(run.out, file), expected) << "row: " << file;
    EXPECT_EQ(run.exit_code, HasErrors(expected) ? 2 : expected.empty() ? 0 : 1) << "row: " << file;
  }
}

TEST(Check, HasAFileInTheCorpusForEveryCode) {
  std::set<std::string> codes;
  std::size_t faulty = 0;
  for (const std::string& file : CorpusFiles()) {
    const Texts expected = Expected(file);
    if (!expected.empty()) ++faulty;
    for (const std::string& finding : expected) {
      const auto start = finding.find('[') + 1;
      codes.insert(finding.substr(start, finding.size() - start - 1));
    }
  }
  EXPECT_EQ(codes, ListedCodes());
  EXPECT_GE(faulty, 40U);
  EXPECT_GE(CorpusFiles().size() - faulty, 5U);
}

TEST(Check, SaysEachFindingInOneLineAndTheNumbersOnStandardError) {
  const struct {
    const char* file;
    const char* line;  // behind the name of the file
    const char* numbers;
  } rows[] = {
      {"clean_empty.xml", "", "plddb: 0 errors and 0 warnings in 1 file\n"},
      {"load_wrong_root.xml", ":2:1: error[load]: unknown element \"Devices\": expected DeviceDatabase\n",
       "plddb: 1 error and 0 warnings in 1 file\n"},
      {"name_hidden.xml", ":9:19: warning[name-hidden]: the name \"PLD1234A\" finds PLD1234A (line 4, family PLD1200)\n",
       "plddb: 0 errors and 1 warning in 1 file\n"},
      {"id_hidden.xml",
       ":8:27: warning[id-hidden]: the IDCODE finds PLD1234A (line 4, the same family), which comes first and answers to all "
       "ids "
       "of this device\n",
       "plddb: 0 errors and 1 warning in 1 file\n"},
      {"id_shared_crossing_masks.xml",
       ":8:27: warning[id-shared]: the IDCODE 0x11234057 finds PLD1234A (line 4, the same family), which comes first\n",
       "plddb: 0 errors and 1 warning in 1 file\n"},
      {"bypass_short.xml", ":6:45: error[bypass-ones]: BYPASS is 0x1F, but it is all ones of the instruction register: 0xFF\n",
       "plddb: 1 error and 0 warnings in 1 file\n"},
      {"list_surplus.xml",
       ":7:74: error[list-surplus]: \"8\" and what follows is lost: ListControlReg1BitName makes 1 record\n",
       "plddb: 1 error and 0 warnings in 1 file\n"},
  };
  for (const auto& row : rows) {
    const std::string file = kCorpus + "/" + row.file;
    const ToolRun run = RunTool({"check", file});
    EXPECT_EQ(run.out, *row.line == '\0' ? "" : file + row.line) << "row: " << row.file;
    EXPECT_EQ(run.err, row.numbers) << "row: " << row.file;
  }
}

TEST(Check, FindsInTheDataOnlyThePairThatItsReadmeNames) {
  const ToolRun run = RunTool({"check", kData});
  const Texts lines = Split(run.out, "\n");
  EXPECT_EQ(run.exit_code, 0);
  ASSERT_EQ(lines.size(), 1U) << run.out;
  EXPECT_NE(lines[0].find(": warning[id-shared]: the IDCODE 0x0484A093 finds XCKU9P (line "), std::string::npos) << lines[0];
  EXPECT_EQ(RunTool({"check", "--strict", kData}).exit_code, 1);
  EXPECT_EQ(RunTool({"check", "--strict", "--allow", "id-shared", kData}).out, "");
  EXPECT_EQ(RunTool({"check", "--strict", "--allow", "id-shared", kData}).exit_code, 0);
}

TEST(Check, AcceptsTheFilesThatAreShown) {
  for (const char* const file : {"/descriptions/every_list.xml", "/../examples/my_devices.xml"}) {
    EXPECT_EQ(RunTool({"check", "--strict", PLDDB_TEST_DIR + std::string(file)}).exit_code, 0) << "row: " << file;
  }
}

TEST(Check, EndsWithTheWorstOfAllFiles) {
  const std::string clean = kCorpus + "/clean_empty.xml";
  const std::string warning = kCorpus + "/name_hidden.xml";
  const std::string error = kCorpus + "/mask_zero.xml";
  const struct {
    Texts arguments;
    int exit_code;
  } rows[] = {
      {{clean, clean}, 0},
      {{"--strict", clean}, 0},
      {{clean, warning}, 0},
      {{"--strict", warning, clean}, 1},
      {{error, warning}, 2},
      {{"--strict", warning, error, clean}, 2},
      {{"--strict", "--allow", "mask-zero", warning, error}, 1},
      {{"--strict", "--allow", "mask-zero", "--allow", "name-hidden", warning, error}, 0},
  };
  for (const auto& row : rows) {
    Texts arguments = {"check"};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    EXPECT_EQ(RunTool(arguments).exit_code, row.exit_code) << "row: " << testing::PrintToString(row.arguments);
  }
}

TEST(Check, ChecksEachFileByItself) {
  const std::string file = kCorpus + "/clean_one_device.xml";
  const ToolRun run = RunTool({"check", file, file});
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "plddb: 0 errors and 0 warnings in 2 files\n");
}

TEST(Check, FindsThatAFileCannotBeRead) {
  const ToolRun run = RunTool({"check", "missing.xml", kCorpus + "/clean_empty.xml"});
  EXPECT_EQ(run.out, "missing.xml:1:1: error[load]: cannot read the file: No such file or directory\n");
  EXPECT_EQ(run.err, "plddb: 1 error and 0 warnings in 2 files\n");
  EXPECT_EQ(run.exit_code, 2);
}

TEST(Check, SaysTheSameInJson) {
  const std::string file = kCorpus + "/fuse_count_shared.xml";
  const ToolRun run = RunTool({"check", "--json", kCorpus + "/clean_empty.xml", file});
  const auto report = nlohmann::ordered_json::parse(run.out);
  std::string lines;
  for (const auto& finding : report) {
    EXPECT_EQ(finding.size(), 6U);
    lines += finding.at("file").get<std::string>() + ":" + std::to_string(finding.at("line").get<int>()) + ":" +
             std::to_string(finding.at("column").get<int>()) + ": " + finding.at("severity").get<std::string>() + "[" +
             finding.at("code").get<std::string>() + "]: " + finding.at("text").get<std::string>() + "\n";
  }
  EXPECT_EQ(report.size(), 2U);
  EXPECT_EQ(lines, RunTool({"check", file}).out);
  EXPECT_EQ(RunTool({"check", "--json", kCorpus + "/clean_empty.xml"}).out, "[]\n");
}

TEST(Check, ReportsTextsSoThatTheyCannotForgeALine) {
  const TemporaryFolder folder;
  const std::string name = (folder.path() / "forged").string();
  const std::string file = name + "\n.xml";
  std::ofstream(file)
      << "<DeviceDatabase><Family><Device Name='A' CodeName='A' Comm='X&#10;other.xml:1:1: error[load]: no&#127;&#x9B;'/>"
         "</Family></DeviceDatabase>";
  EXPECT_EQ(
      RunTool({"check", file}).out,
      name +
          "?.xml:1:61: error[access-mode]: the access mode is \"X?other.xml:1:1: error[load]: no??\": expected JTAG, ISP or "
          "DUAL\n");
}

TEST(Check, RefusesWrongUsage) {
  for (const char* const arguments : {"check", "check --unknown a.xml", "check --allow nothing a.xml", "check --allow"}) {
    const ToolRun run = RunTool(Words(arguments));
    EXPECT_EQ(run.exit_code, 2) << "row: " << arguments;
    EXPECT_EQ(run.out, "") << "row: " << arguments;
    EXPECT_NE(run.err.find("plddb: error: "), std::string::npos) << "row: " << arguments;
  }
}

// --- What is told is what the lookups do ------------------------------------------------------------------------------------

constexpr std::uint32_t kSeed = 20240517;
constexpr int kDatabases = 150;

/// Makes small databases of which every text is that of another device, too, before long. A device stands in a line of its own.
class RandomDescriptions {
 public:
  std::string Next() {
    std::string text = "<DeviceDatabase>\n";
    for (int f = Below(3) + 1; f > 0; --f) {
      text += "<Family" + Attribute("Name", {"F", "f", "G"}) + Attribute("AliasName", {"G", "H"}) + ">\n";
      for (int d = Below(5); d > 0; --d) text += Device() + "\n";
      text += "</Family>\n";
    }
    return text + "</DeviceDatabase>\n";
  }

 private:
  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned int>(end)); }

  /// An attribute with one of these values, or none.
  std::string Attribute(const std::string& name, const Texts& values) {
    const auto i = static_cast<std::size_t>(Below(static_cast<int>(values.size()) + 1));
    return i == values.size() ? "" : " " + name + "='" + values[i] + "'";
  }

  std::string Device() {
    const Texts names = {"A", "a", "B", "C", "\xC3\xA4", "\xC3\x84", ""};
    const Texts masks = {"0", "0x0F", "0xFF", "0x3F", "0xFC", "0xF0"};
    std::string text = "<Device Comm='JTAG'" + Attribute("Name", names) + Attribute("CodeName", names);
    text += Attribute("AliasName", names) + Attribute("Vendor", {"Quorel", "quorel", "Example"});
    text += Attribute("DeviceIDScanMask", masks) + " jtagDeviceID='" + std::to_string(Below(256)) + "'";
    text += " ispDeviceID='" + std::to_string(Below(256)) + "'>";
    for (int p = Below(3); p > 0; --p) {
      text += "<Package" + Attribute("PON", {"P1", "p1", "P2"}) + Attribute("AliasPON", {"P2", "P3"}) + "/>";
    }
    return text + "</Device>";
  }

  std::mt19937 random_{kSeed};
};

/// The codes that were told, by line of the file.
using Told = std::set<std::pair<int, std::string>>;

/// What the lookups of a database fail to find, as the finding that is due.
class DueFindings {
 public:
  DueFindings(const DeviceList& database, const plddb::Element& outline) : database_(database) {
    for (int f = 0; FamilyList* const family = database.GetFamily(f); ++f) {
      const plddb::Element& element = outline.children[static_cast<std::size_t>(f)];
      AddFamily(*family, element.line);
      for (int d = 0; DeviceInfo* const device = family->GetDevice(d); ++d) {
        line_ = element.children[static_cast<std::size_t>(d)].line;
        AddDevice(*device);
      }
    }
  }

  const Told& due() const { return due_; }

 private:
  void Add(const DeviceInfo& device, const DeviceInfo* found, const char* code) {
    if (found != nullptr && found != &device) due_.insert({line_, code});
  }

  void AddFamily(const FamilyList& family, int line) {
    for (const char* const name : {family.GetName(), family.GetAliasName()}) {
      if (name != nullptr && database_.GetFamily(name) != &family) due_.insert({line, "family-hidden"});
    }
  }

  void AddDevice(const DeviceInfo& device) {
    const char* const alias = device.GetAliasName();
    const DeviceInfo* const by_alias = database_.GetDeviceWithCodeName(alias);
    const bool is_quorel = device.GetVendor() != nullptr && std::string(device.GetVendor()) == "Quorel";
    const bool is_code_name = by_alias != nullptr && HasCodeName(*by_alias, alias);
    Add(device, database_.GetDeviceWithName(device.GetName()), "name-hidden");
    Add(device, database_.GetDeviceWithCodeName(device.GetCodeName()), "code-name-hidden");
    if (alias != nullptr && is_quorel && !is_code_name) {
      due_.insert({line_, "alias-unused"});
    } else {
      Add(device, by_alias, "alias-hidden");
    }
    for (int p = 0; const Package* const package = device.GetDevicePackage()->GetPackage(p); ++p) {
      Add(device, database_.GetDeviceWithPON(package->GetBackupPON(), false), "ordering-number-shared");
      Add(device, database_.GetDeviceWithPON(package->GetAliasPON(), false), "ordering-number-shared");
    }
    AddIdentifier(device, "JTAG", device.GetjtagDeviceID());
    AddIdentifier(device, "ISP", device.GetispDeviceID());
  }

  /// Asks for every id that the device answers to: bits 31 to 9 count in no mask, and bit 8, which counts in none either, keeps
  /// the ids from being 0.
  void AddIdentifier(const DeviceInfo& device, const char* comm, unsigned int id) {
    const unsigned int mask = device.GetDeviceIDScanMask();
    int own = 0;
    int others = 0;
    for (unsigned int asked = 256; asked < 512 && mask != 0 && id != 0; ++asked) {
      if (((asked ^ id) & mask) != 0) continue;
      ++(database_.GetDeviceWithCommAndID(comm, asked) == &device ? own : others);
    }
    if (others > 0) due_.insert({line_, own > 0 ? "id-shared" : "id-hidden"});
  }

  static bool HasCodeName(const DeviceInfo& device, std::string name) {
    if (device.GetCodeName() == nullptr) return false;
    std::string code_name = device.GetCodeName();
    strupr(code_name);
    strupr(name);
    return code_name == name;
  }

  const DeviceList& database_;
  Told due_;
  int line_ = 0;
};

TEST(Check, TellsOfADeviceExactlyWhenTheLookupsFindAnother) {
  const std::set<std::string> codes = {"name-hidden",   "code-name-hidden",       "alias-hidden", "alias-unused",
                                       "family-hidden", "ordering-number-shared", "id-shared",    "id-hidden"};
  const TemporaryFolder folder;
  RandomDescriptions descriptions;
  std::map<std::string, Told> due;
  std::map<std::string, int> counts;
  for (int i = 0; i < kDatabases; ++i) {
    const std::string file = (folder.path() / (std::to_string(i) + ".xml")).string();
    std::ofstream(file) << descriptions.Next();
    plddb::Outline outline;
    const plddb::LoadResult loaded = plddb::LoadDescriptions(file, &outline);
    ASSERT_NE(loaded.database, nullptr) << ToString(loaded.faults.front());
    due[file] = DueFindings(*loaded.database, outline.root).due();
    for (const auto& [line, code] : due[file]) ++counts[code];
  }
  std::map<std::string, Told> told;
  for (const auto& finding : nlohmann::json::parse(RunTool({"check", "--json", folder.path().string()}).out)) {
    const auto code = finding.at("code").get<std::string>();
    if (codes.count(code) != 0) told[finding.at("file").get<std::string>()].insert({finding.at("line").get<int>(), code});
  }
  for (const auto& [file, findings] : due) EXPECT_EQ(told[file], findings) << "row: " << file << ", seed " << kSeed;
  for (const std::string& code : codes) EXPECT_GE(counts[code], 10) << "row: " << code << " hardly occurs";
}

// --- What is told of lists is what they lose --------------------------------------------------------------------------------

/// Every text of up to `longest` of these characters.
Texts AllTexts(const std::string& characters, std::size_t longest) {
  Texts texts = {""};
  for (std::size_t i = 0; i < texts.size() && texts[i].size() < longest; ++i) {
    const std::string shorter = texts[i];
    for (const char c : characters) texts.push_back(shorter + c);
  }
  return texts;
}

std::string LettersOf(const std::string& text) {
  std::string letters;
  std::copy_if(text.begin(), text.end(), std::back_inserter(letters), [](char c) { return c == 'a' || c == 'b'; });
  return letters;
}

/// A file with a device in a line of its own for each text; the first stands in line 2.
std::string DevicesWith(const std::string& attribute, const Texts& texts) {
  std::string description = "<DeviceDatabase><Family>\n";
  for (const std::string& text : texts) description += "<Device " + attribute + "='" + text + "'/>\n";
  return description + "</Family></DeviceDatabase>\n";
}

std::string ItemsOfRange(const DeviceInfo& device) {
  std::string items;
  for (const std::string& item : device.GetlistAddressRange()) items += item;
  return items;
}

std::string ItemsOfSysIO(const DeviceInfo& device) {
  std::string items;
  for (int i = 0; const char* const item = device.GetSysIO(i); ++i) items += item;
  return items;
}

TEST(Check, TellsOfAListExactlyWhenLettersOfItsTextAreLost) {
  const struct {
    const char* attribute;
    const char* characters;
    std::string (*items)(const DeviceInfo& device);
    bool has_label;
  } rows[] = {{"listAddressRange", "; ab", ItemsOfRange, true}, {"SysIOList", "\" ab", ItemsOfSysIO, false}};
  for (const auto& row : rows) {
    const TemporaryFolder folder;
    const std::string file = (folder.path() / "lists.xml").string();
    const Texts texts = AllTexts(row.characters, 5);
    std::ofstream(file) << DevicesWith(row.attribute, texts);
    std::set<int> told;
    for (const auto& finding : nlohmann::json::parse(RunTool({"check", "--json", file}).out)) {
      if (finding.at("code").get<std::string>().substr(0, 5) == "list-") told.insert(finding.at("line").get<int>());
    }
    const plddb::LoadResult loaded = plddb::LoadDescriptions(file);
    ASSERT_NE(loaded.database, nullptr) << ToString(loaded.faults.front());
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const bool is_labelled = row.has_label && texts[i].find(';') != std::string::npos;
      const std::string label = is_labelled ? texts[i].substr(0, texts[i].find(';')) : "";
      const std::string kept = LettersOf(label) + row.items(*loaded.database->GetFamily(0)->GetDevice(i));
      const bool is_whole = LettersOf(kept) == LettersOf(texts[i]);
      EXPECT_EQ(told.count(static_cast<int>(i) + 2) == 0, is_whole) << "row: " << row.attribute << " " << texts[i];
    }
  }
}

}  // namespace
