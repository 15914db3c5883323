// JEDEC fuse maps (JESD3): text, then between STX and ETX a design specification and fields, each ended by '*'.
//
//   anything STX designspec* field* ... ETX hhhh      QF46656   fuses
//                                                     QP44      pins
//                                                     N DEVICE XC9572XL-10-VQ44    name - speed - package

#include <algorithm>

#include "readers.h"
#include "text.h"

namespace plddb::programming_files {
namespace {

constexpr char kStx = '\x02';
constexpr char kEtx = '\x03';

/// "QF123", "QP44", "QV0": a field that is never mistaken for a design specification.
bool IsQuantity(std::string_view field) {
  return field.size() > 2 && field[0] == 'Q' && (field[1] == 'F' || field[1] == 'P' || field[1] == 'V') && IsDigit(field[2]);
}

void AddPackage(std::string_view text, const Place& place, File& file) {
  Statement package{Kind::kPackage, std::string(text.substr(0, kLongestText))};
  package.place = place;
  if (!text.empty()) AddStatement(file, std::move(package));
}

/// "XC9572XL-10-VQ44": the name ends at the first hyphen, the package starts after the last, or after the digits of the speed.
void AddDeviceNote(std::string_view text, const Place& place, const KnownDevices& known, File& file) {
  const std::string_view name = text.substr(0, text.find('-'));
  Statement statement{Kind::kName, std::string(text.substr(0, kLongestText))};
  statement.place = place;
  statement.devices = known.WithName(name);
  if (statement.devices.empty() && known.WithNameIn(name).rest.empty()) statement.devices = known.WithNameIn(name).devices;
  AddStatement(file, std::move(statement));
  if (name.size() == text.size()) return;
  std::string_view package = text.substr(text.rfind('-') + 1);
  while (!package.empty() && IsDigit(package.front())) package.remove_prefix(1);
  AddPackage(package, place, file);
}

/// "JEDEC file for: ATF1502AS", "JEDEC file for: ATF1502 PLCC44" (any supply variant).
void AddFitterName(std::string_view line, const Place& place, const KnownDevices& known, File& file) {
  const std::vector<std::string_view> words = Words(line);
  if (words.empty()) return;
  Statement statement{Kind::kName, std::string(words[0].substr(0, kLongestText))};
  statement.place = place;
  statement.devices = known.WithNameIn(words[0]).devices;
  if (statement.devices.empty()) statement.devices = known.WithStem(words[0]);
  AddStatement(file, std::move(statement));
  if (words.size() > 1) AddPackage(words[1], place, file);
}

/// "Device          g22v10  Library DLIB-h-40-1": a mnemonic that many parts share.
void AddMnemonic(std::string_view text, const Place& place, File& file) {
  Statement statement{Kind::kCommentName, std::string(text.substr(0, kLongestText))};
  statement.place = place;
  AddStatement(file, std::move(statement));
}

void ReadDesignSpecification(std::string_view text, const Place& place, const KnownDevices& known, File& file) {
  constexpr std::string_view fitter = "JEDEC file for:";
  Place at = place;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    const std::vector<std::string_view> words = Words(line);
    if (const auto start = line.find(fitter); start != line.npos) {
      AddFitterName(line.substr(start + fitter.size()), at, known, file);
    } else if (words.size() > 2 && words[0] == "Device" && words[2] == "Library") {
      AddMnemonic(words[1], at, file);
    }
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    at = {at.offset + line.size() + 1, at.line + 1, 1};
  }
}

void ReadQuantity(std::string_view field, const Place& place, const KnownDevices& known, File& file) {
  const auto count = Number(Trim(field.substr(2)));
  if (!count) {
    AddFault(file, place, "expected a number after Q" + std::string(1, field[1]));
  } else if (field[1] == 'F' && !file.fuseCount) {
    file.fuseCount = *count;
    Statement statement{Kind::kFuseCount, std::string(field.substr(0, kLongestText)), *count};
    statement.place = place;
    statement.devices = known.WithFuseCount(*count);
    AddStatement(file, std::move(statement));
  } else if (field[1] == 'P') {
    AddPackage(std::to_string(*count) + " pins", place, file);
  }
}

void ReadField(std::string_view field, const Place& place, const KnownDevices& known, File& file) {
  if (IsQuantity(field)) return ReadQuantity(field, place, known, file);
  const std::vector<std::string_view> words = field.empty() || field[0] != 'N' ? std::vector<std::string_view>() : Words(field);
  const bool isDevice = words.size() == 3 && words[0] == "N" && words[1] == "DEVICE";  // a longer note only speaks of one
  if (isDevice && std::any_of(words[2].begin(), words[2].end(), IsDigit)) AddDeviceNote(words[2], place, known, file);
}

/// Whether QF or QP is a field of `text`.
bool HasQuantityField(std::string_view text) {
  for (std::size_t q = text.find('Q'); q != text.npos; q = text.find('Q', q + 1)) {
    const bool isFirst = q == 0 || text[q - 1] == '*' || IsWhiteSpace(text[q - 1]);
    const std::string_view field = text.substr(q, 16);
    if (isFirst && IsQuantity(field) && field.find('*') != field.npos) return true;
  }
  return false;
}

bool SkipToStart(Input& input) {
  const auto stx = input.Window().find(kStx);
  if (stx != std::string_view::npos) input.Skip(stx + 1);
  return stx != std::string_view::npos;
}

}  // namespace

bool LooksLikeJedec(std::string_view head) {
  const auto stx = head.find(kStx);
  if (stx == head.npos) return IsText(head.substr(0, head.find(kEtx))) && HasQuantityField(head);
  constexpr std::size_t enough = 256;
  const std::string_view start = head.substr(stx + 1, enough);
  return IsText(head.substr(0, stx)) && IsText(start.substr(0, start.find(kEtx)));
}

void ReadJedec(Input& input, const KnownDevices& known, File& file) {
  constexpr std::size_t longest = 8192;  // of a field: all but fuses and vectors are far shorter
  const bool hasStart = SkipToStart(input);
  std::string field;
  Place place = input.TextPlace();
  bool isFirst = true;
  int c = 0;
  while ((c = input.Get()) >= 0 && c != kEtx) {
    if (c == '*') {
      const std::string_view trimmed = Trim(field);
      if (isFirst && !IsQuantity(trimmed)) ReadDesignSpecification(trimmed, place, known, file);
      ReadField(trimmed, place, known, file);
      isFirst = false;
      field.clear();
    } else if (field.size() < longest) {
      if (field.empty() && IsWhiteSpace(c)) continue;
      if (field.empty()) place = {input.Offset() - 1, input.TextPlace().line, input.TextPlace().column - 1};
      field += static_cast<char>(c);
    }
  }
  if (c < 0 && hasStart) AddFault(file, input.TextPlace(), "the file ends before its ETX");
}

}  // namespace plddb::programming_files
