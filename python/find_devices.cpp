// All devices that a text may mean.

#include <pybind11/stl.h>

#include "Find.h"
#include "chains.h"

namespace plddb::python {
namespace {

/// A device that a text may mean. `found.device` is not looked at.
struct Match {
  Held<DeviceInfo> device;
  find::Match found;
};

std::vector<Match> Find(Tree& tree, const Text& text, const Text& family) {
  find::Matches matches;
  ReadUndisturbed(tree, [&] { matches = find::Find(tree.Databases(), text.bytes, family.bytes); });
  std::vector<Match> held;
  for (find::Match& match : matches) {
    Held<DeviceInfo> device = HoldLent(tree, match.device);
    held.push_back({std::move(device), std::move(match)});
  }
  return held;
}

std::vector<std::string> NearNames(Tree& tree, const Text& text) {
  const Reading reading(tree);
  return find::NearNames(tree.Databases(), text.bytes);
}

std::vector<std::string> Keys(const Match& self) {
  std::vector<std::string> names;
  for (const find::Key key : self.found.keys) names.emplace_back(find::NameOf(key));
  return names;
}

void AddMark(py::module_& module) {
  using find::Mark;
  py::class_<Mark>(module, "Mark", "What a mark on a chip tells beyond the device.")
      .def_property_readonly(
          "name", [](const Mark& self) { return ToPython(self.name); }, "What the text begins with.")
      .def_property_readonly(
          "package", [](const Mark& self) { return ToPython(self.package); }, "The package type, or \"\".")
      .def_readonly("is_package_described", &Mark::isPackageDescribed, "Whether the device has a package of that type.")
      .def_readonly("is_lead_free", &Mark::isLeadFree, "Whether the package is free of lead.")
      .def_property_readonly(
          "speed", [](const Mark& self) { return ToPython(self.speed); }, "Such as \"-10\"; \"\": not given.")
      .def_property_readonly(
          "temperature", [](const Mark& self) { return find::TemperatureName(self.temperature); },
          "\"commercial\", \"industrial\", ...; \"\": not given.")
      .def_property_readonly(
          "unknown", [](const Mark& self) { return ToPython(self.unknown); }, "What is not understood.")
      .def("__repr__", [](const Mark& self) { return ToPython("<plddb.Mark " + self.name + ">"); });
}

}  // namespace

void AddFind(py::module_& module, Classes& classes) {
  AddMark(module);
  py::class_<Match>(module, "Match", "A device that a text may mean, and why.")
      .def_readonly("device", &Match::device, "The device.")
      .def_property_readonly(
          "kind", [](const Match& self) { return find::NameOf(self.found.kind); },
          "\"exact\", \"begins\", \"contains\", \"pattern\" or \"mark\".")
      .def_property_readonly("keys", &Keys, "The keys that agree: \"name\", \"code-name\", \"pon\", ...")
      .def_property_readonly(
          "mark", [](const Match& self) { return self.found.mark; }, "Of a mark on a chip; else None.")
      .def("__repr__", [](const Match& self) {
        return py::str("<plddb.Match {}, {}>").format(find::NameOf(self.found.kind), py::repr(py::cast(self.device)));
      });
  classes.tree
      .def(
          "find", &Find, py::arg("text"), py::arg("family") = py::none(),
          "All devices that a text may mean, best first: a name, an ordering number, an id, a file, a fuse count, a family, a\n"
          "package type, a pattern with * and ?, a part of a name, or a mark on a chip. `family` limits the search to "
          "families\n"
          "of this name.")
      .def(
          "near_names", [](Tree& tree, const Text& text) { return ToPython(NearNames(tree, text)); }, py::arg("text"),
          "Up to five names, code names, alias names and families that a text was probably meant to be.");
}

}  // namespace plddb::python
