#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "Bsdl.h"

/// \file
/// A BSDL file, and variants of it. The part is no real one.

namespace sample {

inline const std::string kText = R"bsdl(-- A sample: no real part.
entity PLD1234A_TQ100 is
  generic (PHYSICAL_PIN_MAP : string := "TQ100");
  port (
    TCK, TDI, TMS : in bit;
    TDO : out bit;
    PA : inout bit_vector(0 to 1);
    GND : linkage bit
  );
  use STD_1149_1_2001.all;
  attribute COMPONENT_CONFORMANCE of PLD1234A_TQ100 : entity is "STD_1149_1_2001";
  attribute PIN_MAP of PLD1234A_TQ100 : entity is PHYSICAL_PIN_MAP;
  constant TQ100 : PIN_MAP_STRING :=
    "TCK : 48, TDI : 45," &
    "TMS : 47, TDO : 83," &
    "PA : (1, 2), GND : 21";
  attribute TAP_SCAN_IN of TDI : signal is true;
  attribute TAP_SCAN_OUT of TDO : signal is true;
  attribute TAP_SCAN_MODE of TMS : signal is true;
  attribute TAP_SCAN_CLOCK of TCK : signal is (10.0e6, BOTH);
  attribute INSTRUCTION_LENGTH of PLD1234A_TQ100 : entity is 8;
  attribute INSTRUCTION_OPCODE of PLD1234A_TQ100 : entity is
    "BYPASS (11111111)," &
    "EXTEST (00000000)," &
    "SAMPLE (00000001)," &
    "IDCODE (11111110)," &
    "USERCODE (11111101)";
  attribute INSTRUCTION_CAPTURE of PLD1234A_TQ100 : entity is "000XXX01";
  attribute IDCODE_REGISTER of PLD1234A_TQ100 : entity is
    "XXXX" &
    "0001001000110100" &
    "00000101011" &
    "1";
  attribute USERCODE_REGISTER of PLD1234A_TQ100 : entity is "XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX";
  attribute REGISTER_ACCESS of PLD1234A_TQ100 : entity is
    "BOUNDARY (EXTEST, SAMPLE)," &
    "DEVICE_ID (IDCODE, USERCODE)";
  attribute BOUNDARY_LENGTH of PLD1234A_TQ100 : entity is 4;
  attribute BOUNDARY_REGISTER of PLD1234A_TQ100 : entity is
    "3 (BC_1, *, controlr, 0)," &
    "2 (BC_1, PA(0), output3, X, 3, 0, Z)," &
    "1 (BC_1, PA(0), input, X)," &
    "0 (BC_4, *, internal, X)";
end PLD1234A_TQ100;
)bsdl";

/// `text` with `to` for the one `from` in it.
inline std::string Replaced(const std::string& text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  if (at == text.npos || text.find(from, at + 1) != text.npos) throw std::logic_error("not once in the sample: " + from);
  return text.substr(0, at) + to + text.substr(at + from.size());
}

/// The sample with a change.
inline std::string With(const std::string& from, const std::string& to) { return Replaced(kText, from, to); }

/// `text` with `to` for every `from`.
inline std::string AllReplaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size()) text.replace(at, from.size(), to);
  return text;
}

/// The sample without the line that begins with `line`.
inline std::string WithoutLine(const std::string& line) {
  const std::size_t at = kText.find("\n  " + line);
  if (at == kText.npos) throw std::logic_error("no such line in the sample: " + line);
  return kText.substr(0, at) + kText.substr(kText.find('\n', at + 1));
}

/// The sample without the attribute `name`.
inline std::string WithoutAttribute(const std::string& name) {
  const std::size_t at = kText.find("\n  attribute " + name);
  if (at == kText.npos) throw std::logic_error("no such attribute in the sample: " + name);
  return kText.substr(0, at) + kText.substr(kText.find(';', at) + 1);
}

/// The faults, a line each.
inline std::string Lines(const std::vector<plddb::bsdl::Fault>& faults) {
  std::string lines;
  for (const plddb::bsdl::Fault& fault : faults) lines += plddb::bsdl::ToString(fault) + '\n';
  return lines;
}

}  // namespace sample
