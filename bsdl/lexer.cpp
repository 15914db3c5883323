#include "lexer.h"

#include <algorithm>

#include "bsdl/characters.h"

namespace plddb::bsdl {
namespace {

constexpr bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

/// A file of old systems ends with character 26.
constexpr bool IsBlank(char c) { return internal::IsWhiteSpace(c) || c == '\x1A'; }

}  // namespace

bool Token::Is(std::string_view keyword) const { return kind == Kind::kWord && AreEqualIgnoringCase(text, keyword); }

void Lexer::Next() {
  endOfPrevious_ = Here();
  SkipBlanks();
  token_ = {};
  token_.place = Here();
  if (at_ == text_.size()) return;
  const char c = text_[at_];
  if (c == '"') {
    TakeString();
  } else if (IsWordCharacter(c)) {
    TakeWord();
  } else if (text_.substr(at_, 2) == ":=") {
    Take(Token::Kind::kAssignment, 2);
  } else {
    Take(Token::Kind::kMark, 1);
  }
}

void Lexer::SkipLine() {
  while (at_ < text_.size() && !IsLineEnd(text_[at_])) ++at_;
  Next();
}

void Lexer::SkipBlanks() {
  for (; at_ < text_.size(); ++at_) {
    if (IsComment(at_)) SkipComment();
    if (at_ == text_.size()) return;
    if (IsLineEnd(text_[at_])) {
      NewLine();
    } else if (!IsBlank(text_[at_])) {
      return;
    }
  }
}

void Lexer::SkipComment() {
  at_ += 2;
  while (at_ < text_.size() && !IsLineEnd(text_[at_])) ++at_;
}

/// At a line end; of CR LF the second is left, which is one character.
void Lexer::NewLine() {
  if (text_.substr(at_, 2) == "\r\n") ++at_;
  lineStart_ = at_ + 1;
  ++line_;
}

void Lexer::TakeWord() {
  std::size_t end = at_;
  while (end < text_.size() && IsWordCharacter(text_[end]) && !IsComment(end)) ++end;
  Take(Token::Kind::kWord, end - at_);
}

void Lexer::TakeString() {
  std::size_t end = at_ + 1;
  for (; end < text_.size() && !IsLineEnd(text_[end]); ++end) {
    if (text_[end] != '"') continue;
    if (text_.substr(end, 2) != "\"\"") break;
    ++end;  // a quote within the string
  }
  token_.isClosed = end < text_.size() && text_[end] == '"';
  Take(Token::Kind::kString, end - at_ + (token_.isClosed ? 1 : 0));
  token_.text.remove_prefix(1);
  if (token_.isClosed) token_.text.remove_suffix(1);
}

void Lexer::Take(Token::Kind kind, std::size_t size) {
  token_.kind = kind;
  token_.text = text_.substr(at_, size);
  at_ += size;
}

}  // namespace plddb::bsdl
