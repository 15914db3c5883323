#include "find_forms.h"

#include "device_lookup.h"
#include "device_text.h"
#include "json_text.h"

namespace tool {
namespace {

using plddb::find::Key;
using plddb::find::Match;
using plddb::find::Matches;

Json MarkOrNull(const Match& match) {
  if (!match.mark) return nullptr;
  const plddb::find::Mark& mark = *match.mark;
  const auto orNull = [](const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); };
  return {{"name", mark.name},
          {"package", orNull(mark.package)},
          {"packageDescribed", mark.isPackageDescribed},
          {"leadFree", mark.isLeadFree},
          {"speed", orNull(mark.speed)},
          {"temperature", orNull(mark.temperature == '\0' ? "" : plddb::find::TemperatureName(mark.temperature))},
          {"unknown", mark.unknown}};
}

Json KeyNames(const Match& match) {
  Json names = Json::array();
  for (const Key key : match.keys) names.push_back(NameOf(key));
  return names;
}

Json ToJson(const Match& match, const Place& place) {
  const DeviceInfo& device = *match.device;
  return {{"key", NameOf(match.keys.front())},
          {"matchedBy", KeyNames(match)},
          {"match", NameOf(match.kind)},
          {"name", TextOrNull(device.GetName())},
          {"family", TextOrNull(FamilyNameOrNull(device))},
          {"codeName", TextOrNull(device.GetCodeName())},
          {"packages", PackageTypeList(device)},
          {"file", place.database->file},
          {"line", place.device->line},
          {"mark", MarkOrNull(match)}};
}

/// The candidates of a fuse count, with the markers of devices that have two access modes.
void AddCandidates(const std::vector<Database>& databases, unsigned long fuses, Json& report) {
  std::vector<std::string> all;
  std::vector<std::string> names;
  for (const Database& database : databases) {
    std::vector<std::string> codeNames;
    database.devices->GetDeviceCodeNameWithFuseMap(fuses, codeNames);
    all.insert(all.end(), codeNames.begin(), codeNames.end());
    database.devices->GetDeviceWithFuseMap(fuses, names);  // appends
  }
  report["fuses"] = fuses;
  report["codeNames"] = all;
  report["names"] = names;
}

}  // namespace

std::string MatchesJson(const std::vector<Database>& databases, const Answer& answer, std::size_t shown, unsigned long fuses) {
  Json report = Json::object();
  if (fuses != 0) AddCandidates(databases, fuses, report);
  Json matches = Json::array();
  for (std::size_t i = 0; i < shown; ++i) {
    matches.push_back(ToJson(answer.matches[i], PlaceOf(databases, answer.matches[i])));
  }
  report["matches"] = std::move(matches);
  report["ambiguous"] = IsAmbiguous(answer.matches);
  report["more"] = answer.matches.size() - shown;
  report["suggestions"] = answer.suggestions;
  report["reason"] = answer.reason.empty() ? Json(nullptr) : Json(answer.reason);
  return ToText(report);
}

}  // namespace tool
