#include "device_lookup.h"

#include <unordered_set>

#include "device_text.h"
#include "text_table.h"

namespace tool {

using plddb::find::Key;
using plddb::find::Kind;
using plddb::find::Mark;
using plddb::find::Match;

extern constexpr std::array<KeyOption, 6> kKeys = {{
    {Key::kName, "The device's name"},
    {Key::kCodeName, "Its code name"},
    {Key::kAlias, "Its alias name"},
    {Key::kPon, "The ordering number of one of its packages; failing that, one without what follows its last '-'"},
    {Key::kJdf, "The JEDEC device file of one of its packages"},
    {Key::kEntity, "The entity name of one of its packages"},
}};

plddb::find::Databases ToSearch(const std::vector<Database>& databases) {
  plddb::find::Databases searched;
  searched.reserve(databases.size());
  for (const Database& database : databases) searched.push_back(database.devices.get());
  return searched;
}

Place PlaceOf(const std::vector<Database>& databases, const Match& match) {
  const Database& database = databases[match.database];
  int f = 0;
  for (const plddb::Element& family : database.outline.root.children) {
    const FamilyList& list = *database.devices->GetFamily(f++);
    int d = 0;
    for (const plddb::Element& child : family.children) {
      if (child.name == "Device" && list.GetDevice(d++) == match.device) return {&database, &family, &child};
    }
  }
  return {&database, nullptr, nullptr};  // never: every device is described
}

std::string MatchedBy(const Match& match) {
  const std::string key = NameOf(match.keys.front());
  switch (match.kind) {
    case Kind::kBegins:
      return "beginning of " + key;
    case Kind::kContains:
      return "part of " + key;
    case Kind::kPattern:
      return "pattern of " + key;
    case Kind::kMark:
      return "begins with";
    case Kind::kExact:
      break;
  }
  std::string keys;
  for (const Key one : match.keys) keys += (keys.empty() ? "" : ", ") + std::string(NameOf(one));
  return keys;
}

std::string RestOfMark(const Match& match) {
  const Mark& mark = *match.mark;
  std::string text;
  const auto add = [&text](const std::string& part) { text += (text.empty() ? "" : "; ") + part; };
  if (!mark.package.empty()) {
    add("package " + Printable(mark.package) + (mark.isLeadFree ? ", lead-free" : "") +
        (mark.isPackageDescribed ? "" : " (not described for " + DeviceName(*match.device) + ")"));
  }
  if (!mark.speed.empty()) add("speed grade " + mark.speed);
  if (mark.temperature != '\0') {
    add(std::string("temperature grade ") + mark.temperature + " (" + plddb::find::TemperatureName(mark.temperature) + ")");
  }
  std::string unknown;
  for (const std::string& part : mark.unknown) unknown += (unknown.empty() ? "" : ", ") + Printable(part);
  if (!unknown.empty()) add("unknown: " + unknown);
  return WrappedText("Begins with " + Printable(mark.name) + (text.empty() ? "" : "; after it: " + text));
}

std::vector<std::string_view> FamilyNames(const std::vector<Database>& databases) {
  std::vector<std::string_view> names;
  for (const Database& database : databases) {
    for (int i = 0; const FamilyList* const family = database.devices->GetFamily(i); ++i) {
      for (const char* const name : {family->GetName(), family->GetAliasName()}) {
        if (name != nullptr) names.emplace_back(name);
      }
    }
  }
  return names;
}

std::vector<std::string_view> EachOnce(const std::vector<std::string_view>& texts) {
  std::unordered_set<std::string_view> seen;
  std::vector<std::string_view> once;
  for (const std::string_view text : texts) {
    if (seen.insert(text).second) once.push_back(text);
  }
  return once;
}

}  // namespace tool
