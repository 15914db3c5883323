#include "xilinx_stream.h"

#include <algorithm>
#include <array>
#include <vector>

namespace plddb::programming_files {
namespace {

/// Where the bytes and bits of a stream are: a PROM for a parallel bus may hold each byte reversed, or the bytes of each word
/// swapped.
struct Order {
  bool hasReversedBits;  ///< In each byte.
  unsigned int swapped;  ///< Byte i of the stream is byte i ^ swapped of the file, counted from the word.
  bool isShort;          ///< AA99 after FFFF: families with 16-bit words only.
};

/// The order that the synchronisation word shows: it and what precedes it are the last four bytes of the file so far.
std::optional<Order> OrderOf(std::uint32_t sync) {
  switch (sync) {
    case 0xAA995566:
      return Order{false, 0, false};
    case 0x5599AA66:
      return Order{true, 0, false};
    case 0x99AA6655:
      return Order{false, 1, false};
    case 0x995566AA:
      return Order{true, 1, false};
    case 0x665599AA:
      return Order{false, 3, false};
    case 0x66AA9955:
      return Order{true, 3, false};
    case 0xFFFFAA99:
      return Order{false, 0, true};
    case 0xFFFF5599:
      return Order{true, 0, true};
    case 0xFFFF99AA:
      return Order{false, 1, true};
    case 0xFFFF9955:
      return Order{true, 1, true};
    default:
      return std::nullopt;
  }
}

constexpr std::size_t kHeaderBytes = 4096;  // the id is written within the first 400

unsigned int Reversed(unsigned int byte) {
  unsigned int reversed = 0;
  for (int i = 0; i < 8; ++i) reversed |= (byte >> i & 1) << (7 - i);
  return reversed;
}

/// The bytes after the synchronisation word, in the order of the stream.
std::vector<std::uint8_t> InStreamOrder(std::string_view bytes, const Order& order) {
  std::vector<std::uint8_t> stream(bytes.size() & ~std::size_t{3});
  for (std::size_t i = 0; i < stream.size(); ++i) {
    const unsigned int byte = static_cast<unsigned char>(bytes[i ^ order.swapped]);
    stream[i] = static_cast<std::uint8_t>(order.hasReversedBits ? Reversed(byte) : byte);
  }
  return stream;
}

std::uint32_t BigEndian(const std::vector<std::uint8_t>& bytes, std::size_t at, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size; ++i) value = value << 8 | bytes[at + i];
  return value;
}

/// A write of the IDCODE register, and its place.
struct Write {
  std::uint32_t id;
  std::size_t at;
};

/// How packets look in words of 32 and of 16 bits.
struct Packets {
  std::size_t word;  ///< Bytes.
  unsigned int typeShift;
  std::uint32_t countMask;
  std::array<std::uint32_t, 2> headers;  ///< Of the write of the id: one word of 32 bits, or two of 16.
};
constexpr Packets kWide = {4, 29, 0x7FF, {0x3001C001, 0x30018001}};
constexpr Packets kNarrow = {2, 13, 0x1F, {0x31C2, 0x31C2}};

/// Walks the packets up to the frame data. On purpose: the number of the register does not decide, since the IDCODE register of
/// some families is a different register in others. The value does: it ends in the maker's number.
std::optional<Write> FindWrite(const std::vector<std::uint8_t>& stream, const Packets& packets) {
  constexpr std::uint32_t maker = 0x093;
  std::size_t at = 0;
  while (at + packets.word + 4 <= stream.size()) {
    const std::uint32_t header = BigEndian(stream, at, packets.word);
    const std::uint32_t type = header >> packets.typeShift;
    if (type == 2) break;
    const std::uint32_t value = BigEndian(stream, at + packets.word, 4);
    const bool isWrite = std::find(packets.headers.begin(), packets.headers.end(), header) != packets.headers.end();
    if (isWrite && (value & 0xFFF) == maker) return Write{value, at};
    at += packets.word + (type == 1 ? packets.word * (header & packets.countMask) : 0);
  }
  return std::nullopt;
}

std::optional<Write> FindWriteAfterSync(std::string_view bytes, const Order& order) {
  const std::vector<std::uint8_t> stream = InStreamOrder(bytes, order);
  if (!order.isShort) {
    if (const auto write = FindWrite(stream, kWide)) return write;
  }
  return FindWrite(stream, kNarrow);
}

}  // namespace

StreamId FindIdWrite(Input& input, std::uint64_t limit) {
  StreamId found;
  std::uint32_t last = 0;
  while (limit > 0) {
    const std::string_view window = input.Window();
    if (window.empty()) return found;
    const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(window.size(), limit));
    std::optional<Order> order;
    std::size_t i = 0;
    while (i < size && !order) {
      last = last << 8 | static_cast<unsigned char>(window[i++]);
      order = OrderOf(last);
    }
    input.Skip(i);
    limit -= i;
    if (!order) continue;
    constexpr std::uint64_t farthestStart = 1 << 16;  // farther, four bytes are found by chance
    const std::uint64_t start = input.Offset();
    found.hasSync = found.hasSync || (!order->isShort && start <= farthestStart);
    const auto write = FindWriteAfterSync(input.Window(kHeaderBytes), *order);
    if (!write) continue;
    found.id = write->id;
    found.offset = start + write->at;
    return found;
  }
  return found;
}

}  // namespace plddb::programming_files
