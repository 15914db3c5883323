#include <array>
#include <charconv>
#include <memory>
#include <string_view>
#include <system_error>

#include "command.h"
#include "databases.h"
#include "device_lookup.h"
#include "device_text.h"
#include "json_text.h"
#include "shared_options.h"
#include "standard_streams.h"
#include "suggestions.h"
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
  std::array<std::string, kKeys.size()> keys;  // in the order of kKeys
  std::string fuses, fullName, package, family, text;
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

// --- The lookups ------------------------------------------------------------------------------------------------------------

/// What was asked by the key at `i`: by its option, or by a TEXT that may be any key.
const std::string& Asked(const Options& options, std::size_t i) {
  return options.text.empty() ? options.keys[i] : options.text;
}

const DeviceInfo* FindInPackage(const std::vector<Database>& databases, const Options& options, const char* name) {
  return FirstOf(databases, [&](DeviceList& database) -> const DeviceInfo* {
    const char* const type = options.package.c_str();
    const FamilyList* const family = options.family.empty() ? nullptr : database.GetFamily(0);
    if (options.family.empty()) return database.GetDeviceWithPackage(type, name);
    return family == nullptr ? nullptr : family->GetDeviceWithPackage(type, name);
  });
}

std::vector<Found> FindDevices(const std::vector<Database>& databases, const Options& options) {
  std::vector<Found> found;
  const auto add = [&](const char* key, const DeviceInfo* device) {
    if (device != nullptr) found.push_back({key, device});
  };
  if (!options.package.empty()) {
    add("package and name", FindInPackage(databases, options, options.keys.front().c_str()));
  } else if (!options.fullName.empty()) {
    add("full name", FirstOf(databases, [&](DeviceList& database) {
          return database.GetDeviceWithFuseMapAndFullNameEx(FuseCount(options.fuses), options.fullName.c_str());
        }));
  } else {
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
      const char* const text = Asked(options, i).c_str();
      if (*text != '\0') add(kKeys[i].name, FindByKey(databases, kKeys[i], text, !options.family.empty()));
    }
  }
  return found;
}

// --- What is near -----------------------------------------------------------------------------------------------------------

/// What was looked for as a name; empty when something else was.
std::string WantedName(const Options& options) {
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    if (kKeys[i].nameOf != nullptr && !Asked(options, i).empty()) return Asked(options, i);
  }
  return options.fullName;
}

/// Names of the kinds that were asked for. A full name is compared with code names.
std::vector<std::string_view> KnownNames(const std::vector<Database>& databases, const Options& options) {
  if (!options.text.empty()) return AllNames(databases);
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    if (!options.keys[i].empty()) return NamesByKey(databases, kKeys[i]);
  }
  return NamesByKey(databases, kKeys[1]);
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
void CheckKeys(const Options& options, Option fuses) {
  int keys = options.text.empty() ? 0 : 1;
  for (const std::string& key : options.keys) keys += key.empty() ? 0 : 1;
  keys += fuses.IsGiven() ? 1 : 0;
  if (keys != 1) throw WrongUsage("give one TEXT, or one key to look for");
  if (fuses.IsGiven() && FuseCount(options.fuses) == 0) {
    throw WrongUsage("--fuses is " + Printable(options.fuses) + ": expected a decimal number above 0");
  }
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

ExitCode Answer(const std::vector<Database>& databases, const Options& options) {
  const bool listsCandidates = !options.fuses.empty() && options.fullName.empty();
  if (listsCandidates) return ListCandidates(FindCandidates(databases, FuseCount(options.fuses)), options);
  return AnswerDevices(databases, options);
}

ExitCode RunFind(const Options& options, const Option& fuses) {
  CheckKeys(options, fuses);
  const std::vector<Database>& databases = LoadDatabases(options.databases);
  if (options.family.empty()) return Answer(databases, options);
  WorkingCopies copies(databases);
  if (copies.KeepFamily(options.family)) return Answer(copies.Databases(), options);
  return ReportNothing(Suggestions(options.family, FamilyNames(databases)), "no family is named " + Printable(options.family));
}

}  // namespace

Run AddFind(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(subcommand, options->databases);
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    subcommand.Add("--" + std::string(kKeys[i].name), options->keys[i], kKeys[i].help).Type("TEXT").NotEmpty();
  }
  const Option fuses = subcommand.Add("--fuses", options->fuses, "The fuse count of a fuse-map file").Type("N");
  subcommand
      .Add("--full-name", options->fullName,
           "The device's full name in that file: blanks and what follows its last '-' do not count")
      .Type("TEXT")
      .NotEmpty()
      .Needs(fuses);
  subcommand.Add("--package", options->package, "A package type that the device of that name has")
      .Type("TYPE")
      .NotEmpty()
      .Needs(subcommand.Get("--name"));
  subcommand.Add("--family", options->family, "Only devices of the family of this name or alias name (letter case counts)")
      .Type("NAME")
      .NotEmpty();
  subcommand.AddFlag("--json", options->json, "Write a JSON object: {matches, suggestions}, or the candidates of --fuses");
  subcommand.Add("TEXT", options->text, "What to look for by every key").Type("").NotEmpty();
  subcommand.Footer(kFooter);
  return [options, fuses] { return RunFind(*options, fuses); };
}

}  // namespace tool
