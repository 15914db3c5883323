#include "element_tables.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "device_text.h"
#include "text_table.h"

namespace tool {
namespace {

using plddb::Attribute;
using plddb::Element;

/// A record of a list; its number, and that of the record that it stands in.
struct Record {
  const Element* element;
  std::size_t number;
  std::size_t around;
};

std::string ValueText(const Attribute& field) { return TextOrDash(std::string(field.value).c_str()); }

std::string Line(int line) { return line == 0 ? "-" : ":" + std::to_string(line); }

std::string FieldTable(const Element& element) {
  std::vector<Row> rows = {{"field", "value", "where"}};
  for (const Attribute& field : element.attributes) {
    rows.push_back({std::string(field.name), ValueText(field), Line(field.line)});
  }
  return WrappedTable(rows, "  ");
}

/// The fields that any of `records` has, in the order in which records have them.
std::vector<std::string_view> FieldsOf(const std::vector<Record>& records) {
  std::vector<std::string_view> fields;
  for (const Record& record : records) {
    auto behind = fields.begin();
    for (const Attribute& field : record.element->attributes) {
      auto known = std::find(fields.begin(), fields.end(), field.name);
      if (known == fields.end()) known = fields.insert(behind, field.name);
      behind = known + 1;
    }
  }
  return fields;
}

std::string ValueOf(const Element& element, std::string_view field) {
  for (const Attribute& attribute : element.attributes) {
    if (attribute.name == field) return ValueText(attribute);
  }
  return "-";
}

/// `around` is the name of the records that `records` stand in, empty for the described record itself.
std::string RecordTable(const std::vector<Record>& records, std::string_view around) {
  const std::vector<std::string_view> fields = FieldsOf(records);
  Row head = {"#"};
  if (!around.empty()) head.insert(head.begin(), std::string(around));
  head.insert(head.end(), fields.begin(), fields.end());
  head.push_back("where");
  std::vector<Row> rows = {head};
  for (const Record& record : records) {
    Row row = {std::to_string(record.number)};
    if (!around.empty()) row.insert(row.begin(), std::to_string(record.around));
    for (const std::string_view field : fields) row.push_back(ValueOf(*record.element, field));
    row.push_back(Line(record.element->line));
    rows.push_back(std::move(row));
  }
  return WrappedTable(rows, "    ");
}

std::vector<std::string_view> ChildNames(const std::vector<Record>& records) {
  std::vector<std::string_view> names;
  for (const Record& record : records) {
    for (const Element& child : record.element->children) {
      if (std::find(names.begin(), names.end(), child.name) == names.end()) names.push_back(child.name);
    }
  }
  return names;
}

/// Descriptions are a few levels deep, and so is the recursion.
std::string TablesIn(const std::vector<Record>& parents, std::string_view around) {
  std::string text;
  for (const std::string_view name : ChildNames(parents)) {
    std::vector<Record> records;
    for (const Record& parent : parents) {
      std::size_t number = 0;
      for (const Element& child : parent.element->children) {
        if (child.name == name) records.push_back({&child, ++number, parent.number});
      }
    }
    text += "\n  " + std::string(name) + "\n" + RecordTable(records, around) + TablesIn(records, name);
  }
  return text;
}

}  // namespace

std::string Where(const std::string& file, int line) { return line == 0 ? "-" : Printable(file) + ":" + std::to_string(line); }

std::string ElementTables(const Element& element) { return FieldTable(element) + TablesIn({{&element, 1, 1}}, ""); }

}  // namespace tool
