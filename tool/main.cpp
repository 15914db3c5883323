#include <CLI/CLI.hpp>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "command.h"
#include "complete.h"
#include "heap.h"
#include "standard_streams.h"
#include "subcommands.h"

namespace {

constexpr struct {
  const char* name;
  const char* summary;
  tool::Run (*add)(CLI::App& app);
} kCommands[] = {
    {"identify", "Name the devices of a JTAG chain by their IDCODEs.", tool::AddIdentify},
    {"find", "Find a device by name, ordering name, fuse count and the like.", tool::AddFind},
    {"list", "List the families, or the devices of one.", tool::AddList},
    {"show", "Show all that is known of a device, and where it is said.", tool::AddShow},
    {"check", "Find what is wrong with description files.", tool::AddCheck},
    {"export", "Write a description file in its canonical form.", tool::AddExport},
    {"merge", "Write several description files as one.", tool::AddMerge},
    {"import", "Make descriptions of makers' BSDL files.", tool::AddImport},
    {"help", "Say how a subcommand is used.", tool::AddHelp},
};

int ToStatus(tool::ExitCode code) { return static_cast<int>(code); }

int Main(int argc, char** argv) {
  CLI::App app("Answers questions about programmable logic devices from device descriptions.", "plddb");
  app.set_version_flag("--version", "plddb " PLDDB_VERSION);
  app.require_subcommand(0, 1);  // what follows is an argument, even if it is called like a subcommand
  std::vector<std::pair<CLI::App*, tool::Run>> runs;
  for (const auto& command : kCommands) {
    CLI::App* subcommand = app.add_subcommand(command.name, command.summary);
    runs.emplace_back(subcommand, command.add(*subcommand));
  }
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (!words.empty() && words.front() == tool::kComplete) {
    return ToStatus(tool::Complete(app, {words.begin() + 1, words.end()}));
  }
  if (!words.empty() && words.front().substr(0, 1) != "-") tool::FindSubcommand(app, words.front());  // for its message
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& answer) {  // --help and --version
    return app.exit(answer);
  } catch (const CLI::ParseError& error) {
    throw tool::WrongUsage(error.what());
  }
  for (const auto& [subcommand, run] : runs) {
    if (subcommand->parsed()) return ToStatus(run());
  }
  throw tool::WrongUsage("a subcommand is required");
}

}  // namespace

int main(int argc, char** argv) {
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
