#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "command.h"

/// \file
/// The options and arguments of the command. Only command_line.cpp includes CLI11, which takes seconds to compile.

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace tool {

/// An option or an argument of a subcommand. Calls may be chained.
class Option {
 public:
  explicit Option(CLI::Option* option) : option_(option) {}

  Option Type(const std::string& shown) const;  ///< What --help shows for its value.
  Option OneOf(const std::vector<std::string>& values) const;
  /// `complaint` gives what is wrong with a value; nothing when it is right.
  Option Check(const std::function<std::string(const std::string& value)>& complaint) const;
  Option NotEmpty() const;
  Option Required() const;
  Option OneValueEach() const;  ///< Given several times, it takes one value each time.
  Option ValueMayBeMissing() const;
  Option Needs(Option other) const;
  Option Excludes(Option other) const;

  bool IsGiven() const;

 private:
  CLI::Option* option_;
};

/// A subcommand, while it describes its options.
class Subcommand {
 public:
  explicit Subcommand(CLI::App* app) : app_(app) {}

  Option Add(const std::string& name, std::string& value, const std::string& help) const;
  Option Add(const std::string& name, std::vector<std::string>& values, const std::string& help) const;
  Option AddFlag(const std::string& name, bool& value, const std::string& help) const;
  Option Get(const std::string& name) const;   ///< One that was added.
  void Footer(const std::string& text) const;  ///< What --help shows last.

  std::string HelpOfProgram() const;
  /// The help of the subcommand `name`. Throws WrongUsage, with what may have been meant, when there is none.
  std::string HelpOf(const std::string& name) const;

 private:
  CLI::App* app_;
};

/// An option or an argument, as the completion of shells needs it.
struct OptionShape {
  std::string name;                ///< "--db", or "TEXT" of an argument.
  std::vector<std::string> names;  ///< All names of an option: "--help", "-h". Empty for an argument.
  std::string type;
  std::string description;
  int mostValues = 0;  ///< 0 for a flag.
};

struct SubcommandShape {
  std::string name;
  std::string description;
  std::vector<OptionShape> options;
};

/// The command: its subcommands, and the words that it was given.
class Program {
 public:
  Program(const std::string& name, const std::string& description, const std::string& version);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  void Add(const std::string& name, const std::string& description, Run (*add)(Subcommand subcommand));

  /// Reads the words that follow the program's name. Gives the exit code when they ask for help or the version, which is
  /// written then. Throws WrongUsage.
  std::optional<ExitCode> Parse(const std::vector<std::string>& words);

  /// Runs the subcommand that Parse found. Throws WrongUsage when there was none.
  ExitCode RunSubcommand() const;

  SubcommandShape Shape() const;                     ///< The options of the program itself.
  std::vector<SubcommandShape> Subcommands() const;  ///< In the order in which --help shows them.
  /// Throws WrongUsage, with what may have been meant, when there is none.
  SubcommandShape FindSubcommand(const std::string& name) const;

 private:
  std::unique_ptr<CLI::App> app_;
  std::vector<std::pair<CLI::App*, Run>> runs_;
};

}  // namespace tool
