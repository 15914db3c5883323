#include "tests/support/carried_text.h"

#include <gtest/gtest.h>

#include "tests/reference/lookup_rules.h"
#include "tests/support/show.h"

namespace support {
namespace {

using reference::CarriedDevice;
using Families = std::vector<std::vector<CarriedDevice>>;

struct CarriedTextCase {
  const char* what;
  Families families;
  const char* key;
  const char* text;
  int found;  // counted through all families from 0; -1 for none
};

std::vector<CarriedTextCase> Cases() {
  static const std::string longest(1'023, 'x');
  static const std::string longestUpper(1'023, 'X');
  static const std::string tooLong(1'024, 'x');
  static const std::string muchTooLong(5'000, 'x');
  return {
      {"no device", {}, "X", "A", -1},
      {"the text ignoring case", {{{"b", "X"}, {"Dev-1", "X"}}}, "X", "dEV-1", 1},
      {"the whole text", {{{"AB", "X"}, {"A", "X"}}}, "X", "A", 1},
      {"no part of it", {{{"A", "X"}}}, "X", "AB", -1},
      {"letters are ASCII", {{{"\xE9", "X"}}}, "X", "\xC9", -1},
      {"the key exactly", {{{"A", "x"}, {"A", "X "}, {"A", "XX"}, {"A", ""}, {"A", "X"}}}, "X", "A", 4},
      {"no key", {{{"A", nullptr}, {"A", "X"}}}, "X", "A", 1},
      {"no key is not the empty one", {{{"A", nullptr}, {"A", ""}}}, "", "A", 1},
      {"the first of two", {{{"B", "X"}, {"A", "X"}, {"a", "X"}}}, "X", "A", 1},
      {"the first family's", {{{"B", "X"}}, {{"A", "X"}}, {{"A", "X"}}}, "X", "A", 1},
      {"both in one device", {{{"A", "Y"}, {"B", "X"}}}, "X", "A", -1},
      {"a later device of the text has the key", {{{"A", "Y"}, {"A", "X"}}}, "X", "A", 1},

      {"the empty text", {{{"A", "X"}, {"", "X"}}}, "X", "", 1},
      {"the first text is empty", {{{nullptr, "Y"}, {nullptr, "X"}}}, "X", "", 1},
      {"the first text is no other", {{{nullptr, "X"}}}, "X", "A", -1},
      {"a device without text is compared under the last one", {{{"A", "Y"}, {nullptr, "X"}}}, "X", "a", 1},
      {"... not under the next one", {{{nullptr, "X"}, {"A", "X"}}}, "X", "A", 1},
      {"... nor under the empty one", {{{"A", "Y"}, {nullptr, "X"}}}, "X", "", -1},
      {"it is carried any number of times", {{{"A", "Y"}, {nullptr, "Y"}, {nullptr, nullptr}, {nullptr, "X"}}}, "X", "A", 3},
      {"the last text replaces the one before", {{{"A", "Y"}, {"B", "Y"}, {nullptr, "X"}}}, "X", "B", 2},
      {"... which is gone", {{{"A", "Y"}, {"B", "Y"}, {nullptr, "X"}}}, "X", "A", -1},
      {"an empty text replaces it as well", {{{"A", "Y"}, {"", "Y"}, {nullptr, "X"}}}, "X", "", 2},
      {"... and is carried instead", {{{"A", "Y"}, {"", "Y"}, {nullptr, "X"}}}, "X", "A", -1},
      {"a device without key passes its text on", {{{"A", nullptr}, {nullptr, "X"}}}, "X", "A", 1},
      {"texts are carried across families", {{{"A", "Y"}}, {{nullptr, "X"}}}, "X", "A", 1},
      {"... and across empty ones", {{{"A", "Y"}}, {}, {}, {{nullptr, "X"}}}, "X", "A", 1},
      {"... and replaced there", {{{"A", "Y"}}, {{"B", "Y"}}, {{nullptr, "X"}}}, "X", "A", -1},

      {"the longest text", {{{longest.c_str(), "X"}}}, "X", longestUpper.c_str(), 0},
      {"the longest text is carried", {{{longest.c_str(), "Y"}, {nullptr, "X"}}}, "X", longestUpper.c_str(), 1},
      {"a longer text matches nothing", {{{tooLong.c_str(), "X"}}}, "X", tooLong.c_str(), -1},
      {"however long", {{{muchTooLong.c_str(), "X"}}}, "X", muchTooLong.c_str(), -1},
      {"a longer text is not cut", {{{tooLong.c_str(), "X"}}}, "X", longest.c_str(), -1},
      {"nor is a longer argument", {{{longest.c_str(), "X"}}}, "X", tooLong.c_str(), -1},
      {"a longer text is not empty", {{{tooLong.c_str(), "X"}}}, "X", "", -1},
      {"nor is a longer argument", {{{"", "X"}, {nullptr, "X"}}}, "X", tooLong.c_str(), -1},
      {"a longer text is carried and matches nothing", {{{tooLong.c_str(), "Y"}, {nullptr, "X"}}}, "X", tooLong.c_str(), -1},
      {"it replaces the text before", {{{"A", "Y"}, {tooLong.c_str(), "Y"}, {nullptr, "X"}}}, "X", "A", -1},
      {"and is replaced", {{{tooLong.c_str(), "Y"}, {"A", "Y"}, {nullptr, "X"}}}, "X", "A", 2},
  };
}

std::string Described(const Families& families) {
  std::string shown;
  for (const auto& family : families) {
    shown += "(";
    for (const CarriedDevice& device : family) shown += " " + Show(device.text) + "+" + Show(device.key);
    shown += " )";
  }
  return shown;
}

/// The devices in a tree that the lookup can be asked about, and each at its position.
class CarriedTree {
 public:
  CarriedTree(const CarriedTextLookup& lookup, const Families& families) : lookup_(lookup) {
    for (const auto& family : families) {
      for (const CarriedDevice& device : family) Add(device);
      if (lookup.wholeDatabase) tree_.AddFamily();
    }
  }

  /// The position of the device that the lookup finds; -1 when it finds none.
  int Find(const char* key, const char* text) const {
    const DeviceInfo* const found = lookup_.find(tree_, key, text);
    int position = static_cast<int>(devices_.size()) - 1;
    while (position >= 0 && devices_[static_cast<std::size_t>(position)] != found) --position;
    EXPECT_EQ(found == nullptr, position < 0) << lookup_.name << " found a device of another tree";
    return position;
  }

 private:
  void Add(const CarriedDevice& described) {
    const SampleDevice device = tree_.AddDevice();
    (device.*lookup_.text)(described.text);
    (device.*lookup_.key)(described.key);
    devices_.push_back(device);
  }

  const CarriedTextLookup& lookup_;
  SampleTree tree_;
  std::vector<const DeviceInfo*> devices_;
};

/// Compares the lookup with the literal rule for these devices, half of them in a second family.
void ExpectRuleFor(const CarriedTextLookup& lookup, const std::vector<CarriedDevice>& devices) {
  Families families(2);
  for (std::size_t i = 0; i < devices.size(); ++i) families[i < devices.size() / 2 ? 0 : 1].push_back(devices[i]);
  const CarriedTree tree(lookup, families);
  for (const char* const text : {"", "a", "B"}) {
    EXPECT_EQ(tree.Find("X", text), reference::FirstByCarriedText(devices, "X", text))
        << lookup.name << ", text: " << Show(text) << ", devices: " << Described(families);
  }
}

void ExpectRuleForAll(const CarriedTextLookup& lookup, std::vector<CarriedDevice>& devices, std::size_t longest) {
  ExpectRuleFor(lookup, devices);
  if (devices.size() == longest) return;
  for (const char* const text : {static_cast<const char*>(nullptr), "", "A", "b"}) {
    for (const char* const key : {static_cast<const char*>(nullptr), "X", "Y"}) {
      devices.push_back({text, key});
      ExpectRuleForAll(lookup, devices, longest);
      devices.pop_back();
    }
  }
}

}  // namespace

void ExpectCarriedTextCases(const CarriedTextLookup& lookup) {
  for (const CarriedTextCase& row : Cases()) {
    const CarriedTree tree(lookup, row.families);
    EXPECT_EQ(tree.Find(row.key, row.text), row.found) << lookup.name << ", row: " << row.what;
    EXPECT_EQ(tree.Find(row.key, row.text), row.found) << lookup.name << ", asked again, row: " << row.what;
  }
}

void ExpectCarriedTextRule(const CarriedTextLookup& lookup) {
  std::vector<CarriedDevice> devices;
  ExpectRuleForAll(lookup, devices, 4);
}

}  // namespace support
