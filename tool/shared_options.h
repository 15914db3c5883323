#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// \file
/// The options that several subcommands have, said once.

namespace tool {

inline CLI::Validator NotEmpty() {
  return CLI::Validator([](const std::string& text) { return text.empty() ? "must not be empty" : ""; }, "");
}

inline void AddDatabaseOption(CLI::App& app, std::vector<std::string>& databases) {
  app.add_option(
         "--db", databases,
         "A description file, or a folder of *.xml, in place of all others; +FILE: before them; may be given several times")
      ->type_name("[+]FILE")
      ->allow_extra_args(false);
}

inline void AddOutputOption(CLI::App& app, std::string& output) {
  app.add_option("--output", output, "Where to write, instead of standard output; replaced only as a whole")->type_name("OUT");
}

}  // namespace tool
