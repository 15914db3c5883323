#include "splice.h"

#include <algorithm>

#include "foundation/characters.h"

namespace plddb::bsdl {
namespace {

using internal::kByteOrderMark;

/// What begins with `open` goes on until `close`.
constexpr struct {
  std::string_view open;
  std::string_view close;
} kPassedOver[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};

}  // namespace

void Splice::PutAtEnd(std::string_view name, int line, int column, std::string_view indent, const std::string& lines) {
  if (lines.empty()) return;
  const std::size_t start = EndOfStartTag(OffsetOf(line, column));
  if (text_[start - 1] == '/') {
    edits_.push_back({start - 1, 2, ">\n" + lines + std::string(indent) + "</" + std::string(name) + ">"});
    return;
  }
  std::size_t at = EndTag(name, start);
  while (internal::IsWhiteSpace(text_[at - 1])) --at;
  const bool isOnOneLine = text_.find('\n', at) >= EndTag(name, start);
  const std::string last = isOnOneLine ? lines + std::string(indent) : lines.substr(0, lines.size() - 1);
  edits_.push_back({at, 0, "\n" + last});
}

std::string Splice::Result() {
  std::stable_sort(edits_.begin(), edits_.end(), [](const Edit& a, const Edit& b) { return a.at < b.at; });
  std::string result;
  std::size_t done = 0;
  for (const Edit& edit : edits_) {
    result.append(text_, done, edit.at - done).append(edit.text);
    done = edit.at + edit.erased;
  }
  return result.append(text_, done);
}

std::size_t Splice::OffsetOf(int line, int column) const {
  std::size_t at = text_.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0 ? kByteOrderMark.size() : 0;
  for (; line > 1; --line) at = text_.find('\n', at) + 1;
  return at + static_cast<std::size_t>(column) - 1;
}

/// Of its '>'.
std::size_t Splice::EndOfStartTag(std::size_t at) const {
  char quote = '\0';
  for (; text_[at] != '>' || quote != '\0'; ++at) {
    const char c = text_[at];
    if (quote == '\0' ? c == '"' || c == '\'' : c == quote) quote = quote == '\0' ? c : '\0';
  }
  return at;
}

/// Of the '<' of "</name", after `at`; no element is within another of its name.
std::size_t Splice::EndTag(std::string_view name, std::size_t at) const {
  const std::string tag = "</" + std::string(name);
  for (;;) {
    at = text_.find('<', at);
    if (text_.compare(at, tag.size(), tag) == 0) return at;
    std::size_t next = at + 1;
    for (const auto& [open, close] : kPassedOver) {
      if (text_.compare(at, open.size(), open) == 0) next = text_.find(close, at + open.size()) + close.size();
    }
    at = next;
  }
}

}  // namespace plddb::bsdl
