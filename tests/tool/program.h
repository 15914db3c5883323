#pragma once

#include <string>
#include <vector>

#include "run_tool.h"
#include "tool/command.h"
#include "tool/command_line.h"

/// \file
/// The command within the test program: for what cannot be made happen to it from outside.

inline constexpr struct {
  const char* name;
  tool::Run (*add)(tool::Subcommand subcommand);
} kSubcommands[] = {
    {"identify", tool::AddIdentify}, {"find", tool::AddFind},     {"list", tool::AddList},   {"show", tool::AddShow},
    {"check", tool::AddCheck},       {"export", tool::AddExport}, {"merge", tool::AddMerge}, {"import", tool::AddImport},
    {"help", tool::AddHelp},         {"fits", tool::AddFits},
};

/// The command as main sets it up. A run throws what main would tell.
class Program {
 public:
  Program() : program_("plddb", "Answers questions.", "plddb") {
    for (const auto& [name, add] : kSubcommands) program_.Add(name, "One of the subcommands.", add);
  }

  const tool::Program& Get() const { return program_; }
  void Parse(const std::string& line) { program_.Parse(Words(line)); }
  tool::ExitCode Run() const { return program_.RunSubcommand(); }

 private:
  tool::Program program_;
};
