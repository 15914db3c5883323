#include "colour.h"

#include <algorithm>
#include <string_view>

#include "Files.h"

namespace tool {
namespace {

constexpr const char* kSequences[] = {"\033[31m", "\033[33m", "\033[1m"};  // in the order of Paint
constexpr const char* kPlain = "\033[0m";

constexpr struct {
  std::string_view word;
  Paint paint;
} kSeverities[] = {{"error", Paint::kError}, {"warning", Paint::kWarning}};

std::string InColour(Paint paint, std::string_view text) {
  return kSequences[static_cast<int>(paint)] + std::string(text) + kPlain;
}

/// The first severity of `line` in its proper place: after ": ", and before ':' or its code in brackets.
std::string WithPaintedSeverity(std::string_view line) {
  for (std::size_t at = 0; (at = line.find(": ", at)) != line.npos;) {
    at += 2;
    for (const auto& [word, paint] : kSeverities) {
      const std::string_view next = line.substr(at + std::min(word.size(), line.size() - at), 1);
      if (line.substr(at, word.size()) != word || (next != ":" && next != "[")) continue;
      return std::string(line.substr(0, at)) + InColour(paint, word) + std::string(line.substr(at + word.size()));
    }
  }
  return std::string(line);
}

}  // namespace

bool ShowsColour(int descriptor) { return plddb::Environment("NO_COLOR").empty() && IsColourTerminal(descriptor); }

std::string Painted(Paint paint, const std::string& text, int descriptor) {
  return ShowsColour(descriptor) ? InColour(paint, text) : text;
}

std::string WithPaintedSeverities(const std::string& lines, int descriptor) {
  if (!ShowsColour(descriptor)) return lines;
  std::string painted;
  for (std::size_t start = 0; start < lines.size();) {
    const std::size_t end = std::min(lines.find('\n', start), lines.size() - 1) + 1;
    painted += WithPaintedSeverity(std::string_view(lines).substr(start, end - start));
    start = end;
  }
  return painted;
}

}  // namespace tool
