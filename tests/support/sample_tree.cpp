#include "tests/support/sample_tree.h"

namespace support {

SampleDevice AddDevice(FamilyList& family) { return SampleDevice(family.NewDevice()); }

void AddDevices(FamilyList& family, int count) {
  for (int i = 0; i < count; ++i) family.NewDevice();
}

/// The names of what `at(i)` gives for 0, 1 and so on, until that is null.
template <typename At>
static std::string NamesOf(At at) {
  std::string names;
  for (int i = 0; const auto* const record = at(i); ++i) {
    if (i > 0) names += ' ';
    names += record->GetName() == nullptr ? "null" : record->GetName();
  }
  return names;
}

std::string NamesIn(const FamilyList& family) {
  return NamesOf([&](int i) { return family.GetDevice(i); });
}

std::string FamiliesIn(const DeviceList& database) {
  return NamesOf([&](int i) { return database.GetFamily(i); });
}

SampleTree::SampleTree() { database_->NewFamily(); }

FamilyList& SampleTree::AddFamily(const char* name) const {
  FamilyList& family = *database_->NewFamily();
  family.SetName(name);
  return family;
}

SampleDevice SampleTree::AddDevice() const { return support::AddDevice(*database_->GetLastFamily()); }

std::string SampleTree::PlaceOf(const DeviceInfo* device) const {
  if (device == nullptr) return "none";
  for (int i = 0; const FamilyList* const family = database_->GetFamily(i); ++i) {
    for (int k = 0; const DeviceInfo* const candidate = family->GetDevice(k); ++k) {
      if (candidate == device) return std::to_string(i) + "." + std::to_string(k);
    }
  }
  return "in another database";
}

}  // namespace support
