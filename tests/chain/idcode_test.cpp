#include <gtest/gtest.h>

#include "Chain.h"

namespace {

using plddb::chain::IdcodeFields;
using plddb::chain::KindOf;
using plddb::chain::SplitIdcode;

TEST(Idcode, IsSplitIntoItsFields) {
  const struct {
    unsigned int id;
    IdcodeFields fields;
  } cases[] = {
      {0x4BA00477, {4, 0xBA00, 0x23B, 4, 0x3B}}, {0xF0000001, {0xF, 0, 0, 0, 0}},    {0x0FFFF001, {0, 0xFFFF, 0, 0, 0}},
      {0x00000FFF, {0, 0, 0x7FF, 15, 0x7F}},     {0x00000F01, {0, 0, 0x780, 15, 0}}, {0x000000FF, {0, 0, 0x7F, 0, 0x7F}},
      {0x12345677, {1, 0x2345, 0x33B, 6, 0x3B}},
  };
  for (const auto& c : cases) {
    const IdcodeFields fields = SplitIdcode(c.id);
    EXPECT_EQ(fields.version, c.fields.version) << "row: " << c.id;
    EXPECT_EQ(fields.part, c.fields.part) << "row: " << c.id;
    EXPECT_EQ(fields.manufacturer, c.fields.manufacturer) << "row: " << c.id;
    EXPECT_EQ(fields.bank, c.fields.bank) << "row: " << c.id;
    EXPECT_EQ(fields.code, c.fields.code) << "row: " << c.id;
  }
}

TEST(IdKind, DependsOnTheBits) {
  const struct {
    std::optional<unsigned int> id;
    const char* comm;
    const char* kind;
  } cases[] = {
      {{}, "JTAG", "no-idcode"},          {0, "JTAG", "stuck-at-0"},          {0xFFFFFFFF, "JTAG", "stuck-at-1"},
      {0x59604092, "JTAG", "bypass-bit"}, {0x80000000, "JTAG", "bypass-bit"}, {0xFFFFFFFE, "JTAG", "bypass-bit"},
      {0x59604093, "JTAG", "idcode"},     {0x141, "ISP", "isp-identifier"},   {0x140, "ISP", "isp-identifier"},
      {0, "ISP", "stuck-at-0"},           {0xFFFFFFFF, "DUAL", "stuck-at-1"}, {1, "JTAG", "idcode"},
  };
  for (const auto& c : cases) {
    const plddb::chain::IdKind& kind = KindOf(c.comm, c.id);
    EXPECT_STREQ(kind.name, c.kind) << "row: " << c.id.value_or(0) << " " << c.comm;
    EXPECT_EQ(kind.isIdcode, std::string("idcode") == c.kind) << "row: " << c.kind;
    EXPECT_EQ(*kind.meaning == '\0', kind.isIdcode) << "row: " << c.kind;
  }
}

}  // namespace
