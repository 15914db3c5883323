#pragma once

#include <string>
#include <vector>

#include "Descriptions.h"

namespace tool {

/// What is written as one file, one after the other.
using Sources = std::vector<plddb::Source>;

/// Writes `sources` as a description file to `path`, or to standard output when it is empty. A file appears whole or not at
/// all: it is written beside its place and then renamed, so that a failure leaves the old file. Throws Failure.
void WriteSources(const Sources& sources, const std::string& path);

/// The same for the text of a description file.
void WriteDescriptionText(const std::string& text, const std::string& path);

/// Warns on standard error of what the lookups in the written file will not find: families whose name an earlier one has, and
/// devices whose IDCODE, name or code name finds another device.
void ReportShadowed(const Sources& sources);

}  // namespace tool
