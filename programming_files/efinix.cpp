// Efinix .hex and .bit: two hex digits a line, one byte each. The bytes start with text.
//
//   Version: 2022.2.322
//   Family: Trion
//   Device: T8F81              stem and package

#include <algorithm>
#include <memory>

#include "readers.h"
#include "text.h"

namespace plddb::programming_files {
namespace {

/// Packages in which a part answers with another id than the descriptions have for its name.
constexpr struct {
  std::string_view start;
  std::uint32_t id;
} kOtherDies[] = {{"T8Q144", 0x00210A79}, {"T20F324", 0x00240A79}};

/// The byte of the next line that has two digits; -1 at the end or at another line.
int ReadByte(Input& input) {
  while (IsWhiteSpace(input.Peek())) input.Get();
  const int high = HexDigit(input.Get());
  const int low = HexDigit(input.Get());
  return high < 0 || low < 0 || !(input.Peek() < 0 || IsWhiteSpace(input.Peek())) ? -1 : high * 16 + low;
}

void AddDevice(std::string_view text, const Place& place, const KnownDevices& known, File& file) {
  AddNameWithPackage(file, known, Kind::kName, text, place);
  for (const auto& row : kOtherDies) {
    if (!StartsWith(UpperCase(text), row.start)) continue;
    for (Statement& statement : file.statements) {
      if (statement.kind != Kind::kName) continue;
      statement.value = row.id;
      statement.mask = 0x0FFFFFFF;
    }
  }
}

bool IsHeaderText(int byte) { return (byte >= ' ' && byte <= '~') || byte == '\n' || byte == '\r' || byte == '\t'; }

/// What the first lines of `head` spell.
std::string FirstBytes(std::string_view head, std::size_t most) {
  const auto input = std::make_unique<Input>([&head](char* buffer, std::size_t size) {
    const std::size_t count = head.copy(buffer, size);
    head.remove_prefix(count);
    return count;
  });
  std::string bytes;
  for (int byte = ReadByte(*input); IsHeaderText(byte) && bytes.size() < most; byte = ReadByte(*input))
    bytes += static_cast<char>(byte);
  return bytes;
}

}  // namespace

bool LooksLikeEfinix(std::string_view head) {
  constexpr std::size_t enough = 2048;
  const std::string bytes = FirstBytes(head.substr(0, 4 * enough), enough);
  return StartsWith(bytes, "Version:") || bytes.find("\nDevice:") != bytes.npos;
}

void ReadEfinix(Input& input, const KnownDevices& known, File& file) {
  constexpr std::string_view key = "Device:";
  constexpr std::size_t longestHeader = 8192;
  std::string line;
  Place place = input.TextPlace();
  for (std::size_t i = 0; i < longestHeader; ++i) {
    const int byte = ReadByte(input);
    if (line.empty()) place = {input.Offset(), input.TextPlace().line, 1};
    if (byte != '\n' && IsHeaderText(byte)) {
      if (line.size() < kLongestText) line += static_cast<char>(byte);
      continue;
    }
    if (StartsWith(line, key) && byte == '\n')
      return AddDevice(Trim(std::string_view(line).substr(key.size())), place, known, file);
    line.clear();
    if (byte < 0 && input.Peek() < 0)
      return AddFault(file, input.TextPlace(), "the file ends before the line 'Device:' of its header");
    if (!IsHeaderText(byte)) break;
  }
  AddFault(file, input.TextPlace(), "expected a line 'Device:' in the header");
}

}  // namespace plddb::programming_files
