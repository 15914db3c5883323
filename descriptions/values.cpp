#include "values.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <string_view>
#include <system_error>

namespace plddb::descriptions {
namespace {

struct Limits {
  long long least;
  long long most;
};

constexpr Limits LimitsOf(Kind kind) {
  switch (kind) {
    case Kind::kCount:
      return {1, USHRT_MAX};
    case Kind::kUnsigned8:
      return {0, UCHAR_MAX};
    case Kind::kUnsigned16:
      return {0, USHRT_MAX};
    case Kind::kUnsigned32:
      return {0, UINT_MAX};
    default:
      return {INT_MIN, INT_MAX};
  }
}

bool ReadNumber(std::string_view text, Limits limits, long long& number) {
  const bool negative = text.substr(0, 1) == "-";
  if (negative) text.remove_prefix(1);
  const bool hexadecimal = text.substr(0, 2) == "0x";
  if (hexadecimal) text.remove_prefix(2);
  unsigned long long magnitude = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, magnitude, hexadecimal ? 16 : 10);
  if (read.ec != std::errc() || read.ptr != end || magnitude > UINT_MAX) return false;
  number = static_cast<long long>(magnitude);
  if (negative) number = -number;
  return !(negative && limits.least >= 0) && limits.least <= number && number <= limits.most;
}

bool ReadFlag(std::string_view text, long long& number) {
  number = text == "true" ? 1 : 0;
  return number == 1 || text == "false";
}

void SkipBlanks(std::string_view& text) { text.remove_prefix(std::min(text.find_first_not_of(' '), text.size())); }

bool SkipNumber(std::string_view& text) {
  SkipBlanks(text);
  int ignored = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), ignored);
  text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
  SkipBlanks(text);
  return read.ec == std::errc();
}

bool IsRange(std::string_view text) {
  if (!SkipNumber(text) || text.substr(0, 2) != "to") return false;
  text.remove_prefix(2);
  return SkipNumber(text) && text.empty();
}

}  // namespace

bool ReadValue(Kind kind, const char* text, Value& value) {
  value = {text, 0};
  switch (kind) {
    case Kind::kText:
      return true;
    case Kind::kRange:
      return IsRange(text);
    case Kind::kFlag:
      return ReadFlag(text, value.number);
    default:
      return ReadNumber(text, LimitsOf(kind), value.number);
  }
}

std::string Expectation(Kind kind) {
  switch (kind) {
    case Kind::kText:
      return "a text that is not empty";
    case Kind::kRange:
      return "a range such as \"0 to 31\"";
    case Kind::kFlag:
      return "true or false";
    default:
      break;
  }
  const Limits limits = LimitsOf(kind);
  return "a number from " + std::to_string(limits.least) + " to " + std::to_string(limits.most) + ", decimal or 0x-hexadecimal";
}

}  // namespace plddb::descriptions
