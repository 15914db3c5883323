#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "tests/support/allocation_counter.h"
#include "tests/support/show.h"

/// \file
/// The machine-readable table of a record's fields, and the rules that hold for each of its rows. A record's table is a list
/// of rows in declaration order (device_fields.h, family_fields.h); its tests call the checks below with the table.

namespace support {

/// A text with the ordinary pair of accessors. The three values say what a row does otherwise.
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
struct HiddenField {};

template <class Record>
struct Field {
  using Access =
      std::variant<HiddenField, TextField<Record>, NumberField<Record, unsigned char>, NumberField<Record, unsigned short>,
                   NumberField<Record, unsigned int>, NumberField<Record, int>, NumberField<Record, bool>, OtherField<Record>>;
  int row;
  std::string name;
  Access access;
  std::string copiedFrom;   ///< The field of the source whose getter a copy takes; "" when it is never copied.
  std::string alsoChanges;  ///< The one other field whose answer may change when this one is set; "" for none.

  Field CopiedFrom(const char* source) && { return copiedFrom = source, std::move(*this); }
  Field NeverCopied() && { return copiedFrom.clear(), std::move(*this); }
  Field AlsoChanges(const char* other) && { return alsoChanges = other, std::move(*this); }
};

// Rows of a table.

template <class Record>
Field<Record> Row(int row, const char* name, void (Record::*set)(const char*), char* (Record::*get)() const) {
  return {row, name, TextField<Record>{set, get}, name, ""};
}

template <class Record>
Field<Record> Row(int row, const char* name, TextField<Record> text) {
  return {row, name, text, name, ""};
}

template <class Record, class Number>
Field<Record> Row(int row, const char* name, void (Record::*set)(Number), Number (Record::*get)() const) {
  return {row, name, NumberField<Record, Number>{set, get}, name, ""};
}

/// `set` and `show` are callables of (Record&, int sample) and (Record&).
template <class Record, class Set, class Display>
Field<Record> Row(int row, const char* name, Set set, Display show, const char* initial = "[]") {
  return {row, name, OtherField<Record>{set, show, initial}, name, ""};
}

template <class Record>
Field<Record> HiddenRow(int row, const char* name) {
  return {row, name, HiddenField{}, "", ""};
}

// One field of one record.

template <class Record>
bool IsHidden(const Field<Record>& field) {
  return std::holds_alternative<HiddenField>(field.access);
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

/// Stores the sample of this number (1, 2, ...) in the field; nothing for a hidden field.
template <class Record>
void SetSample(const Field<Record>& field, Record& record, int sample) {
  std::visit(
      [&](const auto& access) {
        using Access = std::decay_t<decltype(access)>;
        if constexpr (std::is_same_v<Access, TextField<Record>>) {
          (record.*access.set)(SampleText(field, sample).c_str());
        } else if constexpr (std::is_same_v<Access, OtherField<Record>>) {
          access.set(record, sample);
        } else if constexpr (!std::is_same_v<Access, HiddenField>) {
          (record.*access.set)(SampleNumber<typename Access::Type>(field.row, sample));
        }
      },
      field.access);
}

template <class Record>
void SetSamples(const std::vector<Field<Record>>& fields, Record& record, int sample) {
  for (const auto& field : fields) SetSample(field, record, sample);
}

/// The field's value as text; "" for a hidden field.
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
        } else if constexpr (!std::is_same_v<Access, HiddenField>) {
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

/// The row of this name; a test failure, and the first row, when there is none.
template <class Record>
const Field<Record>& FieldNamed(const std::vector<Field<Record>>& fields, const std::string& name) {
  for (const auto& field : fields) {
    if (field.name == name) return field;
  }
  ADD_FAILURE() << "no field " << name;
  return fields.front();
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

// The rules. `make()` makes a fresh record and gives a smart pointer that owns it.

template <class Record>
void ExpectRowsInOrder(const std::vector<Field<Record>>& fields, int count) {
  int row = 0;
  for (const auto& field : fields) EXPECT_EQ(field.row, ++row) << "field: " << field.name;
  EXPECT_EQ(row, count);
}

template <class Record, class Make>
void ExpectDefaults(const std::vector<Field<Record>>& fields, Make make) {
  const auto record = make();
  ForEachFieldOf<TextField<Record>>(fields, [&](const auto& field, const auto& text) {
    EXPECT_EQ(Show(field, *record), Show(text.initial)) << "field: " << field.name;
  });
  ForEachNumber(
      fields, [&](const auto& field, const auto& number) { EXPECT_EQ((*record.*number.get)(), 0) << "field: " << field.name; });
  ForEachFieldOf<OtherField<Record>>(fields, [&](const auto& field, const auto& other) {
    EXPECT_EQ(Show(field, *record), other.initial) << "field: " << field.name;
  });
}

template <class Record, class Make>
void ExpectRoundTrips(const std::vector<Field<Record>>& fields, Make make) {
  const auto record = make();
  for (const int sample : {1, 2, 1}) {
    ForEachFieldOf<TextField<Record>>(fields, [&](const auto& field, const auto&) {
      SetSample(field, *record, sample);
      EXPECT_EQ(Show(field, *record), Show(SampleText(field, sample))) << "field: " << field.name << ", sample: " << sample;
    });
    ForEachNumber(fields, [&](const auto& field, const auto& number) {
      using Number = typename std::decay_t<decltype(number)>::Type;
      SetSample(field, *record, sample);
      EXPECT_EQ((*record.*number.get)(), SampleNumber<Number>(field.row, sample))
          << "field: " << field.name << ", sample: " << sample;
    });
  }
}

/// Every width holds its extreme values: all bits set among them.
template <class Record, class Make>
void ExpectFullWidths(const std::vector<Field<Record>>& fields, Make make) {
  const auto record = make();
  ForEachNumber(fields, [&](const auto& field, const auto& number) {
    using Number = typename std::decay_t<decltype(number)>::Type;
    using Limits = std::numeric_limits<Number>;
    const auto allBits = static_cast<Number>(-1);
    for (const Number value : {Limits::max(), allBits, Limits::min(), static_cast<Number>(1), static_cast<Number>(0)}) {
      (*record.*number.set)(value);
      EXPECT_EQ((*record.*number.get)(), value) << "field: " << field.name << ", value: " << Show(value);
    }
  });
}

/// Setting one field changes no other, but for the one that its row names.
template <class Record, class Make>
void ExpectIndependence(const std::vector<Field<Record>>& fields, Make make) {
  for (const auto& changed : fields) {
    if (IsHidden(changed)) continue;
    for (const bool filled : {false, true}) {
      const auto record = make();
      if (filled) SetSamples(fields, *record, 2);
      const auto before = ShowAll(fields, *record);
      SetSample(changed, *record, 3);
      const auto after = ShowAll(fields, *record);
      for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].name == changed.name) {
          EXPECT_NE(after[i], before[i]) << "field: " << changed.name;
        } else if (fields[i].name != changed.alsoChanges) {
          EXPECT_EQ(after[i], before[i]) << "set: " << changed.name << ", changed: " << fields[i].name;
        }
      }
    }
  }
}

template <class Record, class Make>
void ExpectNullTextRule(const std::vector<Field<Record>>& fields, Make make) {
  ForEachFieldOf<TextField<Record>>(fields, [&](const auto& field, const auto& text) {
    const auto record = make();
    (*record.*text.set)(nullptr);
    EXPECT_EQ(Show(field, *record), Show(text.initial)) << "fresh, field: " << field.name;
    for (const char* const old : {"old", ""}) {
      (*record.*text.set)(old);
      const std::string before = Show(field, *record);
      (*record.*text.set)(nullptr);
      EXPECT_EQ(Show(field, *record), text.nullKeeps ? before : Show(text.empty))
          << "old: " << old << ", field: " << field.name;
    }
  });
}

template <class Record, class Make>
void ExpectEmptyTextRule(const std::vector<Field<Record>>& fields, Make make) {
  ForEachFieldOf<TextField<Record>>(fields, [&](const auto& field, const auto& text) {
    const auto record = make();
    (*record.*text.set)("");
    EXPECT_EQ(Show(field, *record), Show(text.empty)) << "fresh, field: " << field.name;
    (*record.*text.set)("old");
    (*record.*text.set)("");
    EXPECT_EQ(Show(field, *record), Show(text.empty)) << "field: " << field.name;
  });
}

/// The record keeps a copy of its own, of a text of any length.
template <class Record, class Make>
void ExpectPrivateCopies(const std::vector<Field<Record>>& fields, Make make) {
  ForEachFieldOf<TextField<Record>>(fields, [&](const auto& field, const auto& text) {
    const auto record = make();
    for (const std::size_t length : {1u, 15u, 16u, 1'023u, 1'024u, 100'000u}) {
      std::string given(length, '\xE9');
      (*record.*text.set)(given.c_str());
      EXPECT_NE((*record.*text.get)(), given.c_str()) << "field: " << field.name << ", length: " << length;
      given.assign(length, 'x');
      EXPECT_EQ(Show(field, *record), Show(std::string(length, '\xE9'))) << "field: " << field.name << ", length: " << length;
    }
  });
}

/// The record's own text, whole or from its middle, is a legal argument, for its own field and for any other.
template <class Record, class Make>
void ExpectOwnTextsAsArguments(const std::vector<Field<Record>>& fields, Make make) {
  ForEachFieldOf<TextField<Record>>(fields, [&](const auto& target, const auto& to) {
    ForEachFieldOf<TextField<Record>>(fields, [&](const auto& source, const auto& from) {
      const auto record = make();
      (*record.*to.set)("to be replaced");
      (*record.*from.set)("a text of its own");
      (*record.*to.set)((*record.*from.get)());
      EXPECT_EQ(Show(target, *record), "'a text of its own'") << "set: " << target.name << ", from: " << source.name;
      (*record.*from.set)("a text of its own");
      (*record.*to.set)((*record.*from.get)() + std::strlen("a text of "));
      EXPECT_EQ(Show(target, *record), "'its own'") << "set: " << target.name << ", from: " << source.name;
    });
  });
}

/// A text that cannot be stored leaves the whole record as it was, and nothing is lost.
template <class Record, class Make>
void ExpectFailedSetsChangeNothing(const std::vector<Field<Record>>& fields, Make make) {
  ForEachFieldOf<TextField<Record>>(fields, [&](const auto& field, const auto& text) {
    const auto record = make();
    const std::string longer(100, 'x');
    (*record.*text.set)("old");
    const auto before = ShowAll(fields, *record);
    const long live = LiveAllocations();
    const long failures = ForEachFailingAllocation([&] { (*record.*text.set)(longer.c_str()); },
                                                   [&] {
                                                     const long left = LiveAllocations();
                                                     EXPECT_EQ(left, live) << "field: " << field.name;
                                                     EXPECT_EQ(ShowAll(fields, *record), before) << "field: " << field.name;
                                                   });
    EXPECT_GT(failures, 0) << "field: " << field.name;
    EXPECT_EQ(Show(field, *record), Show(longer)) << "field: " << field.name;
  });
}

// Copies.

/// Every field of `copy` holds what its row says it takes from `source`; fields that are never copied show their default.
/// Fields whose name is `except` are the caller's.
template <class Record>
void ExpectCopied(const std::vector<Field<Record>>& fields, Record& source, Record& copy, const std::string& except = "") {
  for (const auto& field : fields) {
    if (IsHidden(field) || field.name == except) continue;
    EXPECT_EQ(Show(field, copy), Show(FieldNamed(fields, field.copiedFrom), source)) << "field: " << field.name;
  }
}

}  // namespace support
