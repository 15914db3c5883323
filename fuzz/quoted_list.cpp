// Quoted item lists: the cursor, and the setters that read one.

#include "DeviceListOwner.h"
#include "foundation/text_lists.h"
#include "fuzz/input.h"

using namespace plddb::internal;

using fuzz::Check;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::TextOf(data, size);
  std::vector<std::string> items;
  ForEachQuotedItem(text, [&](std::string_view item) {
    Check(item.find('"') == item.npos, "an item holds no quote");
    Check(item == Trim(item), "an item has no blanks around it");
    items.emplace_back(item);
  });

  FamilyList family;
  DeviceInfo device(family);
  device.AddSysIOList("old");
  device.SetSysIOList(text.c_str());
  family.SetOperationList(text.c_str());
  const std::size_t kept = text.empty() ? 1 : 0;  // the empty text clears nothing
  Check(device.GetSysIOCount() == (items.size() + kept) % 65536, "the I/O entries are the items");
  Check(family.GetOperationCount() == items.size() % 65536, "the operations are the items");
  for (int i = 0; i < static_cast<int>(items.size()); ++i) {
    Check(device.GetSysIO(i) == items[static_cast<std::size_t>(i)], "the I/O entries are the items, in order");
    Check(family.GetOperation(i) == items[static_cast<std::size_t>(i)], "the operations are the items, in order");
  }
  device.SetSysIOList(device.GetSysIO(device.GetSysIOCount() - 1));  // a text of the list itself
  return 0;
}
