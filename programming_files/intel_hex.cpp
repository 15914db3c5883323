// Intel HEX (.mcs): the image of a flash memory, which may hold a configuration stream.
//
//   :ll aaaa tt data cc     a record: length, address, type (00: data), sum

#include <memory>

#include "readers.h"
#include "text.h"

namespace plddb::programming_files {
namespace {

/// Reads the records, and returns the data of data records.
class HexRecords {
 public:
  HexRecords(Input& input, File& file) : input_(input), file_(file) {}

  /// The data of the next data record: at most 255 bytes.
  std::size_t Read(char* buffer) {
    while (!isAtEnd_) {
      const Place place = input_.TextPlace();
      const int c = input_.Get();
      isAtEnd_ = c < 0;
      if (isAtEnd_) AddFault(file_, place, "the file ends without an end record");
      if (c != ':') continue;
      if (const std::size_t size = ReadRecord(buffer, place)) return size;
    }
    return 0;
  }

 private:
  int Byte() {
    const int high = HexDigit(input_.Peek());
    if (high < 0) return -1;
    input_.Get();
    const int low = HexDigit(input_.Peek());
    if (low < 0) return -1;
    input_.Get();
    return high * 16 + low;
  }

  std::size_t ReadRecord(char* buffer, const Place& place) {
    const int length = Byte();
    Byte();
    Byte();
    const int type = Byte();
    int byte = type;
    for (int i = 0; i < length && byte >= 0; ++i) {
      byte = Byte();
      buffer[i] = static_cast<char>(byte);
    }
    if (length < 0 || byte < 0 || Byte() < 0) {
      AddFault(file_, place, "expected a record ':LLAAAATT' with its data and its sum");
      return 0;
    }
    if (type == 1) isAtEnd_ = true;
    return type == 0 ? static_cast<std::size_t>(length) : 0;
  }

  Input& input_;
  File& file_;
  bool isAtEnd_ = false;
};

}  // namespace

bool LooksLikeIntelHex(std::string_view head) {
  head = Trim(head.substr(0, 1024));
  if (head.empty() || head[0] != ':') return false;
  const std::string_view digits = FirstWord(head.substr(1));
  for (const char c : digits) {
    if (HexDigit(c) < 0) return false;
  }
  return digits.size() >= 8;
}

void ReadIntelHex(Input& input, const KnownDevices& known, File& file) {
  HexRecords records(input, file);
  const auto image = std::make_unique<Input>([&records](char* buffer, std::size_t) { return records.Read(buffer); });
  ReadXilinxBin(*image, known, file);
  file.format = Format::kIntelHex;
  if (file.statements.empty()) file.remark = "no configuration stream that writes an IDCODE";
}

}  // namespace plddb::programming_files
