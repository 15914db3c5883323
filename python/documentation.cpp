// What help() shows of a field: what its name does not tell.

#include <string_view>

#include "values.h"

namespace plddb::python {
namespace {

using descriptions::Field;
using descriptions::Kind;

struct Row {
  std::string_view name;  ///< As the table of fields has it.
  std::string_view text;
};

constexpr Row kRows[] = {
    {"Name", "The name. Lookups ignore its case in a device, and compare it exactly in a family."},
    {"AliasName", "A second name."},
    {"Family", "The family's name as text; family_object is the family."},
    {"Comm", "The access mode: \"JTAG\", \"ISP\" or \"DUAL\". On purpose, setting it sets alg_options as well."},
    {"AlgOptions", "Set it after comm, which writes it as well."},
    {"PON", "Part ordering number."},
    {"BackupPON", "The ordering number as loaded; what restores and lookups read."},
    {"AliasPON", "Replacement ordering number of a CDR variant."},
    {"JDF", "JEDEC device file name."},
    {"Type", "Package type, such as \"TQ100\"."},
    {"OrvoSetting", "Setting of the Orvo stand-alone programmer."},
    {"Pin", "Number of pins."},
    {"jtagDeviceID", "JTAG IDCODE, 32 bits."},
    {"ispDeviceID", "ISP identifier, 32 bits."},
    {"DeviceIDMask", "A bit of 1 counts; for the programming tool, no lookup reads it."},
    {"DeviceIDScanMask", "A bit of 1 counts in lookups; 0 hides the device from them."},
    {"IDLength", "Bits."},
    {"ARCHLength", "Bits."},
    {"ARCHRow", "Rows."},
    {"SEDLength", "Bits."},
    {"ELength", "Bits."},
    {"ERow", "Rows."},
    {"IRLength", "Instruction register, bits."},
    {"AddressLength", "Bits."},
    {"DataLength", "Bits."},
    {"PhysicalUESLength", "User electronic signature, bits."},
    {"ispLogicalUESLength", "Bits."},
    {"jtagLogicalUESLength", "Bits."},
    {"FuseNumber", "Number of fuses."},
    {"BSCANLength", "Boundary-scan register, bits."},
    {"IDInstruction", "Code of the IDCODE instruction; 0: not known."},
    {"USERCODEIntruction", "Code of the USERCODE instruction."},
    {"InstructionBypass", "Code of the BYPASS instruction; 0: not known."},
    {"BypassLength", "Bits."},
    {"DataFrames", "Frames of the bitstream."},
    {"FrameBytes", "Bytes."},
    {"HeaderBytes", "Bytes."},
    {"StopBytes", "Bytes."},
    {"UESBytes", "Bytes."},
    {"TrailerBytes", "Bytes."},
    {"EndBytes", "Bytes."},
    {"BitstreamColWidth", "Bits. On purpose: while it is 0, data_length is answered."},
    {"MultibootChipSelColumn", "Column of the chip-select fuse."},
    {"MultibootSourceSelColumn", "Column of the source-select fuse."},
    {"BypassInst", "BYPASS instruction, as text."},
    {"IDCodeInst", "IDCODE instruction, as text."},
    {"Extension", "File-name pattern of the family's data files."},
    {"ICFFile", "Never None: \"\" while unset."},
    {"IEEE1532Compliant", "IEEE 1532."},
    {"CDRFixed", "Allows Device.change_device_cdr_value."},
    {"Hidden", "For display only: lookups visit hidden families."},
    {"CFGPinCount", "Number of configuration pins."},
    {"BitstreamModelTemplate", "None for the empty text."},
    {"BitName", "The bit's name."},
    {"Address", "Row address in the fuse map."},
    {"Column", "Column in the fuse map."},
};

std::string_view TextOn(std::string_view name) {
  for (const Row& row : kRows) {
    if (row.name == name) return row.text;
  }
  return "";
}

const char* TypeOf(Kind kind) {
  switch (kind) {
    case Kind::kText:
    case Kind::kRange:
      return "A text; None while unset.";
    case Kind::kFlag:
      return "A flag.";
    case Kind::kUnsigned8:
      return "A number from 0 to 255; others raise OverflowError.";
    case Kind::kCount:
    case Kind::kUnsigned16:
      return "A number from 0 to 65,535; others raise OverflowError.";
    case Kind::kUnsigned32:
      return "A number of 32 bits, from 0; others raise OverflowError.";
    case Kind::kSigned32:
      break;
  }
  return "A signed number of 32 bits; others raise OverflowError.";
}

bool IsListItem(std::string_view name) { return name.find("SysIO") != name.npos || name.find("Operation") != name.npos; }

}  // namespace

std::string DocumentationOf(const Field& field) {
  if (field.get == nullptr) {
    return IsListItem(field.name)
               ? "Replaces the list by the quoted items of a text: \"\\\"A\\\", \\\"B\\\"\"; None is ignored."
               : "Reads a text such as \"LABEL;A;B;\", one item a record; None is ignored.";
  }
  const std::string text(TextOn(field.name));
  return text.empty() ? TypeOf(field.kind) : text + " " + TypeOf(field.kind);
}

}  // namespace plddb::python
