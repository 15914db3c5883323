#include "string_reader.h"

#include <algorithm>
#include <cstddef>

#include "TextForms.h"
#include "bsdl/characters.h"

namespace plddb::bsdl {
namespace {

bool IsBit(char c) { return c == '0' || c == '1' || c == 'X' || c == 'x'; }

}  // namespace

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [&](std::string_view w) { return AreEqualIgnoringCase(word, w); });
}

bool ItemStart::IsAt(const TextCursor& cursor) const {
  if (!cursor.AtWord() || (isNumber && !IsDigit(cursor.Current().front()))) return false;
  if (marks.empty()) return true;
  TextCursor ahead = cursor;
  ahead.Next();
  return std::any_of(marks.begin(), marks.end(), [&](char mark) { return ahead.At(mark); });
}

bool ItemStart::IsAfterComma(const TextCursor& cursor) const {
  if (!cursor.At(',')) return false;
  TextCursor ahead = cursor;
  ahead.Next();
  return IsAt(ahead);
}

bool StringReader::Unexpected(const TextCursor& cursor, std::string_view expected) {
  Fault(cursor.Here(), "expected " + std::string(expected) + ", found " + cursor.Found());
  return false;
}

bool StringReader::Expect(TextCursor& cursor, char mark, std::string_view expected) {
  if (cursor.Skip(mark)) return true;
  const bool isMissing = cursor.AtWord() && mark != '(';
  Fault(isMissing ? cursor.EndOfPrevious() : cursor.Here(), "expected " + std::string(expected) + ", found " + cursor.Found());
  return false;
}

bool StringReader::ExpectWord(TextCursor& cursor, std::string_view what, std::string& word) {
  if (!cursor.AtWord()) return Unexpected(cursor, what);
  word = cursor.Current();
  cursor.Next();
  return true;
}

bool StringReader::ExpectWord(TextCursor& cursor, std::string_view what) {
  return cursor.AtWord() ? (cursor.Next(), true) : Unexpected(cursor, what);
}

bool StringReader::ExpectOneOf(TextCursor& cursor, std::string_view expected, std::initializer_list<std::string_view> words) {
  if (!cursor.AtWord() || !IsOneOf(cursor.Current(), words)) return Unexpected(cursor, expected);
  cursor.Next();
  return true;
}

bool StringReader::ReadBits(TextCursor& cursor, std::string_view what, Text& bits) {
  if (!cursor.AtWord()) return Unexpected(cursor, what);
  const std::string_view word = cursor.Current();
  const auto wrong = static_cast<std::size_t>(std::find_if_not(word.begin(), word.end(), IsBit) - word.begin());
  if (wrong < word.size()) {
    Fault(cursor.PlaceOf(wrong), "expected " + std::string(what) + ", found " + Quoted(word.substr(wrong, 1)));
    return false;
  }
  if (bits.text.empty()) bits.place = cursor.Here();
  bits.text += UpperCase(word);
  cursor.Next();
  return true;
}

bool StringReader::ReadPort(TextCursor& cursor) {
  if (!ExpectWord(cursor, "a port")) return false;
  return !cursor.Skip('(') || (ExpectWord(cursor, "a number") && Expect(cursor, ')', "\")\""));
}

bool StringReader::IsClosedBeforeComma(const TextCursor& cursor, const ItemStart& next) {
  if (!next.IsAfterComma(cursor)) return true;
  Fault(cursor.Here(), "expected \")\" before this \",\"");
  return false;
}

void StringReader::ReadComma(TextCursor& cursor, const ItemStart& start) {
  const Place comma = cursor.Here();
  if (!Expect(cursor, ',', "\",\" or the end of the string")) {
    if (!cursor.AtWord()) Recover(cursor, start);
  } else if (cursor.AtEnd()) {
    faults_.Warning(comma, "nothing comes after this \",\"");
  }
}

void StringReader::Recover(TextCursor& cursor, const ItemStart& start) {
  while (!cursor.AtEnd() && !start.IsAfterComma(cursor)) cursor.Next();
  cursor.Skip(',');
}

}  // namespace plddb::bsdl
