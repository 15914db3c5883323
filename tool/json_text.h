#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace tool {

/// A JSON value that is going to be printed. Objects keep the order in which they were written. The JSON library is included by
/// json_text.cpp alone: a source that includes it takes four seconds more to compile.
class Json {
 public:
  using Elements = std::vector<Json>;
  using Members = std::vector<std::pair<std::string, Json>>;
  using Value = std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, std::string, Elements, Members>;

  Json() = default;
  Json(std::nullptr_t) {}
  Json(bool value) : value_(value) {}
  Json(const char* text) : value_(std::string(text)) {}
  Json(std::string text) : value_(std::move(text)) {}
  Json(std::string_view text) : value_(std::string(text)) {}
  template <typename Element>
  Json(const std::vector<Element>& elements) : value_(Elements(elements.begin(), elements.end())) {}
  template <typename Number, std::enable_if_t<std::is_integral_v<Number>, int> = 0>
  Json(Number number)
      : value_(static_cast<std::conditional_t<std::is_signed_v<Number>, std::int64_t, std::uint64_t>>(number)) {}

  /// An object: {{"name", value}, ...}.
  Json(std::initializer_list<Members::value_type> members);

  static Json array(std::initializer_list<Json> elements = {});
  static Json object();  ///< An empty object.

  void push_back(Json element);             ///< Appends to an array; a null becomes one.
  Json& operator[](std::string_view name);  ///< The member of an object, made where it is missing; a null becomes an object.

  const Value& value() const { return value_; }

 private:
  Value value_;
};

inline Json TextOrNull(const char* text) { return text == nullptr ? Json(nullptr) : Json(text); }

/// For numbers whose 0 means that there is none.
template <typename Number>
Json NumberOrNull(Number number) {
  return number == 0 ? Json(nullptr) : Json(number);
}

/// Writes JSON piece by piece in the form of ToText: for a million objects, of which trees would take minutes.
class JsonWriter {
 public:
  /// Appends to `text`. With a `depth` that many brackets are open, and the last one is not empty.
  explicit JsonWriter(std::string& text, std::size_t depth = 0) : text_(text), depth_(depth) {}

  void Begin(char bracket);
  void End(char bracket);
  JsonWriter& Name(std::string_view name);  ///< Of the member whose value follows.
  void Value(std::string_view text);
  void Value(const char* text) { text == nullptr ? Value(nullptr) : Value(std::string_view(text)); }
  void Value(const std::string& text) { Value(std::string_view(text)); }
  void Value(std::nullptr_t) { Plain("null"); }
  void Value(bool value) { Plain(value ? "true" : "false"); }
  template <typename Number, std::enable_if_t<std::is_integral_v<Number>, int> = 0>
  void Value(Number number) {
    Plain(std::to_string(number));
  }
  void Value(const Json& json);  ///< With all that it holds.

  /// For numbers whose 0, and texts whose "", mean that there is none.
  template <typename Maybe>
  void ValueOrNull(const Maybe& value) {
    value == Maybe() ? Value(nullptr) : Value(value);
  }

 private:
  void Separate();  // starts an element, a name, or the value of a member
  void Plain(std::string_view text);

  std::string& text_;
  std::size_t depth_;
  bool isFirst_ = false;  // nothing follows the open bracket so far
  bool isNamed_ = false;
};

/// `json` as it is printed. Bytes that are not UTF-8 are replaced, since descriptions made in code may hold any; what a
/// terminal cannot show without harm is escaped.
std::string ToText(const Json& json);

}  // namespace tool
