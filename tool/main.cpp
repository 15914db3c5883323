#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "command.h"
#include "command_line.h"
#include "complete.h"
#include "console.h"
#include "heap.h"
#include "standard_streams.h"

namespace {

constexpr struct {
  const char* name;
  const char* summary;
  tool::Run (*add)(tool::Subcommand subcommand);
} kCommands[] = {
    {"identify", "Identify the devices of a JTAG chain by their IDCODEs.", tool::AddIdentify},
    {"find", "Find a device by name, ordering number, fuse count or another key.", tool::AddFind},
    {"fits", "Find the device that a programming file is for, and whether it fits a chain.", tool::AddFits},
    {"list", "List the families, or the devices of one.", tool::AddList},
    {"show", "Show everything known about a device, with the file and line of each value.", tool::AddShow},
    {"check", "Find mistakes in description files.", tool::AddCheck},
    {"export", "Write a description file in its canonical form.", tool::AddExport},
    {"merge", "Write several description files as one.", tool::AddMerge},
    {"import", "Make descriptions from makers' BSDL files.", tool::AddImport},
    {"help", "Show how to use a subcommand.", tool::AddHelp},
};

int ToStatus(tool::ExitCode code) { return static_cast<int>(code); }

int Main(int argc, char** argv) {
  tool::Program program("plddb", "Answers questions about programmable logic devices from device descriptions.",
                        "plddb " PLDDB_VERSION);
  for (const auto& [name, summary, add] : kCommands) program.Add(name, summary, add);
  const std::vector<std::string> words = tool::StartConsole(argc, argv);
  if (!words.empty() && words.front() == tool::kComplete) {
    return ToStatus(tool::Complete(program, {words.begin() + 1, words.end()}));
  }
  if (const auto answered = program.Parse(words)) return ToStatus(*answered);
  return ToStatus(program.RunSubcommand());
}

/// On purpose: running out of memory ends the program at once. An exception would pass through destructors of JSON values,
/// which allocate memory themselves and must not throw. Nothing is half-written: a command writes only its whole answer.
[[noreturn]] void EndOutOfMemory() {
  constexpr char message[] = "plddb: error: out of memory\n";
  static_cast<void>(std::fwrite(message, 1, sizeof message - 1, stderr));  // stderr has no buffer to fill
  std::_Exit(ToStatus(tool::ExitCode::kFailed));
}

}  // namespace

int main(int argc, char** argv) {
  std::set_new_handler(EndOutOfMemory);
  tool::PreferLargePages();
  try {
    return Main(argc, argv);
  } catch (const tool::Failure& error) {
    tool::WriteMessage(std::string(error.what()) + "\n");
  } catch (const std::exception& error) {
    tool::WriteMessage("plddb: error: " + std::string(error.what()) + "\n");
  }
  return ToStatus(tool::ExitCode::kFailed);
}
