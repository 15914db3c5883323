#include <CLI/CLI.hpp>
#include <memory>

#include "command.h"
#include "standard_streams.h"
#include "subcommands.h"

namespace tool {
namespace {

/// CLI11 would answer for the subcommand that was given, which is this one.
std::string HelpOf(const CLI::App& program) {
  return program.get_formatter()->make_help(&program, program.get_name(), CLI::AppFormatMode::Normal);
}

}  // namespace

Run AddHelp(CLI::App& app) {
  const auto wanted = std::make_shared<std::string>();
  app.add_option("COMMAND", *wanted, "The subcommand; without it, what plddb --help says")->type_name("");
  return [&app, wanted] {
    const CLI::App& program = *app.get_parent();
    const CLI::App* const subcommand = wanted->empty() ? nullptr : &FindSubcommand(program, *wanted);
    WriteOutput(subcommand == nullptr ? HelpOf(program) : subcommand->help(program.get_name()));
    return ExitCode::kFound;
  };
}

}  // namespace tool
