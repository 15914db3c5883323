#pragma once

#include <string>
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
using plddb::chain::NearDevice;
using plddb::chain::Scan;
using plddb::chain::ScannedTap;

using plddb::chain::DescriptionStub;
using plddb::chain::KindOf;
using plddb::chain::SplitIdcode;

/// An identified chain and all that is needed to show it.
struct IdentifiedChain {
  const std::vector<Database>& databases;
  const plddb::chain::DeviceFinder& finder;  ///< Over the databases.
  std::string comm;
  Scan scan;    ///< What was read.
  Chain chain;  ///< Who answers; one position for each TAP of the scan.
};

/// \name The forms
///@{
std::string TextOutput(const IdentifiedChain& identified);  ///< For people; ends with the notes.
std::string TsvOutput(const IdentifiedChain& identified);   ///< A head line, then a line for each position; tabs between cells.
std::string JsonOutput(const IdentifiedChain& identified);  ///< An array with an object for each position.
std::string OpenOcdOutput(const IdentifiedChain& identified);  ///< The chain for OpenOCD's configuration.
///@}

/// "OpenOCD log, 3 TAPs, nearest TDO first".
std::string ScanText(const Scan& scan);

/// What a reader of the chain should know: oddities of the scan, IR lengths that do not agree or that are missing. One line
/// each.
std::vector<std::string> Notes(const IdentifiedChain& identified);

/// The file of a database.
inline const std::string& FileOf(const IdentifiedChain& identified, std::size_t database) {
  return identified.databases[database].file;
}

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
