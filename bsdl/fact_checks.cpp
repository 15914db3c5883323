#include "fact_checks.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace plddb::bsdl {
namespace {

/// Whether all codes have one length, which is not that of the register.
bool AllHaveAnotherLength(const Facts& facts) {
  const std::vector<Instruction>& all = facts.instructions;
  if (all.size() < 2) return false;
  const std::size_t bits = all.front().codes.front().text.size();
  if (bits == facts.instructionLength.value) return false;
  for (const Instruction& instruction : all) {
    for (const Text& code : instruction.codes) {
      if (code.text.size() != bits) return false;
    }
  }
  return true;
}

void CheckCodeLengths(const Facts& facts, FaultList& faults) {
  const std::uint32_t length = facts.instructionLength.value;
  for (const Instruction& instruction : facts.instructions) {
    for (const Text& code : instruction.codes) {
      if (code.text.size() == length) continue;
      faults.Error(code.place, "the code of " + instruction.name.text + " has " + std::to_string(code.text.size()) +
                                   " bits: expected " + std::to_string(length) + ", the INSTRUCTION_LENGTH");
    }
  }
}

void CheckCapture(const Facts& facts, FaultList& faults) {
  const std::size_t bits = facts.capture.text.size();
  const std::uint32_t length = facts.instructionLength.value;
  if (bits == 0 || bits == length) return;
  faults.Warning(facts.capture.place, "INSTRUCTION_CAPTURE has " + std::to_string(bits) + " bits: expected " +
                                          std::to_string(length) + ", the INSTRUCTION_LENGTH");
}

/// Codes and capture are as long as the register. Where all codes have another length, that of the register is wrong.
void CheckInstructionLength(const Facts& facts, FaultList& faults) {
  const Count& length = facts.instructionLength;
  if (length.place.line == 0) return;
  if (AllHaveAnotherLength(facts)) {
    const std::size_t bits = facts.instructions.front().codes.front().text.size();
    return faults.Error(length.place, "INSTRUCTION_LENGTH is " + std::to_string(length.value) + ", but all codes have " +
                                          std::to_string(bits) + " bits");
  }
  CheckCodeLengths(facts, faults);
  CheckCapture(facts, faults);
}

void CheckBoundaryLength(const Facts& facts, const Count& lastCell, FaultList& faults) {
  const Count& length = facts.boundaryLength;
  if (lastCell.place.line == 0 || length.place.line == 0 || std::uint64_t{lastCell.value} + 1 == length.value) return;
  faults.Warning(length.place, "BOUNDARY_LENGTH is " + std::to_string(length.value) +
                                   ", but the last cell of BOUNDARY_REGISTER is " + std::to_string(lastCell.value) + " (line " +
                                   std::to_string(lastCell.place.line) + ")");
}

}  // namespace

void CheckFacts(const Facts& facts, const Count& lastCell, FaultList& faults) {
  CheckInstructionLength(facts, faults);
  CheckBoundaryLength(facts, lastCell, faults);
}

}  // namespace plddb::bsdl
