// The control records, of which parsed lists are made.

#include <pybind11/functional.h>

#include <algorithm>
#include <functional>

#include "entries.h"

namespace plddb::python {
namespace {

using descriptions::Field;
using descriptions::FieldsOf;
using descriptions::Value;

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

// --- Those without a table -------------------------------------------------------------------------------------------------

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

void AddControlRecords(py::module_& module) {
  AddEntryClass<CControlRegZero>(module, "ControlRegZero", PropertiesOf<CControlRegZero>(), "A field of control register 0.");
  AddEntryClass<CControlRegOne>(module, "ControlRegOne", PropertiesOf<CControlRegOne>(), "A bit of control register 1.");
  AddEntryClass<CPersistent_fuse>(module, "PersistentFuse", PropertiesOf<CPersistent_fuse>(), "A persistent fuse.");
  AddEntryClass<CControlStatus>(module, "ControlStatus", PropertiesOf<CControlStatus>(), "A bit of the status register.");
  AddEntryClass<CControlVoltage>(module, "ControlVoltage", PropertiesOf<CControlVoltage>(), "A control voltage.");
  AddEntryClass<CControlEBR>(module, "ControlEBR", PropertiesOf<CControlEBR>(),
                             "A control byte of an embedded memory block (EBR).");
  AddBlocks(module);
  AddBScanControls(module);
}

}  // namespace plddb::python
