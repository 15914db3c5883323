#include "description_output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

#include "Descriptions.h"
#include "check_forms.h"
#include "command.h"
#include "data_files.h"
#include "device_text.h"
#include "standard_streams.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

/// A new file next to `path`, which is removed again unless it replaces `path`.
class FileBeside {
 public:
  explicit FileBeside(const std::string& path) : path_(path), name_(path + ".new-" + std::to_string(getpid())) {
    struct stat old = {};
    const bool replaces = stat(path.c_str(), &old) == 0;
    descriptor_ = open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, replaces ? old.st_mode & 0777 : 0666);
    if (descriptor_ < 0) Fail();
    if (replaces) static_cast<void>(fchmod(descriptor_, old.st_mode & 07777));  // if the file system has such modes
  }

  ~FileBeside() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!name_.empty()) unlink(name_.c_str());
  }

  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  void Write(const std::string& text) {
    for (std::size_t done = 0; done < text.size();) {
      const ssize_t count = write(descriptor_, text.data() + done, text.size() - done);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) Fail();
      done += static_cast<std::size_t>(count);
    }
  }

  void TakePlace() {
    if (fsync(descriptor_) != 0 || close(std::exchange(descriptor_, -1)) != 0) Fail();
    if (rename(name_.c_str(), path_.c_str()) != 0) Fail();
    name_.clear();
  }

 private:
  [[noreturn]] void Fail() const {
    throw Failure("plddb: error: cannot write " + Printable(path_) + ": " + std::strerror(errno));
  }

  const std::string path_;
  std::string name_;
  int descriptor_ = -1;
};

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
  fs::path target = path;
  std::error_code unknown;
  for (int i = 0; i < kMostLinks; ++i) {
    if (!fs::is_symlink(fs::symlink_status(target, unknown))) return target.string();
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

}  // namespace

ExitCode WriteDescriptions(const Descriptions& written, const std::string& path, Lost lost) {
  ReportShadowed(written);
  if (!ReportLost(written) && lost == Lost::kRefused) {
    WriteMessage("plddb: error: nothing is written, since these values would be lost; --force writes the rest\n");
    return ExitCode::kNotFound;
  }
  WriteDescriptionText(LoadableText(written), path);
  return ExitCode::kFound;
}

void WriteDescriptionText(const std::string& text, const std::string& path) {
  if (path.empty() || path == kStandardStream) return WriteOutput(text);
  const std::string target = Target(path);
  std::error_code unknown;
  const fs::file_type kind = fs::status(target, unknown).type();
  if (kind == fs::file_type::none) {
    throw Failure("plddb: error: cannot write " + Printable(path) + ": " + unknown.message());
  }
  if (kind != fs::file_type::regular && kind != fs::file_type::not_found) {
    throw Failure("plddb: error: cannot write " + Printable(path) + ": it is not a regular file");
  }
  FileBeside file(target);
  file.Write(text);
  file.TakePlace();
}

void ReportShadowed(const Descriptions& written) { WriteMessage(FindingLines(FindingsOf(written, kShadowed))); }

}  // namespace tool
