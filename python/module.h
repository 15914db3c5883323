#pragma once

#include "tree.h"
#include "values.h"

/// \file
/// The parts of the module, one a source file. Each adds its classes and functions.

namespace plddb::python {

using TreeClass = py::class_<Tree, std::shared_ptr<Tree>>;
using FamilyClass = py::class_<Family, Record, std::shared_ptr<Family>>;
using DeviceClass = py::class_<Device, Record, std::shared_ptr<Device>>;
using PackageClass = py::class_<PackageRecord, Record, std::shared_ptr<PackageRecord>>;
using AdapterClass = py::class_<AdapterRecord, Record, std::shared_ptr<AdapterRecord>>;

/// The classes of the tree. All are declared before any is filled, so that signatures name them.
struct Classes {
  TreeClass tree;
  FamilyClass family;
  DeviceClass device;
  PackageClass package;
  AdapterClass adapter;
};

void AddFaults(py::module_& module);                     // faults.cpp: exceptions
void AddDatabase(Classes& classes);                      // database.cpp: families and copies
void AddRecords(Classes& classes);                       // records.cpp: fields, and making and deleting records
void AddControlRecords(py::module_& module);             // control_records.cpp
void AddParsedLists(Classes& classes);                   // parsed_lists.cpp
void AddLookups(py::module_& module, Classes& classes);  // lookups.cpp
void AddFiles(py::module_& module, Classes& classes);    // files.cpp: load, parse, write
void AddChecks(py::module_& module);                     // checks.cpp: check
void AddChains(py::module_& module, Classes& classes);   // chains.cpp: identify
void AddFind(py::module_& module, Classes& classes);     // find_devices.cpp
void AddFits(py::module_& module);                       // fits.cpp: programming files
void AddBsdlFiles(py::module_& module);                  // bsdl_files.cpp

/// Throws plddb.Error for `faults`, if there are any.
void RaiseFaults(const std::vector<Fault>& faults);

/// The description files that `paths` name, or those that load() reads where there are none.
std::vector<std::string> FilesOf(const py::iterable& paths);

/// Adds == and hash() to a class of values.
template <class T, class Class, class AreEqual, class Hash>
void AddEquality(Class& cls, AreEqual areEqual, Hash hash) {
  cls.def(
      "__eq__", [areEqual](const T& a, const T& b) { return areEqual(a, b); }, py::is_operator(), py::arg("other"));
  cls.def("__hash__", hash);
}

/// Makes values of a class that Python makes none of: ==, hash(), and pickle by the module's function `maker`, which takes what
/// the tuple `stateOf(value)` has.
template <class T, class Class, class StateOf>
void AddValues(Class& cls, const char* maker, StateOf stateOf) {
  AddEquality<T>(
      cls, [stateOf](const T& a, const T& b) { return stateOf(a).equal(stateOf(b)); },
      [stateOf](const T& self) { return py::hash(stateOf(self)); });
  cls.def(
      "__reduce__",
      [maker, stateOf](const T& self) {
        return py::make_tuple(py::module_::import("plddb").attr("_make"), py::make_tuple(py::str(maker)) + stateOf(self));
      },
      "For pickle and copy.");
}

/// A list of records.
template <class T>
py::list ToList(std::vector<Held<T>> records) {
  py::list list(records.size());
  for (std::size_t i = 0; i < records.size(); ++i) list[i] = py::cast(records[i]);
  return list;
}

/// "1 device", "2 devices".
inline std::string Counted(std::size_t count, const std::string& one, const std::string& several) {
  return std::to_string(count) + " " + (count == 1 ? one : several);
}

/// Adds a property to `cls`.
inline void AddProperty(py::handle cls, const std::string& name, const py::object& getter, const py::object& setter,
                        const std::string& documentation) {
  py::setattr(cls, name.c_str(), py::module_::import("builtins").attr("property")(getter, setter, py::none(), documentation));
}

}  // namespace plddb::python
