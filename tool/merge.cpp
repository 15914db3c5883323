#include <memory>

#include "command.h"
#include "databases.h"
#include "description_output.h"
#include "shared_options.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    R"(The families of all files stand in the order of the files; Version and Comment are those of the first. Families are never joined:
of two with one name the first answers for it. What lookups will not find is told on standard error. The file that is written
has the form that plddb export gives.

Exit code: 0 when the file is written, 2 for wrong usage or data that cannot be read or written.)";

struct Options {
  std::vector<std::string> files;
  std::string output;
};

ExitCode RunMerge(const Options& options) {
  Sources merged;  // on purpose not copied into one database: copies lose backups that differ from their values
  for (const Database& database : LoadFiles(options.files, Outlines::kYes)) {
    merged.push_back({database.devices.get(), &database.outline});
  }
  ReportShadowed(merged);
  WriteSources(merged, options.output);
  return ExitCode::kFound;
}

}  // namespace

Run AddMerge(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  subcommand.Add("FILE", options->files, "Description files, or folders of *.xml").Type("").Required();
  AddOutputOption(subcommand, options->output);
  subcommand.Footer(kFooter, {"plddb merge first.xml second.xml --output all.xml", "plddb merge descriptions"});
  return [options] { return RunMerge(*options); };
}

}  // namespace tool
