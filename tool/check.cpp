#include "Check.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "colour.h"
#include "command.h"
#include "command_line.h"
#include "databases.h"
#include "device_text.h"
#include "json_text.h"
#include "standard_streams.h"
#include "text_table.h"

namespace tool {
namespace {

using plddb::check::Code;
using plddb::check::Finding;
using plddb::check::Severity;

constexpr const char* kFooter =
    R"(Each file is checked by itself. A finding is a line "FILE:LINE:COLUMN: error|warning[code]: text" on
standard output; the place is that of the value, or of the element that lacks it. An error is what
can never work or is lost, a warning what may be meant so.

Exit code: 0 without findings, or with warnings alone; 1 for warnings with --strict; 2 for errors,
for wrong usage, and for files that cannot be read.

Example: plddb check --strict my_devices.xml)";

struct Options {
  std::vector<std::string> files;
  std::vector<std::string> allowed;
  bool strict = false;
  bool json = false;
  bool listCodes = false;
};

const char* NameOf(Severity severity) { return severity == Severity::kError ? "error" : "warning"; }

std::vector<Finding> CheckFile(const std::string& file) {
  plddb::FileText read = plddb::ReadDescriptionFile(file);
  return plddb::check::CheckTexts({{file, std::move(read.text), std::move(read.failure)}});
}

void DropAllowed(std::vector<Finding>& findings, const std::vector<std::string>& allowed) {
  for (const std::string& name : allowed) {
    const Code* const code = plddb::check::FindCode(name);
    const auto isAllowed = [&](const Finding& finding) { return code != nullptr && finding.code == code->name; };
    findings.erase(std::remove_if(findings.begin(), findings.end(), isAllowed), findings.end());
  }
}

// --- The output -------------------------------------------------------------------------------------------------------------

std::string Lines(const std::vector<Finding>& findings) {
  std::string lines;
  for (const Finding& finding : findings) {
    lines += Printable(finding.place.file) + ':' + std::to_string(finding.place.line) + ':' +
             std::to_string(finding.place.column) + ": " + NameOf(finding.severity) + "[" + std::string(finding.code) +
             "]: " + finding.text + '\n';
  }
  return lines;
}

std::string JsonReport(const std::vector<Finding>& findings) {
  Json report = Json::array();
  for (const Finding& finding : findings) {
    report.push_back({{"file", finding.place.file},
                      {"line", finding.place.line},
                      {"column", finding.place.column},
                      {"severity", NameOf(finding.severity)},
                      {"code", finding.code},
                      {"text", finding.text}});
  }
  return ToText(report);
}

std::string CodeTable() {
  std::vector<Row> rows;
  for (const Code& code : plddb::check::Codes()) {
    rows.push_back({std::string(code.name), NameOf(code.severity), std::string(code.meaning)});
  }
  return AlignedTable(rows);
}

std::size_t Count(const std::vector<Finding>& findings, Severity severity) {
  return static_cast<std::size_t>(
      std::count_if(findings.begin(), findings.end(), [&](const Finding& finding) { return finding.severity == severity; }));
}

std::string Counted(std::size_t count, const std::string& name) {
  return std::to_string(count) + ' ' + name + (count == 1 ? "" : "s");
}

// --- The command ------------------------------------------------------------------------------------------------------------

ExitCode RunCheck(const Options& options) {
  if (options.listCodes) {
    WriteOutput(CodeTable());
    return ExitCode::kFound;
  }
  if (options.files.empty()) throw WrongUsage("FILE is required");
  const std::vector<std::string> files = DescriptionFiles(options.files);
  std::vector<Finding> findings;
  for (const std::string& file : files) {
    for (Finding& finding : CheckFile(file)) findings.push_back(std::move(finding));
  }
  DropAllowed(findings, options.allowed);
  WriteOutput(options.json ? JsonReport(findings) : WithPaintedSeverities(Lines(findings), STDOUT_FILENO));
  const std::size_t errors = Count(findings, Severity::kError);
  const std::size_t warnings = Count(findings, Severity::kWarning);
  WriteMessage("plddb: " + Counted(errors, "error") + " and " + Counted(warnings, "warning") + " in " +
               Counted(files.size(), "file") + '\n');
  if (errors > 0) return ExitCode::kFailed;
  return options.strict && warnings > 0 ? ExitCode::kNotFound : ExitCode::kFound;
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
  subcommand.AddFlag("--json", options->json, "Write a JSON array of {file, line, column, severity, code, text}");
  subcommand.AddFlag("--list-codes", options->listCodes, "Say what each code means, and check nothing");
  subcommand.Add("FILE", options->files, "Description files, or folders of *.xml").Type("");
  subcommand.Footer(kFooter);
  return [options] { return RunCheck(*options); };
}

}  // namespace tool
