#include <memory>
#include <string>

#include "command.h"
#include "command_line.h"
#include "standard_streams.h"

namespace tool {

Run AddHelp(Subcommand subcommand) {
  const auto wanted = std::make_shared<std::string>();
  subcommand.Add("COMMAND", *wanted, "The subcommand; without it, what plddb --help says").Type("");
  return [subcommand, wanted] {
    WriteOutput(wanted->empty() ? subcommand.HelpOfProgram() : subcommand.HelpOf(*wanted));
    return ExitCode::kFound;
  };
}

}  // namespace tool
