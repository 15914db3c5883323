#pragma once

#include <functional>
#include <pugixml.hpp>

#include "descriptions/Descriptions.h"
#include "descriptions/text_position.h"

namespace plddb::descriptions {

/// Says where a name or value that the parser lends stands. It is asked in the order of the text.
using Locate = std::function<TextPosition(const char*)>;

/// `node` and all in it, as elements that show the texts of the parsed document. Descriptions are a few levels deep, and so is
/// the recursion.
Element ToElement(pugi::xml_node node, const Locate& locate);

}  // namespace plddb::descriptions
