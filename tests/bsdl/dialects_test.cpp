// The forms in which makers write the same: every one gives the record of the sample, and no fault.

#include <gtest/gtest.h>

#include <string>

#include "sample.h"

namespace {

namespace bsdl = plddb::bsdl;

/// What the file gives as a description; the faults where it gives none.
std::string Record(const std::string& text) {
  std::vector<bsdl::File> files;
  files.push_back(bsdl::Parse(text, "a.bsd"));
  const bsdl::Import import = bsdl::Describe(files, {"PLD1200", "", "", "", 0});
  return import.database == nullptr ? sample::Lines(import.faults) : plddb::WriteDescriptions(*import.database);
}

std::string Faults(const std::string& text) { return sample::Lines(bsdl::Parse(text, "a.bsd").faults); }

void ExpectSame(const std::string& text, const std::string& row) {
  EXPECT_EQ(Faults(text), "") << "row: " << row;
  EXPECT_EQ(Record(text), Record(sample::kText)) << "row: " << row;
}

std::string LowerCase(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return text;
}

TEST(Dialects, OfTheStandardsYearsAreReadAlike) {
  const char* const uses[] = {
      "use STD_1149_1_1990.all;",
      "use STD_1149_1_1993.all;",
      "use STD_1149_1_1994.all;",
      "use STD_1149_1_2001.all;",
      "use STD_1149_1_2013.all;",
      "use STD_1149_1_2001.all; use STD_1149_6_2003.all;",
      "use STD_1149_1_2001.all; use STD_1149_6_2015.all;",
      "use STD_1149_1_1994.all; use verde_a.all;",
      "use STD_1149_1_1994 . all;",
      "use STD_1149_1_1994.ALL ;",
      "use STD_1149_1_1994;",
      "use\n    STD_1149_1_1994.all\n  ;",
      "",
  };
  for (const char* const use : uses) ExpectSame(sample::With("use STD_1149_1_2001.all;", use), use);
}

TEST(Dialects, HaveBlanksCommentsAndLinesAnywhere) {
  const struct {
    const char* what;
    std::string text;
  } rows[] = {
      {"CR LF", sample::AllReplaced(sample::kText, "\n", "\r\n")},
      {"CR", sample::AllReplaced(sample::kText, "\n", "\r")},
      {"tabs", sample::AllReplaced(sample::kText, "  ", "\t")},
      {"form feeds", sample::AllReplaced(sample::kText, "\n  ", "\f\n\v  ")},
      {"a byte order mark", "\xEF\xBB\xBF" + sample::kText},
      {"the end mark of old systems", sample::kText + "\x1A"},
      {"no line end at the end", sample::kText.substr(0, sample::kText.size() - 1)},
      {"a line of a tester", "!!!!    2    0    1  1051234567  V0123\n" + sample::kText},
      {"two lines of a tester", "!!!! 1 \"\n!!!! 2\n\n" + sample::kText},
      {"lower case", LowerCase(sample::kText)},
      {"a comment in Latin-1", "-- caf\xE9 \xA9\n" + sample::kText},
      {"a comment in UTF-8", "-- caf\xC3\xA9\n" + sample::kText},
      {"a comment with quotes", "-- \"not closed; end entity\n" + sample::kText},
      {"a comment with a zero byte", std::string("-- \0 \n", 6) + sample::kText},
      {"comments at all line ends", sample::AllReplaced(sample::kText, "\n", " -- ; \"end\" & (\n")},
      {"comments between all lines", sample::AllReplaced(sample::kText, "\n", "\n-- attribute X of Y : entity is 1;\n")},
      {"many dashes", sample::AllReplaced(sample::kText, "\n", "\n---------- - --\n")},
      {"blank lines", sample::AllReplaced(sample::kText, "\n", "\n\n \n")},
      {"every word on its line",
       sample::AllReplaced(sample::With("-- A sample: no real part.\n", ""), " : entity is ", "\n:\nentity\nis\n")},
      {"no blanks around marks", sample::AllReplaced(sample::kText, " : ", ":")},
      {"blanks around '&'", sample::AllReplaced(sample::kText, "\" &", "\"\t & ")},
      {"'&' on the next line", sample::AllReplaced(sample::kText, "\" &\n", "\"\n & ")},
      {"no blank before '&'", sample::AllReplaced(sample::kText, "\" &", "\"&")},
      {"blanks at the ends of strings", sample::AllReplaced(sample::kText, "\" &", "   \" &")},
      {"blanks at the starts of strings", sample::AllReplaced(sample::kText, "    \"", "    \"  ")},
      {"empty pieces", sample::AllReplaced(sample::kText, "\" &", "\" & \"\" & \"\" &")},
      {"a comment between pieces", sample::AllReplaced(sample::kText, "\" &\n", "\" & -- a \"b\" & c;\n  -- d\n")},
      {"a commented-out line beside a live one",
       sample::With("  attribute INSTRUCTION_LENGTH",
                    "--attribute INSTRUCTION_LENGTH of PLD1234A_TQ100 : entity is 9;\n  attribute INSTRUCTION_LENGTH")},
      {"a comment after '--' without a blank", sample::With("entity is 8;", "entity is 8;--bits")},
  };
  for (const auto& row : rows) ExpectSame(row.text, row.what);
}

TEST(Dialects, HaveStatementsThatStateNothingHere) {
  const struct {
    const char* from;
    const char* to;
  } rows[] = {
      {"end PLD1234A_TQ100;",
       "attribute MY_OWN : BSDL_EXTENSION; attribute MY_OWN of PLD1234A_TQ100 : entity is \"(((\" & \"x\"; end "
       "PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;", "attribute UNHEARD_OF of PLD1234A_TQ100 : entity is 1.5e-3; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;",
       "attribute MINE : string;\n attribute MINE of PLD1234A_TQ100 : entity is (1, 2, 3); end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;",
       "attribute DESIGN_WARNING of PLD1234A_TQ100 : entity is \"Mind \"\"this\"\" (\" & \"and that\"; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;",
       "attribute PORT_GROUPING of PLD1234A_TQ100 : entity is \"Differential_Voltage ((A, B),(C, D))\"; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;",
       "attribute INTEST_EXECUTION of PLD1234A_TQ100 : entity is \"CLK(1), WAIT_DURATION(1.0e-3)\"; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;", "attribute BOUNDARY_CELLS of PLD1234A_TQ100 : entity is \"BC_1, BC_4\"; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;",
       "attribute AIO_COMPONENT_CONFORMANCE of PLD1234A_TQ100 : entity is \"STD_1149_6_2003\"; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;",
       "attribute AIO_PIN_BEHAVIOR of PLD1234A_TQ100 : entity is \"RX[1,2] : LP_time=5.0e-9 HP_time=1.0e-8; TX : "
       "AC_Select=3\"; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;",
       "attribute REGISTER_FIELDS of PLD1234A_TQ100 : entity is \"A [4] ((B [2] IS (1 DOWNTO 0)))\"; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;", "attribute TAP_SCAN_RESET of TRST : signal is true; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;",
       "attribute COMPLIANCE_PATTERNS of PLD1234A_TQ100 : entity is \"(A, B) (01, X1)\"; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;",
       "attribute INSTRUCTION_USAGE of PLD1234A_TQ100 : entity is \"RUNBIST (registers BOUNDARY)\"; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;",
       "constant C_MINE : CELL_INFO := ((BIDIR_IN, EXTEST, PI), (INPUT, SAMPLE, CAP)); end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;", "constant C_MINE : CELL_INFO; end PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;", "end;"},
      {"end PLD1234A_TQ100;", "end entity PLD1234A_TQ100;"},
      {"end PLD1234A_TQ100;", "END Pld1234a_tq100 ;"},
      {"end PLD1234A_TQ100;", "end PLD1234A_TQ100; package body P is constant X : Y; end P;"},
      {"-- A sample", "library IEEE; use IEEE.std_logic_1164.all; -- A sample"},
      {"-- A sample",
       "package P is type R is record A : B; end record; attribute X : string; end P;\npackage body P is end P; -- A sample"},
      {"string := \"TQ100\"", "string := \"TQ100\"; SPEED : integer := 5; CASE : string"},
      {"string := \"TQ100\"", "string := \"TQ\" & \"100 \""},
      {"string := \"TQ100\"", "string\n :=\n\"TQ100\""},
      {"string := \"TQ100\")", "string := \"TQ100\";)"},
      {"GND : linkage bit\n  );", "GND : linkage bit;\n  );"},
      {"GND : linkage bit\n", "GND : linkage bit_vector (1 downto 0)\n"},
      {"GND : linkage bit\n", "GND : buffer bit; A-B : LINKAGE_IN bit; V : power_pos bit; W : power_0 bit; X : vref_in bit\n"},
      {"GND : linkage bit\n", "GND : linkage\nbit\n"},
      {"of TDI : signal", "of TDI, TDJ : signal"},
      {"of TDI : signal", "of TDI(0) : signal"},
      {"(10.0e6, BOTH)", "(1.00E+07, LOW)"},
      {"TQ100 : entity is 8;", "TQ100 : entity is\n  8  ;"},
      {"(10.0e6, BOTH)", "( 10000000 , high )"},
  };
  for (const auto& row : rows) ExpectSame(sample::With(row.from, row.to), row.to);
}

TEST(Dialects, HaveTheSameStringsInOtherForms) {
  const struct {
    const char* from;
    const char* to;
  } rows[] = {
      {"\"EXTEST (00000000),\"", "\"EXTEST(00000000),\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST ( 00000000 ) , \""},
      {"\"EXTEST (00000000),\"", "\"EX\" & \"TEST (0000\" &\n -- more\n \"0000),\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (00000000)\" & \",\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST\" & \"(\" & \"00000000\" & \")\" & \",\""},
      {"\"EXTEST (00000000),\"",
       "\"E\"&\"X\"&\"T\"&\"E\"&\"S\"&\"T\"&\"(\"&\"0\"&\"0\"&\"0\"&\"0\"&\"0\"&\"0\"&\"0\"&\"0\"&\")\"&\",\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (0000000X),\""},
      {"\"EXTEST (00000000),\"", "\"EXTEST (0000000x),\""},
      {"    \"XXXX\" &\n", "    \"xxxx\" &\n"},
      {"    \"XXXX\" &\n", "    \"XX\" & \"  XX \" &\n"},
      {"    \"XXXX\" &\n    \"0001001000110100\" &\n    \"00000101011\" &\n    \"1\";",
       "    \"XXXX0001001000110100000001010111\";"},
      {"    \"XXXX\" &\n    \"0001001000110100\" &\n    \"00000101011\" &\n    \"1\";",
       "    \"XXXX 0001001000110100 00000101011 1\";"},
      {"    \"00000101011\" &\n    \"1\";", "    \"00000101011\" &\n    \"1\" & \",XXXX0001001000110100000001010001\";"},
      {"\"000XXX01\"", "\"000xxx01\""},
      {"\"000XXX01\"", "\"000\" & \"XXX\" & \"01\""},
      {"\"PA : (1, 2), GND : 21\"", "\"PA:(1,\" & \"2),\" & \" GND:21\""},
      {"\"PA : (1, 2), GND : 21\"", "\"PA(0) : A1, PA(1) : AB-12, GND : (21, 22, K/5)\""},
      {"\"BOUNDARY (EXTEST, SAMPLE),\"",
       "\"BOUNDARY[4] (EXTEST, SAMPLE CAPTURES 01X1), MINE[123456] (A), BYPASS[1] (HIGHZ, CLAMP),\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1(BC_1,PA(0),INPUT,x),\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1 (BC_1, PA(0), input, X),\" & \"1 (BC_1, PA(0), observe_only, X),\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1 (BC_7, PA(0), bidir, 0, 3, 1, WEAK1),\""},
      {"\"1 (BC_1, PA(0), input, X),\"", "\"1 (BC_\" & \"1, PA(0\" & \"), inp\" & \"ut, X),\""},
  };
  for (const auto& row : rows) ExpectSame(sample::With(row.from, row.to), row.to);
}

TEST(Names, MayBeMoreThanTheStandardAllows) {
  const struct {
    const char* entity;
    const char* map;
    const char* name;
  } rows[] = {
      {"PLD1234A-TQ100", "TQ100", "PLD1234A-TQ100"},  {"16V8_DIP", "DIP", "16V8"},   {"PLD_1234_TQ-100", "TQ-100", "PLD_1234"},
      {"PLD1234A_TQ100", "TQ-100", "PLD1234A_TQ100"}, {"P.1_TQ100", "TQ100", "P.1"},
  };
  for (const auto& row : rows) {
    const std::string text = sample::AllReplaced(sample::AllReplaced(sample::kText, "PLD1234A_TQ100", "@"), "TQ100", row.map);
    const std::string record = Record(sample::AllReplaced(text, "@", row.entity));
    EXPECT_NE(record.find("<Device Name=\"" + std::string(row.name) + "\""), std::string::npos)
        << "row: " << row.entity << record;
  }
}

TEST(Places, CountLinesOfAnyEnd) {
  for (const char* const end : {"\n", "\r\n", "\r"}) {
    const std::string text = sample::AllReplaced(sample::With("entity is 8;", "entity is 7;"), "\n", end);
    EXPECT_EQ(Faults(text), "a.bsd:21:62: error: INSTRUCTION_LENGTH is 7, but all codes have 8 bits\n") << "row: " << end;
  }
  EXPECT_EQ(Faults("\xEF\xBB\xBF"
                   "entiti"),
            "a.bsd:1:1: error: expected \"entity\", found \"entiti\"\n");
}

}  // namespace
