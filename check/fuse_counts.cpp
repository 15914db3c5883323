#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "check/first_records.h"
#include "check/rules.h"
#include "database/full_names.h"
#include "descriptions/TextForms.h"
#include "device/text_rules.h"

namespace plddb::check {
namespace {

using internal::EqualExactly;
using internal::FuseAlias;
using internal::OrEmpty;

void CheckCodeNames(const Records& records, Findings& findings) {
  FirstRecords<DescribedDevice> firsts;
  firsts.reserve(records.Devices().size());
  for (const DescribedDevice& device : records.Devices()) {
    const unsigned int fuses = device.device->GetFuseNumber();
    const char* const codeName = device.device->GetCodeName();
    if (fuses == 0 || codeName == nullptr) continue;
    const auto [first, isFirst] = firsts.try_emplace({codeName, fuses}, &device);
    if (isFirst) continue;
    findings.Add(device, "FuseNumber", CodeId::kFuseCountShared,
                 "the fuse count " + std::to_string(fuses) + " does not tell " + Quoted(codeName) + " from " +
                     records.NameFor(device, *first->second),
                 *first->second);
  }
}

// --- Full names -------------------------------------------------------------------------------------------------------------

/// A text that lookups take for a full name: a code name, or the ordering number of a package.
struct FullName {
  std::string_view text;
  Described record;
  const char* attribute;
};

std::vector<FullName> FullNamesOf(const DescribedDevice& device) {
  std::vector<FullName> names = {{OrEmpty(device.device->GetCodeName()), device, "CodeName"}};
  ForEachPackage(device, [&](const DescribedPackage& package) {
    names.push_back({OrEmpty(package.package->GetPON()), package, "PON"});
  });
  return names;
}

struct FirstName {
  const DescribedDevice* device;
  std::string_view text;
  const DescribedDevice* reported = nullptr;  // the last device that was: one finding for each is enough
};

class FullNames {
 public:
  FullNames(const Records& records, Findings& findings) : records_(records), findings_(findings) {}

  void Check(const DescribedDevice& device, const FullName& name) {
    const std::string form = internal::NormalForm(name.text);
    if (form.empty()) return;
    const std::string key = std::to_string(device.device->GetFuseNumber()) + ' ' + form;
    FirstName& first = firsts_.try_emplace(key, FirstName{&device, name.text}).first->second;
    const bool isTold = EqualTextKeys()({name.text}, {first.text});  // as one that is shared
    if (first.device == &device || first.reported == &device || isTold) return;
    first.reported = &device;
    findings_.Add(name.record, name.attribute, CodeId::kFullNameShared,
                  "as a full name " + Quoted(name.text) + " is " + Quoted(form) + ", and with " +
                      std::to_string(device.device->GetFuseNumber()) + " fuses finds " +
                      records_.NameFor(device, *first.device) + " by " + Quoted(first.text),
                  *first.device);
  }

 private:
  const Records& records_;
  Findings& findings_;
  std::unordered_map<std::string, FirstName> firsts_;
};

/// Lookups by full name skip devices in other access modes.
void CheckFullNames(const Records& records, Findings& findings) {
  FullNames names(records, findings);
  for (const DescribedDevice& device : records.Devices()) {
    const char* const comm = device.device->GetComm();
    if (device.device->GetFuseNumber() == 0 || (!EqualExactly(comm, "JTAG") && !EqualExactly(comm, "DUAL"))) continue;
    for (const FullName& name : FullNamesOf(device)) names.Check(device, name);
  }
}

// --- Counts that are aliases ------------------------------------------------------------------------------------------------

/// Files of `asked` fuses are also for devices of `stored` ones: a device with the other count is easily confused with them.
void CheckAlias(const Records& records, const FuseAlias& alias, Findings& findings) {
  const DescribedDevice* firstAsked = nullptr;
  const DescribedDevice* firstStored = nullptr;
  for (const DescribedDevice& device : records.Devices()) {
    const unsigned int fuses = device.device->GetFuseNumber();
    const bool isStored = fuses == alias.stored;
    if (!isStored && fuses != alias.asked) continue;
    const DescribedDevice* const other = isStored ? firstAsked : firstStored;
    (isStored ? firstStored : firstAsked) = &device;
    if (other == nullptr) continue;
    findings.Add(device, "FuseNumber", CodeId::kFuseCountAlias,
                 "a file of " + std::to_string(alias.asked) + " fuses is also one for " + std::to_string(alias.stored) +
                     ": lookups find both this device and " + records.NameFor(device, *other),
                 *other);
  }
}

}  // namespace

void CheckFuseCounts(const Records& records, Findings& findings) {
  CheckCodeNames(records, findings);
  CheckFullNames(records, findings);
  for (const FuseAlias& alias : {internal::kAlias5892, internal::kAlias4988064}) CheckAlias(records, alias, findings);
}

}  // namespace plddb::check
