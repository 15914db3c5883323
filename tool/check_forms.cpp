#include "check_forms.h"

#include <filesystem>
#include <string_view>
#include <unordered_map>

#include "Bsdl.h"
#include "Files.h"
#include "device_text.h"
#include "json_text.h"
#include "text_table.h"

namespace tool {
namespace {

using plddb::check::Code;
using plddb::check::Finding;
using plddb::check::Place;
using plddb::check::Severity;

constexpr const char* kSarifSchema = "https://json.schemastore.org/sarif-2.1.0.json";

const char* NameOf(Severity severity) { return severity == Severity::kError ? "error" : "warning"; }

Json PlaceJson(const Place& place) { return {{"file", place.file}, {"line", place.line}, {"column", place.column}}; }

// --- SARIF ------------------------------------------------------------------------------------------------------------------

bool IsPlainInUri(char c) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  return isLetter || (c >= '0' && c <= '9') || std::string_view("-._~/").find(c) != std::string_view::npos;
}

/// A path as a URI: relative where the path is. Its ':' is written as %3A, so that no name looks like a scheme.
std::string UriOf(const std::string& path) {
  const std::filesystem::path file = plddb::ToPath(path);
  const std::string name = plddb::ToName(file);
  std::string uri = !file.is_absolute() ? "" : name.front() == '/' ? "file://" : "file:///";  // Windows: C:/...
  for (const char c : name) {
    if (IsPlainInUri(c)) {
      uri += c;
    } else {
      uri += '%' + plddb::Hex(static_cast<unsigned char>(c), 2).substr(2);
    }
  }
  return uri;
}

Json LocationOf(const Place& place) {
  return {{"physicalLocation",
           {{"artifactLocation", {{"uri", UriOf(place.file)}}},
            {"region", {{"startLine", place.line}, {"startColumn", place.column}}}}}};
}

Json Rules() {
  Json rules = Json::array();
  for (const Code& code : AllCodes()) {
    rules.push_back({{"id", code.name},
                     {"shortDescription", {{"text", code.meaning}}},
                     {"defaultConfiguration", {{"level", NameOf(code.severity)}}}});
  }
  return rules;
}

Json ResultOf(const Finding& finding, std::size_t ruleIndex) {
  Json result = {{"ruleId", finding.code},
                 {"ruleIndex", ruleIndex},
                 {"level", NameOf(finding.severity)},
                 {"message", {{"text", finding.text}}},
                 {"locations", Json::array({LocationOf(finding.place)})}};
  for (const Place& place : finding.related) result["relatedLocations"].push_back(LocationOf(place));
  return result;
}

std::unordered_map<std::string_view, std::size_t> RuleIndexes() {
  std::unordered_map<std::string_view, std::size_t> indexes;
  for (const Code& code : AllCodes()) indexes.emplace(code.name, indexes.size());
  return indexes;
}

}  // namespace

std::vector<Code> AllCodes() {
  std::vector<Code> codes = plddb::check::Codes();
  for (const Code& code : plddb::bsdl::CheckCodes()) codes.push_back(code);
  return codes;
}

std::string FindingLines(const Findings& findings) {
  std::string lines;
  for (const Finding& finding : findings) {
    lines += Printable(finding.place.file) + ':' + std::to_string(finding.place.line) + ':' +
             std::to_string(finding.place.column) + ": " + NameOf(finding.severity) + "[" + std::string(finding.code) +
             "]: " + Printable(finding.text) + '\n';
  }
  return lines;
}

std::string FindingJson(const Findings& findings) {
  Json report = Json::array();
  for (const Finding& finding : findings) {
    Json entry = PlaceJson(finding.place);
    entry["severity"] = NameOf(finding.severity);
    entry["code"] = finding.code;
    entry["text"] = finding.text;
    entry["related"] = Json::array();
    for (const Place& place : finding.related) entry["related"].push_back(PlaceJson(place));
    report.push_back(std::move(entry));
  }
  return ToText(report);
}

std::string FindingSarif(const Findings& findings) {
  const auto indexes = RuleIndexes();
  Json results = Json::array();
  for (const Finding& finding : findings) results.push_back(ResultOf(finding, indexes.at(finding.code)));
  const Json run = {{"tool", {{"driver", {{"name", "plddb"}, {"rules", Rules()}}}}}, {"results", std::move(results)}};
  return ToText({{"$schema", kSarifSchema}, {"version", "2.1.0"}, {"runs", Json::array({run})}});
}

std::string CodeTable() {
  std::vector<Row> rows;
  for (const Code& code : AllCodes()) {
    rows.push_back({std::string(code.name), NameOf(code.severity), std::string(code.meaning)});
  }
  return WrappedTable(rows);
}

}  // namespace tool
