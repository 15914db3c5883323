#include <string>

#include "check/first_records.h"
#include "check/rules.h"
#include "descriptions/TextForms.h"

namespace plddb::check {

void CheckFuseCounts(const Records& records, Findings& findings) {
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

}  // namespace plddb::check
