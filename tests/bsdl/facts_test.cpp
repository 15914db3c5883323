// What a file states: its words and pieces with their places, and the facts.

#include <gtest/gtest.h>

#include <string>

#include "sample.h"

namespace {

namespace bsdl = plddb::bsdl;

std::string At(bsdl::Place place) { return std::to_string(place.line) + ':' + std::to_string(place.column); }

const bsdl::Attribute* Find(const bsdl::Entity& entity, const std::string& name) {
  for (const bsdl::Attribute& attribute : entity.attributes) {
    if (attribute.name.text == name) return &attribute;
  }
  return nullptr;
}

TEST(Entity, HasEveryStatementWithItsPlace) {
  const bsdl::File file = bsdl::Parse(sample::kText, "a.bsd");
  const bsdl::Entity& entity = file.entity;
  EXPECT_EQ(entity.name.text, "PLD1234A_TQ100");
  EXPECT_EQ(At(entity.name.place), "2:8");
  ASSERT_EQ(entity.generics.size(), 1U);
  EXPECT_EQ(entity.generics[0].value[0].text, "TQ100");
  EXPECT_EQ(At(entity.generics[0].value[0].place), "3:42");
  ASSERT_EQ(entity.ports.size(), 4U);
  EXPECT_EQ(entity.ports[0].names.size(), 3U);
  EXPECT_EQ(entity.ports[0].names[2].text, "TMS");
  EXPECT_EQ(At(entity.ports[0].names[2].place), "5:15");
  EXPECT_EQ(entity.ports[2].length, 2);
  EXPECT_EQ(entity.ports[3].mode.text, "linkage");
  ASSERT_EQ(entity.uses.size(), 1U);
  EXPECT_EQ(entity.uses[0].text, "STD_1149_1_2001");
  ASSERT_EQ(entity.pinMaps.size(), 1U);
  EXPECT_EQ(entity.pinMaps[0].text.size(), 3U);
  EXPECT_EQ(At(entity.pinMaps[0].text[2].place), "16:6");
  EXPECT_EQ(entity.attributes.size(), 14U);
  const bsdl::Attribute* const idcode = Find(entity, "IDCODE_REGISTER");
  ASSERT_NE(idcode, nullptr);
  ASSERT_EQ(idcode->text.size(), 4U);
  EXPECT_EQ(idcode->text[2].text, "00000101011");
  EXPECT_EQ(At(idcode->text[2].place), "32:6");
}

TEST(Facts, AreThoseOfTheStrings) {
  const bsdl::Facts facts = bsdl::Parse(sample::With("DEVICE_ID (", "MINE[12] (EXTEST), DEVICE_ID ("), "a.bsd").facts;
  EXPECT_EQ(facts.entity.text, "PLD1234A_TQ100");
  EXPECT_EQ(facts.defaultPinMap.text, "TQ100");
  EXPECT_EQ(facts.tdi.text + facts.tdo.text + facts.tms.text + facts.tck.text + facts.trst.text, "TDITDOTMSTCK");
  EXPECT_DOUBLE_EQ(facts.maximumTck, 10e6);
  EXPECT_EQ(facts.instructionLength.value, 8U);
  EXPECT_EQ(facts.boundaryLength.value, 4U);
  EXPECT_EQ(facts.capture.text, "000XXX01");
  ASSERT_EQ(facts.instructions.size(), 5U);
  EXPECT_EQ(facts.instructions[3].name.text, "IDCODE");
  EXPECT_EQ(At(facts.instructions[3].name.place), "26:6");
  ASSERT_EQ(facts.idcodes.size(), 1U);
  EXPECT_EQ(facts.idcodes[0].text, "XXXX0001001000110100000001010111");
  ASSERT_EQ(facts.usercodes.size(), 1U);
  ASSERT_EQ(facts.registers.size(), 3U);
  EXPECT_EQ(facts.registers[1].name.text, "MINE");
  EXPECT_EQ(facts.registers[1].length, 12U);
  EXPECT_EQ(facts.registers[2].instructions.size(), 2U);
}

TEST(Facts, ListPatternsOfSeveralIdcodes) {
  const bsdl::Facts facts =
      bsdl::Parse(sample::With("    \"1\";", "    \"1\" & \",\" &\n    \"00010001001000110100\" & \"000001010011\";"), "a.bsd")
          .facts;
  ASSERT_EQ(facts.idcodes.size(), 2U);
  EXPECT_EQ(facts.idcodes[1].text, "00010001001000110100000001010011");
  EXPECT_EQ(At(facts.idcodes[1].place), "34:6");
}

TEST(Facts, StayWithACopyOfTheFile) {
  bsdl::File copy;
  {
    const bsdl::File file = bsdl::Parse(sample::kText, "a.bsd");
    copy = file;
  }
  EXPECT_EQ(copy.entity.name.text, "PLD1234A_TQ100");
}

}  // namespace
