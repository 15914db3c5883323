#pragma once

#include <functional>
#include <pugixml.hpp>
#include <string_view>
#include <vector>

#include "descriptions/Descriptions.h"
#include "descriptions/text_position.h"

namespace plddb::descriptions {

/// Whether an attribute of this name tells editors the schema of an element.
bool IsSchemaHint(std::string_view name);

/// Makes elements and comments from the nodes of a parsed document; they refer to its texts.
class OutlineMaker {
 public:
  /// Returns the offset in `text` of a name or value lent by the parser.
  using Offset = std::function<std::size_t(const char*)>;

  OutlineMaker(std::string_view text, Offset offset) : text_(text), positions_(text), offset_(std::move(offset)) {}

  /// The root of `document`, with everything in it.
  Element Root(pugi::xml_node document);

  /// The comments that Root found, in file order.
  std::vector<Comment> TakeComments() { return std::move(comments_); }

 private:
  Element ToElement(pugi::xml_node node);
  void AddChildren(Element& element, pugi::xml_node node);
  bool IsBeside(pugi::xml_node comment) const;
  TextPosition PositionOf(const char* inBuffer) { return positions_.At(offset_(inBuffer)); }

  std::string_view text_;
  TextPositions positions_;
  Offset offset_;
  std::vector<Comment> comments_;
};

}  // namespace plddb::descriptions
