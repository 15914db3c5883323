// Control registers, persistent fuses and status bits.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include "DeviceInfo.h"
#include "tests/reference/literal_rules.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/device_fields.h"
#include "tests/support/random_texts.h"
#include "tests/support/show.h"

namespace {

using support::Device;
using support::Show;
using Texts = std::vector<std::string>;

template <typename Record>
constexpr bool IsPlainValue() {
  return std::is_default_constructible_v<Record> && std::is_copy_constructible_v<Record> && std::is_copy_assignable_v<Record> &&
         std::has_virtual_destructor_v<Record> && !std::is_base_of_v<LObject, Record>;
}
static_assert(IsPlainValue<CControlRegZero>());
static_assert(IsPlainValue<CControlRegOne>());
static_assert(IsPlainValue<CPersistent_fuse>());
static_assert(IsPlainValue<CControlStatus>());

std::string Value(const std::string& text) { return text; }
std::string Value(int number) { return std::to_string(number); }

/// The values of one field of all records of a list, as text.
template <auto List, auto Member>
Texts Values(const DeviceInfo& device) {
  Texts values;
  for (const auto& record : (device.*List)()) values.push_back(Value(record.*Member));
  return values;
}

template <auto List>
std::string ShowList(const DeviceInfo& device) {
  return Show((device.*List)());
}

using TextSetter = void (DeviceInfo::*)(const char*);

/// One column of a list: the setter that fills it, and the one that creates the list's records.
struct Column {
  const char* name;
  TextSetter set;
  TextSetter create;
  bool isNumber;
  Texts (*values)(const DeviceInfo&);
  std::string (*list)(const DeviceInfo&);
};

using D = DeviceInfo;
constexpr auto kZero = &D::GetlistControlRegZero;
constexpr auto kOne = &D::GetlistControlRegOne;
constexpr auto kFuse = &D::GetlistPersistent_fuse;
constexpr auto kStatus = &D::GetlistControlStatus;

// clang-format off
constexpr Column kCreating[] = {
    {"Reg0Frequency",          &D::SetListControlReg0Frequency,    &D::SetListControlReg0Frequency,    false, &Values<kZero, &CControlRegZero::Frequency>,    &ShowList<kZero>},
    {"Reg1BitName",            &D::SetListControlReg1BitName,      &D::SetListControlReg1BitName,      false, &Values<kOne, &CControlRegOne::BitName>,        &ShowList<kOne>},
    {"Persistent_fuseAddress", &D::SetListPersistent_fuseAddress,  &D::SetListPersistent_fuseAddress,  true,  &Values<kFuse, &CPersistent_fuse::Address>,     &ShowList<kFuse>},
    {"StatusBitName",          &D::SetListControlStatusBitName,    &D::SetListControlStatusBitName,    false, &Values<kStatus, &CControlStatus::BitName>,     &ShowList<kStatus>},
};
constexpr Column kFilling[] = {
    {"Reg0MasterClock",        &D::SetListControlReg0MasterClock,  &D::SetListControlReg0Frequency,    false, &Values<kZero, &CControlRegZero::MasterClock>,  &ShowList<kZero>},
    {"Reg0ClockDivider",       &D::SetListControlReg0ClockDivider, &D::SetListControlReg0Frequency,    false, &Values<kZero, &CControlRegZero::ClockDivider>, &ShowList<kZero>},
    {"Reg1Address",            &D::SetListControlReg1Address,      &D::SetListControlReg1BitName,      true,  &Values<kOne, &CControlRegOne::Address>,        &ShowList<kOne>},
    {"Reg1Column",             &D::SetListControlReg1Column,       &D::SetListControlReg1BitName,      true,  &Values<kOne, &CControlRegOne::Column>,         &ShowList<kOne>},
    {"Persistent_fuseColumn",  &D::SetListPersistent_fuseColumn,   &D::SetListPersistent_fuseAddress,  true,  &Values<kFuse, &CPersistent_fuse::Column>,      &ShowList<kFuse>},
    {"StatusControl",          &D::SetListControlStatusControl,    &D::SetListControlStatusBitName,    false, &Values<kStatus, &CControlStatus::Control>,     &ShowList<kStatus>},
    {"StatusIndex",            &D::SetListControlStatusIndex,      &D::SetListControlStatusBitName,    true,  &Values<kStatus, &CControlStatus::Index>,       &ShowList<kStatus>},
};
// clang-format on

/// Texts whose items are numbers, so that every column stores them alike.
const struct ItemCase {
  const char* text;
  Texts items;
} kItemCases[] = {
    {"REG;100;200 ; 300;", {"100", "200", "300"}},  // a label, and items that are trimmed at both ends
    {";1;2;", {"1", "2"}},                          // the label may be empty
    {";1;2", {"1"}},                                // an item counts only when a ';' follows it
    {"X;;1;", {}},                                  // the first empty segment ends the list
    {"X;1;;2;", {"1"}},                             //
    {"X;1;2;;", {"1", "2"}},                        //
    {"nothing", {}},                                // a label alone
    {"X;", {}},                                     //
    {";", {}},                                      //
    {";;", {}},                                     //
    {"X;1", {}},                                    //
    {"1;2;3;", {"2", "3"}},                         // the label is never delivered
    {"X; \t\n\v\f\r1\t \r\n\v\f;", {"1"}},          //
    {" ;1; ", {"1"}},                               //
};

// Creating setters

TEST(CreatingSetters, AppendOneRecordPerItem) {
  for (const Column& column : kCreating) {
    for (const auto& row : kItemCases) {
      Device device;
      (device.record.*column.set)(row.text);
      EXPECT_EQ(column.values(device.record), row.items) << "column: " << column.name << ", text: " << row.text;
    }
  }
}

TEST(CreatingSetters, DeliverABlanksOnlyItemAsTheEmptyTextOrZero) {
  for (const Column& column : kCreating) {
    Device device;
    (device.record.*column.set)("L;  ;5;");
    EXPECT_EQ(column.values(device.record), (Texts{column.isNumber ? "0" : "", "5"})) << "column: " << column.name;
  }
}

TEST(CreatingSetters, LeaveTheOtherFieldsEmptyAndZero) {
  const struct {
    const Column& column;
    const char* list;
  } cases[] = {
      {kCreating[0], "[{'5', '', ''}, {'6', '', ''}]"},
      {kCreating[1], "[{'5', 0, 0, 0}, {'6', 0, 0, 0}]"},
      {kCreating[2], "[{0, 5, 0}, {0, 6, 0}]"},
      {kCreating[3], "[{'5', '', '', 0}, {'6', '', '', 0}]"},
  };
  for (const auto& row : cases) {
    Device device;
    (device.record.*row.column.set)(";5;6;");
    EXPECT_EQ(row.column.list(device.record), row.list) << "column: " << row.column.name;
  }
}

TEST(CreatingSetters, KeepTextItemsAsTheyAre) {
  Device device;
  device.record.SetListControlReg0Frequency("F;0x10; 2.5 MHz ;\"a\", b;\xE9\xA0;");
  EXPECT_EQ(kCreating[0].values(device.record), (Texts{"0x10", "2.5 MHz", "\"a\", b", "\xE9\xA0"}));
}

TEST(CreatingSetters, ASecondCallLengthensTheList) {
  Device device;
  device.record.SetListControlReg0Frequency("F;10;20;");
  device.record.SetListControlReg0MasterClock("M;a;b;");
  device.record.SetListControlReg0Frequency("F;30;");
  EXPECT_EQ(Show(device.record.GetlistControlRegZero()), "[{'10', 'a', ''}, {'20', 'b', ''}, {'30', '', ''}]");
  device.record.SetListControlReg1BitName("B;x;");
  device.record.SetListControlReg1Address("A;4;");
  device.record.SetListControlReg1BitName("B;y;z;");
  EXPECT_EQ(Show(device.record.GetlistControlRegOne()), "[{'x', 0, 4, 0}, {'y', 0, 0, 0}, {'z', 0, 0, 0}]");
  device.record.SetListControlStatusBitName("S;x;");
  device.record.SetListControlStatusIndex("I;4;");
  device.record.SetListControlStatusBitName("S;y;");
  EXPECT_EQ(Show(device.record.GetlistControlStatus()), "[{'x', '', '', 4}, {'y', '', '', 0}]");
}

TEST(CreatingSetters, ThePersistentFusesAreReplaced) {
  const struct {
    const char* text;
    Texts addresses;
  } cases[] = {
      {"A;7;", {"7"}},  //
      {"A;7;8;9;", {"7", "8", "9"}},
      {"", {}},               // even by a text that yields no item
      {"nothing", {}},        //
      {"A;;7;", {}},          //
      {nullptr, {"1", "2"}},  // null alone leaves them
  };
  for (const auto& row : cases) {
    Device device;
    device.record.SetListPersistent_fuseAddress("A;1;2;");
    device.record.SetListPersistent_fuseColumn("C;3;4;");
    device.record.SetListPersistent_fuseAddress(row.text);
    EXPECT_EQ(kCreating[2].values(device.record), row.addresses) << "text: " << Show(row.text);
    const Texts columns = row.text == nullptr ? Texts{"3", "4"} : Texts(row.addresses.size(), "0");
    EXPECT_EQ(kFilling[4].values(device.record), columns) << "text: " << Show(row.text);
  }
}

TEST(CreatingSetters, NullChangesNothing) {
  for (const Column& column : kCreating) {
    Device device;
    (device.record.*column.set)(nullptr);
    EXPECT_EQ(column.list(device.record), "[]") << "column: " << column.name;
    (device.record.*column.set)(";1;2;");
    (device.record.*column.set)(nullptr);
    EXPECT_EQ(column.values(device.record), (Texts{"1", "2"})) << "column: " << column.name;
  }
}

TEST(CreatingSetters, ATextWithoutItemsAppendsNothing) {
  for (const Column& column : {kCreating[0], kCreating[1], kCreating[3]}) {
    for (const char* const text : {"", "nothing", "X;", "X;;1;", "X;1"}) {
      Device device;
      (device.record.*column.set)(";1;2;");
      (device.record.*column.set)(text);
      EXPECT_EQ(column.values(device.record), (Texts{"1", "2"})) << "column: " << column.name << ", text: " << text;
    }
  }
}

TEST(CreatingSetters, TouchNoOtherList) {
  for (const Column& column : kCreating) {
    Device device;
    (device.record.*column.set)(";1;2;");
    for (const Column& other : kCreating) {
      EXPECT_EQ(other.values(device.record).size(), other.name == column.name ? 2u : 0u)
          << "set: " << column.name << ", list: " << other.name;
    }
  }
}

// Filling setters

TEST(FillingSetters, WriteItemKIntoRecordK) {
  for (const Column& column : kFilling) {
    for (const auto& row : kItemCases) {
      Device device;
      (device.record.*column.create)(";91;92;93;");
      (device.record.*column.set)(";-7;-8;-9;");
      (device.record.*column.set)(row.text);
      Texts expected = {"-7", "-8", "-9"};  // records beyond the last item keep what they had
      std::copy(row.items.begin(), row.items.end(), expected.begin());
      EXPECT_EQ(column.values(device.record), expected) << "column: " << column.name << ", text: " << row.text;
    }
  }
}

TEST(FillingSetters, DeliverABlanksOnlyItemAsTheEmptyTextOrZero) {
  for (const Column& column : kFilling) {
    Device device;
    (device.record.*column.create)(";1;2;");
    (device.record.*column.set)(";8;9;");
    (device.record.*column.set)("L;  ;5;");
    EXPECT_EQ(column.values(device.record), (Texts{column.isNumber ? "0" : "", "5"})) << "column: " << column.name;
  }
}

TEST(FillingSetters, WriteTheirOwnFieldOnly) {
  const struct {
    const Column& column;
    const char* list;
  } cases[] = {
      {kFilling[0], "[{'1', '5', ''}, {'2', '6', ''}]"},
      {kFilling[1], "[{'1', '', '5'}, {'2', '', '6'}]"},
      {kFilling[2], "[{'1', 0, 5, 0}, {'2', 0, 6, 0}]"},
      {kFilling[3], "[{'1', 0, 0, 5}, {'2', 0, 0, 6}]"},
      {kFilling[4], "[{0, 1, 5}, {0, 2, 6}]"},
      {kFilling[5], "[{'1', '5', '', 0}, {'2', '6', '', 0}]"},
      {kFilling[6], "[{'1', '', '', 5}, {'2', '', '', 6}]"},
  };
  for (const auto& row : cases) {
    Device device;
    (device.record.*row.column.create)(";1;2;");
    (device.record.*row.column.set)(";5;6;");
    EXPECT_EQ(row.column.list(device.record), row.list) << "column: " << row.column.name;
  }
}

TEST(FillingSetters, IgnoreItemsBeyondTheLastRecord) {
  for (const Column& column : kFilling) {
    Device device;
    (device.record.*column.create)(";1;2;");
    (device.record.*column.set)(";5;6;7;8;9;10;11;12;");
    EXPECT_EQ(column.values(device.record), (Texts{"5", "6"})) << "column: " << column.name;
  }
}

TEST(FillingSetters, DoNothingOnAnEmptyList) {
  for (const Column& column : kFilling) {
    for (const char* const text : {static_cast<const char*>(nullptr), "", ";1;2;", "nothing"}) {
      Device device;
      (device.record.*column.set)(text);
      EXPECT_EQ(column.list(device.record), "[]") << "column: " << column.name << ", text: " << Show(text);
    }
  }
}

TEST(FillingSetters, NullChangesNothing) {
  for (const Column& column : kFilling) {
    Device device;
    (device.record.*column.create)(";1;2;");
    (device.record.*column.set)(";5;6;");
    (device.record.*column.set)(nullptr);
    EXPECT_EQ(column.values(device.record), (Texts{"5", "6"})) << "column: " << column.name;
  }
}

TEST(FillingSetters, ReadNumbersInBaseTenWithThirtyTwoBits) {
  const struct {
    const char* text;
    Texts numbers;
  } cases[] = {
      {"I; 7 ;x;-2;", {"7", "0", "-2"}},      // no digits: 0
      {";0x10;010;1e3;", {"0", "10", "1"}},   // no other base
      {";+5;- 5;--5;", {"5", "0", "0"}},      // one sign, right before the digits
      {";12abc;3.9;4,5;", {"12", "3", "4"}},  // what follows the digits is ignored
      {";2147483647;-2147483648;0;", {"2147483647", "-2147483648", "0"}},
      {";2147483648;4294967295;4294967296;", {"-2147483648", "-1", "0"}},                       // the low 32 bits
      {";99999999999;-99999999999;-2147483649;", {"1215752191", "-1215752191", "2147483647"}},  //
      {";9223372036854775807;9223372036854775808;99999999999999999999;", {"-1", "-1", "-1"}},   // at most 2^63 - 1
      {";-9223372036854775808;-9223372036854775809;-99999999999999999999;", {"0", "0", "0"}},   // at least -2^63
      {";\xA0;1\xA0;000000000000000000000000000000000007;", {"0", "1", "7"}},                   //
  };
  for (const Column& column : kFilling) {
    if (!column.isNumber) continue;
    for (const auto& row : cases) {
      Device device;
      (device.record.*column.create)(";1;2;3;");
      (device.record.*column.set)(row.text);
      EXPECT_EQ(column.values(device.record), row.numbers) << "column: " << column.name << ", text: " << row.text;
    }
  }
  for (const auto& row : cases) {
    Device device;
    device.record.SetListPersistent_fuseAddress(row.text);
    EXPECT_EQ(kCreating[2].values(device.record), row.numbers) << "text: " << row.text;
  }
}

TEST(ColumnSetters, AgreeWithTheLiteralRulesOnRandomTexts) {
  support::RandomTexts random(20'230);
  for (int round = 0; round < 20'000; ++round) {
    const std::string& text = random.Next();
    const Texts items = reference::SemicolonItems(text);
    Device created;
    created.record.SetListControlStatusBitName(text.c_str());
    EXPECT_EQ(kCreating[3].values(created.record), items) << "text: " << Show(text);
    created.record.SetListControlStatusIndex(text.c_str());
    created.record.SetListPersistent_fuseAddress(text.c_str());
    Texts numbers;
    for (const std::string& item : items) numbers.push_back(std::to_string(reference::ToNumber(item)));
    EXPECT_EQ(kFilling[6].values(created.record), numbers) << "text: " << Show(text);
    EXPECT_EQ(kCreating[2].values(created.record), numbers) << "text: " << Show(text);
  }
}

// A list's own entry as the argument

/// Two records, both with these texts in all their texts.
std::vector<CControlRegZero> ZeroRecords(const char* text) {
  CControlRegZero record;
  record.Frequency = record.MasterClock = record.ClockDivider = text;
  return {record, record};
}

TEST(ColumnSetters, TakeAnEntryOfTheListAsTheArgument) {
  const char* const text = "a label;an item that needs memory of its own;another item that needs memory of its own;";
  const Texts items = {"an item that needs memory of its own", "another item that needs memory of its own"};
  const struct {
    const Column& column;
    std::string CControlRegZero::*argument;
    std::size_t position;
    Texts values;
  } cases[] = {
      {kCreating[0], &CControlRegZero::Frequency, 0, {text, text, items[0], items[1]}},
      {kCreating[0], &CControlRegZero::MasterClock, 1, {text, text, items[0], items[1]}},
      {kFilling[0], &CControlRegZero::MasterClock, 0, items},
      {kFilling[0], &CControlRegZero::MasterClock, 1, items},
      {kFilling[0], &CControlRegZero::Frequency, 0, items},
      {kFilling[1], &CControlRegZero::ClockDivider, 0, items},
      {kFilling[1], &CControlRegZero::ClockDivider, 1, items},
  };
  for (const auto& row : cases) {
    Device device;
    device.record.SetlistControlRegZero(ZeroRecords(text));
    (device.record.*row.column.set)((device.record.GetlistControlRegZero()[row.position].*row.argument).c_str());
    EXPECT_EQ(row.column.values(device.record), row.values) << "column: " << row.column.name << ", entry: " << row.position;
  }
}

TEST(ColumnSetters, TakeATextFromTheMiddleOfAnEntry) {
  Device device;
  device.record.SetlistControlRegZero(ZeroRecords("skipped;label;a;b;"));
  const char* const own = device.record.GetlistControlRegZero()[0].ClockDivider.c_str();
  device.record.SetListControlReg0ClockDivider(own + std::string("skipped;").size());
  EXPECT_EQ(kFilling[1].values(device.record), (Texts{"a", "b"}));
}

TEST(ColumnSetters, TakeABitNameOfTheListAsTheArgument) {
  CControlRegOne one;
  one.BitName = "label;-3;4;";
  CControlStatus status;
  status.BitName = status.Control = status.Text = "label;-3;4;";
  Device device;
  device.record.SetlistControlRegOne({one});
  device.record.SetlistControlStatus({status});
  device.record.SetListControlReg1BitName(device.record.GetlistControlRegOne()[0].BitName.c_str());
  device.record.SetListControlReg1Address(device.record.GetlistControlRegOne()[0].BitName.c_str());
  EXPECT_EQ(Show(device.record.GetlistControlRegOne()), "[{'label;-3;4;', 0, -3, 0}, {'-3', 0, 4, 0}, {'4', 0, 0, 0}]");
  device.record.SetListControlStatusBitName(device.record.GetlistControlStatus()[0].Text.c_str());
  device.record.SetListControlStatusControl(device.record.GetlistControlStatus()[0].Control.c_str());
  device.record.SetListControlStatusIndex(device.record.GetlistControlStatus()[0].BitName.c_str());
  EXPECT_EQ(Show(device.record.GetlistControlStatus()),
            "[{'label;-3;4;', '-3', 'label;-3;4;', -3}, {'-3', '4', '', 4}, {'4', '', '', 0}]");
}

// Whole lists

CControlRegZero RegZero(const char* frequency) {
  CControlRegZero record;
  record.Frequency = frequency;
  record.MasterClock = "clock";
  record.ClockDivider = "divider";
  return record;
}

CControlRegOne RegOne(const char* bitName) {
  CControlRegOne record;
  record.BitName = bitName;
  record.Value = 1;
  record.Address = 2;
  record.Column = -3;
  return record;
}

CPersistent_fuse Fuse(int value) {
  CPersistent_fuse record;
  record.Value = value;
  record.Address = 2;
  record.Column = -3;
  return record;
}

CControlStatus Status(const char* bitName) {
  CControlStatus record;
  record.BitName = bitName;
  record.Control = "control";
  record.Text = "text";
  record.Index = -3;
  return record;
}

TEST(ControlRecords, AreZerosAndEmptyTextsWhenDefaultConstructed) {
  EXPECT_EQ(Show(CControlRegZero()), "{'', '', ''}");
  EXPECT_EQ(Show(CControlRegOne()), "{'', 0, 0, 0}");
  EXPECT_EQ(Show(CPersistent_fuse()), "{0, 0, 0}");
  EXPECT_EQ(Show(CControlStatus()), "{'', '', '', 0}");
}

TEST(WholeListSetters, ReplaceTheListWithEveryField) {
  Device device;
  device.record.SetListControlReg0Frequency(";1;2;3;");
  device.record.SetListControlReg1BitName(";1;2;3;");
  device.record.SetListPersistent_fuseAddress(";1;2;3;");
  device.record.SetListControlStatusBitName(";1;2;3;");
  device.record.SetlistControlRegZero({RegZero("a"), RegZero("b")});
  device.record.SetlistControlRegOne({RegOne("a"), RegOne("b")});
  device.record.SetlistPersistent_fuse({Fuse(7), Fuse(8)});
  device.record.SetlistControlStatus({Status("a"), Status("b")});
  EXPECT_EQ(Show(device.record.GetlistControlRegZero()), "[{'a', 'clock', 'divider'}, {'b', 'clock', 'divider'}]");
  EXPECT_EQ(Show(device.record.GetlistControlRegOne()), "[{'a', 1, 2, -3}, {'b', 1, 2, -3}]");
  EXPECT_EQ(Show(device.record.GetlistPersistent_fuse()), "[{7, 2, -3}, {8, 2, -3}]");
  EXPECT_EQ(Show(device.record.GetlistControlStatus()), "[{'a', 'control', 'text', -3}, {'b', 'control', 'text', -3}]");
}

TEST(WholeListSetters, AnEmptyListKeepsTheOldOne) {
  Device device;
  device.record.SetlistControlRegZero({RegZero("a")});
  device.record.SetlistControlRegOne({RegOne("a")});
  device.record.SetlistPersistent_fuse({Fuse(7)});
  device.record.SetlistControlStatus({Status("a")});
  device.record.SetlistControlRegZero({});
  device.record.SetlistControlRegOne({});
  device.record.SetlistPersistent_fuse({});
  device.record.SetlistControlStatus({});
  EXPECT_EQ(Show(device.record.GetlistControlRegZero()), "[{'a', 'clock', 'divider'}]");
  EXPECT_EQ(Show(device.record.GetlistControlRegOne()), "[{'a', 1, 2, -3}]");
  EXPECT_EQ(Show(device.record.GetlistPersistent_fuse()), "[{7, 2, -3}]");
  EXPECT_EQ(Show(device.record.GetlistControlStatus()), "[{'a', 'control', 'text', -3}]");
}

TEST(WholeListSetters, TheListsOwnContentChangesNothing) {
  Device device;
  device.record.SetlistControlRegZero({RegZero("a"), RegZero("b")});
  device.record.SetlistControlRegOne({RegOne("a"), RegOne("b")});
  device.record.SetlistPersistent_fuse({Fuse(7), Fuse(8)});
  device.record.SetlistControlStatus({Status("a"), Status("b")});
  device.record.SetlistControlRegZero(device.record.GetlistControlRegZero());
  device.record.SetlistControlRegOne(device.record.GetlistControlRegOne());
  device.record.SetlistPersistent_fuse(device.record.GetlistPersistent_fuse());
  device.record.SetlistControlStatus(device.record.GetlistControlStatus());
  EXPECT_EQ(Show(device.record.GetlistControlRegZero()), "[{'a', 'clock', 'divider'}, {'b', 'clock', 'divider'}]");
  EXPECT_EQ(Show(device.record.GetlistControlRegOne()), "[{'a', 1, 2, -3}, {'b', 1, 2, -3}]");
  EXPECT_EQ(Show(device.record.GetlistPersistent_fuse()), "[{7, 2, -3}, {8, 2, -3}]");
  EXPECT_EQ(Show(device.record.GetlistControlStatus()), "[{'a', 'control', 'text', -3}, {'b', 'control', 'text', -3}]");
}

TEST(WholeListSetters, TheCallersListStaysTheCallers) {
  Device device;
  std::vector<CControlStatus> list = {Status("a")};
  device.record.SetlistControlStatus(list);
  EXPECT_EQ(Show(list), "[{'a', 'control', 'text', -3}]");
  list[0].BitName = "changed";
  EXPECT_EQ(Show(device.record.GetlistControlStatus()), "[{'a', 'control', 'text', -3}]");
}

TEST(WholeListSetters, TextSettersGoOnFromAWholeList) {
  Device device;
  device.record.SetlistControlRegOne({RegOne("a"), RegOne("b")});
  device.record.SetListControlReg1Address(";50;60;70;");
  device.record.SetListControlReg1BitName(";c;");
  EXPECT_EQ(Show(device.record.GetlistControlRegOne()), "[{'a', 1, 50, -3}, {'b', 1, 60, -3}, {'c', 0, 0, 0}]");
}

// Running out of memory

constexpr const char* kLongItems =
    "label;a first item that needs memory of its own;a second item that needs memory of its own;third;";
const Texts kItems = {"a first item that needs memory of its own", "a second item that needs memory of its own", "third"};

TEST(CreatingSetters, AFailedAllocationKeepsTheRecordsStoredSoFar) {
  long stored = 0;
  for (long nth = 1;; ++nth) {
    const long live = support::LiveAllocations();
    long failures = 0;
    {
      Device device;
      device.record.SetListControlStatusBitName(";old;");
      const support::FailAllocation failing(nth);
      try {
        device.record.SetListControlStatusBitName(kLongItems);
      } catch (const std::bad_alloc&) {
        failures = 1;
      }
      stored = static_cast<long>(device.record.GetlistControlStatus().size()) - 1;
      for (long k = 0; k <= stored; ++k) {
        const auto position = static_cast<std::size_t>(k);
        const CControlStatus& record = device.record.GetlistControlStatus()[position];
        EXPECT_TRUE(record.BitName == (k == 0 ? "old" : kItems[position - 1].c_str())) << "allocation: " << nth << ", " << k;
      }
    }
    const long left = support::LiveAllocations() - live;
    EXPECT_EQ(left, 0) << "allocation: " << nth;
    if (failures == 0) {
      EXPECT_GT(nth, 3);
      break;
    }
  }
  EXPECT_EQ(stored, 3);
}

TEST(CreatingSetters, ThePersistentFusesStayWhereTheTextCannotBeReadAtAll) {
  const std::string text = ";1;2;" + std::string(100, ' ');  // too long for a copy without an allocation
  Device device;
  device.record.SetListPersistent_fuseAddress(";7;8;9;");
  {
    const support::FailAllocation failing(1);
    EXPECT_THROW(device.record.SetListPersistent_fuseAddress(text.c_str()), std::bad_alloc);
  }
  EXPECT_EQ(kCreating[2].values(device.record), (Texts{"7", "8", "9"}));
}

TEST(FillingSetters, AFailedAllocationKeepsTheItemsStoredSoFar) {
  Device device;
  device.record.SetListControlStatusBitName(";1;2;3;");
  device.record.SetListControlStatusControl(";x;y;z;");
  const Texts old = {"x", "y", "z"};
  const long failures = support::ForEachFailingAllocation([&] { device.record.SetListControlStatusControl(kLongItems); },
                                                          [&] {
                                                            const Texts values = kFilling[5].values(device.record);
                                                            bool isNew = true;
                                                            for (std::size_t k = 0; k < 3; ++k) {
                                                              isNew = isNew && values[k] == kItems[k];
                                                              EXPECT_EQ(values[k], isNew ? kItems[k] : old[k])
                                                                  << "record: " << k;
                                                            }
                                                            device.record.SetListControlStatusControl(";x;y;z;");
                                                          });
  EXPECT_GT(failures, 1);
  EXPECT_EQ(kFilling[5].values(device.record), kItems);
}

TEST(WholeListSetters, AListThatCannotBeCopiedChangesNothing) {
  Device device;
  const std::vector<CControlStatus> list = {Status("a name that needs memory of its own"), Status("b")};
  device.record.SetlistControlStatus({Status("old")});
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { device.record.SetlistControlStatus(list); },
                                                          [&] {
                                                            const long left = support::LiveAllocations();
                                                            EXPECT_EQ(left, live);
                                                            EXPECT_EQ(Show(device.record.GetlistControlStatus()),
                                                                      "[{'old', 'control', 'text', -3}]");
                                                          });
  EXPECT_GT(failures, 0);
  EXPECT_EQ(device.record.GetlistControlStatus().size(), 2u);
}

}  // namespace
