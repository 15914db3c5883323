#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "command.h"

namespace {

constexpr struct {
  const char* name;
  const char* summary;
  tool::Run (*add)(CLI::App& app);
} kCommands[] = {
    {"identify", "Name the devices of a JTAG chain by their IDCODEs.", tool::AddIdentify},
    {"find", "Find a device by name, ordering name, fuse count and the like.", tool::AddFind},
    {"export", "Write a description file in its canonical form.", tool::AddExport},
    {"merge", "Write several description files as one.", tool::AddMerge},
};

int ToStatus(tool::ExitCode code) { return static_cast<int>(code); }

int Main(int argc, char** argv) {
  CLI::App app("Answers questions about programmable logic devices from device descriptions.", "plddb");
  app.set_version_flag("--version", "plddb " PLDDB_VERSION);
  std::vector<std::pair<CLI::App*, tool::Run>> runs;
  for (const auto& command : kCommands) {
    CLI::App* subcommand = app.add_subcommand(command.name, command.summary);
    runs.emplace_back(subcommand, command.add(*subcommand));
  }
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
  try {
    return Main(argc, argv);
  } catch (const tool::Failure& error) {
    std::cerr << error.what() << '\n';
  } catch (const std::exception& error) {
    std::cerr << "plddb: error: " << error.what() << '\n';
  }
  return ToStatus(tool::ExitCode::kFailed);
}
