#include <memory>

#include "command.h"
#include "command_line.h"
#include "databases.h"
#include "description_output.h"
#include "device_text.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    R"(The canonical form has families and devices in their order, attributes in a fixed order, and leaves out what has its default
or is derived on loading. Comments stay at their elements; start tags are wrapped at 100 columns. Exporting it again gives the
same bytes.)";

struct Options {
  std::string file;
  WriteOptions writing;
};

ExitCode RunExport(const Options& options) {
  const std::vector<Database>& databases = LoadFiles({options.file}, Outlines::kYes);
  if (databases.size() > 1) throw WrongUsage(Printable(options.file) + " is a folder; merge its files instead");
  const Database& database = databases.front();
  return WriteDescriptions({{database.file, database.devices.get(), &database.outline, database.text}}, options.writing);
}

}  // namespace

Run AddExport(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  subcommand.Add("FILE", options->file, "The description file").Type("").Required();
  AddWriteOptions(subcommand, options->writing, kFooter,
                  {"plddb export my_devices.xml --output my_devices.xml", "plddb export - < my_devices.xml"});
  return [options] { return RunExport(*options); };
}

}  // namespace tool
