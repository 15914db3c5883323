#include <algorithm>
#include <memory>
#include <string_view>
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
    R"(Without a FAMILY, all families are listed. With one, the devices of all families of that name or alias name are listed, in any letter case; if there is none, of those whose names contain it. Hidden families have devices that are not programmable logic. They are listed only by their names or with --all, although lookups find their devices. The id is the one for JTAG, or else the one for ISP; a bit of the id that is 0 in the scan mask is not compared.

Exit code: 0 when something is listed, 1 when nothing is; 2 for wrong usage or data that cannot be read.)";

struct Options {
  std::vector<std::string> databases;
  std::string family;
  std::string maker;
  std::string package;
  std::string irLength;
  std::string format = "text";
  bool devices = false;
  bool all = false;
  bool files = false;
  bool json = false;

  bool HasFilter() const { return !maker.empty() || !package.empty() || !irLength.empty(); }
  bool WantsDevices() const { return devices || !family.empty() || HasFilter(); }
};

/// A family, and the database that has it.
struct ListedFamily {
  const FamilyList* family;
  const Database* database;
};

struct ListedDevice {
  const DeviceInfo* device;
  const FamilyList* family;
  const Database* database;
};

/// All families for which `isMeant(const FamilyList&)`: what a lookup does not reach is listed as well.
template <typename Rule>
std::vector<ListedFamily> FamiliesWhere(const std::vector<Database>& databases, Rule isMeant) {
  std::vector<ListedFamily> families;
  for (const Database& database : databases) {
    for (int i = 0; const FamilyList* const family = database.devices->GetFamily(i); ++i) {
      if (isMeant(*family)) families.push_back({family, &database});
    }
  }
  return families;
}

template <typename Rule>
bool AnyName(const FamilyList& family, Rule agrees) {
  for (const char* const name : {family.GetName(), family.GetAliasName()}) {
    if (name != nullptr && agrees(std::string_view(name))) return true;
  }
  return false;
}

bool IsHidden(const FamilyList& family) { return IsHidenFamily(&family); }

/// The families that `options` ask for.
std::vector<ListedFamily> Families(const std::vector<Database>& databases, const Options& options) {
  if (options.family.empty()) {
    return FamiliesWhere(databases, [&](const FamilyList& family) { return options.all || !IsHidden(family); });
  }
  const auto isName = [&](std::string_view name) { return EqualIgnoringCase(name, options.family); };
  const auto hasPart = [&](std::string_view name) { return ContainsIgnoringCase(name, options.family); };
  auto families = FamiliesWhere(databases, [&](const FamilyList& family) { return AnyName(family, isName); });
  if (!families.empty()) return families;
  families = FamiliesWhere(
      databases, [&](const FamilyList& family) { return AnyName(family, hasPart) && (options.all || !IsHidden(family)); });
  if (!families.empty()) return families;
  return FamiliesWhere(databases, [&](const FamilyList& family) { return AnyName(family, hasPart); });
}

bool HasPackage(const DeviceInfo& device, const std::string& wanted) {
  for (const std::string& type : PackageTypeList(device)) {
    if (EqualIgnoringCase(type, wanted)) return true;
  }
  return false;
}

bool PassesFilters(const DeviceInfo& device, const Options& options) {
  const char* const maker = device.GetVendor();
  if (!options.maker.empty() && !ContainsIgnoringCase(maker == nullptr ? "" : maker, options.maker)) return false;
  if (!options.package.empty() && !HasPackage(device, options.package)) return false;
  return options.irLength.empty() || std::to_string(device.GetIRLength()) == options.irLength;
}

std::vector<ListedDevice> Devices(const std::vector<ListedFamily>& families, const Options& options) {
  std::vector<ListedDevice> devices;
  for (const auto& [family, database] : families) {
    for (int d = 0; const DeviceInfo* const device = family->GetDevice(d); ++d) {
      if (PassesFilters(*device, options)) devices.push_back({device, family, database});
    }
  }
  return devices;
}

// --- Tables -----------------------------------------------------------------------------------------------------------------

std::string FamilyNotes(const FamilyList& family) {
  const std::string alias = TextOrDash(family.GetAliasName());
  std::string notes = alias == "-" ? "" : "also named " + alias;
  if (IsHidden(family)) notes += notes.empty() ? "hidden" : ", hidden";
  return notes;
}

/// The folder of all files, which are the last cells of `rows` after the head: "/usr/share/plddb/"; empty when they differ.
std::string CommonFolder(const std::vector<Row>& rows) {
  std::string folder;
  for (std::size_t i = 1; i < rows.size(); ++i) {
    const std::string& file = rows[i].back();
    const std::string other = file.substr(0, file.rfind('/') + 1);
    if (i > 1 && other != folder) return "";
    folder = other;
  }
  return folder;
}

/// `rows`, whose last cells are files, in the form that was asked for. In a text, what is equal in all files is written once.
std::string Table(std::vector<Row> rows, const std::vector<Database>& databases, const Options& options) {
  if (options.format == "tsv") return TabbedTable(rows);
  const bool isOneFile =
      std::all_of(rows.begin() + 1, rows.end(), [&](const Row& row) { return row.back() == rows[1].back(); });
  const std::string folder = CommonFolder(rows);
  const std::string end = databases.size() < 2 || rows.size() < 2 ? ""
                          : isOneFile                             ? "\nFile: " + rows[1].back() + "\n"
                          : folder.empty()                        ? ""
                                                                  : "\nFolder: " + folder + "\n";
  for (Row& row : rows)
    isOneFile ? row.pop_back() : static_cast<void>(row.back().erase(0, &row == rows.data() ? 0 : folder.size()));
  return WrappedTable(rows) + end;
}

std::string FamilyTable(const std::vector<ListedFamily>& families, const std::vector<Database>& databases,
                        const Options& options) {
  std::vector<Row> rows = {{"family", "devices", "notes", "file"}};
  for (const auto& [family, database] : families) {
    rows.push_back({TextOrDash(family->GetName()), std::to_string(family->GetDeviceCount()), FamilyNotes(*family),
                    Printable(database->file)});
  }
  return Table(std::move(rows), databases, options);
}

/// "375 devices of 37 hidden families are left out", for people; empty when there are none.
std::string LeftOut(const std::vector<Database>& databases, const Options& options) {
  if (options.all || options.format != "text") return "";
  const auto hidden = FamiliesWhere(databases, IsHidden);
  unsigned int devices = 0;
  for (const auto& [family, database] : hidden) devices += family->GetDeviceCount();
  if (hidden.empty()) return "";
  return "\n" + std::to_string(hidden.size()) + " hidden " + (hidden.size() == 1 ? "family" : "families") + " with " +
         std::to_string(devices) + (devices == 1 ? " device" : " devices") + (hidden.size() == 1 ? " is" : " are") +
         " left out; --all lists all\n";
}

/// The identifier by which a scan finds the device; the ISP one where there is no other.
std::string Identifier(const DeviceInfo& device) {
  if (device.GetjtagDeviceID() != 0) return IdText(device.GetjtagDeviceID());
  return device.GetispDeviceID() == 0 ? "-" : IdText(device.GetispDeviceID()) + " (ISP)";
}

/// One family's devices need no column for it.
bool AreOfOneFamily(const std::vector<ListedDevice>& devices) {
  for (const ListedDevice& listed : devices) {
    if (listed.family != devices.front().family) return false;
  }
  return true;
}

std::string DeviceTable(const std::vector<ListedDevice>& devices, const std::vector<Database>& databases,
                        const Options& options) {
  const bool withFamily = options.format == "tsv" || !AreOfOneFamily(devices);
  std::vector<Row> rows = {{"device", "family", "id", "scan mask", "IR length", "packages", "file"}};
  for (const auto& [device, family, database] : devices) {
    const unsigned int mask = device->GetDeviceIDScanMask();
    rows.push_back({DeviceName(*device), TextOrDash(family->GetName()), Identifier(*device), mask == 0 ? "-" : IdText(mask),
                    IrLengthText(*device), PackageTypes(*device), Printable(database->file)});
  }
  if (!withFamily) {
    for (Row& row : rows) row.erase(row.begin() + 1);
  }
  return Table(std::move(rows), databases, options);
}

// --- JSON -------------------------------------------------------------------------------------------------------------------

std::string FamilyJson(const std::vector<ListedFamily>& families) {
  Json list = Json::array();
  for (const auto& [family, database] : families) {
    list.push_back({{"name", TextOrNull(family->GetName())},
                    {"aliasName", TextOrNull(family->GetAliasName())},
                    {"devices", family->GetDeviceCount()},
                    {"hidden", IsHidden(*family)},
                    {"file", database->file}});
  }
  return ToText({{"families", list}});
}

Json IdOrNull(unsigned int id) { return id == 0 ? Json(nullptr) : Json(IdText(id)); }

std::string DeviceJson(const std::vector<ListedDevice>& devices, const std::vector<std::string>& suggestions) {
  Json list = Json::array();
  for (const auto& [device, family, database] : devices) {
    list.push_back({{"family", TextOrNull(family->GetName())},
                    {"name", TextOrNull(device->GetName())},
                    {"codeName", TextOrNull(device->GetCodeName())},
                    {"maker", TextOrNull(device->GetVendor())},
                    {"jtagId", IdOrNull(device->GetjtagDeviceID())},
                    {"ispId", IdOrNull(device->GetispDeviceID())},
                    {"scanMask", IdOrNull(device->GetDeviceIDScanMask())},
                    {"irLength", NumberOrNull(device->GetIRLength())},
                    {"packages", PackageTypeList(*device)},
                    {"file", database->file}});
  }
  return ToText({{"devices", list}, {"suggestions", suggestions}});
}

// --- Files -------------------------------------------------------------------------------------------------------------------

std::string FileTable(const std::vector<Database>& databases, const Options& options) {
  std::vector<Row> rows = {{"order", "from", "families", "devices", "file"}};
  for (const Database& database : databases) {
    rows.push_back({std::to_string(rows.size()), NameOf(database.origin), std::to_string(database.devices->GetFamilyCount()),
                    std::to_string(database.devices->GetDeviceCount()), Printable(database.file)});
  }
  return options.format == "tsv" ? TabbedTable(rows) : WrappedTable(rows);
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

/// Why nothing is listed.
struct Nothing {
  std::string message;
  std::vector<std::string> suggestions;
};

Nothing WhyNothing(const std::vector<Database>& databases, const Options& options, bool hasFamily) {
  if (!hasFamily) {
    return {"no family is named " + Printable(options.family), Suggestions(options.family, FamilyNames(databases))};
  }
  Nothing nothing = {"no such device", {}};
  if (!options.maker.empty()) nothing.suggestions = Suggestions(options.maker, EachOnce(Makers(databases)));
  if (!options.package.empty() && nothing.suggestions.empty()) {
    const auto types = plddb::find::TextsOf(ToSearch(databases), plddb::find::Key::kPackage);
    nothing.suggestions = Suggestions(options.package, EachOnce(types));
  }
  return nothing;
}

ExitCode ListDevices(const std::vector<Database>& databases, const Options& options) {
  const std::vector<ListedFamily> families = Families(databases, options);
  const std::vector<ListedDevice> devices = Devices(families, options);
  const bool isNothing = families.empty() || (devices.empty() && (options.HasFilter() || options.family.empty()));
  const Nothing nothing = isNothing ? WhyNothing(databases, options, !families.empty() || options.family.empty()) : Nothing();
  if (options.format == "json") {
    WriteOutput(DeviceJson(devices, nothing.suggestions));
  } else if (isNothing) {
    return ReportNothing(nothing.suggestions, nothing.message);
  } else {
    WriteOutput(DeviceTable(devices, databases, options));
  }
  return isNothing ? ExitCode::kNotFound : ExitCode::kFound;
}

ExitCode RunList(Options options) {
  if (options.json) options.format = "json";
  const bool asJson = options.format == "json";
  const std::vector<Database>& databases = LoadDatabases(options.databases);
  if (options.files) {
    WriteOutput(asJson ? FileJson(databases) : FileTable(databases, options));
    return ExitCode::kFound;
  }
  if (options.WantsDevices()) return ListDevices(databases, options);
  const std::vector<ListedFamily> families = Families(databases, options);
  WriteOutput(asJson ? FamilyJson(families) : FamilyTable(families, databases, options) + LeftOut(databases, options));
  return ExitCode::kFound;
}

std::string ComplaintAboutLength(const std::string& text) {
  const bool isNumber = !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == text.npos;
  return isNumber && text.front() != '0' ? "" : "expected a number of bits above 0, not " + Printable(text);
}

void AddChoice(Subcommand subcommand, Options& options) {
  const Option family =
      subcommand.Add("FAMILY", options.family, "List the devices of the families of this name").Type("").NotEmpty();
  const Option named =
      subcommand.Add("--family", options.family, "The same as FAMILY").Type("NAME").NotEmpty().Excludes(family);
  const Option devices = subcommand.AddFlag("--devices", options.devices, "List the devices of all families");
  const Option maker =
      subcommand.Add("--maker", options.maker, "Only devices whose maker's name contains this").Type("NAME").NotEmpty();
  const Option package =
      subcommand.Add("--package", options.package, "Only devices with this package type").Type("TYPE").NotEmpty();
  const Option length = subcommand.Add("--ir", options.irLength, "Only devices with an instruction register of this many bits")
                            .Type("LENGTH")
                            .Check(ComplaintAboutLength);
  const Option all = subcommand.AddFlag("--all", options.all, "Also hidden families");
  const Option files = subcommand.AddFlag("--files", options.files,
                                          "List the description files that are read, in the order in which they are searched");
  for (const Option& other : {family, named, devices, maker, package, length, all}) files.Excludes(other);
}

}  // namespace

Run AddList(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(subcommand, options->databases);
  AddChoice(subcommand, *options);
  const Option format = subcommand.Add("--format", options->format, "What to write (default text)");
  format.Type("text|tsv|json").OneOf({"text", "tsv", "json"});
  subcommand
      .AddFlag("--json", options->json,
               "The same as --format json: {families}; {devices, suggestions} of devices; {files} of --files")
      .Excludes(format);
  subcommand.Footer(kFooter, {"plddb list", "plddb list artix", "plddb list --devices --maker xilinx --package VQ44"});
  return [options] { return RunList(*options); };
}

}  // namespace tool
