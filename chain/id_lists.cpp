#include <algorithm>
#include <charconv>
#include <string>
#include <vector>

#include "chain/Chain.h"
#include "chain/faults.h"
#include "chain/ids.h"
#include "chain/scan_words.h"
#include "foundation/text_match.h"

namespace plddb::chain {
namespace {

constexpr std::string_view kSeparators = " \t,;=\"`*>|[](){}";

std::optional<unsigned int> IdOfBits(std::string_view bits) {
  unsigned int id = 0;
  const bool isId = bits.size() == 32 && std::from_chars(bits.data(), bits.data() + 32, id, 2).ptr == bits.data() + 32;
  return isId ? std::optional(id) : std::nullopt;
}

/// "0x0362_D093", "0x0362d093UL", "0362D093h", "32'h0362D093", "32'b0000...", "0b0000...", "0000..." of 32 bits.
std::optional<unsigned int> ListedId(std::string_view word) {
  std::string plain(word);
  plain.erase(std::remove(plain.begin(), plain.end(), '_'), plain.end());
  std::string_view text = plain;
  while (!text.empty() && text.front() == '\'') text.remove_prefix(1);
  while (!text.empty() && text.back() == '\'') text.remove_suffix(1);
  const bool isPrefixed = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
  while (isPrefixed && !text.empty() && std::string_view("uUlL").find(text.back()) != text.npos) text.remove_suffix(1);
  if (text.substr(0, 4) == "32'b" || text.substr(0, 2) == "0b") return IdOfBits(text.substr(text.find('b') + 1));
  const bool isVerilog = text.substr(0, 4) == "32'h" || text.substr(0, 4) == "32'H";
  if (isVerilog) text.remove_prefix(4);
  if (!isPrefixed && text.size() == 9 && (text.back() == 'h' || text.back() == 'H')) text.remove_suffix(1);
  if (isVerilog && (text.empty() || text.size() > 8)) return std::nullopt;
  const auto bits = IdOfBits(text);
  return bits ? bits : ParseId(text);
}

/// The words of a line, without its comment, and without what declares an array before its brace.
std::vector<std::string_view> ListWords(std::string_view line) {
  line = IdPart(line.substr(0, line.find("//")));
  if (const std::size_t brace = line.find('{'); brace != line.npos) line.remove_prefix(brace);
  std::vector<std::string_view> words;
  for (std::size_t start = 0; (start = line.find_first_not_of(kSeparators, start)) != line.npos;) {
    const std::size_t end = std::min(line.find_first_of(kSeparators, start), line.size());
    words.push_back(line.substr(start, end - start));
    start = end;
  }
  return words;
}

/// What may come before an id: "-", "IDCODE:", or its number, "0:" or "1.".
bool IsLabel(std::string_view word, std::size_t position) {
  if (word == "-") return true;
  if (word.size() > 1 && (word.back() == ':' || word.back() == '.')) word.remove_suffix(1);
  const std::string name(word);
  if (internal::EqualIgnoringCase(name.c_str(), "idcode") || internal::EqualIgnoringCase(name.c_str(), "id")) return true;
  const auto number = WholeNumber(word);
  return number && word.size() < 5 && (*number == position || *number == position + 1);
}

/// Adds the ids of `line`; false, and none are added, if it holds anything else.
bool TakeIds(std::string_view line, std::vector<ScannedTap>& taps) {
  const std::size_t before = taps.size();
  for (const std::string_view word : ListWords(line)) {
    if (const auto id = ListedId(word)) {
      taps.push_back({"", id});
    } else if (!IsLabel(word, taps.size())) {
      taps.resize(before);
      return false;
    }
  }
  return true;
}

}  // namespace

bool IsIdList(std::string_view line) {
  std::vector<ScannedTap> taps;
  return TakeIds(line, taps) && !taps.empty();
}

ScanResult ReadIdLists(std::string_view text) {
  ScanResult result;
  Scan scan;
  ForEachLine(text, [&](std::string_view line, int number) {
    if (TakeIds(line, scan.taps)) return;
    const std::string_view part = IdPart(line);
    AddFault(result, {number, static_cast<int>(part.data() - line.data()) + 1, NotAnId(part)});
  });
  if (result.faults.empty()) result.scan = std::move(scan);
  return result;
}

}  // namespace plddb::chain
