#include "tests/support/exported_operations.h"

#include <fstream>

namespace support {

std::vector<std::string> ExportedOperations(const std::string& kind) {
  std::ifstream file(PLDDB_TEST_DIR "/exported_operations.txt");
  std::vector<std::string> operations;
  for (std::string line; std::getline(file, line);) {
    const auto end = line.find(' ');
    if (line.substr(0, end) == kind) operations.push_back(line.substr(line.find_first_not_of(' ', end)));
  }
  return operations;
}

}  // namespace support
