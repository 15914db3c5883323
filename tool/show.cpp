#include <algorithm>
#include <map>
#include <memory>
#include <vector>

#include "Chain.h"
#include "colour.h"
#include "command.h"
#include "databases.h"
#include "device_lookup.h"
#include "device_text.h"
#include "element_tables.h"
#include "json_text.h"
#include "shared_options.h"
#include "standard_streams.h"
#include "suggestions.h"
#include "text_table.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    R"(TEXT is a name, code name, alias name, ordering name or any other key that plddb find knows, or an id of 8 hex digits (0x and 1
to 8 of them): the identifier for JTAG, failing that the one for ISP. The first device that matches is shown, in the order of the
databases and of their devices; the others are listed at the end.

Shown is what is set, as a description file writes it, and where it is said. What has its default is left out, and so is what a
reader derives. A device is a bypass device in the modes of chain processing, 0 to 6, in which it only passes data through.

Exit code: 0 when a device is found, 1 when none is, 2 for wrong usage or data that cannot be read.

Examples: plddb show XC9572XL        plddb show --json 0x59604093)";

constexpr int kModes = 7;  // of chain processing

struct Options {
  std::vector<std::string> databases;
  std::string text;
  bool json = false;
};

/// Where a device is described.
struct Origin {
  const Database* database;
  const plddb::Element* family;
  const plddb::Element* device;
};

using Origins = std::map<const DeviceInfo*, Origin>;

/// A device that matches, and the keys by which it does.
struct Match {
  DeviceInfo* device;
  std::vector<std::string> keys;
};

Origins OriginsOf(const std::vector<Database>& databases) {
  Origins origins;
  for (const Database& database : databases) {
    int f = 0;
    for (const plddb::Element& family : database.outline.root.children) {
      int d = 0;
      for (const plddb::Element& child : family.children) {
        if (child.name == "Device") origins[database.devices->GetFamily(f)->GetDevice(d++)] = {&database, &family, &child};
      }
      ++f;
    }
  }
  return origins;
}

// --- The devices that match -------------------------------------------------------------------------------------------------

/// What the lookups find for `text` first, key by key; a device that several keys find once.
std::vector<Match> FirstMatches(const std::vector<Database>& databases, const std::string& text) {
  std::vector<Match> matches;
  const auto add = [&](const char* key, const DeviceInfo* found) {
    if (found == nullptr) return;
    const auto known = std::find_if(matches.begin(), matches.end(), [&](const Match& m) { return m.device == found; });
    if (known == matches.end()) {
      matches.push_back({const_cast<DeviceInfo*>(found), {key}});
    } else {
      known->keys.emplace_back(key);
    }
  };
  for (const Key& key : kKeys) add(key.name, FindByKey(databases, key, text.c_str()));
  if (const auto id = plddb::chain::ParseId(text)) {
    const auto withId = [&](const char* comm) {
      return FirstOf(databases, [&](DeviceList& database) { return database.GetDeviceWithCommAndID(comm, *id); });
    };
    const DeviceInfo* const jtag = withId("JTAG");
    add(jtag == nullptr ? "id for ISP" : "id", jtag == nullptr ? withId("ISP") : jtag);
  }
  return matches;
}

/// All that match, in the order in which lookups find them when those that were found are not there: lookups alone know what
/// matches, and they answer with the first only.
std::vector<Match> AllMatches(const std::vector<Database>& databases, const std::string& text) {
  std::vector<Match> all;
  if (FirstMatches(databases, text).empty()) return all;
  WorkingCopies copies(databases);
  for (;;) {
    const std::vector<Match> matches = FirstMatches(copies.Databases(), text);
    if (matches.empty()) return all;
    for (const Match& match : matches) {
      copies.TakeOut(*match.device);
      all.push_back({&copies.Original(*match.device), match.keys});
    }
  }
}

std::vector<int> BypassModes(const DeviceInfo& device) {
  std::vector<int> modes;
  for (int mode = 0; mode < kModes; ++mode) {
    if (IsBypassDevice(&device, mode)) modes.push_back(mode);
  }
  return modes;
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

std::string OtherMatches(const std::vector<Match>& matches, const Origins& origins) {
  if (matches.size() < 2) return "";
  std::vector<Row> rows = {{"matched by", "device", "family", "code name", "where"}};
  for (auto match = matches.begin() + 1; match != matches.end(); ++match) {
    const Origin& origin = origins.at(match->device);
    rows.push_back({Listing(match->keys), DeviceName(*match->device), FamilyName(*match->device),
                    TextOrDash(match->device->GetCodeName()), Where(origin.database->file, origin.device->line)});
  }
  return "\n" + Painted(Paint::kMark, "More than one device matches, and the first was taken.") + " The others:\n" +
         AlignedTable(rows, "  ");
}

std::string Report(const std::vector<Match>& matches, const Origins& origins) {
  DeviceInfo& device = *matches.front().device;
  const Origin& origin = origins.at(&device);
  const std::string& file = origin.database->file;
  return "Device " + DeviceName(device) + ", matched by " + Listing(matches.front().keys) + "\n" +
         ElementTables(Located(plddb::Describe(device).root, *origin.device), file) + "\nFamily " + FamilyName(device) + "\n" +
         ElementTables(Located(plddb::Describe(*device.GetFamilyObject()).root, *origin.family), file) + BypassText(device) +
         OtherMatches(matches, origins);
}

// --- JSON -------------------------------------------------------------------------------------------------------------------

/// Descriptions are a few levels deep, and so is the recursion.
Json ToJson(const plddb::Element& element) {
  Json fields = Json::object();
  for (const plddb::Attribute& field : element.attributes) {
    fields[field.name] = {{"value", field.value}, {"line", NumberOrNull(field.line)}, {"column", NumberOrNull(field.column)}};
  }
  Json lists = Json::object();
  for (const plddb::Element& child : element.children) lists[child.name].push_back(ToJson(child));
  return {{"line", NumberOrNull(element.line)},
          {"column", NumberOrNull(element.column)},
          {"fields", std::move(fields)},
          {"lists", std::move(lists)}};
}

Json OthersJson(const std::vector<Match>& matches, const Origins& origins) {
  Json others = Json::array();
  for (auto match = matches.begin() + 1; match < matches.end(); ++match) {
    const Origin& origin = origins.at(match->device);
    others.push_back({{"matchedBy", match->keys},
                      {"name", TextOrNull(match->device->GetName())},
                      {"codeName", TextOrNull(match->device->GetCodeName())},
                      {"family", TextOrNull(FamilyNameOrNull(*match->device))},
                      {"file", origin.database->file},
                      {"line", origin.device->line}});
  }
  return others;
}

std::string JsonReport(const std::vector<Match>& matches, const Origins& origins) {
  DeviceInfo& device = *matches.front().device;
  const Origin& origin = origins.at(&device);
  return ToText({{"matchedBy", matches.front().keys},
                 {"file", origin.database->file},
                 {"device", ToJson(Located(plddb::Describe(device).root, *origin.device))},
                 {"family", ToJson(Located(plddb::Describe(*device.GetFamilyObject()).root, *origin.family))},
                 {"bypassModes", BypassModes(device)},
                 {"others", OthersJson(matches, origins)},
                 {"suggestions", Json::array()}});
}

// --- The command ------------------------------------------------------------------------------------------------------------

ExitCode AnswerNothing(const std::vector<Database>& databases, const Options& options) {
  const std::vector<std::string> suggestions = Suggestions(options.text, AllNames(databases));
  if (!options.json) return ReportNothing(suggestions);
  WriteOutput(ToText({{"device", nullptr}, {"suggestions", suggestions}}));
  return ExitCode::kNotFound;
}

ExitCode RunShow(const Options& options) {
  const std::vector<Database>& databases = LoadDatabases(options.databases, Outlines::kYes);
  const Origins origins = OriginsOf(databases);
  const std::vector<Match> matches = AllMatches(databases, options.text);
  if (matches.empty()) return AnswerNothing(databases, options);
  WriteOutput(options.json ? JsonReport(matches, origins) : Report(matches, origins));
  return ExitCode::kFound;
}

}  // namespace

Run AddShow(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(subcommand, options->databases);
  subcommand.AddFlag("--json", options->json,
                     "Write a JSON object: {matchedBy, file, device, family, bypassModes, others, suggestions}");
  subcommand.Add("TEXT", options->text, "The name or id of the device").Type("").NotEmpty().Required();
  subcommand.Footer(kFooter);
  return [options] { return RunShow(*options); };
}

}  // namespace tool
