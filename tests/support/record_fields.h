#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "tests/support/show.h"

/// \file
/// The machine-readable table of a record's fields. A record's table is a list of rows in declaration order (device_fields.h,
/// family_fields.h). The rules that hold for each row are in field_rules.h; the fuzzer calls the accessors of each row, too.

namespace support {

/// A text with the ordinary pair of accessors. The three values are what a row may change.
template <class Record>
struct TextField {
  void (Record::*set)(const char*);
  char* (Record::*get)() const;
  const char* initial = nullptr;  ///< What the getter of a fresh record answers.
  const char* empty = "";         ///< What the getter answers once the empty text is set.
  bool nullKeeps = true;          ///< Whether setting null keeps the old text; otherwise it stores the empty one.
};

/// A number or a flag with the ordinary pair of accessors: the type of the pair is the width of the field.
template <class Record, class Number>
struct NumberField {
  using Type = Number;
  void (Record::*set)(Number);
  Number (Record::*get)() const;
};

/// A list, a link, or a group of values: filled and shown as a whole.
template <class Record>
struct OtherField {
  std::function<void(Record&, int)> set;  ///< Stores (lists of objects: appends) the sample of this number.
  std::function<std::string(Record&)> show;
  std::string initial;  ///< What a fresh record shows.
};

/// Nothing sets or reads the field.
struct InternalField {};

template <class Access>
inline constexpr bool kIsOrdinary = false;  ///< Whether there is an ordinary pair of accessors, `set` and `get`.
template <class Record>
inline constexpr bool kIsOrdinary<TextField<Record>> = true;
template <class Record, class Number>
inline constexpr bool kIsOrdinary<NumberField<Record, Number>> = true;

template <class Record>
struct Field {
  using Access =
      std::variant<InternalField, TextField<Record>, NumberField<Record, unsigned char>, NumberField<Record, unsigned short>,
                   NumberField<Record, unsigned int>, NumberField<Record, int>, NumberField<Record, bool>, OtherField<Record>>;
  std::string name;
  Access access;
  std::vector<std::string> setters;  ///< The names of all members that change the field; one for an ordinary pair.
  std::string getter;                ///< The name of the getter; "" unless there is an ordinary pair.
  std::string copiedFrom;            ///< The field of the source whose getter a copy takes; "" when it is never copied.
  std::string alsoChanges;           ///< The one other field whose answer may change when this one is set; "" for none.
  int row = 0;                       ///< The position in the table, from 1 on.

  Field CopiedFrom(const char* source) && { return copiedFrom = source, std::move(*this); }
  Field NeverCopied() && { return copiedFrom.clear(), std::move(*this); }
  Field SetBy(std::vector<std::string> members) && { return setters = std::move(members), std::move(*this); }
  Field AlsoChanges(const char* other) && { return alsoChanges = other, std::move(*this); }
};

// Rows of a table.

template <class Record>
Field<Record> Row(const char* name, const char* setter, const char* getter, TextField<Record> text) {
  return {name, text, {setter}, getter, name, ""};
}

template <class Record>
Field<Record> Row(const char* name, const char* setter, void (Record::*set)(const char*), const char* getter,
                  char* (Record::*get)() const) {
  return Row(name, setter, getter, TextField<Record>{set, get});
}

template <class Record, class Number>
Field<Record> Row(const char* name, const char* setter, void (Record::*set)(Number), const char* getter,
                  Number (Record::*get)() const) {
  return {name, NumberField<Record, Number>{set, get}, {setter}, getter, name, ""};
}

/// `set` and `show` are callables of (Record&, int sample) and (Record&).
template <class Record, class Set, class Display>
Field<Record> Row(const char* name, Set set, Display show, const char* initial = "[]") {
  return {name, OtherField<Record>{set, show, initial}, {}, "", name, ""};
}

template <class Record>
Field<Record> InternalRow(const char* name) {
  return {name, InternalField{}, {}, "", "", ""};
}

template <class Record>
std::vector<Field<Record>> Numbered(std::vector<Field<Record>> fields) {
  int row = 0;
  for (auto& field : fields) field.row = ++row;
  return fields;
}

// One field of one record.

template <class Record>
bool IsInternal(const Field<Record>& field) {
  return std::holds_alternative<InternalField>(field.access);
}

/// A value that no other row and no other sample number gives; a flag is true for odd sample numbers.
template <class Number>
Number SampleNumber(int row, int sample) {
  if constexpr (std::is_same_v<Number, bool>) return sample % 2 != 0;
  if constexpr (sizeof(Number) == 1) return static_cast<Number>(row + 85 * (sample % 3));
  if constexpr (sizeof(Number) == 2) return static_cast<Number>(300 * sample + row);
  if constexpr (std::is_signed_v<Number>) return static_cast<Number>(-100'000 * sample - row);
  return static_cast<Number>(0x80000000u + 100'000u * static_cast<unsigned int>(sample) + static_cast<unsigned int>(row));
}

/// The text that the sample of this number stores.
template <class Record>
std::string SampleText(const Field<Record>& field, int sample) {
  return field.name + " no. " + std::to_string(sample);
}

/// Stores the sample of this number (1, 2, ...) in the field; nothing for an internal field.
template <class Record>
void SetSample(const Field<Record>& field, Record& record, int sample) {
  std::visit(
      [&](const auto& access) {
        using Access = std::decay_t<decltype(access)>;
        if constexpr (std::is_same_v<Access, TextField<Record>>) {
          (record.*access.set)(SampleText(field, sample).c_str());
        } else if constexpr (std::is_same_v<Access, OtherField<Record>>) {
          access.set(record, sample);
        } else if constexpr (!std::is_same_v<Access, InternalField>) {
          (record.*access.set)(SampleNumber<typename Access::Type>(field.row, sample));
        }
      },
      field.access);
}

template <class Record>
void SetSamples(const std::vector<Field<Record>>& fields, Record& record, int sample) {
  for (const auto& field : fields) SetSample(field, record, sample);
}

/// The field's value as text; "" for an internal field.
template <class Record>
std::string Show(const Field<Record>& field, Record& record) {
  return std::visit(
      [&](const auto& access) -> std::string {
        using Access = std::decay_t<decltype(access)>;
        if constexpr (std::is_same_v<Access, TextField<Record>>) {
          const char* const text = (record.*access.get)();
          return Show(text);
        } else if constexpr (std::is_same_v<Access, OtherField<Record>>) {
          return access.show(record);
        } else if constexpr (!std::is_same_v<Access, InternalField>) {
          return Show((record.*access.get)());
        } else {
          return "";
        }
      },
      field.access);
}

/// The values of all fields as text, in the table's order.
template <class Record>
std::vector<std::string> ShowAll(const std::vector<Field<Record>>& fields, Record& record) {
  std::vector<std::string> shown;
  for (const auto& field : fields) shown.push_back(Show(field, record));
  return shown;
}

/// Calls `visit(field, access)` for each field with accessors of this kind, such as TextField<DeviceInfo>.
template <class Access, class Record, class Visit>
void ForEachFieldOf(const std::vector<Field<Record>>& fields, Visit visit) {
  for (const auto& field : fields) {
    if (const auto* const access = std::get_if<Access>(&field.access)) visit(field, *access);
  }
}

/// Calls `visit(field, access)` for each number and flag.
template <class Record, class Visit>
void ForEachNumber(const std::vector<Field<Record>>& fields, Visit visit) {
  ForEachFieldOf<NumberField<Record, unsigned char>>(fields, visit);
  ForEachFieldOf<NumberField<Record, unsigned short>>(fields, visit);
  ForEachFieldOf<NumberField<Record, unsigned int>>(fields, visit);
  ForEachFieldOf<NumberField<Record, int>>(fields, visit);
  ForEachFieldOf<NumberField<Record, bool>>(fields, visit);
}

}  // namespace support
