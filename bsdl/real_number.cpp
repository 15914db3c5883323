#include "real_number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

#include "bsdl/characters.h"

namespace plddb::bsdl {
namespace {

/// Digits with a point among them, before it or after it: their value is digits * 10^-decimals.
struct Decimal {
  double digits = 0;
  int decimals = 0;
};

std::optional<Decimal> ReadDecimal(std::string_view text) {
  Decimal decimal;
  const std::size_t point = std::min(text.find('.'), text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i == point) continue;
    if (!IsDigit(text[i])) return std::nullopt;
    decimal.digits = decimal.digits * 10 + (text[i] - '0');
    if (i > point) ++decimal.decimals;
  }
  if (text.size() == (point == text.size() ? 0 : 1)) return std::nullopt;  // no digit
  return decimal;
}

/// "6", "+6", "-3".
std::optional<int> ReadExponent(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && IsDigit(text[1])) text.remove_prefix(1);
  int exponent = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), exponent);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return exponent;
}

double TimesPowerOfTen(double digits, int exponent) {
  return exponent < 0 ? digits / std::pow(10.0, -exponent) : digits * std::pow(10.0, exponent);
}

}  // namespace

std::optional<double> RealNumber(std::string_view text) {
  constexpr std::size_t most = 1000;  // characters
  constexpr int highest = 1000;
  if (text.size() > most) return std::nullopt;
  const std::size_t e = text.find_first_of("eE");
  const auto decimal = ReadDecimal(text.substr(0, e));
  const auto exponent = e == text.npos ? 0 : ReadExponent(text.substr(e + 1));
  if (!decimal || !exponent || std::abs(*exponent) > highest) return std::nullopt;
  const double value = TimesPowerOfTen(decimal->digits, *exponent - decimal->decimals);
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

}  // namespace plddb::bsdl
