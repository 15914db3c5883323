#include "comment.h"

#include <cstddef>
#include <cstdio>
#include <vector>

#include "bsdl/part.h"

namespace plddb::bsdl {
namespace {

constexpr std::size_t kLongestLine = 120;
constexpr std::size_t kLongestText = 2000;  // of a free text, which makers may write whole pages of
constexpr const char* kIndent = "      ";

/// "      title: a, b, c", wrapped between the items.
std::string Lines(const std::string& title, const std::vector<std::string>& items) {
  if (items.empty()) return "";
  std::string text;
  std::string line = kIndent + title + ":";
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::string item = ' ' + items[i] + (i + 1 < items.size() ? "," : "");
    if (line.size() + item.size() > kLongestLine) {
      text += line + '\n';
      line = std::string(kIndent) + " ";
    }
    line += item;
  }
  return text + line + '\n';
}

std::string Line(const std::string& title, const Text& text) {
  return text.text.empty() ? "" : Lines(title, {CommentText(text.text.substr(0, kLongestText))});
}

/// The codes that a description does not hold: all but the ones taken of IDCODE, USERCODE and BYPASS.
std::vector<std::string> OtherCodes(const Facts& facts, bool isPrivate) {
  std::vector<std::string> items;
  for (const Instruction& instruction : facts.instructions) {
    const std::string& name = instruction.name.text;
    const bool isTaken = name == "IDCODE" || name == "USERCODE" || name == "BYPASS";
    const bool isHeld = facts.instructionLength.value <= 32 || name == "BYPASS";
    if (instruction.isPrivate != isPrivate || (isTaken && isHeld && instruction.codes.size() == 1)) continue;
    std::string item = CommentText(name);
    for (const Text& code : instruction.codes) item += ' ' + code.text;
    items.push_back(item);
  }
  return items;
}

std::vector<std::string> Registers(const Facts& facts) {
  std::vector<std::string> items;
  for (const Register& reg : facts.registers) {
    std::string item = CommentText(reg.name.text);
    if (reg.length != 0) item += '[' + std::to_string(reg.length) + ']';
    for (const std::string& instruction : reg.instructions) item += ' ' + CommentText(instruction);
    items.push_back(item);
  }
  return items;
}

std::vector<std::string> Texts(const std::vector<Text>& texts, std::size_t first) {
  std::vector<std::string> items;
  for (std::size_t i = first; i < texts.size(); ++i) items.push_back(texts[i].text);
  return items;
}

std::string Number(double number, const char* unit) {
  char text[64];
  static_cast<void>(std::snprintf(text, sizeof text, "%.10g %s", number, unit));
  return text;
}

/// What a flow states, in its own units, since those of a description are the tool's.
std::vector<std::string> Times(const Programming& programming) {
  std::vector<std::string> items;
  if (programming.programTime > 0) items.push_back("program " + Number(programming.programTime * 1e6, "us"));
  if (programming.eraseTime > 0) items.push_back("erase " + Number(programming.eraseTime * 1e3, "ms"));
  if (programming.verifyTime > 0) items.push_back("verify " + Number(programming.verifyTime * 1e6, "us"));
  if (programming.bits > 0) items.push_back(Number(programming.bits, "bits"));
  return items;
}

std::string MaximumTck(const Facts& facts) {
  return facts.maximumTck > 0 ? Lines("maximum TCK", {Number(facts.maximumTck / 1e6, "MHz")}) : "";
}

}  // namespace

std::string CommentText(std::string_view text) {
  std::string safe;
  for (const char c : text) {
    const bool isPrintable = c >= ' ' && c <= '~';
    const bool isSecondDash = c == '-' && !safe.empty() && safe.back() == '-';
    if (isSecondDash) safe += ' ';
    safe += isPrintable ? c : '?';
  }
  return safe;
}

std::string CommentOn(const Facts& facts) {
  return Lines("codes", OtherCodes(facts, false)) + Lines("private codes", OtherCodes(facts, true)) +
         Line("INSTRUCTION_CAPTURE", facts.capture) + Lines("registers", Registers(facts)) +
         Lines("further IDCODEs", Texts(facts.idcodes, 1)) + Lines("USERCODE_REGISTER", Texts(facts.usercodes, 0)) +
         MaximumTck(facts) + Line("TAP_SCAN_RESET", facts.trst) + Line("COMPLIANCE_PATTERNS", facts.compliancePatterns) +
         Lines("IEEE 1532 flows", Times(facts.programming)) + Line("DESIGN_WARNING", facts.designWarning);
}

}  // namespace plddb::bsdl
