// The parsed lists of devices and families: lists of numbers and texts, and lists of control records.

#include "entries.h"

namespace plddb::python {
namespace {

template <class T, class Class>
void AddEntryList(Class& cls, const char* name, const char* documentation) {
  using Owner = Held<typename ListOf<T>::Owner>;
  cls.def_property(
      name, [](const Owner& self) { return EntriesOf<T>(self); },
      [](const Owner& self, const py::iterable& entries) { ReplaceList<T>(self, entries); }, documentation);
}

void AddNumberList(DeviceClass& cls, const char* name, std::vector<int>& (DeviceInfo::*get)(),
                   void (DeviceInfo::*set)(std::vector<int>), const char* documentation) {
  cls.def_property(
      name,
      [get](const Device& self) {
        py::list list;
        for (const int number : ((*self).*get)()) list.append(py::int_(number));
        return list;
      },
      [set](const Device& self, const py::iterable& numbers) {
        std::vector<int> values;
        for (const py::handle number : numbers) values.push_back(IntFrom(number, "an address"));
        const Writing writing(*self.GetTree());
        ((*self).*set)(std::move(values));
      },
      documentation);
}

/// A setter that takes a text.
template <class T, class Class>
void AddTextSetter(Class& cls, const char* name, void (T::*set)(const char*), const char* documentation) {
  cls.def(
      name,
      [set](const RecordOf<T>& self, const Text& text) {
        const Writing writing(*self.GetTree());
        ((*self).*set)(text.Get());
      },
      py::arg("text"), documentation);
}

void AddDeviceLists(DeviceClass& cls) {
  AddEntryList<CControlRegZero>(cls, "list_control_reg_zero", "Fields of control register 0: ControlRegZero.");
  AddEntryList<CControlRegOne>(cls, "list_control_reg_one", "Bits of control register 1: ControlRegOne.");
  AddEntryList<CPersistent_fuse>(cls, "list_persistent_fuse", "Persistent fuses: PersistentFuse.");
  AddEntryList<CControlStatus>(cls, "list_control_status", "Bits of the status register: ControlStatus.");
  AddEntryList<CControlVoltage>(cls, "control_voltage", "Control voltages: ControlVoltage.");
  AddEntryList<CControlEBRList>(cls, "list_control_ebr", "Blocks of embedded memory: ControlEBRList.");
  AddNumberList(cls, "multiboot_cfg_addr", &DeviceInfo::GetMultibootCfgAddr, &DeviceInfo::SetMultibootCfgAddr,
                "Multiboot configuration addresses; an empty list empties.");
  AddNumberList(cls, "multiboot_auto_add", &DeviceInfo::GetMultibootAutoAdd, &DeviceInfo::SetMultibootAutoAdd,
                "Automatically added multiboot addresses; an empty list empties.");
  cls.def_property_readonly(
      "list_address_range", [](const Device& self) { return ToPython(self->GetlistAddressRange()); },
      "Address ranges, as text; set_list_address_range sets them.");
  cls.def_property_readonly(
      "sys_io",
      [](const Device& self) {
        std::vector<std::string> entries;
        for (int i = 0; const char* entry = self->GetSysIO(i); ++i) entries.emplace_back(entry);
        return ToPython(entries);
      },
      "System I/O entries; set_sys_io_list and add_sys_io_list set them.");
  AddTextSetter(cls, "add_sys_io_list", &DeviceInfo::AddSysIOList, "Appends one system I/O entry; None and \"\" add nothing.");
  AddTextSetter(cls, "set_list_control_ebr_bit_name", &DeviceInfo::SetListControlEBRBitName,
                "Begins a block of embedded memory with this many entries, a decimal text.");
  AddTextSetter(cls, "set_list_control_ebr_column", &DeviceInfo::SetListControlEBRColumn,
                "Numbers the columns of the block that was begun: \"0 to 31\".");
  AddTextSetter(cls, "set_list_control_ebr_address", &DeviceInfo::SetListControlEBRAddress,
                "Numbers the addresses of the block that was begun, after its columns: \"0 to 3\".");
  AddTextSetter(cls, "set_list_control_ebr_name", &DeviceInfo::SetListControlEBRName, "Files the block that was begun.");
  AddTextSetter(cls, "set_control_voltage_vcc_core", &DeviceInfo::SetControlVoltageVCCCore,
                "Appends a control voltage with this text.");
  AddTextSetter(cls, "set_control_voltage_vccj", &DeviceInfo::SetControlVoltageVCCJ, "Writes into the first control voltage.");
  AddTextSetter(cls, "set_control_voltage_pin_list", &DeviceInfo::SetControlVoltagePinList,
                "Writes into the first control voltage.");
}

void AddFamilyLists(FamilyClass& cls) {
  AddEntryList<CBScanControl>(cls, "list_b_scan_control", "Boundary-scan controls: BScanControl.");
  cls.def_property(
      "list_programming_mode_control", [](const Family& self) { return ToPython(self->GetListProgrammingModeControl()); },
      [](const Family& self, const py::iterable& modes) {
        std::vector<std::string> values = TextsOf(modes);
        const Writing writing(*self.GetTree());
        self->SetListProgrammingModeControl(std::move(values));
      },
      "Programming modes. On purpose, as in the library: an empty list keeps the old one.");
  cls.def_property_readonly(
      "operations",
      [](const Family& self) {
        std::vector<std::string> names;
        for (int i = 0; const char* name = self->GetOperation(i); ++i) names.emplace_back(name);
        return ToPython(names);
      },
      "Operations; set_operation_list, add_operation_list and delete_operation_list change them.");
  AddTextSetter(cls, "add_operation_list", &FamilyList::AddOperationList, "Appends one operation; None and \"\" add nothing.");
  AddTextSetter(cls, "delete_operation_list", &FamilyList::DeleteOperationList, "Deletes the first operation of this name.");
  AddTextSetter<FamilyList>(cls, "set_list_b_scan_control", &FamilyList::SetListBScanControl,
                            "Appends a boundary-scan control with the items of a text such as \"X;A;B;\".");
  cls.def(
      "set_b_scan_default_value",
      [](const Family& self, int value) {
        const Writing writing(*self.GetTree());
        self->SetBScanDefaultValue(value);
      },
      py::arg("value"), "Sets default_value of the first boundary-scan control.");
}

}  // namespace

void AddParsedLists(Classes& classes) {
  AddDeviceLists(classes.device);
  AddFamilyLists(classes.family);
}

}  // namespace plddb::python
