#include <algorithm>
#include <memory>
#include <utility>

#include "check_findings.h"
#include "check_identifiers.h"
#include "check_lists.h"
#include "check_names.h"
#include "check_records.h"
#include "check_values.h"
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
  bool list_codes = false;
};

struct FileFindings {
  std::string file;
  std::vector<Finding> findings;
};

const char* NameOf(Severity severity) { return severity == Severity::kError ? "error" : "warning"; }

struct CheckedFile {
  plddb::Outline outline;
  plddb::LoadResult loaded;
};

/// Loads the file in place of the last one.
/// On purpose: the last file of all stays in memory until the process ends, since taking it apart takes as long as checking it.
const CheckedFile& Load(const std::string& file) {
  static auto& kept = *new std::unique_ptr<CheckedFile>();
  kept = std::make_unique<CheckedFile>();
  kept->loaded = plddb::LoadDescriptions(file, &kept->outline);
  return *kept;
}

FileFindings Check(const std::string& file) {
  Findings findings;
  const auto& [outline, loaded] = Load(file);
  for (const plddb::Fault& fault : loaded.faults) findings.Add(fault.line, fault.column, Code::kLoad, fault.text);
  if (loaded.database != nullptr) {
    const Records records(*loaded.database, outline.root);
    CheckValues(records, findings);
    CheckNames(records, findings);
    CheckIdentifiers(records, findings);
    CheckLists(records, findings);
  }
  return {file, findings.Take()};
}

void DropAllowed(std::vector<Finding>& findings, const std::vector<std::string>& allowed) {
  const auto is_allowed = [&](const Finding& finding) {
    return std::find(allowed.begin(), allowed.end(), RowOf(finding.code).name) != allowed.end();
  };
  findings.erase(std::remove_if(findings.begin(), findings.end(), is_allowed), findings.end());
}

// --- The output -------------------------------------------------------------------------------------------------------------

std::string Lines(const std::vector<FileFindings>& files) {
  std::string lines;
  for (const auto& [file, findings] : files) {
    for (const Finding& finding : findings) {
      const CodeRow& row = RowOf(finding.code);
      lines += Printable(file) + ':' + std::to_string(finding.line) + ':' + std::to_string(finding.column) + ": ";
      lines += NameOf(row.severity) + std::string("[").append(row.name) + "]: " + finding.text + '\n';
    }
  }
  return lines;
}

std::string JsonReport(const std::vector<FileFindings>& files) {
  Json report = Json::array();
  for (const auto& [file, findings] : files) {
    for (const Finding& finding : findings) {
      const CodeRow& row = RowOf(finding.code);
      report.push_back({{"file", file},
                        {"line", finding.line},
                        {"column", finding.column},
                        {"severity", NameOf(row.severity)},
                        {"code", row.name},
                        {"text", finding.text}});
    }
  }
  return ToText(report);
}

std::string CodeTable() {
  std::vector<Row> rows;
  for (const CodeRow& row : kCodes) rows.push_back({std::string(row.name), NameOf(row.severity), std::string(row.meaning)});
  return AlignedTable(rows);
}

std::size_t Count(const std::vector<FileFindings>& files, Severity severity) {
  std::size_t count = 0;
  for (const FileFindings& file : files) {
    count += static_cast<std::size_t>(std::count_if(file.findings.begin(), file.findings.end(), [&](const Finding& finding) {
      return RowOf(finding.code).severity == severity;
    }));
  }
  return count;
}

std::string Counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

// --- The command ------------------------------------------------------------------------------------------------------------

ExitCode RunCheck(const Options& options) {
  if (options.list_codes) {
    WriteOutput(CodeTable());
    return ExitCode::kFound;
  }
  if (options.files.empty()) throw WrongUsage("FILE is required");
  std::vector<FileFindings> files;
  for (const std::string& file : DescriptionFiles(options.files)) {
    files.push_back(Check(file));
    DropAllowed(files.back().findings, options.allowed);
  }
  WriteOutput(options.json ? JsonReport(files) : WithPaintedSeverities(Lines(files), STDOUT_FILENO));
  const std::size_t errors = Count(files, Severity::kError);
  const std::size_t warnings = Count(files, Severity::kWarning);
  WriteMessage("plddb: " + Counted(errors, "error") + " and " + Counted(warnings, "warning") + " in " +
               Counted(files.size(), "file") + '\n');
  if (errors > 0) return ExitCode::kFailed;
  return options.strict && warnings > 0 ? ExitCode::kNotFound : ExitCode::kFound;
}

std::vector<std::string> CodeNames() {
  std::vector<std::string> names;
  for (const CodeRow& row : kCodes) names.emplace_back(row.name);
  return names;
}

}  // namespace

Run AddCheck(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  subcommand.AddFlag("--strict", options->strict, "Warnings make the exit code 1");
  subcommand.Add("--allow", options->allowed, "Leave out findings of this code; may be given several times")
      .Type("CODE")
      .OneOf(CodeNames())
      .OneValueEach();
  subcommand.AddFlag("--json", options->json, "Write a JSON array of {file, line, column, severity, code, text}");
  subcommand.AddFlag("--list-codes", options->list_codes, "Say what each code means, and check nothing");
  subcommand.Add("FILE", options->files, "Description files, or folders of *.xml").Type("");
  subcommand.Footer(kFooter);
  return [options] { return RunCheck(*options); };
}

}  // namespace tool
