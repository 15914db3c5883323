#pragma once

#include <string>
#include <string_view>

#include "bsdl/Bsdl.h"
#include "bsdl/fault_list.h"
#include "bsdl/lexer.h"

namespace plddb::bsdl {

/// Whether a statement begins with this token.
bool IsStatement(const Token& token);

/// Goes along the tokens of a file, and lists what is not as expected.
class TokenReader {
 protected:
  TokenReader(std::string_view text, FaultList& faults) : lexer_(text), faults_(faults) {}

  const Token& Now() const { return lexer_.Current(); }
  bool AtEnd() const { return Now().kind == Token::Kind::kEnd; }
  bool AtWord() const { return Now().kind == Token::Kind::kWord; }
  bool AtString() const { return Now().kind == Token::Kind::kString; }
  bool AtStatement() const { return IsStatement(Now()); }

  /// At the word of a statement that begins a line.
  bool AtNewStatement() const { return AtStatement() && Now().place.line != lexer_.EndOfPrevious().line; }

  /// Goes on. A string that is not closed is a fault wherever it is, but for the rest of a line that already has one.
  void Next();
  bool Skip(char mark);
  bool Skip(std::string_view keyword);
  Word TakeWord();

  void Fault(Place place, std::string text);

  /// Something else is here than was expected.
  bool Unexpected(std::string_view expected);

  /// Something that was expected before the current token is missing.
  bool Missing(std::string_view expected);

  /// Reports a mark that ends or separates something: as missing before a word or string, else as replaced by what was found.
  bool Expect(char mark, std::string_view expected);
  bool Expect(std::string_view keyword);
  bool ExpectWord(std::string_view what, Word& word);

  /// The end of a statement.
  void ExpectSemicolon();

  /// After a fault: to the next statement, that is past a ';', or to a line that begins with a statement's word.
  void Recover();

  /// Past the ';' of a statement whose grammar does not matter.
  void SkipStatement();

  Lexer lexer_;
  FaultList& faults_;

 private:
  std::string Found() const;

  int faultyLine_ = 0;
};

}  // namespace plddb::bsdl
