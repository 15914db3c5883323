#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tool {

/// Objects keep the order in which they were written.
using Json = nlohmann::ordered_json;

inline Json TextOrNull(const char* text) { return text == nullptr ? Json(nullptr) : Json(text); }

/// For numbers whose 0 means that there is none.
template <typename Number>
Json NumberOrNull(Number number) {
  return number == 0 ? Json(nullptr) : Json(number);
}

/// `json` as it is printed. Bytes that are not UTF-8 are replaced, since descriptions made in code may hold any; what a
/// terminal cannot show without harm is escaped.
std::string ToText(const Json& json);

}  // namespace tool
