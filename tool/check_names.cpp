#include "check_names.h"

#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tool {
namespace {

/// A text as lookups compare it: the case of ASCII letters does not count. Of two texts with one key a lookup takes the first.
/// A number that has to agree as well may stand beside it. Borrows the text.
struct Key {
  const char* text;
  unsigned int number = 0;
};

constexpr char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

struct HashOfKey {
  std::size_t operator()(const Key& key) const {
    std::size_t hash = key.number;
    for (const char* c = key.text; *c != '\0'; ++c) hash = (hash ^ static_cast<unsigned char>(ToUpper(*c))) * 1099511628211U;
    return hash ^ hash >> 32;
  }
};

struct EqualKeys {
  bool operator()(const Key& a, const Key& b) const {
    if (a.number != b.number) return false;
    std::size_t i = 0;
    while (a.text[i] != '\0' && ToUpper(a.text[i]) == ToUpper(b.text[i])) ++i;
    return ToUpper(a.text[i]) == ToUpper(b.text[i]);
  }
};

/// The first device that has each key.
using Firsts = std::unordered_map<Key, const DescribedDevice*, HashOfKey, EqualKeys>;

// --- Names and code names ---------------------------------------------------------------------------------------------------

/// A text of a device by which lookups find the first device that has it.
struct NameRule {
  Code code;
  const char* attribute;
  const char* what;
  char* (DeviceInfo::*text)() const;
};

constexpr NameRule kName = {Code::kNameHidden, "Name", "name", &DeviceInfo::GetName};
constexpr NameRule kCodeName = {Code::kCodeNameHidden, "CodeName", "code name", &DeviceInfo::GetCodeName};

void AddHidden(const DescribedDevice& device, const DescribedDevice& found, const NameRule& rule, Findings& findings) {
  findings.Add(
      *device.element, rule.attribute, rule.code,
      std::string("the ") + rule.what + ' ' + Quoted((device.device->*rule.text)()) + " finds " + Called(found, device));
}

Firsts CheckName(const Records& records, const NameRule& rule, Findings& findings) {
  Firsts firsts;
  firsts.reserve(records.devices.size());
  for (const DescribedDevice& device : records.devices) {
    const char* const text = (device.device->*rule.text)();
    if (text == nullptr) continue;
    const auto [first, is_first] = firsts.try_emplace({text}, &device);
    if (!is_first) AddHidden(device, *first->second, rule, findings);
  }
  return firsts;
}

// --- Alias names ------------------------------------------------------------------------------------------------------------

constexpr NameRule kAlias = {Code::kAliasHidden, "AliasName", "alias name", &DeviceInfo::GetAliasName};

/// The library never finds a device of this vendor by its alias name.
constexpr std::string_view kVendorWithoutAliases = "Quorel";

bool AnswersByAlias(const DeviceInfo& device) {
  return device.GetVendor() == nullptr || device.GetVendor() != kVendorWithoutAliases;
}

/// A code name anywhere is found before any alias name.
void CheckAliases(const Records& records, const Firsts& code_names, Findings& findings) {
  Firsts aliases;
  aliases.reserve(records.devices.size());
  for (const DescribedDevice& device : records.devices) {
    const char* const alias = device.device->GetAliasName();
    if (alias == nullptr) continue;
    const Key key = {alias};
    if (AnswersByAlias(*device.device)) aliases.try_emplace(key, &device);
    const auto by_code_name = code_names.find(key);
    const auto by_alias = aliases.find(key);
    const bool is_code_name = by_code_name != code_names.end();
    if (!is_code_name && !AnswersByAlias(*device.device)) {
      findings.Add(*device.element, kAlias.attribute, Code::kAliasUnused,
                   "the alias name " + Quoted(alias) + " never finds a device of the vendor Quorel");
    } else if (const DescribedDevice& found = *(is_code_name ? by_code_name : by_alias)->second; &found != &device) {
      AddHidden(device, found, kAlias, findings);
    }
  }
}

// --- Families ---------------------------------------------------------------------------------------------------------------

/// Letter case counts here, and both names of a family are tried before the next family.
void CheckFamilyNames(const Records& records, Findings& findings) {
  std::unordered_map<std::string_view, const DescribedFamily*> firsts;
  for (const DescribedFamily& family : records.families) {
    const auto check = [&](const char* name, const char* attribute) {
      if (name == nullptr) return;
      const DescribedFamily& first = *firsts.try_emplace(name, &family).first->second;
      if (&first == &family) return;
      findings.Add(*family.element, attribute, Code::kFamilyHidden,
                   "the family name " + Quoted(name) + " finds the family of line " + std::to_string(first.element->line));
    };
    check(family.family->GetName(), "Name");
    check(family.family->GetAliasName(), "AliasName");
  }
}

// --- Ordering numbers -------------------------------------------------------------------------------------------------------

bool HasBackupOfItsOwn(const Package& package) {
  const char* const number = package.GetPON();
  const char* const backup = package.GetBackupPON();
  return backup != nullptr && (number == nullptr || std::strcmp(number, backup) != 0);
}

void CheckOrderingNumbers(const Records& records, Findings& findings) {
  Firsts firsts;
  firsts.reserve(records.devices.size());
  for (const DescribedDevice& device : records.devices) {
    ForEachPackage(device, [&](const Package& package, const plddb::Element& element) {
      const auto check = [&](const char* number, const char* attribute) {
        if (number == nullptr) return;
        const DescribedDevice& first = *firsts.try_emplace({number}, &device).first->second;
        if (&first == &device) return;
        findings.Add(element, attribute, Code::kOrderingNumberShared,
                     "the ordering number " + Quoted(number) + " is also one of " + Called(first, device));
      };
      check(package.GetPON(), "PON");
      if (HasBackupOfItsOwn(package)) check(package.GetBackupPON(), "BackupPON");
      check(package.GetAliasPON(), "AliasPON");
    });
  }
}

// --- Fuse counts ------------------------------------------------------------------------------------------------------------

void CheckFuseCounts(const Records& records, Findings& findings) {
  Firsts firsts;
  firsts.reserve(records.devices.size());
  for (const DescribedDevice& device : records.devices) {
    const unsigned int fuses = device.device->GetFuseNumber();
    const char* const code_name = device.device->GetCodeName();
    if (fuses == 0 || code_name == nullptr) continue;
    const auto [first, is_first] = firsts.try_emplace({code_name, fuses}, &device);
    if (is_first) continue;
    findings.Add(*device.element, "FuseNumber", Code::kFuseCountShared,
                 "the fuse count " + std::to_string(fuses) + " does not tell " + Quoted(code_name) + " from " +
                     Called(*first->second, device));
  }
}

}  // namespace

void CheckNames(const Records& records, Findings& findings) {
  CheckName(records, kName, findings);
  CheckAliases(records, CheckName(records, kCodeName, findings), findings);
  CheckFamilyNames(records, findings);
  CheckOrderingNumbers(records, findings);
  CheckFuseCounts(records, findings);
}

}  // namespace tool
