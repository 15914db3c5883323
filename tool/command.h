#pragma once

#include <functional>
#include <stdexcept>
#include <string>

#include "TextForms.h"

/// The command-line tool: one file per subcommand, main.cpp lists them. It uses the public interface of the libraries only.
namespace tool {

class Subcommand;

/// What a run answers to the shell, the same for every subcommand.
enum class ExitCode {
  kFound = 0,     ///< All that was asked for was found.
  kNotFound = 1,  ///< The question was understood; some of it has no answer. Of check, export and merge: there are findings.
  kFailed = 2,    ///< Wrong usage, or data that cannot be read.
};

/// Ends a run with ExitCode::kFailed. what() goes to stderr as it is: one or more lines, the last without its newline.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A Failure for words that make no sense; the user is told where help is.
inline Failure WrongUsage(const std::string& message) {
  return Failure("plddb: error: " + plddb::Printable(message) + "\nRun with --help for more information.");
}

/// What a subcommand does once its arguments are parsed.
using Run = std::function<ExitCode()>;

/// \name The subcommands. Each describes its options to `subcommand` and hands over what to run.
///@{
Run AddIdentify(Subcommand subcommand);
Run AddFind(Subcommand subcommand);
Run AddFits(Subcommand subcommand);
Run AddList(Subcommand subcommand);
Run AddShow(Subcommand subcommand);
Run AddCheck(Subcommand subcommand);
Run AddExport(Subcommand subcommand);
Run AddMerge(Subcommand subcommand);
Run AddImport(Subcommand subcommand);
Run AddHelp(Subcommand subcommand);
///@}

}  // namespace tool
