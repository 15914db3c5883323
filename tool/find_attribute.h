#pragma once

#include <algorithm>
#include <string_view>

#include "Descriptions.h"

namespace tool {

/// The attribute as it is written in `element`, null where it is left out; lent.
inline const plddb::Attribute* FindAttribute(const plddb::Element& element, std::string_view name) {
  const auto found = std::find_if(element.attributes.begin(), element.attributes.end(),
                                  [&](const plddb::Attribute& attribute) { return attribute.name == name; });
  return found == element.attributes.end() ? nullptr : &*found;
}

}  // namespace tool
