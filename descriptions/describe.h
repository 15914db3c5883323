#pragma once

#include <deque>
#include <string>

#include "descriptions/Descriptions.h"

/// \file
/// Records as elements of a description file: the reverse of load.cpp, with the same tables. Attributes come in the order of
/// the tables; defaults, and values that are derived on loading, are left out.

namespace plddb::descriptions {

/// Holds the values that described elements refer to.
using Texts = std::deque<std::string>;

/// `database`, without its families.
Element DescribeDatabase(const DeviceList& database, Texts& texts);

/// `family`, without its devices.
Element DescribeFamily(FamilyList& family, Texts& texts);

/// `device`; values that equal those of `family` are left out.
Element DescribeDevice(FamilyList& family, DeviceInfo& device, Texts& texts);

}  // namespace plddb::descriptions
