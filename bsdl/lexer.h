#pragma once

#include <string>
#include <string_view>

#include "bsdl/Bsdl.h"
#include "bsdl/fault_list.h"

namespace plddb::bsdl {

/// The parts of a file, without blanks and comments.
///
///   word         XC_1  10.0e6  STD_1149_1_2001.all  PQ-100     a '-' only where no other follows: "--" begins a comment
///   string       "0 (BC_1, *, internal, X),"                  within one line; "" in it is a quote
///   assignment   :=
///   mark         ( ) ; : , & and any other character
///   end          the end of the file
struct Token {
  enum class Kind { kWord, kString, kAssignment, kMark, kEnd };

  Kind kind = Kind::kEnd;
  std::string_view text;  // of a string, without its quotes
  Place place;            // of the first character, that is of the opening quote
  bool isClosed = true;   // a string with its second quote

  bool Is(char mark) const { return kind == Kind::kMark && text.front() == mark; }
  bool Is(std::string_view keyword) const;  // ignoring case
};

/// Cuts a text into tokens, and knows where they are. Lines end with LF, CR LF or CR.
class Lexer {
 public:
  explicit Lexer(std::string_view text) : text_(text) { Next(); }

  const Token& Current() const { return token_; }

  /// Where the token before the current one ended: of the character after it.
  Place EndOfPrevious() const { return endOfPrevious_; }

  /// Goes on to the next token.
  void Next();

  /// From the current token, which is a word of a line that is no BSDL, to the next line.
  void SkipLine();

 private:
  Place Here() const { return {line_, static_cast<int>(at_ - lineStart_) + 1}; }
  bool IsComment(std::size_t at) const { return text_[at] == '-' && at + 1 < text_.size() && text_[at + 1] == '-'; }
  void SkipBlanks();
  void SkipComment();
  void NewLine();
  void TakeWord();
  void TakeString();
  void Take(Token::Kind kind, std::size_t size);

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t lineStart_ = 0;
  int line_ = 1;
  Token token_;
  Place endOfPrevious_ = {1, 1};
};

}  // namespace plddb::bsdl
