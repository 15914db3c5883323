// Ids to which no device answers.

#include <pybind11/stl.h>

#include "chains.h"

namespace plddb::python {
namespace {

using chain::DeviceFinder;

/// What is known about an id that nobody answers to.
struct Unknown {
  const chain::IdKind* kind = nullptr;
  unsigned int id = 0;
  unsigned long irLength = 0;
  bool hasVendor = false;
  std::string vendor;
  std::vector<std::pair<Held<DeviceInfo>, std::string>> nearest;
  std::optional<chain::Misread> misread;
  Held<DeviceInfo> misreadDevice;
};

/// All about the unknown id at a position; nothing for a known one.
std::optional<Unknown> FindOut(const Position& self) {
  if (!self.Candidates().empty()) return std::nullopt;
  Tree& tree = *self.answer->tree;
  const std::optional<unsigned int> id = self.Id();
  Unknown unknown;
  unknown.kind = &chain::KindOf(self.answer->comm, id);
  if (!id) return unknown;
  unknown.id = *id;
  unknown.irLength = self.Found().IrLength();
  std::vector<chain::NearDevice> nearest;
  const auto ask = [&](const DeviceFinder& finder) {
    unknown.misread = finder.MisreadOf(*id);
    nearest.clear();
    if (!unknown.kind->isIdcode) return;
    nearest = finder.NearestDevices(*id);
    const char* const vendor = finder.VendorOf(chain::SplitIdcode(*id).manufacturer);
    unknown.hasVendor = vendor != nullptr;
    unknown.vendor = vendor == nullptr ? "" : vendor;
  };
  const auto hold = [&] {
    for (const chain::NearDevice& near : nearest) unknown.nearest.emplace_back(HoldLent(tree, near.device), near.difference);
    if (unknown.misread) unknown.misreadDevice = HoldLent(tree, unknown.misread->device);
  };
  AskFinder(tree, self.answer->comm, 1, ask, hold);
  return unknown;
}

const char* VendorOrNull(const Unknown& self) { return self.hasVendor ? self.vendor.c_str() : nullptr; }

/// A field of the IDCODE; None for an id that has no fields.
template <class Get>
py::object FieldOrNone(const Unknown& self, Get get) {
  return self.kind->isIdcode ? py::object(py::cast(get(chain::SplitIdcode(self.id)))) : py::object(py::none());
}

py::object StubOf(const Unknown& self) {
  if (!self.kind->isIdcode) return py::none();
  return ToPython(chain::DescriptionStub(self.id, VendorOrNull(self), self.irLength, ""));
}

py::object MisreadOf(const Unknown& self) {
  if (!self.misread) return py::none();
  return py::make_tuple(self.misread->id, self.misreadDevice, self.misread->how);
}

py::list NearestTo(const Unknown& self) {
  py::list list;
  for (const auto& [device, difference] : self.nearest) list.append(py::make_tuple(device, ToPython(difference)));
  return list;
}

}  // namespace

void AddUnknownIds(py::module_& module) {
  using Fields = chain::IdcodeFields;
  const auto field = [](unsigned int Fields::*member) {
    return [member](const Unknown& self) { return FieldOrNone(self, [&](const Fields& fields) { return fields.*member; }); };
  };
  py::class_<Unknown>(module, "Unknown",
                      "What is known about an id to which no device answers. Fields of an IDCODE are None "
                      "for what is none.")
      .def_property_readonly(
          "kind", [](const Unknown& self) { return self.kind->name; }, "What the id is, for scripts.")
      .def_property_readonly(
          "meaning", [](const Unknown& self) { return self.kind->meaning; }, "The same for people, or \"\".")
      .def_property_readonly("version", field(&Fields::version), "Bits 31 to 28.")
      .def_property_readonly("part", field(&Fields::part), "Bits 27 to 12.")
      .def_property_readonly("manufacturer", field(&Fields::manufacturer), "Bits 11 to 1.")
      .def_property_readonly("bank", field(&Fields::bank), "The manufacturer's bank, counted from 0.")
      .def_property_readonly("code", field(&Fields::code), "The manufacturer's code in its bank, without parity.")
      .def_property_readonly(
          "maker",
          [](const Unknown& self) {
            return FieldOrNone(self, [](const Fields& fields) { return chain::MakerText(fields.manufacturer); });
          },
          "Who makes the device.")
      .def_property_readonly(
          "vendor", [](const Unknown& self) { return ToPython(VendorOrNull(self)); },
          "The vendor of described devices with this manufacturer, or None.")
      .def_property_readonly("nearest", &NearestTo, "(device, difference) of the nearest devices, at most 5.")
      .def_property_readonly("misread", &MisreadOf, "(id, device, how) when a known id was read wrongly, or None.")
      .def_property_readonly("stub", &StubOf, "A Device element to complete, for a description file.")
      .def("__repr__", [](const Unknown& self) { return ToPython(std::string("<plddb.Unknown ") + self.kind->name + ">"); });
}

py::object UnknownOf(const Position& self) { return py::cast(FindOut(self)); }

}  // namespace plddb::python
