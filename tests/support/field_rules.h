#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "tests/support/allocation_counter.h"
#include "tests/support/exported_operations.h"
#include "tests/support/record_fields.h"

/// \file
/// The rules that hold for each row of a field table. The tests of a record call them with its table.

namespace support {

/// The row of this name; without one, a test failure and the first row.
template <class Record>
const Field<Record>& FieldNamed(const std::vector<Field<Record>>& fields, const std::string& name) {
  for (const auto& field : fields) {
    if (field.name == name) return field;
  }
  ADD_FAILURE() << "no field " << name;
  return fields.front();
}

// The rules. `make()` makes a fresh record and gives a smart pointer that owns it.

/// Each exported member of the class that sets or adds something is named by a row, and the other way round: a field without a
/// row would escape all these rules, that of copies among them.
template <class Record>
void ExpectARowForEachSetter(const std::vector<Field<Record>>& fields, const std::string& className) {
  std::set<std::string> named;
  for (const auto& field : fields) named.insert(field.setters.begin(), field.setters.end());
  EXPECT_EQ(named, ExportedSetters(className));
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

/// Setting one field changes no other, except the one that its row names.
template <class Record, class Make>
void ExpectIndependence(const std::vector<Field<Record>>& fields, Make make) {
  for (const auto& changed : fields) {
    if (IsInternal(changed)) continue;
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

/// The record keeps its own copy, of a text of any length.
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

/// Every field of `copy` holds the value that its row takes from `source`; fields that are never copied have their default.
/// Fields whose name is `except` are the caller's.
template <class Record>
void ExpectCopied(const std::vector<Field<Record>>& fields, Record& source, Record& copy, const std::string& except = "") {
  for (const auto& field : fields) {
    if (IsInternal(field) || field.name == except) continue;
    EXPECT_EQ(Show(field, copy), Show(FieldNamed(fields, field.copiedFrom), source)) << "field: " << field.name;
  }
}

}  // namespace support
