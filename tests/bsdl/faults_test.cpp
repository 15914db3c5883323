// What is wrong in a file, and where: a '^' in each row is where the fault is expected.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>

#include "sample.h"

namespace {

namespace bsdl = plddb::bsdl;

struct Row {
  const char* from;
  const char* to;  // with a '^' before the place
  const char* text;
};

/// The place of the '^' in `text`, which is taken away.
bsdl::Place TakeMark(std::string& text) {
  const std::size_t at = text.find('^');
  text.erase(at, 1);
  const std::size_t lineStart = text.rfind('\n', at - 1) + 1;
  const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1;
  return {static_cast<int>(line), static_cast<int>(at - lineStart) + 1};
}

/// The one fault of the row is there and no other.
void Expect(const Row& row, bsdl::Severity severity) {
  const std::string which = std::string("row: ") + row.from + " -> " + row.to;
  std::string text = sample::With(row.from, row.to);
  const bsdl::Place place = TakeMark(text);
  const bsdl::File file = bsdl::Parse(text, "a.bsd");
  const bsdl::Fault expected = {"a.bsd", place, severity, row.text};
  EXPECT_EQ(sample::Lines(file.faults), bsdl::ToString(expected) + '\n') << which;
}

// clang-format off
TEST(Statements, AreFaultyWhereTheyAre) {
  const Row rows[] = {
      // The entity
      {"entity PLD", "^entiy PLD", "expected \"entity\", found \"entiy\""},
      {"TQ100 is\n  generic", "TQ100 ^si\n  generic", "expected \"is\", found \"si\""},
      {"TQ100 is\n  generic", "TQ100\n  ^generic", "expected \"is\", found \"generic\""},
      {"end PLD1234A_TQ100;", "end PLD1234A_TQ100^", "expected \";\""},
      // Generics
      {"generic (PHY", "generic ^PHY", "expected \"(\", found \"PHYSICAL_PIN_MAP\""},
      {"MAP : string", "MAP ^string", "expected \":\", found \"string\""},
      {":= \"TQ100\");", ":= \"TQ100\"^;", "expected \")\" before this \";\""},
      {":= \"TQ100\");", ":= \"TQ100\")^", "expected \";\""},
      {":= \"TQ100\");", ":= ^);", "expected a value, found \")\""},
      {"string := \"TQ100\"", "string ^= \"TQ100\"", "expected \")\" or \";\", found \"=\""},
      // Ports
      {"port (\n    TCK", "port\n    ^TCK", "expected \"(\", found \"TCK\""},
      {"TCK, TDI, TMS :", "TCK^ TDI, TMS :", "expected \",\" or \":\", found \"TDI\""},
      {"TCK, TDI, TMS :", "TCK, ^, TMS :", "expected the name of a port, found \",\""},
      {"TCK, TDI, TMS :", "TCK, TDI, TMS ^;", "expected \",\" or \":\", found \";\""},
      {"TMS : in bit", "TMS : ^inn bit", "expected in, out, inout, buffer or linkage, found \"inn\""},
      {"TMS : in bit", "TMS : ^bit", "expected in, out, inout, buffer or linkage, found \"bit\""},
      {"TDO : out bit;", "TDO : out ^bitt;", "expected bit or bit_vector, found \"bitt\""},
      {"TDO : out bit;", "TDO : out ^;", "expected bit or bit_vector, found \";\""},
      {"TDO : out bit;", "TDO : out bit^", "expected \";\" or \")\""},
      {"TDO : out bit;", "TDO : out bit ^, ;", "expected \")\" or \";\", found \",\""},
      {"(0 to 1)", "(0 ^too 1)", "expected to or downto, found \"too\""},
      {"(0 to 1)", "(0 to ^x)", "expected a number, found \"x\""},
      {"(0 to 1)", "(0 to ^9999999999)", "expected a number, found \"9999999999\""},
      {"bit_vector(0 to 1);", "bit_vector^;", "expected \"(\", found \";\""},
      {"linkage bit\n  );", "linkage bit\n  )^", "expected \";\""},
      // Uses, constants
      {"use STD_1149_1_2001.all;", "use STD_1149_1_2001.all^", "expected \";\""},
      {"use STD_1149_1_2001.all;", "use ^;", "expected the name of a package, found \";\""},
      {"use STD_1149_1_2001.all;", "^us STD_1149_1_2001.all;",
       "expected \"attribute\", \"constant\", \"use\", \"port\", \"generic\" or \"end\", found \"us\""},
      {"constant TQ100 : PIN", "constant TQ100 ^PIN", "expected \":\", found \"PIN_MAP_STRING\""},
      {"PIN_MAP_STRING", "^PIN_MAP_STRNG", "expected PIN_MAP_STRING, found \"PIN_MAP_STRNG\""},
      {"STRING :=", "STRING ^=", "expected \":=\", found \"=\""},
      {"constant TQ100", "^konstant TQ100",
       "expected \"attribute\", \"constant\", \"use\", \"port\", \"generic\" or \"end\", found \"konstant\""},
      // Attributes
      {"attribute INSTRUCTION_LENGTH of", "^atribute INSTRUCTION_LENGTH of",
       "expected \"attribute\", \"constant\", \"use\", \"port\", \"generic\" or \"end\", found \"atribute\""},
      {"INSTRUCTION_LENGTH of PLD", "INSTRUCTION_LENGTH ^fo PLD", "expected \"of\", found \"fo\""},
      {"INSTRUCTION_LENGTH of PLD", "INSTRUCTION_LENGTH ^PLD", "expected \"of\", found \"PLD1234A_TQ100\""},
      {"TQ100 : entity is 8", "TQ100 ^entity is 8", "expected \":\", found \"entity\""},
      {"TQ100 : entity is 8", "TQ100 : ^entiti is 8", "expected entity or signal, found \"entiti\""},
      {"TQ100 : entity is 8", "TQ100 : entity ^8", "expected \"is\", found \"8\""},
      {"entity is 8;", "entity is ^;", "expected a value, found \";\""},
      {"entity is 8;", "entity is^", "expected a value"},
      {"entity is 8;", "entity is 8^", "expected \";\""},
      {"entity is 8;", "entity is 8^ 9;", "expected \";\", found \"9\""},
      {"entity is 8;", "entity is ^eight;", "expected a number from 1 to 65535, found \"eight\""},
      {"entity is 8;", "entity is ^0;", "expected a number from 1 to 65535, found \"0\""},
      {"entity is 8;", "entity is ^65536;", "expected a number from 1 to 65535, found \"65536\""},
      {"entity is 8;", "entity is ^8.0;", "expected a number from 1 to 65535, found \"8.0\""},
      {"entity is 8;", "entity is ^-8;", "expected a number from 1 to 65535, found \"-8\""},
      {"entity is 8;", "entity is ^\"8\";", "expected a number from 1 to 65535"},
      {"entity is 8;", "entity is ^7;", "INSTRUCTION_LENGTH is 7, but all codes have 8 bits"},
      {"entity is 4;", "entity is ^4x;", "expected a number from 0 to 4294967295, found \"4x\""},
      {"entity is 4;", "entity is ^4294967296;", "expected a number from 0 to 4294967295, found \"4294967296\""},
      {"(10.0e6, BOTH);", "(10.0e6, BOTH^;", "expected \")\" or \",\", found \";\""},
      {"(10.0e6, BOTH)", "(^, BOTH)", "expected a word or number, found \",\""},
      // Strings
      {"\"SAMPLE (00000001),\" &", "\"SAMPLE (00000001),\"^", "expected \"&\""},
      {"\"SAMPLE (00000001),\" &", "^\"SAMPLE (00000001), &", "the string is not closed: expected '\"' on the same line"},
      {"\"SAMPLE (00000001),\" &", "^\"SAMPLE (00000001), & -- text", "the string is not closed: expected '\"' on the same line"},
      {"\"USERCODE (11111101)\";", "^\"USERCODE (11111101);", "the string is not closed: expected '\"' on the same line"},
      {"\"USERCODE (11111101)\";", "\"USERCODE (11111101)\"^", "expected \";\""},
      {"\"USERCODE (11111101)\";", "\"USERCODE (11111101)\" & ^;", "expected a string, found \";\""},
      {"\"SAMPLE (00000001),\" &", "^SAMPLE (00000001),\" &", "expected a string, found \"SAMPLE\""},
      {"\"TMS : 47, TDO : 83,\" &", "^\"TMS : 47, TDO : 83, &", "the string is not closed: expected '\"' on the same line"},
      {":= \"TQ100\");", ":= ^\"TQ100);", "the string is not closed: expected '\"' on the same line"},
      {"is \"000XXX01\";", "is ^\"000XXX01;", "the string is not closed: expected '\"' on the same line"},
  };
  for (const Row& row : rows) Expect(row, bsdl::Severity::kError);
}

TEST(NeededStrings, AreFaultyWhereTheyAre) {
  const Row rows[] = {
      // Opcodes
      {"\"EXTEST (00000000),\"", "\"EXTEST (0000^2000),\"", "expected a code of the digits 0, 1 and X, found \"2\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (\" & \"0000\" &\n\"00^2\" & \"0),\"", "expected a code of the digits 0, 1 and X, found \"2\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (0000000^O),\"", "expected a code of the digits 0, 1 and X, found \"O\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (^0000000),\"", "the code of EXTEST has 7 bits: expected 8, the INSTRUCTION_LENGTH"},
      {"\"EXTEST (00000000),\"", "\"EXTEST (00000000, ^000000001),\"", "the code of EXTEST has 9 bits: expected 8, the INSTRUCTION_LENGTH"},
      {"\"EXTEST (00000000),\"", "\"EXTEST (^0000\" &\n \"000),\"", "the code of EXTEST has 7 bits: expected 8, the INSTRUCTION_LENGTH"},
      {"\"EXTEST (00000000),\"", "\"EXTEST ^00000000),\"", "expected \"(\", found \"00000000\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (00000000^,\"", "expected \")\" before this \",\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (00000000)^\"", "expected \",\" or the end of the string, found \"SAMPLE\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (00000000)^;\"", "expected \",\" or the end of the string, found \";\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (^),\"", "expected a code of the digits 0, 1 and X, found \")\""},
      {"\"EXTEST (00000000),\"", "\"^(00000000),\"", "expected the name of an instruction, found \"(\""},
      {"\"EXTEST (00000000),\"", "\"^, EXTEST (00000000),\"", "expected the name of an instruction, found \",\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST ^[00000000),\"", "expected \"(\", found \"[\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (00000000^],\"", "expected \")\" or \",\", found \"]\""},
      {"(11111101)\";", "(11111101^\";", "expected \")\" or \",\", found the end of the string"},
      {"(11111101)\";", "(1111\" & \"1^\";", "expected \")\" or \",\", found the end of the string"},
      {"entity is 8;\n  attribute INSTRUCTION_OPCODE of PLD1234A_TQ100 : entity is\n", "entity is 8;\n  attribute INSTRUCTION_OPCODE of PLD1234A_TQ100 : entity is ^8;\n  attribute MINE of PLD1234A_TQ100 : entity is\n", "expected a string as the value of INSTRUCTION_OPCODE"},
      // IDCODE
      {"\"0001001000110100\" &", "\"0001001000^2110100\" &", "expected a pattern of the digits 0, 1 and X, found \"2\""},
      {"    \"XXXX\" &\n", "    \"^XXX\" &\n", "the pattern has 31 bits: expected 32"},
      {"    \"00000101011\" &\n    \"1\";", "    \"00000101011\" &\n    \"1\" & \",\" & \"^0000\";", "the pattern has 4 bits: expected 32"},
      {"    \"00000101011\" &\n    \"1\";", "    \"00000101011\" &\n    \"1\" & \"^(\";", "expected \",\" or the end of the string, found \"(\""},
  };
  for (const Row& row : rows) Expect(row, bsdl::Severity::kError);
}

TEST(OtherStrings, AreWarnedOfWhereTheyAreFaulty) {
  const Row rows[] = {
      {"\"000XXX01\"", "\"000^Y\" & \"XX01\"", "expected the digits 0, 1 and X, found \"Y\""},
      {"\"000XXX01\"", "\"^000XX01\"", "INSTRUCTION_CAPTURE has 7 bits: expected 8, the INSTRUCTION_LENGTH"},
      {"(11111101)\";", "(11111101)^,\";", "nothing comes after this \",\""},
      {"\"XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX\"", "\"^XXXXXXXXXXXXXXXX\"", "the pattern has 16 bits: expected 32"},
      {"is (10.0e6, BOTH)", "is (^fast, BOTH)", "expected a frequency, such as 10.0e6, found \"fast\""},
      {"is (10.0e6, BOTH)", "is (10.0e6, ^NONE)", "expected LOW, HIGH or BOTH after the frequency"},
      {"is (10.0e6, BOTH)", "is ^10.0e6", "expected a frequency and a state, such as (10.0e6, BOTH)"},
      {"of TMS : signal is true", "of TMS : signal is ^treu", "expected true"},
      {"end PLD1234A_TQ100;", "end ^PLD1234B_TQ100;", "expected \"PLD1234A_TQ100\", the name of the entity, found \"PLD1234B_TQ100\""},
      {"end PLD1234A_TQ100;", "end PLD1234A_TQ100; ^text", "what comes after the end of the entity is passed over"},
      {"attribute INSTRUCTION_CAPTURE", "attribute ^INSTRUCTON_CAPTURE", "no attribute is named \"INSTRUCTON_CAPTURE\": did you mean INSTRUCTION_CAPTURE?"},
      {"attribute PIN_MAP of", "attribute ^PIN_MPA of", "no attribute is named \"PIN_MPA\": did you mean PIN_MAP?"},
      // Pin maps
      {"\"TMS : 47, TDO : 83,\"", "\"TMS^ 47, TDO : 83,\"", "expected \":\", found \"47\""},
      {"\"TMS : 47, TDO : 83,\"", "\"TMS : 47^ TDO : 83,\"", "expected \",\" or the end of the string, found \"TDO\""},
      {"\"TMS : 47, TDO : 83,\"", "\"TMS : ^, TDO : 83,\"", "expected a pin, found \",\""},
      {"\"PA : (1, 2), GND", "\"PA : (1, 2^, GND", "expected \")\" before this \",\""},
      {"\"PA : (1, 2), GND", "\"PA : (1, ^), GND", "expected a pin, found \")\""},
      {"GND : 21\"", "GND : 21^,\"", "nothing comes after this \",\""},
      // Registers
      {"\"BOUNDARY (EXTEST, SAMPLE),\"", "\"BOUNDARY ^EXTEST, SAMPLE),\"", "expected \"(\", found \"EXTEST\""},
      {"\"BOUNDARY (EXTEST, SAMPLE),\"", "\"BOUNDARY (EXTEST, SAMPLE^,\"", "expected \")\" before this \",\""},
      {"\"BOUNDARY (EXTEST, SAMPLE),\"", "\"BOUNDARY[^x] (EXTEST, SAMPLE),\"", "expected a number of bits, found \"x\""},
      {"\"BOUNDARY (EXTEST, SAMPLE),\"", "\"BOUNDARY[4 ^(EXTEST, SAMPLE),\"", "expected \"]\", found \"(\""},
      // Cells
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1 (BC_1, PA(0), ^inptu, X),\"", "expected the function of a cell, found \"inptu\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1 (BC_1, PA(0), input, ^2),\"", "expected 0, 1 or X, found \"2\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1 (BC_1, PA(0), input^),\"", "expected \",\", found \")\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1 (BC_1, PA(0^, input, X),\"", "expected \")\", found \",\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1 (BC_1, PA(0), input, X^,\"", "expected \")\" before this \",\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1 (BC_1, PA(0), input, X)^\"", "expected \",\" or the end of the string, found \"0\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1 ^BC_1, PA(0), input, X),\"", "expected \"(\", found \"BC_1\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"^one (BC_1, PA(0), input, X),\"", "expected the number of a cell, found \"one\""},
      {"X, 3, 0, Z", "X, 3, ^2, Z", "expected 0 or 1, found \"2\""},
      {"X, 3, 0, Z", "X, 3, 0, ^", "expected the state of a disabled pin, such as Z, found \")\""},
      {"X, 3, 0, Z)", "X, 3, 0, Z^", "expected \")\", found \",\""},
      {"entity is 4;", "entity is ^5;", "BOUNDARY_LENGTH is 5, but the last cell of BOUNDARY_REGISTER is 3 (line 40)"},
      {"entity is 4;", "entity is ^3;", "BOUNDARY_LENGTH is 3, but the last cell of BOUNDARY_REGISTER is 3 (line 40)"},
  };
  for (const Row& row : rows) Expect(row, bsdl::Severity::kWarning);
}
// clang-format on

}  // namespace
