// Chains: what a scanner printed, or ids, and which devices these may be.

#include "chains.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <unordered_map>

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
    const Unlocked unlocked;
    result = chain::ReadScan(text);
  }
  std::vector<Fault> faults;
  for (const chain::Fault& fault : result.faults) faults.push_back({"<scan>", fault.line, fault.column, fault.text});
  RaiseFaults(faults);
  return std::move(*result.scan);
}

bool IsText(const py::object& object) {
  const bool isText = PyUnicode_Check(object.ptr()) || PyBytes_Check(object.ptr()) || PyByteArray_Check(object.ptr());
  return isText || py::hasattr(object, "read");
}

chain::Scan ScanOf(const py::object& asked) {
  chain::Scan scan;
  if (PyIndex_Check(asked.ptr()) != 0) {
    scan.taps.push_back({"", IdFrom(asked)});
  } else if (IsText(asked)) {
    scan = ReadText(BytesOf(asked));
  } else if (py::isinstance<py::iterable>(asked)) {
    for (const py::handle id : asked) scan.taps.push_back({"", IdFrom(id)});
  } else {
    throw py::type_error(std::string("ids or the text of a scan are expected, not ") + Py_TYPE(asked.ptr())->tp_name);
  }
  return scan;
}

void CheckComm(const std::string& comm) {
  if (comm == "JTAG" || comm == "ISP" || comm == "DUAL") return;
  throw py::value_error("comm is \"JTAG\", \"ISP\" or \"DUAL\"");
}

/// Which end of the chain comes first; null: as the scan has it.
void SetOrder(chain::Scan& scan, const Text& order) {
  if (order.isNull) return;
  const bool isTdo = order.bytes == "tdo";
  if (!isTdo && order.bytes != "tdi") throw py::value_error("order is \"tdo\" or \"tdi\"");
  scan.nearest = isTdo ? chain::End::kTdo : chain::End::kTdi;
}

/// Takes {position: length} over into the chain.
void GiveIrLengths(chain::Chain& chain, const py::object& lengths) {
  if (lengths.is_none()) return;
  for (const auto& [key, value] : py::dict(lengths)) {
    const int position = IntFrom(key, "a position");
    const int length = IntFrom(value, "an IR length");
    if (position < 0 || static_cast<std::size_t>(position) >= chain.size()) {
      throw py::value_error("ir: the chain has no position " + std::to_string(position));
    }
    if (length < static_cast<int>(chain::kShortestIrLength) || length > static_cast<int>(chain::kLongestIrLength)) {
      throw py::value_error("ir: a length is " + std::to_string(chain::kShortestIrLength) + " to " +
                            std::to_string(chain::kLongestIrLength));
    }
    chain[static_cast<std::size_t>(position)].givenIrLength = static_cast<unsigned long>(length);
  }
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

std::shared_ptr<Chain> Identify(Tree& tree, const py::object& asked, const Text& comm, bool trustsGuessedIrLengths,
                                const Text& order, const py::object& irLengths) {
  CheckComm(comm.bytes);
  auto answer = std::make_shared<Chain>();
  answer->tree = tree.shared_from_this();
  answer->comm = comm.bytes;
  answer->scan = ScanOf(asked);
  SetOrder(answer->scan, order);
  const auto ask = [&](DeviceFinder& finder) {
    answer->chain.clear();
    for (const ScannedTap& tap : answer->scan.taps) answer->chain.push_back(finder.Identify(tap, trustsGuessedIrLengths));
  };
  const auto hold = [&] {
    HeldCandidates candidates(tree);
    for (const chain::ChainPosition& position : answer->chain) answer->candidates.push_back(candidates.Of(position));
  };
  AskFinder(tree, answer->comm, answer->scan.taps.size(), ask, hold);
  GiveIrLengths(answer->chain, irLengths);
  return answer;
}

// --- What a chain tells -----------------------------------------------------------------------------------------------------

py::object NearestEnd(const Chain& self) {
  if (self.scan.nearest == chain::End::kAsPrinted) return py::none();
  return py::str(self.scan.nearest == chain::End::kTdo ? "TDO" : "TDI");
}

py::object Draw(const Chain& self) {
  CheckCandidates(self);
  return self.chain.empty() ? py::object(py::none()) : ToPython(chain::Svg(self.chain, self.comm, self.scan.nearest));
}

py::list Notes(const Chain& self) {
  CheckCandidates(self);
  return ToPython(chain::Notes(self.scan, self.chain));
}

std::vector<std::string> Differences(const Chain& self, const std::vector<std::string>& names) {
  CheckCandidates(self);
  std::vector<std::string> differences;
  std::size_t position = 0;
  for (const chain::Expectation& one : chain::Compare(self.chain, names)) {
    if (!one.agrees) differences.push_back("position " + std::to_string(position) + ": " + one.text);
    ++position;
  }
  return differences;
}

py::list Expect(const Chain& self, const py::iterable& names) { return ToPython(Differences(self, TextsOf(names))); }

// --- A chain as a sequence --------------------------------------------------------------------------------------------------

py::list Positions(const std::shared_ptr<Chain>& self) {
  py::list positions(self->chain.size());
  for (std::size_t i = 0; i < self->chain.size(); ++i) positions[i] = py::cast(Position{self, i});
  return positions;
}

Position PositionAt(const std::shared_ptr<Chain>& self, long long index) {
  const auto count = static_cast<long long>(self->chain.size());
  if (index < 0) index += count;
  if (index < 0 || index >= count) throw py::index_error("the chain has " + std::to_string(count) + " positions");
  return {self, static_cast<std::size_t>(index)};
}

using ChainClass = py::class_<Chain, std::shared_ptr<Chain>>;

void AddSequence(ChainClass& cls) {
  using Self = std::shared_ptr<Chain>;
  cls.def_property_readonly("positions", &Positions, "The positions, in the order of the scan: a new list of them.")
      .def("__len__", [](const Chain& self) { return self.chain.size(); })
      .def("__getitem__", &PositionAt, py::arg("index"))
      .def(
          "__getitem__", [](const Self& self, const py::slice& slice) { return py::object(Positions(self)[slice]); },
          py::arg("slice"))
      .def("__iter__", [](const Self& self) { return py::iter(Positions(self)); })
      .def("__reversed__", [](const Self& self) { return Positions(self).attr("__reversed__")(); })
      .def(
          "__contains__", [](const Self& self, const py::object& one) { return Positions(self).contains(one); },
          py::arg("position"))
      .def(
          "index", [](const Self& self, const py::object& one) { return Positions(self).attr("index")(one); },
          py::arg("position"), "The index of a position of this chain. Raises ValueError for another object.")
      .def(
          "count", [](const Self& self, const py::object& one) { return Positions(self).attr("count")(one); },
          py::arg("position"), "1 for a position of this chain, else 0.");
  py::module_::import("collections.abc").attr("Sequence").attr("register")(cls);
}

void AddChainClass(py::module_& module) {
  ChainClass cls(module, "Chain", "An identified chain: a sequence of Position. A notebook shows its drawing.");
  AddSequence(cls);
  cls.def_property_readonly(
         "format", [](const Chain& self) { return self.scan.format; },
         "Which text was recognised: \"OpenOCD log\"; \"\" for ids.")
      .def_property_readonly(
          "tool", [](const Chain& self) { return self.scan.tool; }, "Whose text it is; \"\" for ids.")
      .def_property_readonly("nearest", &NearestEnd, "The end that the first position is nearest to: \"TDO\", \"TDI\" or None.")
      .def_property_readonly(
          "notes", &Notes,
          "What to know about the chain: oddities of the scan, IR lengths that do not agree or are missing,\n"
          "hints on neighbours of programmable logic. Texts call arguments as the command's options.")
      .def_property_readonly(
          "comm", [](const Chain& self) { return ToPython(self.comm); }, "The access mode that was asked.")
      .def("expect", &Expect, py::arg("names"),
           "Compares the chain with names, in its order: each the name, code name, alias, ordering number or family of a\n"
           "candidate, ignoring case. Returns what differs, one text a position; [] when the chain is the expected one.")
      .def("to_svg", &Draw, "A drawing from TDI to TDO, as SVG; None for an empty chain.")
      .def("_repr_svg_", &Draw, "The drawing, for notebooks.")
      .def("__repr__",
           [](const std::shared_ptr<Chain>& self) { return py::str("<plddb.Chain {}>").format(py::repr(Positions(self))); });
}

}  // namespace

void CheckCandidates(const Chain& chain) {
  for (const auto& candidates : chain.candidates) {
    for (const Candidate& candidate : *candidates) static_cast<void>(**candidate.device);
  }
}

void AddChains(py::module_& module, Classes& classes) {
  AddUnknownIds(module);
  AddPositions(module);
  AddChainClass(module);
  classes.tree.def(
      "identify", &Identify, py::arg("ids_or_scan"), py::arg("comm") = "JTAG", py::arg("trust_ir") = false, py::kw_only(),
      py::arg("order") = py::none(), py::arg("ir") = py::none(),
      "Identifies the devices of a chain.\n\n"
      "`ids_or_scan` is an id (a number), an iterable of ids (numbers, texts such as \"0x0362D093\", None for a TAP\n"
      "without one), or a text: what a scanning tool printed, or ids, one a line: str, bytes, or an open file.\n\n"
      "comm      the access mode: \"JTAG\", \"ISP\" or \"DUAL\"\n"
      "trust_ir  also uses IR lengths of the scan that its tool may have guessed\n"
      "order     which end of the chain comes first, whatever the tool's order is: \"tdo\" or \"tdi\"\n"
      "ir        IR lengths by position, for example of an unknown TAP: {1: 6}; 2 to 65,535 bits\n\n"
      "Raises Error for a text without ids, ValueError for what is no id. Lets other threads run while it looks\n"
      "for many ids.");
  module.def(
      "maker", [](Unsigned id) { return chain::MakerText(chain::SplitIdcode(id.value).manufacturer); }, py::arg("id"),
      "The maker that the manufacturer field of an IDCODE names: \"Xilinx\", \"not assigned\", \"reserved: ...\".");
}

}  // namespace plddb::python
