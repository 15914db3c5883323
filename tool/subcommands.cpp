#include "subcommands.h"

#include <string_view>

#include "command.h"
#include "device_text.h"
#include "suggestions.h"

namespace tool {

std::vector<const CLI::App*> Subcommands(const CLI::App& program) {
  return program.get_subcommands([](const CLI::App*) { return true; });
}

const CLI::App& FindSubcommand(const CLI::App& program, const std::string& name) {
  std::vector<std::string> names;
  for (const CLI::App* const subcommand : Subcommands(program)) {
    if (subcommand->get_name() == name) return *subcommand;
    names.push_back(subcommand->get_name());
  }
  const std::vector<std::string_view> known(names.begin(), names.end());
  throw WrongUsage("no subcommand is named " + Printable(name) + DidYouMean(Suggestions(name, known)));
}

}  // namespace tool
