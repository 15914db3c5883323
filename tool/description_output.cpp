#include "description_output.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

#include "Descriptions.h"
#include "Files.h"
#include "check_forms.h"
#include "command.h"
#include "data_files.h"
#include "device_text.h"
#include "shared_options.h"
#include "standard_streams.h"
#include "whole_file.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

using plddb::check::Finding;
using plddb::check::Severity;

/// The codes of values that the loader passes over or reads as others: a written file lacks them. An error is never meant so.
constexpr std::string_view kLost[] = {
    "list-unclosed", "list-after-empty", "list-outside", "list-label", "list-number",
    "list-surplus",  "list-long",        "ebr-reversed", "ebr-width",  "ebr-rows",
};

/// The codes of keys that an earlier record answers for.
constexpr std::string_view kShadowed[] = {
    "id-shadowed",      "id-shared",        "name-shadowed",      "code-name-shadowed",
    "alias-shadowed",   "family-shadowed",  "entity-name-shared", "fuse-count-shared",
    "full-name-shared", "fuse-count-alias", "jdf-shared",         "ordering-number-shared",
};

/// The findings of `written` that have one of the codes.
template <std::size_t count>
Findings FindingsOf(const Descriptions& written, const std::string_view (&codes)[count]) {
  Findings findings = plddb::check::Check(written);
  const auto isOther = [&](const Finding& finding) {
    return std::find(std::begin(codes), std::end(codes), finding.code) == std::end(codes);
  };
  findings.erase(std::remove_if(findings.begin(), findings.end(), isOther), findings.end());
  return findings;
}

/// False when values would be lost that may not be. On purpose: comments that allow findings do not hide them, since a value
/// that is lost in the file is gone.
bool ReportLost(Descriptions written) {
  for (plddb::check::Description& description : written) description.text = {};
  const Findings findings = FindingsOf(written, kLost);
  WriteMessage(FindingLines(findings));
  const auto isError = [](const Finding& finding) { return finding.severity == Severity::kError; };
  return std::none_of(findings.begin(), findings.end(), isError);
}

/// The path to write to for `path`: links are followed, even to a file that does not exist yet, so that they stay links.
std::string Target(const std::string& path) {
  constexpr int kMostLinks = 40;  // as many as the system follows
  fs::path target = plddb::ToPath(path);
  std::error_code unknown;
  for (int i = 0; i < kMostLinks; ++i) {
    if (!fs::is_symlink(fs::symlink_status(target, unknown))) return i == 0 ? path : plddb::ToName(target);
    target = target.parent_path() / fs::read_symlink(target, unknown);
  }
  throw Failure("plddb: error: cannot write " + Printable(path) + ": its links lead in a circle");
}

/// Texts are never written that would not load, such as more families than a file may have.
std::string LoadableText(const Descriptions& written) {
  std::vector<plddb::Source> sources;
  for (const plddb::check::Description& description : written) sources.push_back({description.database, description.outline});
  std::string text = plddb::WriteDescriptions(sources);
  const plddb::LoadResult loaded = plddb::ParseDescriptions(text, "");
  if (loaded.faults.empty()) return text;
  throw Failure("plddb: error: nothing is written, since the file would not load: " + loaded.faults.front().text);
}

constexpr const char* kFooter = R"(

Messages on standard error are those of plddb check: about values that the loader ignores or reads differently, such as a list item that is not closed, and about names and identifiers that find an earlier record. Nothing is written if a value would be lost, unless --force is given.

Exit code: 0 when the file is written, 1 when values would be lost, 2 for wrong usage or data that cannot be read or written.)";

}  // namespace

void AddWriteOptions(Subcommand subcommand, WriteOptions& options, const std::string& help,
                     const std::vector<std::string>& examples) {
  AddOutputOption(subcommand, options.output);
  subcommand.AddFlag("--force", options.force, "Write the file even if values are lost");
  subcommand.Footer(help + kFooter, examples);
}

ExitCode WriteDescriptions(const Descriptions& written, const WriteOptions& options) {
  ReportShadowed(written);
  if (!ReportLost(written) && !options.force) {
    WriteMessage("plddb: error: nothing is written, since these values would be lost; --force writes the rest\n");
    return ExitCode::kNotFound;
  }
  WriteDescriptionText(LoadableText(written), options.output);
  return ExitCode::kFound;
}

void WriteDescriptionText(const std::string& text, const std::string& path) {
  if (path.empty() || path == kStandardStream) return WriteOutput(text);
  const std::string target = Target(path);
  const fs::path file = plddb::ToPath(target);
  std::error_code unknown;
  const fs::file_type kind = fs::status(file, unknown).type();
  if (kind == fs::file_type::none) {
    throw Failure("plddb: error: cannot write " + Printable(path) + ": " + unknown.message());
  }
  if ((kind != fs::file_type::regular && kind != fs::file_type::not_found) || IsDevice(file)) {
    throw Failure("plddb: error: cannot write " + Printable(path) + ": it is not a regular file");
  }
  WriteWholeFile(target, text);
}

void ReportShadowed(const Descriptions& written) { WriteMessage(FindingLines(FindingsOf(written, kShadowed))); }

}  // namespace tool
