#include <memory>
#include <vector>

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
    R"(Without --family all families are listed, with it the devices of all families of that name. Hidden families are listed like any
other, and marked: lookups find their devices. The id is the one for JTAG, or else the one for ISP; where the scan mask has a 0,
the bit of the id does not count.

Exit code: 0 when the family is known, 1 when it is not, 2 for wrong usage or data that cannot be read.

Examples: plddb list        plddb list --family XC9500XL --json)";

struct Options {
  std::vector<std::string> databases;
  std::string family;
  bool files = false;
  bool json = false;
};

/// A family, and the database in which it stands.
struct Listed {
  const FamilyList* family;
  const Database* database;
};

bool Equal(const char* text, const std::string& name) { return text != nullptr && text == name; }

/// The families of this name or alias name, all of them: what a lookup does not reach is listed as well. Without a name, all.
std::vector<Listed> Families(const std::vector<Database>& databases, const std::string& name) {
  std::vector<Listed> families;
  for (const Database& database : databases) {
    for (int i = 0; const FamilyList* const family = database.devices->GetFamily(i); ++i) {
      const bool isMeant = name.empty() || Equal(family->GetName(), name) || Equal(family->GetAliasName(), name);
      if (isMeant) families.push_back({family, &database});
    }
  }
  return families;
}

template <typename Visit>
void ForEachDevice(const std::vector<Listed>& families, Visit visit) {
  for (const auto& [family, database] : families) {
    for (int d = 0; const DeviceInfo* const device = family->GetDevice(d); ++d) visit(*device, database->file);
  }
}

// --- Tables -----------------------------------------------------------------------------------------------------------------

std::string Notes(const FamilyList& family) {
  const std::string alias = TextOrDash(family.GetAliasName());
  std::string notes = alias == "-" ? "" : "also named " + alias;
  if (IsHidenFamily(&family)) notes += notes.empty() ? "hidden" : ", hidden";
  return notes;
}

/// `rows` without their last cells, the files, where all is of one file.
std::string Table(std::vector<Row> rows, const std::vector<Database>& databases) {
  if (databases.size() < 2) {
    for (Row& row : rows) row.pop_back();
  }
  return AlignedTable(rows);
}

std::string FamilyTable(const std::vector<Listed>& families, const std::vector<Database>& databases) {
  std::vector<Row> rows = {{"family", "devices", "notes", "file"}};
  for (const auto& [family, database] : families) {
    rows.push_back(
        {TextOrDash(family->GetName()), std::to_string(family->GetDeviceCount()), Notes(*family), Printable(database->file)});
  }
  return Table(std::move(rows), databases);
}

/// The identifier by which a scan finds the device; the ISP one where there is no other.
std::string Identifier(const DeviceInfo& device) {
  if (device.GetjtagDeviceID() != 0) return IdText(device.GetjtagDeviceID());
  return device.GetispDeviceID() == 0 ? "-" : IdText(device.GetispDeviceID()) + " (ISP)";
}

std::string DeviceTable(const std::vector<Listed>& families, const std::vector<Database>& databases) {
  std::vector<Row> rows = {{"device", "id", "scan mask", "IR length", "packages", "file"}};
  ForEachDevice(families, [&](const DeviceInfo& device, const std::string& file) {
    const unsigned int mask = device.GetDeviceIDScanMask();
    rows.push_back({DeviceName(device), Identifier(device), mask == 0 ? "-" : IdText(mask), IrLengthText(device),
                    PackageTypes(device), Printable(file)});
  });
  return Table(std::move(rows), databases);
}

// --- JSON -------------------------------------------------------------------------------------------------------------------

std::string FamilyJson(const std::vector<Listed>& families) {
  Json list = Json::array();
  for (const auto& [family, database] : families) {
    list.push_back({{"name", TextOrNull(family->GetName())},
                    {"aliasName", TextOrNull(family->GetAliasName())},
                    {"devices", family->GetDeviceCount()},
                    {"hidden", IsHidenFamily(family)},
                    {"file", database->file}});
  }
  return ToText({{"families", list}});
}

Json IdOrNull(unsigned int id) { return id == 0 ? Json(nullptr) : Json(IdText(id)); }

std::string DeviceJson(const std::vector<Listed>& families, const std::vector<std::string>& suggestions) {
  Json list = Json::array();
  ForEachDevice(families, [&](const DeviceInfo& device, const std::string& file) {
    list.push_back({{"family", TextOrNull(FamilyNameOrNull(device))},
                    {"name", TextOrNull(device.GetName())},
                    {"codeName", TextOrNull(device.GetCodeName())},
                    {"jtagId", IdOrNull(device.GetjtagDeviceID())},
                    {"ispId", IdOrNull(device.GetispDeviceID())},
                    {"scanMask", IdOrNull(device.GetDeviceIDScanMask())},
                    {"irLength", NumberOrNull(device.GetIRLength())},
                    {"packages", PackageTypeList(device)},
                    {"file", file}});
  });
  return ToText({{"devices", list}, {"suggestions", suggestions}});
}

// --- Files -------------------------------------------------------------------------------------------------------------------

std::string FileTable(const std::vector<Database>& databases) {
  std::vector<Row> rows = {{"order", "from", "families", "devices", "file"}};
  for (const Database& database : databases) {
    rows.push_back({std::to_string(rows.size()), NameOf(database.origin), std::to_string(database.devices->GetFamilyCount()),
                    std::to_string(database.devices->GetDeviceCount()), Printable(database.file)});
  }
  return AlignedTable(rows);
}

std::string FileJson(const std::vector<Database>& databases) {
  Json list = Json::array();
  for (const Database& database : databases) {
    list.push_back({{"file", database.file},
                    {"from", NameOf(database.origin)},
                    {"families", database.devices->GetFamilyCount()},
                    {"devices", database.devices->GetDeviceCount()}});
  }
  return ToText({{"files", list}});
}

// --- The command ------------------------------------------------------------------------------------------------------------

ExitCode ListDevices(const std::vector<Database>& databases, const Options& options) {
  const std::vector<Listed> families = Families(databases, options.family);
  const auto suggestions = families.empty() ? Suggestions(options.family, FamilyNames(databases)) : std::vector<std::string>();
  if (options.json) {
    WriteOutput(DeviceJson(families, suggestions));
  } else if (families.empty()) {
    return ReportNothing(suggestions, "no family is named " + Printable(options.family));
  } else {
    WriteOutput(DeviceTable(families, databases));
  }
  return families.empty() ? ExitCode::kNotFound : ExitCode::kFound;
}

ExitCode RunList(const Options& options) {
  const std::vector<Database>& databases = LoadDatabases(options.databases);
  if (options.files) {
    WriteOutput(options.json ? FileJson(databases) : FileTable(databases));
    return ExitCode::kFound;
  }
  if (!options.family.empty()) return ListDevices(databases, options);
  const std::vector<Listed> families = Families(databases, "");
  WriteOutput(options.json ? FamilyJson(families) : FamilyTable(families, databases));
  return ExitCode::kFound;
}

}  // namespace

Run AddList(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(subcommand, options->databases);
  const Option family =
      subcommand
          .Add("--family", options->family, "List the devices of this family (its name or alias name; letter case counts)")
          .Type("NAME")
          .NotEmpty();
  subcommand
      .AddFlag("--files", options->files, "List the description files that are read, in the order in which they are searched")
      .Excludes(family);
  subcommand.AddFlag("--json", options->json,
                     "Write a JSON object: {families}, {devices, suggestions} with --family, {files} with --files");
  subcommand.Footer(kFooter);
  return [options] { return RunList(*options); };
}

}  // namespace tool
