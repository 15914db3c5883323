#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "check/list_readings.h"
#include "check/rules.h"
#include "descriptions/TextForms.h"
#include "descriptions/list_columns.h"

namespace plddb::check {
namespace {

using descriptions::FindColumn;
using descriptions::ListColumn;

struct Bit {
  std::string_view name;
  int address = 0;
  int column = 0;
  int index = 0;
};

Bit ToBit(const CControlRegOne& record) { return {record.BitName, record.Address, record.Column, 0}; }
Bit ToBit(const CPersistent_fuse& record) { return {"", record.Address, record.Column, 0}; }
Bit ToBit(const CControlStatus& record) { return {record.BitName, 0, 0, record.Index}; }
Bit ToBit(const CControlEBR& record) { return {record.BitName, record.Address, record.Column, 0}; }

template <class Record>
std::vector<Bit> ToBits(const std::vector<Record>& records) {
  std::vector<Bit> bits;
  bits.reserve(records.size());
  for (const Record& record : records) bits.push_back(ToBit(record));
  return bits;
}

// --- Where their fields are written -----------------------------------------------------------------------------------------

/// Where the bits of a list are written: first those of the texts in `around`, then those of the elements in it.
class BitPlaces {
 public:
  BitPlaces(const Described& around, std::string_view name, std::size_t count) : around_(around), name_(name) {
    for (const Element& child : around.element->children) {
      if (child.name == name) elements_.push_back(&child);
    }
    byTexts_ = count - elements_.size();
  }

  /// The name of the elements.
  const std::string& Name() const { return name_; }

  /// The attribute that gives a field to the bit at `i`; null where it is left out, and if bits have no such field.
  const Attribute* Find(const ListColumn* column, std::size_t i) {
    if (column == nullptr) return nullptr;
    if (i >= byTexts_) return FindAttribute(*elements_[i - byTexts_], column->field);
    return i < ItemCount(column->text) ? Written(around_, column->text) : nullptr;
  }

  const Described& Around() const { return around_; }

 private:
  std::size_t ItemCount(std::string_view text) {
    const auto [count, isNew] = itemCounts_.try_emplace(text, 0);
    const Attribute* const written = Written(around_, text);
    if (isNew && written != nullptr) count->second = ReadSemicolonList(std::string(written->value)).items.size();
    return count->second;
  }

  const Described& around_;
  const std::string name_;
  std::vector<const Element*> elements_;
  std::size_t byTexts_ = 0;
  std::unordered_map<std::string_view, std::size_t> itemCounts_;
};

// --- The rules --------------------------------------------------------------------------------------------------------------

/// Finds bits of which an earlier one has the same value of one kind.
class Values {
 public:
  Values(BitPlaces& places, Findings& findings) : places_(places), findings_(findings) {}

  /// `written` gives the value of the bit at `i`; null where it is left out.
  void Check(const std::string& value, std::size_t i, const Attribute* written, const std::string& kind) {
    if (written == nullptr) return;
    const auto [first, isFirst] = firsts_.try_emplace(value, i);
    if (isFirst) return;
    findings_.Add(places_.Around(), *written, CodeId::kBitShared,
                  "the " + kind + " of " + places_.Name() + " " + std::to_string(i + 1) + ", " + value + ", is that of " +
                      places_.Name() + " " + std::to_string(first->second + 1) + ", too");
  }

 private:
  BitPlaces& places_;
  Findings& findings_;
  std::unordered_map<std::string, std::size_t> firsts_;
};

void CheckBits(const Described& around, std::string_view element, const std::vector<Bit>& bits, Findings& findings) {
  if (bits.size() < 2) return;
  const ListColumn* const nameColumn = FindColumn(element, "BitName");
  const ListColumn* const addressColumn = FindColumn(element, "Address");
  const ListColumn* const columnColumn = FindColumn(element, "Column");
  const ListColumn* const indexColumn = FindColumn(element, "Index");
  BitPlaces places(around, element, bits.size());
  Values names(places, findings);
  Values indexes(places, findings);
  Values spots(places, findings);
  for (std::size_t i = 0; i < bits.size(); ++i) {
    const Bit& bit = bits[i];
    const Attribute* const address = places.Find(addressColumn, i);
    const Attribute* const column = places.Find(columnColumn, i);
    if (!bit.name.empty()) names.Check(Quoted(bit.name), i, places.Find(nameColumn, i), "name");
    indexes.Check(std::to_string(bit.index), i, places.Find(indexColumn, i), "index");
    spots.Check("address " + std::to_string(bit.address) + " and column " + std::to_string(bit.column), i,
                address == nullptr ? column : address, "place");
  }
}

/// Only blocks that list their entries: those of numbered blocks are derived.
void CheckBlocks(const DescribedDevice& device, Findings& findings) {
  const std::vector<CControlEBRList>& blocks = device.device->GetlistControlEBR();
  std::size_t position = 0;
  for (const Element& child : device.element->children) {
    if (child.name != "EBR") continue;
    const std::vector<CControlEBR>& entries = blocks[position++].Entries;
    if (FindAttribute(child, descriptions::CreatorOf("Entry")) != nullptr) continue;
    CheckBits({device.file, &child}, "Entry", ToBits(entries), findings);
  }
}

}  // namespace

void CheckControlBits(const Records& records, Findings& findings) {
  for (const DescribedDevice& device : records.Devices()) {
    CheckBits(device, "ControlRegOne", ToBits(device.device->GetlistControlRegOne()), findings);
    CheckBits(device, "Persistent_fuse", ToBits(device.device->GetlistPersistent_fuse()), findings);
    CheckBits(device, "ControlStatus", ToBits(device.device->GetlistControlStatus()), findings);
    CheckBlocks(device, findings);
  }
}

}  // namespace plddb::check
