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
or what is derived on loading. Comments stay at their elements; start tags are wrapped at 100 columns. Exporting it again gives the same bytes. What lookups will not find is told on standard error.

Exit code: 0 when the file is written, 2 for wrong usage or data that cannot be read or written.

Example: plddb export my_devices.xml --output my_devices.xml)";

struct Options {
  std::string file;
  std::string output;
};

ExitCode RunExport(const Options& options) {
  const std::vector<Database>& databases = LoadFiles({options.file}, Outlines::kYes);
  if (databases.size() > 1) throw WrongUsage(Printable(options.file) + " is a folder; merge its files instead");
  const Sources written = {{databases.front().devices.get(), &databases.front().outline}};
  ReportShadowed(written);
  WriteSources(written, options.output);
  return ExitCode::kFound;
}

}  // namespace

Run AddExport(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  subcommand.Add("FILE", options->file, "The description file").Type("").Required();
  AddOutputOption(subcommand, options->output);
  subcommand.Footer(kFooter);
  return [options] { return RunExport(*options); };
}

}  // namespace tool
