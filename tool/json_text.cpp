#include "json_text.h"

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "TextForms.h"

namespace tool {
namespace {

std::string Escape(std::uint32_t unit) { return "\\u" + plddb::Hex(unit, 4).substr(2); }

/// As JSON writes a character: in units of UTF-16.
std::string EscapedCharacter(std::uint32_t code) {
  if (code < 0x10000) return Escape(code);
  return Escape(0xD800 + ((code - 0x10000) >> 10)) + Escape(0xDC00 + ((code - 0x10000) & 0x3FF));
}

using LibraryJson = nlohmann::ordered_json;

LibraryJson Converted(const Json& json);

struct Converter {
  LibraryJson operator()(const Json::Elements& elements) const {
    LibraryJson array = LibraryJson::array();
    for (const Json& element : elements) array.push_back(Converted(element));
    return array;
  }
  LibraryJson operator()(const Json::Members& members) const {
    LibraryJson object = LibraryJson::object();
    for (const auto& [name, value] : members) object.emplace(name, Converted(value));
    return object;
  }
  template <typename Plain>
  LibraryJson operator()(const Plain& plain) const {
    return plain;
  }
};

LibraryJson Converted(const Json& json) { return std::visit(Converter(), json.value()); }

}  // namespace

Json::Json(std::initializer_list<Members::value_type> members) : value_(Members(members)) {}

Json Json::array(std::initializer_list<Json> elements) {
  Json json;
  json.value_ = Elements(elements);
  return json;
}

Json Json::object() {
  Json json;
  json.value_ = Members();
  return json;
}

void Json::push_back(Json element) {
  if (std::holds_alternative<std::nullptr_t>(value_)) value_ = Elements();
  std::get<Elements>(value_).push_back(std::move(element));
}

Json& Json::operator[](std::string_view name) {
  if (std::holds_alternative<std::nullptr_t>(value_)) value_ = Members();
  auto& members = std::get<Members>(value_);
  const auto found = std::find_if(members.begin(), members.end(), [&](const auto& member) { return member.first == name; });
  return found != members.end() ? found->second : members.emplace_back(name, Json()).second;
}

/// Outside of strings there is nothing but ASCII that is seen, and line ends.
std::string ToText(const Json& json) {
  return plddb::EscapeUnseen(Converted(json).dump(2, ' ', false, LibraryJson::error_handler_t::replace) + "\n",
                             EscapedCharacter);
}

}  // namespace tool
