#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "Chain.h"

namespace {

using plddb::chain::MakerName;
using plddb::chain::MakerText;

/// The table's makers by bank and code.
std::map<std::pair<unsigned int, unsigned int>, std::string> Table() {
  std::map<std::pair<unsigned int, unsigned int>, std::string> makers;
  std::ifstream file(PLDDB_SOURCE_DIR "/data/tables/jep106.csv");
  std::string line;
  std::getline(file, line);
  while (std::getline(file, line)) {
    std::istringstream cells(line);
    std::string bank, code, field, maker;
    std::getline(cells, bank, ',');
    std::getline(cells, code, ',');
    std::getline(cells, field, ',');
    if (cells.peek() == '"') {
      cells.get();
      std::getline(cells, maker, '"');
    } else {
      std::getline(cells, maker, ',');
    }
    makers[{std::stoul(bank), std::stoul(code, nullptr, 16)}] = maker;
  }
  return makers;
}

TEST(Makers, AreThoseOfTheTable) {
  const auto table = Table();
  EXPECT_EQ(table.size(), 2180u);
  for (unsigned int bank = 0; bank < 20; ++bank) {
    for (unsigned int code = 0; code < 130; ++code) {
      const auto row = table.find({bank, code});
      EXPECT_EQ(MakerName(bank, code), row == table.end() ? "" : row->second) << "row: " << bank << " " << code;
    }
  }
}

TEST(Makers, AreNamedForEveryManufacturerField) {
  const auto table = Table();
  const auto nameOf = [&](unsigned int bank, unsigned int code) {
    const auto row = table.find({bank, code});
    return row == table.end() ? "" : row->second;
  };
  for (unsigned int bank = 0; bank < 16; ++bank) {
    for (unsigned int code = 0; code < 128; ++code) {
      const std::string text = MakerText(bank << 7 | code);
      const std::string other = nameOf(bank + 16, code);
      if (code == 0 || code == 127) {
        EXPECT_EQ(text.rfind("reserved: ", 0), 0u) << "row: " << bank << " " << code;
        continue;
      }
      const std::string name = nameOf(bank, code).empty() ? "not assigned" : nameOf(bank, code);
      const std::string remark =
          " (or " + other + ": bank " + std::to_string(bank + 16) + " reads as " + std::to_string(bank) + ")";
      EXPECT_EQ(text, name + (other.empty() ? "" : remark)) << "row: " << bank << " " << code;
    }
  }
}

}  // namespace
