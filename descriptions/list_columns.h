#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// \file
/// The lists of a description file, which are written as elements or as texts: one table of their columns, for everything that
/// reads, writes or checks them.

namespace plddb::descriptions {

/// A field of the records of a list, and the text that may set it in all of them.
struct ListColumn {
  std::string_view owner;    // the element that holds the records, and has the text as an attribute
  std::string_view element;  // a record; empty for a list that is only a text
  std::string_view field;    // the record's attribute
  std::string_view text;     // the owner's attribute; empty without one
  std::string_view creator;  // the owner's attribute that creates the records this text fills; empty if it creates them itself
  const char* whenLeftOut;   // the field's default, as it is written
  std::size_t longest = SIZE_MAX;  // characters of the text; a longer one is ignored
};

// clang-format off
/// For each element, the field that creates the record comes first.
inline constexpr ListColumn kListColumns[] = {
    {"Device", "SysIO", "Name", "SysIOList", "", ""},
    {"Family", "Operation", "Name", "OperationList", "", ""},
    {"Family", "ProgrammingMode", "Name", "ListProgrammingModeControl", "", ""},
    {"Family", "BScanControl", "DefaultValue", "", "", "1"},
    {"BScanControl", "Control", "Name", "Controls", "", ""},
    {"Device", "ControlRegZero", "Frequency", "ListControlReg0Frequency", "", ""},
    {"Device", "ControlRegZero", "MasterClock", "ListControlReg0MasterClock", "ListControlReg0Frequency", ""},
    {"Device", "ControlRegZero", "ClockDivider", "ListControlReg0ClockDivider", "ListControlReg0Frequency", ""},
    {"Device", "ControlRegOne", "BitName", "ListControlReg1BitName", "", ""},
    {"Device", "ControlRegOne", "Value", "", "", "0"},
    {"Device", "ControlRegOne", "Address", "ListControlReg1Address", "ListControlReg1BitName", "0"},
    {"Device", "ControlRegOne", "Column", "ListControlReg1Column", "ListControlReg1BitName", "0"},
    {"Device", "Persistent_fuse", "Address", "ListPersistent_fuseAddress", "", "0"},
    {"Device", "Persistent_fuse", "Column", "ListPersistent_fuseColumn", "ListPersistent_fuseAddress", "0"},
    {"Device", "Persistent_fuse", "Value", "", "", "0"},
    {"Device", "ControlStatus", "BitName", "ListControlStatusBitName", "", ""},
    {"Device", "ControlStatus", "Control", "ListControlStatusControl", "ListControlStatusBitName", ""},
    {"Device", "ControlStatus", "Text", "", "", ""},
    {"Device", "ControlStatus", "Index", "ListControlStatusIndex", "ListControlStatusBitName", "0"},
    {"Device", "ControlVoltage", "VCCCore", "", "", ""},
    {"Device", "ControlVoltage", "VCCJ", "", "", ""},
    {"Device", "ControlVoltage", "PinList", "", "", ""},
    {"EBR", "Entry", "BitName", "BitName", "", ""},
    {"EBR", "Entry", "Value", "", "", "false"},
    {"EBR", "Entry", "Address", "Address", "BitName", "0"},
    {"EBR", "Entry", "Column", "Column", "BitName", "0"},
    {"Device", "MultibootCfgAddr", "Value", "MultibootCfgAddr", "", "0", 1023},
    {"Device", "MultibootAutoAdd", "Value", "MultibootAutoAdd", "", "0", 63},
    {"Device", "", "", "listAddressRange", "", ""},
};
// clang-format on

}  // namespace plddb::descriptions
