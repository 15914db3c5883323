#pragma once

#include <string_view>
#include <vector>

#include "bsdl/Bsdl.h"

/// \file
/// The places of values in a description file.

namespace plddb::bsdl {

/// The children of `parent` that are called `name`: the nth one made the nth record.
inline std::vector<const Element*> ChildrenOf(const Element& parent, std::string_view name) {
  std::vector<const Element*> children;
  for (const Element& child : parent.children) {
    if (child.name == name) children.push_back(&child);
  }
  return children;
}

/// The place of the attribute's value, or of the element that lacks it.
inline Place PlaceOf(const Element& element, std::string_view attribute) {
  const plddb::Attribute* const written = FindAttribute(element, attribute);
  return written == nullptr ? Place{element.line, element.column} : Place{written->line, written->column};
}

}  // namespace plddb::bsdl
