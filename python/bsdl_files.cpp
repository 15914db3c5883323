// Makers' BSDL files.

#include <pybind11/stl.h>

#include "Bsdl.h"
#include "module.h"

namespace plddb::python {
namespace {

Fault ToFault(const bsdl::Fault& fault) {
  return {fault.file, std::max(fault.place.line, 1), std::max(fault.place.column, 1), fault.text};
}

std::vector<Fault> FaultsOf(const std::vector<bsdl::Fault>& faults, bsdl::Severity severity) {
  std::vector<Fault> some;
  for (const bsdl::Fault& fault : faults) {
    if (fault.severity == severity) some.push_back(ToFault(fault));
  }
  return some;
}

void RaiseErrors(const std::vector<bsdl::Fault>& faults) { RaiseFaults(FaultsOf(faults, bsdl::Severity::kError)); }

bsdl::File Read(const Path& path) {
  bsdl::File file;
  {
    const py::gil_scoped_release release;
    file = bsdl::Load(path.bytes);
  }
  RaiseErrors(file.faults);
  return file;
}

bsdl::Import Describe(const bsdl::File& file, const Text& family, const Text& name, const Text& vendor, const Text& package) {
  bsdl::ImportOptions options;
  options.family = family.bytes;
  options.name = name.bytes;
  options.vendor = vendor.bytes;
  options.package = package.bytes;
  bsdl::Import import = bsdl::Describe({file}, options);
  RaiseErrors(import.faults);
  return import;
}

py::list Texts(const std::vector<bsdl::Text>& texts) {
  py::list list;
  for (const bsdl::Text& text : texts) list.append(ToPython(text.text));
  return list;
}

py::dict Instructions(const bsdl::File& self) {
  py::dict codes;
  for (const bsdl::Instruction& one : self.facts.instructions) codes[ToPython(one.name.text)] = Texts(one.codes);
  return codes;
}

std::shared_ptr<Tree> ToTree(bsdl::Import import, const std::string& file) {
  std::vector<Part> parts;
  parts.push_back({file, std::move(import.database)});
  return std::make_shared<Tree>(std::move(parts));
}

using bsdl::File;

void AddFacts(py::class_<File>& cls) {
  cls.def_property_readonly(
         "file", [](const File& self) { return ToPython(self.name); }, "The path of the file.")
      .def_property_readonly(
          "entity", [](const File& self) { return ToPython(self.facts.entity.text); }, "The entity's name.")
      .def_property_readonly(
          "ir_length", [](const File& self) { return self.facts.instructionLength.value; },
          "Instruction register, bits; 0: not stated.")
      .def_property_readonly(
          "bscan_length", [](const File& self) { return self.facts.boundaryLength.value; },
          "Boundary-scan register, bits; 0: not stated.")
      .def_property_readonly(
          "idcodes", [](const File& self) { return Texts(self.facts.idcodes); }, "Patterns of 32 bits: 0, 1 and X.")
      .def_property_readonly(
          "usercodes", [](const File& self) { return Texts(self.facts.usercodes); }, "Patterns of 32 bits: 0, 1 and X.")
      .def_property_readonly(
          "capture", [](const File& self) { return ToPython(self.facts.capture.text); },
          "What a scan of the instruction register reads.")
      .def_property_readonly("instructions", &Instructions, "The codes of each instruction: bits, the one nearest TDI first.")
      .def_property_readonly(
          "packages", [](const File& self) { return Texts(self.facts.pinMaps); }, "The names of the pin maps.")
      .def_property_readonly(
          "maximum_tck", [](const File& self) { return self.facts.maximumTck; }, "Hz; 0: not stated.")
      .def_property_readonly(
          "warnings", [](const File& self) { return FaultsOf(self.faults, bsdl::Severity::kWarning); },
          "What is odd in the file: Fault.");
}

void AddDescribing(py::class_<File>& cls) {
  cls.def(
         "describe",
         [](const File& self, const Text& family, const Text& name, const Text& vendor, const Text& package) {
           return ToTree(Describe(self, family, name, vendor, package), self.name);
         },
         py::arg("family"), py::arg("name") = py::none(), py::arg("vendor") = py::none(), py::arg("package") = py::none(),
         "A database of one family with the device. What is not given is taken from the file. Raises Error.")
      .def(
          "to_xml",
          [](const File& self, const Text& family, const Text& name, const Text& vendor, const Text& package) {
            return ToPython(bsdl::Write(Describe(self, family, name, vendor, package)));
          },
          py::arg("family"), py::arg("name") = py::none(), py::arg("vendor") = py::none(), py::arg("package") = py::none(),
          "The text of a description file with the device; what the file states besides is in comments. Raises Error.")
      .def(
          "add_to",
          [](const File& self, const Path& description, const Text& family, const Text& name, const Text& vendor,
             const Text& package) {
            const bsdl::Addition addition = bsdl::AddToFile(description.bytes, Describe(self, family, name, vendor, package));
            RaiseErrors(addition.faults);
            return ToPython(addition.text);
          },
          py::arg("description"), py::arg("family"), py::arg("name") = py::none(), py::arg("vendor") = py::none(),
          py::arg("package") = py::none(),
          "The text of a description file with the device put into its family, which is added when there is none. The file is\n"
          "only read. Raises Error.");
}

}  // namespace

void AddBsdlFiles(py::module_& module) {
  py::class_<File> cls(module, "BsdlFile", "What a maker states of a device in a BSDL file. Names and bits are in upper case.");
  AddFacts(cls);
  AddDescribing(cls);
  cls.def("__repr__", [](const File& self) { return ToPython("<plddb.BsdlFile " + self.facts.entity.text + ">"); });
  module.def("read_bsdl", &Read, py::arg("file"), "Reads a BSDL file. Raises Error for one that cannot be used.");
}

}  // namespace plddb::python
