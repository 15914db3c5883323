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

std::set<std::string> ExportedSetters(const std::string& className) {
  std::set<std::string> setters;
  for (const char* const kind : {"allocates", "steady"}) {
    for (const std::string& operation : ExportedOperations(kind)) {
      const std::string member = operation.substr(0, operation.find('('));
      for (const std::string verb : {"::Set", "::Add"}) {
        if (member.compare(0, className.size() + verb.size(), className + verb) == 0) {
          setters.insert(member.substr(className.size() + 2));
        }
      }
    }
  }
  return setters;
}

}  // namespace support
