#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
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
using plddb::chain::HintOn;
using plddb::chain::IsNeighbour;
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

/// Where the answer goes, in blocks: that for a million ids is never in memory as a whole.
class Output {
 public:
  /// `write` takes a block. What it throws passes through operator<< and Flush.
  explicit Output(std::function<void(const std::string& block)> write) : write_(std::move(write)) {}
  void operator<<(std::string_view text);
  void Flush();

 private:
  std::function<void(const std::string& block)> write_;
  std::string block_;
};

/// \name The forms
///@{
void TextOutput(const IdentifiedChain& identified, Output& output);     ///< For people; ends with the notes.
void TsvOutput(const IdentifiedChain& identified, Output& output);      ///< A header line, then a line for each position.
void JsonOutput(const IdentifiedChain& identified, Output& output);     ///< An array with an object for each position.
void OpenOcdOutput(const IdentifiedChain& identified, Output& output);  ///< The chain for OpenOCD's configuration.
void SvgOutput(const IdentifiedChain& identified, Output& output);      ///< A drawing, from TDI to TDO.
///@}

/// "OpenOCD log, 3 TAPs, nearest TDO first".
std::string ScanText(const Scan& scan);

/// "nearest TDO first", "nearest TDI first", "order as printed".
const char* OrderText(End nearest);

/// plddb::chain::Notes.
std::vector<std::string> Notes(const IdentifiedChain& identified);

/// "IR length of the chain: 18 bits", and what it depends on; in lines, after an empty one.
std::string TotalIrLength(const Chain& chain);

/// plddb::chain::KindText.
std::string KindText(const IdentifiedChain& identified, const ChainPosition& position);

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

/// What positions have in common that were read and answered alike.
inline std::uint64_t AnswerKey(const ChainPosition& position) {
  return std::uint64_t{position.IrLength()} << 33 | std::uint64_t{position.id.has_value()} << 32 |
         std::uint64_t{position.id.value_or(0)};
}

/// Positions, those with equal answers together.
struct EqualPositions {
  std::vector<std::vector<std::size_t>> groups;  ///< In the order of the first position of each; 1,000 at most.
  std::size_t more = 0;                          ///< How many groups follow.
};

/// Groups the positions for which `rule(position)` holds.
template <typename Rule>
EqualPositions EqualPositionsWhere(const Chain& chain, Rule rule) {
  constexpr std::size_t most = 1000;
  EqualPositions equal;
  std::unordered_map<std::uint64_t, std::size_t> groupOf;
  std::vector<std::uint64_t> others;  // answers beyond those, which are only counted
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (!rule(chain[i])) continue;
    const std::uint64_t key = AnswerKey(chain[i]);
    const auto known = groupOf.find(key);
    if (known != groupOf.end()) {
      equal.groups[known->second].push_back(i);
    } else if (groupOf.size() < most) {
      groupOf.emplace(key, groupOf.size());
      equal.groups.push_back({i});
    } else {
      others.push_back(key);
    }
  }
  std::sort(others.begin(), others.end());
  equal.more = static_cast<std::size_t>(std::unique(others.begin(), others.end()) - others.begin());
  return equal;
}

/// Texts of positions, made once for equal known ids: a measured tenth of the time for a million. Unknown ids of a long list
/// differ as a rule, and are not kept.
class AnswerTexts {
 public:
  template <typename Make>
  const std::string& Of(const ChainPosition& position, const ScannedTap& tap, Make make) {
    const bool isPlain = tap.name.empty() && tap.irLength == 0 && position.Match() != nullptr;
    if (!isPlain) return single_ = make();
    if (size_ > kMostBytes) texts_.clear(), size_ = 0;
    const auto [text, isNew] = texts_.try_emplace(AnswerKey(position));
    if (isNew) size_ += (text->second = make()).size();
    return text->second;
  }

 private:
  static constexpr std::size_t kMostBytes = 1 << 26;
  std::unordered_map<std::uint64_t, std::string> texts_;
  std::string single_;  // the last one that is not kept
  std::size_t size_ = 0;
};

}  // namespace tool
