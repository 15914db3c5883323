#include <cerrno>
#include <cstring>
#include <memory>

#include "ProgrammingFile.h"
#include "chain_input.h"
#include "command.h"
#include "databases.h"
#include "device_text.h"
#include "fits_forms.h"
#include "json_text.h"
#include "shared_options.h"
#include "standard_streams.h"

namespace tool {
namespace {

namespace pf = plddb::programming_files;

constexpr const char* kFooter =
    R"(A FILE is a JEDEC fuse map, a bitstream (.bit, .bin, .mcs, .fs, .hex, .pof, .sof, .rbf), SVF, XSVF, STAPL or an IEEE 1532 data
file, also packed by gzip. Its format and its device are read from its content, not from its name. Nothing is sent to a device.

Without a chain, the answer is the devices that the file can be for. With one, it is the positions that the file fits. The
chain is given as ids, as for identify, or by --scan. The last arguments that are ids (8 hex digits, or 0x and 1 to 8) are the
chain; write ./ before the name of a file that looks like one.

A file that is damaged is reported on standard error; what it states still counts.

Exit code: 0 when every file fits (without a chain: when its device is known), 1 when one does not fit or it cannot be
decided, 2 for wrong usage or a file that cannot be read.)";

struct Options {
  std::vector<std::string> databases;
  std::vector<std::string> arguments;  // files, then ids
  std::string scan;
  std::string order;
  std::vector<std::string> irLengths;
  bool json = false;
};

/// A chain that a user gave, identified.
struct GivenChain {
  plddb::chain::Chain positions;
  plddb::chain::End nearest;
};

/// Takes the ids at the end of the arguments.
std::vector<std::string> TakeIds(std::vector<std::string>& arguments) {
  std::size_t files = arguments.size();
  if (files > 0 && arguments.back() == "-") --files;
  while (files == arguments.size() || arguments[files] != "-") {
    if (files == 0 || !plddb::chain::ParseId(arguments[files - 1])) break;
    --files;
  }
  const auto first = arguments.begin() + static_cast<std::ptrdiff_t>(files);
  std::vector<std::string> ids(first, arguments.end());
  arguments.erase(first, arguments.end());
  return ids;
}

std::unique_ptr<GivenChain> ReadGivenChain(const Options& options, const std::vector<std::string>& ids,
                                           const std::vector<const DeviceList*>& databases) {
  if (ids.empty() && options.scan.empty()) {
    if (!options.irLengths.empty()) throw WrongUsage("--ir needs a chain: IDs or --scan");
    if (!options.order.empty()) throw WrongUsage("--order needs a chain: IDs or --scan");
    return nullptr;
  }
  const plddb::chain::Scan scan = ReadChain(ids, options.scan, options.order);
  auto chain = std::make_unique<GivenChain>(GivenChain{plddb::chain::Identify(databases, "JTAG", scan), scan.nearest});
  GiveIrLengths(chain->positions, options.irLengths);
  return chain;
}

pf::File ReadProgrammingFile(const pf::Reader& reader, const std::string& path) {
  const OpenedFile opened = OpenFile(path);
  pf::File file = reader.Read([&](char* buffer, std::size_t size) { return std::fread(buffer, 1, size, opened.get()); });
  if (std::ferror(opened.get()) != 0) throw Failure(CannotRead(path) + ": " + std::strerror(errno));
  return file;
}

void WarnOfFaults(const Judged& judged) {
  for (const pf::Fault& fault : judged.file.faults) {
    const bool isText = fault.place.line != 0;
    const std::string place = isText ? ":" + std::to_string(fault.place.line) + ":" + std::to_string(fault.place.column) : "";
    const std::string byte = isText ? "" : ToText(fault.place) + ": ";
    WriteMessage(Printable(judged.path) + place + ": warning: " + byte + Printable(fault.text) + "\n");
  }
}

bool IsGood(const pf::Verdict& verdict, bool hasChain) {
  return hasChain ? verdict.fit == pf::Fit::kFits || verdict.fit == pf::Fit::kFitsSeveral : verdict.isKnown;
}

ExitCode RunFits(Options options) {
  const std::vector<std::string> ids = TakeIds(options.arguments);
  if (options.arguments.empty()) throw WrongUsage("FILE is required");
  if (!ids.empty() && !options.scan.empty()) throw WrongUsage("IDs exclude --scan");
  std::vector<const DeviceList*> databases;
  for (const Database& database : LoadDatabases(options.databases)) databases.push_back(database.devices.get());
  const pf::Reader reader(databases);
  const auto chain = ReadGivenChain(options, ids, databases);
  std::string text;
  Json json = Json::array();
  bool isGood = true;
  for (const std::string& path : options.arguments) {
    Judged judged{path, ReadProgrammingFile(reader, path), {}};
    judged.verdict = chain == nullptr ? reader.Judge(judged.file) : reader.Judge(judged.file, chain->positions, chain->nearest);
    WarnOfFaults(judged);
    isGood = isGood && IsGood(judged.verdict, chain != nullptr);
    if (options.json) json.push_back(AsJson(judged));
    if (!options.json) text += AsText(judged, chain != nullptr);
  }
  WriteOutput(options.json ? ToText(json) : text);
  return isGood ? ExitCode::kFound : ExitCode::kNotFound;
}

}  // namespace

Run AddFits(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(subcommand, options->databases);
  subcommand
      .Add("FILE", options->arguments,
           "Programming files; then, if wanted, the ids of a chain; - reads these from standard input")
      .Type("or ID");
  AddScanOption(subcommand, options->scan);
  AddOrderOption(subcommand, options->order);
  AddIrLengthOption(subcommand, options->irLengths);
  subcommand.AddFlag("--json", options->json,
                     "An array of {file, format, statements, fuseCount, devices, verdict, positions, reasons}");
  subcommand.Footer(kFooter, {"plddb fits top.jed", "plddb fits top.jed 0x59604093",
                              "openocd -f board.cfg 2>&1 | plddb fits top.bit --scan -"});
  return [options] { return RunFits(*options); };
}

}  // namespace tool
