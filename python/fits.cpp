// Whether a programming file fits a chain.

#include <pybind11/stl.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "ProgrammingFile.h"
#include "chains.h"

namespace plddb::python {
namespace {

namespace pf = programming_files;

/// A verdict, and the file that it is about. Its devices are held; those that the library lent are not looked at.
struct Verdict {
  std::string path;
  pf::File file;
  pf::Verdict verdict;
  std::vector<Held<DeviceInfo>> devices;
};

// --- Reading ----------------------------------------------------------------------------------------------------------------

struct CloseFile {
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

/// What a file states, read block by block. Raises Error for one that cannot be read.
pf::File ReadFile(Tree& tree, const std::string& path) {
  pf::File read;
  int failure = 0;
  {
    const Reading reading(tree);
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (file != nullptr) {
      const pf::Reader reader(tree.Databases());
      read = reader.Read([&](char* buffer, std::size_t size) { return std::fread(buffer, 1, size, file.get()); });
    }
    if (file == nullptr || std::ferror(file.get()) != 0) failure = errno == 0 ? EIO : errno;
  }
  if (failure != 0) RaiseFaults({{path, 1, 1, std::string("cannot read the file: ") + std::strerror(failure)}});
  return read;
}

/// `chain` is null where there is none.
Verdict Judge(Tree& tree, const Path& path, const Chain* chain) {
  Verdict judged{path.bytes, ReadFile(tree, path.bytes), {}, {}};
  ReadUndisturbed(tree, [&] {
    if (chain != nullptr) CheckCandidates(*chain);
    const pf::Reader reader(tree.Databases());
    judged.verdict =
        chain == nullptr ? reader.Judge(judged.file) : reader.Judge(judged.file, chain->chain, chain->scan.nearest);
  });
  for (const DeviceInfo* const device : judged.verdict.devices) judged.devices.push_back(HoldLent(tree, device));
  return judged;
}

// --- Classes ----------------------------------------------------------------------------------------------------------------

std::vector<Fault> FaultsOf(const Verdict& self) {
  std::vector<Fault> faults;
  for (const pf::Fault& fault : self.file.faults) {
    const bool isText = fault.place.line != 0;
    const std::string place = isText ? "" : ToText(fault.place) + ": ";
    faults.push_back({self.path, isText ? static_cast<int>(fault.place.line) : 1,
                      isText ? static_cast<int>(fault.place.column) : 1, place + fault.text});
  }
  return faults;
}

bool IsId(const pf::Statement& statement) { return statement.kind == pf::Kind::kId; }

py::object ValueOf(const pf::Statement& self) {
  return IsId(self) || self.kind == pf::Kind::kFuseCount ? py::object(py::int_(self.value)) : py::object(py::none());
}

void AddStatements(py::module_& module) {
  py::class_<pf::Statement>(module, "Statement", "What a programming file states about its device.")
      .def_property_readonly(
          "kind", [](const pf::Statement& self) { return pf::ToText(self.kind); },
          "\"id\", \"name\", \"entity\", \"comment-name\", \"fuse-count\", \"package\" or \"signature\".")
      .def_property_readonly(
          "text", [](const pf::Statement& self) { return ToPython(self.text); }, "As the file has it.")
      .def_property_readonly("value", &ValueOf, "An id or fuse count; None for others.")
      .def_property_readonly(
          "mask",
          [](const pf::Statement& self) { return IsId(self) ? py::object(py::int_(self.mask)) : py::object(py::none()); },
          "The bits of an id that count; None for others.")
      .def_property_readonly(
          "place", [](const pf::Statement& self) { return pf::ToText(self.place); }, "\"line 3\", \"byte 12\".")
      .def("__repr__", [](const pf::Statement& self) {
        return ToPython("<plddb.Statement " + std::string(pf::ToText(self.kind)) + " " + self.text + ">");
      });
}

void AddVerdict(py::module_& module) {
  py::class_<Verdict>(module, "Verdict", "What a programming file is for, and whether it fits a chain.")
      .def_property_readonly(
          "fit", [](const Verdict& self) { return pf::ToText(self.verdict.fit); },
          "\"fits\", \"fits-several\", \"fits-none\" or \"unknown\".")
      .def_property_readonly(
          "positions", [](const Verdict& self) { return self.verdict.positions; },
          "The positions of the chain that it fits, counted from 0.")
      .def_readonly("devices", &Verdict::devices, "The devices that the file can be for, most likely first.")
      .def_property_readonly(
          "is_known", [](const Verdict& self) { return self.verdict.isKnown; },
          "Whether these are one device, or differ in nothing that matters.")
      .def_property_readonly(
          "reasons", [](const Verdict& self) { return ToPython(self.verdict.reasons); }, "In words, the strongest first.")
      .def_property_readonly(
          "file", [](const Verdict& self) { return ToPython(self.path); }, "The path of the file.")
      .def_property_readonly(
          "format", [](const Verdict& self) { return pf::ToText(self.file.format); },
          "\"jedec\", \"xilinx-bit\", ...; \"unknown\".")
      .def_property_readonly(
          "remark", [](const Verdict& self) { return ToPython(self.file.remark); }, "What else the file is.")
      .def_property_readonly(
          "fuse_count", [](const Verdict& self) { return self.file.fuseCount; }, "Of a fuse map, or None.")
      .def_property_readonly(
          "statements", [](const Verdict& self) { return self.file.statements; }, "In file order.")
      .def_property_readonly("faults", &FaultsOf, "What is wrong in the file, which may be used in spite of it.")
      .def("__repr__", [](const Verdict& self) {
        return ToPython("<plddb.Verdict " + std::string(pf::ToText(self.verdict.fit)) + ", " + pf::ToText(self.file.format) +
                        " for " + std::to_string(self.devices.size()) + (self.devices.size() == 1 ? " device>" : " devices>"));
      });
}

}  // namespace

void AddFits(py::module_& module) {
  AddStatements(module);
  AddVerdict(module);
  module.def(
      "fits", [](const Path& file, const Chain& chain) { return Judge(*chain.tree, file, &chain); }, py::arg("file"),
      py::arg("chain"),
      "Whether a programming file fits an identified chain, by what the file states about its device. Its format is "
      "recognised\n"
      "by its content. Raises Error for a file that cannot be read, DeletedError when a device of the chain was deleted.");
  module.def(
      "fits", [](const Path& file, Tree& database) { return Judge(database, file, nullptr); }, py::arg("file"),
      py::arg("database"), "Which devices of a database a programming file is for: fit is \"unknown\".");
}

}  // namespace plddb::python
