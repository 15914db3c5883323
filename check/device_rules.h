#pragma once

#include <string>
#include <utility>

#include "check/findings.h"
#include "check/records.h"

namespace plddb::check {

/// What a rule is about: a value that is written, or also one that is left out.
enum class About { kWritten, kAlsoLeftOut };

/// A rule about an attribute of a device that needs no other record.
struct DeviceRule {
  CodeId code;
  About about;
  const char* attribute;
  std::string (*fault)(const DescribedDevice& device);  // empty when there is none
};

template <std::size_t count>
void Apply(const DeviceRule (&rules)[count], const DescribedDevice& device, Findings& findings) {
  for (const DeviceRule& rule : rules) {
    if (rule.about == About::kWritten && Written(device, rule.attribute) == nullptr) continue;
    std::string fault = rule.fault(device);
    if (!fault.empty()) findings.Add(device, rule.attribute, rule.code, std::move(fault));
  }
}

}  // namespace plddb::check
