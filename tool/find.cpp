#include <algorithm>
#include <array>
#include <memory>

#include "colour.h"
#include "command.h"
#include "databases.h"
#include "device_lookup.h"
#include "device_text.h"
#include "element_tables.h"
#include "find_forms.h"
#include "json_text.h"
#include "shared_options.h"
#include "standard_streams.h"
#include "suggestions.h"
#include "text_table.h"

namespace tool {
namespace {

using plddb::find::Key;
using plddb::find::Match;
using plddb::find::Matches;

constexpr const char* kFooter =
    R"(A TEXT without an option is compared with names, code names, alias names, ordering numbers, JEDEC device files, entity names, ids (8 hex digits, or 0x and 1 to 8 of them) and fuse counts. If nothing matches, it is taken for a family or a package type; then for a pattern with * and ?, or the beginning or a part of one of these; then for a mark on a chip, which begins with a name, and continues with package, speed grade and temperature grade.

Letter case is ignored, except for package types after --package and for JEDEC device files. Of these, the first six characters and the length are compared. All devices that match are listed, in the order of the databases. The first is marked if lookups return only one.

Exit code: 0 when something is found, 1 when nothing is, or several with --unique; 2 for wrong usage or data that cannot be read.)";

struct Options {
  std::vector<std::string> databases;
  std::array<std::string, kKeys.size()> keys;  // in the order of kKeys
  std::string fuses, fullName, package, family, text;
  bool all = false;
  bool unique = false;
  bool json = false;
};

unsigned long Fuses(const Options& options) { return plddb::find::ParseFuses(options.fuses); }

/// The fuse count whose candidates are wanted; 0 without one.
unsigned long CountAsked(const Options& options) { return options.fullName.empty() ? Fuses(options) : 0; }

/// The keys that --NAME asks for, at most one.
std::size_t KeyAsked(const Options& options) {
  const auto given = std::find_if(options.keys.begin(), options.keys.end(), [](const auto& key) { return !key.empty(); });
  return static_cast<std::size_t>(given - options.keys.begin());
}

// --- The lookups ------------------------------------------------------------------------------------------------------------

Matches FindMatches(const plddb::find::Databases& databases, const Options& options) {
  if (!options.text.empty()) return plddb::find::Find(databases, options.text, options.family);
  const std::size_t key = KeyAsked(options);
  if (!options.package.empty()) {
    return plddb::find::FindPackage(databases, options.package, options.keys[key], options.family);
  }
  if (!options.fullName.empty()) {
    return plddb::find::FindFullName(databases, Fuses(options), options.fullName, options.family);
  }
  if (!options.fuses.empty()) return plddb::find::FindByKey(databases, Key::kFuses, options.fuses, options.family);
  return plddb::find::FindByKey(databases, kKeys[key].key, options.keys[key], options.family);
}

std::vector<std::string> WhatIsNear(const plddb::find::Databases& databases, const Options& options) {
  if (!options.text.empty()) return plddb::find::NearNames(databases, options.text);
  if (!options.fullName.empty()) return plddb::find::NearNames(databases, options.fullName, Key::kFullName);
  const std::size_t key = KeyAsked(options);
  if (key == kKeys.size() || kKeys[key].key > Key::kAlias) return {};  // numbers that differ in a digit are others
  return plddb::find::NearNames(databases, options.keys[key], kKeys[key].key);
}

std::string WhyNothing(const plddb::find::Databases& databases, const Options& options) {
  if (!options.fullName.empty()) return plddb::find::WhyNoFullName(databases, Fuses(options), options.fullName);
  if (!options.package.empty()) return plddb::find::WhyNoPackage(databases, options.package, options.keys.front());
  return "";
}

bool HasFamily(const std::vector<Database>& databases, const std::string& name) {
  const auto names = FamilyNames(databases);
  return std::any_of(names.begin(), names.end(), [&](std::string_view known) { return EqualIgnoringCase(known, name); });
}

Answer FindAnswer(const std::vector<Database>& databases, const Options& options) {
  if (!options.family.empty() && !HasFamily(databases, options.family)) {
    return {{}, Suggestions(options.family, FamilyNames(databases)), "no family is named " + Printable(options.family)};
  }
  const plddb::find::Databases searched = ToSearch(databases);
  Answer answer;
  answer.matches = FindMatches(searched, options);
  if (!answer.matches.empty()) return answer;
  answer.reason = WhyNothing(searched, options);
  if (answer.reason.empty()) answer.suggestions = WhatIsNear(searched, options);
  return answer;
}

// --- Output -----------------------------------------------------------------------------------------------------------------

constexpr std::size_t kMostShown = 20;

/// How many of `matches` are shown.
std::size_t Shown(const Matches& matches, const Options& options) {
  return options.all ? matches.size() : std::min(matches.size(), kMostShown);
}

/// A code name is shown where any device has another one than its name.
bool HasOwnCodeNames(const Matches& matches) {
  return std::any_of(matches.begin(), matches.end(),
                     [](const Match& match) { return TextOrDash(match.device->GetCodeName()) != DeviceName(*match.device); });
}

std::string Table(const std::vector<Database>& databases, const Answer& answer, std::size_t shown) {
  const bool withCodeName = HasOwnCodeNames(answer.matches);
  std::vector<Row> rows = {{"matched by", "device", "family", "packages", "where"}};
  if (withCodeName) rows.front().insert(rows.front().begin() + 3, "code name");
  for (std::size_t i = 0; i < shown; ++i) {
    const Match& match = answer.matches[i];
    const Place place = PlaceOf(databases, match);
    const bool isMarked = i == 0 && IsAmbiguous(answer.matches);
    rows.push_back({MatchedBy(match), DeviceName(*match.device) + (isMarked ? Painted(Paint::kMark, " *") : ""),
                    FamilyName(*match.device), PackageTypes(*match.device), Where(place.database->file, place.device->line)});
    if (withCodeName) rows.back().insert(rows.back().begin() + 3, TextOrDash(match.device->GetCodeName()));
  }
  return WrappedTable(rows);
}

/// What marks tell beyond their devices; equal for most of them, and said once then.
std::string RestsOfMarks(const Answer& answer, std::size_t shown) {
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < shown; ++i) {
    if (!answer.matches[i].mark) continue;
    std::string line = RestOfMark(answer.matches[i]);
    if (std::find(lines.begin(), lines.end(), line) == lines.end()) lines.push_back(std::move(line));
  }
  std::string text;
  for (const std::string& line : lines) text += line;
  return text.empty() ? "" : "\n" + text;
}

std::string Report(const std::vector<Database>& databases, const Answer& answer, const Options& options) {
  const std::size_t shown = Shown(answer.matches, options);
  const std::size_t rest = answer.matches.size() - shown;
  return Table(databases, answer, shown) + (rest == 0 ? "" : "and " + std::to_string(rest) + " more; --all lists them\n") +
         RestsOfMarks(answer, shown) +
         (IsAmbiguous(answer.matches) ? "\n* More than one device matches; lookups take the first.\n" : "");
}

// --- The command ------------------------------------------------------------------------------------------------------------

/// Refuses questions that no lookup answers.
void CheckKeys(const Options& options, Option fuses) {
  auto keys = std::count_if(options.keys.begin(), options.keys.end(), [](const auto& key) { return !key.empty(); });
  keys += (options.text.empty() ? 0 : 1) + (fuses.IsGiven() ? 1 : 0);
  if (keys != 1) throw WrongUsage("give one TEXT, or one key to look for");
  if (fuses.IsGiven() && Fuses(options) == 0) {
    throw WrongUsage("--fuses is " + Printable(options.fuses) + ": expected a decimal number above 0");
  }
}

ExitCode ReportNoMatch(const Answer& answer) {
  const bool isAboutFamily = answer.reason.rfind("no family ", 0) == 0;
  if (isAboutFamily) return ReportNothing(answer.suggestions, answer.reason);
  return ReportNothing(answer.suggestions, "nothing found" + (answer.reason.empty() ? "" : ": " + answer.reason));
}

ExitCode RunFind(const Options& options, Option fuses) {
  CheckKeys(options, fuses);
  const std::vector<Database>& databases = LoadDatabases(options.databases, Outlines::kYes);
  const Answer answer = FindAnswer(databases, options);
  if (options.json) {
    WriteOutput(MatchesJson(databases, answer, Shown(answer.matches, options), CountAsked(options)));
  } else if (answer.matches.empty()) {
    return ReportNoMatch(answer);
  } else {
    WriteOutput(Report(databases, answer, options));
  }
  if (options.unique && answer.matches.size() > 1) return ReportSeveral(answer.matches.size());
  return answer.matches.empty() ? ExitCode::kNotFound : ExitCode::kFound;
}

}  // namespace

Run AddFind(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(subcommand, options->databases);
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    subcommand.Add("--" + std::string(NameOf(kKeys[i].key)), options->keys[i], kKeys[i].help).Type("TEXT").NotEmpty();
  }
  const Option fuses =
      subcommand.Add("--fuses", options->fuses, "The fuse count of a fuse-map file: all devices that have it").Type("N");
  subcommand
      .Add("--full-name", options->fullName,
           "The device's full name in that file: blanks, a speed grade and what follows the last '-' do not count")
      .Type("TEXT")
      .NotEmpty()
      .Needs(fuses);
  subcommand.Add("--package", options->package, "A package type that the device of that name has; letter case counts")
      .Type("TYPE")
      .NotEmpty()
      .Needs(subcommand.Get("--name"));
  subcommand.Add("--family", options->family, "Only devices of families of this name or alias name").Type("NAME").NotEmpty();
  subcommand.AddFlag("--unique", options->unique, "Several devices are an error: exit code 1");
  subcommand.AddFlag("--all", options->all, "List all devices that match; without it the first 20");
  subcommand.AddFlag("--json", options->json, "Write a JSON object: {matches, ambiguous, more, suggestions, reason}");
  subcommand.Add("TEXT", options->text, "What to look for by every key").Type("").NotEmpty();
  subcommand.Footer(kFooter,
                    {"plddb find XC9572XL-10VQG44C", "plddb find 'XC95*XL'", "plddb find --package VQ44 --name xc9572xl",
                     "plddb find --fuses 46656 --full-name XC9572XL-10-VQ44"});
  return [options, fuses] { return RunFind(*options, fuses); };
}

}  // namespace tool
