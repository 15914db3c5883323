#include "standard_streams.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "TextForms.h"
#include "colour.h"
#include "command.h"

namespace tool {

namespace {

constexpr std::size_t kMostInput = std::size_t{1} << 26;  // a device such as /dev/zero would fill the memory

std::string Escaped(std::uint32_t code) {
  return code < 0x100 ? "\\x" + plddb::Hex(code, 2).substr(2) : "\\u" + plddb::Hex(code, 4).substr(2);
}

}  // namespace

std::string ReadAll(std::FILE* stream, const std::string& complaint) {
  std::string text;
  char block[4096];
  while (const std::size_t size = std::fread(block, 1, sizeof block, stream)) {
    text.append(block, size);
    if (text.size() > kMostInput) throw Failure(complaint + ": larger than 64 MiB");
  }
  if (std::ferror(stream)) throw Failure(complaint + ": " + std::strerror(errno));
  return text;
}

std::string ReadInput() { return ReadAll(stdin, "plddb: error: cannot read standard input"); }

void WriteOutput(const std::string& text) {
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (written && std::fflush(stdout) == 0) return;
  throw Failure(std::string("plddb: error: cannot write standard output: ") + std::strerror(errno));
}

void WriteMessage(const std::string& text) {
  const std::string lines = plddb::EscapeUnseen(text, Escaped);
  static_cast<void>(std::fputs(WithPaintedSeverities(lines, kMessages).c_str(), stderr));
}

void WriteProgress(const std::string& text) { static_cast<void>(std::fputs(text.c_str(), stderr)); }

}  // namespace tool
