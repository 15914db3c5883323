#include <string>

#include "check/first_records.h"
#include "check/rules.h"
#include "descriptions/TextForms.h"
#include "device/text_rules.h"

namespace plddb::check {
namespace {

using Firsts = FirstRecords<DescribedDevice>;

// --- Names and code names ---------------------------------------------------------------------------------------------------

/// A text of a device by which lookups find the first device that has it.
struct NameRule {
  CodeId code;
  const char* attribute;
  const char* name;
  internal::DeviceText text;
};

constexpr NameRule kName = {CodeId::kNameShadowed, "Name", "name", &DeviceInfo::GetName};
constexpr NameRule kCodeName = {CodeId::kCodeNameShadowed, "CodeName", "code name", &DeviceInfo::GetCodeName};
constexpr NameRule kAlias = {CodeId::kAliasShadowed, "AliasName", "alias name", &DeviceInfo::GetAliasName};

void AddShadowed(const Records& records, const DescribedDevice& device, const DescribedDevice& found, const NameRule& rule,
                 Findings& findings) {
  findings.Add(device, rule.attribute, rule.code,
               std::string("the ") + rule.name + ' ' + Quoted((device.device->*rule.text)()) + " finds " +
                   records.NameFor(device, found),
               found);
}

Firsts CheckName(const Records& records, const NameRule& rule, Findings& findings) {
  Firsts firsts;
  firsts.reserve(records.Devices().size());
  for (const DescribedDevice& device : records.Devices()) {
    const char* const text = (device.device->*rule.text)();
    if (text == nullptr) continue;
    const auto [first, isFirst] = firsts.try_emplace({text}, &device);
    if (!isFirst) AddShadowed(records, device, *first->second, rule, findings);
  }
  return firsts;
}

// --- Alias names ------------------------------------------------------------------------------------------------------------

/// A code name anywhere is found before any alias name.
void CheckAliases(const Records& records, const Firsts& codeNames, Findings& findings) {
  Firsts aliases;
  aliases.reserve(records.Devices().size());
  for (const DescribedDevice& device : records.Devices()) {
    const char* const alias = device.device->GetAliasName();
    if (alias == nullptr) continue;
    const bool answers = internal::AliasIs(alias)(*device.device);
    if (answers) aliases.try_emplace({alias}, &device);
    const auto byCodeName = codeNames.find({alias});
    const bool isCodeName = byCodeName != codeNames.end();
    if (!isCodeName && !answers) {
      findings.Add(device, kAlias.attribute, CodeId::kAliasUnused,
                   "the alias name " + Quoted(alias) + " never finds a device of the vendor " +
                       Quoted(internal::OrEmpty(device.device->GetVendor())));
      continue;
    }
    const DescribedDevice& found = isCodeName ? *byCodeName->second : *aliases.at({alias});
    if (&found != &device) AddShadowed(records, device, found, kAlias, findings);
  }
}

// --- Families ---------------------------------------------------------------------------------------------------------------

/// Letter case counts here, and both names of a family are tried before the next family.
void CheckFamilyNames(const Records& records, Findings& findings) {
  std::unordered_map<std::string_view, const DescribedFamily*> firsts;
  for (const DescribedFamily& family : records.Families()) {
    const auto check = [&](const char* name, const char* attribute) {
      if (name == nullptr) return;
      const DescribedFamily& first = *firsts.try_emplace(name, &family).first->second;
      if (&first == &family) return;
      findings.Add(family, attribute, CodeId::kFamilyShadowed,
                   "the family name " + Quoted(name) + " finds the family of " + records.PlaceFor(family.file, first), first);
    };
    check(family.family->GetName(), "Name");
    check(family.family->GetAliasName(), "AliasName");
  }
}

}  // namespace

void CheckShadowedNames(const Records& records, Findings& findings) {
  CheckName(records, kName, findings);
  CheckAliases(records, CheckName(records, kCodeName, findings), findings);
  CheckFamilyNames(records, findings);
}

}  // namespace plddb::check
