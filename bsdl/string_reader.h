#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "bsdl/Bsdl.h"
#include "bsdl/fault_list.h"
#include "bsdl/text_cursor.h"

namespace plddb::bsdl {

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words);  // ignoring case

/// How an item of a list begins: with a word that one of these marks follows, if there are any.
struct ItemStart {
  std::string_view marks;
  bool isNumber;

  bool IsAt(const TextCursor& cursor) const;

  /// Whether a ',' at the cursor is followed by an item.
  bool IsAfterComma(const TextCursor& cursor) const;
};

/// The parts that the grammars of strings have in common. What reads a part returns whether it did; if not, the fault is
/// listed.
class StringReader {
 protected:
  explicit StringReader(FaultList& faults, Severity severity) : faults_(faults), severity_(severity) {}

  void Fault(Place place, std::string text) { faults_.Add(place, severity_, std::move(text)); }
  bool Unexpected(const TextCursor& cursor, std::string_view expected);

  /// Reports a mark: as missing before a word, else as replaced by what was found.
  bool Expect(TextCursor& cursor, char mark, std::string_view expected);
  bool ExpectWord(TextCursor& cursor, std::string_view what, std::string& word);
  bool ExpectWord(TextCursor& cursor, std::string_view what);
  bool ExpectOneOf(TextCursor& cursor, std::string_view expected, std::initializer_list<std::string_view> words);

  /// Bits at the cursor: a word of 0, 1 and X.
  bool ReadBits(TextCursor& cursor, std::string_view what, Text& bits);

  /// "PORT" or "PORT(3)"
  bool ReadPort(TextCursor& cursor);

  /// Calls `read(cursor)` for each item of a list with ',' between them. After a fault it goes on with the next item.
  template <typename ReadItem>
  void ReadList(const Pieces& pieces, const ItemStart& start, ReadItem read) {
    TextCursor cursor(pieces);
    while (!cursor.AtEnd() && !faults_.Full()) {
      if (!read(cursor)) {
        Recover(cursor, start);
      } else if (!cursor.AtEnd()) {
        ReadComma(cursor, start);
      }
    }
  }

  /// "A, B)": the rest of a list whose '(' is read. `next` is what may come after it.
  template <typename ReadItem>
  bool ReadRestOfList(TextCursor& cursor, const ItemStart& next, ReadItem read) {
    do {
      if (!read(cursor)) return false;
      if (!IsClosedBeforeComma(cursor, next)) return true;
    } while (cursor.Skip(','));
    return Expect(cursor, ')', "\")\" or \",\"");
  }

  /// Not where a ',' is followed by the next item of the list around this one.
  bool IsClosedBeforeComma(const TextCursor& cursor, const ItemStart& next);

  FaultList& faults_;
  Severity severity_;

 private:
  void ReadComma(TextCursor& cursor, const ItemStart& start);
  static void Recover(TextCursor& cursor, const ItemStart& start);
};

}  // namespace plddb::bsdl
