#include "Check.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "Bsdl.h"
#include "bsdl_files.h"
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
    R"(The files are checked as one database, in their order. A finding is a line
"FILE:LINE:COLUMN: error|warning[code]: text" on standard output; the place is
that of the value, or of the element that lacks it. An error can never work or
loses data. A warning may be intended. docs/check.md explains each code.

With --bsdl, each description is compared instead with the makers' files that
match its IDCODE or have the entity name of one of its packages: id, mask, IR
length, codes and boundary length. A folder means all *.bsd, *.bsdl, *.bsm,
*.bs and *.1532 files in it. docs/bsdl.md explains the codes.

A comment allows a finding in the start tag of the next element:
<!-- plddb: allow CODE: the reason -->

Exit code: 0 without findings, or with warnings alone; 1 for errors, and for
warnings with --strict; 2 for wrong usage, and for files that cannot be read.)";

struct Options {
  std::vector<std::string> files;
  std::vector<std::string> makersFiles;
  bool missing = false;
  std::vector<std::string> allowed;
  std::string format = "text";
  bool strict = false;
  bool json = false;
  bool listCodes = false;
};

std::vector<plddb::check::Source> Read(const std::vector<std::string>& files) {
  std::vector<plddb::check::Source> sources;
  for (const std::string& file : files) {
    plddb::FileText read = file == kStandardStream ? plddb::FileText{ReadInput(), ""} : plddb::ReadDescriptionFile(file);
    sources.push_back({file, std::move(read.text), std::move(read.failure)});
  }
  return sources;
}

/// The name of a code, which may be given by its former one; null when there is none.
const char* CodeName(const std::string& name) {
  for (const Code& code : AllCodes()) {
    if (name == code.name || (!code.formerly.empty() && name == code.formerly)) return code.name.data();
  }
  return nullptr;
}

// --- Against makers' files --------------------------------------------------------------------------------------------------

struct Paths {
  std::vector<std::string> makersFiles;
  std::vector<std::string> descriptions;
};

bool IsXml(const std::string& path) { return path.size() >= 4 && path.compare(path.size() - 4, 4, ".xml") == 0; }

/// --bsdl takes all that follows it: without other arguments its last value is the description file, and so are *.xml before
/// it.
Paths PathsOf(const Options& options) {
  Paths paths = {options.makersFiles, options.files};
  if (!paths.descriptions.empty() || paths.makersFiles.size() < 2) return paths;
  auto first = paths.makersFiles.end() - 1;
  while (first - 1 != paths.makersFiles.begin() && IsXml(*(first - 1))) --first;
  paths.descriptions.assign(first, paths.makersFiles.end());
  paths.makersFiles.erase(first, paths.makersFiles.end());
  return paths;
}

Findings CheckAgainst(const std::vector<std::string>& makersFiles, const std::vector<plddb::check::Source>& sources,
                      bool missing) {
  std::vector<plddb::bsdl::File> makers;
  for (const std::string& file : BsdlFiles(makersFiles)) makers.push_back(plddb::bsdl::Load(file));
  return plddb::bsdl::CheckTexts(makers, sources, missing ? plddb::bsdl::Missing::kListed : plddb::bsdl::Missing::kAllowed);
}

void DropAllowed(Findings& findings, const std::vector<std::string>& allowed) {
  for (const std::string& name : allowed) {
    const char* const code = CodeName(name);
    const auto isAllowed = [&](const Finding& finding) { return code != nullptr && finding.code == code; };
    findings.erase(std::remove_if(findings.begin(), findings.end(), isAllowed), findings.end());
  }
}

std::string InForm(const Findings& findings, const Options& options) {
  if (options.json || options.format == "json") return FindingJson(findings);
  if (options.format == "sarif") return FindingSarif(findings);
  return WithPaintedSeverities(FindingLines(findings), kOutput);
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
  const Paths paths = PathsOf(options);
  if (paths.descriptions.empty()) throw WrongUsage("FILE is required");
  const std::vector<std::string> files = DescriptionFiles(paths.descriptions);
  const auto sources = Read(files);
  const bool isUnreadable =
      std::any_of(sources.begin(), sources.end(), [](const auto& source) { return !source.failure.empty(); });
  Findings findings = options.makersFiles.empty() ? plddb::check::CheckTexts(sources)
                                                  : CheckAgainst(paths.makersFiles, sources, options.missing);
  DropAllowed(findings, options.allowed);
  WriteOutput(InForm(findings, options));
  const std::size_t errors = Count(findings, Severity::kError);
  const std::size_t warnings = Count(findings, Severity::kWarning);
  WriteMessage("plddb: " + Counted(errors, "error") + " and " + Counted(warnings, "warning") + " in " +
               Counted(sources.size(), "file") + '\n');
  const auto isOfBsdlFile = [](const Finding& finding) { return finding.code == "bsdl-file"; };
  if (isUnreadable || std::any_of(findings.begin(), findings.end(), isOfBsdlFile)) return ExitCode::kFailed;
  return errors > 0 || (options.strict && warnings > 0) ? ExitCode::kNotFound : ExitCode::kFound;
}

std::string RefuseUnknownCode(const std::string& name) {
  if (CodeName(name) != nullptr) return "";
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
  const Option makersFiles =
      subcommand.Add("--bsdl", options->makersFiles, "Compare with makers' BSDL files, or folders of them");
  makersFiles.Type("BSDL");
  subcommand.AddFlag("--missing", options->missing, "List what the makers' files state and a description lacks")
      .Needs(makersFiles);
  subcommand.Add("FILE", options->files, "Description files, or folders of *.xml").Type("");
  subcommand.Footer(kFooter,
                    {"plddb check --strict my_devices.xml", "plddb check --format sarif descriptions > findings.sarif"});
  return [options] { return RunCheck(*options); };
}

}  // namespace tool
