#include "find/Find.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <system_error>

#include "chain/Chain.h"
#include "database/lookup_rules.h"
#include "device/identifiers.h"
#include "device/text_rules.h"
#include "find/search.h"

namespace plddb::find {
namespace {

using internal::AccessMode;

/// A text, and the numbers that it may be.
struct Wanted {
  explicit Wanted(std::string_view whole)
      : text(whole.find('\0') == whole.npos ? whole : std::string_view()),  // no name has a zero byte
        id(chain::ParseId(text).value_or(0)),
        fuses(ParseFuses(text)) {}

  std::string text;
  unsigned int id;      // 0: none
  unsigned long fuses;  // 0: none
};

using Rule = bool (*)(const FamilyList& family, const DeviceInfo& device, const Wanted& wanted);

bool HasType(const DeviceInfo& device, const char* type, bool (*isEqual)(const char*, const char*)) {
  return internal::AnyPackage(*device.GetDevicePackage(),
                              [&](const Package& package) { return isEqual(package.GetType(), type); });
}

struct KeyRule {
  Key key;
  const char* name;
  Rule rule;  ///< Null for a key that needs more than a text.
};

constexpr KeyRule kRules[] = {
    {Key::kName, "name",
     [](const FamilyList&, const DeviceInfo& device, const Wanted& wanted) {
       return internal::EqualIgnoringCase(device.GetName(), wanted.text.c_str());
     }},
    {Key::kCodeName, "code-name",
     [](const FamilyList&, const DeviceInfo& device, const Wanted& wanted) {
       return internal::EqualIgnoringCase(device.GetCodeName(), wanted.text.c_str());
     }},
    {Key::kAlias, "alias",
     [](const FamilyList&, const DeviceInfo& device, const Wanted& wanted) {
       return internal::AliasIs(wanted.text.c_str())(device);
     }},
    {Key::kId, "id",
     [](const FamilyList&, const DeviceInfo& device, const Wanted& wanted) {
       return wanted.id != 0 && internal::AnswersTo(device, AccessMode::kJtag, wanted.id);
     }},
    {Key::kIspId, "id for ISP",
     [](const FamilyList&, const DeviceInfo& device, const Wanted& wanted) {
       return wanted.id != 0 && internal::AnswersTo(device, AccessMode::kIsp, wanted.id);
     }},
    {Key::kPon, "pon",
     [](const FamilyList&, const DeviceInfo& device, const Wanted& wanted) {
       return internal::HasPON(device, wanted.text.c_str(), false);
     }},
    {Key::kJdf, "jdf",
     [](const FamilyList&, const DeviceInfo& device, const Wanted& wanted) {
       return internal::HasJDF(device, wanted.text.c_str());
     }},
    {Key::kEntity, "entity",
     [](const FamilyList&, const DeviceInfo& device, const Wanted& wanted) {
       return internal::HasEntityName(device, wanted.text.c_str());
     }},
    {Key::kFuses, "fuses",
     [](const FamilyList&, const DeviceInfo& device, const Wanted& wanted) {
       return wanted.fuses != 0 && (device.GetFuseNumber() == wanted.fuses || internal::HasFuseAlias(device, wanted.fuses));
     }},
    {Key::kFullName, "full name", nullptr},
    {Key::kFamily, "family",
     [](const FamilyList& family, const DeviceInfo&, const Wanted& wanted) { return HasFamilyName(family, wanted.text); }},
    {Key::kPackage, "package",
     [](const FamilyList&, const DeviceInfo& device, const Wanted& wanted) {
       return HasType(device, wanted.text.c_str(), internal::EqualIgnoringCase);
     }},
};

constexpr bool RowsAreInTheOrderOfTheKeys() {
  for (std::size_t i = 0; i < std::size(kRules); ++i) {
    if (kRules[i].key != static_cast<Key>(i)) return false;
  }
  return true;
}
static_assert(RowsAreInTheOrderOfTheKeys());

const KeyRule& RuleOf(Key key) { return kRules[static_cast<std::size_t>(key)]; }

void Collect(const Databases& databases, const std::string& family, Key key, const Wanted& wanted, Collector& found) {
  const Rule rule = RuleOf(key).rule;
  if (rule == nullptr || wanted.text.empty()) return;
  ForEachDevice(databases, family, [&](const FamilyList& list, const DeviceInfo& device, std::size_t database) {
    if (rule(list, device, wanted)) found.Add(device, database, key);
  });
}

Matches FindKeys(const Databases& databases, const std::string& family, std::initializer_list<Key> keys, const Wanted& wanted) {
  Collector found(Kind::kExact);
  for (const Key key : keys) Collect(databases, family, key, wanted, found);
  return found.Take();
}

/// Those with an ordering number that is `text` without what follows the number's last '-'.
Matches FindCutPon(const Databases& databases, const std::string& family, const Wanted& wanted) {
  Collector found(Kind::kExact);
  if (wanted.text.empty()) return {};
  ForEachDevice(databases, family, [&](const FamilyList&, const DeviceInfo& device, std::size_t database) {
    if (internal::HasPON(device, wanted.text.c_str(), true)) found.Add(device, database, Key::kPon);
  });
  return found.Take();
}

/// The keys that identify one device.
Matches FindWhole(const Databases& databases, const std::string& family, const Wanted& wanted) {
  Matches found = FindKeys(
      databases, family,
      {Key::kName, Key::kCodeName, Key::kAlias, Key::kId, Key::kIspId, Key::kPon, Key::kJdf, Key::kEntity, Key::kFuses},
      wanted);
  return found.empty() ? FindCutPon(databases, family, wanted) : found;
}

/// "XC9572XL-VQ44" of "XC9572XL-10-VQ44": without what lies between the last two hyphens, where that is a speed grade. Empty
/// when it is none.
std::string WithoutSpeed(const std::string& fullName) {
  const std::size_t last = fullName.rfind('-');
  if (last == fullName.npos || last == 0) return "";
  const std::size_t speed = fullName.rfind('-', last - 1);
  if (speed == fullName.npos || speed == 0) return "";
  const bool isNumber = fullName.find_first_not_of("0123456789 ", speed + 1) == last && last > speed + 1;
  return isNumber ? fullName.substr(0, speed) + fullName.substr(last) : "";
}

/// The devices of one database: by the whole name; failing that, by its normal form.
void CollectFullName(const Databases& databases, std::size_t only, const std::string& family, unsigned long fuses,
                     const std::string& fullName, Collector& found) {
  const std::string normal = internal::NormalForm(fullName);
  Collector whole(Kind::kExact);
  Collector cut(Kind::kExact);
  ForEachDevice({databases[only]}, family, [&](const FamilyList&, const DeviceInfo& device, std::size_t) {
    if (internal::HasWholeFullName(device, fuses, fullName.c_str())) whole.Add(device, only, Key::kFullName);
    if (internal::TakesFuseMap(device, fuses) && internal::HasFullName(device, normal)) cut.Add(device, only, Key::kFullName);
  });
  for (const Match& match : whole.IsEmpty() ? cut.Take() : whole.Take()) found.Add(*match.device, only, Key::kFullName);
}

/// Whole names, patterns and parts of them.
Matches FindNamed(const Databases& databases, std::string_view text, const std::string& family) {
  const Wanted wanted(internal::Trim(text));
  if (wanted.text.empty()) return {};
  Matches found = FindWhole(databases, family, wanted);
  if (found.empty()) found = FindKeys(databases, family, {Key::kFamily, Key::kPackage}, wanted);
  for (const auto find : {FindPattern, FindBeginning, FindPart}) {
    if (found.empty()) found = find(databases, wanted.text, family);
  }
  return found;
}

/// Signs of web and printed pages, and the ones that they mean.
constexpr struct {
  std::string_view sign;
  const char* plain;
} kSigns[] = {
    {"\xC2\xA0", " "},     {"\xE2\x80\x80", " "}, {"\xE2\x80\x82", " "}, {"\xE2\x80\x83", " "}, {"\xE2\x80\x87", " "},
    {"\xE2\x80\x89", " "}, {"\xE2\x80\xAF", " "}, {"\xE3\x80\x80", " "}, {"\xE2\x80\x90", "-"}, {"\xE2\x80\x91", "-"},
    {"\xE2\x80\x92", "-"}, {"\xE2\x80\x93", "-"}, {"\xE2\x80\x94", "-"}, {"\xE2\x80\x95", "-"}, {"\xE2\x88\x92", "-"},
    {"\xEF\xB9\xA3", "-"}, {"\xEF\xBC\x8D", "-"}, {"\xC2\xAD", ""},      {"\xE2\x80\x8B", ""},  {"\xEF\xBB\xBF", ""},
    {"\xC2\xAE", ""},      {"\xE2\x84\xA2", ""},
};

/// `text` with plain blanks and hyphens, and without trade marks and soft hyphens.
std::string WithPlainSigns(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const auto begins = [&](const auto& row) { return text.compare(0, row.sign.size(), row.sign) == 0; };
    const auto* const row = std::find_if(std::begin(kSigns), std::end(kSigns), begins);
    const bool isSign = row != std::end(kSigns);
    plain += isSign ? std::string_view(row->plain) : text.substr(0, 1);
    text.remove_prefix(isSign ? row->sign.size() : 1);
  }
  return plain;
}

}  // namespace

const char* NameOf(Key key) { return RuleOf(key).name; }

const char* NameOf(Kind kind) {
  constexpr const char* names[] = {"exact", "begins", "contains", "pattern", "mark"};
  return names[static_cast<std::size_t>(kind)];
}

bool IsAmbiguous(const Matches& matches) {
  if (matches.size() < 2) return false;
  const Match& first = matches.front();
  return first.kind == Kind::kMark || (first.kind == Kind::kExact && first.keys.front() < Key::kFuses) ||
         (first.kind == Kind::kExact && first.keys.front() == Key::kFullName);
}

unsigned long ParseFuses(std::string_view text) {
  unsigned long count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  return error == std::errc() && end == text.data() + text.size() ? count : 0;
}

Matches Find(const Databases& databases, std::string_view text, std::string_view family) {
  const std::string in(family);
  Matches found = FindNamed(databases, text, in);
  if (!found.empty()) return found;
  std::string plain = WithPlainSigns(text);
  plain = internal::Trim(plain);
  if (plain != text) found = FindNamed(databases, plain, in);
  return !found.empty() || plain.find('\0') != plain.npos ? found : FindMark(databases, plain, in);
}

Matches FindByKey(const Databases& databases, Key key, std::string_view text, std::string_view family) {
  const Wanted wanted(text);
  Matches found = FindKeys(databases, std::string(family), {key}, wanted);
  return found.empty() && key == Key::kPon ? FindCutPon(databases, std::string(family), wanted) : found;
}

Matches FindPackage(const Databases& databases, std::string_view type, std::string_view name, std::string_view family) {
  Matches found = FindByKey(databases, Key::kName, name, family);
  const std::string wanted(type);
  const auto hasNone = [&](const Match& match) { return !HasType(*match.device, wanted.c_str(), internal::EqualExactly); };
  found.erase(std::remove_if(found.begin(), found.end(), hasNone), found.end());
  for (Match& match : found) match.keys = {Key::kName, Key::kPackage};
  return found;
}

Matches FindFullName(const Databases& databases, unsigned long fuses, std::string_view fullName, std::string_view family) {
  const std::string whole(fullName);
  for (const std::string& name : {whole, WithoutSpeed(whole)}) {
    Collector found(Kind::kExact);
    if (name.empty() || name.find('\0') != name.npos) continue;
    for (std::size_t i = 0; i < databases.size(); ++i) {
      CollectFullName(databases, i, std::string(family), fuses, name, found);
    }
    if (!found.IsEmpty()) return found.Take();
  }
  return {};
}

}  // namespace plddb::find
