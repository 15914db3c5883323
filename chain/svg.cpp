// A drawing of the chain from TDI to TDO: one box per TAP, in as many rows as needed. An unknown device has a dashed frame and
// the word "unknown", an ambiguous one a double frame and a star: neither needs colour.

#include <algorithm>
#include <string>
#include <string_view>

#include "chain/Chain.h"
#include "foundation/printed_forms.h"

namespace plddb::chain {
namespace {

constexpr std::size_t kBoxWidth = 200;
constexpr std::size_t kBoxHeight = 92;
constexpr std::size_t kGap = 36;          // between boxes of a row
constexpr std::size_t kRowGap = 44;       // between rows
constexpr std::size_t kMargin = 64;       // for the words TDI and TDO
constexpr std::size_t kLongestName = 18;  // characters that fit into a box

/// The number of bytes of the first character of `text`; 0 if XML does not allow it.
std::size_t XmlCharacterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const unsigned int first = byte(0);
  if (first < 0x80) return first >= 0x20 && first != 0x7F ? 1 : 0;
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4) return 0;
  unsigned int c = first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    c = c << 6 | (byte(i) & 0x3F);
  }
  constexpr unsigned int least[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool isCharacter = c >= least[length] && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF;
  return isCharacter ? length : 0;
}

/// `text` as XML, "..." at its end when it has more than `most` characters.
std::string XmlText(const std::string& text, std::size_t most) {
  std::string xml;
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++count) {
    if (count == most) return xml + "...";
    const std::size_t length = XmlCharacterLength(std::string_view(text).substr(i));
    const char c = length == 0 ? '?' : text[i];
    xml += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : length > 1 ? text.substr(i, length) : std::string(1, c);
    i += std::max<std::size_t>(length, 1);
  }
  return xml;
}

struct Point {
  std::size_t x;
  std::size_t y;
};

/// The upper left corner of the box that is drawn as the nth.
Point CornerOf(std::size_t n, std::size_t perRow) {
  return {kMargin + n % perRow * (kBoxWidth + kGap), kRowGap + n / perRow * (kBoxHeight + kRowGap)};
}

std::string Number(std::size_t number) { return std::to_string(number); }

std::string Text(Point at, const char* style, const std::string& xml) {
  return "<text x=\"" + Number(at.x) + "\" y=\"" + Number(at.y) + "\" class=\"" + style + "\">" + xml + "</text>\n";
}

std::string Frame(Point at, std::size_t inset, const char* style) {
  return "<rect x=\"" + Number(at.x + inset) + "\" y=\"" + Number(at.y + inset) + "\" width=\"" +
         Number(kBoxWidth - 2 * inset) + "\" height=\"" + Number(kBoxHeight - 2 * inset) + "\" rx=\"4\" class=\"" + style +
         "\"/>\n";
}

std::string NameOf(const ChainPosition& position) {
  return position.Match() == nullptr ? "unknown" : DeviceName(*position.Match());
}

std::string KindLine(const std::string& comm, const ChainPosition& position) {
  if (position.IsAmbiguous()) return "* " + Number(position.Candidates().size()) + " devices match";
  return position.Match() == nullptr ? KindText(comm, position) : FamilyName(*position.Match());
}

std::string Box(const ChainPosition& position, const std::string& comm, std::size_t number, Point at) {
  const bool isUnknown = position.Match() == nullptr;
  const std::size_t irLength = position.IrLength();
  const std::string id = position.id ? internal::Hex(*position.id, 8) : "no IDCODE";
  const std::string name = NameOf(position);
  std::string box = "<g><title>" + XmlText("position " + Number(number) + ": " + name, name.size() + 40) + "</title>\n";
  box += Frame(at, 0, isUnknown ? "box unknown" : "box");
  if (position.IsAmbiguous()) box += Frame(at, 3, "box");
  const std::size_t x = at.x + kBoxWidth / 2;
  box += Text({at.x + 8, at.y + 16}, "small", Number(number));
  box += Text({x, at.y + 30}, "name", (isUnknown ? "? " : "") + XmlText(name, kLongestName));
  box += Text({x, at.y + 48}, "line", XmlText(KindLine(comm, position), kLongestName + 8));
  box += Text({x, at.y + 65}, "id", id);
  return box + Text({x, at.y + 82}, "line", "IR " + (irLength == 0 ? "length not known" : Number(irLength) + " bits")) +
         "</g>\n";
}

std::string Line(const std::string& points) { return "<polyline points=\"" + points + "\" class=\"wire\"/>\n"; }

std::string At(std::size_t x, std::size_t y) { return Number(x) + "," + Number(y) + " "; }

/// The wire from the box that is drawn as the nth to the next one; from the end of a row round to the start of the next.
std::string Wire(std::size_t n, std::size_t perRow) {
  const Point from = CornerOf(n, perRow);
  const Point to = CornerOf(n + 1, perRow);
  const std::size_t right = from.x + kBoxWidth;
  const std::size_t y = from.y + kBoxHeight / 2;
  if (from.y == to.y) return Line(At(right, y) + At(to.x, y));
  const std::size_t between = from.y + kBoxHeight + kRowGap / 2;
  const std::size_t into = to.y + kBoxHeight / 2;
  return Line(At(right, y) + At(right + kGap / 2, y) + At(right + kGap / 2, between) + At(kMargin / 2, between) +
              At(kMargin / 2, into) + At(to.x, into));
}

/// The wire from TDI, and that to TDO.
std::string Ends(std::size_t last, std::size_t perRow) {
  const Point from = CornerOf(0, perRow);
  const Point to = CornerOf(last, perRow);
  const std::size_t out = to.x + kBoxWidth;
  const std::size_t y = to.y + kBoxHeight / 2;
  const std::size_t in = from.y + kBoxHeight / 2;
  return Text({kMargin / 2 - 8, in - 8}, "end", "TDI") + Line(At(8, in) + At(from.x, in)) +
         Text({out + kGap / 2 + 4, y - 8}, "end", "TDO") + Line(At(out, y) + At(out + kGap, y));
}

std::string Head(std::size_t count, std::size_t perRow) {
  const Point last = CornerOf(count - 1, perRow);
  const std::size_t columns = std::min(count, perRow);
  const std::string width = Number(kMargin + columns * (kBoxWidth + kGap) + 16);
  const std::string height = Number(last.y + kBoxHeight + kRowGap);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
         width + "\" height=\"" + height + "\" viewBox=\"0 0 " + width + " " + height +
         "\" font-family=\"sans-serif\" text-anchor=\"middle\">\n"
         "<title>JTAG chain of " +
         Number(count) + (count == 1 ? " TAP" : " TAPs") +
         "</title>\n"
         "<style>\n"
         ".box { fill: #eef3fa; stroke: #234; stroke-width: 1.5 }\n"
         ".unknown { fill: #fff4dd; stroke-dasharray: 6 4; stroke-width: 2.5 }\n"
         ".wire { fill: none; stroke: #234; stroke-width: 1.5 }\n"
         ".name { font-size: 15px; font-weight: bold }\n"
         ".line { font-size: 12px }\n"
         ".id { font-size: 13px; font-family: monospace }\n"
         ".small { font-size: 11px; text-anchor: start }\n"
         ".end { font-size: 13px; font-weight: bold }\n"
         "</style>\n"
         "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
}

}  // namespace

std::string Svg(const Chain& chain, const std::string& comm, End nearest, std::size_t perRow) {
  const std::size_t count = chain.size();
  if (count == 0 || count > kMostDrawn) return "";
  std::string svg = Head(count, perRow);
  if (nearest == End::kAsPrinted) svg += "<desc>The order of the scan is not known.</desc>\n";
  svg += Ends(count - 1, perRow);
  for (std::size_t n = 0; n + 1 < count; ++n) svg += Wire(n, perRow);
  for (std::size_t n = 0; n < count; ++n) {
    const std::size_t number = nearest == End::kTdi ? n : count - 1 - n;
    svg += Box(chain[number], comm, number, CornerOf(n, perRow));
  }
  return svg + "</svg>\n";
}

}  // namespace plddb::chain
