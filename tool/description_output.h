#pragma once

#include <string>
#include <vector>

#include "Check.h"
#include "command.h"

namespace tool {

/// What is written as one file, one after the other.
using Descriptions = std::vector<plddb::check::Description>;

/// What a command that writes a description file is asked for by its options.
struct WriteOptions {
  std::string output;  ///< The path; standard output when it is empty.
  bool force = false;  ///< Whether the file may lack values of its sources.
};

/// Adds the options, and `help`, the exit codes and `examples` to the help text.
void AddWriteOptions(Subcommand subcommand, WriteOptions& options, const std::string& help,
                     const std::vector<std::string>& examples);

/// Writes `written` as a description file. Reports on standard error which values of the sources the file lacks, and what
/// lookups in it will not find, by the rules of plddb check. kNotFound when values would be lost that may not be: then nothing
/// is written. A file appears whole or not at all: it is written beside its
/// place and then renamed, so that a failure leaves the old file. Throws Failure.
ExitCode WriteDescriptions(const Descriptions& written, const WriteOptions& options);

/// Writes the text of a description file likewise, and reports nothing.
void WriteDescriptionText(const std::string& text, const std::string& path);

/// Warns on standard error of what lookups in `written` will not find: names and identifiers that an earlier family, device or
/// package answers for.
void ReportShadowed(const Descriptions& written);

}  // namespace tool
