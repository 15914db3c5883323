// The module plddb._plddb, whose names the package plddb shows as its own.

#include "module.h"

namespace plddb::python {
namespace {

template <class Class>
Class Declare(py::module_& module, const char* name, const char* documentation) {
  return Class(module, name, documentation);
}

Classes DeclareClasses(py::module_& module) {
  py::class_<Record, std::shared_ptr<Record>>(module, "Record",
                                              "A record of a database, which it keeps alive. Once it was deleted, using it "
                                              "raises DeletedError.")
      .def_property_readonly("is_deleted", &Record::IsDeleted, "Whether the record was deleted from its database.")
      .def_property_readonly("database", &Record::GetTree, "The database that holds the record.");
  return {
      Declare<TreeClass>(module, "Database",
                         "Device families, of one or more description files, which lookups search in turn."),
      Declare<FamilyClass>(module, "Family", "A device family: what its devices have in common."),
      Declare<DeviceClass>(module, "Device",
                           "A device: its names, identifiers, register lengths, instructions, times, packages and lists.\n\n"
                           "Setting a text to None keeps the old one. \"Tool units\": the programming tool alone gives the\n"
                           "number a meaning."),
      Declare<PackageClass>(module, "Package", "A package in which a device is sold."),
      Declare<AdapterClass>(module, "Adapter", "A socket adapter that fits a package."),
  };
}

PyObject* RefuseNew(PyTypeObject* type, PyObject*, PyObject*) {
  PyErr_Format(PyExc_TypeError, "%s objects come from a database or a function, and are not made", type->tp_name);
  return nullptr;
}

/// Classes without a constructor make no objects: pybind11 would not initialise them.
void RefuseObjects(py::handle cls) {
  const bool hasConstructor = Py_TYPE(cls.attr("__dict__")["__init__"].cast<py::object>().ptr()) != &PyWrapperDescr_Type;
  if (hasConstructor) return;
  auto* const type = reinterpret_cast<PyTypeObject*>(cls.ptr());
  type->tp_new = &RefuseNew;
  PyType_Modified(type);
}

/// Python's own way to pickle and copy ends in an object that is not initialised, or in the end of the process.
void RefusePickling(py::handle cls) {
  if (cls.attr("__dict__").contains("__reduce__")) return;
  const auto refuse = [](const py::object& self) {
    throw py::type_error("cannot pickle or copy a " + py::type::of(self).attr("__name__").cast<std::string>() +
                         "; plddb.write() and Database.copy() write and copy a database");
  };
  py::setattr(cls, "__reduce__", py::cpp_function(refuse, py::name("__reduce__"), py::is_method(cls)));
}

void RefuseWhatPythonCannotDo(const py::module_& module) {
  for (const auto& [name, member] : module.attr("__dict__").cast<py::dict>()) {
    if (!PyType_Check(member.ptr()) || PyExceptionClass_Check(member.ptr())) continue;
    RefuseObjects(member);
    RefusePickling(member);
  }
}

/// Pybind11 is for the main interpreter alone: in others it would wait for ever.
bool IsSubinterpreter() { return PyInterpreterState_Get() != PyInterpreterState_Main(); }

constexpr const char* kNoSubinterpreters = "plddb cannot be used in a subinterpreter";

/// A module that the main interpreter loaded is not initialised again in others.
void CheckInterpreter() {
  if (IsSubinterpreter()) throw py::import_error(kNoSubinterpreters);
}

}  // namespace
}  // namespace plddb::python

PYBIND11_MODULE(_plddb_of_main, module) {
  using namespace plddb::python;
  module.attr("__name__") = "plddb";  // of which the classes are members
  AddFaults(module);
  Classes classes = DeclareClasses(module);
  AddDatabase(classes);
  AddRecords(classes);
  AddControlRecords(module);
  AddParsedLists(classes);
  AddLookups(module, classes);
  AddFiles(module, classes);
  AddChecks(module);
  AddChains(module, classes);
  AddFind(module, classes);
  AddFits(module);
  AddBsdlFiles(module);
  RefuseWhatPythonCannotDo(module);
  module.def("_check_interpreter", &CheckInterpreter);
  module.attr("__version__") = PLDDB_VERSION;
  module.attr("__name__") = "plddb._plddb";
}

extern "C" PYBIND11_EXPORT PyObject* PyInit__plddb() {
  if (!plddb::python::IsSubinterpreter()) return PyInit__plddb_of_main();
  PyErr_SetString(PyExc_ImportError, plddb::python::kNoSubinterpreters);
  return nullptr;
}
