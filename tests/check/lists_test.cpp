// Findings in list texts are exactly the losses.

#include <gtest/gtest.h>

#include <iterator>
#include <set>

#include "corpus.h"

namespace {

/// Every text of up to `longest` of these characters.
Texts AllTexts(const std::string& characters, std::size_t longest) {
  Texts texts = {""};
  for (std::size_t i = 0; i < texts.size() && texts[i].size() < longest; ++i) {
    const std::string shorter = texts[i];
    for (const char c : characters) texts.push_back(shorter + c);
  }
  return texts;
}

std::string LettersOf(const std::string& text) {
  std::string letters;
  std::copy_if(text.begin(), text.end(), std::back_inserter(letters), [](char c) { return c == 'a' || c == 'b'; });
  return letters;
}

/// A file with a device on its own line for each text; the first is on line 2.
std::string DevicesWith(const std::string& attribute, const Texts& texts) {
  std::string description = "<DeviceDatabase><Family>\n";
  for (const std::string& text : texts) description += "<Device " + attribute + "='" + text + "'/>\n";
  return description + "</Family></DeviceDatabase>\n";
}

std::string ItemsOfRange(const DeviceInfo& device) {
  std::string items;
  for (const std::string& item : device.GetlistAddressRange()) items += item;
  return items;
}

std::string ItemsOfSysIO(const DeviceInfo& device) {
  std::string items;
  for (int i = 0; const char* const item = device.GetSysIO(i); ++i) items += item;
  return items;
}

TEST(CheckLists, FindALossExactlyWhenLettersOfTheTextAreLost) {
  const struct {
    const char* attribute;
    const char* characters;
    std::string (*items)(const DeviceInfo& device);
    bool hasLabel;
  } rows[] = {{"listAddressRange", "; ab", ItemsOfRange, true}, {"SysIOList", "\" ab", ItemsOfSysIO, false}};
  for (const auto& row : rows) {
    const Texts texts = AllTexts(row.characters, 5);
    const std::string description = DevicesWith(row.attribute, texts);
    std::set<int> told;
    for (const auto& finding : CheckText(description)) {
      if (finding.code.substr(0, 5) == "list-") told.insert(finding.place.line);
    }
    const plddb::LoadResult loaded = plddb::ParseDescriptions(description, "devices.xml");
    ASSERT_NE(loaded.database, nullptr) << ToString(loaded.faults.front());
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const bool isLabelled = row.hasLabel && texts[i].find(';') != std::string::npos;
      const std::string label = isLabelled ? texts[i].substr(0, texts[i].find(';')) : "";
      const std::string kept = LettersOf(label) + row.items(*loaded.database->GetFamily(0)->GetDevice(static_cast<int>(i)));
      const bool isWhole = LettersOf(kept) == LettersOf(texts[i]);
      EXPECT_EQ(told.count(static_cast<int>(i) + 2) == 0, isWhole) << "row: " << row.attribute << " " << texts[i];
    }
  }
}

}  // namespace
