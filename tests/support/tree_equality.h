#pragma once

#include <string>

#include "DeviceList.h"

/// \file
/// Deep equality of trees: every text, number, flag and list that a getter shows. Each answer is "" for equal trees and
/// otherwise names the place of the first difference and both values there, such as "family 0: device 2: Pin: 44 / 48".
///
/// The links from devices to families differ by nature: two devices are compared without them, two families' devices by
/// whether each belongs to its own family. What no getter shows (the scratch list of EBR entries) and the name list of a
/// database, which is an answer and not data, take no part.

namespace support {

/// All fields of a device but its link, as text. Two devices are equal exactly when their descriptions are.
std::string Describe(DeviceInfo& device);

std::string DifferenceOf(DeviceInfo& a, DeviceInfo& b);
std::string DifferenceOf(FamilyList& a, FamilyList& b);
std::string DifferenceOf(DeviceList& a, DeviceList& b);

}  // namespace support
