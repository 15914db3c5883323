// The positions of a chain, and the devices that answer there.

#include <pybind11/stl.h>

#include <algorithm>
#include <functional>

#include "chains.h"
#include "foundation/printed_forms.h"

namespace plddb::python {

const chain::ChainPosition& Position::Found() const {
  for (const Candidate& candidate : Candidates()) static_cast<void>(**candidate.device);
  return answer->chain[index];
}

namespace {

// --- Candidates -------------------------------------------------------------------------------------------------------------

bool AreEqual(const Candidate& a, const Candidate& b) {
  return a.device == b.device && a.found.bits == b.found.bits && a.found.onlyLowByte == b.found.onlyLowByte &&
         a.found.searchOrder == b.found.searchOrder;
}

void AddCandidates(py::module_& module) {
  py::class_<Candidate> cls(module, "Candidate", "A device that answers to an id, and how surely it is the one.");
  cls.def_readonly("device", &Candidate::device, "The device.")
      .def_property_readonly(
          "bits", [](const Candidate& self) { return self.found.bits; }, "The bits that were compared.")
      .def_property_readonly(
          "only_low_byte", [](const Candidate& self) { return self.found.onlyLowByte; },
          "Found by the low byte of its ISP identifier, as the access mode DUAL allows.")
      .def_property_readonly(
          "search_order", [](const Candidate& self) { return self.found.searchOrder; }, "From 1: the lookups find the first.")
      .def_property_readonly(
          "reason", [](const Candidate& self) { return chain::Reason(self.found); },
          "Why it answers: \"all 32 bits\", \"masked 0x0FFFFFFF\", \"low byte only (DUAL)\".");
  AddEquality<Candidate>(cls, &AreEqual, [](const Candidate& self) { return std::hash<const void*>()(self.device.get()); });
  cls.def("__repr__", [](const Candidate& self) {
    return py::str("<plddb.Candidate {}, {}>").format(py::repr(py::cast(self.device)), chain::Reason(self.found));
  });
}

// --- Positions --------------------------------------------------------------------------------------------------------------

const chain::ScannedTap& TapOf(const Position& self) { return self.answer->scan.taps[self.index]; }

py::object NumberOrNone(unsigned long number) { return number == 0 ? py::object(py::none()) : py::int_(number); }

Held<DeviceInfo> MatchOf(const Position& self) {
  return self.Candidates().empty() ? Held<DeviceInfo>() : self.Candidates().front().device;
}

py::list Ranked(const Position& self) {
  py::list list;
  for (const chain::Candidate& one : chain::MostExactFirst(self.Found())) {
    const auto held = std::find_if(self.Candidates().begin(), self.Candidates().end(),
                                   [&](const Candidate& candidate) { return candidate.found.searchOrder == one.searchOrder; });
    list.append(*held);
  }
  return list;
}

py::object HintOf(const Position& self) {
  const DeviceInfo* const match = self.Found().Match();
  const std::string hint = match == nullptr ? "" : chain::HintOn(*match);
  return hint.empty() ? py::object(py::none()) : ToPython(hint);
}

bool HasDeletedCandidate(const Position& self) {
  return std::any_of(self.Candidates().begin(), self.Candidates().end(),
                     [](const Candidate& candidate) { return candidate.device->IsDeleted(); });
}

py::object ShowPosition(const Position& self) {
  std::string text =
      "<plddb.Position " + std::to_string(self.index) + ", " + (self.Id() ? internal::Hex(*self.Id(), 8) : "no IDCODE");
  if (HasDeletedCandidate(self)) return ToPython(text + ", of a deleted device>");
  const chain::ChainPosition& found = self.Found();
  text += found.Match() == nullptr ? ", unknown" : ", " + chain::DeviceName(*found.Match());
  return ToPython(text + (found.IsAmbiguous() ? ", ambiguous>" : ">"));
}

using PositionClass = py::class_<Position>;

void AddWhatWasRead(PositionClass& cls) {
  cls.def_readonly("index", &Position::index, "The position, counted from 0 in the order of the scan.")
      .def_property_readonly(
          "id", [](const Position& self) { return self.Id(); }, "The id; None where a TAP gave none.")
      .def_property_readonly(
          "name", [](const Position& self) { return ToPython(TapOf(self).name); },
          "As the scanning tool calls the TAP, or \"\".")
      .def_property_readonly(
          "scanned_ir_length", [](const Position& self) { return NumberOrNone(TapOf(self).irLength); },
          "The IR length that the scanning tool printed; None without one.")
      .def_property_readonly(
          "is_scanned_ir_length_guess",
          [](const Position& self) { return TapOf(self).irLength != 0 && TapOf(self).irLengthIsGuess; },
          "Whether the scanning tool guessed it, or has it from its own table.");
}

void AddWhoAnswers(PositionClass& cls) {
  cls.def_property_readonly("match", &MatchOf, "The device that the lookups find; None for an unknown id.")
      .def_property_readonly(
          "candidates", [](const Position& self) { return self.Candidates(); }, "All that answer, in search order: Candidate.")
      .def_property_readonly("ranked", &Ranked, "The candidates, those of more compared bits first.")
      .def_property_readonly(
          "is_ambiguous", [](const Position& self) { return self.Found().IsAmbiguous(); },
          "Whether another device may be meant as well.")
      .def_property_readonly(
          "ir_length", [](const Position& self) { return NumberOrNone(self.Found().IrLength()); },
          "Bits of the instruction register; None when not known.")
      .def_property_readonly(
          "kind", [](const Position& self) { return ToPython(chain::KindText(self.answer->comm, self.Found())); },
          "\"logic\", or the kind of a neighbour; of an unknown id the kind of the id.")
      .def_property_readonly("hint", &HintOf, "What to know about a neighbour of programmable logic; None without a hint.")
      .def_property_readonly("unknown", &UnknownOf,
                             "All that is known about an id to which no device answers; None for a known one.");
}

}  // namespace

void AddPositions(py::module_& module) {
  AddCandidates(module);
  PositionClass cls(module, "Position", "A position of a chain: the id that was read there, and who answers to it.");
  AddWhatWasRead(cls);
  AddWhoAnswers(cls);
  AddEquality<Position>(
      cls, [](const Position& a, const Position& b) { return a.answer == b.answer && a.index == b.index; },
      [](const Position& self) { return std::hash<const void*>()(self.answer.get()) + self.index; });
  cls.def("__repr__", &ShowPosition);
}

}  // namespace plddb::python
