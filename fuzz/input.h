#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

/// \file
/// What the fuzz targets share: reading their input, and saying that a rule is broken.

namespace fuzz {

/// Ends the program when a rule does not hold: the fuzzer then keeps the input, and the replay fails.
inline void Check(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "broken rule: %s\n", rule);
  std::abort();
}

/// The input as a text: it ends at the first zero byte.
inline std::string TextOf(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  return bytes.c_str();
}

/// A text cut at its line ends into at most `most` lines; the last one keeps the rest, line ends included.
inline std::vector<std::string> LinesOf(const std::string& text, std::size_t most) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (lines.size() + 1 < most) {
    const auto end = text.find('\n', start);
    if (end == text.npos) break;
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  lines.push_back(text.substr(start));
  return lines;
}

/// The count that the library is asked for: as in the text, but small enough to be quick. Counts beyond all reason stay, as
/// the library refuses these at once.
inline std::string BoundedCount(const std::string& text, int number, int most = 1000) {
  return number > most && number <= 1 << 24 ? std::to_string(most) : text;
}

}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
