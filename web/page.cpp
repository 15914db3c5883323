// What the page asks, as functions that JavaScript calls: texts in UTF-8 go in, a JSON text comes out. All rules are those of
// the libraries, and the forms are those of the command.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Bsdl.h"
#include "Chain.h"
#include "Check.h"
#include "Find.h"
#include "ProgrammingFile.h"
#include "check_forms.h"
#include "databases.h"
#include "device_lookup.h"
#include "device_text.h"
#include "find_forms.h"
#include "fits_forms.h"
#include "identify/output.h"
#include "ir_lengths.h"
#include "json_text.h"
#include "show_forms.h"

namespace web {
namespace {

using tool::Database;
using tool::IdentifiedChain;
using tool::Json;
using tool::ToText;

// What the page shows at most. The command shows all.
constexpr std::size_t kMostPositions = 200;
constexpr std::size_t kMostDrawn = 100;
constexpr std::size_t kMostInForms = 10000;
constexpr std::size_t kMostNotes = 50;
constexpr std::size_t kMostDevices = 50;
constexpr std::size_t kMostFindings = 100;

/// A chain that was read, with the finder that identified it.
struct Read {
  std::string comm;
  std::unique_ptr<plddb::chain::DeviceFinder> finder;
  std::optional<IdentifiedChain> chain;
};

/// The description files, those of the user first; and what was asked last.
struct Page {
  std::vector<Database> databases;
  std::size_t own = 0;  ///< How many of the databases are the user's.
  Read read;
  tool::Answer found;
  std::string answer;  ///< The last one, which JavaScript reads.

  /// Forgets what refers to the databases, before they change.
  void Forget() {
    read.chain.reset();
    read.finder.reset();
    found = {};
  }
};

Page& ThePage() {
  static Page& page = *new Page();
  return page;
}

std::vector<const DeviceList*> Lists() {
  std::vector<const DeviceList*> lists;
  for (const Database& database : ThePage().databases) lists.push_back(database.devices.get());
  return lists;
}

/// `objects`, each {...}, as one with the members of all.
std::string Joined(const std::vector<std::string>& objects) {
  std::string text = "{";
  for (const std::string& object : objects) {
    const std::size_t first = object.find('{') + 1;
    text += (text.size() == 1 ? "" : ",") + object.substr(first, object.rfind('}') - first);
  }
  return text + "}";
}

std::string Failed(const std::string& why) { return ToText({{"failure", why}}); }

/// Keeps the answer that `ask` gives, which throws nothing on: a page that is out of memory says so, and lives.
const char* Answer(const std::function<std::string()>& ask) {
  std::string& answer = ThePage().answer;
  answer.clear();
  answer.shrink_to_fit();
  try {
    answer = ask();
  } catch (const std::bad_alloc&) {
    return R"({"failure": "this needs more memory than the page may use"})";
  } catch (const std::exception& e) {
    answer = Failed(e.what());
  }
  return answer.c_str();
}

// --- The chain --------------------------------------------------------------------------------------------------------------

template <typename Fault>
Json FaultsJson(const std::vector<Fault>& faults) {
  Json json = Json::array();
  for (std::size_t i = 0; i < faults.size() && i < kMostFindings; ++i) {
    json.push_back({{"line", faults[i].line}, {"column", faults[i].column}, {"text", faults[i].text}});
  }
  return json;
}

/// The first `most` positions.
IdentifiedChain Beginning(const IdentifiedChain& whole, std::size_t most) {
  IdentifiedChain part = {whole.databases, whole.finder, whole.comm, {}, {}};
  const auto count = static_cast<std::ptrdiff_t>(std::min(most, whole.chain.size()));
  part.scan.format = whole.scan.format;
  part.scan.tool = whole.scan.tool;
  part.scan.nearest = whole.scan.nearest;
  part.scan.hasVersions = whole.scan.hasVersions;
  part.scan.taps.assign(whole.scan.taps.begin(), whole.scan.taps.begin() + count);
  part.chain.assign(whole.chain.begin(), whole.chain.begin() + count);
  return part;
}

std::string InForm(const IdentifiedChain& chain, void (*form)(const IdentifiedChain&, tool::Output&)) {
  std::string text;
  tool::Output output([&](const std::string& block) { text += block; });
  form(chain, output);
  output.Flush();
  return text;
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words(1);
  for (const char c : text) {
    const bool isBlank = c == ' ' || c == ',' || (c >= '\t' && c <= '\r');
    if (!isBlank) words.back() += c;
    if (isBlank && !words.back().empty()) words.emplace_back();
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

Json Summary(const IdentifiedChain& read) {
  std::size_t known = 0;
  std::size_t ambiguous = 0;
  for (const auto& position : read.chain) {
    known += position.Match() != nullptr ? 1 : 0;
    ambiguous += position.IsAmbiguous() ? 1 : 0;
  }
  std::vector<std::string> notes = Notes(read);
  const std::size_t moreNotes = notes.size() - std::min(notes.size(), kMostNotes);
  notes.resize(notes.size() - moreNotes);
  return {{"scan", read.scan.format.empty() ? Json(nullptr) : Json(tool::ScanText(read.scan))},
          {"count", read.chain.size()},
          {"known", known},
          {"ambiguous", ambiguous},
          {"irLength", tool::TotalIrLength(read.chain)},
          {"more", read.chain.size() - std::min(read.chain.size(), kMostPositions)},
          {"isDrawn", read.chain.size() <= kMostDrawn},
          {"notes", notes},
          {"moreNotes", moreNotes}};
}

/// The finder for the access mode; it is kept, since it is made of all databases.
plddb::chain::DeviceFinder& Finder(const std::string& comm) {
  Read& read = ThePage().read;
  if (read.finder == nullptr || read.comm != comm) read.finder = std::make_unique<plddb::chain::DeviceFinder>(Lists(), comm);
  read.comm = comm;
  return *read.finder;
}

std::string Identify(std::string_view text, std::string_view order, const std::string& comm, std::string_view irLengths,
                     bool trustsIrLengths) {
  Read& read = ThePage().read;
  read.chain.reset();
  plddb::chain::ScanResult result = plddb::chain::ReadScan(text);
  if (!result.scan) return ToText({{"faults", FaultsJson(result.faults)}, {"moreFaults", result.moreFaults}});
  plddb::chain::DeviceFinder& finder = Finder(comm);
  IdentifiedChain identified = {ThePage().databases, finder, comm, std::move(*result.scan), {}};
  if (!order.empty()) identified.scan.nearest = order == "tdo" ? tool::End::kTdo : tool::End::kTdi;
  for (const auto& tap : identified.scan.taps) identified.chain.push_back(finder.Identify(tap, trustsIrLengths));
  const std::string complaint = tool::TakeIrLengths(identified.chain, Words(irLengths));
  if (!complaint.empty()) return Failed(complaint);
  const std::string positions = InForm(Beginning(identified, kMostPositions), tool::JsonOutput);
  std::string answer = Joined({ToText(Summary(identified)), "{\"positions\":" + positions + "}"});
  read.chain.emplace(std::move(identified));
  return answer;
}

/// The chain in a form of the command.
std::string Form(std::string_view name) {
  const std::optional<IdentifiedChain>& chain = ThePage().read.chain;
  if (!chain) return ToText({{"text", ""}});
  if (chain->chain.size() > kMostInForms) return Failed("the chain is too long for the page: use plddb identify");
  if (name == "openocd" && chain->comm == "ISP") return Failed("ISP identifiers are not IDCODEs");
  const auto form = name == "openocd" ? tool::OpenOcdOutput
                    : name == "json"  ? tool::JsonOutput
                    : name == "tsv"   ? tool::TsvOutput
                    : name == "svg"   ? tool::SvgOutput
                                      : tool::TextOutput;
  return ToText({{"text", InForm(*chain, form)}});
}

std::string Draw(std::size_t perRow) {
  const std::optional<IdentifiedChain>& chain = ThePage().read.chain;
  if (!chain || chain->chain.size() > kMostDrawn) return ToText({{"text", ""}});
  return ToText(
      {{"text", plddb::chain::Svg(chain->chain, chain->comm, chain->scan.nearest, std::max<std::size_t>(perRow, 1))}});
}

// --- Devices ----------------------------------------------------------------------------------------------------------------

std::string Find(std::string_view text) {
  Page& page = ThePage();
  const plddb::find::Databases searched = tool::ToSearch(page.databases);
  page.found = {plddb::find::Find(searched, text), {}, ""};
  if (page.found.matches.empty()) page.found.suggestions = plddb::find::NearNames(searched, text);
  return MatchesJson(page.databases, page.found, std::min(page.found.matches.size(), kMostDevices));
}

/// Shows the device that Find listed as the nth.
std::string Show(std::size_t n) {
  Page& page = ThePage();
  if (n >= page.found.matches.size()) return Failed("no such device");
  return DeviceJson(page.databases, {page.found.matches[n]}, 0);
}

// --- Files ------------------------------------------------------------------------------------------------------------------

/// Judges a programming file against the chain that was read last, if there is one.
std::string Fits(const std::string& name, std::string_view bytes) {
  const std::optional<IdentifiedChain>& read = ThePage().read.chain;
  const plddb::programming_files::Reader reader(Lists());
  tool::Judged judged{name, reader.Read(bytes), {}};
  judged.verdict = read ? reader.Judge(judged.file, read->chain, read->scan.nearest) : reader.Judge(judged.file);
  return Joined(
      {ToText(AsJson(judged)), ToText({{"summary", AsText(judged, read.has_value())}, {"hasChain", read.has_value()}})});
}

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

/// Adds a file of the user. An XML file starts with '<'; any other is taken for a BSDL file.
std::string Add(const std::string& name, std::string text, const std::string& family) {
  constexpr std::size_t most = std::size_t{1} << 26;  // as for files that the command reads
  if (text.size() > most) return Failed(name + ": larger than 64 MiB");
  const std::size_t mark = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
  const std::size_t first = text.find_first_not_of(" \t\r\n", mark);
  if (first != text.npos && text[first] != '<') return AddBsdl(name, std::move(text), family);
  return AddDescriptions(name, std::move(text), {{"kind", "descriptions"}, {"faults", Json::array()}});
}

/// Adds a file that comes with the page.
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

}  // namespace
}  // namespace web

// --- What JavaScript calls --------------------------------------------------------------------------------------------------

// A text is a pointer to memory from `allocate`, and its size.

#define PLDDB_EXPORTED(NAME) extern "C" __attribute__((export_name(NAME), used))

PLDDB_EXPORTED("allocate") void* Allocate(std::size_t size) { return ::operator new(size, std::nothrow); }
PLDDB_EXPORTED("release") void Release(void* memory) { ::operator delete(memory); }

PLDDB_EXPORTED("identify")
const char* Identify(const char* text, std::size_t size, const char* order, std::size_t orderSize, const char* comm,
                     std::size_t commSize, const char* lengths, std::size_t lengthsSize, int trustsIrLengths) {
  return web::Answer([&] {
    return web::Identify({text, size}, {order, orderSize}, {comm, commSize}, {lengths, lengthsSize}, trustsIrLengths != 0);
  });
}

PLDDB_EXPORTED("form") const char* Form(const char* name, std::size_t size) {
  return web::Answer([&] { return web::Form({name, size}); });
}

PLDDB_EXPORTED("draw") const char* Draw(std::size_t perRow) {
  return web::Answer([&] { return web::Draw(perRow); });
}

PLDDB_EXPORTED("find") const char* Find(const char* text, std::size_t size) {
  return web::Answer([&] { return web::Find({text, size}); });
}

PLDDB_EXPORTED("show") const char* Show(std::size_t n) {
  return web::Answer([&] { return web::Show(n); });
}

PLDDB_EXPORTED("fits") const char* Fits(const char* name, std::size_t nameSize, const char* bytes, std::size_t size) {
  return web::Answer([&] { return web::Fits({name, nameSize}, {bytes, size}); });
}

PLDDB_EXPORTED("add")
const char* Add(const char* name, std::size_t nameSize, const char* text, std::size_t size, const char* family,
                std::size_t familySize) {
  return web::Answer([&] { return web::Add({name, nameSize}, {text, size}, {family, familySize}); });
}

PLDDB_EXPORTED("addShipped")
const char* AddShipped(const char* name, std::size_t nameSize, const char* text, std::size_t size) {
  return web::Answer([&] { return web::AddShipped({name, nameSize}, {text, size}); });
}

PLDDB_EXPORTED("removeFile") const char* Remove(const char* name, std::size_t size) {
  return web::Answer([&] { return web::Remove({name, size}); });
}
