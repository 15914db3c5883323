#include <string>

#include "check/first_records.h"
#include "check/rules.h"
#include "descriptions/TextForms.h"
#include "foundation/text_match.h"

namespace plddb::check {
namespace {

bool HasOwnBackup(const Package& package) {
  return package.GetBackupPON() != nullptr && !internal::EqualExactly(package.GetPON(), package.GetBackupPON());
}

void CheckOrderingNumbers(const Records& records, Findings& findings) {
  FirstRecords<DescribedDevice> firsts;
  firsts.reserve(records.Devices().size());
  for (const DescribedDevice& device : records.Devices()) {
    ForEachPackage(device, [&](const DescribedPackage& package) {
      const auto check = [&](const char* number, const char* attribute) {
        if (number == nullptr) return;
        const DescribedDevice& first = *firsts.try_emplace({number}, &device).first->second;
        if (&first == &device) return;
        findings.Add(package, attribute, CodeId::kOrderingNumberShared,
                     "the ordering number " + Quoted(number) + " is also one of " + records.NameFor(device, first), first);
      };
      check(package.package->GetPON(), "PON");
      if (HasOwnBackup(*package.package)) check(package.package->GetBackupPON(), "BackupPON");
      check(package.package->GetAliasPON(), "AliasPON");
    });
  }
}

}  // namespace

void CheckPackages(const Records& records, Findings& findings) { CheckOrderingNumbers(records, findings); }

}  // namespace plddb::check
