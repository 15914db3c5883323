#pragma once

#include <CLI/CLI.hpp>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tool/command.h"

/// \file
/// The command within the test program: for what cannot be made happen to it from outside.

inline constexpr struct {
  const char* name;
  tool::Run (*add)(CLI::App& app);
} kSubcommands[] = {
    {"identify", tool::AddIdentify}, {"find", tool::AddFind},     {"list", tool::AddList},   {"show", tool::AddShow},
    {"check", tool::AddCheck},       {"export", tool::AddExport}, {"merge", tool::AddMerge}, {"help", tool::AddHelp},
};

/// The command as main sets it up. A run throws what main would tell.
class Program {
 public:
  Program() : app_("Answers questions.", "plddb") {
    for (const auto& [name, add] : kSubcommands) {
      CLI::App* const subcommand = app_.add_subcommand(name, "One of the subcommands.");
      runs_.emplace_back(subcommand, add(*subcommand));
    }
  }

  const CLI::App& app() const { return app_; }
  void Parse(const std::string& line) { app_.parse(line); }

  tool::ExitCode Run() const {
    for (const auto& [subcommand, run] : runs_) {
      if (subcommand->parsed()) return run();
    }
    throw std::logic_error("no subcommand");
  }

 private:
  CLI::App app_;
  std::vector<std::pair<CLI::App*, tool::Run>> runs_;
};
