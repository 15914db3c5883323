#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// BSDL files: what a maker states of a device and its boundary-scan registers, read and turned into device descriptions.
///
/// Read is the language of IEEE 1149.1 (1990, 1993, 1994, 2001, 2013) with the extensions of IEEE 1149.6 and IEEE 1532; any
/// other extension is passed over by its grammar. Names are compared ignoring case. docs/bsdl.md has the mapping to
/// descriptions.
namespace plddb::bsdl {

/// Where something is in a file. 1-based, the column in bytes; a byte order mark does not count. 0: nowhere.
struct Place {
  int line = 0;
  int column = 0;
};

/// An error hides or falsifies what a description needs. A warning does not: the file can be used.
enum class Severity { kError, kWarning };

/// What is wrong in a file, and where.
struct Fault {
  std::string file;
  Place place;
  Severity severity = Severity::kError;
  std::string text;  ///< What is wrong, and what was expected; one line.
};

/// "FILE:LINE:COLUMN: error: TEXT".
std::string ToString(const Fault& fault);

/// Whether one of the faults is an error.
bool HasErrors(const std::vector<Fault>& faults);

/// \name The file as it is written. Texts are views into File::text.
///@{

/// An identifier, number or keyword.
struct Word {
  std::string_view text;
  Place place;
};

/// One literal of a string that may be concatenated of several; `place` is that of its first character.
struct Piece {
  std::string_view text;
  Place place;
};
using Pieces = std::vector<Piece>;

struct Generic {
  Word name;
  Pieces value;  ///< The default; none when there is no default.
};

struct Port {
  std::vector<Word> names;
  Word mode;
  Word type;        ///< "bit" or "bit_vector".
  long length = 1;  ///< Of a bit_vector.
};

struct PinMap {
  Word name;
  Pieces text;
};

struct Attribute {
  Word name;
  Word of;                 ///< The entity or the (first) signal.
  Pieces text;             ///< The value, where it is a string.
  Word value;              ///< The value, where it is a word or number.
  Place place;             ///< Of the value.
  std::vector<Word> list;  ///< The value, where it is a list in parentheses.
};

struct Entity {
  Word name;
  std::vector<Generic> generics;
  std::vector<Port> ports;
  std::vector<Word> uses;  ///< Packages, such as STD_1149_1_2001, without ".all".
  std::vector<PinMap> pinMaps;
  std::vector<Attribute> attributes;
};
///@}

/// \name The facts, in file order. Names and bits are in upper case. A place of 0 means that the file does not state the fact.
///@{
struct Text {
  std::string text;
  Place place;
};

struct Count {
  std::uint32_t value = 0;
  Place place;
};

struct Instruction {
  Text name;
  std::vector<Text> codes;  ///< Bits 0, 1 and X, the bit nearest TDI first.
  bool isPrivate = false;
};

struct Register {
  Text name;
  std::uint32_t length = 0;  ///< Bits; 0 where the file leaves it to the standard.
  std::vector<std::string> instructions;
};

/// Of IEEE 1532, from its flows. 0: not stated.
struct Programming {
  double programTime = 0;  ///< Seconds: the longest wait of ISC_PROGRAM,
  double eraseTime = 0;    ///< of ISC_ERASE or an instruction that ends in CLEAR,
  double verifyTime = 0;   ///< of ISC_READ.
  double bits = 0;         ///< What the flows program in their loops.
  Place place;             ///< Of ISC_FLOW.
};

struct Facts {
  Text entity;
  Text defaultPinMap;             ///< Of PHYSICAL_PIN_MAP.
  std::vector<Text> pinMaps;      ///< The names of the pin maps.
  Text tdi, tdo, tms, tck, trst;  ///< The signals of the TAP.
  double maximumTck = 0;          ///< Hz.
  Count instructionLength;
  Count boundaryLength;
  std::vector<Instruction> instructions;
  Place opcodes;              ///< Of INSTRUCTION_OPCODE.
  Text capture;               ///< What a scan of the instruction register reads.
  std::vector<Text> idcodes;  ///< Patterns of 32 bits.
  std::vector<Text> usercodes;
  std::vector<Register> registers;
  Text compliancePatterns;
  Text designWarning;
  bool is1532 = false;
  Programming programming;
};
///@}

/// A file that was read: what it states, as far as it could be read, and all its faults in file order.
struct File {
  std::string name;                         ///< As it was given.
  std::shared_ptr<const std::string> text;  ///< What the views of `entity` show.
  Entity entity;
  Facts facts;
  std::vector<Fault> faults;
};

/// Reads a file. One that cannot be read, or is larger than 64 MiB, is a fault at 1:1. std::bad_alloc passes through.
File Load(const std::string& path);

/// Reads `text`; `name` is what faults carry. Otherwise like Load.
File Parse(std::string text, const std::string& name);

/// The instruction `name` (in upper case); null when the file has none.
const Instruction* FindInstruction(const Facts& facts, std::string_view name);

}  // namespace plddb::bsdl
