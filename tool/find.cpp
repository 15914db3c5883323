#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <string_view>

#include "NearNames.h"
#include "command.h"
#include "databases.h"
#include "device_text.h"
#include "json_text.h"
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
  std::string name, codeName, alias, pon, jdf, entity, fullName, package, family, text;
  unsigned long fuses = 0;
  bool json = false;
};

/// What one key finds.
struct Found {
  std::string key;
  const DeviceInfo* device;
};

// --- The keys ---------------------------------------------------------------------------------------------------------------

/// A key by which devices are looked up: in a whole database, or in one family where there is a lookup for that; a family
/// without one is asked as a database of its own.
struct Key {
  const char* option;
  std::string Options::*text;
  const DeviceInfo* (*inDatabase)(const DeviceList& database, const char* text);
  const DeviceInfo* (*inFamily)(const FamilyList& family, const char* text);
  const char* help;
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
     [](const DeviceList& database, const char* text) -> const DeviceInfo* {
       const DeviceInfo* const device = database.GetDeviceWithPON(text, false);
       return device != nullptr ? device : database.GetDeviceWithPON(text, true);
     },
     nullptr, "The ordering name of one of its packages; failing that, one without what follows its last '-'"},
    {"--jdf", &Options::jdf,
     [](const DeviceList& database, const char* text) -> const DeviceInfo* { return database.GetDeviceWithJDFFileName(text); },
     nullptr, "The JEDEC device file of one of its packages"},
    {"--entity", &Options::entity,
     [](const DeviceList& database, const char* text) -> const DeviceInfo* {
       return database.GetDeviceWithEntityNameDisregardUES(text);
     },
     nullptr, "The entity name of one of its packages"},
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
  return FirstOf(databases, [&](DeviceList& database) -> const DeviceInfo* {
    const bool asksFamily = !options.family.empty() && key.inFamily != nullptr;
    if (!asksFamily) return key.inDatabase(database, text);
    const FamilyList* const family = database.GetFamily(0);  // the only one that was kept
    return family == nullptr ? nullptr : key.inFamily(*family, text);
  });
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
          return database.GetDeviceWithFuseMapAndFullNameEx(options.fuses, options.fullName.c_str());
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

/// Up to five names of devices that the text which was looked for may have meant.
std::vector<std::string> Suggestions(const std::vector<Database>& databases, const Options& options) {
  std::string_view wanted = options.text;
  for (const std::string* name : {&options.name, &options.codeName, &options.alias, &options.fullName}) {
    if (!name->empty()) wanted = *name;
  }
  if (wanted.empty()) return {};
  std::vector<std::string_view> known;
  for (const Database& database : databases) {
    ForEachDevice(*database.devices, [&](const DeviceInfo& device) {
      for (const char* name : {device.GetName(), device.GetCodeName(), device.GetAliasName()}) {
        if (name != nullptr) known.emplace_back(name);
      }
    });
  }
  const auto near = plddb::NearNames(wanted, known, 5);
  return {near.begin(), near.end()};
}

// --- Output -----------------------------------------------------------------------------------------------------------------

std::string JsonReport(const std::vector<Found>& found, const std::vector<std::string>& suggestions) {
  Json matches = Json::array();
  for (const auto& [key, device] : found) {
    const FamilyList* const family = device->GetFamilyObject();
    matches.push_back({{"key", key},
                       {"name", TextOrNull(device->GetName())},
                       {"family", TextOrNull(family == nullptr ? nullptr : family->GetName())},
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

ExitCode ReportNothing(const std::vector<std::string>& suggestions) {
  std::string message = "plddb: nothing found";
  for (std::size_t i = 0; i < suggestions.size(); ++i) message += (i == 0 ? "; did you mean " : ", ") + suggestions[i];
  WriteMessage(message + (suggestions.empty() ? "" : "?") + "\n");
  return ExitCode::kNotFound;
}

// --- Fuse counts ------------------------------------------------------------------------------------------------------------

std::string Lines(const char* title, const std::vector<std::string>& texts) {
  std::string lines = texts.empty() ? "" : std::string(title) + "\n";
  for (const std::string& text : texts) lines += "  " + text + "\n";
  return lines;
}

ExitCode ListCandidates(const std::vector<Database>& databases, const Options& options) {
  std::vector<std::string> codeNames;
  std::vector<std::string> names;
  for (const Database& database : databases) {
    std::vector<std::string> own;
    database.devices->GetDeviceCodeNameWithFuseMap(options.fuses, own);
    codeNames.insert(codeNames.end(), own.begin(), own.end());
    database.devices->GetDeviceWithFuseMap(options.fuses, names);  // appends
  }
  const bool isFound = !codeNames.empty() || !names.empty();
  if (options.json) {
    WriteOutput(ToText({{"fuses", options.fuses}, {"codeNames", codeNames}, {"names", names}}));
  } else {
    WriteOutput(Lines("Code names:", codeNames) + Lines("Names, of devices with a user signature:", names));
    if (!isFound) return ReportNothing({});
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
}

std::vector<Database> LoadFor(const Options& options) {
  std::vector<Database> databases = LoadDatabases(options.databases);
  if (options.family.empty()) return databases;
  bool isKnown = false;
  for (const Database& database : databases) isKnown = KeepOnlyFamily(*database.devices, options.family) || isKnown;
  if (!isKnown) throw WrongUsage("no family is named " + options.family);
  return databases;
}

ExitCode RunFind(const Options& options, const CLI::App& app) {
  CheckKeys(options, app);
  const std::vector<Database> databases = LoadFor(options);
  if (app.count("--fuses") > 0 && options.fullName.empty()) return ListCandidates(databases, options);
  const std::vector<Found> found = FindDevices(databases, options);
  const auto suggestions = found.empty() ? Suggestions(databases, options) : std::vector<std::string>();
  if (options.json) {
    WriteOutput(JsonReport(found, suggestions));
    return found.empty() ? ExitCode::kNotFound : ExitCode::kFound;
  }
  if (found.empty()) return ReportNothing(suggestions);
  WriteOutput(Table(found));
  return ExitCode::kFound;
}

}  // namespace

Run AddFind(CLI::App& app) {
  const auto options = std::make_shared<Options>();
  app.add_option("--db", options->databases, "A description file, or a folder of *.xml; may be given several times")
      ->type_name("FILE")
      ->allow_extra_args(false);
  for (const Key& key : kKeys) app.add_option(key.option, (*options).*key.text, key.help)->type_name("TEXT");
  auto* const fuses = app.add_option("--fuses", options->fuses, "The fuse count of a fuse-map file")->type_name("N");
  app.add_option("--full-name", options->fullName, "The device's full name in that file")->type_name("TEXT")->needs(fuses);
  app.add_option("--package", options->package, "A package type that the device of that name has")
      ->type_name("TYPE")
      ->needs(app.get_option("--name"));
  app.add_option("--family", options->family, "Only devices of this family")->type_name("NAME");
  app.add_flag("--json", options->json, "Write a JSON object: {matches, suggestions}, or the candidates of --fuses");
  app.add_option("TEXT", options->text, "What to look for by every key")->type_name("");
  app.footer(kFooter);
  return [options, &app] { return RunFind(*options, app); };
}

}  // namespace tool
