#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// \file
/// The lists of a description file, which are written as elements or as texts: one table of their columns, for everything that
/// reads, writes or checks them.

namespace plddb::descriptions {

/// How a text lists its items.
enum class ListForm : unsigned char { kSemicolons, kQuoted, kTokens, kNumbered };

/// A field of the records of a list, and the text that may set it in all of them.
struct ListColumn {
  std::string_view owner;    // the element that holds the records, and has the text as an attribute
  std::string_view element;  // a record; empty for a list that is only a text
  std::string_view field;    // the record's attribute
  std::string_view text;     // the owner's attribute; empty without one
  std::string_view creator;  // the owner's attribute that creates the records this text fills; empty if it creates them itself
  const char* whenLeftOut;   // the field's default, as it is written; empty for texts, which have no other
  ListForm form = ListForm::kSemicolons;  // of the text
  std::size_t longest = SIZE_MAX;         // characters of the text; a longer one is ignored
};

inline constexpr std::string_view kAddressRange = "listAddressRange";  // the list that is only a text

// clang-format off
/// For each element, the field that creates the record comes first.
inline constexpr ListColumn kListColumns[] = {
    {"Device", "SysIO", "Name", "SysIOList", "", "", ListForm::kQuoted},
    {"Family", "Operation", "Name", "OperationList", "", "", ListForm::kQuoted},
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
    {"EBR", "Entry", "BitName", "BitName", "", "", ListForm::kNumbered},
    {"EBR", "Entry", "Value", "", "", "false"},
    {"EBR", "Entry", "Address", "Address", "BitName", "0", ListForm::kNumbered},
    {"EBR", "Entry", "Column", "Column", "BitName", "0", ListForm::kNumbered},
    {"Device", "MultibootCfgAddr", "Value", "MultibootCfgAddr", "", "0", ListForm::kTokens, 1023},
    {"Device", "MultibootAutoAdd", "Value", "MultibootAutoAdd", "", "0", ListForm::kTokens, 63},
    {"Device", "", "", kAddressRange, "", ""},
};
// clang-format on

/// Null if the records of `element` have no such field.
constexpr const ListColumn* FindColumn(std::string_view element, std::string_view field) {
  for (const ListColumn& column : kListColumns) {
    if (column.element == element && column.field == field) return &column;
  }
  return nullptr;
}

/// The attribute that creates all records of `element`, which has one.
constexpr std::string_view CreatorOf(std::string_view element) {
  const ListColumn* column = kListColumns;
  while (column->element != element) ++column;
  return column->text;
}

}  // namespace plddb::descriptions
