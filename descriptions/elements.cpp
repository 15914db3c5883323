#include "elements.h"

#include <algorithm>

namespace plddb::descriptions {

Element ToElement(pugi::xml_node node, const Locate& locate) {
  const TextPosition name = locate(node.name());
  Element element = {node.name(), name.line, std::max(name.column - 1, 0), {}, {}};  // at the '<'
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const TextPosition value = locate(attribute.value());
    element.attributes.push_back({attribute.name(), attribute.value(), value.line, value.column});
  }
  for (const pugi::xml_node child : node.children()) element.children.push_back(ToElement(child, locate));
  return element;
}

}  // namespace plddb::descriptions
