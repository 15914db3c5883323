#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/support/sample_tree.h"

/// \file
/// The lookups of a database and of a family that compare a name or code name ignoring case, carried over from device to
/// device, and a key exactly: the access mode, or the type of a package. One rule, checked for each of them.

namespace support {

struct CarriedTextLookup {
  std::string name;
  SampleDevice (SampleDevice::*text)(const char*) const;  ///< Gives a device the text that the lookup compares.
  SampleDevice (SampleDevice::*key)(const char*) const;   ///< Gives a device the key.
  std::function<DeviceInfo*(const SampleTree&, const char* key, const char* text)> find;
  bool wholeDatabase;  ///< Otherwise the lookup asks the first family only, and all devices are put there.
};

/// The cases of a table: letter case, order, texts carried over within and across families, the longest text.
void ExpectCarriedTextCases(const CarriedTextLookup& lookup);

/// Every sequence of up to four devices with texts and keys from a small set, against the rule written out literally.
void ExpectCarriedTextRule(const CarriedTextLookup& lookup);

}  // namespace support
