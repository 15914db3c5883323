#pragma once

#include <string>

#include "Descriptions.h"

namespace tool {

/// "FILE:LINE"; "-" for a line of 0.
std::string Where(const std::string& file, int line);

/// The fields of `element`, which describes a record of a file, as a table; then each kind of record in it as one, and those
/// in these. Each line ends with that of the file: ":LINE".
std::string ElementTables(const plddb::Element& element);

}  // namespace tool
