// Gowin .fs: comments, then commands in the digits 0 and 1, one a line. The command 06 (86 without the check of the sum) holds
// the id that the device compares.
//
//   //Device: GW1NR-9          00000110 00000000 00000000 00000000 iiiiiiii iiiiiiii iiiiiiii iiiiiiii
//   //Device Version: C
//   //Part Number: GW1NR-LV9QN88PC6/I5

#include <algorithm>

#include "readers.h"
#include "text.h"

namespace plddb::programming_files {
namespace {

bool IsBits(std::string_view line) {
  return !line.empty() && std::all_of(line.begin(), line.end(), [](char c) { return c == '0' || c == '1'; });
}

std::uint32_t FromBits(std::string_view bits) {
  std::uint32_t value = 0;
  for (const char c : bits) value = value << 1 | static_cast<std::uint32_t>(c == '1');
  return value;
}

class GowinReader {
 public:
  GowinReader(Input& input, const KnownDevices& known, File& file) : input_(input), known_(known), file_(file) {}

  void Read() {
    constexpr int mostCommands = 64;  // the id is in the fourth
    int commands = 0;
    std::string line;
    Place place = input_.TextPlace();
    while (commands < mostCommands && ReadLine(line)) {
      const std::string_view text = Trim(line);
      if (StartsWith(text, "//")) ReadComment(text.substr(2), place);
      if (IsBits(text) && (++commands, ReadCommand(text, place))) break;
      place = input_.TextPlace();
    }
    AddName();
    if (!hasId_ && commands < mostCommands)
      AddFault(file_, input_.TextPlace(), "the file ends before the command that holds its IDCODE");
  }

 private:
  bool ReadLine(std::string& line) {
    line.clear();
    int c = input_.Get();
    if (c < 0) return false;
    for (; c >= 0 && c != '\n'; c = input_.Get()) {
      if (line.size() < kLongestText) line += static_cast<char>(c);
    }
    return true;
  }

  void ReadComment(std::string_view comment, const Place& place) {
    const auto colon = comment.find(':');
    if (colon == comment.npos) return;
    const std::string_view key = Trim(comment.substr(0, colon));
    const std::string_view value = Trim(comment.substr(colon + 1));
    if (key == "Device Version") version_ = value;
    if (key == "Device") {
      name_ = value;
      namePlace_ = place;
    }
    if ((key != "Part Number" && key != "Device-package") || value.empty()) return;
    Statement package{Kind::kPackage, std::string(value)};
    package.place = place;
    AddStatement(file_, std::move(package));
  }

  bool ReadCommand(std::string_view bits, const Place& place) {
    constexpr std::size_t size = 64;
    if (bits.size() != size) return false;
    const std::uint32_t command = FromBits(bits.substr(0, 32));
    if (command != 0x06000000 && command != 0x86000000) return false;
    Statement id{Kind::kId, "IDCODE check of the device", FromBits(bits.substr(32)), 0x0FFFFFFF};
    id.place = place;
    id.proof = Proof::kDevice;
    id.devices = known_.WithId(id.value, id.mask);
    AddStatement(file_, std::move(id));
    hasId_ = true;
    return true;
  }

  /// Version C is a device with another name: GW1NR-9C.
  void AddName() {
    if (name_.empty()) return;
    const bool hasVersion = version_.size() == 1 && IsLetter(version_[0]);
    Statement name{Kind::kCommentName, name_};
    name.place = namePlace_;
    name.devices = known_.WithName(hasVersion ? name_ + version_ : name_);
    if (name.devices.empty()) name.devices = known_.WithName(name_);
    if (hasVersion) name.text += ", version " + version_;
    AddStatement(file_, std::move(name));
  }

  Input& input_;
  const KnownDevices& known_;
  File& file_;
  std::string name_;
  std::string version_;
  Place namePlace_;
  bool hasId_ = false;
};

}  // namespace

bool LooksLikeGowin(std::string_view head) {
  constexpr std::size_t shortest = 8;
  while (!(head = Trim(head)).empty()) {
    const std::string_view line = Trim(head.substr(0, head.find('\n')));
    if (!StartsWith(line, "//")) return line.size() >= shortest && IsBits(line);
    if (StartsWith(line, "//Device:") || StartsWith(line, "//Device Version:") || StartsWith(line, "//Part Number: GW"))
      return true;
    head.remove_prefix(std::min(head.find('\n'), head.size()));
  }
  return false;
}

void ReadGowin(Input& input, const KnownDevices& known, File& file) { GowinReader(input, known, file).Read(); }

}  // namespace plddb::programming_files
