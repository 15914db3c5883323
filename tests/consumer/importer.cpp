// Uses plddb-bsdl, prints: PLD1234A 0x01234057
#include <Bsdl.h>

#include <cstdio>

int main() {
  const auto file = plddb::bsdl::Parse(
      "entity PLD1234A is\n"
      "  port (TCK, TDI, TMS: in bit; TDO: out bit);\n"
      "  use STD_1149_1_2001.all;\n"
      "  attribute TAP_SCAN_CLOCK of TCK: signal is (10.0e6, BOTH);\n"
      "  attribute TAP_SCAN_IN of TDI: signal is true;\n"
      "  attribute TAP_SCAN_MODE of TMS: signal is true;\n"
      "  attribute TAP_SCAN_OUT of TDO: signal is true;\n"
      "  attribute INSTRUCTION_LENGTH of PLD1234A: entity is 4;\n"
      "  attribute INSTRUCTION_OPCODE of PLD1234A: entity is \"BYPASS (1111), IDCODE (0001)\";\n"
      "  attribute INSTRUCTION_CAPTURE of PLD1234A: entity is \"0001\";\n"
      "  attribute IDCODE_REGISTER of PLD1234A: entity is \"XXXX0001001000110100000001010111\";\n"
      "end PLD1234A;\n",
      "text");
  plddb::bsdl::ImportOptions options;
  options.family = "PLD1200";
  const auto import = plddb::bsdl::Describe({file}, options);
  for (const auto& fault : import.faults) std::fprintf(stderr, "%s\n", plddb::bsdl::ToString(fault).c_str());
  if (import.database == nullptr) return 1;

  const DeviceInfo* found = import.database->GetDeviceWithCommAndID("JTAG", 0x01234057);
  if (found == nullptr) return 1;
  std::printf("%s 0x%08X\n", found->GetCodeName(), found->GetjtagDeviceID());
}
