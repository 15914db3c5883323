#include "check/allowances.h"

#include <algorithm>

#include "descriptions/TextForms.h"
#include "descriptions/text_position.h"
#include "foundation/characters.h"

namespace plddb::check {
namespace {

using internal::kByteOrderMark;

using internal::StartsWith;

/// Markup in which a '<' starts nothing.
struct Opaque {
  std::string_view open;
  std::string_view close;
};

constexpr Opaque kComment = {"<!--", "-->"};
constexpr Opaque kOpaque[] = {kComment, {"<![CDATA[", "]]>"}, {"<?", "?>"}};

/// The length of the opaque markup that `text` begins with; 0 when it begins with none.
std::size_t OpaqueLength(std::string_view text) {
  for (const Opaque& markup : kOpaque) {
    if (!StartsWith(text, markup.open)) continue;
    const auto end = text.find(markup.close, markup.open.size());
    return end == text.npos ? text.size() : end + markup.close.size();
  }
  return 0;
}

bool TakeWord(std::string_view& text, std::string_view word) {
  text = internal::TrimLeft(text);
  if (!StartsWith(text, word)) return false;
  text.remove_prefix(word.size());
  return true;
}

/// The codes that the comment's inner text allows; none when it is about something else.
std::vector<std::string> AllowedCodes(std::string_view inner) {
  constexpr std::string_view betweenCodes = ", \t\r\n";
  std::vector<std::string> codes;
  if (!TakeWord(inner, "plddb:") || !TakeWord(inner, "allow")) return codes;
  inner = inner.substr(0, inner.find_first_of(":("));  // the reason follows
  for (auto first = inner.find_first_not_of(betweenCodes); first != inner.npos; first = inner.find_first_not_of(betweenCodes)) {
    inner.remove_prefix(first);
    codes.emplace_back(inner.substr(0, inner.find_first_of(betweenCodes)));
    inner.remove_prefix(codes.back().size());
  }
  if (codes.empty()) codes.emplace_back();
  return codes;
}

}  // namespace

Allowances::Allowances(std::string_view text) {
  if (StartsWith(text, kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  if (text.find("plddb:") == text.npos) return;  // the usual file
  descriptions::TextPositions positions(text);
  for (auto at = text.find('<'); at != text.npos;) {
    const std::string_view rest = text.substr(at);
    const std::size_t opaque = OpaqueLength(rest);
    const descriptions::TextPosition position = positions.At(at);
    if (StartsWith(rest, kComment.open)) {
      AddComment(rest.substr(kComment.open.size(), opaque - kComment.open.size() - kComment.close.size()), position.line,
                 position.column);
    } else if (StartsWith(rest, "</")) {
      pending_ = allowances_.size();  // what waits has no element
    } else if (opaque == 0 && !StartsWith(rest, "<!")) {
      AddElement(position.line, position.column);
    }
    at = text.find('<', at + std::max<std::size_t>(opaque, 1));
  }
}

void Allowances::AddComment(std::string_view comment, int line, int column) {
  for (std::string& name : AllowedCodes(comment)) allowances_.push_back({std::move(name), line, column, false});
}

void Allowances::AddElement(int line, int column) {
  if (pending_ == allowances_.size()) return;
  ofElement_[{line, column}] = {pending_, allowances_.size()};
  for (; pending_ < allowances_.size(); ++pending_) allowances_[pending_].hasElement = true;
}

bool Allowances::Allow(const Element& element, std::string_view code) {
  const auto range = ofElement_.find({element.line, element.column});
  if (range == ofElement_.end()) return false;
  for (std::size_t i = range->second.first; i < range->second.second; ++i) {
    const Code* const allowed = FindCode(allowances_[i].name);
    if (allowed == nullptr || allowed->name != code) continue;
    allowances_[i].isUsed = true;
    return true;
  }
  return false;
}

std::vector<Allowance> Allowances::Unused() const {
  std::vector<Allowance> unused;
  std::copy_if(allowances_.begin(), allowances_.end(), std::back_inserter(unused),
               [](const Allowance& allowance) { return !allowance.isUsed; });
  return unused;
}

std::string WhyUnused(const Allowance& allowance) {
  if (allowance.name.empty()) return "this comment names no code: expected <!-- plddb: allow CODE -->";
  if (FindCode(allowance.name) == nullptr) return "no finding has the code " + Quoted(allowance.name);
  if (!allowance.hasElement) return "no element follows that " + Quoted(allowance.name) + " could be allowed for";
  return "the start tag that follows has no finding " + Quoted(allowance.name);
}

}  // namespace plddb::check
