#include <algorithm>
#include <iterator>
#include <memory>

#include "chain_input.h"
#include "command.h"
#include "device_text.h"
#include "identify/output.h"
#include "shared_options.h"
#include "standard_streams.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    R"(Positions are counted from 0, in the order of the ids; the first is taken for the one nearest TDO. An ID is
8 hex digits, or 0x and 1 to 8 hex digits. With - ids are read from standard input, one per line; # starts
a comment and blank lines are skipped.

--scan reads what a scanning tool printed, in its order: OpenOCD's log or scan_chain table, UrJTAG's detect
(both nearest TDO first), openFPGALoader's --detect (nearest TDI first), or ids, one per line. Of several
reports in a text the last is taken, and OpenOCD's log rather than its table.

The answer is the first device that matches, in the order of the databases and of their devices. Where
more than one matches, the device is marked with * and all of them are listed, the most exact first; their
IR lengths often tell which one it is.

The fields of an unknown id are split, the manufacturer is named where a described device has the same one
(banks are counted from 0), and devices of the same part or one bit apart are named. A chain with an
unknown TAP works only when its IR length is known: give it with --ir.

--format openocd writes the chain for OpenOCD's configuration, nearest TDO first. tsv has a head line and a
line for each position. Notes go to standard error with tsv and json.

Exit code: 0 when every id is identified, 1 when some id is unknown, 2 for wrong usage or data that
cannot be read.

Example: plddb identify 0x59604093 0x4BA00477 0x0362D093
         openocd -f board.cfg 2>&1 | plddb identify --scan - --format openocd)";

constexpr struct {
  const char* name;
  std::string (*output)(const IdentifiedChain& identified);
  bool shows_notes;
} kFormats[] = {
    {"text", TextOutput, true},
    {"tsv", TsvOutput, false},
    {"json", JsonOutput, false},
    {"openocd", OpenOcdOutput, true},
};

struct Options {
  std::vector<std::string> databases;
  std::string comm = "JTAG";
  std::string format = "text";
  bool json = false;
  std::string scan;
  std::vector<std::string> ids;
  std::vector<std::string> ir_lengths;
};

void Write(const IdentifiedChain& identified, const std::string& format) {
  const auto has_name = [&](const auto& row) { return row.name == format; };
  const auto* const chosen = std::find_if(std::begin(kFormats), std::end(kFormats), has_name);
  WriteOutput(chosen->output(identified));
  if (chosen->shows_notes) return;
  for (const std::string& note : Notes(identified)) WriteMessage("plddb: warning: " + note + "\n");
}

ExitCode RunIdentify(const Options& options) {
  if (options.format == "openocd" && options.comm == "ISP")
    throw WrongUsage("--format openocd: ISP identifiers are no IDCODEs");
  const Scan scan = ReadChain(options.ids, options.scan);
  const std::vector<Database>& databases = LoadDatabases(options.databases);
  std::vector<const DeviceList*> lists;
  for (const Database& database : databases) lists.push_back(database.devices.get());
  plddb::chain::DeviceFinder finder(lists, options.comm);
  IdentifiedChain identified = {databases, finder, options.comm, scan, {}};
  for (const ScannedTap& tap : scan.taps) identified.chain.push_back(finder.Identify(tap.id));
  GiveIrLengths(identified.chain, options.ir_lengths);
  Write(identified, options.json ? "json" : options.format);
  const bool all_known = std::all_of(identified.chain.begin(), identified.chain.end(), [](const auto& p) { return p.Match(); });
  return all_known ? ExitCode::kFound : ExitCode::kNotFound;
}

void AddInput(Subcommand subcommand, Options& options) {
  const Option ids = subcommand.Add("ID", options.ids, "The ids of the chain, in its order; - reads them from standard input");
  ids.Type("or -");
  AddScanOption(subcommand, options.scan).Excludes(ids);
  AddIrLengthOption(subcommand, options.ir_lengths);
}

void AddForm(Subcommand subcommand, Options& options) {
  std::vector<std::string> names;
  for (const auto& format : kFormats) names.emplace_back(format.name);
  const Option format = subcommand.Add("--format", options.format, "What to write (default text)");
  format.Type("text|tsv|json|openocd").OneOf(names);
  subcommand.AddFlag("--json", options.json, "The same as --format json: an array of {position, id, match, candidates, ...}")
      .Excludes(format);
}

}  // namespace

Run AddIdentify(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(subcommand, options->databases);
  subcommand.Add("--comm", options->comm, "The access mode: which identifier of a device is compared (default JTAG)")
      .Type("JTAG|ISP|DUAL")
      .OneOf({"JTAG", "ISP", "DUAL"});
  AddForm(subcommand, *options);
  AddInput(subcommand, *options);
  subcommand.Footer(kFooter);
  return [options] { return RunIdentify(*options); };
}

}  // namespace tool
