#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "module.h"

namespace plddb::python {

/// A device that answers to an id. `found.device` may be used while `device` is not deleted.
struct Candidate {
  Held<DeviceInfo> device;
  chain::Candidate found;
};

/// What `identify` answers.
struct Chain {
  std::shared_ptr<Tree> tree;
  std::string comm;
  chain::Scan scan;
  chain::Chain chain;
  std::vector<std::shared_ptr<const std::vector<Candidate>>> candidates;  // of each position
};

/// A position of an answer.
struct Position {
  std::shared_ptr<const Chain> answer;
  std::size_t index;

  std::optional<unsigned int> Id() const { return answer->chain[index].id; }
  const std::vector<Candidate>& Candidates() const { return *answer->candidates[index]; }
  const chain::ChainPosition& Found() const;  ///< Throws Deleted when a device that answers was deleted.
};

void AddUnknownIds(py::module_& module);         // unknown_ids.cpp
void AddPositions(py::module_& module);          // positions.cpp
py::object UnknownOf(const Position& position);  // unknown_ids.cpp: None for a known id

/// Throws Deleted when a device that answers was deleted.
void CheckCandidates(const Chain& chain);

/// What Python holds a lent device by. The tree is the module's own, so that its records may be written.
inline Held<DeviceInfo> HoldLent(Tree& tree, const DeviceInfo* device) { return tree.Hold(const_cast<DeviceInfo*>(device)); }

/// Calls `read()` while others use Python, and once more when somebody wrote meanwhile: what it found is there on return. Where
/// others never stop writing it keeps Python's lock in the end.
template <class Read>
void ReadUndisturbed(Tree& tree, Read read) {
  for (int attempts = 0; attempts < 3; ++attempts) {
    unsigned long version = 0;
    {
      const Reading reading(tree);
      version = tree.Version();
      read();
    }
    if (version == tree.Version()) return;
  }
  read();
}

/// Calls `ask(finder)`, and then `hold()` before anything can be deleted. Lets others use Python where many ids are asked.
template <class Ask, class HoldAll>
void AskFinder(Tree& tree, const std::string& comm, std::size_t ids, Ask ask, HoldAll hold) {
  constexpr std::size_t kFew = 100;
  if (ids > kFew || !tree.TryWithFinder(comm, ids, ask)) {
    ReadUndisturbed(tree, [&] { tree.WithFinder(comm, ids, ask); });
  }
  hold();
}

}  // namespace plddb::python
