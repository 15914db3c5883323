#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Bsdl.h"
#include "Check.h"
#include "ProgrammingFile.h"
#include "check_forms.h"
#include "databases.h"
#include "fits_forms.h"
#include "json_text.h"
#include "page.h"

namespace web {
namespace {

using tool::Database;
using tool::IdentifiedChain;
using tool::Json;
using tool::Judged;
using tool::ToText;

/// Puts a loaded file in front of the others, in place of one of this name.
void Keep(Database database) {
  Page& page = ThePage();
  page.Forget();
  const auto end = page.databases.begin() + static_cast<std::ptrdiff_t>(page.own);
  const auto same = std::find_if(page.databases.begin(), end, [&](const Database& d) { return d.file == database.file; });
  if (same != end) {
    *same = std::move(database);
  } else {
    page.databases.insert(page.databases.begin(), std::move(database));
    ++page.own;
  }
}

std::size_t CountDevices(const DeviceList& devices) {
  std::size_t count = 0;
  for (int f = 0; const FamilyList* const family = devices.GetFamily(f); ++f) {
    for (unsigned short d = 0; family->GetDevice(d) != nullptr; ++d) ++count;
  }
  return count;
}

/// Loads a description file. Faults and findings alike are listed as plddb check lists them.
std::string AddDescriptions(const std::string& name, std::string text, Json extra) {
  Database database;
  database.file = name;
  database.origin = plddb::Origin::kNamed;
  database.text = std::move(text);
  database.devices = plddb::ParseDescriptions(database.text, name, &database.outline).database;
  tool::Findings findings = plddb::check::CheckTexts({{name, database.text, ""}});
  const std::size_t more = findings.size() - std::min(findings.size(), kMostFindings);
  findings.resize(findings.size() - more);
  extra["file"] = name;
  extra["isAdded"] = database.devices != nullptr;
  extra["devices"] = database.devices == nullptr ? 0 : CountDevices(*database.devices);
  extra["moreFindings"] = more;
  if (database.devices != nullptr) Keep(std::move(database));
  return Joined({ToText(extra), "{\"findings\":" + tool::FindingJson(findings) + "}"});
}

Json BsdlFindings(const std::vector<plddb::bsdl::Fault>& faults) {
  Json findings = Json::array();
  for (std::size_t i = 0; i < faults.size() && i < kMostFindings; ++i) {
    findings.push_back({{"file", faults[i].file},
                        {"line", faults[i].place.line},
                        {"column", faults[i].place.column},
                        {"severity", faults[i].severity == plddb::bsdl::Severity::kError ? "error" : "warning"},
                        {"text", faults[i].text}});
  }
  return findings;
}

/// Describes what a BSDL file states, and adds that description.
std::string AddBsdl(const std::string& name, std::string text, const std::string& family) {
  plddb::bsdl::ImportOptions options;
  options.family = family;
  const plddb::bsdl::Import import = plddb::bsdl::Describe({plddb::bsdl::Parse(std::move(text), name)}, options);
  Json extra = {{"kind", "BSDL"}, {"faults", BsdlFindings(import.faults)}};
  if (import.database == nullptr) {
    extra["file"] = name;
    extra["isAdded"] = false;
    extra["findings"] = Json::array();
    return ToText(extra);
  }
  std::string description = plddb::bsdl::Write(import);
  extra["description"] = description;
  return AddDescriptions(name, std::move(description), std::move(extra));
}

}  // namespace

std::string Fits(const std::string& name, std::string_view bytes) {
  const std::optional<IdentifiedChain>& read = ThePage().read.chain;
  const plddb::programming_files::Reader reader(ThePage().Lists());
  Judged judged{name, reader.Read(bytes), {}};
  judged.verdict = read ? reader.Judge(judged.file, read->chain, read->scan.nearest) : reader.Judge(judged.file);
  return Joined(
      {ToText(AsJson(judged)), ToText({{"summary", AsText(judged, read.has_value())}, {"hasChain", read.has_value()}})});
}

std::string Add(const std::string& name, std::string text, const std::string& family) {
  constexpr std::size_t most = std::size_t{1} << 26;  // as for files that the command reads
  if (text.size() > most) return Failed(name + ": larger than 64 MiB");
  const std::size_t mark = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
  const std::size_t first = text.find_first_not_of(" \t\r\n", mark);
  if (first != text.npos && text[first] != '<') return AddBsdl(name, std::move(text), family);
  return AddDescriptions(name, std::move(text), {{"kind", "descriptions"}, {"faults", Json::array()}});
}

std::string AddShipped(std::string name, std::string text) {
  Database database;
  database.file = std::move(name);
  database.text = std::move(text);
  database.devices = plddb::ParseDescriptions(database.text, database.file, &database.outline).database;
  if (database.devices == nullptr) return Failed(database.file + ": does not load");
  const std::size_t devices = CountDevices(*database.devices);
  ThePage().databases.push_back(std::move(database));
  return ToText({{"devices", devices}});
}

std::string Remove(const std::string& name) {
  Page& page = ThePage();
  const auto end = page.databases.begin() + static_cast<std::ptrdiff_t>(page.own);
  const auto same = std::find_if(page.databases.begin(), end, [&](const Database& d) { return d.file == name; });
  if (same == end) return "{}";
  page.Forget();
  page.databases.erase(same);
  --page.own;
  return "{}";
}

}  // namespace web
