// Altera .pof and .sof: records, of which number 2 is the device; and .rbf, a bare stream.
//
//   "POF" NUL, u32, u32 count | u16 type, u32 length, data | ...       little endian
//
// An .rbf starts with bytes FF, then 6A. It does not name its device, and its length shows it only without compression.

#include <algorithm>

#include "readers.h"
#include "text.h"

namespace plddb::programming_files {
namespace {

constexpr std::size_t kPofHeaderBytes = 12;
constexpr std::uint32_t kDeviceRecord = 2;

std::uint32_t LittleEndian(std::string_view bytes) {
  std::uint32_t value = 0;
  for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) value = value << 8 | static_cast<unsigned char>(*byte);
  return value;
}

void ReadDevice(Input& input, std::uint32_t length, const KnownDevices& known, File& file) {
  const Place place = input.BytePlace();
  std::string text(input.Window(std::min<std::size_t>(length, kLongestText)));
  text.resize(std::min(text.find('\0'), text.size()));
  if (!Trim(text).empty()) AddNameWithPackage(file, known, Kind::kName, Trim(text), place);
}

class Records {
 public:
  Records(Input& input, const KnownDevices& known, File& file) : input_(input), known_(known), file_(file) {}

  void Read() {
    while (ReadRecord()) {
    }
    if (!hasDevice_ && file_.faults.empty()) Fail(input_.BytePlace(), "the file ends before the record of its device");
  }

 private:
  bool Fail(const Place& place, const std::string& text) {
    AddFault(file_, place, text);
    return false;
  }

  /// Returns false at the end of the file.
  bool ReadRecord() {
    constexpr std::size_t headBytes = 6;
    const Place place = input_.BytePlace();
    const std::string_view head = input_.Window(headBytes);
    if (head.empty()) return false;
    if (head.size() < headBytes) return Fail(place, "the file ends in the head of a record");
    const std::uint32_t type = LittleEndian(head.substr(0, 2));
    const std::uint32_t length = LittleEndian(head.substr(2, 4));
    input_.Skip(headBytes);
    if (type == kDeviceRecord) ReadDevice(input_, length, known_, file_);
    hasDevice_ = hasDevice_ || type == kDeviceRecord;
    return input_.Skip(length) || Fail(place, "a record of " + std::to_string(length) + " bytes; the file ends before");
  }

  Input& input_;
  const KnownDevices& known_;
  File& file_;
  bool hasDevice_ = false;
};

}  // namespace

bool LooksLikePof(std::string_view head) { return StartsWith(head, std::string_view("POF\0", 4)); }
bool LooksLikeSof(std::string_view head) { return StartsWith(head, std::string_view("SOF\0", 4)); }

void ReadPof(Input& input, const KnownDevices& known, File& file) {
  if (!input.Skip(kPofHeaderBytes)) return AddFault(file, input.BytePlace(), "the file ends in its header");
  Records(input, known, file).Read();
}

bool LooksLikeRbf(std::string_view head) {
  constexpr std::size_t fewest = 4;
  const auto first = head.find_first_not_of('\xFF');
  return first != head.npos && first >= fewest && head[first] == '\x6A';
}

void ReadRbf(Input& input, const KnownDevices&, File& file) {
  while (input.Skip(Input::kWindow)) {
  }
  file.remark = "a bare stream of " + std::to_string(input.Offset()) + " bytes: nothing in it tells the device";
}

}  // namespace plddb::programming_files
