#include "show_forms.h"

#include <string>

#include "device_lookup.h"
#include "device_text.h"
#include "json_text.h"

namespace tool {
namespace {

using plddb::find::Match;
using plddb::find::Matches;

constexpr int kModes = 7;  // of chain processing

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

Json KeyNames(const Match& match) {
  Json names = Json::array();
  for (const plddb::find::Key key : match.keys) names.push_back(NameOf(key));
  return names;
}

Json OthersJson(const Matches& matches, const std::vector<Database>& databases, std::size_t shown) {
  Json others = Json::array();
  for (std::size_t i = 1; i <= shown; ++i) {
    const Place place = PlaceOf(databases, matches[i]);
    others.push_back({{"matchedBy", KeyNames(matches[i])},
                      {"name", TextOrNull(matches[i].device->GetName())},
                      {"codeName", TextOrNull(matches[i].device->GetCodeName())},
                      {"family", TextOrNull(FamilyNameOrNull(*matches[i].device))},
                      {"file", place.database->file},
                      {"line", place.device->line}});
  }
  return others;
}

}  // namespace

std::vector<int> BypassModes(const DeviceInfo& device) {
  std::vector<int> modes;
  for (int mode = 0; mode < kModes; ++mode) {
    if (IsBypassDevice(&device, mode)) modes.push_back(mode);
  }
  return modes;
}

/// Describing takes a device that may be changed, and changes nothing.
DeviceInfo& Writable(const DeviceInfo& device) { return const_cast<DeviceInfo&>(device); }

std::string DeviceJson(const std::vector<Database>& databases, const Matches& matches, std::size_t shown) {
  const DeviceInfo& device = *matches.front().device;
  const Place place = PlaceOf(databases, matches.front());
  return ToText({{"matchedBy", KeyNames(matches.front())},
                 {"match", NameOf(matches.front().kind)},
                 {"file", place.database->file},
                 {"device", ToJson(Located(plddb::Describe(Writable(device)).root, *place.device))},
                 {"family", ToJson(Located(plddb::Describe(*device.GetFamilyObject()).root, *place.family))},
                 {"bypassModes", BypassModes(device)},
                 {"ambiguous", matches.size() > 1},
                 {"others", OthersJson(matches, databases, shown)},
                 {"more", matches.size() - 1 - shown},
                 {"suggestions", Json::array()}});
}

}  // namespace tool
