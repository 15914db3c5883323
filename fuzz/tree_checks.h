#pragma once

#include <cstddef>
#include <string>

#include "DeviceList.h"

/// \file
/// What holds for every tree, whatever was done to it.

namespace fuzz {

/// Reads a text to its end (an unterminated or freed one is the sanitizer's to find) and gives its length; 0 for null.
std::size_t Read(const char* text);
std::size_t Read(const std::string& text);

// Each checks a record with all that it holds: counts agree with the elements at the positions, no position outside gives
// anything, texts end, links lead back. Each gives a measure of the record's size.
std::size_t CheckPackage(const Package& package);
std::size_t CheckPackages(const PackageList& packages);
std::size_t CheckDevice(DeviceInfo& device);
std::size_t CheckFamily(FamilyList& family);
std::size_t CheckDatabase(DeviceList& database);

}  // namespace fuzz
