// The parsed lists of devices and families: lists of numbers and texts, and lists of control records.

#include <pybind11/functional.h>

#include <algorithm>
#include <functional>

#include "module.h"

namespace plddb::python {
namespace {

using descriptions::Field;
using descriptions::FieldsOf;
using descriptions::Value;

// --- Where the control records of each kind are -----------------------------------------------------------------------------

/// The kinds of lists, by which Record::replacements is counted.
enum ListKind : std::size_t { kRegZero, kRegOne, kPersistentFuse, kStatus, kVoltage, kEbr, kBScan };

/// A control record's place in its list. Blocks of embedded memory are a list of lists.
struct Place {
  std::size_t outer = 0;
  std::size_t inner = 0;
};

template <class T>
struct ListOf;

/// A list of a device that is read and replaced whole.
template <class T, ListKind kKind, const std::vector<T>& (DeviceInfo::*kGet)() const, void (DeviceInfo::*kSet)(std::vector<T>)>
struct DeviceListOf {
  using Owner = DeviceInfo;
  static constexpr ListKind kListKind = kKind;
  static const std::vector<T>& All(const Owner& device, Place) { return (device.*kGet)(); }
  static void Replace(Owner& device, std::vector<T> list) { (device.*kSet)(std::move(list)); }

  static void Put(Owner& device, Place place, const T& value) {
    std::vector<T> list = All(device, place);
    list[place.inner] = value;
    Replace(device, std::move(list));
  }
};

template <>
struct ListOf<CControlRegZero>
    : DeviceListOf<CControlRegZero, kRegZero, &DeviceInfo::GetlistControlRegZero, &DeviceInfo::SetlistControlRegZero> {};
template <>
struct ListOf<CControlRegOne>
    : DeviceListOf<CControlRegOne, kRegOne, &DeviceInfo::GetlistControlRegOne, &DeviceInfo::SetlistControlRegOne> {};
template <>
struct ListOf<CPersistent_fuse> : DeviceListOf<CPersistent_fuse, kPersistentFuse, &DeviceInfo::GetlistPersistent_fuse,
                                               &DeviceInfo::SetlistPersistent_fuse> {};
template <>
struct ListOf<CControlStatus>
    : DeviceListOf<CControlStatus, kStatus, &DeviceInfo::GetlistControlStatus, &DeviceInfo::SetlistControlStatus> {};
template <>
struct ListOf<CControlVoltage>
    : DeviceListOf<CControlVoltage, kVoltage, &DeviceInfo::GetControlVoltage, &DeviceInfo::SetControlVoltage> {};
template <>
struct ListOf<CControlEBRList>
    : DeviceListOf<CControlEBRList, kEbr, &DeviceInfo::GetlistControlEBR, &DeviceInfo::SetlistControlEBR> {};

/// The entries of a block.
template <>
struct ListOf<CControlEBR> {
  using Owner = DeviceInfo;
  static constexpr ListKind kListKind = kEbr;

  static const std::vector<CControlEBR>& All(const Owner& device, Place place) {
    static const std::vector<CControlEBR> none;
    const std::vector<CControlEBRList>& blocks = device.GetlistControlEBR();
    return place.outer < blocks.size() ? blocks[place.outer].Entries : none;
  }

  static void Put(Owner& device, Place place, const CControlEBR& value) {
    std::vector<CControlEBRList> blocks = device.GetlistControlEBR();
    blocks[place.outer].Entries[place.inner] = value;
    device.SetlistControlEBR(std::move(blocks));
  }
};

template <>
struct ListOf<CBScanControl> {
  using Owner = FamilyList;
  static constexpr ListKind kListKind = kBScan;
  static const std::vector<CBScanControl>& All(Owner& family, Place) { return family.GetListBScanControl(); }
  static void Put(Owner& family, Place place, const CBScanControl& value) { family.GetListBScanControl()[place.inner] = value; }
  static void Replace(Owner& family, std::vector<CBScanControl> list) { family.SetListBScanControl(std::move(list)); }
};

// --- Entries ----------------------------------------------------------------------------------------------------------------

/// A control record: an entry of a list, which is read and written in place, or a value that belongs to no list.
template <class T>
class Entry {
 public:
  using List = ListOf<T>;
  using Owner = Held<typename List::Owner>;

  static void* operator new(std::size_t) { RaiseNotInitialised("record"); }
  static void operator delete(void*) {}  // never called

  explicit Entry(T value = T()) : value_(std::move(value)) {}
  Entry(Owner owner, Place place)
      : owner_(std::move(owner)), replacements_(owner_->replacements[List::kListKind]), place_(place) {}

  const Owner& OwnerRecord() const { return owner_; }
  Place GetPlace() const { return place_; }

  /// Whether its owner was deleted, or its list replaced.
  bool IsDeleted() const {
    if (owner_ == nullptr) return false;
    if (owner_->IsDeleted() || replacements_ != owner_->replacements[List::kListKind]) return true;
    return place_.inner >= List::All(**owner_, place_).size();
  }

  const T& Get() const {
    if (owner_ == nullptr) return value_;
    if (IsDeleted()) throw Deleted("this entry was deleted, or the list that it was in replaced");
    return List::All(**owner_, place_)[place_.inner];
  }

  /// Calls `change(value)`, and keeps the changed value.
  template <class Change>
  void Set(Change change) {
    if (owner_ == nullptr) return change(value_);
    const Writing writing(*owner_->GetTree());
    T value = Get();
    change(value);
    List::Put(**owner_, place_, value);
  }

 private:
  Owner owner_;  // null: none
  unsigned int replacements_ = 0;
  Place place_;
  T value_;
};

template <class T>
py::list EntriesOf(const Held<typename ListOf<T>::Owner>& owner, std::size_t outer = 0) {
  const std::size_t count = ListOf<T>::All(**owner, {outer, 0}).size();
  py::list list(count);
  for (std::size_t i = 0; i < count; ++i) list[i] = py::cast(std::make_shared<Entry<T>>(owner, Place{outer, i}));
  return list;
}

template <class T>
std::vector<T> ValuesOf(const py::iterable& entries) {
  std::vector<T> values;
  for (const py::handle entry : entries) {
    if (!py::isinstance<Entry<T>>(entry)) throw py::type_error("the list is one of other records");
    values.push_back(entry.cast<const Entry<T>&>().Get());
  }
  return values;
}

/// On purpose: the library keeps the old list when the new one is empty.
template <class T>
void ReplaceList(const Held<typename ListOf<T>::Owner>& owner, const py::iterable& entries) {
  std::vector<T> values = ValuesOf<T>(entries);
  const Writing writing(*owner->GetTree());
  auto& record = **owner;
  if (!values.empty()) ++owner->replacements[ListOf<T>::kListKind];
  ListOf<T>::Replace(record, std::move(values));
}

// --- Classes of entries -----------------------------------------------------------------------------------------------------

/// A property of entries.
template <class T>
struct Property {
  std::string name;
  std::function<py::object(const Entry<T>& entry)> get;
  std::function<void(Entry<T>& entry, const py::object& object)> set;
  std::string documentation;
};

template <class T>
using Properties = std::vector<Property<T>>;

/// The properties of a record that has a table of fields. None stands for the empty text.
template <class T>
Properties<T> PropertiesOf() {
  Properties<T> properties;
  for (const Field& row : FieldsOf<T>()) {
    const Field* const field = &row;
    const auto get = [field](const Entry<T>& self) { return ToPython(*field, &self.Get()); };
    const auto set = [field](Entry<T>& self, const py::object& object) {
      Text storage;
      Value value = FromPython(*field, object, storage);
      if (value.text == nullptr) value.text = "";
      self.Set([&](T& record) { field->set(&record, value); });
    };
    properties.push_back({PythonName(row.name), get, set, DocumentationOf(row)});
  }
  return properties;
}

template <class T>
std::shared_ptr<Entry<T>> MakeEntry(const Properties<T>& properties, const py::dict& values) {
  auto entry = std::make_shared<Entry<T>>();
  for (const auto& [key, value] : values) {
    const std::string name = ToBytes(key);
    const auto property =
        std::find_if(properties.begin(), properties.end(), [&](const Property<T>& one) { return one.name == name; });
    if (property == properties.end()) throw py::type_error("there is no field " + name);
    property->set(*entry, py::reinterpret_borrow<py::object>(value));
  }
  return entry;
}

/// "plddb.ControlStatus(bit_name='DONE', index=3)".
template <class T>
py::object ShowEntry(const Properties<T>& properties, const py::object& self) {
  const py::str name = py::str("plddb.") + py::str(py::type::of(self).attr("__name__"));
  if (self.cast<const Entry<T>&>().IsDeleted()) return py::str("<{} (deleted)>").format(name);
  py::str text = name + py::str("(");
  const char* comma = "";
  for (const Property<T>& property : properties) {
    text = text + py::str(comma + property.name + "=") + py::repr(property.get(self.cast<const Entry<T>&>()));
    comma = ", ";
  }
  return text + py::str(")");
}

/// The fields by name.
template <class T>
py::dict ValuesIn(const Properties<T>& properties, const Entry<T>& entry) {
  py::dict values;
  for (const Property<T>& property : properties) values[py::str(property.name)] = property.get(entry);
  return values;
}

template <class T>
bool AreEqual(const Properties<T>& properties, const Entry<T>& a, const Entry<T>& b) {
  return std::all_of(properties.begin(), properties.end(),
                     [&](const Property<T>& property) { return property.get(a).equal(property.get(b)); });
}

template <class T>
void AddEntryClass(py::module_& module, const char* name, const Properties<T>& properties, const char* documentation) {
  py::class_<Entry<T>, std::shared_ptr<Entry<T>>> cls(module, name, documentation);
  for (const Property<T>& property : properties) {
    AddProperty(cls, property.name, py::cpp_function(property.get, py::is_method(cls)),
                py::cpp_function(property.set, py::is_method(cls)), property.documentation);
  }
  cls.def(py::init([properties](const py::kwargs& values) { return MakeEntry(properties, values); }),
          "A record that is in no list yet; fields by name.");
  cls.def("__repr__", [properties](const py::object& self) { return ShowEntry(properties, self); });
  cls.def(
      "__eq__", [properties](const Entry<T>& a, const Entry<T>& b) { return AreEqual(properties, a, b); }, py::is_operator(),
      py::arg("other"));
  cls.attr("__hash__") = py::none();  // it may change
  cls.def(
      "__reduce__",
      [properties](const py::object& self) {
        const py::dict values = ValuesIn(properties, self.cast<const Entry<T>&>());
        const py::object make = py::module_::import("functools").attr("partial")(py::type::of(self), **values);
        return py::make_tuple(make, py::tuple());
      },
      "For pickle and copy.");
}

// --- Properties -------------------------------------------------------------------------------------------------------------

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

// --- The classes of entries -------------------------------------------------------------------------------------------------

py::object BlockEntries(const Entry<CControlEBRList>& self) {
  const std::size_t count = self.Get().Entries.size();
  if (self.OwnerRecord() != nullptr) return EntriesOf<CControlEBR>(self.OwnerRecord(), self.GetPlace().inner);
  py::list list(count);
  for (std::size_t i = 0; i < count; ++i) list[i] = py::cast(std::make_shared<Entry<CControlEBR>>(self.Get().Entries[i]));
  return list;
}

void SetBlockEntries(Entry<CControlEBRList>& self, const py::object& object) {
  std::vector<CControlEBR> values = ValuesOf<CControlEBR>(py::iterable(object));
  self.Set([&](CControlEBRList& block) { block.Entries = std::move(values); });
}

void AddBlocks(py::module_& module) {
  const Properties<CControlEBRList> properties = {
      {"name", [](const Entry<CControlEBRList>& self) { return ToPython(self.Get().Name); },
       [](Entry<CControlEBRList>& self, const py::object& text) {
         std::string name = ToBytes(text);
         self.Set([&](CControlEBRList& block) { block.Name = std::move(name); });
       },
       "As it was loaded; names may repeat."},
      {"entries", &BlockEntries, &SetBlockEntries, "The control bytes in order: ControlEBR."},
  };
  AddEntryClass<CControlEBRList>(module, "ControlEBRList", properties,
                                 "A named block of embedded memory (EBR) with its control bytes.");
}

void AddBScanControls(py::module_& module) {
  const Properties<CBScanControl> properties = {
      {"default_value", [](const Entry<CBScanControl>& self) { return py::object(py::int_(self.Get().DefaultValue)); },
       [](Entry<CBScanControl>& self, const py::object& object) {
         const int value = IntFrom(object, "default_value");
         self.Set([&](CBScanControl& control) { control.DefaultValue = value; });
       },
       "1 in records that set_list_b_scan_control makes."},
      {"controls", [](const Entry<CBScanControl>& self) { return py::object(ToPython(self.Get().Controls)); },
       [](Entry<CBScanControl>& self, const py::object& object) {
         std::vector<std::string> texts = TextsOf(py::iterable(object));
         self.Set([&](CBScanControl& control) { control.Controls = std::move(texts); });
       },
       "The record's entries, in order: a new list of texts."},
  };
  AddEntryClass<CBScanControl>(module, "BScanControl", properties, "A boundary-scan control of a family.");
}

}  // namespace

void AddParsedLists(py::module_& module, Classes& classes) {
  AddEntryClass<CControlRegZero>(module, "ControlRegZero", PropertiesOf<CControlRegZero>(), "A field of control register 0.");
  AddEntryClass<CControlRegOne>(module, "ControlRegOne", PropertiesOf<CControlRegOne>(), "A bit of control register 1.");
  AddEntryClass<CPersistent_fuse>(module, "PersistentFuse", PropertiesOf<CPersistent_fuse>(), "A persistent fuse.");
  AddEntryClass<CControlStatus>(module, "ControlStatus", PropertiesOf<CControlStatus>(), "A bit of the status register.");
  AddEntryClass<CControlVoltage>(module, "ControlVoltage", PropertiesOf<CControlVoltage>(), "A control voltage.");
  AddEntryClass<CControlEBR>(module, "ControlEBR", PropertiesOf<CControlEBR>(),
                             "A control byte of an embedded memory block (EBR).");
  AddBlocks(module);
  AddBScanControls(module);
  AddDeviceLists(classes.device);
  AddFamilyLists(classes.family);
}

}  // namespace plddb::python
