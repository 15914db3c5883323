#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Check.h"
#include "DeviceListOwner.h"

/// BSDL files: what a maker states of a device and its boundary-scan registers, read and turned into device descriptions.
///
/// Reads the language of IEEE 1149.1 (1990, 1993, 1994, 2001, 2013) with the extensions of IEEE 1149.6 and IEEE 1532; any
/// other extension is skipped by its grammar. Names are compared ignoring case. docs/bsdl.md has the mapping to
/// descriptions.
namespace plddb::bsdl {

/// Where something is in a file. 1-based, the column in bytes; a byte order mark does not count. 0: nowhere.
struct Place {
  int line = 0;
  int column = 0;
};

/// An error hides or falsifies what a description needs. A warning does not: the file can be used.
enum class Severity { kError, kWarning };

/// A mistake in a file, and its place.
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
/// The pieces of a string, which & joins.
using Pieces = std::vector<Piece>;

/// A generic parameter.
struct Generic {
  Word name;
  Pieces value;  ///< The default; none when there is no default.
};

/// Signals that are declared together.
struct Port {
  std::vector<Word> names;
  Word mode;
  Word type;        ///< "bit" or "bit_vector".
  long length = 1;  ///< Of a bit_vector.
};

/// A pin map: a constant of the type PIN_MAP_STRING.
struct PinMap {
  Word name;
  Pieces text;
};

/// An attribute statement.
struct Attribute {
  Word name;
  Word of;                 ///< The entity or the (first) signal.
  Pieces text;             ///< The value, where it is a string.
  Word value;              ///< The value, where it is a word or number.
  Place place;             ///< Of the value.
  std::vector<Word> list;  ///< The value, where it is a list in parentheses.
};

/// A file's entity: its statements, as they are written.
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
/// A text, and where it is.
struct Text {
  std::string text;
  Place place;
};

/// A number, and where it is.
struct Count {
  std::uint32_t value = 0;
  Place place;
};

/// An instruction and its codes.
struct Instruction {
  Text name;
  std::vector<Text> codes;  ///< Bits 0, 1 and X, the bit nearest TDI first.
  bool isPrivate = false;
};

/// A register and the instructions that access it.
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

/// What the entity states about the device.
struct Facts {
  Text entity;
  Text defaultPinMap;         ///< Of PHYSICAL_PIN_MAP.
  std::vector<Text> pinMaps;  ///< The names of the pin maps.
  Text tdi;
  Text tdo;
  Text tms;
  Text tck;
  Text trst;
  double maximumTck = 0;  ///< Hz.
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
  std::string time;                         ///< When it was changed last, "2024-05-17T10:20:30Z"; empty for a text.
  std::shared_ptr<const std::string> text;  ///< What the views of `entity` show.
  Entity entity;
  Facts facts;
  std::vector<Fault> faults;
};

/// Reads a file. One that cannot be read, or is larger than 64 MiB, is a fault at 1:1. std::bad_alloc passes through.
File Load(const std::string& path);

/// Reads `text`; `name` is that of the file in faults. Otherwise like Load.
File Parse(std::string text, const std::string& name);

/// The instruction `name` (in upper case); null when the file has none.
const Instruction* FindInstruction(const Facts& facts, std::string_view name);

/// Values of the descriptions that no BSDL file states, or that replace those of the files. Empty ones are taken from the
/// files.
struct ImportOptions {
  std::string family;  ///< Required.
  std::string name;    ///< Of the device, which all files then describe.
  std::string vendor;
  std::string package;     ///< The package type, instead of the names of the pin maps.
  double unitOfTimes = 0;  ///< Seconds, of ProgramTime and its like; 0 leaves out the times and sizes of IEEE 1532.
};

/// The seconds of "s", "ms", "us" or "ns"; 0 for other texts.
double SecondsOf(std::string_view unit);

/// A family of the devices that files describe; no database if one of the files has an error or is refused.
struct Import {
  DeviceListOwner database;           ///< One family; null when there are errors.
  std::vector<std::string> comments;  ///< Of each device: what the files state and a description has no place for.
  std::vector<Fault> faults;  ///< Those of the files, why a file is refused, which files contradict each other; warnings.
};

/// Describes the devices of `files`: those that give the same name describe one device, with the packages of all.
Import Describe(const std::vector<File>& files, const ImportOptions& options);

/// The description file `text`, called `file`, with the devices of `import` put into it: its own family is joined to the one of
/// its name, a device gives packages to the one of its name. All else stays as it is. If nothing was done, faults state why.
struct Addition {
  std::string text;
  std::vector<Fault> faults;
};
/// The text with the families and devices of `import` added; `file` is its name in faults.
Addition AddTo(const std::string& text, const std::string& file, const Import& import);

/// The same for the file `path`, which is only read.
Addition AddToFile(const std::string& path, const Import& import);

/// \name Descriptions against makers' files
///@{

/// Whether values that a maker's file states and a description lacks are findings, too.
enum class Missing { kAllowed, kListed };

/// The codes of the findings below.
std::vector<check::Code> CheckCodes();

/// The places where `descriptions` disagree with the files that belong to them: a file belongs to the devices that its IDCODE
/// matches, and to those that have a package of its entity name. Findings are in the order of the descriptions; files with
/// errors come first and are findings themselves.
std::vector<check::Finding> Check(const std::vector<File>& files, const std::vector<check::Description>& descriptions,
                                  Missing missing);

/// Loads the sources, and compares those that load. Mistakes in the others come first, as check::CheckTexts finds them.
std::vector<check::Finding> CheckTexts(const std::vector<File>& files, const std::vector<check::Source>& sources,
                                       Missing missing);
///@}

/// The description file of `import`, with its comments.
std::string Write(const Import& import);

}  // namespace plddb::bsdl
