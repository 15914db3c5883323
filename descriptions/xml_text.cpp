#include "xml_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <system_error>
#include <vector>

#include "descriptions/TextForms.h"
#include "descriptions/text_position.h"
#include "foundation/characters.h"
#include "foundation/utf8.h"

namespace plddb::descriptions {
namespace {

unsigned char ByteAt(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

using internal::StartsWith;

/// Whether a byte is ASCII that XML allows. It has no branches, since it runs for every byte of a file.
bool IsPlain(char byte) {
  const auto c = static_cast<signed char>(byte);  // negative if the top bit is set
  return (c >= ' ') | (c == '\n') | (c == '\t') | (c == '\r');
}

constexpr std::size_t kBlock = 64;

/// Does not stop at the first byte that is not plain, so that compilers test many bytes in one step.
bool IsPlainBlock(const char* bytes) {
  unsigned char odd = 0;
  for (std::size_t i = 0; i < kBlock; ++i) odd |= static_cast<unsigned char>(!IsPlain(bytes[i]));
  return odd == 0;
}

bool IsXmlCharacter(std::uint32_t code) {
  if (code < ' ') return code == '\t' || code == '\n' || code == '\r';
  return code < 0xD800 || (code > 0xDFFF && code < 0xFFFE) || (code > 0xFFFF && code <= 0x10FFFF);
}

/// The length in bytes of the reference that starts `text`, including its ';'; 0 if it is unknown to XML.
std::size_t ReferenceLength(std::string_view text) {
  for (const std::string_view known : {"&lt;", "&gt;", "&amp;", "&quot;", "&apos;"}) {
    if (StartsWith(text, known)) return known.size();
  }
  if (!StartsWith(text, "&#")) return 0;
  const std::size_t digits = StartsWith(text, "&#x") ? 3 : 2;
  std::uint32_t code = 0;
  const auto read = std::from_chars(text.data() + digits, text.data() + text.size(), code, digits == 3 ? 16 : 10);
  const auto length = static_cast<std::size_t>(read.ptr - text.data());
  const bool closed = read.ec == std::errc() && length < text.size() && text[length] == ';';
  return closed && IsXmlCharacter(code) ? length + 1 : 0;
}

void CheckReference(std::string_view text, std::size_t offset, Faults& faults) {
  static constexpr std::size_t kLongestName = 20;
  if (ReferenceLength(text.substr(offset)) != 0) return;
  const auto name = text.substr(offset, kLongestName);
  faults.Add(offset, "unknown reference " + Quoted(name.substr(0, name.find_first_of(" ;<&\"'", 1))) +
                         ": expected &amp; for '&' itself");
}

/// The end of the markup that starts at `start` and ends with `close`.
std::size_t EndOf(std::string_view text, std::size_t start, std::string_view close) {
  const auto end = text.find(close, start);
  return end == text.npos ? text.size() : end + close.size();
}

/// The end of the start tag at `start`: its '>', but not one within a quoted value.
std::size_t EndOfStartTag(std::string_view text, std::size_t start) {
  char quote = '\0';
  for (std::size_t i = start; i < text.size(); ++i) {
    const char c = text[i];
    if (quote != '\0') {
      if (c == quote) quote = '\0';
    } else if (c == '>') {
      return i + 1;
    } else if (c == '"' || c == '\'') {
      quote = c;
    }
  }
  return text.size();
}

/// The offset of the innermost element that is still open at the end of `text`, which is well-formed so far; npos without one.
std::size_t InnermostOpenElement(std::string_view text) {
  std::vector<std::size_t> open;
  for (auto at = text.find('<'); at != text.npos;) {
    const auto rest = text.substr(at);
    std::size_t end = 0;
    if (StartsWith(rest, "<!--")) {
      end = EndOf(text, at + 4, "-->");
    } else if (StartsWith(rest, "<![CDATA[")) {
      end = EndOf(text, at, "]]>");
    } else if (StartsWith(rest, "<?")) {
      end = EndOf(text, at, "?>");
    } else if (StartsWith(rest, "<!")) {
      end = at + 2;  // a document type: the declarations in it are skipped in the same way
    } else if (StartsWith(rest, "</")) {
      end = EndOf(text, at, ">");
      if (!open.empty()) open.pop_back();
    } else {
      end = EndOfStartTag(text, at);
      if (end < 2 || text.substr(end - 2, 2) != "/>") open.push_back(at);
    }
    at = text.find('<', end);
  }
  return open.empty() ? text.npos : open.back();
}

/// "</NAME>" for the name at `offset`.
std::string EndTag(std::string_view text, std::size_t offset) {
  static constexpr std::size_t kLongest = 100;  // no more is ever quoted
  const auto name = text.substr(std::min(offset, text.size()), kLongest);
  return Quoted("</" + std::string(name.substr(0, name.find_first_of(" \t\r\n/><"))) + ">");
}

void ReportUnclosedElement(std::string_view text, std::size_t offset, Faults& faults) {
  const bool atEndTag = offset >= 2 && text.substr(offset - 2, 2) == "</";
  const std::size_t at = atEndTag ? offset - 2 : text.size();
  const std::size_t open = InnermostOpenElement(text.substr(0, at));
  const std::string found = "found " + (atEndTag ? EndTag(text, offset) : "the end of the file");
  if (open == text.npos) return faults.Add(at, found + ", but no element is open");
  const std::string line = std::to_string(TextPositions(text).At(open).line);
  faults.Add(at, found + ", expected " + EndTag(text, open + 1) + ": that element starts in line " + line);
}

struct BrokenXml {
  pugi::xml_parse_status status;
  const char* opening;  // the unclosed construct: the fault is reported there
  const char* text;
};

constexpr BrokenXml kBrokenXml[] = {
    {pugi::status_unrecognized_tag, nullptr, "no tag starts here: expected a name after '<'"},
    {pugi::status_bad_pi, "<?", "this declaration is not closed: expected ?>"},
    {pugi::status_bad_comment, "<!--", "this comment is not closed: expected -->"},
    {pugi::status_bad_cdata, "<![CDATA[", "this CDATA section is not closed: expected ]]>"},
    {pugi::status_bad_doctype, "<!DOCTYPE", "this document type is malformed or not closed"},
    {pugi::status_bad_start_element, nullptr,
     "malformed start tag: expected NAME=\"VALUE\", /> or >, and names that start with a letter"},
    {pugi::status_bad_attribute, nullptr, "malformed attribute: expected NAME=\"VALUE\", and a blank before the next one"},
    {pugi::status_bad_end_element, nullptr, "malformed end tag: expected </NAME>"},
};

/// The start of the construct at which the parser stopped: it reports only where it stopped.
std::size_t PlaceOf(pugi::xml_parse_status status, const char* opening, std::string_view text, std::size_t offset) {
  if (opening != nullptr) return std::min(offset, text.rfind(opening, offset));
  if (offset == 0) return offset;
  if (status == pugi::status_unrecognized_tag) return std::min(offset, text.rfind('<', offset - 1));
  // It has read past the character in place of a '='.
  const bool readPast = std::string_view("=\"' \t\r\n").find(text[offset - 1]) == std::string_view::npos;
  return status == pugi::status_bad_attribute && readPast ? offset - 1 : offset;
}

}  // namespace

std::size_t CharacterLength(std::string_view text) {
  const auto character = internal::FirstUtf8Character(text);
  return character.length != 0 && IsXmlCharacter(character.code) ? character.length : 0;
}

bool CheckCharacters(std::string_view text, Faults& faults) {
  std::size_t i = 0;
  while (i < text.size() && !faults.Full()) {
    const bool startsBlock = i % kBlock == 0 && i + kBlock <= text.size();  // no block is tested twice
    if (startsBlock && IsPlainBlock(text.data() + i)) {
      i += kBlock;
      continue;
    }
    const std::size_t length = IsPlain(text[i]) ? 1 : CharacterLength(text.substr(i));
    const unsigned char byte = ByteAt(text, i);
    if (length == 0) {
      if (byte == 0) {
        faults.Add(i, "NUL byte: this is not a text file in UTF-8");
        return false;
      }
      faults.Add(i, byte < ' ' ? "control character " + Hex(byte, 2) + ": XML does not allow it"
                               : "byte " + Hex(byte, 2) + " is not UTF-8: save the file as UTF-8");
    }
    i += std::max<std::size_t>(length, 1);
  }
  return true;
}

void CheckReferences(std::string_view text, std::size_t offset, Faults& faults) {
  const char quote = text[offset - 1];
  for (const char* c = &text[offset]; *c != quote && !faults.Full(); ++c) {
    if (*c == '<') faults.Add(static_cast<std::size_t>(c - text.data()), "'<' within a value: expected &lt;");
    if (*c == '&') CheckReference(text, static_cast<std::size_t>(c - text.data()), faults);
  }
}

void ReportBrokenXml(std::string_view text, const pugi::xml_parse_result& result, Faults& faults) {
  const auto offset = std::min(static_cast<std::size_t>(result.offset), text.size());
  if (result.status == pugi::status_end_element_mismatch) return ReportUnclosedElement(text, offset, faults);
  for (const BrokenXml& broken : kBrokenXml) {
    if (broken.status == result.status) return faults.Add(PlaceOf(broken.status, broken.opening, text, offset), broken.text);
  }
  faults.Add(offset, result.description());
}

}  // namespace plddb::descriptions
