#include "bsdl/real_number.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

using plddb::bsdl::RealNumber;

TEST(RealNumber, IsAllOfTheText) {
  const struct {
    std::string text;
    std::optional<double> value;
  } rows[] = {
      {"0", 0.0},
      {"10", 10.0},
      {"10.0", 10.0},
      {"10.0e6", 10.0e6},
      {"1.5E-3", 1.5e-3},
      {"1e+3", 1000.0},
      {"10.", 10.0},
      {".5", 0.5},
      {"1.E3", 1000.0},
      {"00012.50", 12.5},
      {"33.3e6", 33.3e6},
      {"1e-400", 0.0},
      {"", {}},
      {".", {}},
      {"e6", {}},
      {".e6", {}},
      {"1e", {}},
      {"1e+", {}},
      {"1e+-3", {}},
      {"1e++3", {}},
      {"1.2.3", {}},
      {"1e2e3", {}},
      {"-1", {}},
      {"+1", {}},
      {" 1", {}},
      {"1 ", {}},
      {"1_000", {}},
      {"0x10", {}},
      {"inf", {}},
      {"nan", {}},
      {"1e999", {}},
      {"1e1000000000000", {}},
      {"1e2.5", {}},
      {std::string("1\0", 2), {}},
      {std::string(2000, '1'), {}},
  };
  for (const auto& row : rows) EXPECT_EQ(RealNumber(row.text), row.value) << "text: " << row.text;
}
