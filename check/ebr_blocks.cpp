#include <cstdlib>
#include <string>

#include "check/rules.h"
#include "descriptions/TextForms.h"
#include "descriptions/list_columns.h"
#include "descriptions/values.h"
#include "foundation/text_lists.h"

namespace plddb::check {
namespace {

constexpr const char* kEntries = descriptions::CreatorOf("Entry").data();
constexpr const char* kColumns = descriptions::FindColumn("Entry", "Column")->text.data();
constexpr const char* kAddresses = descriptions::FindColumn("Entry", "Address")->text.data();

constexpr long long kColumnsPerEntry = 8;

/// A block whose entries are numbered. Its numbers may be large: they are written as 32 bits, and counted with more.
struct Block {
  Described record;
  long long entries = 0;
  long long width = 0;  // columns of a row
  internal::NumberRange columns;
};

internal::NumberRange RangeOf(const Attribute& attribute) { return internal::ParseRange(attribute.value); }

long long SpanOf(internal::NumberRange range) { return std::llabs(static_cast<long long>(range.last) - range.first) + 1; }

/// False if the columns of the block will not be assigned as intended.
bool CheckColumns(const Block& block, Findings& findings) {
  const std::string written = QuotedValue(block.record, kColumns);
  if (block.columns.last < block.columns.first) {
    findings.Add(block.record, kColumns, CodeId::kEbrReversed,
                 "the columns " + written + " count down: all entries keep column 0");
    return false;
  }
  if (block.width % kColumnsPerEntry == 0) return true;
  findings.Add(block.record, kColumns, CodeId::kEbrWidth,
               "the columns " + written + " are " + std::to_string(block.width) + " wide: an entry spans 8 columns, and " +
                   std::to_string(block.width % kColumnsPerEntry) + " are left over");
  return false;
}

void CheckRows(const Block& block, Findings& findings) {
  const long long columns = block.entries * kColumnsPerEntry;
  const long long rows = columns / block.width;
  const std::string counted = std::to_string(block.entries) + (block.entries == 1 ? " entry" : " entries");
  if (columns % block.width != 0) {
    return findings.Add(
        block.record, kEntries, CodeId::kEbrRows,
        counted + " do not fill rows of " + std::to_string(block.width) + " columns: the last ones keep column 0");
  }
  const Attribute* const address = Written(block.record, kAddresses);
  if (address == nullptr || SpanOf(RangeOf(*address)) == rows) return;
  findings.Add(block.record, kAddresses, CodeId::kEbrRows,
               "the addresses " + Quoted(address->value) + " are " + std::to_string(SpanOf(RangeOf(*address))) + ", but " +
                   counted + " are " + std::to_string(rows) + (rows == 1 ? " row of " : " rows of ") +
                   std::to_string(block.width) + " columns");
}

void CheckBlock(const Described& record, Findings& findings) {
  const Attribute* const entries = Written(record, kEntries);
  const Attribute* const columns = Written(record, kColumns);
  const Attribute* const address = Written(record, kAddresses);
  if (entries == nullptr) return;
  if ((columns == nullptr) != (address == nullptr)) {
    const std::string missing = columns == nullptr ? kColumns : kAddresses;
    findings.Add(record, columns == nullptr ? kAddresses : kColumns, CodeId::kEbrIncomplete,
                 "there is no " + missing + ": it is 0 for all entries");
  }
  if (columns == nullptr) return;
  descriptions::Value count;
  descriptions::ReadValue(descriptions::Kind::kCount, std::string(entries->value).c_str(), count);
  Block block = {record, count.number, 0, RangeOf(*columns)};
  block.width = SpanOf(block.columns);
  if (CheckColumns(block, findings)) CheckRows(block, findings);
}

}  // namespace

void CheckEbrBlocks(const Records& records, Findings& findings) {
  for (const DescribedDevice& device : records.Devices()) {
    for (const Element& child : device.element->children) {
      if (child.name == "EBR") CheckBlock({device.file, &child}, findings);
    }
  }
}

}  // namespace plddb::check
