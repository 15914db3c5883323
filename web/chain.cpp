#include "Chain.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "identify/output.h"
#include "ir_lengths.h"
#include "json_text.h"
#include "page.h"

namespace web {
namespace {

using tool::IdentifiedChain;
using tool::Json;
using tool::ToText;

// What the page shows at most. The command shows all.
constexpr std::size_t kMostPositions = 200;
constexpr std::size_t kMostDrawn = 100;
constexpr std::size_t kMostInForms = 10000;
constexpr std::size_t kMostNotes = 50;

template <typename Fault>
Json FaultsJson(const std::vector<Fault>& faults) {
  Json json = Json::array();
  for (std::size_t i = 0; i < faults.size() && i < kMostFindings; ++i) {
    json.push_back({{"line", faults[i].line}, {"column", faults[i].column}, {"text", faults[i].text}});
  }
  return json;
}

/// The first `most` positions.
IdentifiedChain Beginning(const IdentifiedChain& whole, std::size_t most) {
  IdentifiedChain part = {whole.databases, whole.finder, whole.comm, {}, {}};
  const auto count = static_cast<std::ptrdiff_t>(std::min(most, whole.chain.size()));
  part.scan.format = whole.scan.format;
  part.scan.tool = whole.scan.tool;
  part.scan.nearest = whole.scan.nearest;
  part.scan.hasVersions = whole.scan.hasVersions;
  part.scan.taps.assign(whole.scan.taps.begin(), whole.scan.taps.begin() + count);
  part.chain.assign(whole.chain.begin(), whole.chain.begin() + count);
  return part;
}

std::string InForm(const IdentifiedChain& chain, void (*form)(const IdentifiedChain&, tool::Output&)) {
  std::string text;
  tool::Output output([&](const std::string& block) { text += block; });
  form(chain, output);
  output.Flush();
  return text;
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words(1);
  for (const char c : text) {
    const bool isBlank = c == ' ' || c == ',' || (c >= '\t' && c <= '\r');
    if (!isBlank) words.back() += c;
    if (isBlank && !words.back().empty()) words.emplace_back();
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

Json Summary(const IdentifiedChain& read) {
  std::size_t known = 0;
  std::size_t ambiguous = 0;
  for (const auto& position : read.chain) {
    if (position.Match() != nullptr) ++known;
    if (position.IsAmbiguous()) ++ambiguous;
  }
  std::vector<std::string> notes = Notes(read);
  const std::size_t moreNotes = notes.size() - std::min(notes.size(), kMostNotes);
  notes.resize(notes.size() - moreNotes);
  return {{"scan", read.scan.format.empty() ? Json(nullptr) : Json(tool::ScanText(read.scan))},
          {"count", read.chain.size()},
          {"known", known},
          {"ambiguous", ambiguous},
          {"irLength", tool::TotalIrLength(read.chain)},
          {"more", read.chain.size() - std::min(read.chain.size(), kMostPositions)},
          {"isDrawn", read.chain.size() <= kMostDrawn},
          {"notes", notes},
          {"moreNotes", moreNotes}};
}

/// The finder for the access mode; it is kept, since it is made of all databases.
plddb::chain::DeviceFinder& Finder(const std::string& comm) {
  Read& read = ThePage().read;
  if (read.finder == nullptr || read.comm != comm)
    read.finder = std::make_unique<plddb::chain::DeviceFinder>(ThePage().Lists(), comm);
  read.comm = comm;
  return *read.finder;
}

}  // namespace

std::string Identify(std::string_view text, std::string_view order, const std::string& comm, std::string_view irLengths,
                     bool trustsIrLengths) {
  Read& read = ThePage().read;
  read.chain.reset();
  plddb::chain::ScanResult result = plddb::chain::ReadScan(text);
  if (!result.scan) return ToText({{"faults", FaultsJson(result.faults)}, {"moreFaults", result.moreFaults}});
  plddb::chain::DeviceFinder& finder = Finder(comm);
  IdentifiedChain identified = {ThePage().databases, finder, comm, std::move(*result.scan), {}};
  if (!order.empty()) identified.scan.nearest = order == "tdo" ? tool::End::kTdo : tool::End::kTdi;
  for (const auto& tap : identified.scan.taps) identified.chain.push_back(finder.Identify(tap, trustsIrLengths));
  const std::string complaint = tool::TakeIrLengths(identified.chain, Words(irLengths));
  if (!complaint.empty()) return Failed(complaint);
  const std::string positions = InForm(Beginning(identified, kMostPositions), tool::JsonOutput);
  std::string answer = Joined({ToText(Summary(identified)), "{\"positions\":" + positions + "}"});
  read.chain.emplace(std::move(identified));
  return answer;
}

std::string Form(std::string_view name) {
  const std::optional<IdentifiedChain>& chain = ThePage().read.chain;
  if (!chain) return ToText({{"text", ""}});
  if (chain->chain.size() > kMostInForms) return Failed("the chain is too long for the page: use plddb identify");
  if (name == "openocd" && chain->comm == "ISP") return Failed("ISP identifiers are not IDCODEs");
  const auto form = name == "openocd" ? tool::OpenOcdOutput
                    : name == "json"  ? tool::JsonOutput
                    : name == "tsv"   ? tool::TsvOutput
                    : name == "svg"   ? tool::SvgOutput
                                      : tool::TextOutput;
  return ToText({{"text", InForm(*chain, form)}});
}

std::string Draw(std::size_t perRow) {
  const std::optional<IdentifiedChain>& chain = ThePage().read.chain;
  if (!chain || chain->chain.size() > kMostDrawn) return ToText({{"text", ""}});
  return ToText(
      {{"text", plddb::chain::Svg(chain->chain, chain->comm, chain->scan.nearest, std::max<std::size_t>(perRow, 1))}});
}

}  // namespace web
