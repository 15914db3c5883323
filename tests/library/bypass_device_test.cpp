#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "DeviceList.h"
#include "tests/support/show.h"

namespace {

using support::Show;
using Modes = std::vector<int>;

constexpr int kModes[] = {INT_MIN, -2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, INT_MAX};

/// The rules from the other side: for each text, the modes in which it makes a bypass device, by the field that holds it.
struct SpecialText {
  const char* text;
  Modes asFamily;
  Modes asCodeName;
  Modes asName;
};

const std::vector<SpecialText>& SpecialTexts() {
  static const std::vector<SpecialText> texts = {
      {"IEEE 1532", {1, 3, 4, 5, 6}, {}, {}}, {"Custom", {2, 3, 4, 5, 6}, {}, {}}, {"JTAG Custom", {2, 3, 4, 5, 6}, {}, {}},
      {"FPGA Loader", {4, 6}, {5}, {}},       {"JTAG-ISC", {}, {2, 4, 6}, {3, 5}}, {"JTAG-STAPL", {}, {6}, {2, 3, 4, 5}},
      {"JTAG-NOP", {}, {3, 6}, {}},           {"JTAG-SVF", {}, {5, 6}, {}},
  };
  return texts;
}

bool Holds(const Modes& modes, int mode) { return std::find(modes.begin(), modes.end(), mode) != modes.end(); }

/// The row of the table for a device with these texts; null for none.
bool Expected(const char* family, const char* codeName, const char* name, int mode) {
  for (const SpecialText& special : SpecialTexts()) {
    if (family != nullptr && family == std::string(special.text) && Holds(special.asFamily, mode)) return true;
    if (codeName != nullptr && codeName == std::string(special.text) && Holds(special.asCodeName, mode)) return true;
    if (name != nullptr && name == std::string(special.text) && Holds(special.asName, mode)) return true;
  }
  return false;
}

/// The modes of kModes in which a device with these texts is a bypass device.
Modes BypassModes(const char* family, const char* codeName, const char* name) {
  FamilyList owner;
  DeviceInfo device(owner);
  device.SetFamily(family);
  device.SetCodeName(codeName);
  device.SetName(name);
  Modes modes;
  for (const int mode : kModes) {
    if (IsBypassDevice(&device, mode)) modes.push_back(mode);
  }
  return modes;
}

/// Texts that differ from a special one in a letter's case, a blank, or a character more or less.
std::vector<std::string> NearMisses(const std::string& special) {
  std::vector<std::string> misses = {special + " ",  " " + special,     special + "x",
                                     special + "\t", special.substr(1), special.substr(0, special.size() - 1)};
  std::string lower = special;
  std::string upper = special;
  for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  for (char& c : upper) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  misses.push_back(lower);
  if (upper != special) misses.push_back(upper);
  for (const char separator : {'-', ' '}) {
    std::string other = special;
    std::replace(other.begin(), other.end(), separator, '_');
    if (other != special) misses.push_back(other);
  }
  return misses;
}

TEST(BypassDevice, EachTextCountsInItsModesAndFieldsOnly) {
  for (const SpecialText& special : SpecialTexts()) {
    EXPECT_EQ(BypassModes(special.text, "other", "other"), special.asFamily) << "family: " << special.text;
    EXPECT_EQ(BypassModes("other", special.text, "other"), special.asCodeName) << "code name: " << special.text;
    EXPECT_EQ(BypassModes("other", "other", special.text), special.asName) << "name: " << special.text;
  }
}

TEST(BypassDevice, AnyTextOfTheModeIsEnough) {
  std::vector<const char*> texts = {nullptr, "", "other"};
  for (const SpecialText& special : SpecialTexts()) texts.push_back(special.text);
  for (const char* const family : texts) {
    for (const char* const codeName : texts) {
      for (const char* const name : texts) {
        Modes expected;
        for (const int mode : kModes) {
          if (Expected(family, codeName, name, mode)) expected.push_back(mode);
        }
        EXPECT_EQ(BypassModes(family, codeName, name), expected)
            << "family: " << Show(family) << ", code name: " << Show(codeName) << ", name: " << Show(name);
      }
    }
  }
}

TEST(BypassDevice, TextsAreComparedWholeAndExactly) {
  for (const SpecialText& special : SpecialTexts()) {
    for (const std::string& miss : NearMisses(special.text)) {
      if (miss == "Custom") continue;  // nearly "JTAG Custom", and special itself
      EXPECT_EQ(BypassModes(miss.c_str(), miss.c_str(), miss.c_str()), Modes()) << "text: " << Show(miss);
    }
  }
}

TEST(BypassDevice, MissingTextsDoNotEndTheSearch) {
  EXPECT_EQ(BypassModes(nullptr, nullptr, nullptr), Modes());
  EXPECT_EQ(BypassModes("IEEE 1532", nullptr, nullptr), Modes({1, 3, 4, 5, 6}));
  EXPECT_EQ(BypassModes(nullptr, "JTAG-STAPL", nullptr), Modes({6}));
  EXPECT_EQ(BypassModes(nullptr, nullptr, "JTAG-STAPL"), Modes({2, 3, 4, 5}));
}

TEST(BypassDevice, NullIsNone) {
  for (const int mode : kModes) EXPECT_FALSE(IsBypassDevice(nullptr, mode)) << "mode: " << mode;
}

TEST(BypassDevice, OnlyThreeTextsOfTheDeviceAreRead) {
  FamilyList owner;
  owner.SetName("Custom");
  owner.SetAliasName("IEEE 1532");
  DeviceInfo device(owner);
  for (const auto set : {&DeviceInfo::SetAliasName, &DeviceInfo::SetVendor, &DeviceInfo::SetAccess,
                         &DeviceInfo::SetArchitecture, &DeviceInfo::SetPON, &DeviceInfo::SetComm}) {
    (device.*set)("Custom");
  }
  device.GetDevicePackage()->NewPackage()->SetPON("JTAG-STAPL");
  for (const int mode : kModes) EXPECT_FALSE(IsBypassDevice(&device, mode)) << "mode: " << mode;
  device.SetFamily("Custom");
  EXPECT_TRUE(IsBypassDevice(&device, 2));
}

}  // namespace
