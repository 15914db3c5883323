#include <memory>

#include "command.h"
#include "command_line.h"
#include "databases.h"
#include "description_output.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    R"(The families of all files are written in the order of the files; Version and Comment are those of the first. Families are
never joined: of two with the same name, lookups find the first. The file has the form that plddb export gives.)";

struct Options {
  std::vector<std::string> files;
  WriteOptions writing;
};

ExitCode RunMerge(const Options& options) {
  Descriptions merged;  // on purpose not copied into one database: copies lose backups that differ from their values
  for (const Database& database : LoadFiles(options.files, Outlines::kYes)) {
    merged.push_back({database.file, database.devices.get(), &database.outline, database.text});
  }
  return WriteDescriptions(merged, options.writing);
}

}  // namespace

Run AddMerge(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  subcommand.Add("FILE", options->files, "Description files, or folders of *.xml").Type("").Required();
  AddWriteOptions(subcommand, options->writing, kFooter,
                  {"plddb merge first.xml second.xml --output all.xml", "plddb merge descriptions"});
  return [options] { return RunMerge(*options); };
}

}  // namespace tool
