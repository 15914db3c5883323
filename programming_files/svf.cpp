// SVF: statements of words and of hex digits in parentheses, each ended by ';'. '!' and "//" start a comment.
//
//   SIR 8 TDI (fe);
//   SDR 32 TDI (00000000) TDO (f9604093) MASK (0fffffff);      compared where MASK is 1; a mask sticks
//   HIR 8 TDI (ff); HDR 1 TDI (00);                            the bits of devices nearer TDO; TIR, TDR: nearer TDI

#include <algorithm>
#include <array>
#include <memory>

#include "foundation/printed_forms.h"
#include "id_checks.h"
#include "readers.h"
#include "text.h"
#include "xilinx_stream.h"

namespace plddb::programming_files {
namespace {

constexpr std::array<std::string_view, 14> kCommands = {"SIR",   "SDR",   "HIR",  "HDR", "TIR",       "TDR",    "ENDIR",
                                                        "ENDDR", "STATE", "TRST", "PIO", "FREQUENCY", "PIOMAP", "RUNTEST"};

bool IsCommand(std::string_view word) {
  return std::find(kCommands.begin(), kCommands.end(), UpperCase(word)) != kCommands.end();
}

/// Digits in parentheses, of which the last ones are kept: they are shifted first.
class HexDigits {
 public:
  void Add(char digit) {
    constexpr std::size_t kept = 8192;
    digits_ += digit;
    if (digits_.size() >= 2 * kept) digits_.erase(0, digits_.size() - kept);
  }
  const std::string& Digits() const { return digits_; }

 private:
  std::string digits_;
};

struct SvfStatement {
  std::vector<std::string> words =
      {};  ///< In upper case, up to the first parenthesis only those that count: command and length.
  std::optional<HexDigits> tdi = {}, tdo = {}, mask = {};
  Place place = {};
};

class SvfReader {
 public:
  SvfReader(Input& input, const KnownDevices& known, File& file) : input_(input), known_(known), file_(file) {}

  void Read() {
    int c = 0;
    while ((c = input_.Get()) >= 0) {
      if (c == '!' || (c == '/' && input_.Peek() == '/')) {
        ReadComment();
      } else if (c == ';') {
        Execute();
      } else if (c == '(') {
        ReadDigits();
      } else if (!IsWhiteSpace(c)) {
        ReadWord(static_cast<char>(c));
      }
    }
    if (!statement_.words.empty()) AddFault(file_, statement_.place, "the file ends in this statement, before its ';'");
    if (!hasData_) file_.remark = "an empty session: it shifts no data";
  }

 private:
  Place PlaceBefore() const {
    Place place = input_.TextPlace();
    --place.offset;
    --place.column;
    return place;
  }

  void ReadComment() {
    const Place place = PlaceBefore();
    std::string text;
    for (int c = input_.Get(); c >= 0 && c != '\n'; c = input_.Get()) {
      if (text.size() < kLongestText && (c != '/' || !text.empty())) text += static_cast<char>(c);
    }
    ReadName(text, place);
  }

  /// "Position 1: xc2c32a", "Device #1: EPM240 - path.pof date".
  void ReadName(std::string_view comment, const Place& place) {
    const std::vector<std::string_view> words = Words(comment);
    if (words.size() < 3 || words[1].back() != ':') return;
    const std::string key = UpperCase(words[0]);
    if (key != "POSITION" && key != "DEVICE") return;
    const std::string_view number = words[1].substr(words[1][0] == '#' ? 1 : 0);
    if (Number(number.substr(0, number.size() - 1))) AddNameWithPackage(file_, known_, Kind::kCommentName, words[2], place);
  }

  void ReadWord(char first) {
    if (statement_.words.empty()) statement_.place = PlaceBefore();
    std::string word(1, first);
    for (int c = input_.Peek(); c >= 0 && !IsWhiteSpace(c) && c != ';' && c != '(' && c != '!'; c = input_.Peek()) {
      if (word.size() < kLongestText) word += static_cast<char>(c);
      input_.Get();
    }
    lastWord_ = UpperCase(word);
    constexpr std::size_t enough = 16;
    if (statement_.words.size() < enough) statement_.words.push_back(lastWord_);
  }

  void ReadDigits() {
    const Place place = PlaceBefore();
    HexDigits digits;
    int c = 0;
    bool isHex = true;
    while ((c = input_.Get()) >= 0 && c != ')' && c != ';') {
      if (c == '!' || (c == '/' && input_.Peek() == '/')) {
        ReadComment();
      } else if (HexDigit(c) >= 0) {
        digits.Add(static_cast<char>(c));
      } else if (!IsWhiteSpace(c)) {
        isHex = false;
      }
    }
    if (c != ')') return AddFault(file_, place, "expected ')' after hex digits");
    if (!isHex && lastWord_ != "PIO" && lastWord_ != "PIOMAP") return AddFault(file_, place, "expected hex digits and ')'");
    if (lastWord_ == "TDI") {
      statement_.tdi = std::move(digits);
    } else if (lastWord_ == "TDO") {
      statement_.tdo = std::move(digits);
    } else if (lastWord_ == "MASK") {
      statement_.mask = std::move(digits);
    }
  }

  void Execute() {
    SvfStatement statement;
    std::swap(statement, statement_);
    lastWord_.clear();
    if (statement.words.empty()) return;
    const std::string& command = statement.words[0];
    if (!IsCommand(command)) return AddFault(file_, statement.place, "'" + command.substr(0, 20) + "' is no SVF command");
    const auto has = [&](const char* word) {
      return std::find(statement.words.begin() + 1, statement.words.end(), word) != statement.words.end();
    };
    if ((command == "STATE" && has("RESET")) || (command == "TRST" && has("ON"))) instruction_.reset();
    if (command.size() != 3 || command == "PIO") return;
    const auto length = statement.words.size() > 1 ? Number(statement.words[1]) : std::nullopt;
    if (!length) return AddFault(file_, statement.place, "expected a number of bits after " + command);
    if (command == "SIR") return LoadInstruction(statement, *length);
    if (command == "SDR") return ShiftData(statement, *length);
    if (command == "HIR") padding_.hir = *length;
    if (command == "TIR") padding_.tir = *length;
    if (command == "HDR") padding_.hdr = *length;
    if (command == "TDR") padding_.tdr = *length;
  }

  void NotePadding() {
    hasData_ = true;
    constexpr std::size_t most = 64;
    const bool isNew = std::find(file_.paddings.begin(), file_.paddings.end(), padding_) == file_.paddings.end();
    if (isNew && file_.paddings.size() < most) file_.paddings.push_back(padding_);
  }

  void LoadInstruction(const SvfStatement& statement, std::uint32_t length) {
    NotePadding();
    if (statement.tdi) instruction_ = Instruction{length, Bits::FromHex(statement.tdi->Digits())};
    siliconId_.clear();
  }

  void ShiftData(const SvfStatement& statement, std::uint32_t length) {
    NotePadding();
    if (length != dataLength_) mask_.reset();
    dataLength_ = length;
    if (statement.mask) mask_ = Bits::FromHex(statement.mask->Digits());
    if (statement.tdi) FindStream(statement, length);
    if (!statement.tdo) return;
    const Bits expected = Bits::FromHex(statement.tdo->Digits());
    if (length == 16) AddSiliconWord(expected.Get(0, 16), statement.place);
    AddIdChecks({instruction_, length, expected, mask_ ? *mask_ : Bits::Ones(length), padding_, statement.place}, known_,
                file_);
  }

  /// MAX II and MAX V answer two private instructions with five words that identify the family.
  void AddSiliconWord(std::uint32_t word, const Place& place) {
    if (!instruction_ || instruction_->length != 10) return;
    const std::uint32_t code = instruction_->bits.Get(0, 10);
    if (code != 0x203 && code != 0x205) return;
    siliconId_ += (siliconId_.empty() ? "" : " ") + internal::Hex(word, 4).substr(2);
    constexpr std::size_t fiveWords = 24;
    if (siliconId_.size() != fiveWords) return;
    Statement signature{Kind::kSignature, siliconId_};
    signature.place = place;
    AddStatement(file_, std::move(signature));
  }

  /// A configuration stream is shifted in its own order, so that the digits show it from the right, its bits reversed.
  void FindStream(const SvfStatement& statement, std::uint32_t length) {
    constexpr std::uint32_t shortest = 4096;
    constexpr int mostSearched = 4;  // the stream's start is in its first scan
    if (length < shortest || searched_++ >= mostSearched) return;
    const std::string& digits = statement.tdi->Digits();
    std::string bytes;
    for (std::size_t end = digits.size(); end >= 2; end -= 2) {
      const int high = HexDigit(digits[end - 2]);
      bytes += static_cast<char>(high * 16 + HexDigit(digits[end - 1]));
    }
    std::string_view rest = bytes;
    const auto stream = std::make_unique<Input>([&rest](char* buffer, std::size_t size) {
      const std::size_t count = rest.copy(buffer, size);
      rest.remove_prefix(count);
      return count;
    });
    const StreamId found = FindIdWrite(*stream, bytes.size());
    if (!found.id) return;
    Statement id{Kind::kId, "IDCODE write", *found.id, 0x0FFFFFFF};
    id.place = statement.place;
    id.proof = Proof::kDevice;
    id.padding = padding_;
    id.devices = known_.WithId(id.value, id.mask);
    AddStatement(file_, std::move(id));
  }

  Input& input_;
  const KnownDevices& known_;
  File& file_;
  SvfStatement statement_;
  std::string lastWord_;
  Padding padding_;
  bool hasData_ = false;
  std::optional<Instruction> instruction_;
  std::uint32_t dataLength_ = 0;
  std::optional<Bits> mask_;
  std::string siliconId_;
  int searched_ = 0;
};

/// Skips white space and comments.
std::string_view SkipComments(std::string_view text) {
  for (text = Trim(text); StartsWith(text, "!") || StartsWith(text, "//"); text = Trim(text)) {
    text.remove_prefix(std::min(text.find('\n'), text.size()));
  }
  return text;
}

}  // namespace

bool LooksLikeSvf(std::string_view head) {
  const std::string_view text = SkipComments(head);
  std::size_t size = 0;
  while (size < text.size() && IsLetter(text[size])) ++size;
  const std::string_view rest = text.substr(size, 512);
  const bool isSession = text.empty() && head.find("//") != head.npos && UpperCase(head).find("IMPACT") != std::string::npos;
  return isSession || (size > 0 && IsCommand(text.substr(0, size)) && IsText(rest) &&
                       (rest.empty() || rest[0] == ';' || IsWhiteSpace(rest[0])));
}

void ReadSvf(Input& input, const KnownDevices& known, File& file) { SvfReader(input, known, file).Read(); }

}  // namespace plddb::programming_files
