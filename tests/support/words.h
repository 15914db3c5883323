#pragma once

#include <string>
#include <vector>

namespace support {

/// The parts of `text` between `separator`s; an empty last part is left out.
inline std::vector<std::string> Split(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (auto end = text.find(separator); end != text.npos; end = text.find(separator, start)) {
    parts.push_back(text.substr(start, end - start));
    start = end + separator.size();
  }
  if (start < text.size()) parts.push_back(text.substr(start));
  return parts;
}

}  // namespace support
