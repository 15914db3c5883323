#include "boundary_cells.h"

#include <charconv>
#include <string_view>
#include <system_error>

#include "bsdl/string_reader.h"

namespace plddb::bsdl {
namespace {

constexpr ItemStart kCell = {"(", true};

/// "0 (BC_1, *, control, 1), 1 (BC_1, PIN(3), output3, X, 0, 1, Z)"
class CellReader : StringReader {
 public:
  CellReader(FaultList& faults, Count& last) : StringReader(faults, Severity::kWarning), last_(last) {}

  void Read(const Pieces& pieces) {
    ReadList(pieces, kCell,
             [&](TextCursor& cursor) { return ReadNumber(cursor) && Expect(cursor, '(', "\"(\"") && ReadCell(cursor); });
  }

 private:
  bool ReadNumber(TextCursor& cursor) {
    const std::string_view text = cursor.Current();
    const char* const end = text.data() + text.size();
    Count cell = {0, cursor.Here()};
    const auto read = std::from_chars(text.data(), end, cell.value);
    if (!cursor.AtWord() || read.ptr != end || read.ec != std::errc()) return Unexpected(cursor, "the number of a cell");
    if (last_.place.line == 0 || cell.value > last_.value) last_ = cell;
    cursor.Next();
    return true;
  }

  bool ReadCell(TextCursor& cursor) {
    if (!ExpectWord(cursor, "the type of a cell") || !Expect(cursor, ',', "\",\"")) return false;
    if (!cursor.Skip('*') && !ReadPort(cursor)) return false;
    if (!Expect(cursor, ',', "\",\"") || !ReadFunction(cursor)) return false;
    if (!Expect(cursor, ',', "\",\"") || !ExpectOneOf(cursor, "0, 1 or X", {"0", "1", "X"})) return false;
    if (!IsClosedBeforeComma(cursor, kCell)) return true;
    if (!cursor.Skip(',')) return Expect(cursor, ')', "\")\" or \",\"");
    return ReadDisable(cursor) && Expect(cursor, ')', "\")\"");
  }

  bool ReadFunction(TextCursor& cursor) {
    return ExpectOneOf(cursor, "the function of a cell",
                       {"input", "output2", "output3", "bidir", "control", "controlr", "internal", "clock", "observe_only"});
  }

  /// "12, 1, Z": the cell that disables this one, by which value, and what the pin does then.
  bool ReadDisable(TextCursor& cursor) {
    if (!ExpectWord(cursor, "the number of a cell") || !Expect(cursor, ',', "\",\"")) return false;
    if (!ExpectOneOf(cursor, "0 or 1", {"0", "1"}) || !Expect(cursor, ',', "\",\"")) return false;
    return ExpectWord(cursor, "the state of a disabled pin, such as Z");
  }

  Count& last_;
};

}  // namespace

void ReadBoundaryCells(const Pieces& pieces, FaultList& faults, Count& last) { CellReader(faults, last).Read(pieces); }

}  // namespace plddb::bsdl
