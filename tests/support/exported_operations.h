#pragma once

#include <set>
#include <string>
#include <vector>

namespace support {

/// The operations of this kind in tests/exported_operations.txt, in the file's order.
std::vector<std::string> ExportedOperations(const std::string& kind);

/// The names of a class's members in that file that begin with Set or Add: "SetName".
std::set<std::string> ExportedSetters(const std::string& className);

}  // namespace support
