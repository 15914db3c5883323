#pragma once

#include <deque>
#include <string>

#include "descriptions/Descriptions.h"

/// \file
/// Records as elements of a description file: the way back of load.cpp, through the same tables. Attributes come in the order
/// of the tables; those that have their default, or that the loader derives, are left out.

namespace plddb::descriptions {

/// Holds the values that described elements show.
using Texts = std::deque<std::string>;

/// `database`, without its families.
Element DescribeDatabase(const DeviceList& database, Texts& texts);

/// `family`, without its devices.
Element DescribeFamily(FamilyList& family, Texts& texts);

/// `device`; what equals `family`'s is left out.
Element DescribeDevice(FamilyList& family, DeviceInfo& device, Texts& texts);

}  // namespace plddb::descriptions
