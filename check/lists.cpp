#include <charconv>
#include <system_error>
#include <unordered_map>

#include "check/list_readings.h"
#include "check/rules.h"
#include "descriptions/TextForms.h"
#include "descriptions/list_columns.h"

namespace plddb::check {
namespace {

using descriptions::kListColumns;
using descriptions::ListColumn;
using descriptions::ListForm;

ListReading Read(const std::string& text, ListForm form) {
  if (form == ListForm::kQuoted) return ReadQuotedList(text);
  if (form == ListForm::kTokens) return ReadTokens(text);
  return ReadSemicolonList(text);
}

bool HoldsNumbers(const ListColumn& column) { return *column.whenLeftOut != '\0'; }

/// Whether lists read all of `text` as a number, and as the one that is written.
bool IsNumber(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  int number = 0;  // as many bits as the records keep
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  return read.ec == std::errc() && read.ptr == text.data() + text.size();
}

/// Finds mistakes in the text of one attribute.
class ListCheck {
 public:
  ListCheck(const Described& record, const Attribute& attribute, const ListColumn& row, Findings& findings)
      : record_(record),
        attribute_(attribute),
        row_(row),
        findings_(findings),
        text_(attribute.value),
        reading_(Read(text_, row.form)) {}

  void Run() {
    if (text_.size() > row_.longest) {
      return Add(CodeId::kListLong, "a text of " + std::to_string(text_.size()) + " characters is ignored: " +
                                        std::to_string(row_.longest) + " at most; elements take more");
    }
    CheckLosses();
    if (HoldsNumbers(row_)) CheckNumbers();
    if (!row_.creator.empty()) CheckCount();
  }

 private:
  void Add(CodeId code, std::string text) { findings_.Add(record_, attribute_, code, std::move(text)); }

  void CheckLosses() {
    if (!reading_.unclosed.empty()) Add(CodeId::kListUnclosed, Quoted(reading_.unclosed) + " is lost: nothing closes it");
    if (!reading_.afterEmpty.empty()) {
      Add(CodeId::kListAfterEmpty, Quoted(reading_.afterEmpty) + " is lost after an empty item");
    }
    if (!reading_.outside.empty()) Add(CodeId::kListOutside, Quoted(reading_.outside) + " is lost outside the quotes");
  }

  void CheckNumbers() {
    if (IsNumber(reading_.label)) {
      Add(CodeId::kListLabel, Quoted(reading_.label) + " is ignored: the text before the first ';' is a label");
    }
    for (const std::string_view item : reading_.items) {
      if (item.empty() || IsNumber(item)) continue;
      Add(CodeId::kListNumber, Quoted(item) + " is read as another number: expected a decimal one");
    }
  }

  /// Compares with the number of records that the creating text makes. If that text loses items, the mistake is there.
  void CheckCount() {
    const Attribute* const creator = FindAttribute(*record_.element, row_.creator);
    const std::string creatorText(creator == nullptr ? "" : creator->value);
    const ListReading created = ReadSemicolonList(creatorText);
    if (created.LosesItems()) return;
    const std::size_t count = created.items.size();
    const std::string makes =
        std::string(row_.creator) + " makes " + std::to_string(count) + (count == 1 ? " record" : " records");
    if (reading_.items.size() > count) {
      Add(CodeId::kListSurplus, Quoted(reading_.items[count]) + " and what follows is lost: " + makes);
    } else if (reading_.items.size() < count && !reading_.LosesItems()) {
      Add(CodeId::kListShort, "only " + std::to_string(reading_.items.size()) + " of the items are given: " + makes);
    }
  }

  const Described& record_;
  const Attribute& attribute_;
  const ListColumn& row_;
  Findings& findings_;
  const std::string text_;
  const ListReading reading_;
};

using RowsByAttribute = std::unordered_map<std::string_view, const ListColumn*>;

RowsByAttribute RowsOf(std::string_view owner) {
  RowsByAttribute rows;
  for (const ListColumn& row : kListColumns) {
    if (row.owner == owner && !row.text.empty()) rows.emplace(row.text, &row);
  }
  return rows;
}

void CheckRecord(const Described& record, const RowsByAttribute& rows, Findings& findings) {
  for (const Attribute& attribute : record.element->attributes) {
    const auto row = rows.find(attribute.name);
    if (row != rows.end()) ListCheck(record, attribute, *row->second, findings).Run();
  }
}

}  // namespace

void CheckLists(const Records& records, Findings& findings) {
  const RowsByAttribute ofFamily = RowsOf("Family");
  const RowsByAttribute ofBScanControl = RowsOf("BScanControl");
  const RowsByAttribute ofDevice = RowsOf("Device");
  for (const DescribedFamily& family : records.Families()) {
    CheckRecord(family, ofFamily, findings);
    for (const Element& child : family.element->children) {
      if (child.name == "BScanControl") CheckRecord({family.file, &child}, ofBScanControl, findings);
    }
  }
  for (const DescribedDevice& device : records.Devices()) CheckRecord(device, ofDevice, findings);
}

}  // namespace plddb::check
