// XSVF: a byte of code, then its operands, without names or marks. A data register's bytes come with the most significant
// first.

#include <algorithm>
#include <array>
#include <memory>

#include "foundation/printed_forms.h"
#include "id_checks.h"
#include "readers.h"
#include "text.h"

namespace plddb::programming_files {
namespace {

enum Code : unsigned char {
  kComplete = 0x00,
  kTdoMask = 0x01,
  kSir = 0x02,
  kSdrSize = 0x08,
  kSdrTdo = 0x09,
  kSetSdrMasks = 0x0A,
  kSdrInc = 0x0B,
  kState = 0x12,
  kEndDr = 0x14,
  kSir2 = 0x15,
  kComment = 0x16,
  kCodes = 0x18,
};

/// Operands: fixed bytes, and then as many times the bytes of the data register.
struct Operands {
  unsigned char fixed;
  unsigned char registers;
};
constexpr std::array<Operands, kCodes> kOperands = {{
    {0, 0}, {0, 1}, {0, 0}, {0, 1},
    {4, 0}, {0, 0}, {0, 0}, {1, 0},  // 00 XCOMPLETE, XTDOMASK, XSIR, XSDR, XRUNTEST, -, -, XREPEAT
    {4, 0}, {0, 2}, {0, 2}, {0, 0},
    {0, 1}, {0, 1}, {0, 1}, {0, 2},  // 08 XSDRSIZE, XSDRTDO, XSETSDRMASKS, XSDRINC, XSDRB, C, E, XSDRTDOB
    {0, 2}, {0, 2}, {1, 0}, {1, 0},
    {1, 0}, {0, 0}, {0, 0}, {6, 0},  // 10 XSDRTDOC, E, XSTATE, XENDIR, XENDDR, XSIR2, XCOMMENT, XWAIT
}};
constexpr std::uint32_t kMostBits = 1U << 28;

bool HasTdo(int code) { return code == kSdrTdo || (code >= 0x0F && code <= 0x11); }

class XsvfReader {
 public:
  XsvfReader(Input& input, const KnownDevices* known, File& file) : input_(input), known_(known), file_(file) {}

  /// Up to the end; returns how many instructions were read without a fault.
  std::size_t Read() {
    std::size_t count = 0;
    while (ReadInstruction()) ++count;
    return count;
  }

  bool HasScan() const { return hasScan_; }

 private:
  bool ReadInstruction() {
    place_ = input_.BytePlace();
    const int code = input_.Get();
    if (code == kComplete) {
      isComplete_ = true;
      return false;
    }
    if (code < 0) {
      if (!isComplete_) Fail("the file ends without XCOMPLETE");
      return false;
    }
    if (code == 0x05 || code == 0x06 || code >= kCodes)
      return Fail("no XSVF instruction has the code " + internal::Hex(static_cast<std::uint32_t>(code), 2));
    switch (code) {
      case kSir:
        return ReadInstructionRegister(1);
      case kSir2:
        return ReadInstructionRegister(2);
      case kComment:
        return SkipComment();
      case kSdrInc:
        return SkipIncrements();
      case kSdrSize:
        return ReadSize();
      default:
        return ReadOperands(code);
    }
  }

  bool Fail(const std::string& text) {
    AddFault(file_, place_, text);
    return false;
  }
  bool FailAtEnd() { return Fail("the file ends in this instruction"); }

  std::optional<std::uint32_t> ReadNumber(std::size_t size) {
    if (input_.Window(size).size() < size) return std::nullopt;
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < size; ++i) number = number << 8 | static_cast<unsigned int>(input_.Get());
    return number;
  }

  std::size_t RegisterBytes() const { return (std::size_t{bits_} + 7) / 8; }

  /// Reads a register of `bits` bits, of which the last ones are kept.
  std::optional<Bits> ReadRegister(std::size_t bytes) {
    constexpr std::size_t kept = Bits::kMost / 8;
    if (bytes > kept && !input_.Skip(bytes - kept)) return std::nullopt;
    const std::size_t size = std::min(bytes, kept);
    const std::string_view window = input_.Window(size);
    if (window.size() < size) return std::nullopt;
    Bits bits = Bits::FromBytes(window);
    input_.Skip(size);
    return bits;
  }

  bool ReadInstructionRegister(std::size_t lengthBytes) {
    const auto length = ReadNumber(lengthBytes);
    const auto bits = length ? ReadRegister((*length + 7) / 8) : std::nullopt;
    if (!bits) return FailAtEnd();
    instruction_ = Instruction{*length, *bits};
    hasScan_ = true;
    return true;
  }

  bool ReadSize() {
    const auto bits = ReadNumber(4);
    if (!bits) return FailAtEnd();
    if (*bits > kMostBits) return Fail("a data register of " + std::to_string(*bits) + " bits");
    if (*bits != bits_) mask_ = Bits::Ones(*bits);
    bits_ = *bits;
    return true;
  }

  bool SkipComment() {
    int c = 0;
    while ((c = input_.Get()) > 0) {
    }
    return c == 0 || FailAtEnd();
  }

  bool SkipIncrements() {
    if (!input_.Skip(RegisterBytes())) return FailAtEnd();
    const auto times = ReadNumber(1);
    return (times && input_.Skip(std::uint64_t{*times} * incrementBytes_)) || FailAtEnd();
  }

  /// The address mask, then the mask of the data bits that XSDRINC brings.
  bool ReadMasks() {
    std::size_t ones = 0;
    if (!input_.Skip(RegisterBytes())) return FailAtEnd();
    for (std::size_t i = 0; i < RegisterBytes(); ++i) {
      const int byte = input_.Get();
      if (byte < 0) return FailAtEnd();
      for (int bit = 0; bit < 8; ++bit) ones += static_cast<std::size_t>(byte >> bit & 1);
    }
    incrementBytes_ = (ones + 7) / 8;
    return true;
  }

  bool ReadOperands(int code) {
    if (code == kSetSdrMasks) return ReadMasks();
    const Operands operands = kOperands[static_cast<std::size_t>(code)];
    if (code >= kState && code <= kEndDr && input_.Peek() > 15)
      return Fail("no TAP state has the number " + std::to_string(input_.Peek()));
    if (code == kState && input_.Peek() == 0) instruction_.reset();  // Test-Logic-Reset
    if (!input_.Skip(operands.fixed)) return FailAtEnd();
    if (code == kTdoMask) return ReadMask();
    if (HasTdo(code)) return ReadComparedScan();
    return input_.Skip(std::uint64_t{operands.registers} * RegisterBytes()) || FailAtEnd();
  }

  bool ReadMask() {
    const auto mask = ReadRegister(RegisterBytes());
    if (mask) mask_ = *mask;
    return mask.has_value() || FailAtEnd();
  }

  bool ReadComparedScan() {
    const auto expected = input_.Skip(RegisterBytes()) ? ReadRegister(RegisterBytes()) : std::nullopt;
    if (!expected) return FailAtEnd();
    hasScan_ = true;
    if (known_ == nullptr) return true;
    AddIdChecks({instruction_, bits_, *expected, mask_, Padding(), place_}, *known_, file_);
    if (bits_ == 64) AddSignature(*expected);
    return true;
  }

  /// "ALTERA" in pairs of letters: the older MAX families, which have no IDCODE.
  void AddSignature(const Bits& bits) {
    std::string text;
    for (std::size_t i = 0; i < 8; i += 2) {
      for (const std::size_t byte : {i + 1, i}) {
        if (const auto c = static_cast<char>(bits.Get(8 * byte, 8))) text += c;
      }
    }
    if (!std::all_of(text.begin(), text.end(), IsLetter) || text.size() < 4) return;
    Statement signature{Kind::kSignature, text};
    signature.place = place_;
    AddStatement(file_, std::move(signature));
  }

  Input& input_;
  const KnownDevices* known_;
  File& file_;
  Place place_;
  bool isComplete_ = false;
  bool hasScan_ = false;
  std::uint32_t bits_ = 0;
  std::size_t incrementBytes_ = 0;
  Bits mask_;
  std::optional<Instruction> instruction_;
};

}  // namespace

bool LooksLikeXsvf(std::string_view head) {
  // There is nothing to go by but that the start makes sense: a few instructions without a fault.
  if (head.empty() || head[0] == kComplete || IsText(head)) return false;
  std::string_view rest = head;
  const auto input = std::make_unique<Input>([&rest](char* buffer, std::size_t size) {
    const std::size_t count = rest.copy(buffer, size);
    rest.remove_prefix(count);
    return count;
  });
  File file;
  XsvfReader reader(*input, nullptr, file);
  const std::size_t count = reader.Read();
  const bool isCut = file.faults.empty() || StartsWith(file.faults[0].text, "the file ends");
  if (!reader.HasScan()) return isCut && count >= 5;
  return count >= (isCut ? 3 : 8);
}

void ReadXsvf(Input& input, const KnownDevices& known, File& file) { XsvfReader(input, &known, file).Read(); }

}  // namespace plddb::programming_files
