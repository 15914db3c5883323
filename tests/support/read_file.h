#pragma once

#include <fstream>
#include <iterator>
#include <string>

namespace support {

/// All of a file, byte for byte; empty when it cannot be read.
inline std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace support
