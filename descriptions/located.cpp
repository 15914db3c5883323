// The places in a file where the values of a record are written.

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "descriptions/Descriptions.h"
#include "descriptions/list_columns.h"

namespace plddb {
namespace {

using descriptions::kListColumns;
using descriptions::ListColumn;

/// All fields of a record of a list, in order; the given fields of any other record.
std::vector<Attribute> AllFields(const Element& record) {
  std::vector<Attribute> fields;
  for (const ListColumn& row : kListColumns) {
    if (row.element != record.name || row.field.empty()) continue;
    const Attribute* const given = FindAttribute(record, row.field);
    fields.push_back({row.field, given == nullptr ? row.whenLeftOut : given->value});
  }
  return fields.empty() ? record.attributes : fields;
}

template <class Place>
void SetPlace(Place& target, const Attribute& place) {
  target.line = place.line;
  target.column = place.column;
}

/// A record created by texts in attributes of `around`.
Element MadeByTexts(const Element& described, const Element& around) {
  Element record = {described.name, 0, 0, AllFields(described), {}};
  for (Attribute& field : record.attributes) {
    const ListColumn* const column = descriptions::FindColumn(record.name, field.name);
    const Attribute* const text = column == nullptr ? nullptr : FindAttribute(around, column->text);
    if (text == nullptr) continue;
    if (record.line == 0) SetPlace(record, *text);
    SetPlace(field, *text);
  }
  return record;
}

std::map<std::string_view, std::vector<const Element*>> ByName(const std::vector<Element>& elements) {
  std::map<std::string_view, std::vector<const Element*>> groups;
  for (const Element& element : elements) groups[element.name].push_back(&element);
  return groups;
}

}  // namespace

const Attribute* FindAttribute(const Element& element, std::string_view name) {
  const auto found = std::find_if(element.attributes.begin(), element.attributes.end(),
                                  [&](const Attribute& attribute) { return attribute.name == name; });
  return found == element.attributes.end() ? nullptr : &*found;
}

Element Located(const Element& described, const Element& outline) {
  Element located = {described.name, outline.line, outline.column, AllFields(described), {}};
  for (Attribute& field : located.attributes) {
    if (const Attribute* const place = FindAttribute(outline, field.name)) SetPlace(field, *place);
  }
  auto elements = ByName(outline.children);
  auto records = ByName(described.children);
  std::map<std::string_view, std::size_t> next;
  for (const Element& child : described.children) {
    const auto& makers = elements[child.name];
    const std::size_t byTexts = records[child.name].size() - makers.size();
    const std::size_t i = next[child.name]++;
    if (i < byTexts) {
      located.children.push_back(MadeByTexts(child, outline));
    } else {
      located.children.push_back(Located(child, *makers[i - byTexts]));
    }
  }
  return located;
}

}  // namespace plddb
