#pragma once

#include <optional>
#include <string>
#include <vector>

#include "databases.h"

namespace tool {

/// A device that answers to an id, where it comes from, and how surely it is the one.
struct Candidate {
  const DeviceInfo* device;
  const Database* database;
  unsigned int bits;   ///< Those that were compared.
  bool only_low_byte;  ///< Found by the low byte of its ISP identifier, as the access mode DUAL allows.
  int search_order;    ///< From 1: the library finds the first.
};

/// One position of a chain: the id that was read there and who answers to it.
struct ChainPosition {
  std::optional<unsigned int> id;          ///< None where a TAP gave its BYPASS bit instead.
  const DeviceInfo* match = nullptr;       ///< What the library finds first; null for an unknown id.
  std::vector<Candidate> candidates = {};  ///< All that answer, in search order: the first is `match`.
  unsigned long given_ir_length = 0;       ///< What the user says; 0 when nothing.
  bool IsAmbiguous() const { return candidates.size() > 1; }
  unsigned long IrLength() const;  ///< What the user says, or else the match; 0 when it is not known.
};

using Chain = std::vector<ChainPosition>;

/// Identifies `id` in the access mode `comm` by GetDeviceWithCommAndID, in each database in turn.
ChainPosition Identify(const std::vector<Database>& databases, const std::string& comm, std::optional<unsigned int> id);

int BitCount(unsigned int bits);

/// The candidates of `position`, those of more compared bits first; equal ones stay in search order.
std::vector<Candidate> MostExactFirst(const ChainPosition& position);

/// Why `candidate` answers: "all 32 bits", "masked 0x0FFFFFFF", "low byte only (DUAL)".
std::string Reason(const Candidate& candidate);

/// Takes each text "POSITION=LENGTH" over into the chain. Throws WrongUsage for one that is none, or names no position or one
/// for the second time.
void GiveIrLengths(Chain& chain, const std::vector<std::string>& texts);

/// "position 2", "positions 0, 2": those for which `rule(position)` holds; the empty text when there are none.
template <typename Rule>
std::string PositionsWhere(const Chain& chain, Rule rule) {
  std::string list;
  int count = 0;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (rule(chain[i])) list += (count++ == 0 ? "" : ", ") + std::to_string(i);
  }
  return count == 0 ? "" : (count == 1 ? "position " : "positions ") + list;
}

}  // namespace tool
