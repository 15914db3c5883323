#include "Check.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "check_forms.h"
#include "colour.h"
#include "command.h"
#include "command_line.h"
#include "data_files.h"
#include "standard_streams.h"

namespace tool {
namespace {

using plddb::check::Code;
using plddb::check::Finding;
using plddb::check::Severity;

constexpr const char* kFooter =
    R"(The files are checked as one database, in this order. A finding is a line
"FILE:LINE:COLUMN: error|warning[code]: text" on standard output; the place is
that of the value, or of the element that lacks it. An error can never work, or
a value is lost; a warning may be meant so. docs/check.md explains each code.

A comment allows a finding in the start tag of the next element:
<!-- plddb: allow CODE: the reason -->

Exit code: 0 without findings, or with warnings alone; 1 for errors, and for
warnings with --strict; 2 for wrong usage, and for files that cannot be read.

Examples: plddb check --strict my_devices.xml
          plddb check --format sarif descriptions > findings.sarif)";

struct Options {
  std::vector<std::string> files;
  std::vector<std::string> allowed;
  std::string format = "text";
  bool strict = false;
  bool json = false;
  bool listCodes = false;
};

std::vector<plddb::check::Source> Read(const std::vector<std::string>& files) {
  std::vector<plddb::check::Source> sources;
  for (const std::string& file : files) {
    plddb::FileText read = plddb::ReadDescriptionFile(file);
    sources.push_back({file, std::move(read.text), std::move(read.failure)});
  }
  return sources;
}

void DropAllowed(Findings& findings, const std::vector<std::string>& allowed) {
  for (const std::string& name : allowed) {
    const Code* const code = plddb::check::FindCode(name);
    const auto isAllowed = [&](const Finding& finding) { return code != nullptr && finding.code == code->name; };
    findings.erase(std::remove_if(findings.begin(), findings.end(), isAllowed), findings.end());
  }
}

std::string InForm(const Findings& findings, const Options& options) {
  if (options.json || options.format == "json") return FindingJson(findings);
  if (options.format == "sarif") return FindingSarif(findings);
  return WithPaintedSeverities(FindingLines(findings), STDOUT_FILENO);
}

std::size_t Count(const Findings& findings, Severity severity) {
  return static_cast<std::size_t>(
      std::count_if(findings.begin(), findings.end(), [&](const Finding& finding) { return finding.severity == severity; }));
}

std::string Counted(std::size_t count, const std::string& name) {
  return std::to_string(count) + ' ' + name + (count == 1 ? "" : "s");
}

ExitCode RunCheck(const Options& options) {
  if (options.listCodes) {
    WriteOutput(CodeTable());
    return ExitCode::kFound;
  }
  if (options.files.empty()) throw WrongUsage("FILE is required");
  const auto sources = Read(DescriptionFiles(options.files));
  const bool isUnreadable =
      std::any_of(sources.begin(), sources.end(), [](const auto& source) { return !source.failure.empty(); });
  Findings findings = plddb::check::CheckTexts(sources);
  DropAllowed(findings, options.allowed);
  WriteOutput(InForm(findings, options));
  const std::size_t errors = Count(findings, Severity::kError);
  const std::size_t warnings = Count(findings, Severity::kWarning);
  WriteMessage("plddb: " + Counted(errors, "error") + " and " + Counted(warnings, "warning") + " in " +
               Counted(sources.size(), "file") + '\n');
  if (isUnreadable) return ExitCode::kFailed;
  return errors > 0 || (options.strict && warnings > 0) ? ExitCode::kNotFound : ExitCode::kFound;
}

std::string RefuseUnknownCode(const std::string& name) {
  if (plddb::check::FindCode(name) != nullptr) return "";
  return "no finding has the code " + name + "; plddb check --list-codes shows all";
}

}  // namespace

Run AddCheck(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  subcommand.AddFlag("--strict", options->strict, "Warnings make the exit code 1");
  subcommand.Add("--allow", options->allowed, "Leave out findings of this code; may be given several times")
      .Type("CODE")
      .Check(RefuseUnknownCode)
      .OneValueEach();
  const Option format = subcommand.Add("--format", options->format, "text, json, or sarif (SARIF 2.1.0)")
                            .Type("FORMAT")
                            .OneOf({"text", "json", "sarif"});
  subcommand
      .AddFlag("--json", options->json, "As --format json: an array of {file, line, column, severity, code, text, related}")
      .Excludes(format);
  subcommand.AddFlag("--list-codes", options->listCodes, "Show what each code means, and check nothing");
  subcommand.Add("FILE", options->files, "Description files, or folders of *.xml").Type("");
  subcommand.Footer(kFooter);
  return [options] { return RunCheck(*options); };
}

}  // namespace tool
