#include <algorithm>
#include <cctype>
#include <map>

#include "device_text.h"
#include "identify/output.h"

namespace tool {
namespace {

/// `text` as a word of OpenOCD's language that needs no quotes, in lower case as names of TAPs are.
std::string TclWord(const std::string& text) {
  std::string word;
  for (const char c : text) {
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (!isPlain && (word.empty() || word.back() == '_')) continue;
    word += isPlain ? static_cast<char>(std::tolower(c)) : '_';
  }
  while (!word.empty() && word.back() == '_') word.pop_back();
  return word.empty() ? "tap" : word;
}

/// The names that are taken, each with the last number after it that is.
using TakenNames = std::map<std::string, int>;

/// "xc7a35t", and "xc7a35t_2" where that is taken.
std::string UniqueName(const std::string& name, TakenNames& taken) {
  std::string unique = name;
  int& last = taken[name];
  if (last++ == 0) return unique;
  while (!taken.emplace(unique = name + "_" + std::to_string(last), 1).second) ++last;
  return unique;
}

std::string TapName(const ChainPosition& position, std::size_t number) {
  return position.Match() == nullptr ? "unknown" + std::to_string(number) : TclWord(DeviceName(*position.Match()));
}

/// A comment runs to the end of its line, and on to the next one after a backslash, which is replaced.
std::string Comment(const std::string& text) {
  std::string line = "# " + text;
  std::replace(line.begin(), line.end(), '\\', '/');
  return line + "\n";
}

std::string Others(const ChainPosition& position, std::size_t number) {
  if (!position.IsAmbiguous()) return "";
  std::string text = "position " + std::to_string(number) + ": more than one device matches; most exact first:";
  for (const Candidate& candidate : MostExactFirst(position)) {
    text += (text.back() == ':' ? " " : ", ") + DeviceName(*candidate.device) + " (-irlen " + IrLengthText(*candidate.device) +
            ", " + Reason(candidate) + (candidate.searchOrder == 1 ? ", taken" : "") + ")";
  }
  return Comment(text);
}

/// Whether the match leaves out the version: another revision of the die is the same device.
bool IgnoresVersion(const IdentifiedChain& identified, const ChainPosition& position) {
  constexpr unsigned int versionBits = 0xF0000000;
  if (!identified.scan.hasVersions) return true;
  if (position.Match() == nullptr) return false;
  const Candidate& match = position.Candidates().front();
  return !match.onlyLowByte && (match.bits & versionBits) == 0;
}

/// The id that OpenOCD should read there. None where there is no IDCODE: it would compare 0, or a BYPASS bit and what follows
/// it. In the access mode DUAL even such an id may have a match, by its low byte.
std::string ExpectedId(const IdentifiedChain& identified, const ChainPosition& position) {
  if (!KindOf(identified.comm, position.id).isIdcode) return "";
  std::string id = IdText(*position.id);
  std::transform(id.begin(), id.end(), id.begin(), [](char c) { return static_cast<char>(std::tolower(c)); });
  return " -expected-id " + id + (IgnoresVersion(identified, position) ? " -ignore-version" : "");
}

/// The device that an unknown id was meant to be.
std::string MisreadComment(const IdentifiedChain& identified, std::size_t number) {
  const ChainPosition& position = identified.chain[number];
  if (position.Match() != nullptr || !position.id) return "";
  const auto misread = identified.finder.MisreadOf(*position.id);
  if (!misread) return "";
  return Comment("position " + std::to_string(number) + ": " + IdText(*position.id) + " is probably " + IdText(misread->id) +
                 " (" + DeviceName(*misread->device) + "), " + misread->how);
}

std::string NewTap(const IdentifiedChain& identified, std::size_t number, TakenNames& taken) {
  const ChainPosition& position = identified.chain[number];
  const unsigned long length = position.IrLength();
  const std::string line = "jtag newtap " + UniqueName(TapName(position, number), taken) + " tap -irlen " +
                           (length == 0 ? "?" : std::to_string(length)) + ExpectedId(identified, position);
  const std::string give = "  give --ir " + std::to_string(number) + "=LENGTH";
  return Others(position, number) + MisreadComment(identified, number) + (length == 0 ? Comment(line + give) : line + "\n");
}

std::string Head(const IdentifiedChain& identified) {
  const std::string scan = identified.scan.format.empty() ? "" : Comment("Scan: " + ScanText(identified.scan));
  const std::string open = PositionsWhere(identified.chain, [](const auto& position) { return position.IrLength() == 0; });
  return scan + (open.empty() ? "" : Comment("Incomplete: the IR length is not known at " + open + "."));
}

/// What a reader has to know of the order of the lines.
std::string OrderComment(End nearest) {
  switch (nearest) {
    case End::kTdo:
      return "";
    case End::kTdi:
      return Comment("The lines are in the order nearest TDO first: the last position is the first line.");
    case End::kAsPrinted:
      break;
  }
  return Comment("The order of the scan is not known; nearest TDO first is assumed. --order tdi reverses it.");
}

}  // namespace

void OpenOcdOutput(const IdentifiedChain& identified, Output& output) {
  output << Head(identified);
  for (const std::string& note : Notes(identified)) output << Comment(note);
  output << OrderComment(identified.scan.nearest);
  TakenNames taken;
  const std::size_t size = identified.chain.size();
  for (std::size_t i = 0; i < size; ++i) {
    output << NewTap(identified, identified.scan.nearest == End::kTdi ? size - 1 - i : i, taken);
  }
}

}  // namespace tool
