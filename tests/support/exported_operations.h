#pragma once

#include <string>
#include <vector>

namespace support {

/// The operations of this kind in tests/exported_operations.txt, in the file's order.
std::vector<std::string> ExportedOperations(const std::string& kind);

}  // namespace support
