// What is wrong in description files, on their own or against makers' files.

#include <pybind11/stl.h>

#include <algorithm>

#include "Bsdl.h"
#include "Check.h"
#include "module.h"

namespace plddb::python {
namespace {

using check::Code;
using check::Finding;

const char* ToText(check::Severity severity) { return severity == check::Severity::kError ? "error" : "warning"; }

// --- Codes ------------------------------------------------------------------------------------------------------------------

std::vector<Code> FindingCodes() {
  std::vector<Code> codes = check::Codes();
  for (const Code& code : bsdl::CheckCodes()) codes.push_back(code);
  return codes;
}

void AddCodes(py::module_& module) {
  py::class_<Code>(module, "FindingCode", "A kind of finding.")
      .def_property_readonly(
          "name", [](const Code& self) { return std::string(self.name); }, "Such as \"id-shadowed\".")
      .def_property_readonly(
          "severity", [](const Code& self) { return ToText(self.severity); }, "\"error\" or \"warning\", of all its findings.")
      .def_property_readonly(
          "meaning", [](const Code& self) { return std::string(self.meaning); }, "In one line.")
      .def_property_readonly(
          "formerly", [](const Code& self) { return std::string(self.formerly); }, "A name that it had before, or \"\".")
      .def("__repr__", [](const Code& self) { return "<plddb.FindingCode " + std::string(self.name) + ">"; });
  module.def("finding_codes", &FindingCodes, "All codes that findings may have, in the order of the documentation.");
}

// --- Findings ---------------------------------------------------------------------------------------------------------------

py::object ShowFinding(const Finding& self) {
  return ToPython(self.place.file + ":" + std::to_string(self.place.line) + ":" + std::to_string(self.place.column) + ": " +
                  ToText(self.severity) + "[" + std::string(self.code) + "]: " + self.text);
}

py::tuple PlaceOf(const check::Place& place) { return py::make_tuple(ToPython(place.file), place.line, place.column); }

py::list RelatedTo(const Finding& self) {
  py::list related;
  for (const check::Place& place : self.related) related.append(PlaceOf(place));
  return related;
}

check::Place ToPlace(const py::tuple& place) {
  return {ToBytes(place[0]), IntFrom(place[1], "a line"), IntFrom(place[2], "a column")};
}

Finding MakeFinding(const py::tuple& place, const std::string& name, const Text& text, const py::tuple& related) {
  const std::vector<Code> codes = FindingCodes();
  const auto code = std::find_if(codes.begin(), codes.end(), [&](const Code& one) { return one.name == name; });
  if (code == codes.end()) throw py::value_error("no finding has the code " + name);
  Finding finding{ToPlace(place), code->name, code->severity, text.bytes, {}};
  for (const py::handle one : related) finding.related.push_back(ToPlace(one.cast<py::tuple>()));
  return finding;
}

void AddFindings(py::module_& module) {
  py::class_<Finding> cls(
      module, "Finding", "What is wrong in a description file that may load, and where. Findings can be compared and pickled.");
  AddValues<Finding>(cls, "_make_finding", [](const Finding& self) {
    return py::make_tuple(PlaceOf(self.place), std::string(self.code), ToPython(self.text), py::tuple(RelatedTo(self)));
  });
  module.def("_make_finding", &MakeFinding);
  cls.def_property_readonly(
         "file", [](const Finding& self) { return ToPython(self.place.file); }, "The path of the file.")
      .def_property_readonly(
          "line", [](const Finding& self) { return self.place.line; }, "Counted from 1.")
      .def_property_readonly(
          "column", [](const Finding& self) { return self.place.column; }, "Counted from 1, in bytes.")
      .def_property_readonly(
          "severity", [](const Finding& self) { return ToText(self.severity); },
          "\"error\": it can never work, or a value is lost; or \"warning\".")
      .def_property_readonly(
          "code", [](const Finding& self) { return std::string(self.code); }, "Such as \"id-shadowed\": finding_codes().")
      .def_property_readonly(
          "text", [](const Finding& self) { return ToPython(self.text); }, "One line.")
      .def_property_readonly("related", &RelatedTo, "(file, line, column) of the other records that the text names.")
      .def("__str__", &ShowFinding)
      .def("__repr__", [](const Finding& self) { return py::str("<plddb.Finding {}>").format(ShowFinding(self)); });
}

// --- Checking ---------------------------------------------------------------------------------------------------------------

std::vector<check::Source> Read(const std::vector<std::string>& files) {
  std::vector<check::Source> sources;
  for (const std::string& file : files) {
    FileText read = ReadDescriptionFile(file);
    sources.push_back({file, std::move(read.text), std::move(read.failure)});
  }
  return sources;
}

std::vector<Finding> Check(const py::args& arguments, const std::optional<py::iterable>& makersFiles, bool missing) {
  const std::vector<std::string> files = FilesOf(arguments);
  const std::vector<std::string> paths = makersFiles ? PathsOf(*makersFiles) : std::vector<std::string>();
  const Unlocked unlocked;
  if (!makersFiles) return check::CheckTexts(Read(files));
  std::vector<bsdl::File> makers;
  for (const std::string& path : paths) makers.push_back(bsdl::Load(path));
  return bsdl::CheckTexts(makers, Read(files), missing ? bsdl::Missing::kListed : bsdl::Missing::kAllowed);
}

}  // namespace

void AddChecks(py::module_& module) {
  AddCodes(module);
  AddFindings(module);
  module.def(
      "check", &Check, py::kw_only(), py::arg("bsdl") = py::none(), py::arg("missing") = false,
      "Checks description files as one database: a list of Finding, in the order of the files and of the places in them.\n"
      "Without any file those that load() reads. Files that do not load are findings, too.\n\n"
      "bsdl     paths of makers' BSDL files: compares the descriptions with them, instead\n"
      "missing  also finds what the makers' files state and a description lacks");
}

}  // namespace plddb::python
