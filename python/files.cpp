// Description files: loading, parsing, writing and checking.

#include <filesystem>

#include "Check.h"
#include "DataFiles.h"
#include "module.h"

namespace plddb::python {
namespace {

// --- Which files ------------------------------------------------------------------------------------------------------------

/// The shipped descriptions: those inside the package, those of the prefix in which it is installed, or else the library's.
std::string ShippedFolder() {
  namespace fs = std::filesystem;
  const fs::path package = fs::path(ToBytes(py::module_::import("plddb._plddb").attr("__file__"))).parent_path();
  std::error_code unknown;
  const fs::path prefix = package.parent_path().parent_path().parent_path().parent_path();  // of lib/python3/dist-packages
  for (const fs::path& folder : {package / "data", prefix / "share" / "plddb"}) {
    if (fs::is_directory(folder, unknown)) return folder.string();
  }
  return DataFolder();
}

std::vector<std::string> PathsOf(const py::args& arguments) {
  std::vector<std::string> paths;
  for (const py::handle argument : arguments) paths.push_back(argument.cast<Path>().bytes);
  return paths;
}

/// What the command reads when nobody names a file, or the files that are named.
std::vector<std::string> FilesOf(const std::vector<std::string>& paths) {
  const DataFileList list = paths.empty() ? DataFiles({}, ShippedFolder()) : NamedFiles(paths);
  RaiseFaults(list.faults);
  if (list.files.empty()) {
    RaiseFaults({{ShippedFolder(), 1, 1, "no device descriptions in this folder; name a file"}});
  }
  std::vector<std::string> files;
  for (const DataFile& file : list.files) files.push_back(file.path);
  return files;
}

// --- Loading ----------------------------------------------------------------------------------------------------------------

/// The databases of `files`, or the faults of all.
std::vector<Part> LoadAll(const std::vector<std::string>& files, std::vector<Fault>& faults) {
  const py::gil_scoped_release release;
  std::vector<Part> parts;
  for (const std::string& file : files) {
    LoadResult loaded = LoadDescriptions(file);
    faults.insert(faults.end(), loaded.faults.begin(), loaded.faults.end());
    parts.push_back({file, std::move(loaded.database)});
  }
  return parts;
}

std::shared_ptr<Tree> Load(const py::args& files) {
  std::vector<Fault> faults;
  std::vector<Part> parts = LoadAll(FilesOf(PathsOf(files)), faults);
  RaiseFaults(faults);
  return std::make_shared<Tree>(std::move(parts));
}

std::shared_ptr<Tree> Parse(const py::object& text, const std::string& file) {
  const std::string bytes = PyBytes_Check(text.ptr()) ? text.cast<std::string>() : ToBytes(text);
  LoadResult loaded;
  {
    const py::gil_scoped_release release;
    loaded = ParseDescriptions(bytes, file);
  }
  RaiseFaults(loaded.faults);
  std::vector<Part> parts;
  parts.push_back({file, std::move(loaded.database)});
  return std::make_shared<Tree>(std::move(parts));
}

py::object Write(Tree& tree) {
  std::string text;
  {
    const Reading reading(tree);
    std::vector<Source> sources;
    for (const Part& part : tree.Parts()) sources.push_back({part.database.get(), nullptr});
    const DeviceList none;
    if (sources.empty()) sources.push_back({&none, nullptr});
    text = WriteDescriptions(sources);
  }
  return ToPython(text);
}

// --- Checking ---------------------------------------------------------------------------------------------------------------

using check::Finding;

const char* SeverityOf(const Finding& finding) { return finding.severity == check::Severity::kError ? "error" : "warning"; }

std::vector<Finding> Check(const py::args& arguments) {
  const std::vector<std::string> files = FilesOf(PathsOf(arguments));
  const py::gil_scoped_release release;
  std::vector<check::Source> sources;
  for (const std::string& file : files) {
    FileText read = ReadDescriptionFile(file);
    sources.push_back({file, std::move(read.text), std::move(read.failure)});
  }
  return check::CheckTexts(sources);
}

py::object ShowFinding(const Finding& self) {
  return ToPython(self.place.file + ":" + std::to_string(self.place.line) + ":" + std::to_string(self.place.column) + ": " +
                  SeverityOf(self) + "[" + std::string(self.code) + "]: " + self.text);
}

py::list RelatedTo(const Finding& self) {
  py::list related;
  for (const check::Place& place : self.related) {
    related.append(py::make_tuple(ToPython(place.file), place.line, place.column));
  }
  return related;
}

void AddFindings(py::module_& module) {
  py::class_<Finding>(module, "Finding", "What is wrong in a description file that may load, and where.")
      .def_property_readonly(
          "file", [](const Finding& self) { return ToPython(self.place.file); }, "The path of the file.")
      .def_property_readonly(
          "line", [](const Finding& self) { return self.place.line; }, "Counted from 1.")
      .def_property_readonly(
          "column", [](const Finding& self) { return self.place.column; }, "Counted from 1, in bytes.")
      .def_property_readonly("severity", &SeverityOf, "\"error\": it can never work, or a value is lost; or \"warning\".")
      .def_property_readonly(
          "code", [](const Finding& self) { return std::string(self.code); }, "Such as \"id-shadowed\".")
      .def_property_readonly(
          "text", [](const Finding& self) { return ToPython(self.text); }, "One line.")
      .def_property_readonly("related", &RelatedTo, "(file, line, column) of the other records that the text names.")
      .def("__str__", &ShowFinding)
      .def("__repr__", [](const Finding& self) { return py::str("<plddb.Finding {}>").format(ShowFinding(self)); });
}

}  // namespace

void AddFiles(py::module_& module, Classes&) {
  AddFindings(module);
  module.def("load", &Load,
             "Loads description files; a folder stands for its *.xml files. Without any: those that PLDDB_PATH names, the\n"
             "user's own (~/.config/plddb) and the shipped ones, which are searched in this order.\n\n"
             "Raises Error with the faults of all files; then nothing is loaded. Lets other threads run.");
  module.def(
      "data_files", [] { return ToPython(FilesOf({})); }, "The files that load() reads, in search order.");
  module.def(
      "parse", [](const py::object& text, const Text& file) { return Parse(text, file.bytes); }, py::arg("text"),
      py::arg("file") = "<text>",
      "Loads descriptions from a str or bytes; `file` is the name that faults carry. Raises Error.");
  module.def("write", &Write, py::arg("database"),
             "The description file, a str, that describes all of the database. Characters that are no UTF-8 come from\n"
             "surrogateescape: encode the text with it, too.");
  module.def(
      "check",
      [](const py::args& files) {
        const std::vector<Finding> findings = Check(files);
        py::list list;
        for (const Finding& finding : findings) list.append(finding);
        return list;
      },
      "Checks description files as one database: a list of Finding, in the order of the files and of the places in them.\n"
      "Without any file those that load() reads. Files that do not load are findings, too.");
}

}  // namespace plddb::python
