// Control registers, persistent fuses and status bits: lists that are built column by column.

#include "DeviceInfo.h"
#include "device/column_setters.h"

using namespace plddb::internal;

void DeviceInfo::SetListControlReg0Frequency(const char* text) {
  AppendRecords(listControlRegZero, text, &CControlRegZero::Frequency);
}

void DeviceInfo::SetListControlReg0MasterClock(const char* text) {
  FillColumn(listControlRegZero, text, &CControlRegZero::MasterClock);
}

void DeviceInfo::SetListControlReg0ClockDivider(const char* text) {
  FillColumn(listControlRegZero, text, &CControlRegZero::ClockDivider);
}

void DeviceInfo::SetlistControlRegZero(std::vector<CControlRegZero> list) {
  ReplaceUnlessEmpty(listControlRegZero, std::move(list));
}

const std::vector<CControlRegZero>& DeviceInfo::GetlistControlRegZero() const { return listControlRegZero; }

void DeviceInfo::SetListControlReg1BitName(const char* text) {
  AppendRecords(listControlRegOne, text, &CControlRegOne::BitName);
}

void DeviceInfo::SetListControlReg1Address(const char* text) { FillColumn(listControlRegOne, text, &CControlRegOne::Address); }

void DeviceInfo::SetListControlReg1Column(const char* text) { FillColumn(listControlRegOne, text, &CControlRegOne::Column); }

void DeviceInfo::SetlistControlRegOne(std::vector<CControlRegOne> list) {
  ReplaceUnlessEmpty(listControlRegOne, std::move(list));
}

const std::vector<CControlRegOne>& DeviceInfo::GetlistControlRegOne() const { return listControlRegOne; }

void DeviceInfo::SetListPersistent_fuseAddress(const char* text) {
  if (text == nullptr) return;
  const std::string working(text);
  listPersistent_fuse.clear();  // On purpose: unlike the other creating setters this one replaces the list.
  AppendRecords(listPersistent_fuse, working, &CPersistent_fuse::Address);
}

void DeviceInfo::SetListPersistent_fuseColumn(const char* text) {
  FillColumn(listPersistent_fuse, text, &CPersistent_fuse::Column);
}

void DeviceInfo::SetlistPersistent_fuse(std::vector<CPersistent_fuse> list) {
  ReplaceUnlessEmpty(listPersistent_fuse, std::move(list));
}

const std::vector<CPersistent_fuse>& DeviceInfo::GetlistPersistent_fuse() const { return listPersistent_fuse; }

void DeviceInfo::SetListControlStatusBitName(const char* text) {
  AppendRecords(listControlStatus, text, &CControlStatus::BitName);
}

void DeviceInfo::SetListControlStatusControl(const char* text) {
  FillColumn(listControlStatus, text, &CControlStatus::Control);
}

void DeviceInfo::SetListControlStatusIndex(const char* text) { FillColumn(listControlStatus, text, &CControlStatus::Index); }

void DeviceInfo::SetlistControlStatus(std::vector<CControlStatus> list) {
  ReplaceUnlessEmpty(listControlStatus, std::move(list));
}

const std::vector<CControlStatus>& DeviceInfo::GetlistControlStatus() const { return listControlStatus; }
