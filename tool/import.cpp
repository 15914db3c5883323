#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Bsdl.h"
#include "bsdl_files.h"
#include "command.h"
#include "command_line.h"
#include "description_output.h"
#include "shared_options.h"
#include "standard_streams.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    R"(Files that give the same device name describe one device, with the packages of all of them. The name is that of the
entity, without the name of its pin map; a package has the entity name as its ordering number, so that plddb find --entity finds
it. What a description has no place for is written as a comment.

Nothing is written when a file is faulty, when it has no INSTRUCTION_LENGTH, no BYPASS or no IDCODE_REGISTER, when its IDCODE
leaves the maker or more than 4 bits of the part number open, or when two files of one device contradict each other.

Times and sizes of IEEE 1532 are written only with --units: their units are those of the programming tool. The unit of times
is us unless another one follows --units; sizes are in bits.

Exit code: 0 when the descriptions are written, 2 for wrong usage or files that are refused.)";

constexpr std::string_view kDefaultUnit = "us";

struct Options {
  std::vector<std::string> files;
  plddb::bsdl::ImportOptions import;
  std::string units;
  std::string output;
  std::string into;
};

double UnitOfTimes(const std::string& name) {
  const double seconds = plddb::bsdl::SecondsOf(name.empty() ? kDefaultUnit : std::string_view(name));
  if (seconds == 0) throw WrongUsage("--units is " + name + ": expected s, ms, us or ns");
  return seconds;
}

std::string Lines(const std::vector<plddb::bsdl::Fault>& faults) {
  std::string lines;
  for (const plddb::bsdl::Fault& fault : faults) lines += (lines.empty() ? "" : "\n") + plddb::bsdl::ToString(fault);
  return lines;
}

/// The text of the description file. Throws Failure.
std::string TextOf(const plddb::bsdl::Import& import, const std::string& into) {
  if (into.empty()) return plddb::bsdl::Write(import);
  plddb::bsdl::Addition addition = plddb::bsdl::AddToFile(into, import);
  if (!addition.faults.empty()) throw Failure(Lines(addition.faults));
  return std::move(addition.text);
}

ExitCode RunImport(const Options& options) {
  std::vector<plddb::bsdl::File> files;
  for (const std::string& file : BsdlFiles(options.files)) files.push_back(plddb::bsdl::Load(file));
  const plddb::bsdl::Import import = plddb::bsdl::Describe(files, options.import);
  if (import.database == nullptr) throw Failure(Lines(import.faults));
  const std::string text = TextOf(import, options.into);
  if (!import.faults.empty()) WriteMessage(Lines(import.faults) + '\n');
  plddb::Outline outline;
  const plddb::LoadResult loaded = plddb::ParseDescriptions(text, options.into, &outline);
  const std::string output = options.output.empty() ? options.into : options.output;
  const std::string file = output.empty() ? "(standard output)" : output;
  if (loaded.database != nullptr) ReportShadowed({{file, loaded.database.get(), &outline, text}});
  WriteDescriptionText(text, output);
  return ExitCode::kFound;
}

}  // namespace

Run AddImport(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  plddb::bsdl::ImportOptions& import = options->import;
  subcommand.Add("FILE", options->files, "BSDL files, or folders of them").Type("").Required();
  subcommand.Add("--family", import.family, "The family of the devices").Type("NAME").Required().NotEmpty();
  subcommand.Add("--name", import.name, "The name of the device, instead of the entity's").Type("NAME").NotEmpty();
  subcommand.Add("--vendor", import.vendor, "The maker, instead of the one of the IDCODE").Type("NAME").NotEmpty();
  subcommand.Add("--package", import.package, "The package type, instead of the pin map's").Type("TYPE").NotEmpty();
  const Option units =
      subcommand.Add("--units", options->units, "Write sizes of IEEE 1532, and times in s, ms, us (as without UNIT) or ns");
  units.Type("s|ms|us|ns").ValueMayBeMissing();
  subcommand.Add("--into", options->into, "Add the devices to this description file; everything else in it stays").Type("FILE");
  AddOutputOption(subcommand, options->output);
  subcommand.Footer(kFooter, {"plddb import pld1234a_tq100.bsd --family PLD1200 --output my_devices.xml",
                              "plddb import pld1234a_tq100.bsd --family PLD1200 --units us"});
  return [options, units] {
    if (units.IsGiven()) options->import.unitOfTimes = UnitOfTimes(options->units);
    return RunImport(*options);
  };
}

}  // namespace tool
