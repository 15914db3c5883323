#pragma once

#include <functional>
#include <stdexcept>
#include <string>

namespace CLI {
class App;
}

/// The command-line tool: one file per subcommand, main.cpp lists them. It uses the public interface of the libraries only.
namespace tool {

/// What a run answers to the shell, the same for every subcommand.
enum class ExitCode {
  kFound = 0,     ///< All that was asked for was found.
  kNotFound = 1,  ///< The question was understood; some of it has no answer. Of check --strict: there are warnings.
  kFailed = 2,    ///< Wrong usage, or data that cannot be read. Of check: there are errors.
};

/// Ends a run with ExitCode::kFailed. what() goes to stderr as it is: one or more lines, the last without its newline.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A Failure for words that make no sense; the user is told where help is.
inline Failure WrongUsage(const std::string& message) {
  return Failure("plddb: error: " + message + "\nRun with --help for more information.");
}

/// What a subcommand does once its arguments are parsed.
using Run = std::function<ExitCode()>;

/// \name The subcommands. Each describes its options to `app` and hands over what to run.
///@{
Run AddIdentify(CLI::App& app);
Run AddFind(CLI::App& app);
Run AddList(CLI::App& app);
Run AddShow(CLI::App& app);
Run AddCheck(CLI::App& app);
Run AddExport(CLI::App& app);
Run AddMerge(CLI::App& app);
Run AddImport(CLI::App& app);
Run AddHelp(CLI::App& app);
///@}

}  // namespace tool
