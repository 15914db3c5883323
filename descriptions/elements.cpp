#include "elements.h"

#include <algorithm>
#include <iterator>

namespace plddb::descriptions {
namespace {

template <class Range>
std::size_t SizeOf(const Range& range) {
  return static_cast<std::size_t>(std::distance(range.begin(), range.end()));
}

}  // namespace

Element ToElement(pugi::xml_node node, const Locate& locate) {
  const TextPosition name = locate(node.name());
  Element element = {node.name(), name.line, std::max(name.column - 1, 0), {}, {}};  // at the '<'
  element.attributes.reserve(SizeOf(node.attributes()));
  element.children.reserve(SizeOf(node.children()));
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const TextPosition value = locate(attribute.value());
    element.attributes.push_back({attribute.name(), attribute.value(), value.line, value.column});
  }
  for (const pugi::xml_node child : node.children()) element.children.push_back(ToElement(child, locate));
  return element;
}

}  // namespace plddb::descriptions
