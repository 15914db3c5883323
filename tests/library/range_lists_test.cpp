// Control voltages, address ranges and multiboot numbers.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
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
using Numbers = std::vector<int>;

static_assert(std::is_copy_constructible_v<CControlVoltage> && std::has_virtual_destructor_v<CControlVoltage>);
static_assert(std::is_copy_constructible_v<CMultiboot_fuses> && !std::is_polymorphic_v<CMultiboot_fuses>);
static_assert(!std::is_base_of_v<LObject, CControlVoltage> && !std::is_base_of_v<LObject, CMultiboot_fuses>);

CControlVoltage Voltage(const char* core, const char* vccj, const char* pins) {
  CControlVoltage voltage;
  voltage.VCCCore = core;
  voltage.VCCJ = vccj;
  voltage.PinList = pins;
  return voltage;
}

TEST(RangeRecords, AreZerosAndEmptyWhenDefaultConstructed) {
  EXPECT_EQ(Show(CControlVoltage()), "{'', '', ''}");
  EXPECT_EQ(Show(CMultiboot_fuses()), "{[], 0, 0, []}");
}

// Voltages

TEST(SetControlVoltageVCCCore, AppendsARecordWithTheWholeText) {
  Device device;
  for (const char* const text : {"1.2", " 3.3 ", "V;1;2;", "", "1.2"}) device.record.SetControlVoltageVCCCore(text);
  EXPECT_EQ(Show(device.record.GetControlVoltage()),
            "[{'1.2', '', ''}, {' 3.3 ', '', ''}, {'V;1;2;', '', ''}, {'', '', ''}, {'1.2', '', ''}]");
}

TEST(SetControlVoltageVCCCore, NullAppendsNothing) {
  Device device;
  device.record.SetControlVoltageVCCCore(nullptr);
  EXPECT_EQ(Show(device.record.GetControlVoltage()), "[]");
}

TEST(ControlVoltage, VCCJAndPinListGoIntoTheFirstRecordHoweverManyThereAre) {
  for (const char* const text : {"3.3", " 3.3 ", "V;1;2;", ""}) {
    Device device;
    device.record.SetControlVoltageVCCCore("1.2");
    device.record.SetControlVoltageVCCCore("1.8");
    device.record.SetControlVoltageVCCJ("old");
    device.record.SetControlVoltagePinList("old");
    device.record.SetControlVoltageVCCJ(text);
    EXPECT_EQ(Show(device.record.GetControlVoltage()), "[{'1.2', " + Show(text) + ", 'old'}, {'1.8', '', ''}]");
    device.record.SetControlVoltagePinList(text);
    EXPECT_EQ(Show(device.record.GetControlVoltage()), "[{'1.2', " + Show(text) + ", " + Show(text) + "}, {'1.8', '', ''}]");
  }
}

TEST(ControlVoltage, VCCJAndPinListDoNothingForNullOrAnEmptyList) {
  Device device;
  device.record.SetControlVoltageVCCJ("3.3");
  device.record.SetControlVoltagePinList("P1");
  EXPECT_EQ(Show(device.record.GetControlVoltage()), "[]");
  device.record.SetControlVoltage({Voltage("1.2", "3.3", "P1")});
  device.record.SetControlVoltageVCCJ(nullptr);
  device.record.SetControlVoltagePinList(nullptr);
  EXPECT_EQ(Show(device.record.GetControlVoltage()), "[{'1.2', '3.3', 'P1'}]");
}

TEST(ControlVoltage, TextsOfTheListAreLegalArguments) {
  const char* const pins = "a list of pins that needs memory of its own";
  Device device;
  device.record.SetControlVoltage({Voltage("1.2", "3.3", pins)});
  const auto& voltages = device.record.GetControlVoltage();
  device.record.SetControlVoltageVCCCore(voltages[0].PinList.c_str());  // the list moves
  device.record.SetControlVoltageVCCJ(voltages[0].PinList.c_str() + 2);
  device.record.SetControlVoltagePinList(voltages[0].PinList.c_str() + 10);
  EXPECT_EQ(voltages[1].VCCCore, pins);
  EXPECT_EQ(voltages[0].VCCJ, pins + 2);
  EXPECT_EQ(voltages[0].PinList, pins + 10);
}

TEST(SetControlVoltage, ReplacesTheListUnlessTheArgumentIsEmpty) {
  Device device;
  for (const char* const core : {"1", "2", "3"}) device.record.SetControlVoltageVCCCore(core);
  device.record.SetControlVoltage({Voltage("a", "b", "c"), Voltage("d", "e", "f")});
  EXPECT_EQ(Show(device.record.GetControlVoltage()), "[{'a', 'b', 'c'}, {'d', 'e', 'f'}]");
  device.record.SetControlVoltage({});
  EXPECT_EQ(Show(device.record.GetControlVoltage()), "[{'a', 'b', 'c'}, {'d', 'e', 'f'}]");
  device.record.SetControlVoltage(device.record.GetControlVoltage());
  EXPECT_EQ(Show(device.record.GetControlVoltage()), "[{'a', 'b', 'c'}, {'d', 'e', 'f'}]");
}

TEST(SetControlVoltage, TheCallersListStaysTheCallers) {
  Device device;
  std::vector<CControlVoltage> list = {Voltage("a", "b", "c")};
  device.record.SetControlVoltage(list);
  EXPECT_EQ(Show(list), "[{'a', 'b', 'c'}]");
  list[0].VCCCore = "changed";
  EXPECT_EQ(Show(device.record.GetControlVoltage()), "[{'a', 'b', 'c'}]");
}

TEST(ControlVoltage, ATextThatCannotBeStoredChangesNothing) {
  const std::string longer(100, 'x');
  const struct {
    const char* name;
    void (DeviceInfo::*set)(const char*);
  } cases[] = {
      {"VCCCore", &DeviceInfo::SetControlVoltageVCCCore},
      {"VCCJ", &DeviceInfo::SetControlVoltageVCCJ},
      {"PinList", &DeviceInfo::SetControlVoltagePinList},
  };
  for (const auto& row : cases) {
    Device device;
    device.record.SetControlVoltage({Voltage("a", "b", "c")});
    const long live = support::LiveAllocations();
    const long failures = support::ForEachFailingAllocation(
        [&] { (device.record.*row.set)(longer.c_str()); },
        [&] {
          const long left = support::LiveAllocations();
          EXPECT_EQ(left, live) << "field: " << row.name;
          EXPECT_EQ(Show(device.record.GetControlVoltage()), "[{'a', 'b', 'c'}]") << "field: " << row.name;
        });
    EXPECT_GT(failures, 0) << "field: " << row.name;
  }
}

// Address ranges

TEST(SetlistAddressRange, ReplacesTheRangesByTheItems) {
  const struct {
    const char* text;
    Texts ranges;
  } cases[] = {
      {"R;A0-A7;B0-B7;", {"A0-A7", "B0-B7"}},
      {"R; A0-A7 ;  ;B 0;", {"A0-A7", "", "B 0"}},  // kept as text, trimmed
      {";a", {}},                                   // an item counts only when a ';' follows it
      {"R;;a;", {}},                                //
      {"R;a;;b;", {"a"}},                           //
      {"nothing", {}},                              //
      {"", {}},                                     // even an empty text empties the list
      {nullptr, {"old", "older"}},                  // null alone leaves it
  };
  for (const auto& row : cases) {
    Device device;
    device.record.SetlistAddressRange(";old;older;");
    device.record.SetlistAddressRange(row.text);
    EXPECT_EQ(device.record.GetlistAddressRange(), row.ranges) << "text: " << Show(row.text);
  }
}

TEST(SetlistAddressRange, ARangeOfTheListIsALegalArgument) {
  for (const char* const range : {"short", "a range that is longer than any short text, and needs memory"}) {
    Device device;
    device.record.SetlistAddressRange((";other;" + std::string(range) + ";").c_str());
    device.record.SetlistAddressRange(device.record.GetlistAddressRange()[1].c_str());  // a label alone
    EXPECT_EQ(device.record.GetlistAddressRange(), Texts()) << "range: " << range;
  }
}

TEST(SetlistAddressRange, AgreesWithTheLiteralRulesOnRandomTexts) {
  support::RandomTexts random(2'505);
  Device device;
  for (int round = 0; round < 20'000; ++round) {
    const std::string& text = random.Next();
    device.record.SetlistAddressRange(text.c_str());
    EXPECT_EQ(device.record.GetlistAddressRange(), reference::SemicolonItems(text)) << "text: " << Show(text);
  }
}

TEST(SetlistAddressRange, AFailedAllocationKeepsTheRangesStoredSoFar) {
  const Texts items = {"a first range that needs memory of its own", "a second range that needs memory of its own"};
  const std::string text = ";" + items[0] + ";" + items[1] + ";";
  Device device;
  device.record.SetlistAddressRange(";old;");
  const long live = support::LiveAllocations();
  bool isFirst = true;
  const long failures = support::ForEachFailingAllocation(
      [&] { device.record.SetlistAddressRange(text.c_str()); },
      [&] {
        const Texts ranges = device.record.GetlistAddressRange();
        const Texts start(items.begin(), items.begin() + static_cast<int>(ranges.size()));
        EXPECT_EQ(ranges, isFirst ? Texts{"old"} : start) << "the private copy comes before anything else";
        isFirst = false;
        device.record.SetlistAddressRange(";old;");
      });
  EXPECT_GT(failures, 2);
  EXPECT_EQ(device.record.GetlistAddressRange(), items);
  device.record.SetlistAddressRange(";old;");
  const long left = support::LiveAllocations();
  EXPECT_EQ(left, live);
}

// Multiboot numbers

/// The two lists that the same kind of text fills, with the longest text that each one reads.
const struct NumberList {
  const char* name;
  void (DeviceInfo::*setText)(const char*);
  void (DeviceInfo::*setList)(Numbers);
  Numbers& (DeviceInfo::*get)();
  std::size_t longest;
} kNumberLists[] = {
    {"CfgAddr", &DeviceInfo::SetMultibootCfgAddr, &DeviceInfo::SetMultibootCfgAddr, &DeviceInfo::GetMultibootCfgAddr, 1'023},
    {"AutoAdd", &DeviceInfo::SetMultibootAutoAdd, &DeviceInfo::SetMultibootAutoAdd, &DeviceInfo::GetMultibootAutoAdd, 63},
};

TEST(MultibootNumbers, AreAppendedTokenByToken) {
  const struct {
    const char* text;
    Numbers numbers;
  } cases[] = {
      {"1;2 3", {1, 2, 3}},
      {"4", {4}},
      {"1\t2\n3;4 5", {1, 2, 3, 4, 5}},
      {" ;\t\n; 1 ;;\n\n2 ; ", {1, 2}},  // runs of delimiters count as one
      {"", {}},                          //
      {" ;\t\n", {}},                    //
      {"x;1;;y", {0, 1, 0}},             // a token without digits is 0
      {"12ab;0x10;010;+3;-4;--5;3.9", {12, 0, 10, 3, -4, 0, 3}},
      {"1,2 3", {1, 3}},              // the comma is no delimiter
      {"1\r2 3\v4 5\f6", {1, 3, 5}},  // nor are these
      {"\r7 \v8 \f9", {7, 8, 9}},     // but they are white space in front of a number
      {"- 5", {0, 5}},                //
      {"2147483647;2147483648;-2147483648;-2147483649", {INT_MAX, INT_MIN, INT_MIN, INT_MAX}},
      {"4294967295;4294967296;99999999999", {-1, 0, 1'215'752'191}},
      {"99999999999999999999;-99999999999999999999", {-1, 0}},
      {"1 1 1", {1, 1, 1}},
  };
  for (const auto& list : kNumberLists) {
    for (const auto& row : cases) {
      Device device;
      (device.record.*list.setText)(row.text);
      EXPECT_EQ((device.record.*list.get)(), row.numbers) << "list: " << list.name << ", text: " << row.text;
    }
  }
}

TEST(MultibootNumbers, ASecondTextAddsToTheFirst) {
  for (const auto& list : kNumberLists) {
    Device device;
    (device.record.*list.setText)("1;2 3");
    (device.record.*list.setText)("4");
    (device.record.*list.setText)("");
    (device.record.*list.setText)(nullptr);
    EXPECT_EQ((device.record.*list.get)(), (Numbers{1, 2, 3, 4})) << "list: " << list.name;
  }
}

/// A text of this length that holds two numbers.
std::string TextOfLength(std::size_t length) { return "7" + std::string(length - 3, ' ') + "89"; }

TEST(MultibootNumbers, ATextThatIsTooLongIsIgnoredAsAWhole) {
  for (const auto& list : kNumberLists) {
    for (const std::size_t length : {4u, 62u, 63u, 64u, 65u, 1'022u, 1'023u, 1'024u, 1'025u, 100'000u}) {
      const bool isRead = length <= list.longest;
      Device device;
      (device.record.*list.setText)("5");
      (device.record.*list.setText)(TextOfLength(length).c_str());
      EXPECT_EQ((device.record.*list.get)(), (isRead ? Numbers{5, 7, 89} : Numbers{5}))
          << "list: " << list.name << ", length: " << length;
    }
  }
}

TEST(MultibootNumbers, AListIsAssigned) {
  for (const auto& list : kNumberLists) {
    for (const Numbers& numbers : {Numbers{3, -1, INT_MAX, INT_MIN}, Numbers{0}, Numbers{}}) {  // an empty one empties
      Device device;
      (device.record.*list.setText)("1 2");
      (device.record.*list.setList)(numbers);
      EXPECT_EQ((device.record.*list.get)(), numbers) << "list: " << list.name << ", numbers: " << Show(numbers);
      (device.record.*list.setList)((device.record.*list.get)());
      EXPECT_EQ((device.record.*list.get)(), numbers) << "list: " << list.name << ", numbers: " << Show(numbers);
    }
  }
}

TEST(MultibootNumbers, ATextAddsToAList) {
  for (const auto& list : kNumberLists) {
    Device device;
    (device.record.*list.setList)({1, 2});
    (device.record.*list.setText)("3");
    EXPECT_EQ((device.record.*list.get)(), (Numbers{1, 2, 3})) << "list: " << list.name;
  }
}

TEST(MultibootNumbers, TheFourFieldsAreIndependent) {
  Device device;
  device.record.SetMultibootCfgAddr("1");
  device.record.SetMultibootAutoAdd("2");
  device.record.SetMultibootChipSelColumn(3);
  device.record.SetMultibootSourceSelColumn(INT_MIN);
  EXPECT_EQ(device.record.GetMultibootCfgAddr(), Numbers{1});
  EXPECT_EQ(device.record.GetMultibootAutoAdd(), Numbers{2});
  EXPECT_EQ(device.record.GetMultibootChipSelColumn(), 3);
  EXPECT_EQ(device.record.GetMultibootSourceSelColumn(), INT_MIN);
  device.record.SetMultibootChipSelColumn(INT_MAX);
  device.record.SetMultibootSourceSelColumn(-1);
  EXPECT_EQ(device.record.GetMultibootChipSelColumn(), INT_MAX);
  EXPECT_EQ(device.record.GetMultibootSourceSelColumn(), -1);
}

TEST(MultibootNumbers, ACallersOwnStrtokWalkSurvives) {
  char words[] = "1;2;3";
  Device device;
  for (char* word = std::strtok(words, ";"); word != nullptr; word = std::strtok(nullptr, ";")) {
    device.record.SetMultibootCfgAddr(word);
    device.record.SetMultibootAutoAdd((std::string(word) + " 10").c_str());
  }
  EXPECT_EQ(device.record.GetMultibootCfgAddr(), (Numbers{1, 2, 3}));
  EXPECT_EQ(device.record.GetMultibootAutoAdd(), (Numbers{1, 10, 2, 10, 3, 10}));
}

TEST(MultibootNumbers, AgreeWithTheLiteralRulesOnRandomTexts) {
  support::RandomTexts random(2'506);
  Device device;
  for (int round = 0; round < 20'000; ++round) {
    const std::string& text = random.Next();
    for (const auto& list : kNumberLists) {
      (device.record.*list.setList)({});
      (device.record.*list.setText)(text.c_str());
      EXPECT_EQ((device.record.*list.get)(), reference::MultibootNumbers(text, list.longest + 1))
          << "list: " << list.name << ", text: " << Show(text);
    }
  }
}

TEST(MultibootNumbers, AFailedAllocationKeepsTheNumbersStoredSoFar) {
  const Numbers whole = {9, 1, 2, 3, 4, 5, 6, 7, 8};
  for (const auto& list : kNumberLists) {
    const long failures = support::ForEachFailingAllocation([&] {
      Device device;
      (device.record.*list.setList)({9});
      try {
        (device.record.*list.setText)("1 2 3 4 5 6 7 8");
      } catch (const std::bad_alloc&) {
        const Numbers& stored = (device.record.*list.get)();
        EXPECT_GE(stored.size(), 1u) << "list: " << list.name;
        EXPECT_TRUE(std::equal(stored.begin(), stored.end(), whole.begin())) << "list: " << list.name;
        throw;
      }
    });
    EXPECT_GT(failures, 2) << "list: " << list.name;
  }
}

}  // namespace
