#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/text_lists.h"

/// \file
/// Shared by the setters of record lists: a list is built column by column, from one semicolon item list per column.

namespace plddb::internal {

inline void StoreItem(std::string& field, std::string_view item) { field.assign(item); }
inline void StoreItem(int& field, std::string_view item) { field = ParseNumber(item); }

/// The number of items in a text: a list that is reserved for all of them takes no more memory than it needs.
inline std::size_t CountItems(const std::string& text) {
  std::size_t count = 0;
  ForEachSemicolonItem(text, [&](std::string_view) { ++count; });
  return count;
}

/// Appends one record per item, with the item in `field`.
template <typename Record, typename Field>
void AppendRecords(std::vector<Record>& list, const std::string& text, Field Record::*field) {
  if (list.empty()) list.reserve(CountItems(text));
  ForEachSemicolonItem(text, [&](std::string_view item) {
    Record record;
    StoreItem(record.*field, item);
    list.push_back(std::move(record));
  });
}

/// The same for a setter's argument: a null text is ignored.
template <typename Record, typename Field>
void AppendRecords(std::vector<Record>& list, const char* text, Field Record::*field) {
  if (text != nullptr) AppendRecords(list, std::string(text), field);
}

/// Writes item k into `field` of record k; items beyond the last record are ignored. A null text is ignored.
template <typename Record, typename Field>
void FillColumn(std::vector<Record>& list, const char* text, Field Record::*field) {
  if (text == nullptr || list.empty()) return;
  auto record = list.begin();
  ForEachSemicolonItem(text, [&](std::string_view item) {
    if (record != list.end()) StoreItem((*record++).*field, item);
  });
}

/// Replaces a list of texts by the items of `text`, which may be part of the list. A null text is ignored.
inline void ReplaceByItems(std::vector<std::string>& list, const char* text) {
  if (text == nullptr) return;
  const std::string working(text);
  list.clear();
  list.reserve(CountItems(working));
  ForEachSemicolonItem(working, [&](std::string_view item) { list.emplace_back(item); });
}

/// Replaces a list as a whole. On purpose: an empty argument keeps the old list, so it cannot clear it.
template <typename Record>
void ReplaceUnlessEmpty(std::vector<Record>& list, std::vector<Record>&& records) {
  if (!records.empty()) list = std::move(records);
}

}  // namespace plddb::internal
