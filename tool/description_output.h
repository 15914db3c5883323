#pragma once

#include <string>

#include "DeviceListOwner.h"

namespace tool {

/// Writes `database` as a description file to `path`, or to standard output when it is empty. A file appears whole or not at
/// all: it is written beside its place and then renamed, so that a failure leaves the old file. Throws Failure.
void WriteDatabase(const DeviceList& database, const std::string& path);

/// The same for the text of a description file.
void WriteDescriptionText(const std::string& text, const std::string& path);

/// Tells on standard error what the lookups will not find: families that repeat a name, and devices that an earlier device
/// hides from a lookup by IDCODE, name or code name.
void ReportHidden(const DeviceList& database);

}  // namespace tool
