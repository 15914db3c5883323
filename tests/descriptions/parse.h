#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Descriptions.h"

namespace parse {

/// What `text` describes; faults fail the test, and the database is empty then.
inline DeviceListOwner Parsed(std::string_view text) {
  plddb::LoadResult result = plddb::ParseDescriptions(text, "a.xml");
  for (const plddb::Fault& fault : result.faults) ADD_FAILURE() << plddb::ToString(fault);
  return result.database != nullptr ? std::move(result.database) : MakeDeviceList();
}

/// The faults of `text` as "LINE:COLUMN: TEXT"; a database in addition fails the test.
inline std::vector<std::string> FaultsOf(std::string_view text) {
  const plddb::LoadResult result = plddb::ParseDescriptions(text, "a.xml");
  EXPECT_EQ(result.database == nullptr, !result.faults.empty()) << "a database, or faults";
  std::vector<std::string> faults;
  for (const plddb::Fault& fault : result.faults) {
    EXPECT_EQ(fault.file, "a.xml");
    const bool isOneLine =
        std::none_of(fault.text.begin(), fault.text.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; });
    EXPECT_TRUE(isOneLine) << fault.text;
    faults.push_back(std::to_string(fault.line) + ':' + std::to_string(fault.column) + ": " + fault.text);
  }
  return faults;
}

/// A file with one family that holds `content`, which starts in line 2.
inline std::string InFamily(const std::string& content) {
  return "<DeviceDatabase><Family Name=\"PLD1200\">\n" + content + "</Family></DeviceDatabase>";
}

/// A file with one device: its `attributes` start in line 3, its `content` in line 4 if there are no more line feeds.
inline std::string WithDevice(const std::string& attributes, const std::string& content = "") {
  return InFamily("<Device\n" + attributes + ">\n" + content + "</Device>");
}

/// The first family; throws, and so fails the test, when there is none.
inline FamilyList& FirstFamily(const DeviceListOwner& database) {
  FamilyList* const family = database->GetFamily(0);
  if (family == nullptr) throw std::runtime_error("no family");
  return *family;
}

/// The first device of the first family; throws, and so fails the test, when there is none.
inline DeviceInfo& FirstDevice(const DeviceListOwner& database) {
  DeviceInfo* const device = FirstFamily(database).GetDevice(0);
  if (device == nullptr) throw std::runtime_error("no device");
  return *device;
}

}  // namespace parse
