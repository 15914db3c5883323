#include "text_cursor.h"

#include "TextForms.h"
#include "bsdl/characters.h"
#include "bsdl/fault_list.h"

namespace plddb::bsdl {
namespace {

std::size_t EndOfWord(std::string_view text, std::size_t at) {
  while (at < text.size() && IsWordCharacter(text[at])) ++at;
  return at;
}

}  // namespace

bool TextCursor::At(std::string_view word) const { return AtWord() && AreEqualIgnoringCase(text_, word); }

Place TextCursor::PlaceIn(std::size_t piece, std::size_t at) const {
  const Place place = pieces_[piece].place;
  return {place.line, place.column + static_cast<int>(at)};
}

Place TextCursor::PlaceOf(std::size_t n) const {
  if (AtEnd()) return PlaceIn(pieces_.size() - 1, pieces_.back().text.size());
  std::size_t piece = firstPiece_;
  std::size_t at = first_ + n;
  while (at >= pieces_[piece].text.size() && piece + 1 < pieces_.size()) at -= pieces_[piece++].text.size();
  return PlaceIn(piece, at);
}

void TextCursor::Next() {
  endPiece_ = piece_;
  end_ = at_;
  kind_ = Kind::kEnd;
  if (!SkipBlanks()) return;
  firstPiece_ = piece_;
  first_ = at_;
  if (IsWordCharacter(pieces_[piece_].text[at_])) return TakeWord();
  kind_ = Kind::kMark;
  text_ = pieces_[piece_].text.substr(at_++, 1);
}

bool TextCursor::Skip(char mark) {
  if (!At(mark)) return false;
  Next();
  return true;
}

std::string TextCursor::Found() const { return AtEnd() ? "the end of the string" : Quoted(text_); }

/// To the next character that is no blank; false when there is none.
bool TextCursor::SkipBlanks() {
  for (;; ++piece_, at_ = 0) {
    const std::string_view text = pieces_[piece_].text;
    while (at_ < text.size() && internal::IsWhiteSpace(text[at_])) ++at_;
    if (at_ < text.size()) return true;
    if (piece_ + 1 == pieces_.size()) return false;
  }
}

void TextCursor::TakeWord() {
  kind_ = Kind::kWord;
  std::string_view piece = pieces_[piece_].text;
  const std::size_t start = at_;
  at_ = EndOfWord(piece, at_);
  text_ = piece.substr(start, at_ - start);
  if (at_ < piece.size() || !GoesOnInNextPiece()) return;
  joined_ = text_;
  while (at_ == piece.size() && piece_ + 1 < pieces_.size()) {
    piece = pieces_[++piece_].text;
    at_ = EndOfWord(piece, 0);
    joined_ += piece.substr(0, at_);
  }
  text_ = joined_;
}

/// Whether the word that ends its piece has more in the next one that is not empty.
bool TextCursor::GoesOnInNextPiece() const {
  std::size_t next = piece_ + 1;
  while (next < pieces_.size() && pieces_[next].text.empty()) ++next;
  return next < pieces_.size() && IsWordCharacter(pieces_[next].text.front());
}

}  // namespace plddb::bsdl
