#include "chain_ids.h"

#include <algorithm>
#include <charconv>

#include "command.h"

namespace tool {
namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
constexpr const char* kExpected = "expected 8 hex digits, or 0x and 1 to 8 hex digits";

/// `text` in quotes, cut when it is long; what could disturb a terminal is shown as '?'.
std::string Quoted(std::string_view text) {
  constexpr std::size_t longest = 40;
  std::string quoted = "'";
  for (const char c : text.substr(0, longest)) quoted += c >= ' ' && c <= '~' ? c : '?';
  return quoted + (text.size() > longest ? "...'" : "'");
}

std::string NotAnId(std::string_view text) { return Quoted(text) + " is not an id: " + kExpected; }

/// Collects messages, one per line; of very many the first ones and their number.
class Messages {
 public:
  void Add(const std::string& message) {
    if (count_++ < kMost) text_ += (text_.empty() ? "" : "\n") + message;
  }
  void ThrowIfAny() const {
    const std::string more = count_ > kMost ? "\nand " + std::to_string(count_ - kMost) + " more" : "";
    if (count_ != 0) throw Failure(text_ + more);
  }

 private:
  static constexpr std::size_t kMost = 100;
  std::string text_;
  std::size_t count_ = 0;
};

}  // namespace

std::optional<unsigned int> ParseId(std::string_view text) {
  const bool prefixed = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
  if (prefixed) text.remove_prefix(2);
  if (text.empty() || text.size() > 8 || (!prefixed && text.size() < 8)) return std::nullopt;
  unsigned int id = 0;
  const char* const end = text.data() + text.size();
  if (std::from_chars(text.data(), end, id, 16).ptr != end) return std::nullopt;
  return id;
}

std::string_view IdPart(std::string_view line) {
  line = line.substr(0, line.find('#'));
  line = line.substr(0, line.find_last_not_of(kWhiteSpace) + 1);  // only white space: npos + 1 is 0
  return line.substr(std::min(line.find_first_not_of(kWhiteSpace), line.size()));
}

std::string FaultPlace(const std::string& name, std::size_t line, std::size_t column) {
  return name + ":" + std::to_string(line) + ":" + std::to_string(column) + ": error: ";
}

std::vector<unsigned int> IdsFromArguments(const std::vector<std::string>& arguments) {
  std::vector<unsigned int> ids;
  Messages wrong;
  for (const std::string& argument : arguments) {
    if (const auto id = ParseId(argument)) {
      ids.push_back(*id);
    } else {
      wrong.Add("plddb: error: " + NotAnId(argument));
    }
  }
  wrong.ThrowIfAny();
  return ids;
}

std::vector<unsigned int> IdsFromText(std::string_view text, const std::string& name) {
  std::vector<unsigned int> ids;
  Messages wrong;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    const std::string_view part = IdPart(line);
    if (part.empty()) continue;
    if (const auto id = ParseId(part)) {
      ids.push_back(*id);
    } else {
      wrong.Add(FaultPlace(name, number, static_cast<std::size_t>(part.data() - line.data()) + 1) + NotAnId(part));
    }
  }
  wrong.ThrowIfAny();
  if (ids.empty()) throw Failure(name + ":1:1: error: no id; expected one per line");
  return ids;
}

}  // namespace tool
