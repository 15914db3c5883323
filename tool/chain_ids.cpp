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

/// Collects messages, one per line.
class Messages {
 public:
  void Add(const std::string& message) { text_ += (text_.empty() ? "" : "\n") + message; }
  void ThrowIfAny() const {
    if (!text_.empty()) throw Failure(text_);
  }

 private:
  std::string text_;
};

/// The content of a line without its comment and the white space after it. What is before it stays, so that columns can be
/// counted.
std::string_view WithoutComment(std::string_view line) {
  line = line.substr(0, line.find('#'));
  return line.substr(0, line.find_last_not_of(kWhiteSpace) + 1);  // only white space: npos + 1 is 0
}

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
  for (int number = 1; !text.empty(); ++number) {
    const std::string_view content = WithoutComment(text.substr(0, text.find('\n')));
    text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
    const std::size_t start = content.find_first_not_of(kWhiteSpace);
    if (start == content.npos) continue;
    if (const auto id = ParseId(content.substr(start))) {
      ids.push_back(*id);
    } else {
      wrong.Add(name + ":" + std::to_string(number) + ":" + std::to_string(start + 1) +
                ": error: " + NotAnId(content.substr(start)));
    }
  }
  wrong.ThrowIfAny();
  if (ids.empty()) throw Failure(name + ":1:1: error: no id; expected one per line");
  return ids;
}

}  // namespace tool
