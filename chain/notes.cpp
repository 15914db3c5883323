#include <algorithm>

#include "chain/Chain.h"

namespace plddb::chain {
namespace {

std::string At(std::size_t position) { return "position " + std::to_string(position) + ": "; }

std::string Give(std::size_t position, unsigned long length) {
  return "--ir " + std::to_string(position) + "=" + std::to_string(length);
}

/// "; XCR3064XL has 5": a device that matches as well, and has this length.
std::string OtherOfLength(const ChainPosition& position, unsigned long length) {
  for (const Candidate& candidate : position.Candidates()) {
    if (candidate.device->GetIRLength() != length) continue;
    return "; " + DeviceName(*candidate.device) + " has " + std::to_string(length);
  }
  return "";
}

/// Notes a match that rests on 8 bits only.
void AddLowByteNote(std::size_t i, const ChainPosition& position, std::vector<std::string>& notes) {
  if (position.Candidates().empty() || !position.Candidates().front().onlyLowByte) return;
  notes.push_back(At(i) + DeviceName(*position.Match()) +
                  " answers by the low byte of its ISP identifier only (DUAL), which is hardly evidence");
}

void AddHint(std::size_t i, const ChainPosition& position, std::vector<std::string>& notes) {
  const std::string hint = position.Match() == nullptr ? "" : HintOn(*position.Match());
  if (!hint.empty()) notes.push_back(At(i) + DeviceName(*position.Match()) + ": " + hint);
}

/// Notes an IR length of the scan or of the user that is not the described one, or that only the scan knows.
void AddLengthNotes(std::size_t i, const ChainPosition& position, const ScannedTap& tap, std::vector<std::string>& notes) {
  const unsigned long described = position.Match() == nullptr ? 0 : position.Match()->GetIRLength();
  const auto differs = [&](const std::string& who, unsigned long length) {
    notes.push_back(At(i) + who + " IR length " + std::to_string(length) + ", but " + DeviceName(*position.Match()) + " has " +
                    std::to_string(described) + OtherOfLength(position, length));
  };
  if (position.IrLength() == 0 && tap.irLength != 0) {
    notes.push_back(At(i) + "the scan shows IR length " + std::to_string(tap.irLength) + ", perhaps a guess; take it with " +
                    Give(i, tap.irLength) + " or --trust-ir");
  }
  if (described == 0) return;
  if (tap.irLength != 0 && tap.irLength != described) differs("the scan shows", tap.irLength);
  if (position.givenIrLength != 0 && position.givenIrLength != described) differs("--ir gives", position.givenIrLength);
}

/// Compares the lengths with that of the whole chain, where the tool measured it: it settles one missing length.
void AddTotalNotes(const Scan& scan, const Chain& chain, std::vector<std::string>& notes) {
  unsigned long known = 0;
  std::vector<std::size_t> missing;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    known += chain[i].IrLength();
    if (chain[i].IrLength() == 0) missing.push_back(i);
  }
  const unsigned long measured = scan.irLength;
  const std::string measuredText = "the scan shows that the chain has IR length " + std::to_string(measured);
  if (measured == 0) return;
  if (missing.size() == 1 && known < measured) {
    notes.push_back(measuredText + ", which leaves " + std::to_string(measured - known) + ": " +
                    Give(missing[0], measured - known));
  } else if (missing.empty() ? known != measured : known >= measured) {
    notes.push_back(measuredText + ", but the known lengths sum up to " + std::to_string(known));
  }
}

}  // namespace

std::vector<std::string> Notes(const Scan& scan, const Chain& chain) {
  std::vector<std::string> notes = scan.notes;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    AddLowByteNote(i, chain[i], notes);
    AddLengthNotes(i, chain[i], scan.taps[i], notes);
    AddHint(i, chain[i], notes);
  }
  AddTotalNotes(scan, chain, notes);
  return notes;
}

}  // namespace plddb::chain
