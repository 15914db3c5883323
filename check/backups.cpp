#include <string>

#include "check/rules.h"
#include "descriptions/TextForms.h"
#include "descriptions/fields.h"

namespace plddb::check {
namespace {

using descriptions::Field;
using descriptions::Kind;
using descriptions::Need;

/// The options of an algorithm are no backup of the access mode, though they default to it.
bool IsBackup(const Field& field) { return field.need == Need::kBackup && field.kind != Kind::kText; }

void CheckBackup(const DescribedDevice& device, const Field& working, const Field& backup, Findings& findings) {
  const Attribute* const written = Written(device, backup.name);
  if (written == nullptr || working.get(device.device).number == backup.get(device.device).number) return;
  const Attribute* const value = Written(device, working.name);
  findings.Add(device, backup.name, CodeId::kBackupUnlike,
               std::string(backup.name) + " is " + Quoted(written->value) + ", but " + std::string(working.name) +
                   (value == nullptr ? " is left out" : " is " + Quoted(value->value)) +
                   ": restoring the backup changes the device");
}

}  // namespace

void CheckBackups(const Records& records, Findings& findings) {
  const descriptions::FieldTable& fields = descriptions::FieldsOf<DeviceInfo>();
  for (const DescribedDevice& device : records.Devices()) {
    for (std::size_t i = 1; i < fields.size(); ++i) {
      if (IsBackup(fields[i])) CheckBackup(device, fields[i - 1], fields[i], findings);
    }
  }
}

}  // namespace plddb::check
