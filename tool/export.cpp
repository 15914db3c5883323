#include <memory>

#include "command.h"
#include "databases.h"
#include "description_output.h"
#include "device_text.h"
#include "shared_options.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    R"(The canonical form has families and devices in their order, attributes in a fixed order, and leaves out what has its default
or is derived on loading. Comments stay at their elements; start tags are wrapped at 100 columns. Exporting it again gives the
same bytes.

Messages on standard error are those of plddb check: about values that the loader
ignores or reads differently, such as a list item that is not closed, and about
names and identifiers that find an earlier record. Nothing is written if a value
would be lost, unless --force is given.

Exit code: 0 when the file is written, 1 when values would be lost, 2 for wrong
usage or data that cannot be read or written.)";

struct Options {
  std::string file;
  std::string output;
  bool force = false;
};

ExitCode RunExport(const Options& options) {
  const std::vector<Database>& databases = LoadFiles({options.file}, Outlines::kYes);
  if (databases.size() > 1) throw WrongUsage(Printable(options.file) + " is a folder; merge its files instead");
  const Database& database = databases.front();
  return WriteDescriptions({{database.file, database.devices.get(), &database.outline, database.text}}, options.output,
                           options.force ? Lost::kAllowed : Lost::kRefused);
}

}  // namespace

Run AddExport(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  subcommand.Add("FILE", options->file, "The description file").Type("").Required();
  AddOutputOption(subcommand, options->output);
  subcommand.AddFlag("--force", options->force, "Write the file even if values of the source are lost");
  subcommand.Footer(kFooter, {"plddb export my_devices.xml --output my_devices.xml", "plddb export - < my_devices.xml"});
  return [options] { return RunExport(*options); };
}

}  // namespace tool
