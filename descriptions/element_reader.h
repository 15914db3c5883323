#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "descriptions/faults.h"
#include "descriptions/fields.h"

namespace plddb::descriptions {

/// A parsed text: sets records to the values of its elements, and reports mistakes in an element at their place.
class ElementReader {
 public:
  /// Borrows `text` and `faults`, which must outlive it.
  ElementReader(std::string_view text, Faults& faults) : text_(text), faults_(faults) {}

  /// Parses the text. Returns false and adds a fault if it is not XML. `withComments` keeps comments among the nodes.
  bool Parse(bool withComments);
  pugi::xml_node Document() const { return document_; }

  /// The root element and everything in it. Hands over the text that holds names and values: do not use the reader afterwards.
  Outline TakeOutline();

  /// Sets the fields of `record` from the attributes of `node`, in the order of the record's table.
  template <class Record>
  void ReadFields(Record& record, pugi::xml_node node) {
    ReadFields(FieldsOf<Record>(), &record, node);
  }

  /// Reports the unknown element `node`; `known` are the names of the known elements of its parent.
  void Unexpected(pugi::xml_node node, const std::vector<std::string_view>& known);

  /// Reports a fault of the element `node`.
  void AddFault(pugi::xml_node node, std::string text);

 private:
  void ReadFields(const FieldTable& fields, void* record, pugi::xml_node node);
  void ReadField(const FieldTable& fields, pugi::xml_attribute attribute, std::string_view name, pugi::xml_node node);
  void SetFields(const FieldTable& fields, void* record, pugi::xml_node node);
  void UnknownAttribute(const FieldTable& fields, pugi::xml_attribute attribute, pugi::xml_node node);
  void UnexpectedText(pugi::xml_node node);

  /// Names and values lent by the parser have the same offsets in the buffer as in the text.
  std::size_t OffsetOf(const char* inBuffer) const { return static_cast<std::size_t>(inBuffer - buffer_->data()); }

  const std::string_view text_;
  Faults& faults_;
  std::shared_ptr<std::string> buffer_ =
      std::make_shared<std::string>();  // a copy of the text, which the parser cuts up and decodes in place
  pugi::xml_document document_;

  // The attributes of the current element, by their position in its table.
  std::array<Value, FieldTable::kMost> values_;
  std::bitset<FieldTable::kMost> given_;
};

}  // namespace plddb::descriptions
