#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "Find.h"
#include "device_lookup.h"
#include "device_text.h"
#include "find_forms.h"
#include "page.h"
#include "show_forms.h"

namespace web {
namespace {

constexpr std::size_t kMostDevices = 50;  // that the page shows; the command shows all

}  // namespace

std::string Find(std::string_view text) {
  Page& page = ThePage();
  const plddb::find::Databases searched = tool::ToSearch(page.databases);
  page.found = {plddb::find::Find(searched, text), {}, ""};
  if (page.found.matches.empty()) page.found.suggestions = plddb::find::NearNames(searched, text);
  return MatchesJson(page.databases, page.found, std::min(page.found.matches.size(), kMostDevices));
}

std::string Show(std::size_t n) {
  Page& page = ThePage();
  if (n >= page.found.matches.size()) return Failed("no such device");
  return DeviceJson(page.databases, {page.found.matches[n]}, 0);
}

}  // namespace web
