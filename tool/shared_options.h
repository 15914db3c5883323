#pragma once

#include <string>
#include <vector>

#include "command_line.h"

/// \file
/// The options that several subcommands have, said once.

namespace tool {

inline void AddDatabaseOption(Subcommand subcommand, std::vector<std::string>& databases) {
  subcommand
      .Add("--db", databases,
           "A description file, or a folder of *.xml, in place of all others; +FILE: before them; may be given several times")
      .Type("[+]FILE")
      .OneValueEach();
}

inline void AddOutputOption(Subcommand subcommand, std::string& output) {
  subcommand.Add("--output", output, "Where to write, instead of standard output; replaced only as a whole").Type("OUT");
}

}  // namespace tool
