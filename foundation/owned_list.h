#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "DeviceStrElement.h"
#include "LObjList.h"
#include "foundation/text_lists.h"

namespace plddb::internal {

/// Destroys all elements of a list that is owned by its record, from the last to the first.
inline void DestroyElements(LObjList& list) {
  while (!list.IsEmpty()) delete list.RemoveTail();
}

/// Appends a new element and lends it. This function owns the element until it is in the list; then the list's record owns it.
template <typename Element>
Element* AppendNew(LObjList& list, std::unique_ptr<Element> element) {
  list.AddTail(element.get());
  return element.release();
}

/// Appends an owned element that holds a copy of `text`.
inline void AppendText(LObjList& list, const char* text) {
  auto element = std::make_unique<DeviceStrElement>();
  element->SetString(text);
  AppendNew(list, std::move(element));
}

/// The text of the element at `i`; null outside the list.
inline char* TextAt(const LObjList& list, int i) {
  const auto* const element = static_cast<const DeviceStrElement*>(list.GetAt(i));
  return element == nullptr ? nullptr : element->GetString();
}

/// Replaces an owned list of texts by the quoted items of `text`, which may be part of the list. A null text is ignored.
/// On purpose: an empty text keeps the list, one without quotes empties it.
inline void ReplaceByQuotedItems(LObjList& list, const char* text) {
  if (text == nullptr || *text == '\0') return;
  const std::string working(text);
  DestroyElements(list);
  ForEachQuotedItem(working, [&](std::string_view item) { AppendText(list, std::string(item).c_str()); });
}

/// Appends `text` exactly as given; a null or empty text adds nothing.
inline void AppendUnlessEmpty(LObjList& list, const char* text) {
  if (text != nullptr && *text != '\0') AppendText(list, text);
}

}  // namespace plddb::internal
