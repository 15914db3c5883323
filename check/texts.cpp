#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

#include "check/device_rules.h"
#include "check/rules.h"
#include "descriptions/TextForms.h"
#include "device/identifiers.h"
#include "foundation/characters.h"
#include "foundation/text_match.h"

namespace plddb::check {
namespace {

// --- Access modes and names -------------------------------------------------------------------------------------------------

std::string AccessMode(const DescribedDevice& device) {
  const bool isKnown =
      internal::WithAccessMode(device.device->GetComm(), [](auto mode) { return mode != internal::AccessMode::kUnknown; });
  return isKnown ? "" : "the access mode is " + QuotedValue(device, "Comm") + ": expected JTAG, ISP or DUAL";
}

std::string AccessModeMissing(const DescribedDevice& device) {
  return device.device->GetComm() == nullptr ? "the device has no access mode (Comm): lookups by access mode never find it"
                                             : "";
}

std::string Missing(const char* text, const std::string& attribute) {
  if (text != nullptr) return "";
  return "the device has no " + attribute + ": lookups with an access mode or a package compare the " + attribute +
         " of the device before it instead, and find the wrong one";
}

std::string NameMissing(const DescribedDevice& device) { return Missing(device.device->GetName(), "Name"); }

std::string CodeNameMissing(const DescribedDevice& device) { return Missing(device.device->GetCodeName(), "CodeName"); }

std::string Empty(const char* text, const std::string& attribute) {
  return text != nullptr && *text == '\0' ? attribute + " is empty: the device is not found by it" : "";
}

std::string NameEmpty(const DescribedDevice& device) { return Empty(device.device->GetName(), "Name"); }

std::string CodeNameEmpty(const DescribedDevice& device) { return Empty(device.device->GetCodeName(), "CodeName"); }

/// A longer text that begins with the family's name, such as "PLD1200 series", means the family.
bool MeansFamily(std::string_view text, std::string_view family) {
  return text == family || (text.substr(0, family.size()) == family && text.substr(family.size(), 1) == " ");
}

std::string FamilyTextUnlike(const DescribedDevice& device) {
  const FamilyList* const family = device.device->GetFamilyObject();
  const char* const name = family == nullptr ? nullptr : family->GetName();
  const char* const text = device.device->GetFamily();
  if (name == nullptr || text == nullptr || MeansFamily(internal::Trim(text), internal::Trim(name))) return "";
  return "the device's family is " + Quoted(text) + ", but it is described in the family " + Quoted(name);
}

std::string TooLong(const char* text) {
  if (text == nullptr || internal::IsComparable(text)) return "";
  return "a text of " + std::to_string(std::strlen(text)) + " characters: lookups that compare at most " +
         std::to_string(internal::kLongestComparedText) + " miss it";
}

template <char* (DeviceInfo::*Text)() const>
std::string LongText(const DescribedDevice& device) {
  return TooLong((device.device->*Text)());
}

// clang-format off
constexpr DeviceRule kTextRules[] = {
    {CodeId::kAccessMode,        About::kWritten,     "Comm",      AccessMode},
    {CodeId::kAccessModeMissing, About::kAlsoLeftOut, "Comm",      AccessModeMissing},
    {CodeId::kNameMissing,       About::kAlsoLeftOut, "Name",      NameMissing},
    {CodeId::kNameMissing,       About::kAlsoLeftOut, "CodeName",  CodeNameMissing},
    {CodeId::kNameEmpty,         About::kWritten,     "Name",      NameEmpty},
    {CodeId::kNameEmpty,         About::kWritten,     "CodeName",  CodeNameEmpty},
    {CodeId::kFamilyTextUnlike,  About::kWritten,     "Family",    FamilyTextUnlike},
    {CodeId::kTextLong,          About::kWritten,     "Name",      LongText<&DeviceInfo::GetName>},
    {CodeId::kTextLong,          About::kWritten,     "CodeName",  LongText<&DeviceInfo::GetCodeName>},
    {CodeId::kTextLong,          About::kWritten,     "AliasName", LongText<&DeviceInfo::GetAliasName>},
    {CodeId::kTextLong,          About::kWritten,     "Vendor",    LongText<&DeviceInfo::GetVendor>},
};
// clang-format on

// --- Blanks and other signs
// -----------------------------------------------------------------------------------------------------------------

/// Characters beyond ASCII that look like a blank or like nothing.
constexpr std::string_view kWideBlanks[] = {
    "\xC2\xA0",      // no-break space
    "\xE2\x80\x83",  // em space
    "\xE2\x80\x89",  // thin space
    "\xE2\x80\x8B",  // zero width space
    "\xE2\x80\xAF",  // narrow no-break space
    "\xE3\x80\x80",  // ideographic space
    "\xEF\xBB\xBF",  // zero width no-break space
};

bool HasBlankEnd(std::string_view text) {
  if (internal::Trim(text).size() != text.size()) return true;
  return std::any_of(std::begin(kWideBlanks), std::end(kWideBlanks), [text](std::string_view blank) {
    return text.size() >= blank.size() &&
           (text.substr(0, blank.size()) == blank || text.substr(text.size() - blank.size()) == blank);
  });
}

/// Signs beyond ASCII that look like a hyphen or like nothing: they come from a printed page.
constexpr std::string_view kHyphens[] = {
    "\xC2\xAD",      // soft hyphen
    "\xE2\x80\x90",  // hyphen
    "\xE2\x80\x91",  // no-break hyphen
    "\xE2\x80\x92",  // figure dash
    "\xE2\x80\x93",  // en dash
    "\xE2\x80\x94",  // em dash
    "\xE2\x88\x92",  // minus sign
};

/// A control character, a blank that is none of ASCII, or a dash: no one types these.
bool HasStrangeSign(std::string_view text) {
  const auto isIn = [text](std::string_view sign) { return text.find(sign) != text.npos; };
  const auto isControl = [](char c) { return (c > 0 && c < ' ') || c == 0x7F; };
  return std::any_of(text.begin(), text.end(), isControl) || std::any_of(std::begin(kHyphens), std::end(kHyphens), isIn) ||
         std::any_of(std::begin(kWideBlanks), std::end(kWideBlanks), isIn);
}

// The texts that lookups compare. The access mode has its own rule.
constexpr const char* kComparedOfFamily[] = {"Name", "AliasName"};
constexpr const char* kComparedOfDevice[] = {"Name", "CodeName", "AliasName", "Family", "Vendor"};
constexpr const char* kComparedOfPackage[] = {"Type", "PON", "BackupPON", "AliasPON", "JDF"};

template <std::size_t count>
void CheckSigns(const Described& record, const char* const (&attributes)[count], Findings& findings) {
  for (const char* const attribute : attributes) {
    const Attribute* const written = Written(record, attribute);
    if (written == nullptr) continue;
    const std::string value = std::string(attribute) + " is " + Quoted(written->value);
    if (HasBlankEnd(written->value)) {
      findings.Add(record, attribute, CodeId::kTextBlanks, value + ": lookups compare the blanks, too");
    } else if (HasStrangeSign(written->value)) {
      findings.Add(record, attribute, CodeId::kTextSigns,
                   value + ": it has a blank, a dash or another sign that users do not type");
    }
  }
}

void CheckPackageTexts(const DescribedPackage& package, Findings& findings) {
  CheckSigns(package, kComparedOfPackage, findings);
  std::string fault = TooLong(package.package->GetBackupPON());
  if (fault.empty()) return;
  const bool isWritten = Written(package, "BackupPON") != nullptr;
  findings.Add(package, isWritten ? "BackupPON" : "PON", CodeId::kTextLong, std::move(fault));
}

void CheckFamilyName(const DescribedFamily& family, Findings& findings) {
  const char* const name = family.family->GetName();
  if (name != nullptr && *name != '\0') return;
  findings.Add(family, "Name", CodeId::kFamilyNameMissing,
               "the family has no name: no lookup finds it, and its devices have none");
}

}  // namespace

void CheckNamesAndTexts(const Records& records, Findings& findings) {
  for (const DescribedFamily& family : records.Families()) {
    CheckSigns(family, kComparedOfFamily, findings);
    CheckFamilyName(family, findings);
  }
  for (const DescribedDevice& device : records.Devices()) {
    Apply(kTextRules, device, findings);
    CheckSigns(device, kComparedOfDevice, findings);
    ForEachPackage(device, [&](const DescribedPackage& package) { CheckPackageTexts(package, findings); });
  }
}

}  // namespace plddb::check
