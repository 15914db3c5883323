// Whatever the text is, the check ends, and its findings have places within the text.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>

#include "corpus.h"

namespace {

constexpr std::uint32_t kSeed = 20261121;
constexpr int kMutations = 1500;

void ExpectPlacesWithin(const std::string& text) {
  const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
  for (const auto& finding : CheckText(text)) {
    const bool isWithin = finding.place.line >= 1 && finding.place.line <= lines && finding.place.column >= 1;
    EXPECT_TRUE(isWithin && !finding.text.empty()) << "row: " << Brief(finding) << "\n" << text;
  }
}

TEST(CheckRobust, TextsThatAreCutAnywhere) {
  const std::string text = support::ReadFile(PLDDB_TEST_DIR "/check/seeded.xml");
  for (std::size_t size = 0; size <= text.size(); size += 3) ExpectPlacesWithin(text.substr(0, size));
}

/// Values are exchanged, so that most texts load: what one attribute may hold another one may not.
TEST(CheckRobust, TextsWithValuesExchanged) {
  const std::string clean = support::ReadFile(PLDDB_TEST_DIR "/check/seeded.xml");
  const Texts values = {"",
                        " ",
                        "0",
                        "1",
                        "4294967295",
                        "0x00",
                        "-1",
                        ";",
                        ";;",
                        "A;B",
                        "\"A\" \"",
                        "0 to 0",
                        "2147483647 to -2147483648",
                        "PLD1234A",
                        "JTAG",
                        "&#10;",
                        "-",
                        "-/1",
                        "5828",
                        "5892"};
  std::mt19937 random(kSeed);
  int loaded = 0;
  for (int i = 0; i < kMutations; ++i) {
    std::string text = clean;
    for (int edits = 0; edits < 3; ++edits) {
      const auto open = text.find("=\"", random() % text.size());
      if (open == text.npos) continue;
      const auto close = text.find('"', open + 2);
      text.replace(open + 2, close - open - 2, values[random() % values.size()]);
    }
    ExpectPlacesWithin(text);
    if (plddb::ParseDescriptions(text, "devices.xml").database != nullptr) ++loaded;
  }
  EXPECT_GT(loaded, kMutations / 10);
}

TEST(CheckRobust, TellsManyMasksApart) {
  std::string text = "<DeviceDatabase><Family Name=\"F\">\n";
  for (unsigned int i = 0; i < 4000; ++i) {
    const std::string number = std::to_string(i);
    text += "<Device Name=\"D" + number + "\" CodeName=\"D" + number + "\" Comm=\"JTAG\" jtagDeviceID=\"" +
            std::to_string(i * 2654435761U | 1U) + "\" DeviceIDScanMask=\"" + std::to_string(i * 40503U | 0xFFFU) + "\"/>\n";
  }
  const auto findings = CheckText(text + "</Family></DeviceDatabase>\n");
  EXPECT_GT(std::count_if(findings.begin(), findings.end(), [](const auto& f) { return f.code.substr(0, 3) == "id-"; }), 0);
}

}  // namespace
