#include <unistd.h>

#include "Files.h"
#include "console.h"

namespace tool {

std::vector<std::string> StartConsole(int argc, char** argv) { return {argv + 1, argv + argc}; }

bool IsTerminal(int descriptor) { return isatty(descriptor) == 1; }

bool IsColourTerminal(int descriptor) {
  const std::string terminal = plddb::Environment("TERM");
  return !terminal.empty() && terminal != "dumb" && IsTerminal(descriptor);
}

}  // namespace tool
