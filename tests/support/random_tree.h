#pragma once

#include <cstdint>

#include "DeviceListOwner.h"

namespace support {

/// A database drawn from a seed, the same on every machine. Every field of every record and every list occurs in it: texts
/// missing, empty, short, long and of any byte; numbers at their limits; lists without, with one and with several records.
DeviceListOwner RandomTree(std::uint64_t seed);

/// The same with every list filled, and with texts of letters alone that an XML file can hold: those of ASCII, line ends and
/// tabs.
DeviceListOwner RandomPrintableTree(std::uint64_t seed);

/// A database whose every field is set and every list filled; its families do not share a value.
DeviceListOwner FilledTree(int families);

/// Gives each device of the database the backups and the explicit column width that a copy of it would have, so that a deep
/// copy of the database has to be equal to it in every field.
void SettleForCopying(DeviceList& database);

}  // namespace support
