#pragma once

#include <string>
#include <string_view>

#include "bsdl/Bsdl.h"

namespace plddb::bsdl {

/// Walks along a string that is concatenated of pieces, as one text, and knows the place of each of its characters.
///
///   "BYPASS (11" & "11), "        words BYPASS and 1111, marks ( ) and ,     a word may begin in one piece and end in another
///   "" & "A" & "" & "B"           the word AB
class TextCursor {
 public:
  enum class Kind { kWord, kMark, kEnd };

  /// Borrows the pieces, at least one.
  explicit TextCursor(const Pieces& pieces) : pieces_(pieces) { Next(); }

  bool AtEnd() const { return kind_ == Kind::kEnd; }
  bool AtWord() const { return kind_ == Kind::kWord; }
  bool At(char mark) const { return kind_ == Kind::kMark && text_.front() == mark; }
  bool At(std::string_view word) const;  ///< Ignoring case.

  /// The current word or mark; a view until Next().
  std::string_view Current() const { return text_; }

  /// Of the current word, mark or end.
  Place Here() const { return PlaceOf(0); }

  /// Of the nth character of the current word.
  Place PlaceOf(std::size_t n) const;

  /// Of the character after the previous word or mark.
  Place EndOfPrevious() const { return PlaceIn(endPiece_, end_); }

  void Next();

  /// Goes on if the mark is the current one; returns whether it was.
  bool Skip(char mark);

  /// What is at the cursor, for a message.
  std::string Found() const;

 private:
  bool SkipBlanks();
  void TakeWord();
  bool GoesOnInNextPiece() const;

  Place PlaceIn(std::size_t piece, std::size_t at) const;

  const Pieces& pieces_;
  std::size_t piece_ = 0;  // the next character to read,
  std::size_t at_ = 0;     // in its piece
  Kind kind_ = Kind::kEnd;
  std::string_view text_;
  std::size_t firstPiece_ = 0;  // of text_
  std::size_t first_ = 0;
  std::size_t endPiece_ = 0;  // of the one before
  std::size_t end_ = 0;
  std::string joined_;  // a word of several pieces
};

}  // namespace plddb::bsdl
