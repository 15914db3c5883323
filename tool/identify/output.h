#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Chain.h"
#include "databases.h"

/// \file
/// What `plddb identify` prints: a chain in one of several forms, each in its own file.

namespace tool {

using plddb::chain::Candidate;
using plddb::chain::Chain;
using plddb::chain::ChainPosition;
using plddb::chain::End;
using plddb::chain::IdcodeFields;
using plddb::chain::IdKind;
using plddb::chain::Misread;
using plddb::chain::NearDevice;
using plddb::chain::Scan;
using plddb::chain::ScannedTap;

using plddb::chain::DescriptionStub;
using plddb::chain::KindOf;
using plddb::chain::MakerText;
using plddb::chain::SplitIdcode;

/// An identified chain and all that is needed to show it.
struct IdentifiedChain {
  const std::vector<Database>& databases;
  const plddb::chain::DeviceFinder& finder;  ///< Over the databases.
  std::string comm;
  Scan scan;    ///< What was read.
  Chain chain;  ///< Who answers; one position for each TAP of the scan.
};

/// Standard output, in blocks: the answer for a million ids is never in memory as a whole.
class Output {
 public:
  ~Output() = default;
  void operator<<(std::string_view text);
  void Flush();  ///< Throws Failure when the text does not get there, and so does operator<<.

 private:
  std::string block_;
};

/// \name The forms
///@{
void TextOutput(const IdentifiedChain& identified, Output& output);     ///< For people; ends with the notes.
void TsvOutput(const IdentifiedChain& identified, Output& output);      ///< A head line, then a line for each position.
void JsonOutput(const IdentifiedChain& identified, Output& output);     ///< An array with an object for each position.
void OpenOcdOutput(const IdentifiedChain& identified, Output& output);  ///< The chain for OpenOCD's configuration.
void SvgOutput(const IdentifiedChain& identified, Output& output);      ///< A drawing, from TDI to TDO.
///@}

/// "OpenOCD log, 3 TAPs, nearest TDO first".
std::string ScanText(const Scan& scan);

/// "nearest TDO first", "nearest TDI first", "order as printed".
const char* OrderText(End nearest);

/// What a reader of the chain should know: oddities of the scan, IR lengths that do not agree or that are missing, hints on
/// devices that are no programmable logic. One line each.
std::vector<std::string> Notes(const IdentifiedChain& identified);

/// What the device is: "logic", or the kind of a neighbour, which is its family's name; for an unknown id the kind of the id.
std::string KindText(const IdentifiedChain& identified, const ChainPosition& position);

/// The hint that a neighbour's description has; empty without one.
std::string HintOn(const DeviceInfo& device);

/// Whether the families that only neighbours of programmable logic are in hold `device`.
bool IsNeighbour(const DeviceInfo& device);

/// The file of a database.
inline const std::string& FileOf(const IdentifiedChain& identified, std::size_t database) {
  return identified.databases[database].file;
}

/// "position 2", "positions 0, 2"; of very many the first ones and their number.
std::string PositionList(const std::vector<std::size_t>& positions);

/// PositionList of those for which `rule(position)` holds; the empty text when there are none.
template <typename Rule>
std::string PositionsWhere(const Chain& chain, Rule rule) {
  std::vector<std::size_t> positions;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (rule(chain[i])) positions.push_back(i);
  }
  return PositionList(positions);
}

/// The positions at which one id was read and answered alike.
struct EqualPositions {
  std::vector<std::size_t> positions;
};

/// The positions for which `rule(position)` holds, equal ones together, in the order of the first of each.
template <typename Rule>
std::vector<EqualPositions> EqualPositionsWhere(const Chain& chain, Rule rule) {
  std::vector<EqualPositions> groups;
  std::unordered_map<std::uint64_t, std::size_t> groupOf;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (!rule(chain[i])) continue;
    const std::uint64_t key = std::uint64_t{chain[i].IrLength()} << 33 | std::uint64_t{chain[i].id.has_value()} << 32 |
                              std::uint64_t{chain[i].id.value_or(0)};
    const auto [group, isNew] = groupOf.try_emplace(key, groups.size());
    if (isNew) groups.emplace_back();
    groups[group->second].positions.push_back(i);
  }
  return groups;
}

}  // namespace tool
