#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <functional>
#include <memory>
#include <string_view>
#include <system_error>

#include "NearNames.h"
#include "command.h"
#include "databases.h"
#include "device_text.h"
#include "json_text.h"
#include "shared_options.h"
#include "standard_streams.h"
#include "text_table.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    R"(A TEXT without an option is tried as every key, and the answer says which of them matched; when none does, near names are offered.

Names, code names, alias names, ordering names and entity names are compared ignoring case; package types exactly; names of
JEDEC device files by their first six characters and their length. The first device that matches is the answer, in the order
of the databases and of their devices. --fuses alone lists all candidates for a fuse count.

Exit code: 0 when something is found, 1 when nothing is, 2 for wrong usage or data that cannot be read.

Examples: plddb find XC9572XL        plddb find --pon XC9572XL-7VQ44C        plddb find --package VQ44 --name xc9572xl)";

struct Options {
  std::vector<std::string> databases;
  std::string name, codeName, alias, pon, jdf, entity, fuses, fullName, package, family, text;
  bool json = false;
};

/// What one key finds.
struct Found {
  std::string key;
  const DeviceInfo* device;
};

/// The fuse count that `text` says in decimal digits; 0, which is no count, when it does not.
unsigned long FuseCount(const std::string& text) {
  unsigned long count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  return error == std::errc() && end == text.data() + text.size() ? count : 0;
}

// --- The keys ---------------------------------------------------------------------------------------------------------------

/// A key by which devices are looked up: in a whole database, or in one family where there is a lookup for that; a family
/// without one is asked as a database of its own.
struct Key {
  const char* option;
  std::string Options::*text;
  const DeviceInfo* (*inDatabase)(const DeviceList& database, const char* text);
  const DeviceInfo* (*inFamily)(const FamilyList& family, const char* text);
  const char* help;
  const DeviceInfo* (*otherwise)(const DeviceList& database, const char* text) = nullptr;  ///< When no database answered.
};

bool EqualTexts(const char* a, const char* b) {
  std::string left = a == nullptr ? "" : a;
  std::string right = b == nullptr ? "" : b;
  strupr(left);
  strupr(right);
  return a != nullptr && left == right;
}

/// The lookup by code name also knows alias names, behind all code names: `device` is what it found for `text`.
const DeviceInfo* OnlyByCodeName(const DeviceInfo* device, const char* text) {
  return device != nullptr && EqualTexts(device->GetCodeName(), text) ? device : nullptr;
}

const DeviceInfo* OnlyByAlias(const DeviceInfo* device, const char* text) {
  return device != nullptr && !EqualTexts(device->GetCodeName(), text) ? device : nullptr;
}

// clang-format off
constexpr Key kKeys[] = {
    {"--name", &Options::name,
     [](const DeviceList& database, const char* text) -> const DeviceInfo* { return database.GetDeviceWithName(text); },
     [](const FamilyList& family, const char* text) -> const DeviceInfo* { return family.GetDevice(text); },
     "The device's name"},
    {"--code-name", &Options::codeName,
     [](const DeviceList& database, const char* text) { return OnlyByCodeName(database.GetDeviceWithCodeName(text), text); },
     [](const FamilyList& family, const char* text) { return OnlyByCodeName(family.GetDeviceWithCodeName(text), text); },
     "Its code name"},
    {"--alias", &Options::alias,
     [](const DeviceList& database, const char* text) { return OnlyByAlias(database.GetDeviceWithCodeName(text), text); },
     [](const FamilyList& family, const char* text) { return OnlyByAlias(family.GetDeviceWithCodeName(text), text); },
     "Its alias name, unless a device has it as its code name"},
    {"--pon", &Options::pon,
     [](const DeviceList& database, const char* text) -> const DeviceInfo* { return database.GetDeviceWithPON(text, false); },
     nullptr, "The ordering name of one of its packages; failing that, one without what follows its last '-'",
     [](const DeviceList& database, const char* text) -> const DeviceInfo* { return database.GetDeviceWithPON(text, true); }},
    {"--jdf", &Options::jdf,
     [](const DeviceList& database, const char* text) -> const DeviceInfo* { return database.GetDeviceWithJDFFileName(text); },
     nullptr, "The JEDEC device file of one of its packages"},
    {"--entity", &Options::entity,
     [](const DeviceList& database, const char* text) -> const DeviceInfo* {
       return database.GetDeviceWithEntityNameDisregardUES(text);
     },
     nullptr, "The entity name of one of its packages, whether or not the device has a user signature"},
};
// clang-format on

/// Leaves `database` with the family `name` (or alias name) alone; false, and no family, when it has none.
bool KeepOnlyFamily(DeviceList& database, const std::string& name) {
  const FamilyList* const kept = database.GetFamily(name.c_str());
  for (int i = 0; FamilyList* const family = database.GetFamily(i);) {
    if (family == kept) {
      ++i;
    } else {
      ReleaseDevices(*family);
      database.DeleteFamily(i);
    }
  }
  return kept != nullptr;
}

/// The first answer of `lookup(database)`, in the order of the databases; null when there is none.
const DeviceInfo* FirstOf(const std::vector<Database>& databases, const std::function<const DeviceInfo*(DeviceList&)>& lookup) {
  for (const Database& database : databases) {
    if (const DeviceInfo* const device = lookup(*database.devices)) return device;
  }
  return nullptr;
}

const DeviceInfo* FindByKey(const std::vector<Database>& databases, const Options& options, const Key& key, const char* text) {
  const DeviceInfo* const device = FirstOf(databases, [&](DeviceList& database) -> const DeviceInfo* {
    const bool asksFamily = !options.family.empty() && key.inFamily != nullptr;
    if (!asksFamily) return key.inDatabase(database, text);
    const FamilyList* const family = database.GetFamily(0);  // the only one that was kept
    return family == nullptr ? nullptr : key.inFamily(*family, text);
  });
  if (device != nullptr || key.otherwise == nullptr) return device;
  return FirstOf(databases, [&](DeviceList& database) { return key.otherwise(database, text); });
}

const DeviceInfo* FindInPackage(const std::vector<Database>& databases, const Options& options) {
  return FirstOf(databases, [&](DeviceList& database) -> const DeviceInfo* {
    const char* const type = options.package.c_str();
    const FamilyList* const family = options.family.empty() ? nullptr : database.GetFamily(0);
    if (options.family.empty()) return database.GetDeviceWithPackage(type, options.name.c_str());
    return family == nullptr ? nullptr : family->GetDeviceWithPackage(type, options.name.c_str());
  });
}

std::vector<Found> FindDevices(const std::vector<Database>& databases, const Options& options) {
  std::vector<Found> found;
  const auto add = [&](const char* key, const DeviceInfo* device) {
    if (device != nullptr) found.push_back({key, device});
  };
  if (!options.package.empty()) {
    add("package and name", FindInPackage(databases, options));
  } else if (!options.fullName.empty()) {
    add("full name", FirstOf(databases, [&](DeviceList& database) {
          return database.GetDeviceWithFuseMapAndFullNameEx(FuseCount(options.fuses), options.fullName.c_str());
        }));
  } else {
    for (const Key& key : kKeys) {
      const std::string& text = options.text.empty() ? options.*key.text : options.text;
      if (!text.empty()) add(key.option + 2, FindByKey(databases, options, key, text.c_str()));
    }
  }
  return found;
}

// --- What is near -----------------------------------------------------------------------------------------------------------

/// The names of the devices by which `options` asks: of the field that was asked, or of all fields that are names.
std::vector<std::string_view> KnownNames(const std::vector<Database>& databases, const Options& options) {
  const bool takesAll = !options.text.empty();
  std::vector<std::string_view> known;
  const auto add = [&](bool isAsked, const char* name) {
    if ((takesAll || isAsked) && name != nullptr) known.emplace_back(name);
  };
  for (const Database& database : databases) {
    ForEachDevice(*database.devices, [&](const DeviceInfo& device) {
      add(!options.name.empty(), device.GetName());
      add(!options.codeName.empty() || !options.fullName.empty(), device.GetCodeName());
      add(!options.alias.empty(), device.GetAliasName());
    });
  }
  return known;
}

/// Up to five texts of `known` that `wanted` may have meant.
std::vector<std::string> Suggestions(const std::string& wanted, const std::vector<std::string_view>& known) {
  const auto near = plddb::NearNames(wanted, known, 5);
  std::vector<std::string> suggestions(near.begin(), near.end());
  suggestions.erase(std::remove(suggestions.begin(), suggestions.end(), wanted), suggestions.end());
  return suggestions;
}

/// The text that was looked for as a name; empty when something else was.
const std::string& WantedName(const Options& options) {
  for (const std::string* name : {&options.text, &options.name, &options.codeName, &options.alias}) {
    if (!name->empty()) return *name;
  }
  return options.fullName;
}

// --- Output -----------------------------------------------------------------------------------------------------------------

std::string JsonReport(const std::vector<Found>& found, const std::vector<std::string>& suggestions) {
  Json matches = Json::array();
  for (const auto& [key, device] : found) {
    matches.push_back({{"key", key},
                       {"name", TextOrNull(device->GetName())},
                       {"family", TextOrNull(FamilyNameOrNull(*device))},
                       {"codeName", TextOrNull(device->GetCodeName())},
                       {"packages", PackageTypeList(*device)}});
  }
  return ToText({{"matches", matches}, {"suggestions", suggestions}});
}

std::string Table(const std::vector<Found>& found) {
  std::vector<Row> rows = {{"matched by", "device", "family", "code name", "packages"}};
  for (const auto& [key, device] : found) {
    rows.push_back({key, DeviceName(*device), FamilyName(*device), TextOrDash(device->GetCodeName()), PackageTypes(*device)});
  }
  return AlignedTable(rows);
}

ExitCode ReportNothing(const std::vector<std::string>& suggestions, std::string message = "plddb: nothing found") {
  for (std::size_t i = 0; i < suggestions.size(); ++i)
    message += (i == 0 ? "; did you mean " : ", ") + Printable(suggestions[i]);
  WriteMessage(message + (suggestions.empty() ? "" : "?") + "\n");
  return ExitCode::kNotFound;
}

// --- Fuse counts ------------------------------------------------------------------------------------------------------------

std::string Lines(const char* title, const std::vector<std::string>& texts) {
  std::string lines = texts.empty() ? "" : std::string(title) + "\n";
  for (const std::string& text : texts) lines += "  " + Printable(text) + "\n";
  return lines;
}

struct Candidates {
  std::vector<std::string> codeNames;
  std::vector<std::string> names;
};

Candidates FindCandidates(const std::vector<Database>& databases, unsigned long fuses) {
  Candidates found;
  if (fuses == 0) return found;
  for (const Database& database : databases) {
    std::vector<std::string> codeNames;
    database.devices->GetDeviceCodeNameWithFuseMap(fuses, codeNames);
    found.codeNames.insert(found.codeNames.end(), codeNames.begin(), codeNames.end());
    database.devices->GetDeviceWithFuseMap(fuses, found.names);  // appends
  }
  return found;
}

ExitCode ListCandidates(const Candidates& found, const Options& options) {
  const bool isFound = !found.codeNames.empty() || !found.names.empty();
  if (options.json) {
    const std::string& fuses = options.fuses.empty() ? options.text : options.fuses;
    WriteOutput(ToText({{"fuses", FuseCount(fuses)}, {"codeNames", found.codeNames}, {"names", found.names}}));
  } else if (isFound) {
    WriteOutput(Lines("Code names for this fuse count:", found.codeNames) +
                Lines("Names for it, of devices with a user signature:", found.names));
  } else {
    return ReportNothing({});
  }
  return isFound ? ExitCode::kFound : ExitCode::kNotFound;
}

// --- The command ------------------------------------------------------------------------------------------------------------

/// Refuses questions that no lookup answers.
void CheckKeys(const Options& options, const CLI::App& app) {
  int keys = options.text.empty() ? 0 : 1;
  for (const Key& key : kKeys) keys += app.count(key.option) > 0 ? 1 : 0;
  keys += app.count("--fuses") > 0 ? 1 : 0;
  if (keys != 1) throw WrongUsage("give one TEXT, or one key to look for");
  if (app.count("--fuses") > 0 && FuseCount(options.fuses) == 0) {
    throw WrongUsage("--fuses is " + Printable(options.fuses) + ": expected a decimal number above 0");
  }
}

/// Leaves the databases with the family that was asked for; false when none of them has it.
bool KeepFamily(const std::vector<Database>& databases, const std::string& name) {
  bool isKnown = name.empty();
  for (const Database& database : databases) {
    if (!name.empty()) isKnown = KeepOnlyFamily(*database.devices, name) || isKnown;
  }
  return isKnown;
}

std::vector<std::string> FamilyNames(const std::vector<Database>& databases) {
  std::vector<std::string> names;
  for (const Database& database : databases) {
    for (int i = 0; const FamilyList* const family = database.devices->GetFamily(i); ++i) {
      for (const char* const name : {family->GetName(), family->GetAliasName()}) {
        if (name != nullptr) names.emplace_back(name);
      }
    }
  }
  return names;
}

ExitCode AnswerDevices(const std::vector<Database>& databases, const Options& options) {
  const std::vector<Found> found = FindDevices(databases, options);
  const Candidates candidates = FindCandidates(databases, FuseCount(options.text));  // a TEXT may be a fuse count, too
  if (found.empty() && !candidates.codeNames.empty()) return ListCandidates(candidates, options);
  const auto suggestions =
      found.empty() ? Suggestions(WantedName(options), KnownNames(databases, options)) : std::vector<std::string>();
  if (options.json) {
    WriteOutput(JsonReport(found, suggestions));
    return found.empty() ? ExitCode::kNotFound : ExitCode::kFound;
  }
  if (found.empty()) return ReportNothing(suggestions);
  WriteOutput(Table(found));
  return ExitCode::kFound;
}

ExitCode RunFind(const Options& options, const CLI::App& app) {
  CheckKeys(options, app);
  const std::vector<Database> databases = LoadDatabases(options.databases);
  const std::vector<std::string> families = FamilyNames(databases);
  if (!KeepFamily(databases, options.family)) {
    const std::vector<std::string_view> known(families.begin(), families.end());
    return ReportNothing(Suggestions(options.family, known), "plddb: no family is named " + Printable(options.family));
  }
  const bool listsCandidates = !options.fuses.empty() && options.fullName.empty();
  if (listsCandidates) return ListCandidates(FindCandidates(databases, FuseCount(options.fuses)), options);
  return AnswerDevices(databases, options);
}

CLI::Validator NotEmpty() {
  return CLI::Validator([](const std::string& text) { return text.empty() ? "must not be empty" : ""; }, "");
}

}  // namespace

Run AddFind(CLI::App& app) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(app, options->databases);
  for (const Key& key : kKeys) app.add_option(key.option, (*options).*key.text, key.help)->type_name("TEXT")->check(NotEmpty());
  auto* const fuses = app.add_option("--fuses", options->fuses, "The fuse count of a fuse-map file")->type_name("N");
  app.add_option("--full-name", options->fullName,
                 "The device's full name in that file: blanks and what follows its last '-' do not count")
      ->type_name("TEXT")
      ->check(NotEmpty())
      ->needs(fuses);
  app.add_option("--package", options->package, "A package type that the device of that name has")
      ->type_name("TYPE")
      ->check(NotEmpty())
      ->needs(app.get_option("--name"));
  app.add_option("--family", options->family, "Only devices of the family of this name or alias name (letter case counts)")
      ->type_name("NAME")
      ->check(NotEmpty());
  app.add_flag("--json", options->json, "Write a JSON object: {matches, suggestions}, or the candidates of --fuses");
  app.add_option("TEXT", options->text, "What to look for by every key")->type_name("")->check(NotEmpty());
  app.footer(kFooter);
  return [options, &app] { return RunFind(*options, app); };
}

}  // namespace tool
