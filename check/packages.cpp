#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "check/first_records.h"
#include "check/rules.h"
#include "database/full_names.h"
#include "descriptions/TextForms.h"
#include "device/text_rules.h"

namespace plddb::check {
namespace {

using internal::OrEmpty;

/// Calls `visit(number, attribute)` for each ordering number of the package that is written.
template <typename Visit>
void ForEachWrittenNumber(const DescribedPackage& package, Visit visit) {
  for (const char* const attribute : {"PON", "BackupPON", "AliasPON"}) {
    if (const Attribute* const written = Written(package, attribute)) visit(written->value, attribute);
  }
}

// --- A package by itself ----------------------------------------------------------------------------------------------------

void CheckType(const DescribedPackage& package, Findings& findings) {
  if (*OrEmpty(package.package->GetType()) != '\0') return;
  findings.Add(package, "Type", CodeId::kPackageTypeMissing, "the package has no type: lookups by package type skip it");
}

void CheckEmptyNumbers(const DescribedPackage& package, Findings& findings) {
  for (const char* const attribute : {"PON", "AliasPON"}) {
    const Attribute* const written = Written(package, attribute);
    if (written == nullptr || !written->value.empty()) continue;
    findings.Add(package, attribute, CodeId::kOrderingNumberEmpty,
                 std::string(attribute) + " is empty: leave it out where the ordering number is not known");
  }
}

void CheckBackup(const DescribedPackage& package, Findings& findings) {
  const Attribute* const backup = Written(package, "BackupPON");
  if (backup == nullptr || (!backup->value.empty() && backup->value == OrEmpty(package.package->GetPON()))) return;
  const Attribute* const number = Written(package, "PON");
  findings.Add(package, "BackupPON", CodeId::kOrderingNumberBackup,
               "BackupPON is " + Quoted(backup->value) + ", but PON " +
                   (number == nullptr ? "is left out" : "is " + Quoted(number->value)) +
                   ": lookups by ordering number compare the backup alone");
}

// --- The packages of a device -----------------------------------------------------------------------------------------------

void CheckTwice(const DescribedDevice& device, Findings& findings) {
  std::unordered_map<std::string, Described> firsts;
  ForEachPackage(device, [&](const DescribedPackage& package) {
    std::string key = std::string(OrEmpty(package.package->GetType())) + '\n' + OrEmpty(package.package->GetPON());
    std::transform(key.begin(), key.end(), key.begin(), internal::ToUpper);
    const auto [first, isFirst] = firsts.try_emplace(std::move(key), package);
    if (isFirst) return;
    findings.Add(
        package, CodeId::kPackageTwice,
        "the package of line " + std::to_string(first->second.element->line) + " has the same type and ordering number",
        first->second);
  });
}

/// Lookups by package compare its type including letter case. Within a family, two spellings of one type are a mistake.
void CheckTypeCase(const Records& records, Findings& findings) {
  FirstRecords<DescribedDevice> firsts;
  const FamilyList* family = nullptr;
  for (const DescribedDevice& device : records.Devices()) {
    if (std::exchange(family, device.device->GetFamilyObject()) != device.device->GetFamilyObject()) firsts.clear();
    ForEachPackage(device, [&](const DescribedPackage& package) {
      const char* const type = OrEmpty(package.package->GetType());
      if (*type == '\0') return;
      const auto first = firsts.try_emplace({type}, &device).first;
      if (first->first.text == type) return;
      findings.Add(package, "Type", CodeId::kPackageTypeCase,
                   "the package type " + Quoted(type) + " is written " + Quoted(std::string(first->first.text)) + " for " +
                       records.NameFor(device, *first->second) + ": letter case counts in package types",
                   *first->second);
    });
  }
}

// --- Ordering numbers -------------------------------------------------------------------------------------------------------

using Firsts = FirstRecords<DescribedDevice>;

Firsts CheckSharedNumbers(const Records& records, Findings& findings) {
  Firsts firsts;
  firsts.reserve(records.Devices().size());
  for (const DescribedDevice& device : records.Devices()) {
    ForEachPackage(device, [&](const DescribedPackage& package) {
      ForEachWrittenNumber(package, [&](std::string_view number, const char* attribute) {
        const DescribedDevice& first = *firsts.try_emplace({number}, &device).first->second;
        if (&first == &device) return;
        const Attribute* const pon = Written(package, "PON");
        const bool repeats = std::string_view(attribute) == "BackupPON" && pon != nullptr && pon->value == number;
        if (repeats) return;
        findings.Add(package, attribute, CodeId::kOrderingNumberShared,
                     "the ordering number " + Quoted(number) + " is also one of " + records.NameFor(device, first), first);
      });
    });
  }
  return firsts;
}

/// The devices by their names and code names, of which the longest is found that a text begins with.
class NamePrefixes {
 public:
  explicit NamePrefixes(const Records& records) {
    for (const DescribedDevice& device : records.Devices()) {
      Add(OrEmpty(device.device->GetName()), device);
      Add(OrEmpty(device.device->GetCodeName()), device);
    }
  }

  /// The device with the longest name that `text` begins with, letter case ignored; null when there is none.
  const DescribedDevice* Longest(std::string_view text) const {
    std::vector<std::pair<std::uint64_t, std::size_t>> prefixes;  // hashes and lengths
    std::uint64_t hash = kStart;
    for (std::size_t i = 0; i < std::min(text.size(), longest_); ++i) {
      hash = Next(hash, text[i]);
      if (lengths_.count(i + 1) != 0) prefixes.emplace_back(hash, i + 1);
    }
    for (auto prefix = prefixes.rbegin(); prefix != prefixes.rend(); ++prefix) {
      const auto named = devices_.find(prefix->first);
      const TextKey key = {text.substr(0, prefix->second)};
      if (named != devices_.end() && EqualTextKeys()(key, {named->second.first})) return named->second.second;
    }
    return nullptr;
  }

 private:
  static constexpr std::uint64_t kStart = 14695981039346656037U;

  static std::uint64_t Next(std::uint64_t hash, char c) {
    return (hash ^ static_cast<unsigned char>(internal::ToUpper(c))) * 1099511628211U;
  }

  void Add(std::string_view name, const DescribedDevice& device) {
    std::uint64_t hash = kStart;
    for (const char c : name) hash = Next(hash, c);
    if (name.empty()) return;
    devices_.try_emplace(hash, name, &device);
    lengths_.insert(name.size());
    longest_ = std::max(longest_, name.size());
  }

  std::unordered_map<std::uint64_t, std::pair<std::string_view, const DescribedDevice*>> devices_;
  std::unordered_set<std::size_t> lengths_;
  std::size_t longest_ = 0;
};

std::size_t CommonLength(std::string_view a, std::string_view b) {
  std::size_t length = 0;
  while (length < std::min(a.size(), b.size()) && internal::IsSameLetter(a[length], b[length])) ++length;
  return length;
}

/// How much of `number` the longest of the device's names takes that it begins with.
std::size_t OwnLength(const DeviceInfo& device, std::string_view number) {
  std::size_t longest = 0;
  for (const std::string_view name :
       {OrEmpty(device.GetName()), OrEmpty(device.GetCodeName()), OrEmpty(device.GetAliasName())}) {
    if (CommonLength(name, number) == name.size()) longest = std::max(longest, name.size());
  }
  return longest;
}

/// Whether `device` is a variant of `other`, whose ordering numbers it may share: its name goes on after that of the other.
bool IsVariant(const DeviceInfo& device, std::string_view other) {
  return CommonLength(OrEmpty(device.GetName()), other) == other.size();
}

/// A number that another device has, too, is reported as that.
void CheckUnlikeNumbers(const Records& records, const Firsts& firsts, Findings& findings) {
  const NamePrefixes names(records);
  for (const DescribedDevice& device : records.Devices()) {
    ForEachPackage(device, [&](const DescribedPackage& package) {
      ForEachWrittenNumber(package, [&](std::string_view number, const char* attribute) {
        const DescribedDevice* const other = names.Longest(number);
        if (other == nullptr || other == &device || firsts.at({number}) != &device) return;
        const std::string_view name = OrEmpty(other->device->GetName());
        const std::size_t own = OwnLength(*device.device, number);
        if (own >= OwnLength(*other->device, number) || IsVariant(*device.device, name)) return;
        findings.Add(package, attribute, CodeId::kOrderingNumberUnlike,
                     "the ordering number " + Quoted(number) + " of " + PrintedName(*device.device) +
                         " begins with the name of " + records.NameFor(device, *other),
                     *other);
      });
    });
  }
}

// --- File names and entity names --------------------------------------------------------------------------------------------

/// What lookups compare of the name of a JEDEC device file.
std::string ComparedJdf(std::string_view name) {
  return std::string(name.substr(0, internal::kComparedJdfCharacters)) + '\n' + std::to_string(name.size());
}

std::string EntityName(std::string_view number) {
  std::string name;
  for (const char c : number) {
    if (c != ' ') name += internal::ToEntityCharacter(c);
  }
  return name;
}

/// A text of a package by which a lookup finds the first device that has one of the same form.
struct FormRule {
  CodeId code;
  char* (Package::*text)() const;
  const char* attributes[2];  // the place is the first of them that is written
  std::string (*form)(std::string_view text);
  const char* name;
};

constexpr FormRule kFormRules[] = {
    {CodeId::kJdfShared, &Package::GetJDF, {"JDF", "JDF"}, ComparedJdf, "JEDEC file name"},
    {CodeId::kEntityNameShared, &Package::GetBackupPON, {"BackupPON", "PON"}, EntityName, "entity name of"},
};

/// The first device that has a form, and its text of that form.
struct FirstForm {
  const DescribedDevice* device;
  std::string_view text;
};

void CheckForms(const Records& records, const FormRule& rule, Findings& findings) {
  std::unordered_map<std::string, FirstForm> firsts;
  for (const DescribedDevice& device : records.Devices()) {
    ForEachPackage(device, [&](const DescribedPackage& package) {
      const std::string_view text = OrEmpty((package.package->*rule.text)());
      if (text.empty()) return;
      const FirstForm& first = firsts.try_emplace(rule.form(text), FirstForm{&device, text}).first->second;
      const bool isNumber = rule.code == CodeId::kEntityNameShared;
      const bool isTold = isNumber && EqualTextKeys()({text}, {first.text});  // as a shared ordering number
      if (first.device == &device || isTold) return;
      const bool hasFirst = Written(package, rule.attributes[0]) != nullptr;
      findings.Add(package, rule.attributes[hasFirst ? 0 : 1], rule.code,
                   std::string("the ") + rule.name + ' ' + Quoted(text) + " finds " + records.NameFor(device, *first.device) +
                       ", which has " + Quoted(first.text),
                   *first.device);
    });
  }
}

}  // namespace

void CheckPackages(const Records& records, Findings& findings) {
  for (const DescribedDevice& device : records.Devices()) {
    ForEachPackage(device, [&](const DescribedPackage& package) {
      CheckType(package, findings);
      CheckEmptyNumbers(package, findings);
      CheckBackup(package, findings);
    });
    CheckTwice(device, findings);
  }
  CheckTypeCase(records, findings);
  CheckUnlikeNumbers(records, CheckSharedNumbers(records, findings), findings);
  for (const FormRule& rule : kFormRules) CheckForms(records, rule, findings);
}

}  // namespace plddb::check
