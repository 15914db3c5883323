// Description files: loading, parsing and writing.

#include <filesystem>

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

}  // namespace

/// What the command reads when nobody names a file, or the files that are named.
std::vector<std::string> FilesOf(const py::iterable& arguments) {
  const std::vector<std::string> paths = PathsOf(arguments);
  const DataFileList list = paths.empty() ? DataFiles({}, ShippedFolder()) : NamedFiles(paths);
  RaiseFaults(list.faults);
  if (list.files.empty()) {
    RaiseFaults({{ShippedFolder(), 1, 1, "no device descriptions in this folder; name a file"}});
  }
  std::vector<std::string> files;
  for (const DataFile& file : list.files) files.push_back(file.path);
  return files;
}

namespace {

// --- Loading ----------------------------------------------------------------------------------------------------------------

/// The databases of `files`, or the faults of all.
std::vector<Part> LoadAll(const std::vector<std::string>& files, std::vector<Fault>& faults) {
  const Unlocked unlocked;
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
  std::vector<Part> parts = LoadAll(FilesOf(files), faults);
  RaiseFaults(faults);
  return std::make_shared<Tree>(std::move(parts));
}

std::shared_ptr<Tree> Parse(const py::object& text, const std::string& file) {
  const std::string bytes = BytesOf(text);
  LoadResult loaded;
  {
    const Unlocked unlocked;
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

}  // namespace

void AddFiles(py::module_& module, Classes&) {
  module.def("load", &Load,
             "Loads description files; a folder stands for its *.xml files. Without any: those that PLDDB_PATH names, the\n"
             "user's own (~/.config/plddb) and the shipped ones, which are searched in this order.\n\n"
             "Raises Error with the faults of all files; then nothing is loaded. Lets other threads run.");
  module.def(
      "data_files", [] { return ToPython(FilesOf(py::tuple())); }, "The files that load() reads, in search order.");
  module.def(
      "parse", [](const py::object& text, const Text& file) { return Parse(text, file.bytes); }, py::arg("text"),
      py::arg("file") = "<text>",
      "Loads descriptions from a text: str, bytes, or an open file; `file` is the name that faults carry. Raises Error.");
  module.def("write", &Write, py::arg("database"),
             "The description file, a str, that describes all of the database. Characters that are no UTF-8 come from\n"
             "surrogateescape: encode the text with it, too.");
}

}  // namespace plddb::python
