// Semicolon item lists: the cursor, and the setters that read one.

#include "DeviceListOwner.h"
#include "foundation/text_lists.h"
#include "fuzz/input.h"

using namespace plddb::internal;

using fuzz::Check;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::TextOf(data, size);
  std::vector<std::string> items;
  ForEachSemicolonItem(text, [&](std::string_view item) {
    Check(item.find(';') == item.npos, "an item holds no semicolon");
    Check(item == Trim(item), "an item has no blanks around it");
    items.emplace_back(item);
  });

  FamilyList family;
  DeviceInfo device(family);
  device.SetlistAddressRange(text.c_str());
  family.SetListProgrammingModeControl(text.c_str());
  family.SetListBScanControl(text.c_str());
  Check(device.GetlistAddressRange() == items, "the address ranges are the items");
  Check(family.GetListProgrammingModeControl() == items, "the programming modes are the items");
  Check(family.GetListBScanControl().back().Controls == items, "the controls are the items");

  device.SetListControlReg1BitName(text.c_str());
  device.SetListControlReg1BitName(text.c_str());
  Check(device.GetlistControlRegOne().size() == 2 * items.size(), "each creating call appends a record an item");
  device.SetListControlReg1Address(text.c_str());
  device.SetListPersistent_fuseAddress(text.c_str());
  Check(device.GetlistPersistent_fuse().size() == items.size(), "the fuses are replaced by a record an item");
  if (!items.empty()) device.SetlistAddressRange(device.GetlistAddressRange().back().c_str());  // a text of the list itself
  return 0;
}
