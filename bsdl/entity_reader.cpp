#include "entity_reader.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <utility>

#include "TextForms.h"
#include "bsdl/characters.h"
#include "bsdl/lexer.h"
#include "bsdl/token_reader.h"

namespace plddb::bsdl {
namespace {

constexpr std::string_view kModes[] = {"in", "out", "inout", "buffer"};
constexpr std::string_view kModePrefixes[] = {"linkage", "power_", "vref_"};

bool IsMode(std::string_view word) {
  const auto isWord = [&](std::string_view mode) { return AreEqualIgnoringCase(word, mode); };
  const auto isPrefix = [&](std::string_view prefix) { return AreEqualIgnoringCase(word.substr(0, prefix.size()), prefix); };
  return std::any_of(std::begin(kModes), std::end(kModes), isWord) ||
         std::any_of(std::begin(kModePrefixes), std::end(kModePrefixes), isPrefix);
}

/// "STD_1149_1_2001.all" is the package STD_1149_1_2001.
std::string_view PackageName(std::string_view use) { return use.substr(0, use.find('.')); }

class EntityReader : TokenReader {
 public:
  EntityReader(std::string_view text, FaultList& faults) : TokenReader(text, faults) {}

  Entity Read() {
    if (GoToEntity()) {
      ReadHead();
      while (!AtEnd() && !faults_.Full()) {
        if (Now().Is("end")) {
          ReadEnd();
          return std::move(entity_);
        }
        ReadStatement();
      }
      if (!faults_.Full()) Fault(Now().place, "expected \"end\", found the end of the file");
    }
    return std::move(entity_);
  }

 private:
  // --- Before and after the entity ------------------------------------------------------------------------------------------

  /// Past the word "entity". What is no entity is passed over where it may be there, and is a fault where it may not.
  bool GoToEntity() {
    while (Now().Is('!')) lexer_.SkipLine();
    while (!AtEnd()) {
      if (Skip("entity")) return true;
      if (!SkipPackagePart()) return GoToMisspeltEntity();
    }
    return Unexpected("\"entity\"");
  }

  /// "entiy NAME is" is meant to be an entity; anything else is no BSDL.
  bool GoToMisspeltEntity() {
    Unexpected("\"entity\"");
    Next();
    Lexer ahead = lexer_;
    ahead.Next();
    return AtWord() && ahead.Current().Is("is");
  }

  bool SkipPackagePart() {
    if (Now().Is("package")) {
      SkipPackage();
    } else if (Now().Is("use") || Now().Is("library")) {
      SkipStatement();
    } else {
      return false;
    }
    return true;
  }

  /// To the end of a package, which is its first statement "end" that does not end a record.
  void SkipPackage() {
    while (!AtEnd()) {
      SkipUntilEnd();
      const bool isInner = Skip("end") && Now().Is("record");
      SkipStatement();
      if (!isInner) return;
    }
  }

  void SkipUntilEnd() {
    while (!AtEnd() && !Now().Is("end")) Next();
  }

  void ReadHead() {
    if (!ExpectWord("the name of the entity", entity_.name)) return Recover();
    if (!Expect("is") && !AtStatement()) Recover();
  }

  void ReadEnd() {
    Next();
    Skip("entity");
    if (AtWord()) {
      const Word name = TakeWord();
      if (!AreEqualIgnoringCase(name.text, entity_.name.text)) {
        faults_.Warning(name.place,
                        "expected " + Quoted(entity_.name.text) + ", the name of the entity, found " + Quoted(name.text));
      }
    }
    if (!Expect(';', "\";\"")) return;
    while (!AtEnd() && SkipPackagePart()) {
    }
    if (!AtEnd()) faults_.Warning(Now().place, "what comes after the end of the entity is passed over");
  }

  // --- Statements -----------------------------------------------------------------------------------------------------------

  void ReadStatement() {
    if (Now().Is("attribute")) {
      ReadAttribute();
    } else if (Now().Is("constant")) {
      ReadConstant();
    } else if (Now().Is("use")) {
      ReadUse();
    } else if (Now().Is("port")) {
      ReadPorts();
    } else if (Now().Is("generic")) {
      ReadGenerics();
    } else if (Now().Is(';')) {
      faults_.Warning(TakeWord().place, "nothing comes before this \";\"");
    } else {
      Unexpected("\"attribute\", \"constant\", \"use\", \"port\", \"generic\" or \"end\"");
      Recover();
    }
  }

  void ReadUse() {
    Next();
    Word use;
    if (!ExpectWord("the name of a package", use)) return Recover();
    use.text = PackageName(use.text);
    entity_.uses.push_back(use);
    if (Now().Is(".") || Now().Is(".all")) Next();  // "NAME . all"
    if (Now().Is("all")) Next();
    ExpectSemicolon();
  }

  void ReadGenerics() {
    Next();
    if (!Expect('(', "\"(\"") && !AtWord()) return Recover();
    do {
      if (!ReadGeneric() || isBroken_) return Recover();
    } while (GoToNextInterface());
    if (Now().Is(')') || !AtNewStatement()) EndInterface();
  }

  /// After a generic or port: past the ';' before another one.
  bool GoToNextInterface() {
    const Place semicolon = Now().place;
    if (!Skip(';')) return false;
    if (AtNewStatement()) Fault(semicolon, "expected \")\" before this \";\"");
    return AtWord() && !AtStatement();  // a ';' after the last one does no harm
  }

  void EndInterface() {
    if (!Expect(')', "\")\" or \";\"")) return Recover();
    ExpectSemicolon();
  }

  bool ReadGeneric() {
    Generic generic;
    Word type;
    if (!ExpectWord("the name of a generic", generic.name) || !Expect(':', "\":\"")) return false;
    if (!ExpectWord("a type", type)) return false;
    if (Now().kind == Token::Kind::kAssignment) {
      Next();
      if (AtString()) {
        ReadString(generic.value);
      } else if (Word value; !ExpectWord("a value", value)) {
        return false;
      }
    }
    entity_.generics.push_back(std::move(generic));
    return true;
  }

  void ReadPorts() {
    Next();
    if (!Expect('(', "\"(\"") && !AtWord()) return Recover();
    do {
      if (!ReadPort()) SkipPort();
    } while (GoToNextPort());
    if (Now().Is(')') || !AtNewStatement()) EndInterface();
  }

  bool GoToNextPort() {
    if (Now().Is(';')) return GoToNextInterface();
    if (Now().Is(')') || AtEnd() || AtNewStatement()) return false;
    if (AtWord()) return !Missing("\";\" or \")\"");
    Unexpected("\")\" or \";\"");
    SkipPort();
    return GoToNextInterface();
  }

  /// After a fault: to the ';' at the end of a line, or to the end of all ports.
  void SkipPort() {
    while (!AtEnd() && !AtNewStatement()) {
      Lexer ahead = lexer_;
      ahead.Next();
      if (Now().Is(';') && ahead.Current().place.line != Now().place.line) return;
      if (Now().Is(')') && EndsPorts(ahead)) return;
      Next();
    }
  }

  /// Whether a ')' is the last one of the ports, as `ahead`, what follows it, shows.
  static bool EndsPorts(Lexer ahead) {
    if (ahead.Current().Is(';')) ahead.Next();
    return ahead.Current().kind == Token::Kind::kEnd || IsStatement(ahead.Current());
  }

  bool ReadPort() {
    Port port;
    do {
      if (!ExpectWord("the name of a port", port.names.emplace_back())) return false;
    } while (Skip(','));
    if (!Skip(':')) return AtWord() && !AtNewStatement() ? Missing("\",\" or \":\"") : Unexpected("\",\" or \":\"");
    if (!AtWord() || !IsMode(Now().text)) return Unexpected("in, out, inout, buffer or linkage");
    port.mode = TakeWord();
    if (!Now().Is("bit") && !Now().Is("bit_vector")) return Unexpected("bit or bit_vector");
    port.type = TakeWord();
    if (AreEqualIgnoringCase(port.type.text, "bit_vector") && !ReadRange(port.length)) return false;
    entity_.ports.push_back(std::move(port));
    return true;
  }

  /// "(0 to 7)" or "(7 downto 0)".
  bool ReadRange(long& length) {
    long first = 0;
    long last = 0;
    if (!Expect('(', "\"(\"") || !ReadNumber(first)) return false;
    if (!Now().Is("to") && !Now().Is("downto")) return Unexpected("to or downto");
    Next();
    if (!ReadNumber(last) || !Expect(')', "\")\"")) return false;
    length = (first < last ? last - first : first - last) + 1;
    return true;
  }

  bool ReadNumber(long& number) {
    const std::string_view text = Now().text;
    const char* const end = text.data() + text.size();
    constexpr std::size_t kMostDigits = 9;
    const bool isNumber =
        AtWord() && text.size() <= kMostDigits && IsDigit(text.front()) && std::from_chars(text.data(), end, number).ptr == end;
    if (!isNumber) return Unexpected("a number");
    Next();
    return true;
  }

  /// Constants of other types, such as the cells of 1149.1, are passed over.
  void ReadConstant() {
    Next();
    PinMap map;
    Word type;
    if (!ExpectWord("the name of a pin map", map.name) || !Expect(':', "\":\"")) return Recover();
    if (!ExpectWord("PIN_MAP_STRING", type)) return Recover();
    if (!AreEqualIgnoringCase(type.text, "PIN_MAP_STRING")) return SkipConstant(type);
    if (Now().kind != Token::Kind::kAssignment) {
      Unexpected("\":=\"");
      return Recover();
    }
    Next();
    if (!ReadString(map.text)) return Recover();
    entity_.pinMaps.push_back(std::move(map));
    EndValue();
  }

  /// A type that nobody has heard of is likely PIN_MAP_STRING misspelt where its value is a string.
  void SkipConstant(const Word& type) {
    if (Now().kind == Token::Kind::kAssignment) Next();
    if (AtString()) faults_.Error(type.place, "expected PIN_MAP_STRING, found " + Quoted(type.text));
    SkipStatement();
  }

  void ReadAttribute() {
    Next();
    Attribute attribute;
    if (!ExpectWord("the name of an attribute", attribute.name)) return Recover();
    if (Now().Is(':')) return SkipStatement();  // "attribute X : BSDL_EXTENSION;"
    if (!Expect("of") || !ReadTargets(attribute)) return Recover();
    if (!Expect(':', "\":\"") || !ReadClass() || !Expect("is")) return Recover();
    attribute.place = Now().place;
    if (!ReadValue(attribute)) return Recover();
    entity_.attributes.push_back(std::move(attribute));
    EndValue();
  }

  bool ReadTargets(Attribute& attribute) {
    if (!ExpectWord("the name of the entity or a signal", attribute.of)) return false;
    while (Skip(',')) {
      if (Word more; !ExpectWord("the name of a signal", more)) return false;
    }
    if (Skip('(')) {  // a bit of a vector
      while (AtWord()) Next();
      return Expect(')', "\")\"");
    }
    return true;
  }

  bool ReadClass() {
    if (Skip("entity") || Skip("signal") || Skip("constant") || Skip("component")) return true;
    return Unexpected("entity or signal");
  }

  bool ReadValue(Attribute& attribute) {
    if (AtString()) return ReadString(attribute.text);
    if (Now().Is('(')) return ReadList(attribute.list);
    return ExpectWord("a value", attribute.value);
  }

  /// "(10.0e6, BOTH)"
  bool ReadList(std::vector<Word>& list) {
    do {
      Next();
      if (!ExpectWord("a word or number", list.emplace_back())) return false;
    } while (Now().Is(','));
    return Expect(')', "\")\" or \",\"");
  }

  /// A missing '&' is a fault, unless what is missing is the end of the string before it, where the '&' is.
  bool ReadString(Pieces& pieces) {
    do {
      if (!AtString()) return Unexpected("a string");
      isBroken_ = !Now().isClosed;
      TakePiece(pieces);
    } while (Skip('&') || (AtString() && (isBroken_ || !Missing("\"&\""))));
    return true;
  }

  void TakePiece(Pieces& pieces) {
    const Place quote = Now().place;
    pieces.push_back({isBroken_ ? WithoutEnd(Now().text) : Now().text, {quote.line, quote.column + 1}});
    Next();
  }

  /// What is in a string that is not closed, without the '&' or ';' and the comment that were to come after it.
  static std::string_view WithoutEnd(std::string_view text) {
    text = internal::TrimRight(text.substr(0, text.find("--")));
    if (!text.empty() && (text.back() == '&' || text.back() == ';')) text.remove_suffix(1);
    return text;
  }

  /// The ';' after a value may be in a string that is not closed.
  void EndValue() {
    if (!std::exchange(isBroken_, false)) return ExpectSemicolon();
    if (!Skip(';')) Recover();
  }

  Entity entity_;
  bool isBroken_ = false;
};

}  // namespace

Entity ReadEntity(std::string_view text, FaultList& faults) { return EntityReader(text, faults).Read(); }

}  // namespace plddb::bsdl
