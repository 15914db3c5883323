// What goes wrong, as Python sees it.

#include <algorithm>

#include "module.h"

namespace plddb::python {
namespace {

PyObject* errorType = nullptr;  // plddb.Error; lives as long as the process

py::object ShowFault(const Fault& fault) { return ToPython("<plddb.Fault " + ToString(fault) + ">"); }

/// A text for people: a fault a line, of very many the first ones.
std::string TextOf(const std::vector<Fault>& faults) {
  constexpr std::size_t kMost = 20;
  std::string text;
  for (std::size_t i = 0; i < std::min(faults.size(), kMost); ++i) text += (i == 0 ? "" : "\n") + ToString(faults[i]);
  return faults.size() <= kMost ? text : text + "\n... and " + std::to_string(faults.size() - kMost) + " more";
}

}  // namespace

void RaiseFaults(const std::vector<Fault>& faults) {
  if (faults.empty()) return;
  py::list list;
  for (const Fault& fault : faults) list.append(fault);
  const py::object error = py::reinterpret_borrow<py::object>(errorType)(ToPython(TextOf(faults)));
  error.attr("faults") = list;
  PyErr_SetObject(errorType, error.ptr());
  throw py::error_already_set();
}

void AddFaults(py::module_& module) {
  py::class_<Fault> cls(module, "Fault", "What is wrong in a file, and where. Faults can be compared and pickled.");
  AddValues<Fault>(cls, "_make_fault", [](const Fault& self) {
    return py::make_tuple(ToPython(self.file), self.line, self.column, ToPython(self.text));
  });
  module.def("_make_fault", [](const Text& file, int line, int column, const Text& text) {
    return Fault{file.bytes, line, column, text.bytes};
  });
  cls.def_property_readonly(
         "file", [](const Fault& self) { return ToPython(self.file); }, "The path of the file.")
      .def_readonly("line", &Fault::line, "Counted from 1.")
      .def_readonly("column", &Fault::column, "Counted from 1, in bytes.")
      .def_property_readonly(
          "text", [](const Fault& self) { return ToPython(self.text); }, "What is wrong, and what was expected; one line.")
      .def("__str__", [](const Fault& self) { return ToPython(ToString(self)); })
      .def("__repr__", &ShowFault);
  errorType = PyErr_NewExceptionWithDoc(
      "plddb.Error", "Files or texts that cannot be read. `faults` is a list of Fault: all that is wrong in them.", nullptr,
      nullptr);
  if (errorType == nullptr) throw py::error_already_set();
  py::handle(errorType).attr("faults") = py::list();
  module.add_object("Error", py::handle(errorType));
  static const py::handle deleted = py::register_exception<Deleted>(module, "DeletedError", PyExc_ReferenceError);
  deleted.attr("__doc__") = "A record is used that was deleted from its database, or an entry whose list was replaced.";
}

}  // namespace plddb::python
