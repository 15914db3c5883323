// Makers' BSDL files.

#include <pybind11/stl.h>

#include <algorithm>

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
    const Unlocked unlocked;
    file = bsdl::Load(path.bytes);
  }
  RaiseErrors(file.faults);
  return file;
}

/// What describing may be told.
struct Options {
  Text family, name, vendor, package, units;
  py::iterable others;
};

double UnitOf(const Text& units) {
  const double seconds = units.isNull ? 0 : bsdl::SecondsOf(units.bytes);
  if (!units.isNull && seconds == 0) throw py::value_error("units is \"s\", \"ms\", \"us\" or \"ns\"");
  return seconds;
}

/// A Python warning for each warning that none of the files has itself.
void Warn(const bsdl::Import& import, const std::vector<bsdl::File>& files) {
  for (const bsdl::Fault& fault : import.faults) {
    const auto isSame = [&](const bsdl::Fault& own) { return ToString(own) == ToString(fault); };
    const auto has = [&](const bsdl::File& file) { return std::any_of(file.faults.begin(), file.faults.end(), isSame); };
    if (fault.severity == bsdl::Severity::kError || std::any_of(files.begin(), files.end(), has)) continue;
    py::module_::import("warnings").attr("warn")(ToPython(ToString(fault)));
  }
}

bsdl::Import Describe(const bsdl::File& file, const Options& asked) {
  bsdl::ImportOptions options;
  options.family = asked.family.bytes;
  options.name = asked.name.bytes;
  options.vendor = asked.vendor.bytes;
  options.package = asked.package.bytes;
  options.unitOfTimes = UnitOf(asked.units);
  std::vector<bsdl::File> files = {file};
  for (const py::handle other : asked.others) {
    if (!py::isinstance<bsdl::File>(other)) throw py::type_error("others is a list of BsdlFile");
    files.push_back(other.cast<const bsdl::File&>());
  }
  bsdl::Import import = bsdl::Describe(files, options);
  RaiseErrors(import.faults);
  Warn(import, files);
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

/// A method that describes the device: `use(file, import, more...)`.
template <class... More, class Use, class... Names>
void AddMethod(py::class_<File>& cls, const char* method, Use use, const char* documentation, Names... names) {
  cls.def(
      method,
      [use](const File& self, const More&... more, const Text& family, const Text& name, const Text& vendor,
            const Text& package, const Text& units, const py::iterable& others) {
        return use(self, Describe(self, {family, name, vendor, package, units, others}), more...);
      },
      py::arg(names)..., py::arg("family"), py::arg("name") = py::none(), py::arg("vendor") = py::none(),
      py::arg("package") = py::none(), py::kw_only(), py::arg("units") = py::none(), py::arg("others") = py::tuple(),
      documentation);
}

py::object AddToFile(const File&, const bsdl::Import& import, const Path& description) {
  const bsdl::Addition addition = bsdl::AddToFile(description.bytes, import);
  RaiseErrors(addition.faults);
  return ToPython(addition.text);
}

void AddDescribing(py::class_<File>& cls) {
  AddMethod(
      cls, "describe", [](const File& self, bsdl::Import import) { return ToTree(std::move(import), self.name); },
      "A database of one family with the device. What is not given is taken from the file. Raises Error.\n\n"
      "units   \"s\", \"ms\", \"us\" or \"ns\": also times, in this unit, and sizes of IEEE 1532\n"
      "others  further files: those of the same device add their packages\n\n"
      "A value that a description cannot hold is left out, with a UserWarning.");
  AddMethod(
      cls, "to_xml", [](const File&, const bsdl::Import& import) { return ToPython(bsdl::Write(import)); },
      "The text of a description file with the device; what the file states besides is in comments. As describe().");
  AddMethod<Path>(
      cls, "add_to", &AddToFile,
      "The text of a description file with the device put into its family, which is added when there is none. The file is\n"
      "only read. As describe().",
      "description");
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
