#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tool {

/// The subcommands of `program`, in the order in which --help shows them.
std::vector<const CLI::App*> Subcommands(const CLI::App& program);

/// The subcommand `name`. Throws WrongUsage, with what may have been meant, when there is none.
const CLI::App& FindSubcommand(const CLI::App& program, const std::string& name);

}  // namespace tool
