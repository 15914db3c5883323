// Whatever the input: an end, bounded memory, and faults within the text.

#include <gtest/gtest.h>
#include <utime.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

#include "sample.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace bsdl = plddb::bsdl;

std::string Repeated(const std::string& text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

void ExpectSound(const std::string& text, const std::string& row) {
  const bsdl::File file = bsdl::Parse(text, "a.bsd");
  for (const bsdl::Fault& fault : file.faults) {
    EXPECT_GE(fault.place.line, 1) << "row: " << row;
    EXPECT_GE(fault.place.column, 1) << "row: " << row;
    EXPECT_EQ(fault.text.find('\n'), std::string::npos) << "row: " << row;
  }
  EXPECT_LE(file.faults.size(), 10001U) << "row: " << row;
}

TEST(Limits, EveryCutOfAFileIsReadOrRefused) {
  for (std::size_t size = 0; size < sample::kText.size(); ++size) {
    const bsdl::File file = bsdl::Parse(sample::kText.substr(0, size), "a.bsd");
    const bool isWhole = size + 1 == sample::kText.size();  // without its last line end
    EXPECT_EQ(bsdl::HasErrors(file.faults), !isWhole) << "row: " << size;
    ExpectSound(sample::kText.substr(0, size), std::to_string(size));
  }
}

TEST(Limits, EveryByteMayBeAnyOther) {
  for (const char c : {'\0', '"', ';', '(', ')', '&', '-', '\n', '\xFF', ' ', 'X', '9'}) {
    for (std::size_t at = 0; at < sample::kText.size(); at += 3) {
      std::string text = sample::kText;
      text[at] = c;
      ExpectSound(text, std::to_string(at) + c);
    }
  }
}

TEST(Limits, DeepAndLongTextsEnd) {
  constexpr std::size_t kMany = 200000;
  const struct {
    const char* what;
    std::string text;
  } rows[] = {
      {"open parentheses", sample::With("= \"TQ100\"", "= " + Repeated("(", kMany))},
      {"open parentheses in a string", sample::With("\"BOUNDARY (EXTEST", "\"BOUNDARY " + Repeated("(", kMany) + " (EXTEST")},
      {"parentheses in a flow",
       sample::With("end PLD", "attribute ISC_FLOW of X : entity is \"" + Repeated("(", kMany) + "\"; end PLD")},
      {"empty pieces", sample::With("\"SAMPLE (", Repeated("\"\" & ", kMany) + "\"SAMPLE (")},
      {"a code of many pieces", sample::With("(00000001)", "(" + Repeated("1\" & \"", kMany) + ")")},
      {"many codes", sample::With("(00000001)", "(" + Repeated("00000001,", kMany) + "00000001)")},
      {"many wrong codes", sample::With("(00000001)", "(" + Repeated("0,", kMany) + "00000001)")},
      {"many commas", sample::With("\"SAMPLE (", "\"" + Repeated(",", kMany) + "SAMPLE (")},
      {"many faulty cells", sample::With("\"1 (BC_1", "\"" + Repeated("1 (x), ", kMany) + "1 (BC_1")},
      {"many attributes", sample::With("end PLD", Repeated("attribute A of B : entity is 1;\n", kMany) + "end PLD")},
      {"many ports", sample::With("GND : linkage bit\n", Repeated("A, B : in bit;\n", kMany) + "GND : linkage bit\n")},
      {"many faulty ports", sample::With("GND : linkage bit\n", Repeated("A : x y;", kMany) + "GND : linkage bit\n")},
      {"open strings", Repeated("\"\n", kMany)},
      {"end statements", "package P is " + Repeated("end record;", kMany)},
      {"packages", Repeated("package P is end P;", kMany)},
      {"dashes", Repeated("-", kMany)},
      {"a long word", Repeated("a", kMany)},
      {"a long number", sample::With("entity is 8;", "entity is " + Repeated("9", kMany) + ";")},
      {"lines of a tester", Repeated("!!!!\n", kMany)},
      {"statements without sense", "entity A is\n" + Repeated("x y z\n;", kMany)},
  };
  for (const auto& row : rows) ExpectSound(row.text, row.what);
}

TEST(Limits, TooManyFaultsAreNotAllListed) {
  const bsdl::File file = bsdl::Parse("entity A is\n" + Repeated("x;\n", 20000) + "end A;", "a.bsd");
  ASSERT_EQ(file.faults.size(), 10001U);
  EXPECT_EQ(file.faults.back().text, "too many faults: the rest of them is not listed");
}

TEST(Limits, AFileMayHave64MiB) {
  std::string text = sample::kText;
  text.resize(std::size_t{64} << 20, ' ');
  EXPECT_EQ(sample::Lines(bsdl::Parse(text, "a.bsd").faults), "");
  text += ' ';
  EXPECT_EQ(sample::Lines(bsdl::Parse(text, "a.bsd").faults), "a.bsd:1:1: error: cannot read the file: larger than 64 MiB\n");
  const support::TemporaryFolder folder;
  const std::string path = (folder.Path() / "a.bsd").string();
  std::ofstream(path, std::ios::binary) << text;
  EXPECT_EQ(sample::Lines(bsdl::Load(path).faults), path + ":1:1: error: cannot read the file: larger than 64 MiB\n");
  EXPECT_EQ(sample::Lines(bsdl::Load("/dev/zero").faults), "/dev/zero:1:1: error: cannot read the file: larger than 64 MiB\n");
}

TEST(Load, TellsWhyAFileCannotBeRead) {
  const support::TemporaryFolder folder;
  const std::string path = (folder.Path() / "none.bsd").string();
  EXPECT_EQ(sample::Lines(bsdl::Load(path).faults), path + ":1:1: error: cannot read the file: No such file or directory\n");
  EXPECT_EQ(sample::Lines(bsdl::Load(folder.Path().string()).faults),
            folder.Path().string() + ":1:1: error: cannot read the file: Is a directory\n");
}

TEST(Load, ReadsAFileAndItsTime) {
  const support::TemporaryFolder folder;
  const std::filesystem::path path = folder.Path() / "a.bsd";
  std::ofstream(path) << sample::kText;
  const bsdl::File now = bsdl::Load(path.string());
  EXPECT_EQ(sample::Lines(now.faults), "");
  EXPECT_EQ(now.name, path.string());
  const struct {
    std::time_t seconds;
    const char* time;
  } rows[] = {{1709251199, "2024-02-29T23:59:59Z"},
              {0, "1970-01-01T00:00:00Z"},
              {951912001, "2000-03-01T12:00:01Z"},
              {946598400, "1999-12-31T00:00:00Z"}};
  for (const auto& row : rows) {
    utimbuf times = {row.seconds, row.seconds};
    ASSERT_EQ(utime(path.string().c_str(), &times), 0) << row.time;
    EXPECT_EQ(bsdl::Load(path.string()).time, row.time);
  }
}

TEST(Parse, OfNoBsdlIsOneFault) {
  const struct {
    std::string text;
    const char* fault;
  } rows[] = {
      {"", "a.bsd:1:1: error: expected \"entity\", found the end of the file\n"},
      {"\n\n -- only a comment", "a.bsd:3:19: error: expected \"entity\", found the end of the file\n"},
      {"<DeviceDatabase/>", "a.bsd:1:1: error: expected \"entity\", found \"<\"\n"},
      {std::string("\0\0\0", 3), "a.bsd:1:1: error: expected \"entity\", found \"\\x00\"\n"},
      {"\x89PNG\r\n", "a.bsd:1:1: error: expected \"entity\", found \"\\x89\"\n"},
      {"Dear reader,\nthis is text; it is no BSDL; really.", "a.bsd:1:1: error: expected \"entity\", found \"Dear\"\n"},
      {"!!!! a tester", "a.bsd:1:14: error: expected \"entity\", found the end of the file\n"},
      {"package P is end P;", "a.bsd:1:20: error: expected \"entity\", found the end of the file\n"},
      {"\"entity\"", "a.bsd:1:1: error: expected \"entity\", found a string\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(sample::Lines(bsdl::Parse(row.text, "a.bsd").faults), row.fault);
}

}  // namespace
