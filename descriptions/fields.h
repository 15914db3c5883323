#pragma once

#include <cstddef>
#include <string_view>

#include "DeviceList.h"

/// \file
/// The attributes that the elements of a description file may have: one table for each kind of record. Everything that reads or
/// writes descriptions uses these tables.

namespace plddb::descriptions {

enum class Kind : unsigned char {
  kText,
  kRange,  // a text: "0 to 31"
  kFlag,   // true, false
  kCount,  // 1 to 65535
  kUnsigned8,
  kUnsigned16,
  kUnsigned32,
  kSigned32,
};

/// The value of an attribute: the text of the kinds kText and kRange, the number of the others (a flag is 0 or 1).
struct Value {
  const char* text = nullptr;
  long long number = 0;
};

/// The meaning of a missing attribute.
enum class Need : unsigned char {
  kOptional,
  kBackup,    // defaults to the value of the field in the row above
  kRequired,  // a fault
  kNotEmpty,  // a fault, and so is an empty text
};

/// Attributes that share a line in written files if a start tag needs more than one line.
enum class Group : unsigned char { kNone, kNames, kIdentification, kRegisters, kFuses, kBitstream, kLists };

/// One attribute of an element, and the field that it sets.
struct Field {
  std::string_view name;
  Kind kind;
  Need need;
  void (*set)(void* record, const Value& value);
  Value (*get)(const void* record);  // lends texts; null if the value is one column of a list
  int hexDigits = 0;                 // at least this many; for raw bits, which people read in hexadecimal
  Group group = Group::kNone;        // of this row and those below, up to the next row that has one
};

/// The fields of one kind of record, in the order in which they must be set.
class FieldTable {
 public:
  static constexpr std::size_t kMost = 128;

  template <std::size_t count>
  constexpr explicit FieldTable(const Field (&rows)[count]) : rows_(rows), count_(count) {
    static_assert(count <= kMost);
  }

  const Field* begin() const { return rows_; }
  const Field* end() const { return rows_ + count_; }
  std::size_t size() const { return count_; }
  const Field& operator[](std::size_t i) const { return rows_[i]; }

  /// The position of the field `name`; size() without one.
  std::size_t Find(std::string_view name) const {
    for (std::size_t i = 0; i < count_; ++i) {
      if (rows_[i].name == name) return i;
    }
    return count_;
  }

 private:
  const Field* rows_;
  std::size_t count_;
};

/// \name Records of the format only: the values of an element before they are passed to the library.
///@{
struct EbrBlock {
  const char* Name = "";
  unsigned short BitName = 0;  // number of entries
  const char* Column = nullptr;
  const char* Address = nullptr;
};

struct BScanRecord {
  int DefaultValue = 1;  // as in records that the library's text setter creates
  const char* Controls = "";
};

struct MultibootNumber {
  int Value = 0;
};

struct AdapterNames {
  const char* VendorName = "";
  const char* AdapterName = "";
};

struct Item {  // of a list whose items may be empty
  const char* Name = "";
};

struct Entry {  // of a list that cannot take an empty text
  const char* Name = "";
};
///@}

template <class Record>
const FieldTable& FieldsOf();

// clang-format off
template <> const FieldTable& FieldsOf<DeviceList>();
template <> const FieldTable& FieldsOf<FamilyList>();
template <> const FieldTable& FieldsOf<DeviceInfo>();
template <> const FieldTable& FieldsOf<Package>();
template <> const FieldTable& FieldsOf<AdapterNames>();
template <> const FieldTable& FieldsOf<CControlRegZero>();
template <> const FieldTable& FieldsOf<CControlRegOne>();
template <> const FieldTable& FieldsOf<CPersistent_fuse>();
template <> const FieldTable& FieldsOf<CControlStatus>();
template <> const FieldTable& FieldsOf<CControlVoltage>();
template <> const FieldTable& FieldsOf<CControlEBR>();
template <> const FieldTable& FieldsOf<EbrBlock>();
template <> const FieldTable& FieldsOf<BScanRecord>();
template <> const FieldTable& FieldsOf<MultibootNumber>();
template <> const FieldTable& FieldsOf<Item>();
template <> const FieldTable& FieldsOf<Entry>();
// clang-format on

}  // namespace plddb::descriptions
