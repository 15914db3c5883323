#include <algorithm>
#include <memory>
#include <vector>

#include "colour.h"
#include "command.h"
#include "databases.h"
#include "device_lookup.h"
#include "device_text.h"
#include "element_tables.h"
#include "json_text.h"
#include "shared_options.h"
#include "show_forms.h"
#include "standard_streams.h"
#include "suggestions.h"
#include "text_table.h"

namespace tool {
namespace {

using plddb::find::Match;
using plddb::find::Matches;

constexpr const char* kFooter =
    R"(TEXT is anything that plddb find takes: a name, ordering number, id, pattern, the beginning of a name, a mark on a chip. The first device that matches is shown, in the order of the databases and of their devices; if there are others, it is marked, and they are listed at the end.

Values are shown as in a description file, with their lines. Defaults and values that are derived on loading are omitted. A device is a bypass device in the modes of chain processing, 0 to 6, in which it only passes data through.

Exit code: 0 when a device is found, 1 when none is, or several with --unique; 2 for wrong usage or data that cannot be read.)";

struct Options {
  std::vector<std::string> databases;
  std::string text;
  bool all = false;
  bool unique = false;
  bool json = false;
};

constexpr std::size_t kMostOthers = 20;

/// How many of the other devices are shown.
std::size_t OthersShown(const Matches& matches, const Options& options) {
  return options.all ? matches.size() - 1 : std::min(matches.size() - 1, kMostOthers);
}

std::string Listing(const std::vector<std::string>& texts) {
  std::string listing;
  for (const std::string& text : texts) listing += (listing.empty() ? "" : ", ") + text;
  return listing;
}

// --- Text -------------------------------------------------------------------------------------------------------------------

std::string BypassText(const DeviceInfo& device) {
  std::vector<std::string> modes;
  for (const int mode : BypassModes(device)) modes.push_back(std::to_string(mode));
  return "\nBypass device in modes: " + (modes.empty() ? "none" : Listing(modes)) + "\n";
}

std::string OtherMatches(const Matches& matches, const std::vector<Database>& databases, const Options& options) {
  if (matches.size() < 2) return "";
  std::vector<Row> rows = {{"matched by", "device", "family", "code name", "where"}};
  const std::size_t shown = OthersShown(matches, options);
  for (std::size_t i = 1; i <= shown; ++i) {
    const Place place = PlaceOf(databases, matches[i]);
    rows.push_back({MatchedBy(matches[i]), DeviceName(*matches[i].device), FamilyName(*matches[i].device),
                    TextOrDash(matches[i].device->GetCodeName()), Where(place.database->file, place.device->line)});
  }
  const std::size_t rest = matches.size() - 1 - shown;
  return "\n" + Painted(Paint::kMark, "* More than one device matches, and the first was taken.") + " The others:\n" +
         WrappedTable(rows, "  ") + (rest == 0 ? "" : "  and " + std::to_string(rest) + " more; --all lists them\n");
}

std::string Heading(const Matches& matches) {
  const Match& match = matches.front();
  return "Device " + DeviceName(*match.device) + (matches.size() > 1 ? Painted(Paint::kMark, " *") : "") + ", matched by " +
         MatchedBy(match) + "\n" + (match.mark ? RestOfMark(match) : "");
}

std::string Report(const Matches& matches, const std::vector<Database>& databases, const Options& options) {
  const DeviceInfo& device = *matches.front().device;
  const Place place = PlaceOf(databases, matches.front());
  return Heading(matches) + "File " + Printable(place.database->file) + "\n" +
         ElementTables(Located(plddb::Describe(Writable(device)).root, *place.device)) + "\nFamily " + FamilyName(device) +
         "\n" + ElementTables(Located(plddb::Describe(*device.GetFamilyObject()).root, *place.family)) + BypassText(device) +
         OtherMatches(matches, databases, options);
}

// --- The command ------------------------------------------------------------------------------------------------------------

ExitCode AnswerNothing(const std::vector<Database>& databases, const Options& options) {
  const std::vector<std::string> suggestions = plddb::find::NearNames(ToSearch(databases), options.text);
  if (!options.json) return ReportNothing(suggestions);
  WriteOutput(ToText({{"device", nullptr}, {"suggestions", suggestions}}));
  return ExitCode::kNotFound;
}

ExitCode RunShow(const Options& options) {
  const std::vector<Database>& databases = LoadDatabases(options.databases, Outlines::kYes);
  const Matches matches = plddb::find::Find(ToSearch(databases), options.text);
  if (matches.empty()) return AnswerNothing(databases, options);
  WriteOutput(options.json ? DeviceJson(databases, matches, OthersShown(matches, options))
                           : Report(matches, databases, options));
  return options.unique && matches.size() > 1 ? ReportSeveral(matches.size()) : ExitCode::kFound;
}

}  // namespace

Run AddShow(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(subcommand, options->databases);
  subcommand.AddFlag("--unique", options->unique, "Several devices are an error: exit code 1");
  subcommand.AddFlag("--all", options->all, "List all other devices that match; without it the first 20");
  subcommand.AddFlag("--json", options->json,
                     "Write a JSON object: {matchedBy, file, device, family, bypassModes, others, suggestions}");
  subcommand.Add("TEXT", options->text, "Anything that plddb find takes").Type("").NotEmpty().Required();
  subcommand.Footer(kFooter, {"plddb show XC9572XL", "plddb show --json 0x59604093"});
  return [options] { return RunShow(*options); };
}

}  // namespace tool
