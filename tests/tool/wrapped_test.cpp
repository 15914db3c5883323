// Texts for people fit a terminal of 80 columns, whatever names the descriptions have.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "run_tool.h"
#include "tests/support/temporary_folder.h"
#include "tool/text_table.h"

namespace {

using tool::WrappedTable;
using tool::WrappedText;

/// Columns of `line`, whose characters are ASCII, of one column, or CJK, of two; combining ones have none.
std::size_t Columns(const std::string& line) {
  std::size_t columns = 0;
  for (const char c : line) {
    const auto byte = static_cast<unsigned char>(c);
    columns += byte < 0x80 ? 1 : byte >= 0xE3 ? 2 : 0;
  }
  return columns;
}

void ExpectFits(const std::string& text, const std::string& row) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(Columns(line), 80U) << "row: " << row << "\n" << line;
}

std::string Times(std::size_t count, const std::string& text) {
  std::string texts;
  for (std::size_t i = 0; i < count; ++i) texts += text;
  return texts;
}

/// Two devices, with names of `words` words, answer to 0x01234057.
std::string Devices(const std::string& word, std::size_t words) {
  const std::string name = Times(words, word + " ") + "1";
  std::string text = "<DeviceDatabase><Family Name='" + Times(words, "Family" + word + " ") + "'>";
  for (const char* const mask : {"0x0FFFFFFF", "0x0FFFF0FF"}) {
    text += "<Device Name='" + name + "' CodeName='" + name + "' Comm='JTAG' jtagDeviceID='0x01234057' IRLength='38' " +
            "BypassInst='0x3FFFFFFFFF' DeviceIDScanMask='" + mask + "'>";
    for (int i = 0; i < 12; ++i) text += "<Package Type='" + word + std::to_string(i) + "'/>";
    text += "</Device>";
  }
  return text + "</Family></DeviceDatabase>";
}

TEST(Texts, FitATerminalOfEightyColumns) {
  const support::TemporaryFolder folder;
  const std::string file = (folder.Path() / "d.xml").string();
  const struct {
    const char* word;
    std::size_t words;
  } rows[] = {
      {"A", 1},          {"PLD1234A", 1},  {"PLD1234A", 9}, {"\xE8\xA3\x85\xE7\xBD\xAE", 1}, {"\xE8\xA3\x85\xE7\xBD\xAE", 8},
      {"e\xCC\x81", 12}, {"&#x202E;A", 4},
  };
  for (const auto& row : rows) {
    std::ofstream(file) << Devices(row.word, row.words);
    for (const std::size_t taps : {1U, 2U, 12U, 40U, 120U}) {
      for (const char* const id : {"0x01234057", "0x59604093"}) {
        std::vector<std::string> words = {"identify", "--db", file};
        words.insert(words.end(), taps, id);
        words.emplace_back("0x4BAFF477");
        ExpectFits(RunTool(words).out, std::string(row.word) + " " + std::to_string(taps) + " " + id);
      }
    }
    ExpectFits(RunTool({"list", "--db", file}).out, row.word);
    ExpectFits(RunTool({"list", "--devices", "--db", file}).out, row.word);
  }
}

TEST(Texts, OfTheShippedDevicesFitATerminal) {
  for (const char* const words :
       {"identify 0x59604093 0x06E5E093 0x4BA00477 0x0362D093", "identify 0x0484A093 0xFFFFFFFF 0x00000000 0x59604092", "list",
        "list", "list --devices --all", "find XC", "find --all artix", "check --list-codes", "find XC7A35T-1CPG236C"}) {
    std::vector<std::string> arguments = Words(words);
    ExpectFits(RunTool(arguments).out, words);
  }
}

TEST(WrappedTable, NarrowsTheWidestColumnsBetweenWords) {
  const std::string words = Times(30, "ab ");
  EXPECT_EQ(WrappedTable({{"a", "b"}, {"1", "2"}}), "a  b\n1  2\n");
  EXPECT_EQ(WrappedTable({{"a", "b"}, {"head", words}}), "a     b\nhead  " + Times(24, "ab ") + "ab\n      ab ab ab ab ab\n");
  EXPECT_EQ(WrappedTable({{std::string(90, 'x')}}), std::string(90, 'x') + "\n");  // a word is not cut
  EXPECT_EQ(WrappedTable({{"a", "b"}, {"name *", words}}, "  "),
            "  a       b\n  name *  " + Times(22, "ab ") + "ab\n" + std::string(10, ' ') + "ab ab ab ab ab ab ab\n");
  EXPECT_EQ(WrappedTable({}), "");
}

TEST(WrappedTable, WritesLastColumnsBelowWhereTheirWordsAreTooLong) {
  const std::string path(70, 'x');
  EXPECT_EQ(WrappedTable({{"device", "family", "where"}, {"DEVICE1234", "FAMILY", path}, {"D", "F", "-"}}),
            "device      family\n    where\nDEVICE1234  FAMILY\n    " + path + "\nD           F\n    -\n");
  EXPECT_EQ(WrappedTable({{"1", path, path}, {"2"}}, " "), " 1  " + path + "\n     " + path + "\n 2\n");
}

TEST(WrappedText, ContinuesTwoColumnsFurtherRight) {
  EXPECT_EQ(WrappedText("a b"), "a b\n");
  EXPECT_EQ(WrappedText(Times(30, "ab "), " "), " " + Times(25, "ab ") + "ab\n   ab ab ab ab\n");
  EXPECT_EQ(WrappedText(std::string(90, 'x')), std::string(90, 'x') + "\n");
}

}  // namespace
