#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "Descriptions.h"
#include "NearNames.h"

namespace {

using Names = std::vector<std::string_view>;

TEST(NearNames, AreThoseThatAFewLettersMakeEqual) {
  const Names known = {"XC9572XL", "XC9572", "XC95144XL", "XCR3064XL", "LEFT"};
  const struct {
    const char* what;
    std::string_view name;
    std::size_t most;
    Names expected;
  } rows[] = {
      {"equal", "XC9572", 1, {"XC9572"}},
      {"letter case", "xc9572xl", 1, {"XC9572XL"}},
      {"separators", "XC-9572_X L", 1, {"XC9572XL"}},
      {"one replaced", "XC9572XK", 1, {"XC9572XL"}},
      {"one left out", "XC957XL", 1, {"XC9572XL"}},
      {"one put in", "XC95722XL", 1, {"XC9572XL"}},
      {"two exchanged", "XC9527XL", 1, {"XC9572XL"}},
      {"nothing near", "ABCDEFGHIJ", 5, {}},
      {"empty", "", 5, {}},
      {"no room", "XC9572", 0, {}},
      {"nearest first", "XC9572X", 2, {"XC9572XL", "XC9572"}},
  };
  for (const auto& row : rows) EXPECT_EQ(plddb::NearNames(row.name, known, row.most), row.expected) << "row: " << row.what;
}

TEST(NearNames, NameEachTextOnce) {
  const Names known = {"AB1", "AB1", "AB2"};
  EXPECT_EQ(plddb::NearNames("AB1", known, 5), (Names{"AB1", "AB2"}));
}

TEST(NearNames, AreNotLookedForWhenATextIsTooLongToBeAName) {
  const std::string longName(65, 'A');
  const Names known = {longName};
  EXPECT_EQ(plddb::NearNames(longName, known, 5), Names());
  EXPECT_EQ(plddb::NearNames(std::string(64, 'A'), {std::string_view(longName).substr(1)}, 5).size(), 1U);
}

/// `name` with one slip at random: a letter left out, exchanged with the next, replaced or put in.
std::string TypoOf(const std::string& name, std::mt19937& random) {
  const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  const char letter = letters[random() % letters.size()];
  std::string typo = name;
  switch (random() % 4) {
    case 0:
      return typo.erase(random() % name.size(), 1);
    case 1: {
      const std::size_t place = random() % (name.size() - 1);
      std::swap(typo[place], typo[place + 1]);
      return typo;
    }
    case 2:
      typo[random() % name.size()] = letter;
      return typo;
    default:
      return typo.insert(random() % (name.size() + 1), 1, letter);
  }
}

TEST(NearNames, BringTheShippedDeviceThatOneSlipMissedIntoTheFirstThree) {
  const plddb::LoadResult loaded = plddb::LoadDescriptions(PLDDB_DATA_DIR "/xilinx.xml");
  ASSERT_NE(loaded.database, nullptr);
  std::vector<std::string> names;
  for (int f = 0; const FamilyList* const family = loaded.database->GetFamily(f); ++f) {
    for (int d = 0; const DeviceInfo* const device = family->GetDevice(d); ++d) names.emplace_back(device->GetName());
  }
  const Names known(names.begin(), names.end());
  std::mt19937 random(1);
  int typos = 0;
  int hits = 0;
  for (int round = 0; round < 10; ++round) {
    for (const std::string& name : names) {
      const std::string typo = TypoOf(name, random);
      if (std::find(known.begin(), known.end(), typo) != known.end()) continue;  // a device, and found as such
      const Names near = plddb::NearNames(typo, known, 3);
      ++typos;
      hits += std::find(near.begin(), near.end(), name) != near.end() ? 1 : 0;
    }
  }
  EXPECT_GT(typos, 2000);
  EXPECT_GE(hits * 100, typos * 95) << hits << " of " << typos;
}

}  // namespace
