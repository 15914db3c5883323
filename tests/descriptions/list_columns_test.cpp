// The table of list columns agrees with the tables of fields.

#include "descriptions/list_columns.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "descriptions/fields.h"

namespace {

using plddb::descriptions::FieldsOf;
using plddb::descriptions::FieldTable;
using plddb::descriptions::kListColumns;
using plddb::descriptions::ListColumn;
using Names = std::set<std::string>;

/// The attributes of `owner` that the table names.
Names TextsOf(const std::string& owner) {
  Names names;
  for (const ListColumn& column : kListColumns) {
    if (column.owner == owner && !column.text.empty()) names.emplace(column.text);
  }
  return names;
}

/// The attributes that the loader takes as columns.
Names ColumnsIn(const FieldTable& fields) {
  Names names;
  for (const auto& field : fields) {
    if (field.get == nullptr) names.emplace(field.name);
  }
  return names;
}

TEST(ListColumns, AreThoseThatTheLoaderReads) {
  EXPECT_EQ(TextsOf("Device"), ColumnsIn(FieldsOf<DeviceInfo>()));
  EXPECT_EQ(TextsOf("Family"), ColumnsIn(FieldsOf<FamilyList>()));
}

Names FieldsIn(const std::string& element) {
  Names names;
  for (const ListColumn& column : kListColumns) {
    if (column.element == element) names.emplace(column.field);
  }
  return names;
}

Names NamesIn(const FieldTable& fields) {
  Names names;
  for (const auto& field : fields) names.emplace(field.name);
  return names;
}

TEST(ListColumns, NameEveryFieldOfTheirRecords) {
  namespace d = plddb::descriptions;
  const struct {
    const char* element;
    const FieldTable& fields;
  } rows[] = {
      {"SysIO", FieldsOf<d::Entry>()},
      {"Operation", FieldsOf<d::Entry>()},
      {"ProgrammingMode", FieldsOf<d::Item>()},
      {"Control", FieldsOf<d::Item>()},
      {"ControlRegZero", FieldsOf<CControlRegZero>()},
      {"ControlRegOne", FieldsOf<CControlRegOne>()},
      {"Persistent_fuse", FieldsOf<CPersistent_fuse>()},
      {"ControlStatus", FieldsOf<CControlStatus>()},
      {"ControlVoltage", FieldsOf<CControlVoltage>()},
      {"Entry", FieldsOf<CControlEBR>()},
      {"MultibootCfgAddr", FieldsOf<d::MultibootNumber>()},
      {"MultibootAutoAdd", FieldsOf<d::MultibootNumber>()},
  };
  for (const auto& row : rows) EXPECT_EQ(FieldsIn(row.element), NamesIn(row.fields)) << "row: " << row.element;
}

TEST(ListColumns, AreFilledByTextsOfTheRecordsThatTheFirstOneCreates) {
  for (const ListColumn& column : kListColumns) {
    if (column.text.empty() || column.element.empty()) continue;
    const std::string_view creator = plddb::descriptions::CreatorOf(column.element);
    EXPECT_EQ(column.creator.empty() ? column.text : column.creator, creator) << "row: " << column.text;
  }
}

TEST(ListColumns, AreFoundByElementAndField) {
  using plddb::descriptions::FindColumn;
  for (const ListColumn& column : kListColumns) EXPECT_EQ(FindColumn(column.element, column.field), &column);
  EXPECT_EQ(FindColumn("Persistent_fuse", "BitName"), nullptr);
  EXPECT_EQ(FindColumn("Package", "Name"), nullptr);
}

}  // namespace
