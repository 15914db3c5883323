// Files that are named like programming files but are none.

#include <algorithm>

#include "readers.h"
#include "text.h"

namespace plddb::programming_files {
namespace {

/// What a file of another kind starts with.
constexpr struct {
  std::string_view start;
  Format format;
  const char* remark;
} kOthers[] = {
    {"ISO-10303-21;", Format::kStep, "a three-dimensional STEP model"},
    {"version https://git-lfs", Format::kUnknown, "a pointer of Git LFS: the file itself was not fetched"},
    {"\x7F"
     "ELF",
     Format::kUnknown, "an ELF program"},
    {"PK\x03\x04", Format::kUnknown, "a ZIP archive"},
    {"<!DOCTYPE", Format::kUnknown, "an HTML page"},
    {"<html", Format::kUnknown, "an HTML page"},
    {"[Header]", Format::kUnknown, "a project file in INI form"},
};

/// The target of a symbolic link: one path without blanks, and no line end.
bool IsPath(std::string_view text) {
  constexpr std::size_t longest = 1024;
  const auto isPathCharacter = [](char c) {
    return c > ' ' && c < '\x7F' && std::string_view("*\"<>|;(){}[]").find(c) == std::string_view::npos;
  };
  const auto dot = text.rfind('.');
  return text.size() >= 3 && text.size() <= longest && std::all_of(text.begin(), text.end(), isPathCharacter) &&
         (StartsWith(text, "../") || StartsWith(text, "./") || StartsWith(text, "/") ||
          (dot != text.npos && dot > 0 && text.size() - dot <= 6)) &&
         text.find_first_not_of("./") != text.npos;
}

bool IsSignalTap(std::string_view head) {
  const std::string_view start = head.substr(0, 4096);
  return StartsWith(start, "<") && start.find("<session") != start.npos;
}

}  // namespace

bool IsText(std::string_view text) {
  std::size_t notAscii = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte == 0x7F || (byte < ' ' && !IsWhiteSpace(byte))) return false;
    if (byte > 0x7F) ++notAscii;
  }
  return 2 * notAscii <= text.size();
}

void RecogniseOther(std::string_view head, bool isWhole, File& file) {
  const std::string_view text = Trim(head);
  if (head.empty()) {
    file.remark = "an empty file";
  } else if (isWhole && IsPath(head)) {
    file.format = Format::kSymlink;
    file.remark = "the text of a symbolic link to " + std::string(head.substr(0, kLongestText));
  } else if (IsSignalTap(text)) {
    file.format = Format::kSignalTap;
    file.remark = "a session of a logic analyser";
  } else if (StartsWith(text, "NOTE \"")) {
    AddFault(file, {}, "notes without an ACTION: no STAPL program, or a cut one");
  } else {
    file.remark = IsText(head) ? "a text that is no programming file" : "no format that is known here";
  }
  for (const auto& other : kOthers) {
    if (!StartsWith(text, other.start)) continue;
    file.format = other.format;
    file.remark = other.remark;
  }
}

}  // namespace plddb::programming_files
