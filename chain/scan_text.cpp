#include "chain/scan_text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "chain/ids.h"
#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

// --- Encodings and colours --------------------------------------------------------------------------------------------------

void AppendUtf8(std::string& text, std::uint32_t c) {
  const auto put = [&](std::uint32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (c < 0x80) return put(c);
  if (c < 0x800) {
    put(0xC0 | c >> 6);
  } else {
    if (c < 0x10000) {
      put(0xE0 | c >> 12);
    } else {
      put(0xF0 | c >> 18);
      put(0x80 | (c >> 12 & 0x3F));
    }
    put(0x80 | (c >> 6 & 0x3F));
  }
  put(0x80 | (c & 0x3F));
}

/// Which byte of each pair is the high one; -1 for a text that is not UTF-16. PowerShell's > writes it with a byte order mark.
int HighByteOfUtf16(std::string_view text) {
  if (text.size() < 2) return -1;
  if (text.substr(0, 2) == "\xFF\xFE") return 1;
  if (text.substr(0, 2) == "\xFE\xFF") return 0;
  const std::string_view start = text.substr(0, 64);
  for (const std::size_t high : {std::size_t{0}, std::size_t{1}}) {
    bool isUtf16 = start.size() >= 4;
    for (std::size_t i = 0; i + 1 < start.size(); i += 2) {
      isUtf16 = isUtf16 && start[i + high] == '\0' && start[i + 1 - high] != '\0';
    }
    if (isUtf16) return static_cast<int>(high);
  }
  return -1;
}

std::string FromUtf16(std::string_view text, std::size_t high) {
  const auto unit = [&](std::size_t i) {
    const auto byte = [&](std::size_t at) { return std::uint32_t{static_cast<unsigned char>(text[at])}; };
    return byte(i + high) << 8 | byte(i + 1 - high);
  };
  std::string plain;
  plain.reserve(text.size() / 2);
  for (std::size_t i = unit(0) == 0xFEFF ? 2 : 0; i + 1 < text.size(); i += 2) {
    std::uint32_t c = unit(i);
    const bool isPair = c >= 0xD800 && c < 0xDC00 && i + 3 < text.size() && unit(i + 2) >= 0xDC00 && unit(i + 2) < 0xE000;
    if (isPair) {
      c = 0x10000 + ((c - 0xD800) << 10) + (unit(i + 2) - 0xDC00);
      i += 2;
    }
    AppendUtf8(plain, c >= 0xD800 && c < 0xE000 ? '?' : c);
  }
  return plain;
}

std::string AsUtf8(std::string_view raw) {
  const int high = HighByteOfUtf16(raw);
  if (high >= 0) return FromUtf16(raw, static_cast<std::size_t>(high));
  return std::string(raw.substr(0, 3) == "\xEF\xBB\xBF" ? raw.substr(3) : raw);
}

/// Other spellings of plain characters: of web pages, of word processors, in UTF-8 and in Windows' code page 1252.
constexpr struct {
  std::string_view text;
  char plain;
} kSpellings[] = {
    {"\xC2\xA0", ' '},     {"\xE2\x80\xAF", ' '}, {"\xE2\x80\x98", '\''}, {"\xE2\x80\x99", '\''}, {"\xE2\x80\x9C", '"'},
    {"\xE2\x80\x9D", '"'}, {"&nbsp;", ' '},       {"&#160;", ' '},        {"&gt;", '>'},          {"&lt;", '<'},
    {"&quot;", '"'},       {"&#34;", '"'},        {"&apos;", '\''},       {"&#39;", '\''},        {"&amp;", '&'},
    {"\xA0", ' '},         {"\x91", '\''},        {"\x92", '\''},         {"\x93", '"'},          {"\x94", '"'},
};

/// `text` with plain characters for their other spellings.
std::string WithPlainCharacters(std::string text) {
  constexpr std::string_view starts = "&\xC2\xE2\xA0\x91\x92\x93\x94";
  if (text.find_first_of(starts) == text.npos) return text;
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const bool isInside = !plain.empty() && (plain.back() & 0x80) != 0;  // of a character of UTF-8
    const auto* const spelling = std::find_if(std::begin(kSpellings), std::end(kSpellings), [&](const auto& row) {
      return text.compare(at, row.text.size(), row.text) == 0 && !(isInside && row.text.size() == 1);
    });
    const bool isOther = spelling != std::end(kSpellings);
    plain += isOther ? spelling->plain : text[at];
    at += isOther ? spelling->text.size() : 1;
  }
  return plain;
}

/// Whether the carriage return at `at` is a line end by itself, as on old systems and in lines that a program rewrites.
bool EndsLine(std::string_view text, std::size_t at) {
  const std::size_t next = text.find_first_not_of('\r', at);
  return next != text.npos && text[next] != '\n' && (at == 0 || text[at - 1] != '\n');
}

/// The length of the terminal's control sequence that starts `text`, for example ESC[31m; 0 without one.
std::size_t ControlSequenceLength(std::string_view text) {
  if (text.substr(0, 2) != "\x1B[") return 0;
  const auto isInner = [](char c) { return c >= ' ' && c <= '?'; };
  const auto last = std::find_if_not(text.begin() + 2, text.end(), isInner);
  const bool isWhole = last != text.end() && *last >= '@' && *last <= '~';
  return static_cast<std::size_t>(last - text.begin()) + (isWhole ? 1 : 0);
}

/// `text` with blanks for colours, tabs and carriage returns, so that places can be counted.
std::string WithoutColours(std::string text) {
  for (std::size_t i = 0; (i = text.find_first_of("\r\t\x1B", i)) != text.npos; ++i) {
    const std::size_t length = text[i] != '\x1B' ? 1 : ControlSequenceLength(std::string_view(text).substr(i));
    text.replace(i, length, length, text[i] == '\r' && EndsLine(text, i) ? '\n' : ' ');
  }
  return text;
}

// --- Wrapped lines ----------------------------------------------------------------------------------------------------------

constexpr std::size_t kShortestWrapped = 20;  // no terminal is narrower
constexpr std::size_t kMostJoined = 8;        // lines of one message

/// How two lines are joined: the text between them, and the position in the second line from which it is kept.
struct Join {
  bool isOne = false;
  const char* between = "";
  std::size_t skipped = 0;
};

std::string_view TrimmedEnd(std::string_view line) {
  return line.substr(0, line.find_last_not_of(kBlanks) + 1);  // only blanks: npos + 1 is 0
}

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool Contains(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

/// "... tap/dev" and "ice found: 0x...": the words by which a line is recognised, cut in two; also at a blank, which is lost.
Join JoinOfMarker(std::string_view line, std::string_view next, std::string_view marker) {
  const std::size_t margin = next.size() - WithoutMargin(next).size();
  for (std::size_t cut = 1; cut < marker.size(); ++cut) {
    if (line.back() != marker[cut - 1] || !EndsWith(line, marker.substr(0, cut))) continue;
    const std::string_view rest = marker.substr(cut);
    if (next.substr(0, rest.size()) == rest) return {true, "", 0};
    if (next.substr(margin, rest.size()) == rest) return {true, "", margin};
    if (rest.front() == ' ' && next.substr(margin, rest.size() - 1) == rest.substr(1)) return {true, " ", margin};
  }
  return {};
}

std::size_t HexDigits(std::string_view text) { return std::min(text.find_first_not_of("0123456789abcdefABCDEF"), text.size()); }

/// "... 0x0362" and "d093 (mfg: ...": an id cut in two.
Join JoinOfId(std::string_view line, std::string_view next) {
  const std::size_t prefix = line.rfind("0x");
  const std::size_t margin = next.size() - WithoutMargin(next).size();
  const std::string_view rest = next.substr(margin);
  if (EndsWith(line, " 0") && rest.substr(0, 1) == "x" && HexDigits(rest.substr(1)) == 8) return {true, "", margin};
  if (prefix == line.npos) return {};
  const std::string_view digits = line.substr(prefix + 2);
  const bool isCut = digits.size() < 8 && HexDigits(digits) == digits.size();
  return {isCut && HexDigits(rest) == 8 - digits.size(), "", margin};
}

bool StartsMessage(std::string_view line) {
  for (const char* const level :
       {"Info :", "Warn :", "Error:", "Debug:", "User :", "Info:", "Warning:", "JTAG tap: ", "TAP "}) {
    if (Contains(line, level)) return true;
  }
  return false;
}

/// Whether `line` is the beginning of a message: its name, parenthesis or quotation goes on, or columns of a table are missing.
bool IsUnfinished(std::string_view line) {
  const auto count = [&](char c) { return std::count(line.begin(), line.end(), c); };
  if (const std::size_t tap = line.rfind("JTAG tap: "); tap != line.npos) {
    const auto words = Words(line.substr(tap + 10));
    return words.size() < 2 || (line.size() > 60 && count('(') > count(')'));
  }
  if (const std::string_view bits = After(line, "Device Id: "); !bits.empty() && bits.size() < 32) {
    return bits.find_first_not_of("01") == bits.npos;
  }
  if (Contains(line, "AUTO ") && Contains(line, "newtap")) return count('"') % 2 != 0;
  if (const std::size_t enabled = line.find(" Y "); enabled != line.npos) {
    const auto before = Words(line.substr(0, enabled));
    const auto after = Words(line.substr(enabled + 3));
    const bool isRow = before.size() >= 2 && !after.empty() && after[0].substr(0, 2) == "0x" && !Contains(line, "|");
    return isRow && after.size() < 5 && line.size() > 60;
  }
  return Contains(line, "JTAG loc.:") && Contains(line, "Desc:") && !Contains(line, "IR length:");
}

bool HasMarker(std::string_view line) {
  for (const ScanFormat* const format : kScanFormats) {
    for (std::size_t k = 0; k < format->kindCount; ++k) {
      const std::string_view marker = format->kinds[k].marker;
      if (marker.size() > 3 && marker != "IR length: " && Contains(line, marker)) return true;
    }
  }
  return false;
}

Join JoinOf(std::string_view whole, std::string_view next) {
  const std::string_view line = TrimmedEnd(whole);
  if (line.size() < kShortestWrapped || WithoutMargin(next).empty()) return {};
  for (const ScanFormat* const format : kScanFormats) {
    for (std::size_t k = 0; k < format->kindCount; ++k) {
      const std::string_view marker = format->kinds[k].marker;
      const Join join = marker.size() > 8 ? JoinOfMarker(line, next, marker) : Join();
      if (join.isOne) return join;
    }
  }
  const bool isId = HasMarker(line) || Contains(line, "-expected-id") || Contains(line, "JTAG tap: ");
  if (const Join join = JoinOfId(line, next); join.isOne && isId) return join;
  if (!IsUnfinished(line) || StartsMessage(next)) return {};
  const bool isCut = IsFullLine(line);
  const bool isName =
      EndsWith(line, LastWord(line)) && Contains(line, "JTAG tap: " + LastWord(line));  // what follows is awaited
  if (!isName && (HasMarker(next) || Contains(next, " Y 0x"))) return {};
  return {true, isCut ? "" : " ", isCut ? 0 : next.size() - WithoutMargin(next).size()};
}

}  // namespace

bool IsFullLine(std::string_view line) {
  const std::size_t width = TrimmedEnd(line).size();
  return width == 80 || width == 100 || width == 120 || width == 132;
}

std::string_view WithoutMargin(std::string_view line) {
  return line.substr(std::min(line.find_first_not_of(" \t>|#*`"), line.size()));
}

ScanText::ScanText(std::string_view raw) : plain_(WithoutColours(WithPlainCharacters(AsUtf8(raw)))) {
  text_.reserve(plain_.size());
  std::string current;  // the line that may go on
  std::size_t joined = 0;
  std::size_t start = 0;
  bool isFirst = true;
  ForEachLine(plain_, [&](std::string_view line, int) {
    const Join join = isFirst || joined == kMostJoined ? Join() : JoinOf(current, line);
    if (join.isOne) {
      text_.resize(text_.size() - (current.size() - TrimmedEnd(current).size()));
      text_ += join.between;
      ++joined;
    } else {
      if (!isFirst) text_ += '\n';
      current.clear();
      joined = 0;
    }
    current.resize(TrimmedEnd(current).size());
    const std::size_t source = start + join.skipped;
    if (pieces_.empty() || source - text_.size() != pieces_.back().source - pieces_.back().at) {
      pieces_.push_back({text_.size(), source});
    }
    text_ += line.substr(join.skipped);
    current += join.between;
    current += line.substr(join.skipped);
    start += line.size() + 1;
    isFirst = false;
  });
}

ScanText::Place ScanText::PlaceOf(std::size_t offset) const {
  const auto after = std::upper_bound(pieces_.begin(), pieces_.end(), offset,
                                      [](std::size_t at, const Piece& piece) { return at < piece.at; });
  const std::size_t source = after == pieces_.begin() ? 0 : (after - 1)->source + (offset - (after - 1)->at);
  const std::string_view before = std::string_view(plain_).substr(0, source);
  const auto line = static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1;
  return {line, static_cast<int>(before.size() - (before.rfind('\n') + 1)) + 1};
}

}  // namespace plddb::chain
