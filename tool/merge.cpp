#include <memory>

#include "command.h"
#include "databases.h"
#include "description_output.h"
#include "shared_options.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    R"(The families of all files are written in the order of the files; Version and Comment are those of the first. Families are
never joined: of two with the same name, lookups find the first. The file has the form that plddb export gives.

Messages on standard error are those of plddb check: about values that the loader
ignores or reads differently, such as a list item that is not closed, and about
names and identifiers that find an earlier record, in the same file or in one
before it. Nothing is written if a value would be lost, unless --force is given.

Exit code: 0 when the file is written, 1 when values would be lost, 2 for wrong
usage or data that cannot be read or written.)";

struct Options {
  std::vector<std::string> files;
  std::string output;
  bool force = false;
};

ExitCode RunMerge(const Options& options) {
  Descriptions merged;  // on purpose not copied into one database: copies lose backups that differ from their values
  for (const Database& database : LoadFiles(options.files, Outlines::kYes)) {
    merged.push_back({database.file, database.devices.get(), &database.outline, database.text});
  }
  return WriteDescriptions(merged, options.output, options.force ? Lost::kAllowed : Lost::kRefused);
}

}  // namespace

Run AddMerge(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  subcommand.Add("FILE", options->files, "Description files, or folders of *.xml").Type("").Required();
  AddOutputOption(subcommand, options->output);
  subcommand.AddFlag("--force", options->force, "Write the file even if values of the sources are lost");
  subcommand.Footer(kFooter, {"plddb merge first.xml second.xml --output all.xml", "plddb merge descriptions"});
  return [options] { return RunMerge(*options); };
}

}  // namespace tool
