// STAPL (JESD71): statements that end with ';'. A backquote or an apostrophe starts a comment.
//
//   NOTE "DEVICE" "MPF300T";  NOTE "IDCODE" "0F8131CF";  NOTE "IDMASK" "0FFFFFFF";
//   BOOLEAN ID[32] = $0F8131CF;
//   IRSCAN 8, $0F;
//   DRSCAN 32, $00000000, CAPTURE X[], COMPARE ID[],IDMASK[],PASS;
//   ACTION PROGRAM = ...;

#include <algorithm>
#include <map>

#include "foundation/printed_forms.h"
#include "id_checks.h"
#include "readers.h"
#include "text.h"

namespace plddb::programming_files {
namespace {

constexpr std::size_t kLongestStatement = 1024;  // of which data arrays keep their start

/// Cuts a statement into words, texts in quotes (which keep their opening quote) and single marks.
std::vector<std::string> Tokens(std::string_view statement) {
  std::vector<std::string> tokens;
  while (!(statement = Trim(statement)).empty()) {
    std::size_t size = 1;
    if (statement[0] == '"') {
      size = std::min(statement.find('"', 1), statement.size());
    } else {
      while (size < statement.size() && IsWord(statement[0]) && IsWord(statement[size])) ++size;
      while (statement[0] == '$' && size < statement.size() && HexDigit(statement[size]) >= 0) ++size;
    }
    tokens.emplace_back(statement.substr(0, size));
    statement.remove_prefix(std::min(size + (statement[0] == '"' ? 1 : 0), statement.size()));
  }
  return tokens;
}

std::optional<std::uint32_t> Hex(std::string_view text) {
  if (StartsWith(text, "$")) text.remove_prefix(1);
  if (StartsWith(text, "0x") || StartsWith(text, "0X")) text.remove_prefix(2);
  return Number(text, 16);
}

bool IsAction(std::string_view statement) {
  return StartsWith(statement, "ACTION") && statement.size() > 6 && IsWhiteSpace(statement[6]) &&
         statement.find('=') != statement.npos;
}

class StaplReader {
 public:
  StaplReader(Input& input, const KnownDevices& known, File& file) : input_(input), known_(known), file_(file) {}

  void Read() {
    int c = 0;
    while ((c = input_.Get()) >= 0) {
      if (c == ';') {
        Execute();
      } else if (c == '"') {
        ReadText();
      } else if (c == '`' || c == '\'') {
        while ((c = input_.Peek()) >= 0 && c != '\n') input_.Get();
      } else if (!statement_.empty() || !IsWhiteSpace(c)) {
        Add(static_cast<char>(c));
      }
    }
    AddNotedId();
    if (!Trim(statement_).empty()) {
      AddFault(file_, place_, "the file ends in this statement, before its ';'");
    } else if (!hasSum_) {
      AddFault(file_, input_.TextPlace(), "the file ends without its CRC");
    }
  }

 private:
  void Add(char c) {
    if (statement_.empty()) {
      place_ = input_.TextPlace();
      --place_.offset;
      --place_.column;
    }
    if (statement_.size() < kLongestStatement) statement_ += c;
  }

  void ReadText() {
    Add('"');
    for (int c = input_.Get(); c >= 0; c = input_.Get()) {
      Add(static_cast<char>(c));
      if (c == '"') return;
    }
  }

  void Execute() {
    const std::vector<std::string> tokens = Tokens(statement_);
    statement_.clear();
    if (tokens.empty()) return;
    if (tokens[0] == "CRC") hasSum_ = true;
    if (tokens[0] == "NOTE" && tokens.size() >= 3) Note(tokens[1], tokens[2]);
    if (tokens[0] == "BOOLEAN" && tokens.size() >= 7) SetVariable(tokens);
    if (tokens[0] == "IRSCAN" && tokens.size() >= 4) LoadInstruction(tokens);
    if (tokens[0] == "DRSCAN") ShiftData(tokens);
  }

  void Note(std::string_view key, std::string_view value) {
    if (key.substr(0, 1) != "\"" || value.substr(0, 1) != "\"") return;
    const std::string name = UpperCase(Trim(key.substr(1)));
    value = Trim(value.substr(1));
    if (name == "DEVICE" && !value.empty()) AddNameWithPackage(file_, known_, Kind::kName, value, place_);
    if (name == "IDMASK") notedMask_ = Hex(value);
    if (name == "IDCODE") {
      notedId_ = Hex(value);
      notedPlace_ = place_;
    }
    if (name != "PACKAGE" || value.empty()) return;
    Statement package{Kind::kPackage, std::string(value.substr(0, kLongestText))};
    package.place = place_;
    AddStatement(file_, std::move(package));
  }

  /// BOOLEAN ID[32] = $0F8131CF
  void SetVariable(const std::vector<std::string>& tokens) {
    constexpr std::size_t most = 256;
    if (tokens[2] != "[" || tokens[3] != "32" || tokens[5] != "=" || tokens[6][0] != '$' || variables_.size() >= most) return;
    if (const auto value = Hex(tokens[6])) variables_[tokens[1]] = *value;
  }

  void LoadInstruction(const std::vector<std::string>& tokens) {
    const auto length = Number(tokens[1]);
    instruction_.reset();
    if (length && tokens[3][0] == '$') instruction_ = Instruction{*length, Bits::FromHex(tokens[3].substr(1))};
  }

  /// A number, or a variable that is one: "$0F8131CF", "ID[]", "ID[31..0]".
  std::optional<std::uint32_t> Value(const std::string& token) const {
    if (token[0] == '$') return Hex(token);
    const auto variable = variables_.find(token);
    return variable == variables_.end() ? std::nullopt : std::optional<std::uint32_t>(variable->second);
  }

  void ShiftData(const std::vector<std::string>& tokens) {
    const auto compare = std::find(tokens.begin(), tokens.end(), "COMPARE");
    if (compare == tokens.end() || tokens.size() < 2 || tokens[1] != "32") return;
    isCompared_ = true;
    const auto comma = std::find(compare, tokens.end(), ",");
    if (compare + 1 == tokens.end() || comma == tokens.end() || comma + 1 == tokens.end()) return;
    const auto value = Value(*(compare + 1));
    const auto mask = Value(*(comma + 1));
    if (!value || !mask) return;
    AddIdChecks({instruction_,
                 32,
                 Bits::FromHex(internal::Hex(*value, 8).substr(2)),
                 Bits::FromHex(internal::Hex(*mask, 8).substr(2)),
                 {},
                 place_},
                known_, file_);
  }

  /// The pair of notes. On purpose: an id without a maker is left out, since examples use such ids, and real parts have them
  /// only by chance.
  void AddNotedId() {
    constexpr std::uint32_t maker = 0xFFE;
    if (!notedId_ || (*notedId_ & maker) == 0 || (*notedId_ & 1) == 0) return;
    Statement id{Kind::kId, "IDCODE note", *notedId_, notedMask_.value_or(0xFFFFFFFF)};
    id.place = notedPlace_;
    id.proof = isCompared_ ? Proof::kPlayer : Proof::kNone;
    id.devices = known_.WithId(id.value, id.mask);
    AddStatement(file_, std::move(id));
  }

  Input& input_;
  const KnownDevices& known_;
  File& file_;
  std::string statement_;
  Place place_;
  bool hasSum_ = false;
  bool isCompared_ = false;
  std::optional<std::uint32_t> notedId_, notedMask_;
  Place notedPlace_;
  std::map<std::string, std::uint32_t> variables_;
  std::optional<Instruction> instruction_;
};

}  // namespace

bool LooksLikeStapl(std::string_view head) {
  bool isAtStart = true;
  for (std::size_t i = 0; i < head.size(); ++i) {
    if (isAtStart && head[i] == 'A' && IsAction(head.substr(i, head.substr(i, kLongestStatement).find(';')))) return true;
    if (!IsWhiteSpace(head[i])) isAtStart = head[i] == ';';
    if (head[i] == '\n') isAtStart = true;
  }
  return false;
}

void ReadStapl(Input& input, const KnownDevices& known, File& file) { StaplReader(input, known, file).Read(); }

}  // namespace plddb::programming_files
