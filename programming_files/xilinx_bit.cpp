// Xilinx .bit: a header of five fields around a configuration stream; and the stream without the header.
//
//   00 09 0F F0 0F F0 0F F0 0F F0 00 | 00 01
//   'a' length16 design NUL | 'b' length16 part NUL | 'c' length16 date NUL | 'd' length16 time NUL | 'e' length32 stream

#include <algorithm>

#include "readers.h"
#include "text.h"
#include "xilinx_stream.h"

namespace plddb::programming_files {
namespace {

constexpr std::string_view kStart("\x00\x09\x0F\xF0\x0F\xF0\x0F\xF0\x0F\xF0\x00\x00\x01", 13);
constexpr std::uint32_t kAllButVersion = 0x0FFFFFFF;

/// The big-endian number of `size` bytes; nullopt at the end of the file.
std::optional<std::uint32_t> ReadNumber(Input& input, std::size_t size) {
  if (input.Window(size).size() < size) return std::nullopt;
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < size; ++i) number = number << 8 | static_cast<unsigned int>(input.Get());
  return number;
}

/// The package in what follows the device's name: "tqg144", "eg-ffvb1156-2-e" (of XCZU9).
std::string_view PackageIn(std::string_view rest) {
  if (const auto hyphen = rest.find('-');
      hyphen != rest.npos && !std::any_of(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(hyphen), IsDigit)) {
    rest.remove_prefix(hyphen + 1);
  }
  return rest.substr(0, rest.find('-'));
}

/// Takes the part of the header. 7 series and older parts are written without their "xc".
void AddPart(std::string_view part, const Place& place, const KnownDevices& known, File& file) {
  Statement name{Kind::kName, std::string(part.substr(0, kLongestText))};
  name.place = place;
  KnownDevices::Named named = known.WithNameIn(part);
  std::string full(part);
  if (named.devices.empty()) {
    full.insert(0, "xc");
    named = known.WithNameIn(full);
  }
  name.devices = named.devices;
  AddStatement(file, std::move(name));
  if (named.devices.empty()) return;
  Statement package{Kind::kPackage, std::string(PackageIn(named.rest))};
  package.place = place;
  if (!package.text.empty()) AddStatement(file, std::move(package));
}

/// Reads the field `key`, without its NUL, up to the longest text. Returns false at a fault.
bool ReadField(Input& input, char key, std::string& text, File& file) {
  const Place place = input.BytePlace();
  const int c = input.Get();
  const auto length = c == key ? ReadNumber(input, 2) : std::nullopt;
  if (!length) {
    AddFault(file, place,
             c < 0 || c == key ? "the file ends in its header" : std::string("expected field '") + key + "' of the header");
    return false;
  }
  text = input.Window(std::min<std::size_t>(*length, kLongestText));
  text.resize(std::min(text.find('\0'), text.size()));
  if (input.Skip(*length)) return true;
  AddFault(file, place,
           std::string("field '") + key + "' of the header has " + std::to_string(*length) + " bytes; the file ends before");
  return false;
}

void AddId(const StreamId& found, const KnownDevices& known, File& file) {
  if (!found.id) return;
  Statement id{Kind::kId, "IDCODE write", *found.id, kAllButVersion};
  id.place.offset = found.offset;
  id.proof = Proof::kDevice;
  id.devices = known.WithId(*found.id, kAllButVersion);
  AddStatement(file, std::move(id));
}

void ReadStream(Input& input, const KnownDevices& known, File& file) {
  const Place place = input.BytePlace();
  const int key = input.Get();
  const auto length = key == 'e' ? ReadNumber(input, 4) : std::nullopt;
  if (!length) {
    AddFault(file, place, key < 0 || key == 'e' ? "the file ends in its header" : "expected field 'e' of the header");
    return;
  }
  const std::uint64_t start = input.Offset();
  constexpr std::uint64_t farthest = 1 << 16;  // the stream synchronises within the first hundred bytes
  AddId(FindIdWrite(input, std::min<std::uint64_t>(*length, farthest)), known, file);
  const std::uint64_t end = start + *length;
  if (input.Offset() < end && !input.Skip(end - input.Offset())) {
    AddFault(file, input.BytePlace(),
             "the file ends after " + std::to_string(input.Offset() - start) + " of " + std::to_string(*length) +
                 " bytes of its stream");
  }
}

}  // namespace

bool LooksLikeXilinxBit(std::string_view head) {
  return head.size() >= 2 && StartsWith(kStart, head.substr(0, std::min(head.size(), kStart.size())));
}

void ReadXilinxBit(Input& input, const KnownDevices& known, File& file) {
  std::string text;
  if (!input.Skip(kStart.size())) {
    AddFault(file, input.BytePlace(), "the file ends in its header");
    return;
  }
  if (!ReadField(input, 'a', text, file)) return;
  const Place place{input.Offset() + 3, 0, 0};
  std::string part;
  const bool isWhole = ReadField(input, 'b', part, file);
  if (isWhole && !part.empty()) AddPart(part, place, known, file);
  if (!isWhole || !ReadField(input, 'c', text, file) || !ReadField(input, 'd', text, file)) return;
  ReadStream(input, known, file);
  if (file.statements.empty() && file.faults.empty()) file.remark = "the header names no part, and the stream writes no IDCODE";
}

void ReadXilinxBin(Input& input, const KnownDevices& known, File& file) {
  const StreamId found = FindIdWrite(input, UINT64_MAX);
  if (!found.id && !found.hasSync) return;
  file.format = Format::kXilinxBin;
  AddId(found, known, file);
  if (!found.id) file.remark = "a synchronisation word, but no IDCODE after it";
}

}  // namespace plddb::programming_files
