// Chains: what a scanner printed, or ids, and which devices these may be.

#include "chains.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <unordered_map>

#include "foundation/printed_forms.h"

namespace plddb::python {
namespace {

using chain::DeviceFinder;
using chain::ScannedTap;

// --- What is asked ----------------------------------------------------------------------------------------------------------

[[noreturn]] void RaiseNotAnId(const std::string& text) { throw py::value_error(chain::NotAnId(text)); }

/// An id of a list: a number, a text such as "0x0362D093", or None for a TAP without one.
std::optional<unsigned int> IdFrom(py::handle object) {
  if (object.is_none()) return std::nullopt;
  if (PyIndex_Check(object.ptr()) != 0) return object.cast<Unsigned>().value;
  const std::string text = ToBytes(object);
  const std::optional<unsigned int> id = chain::ParseId(text);
  if (!id) RaiseNotAnId(text);
  return id;
}

chain::Scan ReadText(const std::string& text) {
  chain::ScanResult result;
  {
    const py::gil_scoped_release release;
    result = chain::ReadScan(text);
  }
  std::vector<Fault> faults;
  for (const chain::Fault& fault : result.faults) faults.push_back({"<scan>", fault.line, fault.column, fault.text});
  RaiseFaults(faults);
  return std::move(*result.scan);
}

chain::Scan ScanOf(const py::object& asked) {
  if (PyUnicode_Check(asked.ptr())) return ReadText(ToBytes(asked));
  if (PyBytes_Check(asked.ptr())) return ReadText(asked.cast<std::string>());
  chain::Scan scan;
  if (PyIndex_Check(asked.ptr()) != 0) {
    scan.taps.push_back({"", IdFrom(asked)});
  } else {
    for (const py::handle id : asked.cast<py::iterable>()) scan.taps.push_back({"", IdFrom(id)});
  }
  return scan;
}

// --- The answer -------------------------------------------------------------------------------------------------------------

/// Positions with equal candidates share them.
class HeldCandidates {
 public:
  explicit HeldCandidates(Tree& tree) : tree_(tree) {}

  std::shared_ptr<const std::vector<Candidate>> Of(const chain::ChainPosition& position) {
    const std::vector<chain::Candidate>& candidates = position.Candidates();
    auto& held = held_[&candidates];
    if (held == nullptr) held = Hold(candidates);
    return held;
  }

 private:
  std::shared_ptr<const std::vector<Candidate>> Hold(const std::vector<chain::Candidate>& candidates) {
    auto held = std::make_shared<std::vector<Candidate>>();
    held->reserve(candidates.size());
    for (const chain::Candidate& one : candidates) held->push_back({HoldLent(tree_, one.device), one});
    return held;
  }

  Tree& tree_;
  std::unordered_map<const void*, std::shared_ptr<const std::vector<Candidate>>> held_;
};

std::shared_ptr<Chain> Identify(Tree& tree, const py::object& asked, const Text& comm, bool trustsGuessedIrLengths) {
  const auto answer = std::make_shared<Chain>();
  answer->tree = tree.shared_from_this();
  answer->comm = comm.bytes;
  answer->scan = ScanOf(asked);
  const auto ask = [&](DeviceFinder& finder) {
    answer->chain.clear();
    for (const ScannedTap& tap : answer->scan.taps) answer->chain.push_back(finder.Identify(tap, trustsGuessedIrLengths));
  };
  const auto hold = [&] {
    HeldCandidates candidates(tree);
    for (const chain::ChainPosition& position : answer->chain) answer->candidates.push_back(candidates.Of(position));
  };
  AskFinder(tree, answer->comm, answer->scan.taps.size(), ask, hold);
  return answer;
}

// --- Positions --------------------------------------------------------------------------------------------------------------

/// A position of an answer.
struct Position {
  std::shared_ptr<const Chain> answer;
  std::size_t index;

  const chain::ChainPosition& Found() const { return answer->chain[index]; }
  const std::vector<Candidate>& Candidates() const { return *answer->candidates[index]; }
};

void CheckMatch(const std::vector<Candidate>& candidates) {
  if (!candidates.empty()) static_cast<void>(**candidates.front().device);
}

py::object NumberOrNone(unsigned long number) { return number == 0 ? py::object(py::none()) : py::int_(number); }

py::list Ranked(const Position& self) {
  py::list list;
  for (const chain::Candidate& one : chain::MostExactFirst(self.Found())) {
    const auto held = std::find_if(self.Candidates().begin(), self.Candidates().end(),
                                   [&](const Candidate& candidate) { return candidate.found.searchOrder == one.searchOrder; });
    list.append(*held);
  }
  return list;
}

py::object ShowPosition(const Position& self) {
  const std::optional<unsigned int> id = self.Found().id;
  std::string text = "<plddb.Position " + std::to_string(self.index) + ", " + (id ? internal::Hex(*id, 8) : "no IDCODE");
  const bool isKnown = !self.Candidates().empty();
  if (isKnown && self.Candidates().front().device->IsDeleted()) return ToPython(text + ", of a deleted device>");
  text += isKnown ? ", " + chain::DeviceName(**self.Candidates().front().device) : ", unknown";
  return ToPython(text + (self.Found().IsAmbiguous() ? ", ambiguous>" : ">"));
}

// --- Ids that nobody answers to ---------------------------------------------------------------------------------------------

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
std::optional<Unknown> UnknownOf(const Position& self) {
  if (!self.Candidates().empty()) return std::nullopt;
  Tree& tree = *self.answer->tree;
  const std::optional<unsigned int> id = self.Found().id;
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

// --- Classes ----------------------------------------------------------------------------------------------------------------

void AddCandidates(py::module_& module) {
  py::class_<Candidate>(module, "Candidate", "A device that answers to an id, and how surely it is the one.")
      .def_readonly("device", &Candidate::device, "The device.")
      .def_property_readonly(
          "bits", [](const Candidate& self) { return self.found.bits; }, "The bits that were compared.")
      .def_property_readonly(
          "only_low_byte", [](const Candidate& self) { return self.found.onlyLowByte; },
          "Found by the low byte of its ISP identifier, as the access mode DUAL allows.")
      .def_property_readonly(
          "search_order", [](const Candidate& self) { return self.found.searchOrder; }, "From 1: the lookups find the first.")
      .def_property_readonly(
          "reason", [](const Candidate& self) { return chain::Reason(self.found); },
          "Why it answers: \"all 32 bits\", \"masked 0x0FFFFFFF\", \"low byte only (DUAL)\".")
      .def("__repr__", [](const Candidate& self) {
        return py::str("<plddb.Candidate {}, {}>").format(py::repr(py::cast(self.device)), chain::Reason(self.found));
      });
}

void AddUnknown(py::module_& module) {
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
      .def_property_readonly("stub", &StubOf, "A Device element to complete, for a description file.");
}

void AddPositions(py::module_& module) {
  py::class_<Position>(module, "Position", "A position of a chain: the id that was read there, and who answers to it.")
      .def_readonly("index", &Position::index, "The position, counted from 0 in the order of the scan.")
      .def_property_readonly(
          "id", [](const Position& self) { return py::cast(self.Found().id); }, "The id; None where a TAP gave none.")
      .def_property_readonly(
          "name", [](const Position& self) { return ToPython(self.answer->scan.taps[self.index].name); },
          "As the scanning tool calls the TAP, or \"\".")
      .def_property_readonly(
          "match",
          [](const Position& self) {
            return self.Candidates().empty() ? Held<DeviceInfo>() : self.Candidates().front().device;
          },
          "The device that the lookups find; None for an unknown id.")
      .def_property_readonly(
          "candidates", [](const Position& self) { return py::cast(self.Candidates()); },
          "All that answer, in search order: Candidate.")
      .def_property_readonly("ranked", &Ranked, "The candidates, those of more compared bits first.")
      .def_property_readonly(
          "is_ambiguous", [](const Position& self) { return self.Found().IsAmbiguous(); }, "Whether several devices answer.")
      .def_property_readonly(
          "ir_length",
          [](const Position& self) {
            CheckMatch(self.Candidates());
            return NumberOrNone(self.Found().IrLength());
          },
          "Bits of the instruction register; None when not known.")
      .def_property_readonly(
          "kind",
          [](const Position& self) {
            CheckMatch(self.Candidates());
            return ToPython(chain::KindText(self.answer->comm, self.Found()));
          },
          "\"logic\", or the kind of a neighbour; of an unknown id the kind of the id.")
      .def_property_readonly("unknown", &UnknownOf,
                             "All that is known about an id to which nobody answers; None for a known one.")
      .def("__repr__", &ShowPosition);
}

py::object NearestEnd(const Chain& self) {
  if (self.scan.nearest == chain::End::kAsPrinted) return py::none();
  return py::str(self.scan.nearest == chain::End::kTdo ? "TDO" : "TDI");
}

py::object Draw(const Chain& self) {
  CheckCandidates(self);
  return self.chain.empty() ? py::object(py::none()) : ToPython(chain::Svg(self.chain, self.comm, self.scan.nearest));
}

Position PositionAt(const std::shared_ptr<Chain>& self, long long index) {
  const auto count = static_cast<long long>(self->chain.size());
  if (index < 0) index += count;
  if (index < 0 || index >= count) throw py::index_error("the chain has " + std::to_string(count) + " positions");
  return {self, static_cast<std::size_t>(index)};
}

std::vector<Position> Positions(const std::shared_ptr<Chain>& self) {
  std::vector<Position> positions;
  for (std::size_t i = 0; i < self->chain.size(); ++i) positions.push_back({self, i});
  return positions;
}

void AddChainClass(py::module_& module) {
  py::class_<Chain, std::shared_ptr<Chain>>(module, "Chain",
                                            "An identified chain: a sequence of Position. A notebook shows its drawing.")
      .def_property_readonly("positions", &Positions, "The positions, in the order of the scan.")
      .def("__len__", [](const Chain& self) { return self.chain.size(); })
      .def("__getitem__", &PositionAt, py::arg("index"))
      .def_property_readonly(
          "format", [](const Chain& self) { return self.scan.format; },
          "Which text was recognised: \"OpenOCD log\"; \"\" for ids.")
      .def_property_readonly(
          "tool", [](const Chain& self) { return self.scan.tool; }, "Whose text it is; \"\" for ids.")
      .def_property_readonly("nearest", &NearestEnd, "The end that the first position is nearest to: \"TDO\", \"TDI\" or None.")
      .def_property_readonly(
          "notes", [](const Chain& self) { return ToPython(self.scan.notes); }, "What is odd in the scan.")
      .def_property_readonly(
          "comm", [](const Chain& self) { return ToPython(self.comm); }, "The access mode that was asked.")
      .def("_repr_svg_", &Draw, "A drawing from TDI to TDO, as SVG; None for an empty chain.")
      .def("__repr__", [](const std::shared_ptr<Chain>& self) {
        return py::str("<plddb.Chain {}>").format(py::repr(py::cast(Positions(self))));
      });
}

}  // namespace

void CheckCandidates(const Chain& chain) {
  for (const auto& candidates : chain.candidates) {
    for (const Candidate& candidate : *candidates) static_cast<void>(**candidate.device);
  }
}

void AddChains(py::module_& module, Classes& classes) {
  AddCandidates(module);
  AddUnknown(module);
  AddPositions(module);
  AddChainClass(module);
  classes.tree.def(
      "identify", &Identify, py::arg("ids_or_scan"), py::arg("comm") = "JTAG", py::arg("trust_ir") = false,
      "Identifies the devices of a chain.\n\n"
      "`ids_or_scan` is an id (a number), an iterable of ids (numbers, texts such as \"0x0362D093\", None for a TAP\n"
      "without one), or a text: what a scanning tool printed, or ids, one a line. `comm` is the access mode:\n"
      "\"JTAG\", \"ISP\" or \"DUAL\". `trust_ir` takes IR lengths over that the tool guessed.\n\n"
      "Raises Error for a text without ids, ValueError for what is no id. Lets other threads run while it looks\n"
      "for many ids.");
  module.def(
      "maker", [](Unsigned id) { return chain::MakerText(chain::SplitIdcode(id.value).manufacturer); }, py::arg("id"),
      "The maker that the manufacturer field of an IDCODE names: \"Xilinx\", \"not assigned\", \"reserved: ...\".");
}

}  // namespace plddb::python
