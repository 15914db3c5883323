#include "standard_streams.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "colour.h"
#include "command.h"

namespace tool {

std::string ReadInput() {
  std::string text;
  char block[4096];
  while (const std::size_t size = std::fread(block, 1, sizeof block, stdin)) text.append(block, size);
  if (std::ferror(stdin)) throw Failure(std::string("plddb: error: cannot read standard input: ") + std::strerror(errno));
  return text;
}

void WriteOutput(const std::string& text) {
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (written && std::fflush(stdout) == 0) return;
  throw Failure(std::string("plddb: error: cannot write standard output: ") + std::strerror(errno));
}

void WriteMessage(const std::string& text) {
  static_cast<void>(std::fputs(WithPaintedSeverities(text, STDERR_FILENO).c_str(), stderr));
}

}  // namespace tool
