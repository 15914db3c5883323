#include "elements.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace plddb::descriptions {
namespace {

template <class Range>
std::size_t SizeOf(const Range& range) {
  return static_cast<std::size_t>(std::distance(range.begin(), range.end()));
}

}  // namespace

bool IsSchemaHint(std::string_view name) {
  return name == "xmlns" || name.substr(0, 6) == "xmlns:" || name.substr(0, 4) == "xsi:";
}

Element OutlineMaker::Root(pugi::xml_node document) {
  Element file;
  AddChildren(file, document);
  return file.children.empty() ? Element() : std::move(file.children.front());
}

/// Recursive: descriptions are only a few levels deep.
Element OutlineMaker::ToElement(pugi::xml_node node) {
  const TextPosition name = PositionOf(node.name());
  Element element = {node.name(), name.line, std::max(name.column - 1, 0), {}, {}};  // at the '<'
  element.attributes.reserve(SizeOf(node.attributes()));
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const TextPosition value = PositionOf(attribute.value());
    element.attributes.push_back({attribute.name(), attribute.value(), value.line, value.column});
  }
  AddChildren(element, node);
  return element;
}

void OutlineMaker::AddChildren(Element& element, pugi::xml_node node) {
  element.children.reserve(SizeOf(node.children()));
  std::size_t waiting = 0;                // the number of comments whose element comes next
  bool isBeside = !element.name.empty();  // whether the last comment was beside; the start of a file has none beside it
  for (const pugi::xml_node child : node.children()) {
    if (child.type() == pugi::node_comment) {
      isBeside = isBeside && IsBeside(child);
      waiting += isBeside ? 0 : 1;
      Comment& comment = comments_.emplace_back();
      comment.text = child.value();
      if (!isBeside) continue;
      const Element& owner = element.children.empty() ? element : element.children.back();
      comment.place = element.children.empty() ? Comment::Place::kBesideStart : Comment::Place::kBeside;
      comment.line = owner.line;
      comment.column = owner.column;
      continue;
    }
    const std::size_t first = comments_.size() - waiting;
    const Element& made = element.children.emplace_back(ToElement(child));
    for (; waiting > 0; --waiting) {
      Comment& comment = comments_[first + waiting - 1];
      comment.line = made.line;
      comment.column = made.column;
    }
    isBeside = true;
  }
  for (; waiting > 0; --waiting) {
    Comment& comment = comments_[comments_.size() - waiting];
    comment.place = Comment::Place::kBeforeEnd;
    comment.line = element.line;
    comment.column = element.column;
  }
}

/// Whether a tag or another comment precedes it on its line, and nothing follows it.
bool OutlineMaker::IsBeside(pugi::xml_node comment) const {
  constexpr std::size_t kOpening = 4;  // "<!--"
  const std::size_t start = offset_(comment.value());
  const std::size_t before = start > kOpening ? text_.find_last_not_of(" \t", start - kOpening - 1) : text_.npos;
  const std::size_t end = text_.find("-->", start);
  if (before == text_.npos || text_[before] != '>' || end == text_.npos) return false;
  const std::size_t after = text_.find_first_not_of(" \t", end + 3);
  return after == text_.npos || text_[after] == '\r' || text_[after] == '\n';
}

}  // namespace plddb::descriptions
