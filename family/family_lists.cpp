// The lists that the devices of a family share: operations, programming modes, boundary-scan controls.

#include "FamilyList.h"
#include "device/column_setters.h"
#include "foundation/owned_list.h"
#include "foundation/text_match.h"

using namespace plddb::internal;

void FamilyList::SetOperationList(const char* text) { ReplaceByQuotedItems(OperationList, text); }

void FamilyList::AddOperationList(const char* name) { AppendUnlessEmpty(OperationList, name); }

void FamilyList::DeleteOperationList(const char* name) {
  if (name == nullptr || *name == '\0') return;
  const int count = OperationList.GetCount();
  int i = 0;
  while (i < count && !EqualExactly(TextAt(OperationList, i), name)) ++i;
  delete OperationList.Delete(i);  // null after the last
}

unsigned short FamilyList::GetOperationCount() const { return static_cast<unsigned short>(OperationList.GetCount()); }

char* FamilyList::GetOperation(int i) const { return TextAt(OperationList, i); }

void FamilyList::SetListProgrammingModeControl(const char* text) { ReplaceByItems(ListProgrammingModeControl, text); }

void FamilyList::SetListProgrammingModeControl(std::vector<std::string> list) {
  ReplaceUnlessEmpty(ListProgrammingModeControl, std::move(list));
}

std::vector<std::string>& FamilyList::GetListProgrammingModeControl() { return ListProgrammingModeControl; }

void FamilyList::SetListBScanControl(const char* text) {
  if (text == nullptr) return;
  CBScanControl record;
  record.DefaultValue = 1;
  ReplaceByItems(record.Controls, text);
  ListBScanControl.push_back(std::move(record));
}

void FamilyList::SetListBScanControl(std::vector<CBScanControl> list) { ReplaceUnlessEmpty(ListBScanControl, std::move(list)); }

std::vector<CBScanControl>& FamilyList::GetListBScanControl() { return ListBScanControl; }

void FamilyList::SetBScanDefaultValue(int value) {
  if (!ListBScanControl.empty()) ListBScanControl.front().DefaultValue = value;
}
