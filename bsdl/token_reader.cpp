#include "token_reader.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "TextForms.h"

namespace plddb::bsdl {

bool IsStatement(const Token& token) {
  static constexpr std::string_view kStatements[] = {"attribute", "constant", "end", "generic", "port", "use"};
  return std::any_of(std::begin(kStatements), std::end(kStatements), [&](std::string_view s) { return token.Is(s); });
}

void TokenReader::Next() {
  if (AtString() && !Now().isClosed && Now().place.line != faultyLine_) {
    Fault(Now().place, "the string is not closed: expected '\"' on the same line");
  }
  lexer_.Next();
}

bool TokenReader::Skip(char mark) {
  if (!Now().Is(mark)) return false;
  Next();
  return true;
}

bool TokenReader::Skip(std::string_view keyword) {
  if (!Now().Is(keyword)) return false;
  Next();
  return true;
}

Word TokenReader::TakeWord() {
  const Word word = {Now().text, Now().place};
  Next();
  return word;
}

void TokenReader::Fault(Place place, std::string text) {
  faultyLine_ = place.line;
  faults_.Error(place, std::move(text));
}

std::string TokenReader::Found() const {
  if (AtEnd()) return "the end of the file";
  return AtString() ? "a string" : Quoted(Now().text);
}

bool TokenReader::Unexpected(std::string_view expected) {
  Fault(Now().place, "expected " + std::string(expected) + ", found " + Found());
  return false;
}

bool TokenReader::Missing(std::string_view expected) {
  const Place place = lexer_.EndOfPrevious();
  Fault(place, "expected " + std::string(expected) + (place.line == Now().place.line ? ", found " + Found() : ""));
  return false;
}

bool TokenReader::Expect(char mark, std::string_view expected) {
  if (Skip(mark)) return true;
  return AtString() || AtEnd() || AtStatement() ? Missing(expected) : Unexpected(expected);
}

bool TokenReader::Expect(std::string_view keyword) { return Skip(keyword) || Unexpected(Quoted(keyword)); }

bool TokenReader::ExpectWord(std::string_view what, Word& word) {
  if (AtNewStatement()) return Missing(what);
  if (!AtWord()) return Unexpected(what);
  word = TakeWord();
  return true;
}

void TokenReader::ExpectSemicolon() {
  if (Skip(';')) return;
  Missing("\";\"");
  Recover();
}

void TokenReader::Recover() {
  while (!AtEnd() && !AtNewStatement() && !Skip(';')) Next();
}

void TokenReader::SkipStatement() {
  while (!AtEnd() && !Skip(';')) Next();
}

}  // namespace plddb::bsdl
