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

/// In quotes. Outside of them JSON is nothing but ASCII that is seen, and line ends.
std::string QuotedByLibrary(std::string_view text) {
  using LibraryJson = nlohmann::json;
  const LibraryJson json = std::string(text);
  return plddb::EscapeUnseen(json.dump(-1, ' ', false, LibraryJson::error_handler_t::replace), EscapedCharacter);
}

bool IsPlain(char c) { return (c >= ' ' && c <= '~') || c == '\n'; }
bool IsEscaped(char c) { return c == '"' || c == '\\' || c == '\n'; }  // of the plain ones

struct Writing {
  JsonWriter& writer;
  void operator()(const Json::Elements& elements) const {
    writer.Begin('[');
    for (const Json& element : elements) writer.Value(element);
    writer.End(']');
  }
  void operator()(const Json::Members& members) const {
    writer.Begin('{');
    for (const auto& [name, value] : members) writer.Name(name).Value(value);
    writer.End('}');
  }
  template <typename Plain>
  void operator()(const Plain& plain) const {
    writer.Value(plain);
  }
};

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

void JsonWriter::Separate() {
  if (!isNamed_ && depth_ > 0) {
    text_ += isFirst_ ? "\n" : ",\n";
    text_.append(2 * depth_, ' ');
  }
  isFirst_ = isNamed_ = false;
}

void JsonWriter::Plain(std::string_view text) {
  Separate();
  text_ += text;
}

void JsonWriter::Begin(char bracket) {
  Separate();
  text_ += bracket;
  ++depth_;
  isFirst_ = true;
}

void JsonWriter::End(char bracket) {
  --depth_;
  if (!isFirst_) text_.append(1, '\n').append(2 * depth_, ' ');
  text_ += bracket;
  isFirst_ = false;
}

JsonWriter& JsonWriter::Name(std::string_view name) {
  Value(name);
  text_ += ": ";
  isNamed_ = true;
  return *this;
}

void JsonWriter::Value(std::string_view text) {
  if (!std::all_of(text.begin(), text.end(), IsPlain)) return Plain(QuotedByLibrary(text));
  Plain("\"");
  for (;;) {
    const auto plain = static_cast<std::size_t>(std::find_if(text.begin(), text.end(), IsEscaped) - text.begin());
    text_.append(text.substr(0, plain));
    if (plain == text.size()) break;
    text_ += '\\';
    text_ += text[plain] == '\n' ? 'n' : text[plain];
    text.remove_prefix(plain + 1);
  }
  text_ += '"';
}

void JsonWriter::Value(const Json& json) { std::visit(Writing{*this}, json.value()); }

std::string ToText(const Json& json) {
  std::string text;
  JsonWriter(text).Value(json);
  return text + "\n";
}

}  // namespace tool
