#include "fact_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

#include "NearNames.h"
#include "TextForms.h"
#include "bsdl/boundary_cells.h"
#include "bsdl/characters.h"
#include "bsdl/fact_checks.h"
#include "bsdl/isc_flow.h"
#include "bsdl/real_number.h"
#include "bsdl/string_reader.h"
#include "bsdl/text_cursor.h"

namespace plddb::bsdl {
namespace {

constexpr std::size_t kIdcodeBits = 32;
constexpr std::uint32_t kLongestRegister = std::numeric_limits<std::uint16_t>::max();  // of instructions

/// Attributes that state nothing of interest here.
constexpr std::string_view kOthers[] = {
    "COMPONENT_CONFORMANCE",
    "PIN_MAP",
    "INSTRUCTION_DISABLE",
    "INSTRUCTION_GUARD",
    "INSTRUCTION_USAGE",
    "INSTRUCTION_SEQUENCE",
    "BOUNDARY_CELLS",
    "BOUNDARY_SEGMENT",
    "RUNBIST_EXECUTION",
    "INTEST_EXECUTION",
    "ASSEMBLED_BOUNDARY_LENGTH",
    "REGISTER_MNEMONICS",
    "REGISTER_FIELDS",
    "REGISTER_ASSEMBLY",
    "REGISTER_CONSTRAINTS",
    "REGISTER_ASSOCIATION",
    "POWER_PORT_ASSOCIATION",
    "SYSCLOCK_REQUIREMENTS",
    "AIO_COMPONENT_CONFORMANCE",
    "AIO_EXTEST_PULSE_EXECUTION",
    "AIO_EXTEST_TRAIN_EXECUTION",
    "AIO_PIN_BEHAVIOR",
    "AIO_PORT_BEHAVIOR",
    "ISC_CONFORMANCE",
    "ISC_PIN_BEHAVIOR",
    "ISC_FIXED_SYSTEM_PINS",
    "ISC_STATUS",
    "ISC_BLANK_USERCODE",
    "ISC_SECURITY",
    "ISC_ILLEGAL_EXIT",
    "ISC_DESIGN_WARNING",
};

/// The whole text of a string.
std::string Joined(const Pieces& pieces) {
  std::string text;
  for (const Piece& piece : pieces) text += piece.text;
  return std::string(internal::Trim(text));
}

Text JoinedText(const Pieces& pieces, Place place) { return {Joined(pieces), place}; }

constexpr ItemStart kWord = {"", false};
constexpr ItemStart kInstruction = {"(", false};
constexpr ItemStart kRegister = {"([", false};
constexpr ItemStart kPin = {":(", false};

class FactReader : StringReader {
 public:
  FactReader(const Entity& entity, FaultList& faults) : StringReader(faults, Severity::kError), entity_(entity) {}

  Facts Read() {
    facts_.entity = {UpperCase(entity_.name.text), entity_.name.place};
    for (const Generic& generic : entity_.generics) ReadGeneric(generic);
    for (const PinMap& map : entity_.pinMaps) ReadPinMap(map);
    for (const Word& use : entity_.uses) facts_.is1532 |= UpperCase(use.text).compare(0, 9, "STD_1532_") == 0;
    for (const Attribute& attribute : entity_.attributes) ReadAttribute(attribute);
    MarkPrivateInstructions();
    CheckFacts(facts_, lastCell_, faults_);
    return std::move(facts_);
  }

 private:
  static constexpr std::size_t kRowCount = 20;
  struct Row {
    std::string_view name;
    Severity severity;
    void (FactReader::*read)(const Attribute& attribute);
  };
  static const std::array<Row, kRowCount> kRows;

  // --- Names and pins -------------------------------------------------------------------------------------------------------

  void ReadGeneric(const Generic& generic) {
    if (!AreEqualIgnoringCase(generic.name.text, "PHYSICAL_PIN_MAP") || generic.value.empty()) return;
    facts_.defaultPinMap = {UpperCase(Joined(generic.value)), generic.value.front().place};
  }

  /// "PORT : 12, PORT(3) : A1, PORT : (1, 2)"
  void ReadPinMap(const PinMap& map) {
    severity_ = Severity::kWarning;
    facts_.pinMaps.push_back({UpperCase(map.name.text), map.name.place});
    const auto readPin = [&](TextCursor& c) { return ExpectWord(c, "a pin"); };
    ReadList(map.text, kPin, [&](TextCursor& cursor) {
      if (!ReadPort(cursor) || !Expect(cursor, ':', "\":\"")) return false;
      return cursor.Skip('(') ? ReadRestOfList(cursor, kPin, readPin) : readPin(cursor);
    });
  }

  // --- Attributes -----------------------------------------------------------------------------------------------------------

  void ReadAttribute(const Attribute& attribute) {
    const std::string name = UpperCase(attribute.name.text);
    const auto row = std::find_if(kRows.begin(), kRows.end(), [&](const Row& r) { return r.name == name; });
    if (row == kRows.end()) return CheckName(attribute.name);
    severity_ = row->severity;
    if (IsRepeated(attribute, static_cast<std::size_t>(row - kRows.begin()))) return;
    (this->*row->read)(attribute);
  }

  /// An attribute that nobody knows belongs to an extension, unless its name is nearly that of another.
  void CheckName(const Word& name) {
    std::vector<std::string_view> names(std::begin(kOthers), std::end(kOthers));
    if (std::any_of(names.begin(), names.end(), [&](auto other) { return AreEqualIgnoringCase(other, name.text); })) return;
    for (const Row& row : kRows) names.push_back(row.name);
    const auto near = NearNames(name.text, names, 1);
    if (near.empty()) return;
    faults_.Warning(name.place,
                    "no attribute is named " + Quoted(name.text) + ": did you mean " + std::string(near.front()) + "?");
  }

  /// Attributes of signals may be given for several signals.
  bool IsRepeated(const Attribute& attribute, std::size_t row) {
    const Place first = std::exchange(seen_[row], attribute.name.place);
    if (first.line == 0 || !AreEqualIgnoringCase(attribute.of.text, entity_.name.text)) return false;
    Fault(attribute.name.place,
          std::string(kRows[row].name) + " is given twice; the first is in line " + std::to_string(first.line));
    return true;
  }

  bool IsString(const Attribute& attribute) {
    if (!attribute.text.empty()) return true;
    Fault(attribute.place, "expected a string as the value of " + UpperCase(attribute.name.text));
    return false;
  }

  void ReadCount(const Attribute& attribute, std::uint32_t least, std::uint32_t most, Count& count) {
    const std::string_view text = attribute.value.text;
    const char* const end = text.data() + text.size();
    std::uint32_t value = 0;
    const auto read = std::from_chars(text.data(), end, value);
    if (!text.empty() && read.ptr == end && read.ec == std::errc() && value >= least && value <= most) {
      count = {value, attribute.place};
      return;
    }
    Fault(attribute.place, "expected a number from " + std::to_string(least) + " to " + std::to_string(most) +
                               (text.empty() ? "" : ", found " + Quoted(text)));
  }

  void ReadInstructionLength(const Attribute& attribute) {
    ReadCount(attribute, 1, kLongestRegister, facts_.instructionLength);
  }

  /// On purpose 0, too: a debug port may have no boundary register at all.
  void ReadBoundaryLength(const Attribute& attribute) {
    ReadCount(attribute, 0, std::numeric_limits<std::uint32_t>::max(), facts_.boundaryLength);
  }

  /// "BYPASS (1111), SAMPLE (0001, 0010)"
  void ReadOpcodes(const Attribute& attribute) {
    facts_.opcodes = attribute.place;
    if (!IsString(attribute)) return;
    ReadList(attribute.text, kInstruction, [&](TextCursor& cursor) {
      Instruction instruction;
      instruction.name.place = cursor.Here();
      if (!ExpectWord(cursor, "the name of an instruction", instruction.name.text)) return false;
      instruction.name.text = UpperCase(instruction.name.text);
      if (!Expect(cursor, '(', "\"(\"") || !ReadCodes(cursor, instruction)) return false;
      facts_.instructions.push_back(std::move(instruction));
      return true;
    });
  }

  bool ReadCodes(TextCursor& cursor, Instruction& instruction) {
    return ReadRestOfList(cursor, kInstruction, [&](TextCursor& c) {
      return ReadBits(c, "a code of the digits 0, 1 and X", instruction.codes.emplace_back());
    });
  }

  void ReadCapture(const Attribute& attribute) {
    if (!IsString(attribute)) return;
    TextCursor cursor(attribute.text);
    while (!cursor.AtEnd()) {
      if (!ReadBits(cursor, "the digits 0, 1 and X", facts_.capture)) return;
    }
  }

  /// "MSS, TEST": after the codes in every real file, but not by any rule.
  void ReadPrivate(const Attribute& attribute) {
    if (!IsString(attribute)) return;
    ReadList(attribute.text, kWord, [&](TextCursor& cursor) {
      std::string& name = private_.emplace_back();
      if (!ExpectWord(cursor, "the name of an instruction", name)) return false;
      name = UpperCase(name);
      return true;
    });
  }

  void ReadIdcodes(const Attribute& attribute) { ReadPatterns(attribute, facts_.idcodes); }
  void ReadUsercodes(const Attribute& attribute) { ReadPatterns(attribute, facts_.usercodes); }

  /// "XXXX" & "0101" & ... , "...": patterns of 32 bits. Blanks within a pattern do no harm.
  void ReadPatterns(const Attribute& attribute, std::vector<Text>& patterns) {
    if (!IsString(attribute)) return;
    ReadList(attribute.text, kWord, [&](TextCursor& cursor) {
      Text pattern;
      do {
        if (!ReadBits(cursor, "a pattern of the digits 0, 1 and X", pattern)) return false;
      } while (cursor.AtWord());
      if (pattern.text.size() != kIdcodeBits) {
        Fault(pattern.place, "the pattern has " + std::to_string(pattern.text.size()) + " bits: expected 32");
      }
      patterns.push_back(std::move(pattern));
      return true;
    });
  }

  void ReadCells(const Attribute& attribute) {
    if (IsString(attribute)) ReadBoundaryCells(attribute.text, faults_, lastCell_);
  }

  /// "BOUNDARY (EXTEST, SAMPLE), DATA[32] (READ CAPTURES 01X)"
  void ReadRegisters(const Attribute& attribute) {
    if (!IsString(attribute)) return;
    ReadList(attribute.text, kRegister, [&](TextCursor& cursor) {
      Register reg;
      reg.name.place = cursor.Here();
      if (!ExpectWord(cursor, "the name of a register", reg.name.text)) return false;
      reg.name.text = UpperCase(reg.name.text);
      if (cursor.Skip('[') && !ReadRegisterLength(cursor, reg)) return false;
      if (!Expect(cursor, '(', "\"(\"") || !ReadRegisterInstructions(cursor, reg)) return false;
      facts_.registers.push_back(std::move(reg));
      return true;
    });
  }

  bool ReadRegisterLength(TextCursor& cursor, Register& reg) {
    const std::string_view text = cursor.Current();
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, reg.length);
    if (!cursor.AtWord() || read.ptr != end || read.ec != std::errc()) return Unexpected(cursor, "a number of bits");
    cursor.Next();
    return Expect(cursor, ']', "\"]\"");
  }

  bool ReadRegisterInstructions(TextCursor& cursor, Register& reg) {
    return ReadRestOfList(cursor, kRegister, [&](TextCursor& c) {
      std::string& name = reg.instructions.emplace_back();
      if (!ExpectWord(c, "the name of an instruction", name)) return false;
      name = UpperCase(name);
      if (!c.At("CAPTURES")) return true;
      c.Next();
      return ExpectWord(c, "a pattern");
    });
  }

  void MarkPrivateInstructions() {
    for (Instruction& i : facts_.instructions) {
      i.isPrivate = std::find(private_.begin(), private_.end(), i.name.text) != private_.end();
    }
  }

  // --- Signals and texts ----------------------------------------------------------------------------------------------------

  void ReadTdi(const Attribute& attribute) { ReadSignal(attribute, facts_.tdi); }
  void ReadTdo(const Attribute& attribute) { ReadSignal(attribute, facts_.tdo); }
  void ReadTms(const Attribute& attribute) { ReadSignal(attribute, facts_.tms); }
  void ReadTrst(const Attribute& attribute) { ReadSignal(attribute, facts_.trst); }

  void ReadSignal(const Attribute& attribute, Text& signal) {
    signal = {UpperCase(attribute.of.text), attribute.of.place};
    if (!IsOneOf(attribute.value.text, {"true", "false"})) Fault(attribute.place, "expected true");
  }

  /// "(10.0e6, BOTH)"
  void ReadTck(const Attribute& attribute) {
    facts_.tck = {UpperCase(attribute.of.text), attribute.of.place};
    if (attribute.list.empty()) return Fault(attribute.place, "expected a frequency and a state, such as (10.0e6, BOTH)");
    const Word& frequency = attribute.list.front();
    const auto hertz = RealNumber(frequency.text);
    facts_.maximumTck = hertz.value_or(0);
    if (!hertz) {
      Fault(frequency.place, "expected a frequency, such as 10.0e6, found " + Quoted(frequency.text));
    }
    if (attribute.list.size() != 2 || !IsOneOf(attribute.list.back().text, {"LOW", "HIGH", "BOTH"})) {
      Fault(attribute.list.back().place, "expected LOW, HIGH or BOTH after the frequency");
    }
  }

  /// "(PIN, PIN) (01, X1)"
  void ReadCompliance(const Attribute& attribute) {
    if (!IsString(attribute)) return;
    facts_.compliancePatterns = JoinedText(attribute.text, attribute.text.front().place);
    CheckParentheses(attribute);
  }

  void ReadWarning(const Attribute& attribute) {
    if (IsString(attribute)) facts_.designWarning = JoinedText(attribute.text, attribute.text.front().place);
  }

  void ReadFlow(const Attribute& attribute) {
    if (!IsString(attribute)) return;
    CheckParentheses(attribute);
    facts_.programming = ReadFlows(attribute.text);
    facts_.programming.place = attribute.place;
  }

  /// All that is checked of a string that nothing is read from.
  void CheckParentheses(const Attribute& attribute) {
    if (attribute.text.empty()) return;
    std::vector<Place> open;
    TextCursor cursor(attribute.text);
    for (; !cursor.AtEnd(); cursor.Next()) {
      if (cursor.At('(')) open.push_back(cursor.Here());
      if (!cursor.At(')')) continue;
      if (open.empty()) return Fault(cursor.Here(), "no \"(\" belongs to this \")\"");
      open.pop_back();
    }
    if (!open.empty()) Fault(open.back(), "no \")\" belongs to this \"(\"");
  }

  const Entity& entity_;
  Facts facts_;
  std::array<Place, kRowCount> seen_ = {};
  std::vector<std::string> private_;
  Count lastCell_;
};

// clang-format off
const std::array<FactReader::Row, FactReader::kRowCount> FactReader::kRows = {{
    {"INSTRUCTION_LENGTH",    Severity::kError,   &FactReader::ReadInstructionLength},
    {"INSTRUCTION_OPCODE",    Severity::kError,   &FactReader::ReadOpcodes},
    {"IDCODE_REGISTER",       Severity::kError,   &FactReader::ReadIdcodes},
    {"BOUNDARY_LENGTH",       Severity::kError,   &FactReader::ReadBoundaryLength},
    {"INSTRUCTION_CAPTURE",   Severity::kWarning, &FactReader::ReadCapture},
    {"INSTRUCTION_PRIVATE",   Severity::kWarning, &FactReader::ReadPrivate},
    {"USERCODE_REGISTER",     Severity::kWarning, &FactReader::ReadUsercodes},
    {"REGISTER_ACCESS",       Severity::kWarning, &FactReader::ReadRegisters},
    {"BOUNDARY_REGISTER",     Severity::kWarning, &FactReader::ReadCells},
    {"TAP_SCAN_IN",           Severity::kWarning, &FactReader::ReadTdi},
    {"TAP_SCAN_OUT",          Severity::kWarning, &FactReader::ReadTdo},
    {"TAP_SCAN_MODE",         Severity::kWarning, &FactReader::ReadTms},
    {"TAP_SCAN_RESET",        Severity::kWarning, &FactReader::ReadTrst},
    {"TAP_SCAN_CLOCK",        Severity::kWarning, &FactReader::ReadTck},
    {"COMPLIANCE_PATTERNS",   Severity::kWarning, &FactReader::ReadCompliance},
    {"DESIGN_WARNING",        Severity::kWarning, &FactReader::ReadWarning},
    {"ISC_FLOW",              Severity::kWarning, &FactReader::ReadFlow},
    {"PORT_GROUPING",         Severity::kWarning, &FactReader::CheckParentheses},
    {"ISC_PROCEDURE",         Severity::kWarning, &FactReader::CheckParentheses},
    {"ISC_ACTION",            Severity::kWarning, &FactReader::CheckParentheses},
}};
// clang-format on

}  // namespace

Facts ReadFacts(const Entity& entity, FaultList& faults) { return FactReader(entity, faults).Read(); }

}  // namespace plddb::bsdl
