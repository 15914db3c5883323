#include "tests/support/tree_equality.h"

#include "tests/support/device_fields.h"
#include "tests/support/family_fields.h"
#include "tests/support/show.h"

namespace support {
namespace {

std::string Different(const std::string& name, const std::string& a, const std::string& b) {
  return a == b ? "" : name + ": " + a + " / " + b;
}

/// The first difference in the fields of the table but `except`.
template <class Record>
std::string DifferenceOfFields(const std::vector<Field<Record>>& fields, Record& a, Record& b, const std::string& except) {
  for (const auto& field : fields) {
    if (field.name == except) continue;
    const std::string difference = Different(field.name, Show(field, a), Show(field, b));
    if (!difference.empty()) return difference;
  }
  return "";
}

std::string Within(const char* what, int i, const std::string& difference) {
  return difference.empty() ? "" : what + (" " + std::to_string(i)) + ": " + difference;
}

const char* Owner(const DeviceInfo& device, const FamilyList& family) {
  if (device.GetFamilyObject() == nullptr) return "none";
  return device.GetFamilyObject() == &family ? "its own" : "another";
}

std::string DifferenceOfDevices(FamilyList& a, FamilyList& b) {
  for (int i = 0;; ++i) {
    DeviceInfo* const deviceA = a.GetDevice(i);
    DeviceInfo* const deviceB = b.GetDevice(i);
    if (deviceA == nullptr && deviceB == nullptr) return "";
    if (deviceA == nullptr || deviceB == nullptr) return Within("device", i, "in one family only");
    std::string difference = Different("FamilyObject", Owner(*deviceA, a), Owner(*deviceB, b));
    if (difference.empty()) difference = DifferenceOf(*deviceA, *deviceB);
    if (!difference.empty()) return Within("device", i, difference);
  }
}

std::string DifferenceOfFamilies(DeviceList& a, DeviceList& b) {
  for (int i = 0;; ++i) {
    FamilyList* const familyA = a.GetFamily(i);
    FamilyList* const familyB = b.GetFamily(i);
    if (familyA == nullptr && familyB == nullptr) return "";
    if (familyA == nullptr || familyB == nullptr) return Within("family", i, "in one database only");
    const std::string difference = DifferenceOf(*familyA, *familyB);
    if (!difference.empty()) return Within("family", i, difference);
  }
}

}  // namespace

std::string Describe(DeviceInfo& device) {
  std::string description;
  for (const DeviceField& field : DeviceFields()) {
    if (field.name != "FamilyObject") description += field.name + ": " + Show(field, device) + "\n";
  }
  return description;
}

std::string DifferenceOf(DeviceInfo& a, DeviceInfo& b) { return DifferenceOfFields(DeviceFields(), a, b, "FamilyObject"); }

std::string DifferenceOf(FamilyList& a, FamilyList& b) {
  const std::string difference = DifferenceOfFields(FamilyFields(), a, b, "Devices");
  return difference.empty() ? DifferenceOfDevices(a, b) : difference;
}

std::string DifferenceOf(DeviceList& a, DeviceList& b) {
  std::string difference = Different("Version", Show(a.GetVersion()), Show(b.GetVersion()));
  if (difference.empty()) difference = Different("Comment", Show(a.GetComment()), Show(b.GetComment()));
  return difference.empty() ? DifferenceOfFamilies(a, b) : difference;
}

}  // namespace support
